#include "components/flange_checks.h"

#include "catalogue/bolt_sizes.h"
#include "components/flange_results.h"
#include "components/openings.h"
#include "document/results.h"
#include "fields/flange_checks.h"
#include "tarvane/tarvane.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>
#include <vector>

namespace tarvane::vessel {

namespace {

constexpr float PI = 3.14159265f;
constexpr std::size_t MOST_OF_A_FLANGE = 40; // checks, as a rule

consteval const CheckField& field(std::string_view id) { return field_of(FLANGE_CHECKS, id); }

bool is_none(float value) { return value == TARVANE_NO_VALUE; }

// It falls short, and the reason is wanted.
bool explained(const Check& check, const FlangeOutcome& outcome) {
    return outcome.words && check.falls_short();
}

// ---- what the engine found -------------------------------------------------------------------------

void check_stresses(const FlangeOutcome& outcome, const UnitSystem& units, Checks& checks) {
    const TARVANE_FLANGE_RESULTS& found = outcome.found;
    const CheckField* stress_field = &field("SHo");
    for (const int row : {TARVANE_OPERATING, TARVANE_SEATING}) {
        const int places = TARVANE_STRESS_PLACES - (row == TARVANE_SEATING ? 1 : 0);
        for (int place = 0; place < places; ++place, ++stress_field) {
            const float stress = found.stress[row][place], allowed = found.allowed[row][place];
            const bool marked = found.exceeded[row][place] != 0;
            // A place that this type doesn't have is 0.0.
            if (!marked && (is_none(stress) || stress == 0.0f)) continue;
            Check check = Check::compared(*stress_field, stress, allowed).marked(marked);
            if (explained(check, outcome)) {
                check.because("the " + check.label() + ", " +
                              shown(stress, Quantity::stress, units) + ", exceeds its allowable " +
                              shown(allowed, Quantity::stress, units));
            }
            checks.push_back(std::move(check));
        }
    }
}

void check_bolt_area(const FlangeOutcome& outcome, const UnitSystem& units, Checks& checks) {
    const TARVANE_FLANGE_RESULTS& found = outcome.found;
    if (is_none(found.Ab) || is_none(found.Am)) return;
    Check check =
        Check::compared(field("bolt_area"), found.Ab, found.Am).marked(found.Ab < found.Am);
    if (explained(check, outcome)) {
        check.because("the bolt area " + shown(found.Ab, Quantity::area, units) +
                      " is below the required " + shown(found.Am, Quantity::area, units));
    }
    checks.push_back(std::move(check));
}

// That of what holds the MAWP down.
std::string_view paragraph_of_limit(std::int32_t by) {
    constexpr int STRESSES = TARVANE_STRESS_PLACES;
    const CheckField* const stress = &field("SHo");
    if (by >= TARVANE_BY_OPERATING_STRESS && by < TARVANE_BY_OPERATING_STRESS + STRESSES)
        return stress[by - TARVANE_BY_OPERATING_STRESS].paragraph;
    // The last place has no stress of gasket seating.
    if (by >= TARVANE_BY_SEATING_STRESS && by < TARVANE_BY_SEATING_STRESS + STRESSES - 1)
        return stress[STRESSES + by - TARVANE_BY_SEATING_STRESS].paragraph;
    switch (by) {
    case TARVANE_BY_RIGIDITY:
        return field("J_operating").paragraph;
    case TARVANE_BY_BOLTS:
        return field("bolt_area").paragraph;
    case TARVANE_BY_HUB:
        return field("hub_cylinder").paragraph;
    default:
        return {};
    }
}

void explain_pressure(const FlangeOutcome& outcome, float P, const UnitSystem& units,
                      Check& check) {
    const std::string pressure = shown(outcome.mawp, Quantity::pressure, units);
    const std::string by(held_down_by(outcome.found.mawp_by));
    if (!by.empty()) check.shown_by("limited by: " + by);
    if (check.falls_short()) {
        check.because("the MAWP " + pressure + " is below the design pressure " +
                      shown(P, Quantity::pressure, units) +
                      (by.empty() ? "" : ": " + by + ", " + pressure));
    } else if (outcome.found.mawp_by == TARVANE_BY_HUB) {
        // Not every report shows it.
        check.because("note: the MAWP is limited by the " + by + ", " + pressure);
    }
}

void check_pressure(const FlangeOutcome& outcome, float P, const UnitSystem& units,
                    Checks& checks) {
    // An estimate that is the deflection of a channel cover is no pressure; its own check judges it.
    if (is_none(outcome.mawp) || outcome.found.mawp_by == TARVANE_BY_DEFLECTION) return;
    if (!(P > 0.0f) && outcome.found.mawp_by != TARVANE_BY_HUB) return;
    Check check = Check::compared(field("mawp"), outcome.mawp, P);
    check.under(paragraph_of_limit(outcome.found.mawp_by));
    if (outcome.words) explain_pressure(outcome, P, units, check);
    checks.push_back(std::move(check));
}

void check_thickness(const FlangeInput& flange, const FlangeOutcome& outcome,
                     const UnitSystem& units, Checks& checks) {
    const float P = given(flange, TARVANE_P), t = given(flange, TARVANE_t);
    const bool analyse = flange.analysis() == TARVANE_ANALYSE;
    if (analyse && flange.type() == TARVANE_BLIND && P >= 0.0f && !(outcome.t_req <= 0.0f)) {
        Check check = Check::compared(field("required_thickness"), outcome.t_req, t);
        if (explained(check, outcome)) {
            check.because("the required thickness " +
                          shown(outcome.t_req, Quantity::thickness, units) +
                          " is above the given " + shown(t, Quantity::thickness, units));
        }
        checks.push_back(std::move(check));
    }
    if (!analyse && outcome.found.status != TARVANE_BOLT_AREA_SHORT) {
        const bool found = outcome.t_req > 0.0f;
        checks.push_back(
            Check::found(field("search"), found, found ? "" : "no required thickness was found"));
    }
}

void check_rigidity(const FlangeOutcome& outcome, int kind, const UnitSystem& units,
                    Checks& checks) {
    const TARVANE_FLANGE_RESULTS& found = outcome.found;
    const auto& index = kind == TARVANE_ANALYSE ? found.J_given : found.J_required;
    for (const CheckField* row : {&field("J_operating"), &field("J_seating")}) {
        const float J = index[row == &field("J_seating") ? TARVANE_SEATING : TARVANE_OPERATING];
        if (is_none(J) || J == 0.0f) continue;
        Check check = Check::compared(*row, J, 1.0f);
        if (explained(check, outcome))
            check.because("the " + check.label() + ", " + number_text(J, 4, units) +
                          ", is above 1");
        checks.push_back(std::move(check));
    }
}

void check_modulus(const FlangeInput& flange, const TARVANE_FLANGE_RESULTS& found,
                   const UnitSystem& units, Checks& checks) {
    const bool missing = found.modulus_status >= TARVANE_MODULUS_CARBON_STEEL;
    if (!missing && !(found.E_hot > 0.0f)) return;
    std::string reason;
    if (missing) {
        reason = "there is no elastic modulus of table " +
                 number_text(given(flange, TARVANE_MATERIAL_CLASS), 0) + " at " +
                 shown_degrees(given(flange, TARVANE_T_DESIGN), units);
    }
    checks.push_back(Check::found(field("modulus"), !missing, std::move(reason)));
}

void check_deflection(const FlangeOutcome& outcome, const UnitSystem& units, Checks& checks) {
    const TARVANE_FLANGE_RESULTS& found = outcome.found;
    if (is_none(found.deflection) || is_none(found.deflection_allowed)) return;
    Check check = Check::compared(field("deflection"), found.deflection, found.deflection_allowed)
                      .marked(found.deflection > found.deflection_allowed);
    if (explained(check, outcome)) {
        check.because("the deflection of the cover, " +
                      shown(found.deflection, Quantity::thickness, units) +
                      ", is above the allowed one, " +
                      shown(found.deflection_allowed, Quantity::thickness, units));
    }
    checks.push_back(std::move(check));
}

// ---- bolts -----------------------------------------------------------------------------------------

// Appendix 2 and similar rules are for a gasket within the bolt circle, on a flange that reaches beyond it;
// the engine calculates with any bolt circle.
void check_bolt_circle(const FlangeInput& flange, const UnitSystem& units, Checks& checks) {
    const bool circular = !(given(flange, TARVANE_D) > 0.0f || given(flange, TARVANE_d) > 0.0f);
    if (flange.analysis() == TARVANE_DESIGN || !circular) return;
    const float C = given(flange, TARVANE_C), A = given(flange, TARVANE_A);
    if (!(C > 0.0f)) return;
    std::string where;
    if (C >= A)
        where = "is not below the outside diameter of the flange";
    else if (C <= (given(flange, TARVANE_Go) + given(flange, TARVANE_Gi)) / 2.0f)
        where = "lies within the gasket";
    checks.push_back(Check::found(
        field("bolt_circle"), where.empty(),
        where.empty() ? ""
                      : "the bolt circle " + shown(C, Quantity::diameter, units) + ' ' + where));
}

// The engine uses another size where the thread series does not have the given one.
void check_bolt_size(const FlangeInput& flange, const UnitSystem& units, Checks& checks) {
    if (!flange.takes_bolt_size()) return;
    const BoltSizes& sizes = flange.bolt_sizes();
    const float a = given(flange, TARVANE_a);
    if (sizes.empty()) return;
    const bool listed = sizes.lists(a);
    std::string note;
    if (!listed) {
        note = "note: the thread series has no bolt of " + shown(a, Quantity::diameter, units) +
               "; the bolt of " + shown(sizes.taken(a), Quantity::diameter, units) + " was taken";
    }
    checks.push_back(Check::found(field("bolt_size"), listed, std::move(note)));
}

// ---- standard flange -------------------------------------------------------------------------------

// External loads as pressure (NC-3658.1, VIII-2 4.1.11): what the engine added, or, where it has them as
// loads or not at all, the same by its own formula.
float added_pressure(const FlangeInput& flange, const FlangeOutcome& outcome) {
    if (flange.text[slot::external_loads] != 'Y') return 0.0f;
    const bool current_div_2 =
        flange.code() == TARVANE_ASME_VIII_2 && flange.edition() == EDITION_CURRENT;
    if (given(flange, TARVANE_P) >= 0.0f && !current_div_2)
        return outcome.result(TARVANE_ADDED_PRESSURE);
    const float G = outcome.result(TARVANE_G);
    const float F = given(flange, TARVANE_AXIAL_FORCE), M = given(flange, TARVANE_BENDING_MOMENT);
    return 4.0f * std::max(0.0f, F) / (PI * G * G) +
           16.0f * std::fabs(M) * 12.0f / (PI * G * G * G);
}

// No stresses of a standard or rated flange are calculated: the pressure rating decides.
void check_rating(const FlangeInput& flange, const FlangeOutcome& outcome, const UnitSystem& units,
                  Checks& checks) {
    const CheckField& row = field("rating");
    const float rating = flange.setting(Setting::rating);
    if (!(rating > 0.0f)) {
        checks.push_back(flange.whole_setting(Setting::standard_flange) == 0
                             ? Check::not_asked(row, "rating is not given")
                             : Check::not_made(row, "the check against the pressure rating was not "
                                                    "made: give rating, the rated pressure of the "
                                                    "standard flange at the design temperature"));
        return;
    }
    const float equivalent = std::fabs(given(flange, TARVANE_P)) + added_pressure(flange, outcome);
    Check check = Check::compared(row, equivalent, rating);
    if (explained(check, outcome)) {
        check.because("the equivalent pressure " + shown(equivalent, Quantity::pressure, units) +
                      " is above the rating " + shown(rating, Quantity::pressure, units));
    }
    checks.push_back(std::move(check));
}

// ---- hub and attached shell ----------------------------------------------------------------------------

// Text of the rating of the small end as a cylinder, with its numbers where they give what the engine found:
// a design goes by a hub of its own, and units of one system are needed to put them in.
std::string hub_step(const FlangeInput& flange, float hub_mawp, const UnitSystem& units) {
    const bool by_shell = given(flange, TARVANE_HUB_BY_SHELL) == 1.0f;
    const float S = given(flange, by_shell ? TARVANE_SHELL_STRESS : TARVANE_Sfo),
                E = flange.setting(Setting::joint_efficiency), ci = given(flange, TARVANE_ci),
                t = given(flange, TARVANE_go) - ci - given(flange, TARVANE_ce),
                R = given(flange, TARVANE_B) / 2.0f + ci;
    const bool division_1 = flange.code() == TARVANE_ASME_VIII_1;
    const float P = division_1 ? S * E * t / (R + 0.6f * t) : S * E * std::log((t + R) / R);
    const std::string factor = number_text(0.6f, 1, units) + '*';
    std::string letters = division_1 ? "S*E*t/(R + " + factor + "t)" : "S*E*ln((R + t)/R)";
    const bool one_system = units.factor(Quantity::stress) == units.factor(Quantity::pressure) &&
                            units.factor(Quantity::thickness) == units.factor(Quantity::diameter);
    if (!one_system || !(std::fabs(P - hub_mawp) <= 1.0e-4f * hub_mawp)) return letters;
    const auto number = [&](float value, Quantity quantity) {
        return value_text(value, quantity, units);
    };
    const std::string s = number(S, Quantity::stress) + '*' + number_text(E, 3, units),
                      thick = number(t, Quantity::thickness), r = number(R, Quantity::diameter);
    return letters + " = " +
           (division_1 ? s + '*' + thick + "/(" + r + " + " + factor + thick + ')'
                       : s + "*ln((" + r + " + " + thick + ")/" + r + ')') +
           " = " + shown(hub_mawp, Quantity::pressure, units);
}

void check_cylinders(const FlangeInput& flange, const FlangeOutcome& outcome,
                     const UnitSystem& units, Checks& checks) {
    const TARVANE_FLANGE_RESULTS& found = outcome.found;
    const float P = given(flange, TARVANE_P), g0 = given(flange, TARVANE_go);
    const bool welding_neck =
        flange.type() == TARVANE_INTEGRAL_WELD_NECK || flange.type() == TARVANE_REVERSE_WELD_NECK;
    // A hub that corrosion takes away has no rating.
    const bool asme = flange.code() <= TARVANE_ASME_VIII_2,
               gone = asme && welding_neck && flange.analysis() != TARVANE_DESIGN &&
                      g0 - given(flange, TARVANE_ci) - given(flange, TARVANE_ce) <= 0.0001f;
    if (P > 0.0f && (gone || (!is_none(found.hub_mawp) && found.hub_mawp > 0.0f))) {
        const float holds = gone ? 0.0f : found.hub_mawp;
        Check check = Check::compared(field("hub_cylinder"), holds, P);
        if (!gone && outcome.words) check.shown_by(hub_step(flange, holds, units));
        if (explained(check, outcome)) {
            check.because("the small end of the hub as a cylinder withstands " +
                          shown(holds, Quantity::pressure, units) + ", below the design pressure " +
                          shown(P, Quantity::pressure, units));
        }
        checks.push_back(std::move(check));
    }
    if (flange.code() == TARVANE_EN_13445 && welding_neck && found.hub_required > 0.0f &&
        flange.analysis() != TARVANE_DESIGN) {
        Check check = Check::compared(field("hub_thickness"), found.hub_required, g0);
        if (explained(check, outcome)) {
            check.because("the small end of the hub as a cylinder requires " +
                          shown(found.hub_required, Quantity::thickness, units) + ", g0 is " +
                          shown(g0, Quantity::thickness, units));
        }
        checks.push_back(std::move(check));
    }
    const float operating = flange.setting(Setting::design_pressure_operating);
    const bool has_shell = given(flange, TARVANE_SHELL_STRESS_COLD) > 0.0f &&
                           flange.gives("tShell") && flange.gives("Dshell");
    if (has_shell && !is_none(found.shell_mawp) && operating > 0.0001f) {
        Check check = Check::compared(field("attached_shell"), found.shell_mawp, operating);
        if (explained(check, outcome)) {
            check.because("the attached shell withstands " +
                          shown(found.shell_mawp, Quantity::pressure, units) + ", below " +
                          shown(operating, Quantity::pressure, units));
        }
        checks.push_back(std::move(check));
    }
}

void check_thickness_of_full_face(const FlangeOutcome& outcome, const UnitSystem& units,
                                  Checks& checks) {
    const TARVANE_FLANGE_RESULTS& found = outcome.found;
    if (is_none(found.t_used) || is_none(found.t_min) || !(found.t_min > 0.0001f)) return;
    Check check = Check::compared(field("full_face_thickness"), found.t_used, found.t_min);
    if (explained(check, outcome)) {
        check.because("the thickness " + shown(found.t_used, Quantity::thickness, units) +
                      " is below the least one for a full face gasket, " +
                      shown(found.t_min, Quantity::thickness, units));
    }
    checks.push_back(std::move(check));
}

// ---- heat treatment ------------------------------------------------------------------------------------

void check_heat_treatment(const FlangeInput& flange, const FlangeOutcome& outcome, Checks& checks) {
    const CheckField& row = field("heat_treatment");
    if (flange.whole_setting(Setting::p_number) == 0) {
        if (flange.code() <= TARVANE_ASME_VIII_2)
            checks.push_back(Check::not_asked(row, "p_number is not given"));
        return;
    }
    if (outcome.pwht_required == 0)
        checks.push_back(Check::found(row, true).shown_by("none is required"));
    else if (outcome.pwht_required == 1 && flange.setting(Setting::pwht) != 0.0f)
        checks.push_back(Check::found(row, true).shown_by("required, and done: pwht = true"));
    else if (outcome.pwht_required == 1 && flange.gives("pwht"))
        checks.push_back(Check::found(row, false, "heat treatment is required, pwht is false"));
    else if (outcome.pwht_required == 1)
        checks.push_back(
            Check::not_made(row, "heat treatment is required; pwht = true where it is done"));
    else
        checks.push_back(Check::not_asked(row, "material is not given"));
}

void ask_for_temperature(const FlangeInput& flange, Checks& checks) {
    if (flange.code() <= TARVANE_ASME_VIII_2)
        checks.push_back(flange.temperature_check(field(METAL_TEMPERATURE.id)));
}

// ---- good practice -----------------------------------------------------------------------------------

void advise(const FlangeInput& flange, const FlangeOutcome& outcome, Checks& checks) {
    const TARVANE_FLANGE_RESULTS& found = outcome.found;
    // A limit of 0.0 is none: the thread series does not have it.
    const auto row = [&](const CheckField& described, float demand, float limit) {
        if (!is_none(demand) && !is_none(limit) && limit > 0.0001f)
            checks.push_back(Check::compared(described, demand, limit));
    };
    row(field("bolt_spacing_min"), found.bolt_spacing, found.bolt_spacing_min);
    row(field("bolt_spacing_max"), found.bolt_spacing, found.bolt_spacing_max);
    if (flange.analysis() != TARVANE_DESIGN) {
        // Other numbers do not straddle the centre lines.
        const int bolts = static_cast<int>(given(flange, TARVANE_BOLTS));
        const bool fours = bolts % 4 == 0;
        checks.push_back(
            Check::found(field("bolt_count"), fours,
                         fours ? "" : std::to_string(bolts) + " bolts are not a multiple of four"));
    }
    row(field("radial_distance"), found.radial, found.radial_min);
    row(field("edge_distance"), found.edge, found.edge_min);
    row(field("gasket_width_min"), found.N, found.N_min);
}

// ---- paragraphs ----------------------------------------------------------------------------------------

std::string_view paragraph_of(std::string_view viii_1, int code) {
    for (const Paragraphs& row : FLANGE_PARAGRAPHS) {
        if (row.viii_1 != viii_1) continue;
        switch (code) {
        case TARVANE_ASME_VIII_2:
            return row.viii_2;
        case TARVANE_PD_5500:
            return row.pd_5500;
        case TARVANE_EN_13445:
            return row.en_13445;
        default:
            return row.viii_1;
        }
    }
    return viii_1;
}

void name_paragraphs(const FlangeInput& flange, Checks& checks) {
    for (Check& check : checks) {
        std::string_view paragraph = check.paragraph();
        // A cover has stresses of UG-34 alone.
        if (flange.type() == TARVANE_BLIND && paragraph == "2-8") paragraph = "UG-34";
        check.under(flange_paragraph(paragraph, flange));
    }
}

} // namespace

std::string_view flange_paragraph(std::string_view viii_1, const FlangeInput& flange) {
    const bool older = flange.code() == TARVANE_ASME_VIII_2 && flange.edition() != EDITION_CURRENT;
    return older ? viii_1 : paragraph_of(viii_1, flange.code());
}

Checks flange_checks(const FlangeInput& flange, const FlangeOutcome& outcome,
                     const UnitSystem& units) {
    Checks checks;
    if (outcome.stopped) {
        std::string reason = stop_reason(outcome);
        if (outcome.fatal_code == 25)
            reason += ": the outside diameter is not above the corroded inside diameter";
        checks.push_back(Check::not_made(field("calculation"), std::move(reason)));
        return checks;
    }
    if (outcome.refused()) {
        checks.push_back(Check::not_made(
            field("calculation"), "the input check found fatal errors, no calculation was made"));
        check_gasket(flange, outcome, units, checks);
        return checks;
    }
    if (flange.rated()) {
        check_rating(flange, outcome, units, checks);
        checks.push_back(Check::not_asked(field("heat_treatment"),
                                          "kind \"rated\": the flange is judged by its rating"));
        ask_for_temperature(flange, checks);
        name_paragraphs(flange, checks);
        return checks;
    }
    const TARVANE_FLANGE_RESULTS& found = outcome.found;
    checks.reserve(MOST_OF_A_FLANGE);
    check_stresses(outcome, units, checks);
    check_bolt_area(outcome, units, checks);
    check_pressure(outcome, given(flange, TARVANE_P), units, checks);
    check_thickness(flange, outcome, units, checks);
    check_rigidity(outcome, flange.analysis(), units, checks);
    check_modulus(flange, found, units, checks);
    check_bolt_circle(flange, units, checks);
    check_gasket(flange, outcome, units, checks);
    check_rating(flange, outcome, units, checks);
    check_deflection(outcome, units, checks);
    if (found.openings != 0) check_openings(faults_of(found), units, checks);
    check_bolt_size(flange, units, checks);
    check_thickness_of_full_face(outcome, units, checks);
    check_cylinders(flange, outcome, units, checks);
    check_heat_treatment(flange, outcome, checks);
    ask_for_temperature(flange, checks);
    advise(flange, outcome, checks);
    if (outcome.words) name_paragraphs(flange, checks);
    return checks;
}

} // namespace tarvane::vessel
