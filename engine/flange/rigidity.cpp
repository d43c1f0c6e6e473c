// Rigidity index (2-14, Table 4.16.10) and the inertias of Table 4.16.7.
#include "flange/rigidity.h"

#include "report/lines.h"

#include <string_view>

namespace tarvane {

namespace {

// Form of the index: integral or loose with a hub, or the bare ring.
enum class RigidityForm { integral, loose_hub, ring };

RigidityForm form_of(const FLANGE_GIVEN& s, Real goc) {
    const bool hub = goc > 0.0f;
    if (s.looseReverse) return RigidityForm::ring;
    switch (s.type) {
    case INTEGRAL_WELD_NECK:
    case INTEGRAL_SLIP_ON:
    case INTEGRAL_RING:
        return RigidityForm::integral;
    case REVERSE_WELD_NECK:
        return hub ? RigidityForm::integral : RigidityForm::ring;
    case LOOSE_SLIP_ON:
    case LAP_JOINT:
        return hub ? RigidityForm::loose_hub : RigidityForm::ring;
    default:
        return RigidityForm::ring;
    }
}

// Symbol line and templates of one condition.
struct IndexLines {
    std::string_view symbols, first, second;
};
constexpr IndexLines SEATING_LINES[] = {
    {" = 52.14 * Ma / Bsc * Cnv_fac * V / ( Lambda * Eamb * go^(2) * ho * Ki )",
     " = 52.14 * @1 / @4 * @3 * @3/ ( @3 * @0 *  #", "   @3^(2) * @3 * @3 )#"},
    {" = 52.14 * Ma / Bsc * Cnv_fac * Vl / ( Lambda * Eamb * go^(2) * ho * Ki )",
     " = 52.14 * @1 / @4 * @3 * @3/ ( @3 * @0  #", "   * @3^(2) * @3 * @3 )#"},
    {" = 109.4 * Ma / Bsc * Cnv_fac / ( Eamb * t^(3) * ln(K) * Kl )",
     " = 109.4 * @1 / @4 * @3 / ( @0 * @3^(3) #", "   * @3 * @2)#"},
};
constexpr IndexLines OPERATING_LINES[] = {
    {" = 52.14 * Mo / Bsc * Cnv_fac * V / ( Lambda * Eop * goc^(2) * ho * Ki )",
     " = 52.14 * @1 / @4 * @3 * @3/ ( @3 * @0  #", "   * @3^(2) * @3 * @3 )#"},
    {" = 52.14 * Mo / Bsc * Cnv_fac * Vl / ( Lambda * Eop * goc^(2) * ho * Ki )",
     " = 52.14 * @1 / @4 * @3 * @3/ ( @3 * @0 #", "   * @3^(2) * @3 * @3 )#"},
    {" = 109.4 * Mo / Bsc * Cnv_fac / ( Eop * tc^(3) * ln(K) * Kl )",
     " = 109.4 * @1 / @4 * @3 / ( @0 * @3^(3) #", "   * @3 * @2 )#"},
};

// One condition in full: label, symbol line, two number lines, value, blank line.
struct Condition {
    std::string_view label;
    const IndexLines* lines;
    Real M, E, thickness, J;
};

void write_condition(const RIGIDITY_CALL& call, RigidityForm form, Real goc, const Condition& c) {
    const IndexLines& lines = c.lines[static_cast<Int>(form)];
    // Brings the substituted moment, which is in feet, and the lengths to one system.
    const Real Cnv_fac = UNITS.stress * cube(UNITS.thickness) * 12.0f / UNITS.moment;
    const Real M = as_moment(std::fabs(c.M));
    const Real E = as_stress(c.E);

    HEADING(c.label);
    TEXT_LINE(lines.symbols);
    if (form == RigidityForm::ring) {
        NUMBER_LINE(lines.first, {M, call.CF, Cnv_fac, E, as_thickness(c.thickness)});
        NUMBER_LINE(lines.second, {log(call.K), 0.2f}, 4);
    } else {
        NUMBER_LINE(lines.first, {M, call.CF, Cnv_fac, call.V, call.lambda, E});
        NUMBER_LINE(lines.second,
                    {as_thickness(goc), as_thickness(call.ho),
                     form == RigidityForm::integral ? 0.3f : 0.2f},
                    4);
    }
    Style mark = PLAIN;
    if (c.J > 1.0001f) mark = a98_addenda() ? NOTE_STYLE : ERROR_STYLE;
    VALUE_LINE_IN(c.J, 3, "(should be <= 1)", {}, mark);
    BLANK_LINE();
}

} // namespace

RIGIDITY_FACTORS FACTORS_IN_HAND(const FACTOR_STATE& s) { return {s.V, s.lambda, s.ho, s.K}; }

RIGIDITY_CALL RIGIDITY_ARGUMENTS(const MOMENT_STATE& s, const RIGIDITY_FACTORS& factors, Real t,
                                 Real CF) {
    return {.Mop = s.Mop,
            .Matm = s.Matm,
            .V = factors.V,
            .lambda = factors.lambda,
            .ho = factors.ho,
            .K = factors.K,
            .t = t,
            .CF = CF};
}

void RIGIDITY_INDEX(FLANGE_STATE& s, RIGIDITY_CALL& call, Int rigidityPrint) {
    const Real Bs = a98_addenda() ? 1.0f : call.CF;
    call.Jmax = 0.0f;
    const Real Mo = std::fabs(call.Mop) / Bs;
    const Real Ma = std::fabs(call.Matm) / Bs;
    const Real goc = s.go - s.ci - s.ce;
    const Real tc = call.t - s.ct;
    const Real ta = s.corrodedRigidity == 1 ? tc : call.t;
    if (s.type == BLIND || s.fullFace) return;

    const RigidityForm form = form_of(s, goc);
    Real seating, operating, numeratorA, numeratorO;
    if (form == RigidityForm::ring) {
        const Real KL = 0.2f;
        seating = cube(ta) * log(call.K) * KL;
        operating = cube(tc) * log(call.K) * KL;
        numeratorA = 109.4f * Ma;
        numeratorO = 109.4f * Mo;
    } else {
        const Real K = form == RigidityForm::integral ? 0.3f : 0.2f;
        seating = call.lambda * square(goc) * call.ho * K;
        operating = seating;
        numeratorA = 52.14f * Ma * call.V;
        numeratorO = 52.14f * Mo * call.V;
    }
    if (!(seating > 0.0f && operating > 0.0f)) {
        s.J[0] = s.J[1] = 0.0f;
        return;
    }
    s.J[0] = numeratorA / (seating * s.Ecold);
    s.J[1] = numeratorO / (operating * s.Ehot);
    call.Jmax = max(s.J[0], s.J[1]);

    if (!reporting()) return;
    if (rigidityPrint == RIGIDITY_SHORT) {
        LinePieces()
            .text("Flange Rigidity Index, Seating (should be <= 1)   ")
            .fixed(s.J[0], 10, 3)
            .write();
        LinePieces()
            .text("Flange Rigidity Index Oper.    (should be <= 1)   ")
            .fixed(s.J[1], 10, 3)
            .write();
    } else if (rigidityPrint == RIGIDITY_FULL) {
        write_condition(call, form, goc,
                        {NEW_DIV_2_RULES
                             ? "Flange Rigidity Criterion, Seating per Table 4.16.10 [Jg]:"
                             : "Flange Rigidity Index, Seating (rotation check) per APP. 2 [Js]:",
                         SEATING_LINES, call.Matm, s.Ecold, ta, s.J[0]});
        write_condition(call, form, goc,
                        {NEW_DIV_2_RULES
                             ? "Flange Rigidity Criterion, Operating per Table 4.16.10 [Jo]:"
                             : "Flange Rigidity Index Operating (rotation check) per APP. 2 [J]:",
                         OPERATING_LINES, call.Mop, s.Ehot, tc, s.J[1]});
    }
}

namespace {

Real as_inertia(Real x) { return x * fourth(UNITS.diameter); }

// " = value unit^4"
void inertia_value_line(Real value) {
    LinePieces unit;
    unit.text(UNITS.diameter_label.trimmed()).text("^4");
    VALUE_LINE_IN(as_inertia(value), 3, unit.view());
}

// Torsional constant of a rectangle a by b, Table 4.16.7; c1 and c2 differ between ring and hub.
Real torsional_constant(Real a, Real b, Real c1, Real c2) {
    const Real r = b / a;
    return a * cube(b) * (1.0f / 3.0f - c1 * r * (1.0f - c2 * fourth(r)));
}

void hub_inertia(FLANGE_STATE& s) {
    const Real gm = 0.5f * ((s.go - s.ci - s.ce) + (s.g1 - s.ci - s.ce));
    const Real Ar = 0.5f * (s.A - 2.0f * s.ce - (s.B + 2.0f * s.ci));
    const Real tk = s.t - s.ce - s.ct;
    Real Aa, Bb, Cc, Ddg;
    if (tk >= gm) {
        Aa = Ar;
        Bb = tk;
        Cc = s.h;
        Ddg = gm;
    } else {
        Aa = s.h + tk;
        Bb = gm;
        Cc = Ar - gm;
        Ddg = tk;
    }
    const Real a = as_diameter(Aa), b = as_diameter(Bb), c = as_diameter(Cc), d = as_diameter(Ddg);
    HEADING("Get the preliminary factors:");
    NUMBER_LINE("Aa = @3, Bb = @3, Cc = @3 and Ddg = @3", {a, b, c, d});

    const Real Kab = torsional_constant(Aa, Bb, 0.21f, 1.0f / 12.0f);
    HEADING("Compute the value of [Kab]:");
    TEXT_LINE(" = Aa * Bb^(3)  * ( 1/3 - 0.210 * (Bb/Aa) * (1-1/12 * (Bb/Aa )^(4) ) )");
    NUMBER_LINE(" = @3 * @3^(3)  * ( 1/3 - 0.210 * (@3/@3) * (1-1/12 * (@3/@3 )^(4)))",
                {a, b, b, a, b, a});
    inertia_value_line(Kab);

    const Real Kcd = torsional_constant(Cc, Ddg, 0.105f, 1.0f / 192.0f);
    HEADING("Compute the value of [Kcd]:");
    TEXT_LINE(" = Cc * Ddg^(3) * ( 1/3 - 0.105 * (Ddg/Cc) * (1-1/192 * (Ddg/Cc)^(4)))");
    NUMBER_LINE(" = @2 * @3^(3) * ( 1/3 - 0.105 * (@3/@2) * (1-1/192 * (@3/@3)^(4)))",
                {c, d, d, c, d, c});
    inertia_value_line(Kcd);

    s.Ip = Kab + Kcd;
    HEADING("Compute the inertia [Ip]:");
    NUMBER_LINE(" = Kab + Kcd = @3 + @3 ", {as_inertia(Kab), as_inertia(Kcd)});
    inertia_value_line(s.Ip);

    const Real gc = max(s.go - s.ci - s.ce, 0.0f);
    const Real Bc = s.B + 2.0f * s.ci;
    s.I = 0.0874f * s.lambda * square(gc) * s.ho * Bc / s.V;
    HEADING("Compute the inertia [I]:");
    TEXT_LINE(s.type <= INTEGRAL_RING ? " = 0.0874 * L * go^(2) * ho * B / V "
                                      : " = 0.0874 * L * go^(2) * ho * B / VL ");
    NUMBER_LINE(" = 0.0874 * @3 * @3**2 * @3 * @3/@3 ",
                {s.lambda, as_diameter(gc), as_diameter(s.ho), as_diameter(Bc), s.V});
    inertia_value_line(s.I);
}

// A ring is without the internal and the thickness allowance: B as given, and t - ce.
void ring_inertia(FLANGE_STATE& s) {
    const Real Aext = s.A - 2.0f * s.ce;
    const Real Ar = 0.5f * (Aext - s.B);
    const Real tk = s.t - s.ce;
    const Real ar = as_diameter(Ar), th = as_diameter(tk), bore = as_diameter(s.B);
    HEADING("Compute the factor [Ar]:");
    NUMBER_LINE(" = 0.5 * (A - B) = 0.5 * (@3 - @3)", {as_diameter(Aext), bore});
    VALUE_LINE(Ar, Kind::diameter, {}, PLAIN, 3);

    s.Ip = torsional_constant(Ar, tk, 0.21f, 1.0f / 12.0f);
    HEADING("Compute the Inertia [Ip]:");
    TEXT_LINE(" = Ar * t^(3) * (1/3 - 0.21 * (t/AR) * (1-1/12 * (t/Ar)^(4) ) )");
    NUMBER_LINE(" = @3 * @3^(3) * (1/3 - 0.21 * (@3/@3) * (1-1/12 * @3/@3)^(4)))",
                {ar, th, th, ar, th, ar});
    inertia_value_line(s.Ip);

    s.I = s.B * cube(tk) * log(Aext / s.B) / 6.0f;
    HEADING("Compute the Inertia [I]:");
    NUMBER_LINE(" = B * t^(3) * Ln(K) / 6 = @3 * @3^(3) * Ln(@3) / 6", {bore, th, Aext / s.B});
    inertia_value_line(s.I);
}

} // namespace

void FLANGE_INERTIA(FLANGE_STATE& s) {
    HEADING("The following values have been computed from Table 4.16.7:");
    if (s.g1 > 0.001f && s.go > 0.001f && s.lambda > 0.0f) {
        hub_inertia(s);
    } else {
        ring_inertia(s);
    }
}

} // namespace tarvane
