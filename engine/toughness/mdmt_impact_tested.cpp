// UCS-66 for materials with a specified impact test temperature: UCS-66(g), UG-84(b)(2).
#include "frame/switches.h"
#include "materials/material_record.h"
#include "toughness/impact_table.h"
#include "toughness/mdmt_stages.h"
#include "toughness/temperature_lines.h"

namespace tarvane {

namespace {

Real user_temperature(const MDMT_CALL& a) {
    Real T;
    IMPACT_TEST_TEMPERATURE(a.Spec, T, a.Kind);
    return T;
}

void calculated_line(MDMT_CALL& a) {
    MDMT_RATIO_FLOOR(a);
    LOWERED_LINE(a, "Calculated Minimum Design Metal Temperature         ");
}

// Reduction of Fig. UCS-66.1; corrosion may have left no ratio to show.
void figure_reduction_lines(const MDMT_CALL& a) {
    if (a.ratioKind == MDMT_CALL::no_ratio) return;
    UCS66_RATIO_LINES(a);
    DIFFERENCE_LINE("Reduction in MDMT per UCS-66.1                      ", a.Reduction);
}

// The temperature is that of the impact test of the material.
void by_specification(MDMT_CALL& a, const MATERIAL_RECORD& record) {
    const Real G = G_IMPACT.Ucs66g ? std::fabs(static_cast<Real>(record.ucs66gReduction)) : 0.0f;
    a.Tmin = static_cast<Real>(record.impactTemperature);
    if (G_IMPACT.UserTable) a.Tmin = min(a.Tmin, user_temperature(a));
    a.Reduction = max(G, std::fabs(a.Reduction));
    IMPACT_TESTED_MATERIAL_LINES(a.Tmin);
    if (G_IMPACT.Ucs66g) DIFFERENCE_LINE("Reduction in Impact Temperature per UCS-66(g)       ", G);
    if (G_IMPACT.Ucs66_1)
        figure_reduction_lines(a);
    else
        a.Reduction = G;
    a.Mdmt = max(a.Tmin - a.Reduction, COLDEST);
    if (!ReductionsAllowed()) a.Mdmt = 0.0f;
    calculated_line(a);

    MDMT_RESULTS& f = MDMT_FOUND;
    if (G_IMPACT.Ucs66g) f.reduction_66g = G;
    f.t_curve_by = OF_SPECIFICATION;
    f.impact_temperature = a.Tmin;
    NOTE_TEMPERATURES(a, LOWEST_BY_IMPACT_TEST);
}

// The element is tested; the user may have given the temperature.
void by_user(MDMT_CALL& a, const MATERIAL_RECORD& record) {
    IMPACT_TESTED_ELEMENT_NOTE();
    if (!G_IMPACT.UserTable) return NOTE_TESTED_AS_REQUIRED(a);
    MDMT_RESULTS& f = MDMT_FOUND;
    const Real T = user_temperature(a);
    if (T < 99.0f) {
        a.Tmin = T;
        USER_TEMPERATURE_LINE(a.Tmin);
    }
    Real U;
    UG84_REDUCTION(U, record.yield);
    if (G_IMPACT.Ucs66_1)
        figure_reduction_lines(a);
    else
        a.Reduction = 0.0f;
    if (G_IMPACT.Ug84) {
        DIFFERENCE_LINE("Reduction in MDMT per UG-84(b)(2)                   ", U);
        a.Reduction = max(std::fabs(U), a.Reduction);
        f.reduction_ug84 = U;
    }
    a.Mdmt = max(a.Tmin - a.Reduction, COLDEST);
    calculated_line(a);

    if (!(T < 99.0f)) return NOTE_TESTED_AS_REQUIRED(a);
    f.t_curve_by = OF_USER;
    f.impact_temperature = a.Tmin;
    NOTE_TEMPERATURES(a, LOWEST_BY_IMPACT_TEST);
}

} // namespace

void MDMT_IMPACT_TESTED(MDMT_CALL& a) {
    a.Tug20 = -20.0f;
    MDMT_FOUND.ug20f = UG20F_IMPACT_TESTED;
    MATERIAL_RECORD record;
    Int status;
    READ_MATERIAL(a.Code, a.Spec, a.Index, status, record);
    if (record.impactTemperature < 1)
        by_specification(a, record);
    else
        by_user(a, record);
    NOTE_RATIO(a);
    MDMT_FOUND.reduction = a.Reduction; // also where there is no ratio
}

} // namespace tarvane
