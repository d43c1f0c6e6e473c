// The results of a [[flange]], by the symbols of the report.
#pragma once

#include "fields/results.h"
#include "tarvane/results.h"

namespace tarvane::vessel {

// What they are taken from, in the engine's units: record as given and as FLANGE_CALC left it, its
// arguments, its block of results.
struct FlangeFound {
    const float* given; // one-based
    const float* record;
    const TARVANE_FLANGE_RESULTS& block;
    float mawp, map_nc, t_req, t_req_new, t_req_new_cold;
    float rating; // as given; 0: none
    bool stopped;
    bool rated;           // of kind rated, without a calculation
    const float* rounded; // record of the rounded design; none: a null pointer
    Got rated_pressure;
};

inline constexpr std::string_view FLANGE_TABLE = "Results", DESIGN_TABLE = "Selected design",
                                  ROUNDED_TABLE = "Rounded design, as judged",
                                  RATED_TABLE = "Rated flanges";

std::span<const ResultField> flange_result_fields();
std::vector<Result> flange_results(const FlangeFound& found);
// The one at a place of the list.
Result flange_result(const FlangeFound& found, std::size_t place);

// "hub small end as a cylinder": what limits a pressure, by TARVANE_BY_...; empty: it is not known.
std::string_view held_down_by(int by);

} // namespace tarvane::vessel
