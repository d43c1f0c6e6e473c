#include "toughness/ucs66_curves.h"

#include "frame/numbers.h"

namespace tarvane {

namespace {

struct POLYNOMIAL {
    Real a, b, c, d;
};

constexpr POLYNOMIAL POLYNOMIALS[] = {
    {-233.72775f, -1.7701629f, -291.6195f, 593.48846f}, // A
    {-369.872f, 38.530518f, -654.8093f, 1017.1983f},    // B
    {-272.15765f, 11.707648f, -311.67166f, 567.2134f},  // C
    {-394.01306f, 44.855217f, -655.79626f, 975.344f},   // D
};

// The lower of the two rows that enclose t among the first `rows`, null outside.
const UCS66_ROW* row_below(Real t, Int rows) {
    for (const UCS66_ROW* row = UCS66_TABLE; row != UCS66_TABLE + rows; ++row)
        if (row[0].thickness <= t && t <= row[1].thickness) return row;
    return nullptr;
}

} // namespace

Real UCS66_POLYNOMIAL(Int Curve, Real t) {
    const POLYNOMIAL& p = POLYNOMIALS[Curve - CURVE_A];
    return p.a + p.b * t + p.c * std::sqrt(t) + p.d * cbrt(t);
}

bool UCS66_INTERPOLATED(Int Curve, Real t, Real& T) {
    const UCS66_ROW* const row = row_below(t, UCS66_ROWS - 1);
    if (row == nullptr) return false;
    const Int i = Curve - CURVE_A;
    T = LINEAR_INTERP(row[0].thickness, t, row[1].thickness, row[0].curve[i], row[1].curve[i]);
    return true;
}

bool UCS66_NEARER_ROW(Int Curve, Real t, Int rows, Real& T) {
    const UCS66_ROW* const row = row_below(t, rows);
    if (row == nullptr) return false;
    const bool lower = t - row[0].thickness <= row[1].thickness - t;
    T = row[lower ? 0 : 1].curve[Curve - CURVE_A];
    return true;
}

} // namespace tarvane
