#include "values/text.h"

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <cstdio>
#include <numeric>
#include <vector>

namespace tarvane::vessel {

std::string to_utf8(std::string_view western) {
    std::string out;
    for (const char c : western) {
        const auto code = static_cast<unsigned char>(c);
        if (code < 0x80) {
            out += c;
        } else {
            out += static_cast<char>(0xC0 | (code >> 6));
            out += static_cast<char>(0x80 | (code & 0x3F));
        }
    }
    return out;
}

std::optional<std::string> to_western(std::string_view utf8) {
    std::string out;
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        const auto lead = static_cast<unsigned char>(utf8[i]);
        if (lead < 0x20 || lead == 0x7F) return std::nullopt;
        if (lead < 0x80) {
            out += utf8[i];
            continue;
        }
        // Of the multi-byte sequences only those of two bytes with a lead of C2 or C3 stay below
        // 0x100; the first half of C2 are control characters.
        if ((lead != 0xC2 && lead != 0xC3) || i + 1 == utf8.size()) return std::nullopt;
        const auto next = static_cast<unsigned char>(utf8[++i]);
        const unsigned code = ((lead & 0x03u) << 6) | (next & 0x3Fu);
        if ((next & 0xC0u) != 0x80u || code < 0xA0) return std::nullopt;
        out += static_cast<char>(code);
    }
    return out;
}

std::string folded(std::string_view name) {
    std::string out;
    for (const char c : name) {
        if (c == ' ' || c == '-' || c == '_' || c == '.') continue;
        out += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    return out;
}

namespace {

// Edit distance in which another case of the same letter counts half a change.
unsigned edits(std::string_view a, std::string_view b) {
    std::vector<unsigned> row(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j)
        row[j] = static_cast<unsigned>(2 * j);
    for (std::size_t i = 1; i <= a.size(); ++i) {
        unsigned diagonal = row[0];
        row[0] = static_cast<unsigned>(2 * i);
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const char p = a[i - 1], q = b[j - 1];
            const bool same_letter = std::tolower(static_cast<unsigned char>(p)) ==
                                     std::tolower(static_cast<unsigned char>(q));
            const unsigned change = p == q ? 0 : same_letter ? 1 : 2;
            const unsigned best = std::min({diagonal + change, row[j] + 2, row[j - 1] + 2});
            diagonal = row[j];
            row[j] = best;
        }
    }
    return row[b.size()];
}

} // namespace

std::string_view nearest(std::string_view name, std::span<const std::string_view> candidates) {
    std::string_view best;
    unsigned fewest = static_cast<unsigned>(std::max<std::size_t>(name.size(), 2)) + 1;
    for (const std::string_view candidate : candidates) {
        const unsigned n = edits(name, candidate);
        if (n < fewest) {
            fewest = n;
            best = candidate;
        }
    }
    return best;
}

std::size_t characters(std::string_view utf8) {
    return static_cast<std::size_t>(std::count_if(utf8.begin(), utf8.end(), [](char c) {
        return (static_cast<unsigned char>(c) & 0xC0u) != 0x80u;
    }));
}

std::string padded(std::string_view utf8, std::size_t width) {
    const std::size_t n = characters(utf8);
    return std::string(utf8) + std::string(n < width ? width - n : 0, ' ');
}

std::string right_aligned(std::string_view utf8, std::size_t width) {
    const std::size_t n = characters(utf8);
    return std::string(n < width ? width - n : 0, ' ') + std::string(utf8);
}

std::vector<std::string> wrapped(std::string_view utf8, std::size_t width) {
    std::vector<std::string> lines;
    while (characters(utf8) > width) {
        std::size_t end = 0;
        for (std::size_t columns = 0; columns <= width; ++end)
            columns += characters(utf8.substr(end, 1));
        --end; // after the last character that fits
        const std::size_t blank = utf8.rfind(' ', end);
        if (blank != std::string_view::npos && blank > 0) end = blank;
        lines.emplace_back(utf8.substr(0, end));
        utf8.remove_prefix(end);
        utf8.remove_prefix(std::min(utf8.find_first_not_of(' '), utf8.size()));
    }
    lines.emplace_back(utf8);
    return lines;
}

namespace {

// Length of the character at the beginning of a text, 0 where the bytes are no UTF-8, and its number.
std::size_t decode(std::string_view utf8, std::uint32_t& code) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(utf8[i]); };
    const unsigned lead = byte(0);
    const std::size_t length = lead < 0x80   ? 1
                               : lead < 0xC2 ? 0
                               : lead < 0xE0 ? 2
                               : lead < 0xF0 ? 3
                               : lead < 0xF5 ? 4
                                             : 0;
    if (length == 0 || length > utf8.size()) return 0;
    constexpr std::uint32_t LEAST[] = {0, 0, 0x80, 0x800, 0x10000};
    code = length == 1 ? lead : lead & (0x7Fu >> length);
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0u) != 0x80u) return 0;
        code = code << 6 | (byte(i) & 0x3Fu);
    }
    const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
    return code < LEAST[length] || code > 0x10FFFF || surrogate ? 0 : length;
}

// Those of ASCII and the C1 set, and what turns the direction of a line.
bool is_control(std::uint32_t code) {
    return code < 0x20 || (code >= 0x7F && code < 0xA0) || code == 0x200E || code == 0x200F ||
           (code >= 0x2028 && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
}

} // namespace

std::string printable(std::string_view utf8) {
    std::string out;
    for (std::size_t at = 0; at < utf8.size();) {
        std::uint32_t code = 0;
        const std::size_t length = decode(utf8.substr(at), code);
        char number[12] = "";
        if (length == 0) {
            std::snprintf(number, sizeof number, "\\x%02X",
                          static_cast<unsigned>(static_cast<unsigned char>(utf8[at])));
        } else if (is_control(code)) {
            std::snprintf(number, sizeof number, "\\u%04X", static_cast<unsigned>(code));
        } else {
            out += utf8.substr(at, length);
        }
        out += number;
        at += std::max<std::size_t>(length, 1);
    }
    return out;
}

std::string in_quotes(std::string_view text) { return '"' + std::string(text) + '"'; }

std::string cut(std::string_view utf8) {
    constexpr std::size_t LONGEST = 60;
    std::size_t count = 0;
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        const bool begins = (static_cast<unsigned char>(utf8[i]) & 0xC0u) != 0x80u;
        if (begins && count++ == LONGEST) return std::string(utf8.substr(0, i)) + "...";
    }
    return std::string(utf8);
}

std::string echoed(std::string_view utf8) { return in_quotes(cut(utf8)); }

} // namespace tarvane::vessel
