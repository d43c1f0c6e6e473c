// From the text of an input file to the components that it describes.
#pragma once

#include "assembly/reader.h"

#include <string>
#include <string_view>

namespace tarvane::app {

using namespace vessel;

// `strict`: as if the text said so.
ReadResult read_input(std::string_view toml_text,
                      std::span<const ElementKind* const> kinds = element_kinds(),
                      bool strict = false);

// "FILE:LINE: KEY: message", fit for a terminal.
std::string fault_line(std::string_view path, const Fault& fault);

// The lines of the first faults, and the number of the others.
std::string fault_report(std::string_view path, const Faults& faults);

} // namespace tarvane::app
