// The openings of a flat head or cover by UG-39, as checks.
#pragma once

#include "catalogue/units.h"
#include "components/check.h"

#include <cstdint>
#include <span>

namespace tarvane::vessel {

// As in GETFLANGERESULTS and GETSHELLRESULTS: the rule, the length that breaks it, its limit.
struct OpeningFaults {
    std::span<const std::int32_t> rules;
    std::span<const float> found, limits;
};

template <class Results>
OpeningFaults faults_of(const Results& results) {
    const auto count = static_cast<std::size_t>(results.opening_violations);
    return {{results.opening_rule, count},
            {results.opening_found, count},
            {results.opening_limit, count}};
}

// A row for each rule that is broken; one for all of them without any.
void check_openings(const OpeningFaults& faults, const UnitSystem& units, Checks& checks);

} // namespace tarvane::vessel
