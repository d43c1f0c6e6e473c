#include "components/mdmt_session.h"

#include "components/engine_session.h"
#include "components/mdmt_report.h"
#include "components/mdmt_results.h"
#include "document/results.h"
#include "tarvane/tarvane.h"
#include "values/decimal.h"

#include <cstring>

namespace tarvane::vessel {

using N = MdmtNumber;

namespace {

constexpr std::int32_t SINGLE_NAME =
    4; // list of impact test temperatures: one name, one temperature

void set_globals(const MdmtInput& element) {
    const std::int32_t older = element.am_218() ? ON : OFF;
    const std::int32_t reductions = element.whole_setting(N::reductions);
    SET_GLOBALS_FROM_TVN(&OFF, &OFF, &older, &OFF, &OFF, &reductions, &OFF);
    const std::int32_t code = element.code(), d2_class = element.whole_setting(N::d2_class);
    SET_MODULE_CODE(&code);
    SET_MATERIAL_SELECTION(&OFF, &OFF, &d2_class, &OFF);
    const std::int32_t tables = element.whole_setting(N::curve_tables),
                       credit55 = element.has(N::credit_floor) ? OFF : ON,
                       low_ratio = element.whole_setting(N::low_ratio),
                       division_2 = element.division_2() ? ON : OFF;
    SET_TOUGHNESS_SWITCHES(&reductions, &tables, &OFF, &ON, &low_ratio, &credit55, &division_2);
    TARVANE_SETUP_ELEMENT* setup = GETSETUP();
    setup[TARVANE_SETUP_CODE - 1].whole = code;
    setup[TARVANE_SETUP_EDITION - 1].real = element.edition() == MDMT_EDITION_A98 ? 1.0f : 0.0f;
}

template <std::size_t width>
void put_field(char (&field)[width], const std::string& text) {
    put_blank_padded(field, width, text);
}

std::string temperature_text(float value) { return general_text(static_cast<double>(value), 7); }

void fill_host_input(const MdmtInput& element) {
    TARVANE_HOST_INPUT& host = *GETHOSTINPUT();
    put_field(host.required_temperature[0], temperature_text(element.setting(N::required)));
    put_field(host.version_mark, "");
    std::string switches;
    for (const N number : {N::use_66g, N::use_66_1, N::use_ug84})
        switches += element.has(number) ? '1' : '0';
    switches += element.user_temperature ? '1' : '0';
    put_field(host.impact_switches, switches);
    for (auto& count : host.impact_counts)
        put_field(count, "0");
    put_field(host.single_name, element.material());
    put_field(host.single_number, temperature_text(element.setting(N::impact_temperature)));
    READ_IMPACT_TABLE();
}

void take_results(MdmtOutcome& o) {
    const auto temperature = [](float T) {
        return T == TARVANE_NO_VALUE ? TARVANE_NO_TEMPERATURE : T;
    };
    o.found = *GETMDMTRESULTS();
    o.t_min = temperature(o.found.t_min);
    o.mdmt = temperature(o.found.mdmt);
    if (o.found.ug20f == TARVANE_UG20F_APPLIES) o.t_ug20 = o.found.t_ug20f;
    if (o.found.ratio_kind != TARVANE_NO_RATIO) o.ratio = o.found.ratio;
    o.reduction = temperature(o.found.reduction);
    if (o.found.estar_used != TARVANE_NO_VALUE) o.estar_used = o.found.estar_used;
    if (o.found.pwht_required != 0) o.estar_used = -o.estar_used;
}

bool note_of_stainless(const MdmtInput& element, MdmtOutcome& o) {
    const std::int32_t code = element.code();
    const std::string& name = element.material();
    const auto length = static_cast<std::int32_t>(name.size());
    if (LIS_EXEMPT_SS(&code, name.data(), length) == 0) return false;
    float t_min = 0.0f, mdmt = 0.0f, ratio = 0.0f, factor1 = 0.0f, factor2 = 0.0f;
    UHA51_NOTE(&code, name.data(), length, &t_min, &mdmt, &ratio, &factor1, &factor2);
    take_results(o);
    return true;
}

void call_mdmt_element(const MdmtInput& element, MdmtOutcome& o) {
    const auto at = [&](N number) -> const float* {
        return &element.settings[static_cast<std::size_t>(number)];
    };
    // A Division 2 curve below 1 means that there is nothing to calculate.
    const std::int32_t curve = element.exempt() ? 0 : element.curve();
    const std::int32_t code = element.code(), pwht = element.whole_setting(N::pwht),
                       credit = element.whole_setting(N::credit),
                       ug20f = element.whole_setting(N::ug20f), pad = element.whole_setting(N::pad),
                       index = element.whole_setting(N::material_reference),
                       number = element.number;
    const float tr =
        element.setting(N::tr) > 0.0f ? element.setting(N::tr) : -element.setting(N::ratio);
    const std::string& name = element.material();
    std::int32_t warnings = 0;
    float ratio = element.setting(N::pad_ratio), reduction = element.setting(N::pad_reduction);
    float t_min = 0.0f, mdmt = 0.0f, t_ug20 = 0.0f, estar_used = 0.0f;
    MDMT_ELEMENT(&curve, at(N::tg), &t_min, &mdmt, &t_ug20, at(N::E), at(N::ci), at(N::T), &tr,
                 &warnings, &code, &ratio, &pwht, &credit, at(N::ce), &ug20f, at(N::Sy),
                 &estar_used, name.data(), static_cast<std::int32_t>(name.size()), &index,
                 &SINGLE_NAME, &reduction, &pad, at(N::tg_sr), &number);
    take_results(o);
}

} // namespace

MdmtOutcome run_mdmt(const MdmtInput& element, const Request& file) {
    MdmtOutcome outcome;
    RESET_ENGINE();
    set_decimal_comma(file);
    const Services services(outcome);
    set_globals(element);
    set_units(file);
    fill_host_input(element);

    const ReportUnit report(file.report);
    report.switch_on();
    write_mdmt_inputs(element, file.units);
    outcome.exempt_stainless = note_of_stainless(element, outcome);
    if (!outcome.exempt_stainless && (!element.exempt() || element.division_2()))
        call_mdmt_element(element, outcome);
    if (exempt_as_flange(element, outcome))
        outcome.figures.emplace("temperature of UCS-66(c), " +
                                    shown_degrees(element.ucs_66c, file.units),
                                UCS_66C_SOURCE);
    write_mdmt_results(element, outcome, file.units);
    outcome.report = report.switch_off_and_read();
    return outcome;
}

} // namespace tarvane::vessel
