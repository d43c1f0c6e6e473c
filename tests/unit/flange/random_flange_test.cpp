// A thousand random flanges through the exported routine: plausible ones, and ones with arbitrary bits
// in some elements, over all types, codes, kinds and forms. Whatever the input, the call ends, keeps to
// the record's layout and to the width of a line, and does the same again after RESET_ENGINE.
#include "../host/scratch.h"

#include "frame/element_tables.h"
#include "frame/units.h"
#include "host/services.h"
#include "report/channel.h"
#include "tarvane/tarvane.h"
#include "test_paths.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <iterator>
#include <memory>
#include <random>
#include <vector>

namespace tarvane::host_test {
namespace {

constexpr int FLANGES = 1000;

// Characters that are read: of every flange, and those of the stand-alone form with its labels.
constexpr std::size_t VESSEL_TEXT = 135;
constexpr std::size_t STAND_ALONE_TEXT = 423;

using Bits = std::array<std::uint32_t, TARVANE_RECORD_ELEMENTS>;
constexpr auto NONE_GIVEN = std::bit_cast<std::uint32_t>(TARVANE_NO_VALUE);

// ---- random flanges ------------------------------------------------------------------------------

class Chance {
  public:
    explicit Chance(unsigned seed) : engine(seed) {}

    // From 0 up to, not including, n.
    std::uint32_t below(std::uint32_t n) { return static_cast<std::uint32_t>(engine()) % n; }
    bool one_in(std::uint32_t n) { return below(n) == 0; }
    Real between(Real low, Real high) {
        return low + (high - low) * (static_cast<Real>(below(100001)) / 100000.0f);
    }
    template <typename T, std::size_t N>
    T of(const T (&choices)[N]) {
        return choices[below(static_cast<std::uint32_t>(N))];
    }
    // A whole number of a range, now and then one beside it.
    Real whole(Int low, Int high) {
        if (one_in(60)) return static_cast<Real>(of({low - 1, high + 1, -4, 99}));
        return static_cast<Real>(
            low + static_cast<Int>(below(static_cast<std::uint32_t>(high - low + 1))));
    }
    std::uint32_t bits() { return static_cast<std::uint32_t>(engine()); }
    Real any_real() {
        switch (below(4)) {
        case 0:
            return std::bit_cast<Real>(bits());
        case 1:
            return std::bit_cast<Real>(of(SPECIAL_BITS));
        case 2:
            return between(-3.0f, 3.0f);
        default:
            return between(-1.0e6f, 1.0e6f);
        }
    }

  private:
    static constexpr std::uint32_t SPECIAL_BITS[] = {
        NONE_GIVEN,  0x00000000u, 0x80000000u, 0x7F800000u, 0xFF800000u, 0x7FC00000u,
        0xFFC00000u, 0x7F800001u, 0x00000001u, 0x7F7FFFFFu, 0xFF7FFFFFu, 0x4F000000u};
    std::mt19937 engine;
};

struct Flange {
    std::array<Real, TARVANE_RECORD_ELEMENTS> record{};
    std::vector<char> text;
    Int report_kernel = 1, write_case = 1, quiet_overstress = 0, rigidity = 0, code = 1,
        element = 1, bolt_row = 1, corroded_rigidity = 0, standard_flange = 0, div2_edition = 0,
        decimal_comma = 0;
    Real joint_e = 1.0f, p_operating = 100.0f;

    // the engine's setting before the call
    Int module_code = 1, metric = 0, old_div_2 = 0, failure_corrosion = 0, per_element_ratio = 0,
        no_special = 0, destination = -1;
    Real setup_no_correction = 0.0f, setup_root_two = 0.0f;

    Real& at(int number) { return TARVANE_AT(record.data(), number); }
    Int kind() const { return truncated(TARVANE_AT(record.data(), TARVANE_KIND)); }
    bool stand_alone() const { return truncated(TARVANE_AT(record.data(), TARVANE_ELEMENT)) < 0; }
    void put(std::size_t offset, std::string_view slot) {
        if (offset + slot.size() <= text.size())
            std::memcpy(text.data() + offset, slot.data(), slot.size());
    }
};

void set_geometry(Flange& flange, Chance& chance) {
    const Real B = chance.between(4.0f, 60.0f);
    const Real go = chance.between(0.2f, 1.5f), g1 = go * chance.between(1.0f, 2.2f);
    const Real a = chance.of({0.5f, 0.625f, 0.75f, 0.875f, 1.0f, 1.25f, 2.0f, 0.7874f, 1.05f});
    const Real C = B + 2.0f * g1 + 2.0f * a * chance.between(1.2f, 2.5f);
    const Real A = C + 2.0f * a * chance.between(0.9f, 1.6f);
    const bool full_face = chance.one_in(5);
    const Int type = truncated(flange.at(TARVANE_TYPE));
    const bool hubless =
        type >= TARVANE_INTEGRAL_SLIP_ON && type <= TARVANE_LOOSE_RING && chance.one_in(3);
    flange.at(TARVANE_B) = B;
    flange.at(TARVANE_A) = A;
    flange.at(TARVANE_C) = C;
    flange.at(TARVANE_a) = a;
    flange.at(TARVANE_go) = hubless ? 0.0f : go;
    flange.at(TARVANE_g1) = hubless ? 0.0f : g1;
    flange.at(TARVANE_h) = hubless || chance.one_in(15) ? 0.0f : chance.between(0.1f, 4.0f);
    flange.at(TARVANE_t) = chance.one_in(20) ? 0.0f : chance.between(0.3f, 5.0f);
    flange.at(TARVANE_ci) = chance.one_in(2) ? 0.0f : chance.between(0.0f, 0.3f);
    flange.at(TARVANE_ce) = chance.one_in(3) ? chance.between(0.0f, 0.15f) : 0.0f;
    flange.at(TARVANE_Go) =
        full_face ? chance.between(C + 0.1f, A) : chance.between(B + 0.5f, C - a);
    flange.at(TARVANE_Gi) = chance.between(B, flange.at(TARVANE_Go));
    flange.at(TARVANE_Fod) = chance.one_in(3) ? A : flange.at(TARVANE_Go);
    flange.at(TARVANE_Fid) = B;
    if (type == TARVANE_REVERSE_WELD_NECK || type == TARVANE_LOOSE_REVERSE)
        flange.at(TARVANE_B) = C - chance.between(2.0f, 8.0f);
    flange.at(TARVANE_SHELL_ID) = B;
    flange.at(TARVANE_SHELL_THICKNESS) = chance.one_in(3) ? 0.0f : go;
    flange.at(TARVANE_SHELL_CA) = chance.one_in(3) ? 0.0625f : 0.0f;
    if (chance.one_in(3)) {
        flange.at(TARVANE_D) = chance.between(5.0f, 40.0f);
        flange.at(TARVANE_d) =
            chance.one_in(2) ? flange.at(TARVANE_D) : chance.between(5.0f, 40.0f);
        flange.at(TARVANE_L) = chance.one_in(2) ? 0.0f : chance.between(10.0f, 150.0f);
    }
    flange.at(TARVANE_LjID) = chance.one_in(2) ? B : 0.0f;
    flange.at(TARVANE_LjOD) = chance.one_in(2) ? C - a : 0.0f;
    flange.at(TARVANE_BOLTS) =
        static_cast<Real>(4 * (1 + truncated(0.7f * C / a * chance.between(0.4f, 1.0f))));
    flange.at(TARVANE_THREADS) = chance.whole(1, 8);
    flange.at(TARVANE_ROOT_AREA) = chance.one_in(2) ? 0.3f : 0.0f;
}

void set_loads_and_materials(Flange& flange, Chance& chance) {
    flange.at(TARVANE_P) = chance.one_in(12)  ? 0.0f
                           : chance.one_in(8) ? chance.between(-60.0f, 0.0f)
                                              : chance.between(5.0f, 400.0f);
    flange.at(TARVANE_T_DESIGN) = chance.between(-50.0f, 1000.0f);
    flange.at(TARVANE_Sfo) = chance.between(5000.0f, 25000.0f);
    flange.at(TARVANE_Sfa) = chance.between(5000.0f, 25000.0f);
    flange.at(TARVANE_Sb) = chance.between(15000.0f, 30000.0f);
    flange.at(TARVANE_Sa) = chance.between(15000.0f, 30000.0f);
    flange.at(TARVANE_SHELL_STRESS) = chance.between(5000.0f, 25000.0f);
    flange.at(TARVANE_SHELL_STRESS_COLD) = chance.between(5000.0f, 25000.0f);
    flange.at(TARVANE_m) = chance.of({0.0f, 0.5f, 1.0f, 2.0f, 2.75f, 3.0f, 6.5f});
    flange.at(TARVANE_y) = chance.of({0.0f, 200.0f, 1600.0f, 3700.0f, 10000.0f, 26000.0f});
    flange.at(TARVANE_SKETCH) = chance.whole(1, 9);
    flange.at(TARVANE_COLUMN) = chance.whole(1, 2);
    flange.at(TARVANE_tg) = 0.125f;
    flange.at(TARVANE_w) = chance.one_in(3) ? chance.between(0.05f, 0.5f) : 0.0f;
    flange.at(TARVANE_n) = chance.whole(0, 2);
    flange.at(TARVANE_tw) = 0.25f;
    flange.at(TARVANE_AXIAL_FORCE) = chance.between(-20000.0f, 20000.0f);
    flange.at(TARVANE_BENDING_MOMENT) = chance.between(-5000.0f, 5000.0f);
    flange.at(TARVANE_DENSITY) = 0.2836f;
    flange.at(TARVANE_MATERIAL_CLASS) = static_cast<Real>(chance.below(8));
    flange.at(TARVANE_lp) = chance.between(0.0f, 20.0f);
    flange.at(TARVANE_tp) = 0.375f;
    flange.at(TARVANE_mPart) = 2.0f;
    flange.at(TARVANE_yPart) = 1600.0f;
    flange.at(TARVANE_SKETCH_PART) = chance.whole(1, 9);
    flange.at(TARVANE_COLUMN_PART) = chance.whole(1, 2);
    if (chance.one_in(6))
        for (const int load :
             {TARVANE_MATING_OPERATING, TARVANE_MATING_SEATING, TARVANE_MATING_DESIGN})
            flange.at(load) = chance.between(0.0f, 600000.0f);
    flange.at(TARVANE_ATTACHMENT) = static_cast<Real>(chance.below(6));
    flange.at(TARVANE_HUB_BY_SHELL) = static_cast<Real>(chance.below(2));
    flange.at(TARVANE_SEATING_RULE) = static_cast<Real>(chance.below(3));
    flange.at(TARVANE_HOLES) = static_cast<Real>(chance.below(2));
    for (int hole = TARVANE_HOLE_D1; hole <= TARVANE_HOLE_PITCH; ++hole)
        flange.at(hole) = chance.between(0.0f, 8.0f);
    if (truncated(flange.at(TARVANE_TYPE)) == TARVANE_BLIND && chance.one_in(3))
        flange.at(TARVANE_B) = chance.one_in(2) ? 2.9e7f : 0.0f;
}

void set_units(Flange& flange, Chance& chance) {
    constexpr Real US[] = {1, 1, 1, 1, 1, 1, 1, 1, 0, 1, 1};
    constexpr Real SI[] = {25.4f,     0.068947f, 25.4f, 0.0068947f, 1.0f,     4.44822f,
                           1.355818f, 6.4516f,   32.0f, 1.8f,       0.453592f};
    const bool metric = chance.one_in(3);
    for (int i = 0; i < 11; ++i)
        flange.at(TARVANE_UNIT_THICKNESS + i) = metric ? SI[i] : US[i];
    flange.put(TARVANE_TEXT_THICKNESS_LABEL, metric ? "mm " : "in.");
    flange.put(TARVANE_TEXT_PRESSURE_LABEL, metric ? "bars" : "psig");
    flange.put(TARVANE_TEXT_DIAMETER_LABEL, metric ? "mm " : "in.");
    flange.put(TARVANE_TEXT_STRESS_LABEL, metric ? "MPa" : "psi");
    flange.put(TARVANE_TEXT_FORCE_LABEL, metric ? "N  " : "lbf");
    flange.put(TARVANE_TEXT_MOMENT_LABEL, metric ? "N-m" : "ft-lbs");
    flange.put(TARVANE_TEXT_AREA_LABEL, metric ? "cm\xB2" : "in\xB2");
    flange.put(TARVANE_TEXT_TEMPERATURE, metric ? "C" : "F");
    flange.put(TARVANE_TEXT_WEIGHT_LABEL, metric ? "kg " : "lbm");
}

void set_texts(Flange& flange, Chance& chance) {
    flange.put(TARVANE_TEXT_MATERIAL, "SA-105");
    flange.put(TARVANE_TEXT_BOLT_MATERIAL, "SA-193 B7");
    flange.put(TARVANE_TEXT_DESCRIPTION, chance.one_in(2) ? "Random flange :" : "Random");
    for (const int slot :
         {TARVANE_TEXT_EXTERNAL_LOADS, TARVANE_TEXT_MATING_LOADS, TARVANE_TEXT_CHANNEL_COVER,
          TARVANE_TEXT_USE_CORROSION, TARVANE_TEXT_PARTITION})
        flange.put(static_cast<std::size_t>(slot), chance.of({"Y", "N", "N", "y", " "}));
    flange.put(TARVANE_TEXT_CHART, chance.of({"CS-2", "HA-3", "NFT-1", "", "none such"}));
}

// Arbitrary bits in some elements, arbitrary bytes in some slots.
void disturb(Flange& flange, Chance& chance) {
    if (!chance.one_in(3)) return;
    for (std::uint32_t n = 1 + chance.below(6); n > 0; --n)
        flange.at(static_cast<int>(1 + chance.below(TARVANE_RECORD_ELEMENTS))) = chance.any_real();
    if (chance.one_in(2)) return;
    for (std::uint32_t n = 1 + chance.below(3); n > 0; --n) {
        const std::uint32_t slot =
            15 * chance.below(static_cast<std::uint32_t>(flange.text.size() / 15));
        for (std::uint32_t i = 0; i < 15; ++i)
            flange.text[slot + i] = static_cast<char>(chance.below(256));
    }
    if (chance.one_in(3)) flange.p_operating = chance.any_real();
    if (chance.one_in(3)) flange.joint_e = chance.any_real();
    if (chance.one_in(3)) flange.element = static_cast<Int>(chance.bits());
    if (chance.one_in(3)) flange.bolt_row = static_cast<Int>(chance.bits());
    if (chance.one_in(3)) flange.setup_no_correction = chance.any_real();
    if (chance.one_in(3)) flange.setup_root_two = chance.any_real();
}

Flange random_flange(unsigned seed) {
    Chance chance(seed);
    Flange flange;
    const Real form = chance.of({-1.0f, -1.0f, 1.0f, 1.0f, 7.0f, 0.0f});
    flange.text.assign(form < 0.0f ? STAND_ALONE_TEXT : VESSEL_TEXT, ' ');
    flange.at(TARVANE_ELEMENT) = form;
    flange.at(TARVANE_TYPE) = chance.whole(1, 9);
    flange.at(TARVANE_KIND) = chance.whole(1, 3);
    set_geometry(flange, chance);
    set_loads_and_materials(flange, chance);
    set_units(flange, chance);
    set_texts(flange, chance);

    flange.code = truncated(chance.whole(1, 4));
    flange.module_code = chance.one_in(10) ? static_cast<Int>(chance.below(6)) : flange.code;
    flange.report_kernel = chance.one_in(8) ? 0 : 1;
    flange.write_case = chance.of({1, 1, 1, 1, 2, 0, 3});
    flange.quiet_overstress = static_cast<Int>(chance.below(2));
    flange.rigidity = static_cast<Int>(chance.below(2));
    flange.element = static_cast<Int>(chance.below(4));
    flange.bolt_row = static_cast<Int>(chance.below(3));
    flange.corroded_rigidity = static_cast<Int>(chance.below(2));
    flange.standard_flange = chance.one_in(12) ? 1 : 0;
    flange.div2_edition = static_cast<Int>(chance.below(2));
    flange.decimal_comma = static_cast<Int>(chance.below(4));
    flange.joint_e = chance.of({1.0f, 0.85f, 0.7f, 0.0f});
    flange.p_operating = flange.at(TARVANE_P) * chance.of({1.0f, 1.0f, 1.1f, 0.0f});
    flange.metric = static_cast<Int>(chance.below(3));
    flange.old_div_2 = static_cast<Int>(chance.below(2));
    flange.failure_corrosion = chance.one_in(8) ? 1 : 0;
    flange.per_element_ratio = static_cast<Int>(chance.below(2));
    flange.no_special = chance.one_in(5) ? 1 : 0;
    flange.destination = chance.of({-1, -1, -1, 30, 30, 30, 30, 0, 31, -2});
    flange.setup_no_correction = chance.one_in(3) ? 1.0f : 0.0f;
    flange.setup_root_two = chance.one_in(3) ? 1.0f : 0.0f;
    disturb(flange, chance);
    // Still a call that its host could make: the stand-alone form brings its labels.
    if (flange.stand_alone()) flange.text.resize(STAND_ALONE_TEXT, ' ');
    return flange;
}

// ---- one call --------------------------------------------------------------------------------------

// What the host sees of a call.
struct Outcome {
    Bits record{};
    std::array<std::uint32_t, 5> outputs{};
    Int rigidity = 0, lines = 0;
    std::string store, file;
    std::string told; // boxes, progress, fatal codes
    int progress = 0, stops = 0;
};

class RandomFlanges : public HostTest {
  protected:
    RandomFlanges() : units(UNITS) {
        SET_SYSTEM_DIR(TARVANE_DATA_DIR);
        SET_MODULE_DIR(TARVANE_DATA_DIR);
        ::RESET_ENGINE();
        ELEMENT_TABLES[0].description = "First element";
        ELEMENT_TABLES[0].material = "SA-516 70";
        ELEMENT_TABLES[0].heat_treatment = "       1";
        ELEMENT_TABLES[0].first_inspection = 0.5f;
        ELEMENT_TABLES[0].joint_efficiency = 0.7f;
        ELEMENT_TABLES[1].from_node = "10";
        ELEMENT_TABLES[1].to_node = "20";
    }
    ~RandomFlanges() override {
        for (const std::size_t row : {0u, 1u})
            ELEMENT_TABLES[row] = ELEMENT_ROW{};
        UNITS = units;
        ::RESET_ENGINE();
    }

    Outcome calculate(const Flange& given) {
        Outcome outcome;
        ::RESET_ENGINE();
        UNITS = UNIT_CONSTANTS{};
        take_services(outcome);
        set_switches(given);

        // Blocks of exactly the size that the engine may touch.
        const auto record = std::make_unique<Real[]>(TARVANE_RECORD_ELEMENTS);
        std::memcpy(record.get(), given.record.data(), sizeof given.record);
        const auto text = std::make_unique<char[]>(given.text.size());
        std::memcpy(text.get(), given.text.data(), given.text.size());
        Real out[5] = {-7.0f, -7.0f, -7.0f, -7.0f, -7.0f};
        outcome.rigidity = given.rigidity;
        ::FLANGE_CALC(record.get(), text.get(), -1, &given.report_kernel, &given.write_case,
                      &out[0], &out[1], &out[2], &out[3], &out[4], &given.quiet_overstress,
                      &outcome.rigidity, &given.code, &given.element, &given.bolt_row,
                      &given.joint_e, &given.corroded_rigidity, &given.standard_flange,
                      &given.p_operating, &given.div2_edition, &given.decimal_comma);

        EXPECT_EQ(std::memcmp(text.get(), given.text.data(), given.text.size()), 0);
        std::memcpy(outcome.record.data(), record.get(), sizeof outcome.record);
        std::memcpy(outcome.outputs.data(), out, sizeof out);
        ::LINE_COUNT(&outcome.lines);
        EXPECT_GE(outcome.lines, 0);
        EXPECT_LE(outcome.lines, TARVANE_STORE_RECORDS);
        outcome.store.assign(::GETLINESCOMFLG(),
                             static_cast<std::size_t>(outcome.lines) * TARVANE_STORE_WIDTH);
        ::CLOSEUNIT(&FILE_UNIT);
        outcome.file = scratch.read("report.txt");
        ::SET_HOST_SERVICES(nullptr);
        return outcome;
    }

  private:
    static constexpr Int FILE_UNIT = 30;

    static void take_services(Outcome& outcome) {
        TARVANE_HOST_SERVICES services = {};
        services.version = TARVANE_HOST_SERVICES_VERSION;
        services.user = &outcome;
        services.message_box = [](void* user, const char* text, const char* title) {
            static_cast<Outcome*>(user)->told += std::string(title) + ": " + text + "\n";
        };
        services.dialog_text = [](void* user, Int control, const char* text) {
            auto& seen = *static_cast<Outcome*>(user);
            ++seen.progress;
            seen.told += std::to_string(control) + " " + text + "\n";
        };
        services.report_fatal = [](void* user, Int code) {
            static_cast<Outcome*>(user)->told += "fatal " + std::to_string(code) + "\n";
        };
        services.stop = [](void* user, Int) { ++static_cast<Outcome*>(user)->stops; };
        ::SET_HOST_SERVICES(&services);
    }

    void set_switches(const Flange& given) const {
        const std::string path = scratch.file("report.txt");
        Int status = -1;
        ::OPENUNIT(&FILE_UNIT, path.data(), static_cast<Int>(path.size()), &status);
        ASSERT_EQ(status, 0);
        const Int on = 1, off = 0;
        FLAGS_mp_IINOSPECIAL = given.no_special;
        ::SET_GLOBALS_FROM_TVN(&off, &off, &given.old_div_2, &off, &off, &on, &off);
        METRICCONSTANTS_mp_G_NMETRIC_CONSTANT = given.metric;
        ::SET_METRIC_CONSTANTS();
        ::SET_MODULE_CODE(&given.module_code);
        ::SET_SWITCHES(&given.failure_corrosion, &given.per_element_ratio);
        ::GETSETUP()[TARVANE_SETUP_NO_CORRECTION - 1].real = given.setup_no_correction;
        ::GETSETUP()[TARVANE_SETUP_ROOT_TWO - 1].real = given.setup_root_two;
        ::SET_IOUT(&given.destination);
        ::SET_IWRITE(&on);
        ::SET_IWRTFL(&on);
    }

    UNIT_CONSTANTS units;
};

// ---- what must hold ----------------------------------------------------------------------------------

// Elements that a call may write.
bool is_result(int element, Int kind) {
    if (element >= TARVANE_go && element <= TARVANE_h) return kind == TARVANE_DESIGN;
    if (element >= TARVANE_DESIGNED_BOLTS && element <= TARVANE_DESIGNED_A)
        return kind == TARVANE_DESIGN;
    if (element >= TARVANE_DESIGNED_Fod && element <= TARVANE_DESIGNED_Gi)
        return kind == TARVANE_DESIGN;
    return (element >= TARVANE_W && element <= TARVANE_HG) ||
           (element >= TARVANE_EXTERNAL_LOAD && element <= TARVANE_ADDED_PRESSURE) ||
           element == TARVANE_SHORT_Ab;
}

// Everything else keeps its bits, but for "no value", which becomes 0.0.
void expect_input_kept(const Flange& given, const Outcome& outcome) {
    for (int element = 1; element <= TARVANE_RECORD_ELEMENTS; ++element) {
        if (is_result(element, given.kind())) continue;
        const auto before = std::bit_cast<std::uint32_t>(TARVANE_AT(given.record.data(), element));
        const std::uint32_t after = TARVANE_AT(outcome.record.data(), element);
        EXPECT_EQ(after, before == NONE_GIVEN ? 0u : before) << "element " << element;
    }
}

// The marks of a record are the 12 columns before its NUL, the line what comes before them.
void expect_lines_within_100_columns(const Outcome& outcome) {
    for (Int k = 0; k < outcome.lines; ++k) {
        const std::string_view record(outcome.store.data() + k * TARVANE_STORE_WIDTH,
                                      TARVANE_STORE_WIDTH);
        const std::size_t end = record.rfind('\0');
        ASSERT_NE(end, std::string_view::npos) << "record " << k + 1 << " has no end";
        ASSERT_GE(end, 4 + 12u) << "record " << k + 1;
        const std::string_view line = record.substr(4, end - 12 - 4);
        EXPECT_LE(trimmed_length(line), 100) << line;
        EXPECT_EQ(record.substr(0, 4), "    ");
        EXPECT_TRUE(trimmed(record.substr(end + 1)).empty());
        EXPECT_EQ(record.substr(end - 12, 12).find_first_not_of(" 012"), std::string_view::npos)
            << line;
    }
}

// Plain bytes only: a random slot may hold the end of a line.
void expect_file_records(const Flange& given, const Outcome& outcome) {
    const auto holds_line_end = [](char c) { return c == '\n'; };
    if (std::any_of(given.text.begin(), given.text.end(), holds_line_end)) return;
    std::size_t at = 0;
    while (at < outcome.file.size()) {
        const std::size_t end = outcome.file.find('\n', at);
        ASSERT_NE(end, std::string::npos) << "the last record has no end";
        const std::string record = outcome.file.substr(at, end - at);
        EXPECT_TRUE(record.size() == 101 || record.size() == 113) << record;
        EXPECT_EQ(record.front(), ' ');
        at = end + 1;
    }
}

TEST_F(RandomFlanges, EndKeepTheirInputAndDoTheSameAgain) {
    constexpr int PROGRESS_LINES = 2 * 2000;
    int reported = 0, stopped = 0, rated = 0;
    for (unsigned seed = 0; seed < FLANGES; ++seed) {
        SCOPED_TRACE("flange " + std::to_string(seed));
        const Flange flange = random_flange(seed);
        const Outcome first = calculate(flange);
        expect_input_kept(flange, first);
        expect_lines_within_100_columns(first);
        expect_file_records(flange, first);
        EXPECT_LE(first.progress, PROGRESS_LINES);

        // The state that another flange leaves must have no effect.
        calculate(random_flange(seed + FLANGES));
        const Outcome second = calculate(flange);
        EXPECT_EQ(first.record, second.record);
        EXPECT_EQ(first.outputs, second.outputs);
        EXPECT_EQ(first.rigidity, second.rigidity);
        EXPECT_TRUE(first.store == second.store);
        EXPECT_TRUE(first.file == second.file);
        EXPECT_EQ(first.told, second.told);
        EXPECT_EQ(first.stops, second.stops);

        reported += first.lines > 50 || first.file.size() > 50 * 102 ? 1 : 0;
        stopped += first.stops;
        rated += std::bit_cast<Real>(first.outputs[3]) > 0.0f ? 1 : 0;
        if (HasFailure()) FAIL() << "flange " << seed << " is the first to fail";
    }
    // Enough of them are flanges for the run to be worthwhile.
    EXPECT_GT(reported, FLANGES / 4);
    EXPECT_GT(rated, FLANGES / 4);
    EXPECT_GT(stopped, 0);
}

} // namespace
} // namespace tarvane::host_test
