#include "assembly/summary.h"

#include "assembly/place.h"
#include "components/external_input.h"
#include "components/flange_input.h"
#include "components/flange_session.h"
#include "components/mdmt_input.h"
#include "components/rounded_design.h"
#include "components/shell_input.h"
#include "document/results.h"
#include "tarvane/tarvane.h"
#include "values/text.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <utility>

namespace tarvane::vessel {

namespace {

using enum Quantity;

constexpr ResultField FIELDS[] = {
    {"mawp", "MAWP", pressure, "MAWP, hot and corroded", "",
     "maximum allowable working pressure at the top of the vessel, less the head of the liquid"},
    {"map_nc", "MAPnc", pressure, "MAP, new and cold", "",
     "maximum allowable pressure, new and cold"},
    {"maep", "MAEP", pressure, "MAEP", "",
     "maximum allowable external pressure; at least what a flange was checked at"},
    {"mdmt", "MDMT", temperature, "Warmest MDMT", "",
     "the warmest of the lowest metal temperatures of the components at their design pressures"},
    {"hydrotest_b", "", pressure, "Hydrotest, UG-99(b)", "",
     "1.3 times MAWP times the least ratio of the allowable stresses, cold over hot"},
    {"hydrotest_c", "", pressure, "Hydrotest, UG-99(c)", "",
     "1.3 times MAPnc less the head of the test water, the least of all components"}};

constexpr float TEST_FACTOR = 1.3f;
constexpr float WATER = 62.4f / 1728.0f; // lb/cu.in.

// Why a component has no value, for a row.
std::string lack(const Element& element, std::string_view why) {
    return name_of(element) + (why.empty() ? "" : ": " + std::string(why));
}

Result result_of(const Calculated& c, std::string_view name) {
    for (const Result& result : c.element->results(*c.outcome)) {
        if (result.field->name == name) return result;
    }
    return {nullptr, std::nullopt, "no such result"};
}

const FlangeInput* flange_of(const Calculated& c) {
    return c.element->kind == &FLANGE_KIND ? static_cast<const FlangeInput*>(c.element) : nullptr;
}
const ShellInput* shell_of(const Calculated& c) {
    return c.element->kind == &SHELL_KIND ? static_cast<const ShellInput*>(c.element) : nullptr;
}

bool holds_pressure(const Calculated& c) {
    return flange_of(c) != nullptr || shell_of(c) != nullptr;
}

bool is_rated(const Calculated& c) {
    const FlangeInput* flange = flange_of(c);
    return flange != nullptr && flange->rated();
}

float cold_rating(const Calculated& c) { return flange_of(c)->setting(Setting::rating_cold); }

// The component that governs cold is a flange by its rating hot.
bool governs_rated(const Calculation& all, const SummaryRow& row) {
    return std::any_of(all.calculated.begin(), all.calculated.end(), [&row](const Calculated& c) {
        return c.element == row.by && is_rated(c) && !(cold_rating(c) > 0.0f);
    });
}

// The least value of all.
class Least {
  public:
    explicit Least(SummaryRow& of) : row(of) {}
    void take(const Calculated& c, float value) {
        if (row.value && !(value < *row.value)) return;
        row.value = value;
        row.by = c.element;
    }
    void take(const Calculated& c, const Result& result, float less = 0.0f) {
        if (result.value)
            take(c, *result.value - less);
        else
            row.lacks.push_back(lack(*c.element, result.why));
    }

  private:
    SummaryRow& row;
};

// ---- pressures -------------------------------------------------------------------------------------------

// What no pressure lets pass.
std::string fails_anyway(const Calculated& c) {
    std::string words;
    if (!c.outcome->rated_pressure) return words;
    for (const std::string& each : c.outcome->rated_pressure->anyway_words)
        words += (words.empty() ? "fails whatever the pressure: " : "; ") + each;
    return words;
}

// The engine's MAWP of a flange is an estimate: the pressure that was found by calculations takes its place. That of a
// shell does too where a check fails below what the formula of its MAWP gives (AD-204, openings of a flat head).
std::string_view name_of_mawp(const Calculated& c) {
    if (is_rated(c)) return "rating";
    if (flange_of(c) != nullptr) return "rated_pressure";
    const std::optional<RatedPressure>& rated = c.outcome->rated_pressure;
    const std::optional<float> formula = result_of(c, "mawp").value;
    return rated && rated->fails && formula && *rated->fails < *formula ? "rated_pressure" : "mawp";
}

void find_mawp(const Calculation& all, SummaryRow& row) {
    Least least(row);
    for (const Calculated& c : all.calculated) {
        if (!holds_pressure(c)) continue;
        if (const std::string fails = fails_anyway(c); !fails.empty()) {
            row.lacks.push_back(lack(*c.element, fails));
            continue;
        }
        least.take(c, result_of(c, name_of_mawp(c)), c.element->liquid_head);
    }
    if (row.by == nullptr) return;
    if (row.by->liquid_head > 0.0f) row.note = "less the head of the liquid there";
}

struct Found {
    std::optional<float> value;
    std::string why; // without one
};

// New and cold: of a flange of kind "design" that of the geometry that is judged. A channel cover has a deflection
// in its place. A rating at the design temperature is not above that at ambient temperature, where it is not given.
Found cold_pressure(const Calculated& c) {
    if (std::string fails = fails_anyway(c); !fails.empty())
        return {std::nullopt, std::move(fails)};
    const FlangeInput* flange = flange_of(c);
    if (is_rated(c) && cold_rating(c) > 0.0f) return {cold_rating(c), {}};
    if (flange == nullptr || flange->rated()) {
        const Result found = result_of(c, flange == nullptr ? "map_nc" : "rating");
        if (!found.value) return {std::nullopt, std::string(found.why)};
        if (*found.value > 0.0f) return {found.value, {}};
        return {std::nullopt, "no pressure was found"};
    }
    const auto& own = static_cast<const FlangeOutcome&>(*c.outcome);
    if (flange->analysis() == TARVANE_DESIGN && !own.rounded)
        return {std::nullopt, "no geometry was found"};
    const FlangeOutcome& judged = own.rounded ? own.rounded->outcome : own;
    if (judged.stopped || judged.refused()) return {std::nullopt, "no calculation was made"};
    if (judged.found.map_nc_by == TARVANE_BY_DEFLECTION)
        return {std::nullopt, "its deflection is what is limited"};
    const float found = judged.map_nc;
    if (found == TARVANE_NO_VALUE || !std::isfinite(found) || !(found > 0.0f))
        return {std::nullopt, "no pressure was found"};
    return {found, {}};
}

constexpr std::string_view BY_RATING = "its rating at the design temperature";

void find_map(const Calculation& all, SummaryRow& row) {
    Least least(row);
    for (const Calculated& c : all.calculated) {
        if (!holds_pressure(c)) continue;
        const Found found = cold_pressure(c);
        if (found.value)
            least.take(c, *found.value);
        else
            row.lacks.push_back(lack(*c.element, found.why));
    }
    if (governs_rated(all, row)) row.note = BY_RATING;
}

// A flange has no greatest external pressure: what it was checked at, where it passes. What fails alike under both
// pressures has one row of the checks, that of the internal pressure, and fails whatever that is.
Found checked_external(const Calculated& c, const UnitSystem& units) {
    const FlangeInput& flange = *flange_of(c);
    const auto& own = static_cast<const FlangeOutcome&>(*c.outcome);
    const bool alone = flange.record[TARVANE_P] < 0.0f;
    const float P = alone ? -flange.record[TARVANE_P] : flange.setting(Setting::external_pressure);
    if (!(P > 0.0f)) return {std::nullopt, "no external pressure"};
    if (own.stopped || own.refused()) return {std::nullopt, "no calculation was made"};
    if (std::string fails = fails_anyway(c); !fails.empty())
        return {std::nullopt, std::move(fails)};
    const bool searched = own.rated_pressure && own.rated_pressure->P;
    const Checks checks = flange.checks(own, units);
    const bool fails = std::any_of(checks.begin(), checks.end(), [&](const Check& check) {
        return check.blocks() && (!searched || check.load_case().starts_with("external"));
    });
    if (fails) return {std::nullopt, "fails at the external design pressure"};
    return {P, {}};
}

// A flat head holds from outside what it holds from inside, UG-34.
void find_maep(const Calculation& all, const UnitSystem& units, SummaryRow& row) {
    Least least(row);
    for (const Calculated& c : all.calculated) {
        const ShellInput* shell = shell_of(c);
        if (is_rated(c)) continue; // not asked of it
        if (shell != nullptr && shell->shape() == TARVANE_FLAT_HEAD) {
            least.take(c, result_of(c, "mawp"));
        } else if (shell != nullptr || c.element->kind == &EXTERNAL_KIND) {
            least.take(c, result_of(c, "maep"));
        } else if (flange_of(c) != nullptr) {
            const Found found = checked_external(c, units);
            if (found.value)
                least.take(c, *found.value);
            else
                row.lacks.push_back(lack(*c.element, found.why));
        }
    }
    const bool by_flange = row.by != nullptr && row.by->kind == &FLANGE_KIND;
    if (by_flange)
        row.note = "at least " + shown(*row.value, Quantity::pressure, units) +
                   ": what the flange was checked at; its own MAEP is not known";
}

// ---- temperatures ----------------------------------------------------------------------------------------

void find_mdmt(const Calculation& all, SummaryRow& row) {
    for (const Calculated& c : all.calculated) {
        if (c.element->kind != &MDMT_KIND) continue;
        const auto& mdmt = static_cast<const MdmtInput&>(*c.element);
        if (mdmt.exempt() && !mdmt.division_2()) continue;
        const Result lowest = result_of(c, "T_lowest");
        if (!lowest.value) {
            row.lacks.push_back(lack(*c.element, lowest.why));
        } else if (!row.value || *lowest.value > *row.value) {
            row.value = lowest.value;
            row.by = c.element;
        }
    }
    if (row.by != nullptr)
        row.note = "at the design pressures, not at the MAWP";
    else if (row.lacks.empty())
        row.note = "no metal temperature was asked for";
}

// ---- hydrotest -------------------------------------------------------------------------------------------

// Materials of a flange: the files of 1943 to 1974, and of JIS B 8265 and B 8267.
constexpr int BEFORE_1974 = 13, JIS[] = {15, 16};

// Why 1.3 is not the factor of the vessel; else empty. Division 1 before the 1999 addenda has 1.5, other codes have
// their own.
std::string no_test(const Calculation& all) {
    for (const Calculated& c : all.calculated) {
        const auto choice = [&c](std::string_view name, int otherwise) {
            const Key* key = c.element->kind->keys.find(name);
            return key != nullptr ? static_cast<int>(c.element->number_of(*key)) : otherwise;
        };
        const int year = choice("material_year", 0);
        const bool japanese = std::find(std::begin(JIS), std::end(JIS), year) != std::end(JIS);
        if (choice("code", TARVANE_ASME_VIII_1) != TARVANE_ASME_VIII_1 || japanese)
            return "the test by other codes than VIII-1 is not covered: " + name_of(*c.element);
        if (choice("edition", EDITION_CURRENT) != EDITION_CURRENT || year == BEFORE_1974)
            return "the test of VIII-1 before the 1999 addenda is not covered: " +
                   name_of(*c.element) + " is by an older edition";
    }
    return {};
}

struct Stresses {
    float hot = 0.0f, cold = 0.0f;
    std::string material;
};

Stresses stresses_of(const Calculated& c) {
    if (const ShellInput* shell = shell_of(c))
        return {shell->setting(ShellNumber::S), shell->setting(ShellNumber::Sa), shell->material()};
    if (const FlangeInput* flange = flange_of(c))
        return {flange->record[TARVANE_Sfo], flange->record[TARVANE_Sfa],
                flange->text_of(*flange_keys().find("material"))};
    return {};
}

float design_temperature(const Calculated& c) {
    return c.element->number_of(*c.element->kind->keys.find("T"));
}

// Bolts have no part in the ratio.
void find_test_b(const Calculation& all, const UnitSystem& units, const SummaryRow& mawp,
                 SummaryRow& row) {
    if (!mawp.value) {
        row.note = "there is no MAWP";
        return;
    }
    std::set<std::pair<std::string, float>> known;
    std::vector<const Calculated*> unknown;
    float least = 0.0f;
    std::string material;
    for (const Calculated& c : all.calculated) {
        if (!holds_pressure(c)) continue;
        const Stresses stresses = stresses_of(c);
        if (!(stresses.hot > 0.0f && stresses.cold > 0.0f)) {
            unknown.push_back(&c);
            continue;
        }
        known.emplace(stresses.material, design_temperature(c));
        const float ratio = stresses.cold / stresses.hot;
        if (row.by != nullptr && !(ratio < least)) continue;
        least = ratio;
        row.by = c.element;
        material = stresses.material;
    }
    // Another component of the same material at the same temperature has its ratio.
    for (const Calculated* c : unknown) {
        const std::string name = stresses_of(*c).material;
        if (name.empty() || !known.contains({name, design_temperature(*c)}))
            row.lacks.push_back(lack(*c->element, "no stress ratio"));
    }
    if (row.by == nullptr) return;
    row.value = TEST_FACTOR * *mawp.value * least;
    row.note = "1.3 MAWP times the least stress ratio " + number_text(least, 4, units);
    if (!material.empty()) row.note += ", of " + to_utf8(material);
}

void find_test_c(const Calculation& all, const Request& request, SummaryRow& row) {
    std::optional<float> top;
    bool lying = false;
    for (const Calculated& c : all.calculated) {
        if (!holds_pressure(c)) continue;
        const std::optional<float> highest = top_of(*c.element, request);
        if (!highest)
            row.lacks.push_back(lack(*c.element, elevation_of(*c.element)
                                                     ? "the elevation of its highest point"
                                                     : "no elevation for the head of the water"));
        else
            top = std::max(top.value_or(*highest), *highest);
        const ShellInput* shell = shell_of(c);
        lying = lying ||
                (shell != nullptr && shell->shape() == TARVANE_CYLINDER && lies(*shell, request));
    }
    Least least(row);
    for (const Calculated& c : all.calculated) {
        if (!holds_pressure(c)) continue;
        const Found pressure = cold_pressure(c);
        const std::optional<float> foot = elevation_of(*c.element);
        if (!pressure.value)
            row.lacks.push_back(lack(*c.element, pressure.why));
        else if (top && foot)
            least.take(c, TEST_FACTOR * *pressure.value - WATER * (*top - *foot));
    }
    row.note =
        std::string("1.3 MAPnc less the head of the test water, ") + (lying ? "lying" : "upright");
    if (governs_rated(all, row)) row.note += "; MAPnc is " + std::string(BY_RATING);
}

// A pressure that one component doesn't have is none of the vessel.
void need_all(SummaryRow& row) {
    if (row.lacks.empty()) {
        if (!row.value && row.note.empty()) row.note = "no component has one";
        return;
    }
    row.value.reset();
    row.by = nullptr;
    row.note.clear();
}

} // namespace

std::vector<ResultField> summary_fields() { return {std::begin(FIELDS), std::end(FIELDS)}; }

std::vector<SummaryRow> summary(const Request& request, const Calculation& calculation) {
    std::vector<SummaryRow> rows;
    for (const ResultField& field : FIELDS)
        rows.push_back({.field = &field, .value = {}, .by = nullptr, .note = {}, .lacks = {}});
    find_mawp(calculation, rows[0]);
    need_all(rows[0]);
    find_map(calculation, rows[1]);
    need_all(rows[1]);
    find_maep(calculation, request.units, rows[2]);
    need_all(rows[2]);
    find_mdmt(calculation, rows[3]);
    if (std::string why = no_test(calculation); !why.empty()) {
        rows[4].note = rows[5].note = why;
        return rows;
    }
    find_test_b(calculation, request.units, rows[0], rows[4]);
    need_all(rows[4]);
    find_test_c(calculation, request, rows[5]);
    need_all(rows[5]);
    return rows;
}

std::string summary_text(const Request& request, const std::vector<SummaryRow>& rows) {
    constexpr std::size_t LABEL = 28, UNIT = 7, VALUE = 10, WIDTH = 100;
    std::string out = "\nVessel";
    if (!request.description.empty()) out += ": " + printable(request.description);
    out += '\n' + std::string(WIDTH, '-') + '\n';
    for (const SummaryRow& row : rows) {
        out += padded(row.field->label, LABEL) +
               padded(to_utf8(request.units.label(row.field->quantity)), UNIT) +
               right_aligned(value_text(row.value, row.field->quantity, request.units), VALUE);
        if (row.by != nullptr) out += "  " + name_of(*row.by);
        out += '\n';
        const auto add = [&](const std::string& words) {
            for (const std::string& line : wrapped(words, WIDTH - LABEL))
                out += std::string(LABEL, ' ') + line + '\n';
        };
        if (!row.note.empty()) add(row.note);
        for (const std::string& each : row.lacks)
            add("not known of " + each);
    }
    return out;
}

} // namespace tarvane::vessel
