#include "flange/stresses.h"
#include "report/lines.h"

#include <cmath>

namespace tarvane {

namespace {

struct CORRODED {
    Real Bcor, g1Cor, tCor;
};

// Names of EN 13445-3, 11.5.4: Psi for f, Lamda for L, BetaY for Y, e for the thickness.
bool names_of_EN(const FLANGE_GIVEN& s) { return s.code == EN_13445; }

// PD 5500 and EN 13445 judge a full face flange by its radial stress at the bolt circle and by its
// least thickness; only the reverse flange keeps hub and ring stresses.
bool judged_at_bolt_circle(const FLANGE_STATE& s) { return s.fullFace && s.en_or_pd(); }

// A hub takes part in the stresses. A loose reverse flange is analysed as a ring.
bool has_hub(const FLANGE_GIVEN& s) { return s.h > 0.0f && !s.looseReverse; }

// A full face gasket has no seating case but that of the bolts.
bool has_seating_case(const GASKET_STATE& s) { return !s.fullFace; }

// ---- longitudinal hub stress, 2-7(a) eq. (8), 4.16.8 -------------------------------------------

constexpr STRESS_WORDS SHO{
    .label = "Longitudinal Hub Stress, Operating [SHo]:",
    .labelEN = "Longitudinal Hub Stress, Operating [SigmaHo]:",
    .symbol = " = ( f * Mop / Bcor ) / ( L * g1\xB2 )",
    .symbolEN = " = ( Psi * Mop / Bcor ) / ( Lamda * g1\xB2 )",
    .template1 = " = ( @4 *@0 / @4 ) / ( @4 *@4\xB2 )#",
};
constexpr STRESS_WORDS SHA{
    .label = "Longitudinal Hub Stress, Seating [SHa]:",
    .labelEN = "Longitudinal Hub Stress, Seating [SigmaHa]:",
    .symbol = " = ( f * Matm / Bcor ) / ( L * g1\xB2 )",
    .symbolEN = " = ( Psi * Matm / Bcor ) / ( Lamda * g1\xB2 )",
    .template1 = " = ( @4 * @0 / @4 ) / ( @4 * @4\xB2 ) #",
};

void longitudinal_hub_stress(FLANGE_STATE& s, const CORRODED& c) {
    if (judged_at_bolt_circle(s) && s.type != REVERSE_WELD_NECK) return;
    if (!(s.g1 > 0.0f && s.go > 0.0f) || s.type == LOOSE_RING || s.type == BLIND) return;
    if (s.looseReverse) return;

    const Real fac = (s.f / c.Bcor) / (s.lambda * square(c.g1Cor));
    const auto lines = [&](const STRESS_WORDS& words, Real M, Real stress) {
        WRITE_STRESS_LINES(
            words, names_of_EN(s),
            {s.f, moment_in_line(M), as_diameter(c.Bcor), s.lambda, as_thickness(c.g1Cor)}, {},
            stress);
    };

    Real& SHo = s.STRESS[OPERATING][HUB];
    SHo = std::abs(s.Mop) * fac;
    lines(SHO, s.Mop, SHo);

    if (!has_seating_case(s)) return;
    Real& SHa = s.STRESS[SEATING][HUB];
    SHa = std::abs(s.Matm) * fac;
    lines(SHA, s.Matm, SHa);
}

// ---- radial flange stress, 2-7(a) eq. (9) -------------------------------------------------------

constexpr STRESS_WORDS SRO{
    .label = "Radial Flange Stress, Operating [SRo]:",
    .labelEN = "Radial Flange Stress, Operating [SigmaRo]:",
    .symbol = " = ( Beta * Mop / Bcor ) / ( L * t\xB2 )",
    .symbolEN = " = ( Beta * Mop / Bcor ) / ( Lamda * e\xB2 )",
    .template1 = " = ( @4 *@0 / @4 ) / ( @4 *@4\xB2 ) #",
};
constexpr STRESS_WORDS SRA{
    .label = "Radial Flange Stress, Seating [SRa]:",
    .labelEN = "Radial Flange Stress, Seating [SigmaRa]:",
    .symbol = " = ( Beta * Matm/Bcor ) / ( L * t\xB2 )",
    .symbolEN = " = ( Beta * Matm/Bcor ) / ( Lamda * e\xB2 )",
    .template1 = " = ( @4 *@0/@4 ) / ( @4 *@4\xB2 ) #",
};

void radial_stress(FLANGE_STATE& s, const CORRODED& c) {
    const bool typeWithHub = (s.type >= INTEGRAL_WELD_NECK && s.type <= LOOSE_SLIP_ON) ||
                             s.type == LAP_JOINT || s.type == REVERSE_WELD_NECK;
    if (!has_hub(s) || !typeWithHub) return;

    const auto lines = [&](const STRESS_WORDS& words, bool namesOfEN, Real M, Real stress) {
        WRITE_STRESS_LINES(
            words, namesOfEN,
            {s.beta, moment_in_line(M), as_diameter(c.Bcor), s.lambda, as_thickness(c.tCor)}, {},
            stress);
    };
    Real& SRo = s.STRESS[OPERATING][RADIAL];

    if (judged_at_bolt_circle(s)) {
        if (s.type != REVERSE_WELD_NECK) return;
        // The moment keeps its sign here, and the line its ASME names under every code.
        SRo = (s.beta * s.Mop / c.Bcor) / (s.lambda * square(c.tCor));
        lines(SRO, false, s.Mop, SRo);
        return;
    }

    const Real fac = (s.beta / c.Bcor) / (s.lambda * square(c.tCor));
    SRo = std::abs(s.Mop) * fac;
    lines(SRO, names_of_EN(s), s.Mop, SRo);

    if (!has_seating_case(s)) return;
    Real& SRa = s.STRESS[SEATING][RADIAL];
    SRa = std::abs(s.Matm) * fac;
    lines(SRA, names_of_EN(s), s.Matm, SRa);
}

// ---- tangential flange stress ---------------------------------------------------------------------

// Ring factor over t2 B; a flange without thickness or bore has none.
Real ring_term(Real Yring, const CORRODED& c) {
    const Real t2B = square(c.tCor) * c.Bcor;
    return t2B == 0.0f ? 0.0f : Yring / t2B;
}

// Forward flange with a hub, 2-7(a) eq. (10).
constexpr STRESS_WORDS STO_HUB{
    .label = "Tangential Flange Stress, Operating [STo]:",
    .labelEN = "Tangential Flange Stress, Operating [SigmaTo]:",
    .symbol = " = ( Y * Mo / (t\xB2 * Bcor) ) - Z * SRo ",
    .symbolEN = " = ( BetaY * Mo / (e\xB2 * Bcor) ) - BetaZ * SigmaRo ",
    .template1 = " = ( @4 *@0 / (@4\xB2 *@4) ) - @4 *@0 #",
};
constexpr std::string_view STO_HUB_NEGATIVE_MOMENT = " = ( @4 *@0 / (@4\xB2 *@4) ) + @4 *@0 #";
constexpr STRESS_WORDS STA_HUB{
    .label = "Tangential Flange Stress, Seating [STa]:",
    .labelEN = "Tangential Flange Stress, Seating [SigmaTa]:",
    .symbol = " = ( y * Matm / (t\xB2 * Bcor) ) - Z * SRa ",
    .symbolEN = " = ( BetaY * Matm / (e\xB2 * Bcor) ) - BetaZ * SigmaRa ",
    .template1 = " = ( @4 *@0 / (@4\xB2 *@4) ) - @4 *@0 #",
};

void tangential_stress_forward(FLANGE_STATE& s, const CORRODED& c) {
    const Real fac = ring_term(s.Y, c);
    const auto lines = [&](const STRESS_WORDS& words, Real M, Real SR, Real stress) {
        WRITE_STRESS_LINES(
            words, names_of_EN(s),
            {s.Y, moment_in_line(M), as_thickness(c.tCor), as_diameter(c.Bcor), s.Z, as_stress(SR)},
            {}, stress);
    };

    if (!judged_at_bolt_circle(s)) {
        const Real SRo = s.STRESS[OPERATING][RADIAL];
        Real& STo = s.STRESS[OPERATING][TANGENTIAL];
        STo = std::abs(s.Mop) * fac - s.Z * SRo;
        STRESS_WORDS words = STO_HUB;
        if (s.Mop < 0.0f) words.template1 = STO_HUB_NEGATIVE_MOMENT;
        lines(words, s.Mop, SRo, STo);
    }
    if (has_seating_case(s)) {
        const Real SRa = s.STRESS[SEATING][RADIAL];
        Real& STa = s.STRESS[SEATING][TANGENTIAL];
        STa = std::abs(s.Matm) * fac - s.Z * SRa;
        lines(STA_HUB, s.Matm, SRa, STa);
    }
}

// Reverse flange with a hub, 2-13(d).
constexpr STRESS_WORDS STO_REVERSE{
    .label = "Tangential Flange Stress, Operating [Sto]:",
    .labelEN = "Tangential Flange Stress, Operating [SigmaTo]:",
    .symbol = " = (Y*Mo/t\xB2*Bcor) - Z*SRo*(0.67*t*e+1)/BETA",
    .symbolEN = " = (BetaY*Mo/t\xB2*Bcor)-BetaZ*SRo*(0.67*e*(BetaF/lo)+1)/BETA",
    .template1 = " = ( @4 *@0 / @4\xB2 *@4 ) - #",
    .template2 = "    @4 * @0 * ( 0.67 * @4 * @4 + 1 )/ @4 # ",
};
constexpr STRESS_WORDS STO_REVERSE_FULL_FACE{
    .label = "Tangential Flange Stress, Operating [Sto]:",
    .labelEN = "Tangential Flange Stress, Operating [SigmaTo]:",
    .symbol = " = (Y*Mo/(t\xB2*Bcor)) - Z*SRo",
    .symbolEN = " = (BetaY*Mo/(e\xB2*Bcor)) - Z*SigmaRo",
    .template1 = " = ( @4 *@0 / (@4\xB2 *@4) ) - @4 * @2#",
};
constexpr STRESS_WORDS STA_REVERSE{
    .label = "Tangential Flange Stress, Seating [STa]:",
    .labelEN = "Tangential Flange Stress, Seating [SigmaTa]:",
    .symbol = " = (Y*Matm/t\xB2*Bcor) - Z*SRA*(0.67*t*E+1.0)/BETA",
    .symbolEN = " = (BetaY*Matm/e\xB2*Bcor) - BetaZ*SRA*(0.67*t*(BetaF/lo)+1)/Beta",
    .template1 = " = ( @4 *@0 / @4\xB2 *@4 ) - #",
    .template2 = "   @4 * @0 * ( 0.67 *@4 *@4 + 1 )/ @4 # ",
};

void tangential_stress_reverse(FLANGE_STATE& s, const CORRODED& c) {
    const Real fac = ring_term(s.Yr, c);
    const Real r = (0.67f * c.tCor * s.e + 1.0f) / s.beta;
    const auto lines = [&](const STRESS_WORDS& words, Real M, Real SR, Real stress) {
        WRITE_STRESS_LINES(
            words, names_of_EN(s),
            {s.Yr, moment_in_line(M), as_thickness(c.tCor), as_diameter(c.Bcor)},
            {s.Z, as_stress(SR), as_thickness(c.tCor), s.e / UNITS.thickness, s.beta}, stress);
    };

    const Real SRo = s.STRESS[OPERATING][RADIAL];
    Real& STo = s.STRESS[OPERATING][TANGENTIAL];
    if (judged_at_bolt_circle(s)) {
        STo = s.Y * std::abs(s.Mop) / (square(c.tCor) * c.Bcor) - s.Z * SRo;
        WRITE_STRESS_LINES(STO_REVERSE_FULL_FACE, names_of_EN(s),
                           {s.Y, moment_in_line(s.Mop), as_thickness(c.tCor), as_diameter(c.Bcor),
                            s.Z, as_stress(SRo)},
                           {}, STo);
    } else {
        // PD 5500 and EN 13445 drop r from the operating stress, though their lines show it, and
        // keep it in the seating stress.
        if (s.en_or_pd())
            STo = std::abs(s.Mop) * fac - s.Z * SRo;
        else
            STo = std::abs(s.Mop) * fac - s.Z * SRo * r;
        lines(STO_REVERSE, s.Mop, SRo, STo);
    }

    if (!has_seating_case(s)) return;
    const Real SRa = s.STRESS[SEATING][RADIAL];
    Real& STa = s.STRESS[SEATING][TANGENTIAL];
    STa = std::abs(s.Matm) * fac - s.Z * SRa * r;
    lines(STA_REVERSE, s.Matm, SRa, STa);
}

// Ring, 2-7(b): ST = Y M / (t2 B).
constexpr STRESS_WORDS STO_RING{
    .label = "Tangential Flange Stress, Operating [Sto]:",
    .labelEN = "Tangential Flange Stress, Operating [SigmaTo]:",
    .symbol = " = ( Y * Mo )/( t\xB2 * Bcor ) ",
    .symbolEN = " = ( BetaY * Mo )/( e\xB2 * Bcor ) ",
    .template1 = " = ( @4 * @0 )/( @4\xB2 * @4 )#",
};
constexpr std::string_view STO_RING_FULL_FACE = " = ( Y * Mo )/( t\xB2 * A )";
constexpr STRESS_WORDS STA_RING{
    .label = "Tangential Flange Stress, Seating [STa]:",
    .labelEN = "Tangential Flange Stress, Seating [SigmaTa]:",
    .symbol = " = ( Y * Matm )/( t\xB2 * Bcor ) ",
    .symbolEN = " = ( BetaY * Matm )/( e\xB2 * Bcor ) ",
    .template1 = " = ( @4 *@0)/( @4\xB2 *@4 )#",
};

void tangential_stress_ring(FLANGE_STATE& s, const CORRODED& c) {
    const Real fac = ring_term(s.Y, c);
    const auto lines = [&](const STRESS_WORDS& words, Real M, Real stress) {
        WRITE_STRESS_LINES(words, names_of_EN(s),
                           {s.Y, moment_in_line(M), as_thickness(c.tCor), as_diameter(c.Bcor)}, {},
                           stress);
    };

    Real& STo = s.STRESS[OPERATING][TANGENTIAL];
    if (!judged_at_bolt_circle(s)) {
        STo = std::abs(s.Mop) * fac;
        lines(STO_RING, s.Mop, STo);
    } else if (s.type >= REVERSE_WELD_NECK && s.go < 0.0001f && s.g1 < 0.0001f) {
        STo = s.Y * s.Mop / (square(c.tCor) * c.Bcor);
        STRESS_WORDS words = STO_RING;
        words.symbol = words.symbolEN = STO_RING_FULL_FACE;
        lines(words, s.Mop, STo);
    }

    if (!has_seating_case(s)) return;
    Real& STa = s.STRESS[SEATING][TANGENTIAL];
    STa = std::abs(s.Matm) * fac;
    lines(STA_RING, s.Matm, STa);
}

void tangential_stress(FLANGE_STATE& s, const CORRODED& c) {
    if (has_hub(s) && s.type >= INTEGRAL_WELD_NECK && s.type <= LAP_JOINT)
        tangential_stress_forward(s, c);
    else if (has_hub(s) && s.type == REVERSE_WELD_NECK)
        tangential_stress_reverse(s, c);
    else if (!has_hub(s) && s.type != BLIND)
        tangential_stress_ring(s, c);
    else if (!(s.h > 0.0f) && s.type == BLIND)
        FLAT_HEAD_STRESSES(s, c.tCor);
}

// ---- average stress, 2-8: the hub stress with the larger ring stress -----------------------------

constexpr STRESS_WORDS SAO_REVERSE_FULL_FACE{
    .label = "Average Flange Stress, Operating [SAo]:",
    .labelEN = "Average Flange Stress, Operating [SigmaAo]:",
    .symbol = " = 0.5[SHo + max( abs(SRo), abs(STo) )] ",
    .symbolEN = " = 0.5[SHo + max( abs(SigmaRo), abs(SigmaTo) )] ",
    .template1 = " = 0.5[ @2 + max( abs(@2), abs(@2) )] #",
};
constexpr STRESS_WORDS SAO{
    .label = "Average Flange Stress, Operating [SAo]:",
    .labelEN = "Average Flange Stress, Operating [SigmaAo]:",
    .symbol = " = ( SHo + max( SRo, STo ) ) / 2 ",
    .symbolEN = " = ( SigmaHo + max( SigmaRo, SigmaTo ) ) / 2 ",
    .template1 = " = ( @0 + max( @0, @0 ))/ 2 #",
};
constexpr STRESS_WORDS SAA{
    .label = "Average Flange Stress, Seating [SAa]:",
    .labelEN = "Average Flange Stress, Seating [SigmaAa]:",
    .symbol = " = ( SHa + max( SRa, STa ) ) / 2 ",
    .symbolEN = " = ( SigmaHa + max( SigmaRa, SigmaTa ) ) / 2 ",
    .template1 = " = ( @0 + max( @0, @0 ))/ 2 #",
};

void average_stress(FLANGE_STATE& s) {
    const auto lines = [&](const STRESS_WORDS& words, const Real(&row)[PLACES]) {
        WRITE_STRESS_LINES(
            words, names_of_EN(s),
            {as_stress(row[HUB]), as_stress(row[RADIAL]), as_stress(row[TANGENTIAL])}, {},
            row[AVERAGE]);
    };
    auto& operating = s.STRESS[OPERATING];
    auto& seating = s.STRESS[SEATING];

    if (judged_at_bolt_circle(s)) {
        if (s.type != REVERSE_WELD_NECK || !(s.go > 0.0001f && s.g1 > 0.0001f)) return;
        const Real ring = max(std::abs(operating[RADIAL]), std::abs(operating[TANGENTIAL]));
        operating[AVERAGE] = 0.5f * (operating[HUB] + ring);
        lines(SAO_REVERSE_FULL_FACE, operating);
        return;
    }
    if (!has_hub(s) || s.type == LOOSE_RING || s.type == BLIND) return;

    operating[AVERAGE] = (operating[HUB] + max(operating[RADIAL], operating[TANGENTIAL])) / 2.0f;
    lines(SAO, operating);

    if (!has_seating_case(s)) return;
    seating[AVERAGE] = (seating[HUB] + max(seating[RADIAL], seating[TANGENTIAL])) / 2.0f;
    lines(SAA, seating);
}

// ---- bolt stress ------------------------------------------------------------------------------------

constexpr STRESS_WORDS BSO{
    .label = "Bolt Stress, Operating [BSo]:",
    .labelEN = "Bolt Stress, Operating [SigmaBo]:",
    .symbol = " = Wm1 / Ab",
    .template1 = " = @0 / @4",
};
constexpr std::string_view BSO_EXTERNAL_LOADS = " = ( Wm1 + Fa + 4Me/G ) / Ab";
constexpr STRESS_WORDS BSA{
    .label = "Bolt Stress, Seating [BSa]:",
    .labelEN = "Bolt Stress, Seating [SigmaBa]:",
    .symbol = " = ( Wm2 / Ab ) ",
    .template1 = " = ( @0 / @4 ) #",
};

void bolt_stress(FLANGE_STATE& s) {
    Real& BSo = s.STRESS[OPERATING][BOLTING];
    BSo = std::abs(s.Wm1 + s.Wext) / s.Ab;
    STRESS_WORDS words = BSO;
    if (s.Wext > 0.0f) words.symbol = BSO_EXTERNAL_LOADS;
    WRITE_STRESS_LINES(words, names_of_EN(s), {as_force(s.Wm1 + s.Wext), as_area(s.Ab)}, {}, BSo);

    Real& BSa = s.STRESS[SEATING][BOLTING];
    BSa = s.Wm2 / s.Ab;
    WRITE_STRESS_LINES(BSA, names_of_EN(s), {as_force(s.Wm2), as_area(s.Ab)}, {}, BSa);
}

// ---- stress at the bore of a reverse flange, 2-13(d) ---------------------------------------------

constexpr STRESS_WORDS SVO{
    .label = "Reverse Weld Neck Flange Stress, Operating [SVo]:",
    .symbol = " = (Mo/(t\xB2*Bcor))*(Y-(2*K\xB2*(1 + 2 *t*e/3)/((K\xB2-1)* L)))",
    .symbolEN = " = (Mo/(e\xB2*Bcor))*(BetaY-(2*K\xB2*(1 + 2 *e*(BetaF/3.io))/((K\xB2-1)* Lamda)))",
    .template1 = " = (@0 / (@4\xB2 * @4 ))*( @4-( 2 * @4\xB2#",
    .template2 = "   *( 1 + 2 * @4 * @4 / 3 )/(( @4\xB2 - 1 ) * @4 )))",
};
constexpr STRESS_WORDS SVA{
    .label = "Reverse Weld Neck Flange Stress, Seating [SVa]:",
    .symbol = " = (Matm/(t\xB2*Bcor))*(Y-(2*K\xB2*(1+2*t*e/3)/((K\xB2-1)*L)))",
    .symbolEN = " = (Matm/(e\xB2*Bcor))*(BetaY-(2*K\xB2*(1+2*t*(BetaF/3.lo))/((K\xB2-1)*Lamda)))",
    .template1 = " = (@0 / (@4 \xB2 * @4 ))*( @4-( 2 * @4\xB2#",
    .template2 = "   *( 1.0 + 2.0 * @4 * @4 / 3 )/(( @4\xB2 - 1 ) * @4 )))",
};

void reverse_flange_stress(FLANGE_STATE& s, const CORRODED& c) {
    if (s.type != REVERSE_WELD_NECK || s.fullFace || !(s.lambda > 0.0f)) return;

    // The ring factor is Y, not Yr.
    const Real K2 = square(s.K);
    const Real fac =
        (1.0f / (square(c.tCor) * c.Bcor)) *
        (s.Y - 2.0f * K2 * (1.0f + 2.0f * c.tCor * s.e / 3.0f) / ((K2 - 1.0f) * s.lambda));
    const auto lines = [&](const STRESS_WORDS& words, Real M, Real stress) {
        WRITE_STRESS_LINES(words, names_of_EN(s),
                           {moment_in_line(M), as_thickness(c.tCor), as_diameter(c.Bcor), s.Y, s.K},
                           {as_thickness(c.tCor), s.e / UNITS.thickness, s.K, s.lambda}, stress);
    };

    Real& SVo = s.STRESS[OPERATING][REVERSE];
    SVo = std::abs(s.Mop) * fac;
    lines(SVO, s.Mop, SVo);

    Real& SVa = s.STRESS[SEATING][REVERSE];
    SVa = std::abs(s.Matm) * fac;
    lines(SVA, s.Matm, SVa);
}

// ---- full face gaskets -------------------------------------------------------------------------------

// Radial stress in the ligaments between the bolt holes: Taylor Forge bulletin 502 under ASME, the
// operating moment under PD 5500 and EN 13445.
constexpr STRESS_WORDS SFO_ASME{
    .label = "Radial Stress at Bolt Circle, Full Face Gaskets, Operating [SFo]:",
    .symbol = " = 6 *MR/(t\xB2*(Pi*C-n*dB))",
    .template1 = " = 6 * @0 / #",
    .template2 = "   ( @4\xB2 * ( @4 * @4 - @0 * @4 ) ) #",
};
constexpr STRESS_WORDS SFO_EN_PD{
    .label = "Radial Stress at Bolt Circle, Full Face Gaskets, Operating [SFo]:",
    .symbol = " = 6 * Mr/(t\xB2( pi * C-n * d ))",
    .template1 = " = 6 * @0 / ( @4\xB2 * ( @2 * @4 - @0 * @4 ))#",
};

void radial_stress_at_bolt_circle(FLANGE_STATE& s, const CORRODED& c) {
    Real& SFo = s.STRESS[OPERATING][FULL_FACE];
    const Real n = static_cast<Real>(s.nBolts);
    const Real lig = PI * s.C - n * s.dh;
    if (s.asme()) {
        SFo = 6.0f * s.Mr / (square(c.tCor) * lig);
        WRITE_STRESS_LINES(SFO_ASME, false, {moment_in_line(s.Mr)},
                           {as_thickness(c.tCor), PI, as_diameter(s.C), n, as_diameter(s.dh)}, SFo);
    } else if (s.type < REVERSE_WELD_NECK) {
        SFo = 6.0f * s.Mop / (square(c.tCor) * lig);
        WRITE_STRESS_LINES(SFO_EN_PD, false,
                           {moment_in_line(s.Mop), as_thickness(c.tCor), PI, as_diameter(s.C), n,
                            as_diameter(s.dh)},
                           {}, SFo);
    }
}

// Least thickness by the pitch of the bolts, PD 5500 eq. 3.5.5-2, EN 13445-3 eq. 11.6-16.
Real thickness_by_bolt_space(const FLANGE_STATE& s) {
    const Real boltsp = s.C * sin(PI / static_cast<Real>(s.nBolts));
    Real Er = s.Ehot / 29007598.0f; // multiple of 200000 MPa
    if (Er < 0.0001f) Er = 1.0f;
    const Real trf2 =
        (boltsp - 2.0f * s.aNominal) * (s.m + 0.5f) / (6.0f * std::sqrt(std::sqrt(Er)));
    if (s.Peq < 0.0f) return trf2; // external pressure: no lines

    HEADING("Required Flange thickness per bolt space criterion [trf2]:");
    if (trf2 > 0.001f) {
        TEXT_LINE(s.code == PD_5500
                      ? " = (boltsp - 2*db)*(m + 0.5)/ (6 (E/200000 MPa)^0.25) per 3.5.5-2"
                      : " = (boltsp - 2*db)*(m + 0.5)/ (6 (E/200000 MPa)^0.25) per 11.6-16");
        NUMBER_LINE(" = (@2 - 2*@2) * ( @2 + 0.5 ) / ( 6 (@3)^0.25) #",
                    {as_diameter(boltsp), as_diameter(s.aNominal), s.m, Er}, 4);
        VALUE_LINE(trf2, Kind::thickness);
    } else {
        TEXT_LINE("Note: The bolt spacing was less than 2db.  This resulted in a ", NOTE_STYLE);
        TEXT_LINE("    spacing thickness value, t, that was less than zero. ", NOTE_STYLE);
    }
    return trf2;
}

// Least thickness against the pressure in the bore, EN 13445-3 eq. 11.6-17.
Real thickness_by_pressure(const FLANGE_STATE& s, const CORRODED& c) {
    return (s.GiC + 2.0f * c.g1Cor) * std::abs(s.Peq) / (2.0f * s.Sfo);
}

void thickness_by_pressure_lines(const FLANGE_STATE& s, const CORRODED& c, Real trf3) {
    HEADING("Required Flange thickness per 11.6-16 [trf3]:");
    TEXT_LINE(" = (A1 + 2 * g1)P / ( 2 * f ) per 11.6-17");
    NUMBER_LINE(" = ( @2 + 2 * @2 ) * @2 / ( 2 * @2 ) #",
                {as_diameter(s.GiC), as_thickness(c.g1Cor), as_pressure(s.Peq), as_stress(s.Sfo)},
                4);
    VALUE_LINE(trf3, Kind::thickness);
    BLANK_LINE();
}

void full_face(FLANGE_STATE& s, const CORRODED& c) {
    if (!s.fullFace) return;

    radial_stress_at_bolt_circle(s, c);
    if (s.en_or_pd()) {
        const Real trf2 = thickness_by_bolt_space(s);
        const Real trf3 = s.code == EN_13445 ? thickness_by_pressure(s, c) : 0.0f;
        s.tMin = s.Peq < 0.0f ? trf3 : max(trf3, trf2);
        if (s.code == EN_13445) thickness_by_pressure_lines(s, c, trf3);
    }

    for (Int place = HUB; place < PLACES; ++place)
        if (place != BOLTING) s.STRESS[SEATING][place] = 0.0f;
    s.STRESS[OPERATING][REVERSE] = 0.0f;
}

} // namespace

void FLANGE_STRESSES(FLANGE_STATE& s) {
    for (auto& row : s.STRESS)
        for (Real& stress : row)
            stress = 0.0f;
    s.tMin = 0.0f;
    s.WMaxOp = s.SPerW = s.SPerP = s.SPerDP = 0.0f;

    const CORRODED c{s.B + 2.0f * s.ci, max(s.g1 - s.ci - s.ce, 0.0f), s.t - s.ct};
    longitudinal_hub_stress(s, c);
    radial_stress(s, c);
    tangential_stress(s, c);
    average_stress(s);
    bolt_stress(s);
    reverse_flange_stress(s, c);
    full_face(s, c);
}

} // namespace tarvane
