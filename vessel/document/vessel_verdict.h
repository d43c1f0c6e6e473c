// The verdict on all components together, which closes a run: what was checked passes or doesn't, and what the
// program does not look at.
#pragma once

#include "components/calculation.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarvane::vessel {

// The check that is nearest to its limit or furthest beyond, and the component that it is of.
struct Governing {
    const Element* element;
    Check check;
};

struct VesselVerdict {
    bool passes = false;
    std::string_view verdict; // "pass", "fail", "not made": the worst of the components
    // "every check that decides passes" where a warning or an advice is exceeded.
    std::string
        words; // "every check that tarvane makes passes; governing: flange 1 (channel), bolt area, 0.9312"
    std::vector<std::string_view> not_covered;
    std::optional<Governing> governing = {}; // of all components; nothing without checks
};

VesselVerdict vessel_verdict(const Request& request, const Calculation& calculation);

// A blank line, PASS or FAIL with the words, then the list.
std::string text_of(const VesselVerdict& verdict, bool colour);

} // namespace tarvane::vessel
