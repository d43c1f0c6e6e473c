// A drawing as a document takes it.
#pragma once

#include <string>
#include <vector>

namespace tarvane::vessel {

struct Figure {
    std::string svg; // one <svg> element, sized in millimetres, without an XML declaration
    std::string alt; // what it shows, in words, UTF-8; the svg has it as aria-label
    double width = 0, height = 0;     // on paper, mm
    std::string scale;                // "1 : 5"; empty: not to scale
    std::vector<std::string> dropped; // dimensions for which there was no room: "h = 2.5"
};

} // namespace tarvane::vessel
