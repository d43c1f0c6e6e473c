// Hub ratios, the hub factors of Division 2 by curve fits (Table 4-16.4), the divisors d and e and
// the stress factors (2-3, Table 4.16.5).
#include "flange/shape_factors.h"

#include "report/lines.h"

#include <string_view>

namespace tarvane {

namespace {

// Label, the formula after it in 22 columns, value.
LinePieces hub_line(std::string_view label, std::string_view formula, Real value) {
    LinePieces line;
    line.text(label).padded(formula, 22).fixed(value, 10, 3);
    return line;
}

void fit_factor_line(std::string_view name, Real value) {
    LinePieces().text(name).blanks(30).fixed(value, 10, 3).write();
}

// Curve fits of F, V, f: lx and lh are the natural logarithms of Xg and Xh.
Real loose_F(Real lx, Real lh) {
    return (0.941074f + 0.176139f * lx - 0.188556f * lh + 0.0689847f * square(lx) +
            0.523798f * square(lh) - 0.513894f * lx * lh) /
           (1.0f + 0.379392f * lx + 0.18452f * lh - 0.00605208f * square(lx) -
            0.00358934f * square(lh) + 0.110179f * lx * lh);
}

// Returns `held` for an Xh outside every range, which is a not-a-number.
Real loose_V(Real Xg, Real Xh, Real lx, Real lh, Real held) {
    if (Xh >= 0.1f && Xh <= 0.25f) {
        return exp(6.57683f - 0.115516f * Xg + 1.39499f * std::sqrt(Xg) * lx +
                   0.30734f * square(lx) - 8.30849f * std::sqrt(Xg) + 2.62307f * lx +
                   0.239498f * Xh * lh - 2.96125f * lh + 0.0007035052f / Xh);
    }
    if (Xh > 0.25f && Xh <= 0.5f) {
        return 1.56323f - 1.80696f * lx - 1.33458f / Xh + 0.276415f * square(lx) +
               0.417135f / square(Xh) + 1.39511f * lx / Xh + 0.0137129f * cube(lx) +
               0.0943597f / cube(Xh) - 0.402096f * lx / square(Xh) - 0.101619f * square(lx) / Xh;
    }
    if (Xh > 0.5f && Xh <= 1.0f) {
        return -0.0213643f - 0.0763597f / Xg + 0.10299f / Xh + 0.725776f / square(Xg) -
               0.160603f / square(Xh) - 0.0918061f / (Xg * Xh) + 0.472277f / cube(Xg) +
               0.087353f / cube(Xh) + 0.527487f / (Xg * square(Xh)) - 0.980209f / (square(Xg) * Xh);
    }
    if (Xh > 1.0f && Xh <= 2.0f) {
        return 0.00796687f - 0.220518f / Xg + 0.0602652f / Xh + 0.619818f / square(Xg) -
               0.223212f / square(Xh) + 0.42192f / (Xg * Xh) + 0.0950195f / cube(Xg) +
               0.209813f / cube(Xh) - 0.158821f / (Xg * square(Xh)) - 0.242056f / (square(Xg) * Xh);
    }
    return held;
}

Real integral_F(Real lx, Real lh) {
    return 0.897697f - 0.297012f * lx + 0.0095257f * lh + 0.123586f * square(lx) +
           0.035858f * square(lh) - 0.194422f * lx * lh - 0.0181259f * cube(lx) +
           0.012936f * cube(lh) - 0.0377693f * lx * square(lh) + 0.0273791f * lh * square(lx);
}

Real integral_V(Real Xg, Real Xh, Real held) {
    if (Xh >= 0.1f && Xh <= 0.5f) {
        return 0.500244f + 0.227914f / Xg - 1.87071f * Xh - 0.34441f / square(Xg) +
               2.49189f * square(Xh) + 0.873446f * Xh / Xg + 0.189953f / cube(Xg) -
               1.06082f * cube(Xh) - 1.4997f * square(Xh) / Xg + 0.719413f * Xh / square(Xg);
    }
    if (Xh > 0.5f && Xh <= 2.0f) {
        return 0.0144868f - 0.135977f / Xg - 0.0461919f / Xh + 0.560718f / square(Xg) +
               0.0529829f / square(Xh) + 0.244313f / (Xh * Xg) + 0.113929f / cube(Xg) -
               0.00928265f / cube(Xh) - 0.0266293f / (Xg * square(Xh)) -
               0.217008f / (square(Xg) * Xh);
    }
    return held;
}

Real integral_f(Real Xg, Real Xh) {
    return max(1.0f, (0.0927779f - 0.0336633f * Xg + 0.964176f * square(Xg) + 0.0566286f * Xh +
                      0.347074f * square(Xh) - 4.18699f * cube(Xh)) /
                         (1.0f - 0.00596093f * Xg + 1.62904f * Xh + 3.49329f * square(Xh) +
                          1.39052f * cube(Xh)));
}

// d and e from the hub factors; both are 2-3 and Table 4.16.5 alike.
void form_divisors(FLANGE_STATE& s) {
    const Real goCor = s.go - s.ci - s.ce;
    s.d = s.U * s.ho * square(goCor) / s.V;
    s.e = s.F / s.ho;
}

// `unit` is the length label as the suffixes are joined to it.
void write_divisors(const FACTOR_STATE& s, std::string_view unit) {
    const Real u = UNITS.thickness;
    const Real d = s.d * cube(u);
    LinePieces cubic, inverse;
    cubic.text(unit).text("\xB3");
    inverse.text(unit).text("^-1");

    LinePieces line;
    line.blanks(20).text("d = ");
    if (d > 99999.0f) {
        line.exponent(d, 10, 5);
    } else {
        line.fixed(d, 10, 3);
    }
    line.blanks(1).padded(cubic.view(), 5).blanks(6).text("e = ").fixed(s.e / u, 10, 4);
    line.blanks(1).padded(inverse.view(), 6).write();
}

} // namespace

void FLANGE_HUB_RATIOS(FLANGE_STATE& s) {
    constexpr std::string_view ZERO = "Defined as 0.0";

    s.Bcor = s.B + 2.0f * s.ci;
    if (s.looseReverse) {
        s.ho = 0.0f;
        s.hRatio = 0.0f;
        s.gRatio = 0.0f;
        return;
    }

    std::string_view hoText = ZERO, hText = ZERO, gText = ZERO;
    if (!(s.go > s.ci)) {
        s.ho = 0.0f;
    } else if (s.type == REVERSE_WELD_NECK) {
        // The hub is on the outside: A takes the external allowance, go does not.
        s.ho = std::sqrt((s.A - 2.0f * s.ce) * (s.go - s.ci));
        hoText = "sqrt(Acor*goCor)";
    } else {
        s.ho = std::sqrt(s.Bcor * (s.go - s.ci - s.ce));
        hoText = "sqrt(Bcor*goCor)";
    }

    if (s.h == 0.0f || s.ho == 0.0f) {
        s.hRatio = 0.0f;
    } else {
        s.hRatio = s.h / s.ho;
        hText = "HL / H0 ";
    }

    if (s.go > s.ci) {
        s.gRatio = (s.g1 - s.ci - s.ce) / (s.go - s.ci - s.ce);
        gText = "(g1Cor/goCor)";
    } else {
        s.gRatio = 0.0f;
    }

    if (s.type == BLIND || !reporting()) return;
    hub_line("Effective Hub Length, ho = ", hoText, as_thickness(s.ho))
        .blanks(2)
        .text(UNITS.thickness_label.view())
        .write();
    hub_line("Hub Ratio,          h/h0 = ", hText, s.hRatio).write();
    hub_line("Thickness Ratio,   g1/g0 = ", gText, s.gRatio).write();
}

void TABLE_4164_FACTORS(FLANGE_STATE& s) {
    const Real Xg = s.gRatio;
    const Real Xh = min(max(s.hRatio, 0.1f), 2.0f); // the stored ratio is not limited
    const Real lx = log(Xg);
    const Real lh = log(Xh);

    if (s.loose()) {
        s.V = loose_V(Xg, Xh, lx, lh, s.V);
        s.F = loose_F(lx, lh);
        s.f = 1.0f;
        HEADING("Flange Factors for Loose Flange: ");
        fit_factor_line("Factor Fl per 4.16.5", s.F);
        fit_factor_line("Factor Vl per 4.16.5", s.V);
        fit_factor_line("Factor f  per 4.16.5", s.f);
    } else {
        s.V = integral_V(Xg, Xh, s.V);
        s.F = integral_F(lx, lh);
        s.f = integral_f(Xg, Xh);
        HEADING("Flange Factors for Integral Flange: ");
        fit_factor_line("Factor F per 4.16.5 ", s.F);
        fit_factor_line("Factor V per 4.16.5 ", s.V);
        fit_factor_line("Factor f per 4.16.5 ", s.f);
    }

    if (s.hRatio < 0.1f) {
        BLANK_LINE();
        TEXT_LINE("Warning: The hub ratio Xh was less than 0.1 and has been set to 0.1.",
                  WARNING_STYLE);
        BLANK_LINE();
    }
    if (s.hRatio > 2.0f) {
        BLANK_LINE();
        TEXT_LINE("Warning: The hub ratio Xh was greater than 2.0 and has been set to 2.0.",
                  WARNING_STYLE);
        BLANK_LINE();
    }
}

void HUB_FACTORS(FLANGE_STATE& s) {
    form_divisors(s);
    if (reporting()) write_divisors(s, UNITS.thickness_label.view());
}

void REVERSE_HUB_FACTORS(FLANGE_STATE& s) {
    form_divisors(s);
    if (reporting()) write_divisors(s, UNITS.thickness_label.trimmed());
}

void STRESS_FACTORS(FLANGE_STATE& s) {
    const Real tCor = s.t - s.ct;
    s.alpha = tCor * s.e + 1.0f;
    s.beta = 4.0f * tCor * s.e / 3.0f + 1.0f;
    s.gamma = s.alpha / s.T;
    s.delta = cube(tCor) / s.d;
    s.lambda = s.gamma + s.delta;

    if (!reporting()) return;
    LinePieces().text("Stress Factors").blanks(28).text("ALPHA = ").fixed(s.alpha, 10, 3).write();
    LinePieces()
        .blanks(17)
        .text("BETA = ")
        .fixed(s.beta, 10, 3)
        .blanks(8)
        .text("GAMMA = ")
        .fixed(s.gamma, 10, 3)
        .write();
    LinePieces()
        .blanks(16)
        .text("DELTA = ")
        .fixed(s.delta, 10, 3)
        .blanks(7)
        .text(" Lamda = ")
        .fixed(s.lambda, 10, 3)
        .write();
}

} // namespace tarvane
