// The calls of one flange: what the host sets, FLANGE_CALC, and what comes back.
#pragma once

#include "flange_input.h"
#include "input_file.h"

#include <array>

namespace tarvane::app {

struct FlangeOutcome final : Outcome {
    std::array<float, RECORD_ELEMENTS + 1> record{}; // one-based, as the call left it
    float map_nc = 0.0f;
    float t_req_new_cold = 0.0f;
    float t_req_new = 0.0f;
    float mawp = 0.0f;
    float t_req = 0.0f;

    float result(int element) const { return record[static_cast<std::size_t>(element)]; }
};

// Runs a flange of the file in the vessel form. Throws std::runtime_error when the report file cannot
// be opened or read.
FlangeOutcome run_flange(const FlangeInput& flange, const InputFile& file);

} // namespace tarvane::app
