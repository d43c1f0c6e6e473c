// The surface as the exported routines see it: the public headers, and arguments as they come over them.
// The files of this folder alone see the public headers and every other folder; none of those sees this one.
#pragma once

#define TARVANE_BUILD
#include "tarvane/tarvane.h"

#include "frame/types.h"

#include <cstddef>
#include <string_view>

namespace tarvane {

// A character argument; a negative length counts as 0. No name, line or path is longer than the limit, so
// that a length which a host forgot to set does not reach far beyond its text.
inline std::string_view text_of(const char* address, Int length) {
    constexpr Int LONGEST = 4096;
    if (address == nullptr || length <= 0) return {};
    return {address, static_cast<std::size_t>(min(length, LONGEST))};
}

// A text result, blank-padded to the field's width.
inline void give_text(char* field, Int width, std::string_view text) {
    for (Int i = 0; i < width; ++i) {
        const auto at = static_cast<std::size_t>(i);
        field[i] = at < text.size() ? text[at] : ' ';
    }
}

// The value of a logical is in bit 0.
inline bool logical(Int value) { return (value & 1) != 0; }

} // namespace tarvane
