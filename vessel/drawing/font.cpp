#include "drawing/font.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <utility>

namespace tarvane::vessel {

namespace {

// Advance widths in 2048ths of the size.
constexpr double EM = 2048;
constexpr std::uint16_t FROM_SPACE[] = {651,  821,  942,  1716, 1303, 1946, 1597, 563,  799,  799,
                                        1024, 1716, 651,  739,  651,  690,  1303, 1303, 1303, 1303,
                                        1303, 1303, 1303, 1303, 1303, 1303, 690,  690,  1716, 1716,
                                        1716, 1087, 2048, 1401, 1405, 1430, 1577, 1294, 1178, 1587,
                                        1540, 604,  604,  1343, 1141, 1767, 1532, 1612, 1235, 1612,
                                        1423, 1300, 1251, 1499, 1401, 2025, 1403, 1251, 1403, 799,
                                        690,  799,  1716, 1024, 1024, 1255, 1300, 1126, 1300, 1260,
                                        721,  1300, 1298, 569,  569,  1186, 569,  1995, 1298, 1253,
                                        1300, 1300, 842,  1067, 803,  1298, 1212, 1675, 1212, 1212,
                                        1075, 1303, 690,  1303, 1716}; // U+0020 to U+007E
constexpr std::uint16_t FROM_NO_BREAK_SPACE[] = {
    651,  821,  1303, 1303, 1303, 1303, 690,  1024, 1024, 2048, 965,  1253, 1716, 739,
    2048, 1024, 1024, 1716, 821,  821,  1024, 1303, 1303, 651,  1024, 821,  965,  1253,
    1985, 1985, 1985, 1087, 1401, 1401, 1401, 1401, 1401, 1401, 1995, 1430, 1294, 1294,
    1294, 1294, 604,  604,  604,  604,  1587, 1532, 1612, 1612, 1612, 1612, 1612, 1716,
    1612, 1499, 1499, 1499, 1499, 1251, 1239, 1290, 1255, 1255, 1255, 1255, 1255, 1255,
    2011, 1126, 1260, 1260, 1260, 1260, 569,  569,  569,  569,  1253, 1298, 1253, 1253,
    1253, 1253, 1253, 1716, 1253, 1298, 1298, 1298, 1298, 1212, 1300, 1212}; // U+00A0 to U+00FF
struct Width {
    std::uint32_t letter;
    std::uint16_t width;
};
constexpr Width OTHERS[] = {{0x2013, 1024}, {0x2014, 2048}, {0x2019, 651},  {0x3b1, 1350},
                            {0x3b2, 1307},  {0x2032, 465},  {0x2033, 765},  {0x2074, 821},
                            {0x2075, 821},  {0x2076, 821},  {0x2192, 1716}, {0x2212, 1716},
                            {0x2264, 1716}, {0x2265, 1716}};

double width_of(std::uint32_t letter) {
    if (letter >= 0x20 && letter < 0x20 + std::size(FROM_SPACE)) return FROM_SPACE[letter - 0x20];
    if (letter >= 0xA0 && letter < 0xA0 + std::size(FROM_NO_BREAK_SPACE))
        return FROM_NO_BREAK_SPACE[letter - 0xA0];
    for (const Width& other : OTHERS)
        if (other.letter == letter) return other.width;
    return EM; // the widest that is usual
}

bool holds_together(std::string_view before, std::string_view from_blank) {
    return before.ends_with('=') || before.ends_with(" :") || from_blank.starts_with(" =") ||
           from_blank.starts_with(" : ") || from_blank.starts_with(" \xC2\xB0");
}

} // namespace

double text_width(std::string_view utf8, double size) {
    double sum = 0;
    for (std::size_t i = 0; i < utf8.size();) {
        const auto lead = static_cast<unsigned char>(utf8[i]);
        const std::size_t bytes = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
        std::uint32_t letter = bytes == 1 ? lead : lead & (0xFFu >> (bytes + 1));
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
