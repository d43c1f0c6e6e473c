#include "serve/toml_value.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace tarvane::app {

using namespace vessel;

namespace {

constexpr std::size_t MOST_STEPS = 8;

bool is_bare(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
           c == '-';
}

std::string text_of(std::string_view utf8) {
    constexpr std::string_view DIGITS = "0123456789ABCDEF";
    std::string out = "\"";
    for (const char c : utf8) {
        const auto code = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            out += '\\';
            out += c;
        } else if (code < 0x20 || code == 0x7F) {
            out += "\\u00";
            out += DIGITS[code >> 4];
            out += DIGITS[code & 15];
        } else {
            out += c;
        }
    }
    return out + '"';
}

std::string number_of(double number) {
    if (!std::isfinite(number)) throw EditRefused("a number is expected");
    char digits[40];
    const auto end = std::to_chars(std::begin(digits), std::end(digits), number).ptr;
    std::string written(digits, end);
    // A float of TOML has a point or an exponent.
    if (written.find_first_of(".e") == std::string::npos) written += ".0";
    return written;
}

} // namespace

std::string key_of(std::string_view name) {
    return !name.empty() && std::all_of(name.begin(), name.end(), is_bare) ? std::string(name)
                                                                           : text_of(name);
}

std::optional<TomlPath> path_named(std::string_view name) {
    TomlPath path;
    while (!name.empty()) {
        if (path.size() == MOST_STEPS) return std::nullopt;
        if (name.front() == '[') {
            std::size_t place = 0;
            const auto [end, error] =
                std::from_chars(name.data() + 1, name.data() + name.size(), place);
            if (error != std::errc() || end == name.data() + name.size() || *end != ']' ||
                path.empty())
                return std::nullopt;
            path.emplace_back(place);
            name.remove_prefix(static_cast<std::size_t>(end - name.data()) + 1);
            continue;
        }
        if (!path.empty()) {
            if (name.front() != '.') return std::nullopt;
            name.remove_prefix(1);
        }
        const auto length = static_cast<std::size_t>(
            std::find_if_not(name.begin(), name.end(), is_bare) - name.begin());
        if (length == 0) return std::nullopt;
        path.emplace_back(std::string(name.substr(0, length)));
        name.remove_prefix(length);
    }
    if (path.empty()) return std::nullopt;
    return path;
}

std::string toml_of(const Value& value) {
    if (const auto* words = value.text()) return text_of(*words);
    if (const auto* flag = value.flag()) return *flag ? "true" : "false";
    if (const auto* whole = value.whole()) return std::to_string(*whole);
    if (const auto number = value.number()) return number_of(*number);
    if (const auto* list = value.list()) {
        std::string items;
        for (const Value& item : *list)
            items += (items.empty() ? "" : ", ") + toml_of(item);
        return "[" + items + "]";
    }
    if (const auto* table = value.table()) {
        std::string members;
        for (const Table::Entry& entry : *table)
            members +=
                (members.empty() ? " " : ", ") + key_of(entry.key) + " = " + toml_of(entry.value);
        return "{" + members + " }";
    }
    throw EditRefused("a value is expected, not nothing");
}

} // namespace tarvane::app
