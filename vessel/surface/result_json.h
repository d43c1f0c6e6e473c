// The texts returned to a host, results and faults as JSON; the program writes its results by the same code.
#pragma once

#include "components/calculation.h"
#include "document/document.h"
#include "values/fault.h"

#include <string>

namespace tarvane::vessel {

// The number of the form of a result, its member "tarvane".
inline constexpr int RESULT_FORM = 1;

// What a result has besides verdicts and inputs.
struct Wanted {
    bool results = false, report = false, drawings = false;
};

// Of a calculation that was completed. With the facts of a document, also the texts of the request about it.
std::string result_json(const Request& request, const Calculation& calculation, Wanted wanted,
                        const DocumentFacts* document = nullptr);

std::string faults_json(const Faults& faults);

} // namespace tarvane::vessel
