// The results of an [[external]], and of a [[shell]] under external pressure.
#pragma once

#include "fields/external_keys.h"
#include "fields/results.h"

namespace tarvane::vessel {

// What they are taken from, in the engine's units: values by keys, what SHLEXT returned, and for a head
// with a check by UG-33(a)(1) what that gave.
struct ExternalFound {
    const Settings<ExternalNumber, ExternalText>& given;
    std::string_view nothing; // why there is no result at all; else empty
    bool has_pressure, by_chart, by_stress, cylinder;
    float maep, tca, slen, factor_a, factor_b, fha, fail_ca, outside;
    struct Convex {
        float maep, thickness, fail_ca, governing_maep, governing_thickness;
    };
    std::optional<Convex> convex;
};

inline constexpr std::string_view EXTERNAL_TABLE = "External pressure";

std::span<const ResultField> external_result_fields();
std::vector<Result> external_results(const ExternalFound& found);

} // namespace tarvane::vessel
