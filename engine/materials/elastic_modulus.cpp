// Modulus of elasticity and coefficient of expansion by the reference tables of the code. The file
// is opened, read up to the row and closed on each lookup: a lookup runs a few times an element.
#include "frame/data_files.h"
#include "frame/switches.h"
#include "materials/modulus.h"
#include "report/lines.h"

namespace tarvane {

Int EMOD_STATUS = 0;
Int COE_STATUS = 0;
PROPERTY_LOOKUP PROPERTIES;

namespace {

enum Status : Int { FINE = 0, FAILED = 1, FROM_CHART = 2, BEYOND_CHART = 3 };

constexpr Int SKIPPED = -1;         // a reference that skips its half
constexpr Int CARBON_STEEL = 1;     // reference number that stands in for a bad one
constexpr Int LAST_REFERENCE = 230; // highest reference of the modulus tables
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

// Reads on to the row of the reference. False when the section or the file ends before it, or a
// line can't be read.
bool find_row(LineReader& file, ROW_SEARCH search) {
    char buffer[LINE_WIDTH];
    while (file.next(buffer, LINE_WIDTH)) {
        const std::string_view line(buffer, LINE_WIDTH);
        if (is_comment(line) || holds(line, "[Emod]")) continue;
        if (holds(line, "[CoE]")) return false;
        if (holds(line, "[Temp]")) {
            Real* axis = PROPERTIES.axis;
            if (PARSE_REALS(columns(line, 10, LINE_WIDTH), axis, PROPERTY_POINTS) < PROPERTY_POINTS)
                return false;
            hold_to_axis(axis, search.last_may_be_short, search.held);
            continue;
        }
        Real numbers[2] = {}; // reference and extra
        if (PARSE_REALS(columns(line, 1, 19), numbers, 2) < 2) return false;
        if (search.extra != nullptr) *search.extra = numbers[1];
        if (truncated(numbers[0]) != search.reference) continue;
        search.identifier = columns(line, 20, 26);
        search.description = columns(line, 28, 63);
        return PARSE_REALS(columns(line, 64, LINE_WIDTH), search.values, PROPERTY_POINTS) ==
               PROPERTY_POINTS;
    }
    return false;
}

// The row at a temperature. A temperature on the axis takes its value, but the walk goes on, so that
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
    Real t_used = 0.0f;
    Real Aelastic = 0.0f, second = 0.0f, Amax = 0.0f, Bmax = 0.0f;
    Real c0 = 0.0f, c1 = 0.0f, c2 = 0.0f;
    READ_CHART(name.data(), name.width(), temperature, t_used, modulus, Aelastic, second, Amax,
               Bmax, c0, c1, c2, CHART_YIELD);
    if (truncated(temperature) == truncated(t_used)) {
        EMOD_STATUS = FROM_CHART;
        PROPERTIES.emod_identifier = CHART_NAME.view();
        PROPERTIES.emod_description = "External Pressure used (Sec. II d).";
    } else {
        EMOD_STATUS = BEYOND_CHART;
    }
}

void LOOK_UP_MODULUS(LineReader& file, Int reference, Real temperature, Real& modulus) {
    PROPERTY_LOOKUP& p = PROPERTIES;
    if (reference > 0) {
        p.emod_temperature = temperature;
        if (find_row(file, {reference, true, p.emod_temperature, p.emod_values, p.emod_identifier,
                            p.emod_description, &p.EMOD_EXTRA}))
            modulus = value_at(p.axis, p.emod_values, p.emod_temperature, 0.0001f, false);
    }
    if (modulus <= 0.0001f) {
        EMOD_STATUS = FAILED;
        MODULUS_FROM_CHART(temperature, modulus);
    }
}

void LOOK_UP_COEFFICIENT(LineReader& file, Int reference, Real temperature, Real& coefficient) {
    PROPERTY_LOOKUP& p = PROPERTIES;
    if (reference > 0) {
        p.coe_temperature = temperature;
        char buffer[LINE_WIDTH];
        bool section = false;
        const std::string_view line(buffer, LINE_WIDTH);
        while (!section && file.next(buffer, LINE_WIDTH))
            section = !is_comment(line) && holds(line, "[CoE]");
        if (section && find_row(file, {reference, false, p.coe_temperature, p.coe_values,
                                       p.coe_identifier, p.coe_description, nullptr}))
            coefficient = value_at(p.axis, p.coe_values, p.coe_temperature, 0.001f, true);
    }
    if (coefficient < 0.001f) COE_STATUS = FAILED;
}

bool open_table(Int unit) {
    Text<256> path("ElastAlp07.txt");
    Int path_len = path.trimmed_length();
    RESOLVE_DATA_FILE(path, path_len);
    return open_unit_for_reading(unit, path.columns(1, path_len));
}

} // namespace

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
    if (!open_table(unit)) {
        EMOD_STATUS = FAILED;
        COE_STATUS = FAILED;
        return;
    }
    LineReader file(unit);
    if (emod_ref != SKIPPED) LOOK_UP_MODULUS(file, emod_ref, emod_temperature, emod_out);
    file.rewind();
    if (coe_ref != SKIPPED) LOOK_UP_COEFFICIENT(file, coe_ref, coe_temperature, coe_out);
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
    if (code == PD_5500 || code == EN_13445) {
        Real psi = 0.0f;
        MODULUS(CHART_CLASS(CHART_NAME.view()), psi, temperature);
        return psi / 1.0E+6f;
    }
    Real modulus = 0.0f, coefficient = 0.0f;
    READ_ELAST_ALPHA(reference, SKIPPED, 0.0f, temperature, coefficient, modulus);
    if (EMOD_STATUS > FINE) PROPERTY_WARNINGS(EMOD_STATUS, COE_STATUS);
    if (EMOD_STATUS == FAILED || reference > LAST_REFERENCE) {
        BLANK_LINE();
        TEXT_LINE("Warning: Invalid reference # encountered while looking up the Young's Modulus!",
                  ERROR_STYLE);
        TEXT_LINE("         Please enter the Elastic Modulus reference # in the Material ",
                  ERROR_STYLE);
        TEXT_LINE("         Properties Dialog. Carbon Steel values will be used.", ERROR_STYLE);
        READ_ELAST_ALPHA(CARBON_STEEL, SKIPPED, 0.0f, temperature, coefficient, modulus);
    }
    return modulus;
}

} // namespace tarvane
