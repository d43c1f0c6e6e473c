// The codes, standards and tables that a calculation goes by.
#pragma once

#include "document/document.h"

#include <string>
#include <vector>

namespace tarvane::vessel {

DocumentSection references_section(const Request& request);

// "flange 1 (N1), shell 2 to 4"; "all components".
std::string names_of(const std::vector<const Element*>& elements, const Request& request);

} // namespace tarvane::vessel
