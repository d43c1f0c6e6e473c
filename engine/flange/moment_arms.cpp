#include "flange/moment_arms.h"

#include "flange/gasket.h"
#include "flange/geometry.h"
#include "report/lines.h"

namespace tarvane {

namespace {

constexpr std::string_view GASKET_ARM = "Distance to Gasket Load Reaction [hg]:";
constexpr std::string_view FACE_ARM = "Distance to Face Pressure Reaction [ht]:";
constexpr std::string_view END_ARM = "Distance to End Pressure Reaction [hd]:";

Real d(Real length) { return as_diameter(length); }

// Heading, symbol line, number line and value line of one arm.
void arm_lines(std::string_view heading, std::string_view symbol, std::string_view numbers,
               std::initializer_list<Real> values, Real arm) {
    HEADING(heading);
    TEXT_LINE(symbol);
    NUMBER_LINE(numbers, values);
    VALUE_LINE(arm, Kind::diameter);
}

// Full face gasket by the Taylor Forge bulletin.
void taylor_forge_arms(FLANGE_STATE& s) {
    const Real R = bolt_circle_to_hub(s);
    const Real g1c = corroded_hub(s.g1, s);

    HEADING(GASKET_ARM);
    TEXT_LINE(" = (C - Gi) * (2 * Gi + C) / (6 * (Gi + C))");
    NUMBER_LINE(" = (@3 - @3) * (2 * @3 + @3) /", {d(s.C), d(s.GiC), d(s.GiC), d(s.C)});
    NUMBER_LINE("   (6 * (@3 + @3))", {d(s.GiC), d(s.C)}, 4);
    VALUE_LINE(s.hg, Kind::diameter);

    s.hgDouble = s.hg * s.hgPrime / (s.hg + s.hgPrime);
    arm_lines("Reverse Moment arm[h\"g]:", " = hg * h'g / ( hg + h'g )",
              " = @4 * @4 / (@4 + @4 ) #", {d(s.hg), d(s.hgPrime), d(s.hg), d(s.hgPrime)},
              s.hgDouble);

    s.ht = (R + g1c + s.hg) / 2.0f;
    arm_lines(FACE_ARM, " = (R + g1Cor + hg ) / 2.0", " = ( @4 + @4 + @4 ) / 2.0 #",
              {d(R), d(g1c), d(s.hg)}, s.ht);

    s.hd = R + g1c;
    arm_lines(END_ARM, " = R + giCor", " = @4 + @4 #", {d(R), d(g1c)}, s.hd);
}

// Integral flanges, Table 2-6. The hub is measured at its corroded outside.
void integral_arms(FLANGE_STATE& s) {
    const Real R = bolt_circle_to_hub(s);
    const Real g1c = corroded_hub(s.g1, s);
    const Real g1 = g1c - s.ce;

    s.ht = (R + g1c - s.ce + s.hg) / 2.0f;
    arm_lines(FACE_ARM, " = ( R + g1 + hg ) / 2", " = ( @4 + @4 + @4 ) / 2 #",
              {d(R), d(g1), d(s.hg)}, s.ht);

    s.hd = R + g1 / 2.0f;
    arm_lines(END_ARM, " = R + ( g1 / 2 )", " = @4 + ( @4 / 2 ) #", {d(R), d(g1)}, s.hd);
}

void loose_arms(FLANGE_STATE& s) {
    const Real Bcor = corroded_bore(s);

    s.hd = (s.C - Bcor) / 2.0f;
    s.ht = (s.hd + s.hg) / 2.0f;
    arm_lines(FACE_ARM, " = ( hD + hG ) / 2", " = ( @4 + @4 ) / 2 #", {d(s.hd), d(s.hg)}, s.ht);
    arm_lines(END_ARM, " = ( C - Bcor )/ 2", " = ( @4 - @4 )/ 2 #", {d(s.C), d(Bcor)}, s.hd);
}

void lap_joint_arms(FLANGE_STATE& s) {
    const Real Bcor = corroded_bore(s);

    s.ht = (s.C - s.G) / 2.0f;
    arm_lines(FACE_ARM, " = ( C - G ) / 2", " = ( @4 - @4 ) / 2 #", {d(s.C), d(s.G)}, s.ht);

    s.hd = (s.C - Bcor) / 2.0f;
    arm_lines(END_ARM, " = ( C - Bcor ) / 2", " = ( @4 - @4 ) / 2 #", {d(s.C), d(Bcor)}, s.hd);
}

// Reverse flanges, 2-13. The external allowance does not enter.
void reverse_arms(FLANGE_STATE& s) {
    const Real g1c = corroded_hub(s.g1, s), g0c = corroded_hub(s.go, s);
    const Real Bs = s.A - 2.0f * s.go + 2.0f * s.ci;

    s.ht = (s.C - (Bs + s.G) / 2.0f) / 2.0f;
    arm_lines(FACE_ARM, " = ( C - ( Bcor + G ) / 2 ) / 2", " = ( @4 - ( @4 + @4 ) / 2 ) / 2 #",
              {d(s.C), d(Bs), d(s.G)}, s.ht);

    s.hd = (s.C + g1c - 2.0f * g0c - Bs) / 2.0f;
    arm_lines(END_ARM, " = ( C + G1cor - 2 * G0cor - Bcor ) / 2",
              " =  ( @4 + @4 - 2 * @4 - @4 ) / 2#", {d(s.C), d(g1c), d(g0c), d(Bs)}, s.hd);
}

} // namespace

void FULL_FACE_ARMS(FLANGE_STATE& s) {
    if (s.asme()) {
        s.hg = (s.C - s.GiC) * (2.0f * s.GiC + s.C) / (6.0f * (s.GiC + s.C));
        s.hgPrime = (s.GoC - s.C) * (2.0f * s.GoC + s.C) / (6.0f * (s.C + s.GoC));
    } else {
        s.hg = (s.dh + FIVE_MM) / 2.0f;
        s.hgPrime = (s.GoC - s.C + s.dh) / 4.0f;
    }
}

void MOMENT_ARMS(FLANGE_STATE& s) {
    HEADING("Moment Arm Calculations: ");
    if (s.fullFace) {
        taylor_forge_arms(s);
        return;
    }
    s.hg = (s.C - s.G) / 2.0f;
    s.hgPrime = s.hgDouble = 0.0f;
    arm_lines(GASKET_ARM, " = (C - G ) / 2", " = ( @4 - @4 ) / 2 #", {d(s.C), d(s.G)}, s.hg);

    if (s.type <= INTEGRAL_RING) {
        integral_arms(s);
    } else if (s.type <= LOOSE_RING) {
        loose_arms(s);
    } else if (s.type == LAP_JOINT) {
        lap_joint_arms(s);
    } else if (s.type == BLIND) { // its arms serve the loads only and are not shown
        s.ht = 0.0f;
        s.hd = s.G / 4.0f;
    } else {
        reverse_arms(s);
    }
}

void MOMENT_ARMS_FULL_FACE(FLANGE_STATE& s) {
    const Real Bcor = corroded_bore(s), g1c = corroded_hub(s.g1, s);
    const bool reverse = s.type > BLIND;
    const bool gasket_lines = !reverse && s.code != PD_5500;
    HEADING("Moment Arm Calculations: ");

    if (gasket_lines)
        arm_lines(GASKET_ARM, " = ( dh + 2b\" ) / 2", " = (@3 + @3) / 2", {d(s.dh), d(s.b2)}, s.hg);

    s.hgDouble = (s.GoC - s.C + s.dh) / 4.0f;
    if (gasket_lines)
        arm_lines("Balancing Reaction Moment arm [hr]:", " = ( Go - C + dh ) / 4",
                  " = ( @4 - @4 + @4 ) / 4", {d(s.GoC), d(s.C), d(s.dh)}, s.hgDouble);

    if (!reverse) {
        s.ht = (s.C + s.dh + s.b2 - Bcor) / 4.0f;
        arm_lines(FACE_ARM, " = (C + dh + 2b\" - Bcor ) / 4", " = (@4 + @4 + @4 - @4 ) / 4",
                  {d(s.C), d(s.dh), d(s.b2), d(Bcor)}, s.ht);

        s.hd = (s.C - Bcor - g1c) / 2.0f;
        arm_lines(END_ARM, " = ( C - Bcor - g1 ) / 2", " = ( @4 - @4 - @4 ) / 2",
                  {d(s.C), d(Bcor), d(g1c)}, s.hd);
    } else {
        s.ht = (2.0f * s.C + s.dh - 2.0f * s.GiC) / 6.0f;
        arm_lines(FACE_ARM, " = ( 2 * C + dh - 2 * A1 )/6", " = ( 2 * @4 + @4 - 2 * @4 )/6",
                  {d(s.C), d(s.dh), d(s.GiC)}, s.ht);

        s.hd = (s.A - s.C - g1c) / 2.0f;
        arm_lines(END_ARM, " = ( B - C - g1 ) / 2", " = ( @4 - @4 - @4 ) / 2",
                  {d(s.A), d(s.C), d(g1c)}, s.hd);

        const Real Ds = reverse_shell_diameter(s);
        s.hs = 0.25f * (2.0f * s.C - Ds - s.GiC);
    }
}

} // namespace tarvane
