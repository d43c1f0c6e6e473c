// The exported routines: they unpack their arguments and call.
#include "frame/exports/exports.h"

#include "bolting/bolt_material.h"
#include "bolting/bolt_tables.h"
#include "external/state.h"
#include "flange/driver.h"
#include "foundation/foundation_files.h"
#include "frame/element_tables.h"
#include "frame/switches.h"
#include "frame/units.h"
#include "host/file_units.h"
#include "host/install_paths.h"
#include "host/services.h"
#include "materials/modulus.h"
#include "report/channel.h"
#include "report/keyed_text.h"
#include "report/renderer.h"
#include "report/work_file.h"
#include "shell/shlint.h"
#include "toughness/impact_table.h"
#include "toughness/pwht.h"
#include "toughness/results.h"

#include <cstddef>

using tarvane::give_text;
using tarvane::Int;
using tarvane::logical;
using tarvane::Real;
using tarvane::text_of;

// The blocks that a host reaches by their address have one layout on both sides.
static_assert(sizeof(TARVANE_ELEMENT_ROW) == sizeof(tarvane::ELEMENT_ROW));
static_assert(offsetof(TARVANE_ELEMENT_ROW, value) == offsetof(tarvane::ELEMENT_ROW, value));
static_assert(sizeof(TARVANE_HOST_INPUT) == sizeof(tarvane::HOST_INPUT));
static_assert(offsetof(TARVANE_HOST_INPUT, own_mdmt) == offsetof(tarvane::HOST_INPUT, own_mdmt));
static_assert(sizeof(TARVANE_FAILURE_ROW) == sizeof(tarvane::FAILURE_ROW));
static_assert(offsetof(TARVANE_FAILURE_ROW, hub_required) ==
              offsetof(tarvane::FAILURE_ROW, hubRequired));
static_assert(offsetof(TARVANE_FAILURE_ROW, below) == offsetof(tarvane::FAILURE_ROW, below));
static_assert(sizeof(TARVANE_SETUP_ELEMENT) == sizeof(tarvane::SETUP_ELEMENT));
static_assert(sizeof(TARVANE_HOST_SERVICES) == sizeof(tarvane::HOST_SERVICES));
static_assert(offsetof(TARVANE_HOST_SERVICES, clock) == offsetof(tarvane::HOST_SERVICES, clock));
static_assert(offsetof(TARVANE_HOST_SERVICES, user) == offsetof(tarvane::HOST_SERVICES, user));
static_assert(TARVANE_HOST_SERVICES_VERSION == tarvane::HOST_SERVICES_VERSION);
static_assert(TARVANE_ELEMENT_ROWS == tarvane::ELEMENT_ROWS);
static_assert(TARVANE_STORE_RECORDS == tarvane::STORE_RECORDS);
static_assert(TARVANE_STORE_WIDTH == tarvane::STORE_WIDTH);
static_assert(TARVANE_RECORD_ELEMENTS == tarvane::RECORD_ELEMENTS);
static_assert(TARVANE_NO_VALUE == tarvane::NO_VALUE);

namespace {

void give_unless_negative(Int value, Int& into) {
    if (value >= 0) into = value;
}

// Labels are in fields of one width, each cut to the width of its own kind; fields beyond the end
// of the text are blank.
struct LabelFields {
    std::string_view labels;
    std::size_t next = 0;

    template <std::size_t N>
    void give(tarvane::Text<N>& label) {
        constexpr std::size_t FIELD = 10;
        label = next < labels.size() ? labels.substr(next, FIELD) : std::string_view();
        next += FIELD;
    }
};

} // namespace

extern "C" {

// ---- calculation -------------------------------------------------------------------------------

void TARVANE_CALL FLANGE_CALC(float* record, const char* text, int32_t,
                              const int32_t* report_kernel, const int32_t* write_case,
                              float* map_nc, float* t_req_new_cold, float* t_req_new, float* mawp,
                              float* t_req, const int32_t* quiet_overstress, int32_t* rigidity,
                              const int32_t* code, const int32_t* element, const int32_t* bolt_row,
                              const float* joint_e, const int32_t* corroded_rigidity,
                              const int32_t* standard_flange, const float* p_operating,
                              const int32_t* div2_edition, const int32_t* decimal_comma) {
    tarvane::FLANGE_ARGUMENTS arguments{
        .record = record,
        .text = text,
        .reportKernel = report_kernel,
        .writeCase = write_case,
        .mapNc = map_nc,
        .tReqNewCold = t_req_new_cold,
        .tReqNew = t_req_new,
        .mawp = mawp,
        .tReq = t_req,
        .quietOverstress = quiet_overstress,
        .rigidity = rigidity,
        .code = code,
        .element = element,
        .boltRow = bolt_row,
        .jointE = joint_e,
        .corrodedRigidity = corroded_rigidity,
        .standardFlange = standard_flange,
        .pOperating = p_operating,
        .div2Edition = div2_edition,
        .decimalComma = decimal_comma,
    };
    tarvane::FLANGE_CALC(arguments);
}

// ---- data --------------------------------------------------------------------------------------

float TARVANE_CALL ASMEMOD(const float* temperature, const int32_t* reference,
                           const int32_t* code) {
    return tarvane::ASMEMOD(*temperature, *reference, *code);
}

void TARVANE_CALL MODULUS(const float* chart_class, float* result, const float* temperature) {
    tarvane::MODULUS(*chart_class, *result, *temperature);
}

void TARVANE_CALL GET_YIELD_STRESS_FROM_CHART(const char* chart, int32_t chart_len,
                                              const float* temperature, float* result) {
    tarvane::GET_YIELD_STRESS_FROM_CHART(text_of(chart, chart_len), *temperature, *result);
}

void TARVANE_CALL PWHT_NEEDED(const char* material, int32_t material_len, const int32_t* index,
                              const int32_t* rule, const int32_t* forced, const float* thickness,
                              int32_t* required, int32_t* p_number_one, const int32_t* preheat,
                              int32_t* group_code) {
    tarvane::PWHT_NEEDED(text_of(material, material_len), *index, *rule, *forced, *thickness,
                         *required, *p_number_one, *preheat, *group_code);
}

void TARVANE_CALL CHECK_BOLT_MATL_VS_DIAMETER(const char* name, int32_t name_len,
                                              const int32_t* reference, float* min_dia,
                                              float* max_dia, int32_t* ok, const float* dia,
                                              const int32_t* print_flag, const int32_t* code,
                                              const int32_t* metric, const int32_t* force_div1,
                                              const int32_t* division2_class) {
    tarvane::CHECK_BOLT_MATL_VS_DIAMETER(text_of(name, name_len), *reference, *min_dia, *max_dia,
                                         *ok, *dia, *print_flag, *code, *metric, *force_div1,
                                         *division2_class);
}

void TARVANE_CALL GETBOLTDATA(const float* dia, const int32_t* series, float* row, int32_t* found) {
    tarvane::GETBOLTDATA(*dia, *series, row, *found);
}

void TARVANE_CALL BOLTHELPER(const int32_t* series, float* diameters, float* rows, int32_t* count) {
    tarvane::BOLTHELPER(*series, diameters, rows, *count);
}

void TARVANE_CALL GETNEXTUNIT(int32_t* unit) { tarvane::GETNEXTUNIT(*unit); }

void TARVANE_CALL REPLACE_DECIMALS_WITH_COMMAS(char* text, int32_t text_len) {
    tarvane::REPLACE_DECIMALS_WITH_COMMAS(text, tarvane::max(text_len, 0));
}

// ---- settings ----------------------------------------------------------------------------------

void TARVANE_CALL SET_IOUT(const int32_t* unit) { tarvane::IOUT = *unit; }
void TARVANE_CALL SET_IWRITE(const int32_t* flag) { tarvane::IWRITE = *flag; }
void TARVANE_CALL SET_IWRTFL(const int32_t* flag) { tarvane::IWRTFL = *flag; }
void TARVANE_CALL SET_IOSTEP(const int32_t* flag) { tarvane::IOSTEP = *flag; }
void TARVANE_CALL SET_IWRTCA(const int32_t* flag) { tarvane::IWRTCA = *flag; }
void TARVANE_CALL SET_YIELD(const float* yield_stress) { tarvane::CHART_YIELD = *yield_stress; }

void TARVANE_CALL SET_CHART(const char* chart, int32_t chart_len) {
    tarvane::SET_CHART(text_of(chart, chart_len));
}

void TARVANE_CALL SET_METRIC_CONSTANTS(void) { tarvane::SET_METRIC_CONSTANTS(); }

void TARVANE_CALL SET_GLOBALS_FROM_TVN(const int32_t* use_table_g, const int32_t* use_corroded_k,
                                       const int32_t* use_old_div_2, const int32_t* use_case_2286,
                                       const int32_t* use_a5, const int32_t* use_a6,
                                       const int32_t* use_a7) {
    GLOBALS_mp_G_NUSE_TABLEG = *use_table_g;
    GLOBALS_mp_G_NUSE_CORRODEDK = *use_corroded_k;
    GLOBALS_mp_G_NUSE_OLD_DIV_2 = *use_old_div_2;
    GLOBALS_mp_G_NUSE_CASE2286 = *use_case_2286;
    tarvane::G_USE_A5 = *use_a5;
    tarvane::G_USE_A6 = *use_a6;
    tarvane::G_USE_A7 = *use_a7;
}

TARVANE_SETUP_ELEMENT* TARVANE_CALL GETSETUP(void) {
    return reinterpret_cast<TARVANE_SETUP_ELEMENT*>(tarvane::SETUP);
}

char* TARVANE_CALL GETLINESCOMFLG(void) {
    tarvane::LINE_STORE_GIVEN = true;
    return &tarvane::LINESCOM[0][0];
}

// ---- host side ---------------------------------------------------------------------------------

void TARVANE_CALL LINE_COUNT(int32_t* count) { *count = tarvane::LINE_COUNT; }

void TARVANE_CALL OPENUNIT(const int32_t* unit, const char* path, int32_t path_len,
                           int32_t* status) {
    tarvane::OPENUNIT(*unit, text_of(path, path_len), *status);
}

void TARVANE_CALL OPENHOSTUNIT(const int32_t* unit, TARVANE_TAKE_RECORD take, void* user,
                               int32_t* status) {
    tarvane::OPENHOSTUNIT(*unit, take, user, *status);
}

void TARVANE_CALL CLOSEUNIT(const int32_t* unit) { tarvane::close_unit(*unit); }

void TARVANE_CALL UNIT_STATUS(const int32_t* unit, int32_t* status) {
    *status = tarvane::UNIT_STATUS(*unit);
}

void TARVANE_CALL SET_HOST_SERVICES(const TARVANE_HOST_SERVICES* table) {
    if (table == nullptr) {
        tarvane::SET_HOST_SERVICES(nullptr);
        return;
    }
    const tarvane::HOST_SERVICES services{
        .version = table->version,
        .message_box = table->message_box,
        .dialog_text = table->dialog_text,
        .end_dialog = table->end_dialog,
        .report_fatal = table->report_fatal,
        .stop = table->stop,
        .clock = table->clock,
        .user = table->user,
    };
    tarvane::SET_HOST_SERVICES(&services);
}

void TARVANE_CALL SET_HOST_WINDOW(void* const* window) { tarvane::SET_HOST_WINDOW(*window); }

void TARVANE_CALL SET_NO_DIALOG(const int32_t* flag) { tarvane::SET_NO_DIALOG(logical(*flag)); }

void TARVANE_CALL SET_SYSTEM_DIR(const char* path, int32_t path_len) {
    tarvane::SET_SYSTEM_DIR(text_of(path, path_len));
}

void TARVANE_CALL SET_MODULE_DIR(const char* path, int32_t path_len) {
    tarvane::SET_MODULE_DIR(text_of(path, path_len));
}

TARVANE_ELEMENT_ROW* TARVANE_CALL GETELEMENTTABLES(void) {
    return reinterpret_cast<TARVANE_ELEMENT_ROW*>(tarvane::ELEMENT_TABLES);
}

TARVANE_HOST_INPUT* TARVANE_CALL GETHOSTINPUT(void) {
    return reinterpret_cast<TARVANE_HOST_INPUT*>(&tarvane::HOST_RECORD);
}

TARVANE_FAILURE_ROW* TARVANE_CALL GETFAILURETABLE(void) {
    tarvane::FAILURE_TABLE_GIVEN = true;
    return reinterpret_cast<TARVANE_FAILURE_ROW*>(tarvane::FAILURE_TABLE);
}

void TARVANE_CALL FAILURE_ROW_COUNT(int32_t* count) { *count = tarvane::FAILURE_ROWS; }

void TARVANE_CALL SET_SWITCHES(const int32_t* failure_corrosion, const int32_t* per_element_ratio) {
    tarvane::G_FAILURE_CORROSION = *failure_corrosion;
    tarvane::G_PER_ELEMENT_RATIO = *per_element_ratio;
}

void TARVANE_CALL SET_MATERIAL_SELECTION(const int32_t* metric, const int32_t* force_div1,
                                         const int32_t* division2_class, const int32_t* year) {
    tarvane::G_MATL_METRIC = *metric;
    tarvane::G_FORCE_DIV1 = *force_div1;
    tarvane::G_D2_CLASS = *division2_class;
    tarvane::G_MATL_YEAR = *year;
}

void TARVANE_CALL SET_UNITS(const float* factors, const char* labels, int32_t labels_len) {
    tarvane::UNIT_CONSTANTS& units = tarvane::UNITS;
    Real* const in_order[] = {
        &units.thickness,
        &units.pressure,
        &units.diameter,
        &units.stress,
        &units.further,
        &units.force,
        &units.moment,
        &units.area,
        &units.temperature_offset,
        &units.temperature_scale,
        &units.weight,
    };
    for (Real* const factor : in_order)
        *factor = *factors++;

    LabelFields fields{text_of(labels, labels_len)};
    fields.give(units.thickness_label);
    fields.give(units.pressure_label);
    fields.give(units.diameter_label);
    fields.give(units.stress_label);
    fields.give(units.further_label);
    fields.give(units.force_label);
    fields.give(units.moment_label);
    fields.give(units.area_label);
    fields.give(units.temperature_label);
    fields.give(units.weight_label);
}

void TARVANE_CALL SET_EDITION(const int32_t* new_div2_rules, const int32_t* a98) {
    if (*new_div2_rules >= 0) tarvane::NEW_DIV_2_RULES = *new_div2_rules != 0;
    if (*a98 >= 0) tarvane::CODE_A98_ADDENDA = *a98 != 0 ? 1 : 0;
}

void TARVANE_CALL SET_DECIMAL_COMMA(const int32_t* flag) {
    tarvane::DECIMAL_COMMA = logical(*flag);
}

void TARVANE_CALL SET_MODULE_CODE(const int32_t* code) { tarvane::moduleCode = *code; }

void TARVANE_CALL SET_TOUGHNESS_SWITCHES(const int32_t* reductions_allowed,
                                         const int32_t* curve_tables, const int32_t* no_ug20f,
                                         const int32_t* mdmt_skip, const int32_t* floor_switch,
                                         const int32_t* credit55, const int32_t* div2_current) {
    give_unless_negative(*reductions_allowed, tarvane::G_USE_A6);
    tarvane::TOUGHNESS_SWITCHES& switches = tarvane::G_TOUGHNESS;
    give_unless_negative(*curve_tables, switches.CurveTables);
    give_unless_negative(*no_ug20f, switches.NoUg20f);
    give_unless_negative(*mdmt_skip, switches.MdmtSkip);
    give_unless_negative(*floor_switch, switches.FloorSwitch);
    give_unless_negative(*credit55, switches.Credit55);
    if (*div2_current >= 0) tarvane::G_CURRENT_DIV_2 = *div2_current != 0;
}

void TARVANE_CALL SET_MATERIAL_ITEM(const int32_t* table, const int32_t* row, const char* name,
                                    int32_t name_len) {
    tarvane::SET_MATERIAL_ITEM_NAME(*table, *row, text_of(name, name_len));
}

void TARVANE_CALL RESET_ENGINE(void) {
    tarvane::RESET_SWITCHES();
    tarvane::RESET_CODE_CONSTANTS();
    tarvane::RESET_HOST();
    tarvane::RESET_UNITS();
    tarvane::RESET_REPORT();
    tarvane::RESET_KEYED_TEXT();
    tarvane::RESET_WORK_FILE();
    tarvane::RESET_MATERIALS();
    tarvane::RESET_BOLTING();
    tarvane::RESET_FLANGE();
    tarvane::RESET_SHELLS();
    tarvane::RESET_EXTERNAL();
    tarvane::RESET_IMPACT_TABLE();
    tarvane::RESET_MDMT_RESULTS();
    tarvane::RESET_FOUNDATION();
}

// ---- installation ------------------------------------------------------------------------------

void TARVANE_CALL GET_SYSTEM_PATH(const int32_t* selector, const char* product, int32_t product_len,
                                  const char* version, int32_t version_len, char* path,
                                  int32_t path_len) {
    tarvane::Text<260> found;
    Int length = 0;
    tarvane::GET_SYSTEM_PATH(*selector, tarvane::trimmed(text_of(product, product_len)),
                             tarvane::trimmed(text_of(version, version_len)), found, length);
    give_text(path, path_len, found.columns(1, length));
}

int32_t TARVANE_CALL IS_MAIN_HOST(void) { return tarvane::IS_MAIN_HOST() ? 1 : 0; }

int32_t TARVANE_CALL HELP_LANGUAGE(void) { return tarvane::HELP_LANGUAGE(); }

void TARVANE_CALL HELP_FOLDER(const int32_t* kind, char* folder, int32_t folder_len) {
    tarvane::Text<260> found;
    Int length = 0;
    tarvane::HELP_FOLDER(*kind, found, length);
    give_text(folder, folder_len, found.columns(1, length));
}

void TARVANE_CALL LAUNCH_HELP(const int32_t* topic) { tarvane::LAUNCH_HELP(*topic); }

} // extern "C"
