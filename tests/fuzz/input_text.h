// Damaged texts of input files, and what must be true of each, read or refused.
#pragma once

#include "input/input_file.h"

#include <algorithm>
#include <cstddef>
#include <random>
#include <string>

namespace fuzz {

// Turns one thing of a file into another.
inline const std::string PIECES[] = {"[",
                                     "]",
                                     "[[",
                                     "]]",
                                     "{",
                                     "}",
                                     "#",
                                     "%",
                                     "=",
                                     ".",
                                     ",",
                                     "\"",
                                     "'",
                                     "'''",
                                     "\"\"\"",
                                     "\\",
                                     "\n",
                                     "\r",
                                     "\t",
                                     "\xCF\xBF",
                                     "\xEF\xBB\xBF",
                                     "\xFF",
                                     "\x1b",
                                     "\x7f",
                                     "\xC2\x85",
                                     "0x",
                                     "1e9",
                                     "1e999",
                                     "-",
                                     "+",
                                     "_",
                                     "inf",
                                     "nan",
                                     "true",
                                     "1979-05-27T07:32:00Z",
                                     "07:32:00.5",
                                     "99999999999999999999",
                                     "\\u0000",
                                     "\\U0010FFFF",
                                     "\\ud800",
                                     "[#",
                                     "[%",
                                     "a = \xCF\xBF"
                                     "100",
                                     "[a.",
                                     "{a.",
                                     "units.",
                                     "standard.",
                                     std::string(1, '\0'),
                                     std::string(300, '['),
                                     std::string(300, 'k'),
                                     "\xE2\x80\xA8"};

class Damage {
  public:
    explicit Damage(unsigned seed) : random(seed) {}

    std::string of(std::string text, const std::string& other) {
        for (std::size_t changes = 1 + below(6); changes > 0; --changes)
            change(text, other);
        return text;
    }

    std::size_t below(std::size_t count) { return random() % count; }

    // `other` must not be empty.
    void change(std::string& text, const std::string& other) {
        const std::size_t at = below(text.size() + 1);
        const std::size_t some = below(below(40) + 1);
        switch (below(7)) {
        case 0:
            text.insert(at, PIECES[below(std::size(PIECES))]);
            return;
        case 1:
            text.replace(at, std::min(some, text.size() - at), PIECES[below(std::size(PIECES))]);
            return;
        case 2:
            text.erase(at, some);
            return;
        case 3:
            if (at < text.size()) text[at] = static_cast<char>(random());
            return;
        case 4:
            if (at < text.size()) text[at] = static_cast<char>(text[at] ^ (1 << below(8)));
            return;
        case 5: {
            const std::size_t from = below(other.size());
            text.insert(at, other.substr(from, some));
            return;
        }
        default:
            text.resize(at);
        }
    }

  private:
    std::mt19937 random;
};

inline bool is_fit_for_a_terminal(const std::string& lines) {
    return std::none_of(lines.begin(), lines.end(), [](char c) {
        const auto code = static_cast<unsigned char>(c);
        return (code < 0x20 && c != '\n') || code == 0x7F;
    });
}

// Elements or faults; each fault at a line, and fit for a terminal.
inline bool is_sound(const tarvane::vessel::ReadResult& result) {
    const auto& faults = result.faults;
    return faults.empty() != result.request.elements.empty() &&
           std::all_of(faults.begin(), faults.end(), [](const auto& f) { return f.line >= 1; }) &&
           is_fit_for_a_terminal(tarvane::app::fault_report("f", faults));
}

} // namespace fuzz
