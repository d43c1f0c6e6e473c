// The rated pressure of a component: the greatest design pressure at which every check passes that depends on it.
#pragma once

#include "catalogue/units.h"
#include "fields/results.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tarvane::vessel {

struct Element;
struct Outcome;
struct Request;

// What the search goes by: the geometry that was judged. Without one there is no rated pressure, and why; no
// reason: components of this kind have none.
struct RatingBasis {
    std::unique_ptr<Element> judged;
    float P = 0.0f;                     // its design pressure
    std::optional<float> estimate = {}; // the engine's own of the greatest one
    std::string_view why = {};
    std::string_view exact =
        {}; // id of a check whose limit is a rating: not exceeded, by no tolerance
};

// Pressures in the engine's unit.
struct RatedPressure {
    // A number of the digits that the units of the file show, rounded down. A calculation was made at it.
    std::optional<float> P;
    std::string why; // without one
    std::optional<float> estimate;
    // Of the calculations at these digits: the greatest that passed, the least above it that failed.
    std::optional<float> passes, fails;
    // What fails there, in the order of the checks; nothing else does below.
    std::string_view held_by; // id of the worst
    std::string held_by_words;
    // Checks that no lower pressure lets pass.
    std::vector<std::string_view> anyway; // ids
    std::vector<std::string> anyway_words;
    int calculations = 0;
};

// By calculations without a report; nothing for components of a kind that has none.
std::optional<RatedPressure> find_rated_pressure(const Element& element, const Outcome& outcome,
                                                 const Request& request);

// As a result; its reason lives as long as the rating.
Got rated_pressure_of(const std::optional<RatedPressure>& rated);

// The pressure and what holds it, then what fails at any; nothing without a rating.
std::vector<std::string> rated_pressure_words(const std::optional<RatedPressure>& rated,
                                              const UnitSystem& units);
// The same as lines for people, UTF-8.
std::string rated_pressure_text(const std::optional<RatedPressure>& rated, const UnitSystem& units);

} // namespace tarvane::vessel
