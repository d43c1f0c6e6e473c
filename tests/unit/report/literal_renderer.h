// The rules of the renderer once more, word for word, on std::string: every search starts again, every
// deletion moves one character. Slow and plain, as a second way to the same text.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

namespace tarvane::report_test::literal {

using Text = std::string;

inline std::size_t last_nonblank(const Text& text) { return text.find_last_not_of(' ') + 1; }

// Text moved to the right from column p (one-based), width kept.
inline void insert_blanks(Text& text, std::size_t p, std::size_t count) {
    const std::size_t width = text.size();
    text.insert(p - 1, count, ' ');
    text.resize(width);
}

inline void clean(Text& text) {
    if (last_nonblank(text) == 0) return;
    for (const char* pair : {" \xB2", " \xB3", " \xBD", " ^", " ,", " /"}) {
        for (std::size_t p = text.find(pair); p != Text::npos; p = text.find(pair)) {
            text.erase(p, 1);
            text += ' ';
        }
    }
    for (std::size_t p = text.find("/ "); p != Text::npos; p = text.find("/ ")) {
        if (p + 2 >= last_nonblank(text)) return;
        text.erase(p + 1, 1);
        text += ' ';
    }
    if (text[0] == '/') insert_blanks(text, 1, 3);
}

inline void commas(Text& text, bool flag) {
    if (!flag) return;
    const auto digit = [&](std::size_t i) { return text[i - 1] >= '0' && text[i - 1] <= '9'; };
    for (std::size_t i = 1; i < text.size(); ++i) {
        if (text[i - 1] != '.') continue;
        if (i == 1 ? digit(2) : digit(i - 1) && digit(i + 1)) text[i - 1] = ',';
    }
}

inline void tidy(Text& text, bool comma) {
    if (text.size() <= 2 || text.find('.') == Text::npos) return;
    const std::size_t first = text.find_first_not_of(' ') + 1;
    const auto find = [&](const char* what) { return text.find(what) + 1; };
    const auto at = [&](std::size_t column) {
        return column <= text.size() ? text[column - 1] : ' ';
    };
    for (int round = 1; round <= 5; ++round) {
        std::size_t p = find("   .");
        if (p != 0 && at(p + 4) != '.') {
            text[p + 1] = '0';
            continue;
        }
        p = find(" .");
        if (p == 0) break;
        if (at(p + 2) != '.') {
            insert_blanks(text, p + 1, 1);
            text[p] = '0';
        }
    }
    for (int round = 1; round <= 5; ++round) {
        std::size_t p = find("  -.");
        if (p != 0) {
            text[p] = '-';
            text[p + 1] = '0';
            continue;
        }
        p = find("-.");
        if (p == 0) break;
        insert_blanks(text, p + 1, 1);
        text[p] = '0';
    }
    if (first > 1) {
        const std::size_t width = text.size();
        text = Text(first - 1, ' ') + text.substr(text.find_first_not_of(' '));
        text.resize(width, ' ');
    }
    commas(text, comma);
}

inline void expand(Text& text) {
    const long n = static_cast<long>(text.size());
    const auto blank = [&](long from, long to) {
        for (long column = from; column <= to && column <= n; ++column) {
            if (text[static_cast<std::size_t>(column - 1)] != ' ') return false;
        }
        return true;
    };
    const auto superscript = [&](char code, char digit) {
        const long p = static_cast<long>(text.find(code) + 1);
        if (p == 0) return false;
        const std::size_t at = static_cast<std::size_t>(p - 1);
        if (text.find('|') != Text::npos || static_cast<long>(last_nonblank(text)) >= n - 3 ||
            p >= n - 3) {
            text[at] = digit;
            return true;
        }
        const bool move = !blank(p + 1, p + 3);
        if (move) insert_blanks(text, at + 1, 3);
        text.replace(at, 4, Text("^(") + digit + ")");
        if (move && blank(p + 6, p + 10)) {
            // column p is character `at`, so that columns p+6 and p+9 are these
            const Text tail = at + 9 < text.size() ? text.substr(at + 9) : "";
            text.resize(std::min(text.size(), at + 6));
            text += tail;
            text.resize(static_cast<std::size_t>(n), ' ');
        }
        return true;
    };
    for (;;) {
        if (superscript('\xB2', '2')) continue;
        if (superscript('\xB3', '3')) continue;
        const long p = static_cast<long>(text.find('\xBD') + 1);
        if (p != 0 && p == n) {
            text.back() = ' ';
            continue;
        }
        if (p != 0 && p < n - 3) {
            insert_blanks(text, static_cast<std::size_t>(p), 3);
            text.replace(static_cast<std::size_t>(p - 1), 5, "^(.5)");
            continue;
        }
        bool changed = false;
        for (const auto& [from, to] : {std::pair{'\xA9', 'c'}, {'\xB0', ' '}, {'\xF8', 'p'}}) {
            for (char& c : text) {
                if (c == from) c = to, changed = true;
            }
        }
        if (!changed) return;
    }
}

inline void fit(Text& source, Text& target, int mode) {
    const std::size_t e = std::min(last_nonblank(source) + 1, source.size());
    const std::size_t width = target.size();
    if (mode < 3) {
        for (;;) {
            const std::size_t q = source.substr(0, e).find("  ");
            if (q == Text::npos || q + 1 >= last_nonblank(source)) break;
            Text part = source.substr(q + 1);
            part.erase(0, part.find_first_not_of(' '));
            part.resize(source.size() - q - 1, ' ');
            source = source.substr(0, q + 1) + part;
        }
        target = source;
        target.resize(width, ' ');
        return;
    }
    target.assign(width, ' ');
    for (std::size_t i = 1, j = 1; i < e && j < width; ++i) {
        target[j - 1] = source[i - 1];
        if (i <= static_cast<std::size_t>(mode) || source[i - 1] != ' ' || source[i] != ' ') ++j;
    }
}

// ---- numbers, from the C library's exact conversion ----------------------------------------------

inline Text printf_fixed(float v, int decimals) {
    char text[80];
    std::snprintf(text, sizeof text, "%.*f", decimals, static_cast<double>(v));
    return text;
}
inline Text bare(float v, int decimals) {
    if (v == 0.0f) v = 0.0f;
    Text text = printf_fixed(v, decimals);
    if (text.starts_with("0.")) text.erase(0, 1);
    if (text.starts_with("-0.")) text.erase(1, 1);
    return text;
}
inline Text right(Text text, std::size_t width) {
    if (text.size() < width) text.insert(0, width - text.size(), ' ');
    return text.size() > width ? Text(width, '*') : text;
}
inline Text exponent(float v, std::size_t width, int digits) {
    if (std::isinf(v)) return right(v < 0.0f ? "-Infinity" : "Infinity", width);
    char text[80];
    std::snprintf(text, sizeof text, "%.*e", digits - 1, static_cast<double>(std::fabs(v)));
    const Text all = text;
    const std::size_t e = all.find('e');
    Text mantissa = all.substr(0, e);
    std::erase(mantissa, '.');
    int power = std::stoi(all.substr(e + 1));
    if (v != 0.0f) ++power;
    char tail[16];
    std::snprintf(tail, sizeof tail, "E%+03d", power);
    const Text sign = v < 0.0f ? "-" : "";
    const Text full = sign + "0." + mantissa + tail;
    return full.size() <= width ? right(full, width) : right(sign + "." + mantissa + tail, width);
}

inline Text number(float v, char c) {
    Text field;
    bool failed = false;
    if (v >= 1.0f || v <= 1.0E-6f) {
        if (v > 500000.0f) c = '0';
        if (v > 1.0E+8f || v < -1.0E+8f) {
            field = exponent(v, 10, 5);
        } else if (c == '0') {
            field = std::to_string(std::lround(v));
        } else if (c >= '1' && c <= '7') {
            field = bare(v, c - '0');
        } else if (c == '8') {
            field = exponent(v, 10, 3);
        }
        failed = field.size() > 10;
        if (failed) field = "**********";
        field.resize(10, ' ');
        for (const char* text : {".999", ".00 ", ".000 ", ".0000 ", ".0001 ", ".0999 "}) {
            if (field.find(text) == Text::npos) continue;
            const Text again = printf_fixed(v, 1);
            field = again.size() > 10 ? "**********" : again;
            field.resize(10, ' ');
            break;
        }
    } else if (std::isnan(v)) {
        const std::size_t widths[] = {4, 4, 5, 6, 7, 8};
        field = right("NaN", c >= '0' && c <= '5' ? widths[c - '0'] : 9);
    } else if (c == '0' || c == '1') {
        field = right(printf_fixed(v, 1), 4);
    } else if (c >= '2' && c <= '5') {
        field = right(printf_fixed(v, c - '0'), static_cast<std::size_t>(c - '0' + 3));
    } else if (c == '6' && v <= 0.0001f) {
        field = exponent(v, 9, 3);
    } else {
        field = right(printf_fixed(v, 6), 9);
    }
    if (failed || field.find("***") != Text::npos) field = exponent(v, 10, 1);
    field.resize(10, ' ');
    return field;
}

inline void fill(Text& text, const std::vector<float>& values, bool comma) {
    Text line(120, ' ');
    std::size_t in = 1, out = 1, value = 1;
    const std::size_t last = last_nonblank(text);
    if (last < 120) text[last] = '#';
    const auto put = [&](std::size_t column, char c) {
        if (column <= 120) line[column - 1] = c;
    };
    while (in < 121) {
        if (out > 120 || value > 7 || text[in - 1] == '#') break;
        if (text[in - 1] != '@') {
            put(out++, text[in++ - 1]);
            continue;
        }
        if (value == 7) {
            while (in < 121)
                put(out++, text[in++ - 1]);
            break;
        }
        ++in;
        const Text field = number(values[value - 1], in <= 120 ? text[in - 1] : ' ');
        for (std::size_t i = 0; i < 10; ++i)
            put(out + i, field[i]);
        Text eleven = line.substr(out - 1, 11);
        const auto holds = [&](const char* what) { return eleven.find(what) != Text::npos; };
        if (holds(".") && holds("0 ") && !holds(".0 ") && !holds("E")) {
            while (holds("0 "))
                eleven[eleven.find("0 ")] = ' ';
            for (std::size_t i = 0; i < 10 && i < eleven.size(); ++i)
                put(out + i, eleven[i]);
        }
        ++value;
        out = last_nonblank(line) + 1;
        ++in;
    }
    text = line;
    clean(text);
    tidy(text, comma);
}

} // namespace tarvane::report_test::literal
