#include "input/syntax_message.h"

#include "values/text.h"

#include <algorithm>
#include <cctype>
#include <optional>
#include <string>

namespace tarvane::app {

using namespace vessel;

namespace {

bool is_digit(char c) { return std::isdigit(static_cast<unsigned char>(c)) != 0; }
bool is_letter(char c) { return std::isalpha(static_cast<unsigned char>(c)) != 0; }

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view BLANKS = " \t\r";
    const std::size_t first = text.find_first_not_of(BLANKS);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(BLANKS) + 1 - first);
}

std::string_view line_of(std::string_view file, int line) {
    std::size_t begin = 0;
    for (int i = 1; i < line; ++i) {
        begin = file.find('\n', begin);
        if (begin == std::string_view::npos) return {};
        ++begin;
    }
    return file.substr(begin, file.find('\n', begin) - begin);
}

// Key and value of a line, without its comment.
struct Line {
    std::string_view key, value;
    bool assigns = false;   // it has a "="
    bool open_text = false; // a text begins that does not end
};

Line split(std::string_view text) {
    Line line;
    std::size_t equals = std::string_view::npos, end = text.size();
    char quote = '\0';
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (quote != '\0') {
            if (c == '\\' && quote == '"') ++i;
            if (c == quote) quote = '\0';
        } else if (c == '"' || c == '\'') {
            quote = c;
        } else if (c == '#') {
            end = i;
            break;
        } else if (c == '=' && equals == std::string_view::npos) {
            equals = i;
        }
    }
    line.open_text = quote != '\0';
    line.assigns = equals != std::string_view::npos;
    line.key = trimmed(text.substr(0, line.assigns ? equals : end));
    if (line.assigns) line.value = trimmed(text.substr(equals + 1, end - equals - 1));
    return line;
}

// Length of the number that a value begins with: digits with a point or a comma, and an exponent.
std::size_t number_length(std::string_view value) {
    std::size_t i = value.starts_with('+') || value.starts_with('-') ? 1 : 0;
    const std::size_t first = i;
    const auto belongs = [](char c) { return is_digit(c) || c == '.' || c == ',' || c == '_'; };
    while (i < value.size() && belongs(value[i]))
        ++i;
    const std::string_view number = value.substr(first, i - first);
    if (std::none_of(number.begin(), number.end(), is_digit)) return 0;
    if (i < value.size() && (value[i] == 'e' || value[i] == 'E')) {
        std::size_t end = i + 1;
        if (end < value.size() && (value[end] == '+' || value[end] == '-')) ++end;
        const std::size_t digits = end;
        while (end < value.size() && is_digit(value[end]))
            ++end;
        if (end > digits) i = end;
    }
    return i;
}

std::optional<std::string> about_number(std::string_view value, std::size_t length) {
    const std::string_view number = value.substr(0, length), rest = trimmed(value.substr(length));
    if (!rest.empty())
        return "unquoted text: " + cut(value) +
               "; a number is written without its unit, a text between quotation marks";
    if (std::count(number.begin(), number.end(), ',') == 1)
        return cut(value) + " has a comma; a number is written with a decimal point";
    const std::size_t sign = number[0] == '+' || number[0] == '-' ? 1 : 0;
    if (number.ends_with('.') || number[sign] == '.')
        return cut(value) + " needs a digit before and after its decimal point";
    if (number.size() > sign + 1 && number[sign] == '0' && is_digit(number[sign + 1]))
        return cut(value) + " begins with a zero too many";
    return std::nullopt;
}

std::optional<std::string> about_value(std::string_view value) {
    if (value.empty()) return "a value is missing after the =";
    if (value[0] == '"' || value[0] == '\'') {
        const std::size_t close = value.find(value[0], 1);
        const std::string_view rest =
            close == std::string_view::npos ? std::string_view() : trimmed(value.substr(close + 1));
        if (rest.empty()) return std::nullopt;
        return cut(rest) + " follows the text; only a comment with # may";
    }
    if (value[0] == '[' || value[0] == '{') return std::nullopt;
    if (const std::size_t length = number_length(value)) return about_number(value, length);
    const std::string small = folded(value);
    if (small == "true" || small == "false") {
        if (value == small) return std::nullopt;
        return cut(value) + " is written in small letters: " + small;
    }
    if (!std::any_of(value.begin(), value.end(), is_letter)) return std::nullopt;
    return "unquoted text: " + cut(value) +
           "; a text is written between quotation marks, a number in digits";
}

} // namespace

Fault syntax_fault(std::string_view file, int number, std::string_view description) {
    std::string parser(description);
    std::replace(parser.begin(), parser.end(), '\n', ' ');
    Fault plain{number, "", parser};

    const std::string_view text = line_of(file, number);
    const Line line = split(text);
    const bool of_lines =
        text.find(R"(""")") != std::string_view::npos || text.find("'''") != std::string_view::npos;
    // A second value for the same key has nothing to do with how the line is written.
    if (trimmed(text).empty() || of_lines || parser.find("redefine") != std::string::npos)
        return plain;
    const std::string key = line.assigns && !line.open_text ? cut(line.key) : std::string();
    if (line.open_text) {
        std::string name = line.assigns ? cut(line.key) : std::string();
        const std::string_view left = line.assigns ? line.value : trimmed(text);
        return {number, std::move(name), "quotation mark missing: " + cut(left)};
    }
    if (!line.assigns) {
        if (line.key.starts_with('[')) return plain;
        return {number, "", "key = value is expected, not " + cut(line.key)};
    }
    if (auto message = about_value(line.value)) return {number, key, *std::move(message)};
    return plain;
}

} // namespace tarvane::app
