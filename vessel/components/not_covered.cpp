#include "components/not_covered.h"

#include "components/external_input.h"
#include "components/flange_input.h"
#include "components/mdmt_input.h"
#include "components/shell_input.h"
#include "tarvane/tarvane.h"

#include <algorithm>

namespace tarvane::vessel {

namespace {

bool is_wall(const Element& element) {
    return element.kind == &SHELL_KIND || element.kind == &EXTERNAL_KIND;
}

bool is_cone(const Element& element) {
    if (element.kind == &SHELL_KIND)
        return static_cast<const ShellInput&>(element).shape() == TARVANE_CONE;
    return element.kind == &EXTERNAL_KIND &&
           static_cast<const ExternalInput&>(element).shape() == TARVANE_CONE;
}

bool is_pressure_part(const Element& element) {
    return is_wall(element) || element.kind == &FLANGE_KIND;
}

// The codes of shells and metal temperatures are ASME's.
bool by_asme(const Element& element) {
    return element.kind != &FLANGE_KIND ||
           static_cast<const FlangeInput&>(element).code() <= TARVANE_ASME_VIII_2;
}

using Test = bool (*)(const Element&);

bool any(const Request& request, Test test) {
    return std::any_of(request.elements.begin(), request.elements.end(),
                       [test](const auto& element) { return test(*element); });
}

bool has_walls(const Request& r) { return any(r, is_wall); }
bool has_cones(const Request& r) { return any(r, is_cone); }
bool has_parts(const Request& r) { return any(r, is_pressure_part); }
bool lacks_temperatures(const Request& r) {
    return has_parts(r) && !any(r, [](const Element& e) { return e.kind == &MDMT_KIND; });
}

struct NotCovered {
    std::string_view what, by_asme; // the same with ASME's paragraphs
    bool (*applies)(const Request&);
};

constexpr NotCovered ROWS[] = {
    {"openings and their reinforcement",
     "openings and their reinforcement, UG-36 to UG-45 (flat heads: their spacing alone, UG-39)",
     has_walls},
    {"junctions of a cone", "junctions of a cone, Appendix 1-5 and 1-8", has_cones},
    {"supports and lugs", "supports and lugs, UG-54", has_parts},
    {"wind, earthquake and other loads than those given",
     "wind, earthquake and other loads than those given, UG-22", has_parts},
    {"fatigue", "fatigue, UG-22", has_parts},
    {"welds and their examination", "welds and their examination, UW-3 to UW-13", has_walls},
    {"lowest metal temperatures: no [[mdmt]] asks for one",
     "lowest metal temperatures, UCS-66: no [[mdmt]] asks for one", lacks_temperatures},
};

} // namespace

std::vector<std::string_view> not_covered(const Request& request) {
    const bool asme = any(request, by_asme);
    std::vector<std::string_view> words;
    for (const NotCovered& row : ROWS) {
        if (row.applies(request)) words.push_back(asme ? row.by_asme : row.what);
    }
    return words;
}

} // namespace tarvane::vessel
