#include "serve/toml_lines.h"

namespace tarvane::app {

namespace {

bool is_blank(char c) { return c == ' ' || c == '\t'; }

} // namespace

std::size_t line_begin(std::string_view text, std::size_t at) {
    const std::size_t end = at == 0 ? std::string_view::npos : text.rfind('\n', at - 1);
    if (end != std::string_view::npos) return end + 1;
    return text.starts_with("\xEF\xBB\xBF") ? 3 : 0;
}

std::size_t after_line(std::string_view text, std::size_t at) {
    const std::size_t end = text.find('\n', at);
    return end == std::string_view::npos ? text.size() : end + 1;
}

std::string_view line_end_of(std::string_view text) {
    const std::size_t first = text.find('\n');
    return first != std::string_view::npos && first > 0 && text[first - 1] == '\r' ? "\r\n" : "\n";
}

std::string indentation(std::string_view text, std::size_t at) {
    const std::size_t begin = line_begin(text, at);
    std::size_t end = begin;
    while (end < text.size() && is_blank(text[end]))
        ++end;
    return std::string(text.substr(begin, end - begin));
}

bool blank_line(std::string_view text, std::size_t begin) {
    for (std::size_t i = begin; i < text.size() && text[i] != '\n'; ++i) {
        if (!is_blank(text[i]) && text[i] != '\r') return false;
    }
    return begin < text.size();
}

std::vector<std::size_t> commas(std::string_view text, const TextRange& brackets) {
    std::vector<std::size_t> found;
    int depth = 0;
    for (std::size_t i = brackets.begin + 1; i + 1 < brackets.end; ++i) {
        const char c = text[i];
        if (c == '#') {
            i = after_line(text, i) - 1;
        } else if (c == '"' || c == '\'') {
            const bool lines = text.substr(i, 3) == std::string(3, c);
            const std::string close(lines ? 3 : 1, c);
            for (i += close.size(); i < brackets.end && text.substr(i, close.size()) != close;
                 ++i) {
                if (text[i] == '\\' && c == '"') ++i;
            }
            i += close.size() - 1;
            // Quotation marks that end a text of several lines belong to it.
            while (lines && i + 1 < brackets.end && text[i + 1] == c)
                ++i;
        } else if (c == '[' || c == '{') {
            ++depth;
        } else if (c == ']' || c == '}') {
            --depth;
        } else if (c == ',' && depth == 0) {
            found.push_back(i);
        }
    }
    return found;
}

} // namespace tarvane::app
