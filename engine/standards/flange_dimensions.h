// Standard flanges (ASME B16.5, B16.47, EN 1092-1) from "ANSIFlangeDimensions.txt": the sizes of a
// class, and the dimensions of one flange in the form of the flange record.
#pragma once

#include "frame/types.h"

#include <string_view>

namespace tarvane {

inline constexpr Int MOST_FLANGE_SIZES = 60;
inline constexpr Int FLANGE_SIZE_WIDTH = 10;
inline constexpr Int FLANGE_RESULTS = 14;

// Nominal sizes of a class ("150", "PN16"): `sizes` has 60 fields of 10 characters, each text ended by
// a NUL, the rest blank. Without the file `sizes` and `count` stay as they are.
void GET_FLANGE_SIZES(std::string_view class_text, char* sizes, Int& count);

// Hub of a slip-on flange: how its slope of 7 degrees ends.
enum HubForm : Int { WALL_ADDED = 1, STRAIGHT = 2, SLOPE_ONLY = 3 };

// Places of the result, inches; all -1.0 until a flange is found.
enum FlangeResult : Int {
    FLANGE_BORE,
    FLANGE_THICKNESS,
    FLANGE_CLASS,
    BOLT_HOLE,
    BOLT_COUNT,
    BOLT_SIZE,
    BOLT_CIRCLE,
    HALF_RING_WIDTH, // (bolt circle - bore) / 4
    FLANGE_OUTSIDE,
    HUB_SMALL_END,
    HUB_LARGE_END,
    HUB_LENGTH,
    FACE_DIAMETER,
    LAST_COLUMN // also the next larger size when there is no such flange, -1.0 without one
};

// `size` in inches, or the nominal diameter of a metric class (it is returned divided by 25.4);
// `series` of the sizes from 26 on, set to 0 for smaller ones and metric classes; a `wall` up to 0.0001
// becomes 0.375. `ansi` 0: class 400 is the inch class, else PN 400. Class 0 leaves `notfound` alone.
void GET_FLANGE_DIMENSIONS(Real& size, Int flange_class, Real* result, bool& notfound, Int& series,
                           Real& wall, Int blind, Int slipon, Int hubform, Int ansi);

} // namespace tarvane
