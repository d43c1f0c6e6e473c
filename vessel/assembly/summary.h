// What a vessel holds as a whole: its pressures, its coldest temperature and its hydrotest, each with the component
// that governs it.
#pragma once

#include "components/calculation.h"
#include "fields/results.h"

#include <optional>
#include <string>
#include <vector>

namespace tarvane::vessel {

struct SummaryRow {
    const ResultField* field;
    std::optional<float> value;  // in the engine's units; nothing where it can't be had
    const Element* by = nullptr; // the component that governs; none: a null pointer
    std::string note;            // how the value comes about
    // Components that have no value, each with the reason. Of a pressure there is none for the vessel then.
    std::vector<std::string> lacks;
};

std::vector<ResultField> summary_fields();

// Of a calculation that is complete.
std::vector<SummaryRow> summary(const Request& request, const Calculation& calculation);

// Lines for people, UTF-8.
std::string summary_text(const Request& request, const std::vector<SummaryRow>& rows);

} // namespace tarvane::vessel
