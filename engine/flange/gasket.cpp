#include "flange/gasket.h"

#include "flange/results.h"
#include "report/lines.h"

namespace tarvane {

namespace {

// A width, and the text that shows where it comes from.
struct Width {
    Real value;
    std::string_view symbol;
};

// Label of 32 columns, symbol text of 24, value, unit.
void width_line(std::string_view label, const Width& width) {
    Text<56> line = label;
    line.put(33, width.symbol);
    COLUMN_LINE(line.view(), width.value, Kind::diameter);
}

// Contact width N. From sketch 1c on the gasket is in a groove of its own, so that only its own
// diameters count; otherwise the flange face and the bore limit the contact.
Real contact_width(const FLANGE_STATE& s, Int sketch) {
    if (sketch > 2) return (s.Go - s.Gi) / 2.0f;
    if (s.type < LAP_JOINT) return (s.GoC - max(s.GiC, s.Bcor)) / 2.0f;
    return (s.GoC - s.GiC) / 2.0f;
}

void contact_width_line(const FLANGE_STATE& s, Real N) {
    if (!s.fullFace) {
        COLUMN_LINE(s.GoC < s.Go ? "Gasket Contact Width,       N = (Fod - Gi) / 2  "
                                 : "Gasket Contact Width,       N = (Go - Gi) / 2   ",
                    N, Kind::diameter);
    } else if (s.en_or_pd()) {
        COLUMN_LINE("Eff. Gask Pressure width  2b\" = 5 mm            ", FIVE_MM, Kind::diameter);
    }
}

// Basic width bo by facing sketch and column, Table 2-5.2.
Width basic_width(const FLANGE_GIVEN& s, Int sketch, bool columnI, Real N) {
    const Real w = s.w;
    switch (sketch) {
    case 1: // 1a
    case 2: // 1b
        return {N / 2.0f, "N / 2"};
    case 3:   // 1c
    case 4: { // 1d
        const Real by_thickness = (w + s.tg) / 2.0f, by_width = (w + N) / 4.0f;
        return {min(by_thickness, by_width),
                by_thickness < by_width ? "(w+GKTHK) / 2" : "(w+N) / 4"};
    }
    case 5: // 2
        if (columnI) return {(w + N) / 4.0f, "(w+N) / 4"};
        return {(w + 3.0f * N) / 8.0f, "(w+3*N) / 8"};
    case 6: // 3
    case 8: // 5
        if (columnI) return {N / 4.0f, "N / 4"};
        return {3.0f * N / 8.0f, "3 * N / 8"};
    case 7: // 4
        if (columnI) return {3.0f * N / 8.0f, "3 * N / 8"};
        return {7.0f * N / 16.0f, "7 * N / 16"};
    case 9: // 6
        return {w / 8.0f, "w / 8"};
    default:
        return {0.0f, ""};
    }
}

// Effective width b. The inch form applies in both systems, as the widths are in inches.
Width effective_width(Real bo) {
    if (bo <= 0.25f) return {bo, "bo"};
    return {0.5f * std::sqrt(bo), UNITS.thickness > 20.0f ? "Cb sqrt(bo)" : "sqrt(bo) / 2"};
}

Width reaction_diameter(const FLANGE_STATE& s, const GASKET_CALL& call, Real bo, Real b) {
    if (s.type == LAP_JOINT) return {(s.LjID + s.LjOD) / 2.0f, "(LPODC+LPIDC) / 2"};
    if (!s.fullFace && call.m < 0.001f && call.y < 0.001f && !NEW_DIV_2_RULES)
        return {s.GoC, "Go (Self-Energizing)"};
    if (bo <= 0.25f) return {(s.GoC + s.GiC) / 2.0f, "(Go + Gi) / 2"};
    return {s.GoC - 2.0f * b, "Go - 2 * b"};
}

// Taylor Forge bulletin 502. The basic width stays that of the sketch and is not used.
void taylor_forge_full_face(const FLANGE_STATE& s, Width& bo, Width& b, Width& G) {
    bo.symbol = "Full Face";
    b = {(s.C - s.GiC) / 4.0f, "(C-Gi) / 4"};
    const Real hG = (s.C - s.GiC) * (2.0f * s.GiC + s.C) / (6.0f * (s.C + s.GiC));
    G = {s.C - 2.0f * hG, "C - 2 * HG"};
}

// Full face gasket of a forward flange, EN 13445-3 11.6.
void code_full_face(const FLANGE_STATE& s, GASKET_CALL& call, Width& bo, Width& b, Width& G) {
    bo = {max(min(s.GoC - s.C, s.C - s.GiC), 0.0f), "Min(Go - C, C - Gi)"};
    b = {4.0f * std::sqrt(bo.value * MM_PER_INCH) / MM_PER_INCH, "4(b'0)"};
    G = {s.C - s.dh - FIVE_MM, "C - dh - 5mm"};
    call.b2 = FIVE_MM;
}

void common_widths(const FLANGE_STATE& s, GASKET_CALL& call) {
    if (call.N < 0.0f) {
        call.N = contact_width(s, call.sketch);
        if (!call.partition) contact_width_line(s, call.N);
    }
    Width bo = basic_width(s, call.sketch, call.column == 1.0f, call.N);
    Width b = effective_width(bo.value);
    Width G = reaction_diameter(s, call, bo.value, b.value);
    if (s.fullFace && !call.partition) {
        if (s.asme())
            taylor_forge_full_face(s, bo, b, G);
        else
            code_full_face(s, call, bo, b, G);
    }
    call.bo = bo.value;
    call.b = b.value;
    call.G = G.value;
    if (call.partition) return;

    width_line("Basic Gasket Width,        bo = ", bo);
    width_line("Effective Gasket Width,     b = ", b);
    width_line("Gasket Reaction Diameter,   G = ", G);
}

// Full face gasket of a reverse flange: it has no reaction diameter of its own.
void reverse_full_face_widths(const FLANGE_STATE& s, GASKET_CALL& call) {
    const bool metric = UNITS.thickness > 2.0f;
    call.N = (s.C - s.GiC) / 2.0f;
    const Real bo = call.N / 2.0f;
    call.bo = bo;
    call.b = min(bo, 0.5f * std::sqrt(bo));
    const Real bo_outside = s.GoC - s.C;
    call.bPrime = 0.793649971f * std::sqrt(bo_outside);

    const auto line = [](std::string_view label, Real value) {
        COLUMN_LINE(label, value, Kind::diameter);
    };
    line("Gasket Contact Width,       N = (C - g1) / 2    ", call.N);
    line("Basic Gasket Width,        bo = N / 2           ", bo);
    line(metric ? "Effective Gasket Width,     b = min(b0,2.52*sqrt(b0)) "
                : "Effective Gasket Width,     b = min(b0,0.5  *sqrt(b0))",
         call.b);
    line("Distance to Gasket OD,    b'0 = Go - C                ", bo_outside);
    line(metric ? "Effective distance,        b' = 4*sqrt(b'0)           "
                : "Effective distance,        b' = 0.793*sqrt(b'0)       ",
         call.bPrime);
}

void closing_notes(const FLANGE_STATE& s, Real G) {
    if (s.type == LAP_JOINT) {
        TEXT_LINE("Note: For Lap Joints, the Flange Face OD cannot be greater than the");
        TEXT_LINE("lap joint contact OD.");
    }
    if (!s.fullFace && G > s.C + 0.0001f) {
        TEXT_LINE("Warning: Gasket reaction diameter is beyond the bolt circle and");
        TEXT_LINE("this is not a full face gasket. Please Check the input.");
    }
    if (s.fullFace) {
        TEXT_LINE("Note: The gasket extends beyond the Bolt circle diameter, this flange will");
        TEXT_LINE(s.asme() ? "be designed as a full face flange per Taylor Forge bulletin 502."
                           : "be designed as a full face flange per code rules.");
    }
}

// A minimum width, with the remark of a gasket that is narrower.
void minimum_width_line(const GASKET_STATE& s, Real width) {
    const Real actual = std::abs((s.GoC - s.GiC) / 2.0f);
    LinePieces remark;
    if (actual < width)
        remark.text("[Note: Exceeds actual gasket width, ").bare(as_diameter(actual), 4).text("]");
    VALUE_LINE(width, Kind::diameter, remark.view());
}

} // namespace

void GASKET_WIDTH(const FLANGE_STATE& s, GASKET_CALL& call) {
    if (s.reverseFullFace() && !call.partition)
        reverse_full_face_widths(s, call);
    else
        common_widths(s, call);
    if (!call.partition) closing_notes(s, call.G);
}

void MIN_GASKET_WIDTH(const FLANGE_STATE& s) {
    const Real Nmin = s.Ab * s.Sa / (s.y * PI * (s.GoC + s.GiC));
    NOTED.Nmin = Nmin;
    if (s.code == EN_13445) {
        HEADING("Min. Gasket Contact Width (Brownell Young) [Not an EN 13445 Calc] [Nmin]: ");
        TEXT_LINE("= Ab * fb,a / ( y * Pi * (Go + Gi) )");
    } else {
        HEADING("Min. Gasket Contact Width (Brownell Young) [Not an ASME Calc] [Nmin]: ");
        TEXT_LINE("= Ab * Sa/( y * Pi * (Go + Gi) )");
    }
    NUMBER_LINE("= @3 * @2/(@2 * @2 * (@3 + @2) )", {as_area(s.Ab), as_stress(s.Sa), as_stress(s.y),
                                                     PI, as_diameter(s.GoC), as_diameter(s.GiC)});
    minimum_width_line(s, Nmin);

    const Real recommended = MIN_GASKET_WIDTH_TABLE(s.B);
    if (recommended > 0.001f && up_to_asme_viii(s.code)) {
        TEXT_LINE("Note: Recommended Min. Width for Sheet and Composite Gaskets per table 2-4 :");
        minimum_width_line(s, recommended);
    }
}

Real MIN_GASKET_WIDTH_TABLE(Real B) {
    if (B >= 23.999f && B <= 36.0001f) return C_ONE;
    if (B > 36.0001f && B < 60.0f) return C_ONE_AND_QUARTER;
    if (B >= 60.0f) return C_ONE_AND_HALF;
    return 0.0f;
}

} // namespace tarvane
