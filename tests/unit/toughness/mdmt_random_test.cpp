// The toughness routines on arguments of any bits: nothing undefined, and the results are the same in
// a silent pass.
#include "mdmt_fixture.h"

#include "toughness/material_notes.h"
#include "toughness/mdmt_div2.h"
#include "toughness/pwht.h"

#include <cstring>
#include <random>

namespace tarvane {
namespace {

class MdmtRandom : public toughness_test::ToughnessTest {
  protected:
    std::mt19937 random{20240611};

    Int any() { return static_cast<Int>(random()); }
    bool one_in(unsigned n) { return random() % n == 0; }
    // Bits of any kind, often a value that means something.
    Real real() {
        constexpr Real MEANT[] = {0.0f,   -0.0f,  0.25f, 0.375f, 0.5f,     0.6f,     1.0f,
                                  -0.35f, 4.0f,   6.0f,  -1.0f,  NAN,      INFINITY, -INFINITY,
                                  1e38f,  1e-42f, 650.f, 55.0f,  65001.0f, 50001.0f, -3.4e38f};
        if (one_in(3)) return MEANT[random() % std::size(MEANT)];
        if (one_in(2)) return static_cast<Real>(random() % 8000) / 1000.0f;
        return std::bit_cast<Real>(any());
    }
    Int whole(Int low, Int high) {
        if (one_in(8)) return any();
        return low + static_cast<Int>(random() % static_cast<unsigned>(high - low + 1));
    }
    template <std::size_t N>
    void scribble(Text<N>& text) {
        constexpr std::string_view CHARACTERS("0123456789+-.eE 1-24\0\xFF", 22);
        for (Int k = 1; k <= Text<N>::width(); ++k)
            text(k) = CHARACTERS[random() % CHARACTERS.size()];
    }
    void scribble_host_record() {
        for (Text<16>& text : HOST_RECORD.required_temperature)
            scribble(text);
        scribble(HOST_RECORD.version_mark);
        scribble(HOST_RECORD.impact_switches);
        for (Int k = 0; k < 3; ++k) {
            scribble(HOST_RECORD.impact_counts[k]);
            for (Int i = 0; i < 11; ++i) {
                HOST_RECORD.impact_names[k][i] = "SA-350 LF2";
                scribble(HOST_RECORD.impact_numbers[k][i]);
            }
        }
        HOST_RECORD.single_name = "SA-350 LF2";
        scribble(HOST_RECORD.single_number);
        scribble(HOST_RECORD.own_mdmt[0]);
        scribble(HOST_RECORD.own_mdmt[1]);
        READ_IMPACT_TABLE();
    }
    void turn_switches() {
        G_USE_A6 = whole(0, 2);
        G_TOUGHNESS = {whole(0, 1), whole(0, 1), whole(0, 1), whole(0, 1), whole(0, 1)};
        G_CURRENT_DIV_2 = one_in(4);
        G_FORCE_DIV1 = whole(0, 1);
        G_D2_CLASS = whole(0, 1);
        SETUP[57].real = real();
        METRICCONSTANTS_mp_G_NMETRIC_CONSTANT = whole(0, 1);
        SET_METRIC_CONSTANTS();
    }
    MDMT_CALL call() {
        return {.Curve = whole(-1, 7),
                .Tg = real(),
                .Estar = real(),
                .c = real(),
                .Tdesign = real(),
                .Tr = real(),
                .Warnings = any(),
                .Code = whole(1, 2),
                .Ratio = real(),
                .Pwht = whole(0, 1),
                .Credit = whole(0, 1),
                .Cext = real(),
                .Ug20Candidate = whole(0, 1),
                .Sy = real(),
                .EstarUsed = real(),
                .Spec = "SA-350 LF2",
                .Index = 3,
                .Kind = whole(0, 5),
                .Reduction = real(),
                .PadGoverns = whole(0, 1),
                .TgSr = real(),
                .Element = whole(-4, 33)};
    }
    static std::array<Real, 6> results(const MDMT_CALL& a) {
        return {a.Tmin, a.Mdmt, a.Tug20, a.Ratio, a.EstarUsed, a.Reduction};
    }
};

TEST_F(MdmtRandom, AnyBitsGiveTheSameWithAndWithoutAReport) {
    for (int i = 0; i < 4000; ++i) {
        if (i % 50 == 0) material(whole(-60, 3), any(), real());
        scribble_host_record();
        turn_switches();
        const MDMT_CALL given = call();
        MDMT_CALL loud = given, silent = given;
        MDMT_ELEMENT(loud);
        IWRTFL = 0;
        MDMT_ELEMENT(silent);
        IWRTFL = 1;
        OPEN_LINE_STORE();
        const auto a = results(loud), b = results(silent);
        ASSERT_EQ(std::memcmp(a.data(), b.data(), sizeof a), 0) << i;
        ASSERT_EQ(loud.Warnings, silent.Warnings) << i;
    }
}

// What holds for every sensible element of a curve, whatever its switches.
TEST_F(MdmtRandom, SensibleElementsKeepTheLimits) {
    for (int i = 0; i < 4000; ++i) {
        G_USE_A6 = whole(0, 1);
        G_TOUGHNESS = {whole(0, 1), whole(0, 1), 0, 0, 1};
        SETUP[57].real = one_in(2) ? 1.0f : 0.0f;
        const auto between = [&](Real low, Real high) {
            return low + (high - low) * static_cast<Real>(random() % 10001) / 10000.0f;
        };
        MDMT_CALL a = toughness_test::element_of(1 + static_cast<Int>(random() % 4),
                                                 between(0.3f, 4.2f), between(-1.0f, 2.0f));
        a.Code = 1 + static_cast<Int>(random() % 2);
        a.c = between(0.0f, 0.2f);
        a.Ug20Candidate = 1;
        a.Pwht = static_cast<Int>(random() % 2);
        a.Credit = 1;
        MDMT_ELEMENT(a);
        OPEN_LINE_STORE();
        if (a.Tmin == NO_TEMPERATURE) {
            ASSERT_GT(a.Tg - a.c, 4.0f);
            continue;
        }
        ASSERT_GE(a.Mdmt, -155.0f);
        ASSERT_GE(a.Tmin, -85.0f);
        ASSERT_LE(a.Tmin, 121.0f);
        ASSERT_LE(a.Mdmt, a.Tmin + (a.Pwht == 1 ? 30.001f : 0.0f));
        ASSERT_GE(a.Ratio, 0.0f);
        ASSERT_LE(a.Ratio, 1.0f);
        ASSERT_TRUE(a.Code == 2 || a.Tug20 == 650.0f || a.Tug20 <= -20.0f);
    }
}

TEST_F(MdmtRandom, FiguresAndNotesOnAnyBits) {
    for (int i = 0; i < 4000; ++i) {
        turn_switches();
        MDMT_DIV2_CALL a{.Sy = real(),
                         .Estar = real(),
                         .Tnom = real(),
                         .Ci = real(),
                         .Cext = real(),
                         .Pwht = whole(0, 1),
                         .Curve = whole(-1, 6),
                         .Tr = real(),
                         .Tuser = real()};
        MDMT_DIV2_FIGURES(a);
        ASSERT_FALSE(a.Tcurve > 120.0f);
        ASSERT_FALSE(a.Sr > 1.0f);
        Text<16> name;
        scribble(name);
        if (one_in(2)) name.put(1, "SA-283");
        Real r[5];
        UCS6_NOTE(name.columns(1, static_cast<Int>(random() % 17)), real(), whole(0, 2),
                  whole(0, 1));
        UHA51_NOTE(whole(0, 2), name.view(), r[0], r[1], r[2], r[3], r[4]);
        UG84_REDUCTION(r[0], real());
        MATERIAL_NAME_KEY(name.view());
        OPEN_LINE_STORE();
    }
}

TEST_F(MdmtRandom, HeatTreatmentOnRecordsOfAnyBits) {
    for (int i = 0; i < 300; ++i) {
        Text<8> pNumber;
        scribble(pNumber);
        if (one_in(2)) pNumber = "1";
        const Int group = one_in(4) ? INT32_MIN : whole(1, 3);
        write_file(
            "system", "MATFILE1.BIN",
            toughness_test::material_file(
                1, 0, {toughness_test::Record("X", 5).text(144, pNumber.view()).put(152, group)}));
        Int required, pNumberOne, groupCode;
        PWHT_NEEDED("X", 5, 1, whole(0, 1), real(), required, pNumberOne, whole(0, 1), groupCode);
        ASSERT_TRUE(required == 0 || required == 1);
        if (group == INT32_MIN) {
            ASSERT_TRUE(groupCode == INT32_MIN || groupCode == 0);
        }
    }
}

} // namespace
} // namespace tarvane
