// The calls of one element's metal temperature: what the host sets, MDMT_ELEMENT, and its results.
#pragma once

#include "components/mdmt_input.h"
#include "components/request.h"

#include <optional>

namespace tarvane::vessel {

struct MdmtOutcome final : Outcome {
    bool exempt_stainless = false; // by UHA-51
    TARVANE_MDMT_RESULTS found{};  // of which the rest is taken; status 0: nothing was calculated
    float t_min = TARVANE_NO_TEMPERATURE, mdmt = TARVANE_NO_TEMPERATURE;
    float t_ug20 = TARVANE_UG20_NOT_APPLICABLE;
    float ratio = -1.0f, reduction = 0.0f, estar_used = 1.0f;
};

// Runs an element of the file. Throws std::runtime_error when the report file cannot be opened or read.
MdmtOutcome run_mdmt(const MdmtInput& element, const Request& file);

} // namespace tarvane::vessel
