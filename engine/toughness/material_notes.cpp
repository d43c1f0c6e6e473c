#include "toughness/material_notes.h"

#include "frame/switches.h"
#include "materials/material_record.h"
#include "toughness/results.h"
#include "toughness/temperature_lines.h"

namespace tarvane {

namespace {

constexpr std::string_view EXEMPT_SPECIFICATIONS[] = {
    "SA-182", "SA-213", "SA-240", "SA-249", "SA-268",
    "SA-312", "SA-376", "SA-403", "SA-479", "SA-688",
};
constexpr std::string_view EXEMPT_GRADES[] = {
    "304",    "304L",  "316",   "316L", "321",   "347",  "TP304", "TP304L", "TP316",
    "TP316L", "TP321", "TP347", "F304", "F304L", "F316", "F316L", "F321",   "F347",
};

using LongName = Text<100>; // as wide as a line of the report

LongName without_nuls(std::string_view name) {
    LongName text = name;
    NUL_TO_BLANK(text.data(), LongName::width());
    return text;
}

LongName without_blanks(const LongName& name) {
    LongName kept;
    Int column = 0;
    for (const char c : name.view())
        if (c != ' ') kept.put(++column, {&c, 1});
    return kept;
}

bool restricted(const LongName& name, Int G40Flag) {
    return name.view().find("SA-283") != std::string_view::npos || name.columns(1, 6) == "SA-36 " ||
           (name == "SA/CSA-G40.21" && G40Flag == 1);
}

void note_exempt_stainless(Int Code, Real T) {
    BEGIN_MDMT_RESULTS();
    MDMT_RESULTS& f = MDMT_FOUND;
    f.status = MDMT_CALCULATED;
    f.rules = BY_UHA_51;
    f.code = Code;
    f.t_curve_by = OF_UHA_51;
    f.exempt = EXEMPT_BY_UHA_51;
    f.t_min = f.mdmt = f.lowest = T;
    f.lowest_by = LOWEST_BY_UHA_51;
}

} // namespace

void GETUCSCURVE(std::string_view Spec, Int Reference, Int Code, Int Thin, Int& Curve) {
    Curve = -1;
    MATERIAL_RECORD record;
    Int status;
    READ_MATERIAL(Code, Spec, Reference, status, record);
    if (status == 0) Curve = Thin == 1 ? record.curveNormalized : record.curve;
}

Text<16> MATERIAL_NAME_KEY(std::string_view name) {
    Text<16> key = name;
    NORMALIZE_MATERIAL_NAME(key.data(), Text<16>::width());
    return key;
}

bool LIS_EXEMPT_SS(Int Code, std::string_view Name) {
    if (moduleCode >= ASME_VIII_2 || Code >= ASME_VIII_2) return false;
    for (const std::string_view specification : EXEMPT_SPECIFICATIONS)
        for (const std::string_view grade : EXEMPT_GRADES) {
            Text<16> candidate = specification;
            candidate.put(8, grade);
            if (candidate == Name) return true;
        }
    return false;
}

void UHA51_NOTE(Int Code, std::string_view Name, Real& Tmin, Real& Mdmt, Real& Ratio, Real& Factor1,
                Real& Factor2) {
    if (!LIS_EXEMPT_SS(Code, Name)) return;
    Tmin = Mdmt = -320.0f;
    Ratio = 1.0101f;
    Factor1 = Factor2 = 1.0f;
    note_exempt_stainless(Code, Tmin);
    BLANK_LINE();
    LinePieces line;
    line.text(trimmed(Name)).text(", Min Metal Temp without impact per UHA-51: ");
    line.bare(as_temperature(Tmin), 0).blanks(1).text(UNITS.temperature_label.trimmed());
    line.write();
}

void UCS6_NOTE(std::string_view Material, Real Thickness, Int Code, Int G40Flag) {
    if (Code >= ASME_VIII_2) return;
    const LongName name = without_nuls(Material);
    if (!restricted(without_blanks(name), G40Flag) || !(Thickness > 0.625f)) return;
    LinePieces line;
    line.text("Warning for Material: ").text(name.trimmed()).text(" at ");
    line.bare(as_thickness(Thickness), 4).blanks(1).text(unit_label(Kind::thickness));
    line.text(" thick").write(WARNING_STYLE);
    TEXT_LINE("Please check the requirements of UCS-6(b)(3) for this material.", WARNING_STYLE);
}

} // namespace tarvane
