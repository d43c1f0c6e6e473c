#include "components/external_session.h"

#include "components/convex_head.h"
#include "components/engine_session.h"
#include "components/external_report.h"
#include "document/results.h"
#include "tarvane/tarvane.h"

#include <cmath>

namespace tarvane::vessel {

using N = ExternalNumber;

namespace {

constexpr std::int32_t CHART_WIDTH = 12;

void set_globals(const ExternalInput& element) {
    const std::int32_t table_g = element.whole_setting(N::table_g);
    const std::int32_t older = element.older() ? ON : OFF;
    const std::int32_t stress = element.by_stress() ? ON : OFF;
    SET_GLOBALS_FROM_TVN(&table_g, &OFF, &older, &stress, &OFF, &ON, &OFF);
    const std::int32_t code = element.code();
    SET_MODULE_CODE(&code);
    const float yield = element.setting(N::Sy);
    SET_YIELD(&yield);
    TARVANE_SETUP_ELEMENT* setup = GETSETUP();
    setup[TARVANE_SETUP_CODE - 1].whole = code;
    setup[TARVANE_SETUP_PRINT_EXTERNAL - 1].real = 1.0f;
}

// Whether SHLEXT will find a curve, before it writes lines of one: zeros of its numbers say that there is
// none.
void look_for_curve(const ExternalInput& element, ExternalOutcome& o) {
    char chart[CHART_WIDTH];
    put_blank_padded(chart, sizeof chart, element.chart());
    const float T = element.setting(N::T), Sy = element.setting(N::Sy);
    float t_used = 0.0f, E = 0.0f, a_elastic = 0.0f, second = 0.0f, a_max = 0.0f, b_max = 0.0f;
    float c0 = 0.0f, c1 = 0.0f, c2 = 0.0f;
    READ_CHART(chart, CHART_WIDTH, &T, &t_used, &E, &a_elastic, &second, &a_max, &b_max, &c0, &c1,
               &c2, &Sy);
    o.no_curve = !(E > 0.0f && b_max > 0.0f);
}

void take_results(ExternalOutcome& o) {
    o.found = *GETEXTERNALRESULTS();
    o.above_chart = o.found.above_chart != 0;
    o.chart_maximum = o.found.temp_curve;
    o.maep = o.found.maep;
    o.tca = o.found.tca;
    o.slen = o.found.slen;
    o.d_o = o.found.d_o;
    o.factor_a = o.found.factor_a[TARVANE_AT_GIVEN];
    o.factor_b = o.found.factor_b[TARVANE_AT_GIVEN];
    o.fha = o.found.fha[TARVANE_AT_GIVEN];
    o.fail_ca = o.found.fail_ca;
}

void call_shlext(const ExternalInput& element, ExternalOutcome& o) {
    const auto at = [&](N number) -> const float* {
        return &element.settings[static_cast<std::size_t>(number)];
    };
    char chart[CHART_WIDTH];
    put_blank_padded(chart, sizeof chart, element.chart());
    const std::int32_t shape = element.shape(), print = ON,
                       // D of a torispherical head is no measure of its crown
        outside = element.outside() && shape != TARVANE_TORISPHERICAL_HEAD ? ON : OFF,
                       modulus = element.whole_setting(N::material_class),
                       service = element.whole_setting(N::service);
    const float D = element.diameter();
    float maep = 0.0f, tca = 0.0f, slen = 0.0f, d_o = 0.0f, factor_a = 0.0f, factor_b = 0.0f,
          fha = 0.0f, fail_ca = 0.0f;
    SHLEXT(at(N::P), at(N::T), chart, CHART_WIDTH, &shape, &D, at(N::t), at(N::ci), at(N::k),
           at(N::L), at(N::alpha), at(N::length), &maep, &tca, &slen, &d_o, &factor_a, &factor_b,
           &print, at(N::Dsmall), at(N::cone_length), &outside, at(N::S), at(N::Ut), at(N::Sy),
           &modulus, &fha, &fail_ca, &service);
    take_results(o);
}

// The user should know where Table G and the equations of the geometric chart are apart.
void compare_factor_a(const ExternalInput& element, const UnitSystem& units, ExternalOutcome& o) {
    constexpr int STAGE = TARVANE_AT_GIVEN;
    constexpr float MOST_APART = 0.05f;
    const bool of_table = o.found.a_by[STAGE] == TARVANE_A_OF_TABLE_G;
    if (!of_table && o.found.a_by[STAGE] != TARVANE_A_OF_CYLINDER) return;
    const std::int32_t shape = element.shape();
    const auto factor_by = [&](std::int32_t table) {
        float d_over_t = 0.0f, l_over_d = 0.0f, a = 0.0f;
        GLOBALS_mp_G_NUSE_TABLEG = table;
        FACTOR_A(&o.found.thickness[STAGE], &o.found.diameter[STAGE], &o.found.length[STAGE],
                 &element.settings[static_cast<std::size_t>(N::k)], &shape, &d_over_t, &l_over_d,
                 &a);
        return a;
    };
    const float table = factor_by(ON), equations = factor_by(OFF);
    GLOBALS_mp_G_NUSE_TABLEG = element.whole_setting(N::table_g);
    const float taken = of_table ? table : equations;
    const float apart = std::fabs(table - equations) / taken;
    if (!(apart > MOST_APART)) return;
    o.messages.push_back("factor A is " + number_text(equations, 7, units) +
                         " by the equations of the geometric chart and " +
                         number_text(table, 7, units) + " by Table G, " +
                         number_text(apart * 100.0f, 1, units) + " % apart; that of " +
                         (of_table ? "the table" : "the equations") + " was taken");
}

} // namespace

ExternalOutcome run_external(const ExternalInput& element, const Request& file) {
    ExternalOutcome outcome;
    RESET_ENGINE();
    set_decimal_comma(file);
    const Services services(outcome);
    set_units(file);
    if (element.convex_head() && missing_for_convex_head(element).empty())
        outcome.convex = std::make_shared<ConvexHead>(check_convex_head(element));
    set_globals(element); // after the check of a head, which has others
    look_for_curve(element, outcome);

    const ReportUnit report(file.report);
    report.switch_on();
    write_external_inputs(element, file.units);
    if (!outcome.no_curve) call_shlext(element, outcome);
    write_external_results(element, outcome);
    outcome.report = report.switch_off_and_read();
    if (file.report && !outcome.no_curve && !outcome.stopped)
        compare_factor_a(element, file.units, outcome);
    return outcome;
}

} // namespace tarvane::vessel
