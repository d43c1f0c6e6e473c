// The texts that go to a host: results and faults as JSON.
#pragma once

#include "components/calculation.h"
#include "values/fault.h"

#include <string>
#include <string_view>

namespace tarvane::vessel {

// What a result has besides verdicts and inputs.
struct Wanted {
    bool results = false, report = false, drawings = false;
};

inline constexpr std::string_view PASS = "pass", FAIL = "fail", NOT_MADE = "not made";

// "flange[0]"
std::string path_of(const Element& element);

// Of a calculation that nothing ended.
std::string result_json(const Request& request, const Calculation& calculation, Wanted wanted);

std::string faults_json(const Faults& faults);

} // namespace tarvane::vessel
