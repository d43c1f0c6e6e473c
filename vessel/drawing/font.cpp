#include "drawing/font.h"

#include <algorithm>
#include <utility>

namespace tarvane::vessel {

namespace {

constexpr double EM = 2048;

double width_of(char32_t letter) {
    const std::span<const FontWidth> all = font_widths();
    const auto at =
        std::lower_bound(all.begin(), all.end(), letter,
                         [](const FontWidth& one, char32_t wanted) { return one.letter < wanted; });
    return at != all.end() && at->letter == letter ? at->width : EM; // the widest that is usual
}

bool holds_together(std::string_view before, std::string_view from_blank) {
    return before.ends_with('=') || before.ends_with(" :") || from_blank.starts_with(" =") ||
           from_blank.starts_with(" : ") || from_blank.starts_with(" \xC2\xB0");
}

} // namespace

std::string font_face() {
    return "@font-face { font-family: \"Tarvane Drawing\"; src: url(data:font/ttf;base64," +
           std::string(font_base64()) + ") format(\"truetype\"); }\n";
}

double text_width(std::string_view utf8, double size) {
    double sum = 0;
    for (std::size_t i = 0; i < utf8.size();) {
        const auto lead = static_cast<unsigned char>(utf8[i]);
        const std::size_t bytes = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
        char32_t letter = bytes == 1 ? lead : lead & (0xFFu >> (bytes + 1));
        for (std::size_t k = 1; k < bytes && i + k < utf8.size(); ++k)
            letter = letter << 6 | (static_cast<unsigned char>(utf8[i + k]) & 0x3Fu);
        sum += width_of(letter);
        i += bytes;
    }
    return sum * size / EM;
}

std::vector<std::string> unbroken_words(std::string_view utf8) {
    std::vector<std::string> words;
    while (!utf8.empty()) {
        std::size_t end = utf8.find(' ');
        while (end < utf8.size() && holds_together(utf8.substr(0, end), utf8.substr(end)))
            end = utf8.find(' ', end + 1);
        end = std::min(end, utf8.size());
        words.emplace_back(utf8.substr(0, end));
        utf8.remove_prefix(std::min(end + 1, utf8.size()));
    }
    return words;
}

std::vector<std::string> fitted_lines(std::string_view utf8, double size, double width) {
    std::vector<std::string> lines(1);
    for (std::string& word : unbroken_words(utf8)) {
        std::string& line = lines.back();
        std::string longer = line;
        if (!line.empty()) longer += ' ';
        longer += word;
        if (line.empty() || text_width(longer, size) <= width)
            line = std::move(longer);
        else
            lines.push_back(std::move(word));
    }
    return lines;
}

} // namespace tarvane::vessel
