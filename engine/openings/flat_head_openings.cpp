#include "openings/flat_head_openings.h"

#include "report/lines.h"

#include <cmath>

namespace tarvane {

bool UG39_VIOLATION = false;

namespace {

void note_violation(OPENINGS_FOUND& found, OPENINGS_FOUND::Rule rule, Real length, Real limit) {
    UG39_VIOLATION = true;
    found.state = OPENINGS_FOUND::IN_VIOLATION;
    found.rule[found.violations] = rule;
    found.length[found.violations] = length;
    found.limit[found.violations] = limit;
    ++found.violations;
}

// A line that compares one length with another, the unit after the second.
void comparison(std::string_view text, Real length, std::string_view relation, Real other,
                const Style& style) {
    LinePieces line;
    line.text(text).bare(as_diameter(length), 2);
    line.text(relation).bare(as_diameter(other), 2);
    line.text(" ").text(unit_label(Kind::diameter));
    line.write(style);
}

void violation(OPENINGS_FOUND& found, OPENINGS_FOUND::Rule rule, std::string_view text, Real length,
               std::string_view relation, Real limit) {
    note_violation(found, rule, length, limit);
    comparison(text, length, relation, limit, ERROR_STYLE);
}

// Attachment factor of a flat head with openings, UG-39(d)(1): twice C, with an upper limit by the
// way in which the head is attached.
Real doubled_attachment_factor(Real Cin, Int material) {
    const bool lowerLimit = (material == 1 || material == 2) || (material >= 5 && material <= 8);
    return min(2.0f * Cin, lowerLimit ? 0.5f : 0.75f);
}

void ligament_lines(const OPENINGS_CALL& call, Real davg, Real e) {
    const Real pitch = as_diameter(call.pitch);
    HEADING("Ligament Efficiency per UG-39(e)(2) [e]:");
    TEXT_LINE(" = (p - davg)/p ");
    NUMBER_LINE(" = (@3 - @3)/ @3", {pitch, as_diameter(davg), pitch});
    VALUE_LINE_IN(e, 3, {});

    HEADING("Factor per UG-39(e)(2) [h]:");
    TEXT_LINE(" = ( 0.5 / e )\xBD");
    NUMBER_LINE(" = ( 0.5 / @3 )\xBD", {e});
    VALUE_LINE_IN(call.coverFactor, 3, {});
}

// Two openings or a pattern of them, UG-39(e)(1) to (4).
void openings_in_pairs(OPENINGS_CALL& call) {
    const Real davg = (call.d1 + call.d2) / 2.0f;
    if (davg > call.headDia * 0.25f + 0.001f)
        violation(call.found, OPENINGS_FOUND::LARGE, "UG-39(e) Average dia. ", davg,
                  " is > Head dia/4, ", call.headDia / 4.0f);

    if (call.pitch >= 2.0f * davg) {
        call.coverFlag = 1;
        comparison("UG-39(e)(1) Spacing ", call.pitch, " is >= 2*Avg. dia. ", 2.0f * davg, PLAIN);
    } else {
        const Real e = (call.pitch - davg) / call.pitch;
        call.coverFactor = std::sqrt(0.5f / e);
        if (call.found.violations == 0) call.found.state = OPENINGS_FOUND::BY_FACTOR;
        if (call.pitch >= 1.25f * davg - 0.0001f) {
            comparison("UG-39(e)(2) Spacing ", call.pitch, " is < 2*Avg. dia. ", 2.0f * davg,
                       PLAIN);
            ligament_lines(call, davg, e);
        } else {
            violation(call.found, OPENINGS_FOUND::NEAR, "UG-39(e)(3) Spacing ", call.pitch,
                      " is < 1.25*Avg. dia. ", 1.25f * davg);
        }
    }

    const Real ligament = call.pitch - davg;
    const Real quarter = 0.25f * min(call.d1, call.d2);
    if (ligament < quarter - 0.0001f)
        violation(call.found, OPENINGS_FOUND::LIGAMENT, "UG-39(e)(4) Ligament ", ligament,
                  " should be >= Min. dia./4, ", quarter);
}

} // namespace

void PATTERNED_OPENINGS(OPENINGS_CALL& call) {
    call.coverFlag = 0;
    call.coverFactor = 1.0f;
    call.Cout = call.Cin;
    call.found = OPENINGS_FOUND{};
    if (call.kind != FLAT_HEAD_ELEMENT && call.kind != BLIND_COVER) return;
    const bool flatHead = call.kind == FLAT_HEAD_ELEMENT;

    call.found.state = OPENINGS_FOUND::APART;
    HEADING("Checking Multiple Openings on Flat Head per ASME Sec. VIII Div. 1 UG-39");
    LinePieces line;
    line.text("Head dia = ").bare(as_diameter(call.headDia), 2);
    line.text("  Opening dia, d1 = ").bare(as_diameter(call.d1), 2);
    line.text("  d2 = ").bare(as_diameter(call.d2), 2);
    line.text(" ").text(unit_label(Kind::diameter));
    line.write();

    const Real half = call.headDia * 0.5f + 0.001f;
    if (call.d1 > half) {
        note_violation(call.found, OPENINGS_FOUND::D1_LARGE, call.d1, call.headDia * 0.5f);
        TEXT_LINE(flatHead
                      ? "Diameter(d1) is > Head dia./2, UG-39 violation Refer to App. 14 or U2(g)."
                      : "The Opening dia. d1 is > Head dia./2, UG-39 violation Refer to U2(g).",
                  ERROR_STYLE);
    }
    if (flatHead) call.Cout = doubled_attachment_factor(call.Cin, call.material);

    if (call.d2 > 0.0001f) {
        if (call.d2 > half) {
            note_violation(call.found, OPENINGS_FOUND::D2_LARGE, call.d2, call.headDia * 0.5f);
            TEXT_LINE(
                flatHead
                    ? "Diameter(d2) is > Head dia./2, UG-39 violation Refer to App. 14 or U2(g)."
                    : "The Opening dia. d2 is > Head dia./2, UG-39 violation Refer to U2(g).",
                ERROR_STYLE);
        }
        openings_in_pairs(call);
    } else {
        call.coverFlag = 1; // a single opening
    }

    // The wording keeps "d1/4" for the second opening.
    constexpr std::string_view EDGE = "UG-39(e)(5) Dist. to edge ",
                               AT_LEAST = " should be >= d1/4, ";
    if (call.edge1 < call.d1 * 0.25f - 0.0001f)
        violation(call.found, OPENINGS_FOUND::D1_AT_EDGE, EDGE, call.edge1, AT_LEAST,
                  call.d1 * 0.25f);
    if (call.edge2 < call.d2 * 0.25f - 0.0001f && call.coverFlag == 0)
        violation(call.found, OPENINGS_FOUND::D2_AT_EDGE, EDGE, call.edge2, AT_LEAST,
                  call.d2 * 0.25f);
}

} // namespace tarvane
