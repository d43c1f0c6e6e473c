// Factors of the ring (Figure 2-7.1, Table 4.16.4, EN 13445-3 11.5.4.1), forward and reverse (2-13).
#include "flange/shape_factors.h"

#include "report/lines.h"

#include <string_view>

namespace tarvane {

namespace {

// K, T, U, Y, Z of the ring with its corrosion taken off both faces.
void form_ring_factors(FLANGE_STATE& s) {
    s.K = (s.A - 2.0f * s.ce) / (s.B + 2.0f * s.ci);
    const Real K = s.K;
    const Real K2 = square(K);
    s.Z = (K2 + 1.0f) / (K2 - 1.0f);
    s.Y = (0.66845f + 5.7169f * K2 * log10(K) / (K2 - 1.0f)) / (K - 1.0f);
    const Real n1 = K2 * (1.0f + 8.55246f * log10(K)) - 1.0f;
    s.U = n1 / (1.36136f * (K2 - 1.0f) * (K - 1.0f));
    s.T = n1 / ((1.9448f * K2 + 1.0472f) * (K - 1.0f));
}

// One value in the last columns.
void single_line(std::string_view title, Int blanks, std::string_view name, Real value) {
    LinePieces().text(title).blanks(blanks).text(name).fixed(value, 10, 3).write();
}

// Two values side by side.
void pair_line(Int blanks1, std::string_view name1, Real value1, Int blanks2,
               std::string_view name2, Real value2) {
    LinePieces()
        .blanks(blanks1)
        .text(name1)
        .fixed(value1, 10, 3)
        .blanks(blanks2)
        .text(name2)
        .fixed(value2, 10, 3)
        .write();
}

void Y_and_Z_line(const FLANGE_STATE& s) {
    if (s.code == EN_13445) {
        pair_line(16, "BetaY = ", s.Y, 8, "BetaZ = ", s.Z);
    } else {
        pair_line(20, "Y = ", s.Y, 12, "Z = ", s.Z);
    }
}

} // namespace

void FLANGE_FACTORS(FLANGE_STATE& s) {
    form_ring_factors(s);
    if (!reporting()) return;

    if (s.code == EN_13445) {
        single_line("Factors from EN 13445 paragraph 11.5.4.1", 6, "K = ", s.K);
        pair_line(16, "BetaT = ", s.T, 8, "BetaU = ", s.U);
    } else {
        single_line(NEW_DIV_2_RULES ? "Factors from Table 4-16.4 " : "Factors from Figure 2-7.1 ",
                    20, "K = ", s.K);
        pair_line(20, "T = ", s.T, 12, "U = ", s.U);
    }
    Y_and_Z_line(s);
}

void REVERSE_FLANGE_FACTORS(FLANGE_STATE& s) {
    form_ring_factors(s);
    s.Alphar = (1.0f + 0.66845f * (s.K + 1.0f) / s.Y) / square(s.K);
    s.Yr = s.Y;
    if (s.asme()) {
        s.Yr = s.Y * s.Alphar;
        s.U = s.U * s.Alphar;
        s.T = s.T * s.Alphar * (s.Z + 0.3f) / (s.Z - 0.3f);
    }
    if (!reporting()) return;

    if (s.code == EN_13445) {
        single_line("Factors from EN 13445 11.5.4.1 (Reverse)", 6, "K = ", s.K);
    } else {
        single_line("Geometry Factors for Reverse Flanges", 10, "K = ", s.K);
    }
    if (s.asme()) pair_line(19, "Tr = ", s.T, 11, "Ur = ", s.U);
    Y_and_Z_line(s);
    if (s.asme()) pair_line(19, "Yr = ", s.Yr, 7, "Alphar = ", s.Alphar);
}

} // namespace tarvane
