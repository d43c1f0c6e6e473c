// The checks of a flange: the engine's findings, and input that it uses without a check.
#pragma once

#include "components/flange_session.h"

#include <string_view>

namespace tarvane::vessel {

// All but the size of its material, which is known to the reading.
Checks flange_checks(const FlangeInput& flange, const FlangeOutcome& outcome,
                     const UnitSystem& units);

// What the record has.
inline float given(const FlangeInput& flange, int element) {
    return flange.record[static_cast<std::size_t>(element)];
}
// The part of the gasket: whether it bears, and whether its face and the bolt circle carry it.
void check_gasket(const FlangeInput& flange, const FlangeOutcome& outcome, const UnitSystem& units,
                  Checks& checks);

// The paragraph of the code of a flange for one of VIII-1.
std::string_view flange_paragraph(std::string_view viii_1, const FlangeInput& flange);

} // namespace tarvane::vessel
