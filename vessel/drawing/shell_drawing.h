// The half section of a shell, head or cone, with its wall at a larger scale where the corroded line would not be
// seen at that of the whole.
#pragma once

#include "components/external_input.h"
#include "components/shell_input.h"
#include "drawing/frame.h"
#include "drawing/profile.h"

#include <optional>
#include <string>

namespace tarvane::vessel {

// In inches, degrees. 0: not given, or not known.
struct ShellShape {
    int shape = 0;                       // TARVANE_CYLINDER and so on
    bool outside = false;                // the diameter is given as Do
    double D = 0, t = 0, ci = 0, Ut = 0; // D: inside
    double depth = 0;                    // of an elliptical head, inside
    double L = 0, r = 0, straight = 0;
    double alpha = 0, Dsmall = 0, tk = 0;
    double length = 0;  // stiffened, of a cylinder; axial, of a cone
    double tangent = 0; // of a cylinder, from head to head
    double D2 = 0;      // second span of a flat head
    Openings openings;  // of a flat head
};

// Nothing for dimensions that no such part can have.
std::optional<ShellShape> shape_of(const ShellInput& shell);
std::optional<ShellShape> shape_of(const ExternalInput& shell);

// The inside of a head, from its end upwards to the axis; nothing for other shapes.
Profile head_profile(const ShellShape& shape);

std::optional<Draft> draw_shell(const ShellShape& shape, const std::string& name,
                                const UnitSystem& units, const DimensionStyle& style);

} // namespace tarvane::vessel
