// What `tarvane run` writes, UTF-8.
#pragma once

#include "components/calculation.h"
#include "document/document.h"

#include <string>

namespace tarvane::app {

using namespace vessel;

// What a document says of the file that it is made of, whose content is `text`.
DocumentFacts facts_of(const std::string& path, const std::string& text);

// Of a calculation that was completed: the file of --json.
std::string run_json(const Request& request, const Calculation& calculation,
                     const DocumentFacts& facts);

// To standard output: the report of a component with its checks and its rated pressure.
std::string component_text(const Calculated& component, const UnitSystem& units, bool colour);

// After the last of them: tables of all components, what their data are, the verdict.
std::string closing_text(const Request& request, const Calculation& calculation, bool colour);

} // namespace tarvane::app
