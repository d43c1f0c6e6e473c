// Factors M and K of the older Division 2, AD-204: M for the membrane stress of the crown, K for the
// bending in the knuckle, by thickness over crown radius and knuckle radius over diameter.
#include "frame/numbers.h"
#include "shell/elements.h"

namespace tarvane {

namespace {

constexpr Int ROWS = 11;
constexpr Real TL[ROWS] = {0.002f, 0.004f, 0.006f, 0.008f, 0.010f, 0.012f,
                           0.016f, 0.020f, 0.030f, 0.040f, 0.060f};

// r/D 0.06, 0.07, 0.08; from 0.08 on M is 1.
constexpr Real M_TABLE[ROWS][3] = {
    {1.00f, 1.00f, 1.00f}, {1.00f, 1.00f, 1.00f}, {1.28f, 1.00f, 1.00f}, {1.41f, 1.20f, 1.00f},
    {1.41f, 1.26f, 1.10f}, {1.38f, 1.25f, 1.13f}, {1.31f, 1.21f, 1.12f}, {1.25f, 1.17f, 1.08f},
    {1.14f, 1.08f, 1.01f}, {1.07f, 1.01f, 1.01f}, {1.00f, 1.00f, 1.00f},
};

constexpr Int K_COLUMNS = 6;
constexpr Real K_RD[K_COLUMNS] = {0.06f, 0.08f, 0.10f, 0.14f, 0.17f, 0.20f};
constexpr Real K_TABLE[ROWS][K_COLUMNS] = {
    {7.87f, 6.29f, 5.24f, 3.95f, 3.31f, 2.81f}, {6.77f, 5.60f, 4.69f, 3.49f, 2.93f, 2.50f},
    {6.04f, 5.14f, 4.38f, 3.27f, 2.73f, 2.33f}, {5.51f, 4.78f, 4.14f, 3.13f, 2.60f, 2.21f},
    {5.11f, 4.49f, 3.93f, 3.02f, 2.51f, 2.13f}, {4.79f, 4.25f, 3.76f, 2.93f, 2.44f, 2.06f},
    {4.31f, 3.87f, 3.47f, 2.77f, 2.33f, 1.97f}, {3.96f, 3.58f, 3.24f, 2.63f, 2.24f, 1.91f},
    {3.48f, 3.10f, 2.84f, 2.37f, 2.07f, 1.79f}, {3.32f, 2.97f, 2.69f, 2.23f, 1.95f, 1.72f},
    {3.12f, 2.80f, 2.56f, 2.17f, 1.92f, 1.71f},
};

constexpr Int LAST_K_RANGE = K_COLUMNS - 2;

// Arguments of the two tables.
struct PLACE {
    Real x; // t/L
    Real y; // r/D, at least 0.06
};

PLACE place_of(Real D, Real r, Real t, Real L, Real c, Int Element, Real u) {
    const Real Dc = D + 2.0f * c;
    Real rc = r + c;
    const Real tc = (t - c) - u;
    Real Lc = L + c;
    if (Element == ELLIPTICAL) {
        rc = 0.17f * Dc;
        Lc = 0.9f * Dc;
    }
    return {tc / Lc, max(rc / Dc, 0.06f)};
}

// The last row that is not above x; the first one when x is below the table, the last one when x is
// not a number.
Int row_of(Real x) {
    Int row = ROWS - 1;
    while (row > 0 && TL[row] > x)
        --row;
    return row;
}

// In t/L within two neighbouring columns, then in r/D between them.
template <Int COLUMNS>
Real interpolated(const Real (&table)[ROWS][COLUMNS], Int column, Real y1, Real y2, PLACE at) {
    const Real x = max(at.x, TL[0]);
    const Int row = row_of(x);
    Real value[2] = {table[row][column], table[row][column + 1]};
    if (row < ROWS - 1)
        for (Int i = 0; i < 2; ++i)
            value[i] = LINEAR_INTERP(TL[row], x, TL[row + 1], value[i], table[row + 1][column + i]);
    return LINEAR_INTERP(y1, at.y, y2, value[0], value[1]);
}

} // namespace

Int K_COLUMN = LAST_K_RANGE; // range of r/D, by its lower column; stays when r/D is above the table
Int K_COLUMN_AT_ENTRY = LAST_K_RANGE;

Real DIV2_M_FACTOR(Real D, Real r, Real t, Real L, Real c, Int Element, Real u) {
    const PLACE at = place_of(D, r, t, L, c, Element, u);
    if (at.y >= 0.08f) return 1.0f;
    return at.y >= 0.07f ? interpolated(M_TABLE, 1, 0.07f, 0.08f, at)
                         : interpolated(M_TABLE, 0, 0.06f, 0.07f, at);
}

Real DIV2_K_FACTOR(Real D, Real r, Real t, Real L, Real c, Int Element, Real u) {
    const PLACE at = place_of(D, r, t, L, c, Element, u);
    for (Int range = 0; range <= LAST_K_RANGE; ++range)
        if (at.y >= K_RD[range] && at.y <= K_RD[range + 1]) K_COLUMN = range;
    return interpolated(K_TABLE, K_COLUMN, K_RD[K_COLUMN], K_RD[K_COLUMN + 1], at);
}

void RESET_SHELLS() {
    K_COLUMN = K_COLUMN_AT_ENTRY = LAST_K_RANGE;
    RESET_SHELL_RESULTS();
}

} // namespace tarvane
