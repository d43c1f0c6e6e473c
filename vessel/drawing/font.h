// The one font of the drawings, a part of DejaVu Sans that comes with them (font/make.py): text is measured with its own
// advance widths, so that it takes the room that was found for it. Where a viewer does not take it, a text is fitted into
// the measured length.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tarvane::vessel {

inline constexpr std::string_view FONT_FAMILY = "Tarvane Drawing, DejaVu Sans, Verdana, sans-serif";

// Parts of the font size: of a capital letter, and of what is below the line.
inline constexpr double CAP_HEIGHT = 0.729, DESCENT = 0.236;

// The font as a file, for an address with the data itself; and its advance widths in 2048ths of the size, by rising
// letters.
struct FontWidth {
    char32_t letter;
    std::uint16_t width;
};
std::string_view font_base64();
std::span<const FontWidth> font_widths();
// The rule by which a style sheet has it.
std::string font_face();

// In the unit of the size.
double text_width(std::string_view utf8, double size);

// What no line ends within: "t = 1.5", "20 °F", "1 : 5".
std::vector<std::string> unbroken_words(std::string_view utf8);

// Lines of up to a width of such words. At least one.
std::vector<std::string> fitted_lines(std::string_view utf8, double size, double width);

} // namespace tarvane::vessel
