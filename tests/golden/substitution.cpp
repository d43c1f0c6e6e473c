// Walks every golden report and evaluates each printed number line that is an arithmetic expression:
// it must give the value line under it, within the rounding of the printed operands. Formula text and
// formula code are written separately; this shows that they agree.
//
//   tarvane_substitution DIRECTORY EXCEPTIONS
//
// A line of the exceptions file names a report (with * as wildcard), the title above the symbol line,
// and the reason, separated by " | ". An exception that excuses nothing is a failure too. Every record
// must be one of 100 columns, with or without marks, and no number may have failed to fit its field.
#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <limits>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

// ---- interval arithmetic ---------------------------------------------------------------------------

struct Interval {
    double lo, hi;
};

Interval hull(std::initializer_list<double> values) { return {std::min(values), std::max(values)}; }
Interval operator+(Interval a, Interval b) { return {a.lo + b.lo, a.hi + b.hi}; }
Interval operator-(Interval a, Interval b) { return {a.lo - b.hi, a.hi - b.lo}; }
Interval operator*(Interval a, Interval b) {
    return hull({a.lo * b.lo, a.lo * b.hi, a.hi * b.lo, a.hi * b.hi});
}
Interval operator/(Interval a, Interval b) {
    if (b.lo <= 0.0 && b.hi >= 0.0)
        return {-std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()};
    return hull({a.lo / b.lo, a.lo / b.hi, a.hi / b.lo, a.hi / b.hi});
}
Interval power(Interval a, double n) {
    if (n == 2.0 && a.lo < 0.0 && a.hi > 0.0) return {0.0, std::max(a.lo * a.lo, a.hi * a.hi)};
    return hull({std::pow(a.lo, n), std::pow(a.hi, n)});
}

// ---- expressions -------------------------------------------------------------------------------------

struct NotAnExpression : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// Superscripts, brackets, functions and implied products as the report prints them.
class Expression {
  public:
    explicit Expression(std::string text) : source(std::move(text)) {}

    Interval value() {
        const Interval result = sum();
        skip();
        if (at < source.size()) throw NotAnExpression("text behind the expression");
        return result;
    }
    int operands() const { return numbers; }

  private:
    std::string source;
    std::size_t at = 0;
    int numbers = 0;

    void skip() {
        while (at < source.size() && source[at] == ' ')
            ++at;
    }
    bool take(char c) {
        skip();
        if (at >= source.size() || source[at] != c) return false;
        ++at;
        return true;
    }
    char peek() {
        skip();
        return at < source.size() ? source[at] : '\0';
    }

    Interval sum() {
        Interval left = product();
        for (;;) {
            if (take('+'))
                left = left + product();
            else if (take('-'))
                left = left - product();
            else
                return left;
        }
    }

    Interval product() {
        Interval left = factor();
        for (;;) {
            skip();
            if (source.compare(at, 2, "**") == 0) throw NotAnExpression("power without a base");
            if (take('*'))
                left = left * factor();
            else if (take('/'))
                left = left / factor();
            else if (peek() == '(' || peek() == '[')
                left = left * factor(); // "3(3+0.3)"
            else
                return left;
        }
    }

    Interval factor() {
        if (take('-')) {
            const Interval x = factor();
            return {-x.hi, -x.lo};
        }
        if (take('+')) return factor();
        Interval base = primary();
        for (;;) {
            skip();
            const char c = at < source.size() ? source[at] : '\0';
            if (c == '\xB2')
                ++at, base = power(base, 2.0);
            else if (c == '\xB3')
                ++at, base = power(base, 3.0);
            else if (c == '\xBD')
                ++at, base = power(base, 0.5);
            else if (c == '^')
                ++at, base = power(base, exponent());
            else if (source.compare(at, 2, "**") == 0)
                at += 2, base = power(base, exponent());
            else
                return base;
        }
    }

    double exponent() {
        const Interval n = primary();
        return (n.lo + n.hi) / 2.0;
    }

    Interval primary() {
        skip();
        if (take('(')) return closed(')');
        if (take('[')) return closed(']');
        if (std::isalpha(static_cast<unsigned char>(peek()))) return function();
        return number();
    }

    Interval closed(char bracket) {
        const Interval inner = sum();
        if (!take(bracket)) throw NotAnExpression("bracket not closed");
        return inner;
    }

    Interval function() {
        std::string name;
        while (at < source.size() && std::isalpha(static_cast<unsigned char>(source[at])))
            name += source[at++];
        if (!take('(')) throw NotAnExpression("the word " + name);
        Interval x = sum();
        if (name == "max" || name == "min") {
            while (take(',') || take(';')) {
                const Interval y = sum();
                x = name == "max" ? Interval{std::max(x.lo, y.lo), std::max(x.hi, y.hi)}
                                  : Interval{std::min(x.lo, y.lo), std::min(x.hi, y.hi)};
            }
        } else if (name == "sqrt") {
            x = {std::sqrt(x.lo), std::sqrt(x.hi)};
        } else if (name == "sin") {
            x = hull({std::sin(x.lo), std::sin(x.hi)});
        } else if (name == "abs") {
            x = hull({std::fabs(x.lo), std::fabs(x.hi)});
        } else if (name == "Ln" || name == "ln") {
            x = {std::log(x.lo), std::log(x.hi)};
        } else if (name == "exp") {
            x = {std::exp(x.lo), std::exp(x.hi)};
        } else {
            throw NotAnExpression("the word " + name);
        }
        if (!take(')')) throw NotAnExpression("bracket not closed");
        return x;
    }

    // A printed number represents every value that rounds to it; a short whole number is a constant of
    // the formula, and exact.
    Interval number() {
        skip();
        std::size_t end = at;
        int decimals = 0;
        bool point = false;
        while (end < source.size() && (std::isdigit(static_cast<unsigned char>(source[end])) ||
                                       (source[end] == '.' && !point))) {
            if (source[end] == '.')
                point = true;
            else if (point)
                ++decimals;
            ++end;
        }
        if (end == at || end - at == (point ? 1u : 0u)) throw NotAnExpression("no number");
        double scale = 1.0;
        std::size_t stop = end;
        if (stop + 3 < source.size() + 1 && source[stop] == 'E' && stop + 4 <= source.size()) {
            scale = std::pow(10.0, std::stod(source.substr(stop + 1, 3)));
            stop += 4;
        }
        const double x = std::stod(source.substr(at, end - at));
        const bool exact = !point && x <= 12.0;
        const double half = exact ? 0.0 : 0.5 * std::pow(10.0, -decimals);
        at = stop;
        ++numbers;
        return {(x - half) * scale, (x + half) * scale};
    }
};

// ---- reports ---------------------------------------------------------------------------------------------

struct Exception {
    std::string report, title, reason;
    int used = 0;
};

std::string trimmed(std::string text) {
    while (!text.empty() && text.back() == ' ')
        text.pop_back();
    const std::size_t first = text.find_first_not_of(' ');
    return first == std::string::npos ? std::string() : text.substr(first);
}

bool matches(const std::string& pattern, const std::string& text) {
    const std::size_t star = pattern.find('*');
    if (star == std::string::npos) return pattern == text;
    const std::string head = pattern.substr(0, star), tail = pattern.substr(star + 1);
    return text.size() >= head.size() + tail.size() && text.compare(0, head.size(), head) == 0 &&
           text.compare(text.size() - tail.size(), tail.size(), tail) == 0;
}

// Columns 2 to 101 of each record.
std::vector<std::string> report_lines(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);)
        lines.push_back(line.size() > 1 ? line.substr(1, 100) : std::string());
    return lines;
}

struct PrintedValue {
    double value, half;
};

// " = 12.345 psi": one number, then at most a unit and a remark.
std::optional<PrintedValue> value_line(const std::string& line) {
    const std::string text = trimmed(line);
    if (text.compare(0, 2, "= ") != 0) return {};
    const std::string rest = trimmed(text.substr(2));
    std::size_t used = 0;
    double x = 0.0;
    try {
        x = std::stod(rest, &used);
    } catch (const std::exception&) {
        return {};
    }
    const std::string number = rest.substr(0, used), behind = trimmed(rest.substr(used));
    for (const char* op : {"+", "*", "/", "(", "^", "\xB2", ","})
        if (behind.compare(0, 1, op) == 0) return {};
    if (behind.size() > 1 && behind[0] == '-') return {};
    const std::size_t point = number.find('.');
    const double decimals = point == std::string::npos ? 0.0 : double(number.size() - point - 1);
    return PrintedValue{x, 0.5 * std::pow(10.0, -decimals)};
}

bool is_number_line(const std::string& line) {
    const std::string text = trimmed(line);
    if (text.compare(0, 2, "= ") != 0) return false;
    const bool digits = text.find_first_of("0123456789") != std::string::npos;
    return digits && !value_line(line);
}

bool is_continuation(const std::string& line) {
    const std::string text = trimmed(line);
    return line.compare(0, 3, "   ") == 0 && !text.empty() && text[0] != '=' &&
           std::string("+-*/(0123456789.").find(text[0]) != std::string::npos;
}

struct Tally {
    int evaluated = 0, excused = 0, failed = 0, words = 0, misshapen = 0;
};

void check_form(const std::filesystem::path& path, Tally& tally) {
    std::ifstream file(path, std::ios::binary);
    int number = 0;
    for (std::string record; std::getline(file, record);) {
        ++number;
        const bool form = record.size() == 101 || record.size() == 113;
        if (form && record.find("***") == std::string::npos) continue;
        ++tally.misshapen;
        std::printf("%s:%d: %s\n", path.stem().string().c_str(), number,
                    form ? "a number that does not fit" : "no record of 100 columns");
    }
}

void check_report(const std::filesystem::path& path, std::vector<Exception>& exceptions,
                  Tally& tally) {
    const std::string name = path.stem().string();
    const std::vector<std::string> lines = report_lines(path);
    for (std::size_t i = 1; i + 1 < lines.size(); ++i) {
        if (!is_number_line(lines[i])) continue;
        std::string text = trimmed(lines[i]).substr(2);
        std::size_t next = i + 1;
        while (next < lines.size() && is_continuation(lines[next]))
            text += " " + trimmed(lines[next++]);
        if (next >= lines.size()) continue;
        const std::optional<PrintedValue> printed = value_line(lines[next]);
        if (!printed) continue;
        const std::string symbol = trimmed(lines[i - 1]);
        const std::string title = i >= 2 ? trimmed(lines[i - 2]) : std::string();

        std::string fault;
        try {
            Expression expression(text);
            const Interval value = expression.value();
            const double slack = printed->half + 1.0e-5 * std::fabs(printed->value);
            if (!(printed->value >= value.lo - slack && printed->value <= value.hi + slack)) {
                char range[80];
                std::snprintf(range, sizeof range, "gives %.7g to %.7g", value.lo, value.hi);
                fault = range;
            }
        } catch (const NotAnExpression& problem) {
            // A line with words in it ("+ Ca") is no arithmetic expression.
            if (std::string(problem.what()).compare(0, 8, "the word") == 0) {
                ++tally.words;
                continue;
            }
            fault = problem.what();
        }
        if (fault.empty()) {
            ++tally.evaluated;
            continue;
        }
        bool excused = false;
        for (Exception& exception : exceptions) {
            if (!matches(exception.report, name) || exception.title != title) continue;
            ++exception.used;
            excused = true;
        }
        if (excused) {
            ++tally.excused;
            continue;
        }
        ++tally.failed;
        std::printf("%s:%zu: %s\n    %s\n    %s\n    %s\n    the number line %s\n", name.c_str(),
                    i + 1, title.c_str(), symbol.c_str(), text.c_str(),
                    trimmed(lines[next]).c_str(), fault.c_str());
    }
}

std::vector<Exception> read_exceptions(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) throw std::runtime_error("cannot read " + path.string());
    std::vector<Exception> exceptions;
    for (std::string line; std::getline(file, line);) {
        if (line.empty() || line[0] == '#') continue;
        const std::size_t a = line.find(" | ");
        const std::size_t b = a == std::string::npos ? a : line.find(" | ", a + 3);
        if (b == std::string::npos) throw std::runtime_error("three fields wanted: " + line);
        exceptions.push_back({trimmed(line.substr(0, a)), trimmed(line.substr(a + 3, b - a - 3)),
                              line.substr(b + 3)});
    }
    return exceptions;
}

} // namespace

int main(int argc, char** argv) try {
    if (argc != 3) {
        std::fprintf(stderr, "usage: tarvane_substitution DIRECTORY EXCEPTIONS\n");
        return 2;
    }
    std::vector<Exception> exceptions = read_exceptions(argv[2]);
    std::vector<std::filesystem::path> reports;
    for (const auto& entry : std::filesystem::directory_iterator(argv[1]))
        if (entry.path().extension() == ".txt" && entry.path() != std::filesystem::path(argv[2]))
            reports.push_back(entry.path());
    std::sort(reports.begin(), reports.end());
    Tally tally;
    for (const auto& report : reports) {
        check_form(report, tally);
        check_report(report, exceptions, tally);
    }
    int idle = 0;
    for (const Exception& exception : exceptions)
        if (exception.used == 0) {
            ++idle;
            std::printf("exception without a use: %s | %s\n", exception.report.c_str(),
                        exception.title.c_str());
        }
    std::printf("%zu reports: %d number lines agree with their value, %d excused, %d with words, "
                "%d disagree\n",
                reports.size(), tally.evaluated, tally.excused, tally.words, tally.failed);
    return tally.failed + tally.misshapen + idle == 0 && tally.evaluated > 0 ? 0 : 1;
} catch (const std::exception& problem) {
    std::fprintf(stderr, "%s\n", problem.what());
    return 2;
}
