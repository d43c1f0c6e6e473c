// Walls of bodies of revolution: the curves of their inside, and the outlines of their sections.
#pragma once

#include "drawing/half_section.h"

#include <vector>

namespace tarvane::vessel {

// A point of the inside, with the outward normal.
struct ProfilePoint {
    double r, z;
    double out_r, out_z;
};
using Profile = std::vector<ProfilePoint>;

Profile ellipse(double a, double depth);
// Around a centre, between two angles (radians) from the level direction outwards.
Profile arc(double r, double z, double radius, double from, double to);

// The curve at a distance outside of it; inside of it for one below 0.
std::vector<Corner> offset(const Profile& profile, double distance);
// The section of a wall on it, closed at both ends; the last end on the axis has no outline.
std::vector<Corner> wall(const Profile& profile, double thickness);

// Of a torispherical head that begins at height 0.
struct Torisphere {
    double crown_centre = 0; // height of the centre of the crown
    double meet = 0;         // angle at which knuckle and crown meet
    double depth = 0;

    // L, r: inside radii; D inside. The crown has to reach the knuckle.
    static bool possible(double D, double L, double r);
    Torisphere(double D, double L, double r);
    Profile profile(double D, double L, double r) const;
};

} // namespace tarvane::vessel
