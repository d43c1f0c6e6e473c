// Closed solution of the hub factors (Table 2-7.1): the coefficients C1 to C37 and E1 to E6, and the
// factors of Figures 2-7.2 to 2-7.6 from them. Small hubs leave few digits of V in single precision,
// so the order of every term counts.
#include "flange/shape_factors.h"

#include "report/lines.h"

#include <string_view>

namespace tarvane {

namespace {

Real fourth_root(Real x) { return std::sqrt(std::sqrt(x)); }

// Names of the three factors and the blanks that follow them.
struct FactorNames {
    std::string_view F, V, f;
    Int blanks;
};
constexpr FactorNames INTEGRAL_ASME{"Factor F            ", "Factor V            ",
                                    "Factor f            ", 30};
constexpr FactorNames INTEGRAL_EN{"Factor BetaF per Fig 11.5.4  ", "Factor BetaV per Fig 11.5.5  ",
                                  "Factor Psi   per Fig 11.5.6  ", 21};
constexpr FactorNames LOOSE_ASME{"Factor Fl           ", "Factor Vl           ",
                                 "Factor f            ", 30};
constexpr FactorNames LOOSE_EN{"Factor BetaFL per Fig 11.5.7 ", "Factor BetaVL per Fig 11.5.8 ",
                               "Factor Psi    per Fig 11.5.6 ", 20};

void factor_line(std::string_view name, Int blanks, Real value) {
    LinePieces().text(name).blanks(blanks).fixed(value, 10, 3).write();
}

} // namespace

void HUB_COEFFICIENTS(FACTOR_STATE& s, HUB_SOLUTION& hub) {
    if (s.hRatio < 0.015f) s.hRatio = 0.015f;
    if (s.gRatio < 1.0f) s.gRatio = 1.0f;

    const Real Ah = s.gRatio - 1.0f;
    const Real Ch = 43.68f * fourth(s.hRatio);
    const Real Ah2 = square(Ah);
    const Real Ah3 = cube(Ah);
    hub.Ah = Ah;
    hub.Ch = Ch;
    auto& C = hub.C;
    auto& E = hub.E;

    C[1] = 0.33333334f + Ah / 12.0f;
    C[2] = 0.11904762f + 17.0f * Ah / 336.0f;
    C[3] = 0.004761905f + Ah / 360.0f;
    C[4] = 0.030555556f + 59.0f * Ah / 5040.0f + (1.0f + 3.0f * Ah) / Ch;
    C[5] = 0.011111111f + 5.0f * Ah / 1008.0f - cube(1.0f + Ah) / Ch;
    C[6] = 0.008333334f + 17.0f * Ah / 5040.0f + 1.0f / Ch;
    C[7] = 0.07756133f + 51.0f * Ah / 1232.0f +
           (8.571428f + 225.0f * Ah / 14.0f + 75.0f * Ah2 / 7.0f + 5.0f * Ah3 / 2.0f) / Ch;
    C[8] = 0.0044733044f + 128.0f * Ah / 45045.0f +
           (0.85714287f + 15.0f * Ah / 7.0f + 12.0f * Ah2 / 7.0f + 5.0f * Ah3 / 11.0f) / Ch;
    C[9] = 0.017625662f + 653.0f * Ah / 73920.0f +
           (0.5f + 33.0f * Ah / 14.0f + 39.0f * Ah2 / 28.0f + 25.0f * Ah3 / 84.0f) / Ch;
    C[10] = 0.007671958f + 3.0f * Ah / 704.0f -
            (0.5f + 33.0f * Ah / 14.0f + 81.0f * Ah2 / 28.0f + 13.0f * Ah3 / 12.0f) / Ch;
    C[11] = 0.0051256614f + 1763.0f * Ah / 665280.0f +
            (0.5f + 6.0f * Ah / 7.0f + 15.0f * Ah2 / 28.0f + 5.0f * Ah3 / 42.0f) / Ch;
    C[12] = 0.00034188034f + 71.0f * Ah / 300300.0f +
            (0.22857143f + 18.0f * Ah / 35.0f + 156.0f * Ah2 / 385.0f + 6.0f * Ah3 / 55.0f) / Ch;
    C[13] = 0.0009151034f + 937.0f * Ah / 1663200.0f +
            (0.028571429f + 6.0f * Ah / 35.0f + 11.0f * Ah2 / 70.0f + 3.0f * Ah3 / 70.0f) / Ch;
    C[14] = 0.00047378548f + 103.0f * Ah / 332640.0f -
            (0.028571429f + 6.0f * Ah / 35.0f + 17.0f * Ah2 / 70.0f + Ah3 / 10.0f) / Ch;
    C[15] = 0.00028018278f + 97.0f * Ah / 554400.0f +
            (0.028571429f + 3.0f * Ah / 35.0f + Ah2 / 14.0f + 2.0f * Ah3 / 105.0f) / Ch;

    C[16] = C[1] * C[7] * C[12] + C[2] * C[8] * C[3] + C[3] * C[8] * C[2] -
            (square(C[3]) * C[7] + square(C[8]) * C[1] + square(C[2]) * C[12]);
    C[17] = (C[4] * C[7] * C[12] + C[2] * C[8] * C[13] + C[3] * C[8] * C[9] -
             (C[13] * C[7] * C[3] + square(C[8]) * C[4] + C[12] * C[2] * C[9])) /
            C[16];
    C[18] = (C[5] * C[7] * C[12] + C[2] * C[8] * C[14] + C[3] * C[8] * C[10] -
             (C[14] * C[7] * C[3] + square(C[8]) * C[5] + C[12] * C[2] * C[10])) /
            C[16];
    C[19] = (C[6] * C[7] * C[12] + C[2] * C[8] * C[15] + C[3] * C[8] * C[11] -
             (C[15] * C[7] * C[3] + square(C[8]) * C[6] + C[12] * C[2] * C[11])) /
            C[16];
    C[20] = (C[1] * C[9] * C[12] + C[4] * C[8] * C[3] + C[3] * C[13] * C[2] -
             (square(C[3]) * C[9] + C[13] * C[8] * C[1] + C[12] * C[4] * C[2])) /
            C[16];
    C[21] = (C[1] * C[10] * C[12] + C[5] * C[8] * C[3] + C[3] * C[14] * C[2] -
             (square(C[3]) * C[10] + C[14] * C[8] * C[1] + C[12] * C[5] * C[2])) /
            C[16];
    C[22] = (C[1] * C[11] * C[12] + C[6] * C[8] * C[3] + C[3] * C[15] * C[2] -
             (square(C[3]) * C[11] + C[15] * C[8] * C[1] + C[12] * C[6] * C[2])) /
            C[16];
    C[23] = (C[1] * C[7] * C[13] + C[2] * C[9] * C[3] + C[4] * C[8] * C[2] -
             (C[3] * C[7] * C[4] + C[8] * C[9] * C[1] + square(C[2]) * C[13])) /
            C[16];
    C[24] = (C[1] * C[7] * C[14] + C[2] * C[10] * C[3] + C[5] * C[8] * C[2] -
             (C[3] * C[7] * C[5] + C[8] * C[10] * C[1] + square(C[2]) * C[14])) /
            C[16];
    C[25] = (C[1] * C[7] * C[15] + C[2] * C[11] * C[3] + C[6] * C[8] * C[2] -
             (C[3] * C[7] * C[6] + C[8] * C[11] * C[1] + square(C[2]) * C[15])) /
            C[16];

    const Real threeQuarterPower = pow(Ch * 0.25f, 0.75f);
    C[26] = -fourth_root(Ch * 0.25f);
    C[27] = C[20] - C[17] - 0.41666666f + C[17] * C[26];
    C[28] = C[22] - C[19] - 0.083333336f + C[19] * C[26];
    C[29] = -std::sqrt(Ch * 0.25f);
    C[30] = -threeQuarterPower;
    C[31] = 1.5f * Ah - C[17] * C[30];
    C[32] = 0.5f - C[19] * C[30];
    C[33] = 0.5f * C[26] * C[32] + C[28] * C[31] * C[29] -
            (0.5f * C[30] * C[28] + C[32] * C[27] * C[29]);
    C[34] = C[18] + 0.083333336f - C[21] - C[18] * C[26];
    C[35] = -C[18] * threeQuarterPower;
    C[36] = (C[28] * C[35] * C[29] - C[32] * C[34] * C[29]) / C[33];
    C[37] = (0.5f * C[26] * C[35] + C[34] * C[31] * C[29] -
             (0.5f * C[30] * C[34] + C[35] * C[27] * C[29])) /
            C[33];

    E[1] = C[17] * C[36] + C[18] + C[19] * C[37];
    E[2] = C[20] * C[36] + C[21] + C[22] * C[37];
    E[3] = C[23] * C[36] + C[24] + C[25] * C[37];
    E[4] = C[37] / 12.0f + 0.25f + C[36] * 0.25f - E[3] / 5.0f - 1.5f * E[2] - E[1];
    E[5] = E[1] * (Ah / 6.0f + 0.5f) + E[2] * (11.0f * Ah / 84.0f + 0.25f) +
           E[3] * (Ah / 105.0f + 0.014285714f);
    E[6] = E[5] - C[36] * (Ah / 36.0f + 0.058333334f + 3.0f * Ah / Ch) - 0.025f - Ah / 72.0f -
           C[37] * (Ah / 120.0f + 0.016666668f + 1.0f / Ch);
}

void FIGURE_FACTORS(FLANGE_STATE& s, const HUB_SOLUTION& hub) {
    const Real Ah = hub.Ah;
    const Real Ch = hub.Ch;
    const auto& C = hub.C;
    const auto& E = hub.E;

    const Real g = 1.0f + Ah;
    const Real c = cube(g);
    const Real q1 = fourth_root(Ch / 2.73f);
    const Real q2 = fourth_root(2.73f / Ch);

    if (!s.loose()) {
        s.f = max(C[36] / g, 1.0f);
        s.V = E[4] / (q2 * c);
        s.F = -E[6] / (q1 * c / Ch);
        // A straight hub: the corner values of the figures.
        if (s.gRatio > 0.9999f && s.gRatio < 1.0001f) {
            s.F = 0.90892f;
            s.V = 0.550103f;
            s.f = 1.0f;
        }
    } else {
        s.f = 1.0f;
        s.V = (0.25f - C[24] / 5.0f - 1.5f * C[21] - C[18]) / (q2 * c);
        if (!(s.hRatio > 0.1f)) s.V = 194.6356f * pow(s.gRatio, -0.6547f);
        s.F = -(C[18] * (Ah / 6.0f + 0.5f) + C[21] * (11.0f * Ah / 84.0f + 0.25f) +
                C[24] * (Ah / 105.0f + 0.014285714f) - (Ah / 72.0f + 0.025f)) /
              (q1 * c / Ch);
    }

    const bool en = s.code == EN_13445;
    const FactorNames& names =
        s.loose() ? (en ? LOOSE_EN : LOOSE_ASME) : (en ? INTEGRAL_EN : INTEGRAL_ASME);
    BLANK_LINE();
    HEADING(s.loose() ? "Flange Factors for Loose Flange: "
                      : "Flange Factors for Integral Flange: ");
    factor_line(names.F, names.blanks, s.F);
    factor_line(names.V, names.blanks, s.V);
    factor_line(names.f, names.blanks, s.f);
}

} // namespace tarvane
