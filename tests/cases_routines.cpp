#include "cases_routines.h"

#include "catalogue/data_folder.h"
#include "components/flange_results.h"
#include "document/report_view.h"
#include "input/input_file.h"
#include "tarvane/tarvane.h"

#include "bolting/bolt_spacing.h"
#include "bolting/bolt_tables.h"
#include "flange/allowables.h"
#include "flange/attached_shell.h"
#include "flange/blind.h"
#include "flange/bolt_loads.h"
#include "flange/covers.h"
#include "flange/design.h"
#include "flange/equivalent_pressure.h"
#include "flange/gasket.h"
#include "flange/geometry.h"
#include "flange/hub.h"
#include "flange/moment_arms.h"
#include "flange/moments.h"
#include "flange/rating.h"
#include "flange/rigidity.h"
#include "flange/shape_factors.h"
#include "flange/stresses.h"
#include "frame/numbers.h"
#include "frame/units.h"
#include "materials/modulus.h"
#include "openings/flat_head_openings.h"
#include "report/channel.h"
#include "report/renderer.h"

#include <algorithm>

namespace cases {

using namespace tarvane;

// ---- values ------------------------------------------------------------------------------------------

const Value& Values::find(const std::string& name) const {
    const auto at = given.find(name);
    if (at == given.end()) throw CaseError("the input " + name + " is missing");
    return at->second;
}

float Values::real(const std::string& name) const {
    const auto* number = std::get_if<double>(&find(name));
    if (number == nullptr) throw CaseError("the input " + name + " is a number");
    return static_cast<float>(*number);
}

std::string Values::text(const std::string& name) const {
    const auto* text = std::get_if<std::string>(&find(name));
    if (text == nullptr) throw CaseError("the input " + name + " is a text");
    return *text;
}

namespace {

// ---- routines ----------------------------------------------------------------------------------------

template <void (*stage)(FLANGE_STATE&)>
void run_stage(Values&) {
    stage(FLANGE);
}
template <void (*stage)(const FLANGE_STATE&)>
void run_stage(Values&) {
    stage(FLANGE);
}

template <std::size_t N>
Text<N> buffer(const Values& v, const char* name) {
    return Text<N>(std::string_view(v.text(name)));
}

template <std::size_t N>
std::string cut(const Text<N>& text) {
    return std::string(text.trimmed());
}

template <void (*edit)(char*, Int)>
void edit_text(Values& v) {
    Text<120> text = buffer<120>(v, "text");
    const Int length = v.has("length") ? v.whole("length") : 120;
    edit(text.data(), length);
    v.set("text", cut(text));
}

void fill_template(Values& v) {
    Text<120> text = buffer<120>(v, "template");
    Real values[6] = {};
    for (int i = 0; i < 6; ++i) {
        const std::string name = "V" + std::to_string(i + 1);
        if (v.has(name)) values[i] = v.real(name);
    }
    FILL_TEMPLATE(text, values[0], values[1], values[2], values[3], values[4], values[5]);
    v.set("text", cut(text));
}

void fit_to_line(Values& v) {
    Text<120> source = buffer<120>(v, "source");
    Text<100> target;
    FIT_TO_LINE(source.data(), 120, target.data(), 100, v.whole("mode"));
    v.set("target", cut(target));
}

void bolt_correction_factor(Values& v) {
    Real Deltab = 0, cfDen = 0;
    const Real CF =
        BOLT_CORRECTION_FACTOR(v.whole("form"), v.real("C"), v.whole("n"), v.real("a"), v.real("t"),
                               v.real("cTotal"), v.real("m"), Deltab, cfDen);
    v.set("CF", static_cast<double>(CF));
    v.set("Deltab", static_cast<double>(Deltab));
    v.set("cfDen", static_cast<double>(cfDen));
}

void attached_shell_thickness(Values& v) {
    Real mawp = 0;
    const Real t = ATTACHED_SHELL_THICKNESS(v.whole("code"), v.real("P"), v.real("D"), v.real("ca"),
                                            v.real("ce"), v.real("S"), v.real("E"),
                                            v.whole("external"), v.real("t"), mawp);
    v.set("thickness", static_cast<double>(t));
    v.set("mawp", static_cast<double>(mawp));
}

void equivalent_pressure(Values& v) {
    Real Peq = 0;
    EQUIVALENT_PRESSURE(v.real("F"), v.real("M"), v.real("G"), PI, v.real("P"), Peq);
    v.set("Peq", static_cast<double>(Peq));
}

void blind_thickness(Values& v) {
    BLIND_CALL call{v.real("d"), v.real("Zf"), v.real("P"),     v.real("S"),
                    v.real("W"), v.real("ca"), v.real("tGiven")};
    BLIND_THICKNESS(FLANGE, call);
    v.set("tOut", static_cast<double>(call.tOut));
    v.set("tEdge", static_cast<double>(call.tEdge));
    v.set("pOut", static_cast<double>(call.pOut));
}

void gasket_width(Values& v) {
    GASKET_CALL call{v.whole("sketch"),
                     v.real("column"),
                     v.has("N") ? v.real("N") : -1.0f,
                     v.real("m"),
                     v.real("y"),
                     v.has("partition") && v.whole("partition") != 0,
                     0,
                     0,
                     0,
                     0};
    GASKET_WIDTH(FLANGE, call);
    v.set("b", static_cast<double>(call.b));
    v.set("G", static_cast<double>(call.G));
    v.set("b2", static_cast<double>(call.b2));
    v.set("bPrime", static_cast<double>(call.bPrime));
}

void patterned_openings(Values& v) {
    OPENINGS_CALL call{v.whole("kind"),
                       v.real("headDia"),
                       v.real("d1"),
                       v.real("d2"),
                       v.real("edge1"),
                       v.real("edge2"),
                       v.real("pitch"),
                       v.has("material") ? v.whole("material") : 10,
                       v.has("Cin") ? v.real("Cin") : 0.0f};
    PATTERNED_OPENINGS(call);
    v.set("coverFactor", static_cast<double>(call.coverFactor));
    v.set("coverFlag", static_cast<double>(call.coverFlag));
    v.set("Cout", static_cast<double>(call.Cout));
}

// Of the hub that the case named last.
HUB_SOLUTION hub_solution;
void hub_coefficients(Values&) { HUB_COEFFICIENTS(FLANGE, hub_solution); }
void figure_factors(Values&) { FIGURE_FACTORS(FLANGE, hub_solution); }

void rigidity_index(Values& v) {
    RIGIDITY_CALL call{FLANGE.Mop, FLANGE.Matm, FLANGE.V, FLANGE.lambda,
                       FLANGE.ho,  FLANGE.K,    FLANGE.t, FLANGE.CF};
    RIGIDITY_INDEX(FLANGE, call, v.has("rigidityPrint") ? v.whole("rigidityPrint") : 0);
    v.set("Jmax", static_cast<double>(call.Jmax));
}

void flange_weight(Values& v) {
    Real finished = 0, forging = 0;
    FLANGE_WEIGHT(v.real("bore"), v.real("A"), v.real("t"), v.real("g1"), PI, v.real("go"),
                  v.real("h"), finished, forging, v.real("density"));
    v.set("finished", static_cast<double>(finished));
    v.set("forging", static_cast<double>(forging));
}

void elastic_modulus(Values& v) {
    if (v.has("chart")) SET_CHART(v.text("chart"));
    v.set("modulus", static_cast<double>(
                         ASMEMOD(v.real("temperature"), v.whole("reference"), v.whole("code"))));
}

void modulus(Values& v) {
    Real result = 0;
    MODULUS(v.real("class"), result, v.real("temperature"));
    v.set("result", static_cast<double>(result));
}

void getboltdata(Values& v) {
    Real row[BOLT_COLUMNS] = {};
    Int found = 0;
    GETBOLTDATA(v.real("dia"), v.whole("series"), row, found);
    v.set("found", static_cast<double>(found));
    for (int i = 0; i < BOLT_COLUMNS; ++i)
        v.set("row(" + std::to_string(i + 1) + ")", static_cast<double>(row[i]));
}

template <Real (*interpolate)(Real, Real, Real, Real, Real)>
void interpolation(Values& v) {
    v.set("y", static_cast<double>(interpolate(v.real("x1"), v.real("x"), v.real("x2"),
                                               v.real("y1"), v.real("y2"))));
}

void parse_real(Values& v) {
    Real value = 0;
    Int whole = 0;
    const bool read = PARSE_REAL(v.text("text"), value, whole);
    v.set("read", read ? 1.0 : 0.0);
    v.set("value", static_cast<double>(value));
    v.set("whole", static_cast<double>(whole));
}

#define STAGE(name)                                                                                \
    { #name, {}, run_stage < name> }
const Routine ROUTINES[] = {
    STAGE(FLANGE_ALLOWABLES),
    STAGE(STRESS_SUMMARY),
    STAGE(CORRODED_DIMENSIONS),
    STAGE(MIN_GASKET_WIDTH),
    STAGE(BOLT_LOADS),
    STAGE(FLANGE_DESIGN_BOLT_LOAD),
    STAGE(FULL_FACE_ARMS),
    STAGE(MOMENT_ARMS),
    STAGE(MOMENT_ARMS_FULL_FACE),
    STAGE(FLANGE_MOMENTS),
    STAGE(FLANGE_HUB_RATIOS),
    {"HUB_COEFFICIENTS", {}, hub_coefficients},
    {"FIGURE_FACTORS", {}, figure_factors},
    STAGE(TABLE_4164_FACTORS),
    STAGE(FLANGE_FACTORS),
    STAGE(REVERSE_FLANGE_FACTORS),
    STAGE(HUB_FACTORS),
    STAGE(REVERSE_HUB_FACTORS),
    STAGE(STRESS_FACTORS),
    STAGE(FLANGE_STRESSES),
    STAGE(FLANGE_INERTIA),
    STAGE(FLANGE_MAWP),
    STAGE(LAP_JOINT_THICKNESS),
    STAGE(TEMA_COVER_CHECK),
    {"FILL_TEMPLATE", {"template", "V1", "V2", "V3", "V4", "V5", "V6"}, fill_template},
    {"FIT_TO_LINE", {"source", "mode"}, fit_to_line},
    {"TIDY_NUMBERS", {"text", "length"}, edit_text<TIDY_NUMBERS>},
    {"CLEAN_TEMPLATE", {"text", "length"}, edit_text<CLEAN_TEMPLATE>},
    {"REPLACE_DECIMALS_WITH_COMMAS",
     {"text", "length"},
     edit_text<tarvane::REPLACE_DECIMALS_WITH_COMMAS>},
    {"EXPAND_SPECIAL_CHARS", {"text", "length"}, edit_text<EXPAND_SPECIAL_CHARS>},
    {"BOLT_CORRECTION_FACTOR", {"form", "C", "n", "a", "t", "cTotal", "m"}, bolt_correction_factor},
    {"ATTACHED_SHELL_THICKNESS",
     {"code", "P", "D", "ca", "ce", "S", "E", "external", "t"},
     attached_shell_thickness},
    {"EQUIVALENT_PRESSURE", {"F", "M", "G", "P"}, equivalent_pressure},
    {"BLIND_THICKNESS", {"d", "Zf", "P", "S", "W", "ca", "tGiven"}, blind_thickness},
    {"GASKET_WIDTH", {"sketch", "column", "N", "m", "y", "partition"}, gasket_width},
    {"MIN_GASKET_WIDTH_TABLE",
     {"B"},
     [](Values& v) { v.set("width", static_cast<double>(MIN_GASKET_WIDTH_TABLE(v.real("B")))); }},
    {"PATTERNED_OPENINGS",
     {"kind", "headDia", "d1", "d2", "edge1", "edge2", "pitch", "material", "Cin"},
     patterned_openings},
    {"SHLINT",
     {"Element",   "P",           "Sa",      "S",       "E",     "D",      "t",
      "c",         "k",           "L",       "r",       "alpha", "C",      "D2",
      "Material",  "Temp",        "Service", "Outside", "Sy",    "SyCold", "Ut",
      "Skip14f",   "d1",          "d2",      "edge1",   "edge2", "pitch",  "openingMaterial",
      "CorrodedK", "MaterialName"},
     run_shlint},
    {"RIGIDITY_INDEX", {"rigidityPrint"}, rigidity_index},
    {"FLANGE_WEIGHT", {"bore", "A", "t", "g1", "go", "h", "density"}, flange_weight},
    {"ROUND_TO_FRACTION",
     {"x", "n"},
     [](Values& v) {
         v.set("x", static_cast<double>(ROUND_TO_FRACTION(v.real("x"), v.whole("n"))));
     }},
    {"ROUND_UP_DECIMALS",
     {"x", "k"},
     [](Values& v) {
         v.set("x", static_cast<double>(ROUND_UP_DECIMALS(v.real("x"), v.whole("k"))));
     }},
    {"ASMEMOD", {"temperature", "reference", "code", "chart"}, elastic_modulus},
    {"MODULUS", {"class", "temperature"}, modulus},
    {"GETBOLTDATA", {"dia", "series"}, getboltdata},
    {"LINEAR_INTERP", {"x1", "x", "x2", "y1", "y2"}, interpolation<LINEAR_INTERP>},
    {"LOG_INTERP", {"x1", "x", "x2", "y1", "y2"}, interpolation<LOG_INTERP>},
    {"PARSE_REAL", {"text"}, parse_real},
};
#undef STAGE

} // namespace

const Routine* find_routine(std::string_view name) { return find_in(ROUTINES, name); }

// ---- report ------------------------------------------------------------------------------------------

namespace {

void set_units(const vessel::UnitSystem& units) {
    std::string labels;
    for (std::string label : units.labels) {
        label.resize(10, ' ');
        labels += label;
    }
    ::SET_UNITS(units.factors.data(), labels.data(), static_cast<Int>(labels.size()));
}

} // namespace

void prepare(bool si) {
    ::RESET_ENGINE();
    set_units(si ? vessel::si_units() : vessel::us_units());
    METRICCONSTANTS_mp_G_NMETRIC_CONSTANT = si ? 1 : 0;
    tarvane::SET_METRIC_CONSTANTS();
    OPEN_LINE_STORE();
    IWRITE = IWRTFL = 1;
    IOUT = -1;
}

std::vector<Line> stored_lines() {
    std::vector<Line> lines;
    std::int32_t count = 0;
    ::LINE_COUNT(&count);
    const char* store = GETLINESCOMFLG();
    for (std::int32_t i = 0; i < count; ++i, store += TARVANE_STORE_WIDTH) {
        const std::string record(store, TARVANE_STORE_WIDTH);
        const std::size_t end = std::min(record.find('\0'), record.size());
        if (end < 16) throw CaseError("a record of the line store has no end");
        Line line;
        line.text = record.substr(4, end - 16);
        line.text.erase(line.text.find_last_not_of(' ') + 1);
        for (std::size_t k = 0; k < 6; ++k)
            line.marks[k] = std::atoi(record.substr(end - 12 + 2 * k, 2).c_str());
        lines.push_back(std::move(line));
    }
    return lines;
}

// ---- the host ----------------------------------------------------------------------------------------

void run_host(const std::string& toml, Values& values, std::vector<Line>& lines) {
    const vessel::ReadResult input = app::read_input(toml);
    if (!input.faults.empty())
        throw CaseError(input.faults.front().key + ": " + input.faults.front().message);
    const vessel::FlangeInput& flange = *vessel::flanges_of(input.request).at(0);
    const vessel::FlangeOutcome outcome = vessel::run_flange(flange, input.request);
    for (const vessel::ReportLine& line : vessel::report_lines(outcome.report))
        lines.push_back({line.text, line.marks});
    const auto status = flange.judge(outcome, input.request.units).status;
    values.set("mawp", static_cast<double>(outcome.mawp));
    values.set("map_nc", static_cast<double>(outcome.map_nc));
    values.set("t_req", static_cast<double>(outcome.t_req));
    values.set("t_req_new", static_cast<double>(outcome.t_req_new));
    values.set("t_req_new_cold", static_cast<double>(outcome.t_req_new_cold));
    values.set("status", static_cast<double>(status));
    values.set("stopped", outcome.stopped ? 1.0 : 0.0);
    values.set("fatal_code", static_cast<double>(outcome.fatal_code));
    for (int k = 1; k <= TARVANE_RECORD_ELEMENTS; ++k)
        values.set("record(" + std::to_string(k) + ")", static_cast<double>(outcome.result(k)));
    for (std::size_t k = 0; k < outcome.messages.size(); ++k)
        values.set("message(" + std::to_string(k + 1) + ")", outcome.messages[k]);
}

void use_data_folder(const std::string& folder) { vessel::set_data_folder(folder); }

} // namespace cases
