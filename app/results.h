// The results of a run: verdict on each flange, tables that close the output.
#pragma once

#include "engine_session.h"

#include <string>
#include <vector>

namespace tarvane::app {

// Exit statuses of `tarvane run`, the graver the higher.
enum class Status { fine = 0, fails = 1, bad_input = 2, stopped = 3 };

struct Verdict {
    Status status = Status::fine;
    std::vector<std::string> reasons; // one line each, UTF-8
};

Verdict judge(const FlangeInput& flange, const FlangeOutcome& outcome, const UnitSystem& units);

struct FlangeResult {
    const FlangeInput* flange;
    const FlangeOutcome* outcome;
};

// Results side by side in the units of the file, UTF-8; "none" where there is none.
std::string results_table(const std::vector<FlangeResult>& results, const UnitSystem& units);
// The geometry that was selected, of the flanges of kind design; empty when there are none.
std::string design_table(const std::vector<FlangeResult>& results, const UnitSystem& units);

} // namespace tarvane::app
