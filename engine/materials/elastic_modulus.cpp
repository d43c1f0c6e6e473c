// Modulus of elasticity and coefficient of expansion by the reference tables of the code. A lookup
// walks the lines of the file as they are at that time; lines that were parsed before are walked in
// place of a file that has not changed since.
#include "frame/files/data_files.h"
#include "frame/files/kept_files.h"
#include "frame/numbers.h"
#include "frame/switches.h"
#include "host/file_units.h"
#include "materials/modulus.h"
#include "report/lines.h"

#include <cstring>
#include <limits>

namespace tarvane {

Int EMOD_STATUS = 0;
Int COE_STATUS = 0;
MODULUS_SOURCE MODULUS_CAME = OF_TABLE;
PROPERTY_LOOKUP PROPERTIES;

namespace {

enum Status : Int { FINE = 0, FAILED = 1, FROM_CHART = 2, BEYOND_CHART = 3 };

constexpr Int SKIPPED = -1;           // a reference that skips its half
constexpr Int REFERENCE_OF_STEEL = 1; // reference number used for a bad one
constexpr Int LAST_REFERENCE = 230;   // highest reference of the modulus tables
constexpr Int LINE_WIDTH = 425;
constexpr std::string_view RULE =
    "--------------------------------------------------------------------";
static_assert(RULE.size() == 68);

constexpr bool is_comment(std::string_view line) {
    return trimmed(line).empty() || line.find(';') != std::string_view::npos;
}

constexpr bool holds(std::string_view text, std::string_view part) {
    return text.find(part) != std::string_view::npos;
}

// Columns first to last of a line of the file, one-based.
std::string_view columns(std::string_view line, std::size_t first, std::size_t last) {
    return line.substr(first - 1, last - first + 1);
}

// ---- lines of the table --------------------------------------------------------------------------

enum class LineKind : char { unreadable, modulus_mark, coefficient_mark, axis, row };

// A line that is no comment.
struct TABLE_LINE {
    LineKind kind = LineKind::unreadable;
    bool coefficients = false; // has the mark of that section, whatever else it has
    Real numbers[2] = {};      // reference and extra of a row
};

TABLE_LINE classified(std::string_view line) {
    TABLE_LINE result;
    result.coefficients = holds(line, "[CoE]");
    if (holds(line, "[Emod]"))
        result.kind = LineKind::modulus_mark;
    else if (result.coefficients)
        result.kind = LineKind::coefficient_mark;
    else if (holds(line, "[Temp]"))
        result.kind = LineKind::axis;
    else if (PARSE_REALS(columns(line, 1, 19), result.numbers, 2) == 2)
        result.kind = LineKind::row;
    return result;
}

// Where the 36 numbers of a line begin.
constexpr std::size_t first_column(LineKind kind) { return kind == LineKind::axis ? 10 : 64; }

// A line with its texts and numbers. An item left out stays as it was in the variable that is read,
// so it is no number here.
struct PARSED_LINE {
    TABLE_LINE line;
    char identifier[7], description[36];
    Int count = 0; // of the numbers that could be read
    Real values[PROPERTY_POINTS];
};

constexpr Int KEPT_LINES = 600;
PARSED_LINE kept_lines[KEPT_LINES];
Int kept_count = 0;
KEPT_FILE kept_file;
bool kept_whole = false; // the file is no longer than the table, and was read to its end

// The lines of the file that are no comments, one after the other: read now, or as kept.
class TableLines {
  public:
    TableLines(Int unit, bool in_memory) : kept(in_memory), file(unit) {}

    // False at the end of the file, or when a line can't be read.
    bool next() {
        if (kept) {
            if (position == kept_count) return false;
            line = kept_lines[position++].line;
            return true;
        }
        do
            if (!file.next(buffer, LINE_WIDTH)) return false;
        while (is_comment(text()));
        line = classified(text());
        return true;
    }
    void rewind() {
        position = 0;
        if (!kept) file.rewind();
    }
    bool broken() const { return file.broken(); }

    std::string_view identifier() const {
        if (kept) return {parsed().identifier, sizeof parsed().identifier};
        return columns(text(), 20, 26);
    }
    std::string_view description() const {
        if (kept) return {parsed().description, sizeof parsed().description};
        return columns(text(), 28, 63);
    }
    // How many of the 36 numbers could be read.
    Int read_numbers(Real* into) const {
        if (!kept) {
            const std::size_t first = first_column(line.kind);
            return PARSE_REALS(columns(text(), first, LINE_WIDTH), into, PROPERTY_POINTS);
        }
        for (Int i = 0; i < PROPERTY_POINTS; ++i)
            if (!std::isnan(parsed().values[i])) into[i] = parsed().values[i];
        return parsed().count;
    }

    TABLE_LINE line;

  private:
    std::string_view text() const { return {buffer, LINE_WIDTH}; }
    const PARSED_LINE& parsed() const { return kept_lines[position - 1]; }

    bool kept;
    Int position = 0; // of the next line that is kept
    LineReader file;
    char buffer[LINE_WIDTH];
};

void forget_lines() {
    const auto used = static_cast<std::size_t>(kept_count);
    std::memset(static_cast<void*>(kept_lines), 0, used * sizeof kept_lines[0]);
    kept_count = 0;
    kept_file = KEPT_FILE{};
    kept_whole = false;
}

// Parses the whole file of an open unit, for this lookup and later ones. False when the table
// can't hold it, or it changes meanwhile; the unit is then at its start again.
bool KEEP_LINES(Int unit, std::string_view path, const FILE_IDENTITY& identity) {
    TableLines lines(unit, false);
    forget_lines();
    kept_whole = true;
    while (lines.next()) {
        if (kept_count == KEPT_LINES) {
            kept_whole = false;
            break;
        }
        PARSED_LINE& parsed = kept_lines[kept_count++];
        parsed.line = lines.line;
        lines.identifier().copy(parsed.identifier, sizeof parsed.identifier);
        lines.description().copy(parsed.description, sizeof parsed.description);
        for (Real& value : parsed.values)
            value = std::numeric_limits<Real>::quiet_NaN();
        parsed.count = lines.read_numbers(parsed.values);
    }
    if (lines.broken()) kept_whole = false;
    if (kept_file.keep(unit, path, identity) && kept_whole) return true;
    lines.rewind();
    return false;
}

// ---- the walk to a row -----------------------------------------------------------------------------

// Where the row of one property goes, and what it must match.
struct ROW_SEARCH {
    Int reference;
    bool last_may_be_short; // the last temperature of the axis is its last one above 1.0
    Real& held;             // the temperature, held to the ends of the axis
    Real* values;
    Text<7>& identifier;
    Text<36>& description;
    Real* extra;
};

// An axis holds the temperature to its ends. The coefficient table is held to its 36th temperature
// only, so that a short axis does not hold it at all.
void hold_to_axis(const Real* axis, bool last_may_be_short, Real& held) {
    if (held < axis[0]) held = axis[0];
    Int last = PROPERTY_POINTS - 1;
    if (last_may_be_short)
        while (last > 0 && !(axis[last] > 1.0f))
            --last;
    if (axis[last] > 1.0f && held > axis[last]) held = axis[last];
}

// Goes on to the row of the reference. False when the section or the file ends before it, or a
// line can't be read.
bool find_row(TableLines& lines, ROW_SEARCH search) {
    while (lines.next()) {
        const TABLE_LINE& line = lines.line;
        switch (line.kind) {
        case LineKind::modulus_mark:
            continue;
        case LineKind::coefficient_mark:
        case LineKind::unreadable:
            return false;
        case LineKind::axis:
            if (lines.read_numbers(PROPERTIES.axis) < PROPERTY_POINTS) return false;
            hold_to_axis(PROPERTIES.axis, search.last_may_be_short, search.held);
            continue;
        case LineKind::row:
            break;
        }
        if (search.extra != nullptr) *search.extra = line.numbers[1];
        if (truncated(line.numbers[0]) != search.reference) continue;
        search.identifier = lines.identifier();
        search.description = lines.description();
        return lines.read_numbers(search.values) == PROPERTY_POINTS;
    }
    return false;
}

// The value at a temperature. A temperature on the axis takes its value, but the walk goes on, so that
// an interval found later decides; an interval without an upper value gives 0.
Real value_at(const Real* axis, const Real* values, Real T, Real tolerance, bool lower_end_counts) {
    Real result = 0.0f;
    for (Int i = 0; i + 1 < PROPERTY_POINTS; ++i) {
        if (std::abs(T - axis[i]) < tolerance) result = values[i];
        const bool above = axis[i] < T || (lower_end_counts && axis[i] == T);
        if (!above || T > axis[i + 1]) continue;
        if (values[i + 1] <= 0.001f) return 0.0f;
        return LINEAR_INTERP(axis[i], T, axis[i + 1], values[i], values[i + 1]);
    }
    return result;
}

// Modulus of the current chart, when one is set.
void MODULUS_FROM_CHART(Real temperature, Real& modulus) {
    if (CHART_NAME.blank()) return;
    Text<12> name(CHART_NAME.view());
    CHART_CURVE curve{.E = modulus};
    READ_CHART(name.view(), temperature, curve, CHART_YIELD);
    modulus = curve.E;
    if (truncated(temperature) == truncated(curve.t_used)) {
        EMOD_STATUS = FROM_CHART;
        PROPERTIES.emod_identifier = CHART_NAME.view();
        PROPERTIES.emod_description = "External Pressure used (Sec. II d).";
    } else {
        EMOD_STATUS = BEYOND_CHART;
    }
}

void LOOK_UP_MODULUS(TableLines& lines, Int reference, Real temperature, Real& modulus) {
    PROPERTY_LOOKUP& p = PROPERTIES;
    if (reference > 0) {
        p.emod_temperature = temperature;
        if (find_row(lines, {reference, true, p.emod_temperature, p.emod_values, p.emod_identifier,
                             p.emod_description, &p.EMOD_EXTRA}))
            modulus = value_at(p.axis, p.emod_values, p.emod_temperature, 0.0001f, false);
    }
    if (modulus <= 0.0001f) {
        EMOD_STATUS = FAILED;
        MODULUS_FROM_CHART(temperature, modulus);
    }
}

void LOOK_UP_COEFFICIENT(TableLines& lines, Int reference, Real temperature, Real& coefficient) {
    PROPERTY_LOOKUP& p = PROPERTIES;
    if (reference > 0) {
        p.coe_temperature = temperature;
        bool section = false;
        while (!section && lines.next())
            section = lines.line.coefficients;
        if (section && find_row(lines, {reference, false, p.coe_temperature, p.coe_values,
                                        p.coe_identifier, p.coe_description, nullptr}))
            coefficient = value_at(p.axis, p.coe_values, p.coe_temperature, 0.001f, true);
    }
    if (coefficient < 0.001f) COE_STATUS = FAILED;
}

// The table as the file is now, on an open unit, or in memory with the unit only held. False
// when the file can't be opened.
bool open_table(Int unit, bool& in_memory) {
    if (LOOK_SERVES(kept_lines)) {
        in_memory = true;
        return hold_unit(unit);
    }
    Text<256> path("ElastAlp07.txt");
    Int path_len = path.trimmed_length();
    FILE_IDENTITY identity;
    RESOLVE_DATA_FILE(path, path_len, identity);
    const std::string_view at = path.columns(1, path_len);
    const bool known = kept_file.is(at, identity);
    in_memory = known && kept_whole;
    if (in_memory) {
        NOTE_LOOK(kept_lines);
        return hold_unit(unit);
    }
    if (!open_unit_for_reading(unit, at)) {
        kept_file.forget();
        return false;
    }
    if (!known && is_settled(identity)) in_memory = KEEP_LINES(unit, at, identity);
    if (in_memory) NOTE_LOOK(kept_lines);
    return true;
}

} // namespace

// The content of a file stays: the next lookup checks that it is still that of the file.
void RESET_MODULUS_TABLE() {
    if (!kept_file.is_known()) forget_lines();
}

void READ_ELAST_ALPHA(Int emod_ref, Int coe_ref, Real coe_temperature, Real emod_temperature,
                      Real& coe_out, Real& emod_out) {
    PROPERTY_LOOKUP& p = PROPERTIES;
    coe_out = 0.0f;
    emod_out = 0.0f;
    EMOD_STATUS = FINE;
    COE_STATUS = FINE;
    for (Int i = 0; i < PROPERTY_POINTS; ++i)
        p.axis[i] = p.emod_values[i] = p.coe_values[i] = 0.0f;

    Int unit = 0;
    GETNEXTUNIT(unit);
    bool in_memory = false;
    if (!open_table(unit, in_memory)) {
        EMOD_STATUS = FAILED;
        COE_STATUS = FAILED;
        return;
    }
    TableLines lines(unit, in_memory);
    if (emod_ref != SKIPPED) LOOK_UP_MODULUS(lines, emod_ref, emod_temperature, emod_out);
    lines.rewind();
    if (coe_ref != SKIPPED) LOOK_UP_COEFFICIENT(lines, coe_ref, coe_temperature, coe_out);
    if (coe_ref != SKIPPED) p.expansion = coe_out * 1.0E-6f;
    if (emod_ref != SKIPPED) p.modulus_psi = emod_out * 1.0E+6f;
    close_unit(unit);
}

void PROPERTY_WARNINGS(Int emod_status, Int coe_status) {
    if (emod_status != FINE) {
        BLANK_LINE();
        TEXT_LINE(RULE);
        if (emod_status == FAILED) {
            TEXT_LINE("Warning: An Error occurred determining the Elastic Modulus. Either",
                      ERROR_STYLE);
            TEXT_LINE("         the Maximum temperature was exceeded or the reference index was 0.",
                      ERROR_STYLE);
            TEXT_LINE("         Check the Emod ID in the Material Properties Dialog.", ERROR_STYLE);
        } else if (emod_status == FROM_CHART) {
            TEXT_LINE("Note : The External Pressure Charts were used to determine this",
                      NOTE_STYLE);
            TEXT_LINE("       material's Modulus of Elasticity.", NOTE_STYLE);
        } else if (emod_status == BEYOND_CHART) {
            TEXT_LINE("Note : The External Pressure Charts were used to determine this",
                      ERROR_STYLE);
            TEXT_LINE("     materials Modulus of Elasticity and the maximum temperature.",
                      ERROR_STYLE);
            TEXT_LINE("     of the chart was exceeded.", ERROR_STYLE);
        }
        TEXT_LINE(RULE);
        BLANK_LINE();
    }
    if (coe_status == FAILED) {
        BLANK_LINE();
        TEXT_LINE(RULE);
        TEXT_LINE("Warning: An Error occurred determining the Coefficent of Thermal Exp. Either");
        TEXT_LINE(" the Maximum temperature was exceeded or the reference index was 0.");
        TEXT_LINE(" Check the Coeff. ID in the Material Properties Dialog.");
        TEXT_LINE(RULE);
        BLANK_LINE();
    }
}

Real ASMEMOD(Real temperature, Int reference, Int code) {
    if (pd_or_en(code)) {
        Real psi = 0.0f;
        MODULUS(CHART_CLASS(CHART_NAME.view()), psi, temperature);
        MODULUS_CAME = psi > 0.0f ? OF_TABLE : NO_MODULUS;
        return psi / 1.0E+6f;
    }
    Real modulus = 0.0f, coefficient = 0.0f;
    READ_ELAST_ALPHA(reference, SKIPPED, 0.0f, temperature, coefficient, modulus);
    MODULUS_CAME = EMOD_STATUS == FROM_CHART     ? OF_CHART
                   : EMOD_STATUS == BEYOND_CHART ? CHART_EXCEEDED
                                                 : OF_TABLE;
    if (EMOD_STATUS > FINE) PROPERTY_WARNINGS(EMOD_STATUS, COE_STATUS);
    if (EMOD_STATUS == FAILED || reference > LAST_REFERENCE) {
        BLANK_LINE();
        TEXT_LINE("Warning: Invalid reference # encountered while looking up the Young's Modulus!",
                  ERROR_STYLE);
        TEXT_LINE("         Please enter the Elastic Modulus reference # in the Material ",
                  ERROR_STYLE);
        TEXT_LINE("         Properties Dialog. Carbon Steel values will be used.", ERROR_STYLE);
        READ_ELAST_ALPHA(REFERENCE_OF_STEEL, SKIPPED, 0.0f, temperature, coefficient, modulus);
        MODULUS_CAME = CARBON_STEEL;
    }
    if (!(modulus > 0.0f)) MODULUS_CAME = NO_MODULUS;
    return modulus;
}

} // namespace tarvane
