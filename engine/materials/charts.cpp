// External pressure charts (Section II Part D, Subpart 3): one row of numbers for each chart and
// temperature, and the modulus tables of the codes that do without the charts.
#include "frame/files/data_files.h"
#include "frame/numbers.h"
#include "frame/switches.h"
#include "host/file_units.h"
#include "materials/class_names.h"
#include "materials/modulus.h"
#include "materials/table_g.h"
#include "report/lines.h"

#include <array>
#include <cstring>

namespace tarvane {

namespace {

// ---- modulus tables, MPa at degrees Celsius ------------------------------------------------------

constexpr std::size_t POINTS = 17;
constexpr Real MPA_TO_PSI = 145.03264f;

using Table = std::array<Real, POINTS>;

constexpr Table AXIS = {0.0f,   20.0f,  100.0f, 150.0f, 200.0f, 250.0f, 300.0f, 350.0f, 400.0f,
                        450.0f, 500.0f, 550.0f, 600.0f, 650.0f, 700.0f, 750.0f, 800.0f};
constexpr Table AXIS_095 = {0.0f,   20.0f,  50.0f,  100.0f, 150.0f, 200.0f, 250.0f, 300.0f, 400.0f,
                            450.0f, 500.0f, 550.0f, 600.0f, 650.0f, 700.0f, 750.0f, 800.0f};
constexpr Table CLASS_140 = {210000.0f, 209000.0f, 205000.0f, 202000.0f, 199000.0f, 195000.0f,
                             191000.0f, 187000.0f, 181000.0f, 178000.0f, 174000.0f, 168000.0f,
                             162000.0f, 162000.0f, 162000.0f, 162000.0f, 162000.0f};
constexpr Table CLASS_110 = {203000.0f, 200000.0f, 194000.0f, 190000.0f, 185000.0f, 181000.0f,
                             176000.0f, 172000.0f, 168000.0f, 164000.0f, 159000.0f, 155000.0f,
                             151000.0f, 147000.0f, 142000.0f, 138000.0f, 134000.0f};
constexpr Table CLASS_095 = {107900.0f, 106900.0f, 105500.0f, 103100.0f, 100600.0f, 96900.0f,
                             92600.0f,  88200.0f,  88200.0f,  88200.0f,  88200.0f,  88200.0f,
                             88200.0f,  88200.0f,  88200.0f,  88200.0f,  88200.0f};

// Shared by the three classes: class 0.95 leaves its own here for the next call of the others.
Table working_axis = AXIS;

// Modulus on the working axis; C is below the axis' last temperature.
Real on_working_axis(const Table& E, Real C) {
    const Table& x = working_axis;
    Real result = 0.0f;
    for (std::size_t i = 0; i < POINTS; ++i) {
        if (x[i] == C) result = E[i];
        if (i + 1 < POINTS && x[i] < C && C < x[i + 1])
            return LINEAR_INTERP(x[i], C, x[i + 1], E[i], E[i + 1]);
    }
    return result;
}

// ---- chart file ----------------------------------------------------------------------------------

constexpr Int LINE_WIDTH = 115;
constexpr Int FILE_LINES = 650;
constexpr Int ROW_NUMBERS = 10;
constexpr Int SECTION_ROWS = 10;

char chart_lines[FILE_LINES][LINE_WIDTH];
Int chart_line_count = 0;
bool charts_loaded = false;
bool charts_read = false; // also when that did not succeed

CHART_CURVE rows[SECTION_ROWS]; // of the current section, each under its own temperature

constexpr bool holds(std::string_view text, std::string_view part) {
    return text.find(part) != std::string_view::npos;
}

// Reads the file once. Without an "[END]" line the lines that it has are used for this lookup, and the
// next one reads it again.
void LOAD_CHARTS() {
    if (charts_loaded) return;
    chart_line_count = 0;
    charts_read = true;
    Text<260> path;
    Int path_len = 0, unit = 0;
    SYSTEM_FILE_PATH(path, path_len, "ExtChartData.txt");
    GETNEXTUNIT(unit);
    if (!open_unit_for_reading(unit, path.columns(1, path_len))) return;
    LineReader file(unit);
    while (!charts_loaded && chart_line_count < FILE_LINES &&
           file.next(chart_lines[chart_line_count], LINE_WIDTH)) {
        charts_loaded = holds({chart_lines[chart_line_count], LINE_WIDTH}, "[END]");
        ++chart_line_count;
    }
    close_unit(unit);
}

std::string_view chart_line(Int index) { return left_justified({chart_lines[index], LINE_WIDTH}); }

bool read_row(std::string_view line, CHART_CURVE& row) {
    Real x[ROW_NUMBERS] = {}; // the second number has no use
    if (PARSE_REALS(line, x, ROW_NUMBERS) < ROW_NUMBERS) return false;
    row = {x[0], x[2], x[3], x[4], x[5], x[6], x[7], x[8], x[9]};
    return true;
}

CHART_CURVE between(const CHART_CURVE& a, const CHART_CURVE& b, Real T) {
    const Real r = (T - a.t_used) / (b.t_used - a.t_used);
    const auto at = [r](Real from, Real to) { return from + r * (to - from); };
    return {T,
            at(a.E, b.E),
            at(a.Aelastic, b.Aelastic),
            at(a.second, b.second),
            at(a.Amax, b.Amax),
            at(a.Bmax, b.Bmax),
            at(a.c0, b.c0),
            at(a.c1, b.c1),
            at(a.c2, b.c2)};
}

// What a section gave.
enum class Section { curve, nothing, to_be_continued };

// The rows of a section, from line `index` on. The walk goes on after ten rows without one for T. A chart
// whose rows end below T gives its last row, and a row that can't be read ends the walk.
Section READ_SECTION(Int& index, Real T, CHART_CURVE& curve) {
    Int count = 0;
    while (index < chart_line_count && count < SECTION_ROWS) {
        const std::string_view line = chart_line(index++);
        if (line.starts_with(';')) continue;
        if (trimmed(line).empty()) {
            if (count == 0) continue;
            curve = rows[count - 1];
            return Section::curve;
        }
        CHART_CURVE& row = rows[count];
        if (!read_row(line, row)) return Section::nothing;
        ++count;
        if (T <= row.t_used) {
            curve = count == 1 ? row : between(rows[count - 2], row, T);
            curve.t_used = T;
            return Section::curve;
        }
    }
    return Section::to_be_continued;
}

// The walk through the file to the section of a chart; false when it found no curve. A chart that the file
// does not have is replaced by CS-2.
bool FIND_CHART(Text<12> work, Real T, CHART_CURVE& curve) {
    Int index = 0;
    while (index < chart_line_count) {
        const std::string_view line = chart_line(index++);
        if (line.starts_with(';')) continue;
        const std::size_t open = line.find('[');
        if (open == std::string_view::npos) continue;
        const std::size_t close = line.find(']', open);
        if (close == std::string_view::npos) continue;
        const std::string_view name = line.substr(open + 1, close - open - 1);
        if (equal_padded(name, "END")) {
            if (work == "CS-2") return false;
            work = "CS-2";
            index = 0;
        } else if (work == name) {
            const Section section = READ_SECTION(index, T, curve);
            if (section == Section::to_be_continued) continue;
            if (section == Section::curve) CHART_TAKEN = work.view();
            return section == Section::curve;
        }
    }
    return false;
}

void WARN_OF_BLANK_NAME() {
    constexpr Style MARKS{0, 0, 0, 0, 1, 1};
    constexpr std::string_view RULE = "----------------------------------------------------------";
    static_assert(RULE.size() == 58);
    BLANK_LINE();
    TEXT_LINE(RULE);
    TEXT_LINE("An Invalid External Pressure Chart was Encountered! Please", MARKS);
    TEXT_LINE("check all of the Materials used in this vessel.", MARKS);
    TEXT_LINE("Chart CS-2 will be used! ", MARKS);
    TEXT_LINE(RULE.substr(1));
    BLANK_LINE();
}

} // namespace

Text<8> CHART_TAKEN;

void SET_CHART(std::string_view name) { CHART_NAME = name; }

Real CHART_CLASS(std::string_view name) {
    if (equal_padded(name, "HA-3")) return 1.1f;
    if (equal_padded(name, "NFT-1")) return 0.95f;
    return 1.4f;
}

void MODULUS(Real chart_class, Real& result, Real temperature) {
    const Int k = truncated(chart_class * 100.0f);
    if (k != 140 && k != 110 && k != 95) {
        result = 0.0f;
        return;
    }
    const Table& E = k == 140 ? CLASS_140 : k == 110 ? CLASS_110 : CLASS_095;
    if (k == 95) working_axis = AXIS_095;
    // Above 300 degrees the values of class 0.95 are all the same.
    const std::size_t last = k == 95 ? 7 : POINTS - 1;
    const Real C_last = k == 95 ? 300.0f : 800.0f;

    // Whole degrees Celsius, halves away from zero.
    const Real C = static_cast<Real>(truncated(std::round((temperature - 32.0f) / 1.8f)));
    if (C <= 0.0f)
        result = E[0];
    else if (C >= C_last)
        result = E[last];
    else
        result = on_working_axis(E, C);
    result = result * MPA_TO_PSI;
}

void READ_CHART(const char* name, Int name_len, Real temperature, Real& t_used, Real& E,
                Real& Aelastic, Real& second, Real& Amax, Real& Bmax, Real& c0, Real& c1, Real& c2,
                Real yield) {
    CHART_TAKEN.clear();
    Text<12> given;
    for (Int column = 1; column <= min(name_len, 8); ++column)
        given(column) = name[column - 1];

    if (from_pd_5500(setup_design_code())) {
        Real psi = 0.0f;
        MODULUS(CHART_CLASS(given.view()), psi, temperature);
        E = psi / 1.0E+6f;
        return;
    }

    // Charts that depend on the yield stress hold their rows under temperatures just above their
    // limit: the yield in ksi counts hundredths of a degree.
    const bool by_yield_CS_3 = holds(given.view(), "CS-3");
    const bool by_yield_NFA_11 = given.columns(1, 6) == "NFA-11";
    Text<12> work = given;
    Real T = temperature;
    if (by_yield_CS_3) {
        if (temperature > 300.0f)
            work = "CS-2";
        else if (truncated(yield) < 60000)
            T = max(yield * 1.0E-5f + 300.0f, 300.4f);
        else
            T = 300.6f;
    }
    if (by_yield_NFA_11) {
        if (truncated(yield) < 18000)
            T = max(yield * 1.0E-5f + 150.0f, 150.14f);
        else
            T = 150.18f;
    }
    if (holds(given.view(), "HT-2") && T > 100.0f) work = "CS-2";
    if (work.blank()) {
        WARN_OF_BLANK_NAME();
        work = "CS-2";
    }

    LOAD_CHARTS();
    for (CHART_CURVE& row : rows)
        row = {};
    CHART_CURVE curve;
    if (FIND_CHART(work, T, curve)) {
        t_used = curve.t_used;
        E = curve.E;
        Aelastic = curve.Aelastic;
        second = curve.second;
        Amax = curve.Amax;
        Bmax = curve.Bmax;
        c0 = curve.c0;
        c1 = curve.c1;
        c2 = curve.c2;
    }

    // The caller compares t_used with its own temperature.
    if (by_yield_CS_3 && temperature <= 300.0f) t_used = temperature;
    if (holds(given.view(), "NFA-11")) t_used = min(temperature, 150.0f);
}

void READ_CHART(std::string_view name, Real temperature, CHART_CURVE& curve, Real yield) {
    READ_CHART(name.data(), static_cast<Int>(name.size()), temperature, curve.t_used, curve.E,
               curve.Aelastic, curve.second, curve.Amax, curve.Bmax, curve.c0, curve.c1, curve.c2,
               yield);
}

void GET_YIELD_STRESS_FROM_CHART(std::string_view name, Real temperature, Real& result) {
    result = 0.0f;
    Text<12> chart(name);
    if (chart == "CS-3" && temperature <= 300.0f) return;
    if (chart == "NFA-11" && temperature <= 150.0f) return;
    CHART_CURVE curve;
    READ_CHART(chart.view(), temperature, curve, 0.0f);
    result = 2.0f * curve.Bmax;
}

void RESET_MATERIALS() {
    working_axis = AXIS;
    if (charts_read) std::memset(chart_lines, 0, sizeof chart_lines);
    charts_read = false;
    for (CHART_CURVE& row : rows)
        row = {};
    charts_loaded = false;
    chart_line_count = 0;
    CHART_TAKEN.clear();
    EMOD_STATUS = 0;
    MODULUS_CAME = OF_TABLE;
    COE_STATUS = 0;
    PROPERTIES = {};
    RESET_MODULUS_TABLE();
    RESET_TABLE_G();
    RESET_MATERIAL_CLASS_NAMES();
}

} // namespace tarvane
