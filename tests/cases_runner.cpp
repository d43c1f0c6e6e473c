// The case language: small text files in which a case names a routine, gives inputs by name and says
// says what must result. See docs/cases.md.
//
//   tarvane_cases DATA_FOLDER CASE_FOLDER_OR_FILE...
#include "cases_routines.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>

namespace {

namespace fs = std::filesystem;
using cases::CaseError;
using cases::Line;
using cases::Value;

struct Input {
    std::string name, written; // as written after the "="
};

struct Expectation {
    int line = 0;
    std::string name;
    std::string wanted; // number, text in quotes, "none"
    double tolerance = 0.0;
    bool relative = false, exact = true;
};

struct LineExpectation {
    int line = 0;
    bool absent = false, part = false;
    std::optional<std::array<int, 6>> marks;
    std::string text;
};

struct Case {
    std::string name;
    int line = 0;
    std::vector<std::string> routines;
    std::vector<Input> inputs;
    std::vector<Expectation> expectations;
    std::vector<LineExpectation> lines;
};

// ---- reading -----------------------------------------------------------------------------------------

std::string stripped(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t\r");
    if (first == std::string_view::npos) return {};
    return std::string(text.substr(first, text.find_last_not_of(" \t\r") - first + 1));
}

// A "#" outside of quotes begins a comment.
std::string without_comment(const std::string& line) {
    bool quoted = false;
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (line[i] == '"') quoted = !quoted;
        if (line[i] == '#' && !quoted) return line.substr(0, i);
    }
    return line;
}

// The Western text between the outermost quotes; the case files are UTF-8.
std::string quoted_text(const std::string& text) {
    if (text.size() < 2 || text.front() != '"' || text.back() != '"')
        throw CaseError("a text in double quotes is expected, not " + text);
    std::string western;
    for (std::size_t i = 1; i + 1 < text.size(); ++i) {
        const auto c = static_cast<unsigned char>(text[i]);
        if (c == 0xC2 || c == 0xC3) {
            const auto next = static_cast<unsigned char>(text[++i]);
            western += static_cast<char>(((c & 3u) << 6) | (next & 0x3Fu));
        } else {
            western += text[i];
        }
    }
    return western;
}

double number(const std::string& text) {
    if (text == "none") return static_cast<double>(-1.0101f);
    char* end = nullptr;
    const double value = std::strtod(text.c_str(), &end);
    if (text.empty() || *end != '\0') throw CaseError("a number is expected, not " + text);
    return value;
}

// Takes the word off the start of the line if it is there.
bool take(std::string& line, std::string_view word) {
    if (!line.starts_with(word)) return false;
    if (line.size() > word.size() && line[word.size()] != ' ') return false;
    line = stripped(line.substr(word.size()));
    return true;
}

Expectation read_expectation(std::string line) {
    Expectation e;
    const std::size_t equals = line.find('=');
    if (equals == std::string::npos) throw CaseError("expect NAME = VALUE");
    e.name = stripped(line.substr(0, equals));
    e.wanted = stripped(line.substr(equals + 1));
    const std::size_t within = e.wanted.rfind(" within ");
    if (e.wanted.front() != '"' && within != std::string::npos) {
        std::string tolerance = stripped(e.wanted.substr(within + 8));
        e.relative = !tolerance.empty() && tolerance.back() == '%';
        if (e.relative) tolerance.pop_back();
        e.tolerance = number(stripped(tolerance)) * (e.relative ? 0.01 : 1.0);
        e.exact = false;
        e.wanted = stripped(e.wanted.substr(0, within));
    }
    return e;
}

LineExpectation read_line_expectation(std::string line, bool absent) {
    LineExpectation e;
    e.absent = absent;
    e.part = take(line, "with");
    if (take(line, "marks")) {
        std::array<int, 6> marks{};
        for (int& mark : marks) {
            char* end = nullptr;
            mark = static_cast<int>(std::strtol(line.c_str(), &end, 10));
            if (end == line.c_str()) throw CaseError("six marks are expected");
            line = stripped(end);
        }
        e.marks = marks;
    }
    e.text = quoted_text(line);
    return e;
}

void read_statement(std::string line, int at, std::vector<Case>& all) {
    if (take(line, "case")) {
        if (std::any_of(all.begin(), all.end(), [&](const Case& c) { return c.name == line; }))
            throw CaseError("there is a case of this name already");
        all.push_back({});
        all.back().name = line;
        all.back().line = at;
        return;
    }
    if (all.empty()) throw CaseError("a case is expected");
    Case& now = all.back();
    if (take(line, "like")) {
        const auto other =
            std::find_if(all.begin(), all.end() - 1, [&](const Case& c) { return c.name == line; });
        if (other == all.end() - 1) throw CaseError("there is no case of this name before");
        now.routines = other->routines;
        now.inputs = other->inputs;
    } else if (take(line, "routine")) {
        now.routines.clear();
        std::size_t from = 0;
        while (from <= line.size()) {
            const std::size_t comma = std::min(line.find(',', from), line.size());
            now.routines.push_back(stripped(line.substr(from, comma - from)));
            from = comma + 1;
        }
    } else if (take(line, "expect")) {
        now.expectations.push_back(read_expectation(line));
        now.expectations.back().line = at;
    } else if (take(line, "line")) {
        now.lines.push_back(read_line_expectation(line, false));
        now.lines.back().line = at;
    } else if (take(line, "no line")) {
        now.lines.push_back(read_line_expectation(line, true));
        now.lines.back().line = at;
    } else if (const std::size_t equals = line.find('='); equals != std::string::npos) {
        const std::string name = stripped(line.substr(0, equals));
        std::erase_if(now.inputs, [&](const Input& i) { return i.name == name; });
        const std::string written = stripped(line.substr(equals + 1));
        if (!written.empty()) now.inputs.push_back({name, written}); // "NAME =" removes it
    } else {
        throw CaseError("no statement of the case language: " + line);
    }
}

// ---- running -----------------------------------------------------------------------------------------

class Report {
  public:
    explicit Report(std::string path) : file(std::move(path)) {}
    void fault(int line, const std::string& message) {
        ++faults;
        std::printf("%s:%d: %s\n", file.c_str(), line, message.c_str());
    }
    int faults = 0;

  private:
    std::string file;
};

std::string shown(double value) {
    char text[40];
    std::snprintf(text, sizeof text, "%.9g", value);
    return text;
}

void check_expectation(const Expectation& e, const cases::Values& values, Report& report) {
    Value found;
    if (const auto at = values.results.find(e.name); at != values.results.end()) {
        found = at->second;
    } else if (!cases::get_member(e.name, found)) {
        throw CaseError("there is no result " + e.name);
    }
    if (const auto* text = std::get_if<std::string>(&found)) {
        const std::string wanted = quoted_text(e.wanted);
        if (*text != wanted)
            report.fault(e.line, e.name + " is \"" + *text + "\", not \"" + wanted + '"');
        return;
    }
    const double value = std::get<double>(found);
    const double wanted = static_cast<double>(static_cast<float>(number(e.wanted)));
    const double limit = e.relative ? e.tolerance * std::fabs(wanted) : e.tolerance;
    const bool agrees = std::isnan(wanted)              ? std::isnan(value)
                        : e.exact || std::isinf(wanted) ? value == wanted
                                                        : std::fabs(value - wanted) <= limit;
    if (!agrees) {
        std::string message = e.name + " is " + shown(value) + ", not " + e.wanted;
        if (wanted != 0.0 && std::isfinite(wanted))
            message += " (" + shown((value - wanted) / wanted * 100.0) + " %)";
        report.fault(e.line, message);
    }
}

void check_line(const LineExpectation& e, const std::vector<Line>& lines, Report& report) {
    const auto fits = [&](const Line& line) {
        if (e.marks && line.marks != *e.marks) return false;
        return e.part ? line.text.find(e.text) != std::string::npos : line.text == e.text;
    };
    const bool found = std::any_of(lines.begin(), lines.end(), fits);
    if (found == e.absent)
        report.fault(e.line, (e.absent ? "there is a line " : "there is no line ") +
                                 std::string(e.part ? "with \"" : "\"") + e.text + '"' +
                                 (e.marks ? " and these marks" : ""));
}

// Inputs go to the routine that names them, the others to the flange state.
void run_routines(const Case& c, cases::Values& values, std::vector<Line>& lines) {
    std::vector<const cases::Routine*> routines;
    for (const std::string& name : c.routines) {
        routines.push_back(cases::find_routine(name));
        if (routines.back() == nullptr) throw CaseError("there is no routine " + name);
    }
    const auto units = std::find_if(c.inputs.begin(), c.inputs.end(),
                                    [](const Input& i) { return i.name == "units"; });
    cases::prepare(units != c.inputs.end() && units->written == "\"SI\"");
    for (const Input& input : c.inputs) {
        if (input.name == "units") continue;
        const Value value = input.written.front() == '"' ? Value(quoted_text(input.written))
                                                         : Value(number(input.written));
        const bool argument =
            std::any_of(routines.begin(), routines.end(), [&](const cases::Routine* r) {
                return std::find(r->arguments.begin(), r->arguments.end(), input.name) !=
                       r->arguments.end();
            });
        if (argument) {
            values.give(input.name, value);
        } else if (!cases::set_member(input.name, value)) {
            throw CaseError("there is no input " + input.name);
        }
    }
    for (const cases::Routine* routine : routines)
        routine->call(values);
    lines = cases::stored_lines();
}

void run_case(const Case& c, Report& report) {
    if (c.routines.empty()) throw CaseError("the case " + c.name + " names no routine");
    if (c.expectations.empty() && c.lines.empty())
        throw CaseError("the case " + c.name + " expects nothing");
    cases::Values values;
    std::vector<Line> lines;
    if (c.routines.front() == "FLANGE_CALC") {
        std::string head, flange = "[[flange]]\n";
        for (const Input& i : c.inputs) {
            const bool of_the_file =
                i.name == "units" || i.name == "decimal_comma" || i.name == "metric_constants";
            (of_the_file ? head : flange) += i.name + " = " + i.written + '\n';
        }
        cases::run_host(head + flange, values, lines);
    } else {
        run_routines(c, values, lines);
    }
    for (const Expectation& e : c.expectations)
        check_expectation(e, values, report);
    for (const LineExpectation& e : c.lines)
        check_line(e, lines, report);
}

int run_file(const fs::path& path, std::size_t& count) {
    std::ifstream file(path);
    if (!file) throw std::runtime_error("cannot read " + path.string());
    Report report(path.string());
    std::vector<Case> all;
    int at = 0;
    for (std::string line; std::getline(file, line);) {
        ++at;
        const std::string statement = stripped(without_comment(line));
        if (statement.empty()) continue;
        try {
            read_statement(statement, at, all);
        } catch (const CaseError& error) {
            report.fault(at, error.what());
        }
    }
    if (report.faults > 0) return report.faults;
    for (const Case& c : all) {
        const int before = report.faults;
        try {
            run_case(c, report);
        } catch (const CaseError& error) {
            report.fault(c.line, error.what());
        }
        if (report.faults > before) std::printf("FAILED %s\n", c.name.c_str());
    }
    count += all.size();
    return report.faults;
}

} // namespace

int main(int argc, char** argv) try {
    if (argc < 3) {
        std::fprintf(stderr, "usage: tarvane_cases DATA_FOLDER CASE_FOLDER_OR_FILE...\n");
        return 2;
    }
    cases::use_data_folder(fs::absolute(argv[1]).string());
    std::vector<fs::path> files;
    for (int i = 2; i < argc; ++i) {
        if (!fs::is_directory(argv[i])) {
            files.emplace_back(argv[i]);
            continue;
        }
        for (const auto& entry : fs::directory_iterator(argv[i]))
            if (entry.path().extension() == ".case") files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    int faults = 0;
    std::size_t count = 0;
    for (const fs::path& file : files)
        faults += run_file(file, count);
    std::printf("%zu cases, %d faults\n", count, faults);
    return faults == 0 && count > 0 ? 0 : 1;
} catch (const std::exception& problem) {
    std::fprintf(stderr, "%s\n", problem.what());
    return 2;
}
