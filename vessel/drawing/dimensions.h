// Dimensions around a view. Those of one side make a strip: they are collected, the strip is solved once (order,
// spacing, the room of each text), then drawn. One without room is dropped, and listed.
#pragma once

#include "catalogue/units.h"
#include "drawing/sheet.h"

#include <string>
#include <string_view>
#include <vector>

namespace tarvane::vessel {

// How dimensions are written. ISO 129-1: texts above their lines, upright ones read from the right, extension lines
// from the outline on. ASME Y14.5: texts in a gap of their lines, all read from below, no zero before the point,
// extension lines that begin with a gap.
struct DimensionStyle {
    bool iso = true;
    bool decimal_comma = false;

    // As few digits as it needs up to a hundredth of a millimetre; `unit` is how many mm its unit has.
    std::string number(double value, double unit) const;
    // A length in the units of the file, rounded from the same single as in its tables: what was found has their
    // decimals, what was given one more than a number where that makes it exact.
    std::string length(double inches, Quantity quantity, const UnitSystem& units,
                       bool found = false) const;
    std::string rounded(double value, int decimals) const;
};

enum class Side { above, below, left, right };

struct Dimension {
    Side side;
    std::string label;             // composed once: "t = 1.5"
    double unit;                   // mm of the unit of its number
    double from, to;               // its ends along the strip, on the page
    double from_at = 0, to_at = 0; // where the extension lines begin, across the strip
    bool half = false;    // a diameter in a half view: `from` is the axis, it has no arrow there
    double taken_out = 0; // by breaks of the view, mm on the page between from and to
};

// A strip begins where the view ends; the dimensions of above and below stay within `low` and `high`.
struct StripRoom {
    double edge;
    double low = -1e9, high = 1e9;
};

void draw_strip(Sheet& sheet, const DimensionStyle& style, Side side, const StripRoom& room,
                const std::vector<Dimension>& all);

} // namespace tarvane::vessel
