#include "components/flange_results.h"

#include "components/flange_checks.h"
#include "components/openings.h"
#include "document/results.h"
#include "tarvane/tarvane.h"
#include "values/text.h"

#include <algorithm>
#include <functional>
#include <optional>

namespace tarvane::vessel {

namespace {

constexpr float WITHIN = 0.999f; // a pressure that falls short by less does not fail

bool is_none(float value) { return value == TARVANE_NO_VALUE; }

// ---- verdict ---------------------------------------------------------------------------------------

std::string_view stress_name(int place) {
    switch (place) {
    case TARVANE_HUB_STRESS:
        return "longitudinal hub stress";
    case TARVANE_RADIAL_STRESS:
        return "radial flange stress";
    case TARVANE_TANGENTIAL_STRESS:
        return "tangential flange stress";
    case TARVANE_AVERAGE_STRESS:
        return "average flange stress";
    case TARVANE_BOLT_STRESS:
        return "bolt stress";
    case TARVANE_REVERSE_STRESS:
        return "stress at the bore of the reverse flange";
    default:
        return "radial stress at the bolt circle";
    }
}

std::string_view condition_name(int row) {
    return row == TARVANE_OPERATING ? "operating" : "gasket seating";
}

using Fails = std::function<void(std::string)>;

void judge_stresses(const TARVANE_FLANGE_RESULTS& found, const UnitSystem& units,
                    const Fails& fails) {
    for (const int row : {TARVANE_OPERATING, TARVANE_SEATING}) {
        for (int place = 0; place < TARVANE_STRESS_PLACES; ++place) {
            if (found.exceeded[row][place] == 0) continue;
            fails("the " + std::string(stress_name(place)) + ", " +
                  std::string(condition_name(row)) + ", " +
                  shown(found.stress[row][place], Quantity::stress, units) +
                  ", exceeds its allowable " +
                  shown(found.allowed[row][place], Quantity::stress, units));
        }
    }
}

// "hub small end as a cylinder": what holds a pressure down, empty when it is not known.
std::string held_down_by(int by) {
    const auto stress = [](int first, int number) {
        return std::string(stress_name(number - first));
    };
    if (by >= TARVANE_BY_OPERATING_STRESS &&
        by < TARVANE_BY_OPERATING_STRESS + TARVANE_STRESS_PLACES)
        return stress(TARVANE_BY_OPERATING_STRESS, by) + ", operating";
    if (by >= TARVANE_BY_SEATING_STRESS && by < TARVANE_BY_SEATING_STRESS + TARVANE_STRESS_PLACES)
        return stress(TARVANE_BY_SEATING_STRESS, by) + ", gasket seating";
    switch (by) {
    case TARVANE_BY_RIGIDITY:
        return "rigidity index";
    case TARVANE_BY_BOLTS:
        return "bolts";
    case TARVANE_BY_HUB:
        return "hub small end as a cylinder";
    case TARVANE_BY_DEFLECTION:
        return "deflection of the cover";
    default:
        return "";
    }
}

void judge_pressure(const TARVANE_FLANGE_RESULTS& found, float mawp, float P,
                    const UnitSystem& units, Verdict& verdict) {
    if (is_none(mawp)) return;
    const std::string pressure = shown(mawp, Quantity::pressure, units);
    const std::string by = held_down_by(found.mawp_by);
    if (P > 0.0f && mawp < WITHIN * P) {
        verdict.say(Status::fails, "the MAWP " + pressure + " is below the design pressure " +
                                       shown(P, Quantity::pressure, units) +
                                       (by.empty() ? "" : ": " + by + ", " + pressure));
    } else if (found.mawp_by == TARVANE_BY_HUB) {
        // Not every report shows it.
        verdict.say(Status::fine, "note: the MAWP is held down by the " + by + ", " + pressure);
    }
}

void judge_rigidity(const TARVANE_FLANGE_RESULTS& found, int kind, const Fails& fails) {
    constexpr float LIMIT = 1.0001f; // as the report marks an index
    const auto& index = kind == TARVANE_ANALYSE ? found.J_given : found.J_required;
    for (const int row : {TARVANE_OPERATING, TARVANE_SEATING}) {
        if (!is_none(index[row]) && index[row] > LIMIT) {
            fails("the rigidity index, " + std::string(condition_name(row)) + ", " +
                  number_text(index[row], 4) + ", is above 1");
        }
    }
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
    const TARVANE_FLANGE_RESULTS& found = outcome.found;
    if (found.status == TARVANE_REFUSED) {
        verdict.say(Status::bad_input,
                    "the input check found fatal errors, no calculation was made");
        check_gasket(flange, outcome, units, verdict);
        return verdict;
    }

    const Fails fails = [&](std::string reason) { verdict.say(Status::fails, std::move(reason)); };
    judge_stresses(found, units, fails);
    if (found.Ab < found.Am) {
        fails("the bolt area " + shown(found.Ab, Quantity::area, units) +
              " is below the required " + shown(found.Am, Quantity::area, units));
    }
    const float P = flange.record[TARVANE_P];
    judge_pressure(found, outcome.mawp, P, units, verdict);
    const float t = flange.record[TARVANE_t];
    const bool cover = flange.type() == TARVANE_BLIND;
    if (flange.analysis() == TARVANE_ANALYSE && cover && P >= 0.0f && WITHIN * outcome.t_req > t) {
        fails("the required thickness " + shown(outcome.t_req, Quantity::thickness, units) +
              " is above the given " + shown(t, Quantity::thickness, units));
    }
    if (flange.analysis() != TARVANE_ANALYSE && found.status != TARVANE_BOLT_AREA_SHORT &&
        !(outcome.t_req > 0.0f))
        fails("no required thickness was found");
    judge_rigidity(found, flange.analysis(), fails);
    if (found.modulus_status >= TARVANE_MODULUS_CARBON_STEEL) {
        fails("there is no elastic modulus of table " +
              number_text(flange.record[TARVANE_MATERIAL_CLASS], 0) + " at " +
              shown_degrees(flange.record[TARVANE_T_DESIGN], units));
    }
    check_bolt_circle(flange, units, verdict);
    check_gasket(flange, outcome, units, verdict);
    check_rating(flange, outcome, units, verdict);
    if (found.deflection > found.deflection_allowed) {
        fails("the deflection of the cover, " +
              shown(found.deflection, Quantity::thickness, units) + ", is above the allowed one, " +
              shown(found.deflection_allowed, Quantity::thickness, units));
    }
    for (const std::string& fault : opening_faults(faults_of(found), units))
        fails(fault);
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

} // namespace tarvane::vessel
