// What the page gets about an open document.
#pragma once

#include "serve/rating_memory.h"
#include "serve/workbench.h"

#include <string>

namespace tarvane::app {

// Text, fields that it gives, and what became of its file.
std::string state_json(Workbench& workbench, const OpenDocument& document);

// A text calculated: verdict, components, faults, and one component in full with drawing, checks, results and the lines
// of its calculation. `component`: "flange[0]"; for another text the one that governs.
std::string result_json_of(const std::string& toml, const std::string& component,
                           RatingMemory& memory);

// What differs between two texts, the file and the one that is edited.
std::string comparison_json(const std::string& before, const std::string& after);

} // namespace tarvane::app
