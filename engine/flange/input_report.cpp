// Echo of the flange's input: one line an item, in a fixed order, each under its condition.
#include "flange/input_report.h"

#include "bolting/bolt_material.h"
#include "bolting/bolt_tables.h"
#include "frame/element_tables.h"
#include "frame/units.h"
#include "report/lines.h"

#include <algorithm>

namespace tarvane {

namespace {

// ---- names -----------------------------------------------------------------------------------

constexpr std::string_view UNKNOWN = "UNKNOWN";

struct FLANGE_NAME {
    std::string_view name, image;
};
constexpr FLANGE_NAME TYPES[] = {
    {"Integral Weld Neck", R"(</Image=Images\Flanges\WeldNeckFlange.bmp/>)"},
    {"Integral Slip On", R"(</Image=Images\Flanges\SlipOnFlangeWithHub.bmp/>)"},
    {"Integral Ring", R"(</Image=Images\Flanges\IntegralRingFlange.bmp/>)"},
    {"Loose Slip On", R"(</Image=Images\Flanges\LooseSlipOnFlangeWithHub.bmp/>)"},
    {"Loose Ring", R"(</Image=Images\Flanges\LooseRingFlange.bmp/>)"},
    {"Lap Joint", R"(</Image=Images\Flanges\LapJointFlange.bmp/>)"},
    {"Blind", R"(</Image=Images\Flanges\BlindFlange.bmp/>)"},
    {"Reverse Weld Neck", R"(</Image=Images\Flanges\IntegralReverse.bmp/>)"},
    {"Loose Reverse", R"(</Image=Images\Flanges\LooseReverse.bmp/>)"},
};
constexpr std::string_view CHANNEL_COVER = "TEMA Channel Cover";

constexpr std::string_view THREADS[] = {
    "TEMA Thread Series", "UNC Thread Series", "Special, Root Area", "TEMA Metric",
    "British 3643",       "SABS 1700 1996",    "3P M30 Metric",      "User Defined Table",
};

constexpr std::string_view SKETCHES[] = {
    "1, Code Sketch 1a", "2, Code Sketch 1b", "3, Code Sketch 1c",
    "4, Code Sketch 1d", "5, Code Sketch 2",  "6, Code Sketch 3",
    "7, Code Sketch 4",  "8, Code Sketch 5",  "9, Code Sketch 6",
};

constexpr std::string_view COLUMNS[] = {"1, Code Column I", "2, Code Column II"};

template <std::size_t N>
std::string_view name_of(const std::string_view (&names)[N], Int number) {
    return number >= 1 && number <= static_cast<Int>(N) ? names[number - 1] : UNKNOWN;
}

std::string_view yes_or_no(bool yes) { return yes ? "Yes" : "No"; }

// ---- conditions ------------------------------------------------------------------------------

using STATE = FLANGE_STATE;

bool use_corrosion(const STATE& s) { return s.thicknessCorrodes(); }
bool channel_cover(const STATE& s) { return s.channelCover(1) == 'Y'; }

bool always(const STATE&) { return true; }
bool not_design(const STATE& s) { return s.kind != DESIGN; }
bool integral_ring(const STATE& s) { return s.type == INTEGRAL_RING; }
bool not_integral_ring(const STATE& s) { return !integral_ring(s); }
bool ring_over_shell(const STATE& s) { return integral_ring(s) && s.tShell > 0.001f; }
bool thickness_given(const STATE& s) { return s.kind == ANALYSE || s.description(15) == ':'; }
bool hub_given(const STATE& s) { return s.h != 0.0f && not_design(s); }
bool ring(const STATE& s) { return s.type == INTEGRAL_RING || s.type == LOOSE_RING; }
bool lap_joint(const STATE& s) { return s.type == LAP_JOINT; }
bool blind(const STATE& s) { return s.type == BLIND; }
bool bolt_hole(const STATE& s) { return from_pd_5500(s.code) && not_design(s); }
bool root_area(const STATE& s) { return s.series == SPECIAL_ROOT_AREA; }
bool gasket_thickness(const STATE& s) { return s.tg != 0.0f; }
bool nubbin(const STATE& s) { return s.w != 0.0f; }
bool partition(const STATE& s) { return s.lp != 0.0f || s.partitionGasket(1) == 'Y'; }
bool mating_loads(const STATE& s) { return s.matingLoads(1) == 'Y'; }
bool external_loads(const STATE& s) { return s.external_loads(); }
bool patterned_holes(const STATE& s) {
    return s.code == ASME_VIII_1 &&
           (s.D1 > 0.0f || s.D2 > 0.0f || s.edge1 > 0.0f || s.edge2 > 0.0f || s.pitch > 0.0f);
}

// ---- lines -----------------------------------------------------------------------------------

// The value that a line's format prints: the number of its F or I, the text of its A.
struct ECHO_VALUE {
    Real number = 0.0f;
    Text<60> text;
};

ECHO_VALUE with_unit(Real value, Kind kind) { return {shown(value, kind), unit_label(kind)}; }
ECHO_VALUE count(Int n) { return {static_cast<Real>(n), {}}; }
ECHO_VALUE name(std::string_view text) { return {0.0f, text}; }

const FLANGE_NAME* type_entry(const STATE& s) {
    const Int type = s.looseReverse ? LOOSE_REVERSE : s.type;
    return type >= 1 && type <= LOOSE_REVERSE ? &TYPES[type - 1] : nullptr;
}

std::string_view type_name(const STATE& s) {
    const FLANGE_NAME* entry = type_entry(s);
    if (!entry) return UNKNOWN;
    return blind(s) && channel_cover(s) ? CHANNEL_COVER : entry->name;
}

// Tables of long names that the host fills.
constexpr Int FLANGE_MATERIALS = 1, BOLT_MATERIALS = 2;
constexpr Int LONG_NAME = 17; // characters; a shorter one says no more than the name itself

ECHO_VALUE material(const Text<15>& short_name, Int table, Int row) {
    ECHO_VALUE value = name(short_name.view());
    Text<40> long_name;
    MATERIAL_ITEM_NAME(table, row, long_name);
    if (long_name.trimmed_length() >= LONG_NAME)
        value.text.put(short_name.trimmed_length() + 3, long_name.view());
    return value;
}

// The hole that the full face rules of PD 5500 and EN 13445 count with: 3 mm or 1/8 in. over the
// bolt.
ECHO_VALUE hole_diameter(const STATE& s) {
    const Real clearance = UNITS.diameter > 2.0f ? 0.11811024f : 0.125f;
    return with_unit(s.aNominal + clearance, Kind::diameter);
}

// A line of the echo: an item of the state in the unit of its kind, or what `value` gives.
struct ECHO_LINE {
    Int number;
    bool (*applies)(const STATE&);
    Real STATE::*item = nullptr;
    Kind kind = Kind::factor;
    ECHO_VALUE (*value)(const STATE&) = nullptr;

    constexpr ECHO_LINE(Int n, bool (*condition)(const STATE&), Real STATE::*i, Kind k)
        : number(n), applies(condition), item(i), kind(k) {}
    constexpr ECHO_LINE(Int n, bool (*condition)(const STATE&), ECHO_VALUE (*v)(const STATE&))
        : number(n), applies(condition), value(v) {}
};

constexpr ECHO_LINE ECHO_LINES[] = {
    {1010, always, [](const STATE& s) { return name(type_name(s)); }},
    {1030, always, &STATE::P, Kind::pressure},
    {1040, always,
     [](const STATE& s) -> ECHO_VALUE {
         return {as_temperature(s.Tdesign), UNITS.temperature_label.view()};
     }},
    {1110, always, &STATE::ci, Kind::thickness},
    {1112, always, &STATE::ce, Kind::thickness},
    {1115, always, [](const STATE& s) { return name(yes_or_no(use_corrosion(s))); }},
    {1050, not_integral_ring, &STATE::B, Kind::diameter},
    {1565, integral_ring, &STATE::B, Kind::diameter},
    {1566, ring_over_shell,
     [](const STATE& s) { return with_unit(s.B + 2.0f * s.tShell, Kind::diameter); }},
    {1060, not_design, &STATE::A, Kind::diameter},
    {1070, thickness_given, &STATE::t, Kind::thickness},
    {1080, hub_given, &STATE::go, Kind::thickness},
    {1090, hub_given, &STATE::g1, Kind::thickness},
    {1100, hub_given, &STATE::h, Kind::thickness},
    {1120, always,
     [](const STATE& s) { return material(s.flangeMaterial, FLANGE_MATERIALS, s.element); }},
    {1130, always, &STATE::Sfo, Kind::stress},
    {1140, always, &STATE::Sfa, Kind::stress},
    {1150, always,
     [](const STATE& s) { return material(s.boltMaterial, BOLT_MATERIALS, s.boltRow); }},
    {1160, always, &STATE::Sb, Kind::stress},
    {1170, always, &STATE::Sa, Kind::stress},
    {1180, ring, &STATE::tw, Kind::thickness},
    {1190, ring, [](const STATE& s) { return count(s.nSplits); }},
    {1240, lap_joint, &STATE::LjID, Kind::diameter},
    {1250, lap_joint, &STATE::LjOD, Kind::diameter},
    {1210, blind, &STATE::D, Kind::diameter},
    {1220, blind, &STATE::dS, Kind::diameter},
    {1225, blind, &STATE::L, Kind::diameter},
    {1200, channel_cover, &STATE::Ecover, Kind::stress},
    {1230, channel_cover, &STATE::dfAllow, Kind::thickness},
    {1260, not_design, &STATE::C, Kind::diameter},
    {1270, not_design, &STATE::aNominal, Kind::diameter},
    {1567, bolt_hole, hole_diameter},
    {1280, always, [](const STATE& s) { return name(name_of(THREADS, s.series)); }},
    {1480, root_area, &STATE::rootGiven, Kind::area},
    {1290, not_design, [](const STATE& s) { return count(s.nBolts); }},
    {1300, not_design, &STATE::Fod, Kind::diameter},
    {1310, not_design, &STATE::Fid, Kind::diameter},
    {1320, always, [](const STATE& s) { return name(name_of(SKETCHES, s.sketch)); }},
    {1330, always, &STATE::Go, Kind::diameter},
    {1340, always, &STATE::Gi, Kind::diameter},
    {1350, always, &STATE::m, Kind::factor},
    {1360, always, &STATE::y, Kind::stress},
    {1370, always, [](const STATE& s) { return name(name_of(COLUMNS, truncated(s.column))); }},
    {1380, gasket_thickness, &STATE::tg, Kind::thickness},
    {1390, nubbin, &STATE::w, Kind::thickness},
    {1400, partition, &STATE::lp, Kind::thickness},
    {1405, partition, &STATE::tp, Kind::thickness},
    {1490, partition, &STATE::mPart, Kind::factor},
    {1500, partition, &STATE::yPart, Kind::stress},
    {1410, mating_loads, &STATE::Wmo, Kind::force},
    {1420, mating_loads, &STATE::Wms, Kind::force},
    {1430, mating_loads, &STATE::Wmd, Kind::force},
    {1450, external_loads, &STATE::Faxial, Kind::force},
    {1470, external_loads, // held in foot-pounds
     [](const STATE& s) -> ECHO_VALUE {
         return {s.Mbend * UNITS.moment, UNITS.moment_label.view()};
     }},
    {1510, patterned_holes, [](const STATE& s) { return name(yes_or_no(s.patternedHoles == 1)); }},
    {1520, patterned_holes, &STATE::D1, Kind::diameter},
    {1530, patterned_holes, &STATE::D2, Kind::diameter},
    {1540, patterned_holes, &STATE::edge1, Kind::diameter},
    {1550, patterned_holes, &STATE::edge2, Kind::diameter},
    {1560, patterned_holes, &STATE::pitch, Kind::diameter},
};

// One line by its format: quoted text, Fw.d, Iw, nX, A or Aw; commas and brackets only part them.
void write_formatted(std::string_view format, const ECHO_VALUE& value) {
    LinePieces line;
    std::size_t at = 0;
    const auto digits = [&] {
        Int n = 0;
        for (; at < format.size() && format[at] >= '0' && format[at] <= '9'; ++at)
            n = 10 * n + (format[at] - '0');
        return n;
    };
    while (at < format.size()) {
        const Int repeat = digits();
        switch (format[at++]) {
        case '\'': {
            const std::size_t end = std::min(format.find('\'', at), format.size());
            line.text(format.substr(at, end - at));
            at = end + 1;
            break;
        }
        case 'F': {
            const Int width = digits();
            ++at; // the point
            line.fixed(value.number, width, digits());
            break;
        }
        case 'I':
            line.fixed(value.number, digits(), 0);
            break;
        case 'X':
            line.blanks(repeat);
            break;
        case 'A': {
            const Int width = digits();
            if (width > 0)
                line.padded(value.text.trimmed(), width);
            else
                line.text(value.text.trimmed());
            break;
        }
        default:
            break;
        }
    }
    line.write();
}

void write_line(const STATE& s, Int number, const ECHO_VALUE& value) {
    write_formatted(FLANGE_LABEL(s.code, number), value);
}

// The vessel's nodes, when the flange belongs to one.
void write_nodes(const STATE& s) {
    if (s.element1 <= 0 || s.element < 1 || s.element > ELEMENT_ROWS) return;
    Text<16> from = element_row(s.element).from_node, to = element_row(s.element).to_node;
    NUL_TO_BLANK(from.data(), from.width());
    NUL_TO_BLANK(to.data(), to.width());
    if (from.blank()) return;
    LinePieces()
        .text("Item: Node ")
        .text(left_justified(from.trimmed()))
        .text(" to ")
        .text(left_justified(to.trimmed()))
        .write();
}

void write_echo(const STATE& s) {
    if (!reporting()) return;
    write_line(s, 1000, name(s.description.view()));
    write_nodes(s);
    for (const ECHO_LINE& line : ECHO_LINES) {
        if (!line.applies(s)) continue;
        write_line(s, line.number, line.value ? line.value(s) : with_unit(s.*line.item, line.kind));
    }
}

// The warning of a bolt material outside its range of diameters is all that is wanted here.
void check_bolt_material(const STATE& s) {
    if (from_pd_5500(s.code) || s.series == SPECIAL_ROOT_AREA) return;
    Real minDia = 0.0f, maxDia = 0.0f;
    Int ok = 0;
    CHECK_BOLT_MATL_VS_DIAMETER(s.boltMaterial.view(), s.boltReference, minDia, maxDia, ok,
                                s.aNominal, 1, s.code, G_MATL_METRIC, G_FORCE_DIV1, G_D2_CLASS);
}

// Class and grade of a standard flange.
void write_class(const STATE& s) {
    if (s.standardFlange == 0 || HOST_RECORD.flange_class == "None") return;
    constexpr Int NAME_COLUMN = 49;
    LinePieces()
        .text("Flange Class")
        .to_column(NAME_COLUMN)
        .text(HOST_RECORD.flange_class.view())
        .write();
    LinePieces()
        .text("Flange Grade ")
        .to_column(NAME_COLUMN)
        .text(HOST_RECORD.flange_grade.view())
        .write();
}

bool rigidity_turned_off(const STATE& s) {
    return !a98_addenda() && s.rigidity != 1 && up_to_asme_viii(s.code) && s.type != BLIND &&
           s.Go < s.C;
}

} // namespace

void FLANGE_INPUT_REPORT(const FLANGE_STATE& s) {
    BLANK_LINE();
    write_echo(s);
    check_bolt_material(s);
    write_class(s);

    if (const FLANGE_NAME* entry = type_entry(s)) TEXT_LINE(entry->image);

    if (rigidity_turned_off(s)) {
        TEXT_LINE("Warning:", WARNING_STYLE);
        TEXT_LINE("The rigidity index calculation has been turned off and", WARNING_STYLE);
        TEXT_LINE("is required for ASME Code Stamped vessels (if Code Case 2547", WARNING_STYLE);
        TEXT_LINE("is not being cited). Please insure the check box is properly checked.",
                  WARNING_STYLE);
    }
    if (s.P < -0.001f) {
        BLANK_LINE();
        HEADING("Bolted Flange Calculation Results:");
        BLANK_LINE();
    }
}

} // namespace tarvane
