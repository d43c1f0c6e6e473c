#include "materials/material_record.h"

#include "../data_folder.h"
#include "../material_file.h"
#include "frame/switches.h"

namespace tarvane {
namespace {

using material_test::material_file;
using material_test::Record;

class MaterialRecord : public data_test::DataTest {
  protected:
    MATERIAL_RECORD record;
    Int status = 7;

    bool read(std::string_view name, Int reference = 3, Int code = ASME_VIII_1) {
        READ_MATERIAL(code, name, reference, status, record);
        return status == 0;
    }
    static Record plate() {
        return Record("SA-516 70", 3)
            .text(144, "1")
            .put(152, Int{2})
            .put(156, Int{2})
            .put(160, Int{4})
            .put(140, 8.0f)
            .put(164, 70.0f)
            .put(168, 38.0f)
            .text(172, "CS-2")
            .put(364, 0.5f)
            .put(368, 4.0f);
    }
};

TEST_F(MaterialRecord, NamesThatDifferInPunctuationAndCaseAreOneKey) {
    write_file("system", "MATFILE1.BIN", material_file(1, 0, {plate()}));
    for (const char* name :
         {"SA-516 70", "SA516-70", "sa/516.70", "  SA-516 70", "S A 5 1 6 7 0"}) {
        EXPECT_TRUE(read(name)) << name;
        EXPECT_EQ(record.name.trimmed(), "SA-516 70");
    }
    EXPECT_FALSE(read("SA-516 7"));
    EXPECT_FALSE(read("SA-516 700"));
}

TEST_F(MaterialRecord, SixteenCharactersOfTheNameCountBeforeItIsNormalized) {
    write_file("system", "MATFILE1.BIN", material_file(1, 0, {plate()}));
    EXPECT_TRUE(read("S-A-5-1-6--7---0"));
    EXPECT_TRUE(read("     SA-516 70       beyond"));
    EXPECT_FALSE(read("S-A-5-1-6---7---0"));
    EXPECT_FALSE(read("SA-516 70 beyond"));
    EXPECT_TRUE(read("SA-516 70       beyond"));
}

TEST_F(MaterialRecord, ANormalizedNameHasNoPunctuationAndNoBlanks) {
    const std::pair<std::string, std::string> names[] = {{"SA-516 70", "SA51670  "},
                                                         {"sa/516.70", "sa51670  "},
                                                         {". - / ", "      "},
                                                         {"A--B", "AB  "},
                                                         {"AB", "AB"},
                                                         {"", ""},
                                                         {std::string("\0A\0B", 4), "AB  "}};
    for (const auto& [given, expected] : names) {
        std::string text = given;
        NORMALIZE_MATERIAL_NAME(text.data(), static_cast<Int>(text.size()));
        EXPECT_EQ(text, expected) << given;
    }
}

TEST_F(MaterialRecord, TheReferenceMustMatchToo) {
    write_file("system", "MATFILE1.BIN", material_file(2, 0, {Record("SA-516 70", 2), plate()}));
    EXPECT_TRUE(read("SA-516 70", 3));
    EXPECT_EQ(record.pNumber.trimmed(), "1");
    EXPECT_TRUE(read("SA-516 70", 2));
    EXPECT_TRUE(record.pNumber.blank());
    EXPECT_FALSE(read("SA-516 70", 4));
}

TEST_F(MaterialRecord, FieldsStandAtTheirOffsets) {
    write_file("system", "MATFILE1.BIN", material_file(0, 1, {plate()}));
    ASSERT_TRUE(read("SA-516 70"));
    EXPECT_EQ(record.reference, 3);
    EXPECT_EQ(record.group, 2);
    EXPECT_EQ(record.curve, 2);
    EXPECT_EQ(record.curveNormalized, 4);
    EXPECT_EQ(record.thicknessLimit, 8.0f);
    EXPECT_EQ(record.tensile, 70.0f);
    EXPECT_EQ(record.yield, 38.0f);
    EXPECT_EQ(record.chart.trimmed(), "CS-2");
    EXPECT_EQ(record.allowable[0], 20.0f);
    EXPECT_EQ(record.allowable[31], 12.25f);
    EXPECT_EQ(record.minDia, 0.5f);
    EXPECT_EQ(record.maxDia, 4.0f);
}

TEST_F(MaterialRecord, ABlankNameLeavesTheRecordAsItWas) {
    record.group = 9;
    for (const char* name : {"", "   ", " - . / "}) {
        EXPECT_FALSE(read(name));
        EXPECT_EQ(record.group, 9);
    }
    EXPECT_FALSE(read("SA-516 70")); // no file: cleared
    EXPECT_EQ(record.group, 0);
}

TEST_F(MaterialRecord, TheCountsBoundTheSearch) {
    write_file("system", "MATFILE1.BIN", material_file(1, 0, {Record("SA-36", 1), plate()}));
    EXPECT_FALSE(read("SA-516 70"));
    write_file("system", "MATFILE1.BIN", material_file(1, 1, {Record("SA-36", 1), plate()}));
    EXPECT_TRUE(read("SA-516 70"));
    for (const auto& [first, second] : {std::pair{0, 0}, {-1, 1}, {INT32_MIN, INT32_MIN}}) {
        write_file("system", "MATFILE1.BIN", material_file(first, second, {plate()}));
        EXPECT_FALSE(read("SA-516 70"));
    }
    // More records announced than there are: those that are there count.
    write_file("system", "MATFILE1.BIN", material_file(INT32_MAX, INT32_MAX, {plate()}));
    EXPECT_TRUE(read("SA-516 70"));
    EXPECT_FALSE(read("SA-36", 1));
}

TEST_F(MaterialRecord, RecordsBeyondOneBlockAreFound) {
    std::string file = material_file(100, 0, {});
    for (Int i = 0; i < 99; ++i)
        file += Record("SA-" + std::to_string(i), 3).view();
    file += plate().view();
    write_file("system", "MATFILE1.BIN", file);
    EXPECT_TRUE(read("SA-516 70"));
    EXPECT_TRUE(read("SA-31"));
    EXPECT_TRUE(read("SA-32"));
    EXPECT_TRUE(read("SA-98"));
    EXPECT_FALSE(read("SA-99"));
}

TEST_F(MaterialRecord, AMetricRecordComesBackInKsiAndInches) {
    G_MATL_METRIC = 1;
    write_file("system", "MATFILE1M.BIN", material_file(1, 0, {plate().put(140, 254.0f)}));
    ASSERT_TRUE(read("SA-516 70"));
    EXPECT_EQ(record.allowable[0], 20.0f * 0.145038f);
    EXPECT_EQ(record.tensile, 70.0f * 0.145038f);
    EXPECT_EQ(record.yield, 38.0f * 0.145038f);
    EXPECT_EQ(record.thicknessLimit, 10.0f);
    EXPECT_EQ(record.minDia, 0.5f / 25.4f);
    EXPECT_EQ(record.maxDia, 4.0f / 25.4f);

    // -1.0 means that there is no limit, in both systems.
    write_file("system", "MATFILE1M.BIN", material_file(1, 0, {Record("SA-36", 3)}));
    ASSERT_TRUE(read("SA-36"));
    EXPECT_EQ(record.minDia, -1.0f);
    EXPECT_EQ(record.maxDia, -1.0f);

    // An edition without a metric file is read and converted all the same.
    G_MATL_YEAR = 1;
    write_file("system", "MATFIL99.BIN", material_file(1, 0, {plate()}));
    ASSERT_TRUE(read("SA-516 70"));
    EXPECT_EQ(record.tensile, 70.0f * 0.145038f);
}

TEST_F(MaterialRecord, TheFileGoesByCodeEditionAndClass) {
    struct {
        Int code, year, metric, d2Class, old, force;
        const char* file;
    } const rows[] = {
        {1, 0, 0, 1, 0, 0, "MATFILE1.BIN"},      {1, 0, 1, 1, 0, 0, "MATFILE1M.BIN"},
        {1, 5, 0, 1, 0, 0, "MATFIL03.BIN"},      {1, 12, 1, 1, 0, 0, "MATFIL10M.BIN"},
        {1, 13, 0, 1, 0, 0, "MATFILE43-74.BIN"}, {1, 16, 1, 1, 0, 0, "JIS_B8267.BIN"},
        {1, 18, 0, 1, 0, 0, "MATFIL15.BIN"},     {1, 0, 0, 1, 1, 0, "MATFIL98.BIN"},
        {1, 13, 0, 1, 1, 0, "MATFILE43-74.BIN"}, {2, 0, 0, 1, 0, 0, "MATFILE2.BIN"},
        {2, 0, 1, 1, 0, 0, "MATFILE2M.BIN"},     {2, 11, 1, 1, 0, 0, "MATFIL09D2.BIN"},
        {2, 17, 1, 1, 0, 0, "MATFIL13D2M.BIN"},  {2, 3, 1, 1, 0, 0, "MATFILE2.BIN"},
        {2, 0, 0, 0, 0, 0, "MatFileD2C1.BIN"},   {2, 0, 1, 0, 0, 0, "MatFileD2C1M.BIN"},
        {2, 0, 0, 0, 0, 1, "MATFILE1.BIN"},
    };
    for (const auto& row : rows) {
        write_file("system", row.file, material_file(1, 0, {plate()}));
        G_MATL_YEAR = row.year;
        G_MATL_METRIC = row.metric;
        G_D2_CLASS = row.d2Class;
        G_OLD_EDITION = row.old;
        G_FORCE_DIV1 = row.force;
        EXPECT_TRUE(read("SA-516 70", 3, row.code)) << row.file;
        remove_file("system", row.file);
        EXPECT_FALSE(read("SA-516 70", 3, row.code)) << row.file;
    }
    write_file("system", "MATFILE1.BIN", material_file(1, 0, {plate()}));
    G_MATL_METRIC = G_OLD_EDITION = G_FORCE_DIV1 = G_MATL_YEAR = 0;
    EXPECT_FALSE(read("SA-516 70", 3, PD_5500));
    EXPECT_FALSE(read("SA-516 70", 3, 0));
    G_MATL_YEAR = 19;
    EXPECT_FALSE(read("SA-516 70", 3, ASME_VIII_1));
}

TEST_F(MaterialRecord, EveryEditionHasItsFiles) {
    struct {
        Int year;
        const char *inch, *metric;
    } const division_1[] =
        {{0, "MATFILE1.BIN", "MATFILE1M.BIN"},   {1, "MATFIL99.BIN", "MATFIL99.BIN"},
         {2, "MATFIL00.BIN", "MATFIL00.BIN"},    {3, "MATFIL01.BIN", "MATFIL01.BIN"},
         {4, "MATFIL02.BIN", "MATFIL02.BIN"},    {5, "MATFIL03.BIN", "MATFIL03.BIN"},
         {6, "MATFIL04.BIN", "MATFIL04.BIN"},    {7, "MATFIL05.BIN", "MATFIL05.BIN"},
         {8, "MATFIL06.BIN", "MATFIL06.BIN"},    {9, "MATFIL07.BIN", "MATFIL07.BIN"},
         {10, "MATFIL08.BIN", "MATFIL08.BIN"},   {11, "MATFIL09.BIN", "MATFIL09.BIN"},
         {12, "MATFIL10.BIN", "MATFIL10M.BIN"},  {13, "MATFILE43-74.BIN", "MATFILE43-74.BIN"},
         {14, "MATFIL11.BIN", "MATFIL11M.BIN"},  {15, "JIS_B8265.BIN", "JIS_B8265.BIN"},
         {16, "JIS_B8267.BIN", "JIS_B8267.BIN"}, {17, "MATFIL13.BIN", "MATFIL13M.BIN"},
         {18, "MATFIL15.BIN", "MATFIL15M.BIN"}},
            division_2[] = {{0, "MATFILE2.BIN", "MATFILE2M.BIN"},
                            {1, "MATFILE2.BIN", "MATFILE2.BIN"},
                            {10, "MATFILE2.BIN", "MATFILE2.BIN"},
                            {11, "MATFIL09D2.BIN", "MATFIL09D2.BIN"},
                            {12, "MATFIL10D2.BIN", "MATFIL10D2M.BIN"},
                            {13, "MATFILE2.BIN", "MATFILE2.BIN"},
                            {14, "MATFIL11D2.BIN", "MATFIL11D2M.BIN"},
                            {15, "MATFILE2.BIN", "MATFILE2.BIN"},
                            {17, "MATFIL13D2.BIN", "MATFIL13D2M.BIN"},
                            {18, "MATFIL15D2.BIN", "MATFIL15D2M.BIN"},
                            {19, "MATFILE2.BIN", "MATFILE2.BIN"},
                            {-1, "MATFILE2.BIN", "MATFILE2.BIN"}};
    const auto found_in = [this](Int code, const char* file) {
        write_file("system", file, material_file(1, 0, {plate()}));
        const bool found = read("SA-516 70", 3, code);
        remove_file("system", file);
        return found;
    };
    for (G_MATL_METRIC = 0; G_MATL_METRIC <= 1; ++G_MATL_METRIC) {
        for (const auto& row : division_1) {
            G_MATL_YEAR = row.year;
            EXPECT_TRUE(found_in(ASME_VIII_1, G_MATL_METRIC == 1 ? row.metric : row.inch));
        }
        for (const auto& row : division_2) {
            G_MATL_YEAR = row.year;
            EXPECT_TRUE(found_in(ASME_VIII_2, G_MATL_METRIC == 1 ? row.metric : row.inch));
        }
        G_MATL_YEAR = 14; // without a part in the older tables and in class 1
        G_OLD_EDITION = 1;
        EXPECT_TRUE(found_in(ASME_VIII_1, "MATFIL98.BIN"));
        G_OLD_EDITION = 0;
        G_D2_CLASS = 0;
        EXPECT_TRUE(
            found_in(ASME_VIII_2, G_MATL_METRIC == 1 ? "MatFileD2C1M.BIN" : "MatFileD2C1.BIN"));
        G_D2_CLASS = 2;
    }
}

TEST_F(MaterialRecord, AFileBesideTheLibraryWins) {
    write_file("system", "MATFILE1.BIN", material_file(1, 0, {plate()}));
    write_file("library", "MATFILE1.BIN", material_file(1, 0, {Record("SA-36", 3)}));
    EXPECT_FALSE(read("SA-516 70"));
    EXPECT_TRUE(read("SA-36"));
}

} // namespace
} // namespace tarvane
