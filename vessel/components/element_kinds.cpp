// The kinds of element tables. A new kind is one line here.
#include "components/element.h"
#include "components/external_input.h"
#include "components/flange_input.h"
#include "components/mdmt_input.h"
#include "components/shell_input.h"

namespace tarvane::vessel {

namespace {

constexpr const ElementKind* KINDS[] = {&FLANGE_KIND, &SHELL_KIND, &EXTERNAL_KIND, &MDMT_KIND};

} // namespace

std::span<const ElementKind* const> element_kinds() { return KINDS; }

} // namespace tarvane::vessel
