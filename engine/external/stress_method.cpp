#include "external/stress_method.h"

#include "external/silence.h"
#include "external/state.h"
#include "materials/modulus.h"
#include "report/lines.h"

namespace tarvane {

namespace {

void factor_line(Real value, Int decimals = HOUSE_DECIMALS) {
    VALUE_LINE(value, Kind::factor, {}, PLAIN, decimals);
}
void stress_line(Real value) { VALUE_LINE(value, Kind::stress); }

constexpr std::string_view FHE_TITLE = "Elastic Hoop Compressive Membrane Failure Stress [Fhe]:";
constexpr std::string_view FR_TITLE =
    "Ratio of Elastic Hoop Compressive Membrane Failure Stress to Yield [Fr]:";
constexpr std::string_view FIC_TITLE = "Predicted Buckling Stress [Fic]:";
constexpr std::string_view PA_TITLE = "Allowable External Pressure at the given Thickness [Pa]:";

// ---- factor of safety --------------------------------------------------------------------------------

// Fic by the tangent modulus of the chart at the stress.
void TANGENT_MODULUS_FIC(Real F, Real& Fic, Real Fy) {
    const Real Emod = EXTERNAL.Emod;
    const bool by_Fic = F <= 100.0f;
    const Real Fsel = by_Fic ? Fic : F;

    HEADING("For non-Carbon and Low Alloy Steel Materials re-compute [Fic]:");
    const Real A = Fsel / Emod;
    HEADING("Factor A [A]:");
    TEXT_LINE(" = F/Emod, see 2286-6 Step 1");
    NUMBER_LINE(" = @2/@0", {as_stress(Fsel), as_stress(Emod)});
    factor_line(A, 7);

    CHART_CURVE curve = EXTERNAL.curve;
    READ_CHART(EXTERNAL.chart.view(), EXTERNAL.Temp, curve, Fy);
    const Real B = FACTOR_B(A, curve);
    LinePieces()
        .text("From the External Pressure Chart ")
        .text(EXTERNAL.chart.trimmed())
        .text(", determine the Stress [B]:")
        .write(HEADING_STYLE);
    stress_line(B);

    const Real Et = 2.0f * B / A;
    HEADING("The Tangent Modulus from 3-D.5.2, [Et]:");
    TEXT_LINE(" = 2B/A");
    NUMBER_LINE(" = 2 * @2/@5", {as_stress(B), A});
    stress_line(Et);

    Fic = Fsel * Et / Emod;
    HEADING(FIC_TITLE);
    TEXT_LINE(by_Fic ? " = ( Fic * Et )/( FS * Emod )" : " = ( F * Et )/( FS * Emod )");
    NUMBER_LINE(" = ( @3 * @1 )/( 1 * @1 )", {as_stress(Fsel), as_stress(Et), as_stress(Emod)});
    stress_line(Fic);
}

} // namespace

Real CC2286_FS(Real F, Real& Fic, Real Fy) {
    if (EXTERNAL.CarbonChart == 0) TANGENT_MODULUS_FIC(F, Fic, Fy);

    HEADING("Factor of Safety [FS]:");
    if (Fic <= 0.55f * Fy) {
        NUMBER_LINE(" Since Fic [@2] < 0.55 * @2, FS = 2", {as_stress(Fic), as_stress(Fy)});
        return 2.0f;
    }
    if (Fic < Fy) {
        const Real FS = 2.407f - 0.741f * Fic / Fy;
        TEXT_LINE(" Since Fic > 0.55 Fy and Fic < Fy ");
        TEXT_LINE(" = 2.407 - 0.741 * Fic / Fy");
        NUMBER_LINE(" = 2.407 - 0.741 * @2 / @2", {as_stress(Fic), as_stress(Fy)});
        factor_line(FS);
        return FS;
    }
    NUMBER_LINE(" Since Fic [@2] >= Fy[@2], FS = 1.667", {as_stress(Fic), as_stress(Fy)});
    return 1.667f;
}

// ---- cylinder ----------------------------------------------------------------------------------------

namespace {

Real CYLINDER_CH(Real Mx, Real Do, Real t) {
    const Real Dot = Do / t;
    const Real x = pow(Dot, 0.94f);
    HEADING("Compute the Factor [Ch]:");
    Real Ch;
    if (!(Mx < 2.0f * x)) {
        Ch = 0.55f / Dot;
        TEXT_LINE(" Since Mx > 2 * (Do/t)^(0.94), Ch = 0.55 / (Do/t)");
        NUMBER_LINE(" = 0.55 * / ( @3 / @3 )", {as_diameter(Do), as_thickness(t)});
    } else if (Mx > 13.0f) {
        Ch = 1.12f * pow(Mx, -1.058f);
        TEXT_LINE(" Since Mx > 13 and Mx < 2 * (Do/t)^(0.94), Ch = 1.12 * Mx^(-1.058)");
        NUMBER_LINE(" = 1.12 * @3^(-1.058)", {Mx});
    } else if (Mx > 1.5f) {
        Ch = 0.92f / (Mx - 0.579f);
        TEXT_LINE(" Since Mx > 1.5 and Mx < 13, Ch = 0.92 / ( Mx - 0.579 )");
        NUMBER_LINE(" = 0.92 / ( @3 - 0.579)", {Mx});
    } else {
        TEXT_LINE(" Since Mx <= 15, Ch = 1.0"); // the limit is 1.5, whatever the line says
        return 1.0f;
    }
    factor_line(Ch);
    return Ch;
}

FIC_SOURCE CYLINDER_FIC(Real Fr, Real Fhe, Real Fy, Real& Fic) {
    HEADING(FIC_TITLE);
    FIC_SOURCE by = FIC_ELASTIC;
    if (Fr >= 2.439f) {
        by = FIC_YIELD;
        Fic = Fy;
        TEXT_LINE(" Since Fr >= 2.439, Fic = Fy ");
    } else if (Fr > 0.552f) {
        by = FIC_INELASTIC;
        Fic = 0.7f * Fy * pow(Fr, 0.4f);
        TEXT_LINE(" Since Fr > 0.552 and Fr < 2.439, Fic = 0.7 * Fy * Fr^(0.4) ");
        NUMBER_LINE(" = 0.7 * @2 * @2^(0.4)", {as_stress(Fy), Fr});
    } else {
        Fic = Fhe;
        TEXT_LINE(" Since Fr <= 0.552, Fic = Fhe  ");
    }
    stress_line(Fic);
    return by;
}

Real CYLINDER_FHA(Real Fr, Real Fhe, Real Fy, Real FS) {
    HEADING("Allowable Circumferential Compressive Stress [Fha]:");
    Real Fha;
    if (Fr >= 2.439f) {
        Fha = Fy / FS;
        TEXT_LINE(" Since Fr > 2.439, Fha = Fy/FS");
    } else if (Fr > 0.552f) {
        Fha = 0.7f * Fy / FS * pow(Fr, 0.4f);
        TEXT_LINE(" Since Fr > 0.552 and Fr < 2.439, Fha = 0.7 * Fy/FS * Fr^(0.4)");
        NUMBER_LINE(" = 0.7 * @1 / @3 * @3^(0.4)", {as_stress(Fy), FS, Fr});
    } else {
        Fha = Fhe / FS;
        TEXT_LINE(" Since Fr <= 0.552, Fha = Fhe/FS");
    }
    stress_line(Fha);
    return Fha;
}

} // namespace

BUCKLING_CYLINDER CC2286_CYLINDER(Real Do, Real L, Real t, Real Ey, Real Fy) {
    const Real Ro = Do / 2.0f;
    const Real Mx = L / std::sqrt(Ro * t);
    HEADING("Determine Parameter [Mx]:");
    TEXT_LINE(" = L / sqrt( Ro * t )");
    NUMBER_LINE(" = @3 / sqrt( @3 * @3 )", {as_diameter(L), as_diameter(Ro), as_thickness(t)});
    factor_line(Mx);

    const Real Dot = Do / t;
    const Real Ch = CYLINDER_CH(Mx, Do, t);

    const Real Fhe = 1.6f * Ch * Ey / Dot;
    HEADING(FHE_TITLE);
    TEXT_LINE(" = 1.6 * Ch * Ey * ( t / Do )");
    NUMBER_LINE(" = 1.6 * @3 * @0 * ( @3 / @3 )",
                {Ch, as_stress(Ey), as_thickness(t), as_diameter(Do)});
    stress_line(Fhe);

    const Real Fr = Fhe / Fy;
    HEADING(FR_TITLE);
    TEXT_LINE(" = Fhe / Fy ");
    factor_line(Fr);

    Real Fic = 0.0f;
    const FIC_SOURCE by = CYLINDER_FIC(Fr, Fhe, Fy, Fic);
    const Real FS = CC2286_FS(Fhe, Fic, Fy);
    const Real Fha = CYLINDER_FHA(Fr, Fhe, Fy, FS);

    const Real Pa = 2.0f * Fha / Dot;
    HEADING(PA_TITLE);
    TEXT_LINE(" = 2 * Fha * ( t / Do )");
    NUMBER_LINE(" = 2 * @3 * ( @3 / @3 )", {as_stress(Fha), as_thickness(t), as_diameter(Do)});
    VALUE_LINE(Pa, Kind::pressure);
    return {.FS = FS, .Fhe = Fhe, .Fha = Fha, .Pa = Pa, .Fic = Fic, .Fic_by = by};
}

// ---- head --------------------------------------------------------------------------------------------

namespace {

// The undivided stress of a head between the elastic one and the yield.
Real HEAD_KNEE(Real Fhe, Real Fy) { return 1.31f * Fy / (Fy / Fhe + 1.15f); }
Real HEAD_MIDDLE(Real Fhe, Real Fy) { return 0.18f * Fhe + 0.45f * Fy; }

Real HEAD_FIC(Real Fr, Real Fhe, Real Fy, FIC_SOURCE& by) {
    HEADING(FIC_TITLE);
    Real Fic;
    by = FIC_INELASTIC;
    if (Fr >= 6.25f) {
        by = FIC_YIELD;
        Fic = Fy;
        TEXT_LINE(" Since Fr >= 6.25, Fic = Fy ");
    } else if (Fr > 1.6f) {
        Fic = HEAD_KNEE(Fhe, Fy);
        TEXT_LINE(" Since Fr > 1.6 and Fr < 6.25, Fic = 1.31 * Fy /( 1.15 + Sy/Fhe ) ");
        NUMBER_LINE(" = 1.31 * @2 /( 1.15 + @3 / @3 )",
                    {as_stress(Fy), as_stress(Fy), as_stress(Fhe)});
    } else if (Fr > 0.55f) {
        Fic = HEAD_MIDDLE(Fhe, Fy);
        TEXT_LINE(" Since Fr > 0.55 and Fr <= 1.6, Fic = 0.18 * Fh + 0.45 * Fy ");
        TEXT_LINE(" = 0.18 * Fhe + 0.45 * Fy");
    } else {
        by = FIC_ELASTIC;
        Fic = Fhe;
        TEXT_LINE(" Since Fr <= 0.55, Fic = Fhe ");
    }
    stress_line(Fic);
    return Fic;
}

Real HEAD_FHA(Real Fr, Real Fhe, Real Fy, Real FS) {
    Real Fha;
    if (Fr >= 6.25f) {
        Fha = Fy / FS;
        TEXT_LINE(" Since Fr >= 6.25, Fha = Fy/FS");
    } else if (Fr > 1.6f) {
        Fha = HEAD_KNEE(Fhe, Fy) / FS;
        TEXT_LINE(" Since Fr > 1.6 and Fr < 6.25, Fha = 1.31 * Fy / ( FS * (1.15 + Sy/Fhe) )");
        NUMBER_LINE(" = 1.31 * @2 / ( @2 * (1.15 + @2 / @2) )",
                    {as_stress(Fy), FS, as_stress(Fy), as_stress(Fhe)});
    } else if (Fr > 0.55f) {
        Fha = HEAD_MIDDLE(Fhe, Fy) / FS;
        TEXT_LINE(" Since Fr > 0.55 and Fr < 1.6, Fha = ( 0.18 * Fh + 0.45 * Fy )/FS");
        NUMBER_LINE(" = ( 0.18 * @2 + 0.45 * @2 )/@3", {as_stress(Fhe), as_stress(Fy), FS});
    } else {
        Fha = Fhe / FS;
        TEXT_LINE(" Since Fr <= 0.55, Fha = Fhe/FS");
        NUMBER_LINE(" = @2 / @3", {as_stress(Fhe), FS});
    }
    stress_line(Fha);
    return Fha;
}

// Both stresses compressive.
BUCKLING_HEAD BIAXIAL_COMPRESSION(Real Ro, Real Ey, Real t, Real Fy, Real Sigma1, Real Sigma2) {
    const Real Rot = Ro / t;
    const Real Fhe = 0.075f * Ey / Rot;
    HEADING(FHE_TITLE);
    TEXT_LINE(" = 0.075 * Ey * ( t / Ro )");
    NUMBER_LINE(" = 0.075 * @0 * ( @3 / @3 )", {as_stress(Ey), as_thickness(t), as_diameter(Ro)});
    stress_line(Fhe);

    const Real Fr = Fhe / Fy;
    HEADING(FR_TITLE);
    TEXT_LINE(" = Fhe / Sy");
    factor_line(Fr);

    BUCKLING_HEAD out;
    Real Fic = HEAD_FIC(Fr, Fhe, Fy, out.Fic_by);
    const Real FS = CC2286_FS(Fhe, Fic, Fy);
    out.FS = FS;
    out.Fhe = Fhe;
    out.Fic = Fic;
    out.Fha = HEAD_FHA(Fr, Fhe, Fy, FS);
    out.Pa = 2.0f * out.Fha / Rot;
    HEADING(PA_TITLE);
    TEXT_LINE(" = 2 * Fha[t/Ro]");
    NUMBER_LINE(" = 2 * @3[@3/ @3]", {as_stress(out.Fha), as_thickness(t), as_diameter(Ro)});
    VALUE_LINE(out.Pa, Kind::pressure);

    if (Sigma1 != Sigma2) {
        const Real q = min(Sigma1, Sigma2) / max(Sigma1, Sigma2);
        out.Fa = 0.6f * out.Fha / (1.0f - 0.4f * q);
        out.Fb = q * out.Fa;
    }
    return out;
}

// One stress is tension; no lines.
BUCKLING_HEAD MIXED_STRESSES(Real Ro, Real Ey, Real t, Real Fy, Real Sigma2) {
    const SILENCE no_lines;
    const Real Rot = Ro / t;
    const Real Ci = Rot >= 622.0f ? 0.125f : 102.2f / (Rot + 195.0f);
    const Real Cc = std::fabs(Sigma2) * Ro / (Ey * t);
    const Real Cd = 1.06f / (1.0f / Cc + 3.24f);
    const Real Fhe = (Ci + Cd) * Ey / Rot;
    const Real Fr = Fhe / Fy;

    BUCKLING_HEAD out;
    if (Fr == 1.6f) return out; // the ranges on both sides leave it out
    Real Fic = HEAD_FIC(Fr, Fhe, Fy, out.Fic_by);
    const Real FS = CC2286_FS(Fhe, Fic, Fy);
    out.FS = FS;
    out.Fhe = Fhe;
    out.Fic = Fic;
    out.Fha = HEAD_FHA(Fr, Fhe, Fy, FS);
    out.Fa = out.Fha;
    return out;
}

} // namespace

BUCKLING_HEAD CC2286_HEAD(Int Element, Real Do, Real Ey, Real t, Real Fy, Real Sigma1, Real Sigma2,
                          Real kO) {
    Real Ro;
    switch (Element) {
    case TORISPHERICAL:
        Ro = Do;
        break;
    case SPHERE:
        Ro = Do / 2.0f;
        break;
    case ELLIPTICAL: {
        const Real Ko = 0.25346f + 0.13995f * kO + 0.12238f * square(kO) - 0.015297f * cube(kO);
        Ro = Ko * Do;
        break;
    }
    default:
        return {};
    }
    if (Sigma1 < 0.0f && Sigma2 < 0.0f) return BIAXIAL_COMPRESSION(Ro, Ey, t, Fy, Sigma1, Sigma2);
    if (Sigma1 * Sigma2 < 0.0f) return MIXED_STRESSES(Ro, Ey, t, Fy, Sigma2);
    return {};
}

} // namespace tarvane
