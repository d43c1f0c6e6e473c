// The kinds of element tables. A new kind is named here; one in a single source is declared here, too.
#include "components/element.h"
#include "components/external_input.h"
#include "components/flange_input.h"
#include "components/mdmt_input.h"
#include "components/shell_input.h"

namespace tarvane::vessel {

extern const ElementKind COMPRESSION_KIND;

namespace {

constexpr const ElementKind* KINDS[] = {&FLANGE_KIND, &SHELL_KIND, &EXTERNAL_KIND,
                                        &COMPRESSION_KIND, &MDMT_KIND};

} // namespace

std::span<const ElementKind* const> element_kinds() { return KINDS; }

} // namespace tarvane::vessel
