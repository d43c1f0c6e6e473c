// Editing of fixed-width text in place, columns one-based, for the renderer and the channel.
#pragma once

#include "frame/types.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace tarvane {

inline constexpr Int not_negative(Int length) { return length < 0 ? 0 : length; }

inline void copy_text(char* to, const char* from, Int len) {
    if (len > 0) std::memmove(to, from, static_cast<std::size_t>(len));
}

inline void fill_blank(char* text, Int len) {
    if (len > 0) std::memset(text, ' ', static_cast<std::size_t>(len));
}

// Last column that is not blank; 0 when there is none.
inline Int last_column(const char* text, Int len) {
    constexpr std::uint64_t EIGHT_BLANKS = 0x2020202020202020u;
    std::uint64_t eight = 0;
    len = not_negative(len);
    while (len >= 8) {
        std::memcpy(&eight, text + (len - 8), sizeof eight);
        if (eight != EIGHT_BLANKS) break;
        len -= 8;
    }
    while (len > 0 && text[len - 1] == ' ')
        --len;
    return len;
}

// True when columns first to last are blank; columns past the end count as blank.
inline bool blank_columns(const char* text, Int len, Int first, Int last) {
    for (Int column = first; column <= last && column <= len; ++column) {
        if (text[column - 1] != ' ') return false;
    }
    return true;
}

// Column of the first character c, or 0.
inline Int find_character(const char* text, Int len, char c) {
    if (len <= 0) return 0;
    const void* at = std::memchr(text, c, static_cast<std::size_t>(len));
    return at == nullptr ? 0 : static_cast<Int>(static_cast<const char*>(at) - text) + 1;
}

// Moves the text from `column` on to the right; blanks take its place, what passes the end is lost.
inline void move_right(char* text, Int len, Int column, Int count) {
    const Int room = len - (column - 1);
    if (room <= 0) return;
    if (count > room) count = room;
    std::memmove(text + column - 1 + count, text + column - 1,
                 static_cast<std::size_t>(room - count));
    std::memset(text + column - 1, ' ', static_cast<std::size_t>(count));
}

// Moves the text after the first `count` columns at `column` to the left over them.
inline void move_left(char* text, Int len, Int column, Int count) {
    const Int room = len - (column - 1);
    if (room <= 0) return;
    if (count > room) count = room;
    std::memmove(text + column - 1, text + column - 1 + count,
                 static_cast<std::size_t>(room - count));
    std::memset(text + len - count, ' ', static_cast<std::size_t>(count));
}

inline void put_column(char* text, Int column, char c) { text[column - 1] = c; }

} // namespace tarvane
