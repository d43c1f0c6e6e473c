// From report records with style marks to what a reader sees on a terminal or in a text file.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace tarvane::vessel {

// One record of a report file: a blank, 100 columns, and six marks of two columns each when any is
// set.
struct ReportLine {
    std::string text; // without the leading and the trailing blanks of the record; Western
    std::array<int, 6> marks{};
};

std::vector<ReportLine> report_lines(std::string_view report);

// The drawing of a flange type is a keyword for a graphical viewer; a text shows its name.
bool is_drawing(std::string_view line);
std::string shown_drawing(const std::string& line); // "[Drawing: WeldNeckFlange]"

// The report as UTF-8 text. With colour, the marks become bold, underline and colour.
std::string show_report(std::string_view report, bool colour);

} // namespace tarvane::vessel
