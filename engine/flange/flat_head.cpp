// Flat heads and blind flanges (UG-34(c)(2), EN 13445-3 10.5): the stress is a pressure term and a
// bolt term, and the two separately give the pressure that the head carries.
#include "flange/stresses.h"
#include "report/lines.h"

#include <cmath>

namespace tarvane {

namespace {

enum class Form { FULL_FACE_CIRCULAR, CIRCULAR_EN, CIRCULAR, NON_CIRCULAR };

// Openings of UG-39(d)(2): the thickness times sqrt(2), so twice the stress; with the ligament
// factor h of UG-39(e)(2) on top.
enum class Openings { NONE, DOUBLED, DOUBLED_WITH_H };

struct FLAT_HEAD {
    Real tCor;
    Form form;
    Openings openings;
    Real span;   // diameter, or short span, of the pressure term
    Real factor; // on the stress by UG-39
    std::string_view BscText;
};

Real flat_head_shape_factor(const FLANGE_GIVEN& s) {
    if (s.D * s.dS == 0.0f) return 1.0f;
    return min(3.4f - 2.4f * s.dS / s.D, 2.5f);
}

Form flat_head_form(const FLANGE_STATE& s) {
    const bool circular = s.Zcover >= 0.999f && s.Zcover <= 1.0001f;
    if (!circular) return Form::NON_CIRCULAR;
    if (s.fullFace) return Form::FULL_FACE_CIRCULAR;
    return s.code == EN_13445 ? Form::CIRCULAR_EN : Form::CIRCULAR;
}

Openings flat_head_openings(const FLANGE_STATE& s) {
    if (s.fullFace) return Openings::NONE;
    const bool factorRootTwo = setup_real(50) > 0.0f && s.coverFactor == 1.0f;
    if (factorRootTwo || s.coverFlag == 1) return Openings::DOUBLED;
    return s.coverFactor > 1.001f ? Openings::DOUBLED_WITH_H : Openings::NONE;
}

// ---- the two terms ---------------------------------------------------------------------------------

// Stress from a bolt load W.
Real bolt_term(const FLANGE_STATE& s, const FLAT_HEAD& head, Real W) {
    const Real t2 = square(head.tCor);
    switch (head.form) {
    case Form::FULL_FACE_CIRCULAR:
        return 0.0f; // the bolts put no moment on the head
    case Form::CIRCULAR_EN:
        return 3.0f * W * s.CF * (s.C - s.G) / (t2 * s.G * PI);
    case Form::CIRCULAR:
        return 1.9f * W * s.hg * s.CF / (t2 * s.G);
    case Form::NON_CIRCULAR:
        break;
    }
    return 6.0f * std::abs(W) * s.hg * s.CF / (t2 * s.L);
}

Real bolt_term_per_load(const FLANGE_STATE& s, const FLAT_HEAD& head) {
    const Real t2 = square(head.tCor);
    switch (head.form) {
    case Form::FULL_FACE_CIRCULAR:
        return 0.0f;
    case Form::CIRCULAR_EN:
        return 3.0f * s.CF * (s.C - s.G) / (t2 * s.G * PI);
    case Form::CIRCULAR:
        return 1.9f * s.hg * s.CF / (t2 * s.G);
    case Form::NON_CIRCULAR:
        break;
    }
    return 6.0f * s.hg * s.CF / (t2 * s.L);
}

// Stress from the pressure. EN 13445-3 gives one stress for pressure and bolts together, of which
// the part beside the bolt term is taken.
Real pressure_term(const FLANGE_STATE& s, const FLAT_HEAD& head, Real boltTerm) {
    const Real P = std::abs(s.Peq);
    const Real t2 = square(head.tCor);
    if (head.form == Form::CIRCULAR_EN) {
        const Real A1t = (P / t2) * (0.309375f * square(s.G) + // 3(3 + 0.3)/32
                                     3.0f * s.CF * (s.G * 0.25f + 2.0f * s.b * s.m) * (s.C - s.G));
        return std::abs(A1t - boltTerm);
    }
    return s.Cf * s.Zcover * P * square(head.span) / t2;
}

// ---- the lines -------------------------------------------------------------------------------------

std::string_view operating_label(const FLANGE_GIVEN& s) {
    return s.en_or_pd() ? "Tangential Flange Stress, Flat Head, Operating [STo]:"
                        : "Tangential Flange Stress, Flat Head (UG-34), Operating [STo]:";
}

std::string_view seating_label(const FLANGE_GIVEN& s, Form form) {
    if (form == Form::NON_CIRCULAR)
        return s.en_or_pd()
                   ? "Tangential Flange Stress, Flat Head, Seating (Non-Circular) [STa]:"
                   : "Tangential Flange Stress, Flat Head, Seating UG-34 (Non-Circular) [STa]:";
    return s.en_or_pd() ? "Tangential Flange Stress, Flat Head, Seating [STa]:"
                        : "Tangential Flange Stress, Flat Head (UG-34), Seating [STa]:";
}

// Symbol lines come in two pieces with the symbol of the bolt spacing correction between them.
struct FLAT_HEAD_WORDS {
    std::string_view symbol, symbolBehindBsc;
    std::string_view template1, template2;
};

// By Openings.
constexpr FLAT_HEAD_WORDS CIRCULAR_OPERATING[3] = {
    {" = 1.9 * Wm1 * hG * ", "/(t\xB2 * G) + C * Z * Peq * G\xB2/t\xB2",
     " = 1.9 * @0 * @4 * @4/(@4\xB2 * @4 ) + #", "   @2 * @4 * @2 * @4\xB2/@4\xB2 # "},
    {" = 2 * ( 1.9 * Wm1 * hG * ", "/(t\xB2 * G) + C * Z * Peq * G\xB2/t\xB2 )",
     " = 2 * ( 1.9 * @0 * @4 * @4/(@4\xB2 * @4 ) + #", "   @2 * @4 * @2 * @4\xB2/@4\xB2 ) # "},
    {" = 2 * ( 1.9 * Wm1 * hG * ", "/( (t/h)\xB2 * G ) + C * Z * Peq * G\xB2 / (t/h)\xB2 )",
     " = 2 * ( 1.9 * @0 * @4 * @4/(@4\xB2 * @4 ) + #", "   @2 * @4 * @2 * @4\xB2/@4\xB2 ) # "},
};
constexpr FLAT_HEAD_WORDS NON_CIRCULAR_OPERATING[3] = {
    {" = 6 * Wm1 * hG * ", "/(t\xB2 * L) + C * Z * Peq * d\xB2/t\xB2 ",
     " = 6 * @0 * @4 * @4/(@4\xB2 * @4 ) + #", "   @2 * @4 * @2 * @4\xB2/@4\xB2 # "},
    {" = 2 * ( 6 * Wm1 * hG * ", "/(t\xB2 * L) + C * Z * Peq * d\xB2/t\xB2 )",
     " = 2 * ( 6 * @0 * @4 * @4/(@4\xB2 * @4 ) + #", "   @2 * @4 * @2 * @4\xB2/@4\xB2 ) # "},
    {" = 2 * ( 6 * Wm1 * hG * ", "/( (t/h)\xB2 * L) + C * Z * Peq  *d\xB2 / (t/h)\xB2 )",
     " = 2 * ( 6 * @0 * @4 * @4/(@4\xB2 * @4 ) + #", "   @2 * @4 * @2 * @4\xB2/@4\xB2 ) # "},
};

// Without a second piece the line holds its own "Bsc".
constexpr FLAT_HEAD_WORDS CIRCULAR_SEATING[3] = {
    {" = 1.9 * W * hG * ", "/ (t\xB2 * G)", " = 1.9 * @0 * @4 * @3/(@4\xB2 * @4 )#", {}},
    {" = 2 * 1.9 * W * hG * Bsc / (t\xB2 * G)",
     {},
     " = 2 * 1.9 * @0 * @4 * @3/(@4\xB2 * @4 )#",
     {}},
    {" = 2 * 1.9 * W * hG * Bsc / ( (t/h)\xB2 * G )",
     {},
     " = 2 * 1.9 * @0 * @4 * @3/(@4\xB2 * @4 )#",
     {}},
};
constexpr FLAT_HEAD_WORDS NON_CIRCULAR_SEATING[3] = {
    {" = 6 * W * hG * ", "/(t\xB2 * L))", " = 6 * @0 *@4 *@4 /(@4\xB2 *@4 ) #", {}},
    {" = 2 * 6 * W * hG * Bsc / ( t\xB2 * L )", {}, " = 2 * 6 * @0 *@4 *@4 /(@4\xB2 *@4 ) #", {}},
    {" = 2 * 6 * W * hG * Bsc / ( (t/h)\xB2 * L)",
     {},
     " = 2 * 6 * @0 *@4 *@4 /(@4\xB2 *@4 ) #",
     {}},
};

LinePieces symbol_line(const FLAT_HEAD_WORDS& words, const FLAT_HEAD& head) {
    LinePieces line;
    line.text(words.symbol);
    if (!words.symbolBehindBsc.empty()) line.text(head.BscText).text(words.symbolBehindBsc);
    return line;
}

std::string_view operating_remark(Openings openings) {
    switch (openings) {
    case Openings::NONE:
        break;
    case Openings::DOUBLED:
        return "Doubled per UG-39(d)(2).";
    case Openings::DOUBLED_WITH_H:
        return "Doubled per UG-39(d)(2) and h term included.";
    }
    return {};
}

// The thickness in the lines: t, or t/h.
Real thickness_in_line(const FLANGE_GIVEN& s, const FLAT_HEAD& head) {
    const bool withH = head.openings == Openings::DOUBLED_WITH_H;
    return as_thickness(withH ? head.tCor / s.coverFactor : head.tCor);
}

void operating_lines(const FLANGE_STATE& s, const FLAT_HEAD& head) {
    const Real STo = s.STRESS[OPERATING][TANGENTIAL];
    const Real G = as_diameter(s.G);
    const Real t = thickness_in_line(s, head);
    const std::string_view label = operating_label(s);
    const std::string_view remark = operating_remark(head.openings);

    switch (head.form) {
    case Form::FULL_FACE_CIRCULAR:
        WRITE_STRESS_LINES(
            label, " = C * Z * [Peq] * d\xB2/t\xB2  (no bolt load moment for full faced designs)",
            " = @2 * @4 * [@2] * @4\xB2/@4\xB2 # ",
            {s.Cf, s.Zcover, as_pressure(s.Peq), as_diameter(head.span), t}, {}, {}, STo, remark);
        return;
    case Form::CIRCULAR_EN:
        WRITE_STRESS_LINES(label, " = P/ep\xB2(3(3+0.3)G\xB2/32 + 3(cF)(G/4+2(b)*m)(C-G)",
                           " = @3/@3\xB2(3(3+0.3)@3\xB2/32 + #",
                           {as_pressure(s.Peq), as_thickness(head.tCor), G},
                           "   3(@3)(@3/4+2(@3)*@3)(@1-@1) # ",
                           {s.CF, G, as_diameter(s.b), s.m, as_diameter(s.C), G}, STo, remark);
        return;
    case Form::CIRCULAR:
    case Form::NON_CIRCULAR:
        break;
    }
    const bool circular = head.form == Form::CIRCULAR;
    const auto& words =
        (circular ? CIRCULAR_OPERATING : NON_CIRCULAR_OPERATING)[static_cast<Int>(head.openings)];
    WRITE_STRESS_LINES(
        label, symbol_line(words, head).view(), words.template1,
        {as_force(s.Wm1), as_diameter(s.hg), s.CF, t, circular ? G : as_diameter(s.L)},
        words.template2, {s.Cf, s.Zcover, as_pressure(s.Peq), as_diameter(head.span), t}, STo,
        remark);
}

void openings_line(const FLANGE_GIVEN& s, const FLAT_HEAD& head) {
    if (head.openings != Openings::DOUBLED_WITH_H || !reporting()) return;
    LinePieces line;
    line.text("For this geometry, h = ").bare(s.coverFactor, 4).text("  t = ");
    line.bare(as_thickness(head.tCor), 4).text(" ").text(unit_label(Kind::thickness));
    line.write(HEADING_STYLE);
}

void seating_lines(const FLANGE_STATE& s, const FLAT_HEAD& head) {
    const Real STa = s.STRESS[SEATING][TANGENTIAL];
    const Real G = as_diameter(s.G);
    const Real t = thickness_in_line(s, head);
    const std::string_view label = seating_label(s, head.form);

    if (head.form == Form::CIRCULAR_EN) {
        WRITE_STRESS_LINES(label, " = W * cF * 3(C-G)/( ea\xB2 * pi * G)",
                           " = @1 * @3 * 3(@3-@3)/( @3\xB2 * pi * @3)#",
                           {as_force(s.W), s.CF, as_diameter(s.C), G, as_thickness(head.tCor), G},
                           {}, {}, STa);
        return;
    }
    const bool circular = head.form == Form::CIRCULAR;
    const auto& words =
        (circular ? CIRCULAR_SEATING : NON_CIRCULAR_SEATING)[static_cast<Int>(head.openings)];
    WRITE_STRESS_LINES(label, symbol_line(words, head).view(), words.template1,
                       {as_force(s.W), as_diameter(s.hg), s.CF, t, circular ? G : as_diameter(s.L)},
                       {}, {}, STa);
}

} // namespace

void FLAT_HEAD_STRESSES(FLANGE_STATE& s, Real tCor) {
    s.Zcover = flat_head_shape_factor(s);
    s.Cf = s.fullFace ? 0.25f : 0.3f;

    FLAT_HEAD head{tCor, flat_head_form(s),          flat_head_openings(s), s.G,
                   1.0f, s.en_or_pd() ? "cF" : "Bsc"};
    if (head.form == Form::FULL_FACE_CIRCULAR) head.span = s.C;
    if (head.form == Form::NON_CIRCULAR) head.span = s.dS;
    if (head.openings == Openings::DOUBLED) head.factor = 2.0f;
    if (head.openings == Openings::DOUBLED_WITH_H) head.factor = 2.0f * square(s.coverFactor);

    Real& STo = s.STRESS[OPERATING][TANGENTIAL];
    const Real Tb = bolt_term(s, head, s.Wm1);
    STo = Tb + pressure_term(s, head, Tb);

    // Stress per bolt load, per pressure, and from the pressure that replaces external loads.
    const Real t2 = square(tCor);
    s.SPerW = bolt_term_per_load(s, head);
    s.SPerP = s.Cf * s.Zcover * square(head.span) / t2;
    s.SPerDP = s.Cf * s.Zcover * std::abs(s.Peq - s.P) * square(head.span) / t2;
    const Real STaAllow = s.ALLOWED[SEATING][TANGENTIAL];
    const Real Wmax = head.form == Form::FULL_FACE_CIRCULAR ? 0.0f : STaAllow / s.SPerW;

    if (s.fullFace && s.en_or_pd()) {
        STo = s.SPerW = s.SPerP = s.SPerDP = 0.0f;
    } else {
        STo = STo * head.factor;
        s.SPerW = s.SPerW * head.factor;
        s.SPerP = s.SPerP * head.factor;
        s.SPerDP = s.SPerDP * head.factor;
        operating_lines(s, head);
        openings_line(s, head);
    }
    s.WMaxOp = min((2.0f * Wmax / s.Sa - s.Ab) * s.Sb, s.Ab * s.Sb);

    if (s.fullFace) return; // no seating stress
    s.STRESS[SEATING][TANGENTIAL] = bolt_term(s, head, s.W) * head.factor;
    seating_lines(s, head);
}

} // namespace tarvane
