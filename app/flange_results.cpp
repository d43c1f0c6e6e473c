#include "flange_results.h"

#include "flange_checks.h"
#include "report_view.h"
#include "results.h"
#include "tarvane/tarvane.h"
#include "text.h"

#include <algorithm>
#include <cstdlib>
#include <optional>

namespace tarvane::app {

namespace {

constexpr float WITHIN = 0.999f; // a pressure that falls short by less does not fail

bool is_none(float value) { return value == TARVANE_NO_VALUE; }

// ---- verdict ---------------------------------------------------------------------------------------

// What the report says about one flange.
struct ReportFindings {
    bool refused = false; // the input check counted fatal errors
    bool overstress = false;
    bool bolt_area = false;
    bool no_modulus = false; // carbon steel stands in, or none
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
        if (text.starts_with(
                "Warning: Invalid reference # encountered while looking up the Young") ||
            text.starts_with("Warning: An Error occurred determining the Elastic Modulus"))
            f.no_modulus = true;
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

Verdict judge_flange(const FlangeInput& flange, const FlangeOutcome& outcome,
                     const UnitSystem& units) {
    Verdict verdict;
    if (outcome.stopped) {
        std::string reason = "the engine stopped with code " + std::to_string(outcome.fatal_code);
        if (outcome.fatal_code == 25)
            reason += ": the outside diameter is not above the corroded inside diameter";
        verdict.say(Status::stopped, std::move(reason));
        return verdict;
    }
    const ReportFindings f = findings(outcome.report);
    if (f.refused) {
        verdict.say(Status::bad_input,
                    "the input check found fatal errors, no calculation was made");
        check_gasket(flange, outcome, units, verdict);
        return verdict;
    }

    const auto fails = [&](std::string reason) { verdict.say(Status::fails, std::move(reason)); };
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
    if (flange.analysis() == TARVANE_ANALYSE && cover && P >= 0.0f && WITHIN * outcome.t_req > t) {
        fails("the required thickness " + shown(outcome.t_req, Quantity::thickness, units) +
              " is above the given " + shown(t, Quantity::thickness, units));
    }
    if (flange.analysis() != TARVANE_ANALYSE && !f.bolt_area && !(outcome.t_req > 0.0f))
        fails("no required thickness was found");
    const std::optional<float>& index =
        flange.analysis() == TARVANE_ANALYSE ? f.rigidity_given : f.rigidity_required;
    if (index && *index > 1.0f)
        fails("the rigidity index " + number_text(*index, 3) + " is above 1");
    if (f.no_modulus) {
        fails("there is no elastic modulus of table " +
              number_text(flange.record[TARVANE_MATERIAL_CLASS], 0) + " at " +
              shown_degrees(flange.record[TARVANE_T_DESIGN], units));
    }
    check_bolt_circle(flange, units, verdict);
    check_gasket(flange, outcome, units, verdict);
    check_rating(flange, outcome, units, verdict);
    if (f.deflection) fails("the deflection of the cover is above the allowed one");
    for (const std::string& opening : f.openings)
        fails(opening);
    check_bolt_size(flange, units, verdict);
    return verdict;
}

// ---- tables ----------------------------------------------------------------------------------------

namespace {

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

std::string heading(const FlangeResult& r) { return column_heading(*r.flange); }

} // namespace

std::string results_table(const std::vector<FlangeResult>& results, const UnitSystem& units) {
    const Row<FlangeResult> rows[] = {
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
    return table<FlangeResult>("Results", rows, results, heading, units);
}

std::string design_table(const std::vector<FlangeResult>& results, const UnitSystem& units) {
    std::vector<FlangeResult> designs;
    std::copy_if(results.begin(), results.end(), std::back_inserter(designs),
                 [](const FlangeResult& r) { return r.flange->analysis() == TARVANE_DESIGN; });
    const Row<FlangeResult> rows[] = {
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
    return table<FlangeResult>("Selected design", rows, designs, heading, units);
}

std::string flange_tables(std::span<const Calculated> elements, const UnitSystem& units) {
    std::vector<FlangeResult> results;
    for (const Calculated& c : elements) {
        results.push_back({static_cast<const FlangeInput*>(c.element),
                           static_cast<const FlangeOutcome*>(c.outcome)});
    }
    return results_table(results, units) + design_table(results, units);
}

} // namespace tarvane::app
