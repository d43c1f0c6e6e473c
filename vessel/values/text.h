// Text of the input file and of the report: UTF-8 outside, the engine's single-byte Western
// characters inside.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tarvane::vessel {

std::string to_utf8(std::string_view western);
// Nothing when a character has no place among the Western characters, or is a control character.
std::optional<std::string> to_western(std::string_view utf8);

// Names compare without regard to case, blanks, "-", "_" and ".".
std::string folded(std::string_view name);

// The candidate with the fewest edits from `name`; empty when none is near.
std::string_view nearest(std::string_view name, std::span<const std::string_view> candidates);

// Columns on a terminal, and texts filled up to as many.
std::size_t characters(std::string_view utf8);
std::string padded(std::string_view utf8, std::size_t width);
std::string right_aligned(std::string_view utf8, std::size_t width);

// Lines of up to `width` columns, broken at blanks, and within a word that is longer. At least one.
std::vector<std::string> wrapped(std::string_view utf8, std::size_t width);

// Fit for a terminal: control characters, and bytes that are no UTF-8, by their numbers.
std::string printable(std::string_view utf8);

std::string in_quotes(std::string_view text);

// A user's text as messages repeat it: cut after 60 characters, and the same in quotation marks.
std::string cut(std::string_view utf8);
std::string echoed(std::string_view utf8);

} // namespace tarvane::vessel
