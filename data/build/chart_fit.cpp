#include "chart_fit.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace tarvane::data {

namespace {

// A point of the curved part: x = log10(A).
struct Sample {
    double x, B;
};
using Samples = std::vector<Sample>;

struct Quadratic {
    double c0, c1, c2;
    double at(double x) const { return c0 + x * (c1 + x * c2); }
};

// Where a curve must not be above its points, a point that it exceeds counts so much that none remains.
double worst_deviation(const Quadratic& q, const Samples& samples, Side side) {
    constexpr double ABOVE = 1.0e6;
    double worst = 0.0;
    for (const Sample& s : samples) {
        const double d = q.at(s.x) / s.B - 1.0;
        worst = std::max(worst, d > 0.0 && side == Side::below ? ABOVE * d : std::abs(d));
    }
    return worst;
}

// The argument of the least value of a function that falls and then rises.
template <typename Function>
double least(double low, double high, const Function& f) {
    constexpr int STEPS = 100;
    constexpr double GOLDEN = 0.6180339887498949;
    double inner_low = high - GOLDEN * (high - low), inner_high = low + GOLDEN * (high - low);
    double f_low = f(inner_low), f_high = f(inner_high);
    for (int i = 0; i < STEPS; ++i) {
        if (f_low < f_high) {
            high = inner_high;
            inner_high = inner_low;
            f_high = f_low;
            inner_low = high - GOLDEN * (high - low);
            f_low = f(inner_low);
        } else {
            low = inner_low;
            inner_low = inner_high;
            f_low = f_high;
            inner_high = low + GOLDEN * (high - low);
            f_high = f(inner_high);
        }
    }
    return 0.5 * (low + high);
}

// ---- a curve that reaches a level --------------------------------------------------------------------

// B = level - k (x - top)^2, which reaches the level at `top` with a level tangent.
Quadratic reaching(double level, double top, double k) {
    return {level - k * top * top, 2.0 * k * top, -k};
}

Quadratic best_steepness(double level, double top, const Samples& samples, Side side) {
    const auto deviation = [&](double k) {
        return worst_deviation(reaching(level, top, k), samples, side);
    };
    // At this k the point that needs the largest one is met exactly.
    double highest = 0.0;
    for (const Sample& s : samples)
        highest = std::max(highest, (level - s.B) / ((s.x - top) * (s.x - top)));
    return reaching(level, top, least(0.0, highest, deviation));
}

// The top is after the last point below the level and not after the first point on it.
Quadratic fit_to_level(double level, double first_on_level, const Samples& samples, Side side,
                       double& top) {
    constexpr int STEPS = 2000;
    const double last = samples.back().x;
    double least_worst = 0.0;
    Quadratic best{};
    for (int i = 1; i <= STEPS; ++i) {
        const double x = last + (first_on_level - last) * i / STEPS;
        const Quadratic q = best_steepness(level, x, samples, side);
        const double worst = worst_deviation(q, samples, side);
        if (i == 1 || worst < least_worst) {
            least_worst = worst;
            best = q;
            top = x;
        }
    }
    return best;
}

// ---- a curve that rises to the end ---------------------------------------------------------------------

// The quadratic whose relative deviations at four points are -d, d, -d, d in turn: solved for c0, c1,
// c2 and d by elimination.
Quadratic levelled(const std::array<Sample, 4>& s, double& d) {
    std::array<std::array<double, 5>, 4> m{};
    for (std::size_t i = 0; i < 4; ++i)
        m[i] = {1.0, s[i].x, s[i].x * s[i].x, i % 2 == 0 ? s[i].B : -s[i].B, s[i].B};
    for (std::size_t column = 0; column < 4; ++column) {
        const auto larger = [column](const auto& a, const auto& b) {
            return std::abs(a[column]) < std::abs(b[column]);
        };
        std::swap(m[column], *std::max_element(m.begin() + static_cast<std::ptrdiff_t>(column),
                                               m.end(), larger));
        for (std::size_t row = 0; row < 4; ++row) {
            if (row == column) continue;
            const double factor = m[row][column] / m[column][column];
            for (std::size_t i = column; i < 5; ++i)
                m[row][i] -= factor * m[column][i];
        }
    }
    d = m[3][4] / m[3][3];
    return {m[0][4] / m[0][0], m[1][4] / m[1][1], m[2][4] / m[2][2]};
}

Quadratic through(const Sample& a, const Sample& b, const Sample& c) {
    const double ab = (b.B - a.B) / (b.x - a.x), bc = (c.B - b.B) / (c.x - b.x);
    const double c2 = (bc - ab) / (c.x - a.x);
    const double c1 = ab - c2 * (a.x + b.x);
    return {a.B - a.x * (c1 + a.x * c2), c1, c2};
}

// The least worst deviation is the largest one of the levelled quadratics of four points.
Quadratic fit_to_end(const Samples& s) {
    if (s.size() < 4) return through(s[0], s[1], s[2]);
    Quadratic best{};
    double largest = -1.0;
    for (std::size_t i = 0; i < s.size(); ++i)
        for (std::size_t j = i + 1; j < s.size(); ++j)
            for (std::size_t k = j + 1; k < s.size(); ++k)
                for (std::size_t l = k + 1; l < s.size(); ++l) {
                    double d = 0.0;
                    const Quadratic q = levelled({s[i], s[j], s[k], s[l]}, d);
                    if (std::abs(d) > largest) {
                        largest = std::abs(d);
                        best = q;
                    }
                }
    return best;
}

// ---- the end of the straight part ----------------------------------------------------------------------

// Where the curve leaves the line, between the last point on the line and the first one off it: at
// their crossing, or where they are nearest.
double end_of_line(double E, const Quadratic& q, double low, double high) {
    const auto gap = [&](double A) { return q.at(std::log10(A)) - 0.5 * E * A; };
    if (gap(low) * gap(high) > 0.0) return std::abs(gap(low)) < std::abs(gap(high)) ? low : high;
    return least(low, high, [&](double A) { return std::abs(gap(A)); });
}

} // namespace

double B_of_row(const ChartRow& row, double A) {
    if (A <= row.Aelastic) return 0.5 * row.E * A;
    if (A > row.Amax) return row.Bmax;
    return std::min(Quadratic{row.c0, row.c1, row.c2}.at(std::log10(A)), row.Bmax);
}

std::size_t points_on_line(double E, const std::vector<ChartPoint>& points) {
    std::size_t count = 0;
    for (const ChartPoint& p : points) {
        const double gap = std::abs(0.5 * E * p.A - p.B);
        if (gap > 0.01 * p.B && gap > 5.0) break;
        ++count;
    }
    return count;
}

ChartRow fit_chart(double E, const std::vector<ChartPoint>& points, Side side) {
    const std::size_t straight = points_on_line(E, points);
    const ChartPoint& last_on_line = points[straight - 1];
    const double level = points.back().B;
    ChartRow row{.E = E, .Bmax = level};
    if (last_on_line.B >= level) {
        row.Aelastic = row.Amax = 2.0 * level / E;
        row.c0 = level;
        return row;
    }

    const auto on_level = std::find_if(points.begin(), points.end(),
                                       [level](const ChartPoint& p) { return p.B >= level; });
    Samples curve;
    for (auto p = points.begin() + static_cast<std::ptrdiff_t>(straight); p != on_level; ++p)
        curve.push_back({std::log10(p->A), p->B});
    const Sample from{std::log10(last_on_line.A), last_on_line.B};
    const Sample to{std::log10(on_level->A), level};
    const bool ends_level = on_level + 1 != points.end();

    Quadratic q{};
    double top = to.x;
    if (curve.empty()) {
        q.c1 = (to.B - from.B) / (to.x - from.x);
        q.c0 = to.B - q.c1 * to.x;
    } else if (ends_level) {
        q = fit_to_level(level, to.x, curve, side, top);
    } else {
        if (curve.size() == 1) curve.insert(curve.begin(), from);
        curve.push_back(to);
        q = fit_to_end(curve);
    }
    row.Amax = std::pow(10.0, top);
    row.Aelastic = end_of_line(E, q, last_on_line.A, points[straight].A);
    row.c0 = q.c0;
    row.c1 = q.c1;
    row.c2 = q.c2;
    return row;
}

Deviation worst_at_points(const ChartRow& row, const std::vector<ChartPoint>& points) {
    Deviation worst;
    for (std::size_t i = points_on_line(row.E, points); i < points.size(); ++i) {
        const double d = B_of_row(row, points[i].A) / points[i].B - 1.0;
        if (std::abs(d) >= std::abs(worst.relative)) worst = {d, points[i].A};
    }
    return worst;
}

} // namespace tarvane::data
