#include "../host/scratch.h"

#include "bolting/bolt_spacing.h"
#include "frame/element_tables.h"
#include "frame/exports/exports.h"
#include "frame/switches.h"
#include "frame/units.h"
#include "report/channel.h"

#include <algorithm>
#include <cstring>
#include <type_traits>

// ---- the list of names against the header --------------------------------------------------------

namespace {
template <typename Result, typename... Arguments>
constexpr int argument_words(Result(TARVANE_CALL*)(Arguments...)) {
    return sizeof...(Arguments);
}
} // namespace

// An address takes one word, a length one more; the decorated number counts bytes.
#define TARVANE_ROUTINE(name, words, number)                                                       \
    static_assert(argument_words(&::name) == words, #name);                                        \
    static_assert(number == 4 * words, #name);
#define TARVANE_VARIABLE(name) static_assert(std::is_same_v<decltype(::name), std::int32_t>, #name);
#include "frame/exports/exports.def.inc"
#undef TARVANE_ROUTINE
#undef TARVANE_VARIABLE

namespace tarvane::host_test {
namespace {

constexpr Int ON = 1, OFF = 0;

class Surface : public HostTest {
  protected:
    Surface() : units(UNITS) { ::RESET_ENGINE(); }
    ~Surface() override {
        UNITS = units;
        ::RESET_ENGINE();
    }

  private:
    UNIT_CONSTANTS units;
};

// ---- setting routines ----------------------------------------------------------------------------

TEST_F(Surface, EachSettingRoutineStoresItsArgument) {
    const Int unit = 12, write = 3, pass = 4, step = 5, ca = 6;
    ::SET_IOUT(&unit);
    ::SET_IWRITE(&write);
    ::SET_IWRTFL(&pass);
    ::SET_IOSTEP(&step);
    ::SET_IWRTCA(&ca);
    EXPECT_EQ(IOUT, 12);
    EXPECT_EQ(IWRITE, 3);
    EXPECT_EQ(IWRTFL, 4);
    EXPECT_EQ(IOSTEP, 5);
    EXPECT_EQ(IWRTCA, 6);
    const Real yield = 30000.0f;
    ::SET_YIELD(&yield);
    EXPECT_EQ(CHART_YIELD, 30000.0f);
    const Int code = 4;
    ::SET_MODULE_CODE(&code);
    EXPECT_EQ(moduleCode, 4);
}

TEST_F(Surface, TheSevenSwitchesInTheirOrder) {
    const Int v[] = {11, 12, 13, 14, 15, 16, 17};
    ::SET_GLOBALS_FROM_TVN(&v[0], &v[1], &v[2], &v[3], &v[4], &v[5], &v[6]);
    EXPECT_EQ(GLOBALS_mp_G_NUSE_TABLEG, 11);
    EXPECT_EQ(GLOBALS_mp_G_NUSE_CORRODEDK, 12);
    EXPECT_EQ(GLOBALS_mp_G_NUSE_OLD_DIV_2, 13);
    EXPECT_EQ(GLOBALS_mp_G_NUSE_CASE2286, 14);
    EXPECT_EQ(G_USE_A5, 15);
    EXPECT_EQ(G_USE_A6, 16);
    EXPECT_EQ(G_USE_A7, 17);
}

TEST_F(Surface, SwitchesSelectorsAndToughnessInTheirOrder) {
    const Int v[] = {21, 22, 23, 24, 25, 26, 27};
    ::SET_SWITCHES(&v[0], &v[1]);
    EXPECT_EQ(G_FAILURE_CORROSION, 21);
    EXPECT_EQ(G_PER_ELEMENT_RATIO, 22);
    ::SET_MATERIAL_SELECTION(&v[0], &v[1], &v[2], &v[3]);
    EXPECT_EQ(G_MATL_METRIC, 21);
    EXPECT_EQ(G_FORCE_DIV1, 22);
    EXPECT_EQ(G_D2_CLASS, 23);
    EXPECT_EQ(G_MATL_YEAR, 24);
    ::SET_TOUGHNESS_SWITCHES(&v[0], &v[1], &v[2], &v[3], &v[4], &v[5], &v[6]);
    EXPECT_EQ(G_USE_A6, 21);
    EXPECT_EQ(G_TOUGHNESS.CurveTables, 22);
    EXPECT_EQ(G_TOUGHNESS.NoUg20f, 23);
    EXPECT_EQ(G_TOUGHNESS.MdmtSkip, 24);
    EXPECT_EQ(G_TOUGHNESS.FloorSwitch, 25);
    EXPECT_EQ(G_TOUGHNESS.Credit55, 26);
    EXPECT_TRUE(G_CURRENT_DIV_2);
}

TEST_F(Surface, ANegativeToughnessSwitchStaysAsItIs) {
    const Int keep = -1;
    ::SET_TOUGHNESS_SWITCHES(&keep, &keep, &keep, &keep, &keep, &ON, &keep);
    EXPECT_EQ(G_USE_A6, 0) << "as at load";
    EXPECT_EQ(G_TOUGHNESS.Credit55, 1);
    ::SET_TOUGHNESS_SWITCHES(&ON, &ON, &ON, &ON, &ON, &OFF, &ON);
    ::SET_TOUGHNESS_SWITCHES(&keep, &keep, &keep, &keep, &keep, &keep, &keep);
    EXPECT_EQ(G_USE_A6, 1);
    EXPECT_EQ(G_TOUGHNESS.CurveTables, 1);
    EXPECT_EQ(G_TOUGHNESS.NoUg20f, 1);
    EXPECT_EQ(G_TOUGHNESS.MdmtSkip, 1);
    EXPECT_EQ(G_TOUGHNESS.FloorSwitch, 1);
    EXPECT_EQ(G_TOUGHNESS.Credit55, 0);
    EXPECT_TRUE(G_CURRENT_DIV_2);
    ::SET_TOUGHNESS_SWITCHES(&keep, &keep, &keep, &keep, &keep, &keep, &OFF);
    EXPECT_FALSE(G_CURRENT_DIV_2);
}

TEST_F(Surface, AChartNameIsCutPaddedAndKeepsItsNuls) {
    ::SET_CHART("CS-2", 4);
    EXPECT_EQ(CHART_NAME.view(), "CS-2    ");
    ::SET_CHART("X", 1);
    EXPECT_EQ(CHART_NAME.view(), "X       ");
    ::SET_CHART("ABCDEFGHIJ", 10);
    EXPECT_EQ(CHART_NAME.view(), "ABCDEFGH");
    ::SET_CHART("\0\0\0\0", 4);
    EXPECT_FALSE(CHART_NAME.blank());
    ::SET_CHART("CS-2", -4);
    EXPECT_TRUE(CHART_NAME.blank()) << "a negative length counts as 0";
}

TEST_F(Surface, ALogicalStandsInBitZero) {
    for (const auto& [value, silenced] :
         {std::pair{0, false}, {1, true}, {2, false}, {3, true}, {-1, true}, {-2, false}}) {
        ::SET_NO_DIALOG(&value);
        EXPECT_EQ(DIALOGS_OFF(), silenced) << value;
    }
}

TEST_F(Surface, UnitFactorsInTheOrderOfTheRecordAndLabelsCutToTheirWidths) {
    const Real factors[] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11};
    std::string labels;
    for (char c = 'a'; c <= 'j'; ++c)
        labels += std::string(10, c);
    ::SET_UNITS(factors, labels.data(), 100);
    EXPECT_EQ(UNITS.thickness, 1.0f);
    EXPECT_EQ(UNITS.pressure, 2.0f);
    EXPECT_EQ(UNITS.diameter, 3.0f);
    EXPECT_EQ(UNITS.stress, 4.0f);
    EXPECT_EQ(UNITS.further, 5.0f);
    EXPECT_EQ(UNITS.force, 6.0f);
    EXPECT_EQ(UNITS.moment, 7.0f);
    EXPECT_EQ(UNITS.area, 8.0f);
    EXPECT_EQ(UNITS.temperature_offset, 9.0f);
    EXPECT_EQ(UNITS.temperature_scale, 10.0f);
    EXPECT_EQ(UNITS.weight, 11.0f);
    EXPECT_EQ(UNITS.thickness_label.view(), "aaa");
    EXPECT_EQ(UNITS.pressure_label.view(), "bbbbbbbbbb");
    EXPECT_EQ(UNITS.diameter_label.view(), "ccc");
    EXPECT_EQ(UNITS.stress_label.view(), "dddddddddd");
    EXPECT_EQ(UNITS.further_label.view(), "eeeeeeeeee");
    EXPECT_EQ(UNITS.force_label.view(), "fff");
    EXPECT_EQ(UNITS.moment_label.view(), "gggggg");
    EXPECT_EQ(UNITS.area_label.view(), "hhhhhh");
    EXPECT_EQ(UNITS.temperature_label.view(), "iiiii");
    EXPECT_EQ(UNITS.weight_label.view(), "jjj");

    ::SET_UNITS(factors, labels.data(), 15);
    EXPECT_EQ(UNITS.pressure_label.view(), "bbbbb     ");
    EXPECT_TRUE(UNITS.diameter_label.blank());
    EXPECT_TRUE(UNITS.weight_label.blank());
    ::SET_UNITS(factors, labels.data(), -1);
    EXPECT_TRUE(UNITS.thickness_label.blank());
}

// ---- blocks by address ---------------------------------------------------------------------------

TEST_F(Surface, TheSetupBlockIsZeroAndReachesTheEngine) {
    TARVANE_SETUP_ELEMENT* const setup = ::GETSETUP();
    for (Int i = 0; i < TARVANE_SETUP_ELEMENTS; ++i)
        EXPECT_EQ(setup[i].whole, 0);
    setup[TARVANE_SETUP_CODE - 1].whole = 3;
    setup[TARVANE_SETUP_NO_CORRECTION - 1].real = 1.0f;
    EXPECT_EQ(setup_design_code(), 3);
    EXPECT_EQ(setup_truncated(43), 1);
}

TEST_F(Surface, TheLineStoreIsBlankAtLoad) {
    const char* const store = ::GETLINESCOMFLG();
    EXPECT_TRUE(std::all_of(store, store + 750 * 125, [](char c) { return c == ' '; }));
    Int count = -1;
    ::LINE_COUNT(&count);
    EXPECT_EQ(count, 0);
    Text<100> line("a line");
    IWRITE = IWRTFL = 1;
    IOUT = -1;
    WRITE_LINE(line.data(), 100);
    ::LINE_COUNT(&count);
    EXPECT_EQ(count, 1);
    EXPECT_EQ(std::string_view(store, 12), "    a line  ");
}

TEST_F(Surface, ElementRowsAndHostInputReachTheEngine) {
    TARVANE_ELEMENT_ROW* const rows = ::GETELEMENTTABLES();
    const TARVANE_ELEMENT_ROW kept = rows[1];
    std::memcpy(rows[1].description, "Shell flange    ", 16);
    rows[1].joint_efficiency = 0.85f;
    rows[1].second_flag = '1';
    rows[1].value = 12.0f;
    EXPECT_EQ(element_row(2).description, "Shell flange");
    EXPECT_EQ(element_row(2).joint_efficiency, 0.85f);
    EXPECT_EQ(element_row(2).second_flag, '1');
    EXPECT_EQ(element_row(2).value, 12.0f);
    rows[1] = kept;

    TARVANE_HOST_INPUT* const input = ::GETHOSTINPUT();
    const TARVANE_HOST_INPUT kept_input = *input;
    std::memcpy(input->flange_grade, "GR 1.1", 6);
    std::memcpy(input->foundation[1], "17", 2);
    EXPECT_EQ(HOST_RECORD.flange_grade, "GR 1.1");
    EXPECT_EQ(HOST_RECORD.foundation[1], "17");
    *input = kept_input;
}

TEST_F(Surface, FailureTableAndItsCount) {
    Int count = -1;
    ::FAILURE_ROW_COUNT(&count);
    EXPECT_EQ(count, 0);
    FAILURE_TABLE[0].kind = 7;
    FAILURE_TABLE[0].hubRequired = 0.25f;
    FAILURE_ROWS = 1;
    ::FAILURE_ROW_COUNT(&count);
    EXPECT_EQ(count, 1);
    EXPECT_EQ(::GETFAILURETABLE()->kind, 7);
    EXPECT_EQ(::GETFAILURETABLE()->hub_required, 0.25f);
    ::RESET_ENGINE();
    ::FAILURE_ROW_COUNT(&count);
    EXPECT_EQ(count, 0);
    EXPECT_EQ(::GETFAILURETABLE()->kind, 0);
}

// ---- host side -----------------------------------------------------------------------------------

TEST_F(Surface, UnitsOpenAndClose) {
    const std::string path = scratch.file("report.txt");
    const Int unit = 10;
    Int status = -1, next = 0;
    ::OPENUNIT(&unit, path.data(), static_cast<Int>(path.size()), &status);
    EXPECT_EQ(status, 0);
    ::GETNEXTUNIT(&next);
    EXPECT_EQ(next, 11);
    ::CLOSEUNIT(&unit);
    ::CLOSEUNIT(&unit);
    ::GETNEXTUNIT(&next);
    EXPECT_EQ(next, 10);
    ::OPENUNIT(&unit, path.data(), -1, &status);
    EXPECT_EQ(status, 1);
}

Int TARVANE_CALL append_record(void* user, const char* text, Int length) {
    static_cast<std::string*>(user)->append(text, static_cast<std::size_t>(length));
    return 0;
}

// Line by line what OPENUNIT writes to a file; UNIT_STATUS remembers the line that found no unit.
TEST_F(Surface, AReportGoesToTheHostAsToAFile) {
    const std::string path = scratch.file("report.txt");
    const Int file = 10, host = 11, closed = 12, on = 1, style[6] = {1, 0, 0, 0, 0, 0};
    std::string taken;
    Int status = -1;
    ::OPENUNIT(&file, path.data(), static_cast<Int>(path.size()), &status);
    ::OPENHOSTUNIT(&host, append_record, &taken, &status);
    EXPECT_EQ(status, 0);
    ::SET_IWRITE(&on);
    ::SET_IWRTFL(&on);
    for (const Int unit : {file, host, closed}) {
        ::SET_IOUT(&unit);
        ::WRITE_TEXT("a line of the host's", 20, style);
        ::CLOSEUNIT(&unit);
        ::UNIT_STATUS(&unit, &status);
        EXPECT_EQ(status, unit == closed ? 1 : 0);
    }
    EXPECT_NE(taken.find("a line of the host's"), std::string::npos);
    EXPECT_EQ(taken, scratch.read("report.txt"));
}

// A length that was never set reaches no further than the longest text there is.
TEST_F(Surface, OfATextSoManyCharactersAreReadAtMost) {
    const std::string text(5000, 'x');
    EXPECT_EQ(text_of(text.data(), 4095).size(), 4095u);
    EXPECT_EQ(text_of(text.data(), 4097).size(), 4096u);
    EXPECT_EQ(text_of(text.data(), INT32_MAX).size(), 4096u);
    EXPECT_EQ(text_of(text.data(), INT32_MIN).size(), 0u);
    EXPECT_EQ(text_of(nullptr, 5).size(), 0u);
}

TEST_F(Surface, FoldersActAtOnce) {
    ::SET_SYSTEM_DIR("/data  ", 7);
    ::SET_MODULE_DIR("/opt/engine", 4);
    EXPECT_EQ(system_folder(), "/data");
    EXPECT_EQ(module_folder(), "/opt");
}

TEST_F(Surface, MaterialItems) {
    const Int table = 2, row = 3;
    ::SET_MATERIAL_ITEM(&table, &row, "SA-193 B7 bolting", 9);
    Text<40> name;
    MATERIAL_ITEM_NAME(2, 3, name);
    EXPECT_EQ(name, "SA-193 B7");
    ::SET_MATERIAL_ITEM(&table, &row, "", 0);
}

TEST_F(Surface, ServicesComeBackWithTheirUserPointer) {
    int told = 0;
    TARVANE_HOST_SERVICES services = {};
    services.version = TARVANE_HOST_SERVICES_VERSION;
    services.stop = [](void* user, Int status) { *static_cast<int*>(user) = 100 + status; };
    services.user = &told;
    ::SET_HOST_SERVICES(&services);
    FATAL_STOP(1);
    EXPECT_EQ(told, 101);
    ::SET_HOST_SERVICES(nullptr);
    EXPECT_EQ(SERVICES.stop, nullptr);
}

TEST_F(Surface, InstallationTextsAreBlankPaddedOrCut) {
    ::SET_MODULE_DIR("/opt/engine", 11);
    const Int selector = 270, unknown = 1, kind = 0;
    char field[20];
    ::GET_SYSTEM_PATH(&selector, "none such", 9, "2024", 4, field, 20);
    EXPECT_EQ(std::string_view(field, 20), "/opt/engine/        ");
    ::GET_SYSTEM_PATH(&unknown, "none such", 9, "2024", 4, field, 20);
    EXPECT_EQ(std::string_view(field, 20), std::string(20, ' '));
    ::HELP_FOLDER(&kind, field, 3);
    EXPECT_EQ(std::string_view(field, 4), "Hel ");
    ::HELP_FOLDER(&kind, field, -1);
    EXPECT_EQ(std::string_view(field, 4), "Hel ");
    EXPECT_EQ(::IS_MAIN_HOST(), 0);
    const Int topic = 0;
    ::LAUNCH_HELP(&topic);
}

TEST_F(Surface, DecimalCommasOnlyWhenTheyAreAskedFor) {
    char text[] = " = 1.5 psi";
    ::REPLACE_DECIMALS_WITH_COMMAS(text, 10);
    EXPECT_STREQ(text, " = 1.5 psi");
    DECIMAL_COMMA = true;
    ::REPLACE_DECIMALS_WITH_COMMAS(text, -10);
    EXPECT_STREQ(text, " = 1.5 psi");
    ::REPLACE_DECIMALS_WITH_COMMAS(text, 10);
    EXPECT_STREQ(text, " = 1,5 psi");
    ::RESET_ENGINE();
    EXPECT_FALSE(DECIMAL_COMMA);
}

// ---- RESET_ENGINE --------------------------------------------------------------------------------

TEST_F(Surface, ResetPutsTheEngineBackToItsStateAtLoad) {
    const Int store = -1, code = 2;
    ::SET_IOUT(&store);
    ::SET_IWRITE(&ON);
    ::SET_IWRTFL(&ON);
    ::SET_IOSTEP(&ON);
    ::SET_IWRTCA(&ON);
    ::SET_MODULE_CODE(&code);
    ::SET_CHART("CS-2", 4);
    ::SET_METRIC_CONSTANTS();
    FLAGS_mp_IINOSPECIAL = 1;
    QUIET_BOLT_AREA = QUIET_BOLT_DISTANCES = 1;
    GET_MODULE_DIR();
    ASSERT_NE(module_folder(), "");
    Text<100> line("a line");
    WRITE_LINE(line.data(), 100);
    OPEN_LINE_STORE();
    ASSERT_TRUE(STYLE_ENABLED);
    ASSERT_EQ(C_ONE, 1.0f);

    const Real carbon = 1.4f, titanium = 0.95f, warm = 150.0f;
    Real at_load = 0.0f, shifted = 0.0f, again = 0.0f, unused = 0.0f;
    ::MODULUS(&carbon, &at_load, &warm);
    ::MODULUS(&titanium, &unused, &warm);
    ::MODULUS(&carbon, &shifted, &warm);
    EXPECT_NE(shifted, at_load) << "the titanium axis stays";

    ::RESET_ENGINE();
    EXPECT_EQ(IOUT, 0);
    EXPECT_EQ(IWRITE, 0);
    EXPECT_EQ(IWRTFL, 0);
    EXPECT_EQ(IOSTEP, 0);
    EXPECT_EQ(IWRTCA, 0);
    EXPECT_EQ(moduleCode, 0);
    EXPECT_TRUE(CHART_NAME.blank());
    EXPECT_EQ(C_ONE, 0.0f);
    EXPECT_EQ(FLAGS_mp_IINOSPECIAL, 0);
    EXPECT_EQ(module_folder(), "");
    EXPECT_EQ(QUIET_BOLT_AREA, 0);
    EXPECT_EQ(QUIET_BOLT_DISTANCES, 0);
    EXPECT_FALSE(STYLE_ENABLED);
    EXPECT_EQ(LINESCOM[0][4], ' ');
    ::MODULUS(&carbon, &again, &warm);
    EXPECT_EQ(again, at_load);
}

TEST_F(Surface, ResetKeepsWhatTheHostProvided) {
    const std::string path = scratch.file("report.txt");
    const Int unit = 10, table = 1, row = 5;
    Int status = -1;
    ::OPENUNIT(&unit, path.data(), static_cast<Int>(path.size()), &status);
    ::SET_SYSTEM_DIR("/data", 5);
    ::SET_MODULE_DIR("/opt", 4);
    ::SET_NO_DIALOG(&ON);
    TARVANE_HOST_SERVICES services = {};
    services.version = TARVANE_HOST_SERVICES_VERSION;
    services.user = &services;
    ::SET_HOST_SERVICES(&services);
    ::SET_MATERIAL_ITEM(&table, &row, "long name", 9);
    const Real metric[] = {25.4f, 1, 25.4f, 1, 1, 1, 1, 1, 32, 1.8f, 1};
    ::SET_UNITS(metric, "mm", 2);
    ::GETELEMENTTABLES()[4].value = 5.0f;
    ::GETHOSTINPUT()->version_mark[0] = '-';

    ::RESET_ENGINE();
    EXPECT_NE(unit_handle(10), -1);
    EXPECT_EQ(system_folder(), "/data");
    EXPECT_EQ(module_folder(), "/opt");
    EXPECT_TRUE(DIALOGS_OFF());
    EXPECT_EQ(SERVICES.user, &services);
    Text<40> name;
    MATERIAL_ITEM_NAME(1, 5, name);
    EXPECT_EQ(name, "long name");
    EXPECT_EQ(UNITS.diameter, 25.4f);
    EXPECT_EQ(UNITS.thickness_label, "mm");
    EXPECT_EQ(element_row(5).value, 5.0f);
    EXPECT_EQ(HOST_RECORD.version_mark(1), '-');

    ::SET_MATERIAL_ITEM(&table, &row, "", OFF);
    ::GETELEMENTTABLES()[4].value = 0.0f;
    ::GETHOSTINPUT()->version_mark[0] = ' ';
}

} // namespace
} // namespace tarvane::host_test
