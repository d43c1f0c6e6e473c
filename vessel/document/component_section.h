// The section of a document about one component.
#pragma once

#include "document/document.h"

namespace tarvane::vessel {

// A component with what was found for it.
struct Judged {
    const Element& element;
    const Outcome& outcome;
    const Verdict& verdict;
};

// `figures`: how many drawings the document has before it; those of the component are added.
DocumentSection component_section(const Request& request, const Judged& judged, Detail detail,
                                  int& figures);

// Its caption has the words that a drawing of its own has in its frame, after a title.
Drawing numbered_drawing(Figure figure, const std::string& title, int number);

// "shell-2"
std::string id_of(const Element& element);

// The result as a document shows it, without its unit: "0.7500", "yes", "bolts".
std::string result_text(const Result& result, const UnitSystem& units);

} // namespace tarvane::vessel
