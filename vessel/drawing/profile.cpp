#include "drawing/profile.h"

#include <cmath>
#include <numbers>

namespace tarvane::vessel {

namespace {

constexpr double STEP = std::numbers::pi / 90; // 2 degrees
constexpr double UPWARDS = std::numbers::pi / 2;

} // namespace

Profile ellipse(double a, double depth) {
    Profile points;
    const int steps = 60;
    for (int i = 0; i <= steps; ++i) {
        const double angle = UPWARDS * i / steps, c = std::cos(angle), s = std::sin(angle);
        const double length = std::hypot(c / a, s / depth);
        points.push_back({i == steps ? 0 : a * c, depth * s, c / a / length, s / depth / length});
    }
    return points;
}

Profile arc(double r, double z, double radius, double from, double to) {
    Profile points;
    const int steps = std::max(1, static_cast<int>(std::ceil(std::abs(to - from) / STEP)));
    for (int i = 0; i <= steps; ++i) {
        const double angle = from + (to - from) * i / steps;
        const double c = std::cos(angle), s = std::sin(angle);
        points.push_back({r + radius * c, z + radius * s, c, s});
    }
    return points;
}

std::vector<Corner> offset(const Profile& profile, double distance) {
    std::vector<Corner> curve;
    for (const ProfilePoint& p : profile)
        curve.push_back({std::max(0.0, p.r + distance * p.out_r), p.z + distance * p.out_z});
    return curve;
}

std::vector<Corner> wall(const Profile& profile, double thickness) {
    std::vector<Corner> corners = offset(profile, 0);
    std::vector<Corner> outer = offset(profile, thickness);
    corners.back().open = corners.back().r < 1e-9;
    corners.insert(corners.end(), outer.rbegin(), outer.rend());
    return corners;
}

bool Torisphere::possible(double D, double L, double r) {
    return r >= 0 && r <= D / 2 && L > r && L - r >= D / 2 - r;
}

Torisphere::Torisphere(double D, double L, double r) {
    const double side = D / 2 - r, reach = L - r;
    crown_centre = -std::sqrt(std::max(0.0, reach * reach - side * side));
    meet = std::atan2(-crown_centre, side);
    depth = L + crown_centre;
}

Profile Torisphere::profile(double D, double L, double r) const {
    Profile points;
    if (r > 0) points = arc(D / 2 - r, 0, r, 0, meet);
    // Without a knuckle the crown begins at the edge of the shell.
    Profile crown = arc(0, crown_centre, L, meet, UPWARDS);
    crown.back().r = 0;
    points.insert(points.end(), crown.begin(), crown.end());
    return points;
}

} // namespace tarvane::vessel
