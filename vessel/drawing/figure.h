// A drawing as a document takes it.
#pragma once

#include <string>
#include <vector>

namespace tarvane::vessel {

// What is around a drawing: nothing, as in a file of its own, which has the font in it; a page that shows it and no more;
// a document, which has its words in the caption.
enum class DrawnFor { file, page, document };

struct Figure {
    std::string svg; // one <svg> element, sized in millimetres, without an XML declaration
    std::string alt; // what it shows, in words, UTF-8; the svg has it as aria-label
    double width = 0, height = 0; // on paper, mm
    std::string scale;            // "1 : 5"; empty: not to scale
    std::string title;            // UTF-8
    std::string notes; // sentences without the last full stop; what was dropped is not among them
    std::vector<std::string> dropped; // dimensions for which there was no room: "h = 2.5"
};

} // namespace tarvane::vessel
