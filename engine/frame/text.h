// Fixed-width, blank-padded character data with one-based columns. Single-byte Western characters.
#pragma once

#include "frame/types.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace tarvane {

// A character argument of an exported routine: the address, and the length that followed it.
struct TextArg {
    char* address;
    Int length;
};

// Columns up to the last one that is not blank; 0 for an all-blank text.
constexpr Int trimmed_length(std::string_view text) {
    std::size_t n = text.size();
    while (n > 0 && text[n - 1] == ' ')
        --n;
    return static_cast<Int>(n);
}

// The text without its trailing blanks.
constexpr std::string_view trimmed(std::string_view text) {
    return text.substr(0, static_cast<std::size_t>(trimmed_length(text)));
}

// The text without its leading blanks.
constexpr std::string_view left_justified(std::string_view text) {
    std::size_t i = 0;
    while (i < text.size() && text[i] == ' ')
        ++i;
    return text.substr(i);
}

// Equality of character data: the shorter one counts as padded with blanks.
constexpr bool equal_padded(std::string_view a, std::string_view b) {
    return trimmed(a) == trimmed(b);
}

struct Unfilled {};

template <std::size_t N>
class Text {
  public:
    constexpr Text() { chars.fill(' '); }
    constexpr explicit Text(Unfilled) {} // for what is cleared before it is read
    // Blank-padded copy; what passes column N is cut. Assignment goes through these, too.
    constexpr Text(std::string_view text) { // NOLINT(google-explicit-constructor)
        const std::size_t length = std::min(text.size(), N);
        std::copy_n(text.data(), length, chars.data());
        std::fill_n(chars.data() + length, N - length, ' ');
    }
    constexpr Text(const char* text) : Text(std::string_view(text)) {} // NOLINT

    static constexpr Int width() { return static_cast<Int>(N); }

    constexpr char& operator()(Int column) { return chars[static_cast<std::size_t>(column - 1)]; }
    constexpr char operator()(Int column) const {
        return chars[static_cast<std::size_t>(column - 1)];
    }

    // Columns first to last, both included; what is outside the text is left out.
    constexpr std::string_view columns(Int first, Int last) const {
        if (first < 1) first = 1;
        if (last > width()) last = width();
        if (last < first) return {};
        return std::string_view(chars.data() + (first - 1),
                                static_cast<std::size_t>(last - first + 1));
    }

    // Writes text from a column on; what passes column N, or comes before column 1, is lost.
    constexpr void put(Int column, std::string_view text) {
        if (column > width()) return;
        if (column < 1) {
            text.remove_prefix(
                std::min(text.size(), static_cast<std::size_t>(1 - std::int64_t{column})));
            column = 1;
        }
        const std::size_t first = static_cast<std::size_t>(column - 1);
        std::copy_n(text.data(), std::min(text.size(), N - first), chars.data() + first);
    }

    constexpr void clear() { chars.fill(' '); }
    constexpr std::string_view view() const { return {chars.data(), N}; }
    constexpr std::string_view trimmed() const { return tarvane::trimmed(view()); }
    constexpr Int trimmed_length() const { return tarvane::trimmed_length(view()); }
    constexpr bool blank() const { return trimmed_length() == 0; }
    constexpr char* data() { return chars.data(); }
    constexpr const char* data() const { return chars.data(); }

    friend constexpr bool operator==(const Text& a, std::string_view b) {
        return equal_padded(a.view(), b);
    }

  private:
    std::array<char, N> chars;
};

} // namespace tarvane
