// A document as a page: one file that needs nothing else and no script, for browsers, printers and for makers of PDF.
#pragma once

#include "document/document.h"

#include <string>

namespace tarvane::vessel {

// UTF-8, with the end of the last line.
std::string html_of(const CalculationDocument& document);

// The blocks of a section without its title and numbers, for a page that has its own.
std::string html_of(const DocumentSection& section);

} // namespace tarvane::vessel
