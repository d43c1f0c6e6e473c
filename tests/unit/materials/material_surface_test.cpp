// Material data as a host reads them.
#include "materials/class_names.h"

#include "../data_folder.h"
#include "../material_file.h"
#include "frame/switches.h"
#include "tarvane/tarvane.h"

namespace tarvane {
namespace {

using material_test::material_file;
using material_test::Record;

std::string_view text(const char* field, std::size_t width) { return trimmed({field, width}); }

class MaterialSurface : public data_test::DataTest {
  protected:
    MaterialSurface() {
        write_file("system", "MATFILE1.BIN",
                   material_file(2, 1,
                                 {Record("SA-36", 1), Record("SA-516 70", 3).put(164, 70.0f),
                                  Record("SA-193 B7", 9), Record("SA-105", 4)}));
    }
    TARVANE_MATERIAL_RECORD record{};
    Int status = 7, count = 7;
};

TEST_F(MaterialSurface, ARecordComesWholeByNameAndReference) {
    Record plate("SA-516 70", 3);
    for (std::size_t at = 0; at < 414; at += 2) // every byte shows its place
        if (at < 16 || (at >= 36 && at < 414)) plate.text(at, std::string{char(at % 96 + 32), 'x'});
    write_file("system", "MATFILE1.BIN", material_file(1, 0, {plate}));
    const Int code = 1, reference = 3;
    ::READ_MATERIAL(&code, "sa516/70", 8, &reference, &status, &record);
    ASSERT_EQ(status, 0);
    EXPECT_EQ(std::memcmp(&record, plate.view().data(), TARVANE_MATERIAL_BYTES), 0);
}

// A host's own record ends with the bytes of the file: what comes after them is another variable's.
struct Guarded {
    alignas(4) char bytes[TARVANE_MATERIAL_BYTES + 8];

    Guarded() { std::memset(bytes, 0x5A, sizeof bytes); }
    TARVANE_MATERIAL_RECORD* record() { return reinterpret_cast<TARVANE_MATERIAL_RECORD*>(bytes); }
    bool whole() const {
        for (std::size_t at = TARVANE_MATERIAL_BYTES; at < sizeof bytes; ++at)
            if (bytes[at] != 0x5A) return false;
        return true;
    }
};

TEST_F(MaterialSurface, NoRoutineGoesBeyondTheBytesOfTheRecord) {
    const Int code = 1;
    const auto by_name = [&](const char* name, Int reference) {
        Guarded host;
        ::READ_MATERIAL(&code, name, static_cast<Int>(std::strlen(name)), &reference, &status,
                        host.record());
        EXPECT_TRUE(host.whole()) << name << reference;
        return host;
    };
    EXPECT_EQ(by_name("SA-516 70", 3).record()->reference, 3);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(by_name("SA-516 70", 4).record()->reference, 0); // cleared
    EXPECT_EQ(by_name("   ", 3).record()->reference, 0x5A5A5A5A) << "left as it was";

    for (const Int number : {2, 99}) {
        Guarded host;
        ::MATERIAL_BY_NUMBER(&code, &number, &status, host.record());
        EXPECT_EQ(status, number == 2 ? 0 : 1);
        EXPECT_TRUE(host.whole()) << number;
    }
    // The last byte of the record is its own.
    Record plate("SA-516 70", 3);
    plate.text(412, "YZ");
    write_file("system", "MATFILE1.BIN", material_file(1, 0, {plate}));
    EXPECT_EQ(by_name("SA-516 70", 3).bytes[413], 'Z');
}

// The record ends at the end of its memory, where a sanitizer sees a read of one byte more.
TEST_F(MaterialSurface, AnAllowableStressComesFromARecordOfItsBytesAlone) {
    std::vector<char> bytes(TARVANE_MATERIAL_BYTES, '\0');
    const Real stress = 17.5f;
    std::memcpy(bytes.data() + 188, &stress, sizeof stress);
    const Real T = 100.0f;
    const auto* const host = reinterpret_cast<const TARVANE_MATERIAL_RECORD*>(bytes.data());
    EXPECT_EQ(::READ_ALLOWABLE_AT(host, &T), 17.5f);
}

TEST_F(MaterialSurface, FieldsOfTheRecordStandInTheirPlaces) {
    Record plate("SA-516 70", 3);
    plate.text(36, "plate").text(68, "K02700").text(100, "Carbon steel").text(144, "1");
    plate.put(152, Int{2}).put(156, Int{2}).put(160, Int{4}).put(164, 70.0f).put(168, 38.0f);
    plate.text(172, "CS-2").put(180, Int{1}).put(184, Int{5}).put(364, 0.5f).put(368, 4.0f);
    plate.put(140, 8.0f).put(376, Int{1}).put(380, Int{11}).put(384, Int{12});
    write_file("system", "MATFILE1.BIN", material_file(1, 0, {plate}));
    const Int code = 1, reference = 3;
    ::READ_MATERIAL(&code, "SA-516 70", 9, &reference, &status, &record);
    EXPECT_EQ(text(record.first_name, 16), "SA-516 70");
    EXPECT_EQ(text(record.name, 16), "SA-516 70");
    EXPECT_EQ(record.reference, 3);
    EXPECT_EQ(text(record.product_form, 32), "plate");
    EXPECT_EQ(text(record.uns_number, 24), "K02700");
    EXPECT_EQ(text(record.note, 40), "Carbon steel");
    EXPECT_EQ(text(record.p_number, 8), "1");
    EXPECT_EQ(record.group, 2);
    EXPECT_EQ(record.curve, 2);
    EXPECT_EQ(record.curve_normalized, 4);
    EXPECT_EQ(record.tensile, 70.0f);
    EXPECT_EQ(record.yield, 38.0f);
    EXPECT_EQ(text(record.chart, 8), "CS-2");
    EXPECT_EQ(record.modulus_reference, 1);
    EXPECT_EQ(record.expansion_reference, 5);
    EXPECT_EQ(record.allowable[31], 12.25f);
    EXPECT_EQ(record.min_dia, 0.5f);
    EXPECT_EQ(record.max_dia, 4.0f);
    EXPECT_EQ(record.thickness_limit, 8.0f);
    EXPECT_EQ(record.impact_temperature, 1);
    EXPECT_EQ(record.unused_380, 11);
    EXPECT_EQ(record.ucs66g_reduction, 12);
    EXPECT_EQ(text(record.text_404, 10), "");
    const Real T = 125.0f;
    EXPECT_FLOAT_EQ(::READ_ALLOWABLE_AT(&record, &T), 19.875f);
}

TEST_F(MaterialSurface, ABlankNameLeavesTheHostsRecordAndAnUnknownOneClearsIt) {
    const Int code = 1, reference = 3;
    record.group = 99;
    ::READ_MATERIAL(&code, "      ", 6, &reference, &status, &record);
    EXPECT_EQ(status, 1);
    EXPECT_EQ(record.group, 99);
    ::READ_MATERIAL(&code, "SA-516 70", -9, &reference, &status, &record);
    EXPECT_EQ(record.group, 99);
    ::READ_MATERIAL(&code, "SA-999", 6, &reference, &status, &record);
    EXPECT_EQ(status, 1);
    EXPECT_EQ(record.group, 0);
    EXPECT_EQ(std::string_view(record.name, 16), std::string(16, ' '));
}

TEST_F(MaterialSurface, TheFileAsAList) {
    const Int code = 1;
    ::MATERIAL_COUNT(&code, &count);
    EXPECT_EQ(count, 3) << "as its counts tell";
    const char* const names[] = {"SA-36", "SA-516 70", "SA-193 B7"};
    for (Int number = 1; number <= 3; ++number) {
        ::MATERIAL_BY_NUMBER(&code, &number, &status, &record);
        EXPECT_EQ(status, 0);
        EXPECT_EQ(text(record.name, 16), names[number - 1]);
    }
    for (const Int number : {0, -1, 4, INT32_MAX, INT32_MIN}) {
        record.group = 99;
        ::MATERIAL_BY_NUMBER(&code, &number, &status, &record);
        EXPECT_EQ(status, 1) << number;
        EXPECT_EQ(record.group, 0) << number;
    }
    // Fewer records than the counts say: those that are there.
    write_file("system", "MATFILE1.BIN", material_file(100, 100, {Record("SA-36", 1)}));
    ::MATERIAL_COUNT(&code, &count);
    EXPECT_EQ(count, 1);
}

TEST_F(MaterialSurface, TheListIsThatOfTheSelectedFileInKsi) {
    write_file("system", "MATFILE1M.BIN", material_file(1, 0, {Record("X", 1).put(164, 485.0f)}));
    const Int metric = 1, force = 1, division2_class = 1, year = 0, number = 1;
    Int code = 2;
    ::MATERIAL_COUNT(&code, &count);
    EXPECT_EQ(count, 0) << "no file";
    ::SET_MATERIAL_SELECTION(&metric, &force, &division2_class, &year);
    ::MATERIAL_COUNT(&code, &count);
    EXPECT_EQ(count, 1) << "Division 1 forced";
    ::MATERIAL_BY_NUMBER(&code, &number, &status, &record);
    EXPECT_EQ(record.tensile, 485.0f * 0.145038f);
}

TEST_F(MaterialSurface, ChartNumbersInTheirOrder) {
    write_file("system", "ExtChartData.txt", "[HA-1]\n100 9 28 1 2 3 4 5 6 7\n\n[END]\n");
    const Real T = 120.0f, yield = 0.0f;
    Real x[9] = {};
    const char name[] = "HA-1    CS-3"; // 8 characters count
    ::READ_CHART(name, 12, &T, &x[0], &x[1], &x[2], &x[3], &x[4], &x[5], &x[6], &x[7], &x[8],
                 &yield);
    const Real expected[] = {100.0f, 28.0f, 1.0f, 2.0f, 3.0f, 4.0f, 5.0f, 6.0f, 7.0f};
    for (int i = 0; i < 9; ++i)
        EXPECT_EQ(x[i], expected[i]) << i;
}

TEST_F(MaterialSurface, YieldEnMaterialAndTableGByTheirArguments) {
    Record head("", 0);
    head.put(0, Int{1}).put(4, Int{0});
    write_file("system", "YIELDSTR.BIN",
               std::string(head.view().substr(0, 364)) +
                   std::string(Record("SA-36", 1).put(164, 58.0f).view().substr(0, 364)));
    const Real tensile = 58.0f, T = 150.0f;
    Real result = -1.0f;
    ::READ_YIELD_STRESS("sa36", 4, &tensile, &T, &result);
    EXPECT_EQ(result, 19.75f);

    write_file("system", "ENMATDATA.BIN",
               std::string(head.view().substr(0, 308)) + std::string("\5\0\0\0", 4) +
                   std::string(304, 'e'));
    TARVANE_EN_RECORD en{};
    const Int key = 5;
    ::READ_EN_MATERIAL(&key, &status, &en);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(en.key, 5);
    EXPECT_EQ(std::string_view(en.data, 304), std::string(304, 'e'));

    write_file("library", "TableGData.txt", "[4]\n\n1 0.1\n2 0.3\n[5]\n\n1 0.1\n2 0.3\n");
    const Real dt = 4.5f, ld = 2.0f;
    ::TABLE_G_FACTOR_A(&dt, &ld, &result);
    EXPECT_FLOAT_EQ(result, 0.3f);
}

// ---- class names -------------------------------------------------------------------------------------

TEST_F(MaterialSurface, ClassNamesAreBlankUntilTheyAreFilledAndAfterAReset) {
    TARVANE_MATERIAL_CLASS_ROW* const rows = ::GETMATERIALCLASSNAMES();
    const auto blank = [rows] {
        for (int k = 0; k < TARVANE_MATERIAL_CLASS_ROWS; ++k)
            if (!text(rows[k].name, 40).empty() || rows[k].number != 0) return false;
        return true;
    };
    EXPECT_TRUE(blank());
    ::SET_MATERIAL_CLASS_NAMES();
    EXPECT_FALSE(blank());
    RESET_MATERIALS();
    EXPECT_TRUE(blank());
    rows[TARVANE_MATERIAL_CLASS_ROWS - 1].number = 7; // by the host itself
    RESET_MATERIALS();
    EXPECT_TRUE(blank());
}

TEST_F(MaterialSurface, EachClassHasItsNameAndNumber) {
    ::SET_MATERIAL_CLASS_NAMES();
    const TARVANE_MATERIAL_CLASS_ROW* const rows = ::GETMATERIALCLASSNAMES();
    const struct {
        const char* name;
        Int number;
    } expected[] = {
        {"Carbon Steel C <= 0.3%", 1},
        {"5-9 Chrome", 7},
        {"Austenitic Stainless", 9},
        {"Straight Chrome", 8},
        {"Austenitic Stainless", 9},
        {"Nickel Alloy", 25},
        {"Nickel Steel", 4},
        {"Aluminum and Aluminum Alloys", 11},
        {"Carbon Steel C > 0.3%", 2},
        {"Copper and Copper Alloys", 18},
        {"Aluminum and Aluminum Alloys", 16},
        {"Copper and Copper Alloys", 23},
        {"Copper and Copper Alloys", 15},
        {"High Nickel Alloys", 29},
        {"Error ...", 1},
        {"Carbon Steel", 3},
        {"Carbon Steel", 3},
        {"Carbon Steel", 3},
        {"Carbon Steel C <= 0.3%", 1},
        {"Nickel Steel", 4},
        {"2.25Cr-3Cr", 6},
        {"5Cr-9Cr", 7},
        {"5Cr-9Cr", 7},
        {"Straight Chrome", 8},
        {"Straight Chrome", 8},
        {"Austenitic Stainless", 9},
        {"Austenitic Stainless", 9},
        {"Austenitic Stainless", 9},
        {"Austenitic Stainless", 9},
        {"Austenitic Stainless", 9},
        {"Aluminum and Aluminum Alloys", 11},
        {"Aluminum and Aluminum Alloys", 11},
        {"Unalloyed Titanium", 41},
        {"High Nickel Alloys", 25},
        {"High Nickel Alloys", 29},
        {"High Nickel Alloys", 35},
        {"High Nickel Alloys", 36},
        {"High Nickel Alloys", 40},
        {"High Nickel Alloys", 28},
        {"High Nickel Alloys", 24},
        {"Copper and Copper Alloys", 23},
        {"Copper and Copper Alloys", 20},
        {"Copper and Copper Alloys", 18},
        {"Copper and Copper Alloys", 16},
        {"Copper and Copper Alloys", 18},
        {"Copper and Copper Alloys", 18},
        {"Copper and Copper Alloys", 17},
        {"Zirconium NFZ-1", 42},
        {"Austenitic Stainless", 9},
        {"High Nickel Alloys", 39},
        {"Carbon Steel C <= 0.3%", 1},
        {"Carbon Steel C <= 0.3%", 1},
        {"Zirconium NFZ-2", 43},
        {"AL-6XN", 9},
        {"S31803", 9},
        {"18Cr-5Ni-3Mo", 9},
        {"26Cr-4Ni-Mo", 9},
        {"26Cr-4Ni-Mo-N", 9},
        {"Al-29-4-2", 46},
        {"SEA-CURE", 47},
        {"1Cr-1/2Mo", 44},
        {"1/2-2Cr", 44},
        {"21/4-3Cr", 6},
        {"R20033", 48},
        {"65Ni-28Mo-2Fe", 49},
        {"80-20 Cu-Ni (C71000)", 22},
        {"Other Low Alloy Steels, Group 2", 3},
        {"31Ni-33Fe-27Cr-6.5Mo-Cu-N (N08031)", 50},
        {"65Ni-29.5Mo-2Fe-Cr (N10675)", 50},
    };
    static_assert(std::size(expected) == TARVANE_MATERIAL_CLASS_ROWS);
    for (std::size_t k = 0; k < std::size(expected); ++k) {
        EXPECT_EQ(text(rows[k].name, 40), expected[k].name) << "class " << k + 1;
        EXPECT_EQ(rows[k].number, expected[k].number) << "class " << k + 1;
    }
}

} // namespace
} // namespace tarvane
