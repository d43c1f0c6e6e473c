// What a flange of kind "design" is judged by: the geometry that was selected, rounded as a drawing gives it.
#pragma once

#include "components/flange_session.h"

#include <memory>

namespace tarvane::vessel {

// Sixteenths of an inch, or whole millimetres where the units of the file are metric. A calculation without a
// report. None where nothing was selected, or where no thickness was found for it.
std::shared_ptr<const JudgedFlange> round_design(const FlangeInput& flange,
                                                 const FlangeOutcome& outcome, const Request& file);

} // namespace tarvane::vessel
