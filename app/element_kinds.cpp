// The kinds of element tables. A new kind is one line here.
#include "element.h"
#include "external_input.h"
#include "flange_input.h"
#include "mdmt_input.h"
#include "shell_input.h"

namespace tarvane::app {

namespace {

constexpr const ElementKind* KINDS[] = {&FLANGE_KIND, &SHELL_KIND, &EXTERNAL_KIND, &MDMT_KIND};

} // namespace

std::span<const ElementKind* const> element_kinds() { return KINDS; }

} // namespace tarvane::app
