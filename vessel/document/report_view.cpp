#include "document/report_view.h"

#include "values/text.h"

#include <cstdlib>

namespace tarvane::vessel {

namespace {

constexpr std::size_t LINE_COLUMNS = 101; // one blank and the line
constexpr std::size_t MARK_COLUMNS = 2;

constexpr std::string_view STYLE_END = "\033[0m";

// The marks in the order of their importance.
std::string_view look(const std::array<int, 6>& marks) {
    if (marks[4] != 0) return "\033[1;31m";   // error, overstress, failure: bold red
    if (marks[0] != 0) return "\033[1;7;33m"; // highlighted warning: bold, reverse
    if (marks[2] != 0) return "\033[33m";     // warning: yellow
    if (marks[3] != 0) return "\033[36m";     // note, remark: cyan
    if (marks[1] != 0) return "\033[1;4m";    // underlined heading
    if (marks[5] == 2) return "\033[1;34m";   // heading of a calculation: bold blue
    if (marks[5] != 0) return "\033[1m";      // message
    return {};
}

constexpr std::string_view DRAWING_OPENS = "</Image=", DRAWING_CLOSES = "/>";

} // namespace

std::vector<ReportLine> report_lines(std::string_view report) {
    std::vector<ReportLine> lines;
    while (!report.empty()) {
        const std::size_t end = std::min(report.find('\n'), report.size());
        std::string_view record = report.substr(0, end);
        report.remove_prefix(std::min(end + 1, report.size()));
        if (record.ends_with('\r')) record.remove_suffix(1);
        ReportLine line;
        if (record.size() > LINE_COLUMNS) {
            std::string_view marks = record.substr(LINE_COLUMNS);
            for (int& mark : line.marks) {
                mark = std::atoi(std::string(marks.substr(0, MARK_COLUMNS)).c_str());
                marks.remove_prefix(std::min(MARK_COLUMNS, marks.size()));
            }
            record = record.substr(0, LINE_COLUMNS);
        }
        if (!record.empty()) record.remove_prefix(1);
        line.text = record.substr(0, record.find_last_not_of(' ') + 1);
        lines.push_back(std::move(line));
    }
    return lines;
}

bool is_drawing(std::string_view line) {
    return line.starts_with(DRAWING_OPENS) && line.ends_with(DRAWING_CLOSES);
}

std::string shown_drawing(const std::string& line) {
    const std::size_t name = line.find_last_of('\\') + 1;
    const std::size_t end = line.find_last_of('.');
    if (name <= DRAWING_OPENS.size() || end == std::string::npos || end < name) return line;
    return "[Drawing: " + line.substr(name, end - name) + ']';
}

std::string show_report(std::string_view report, bool colour) {
    std::string out;
    for (const ReportLine& line : report_lines(report)) {
        const std::string text =
            to_utf8(is_drawing(line.text) ? shown_drawing(line.text) : line.text);
        const std::string_view style = colour && !text.empty() ? look(line.marks) : "";
        out += style;
        out += text;
        if (!style.empty()) out += STYLE_END;
        out += '\n';
    }
    return out;
}

} // namespace tarvane::vessel
