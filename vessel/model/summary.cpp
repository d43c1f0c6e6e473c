#include "model/summary.h"

#include "components/flange_input.h"
#include "components/flange_session.h"
#include "components/mdmt_input.h"
#include "components/shell_input.h"
#include "document/results.h"
#include "model/place.h"
#include "tarvane/tarvane.h"
#include "values/text.h"

#include <algorithm>
#include <cmath>
#include <set>

namespace tarvane::vessel {

namespace {

using enum Quantity;

constexpr ResultField FIELDS[] = {
    {"mawp", "MAWP", pressure, "MAWP, hot and corroded", "",
     "maximum allowable working pressure at the top of the vessel, less the head of the liquid"},
    {"map_nc", "MAPnc", pressure, "MAP, new and cold", "",
     "maximum allowable pressure, new and cold"},
    {"maep", "MAEP", pressure, "MAEP", "", "maximum allowable external pressure"},
    {"mdmt", "MDMT", temperature, "Warmest MDMT", "",
     "the warmest of the lowest metal temperatures of the components"},
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

// The engine's MAWP of a flange is an estimate: the pressure that was found by calculations takes its place.
void find_mawp(const Calculation& all, SummaryRow& row) {
    Least least(row);
    for (const Calculated& c : all.calculated) {
        if (!holds_pressure(c)) continue;
        if (const std::string fails = fails_anyway(c); !fails.empty()) {
            row.lacks.push_back(lack(*c.element, fails));
            continue;
        }
        const std::string_view name = is_rated(c)    ? "rating"
                                      : flange_of(c) ? "rated_pressure"
                                                     : "mawp";
        least.take(c, result_of(c, name), c.element->liquid_head);
    }
    if (row.by == nullptr) return;
    if (row.by->liquid_head > 0.0f) row.note = "less the head of the liquid there";
}

// The rating of a flange at ambient temperature is not known: at the design temperature it is not above that.
void find_map(const Calculation& all, SummaryRow& row) {
    Least least(row);
    for (const Calculated& c : all.calculated)
        if (holds_pressure(c)) least.take(c, result_of(c, is_rated(c) ? "rating" : "map_nc"));
    if (row.by == nullptr) return;
    const bool by_rating =
        std::any_of(all.calculated.begin(), all.calculated.end(),
                    [&row](const Calculated& c) { return c.element == row.by && is_rated(c); });
    if (by_rating) row.note = "its rating at the design temperature";
}

// A flat head holds from outside what it holds from inside, UG-34.
void find_maep(const Calculation& all, SummaryRow& row) {
    Least least(row);
    for (const Calculated& c : all.calculated) {
        const ShellInput* shell = shell_of(c);
        if (is_rated(c)) continue; // not asked of it
        if (shell != nullptr && shell->shape() == TARVANE_FLAT_HEAD)
            least.take(c, result_of(c, "mawp"));
        else if (shell != nullptr || c.element->kind->table == "external")
            least.take(c, result_of(c, "maep"));
        else if (const FlangeInput* flange = flange_of(c))
            row.lacks.push_back(lack(*c.element, flange->external != nullptr
                                                     ? "checked at the external design pressure"
                                                     : "no external pressure"));
    }
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
    if (row.by == nullptr && row.lacks.empty()) row.note = "no metal temperature was asked for";
}

// ---- hydrotest -------------------------------------------------------------------------------------------

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

// Bolts have no part in the ratio.
void find_test_b(const Calculation& all, const SummaryRow& mawp, SummaryRow& row) {
    std::set<std::string> known;
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
        known.insert(stresses.material);
        const float ratio = stresses.cold / stresses.hot;
        if (row.by != nullptr && !(ratio < least)) continue;
        least = ratio;
        row.by = c.element;
        material = stresses.material;
    }
    // Another component of the same material has its ratio.
    for (const Calculated* c : unknown) {
        const std::string name = stresses_of(*c).material;
        if (name.empty() || !known.contains(name))
            row.lacks.push_back(lack(*c->element, "no stress ratio"));
    }
    if (row.by == nullptr || !mawp.value) {
        row.note = mawp.value ? "no stress ratio is known" : "there is no MAWP";
        row.by = nullptr;
        return;
    }
    row.value = TEST_FACTOR * *mawp.value * least;
    row.note = "1.3 MAWP times the least stress ratio " + number_text(least, 4);
    if (!material.empty()) row.note += ", of " + to_utf8(material);
}

void find_test_c(const Calculation& all, SummaryRow& row) {
    std::optional<float> top;
    bool known = true;
    for (const Calculated& c : all.calculated) {
        if (!holds_pressure(c)) continue;
        const std::optional<float> highest = top_of(*c.element);
        known = known && highest;
        if (highest) top = std::max(top.value_or(*highest), *highest);
    }
    Least least(row);
    for (const Calculated& c : all.calculated) {
        if (!holds_pressure(c)) continue;
        const Result pressure = result_of(c, is_rated(c) ? "rating" : "map_nc");
        if (!pressure.value) {
            row.lacks.push_back(lack(*c.element, pressure.why));
            continue;
        }
        const float head = known ? WATER * (*top - *elevation_of(*c.element)) : 0.0f;
        least.take(c, TEST_FACTOR * *pressure.value - head);
    }
    row.note =
        known ? "1.3 MAPnc less the head of the test water, upright"
              : "1.3 MAPnc; the head of the test water is to be taken off, elevations are missing";
}

// A pressure that one component doesn't have is none of the vessel.
void need_all(SummaryRow& row) {
    if (row.lacks.empty()) return;
    row.value.reset();
    row.by = nullptr;
    row.note.clear();
}

} // namespace

std::vector<ResultField> summary_fields() { return {std::begin(FIELDS), std::end(FIELDS)}; }

std::vector<SummaryRow> summary(const Request&, const Calculation& calculation) {
    std::vector<SummaryRow> rows;
    for (const ResultField& field : FIELDS)
        rows.push_back({.field = &field, .value = {}, .by = nullptr, .note = {}, .lacks = {}});
    find_mawp(calculation, rows[0]);
    need_all(rows[0]);
    find_map(calculation, rows[1]);
    need_all(rows[1]);
    find_maep(calculation, rows[2]);
    find_mdmt(calculation, rows[3]);
    find_test_b(calculation, rows[0], rows[4]);
    find_test_c(calculation, rows[5]);
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
