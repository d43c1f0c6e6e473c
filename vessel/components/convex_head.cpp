#include "components/convex_head.h"

#include "components/external_results.h"
#include "components/report_lines.h"
#include "components/shell_report.h"
#include "components/shell_results.h"
#include "document/results.h"
#include "fields/shell_checks.h"
#include "tarvane/tarvane.h"

#include <cmath>
#include <limits>
#include <utility>

namespace tarvane::vessel {

using N = ExternalNumber;

namespace {

constexpr float NOMINAL_PRESSURE = 1.0f; // psi
constexpr float LEAST_YIELD = 1000.0f;   // psi, of Appendix 1-4(f), for the message
constexpr float WITHIN = 0.9999f;        // MAWP and thickness are rounded apart

float external_pressure(const ExternalInput& element) {
    return element.has_pressure() ? element.setting(N::P) : 0.0f;
}

bool has_thickness(const ConvexHead& convex) {
    return std::isfinite(convex.results.found.t_required);
}

// The thickness is infinite where none is enough.
void calculate(ConvexHead& convex) {
    calculate_pressures(convex.head, convex.results);
    TARVANE_SHELL_RESULTS& found = convex.results.found;
    const ConvexRating rating = convex_rating({}, found);
    found.t_required = rating.t_inside;
    convex.maep = rating.maep_i;
}

bool holds(const ConvexHead& convex) {
    const ShellOutcome& o = convex.results;
    return has_thickness(convex) && o.found.t_required <= convex.head.setting(ShellNumber::t) &&
           o.found.mawp >= convex.head.setting(ShellNumber::P) * WITHIN &&
           o.found.t_status_14f != TARVANE_HEAD_FAILED;
}

// COMPUTE_FAILURE_CA_DIV1 has neither the tolerance nor Appendix 1-4(f).
float failure_corrosion(const ConvexHead& convex) {
    constexpr int PASSES = 24;
    const ShellInput& given = convex.head;
    float sound = 0.0f, failed = given.setting(ShellNumber::t) - given.setting(ShellNumber::Ut);
    for (int pass = 0; pass < PASSES; ++pass) {
        ConvexHead trial{given, {}};
        const float c = pass == 0 ? 0.0f : (sound + failed) / 2.0f;
        trial.head.put_setting(ShellNumber::ci, c);
        // The modulus is looked up for heads that are thin as they are.
        if (convex.results.found.thin == 0) trial.head.put_setting(ShellNumber::skip_1_4f, 1.0f);
        calculate(trial);
        if (holds(trial))
            sound = c;
        else if (pass == 0)
            return 0.0f;
        else
            failed = c;
    }
    return sound;
}

// What Appendix 1-4(f) lacks of a thin head.
std::string missing_for_thin_head(const ConvexHead& convex, const UnitSystem& units) {
    const ShellInput& head = convex.head;
    const float yield = head.setting(ShellNumber::Sy);
    const bool diameter = head.diameter() > 0.0f;
    if (!(yield > 0.0f)) return diameter ? "Sy" : "Sy and D or Do";
    if (!diameter) return "D or Do";
    if ((convex.results.found.lacks_14f & TARVANE_LACKS_YIELD) != 0)
        return "Sy above " + shown(LEAST_YIELD, Quantity::stress, units);
    return "the elastic modulus of material_class";
}

} // namespace

ConvexRating convex_rating(const ConvexCheck& chart, const TARVANE_SHELL_RESULTS& found) {
    ConvexRating r{};
    CONVEX_HEAD(&chart.P, &chart.maep, &chart.tca, &found.t_req_raw, &found.t_required, &found.mawp,
                &r.Pi, &r.t_inside, &r.maep_i, &r.maep_g, &r.t_g);
    return r;
}

ShellInput internal_head(const ExternalInput& element) {
    using S = ShellNumber;
    constexpr std::pair<S, N> SHARED[] = {
        {S::kind, N::kind},
        {S::code, N::code},
        {S::T, N::T},
        {S::ci, N::ci},
        {S::Ut, N::Ut},
        {S::service, N::service},
        {S::S, N::S},
        {S::Sa, N::S}, // for the new and cold pressure, which is not needed
        {S::Sy, N::Sy},
        {S::Sy_cold, N::Sy},
        {S::material_class, N::material_class},
        {S::temp_limit, N::temp_limit},
        {S::skip_1_4f, N::skip_1_4f},
        {S::D, N::D},
        {S::Do, N::Do},
        {S::t, N::t},
        {S::k, N::k},
        {S::corroded_K, N::corroded_K},
        {S::L, N::L},
        {S::r, N::r}};
    ShellInput head;
    for (const auto& [theirs, ours] : SHARED)
        head.put_setting(theirs, element.setting(ours));
    head.put_setting(S::P, element.has_pressure()
                               ? convex_rating({external_pressure(element), 0.0f, 0.0f}, {}).Pi
                               : NOMINAL_PRESSURE);
    head.put_setting(S::E, 1.0f);
    // A chart needs no diameter of a torispherical head, Appendix 1-4(f) does.
    if (!(head.diameter() > 0.0f)) head.put_setting(S::skip_1_4f, 1.0f);
    head.texts[static_cast<std::size_t>(ShellText::material)] = element.material();
    return head;
}

std::string_view missing_for_convex_head(const ExternalInput& element) {
    const bool stress = element.setting(N::S) > 0.0f;
    const bool knuckle =
        element.shape() != TARVANE_TORISPHERICAL_HEAD || element.setting(N::r) > 0.0f;
    if (!stress) return knuckle ? "S" : "S and r";
    return knuckle ? "" : "r";
}

ConvexHead check_convex_head(const ExternalInput& element) {
    ConvexHead convex{internal_head(element), {}};
    calculate(convex);
    if (element.has_pressure()) convex.results.fail_ca = failure_corrosion(convex);
    return convex;
}

// ---- report ----------------------------------------------------------------------------------------

void write_convex_head(const ConvexHead& convex, const ExternalInput& element,
                       const ExternalOutcome& chart) {
    const ShellOutcome& o = convex.results;
    const bool pressure = element.has_pressure();
    report_line("");
    report_heading("Pressure on the Convex Side, UG-33 (a)(1): UG-32 for 1.67 P and E = 1");
    if (element.shape() == TARVANE_TORISPHERICAL_HEAD && element.diameter() > 0.0f) {
        report_input(element.outside() ? "Outside Diameter" : "Inside Diameter",
                     element.outside() ? "Do" : "D", element.diameter(), TARVANE_AS_DIAMETER);
    }
    report_input("Joint Efficiency", "E", 1.0f, TARVANE_AS_FACTOR);
    report_convex_check(convex.head, {external_pressure(element), chart.maep, chart.tca});
    if (pressure) {
        report_line("");
        report_column("Corrosion Allowance at Failure by Internal Pressure", o.fail_ca,
                      TARVANE_AS_THICKNESS);
        if (!has_thickness(convex)) {
            report_line("Warning: No Thickness Holds 1.67 Times the Pressure Inside!", ERROR_LINE);
        } else if (is_short_of_thickness(convex.head, o)) {
            report_line("Warning: Required Thickness by UG-33 (a)(1) Exceeds the Given Thickness!",
                        ERROR_LINE);
        }
        if (is_short_of_pressure(convex.head, o)) {
            report_line("Warning: Allowable External Pressure by UG-33 (a) is below the Design "
                        "Pressure!",
                        ERROR_LINE);
        }
    }
    write_head_warnings(convex.head, o);
}

// ---- checks ----------------------------------------------------------------------------------------

namespace {

consteval const CheckField& field(std::string_view id) { return field_of(EXTERNAL_CHECKS, id); }

void check_thickness(const ConvexHead& convex, const UnitSystem& units, Checks& checks) {
    const CheckField& row = field("convex_thickness");
    if (!has_thickness(convex)) {
        checks.push_back(Check::found(
            row, false, "UG-33 (a)(1): no thickness is enough for 1.67 times the pressure inside"));
        return;
    }
    const float required = convex.results.found.t_required, t = convex.head.setting(ShellNumber::t);
    Check check = Check::compared(row, required, t);
    if (check.falls_short()) {
        check.because("the required thickness by UG-33 (a)(1), for 1.67 times the pressure "
                      "inside, " +
                      shown(required, Quantity::thickness, units) + " is above the given " +
                      shown(t, Quantity::thickness, units));
    }
    checks.push_back(std::move(check));
}

void check_pressure(const ConvexHead& convex, float P, const UnitSystem& units, Checks& checks) {
    Check check = Check::compared(field("convex_maep"), convex.maep, P);
    if (check.falls_short()) {
        check.because("the MAEP by UG-33 (a) " + shown(convex.maep, Quantity::pressure, units) +
                      " is below the external design pressure " +
                      shown(P, Quantity::pressure, units));
    }
    checks.push_back(std::move(check));
}

void check_thin_head(const ConvexHead& convex, bool skipped, const UnitSystem& units,
                     Checks& checks) {
    const TARVANE_SHELL_RESULTS& found = convex.results.found;
    const CheckField& row = field("convex_1_4f");
    if (found.t_status_14f == TARVANE_HEAD_FAILED) {
        checks.push_back(Check::found(
            row, false, "UG-33 (a)(1): Appendix 1-4(f) has no solution for this geometry"));
    }
    if (found.thin == 0) return;
    if (found.evaluated_14f != 0) {
        if (found.t_status_14f == TARVANE_HEAD_FAILED) return;
        checks.push_back(Check::compared(row, thickness_14f(convex.head, found),
                                         convex.head.setting(ShellNumber::t)));
        return;
    }
    const std::string reason =
        "UG-33 (a)(1): thinner than 0.002 L, but Appendix 1-4(f) was not evaluated";
    if (skipped) {
        checks.push_back(Check::not_made(row, reason).waived());
        return;
    }
    checks.push_back(
        Check::not_made(row, reason + "; it needs " + missing_for_thin_head(convex, units)));
}

} // namespace

void convex_checks(const ExternalInput& element, const ExternalOutcome& outcome,
                   const UnitSystem& units, Checks& checks) {
    if (!element.convex_head()) return;
    if (outcome.convex == nullptr) {
        checks.push_back(
            Check::not_made(field("convex_made"),
                            "UG-33 (a)(1) was not checked for 1.67 times the pressure inside; it "
                            "needs " +
                                std::string(missing_for_convex_head(element))));
        return;
    }
    const ConvexHead& convex = *outcome.convex;
    if (element.has_pressure()) {
        check_thickness(convex, units, checks);
        check_pressure(convex, element.setting(N::P), units, checks);
    }
    check_thin_head(convex, element.setting(N::skip_1_4f) != 0.0f, units, checks);
    for (Check& check : form_checks(convex.head, convex.results))
        checks.push_back(std::move(check));
    check_very_thin(convex.results, checks);
}

} // namespace tarvane::vessel
