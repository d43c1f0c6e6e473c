// The calls of one flange: what the host sets, FLANGE_CALC, and its results.
#pragma once

#include "components/flange_input.h"
#include "components/request.h"

#include "tarvane/results.h"

#include <array>
#include <memory>

namespace tarvane::vessel {

struct JudgedFlange;

struct FlangeOutcome final : Outcome {
    std::array<float, RECORD_ELEMENTS + 1> record{}; // one-based, as the call left it
    float map_nc = 0.0f;
    float t_req_new_cold = 0.0f;
    float t_req_new = 0.0f;
    float mawp = 0.0f;
    float t_req = 0.0f;
    TARVANE_FLANGE_RESULTS found{};
    int pwht_required = -1;                       // heat treatment: 1, 0; -1 not known
    std::shared_ptr<const JudgedFlange> rounded;  // of kind "design", where something was selected
    std::shared_ptr<const JudgedFlange> external; // under external pressure, too: the same geometry
    float external_t_req = 0.0f; // of kind "thickness": what that pressure requires, where found

    bool refused() const override { return found.status == TARVANE_REFUSED; }
    float result(int element) const { return record[static_cast<std::size_t>(element)]; }
};

// A calculation of a geometry that another one found.
struct JudgedFlange {
    FlangeInput flange; // of kind "analyse"
    FlangeOutcome outcome;
};

// The two halves of run_flange: what the host sets, from RESET_ENGINE on, then the call with the report
// gates as they are. write_case as FLANGE_CALC takes it.
void set_up_flange(const FlangeInput& flange, const Request& file);
void call_flange(const FlangeInput& flange, const Request& file, std::int32_t write_case,
                 FlangeOutcome& outcome);

// Runs a flange of the file in the vessel form. Throws std::runtime_error when the report file cannot
// be opened or read.
FlangeOutcome run_flange(const FlangeInput& flange, const Request& file);
// The same without a report, on the engine as run_flange has left it after the same flange with other numbers: what the
// host sets has not changed. Alone, under internal pressure, and without a question of heat treatment.
void run_flange_again(const FlangeInput& flange, const Request& file, FlangeOutcome& outcome);

} // namespace tarvane::vessel
