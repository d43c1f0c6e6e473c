#include "results.h"

#include "report_view.h"
#include "tarvane/tarvane.h"
#include "text.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <optional>

namespace tarvane::app {

namespace {

constexpr float WITHIN = 0.999f; // a pressure that falls short by less does not fail

bool is_none(float value) { return value == TARVANE_NO_VALUE; }

std::string number_text(float value, int decimals) {
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", decimals, static_cast<double>(value));
    return text;
}

// Decimals that show about six figures whatever the unit.
int decimals_of(Quantity quantity, const UnitSystem& units) {
    const float factor = units.factor(quantity);
    switch (quantity) {
    case Quantity::thickness:
        return factor > 20.0f ? 2 : 4;
    case Quantity::diameter:
    case Quantity::area:
        return factor > 20.0f ? 1 : 3;
    case Quantity::pressure:
    case Quantity::stress:
        return factor < 0.01f ? 4 : factor < 1.0f ? 3 : 2;
    default:
        return 2;
    }
}

std::string shown(float value, Quantity quantity, const UnitSystem& units) {
    return number_text(units.to_file(value, quantity), decimals_of(quantity, units)) + ' ' +
           to_utf8(units.label(quantity));
}

// ---- verdict ---------------------------------------------------------------------------------------

// What the report says about one flange.
struct ReportFindings {
    bool refused = false; // the input check counted fatal errors
    bool overstress = false;
    bool bolt_area = false;
    std::vector<std::string> openings;
    std::optional<float> rigidity_required, rigidity_given; // largest index of each block
    bool deflection = false;
};

void take_rigidity(std::string_view line, std::optional<float>& largest) {
    constexpr std::string_view REMARK = "(should be <= 1)";
    if (line.find(REMARK) == std::string_view::npos) return;
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos) return;
    std::string number(line.substr(equals + 1));
    std::replace(number.begin(), number.end(), ',', '.');
    const float index = std::strtof(number.c_str(), nullptr);
    largest = std::max(largest.value_or(0.0f), index);
}

ReportFindings findings(const std::string& report) {
    ReportFindings f;
    std::optional<float>* rigidity = nullptr;
    for (const ReportLine& line : report_lines(report)) {
        const std::string_view text = line.text;
        if (text.starts_with("Number of fatal errors: ")) f.refused = true;
        if (text == "Warning: Actual Flange Stress Exceeds Allowable!") f.overstress = true;
        if (text.starts_with("Flange Bolt Area Problem Encountered for")) f.bolt_area = true;
        if (line.marks[4] == 1) {
            if (text.find("UG-39") != std::string_view::npos) f.openings.push_back(to_utf8(text));
            if (text.starts_with("Actual deflection at center")) f.deflection = true;
        }
        if (text.starts_with("Flange Rigidity Based on Required Thickness"))
            rigidity = &f.rigidity_required;
        if (text.starts_with("Flange Rigidity Based on Given Thickness"))
            rigidity = &f.rigidity_given;
        if (rigidity != nullptr) take_rigidity(text, *rigidity);
    }
    return f;
}

} // namespace

Verdict judge(const FlangeInput& flange, const FlangeOutcome& outcome, const UnitSystem& units) {
    Verdict verdict;
    const auto say = [&](Status status, std::string reason) {
        verdict.status = std::max(verdict.status, status);
        verdict.reasons.push_back(std::move(reason));
    };
    if (outcome.stopped) {
        std::string reason = "the engine stopped with code " + std::to_string(outcome.fatal_code);
        if (outcome.fatal_code == 25)
            reason += ": the outside diameter is not above the corroded inside diameter";
        say(Status::stopped, std::move(reason));
        return verdict;
    }
    const ReportFindings f = findings(outcome.report);
    if (f.refused) {
        say(Status::bad_input, "the input check found fatal errors, no calculation was made");
        return verdict;
    }

    const auto fails = [&](std::string reason) { say(Status::fails, std::move(reason)); };
    if (f.overstress) fails("a flange stress exceeds its allowable");
    const float Ab = outcome.result(TARVANE_Ab), Am = outcome.result(TARVANE_Am);
    if (f.bolt_area || Ab < Am) {
        fails(f.bolt_area && !(Ab < Am)
                  ? std::string("the bolt area is below the required one")
                  : "the bolt area " + shown(Ab, Quantity::area, units) +
                        " is below the required " + shown(Am, Quantity::area, units));
    }
    const float P = flange.record[TARVANE_P];
    if (P > 0.0f && !is_none(outcome.mawp) && outcome.mawp < WITHIN * P) {
        fails("the MAWP " + shown(outcome.mawp, Quantity::pressure, units) +
              " is below the design pressure " + shown(P, Quantity::pressure, units));
    }
    const float t = flange.record[TARVANE_t];
    const bool cover = flange.type() == TARVANE_BLIND;
    if (flange.kind() == TARVANE_ANALYSE && cover && P >= 0.0f && WITHIN * outcome.t_req > t) {
        fails("the required thickness " + shown(outcome.t_req, Quantity::thickness, units) +
              " is above the given " + shown(t, Quantity::thickness, units));
    }
    if (flange.kind() != TARVANE_ANALYSE && !f.bolt_area && !(outcome.t_req > 0.0f))
        fails("no required thickness was found");
    const std::optional<float>& index =
        flange.kind() == TARVANE_ANALYSE ? f.rigidity_given : f.rigidity_required;
    if (index && *index > 1.0f)
        fails("the rigidity index " + number_text(*index, 3) + " is above 1");
    if (f.deflection) fails("the deflection of the cover is above the allowed one");
    for (const std::string& opening : f.openings)
        fails(opening);
    return verdict;
}

// ---- tables ----------------------------------------------------------------------------------------

namespace {

constexpr std::size_t LABEL_WIDTH = 44, UNIT_WIDTH = 8, VALUE_WIDTH = 15, FLANGES_ABREAST = 3;

std::size_t characters(std::string_view utf8) {
    std::size_t n = 0;
    for (const char c : utf8)
        n += (static_cast<unsigned char>(c) & 0xC0u) != 0x80u;
    return n;
}

std::string padded(std::string_view utf8, std::size_t width) {
    const std::size_t n = characters(utf8);
    return std::string(utf8) + std::string(n < width ? width - n : 0, ' ');
}

std::string right(std::string_view utf8, std::size_t width) {
    const std::size_t n = characters(utf8);
    return std::string(n < width ? width - n : 0, ' ') + std::string(utf8);
}

// A row of a table: nothing where a flange has no such result.
struct Row {
    std::string_view label;
    Quantity quantity;
    std::function<std::optional<float>(const FlangeResult&)> value;
};

std::string table(std::string_view title, std::span<const Row> rows,
                  const std::vector<FlangeResult>& results, const UnitSystem& units) {
    std::string out;
    for (std::size_t first = 0; first < results.size(); first += FLANGES_ABREAST) {
        const std::size_t last = std::min(first + FLANGES_ABREAST, results.size());
        std::string head = padded(title, LABEL_WIDTH) + padded("", UNIT_WIDTH);
        for (std::size_t i = first; i < last; ++i)
            head += ' ' + right(to_utf8(results[i].flange->description()), VALUE_WIDTH);
        out += '\n' + head + '\n' + std::string(characters(head), '-') + '\n';
        for (const Row& row : rows) {
            out += padded(row.label, LABEL_WIDTH) +
                   padded(to_utf8(units.label(row.quantity)), UNIT_WIDTH);
            for (std::size_t i = first; i < last; ++i) {
                const std::optional<float> value = row.value(results[i]);
                std::string text = "none";
                if (value && row.quantity == Quantity::whole) {
                    text = number_text(*value, 0);
                } else if (value) {
                    text = number_text(units.to_file(*value, row.quantity),
                                       decimals_of(row.quantity, units));
                }
                out += ' ' + right(text, VALUE_WIDTH);
            }
            out += '\n';
        }
    }
    return out;
}

auto element(int number) {
    return [number](const FlangeResult& r) -> std::optional<float> {
        return r.outcome->result(number);
    };
}

// Loads and moments are results of the internal pressure pass; 0.0 all through when it did not run.
auto load(int number) {
    return [number](const FlangeResult& r) -> std::optional<float> {
        if (r.outcome->result(TARVANE_G) == 0.0f || r.outcome->result(TARVANE_P) < 0.0f)
            return std::nullopt;
        const float value = r.outcome->result(number);
        const bool moment = number == TARVANE_Mop || number == TARVANE_Matm;
        return moment ? value / 12.0f : value; // shown in foot-pounds or their metric counterpart
    };
}

std::optional<float> pressure(float value) {
    if (is_none(value)) return std::nullopt;
    return value;
}

std::optional<float> thickness(float value) {
    if (!(value > 0.0f)) return std::nullopt;
    return value;
}

} // namespace

std::string results_table(const std::vector<FlangeResult>& results, const UnitSystem& units) {
    const Row rows[] = {
        {"Design bolt load, gasket seating      W", Quantity::force, load(TARVANE_W)},
        {"Bolt load, operating                  Wm1", Quantity::force, load(TARVANE_Wm1)},
        {"Bolt load, gasket seating             Wm2", Quantity::force, load(TARVANE_Wm2)},
        {"Gasket reaction diameter              G", Quantity::diameter,
         [](const FlangeResult& r) { return thickness(r.outcome->result(TARVANE_G)); }},
        {"Moment, operating                     Mop", Quantity::moment, load(TARVANE_Mop)},
        {"Moment, gasket seating                Matm", Quantity::moment, load(TARVANE_Matm)},
        {"Actual bolt area                      Ab", Quantity::area, load(TARVANE_Ab)},
        {"Required bolt area                    Am", Quantity::area, load(TARVANE_Am)},
        {"Given thickness", Quantity::thickness,
         [](const FlangeResult& r) { return thickness(r.flange->record[TARVANE_t]); }},
        {"Required thickness", Quantity::thickness,
         [](const FlangeResult& r) { return thickness(r.outcome->t_req); }},
        {"Maximum allowable working pressure    MAWP", Quantity::pressure,
         [](const FlangeResult& r) { return pressure(r.outcome->mawp); }},
        {"The same, new and cold                MAPnc", Quantity::pressure,
         [](const FlangeResult& r) { return pressure(r.outcome->map_nc); }},
    };
    return table("Results", rows, results, units);
}

std::string design_table(const std::vector<FlangeResult>& results, const UnitSystem& units) {
    std::vector<FlangeResult> designs;
    std::copy_if(results.begin(), results.end(), std::back_inserter(designs),
                 [](const FlangeResult& r) { return r.flange->kind() == TARVANE_DESIGN; });
    const Row rows[] = {
        {"Number of bolts                       n", Quantity::whole,
         element(TARVANE_DESIGNED_BOLTS)},
        {"Bolt diameter                         a", Quantity::diameter,
         element(TARVANE_DESIGNED_a)},
        {"Bolt circle                           C", Quantity::diameter,
         element(TARVANE_DESIGNED_C)},
        {"Hub thickness, large end              g1", Quantity::thickness,
         element(TARVANE_DESIGNED_g1)},
        {"Hub thickness, small end              g0", Quantity::thickness,
         element(TARVANE_DESIGNED_go)},
        {"Hub length                            h", Quantity::thickness,
         element(TARVANE_DESIGNED_h)},
        {"Outside diameter                      A", Quantity::diameter,
         element(TARVANE_DESIGNED_A)},
        {"Face outside diameter                 Fod", Quantity::diameter,
         element(TARVANE_DESIGNED_Fod)},
        {"Face inside diameter                  Fid", Quantity::diameter,
         element(TARVANE_DESIGNED_Fid)},
        {"Gasket outside diameter               Go", Quantity::diameter,
         element(TARVANE_DESIGNED_Go)},
        {"Gasket inside diameter                Gi", Quantity::diameter,
         element(TARVANE_DESIGNED_Gi)},
        {"Thickness                             t", Quantity::thickness,
         [](const FlangeResult& r) { return thickness(r.outcome->t_req); }},
    };
    return table("Selected design", rows, designs, units);
}

} // namespace tarvane::app
