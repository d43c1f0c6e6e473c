// The texts returned to a host: results and faults as JSON.
#pragma once

#include "components/calculation.h"
#include "values/fault.h"

#include <string>

namespace tarvane::vessel {

// What a result has besides verdicts and inputs.
struct Wanted {
    bool results = false, report = false, drawings = false;
};

// Of a calculation that was completed.
std::string result_json(const Request& request, const Calculation& calculation, Wanted wanted);

std::string faults_json(const Faults& faults);

} // namespace tarvane::vessel
