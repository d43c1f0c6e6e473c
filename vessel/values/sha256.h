// The SHA-256 of some bytes, FIPS 180-4.
#pragma once

#include <string>
#include <string_view>

namespace tarvane::vessel {

// 64 small hexadecimal digits.
std::string sha256(std::string_view bytes);

} // namespace tarvane::vessel
