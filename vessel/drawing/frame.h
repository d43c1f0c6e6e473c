// What is around the views of a drawing: the frame, and in it the title, scale, units and notes, if they are in no
// caption.
#pragma once

#include "catalogue/units.h"
#include "drawing/dimensions.h"
#include "drawing/figure.h"
#include "drawing/sheet.h"

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tarvane::vessel {

inline constexpr double MOST_WIDTH = 170, MOST_HEIGHT = 225; // what a page of a document takes

struct FrameText {
    std::string title; // UTF-8, as all of them
    std::vector<std::string> notes;
    std::vector<std::string> indicated; // what is drawn without its dimensions
    std::vector<std::string> not_drawn;
    std::string alt; // what the drawing shows; scale and dimensions are added to one to scale
};

// Views with the words about them, which are not in a frame yet.
struct Draft {
    Sheet sheet;
    Figure figure;                  // without its svg; the size is that with the words in the frame
    std::vector<std::string> lines; // of these words
};

// A drawing with its page, which a check can look through.
struct Drawn {
    Sheet sheet;
    Figure figure;
};

// Those of ISO 5455 with those that are usual beside them, from the largest.
std::span<const double> preferred_scales();
// "1 : 5"
std::string scale_text(double scale, const DimensionStyle& style);
// "Dimensions in mm", or those of diameters and thicknesses apart.
std::string units_text(const UnitSystem& units);
DimensionStyle dimension_style(const UnitSystem& units, bool decimal_comma);
// How many mm the unit of a quantity has.
double unit_of(const UnitSystem& units, Quantity quantity);

// Openings of a flat cover, in inches: where on it they are, nobody says.
struct Openings {
    double first = 0, second = 0, pitch = 0; // 0: none
};
// "openings D1 = Ø4, D2 = Ø3, pitch 5.5"; `name`: of the diameters.
std::string openings_text(const Openings& openings, const std::string& name,
                          const UnitSystem& units, const DimensionStyle& style);

// Nothing when it is larger than a page takes, wherever its words will be.
std::optional<Draft> drafted(Sheet sheet, const DimensionStyle& style, const UnitSystem& units,
                             const FrameText& text);

// At the largest scale at which it fits; at one of the next where that spares dropped dimensions.
std::optional<Draft> largest_draft(const std::function<std::optional<Draft>(double scale)>& draw);

Drawn framed(Draft draft, DrawnFor surroundings);

} // namespace tarvane::vessel
