#include "components/flange_session.h"

#include "components/engine_session.h"
#include "components/rated_report.h"
#include "tarvane/tarvane.h"

namespace tarvane::vessel {

namespace {

// ---- settings --------------------------------------------------------------------------------------

void set_globals(const FlangeInput& flange) {
    const std::int32_t old_div_2 = flange.edition() == EDITION_OLDER ? ON : OFF;
    GLOBALS_mp_G_NUSE_OLD_DIV_2 = old_div_2;
    SET_GLOBALS_FROM_TVN(&OFF, &OFF, &old_div_2, &OFF, &OFF, &ON, &OFF);
    const std::int32_t code = flange.code();
    SET_MODULE_CODE(&code);
    const std::int32_t new_div_2 =
        code == TARVANE_ASME_VIII_2 && flange.edition() == EDITION_CURRENT ? ON : OFF;
    const std::int32_t a98 = flange.edition() == EDITION_A98 ? ON : OFF;
    SET_EDITION(&new_div_2, &a98);
    const float yield = flange.setting(Setting::chart_yield);
    SET_YIELD(&yield);
    const std::int32_t failure = flange.whole_setting(Setting::failure_corrosion);
    const std::int32_t ratio = flange.whole_setting(Setting::per_element_ratio);
    SET_SWITCHES(&failure, &ratio);
    const std::int32_t metric = flange.whole_setting(Setting::material_metric);
    const std::int32_t div1 = flange.whole_setting(Setting::force_div1);
    const std::int32_t d2_class = flange.whole_setting(Setting::d2_class);
    const std::int32_t year = flange.whole_setting(Setting::material_year);
    SET_MATERIAL_SELECTION(&metric, &div1, &d2_class, &year);
}

void fill_setup(const FlangeInput& flange) {
    TARVANE_SETUP_ELEMENT* setup = GETSETUP();
    setup[TARVANE_SETUP_CODE - 1].whole = flange.code();
    setup[TARVANE_SETUP_NO_CORRECTION - 1].real =
        flange.setting(Setting::bolt_correction) != 0.0f ? 0.0f : 1.0f;
    setup[TARVANE_SETUP_ROOT_TWO - 1].real = flange.setting(Setting::opening_factor);
}

void fill_tables(const FlangeInput& flange, int number) {
    TARVANE_ELEMENT_ROW& row = GETELEMENTTABLES()[number - 1];
    put_blank_padded(row.description, sizeof row.description, flange.description().substr(0, 15));
    put_blank_padded(row.from_node, sizeof row.from_node,
                     flange.text_setting(TextSetting::from_node));
    put_blank_padded(row.to_node, sizeof row.to_node, flange.text_setting(TextSetting::to_node));
    put_blank_padded(row.material, sizeof row.material,
                     flange.text.substr(slot::flange_material, 15));
    std::string p_number(7, ' ');
    p_number += std::to_string(flange.whole_setting(Setting::p_number));
    put_blank_padded(row.heat_treatment, sizeof row.heat_treatment, p_number);
    row.first_flag = row.second_flag = ' ';
    row.unused[0] = row.unused[1] = ' ';
    row.joint_efficiency = flange.setting(Setting::joint_efficiency);
    row.first_inspection = flange.setting(Setting::inspection_first);
    row.second_inspection = flange.setting(Setting::inspection_second);
    row.value = 0.0f;

    TARVANE_HOST_INPUT& host = *GETHOSTINPUT();
    put_blank_padded(host.flange_class, sizeof host.flange_class,
                     flange.text_setting(TextSetting::flange_class));
    put_blank_padded(host.flange_grade, sizeof host.flange_grade,
                     flange.text_setting(TextSetting::flange_grade));

    const std::int32_t flange_materials = 1, bolt_materials = 2, at = number;
    const std::string& material = flange.text_setting(TextSetting::material_name);
    const std::string& bolts = flange.text_setting(TextSetting::bolt_material_name);
    SET_MATERIAL_ITEM(&flange_materials, &at, material.data(),
                      static_cast<std::int32_t>(material.size()));
    SET_MATERIAL_ITEM(&bolt_materials, &at, bolts.data(), static_cast<std::int32_t>(bolts.size()));
}

// What UCS-56 requires of a material whose P-number is known.
int heat_treatment(const FlangeInput& flange, float thickness) {
    if (!flange.asks_for_heat_treatment() || thickness == TARVANE_NO_VALUE) return -1;
    const std::string material = flange.text.substr(slot::flange_material, 15);
    const std::int32_t reference = flange.whole_setting(Setting::material_reference),
                       code = flange.code();
    std::int32_t required = -1, p_number_one = 0, group = 0;
    PWHT_NEEDED(material.data(), static_cast<std::int32_t>(material.size()), &reference, &code,
                &OFF, &thickness, &required, &p_number_one, &OFF, &group);
    return required;
}

// The rating replaces a calculation.
void run_rated(const FlangeInput& flange, const Request& file, FlangeOutcome& outcome) {
    RESET_ENGINE();
    set_decimal_comma(file);
    set_units(file);
    const ReportUnit report(file.report);
    report.switch_on();
    if (file.report) write_rated_report(flange, file.units);
    outcome.report = report.switch_off_and_read();
}

} // namespace

void set_up_flange(const FlangeInput& flange, const Request& file) {
    RESET_ENGINE();
    set_globals(flange);
    set_units(file);
    fill_setup(flange);
    fill_tables(flange, flange.number);
}

void call_flange(const FlangeInput& flange, const Request& file, std::int32_t write_case,
                 FlangeOutcome& outcome) {
    outcome.record = flange.record;
    outcome.record[TARVANE_ELEMENT] = static_cast<float>(flange.number);
    const std::int32_t quiet = flange.whole_setting(Setting::quiet_overstress);
    const std::int32_t code = flange.code(), row = flange.number;
    const std::int32_t corroded = flange.whole_setting(Setting::corroded_rigidity);
    const std::int32_t standard = flange.whole_setting(Setting::standard_flange);
    const std::int32_t decimal_comma = file.units.decimal_comma ? ON : OFF;
    std::int32_t rigidity = flange.whole_setting(Setting::rigidity);
    const float joint_efficiency = flange.setting(Setting::joint_efficiency);
    const float operating = flange.setting(Setting::design_pressure_operating);
    FLANGE_CALC(outcome.record.data() + 1, flange.text.data(),
                static_cast<std::int32_t>(flange.text.size()), &ON, &write_case, &outcome.map_nc,
                &outcome.t_req_new_cold, &outcome.t_req_new, &outcome.mawp, &outcome.t_req, &quiet,
                &rigidity, &code, &row, &row, &joint_efficiency, &corroded, &standard, &operating,
                &OFF, &decimal_comma);
    outcome.found = *GETFLANGERESULTS();
}

FlangeOutcome run_flange(const FlangeInput& flange, const Request& file) {
    FlangeOutcome outcome;
    outcome.words = file.words;
    const Services services(outcome);
    if (flange.rated()) {
        run_rated(flange, file, outcome);
        return outcome;
    }
    set_up_flange(flange, file);

    const ReportUnit report(file.report);
    report.switch_on();
    const std::int32_t reported = flange.record[TARVANE_P] < 0.0f ? 2 : 1;
    call_flange(flange, file, file.report ? reported : 0, outcome);
    outcome.report = report.switch_off_and_read();
    outcome.pwht_required = heat_treatment(flange, outcome.found.pwht_thickness);
    return outcome;
}

void run_flange_again(const FlangeInput& flange, const Request& file, FlangeOutcome& outcome) {
    outcome = {};
    outcome.words = file.words;
    const Services services(outcome);
    call_flange(flange, file, 0, outcome);
}

} // namespace tarvane::vessel
