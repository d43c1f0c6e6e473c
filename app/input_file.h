// From the text of an input file to the elements that it describes, in the engine's units.
#pragma once

#include "element.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tarvane::app {

struct InputFile {
    UnitSystem units = us_units();
    bool decimal_comma = false;
    bool metric_constants = false;                  // the code's dimensions of its metric edition
    std::vector<std::unique_ptr<Element>> elements; // in the order of the file
};

struct ReadResult {
    InputFile file;
    std::vector<Fault>
        faults; // in the order of the lines; the file holds nothing when there are any
};

ReadResult read_input(std::string_view toml_text,
                      std::span<const ElementKind* const> kinds = element_kinds());

// "FILE:LINE: KEY: message", fit for a terminal.
std::string fault_line(std::string_view path, const Fault& fault);

// The lines of the first faults, and the number of the others.
inline constexpr std::size_t MOST_FAULT_LINES = 50;
std::string fault_report(std::string_view path, const std::vector<Fault>& faults);

} // namespace tarvane::app
