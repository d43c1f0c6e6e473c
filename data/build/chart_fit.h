// A curve of an external pressure chart (ASME Section II Part D, Subpart 3) in the form that the engine
// reads: the straight part B = A * E / 2, a quadratic in log10(A) up to Amax, and Bmax after it.
#pragma once

#include <vector>

namespace tarvane::data {

struct ChartPoint {
    double A, B; // B in psi
};

struct ChartRow {
    double E = 0.0;        // psi
    double Aelastic = 0.0; // end of the straight part
    double Amax = 0.0, Bmax = 0.0;
    double c0 = 0.0, c1 = 0.0, c2 = 0.0; // of B against log10(A), Aelastic to Amax
};

struct Deviation {
    double relative = 0.0; // B of the row over B of the curve, less 1
    double A = 0.0;
};

// How far a curve may deviate. `below` applies where the points end in a level part.
enum class Side { both, below };

double B_of_row(const ChartRow& row, double A);

// Points, the last of the straight part included, that are on the line B = A * E / 2: within 1 %, or
// within 5 psi, to which the first points of the tables are rounded.
std::size_t points_on_line(double E, const std::vector<ChartPoint>& points);

// The row that reproduces the points best: the least worst relative deviation over those of the curved
// part. Where the table ends in a level part the quadratic reaches that level with a level tangent, so
// that it does not leave it between the points; where nothing but the line and the level is known, the
// curve is a straight line in log10(A) between their ends. The points ascend in A, do not fall in B,
// and the first one is on the line.
ChartRow fit_chart(double E, const std::vector<ChartPoint>& points, Side side = Side::both);

// The worst deviation at the points after the straight part.
Deviation worst_at_points(const ChartRow& row, const std::vector<ChartPoint>& points);

} // namespace tarvane::data
