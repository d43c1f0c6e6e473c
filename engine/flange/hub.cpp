// Small end of the hub as a cylinder (UG-27(c)(1), VIII-2 4.3.3, EN 13445-3 7.4.2), which opens the
// code part of the report, and the lap of a lap joint flange.
#include "flange/hub.h"

#include "flange/results.h"
#include "report/lines.h"

#include <string_view>

namespace tarvane {

namespace {

void edition_line(Int code) {
    switch (code) {
    case ASME_VIII_1:
        TEXT_LINE(a98_addenda() ? "ASME Code, Section VIII Division 1, 1998, Code A-98 Addenda"
                                : "ASME Code, Section VIII Division 1, 2017");
        break;
    case ASME_VIII_2:
        TEXT_LINE(NEW_DIV_2_RULES ? "ASME Code, Section VIII Division 2, 2017"
                                  : "ASME Code, Section VIII, Division 2, 2004, A-06 ");
        break;
    case PD_5500:
        TEXT_LINE("PD 5500:2018+A1:2018, Section 3.8 ");
        break;
    case EN_13445:
        TEXT_LINE("European Std: EN 13445-3:2014 Issue 4 + A3:2017 - Section 11");
        break;
    default:
        break;
    }
}

void required_thickness_line(Real tHubReq, Real go) {
    if (tHubReq > go) {
        VALUE_LINE(tHubReq, Kind::thickness, "Warning: Less than specified Small End Hub thickness",
                   NOTE_STYLE);
    } else {
        VALUE_LINE(tHubReq, Kind::thickness);
    }
}

void asme_hub_lines(const FLANGE_GIVEN& s, Real ci, Real S, Real goc, Real tHubReq, Real pHub) {
    HEADING("Hub Small End Required Thickness due to Internal Pressure:");
    const Real p = as_pressure(s.P), b = as_diameter(s.B), c = as_thickness(ci);
    const Real stress = as_stress(S);
    if (s.code == ASME_VIII_1) {
        TEXT_LINE(" = (P*(D/2+Ca))/(S*E-0.6*P) per UG-27 (c)(1)");
        NUMBER_LINE(" = ( @2 * ( @4 / 2 + @4 )) / ( @2 * @2 - 0.6 * @2 ) + Ca",
                    {p, b, c, stress, s.jointE, p});
    } else {
        TEXT_LINE(" = (P*(D/2+Ca))/(S-0.5*P) ");
        NUMBER_LINE(" = ( @2 * ( @4 / 2 + @4 )) / ( @2 - 0.5 * @2 ) + Ca", {p, b, c, stress, p});
    }
    required_thickness_line(tHubReq, s.go);
    if (s.code != ASME_VIII_1) return;

    HEADING("Hub Small End Hub MAWP:");
    TEXT_LINE(" = (S*E*t)/(R+0.6*t) per UG-27 (c)(1)");
    NUMBER_LINE(
        " = (@2 * @2 * @4) / (@4  + 0.6 * @4 )#",
        {stress, s.jointE, as_thickness(goc), as_diameter(s.B / 2.0f + ci), as_thickness(goc)});
    VALUE_LINE(pHub, Kind::pressure);
}

void en_hub_lines(const FLANGE_GIVEN& s, Real ci, Real& tHubReq) {
    tHubReq = s.P * (s.B + 2.0f * ci) / (2.0f * s.Sfo - s.P) + ci + s.ce;
    const Real p = as_pressure(s.P);
    HEADING("Hub Small End Required Thickness due to Internal Pressure, per EN 13445 7.4.2:");
    TEXT_LINE(" = P * ( Di + 2 * ci ) / ( 2 * f * z - P ) Note: Di = B");
    NUMBER_LINE(" = @3 * ( @3 + 2 * @3 ) / ( 2 * @3 * 1.0 - @3 )",
                {p, as_diameter(s.B), as_thickness(ci), as_stress(s.Sfo), p});
    required_thickness_line(tHubReq, s.go);
}

// k as the lines show it, by the bore; the limits themselves are reduced by that of the attached shell.
void augmentation_lines(Int code, Real Bi) {
    HEADING(code == PD_5500 ? "Stress Augmentation Factor per PD:5500 paragraph 3.8.3.4.2 [k]:"
                            : "Gasket Augmentation Factor per EN 13445 paragraph 11.5.4.2 [k]:");
    if (Bi <= 39.37008f) {
        TEXT_LINE("Because the Flange ID is <= 1000 mm, k = 1.0 ");
    } else if (Bi >= 78.74016f) {
        TEXT_LINE("Because the Flange ID is >= 2000 mm, k = 1.333");
    } else {
        TEXT_LINE(" = (2/3)(1 + B/2000)    Because 1000 mm < Flange ID < 2000 mm:");
        NUMBER_LINE(" = (2/3)(1 + @3/@0)", {Bi * MM_PER_INCH, 2000.0f});
        VALUE_LINE(0.6666667f * (Bi / 78.74016f + 1.0f), Kind::factor, {}, PLAIN, 3);
    }
    TEXT_LINE("Note: For Evaluation of 'k', Metric dimensions are employed.", NOTE_STYLE);
}

void effective_width_lines(const FLANGE_GIVEN& s) {
    const std::string_view unit = UNITS.thickness_label.trimmed();
    const Real bo = (s.Go - s.Gi) / 4.0f;
    HEADING("Gasket Effective Width:");
    TEXT_LINE("N = ( Go - Gi ) / 4 ");
    NUMBER_LINE("= (@3 - @3) / 4 = @4", {as_diameter(s.Go), as_diameter(s.Gi), as_thickness(bo)}, 1,
                unit);
    if (0.5f * bo < 0.5f) {
        NUMBER_LINE("b = bo = @4", {as_thickness(bo)}, 1, unit);
    } else {
        const Real b = 0.5f * std::sqrt(bo);
        NUMBER_LINE("Cb * sqrt(bo) = @2 * sqrt(@3) = @4",
                    {0.5f * std::sqrt(UNITS.thickness), as_thickness(bo), as_thickness(b)}, 1,
                    unit);
    }
}

} // namespace

void HUB_SMALL_END(FLANGE_GIVEN& s, Real ci, bool silent, Real& tHubReq, Real& pHub) {
    pHub = HUB_NOT_RATED;
    if (s.P < 0.0f) return;
    edition_line(s.code);

    Real S = s.Sfo;
    if (s.useShellStress == 1) {
        S = s.Sn;
        if (!(S > 0.001f)) return;
    }
    const Real goc = s.go - ci - s.ce;
    const Real Bcor = s.B + 2.0f * ci;

    if (s.type != BLIND && s.B > 0.001f && goc > 0.0001f) {
        if (s.code == ASME_VIII_1) {
            tHubReq = s.P * (s.B / 2.0f + ci) / (S * s.jointE - 0.6f * s.P) + ci + s.ce;
            pHub = S * s.jointE * goc / (s.B / 2.0f + ci + 0.6f * goc);
        } else if (s.code == ASME_VIII_2) {
            tHubReq = s.P * (s.B / 2.0f + ci) / (S - 0.5f * s.P) + ci + s.ce;
            pHub = S * s.jointE * log((2.0f * goc + Bcor) / Bcor);
        }
        // Only welding neck hubs are rated this way.
        if (s.type != INTEGRAL_WELD_NECK && s.type != REVERSE_WELD_NECK) {
            pHub = HUB_NOT_RATED;
            return;
        }
        if (s.type == REVERSE_WELD_NECK && !(s.go > 0.001f)) return;
        if (!NEW_DIV_2_RULES) {
            if (s.asme()) asme_hub_lines(s, ci, S, goc, tHubReq, pHub);
            if (s.code == EN_13445) en_hub_lines(s, ci, tHubReq);
        }
    }

    if (silent) return;
    if (s.en_or_pd()) augmentation_lines(s.code, Bcor);
    if (s.code == EN_13445) effective_width_lines(s);
}

void LAP_JOINT_THICKNESS(const FLANGE_STATE& s) {
    if (s.type != LAP_JOINT) return;
    HEADING("Required Lap Thickness Calculations for Lap Joint Flanges:");

    Real trlo = NO_VALUE, trla = NO_VALUE;
    if (s.Sn > 0.001f) {
        trlo = s.Wm1 / (PI_IN_FIVE_DECIMALS * s.GiC * 0.8f * s.Sn);
        HEADING("Required Lap Thickness due to Shear Stress, Operating [trlo]:");
        TEXT_LINE(" = Wm1 / ( pi * Gid * 0.8 * So )");
        NUMBER_LINE(" = @1 / ( pi * @3 * @2 ) #",
                    {as_force(s.Wm1), as_diameter(s.GiC), as_stress(0.8f * s.Sn)});
        VALUE_LINE(trlo, Kind::thickness, {}, PLAIN, 3);
    }
    if (s.Sna > 0.001f) {
        trla = s.W / (PI_IN_FIVE_DECIMALS * s.GiC * 0.8f * s.Sna);
        HEADING("Required Lap Thickness due to Shear Stress, Seating [trla]:");
        TEXT_LINE(" = W / ( pi * Gid * 0.8 * Sa )");
        NUMBER_LINE(" = @1 / ( pi * @3 * @2 ) #",
                    {as_force(s.W), as_diameter(s.GiC), as_stress(0.8f * s.Sna)});
        VALUE_LINE(trla, Kind::thickness, {}, PLAIN, 3);
    }
    NOTE_LAP(trlo, trla);
}

} // namespace tarvane
