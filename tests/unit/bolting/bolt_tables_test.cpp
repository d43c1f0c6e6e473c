#include "bolting/bolt_tables.h"

#include "../data_folder.h"

namespace tarvane {
namespace {

using data_test::Line;

constexpr Int INTEGRAL = 1, RING = 3, LOOSE = 5, LAP = 6, COVER = 7;

constexpr const char* SMALL_FILE =
    "; a comment before everything\n"
    "\n"
    "  [TEMA IMPERIAL]  \n"
    "; a comment behind the header\n"
    "0 0 0 0 0 0 0 0 0\n"
    "0.5   0.126 1.25   0.8125 0.625  0.63   1.01 1.5   9.1\n"
    "\n"
    "0.625 0.202 1.5    0.9375 0.75   0.76   1.23 1.75  9.2\n"
    "0.75, 0.302, 1.75, 1.125, 0.8125, 0.82, 1.44, 2.0625, 9.3\n"
    "0.8   9.9   9.9    9.9    9.9    9.9    9.9  9.9   9.9 ; not a row\n"
    "1.0   0.551 2.25   1.375  1.0625 1.07   1.88 2.625 9.4\n"
    "[UNC] coarse threads\n"
    "2.0   2.3   4.25   2.5    2      2      3.6  4.75  9.5\n"
    "[TEMA METRIC]\n"
    "1 0 0 0 0 0 0 0 0\n"
    "12 72.398  31.75 20.64 15.88 15.9 24.25 44.45 25.4\n"
    "16 138.324 44.45 28.54 20.64 20.7 31.18 53.98 50.8\n"
    "20 217.051 52.39 31.75 23.81 23.9 39.26 66.68 76.2\n"
    "[BS 3643]\n"
    "1 0 0 0 0 0 0 0 0\n"
    "12 76.2 30 20\n"
    "14 104.7 x 21\n"
    "[END]\n"
    "[USER TABLE]\n"
    "0 0 0 0 0 0 0 0 0\n"
    "3.0 1 1 1 1 1 1 1 1\n";

class BoltTables : public data_test::DataTest {
  protected:
    void use(const std::string& text) {
        write_file("system", "BOLTDATA.TXT", text);
        RESET_BOLTING();
    }
    // A file with the TEMA section alone.
    void use_sizes(const std::string& rows) { use("[TEMA IMPERIAL]\n0\n" + rows + "[END]\n"); }

    static BOLT_ROW at(Real& a, Int series = 1, Int type = INTEGRAL, Int n = 4) {
        return BOLT_TABLE_ROW(a, type, series, 0.0f, n);
    }
    static BOLT_ROW size_at(Real given, Int series = 1) {
        Real a = given;
        return at(a, series);
    }

    struct Section {
        Real diameters[BOLT_ROWS];
        Real rows[BOLT_ROWS * BOLT_COLUMNS];
        Int count = -1;
        Real at(Int row, Int column) const { return rows[row * BOLT_COLUMNS + column - 1]; }
    };
    static Section section(Int series) {
        Section s;
        for (Real& x : s.diameters)
            x = -7.0f;
        for (Real& x : s.rows)
            x = -7.0f;
        BOLTHELPER(series, s.diameters, s.rows, s.count);
        return s;
    }

    static void expect_zero(const BOLT_ROW& row) {
        for (const Real x : {row.boltDia, row.rootArea, row.totalArea, row.Bmin, row.Rmin, row.Emin,
                             row.nutCorners, row.wrenchDia, row.boltCol9})
            EXPECT_EQ(x, 0.0f);
    }
};

// ---- the file ------------------------------------------------------------------------------------

TEST_F(BoltTables, ASectionKeepsItsRowsAndPassesOverCommentsAndEmptyLines) {
    use(SMALL_FILE);
    const Section s = section(1);
    EXPECT_EQ(s.count, 5); // the units row and four sizes
    EXPECT_EQ(s.diameters[0], 0.0f);
    EXPECT_EQ(s.diameters[1], 0.5f);
    EXPECT_EQ(s.diameters[2], 0.625f);
    EXPECT_EQ(s.diameters[3], 0.75f); // separated by commas
    EXPECT_EQ(s.at(3, 8), 2.0625f);
    EXPECT_EQ(s.diameters[4], 1.0f); // the row with a comment after its data is a comment
    EXPECT_EQ(s.diameters[5], 0.0f);
    EXPECT_EQ(s.at(1, 9), 9.1f);
    EXPECT_EQ(s.at(26, 9), 0.0f);
}

TEST_F(BoltTables, AHeaderMustBeTheWholeLine) {
    use(SMALL_FILE);
    EXPECT_EQ(section(UNC).count, 0); // "[UNC] coarse threads" only ends the section before it
    // Within a section a semicolon makes a comment of a line before its bracket is looked at.
    use("[TEMA IMPERIAL]\n0\n0.5 0.126\n[UNC] ; text\n0.625 0.202\n[END]\n");
    EXPECT_EQ(section(UNC).count, 0);
    EXPECT_EQ(section(TEMA_IMPERIAL).count, 3);
}

TEST_F(BoltTables, NothingBehindTheEndLineCounts) {
    use(SMALL_FILE);
    const Section s = section(8);
    EXPECT_EQ(s.count, 0);
    EXPECT_EQ(s.at(1, 1), 0.0f);
    Real a = 3.0f;
    expect_zero(at(a, 8));
    EXPECT_EQ(a, 3.0f);
}

TEST_F(BoltTables, SeriesOutsideOneToEightIsTheFirst) {
    use(SMALL_FILE);
    for (const Int series : {0, -3, 9, 4711}) {
        EXPECT_EQ(section(series).count, 5) << series;
        EXPECT_EQ(size_at(0.5f, series).boltDia, 0.5f) << series;
        EXPECT_EQ(BOLT_SIZE_FOR_AREA(series, 0.1f, INTEGRAL).boltDia, 0.5f) << series;
    }
}

TEST_F(BoltTables, EverySeriesHasItsSection) {
    use("[USER TABLE]\n0\n8.0 80\n"
        "[3P M30 METRIC]\n0\n7.0 70\n"
        "[SABS 1700]\n0\n6.0 60\n"
        "[BS 3643]\n0\n5.0 50\n"
        "[TEMA METRIC]\n0\n4.0 40\n"
        "[Unused]\n0\n3.0 30\n"
        "[UNC]\n0\n2.0 20\n"
        "[TEMA IMPERIAL]\n0\n1.0 10\n"
        "[END]\n");
    for (Int series = 1; series <= 8; ++series) {
        SCOPED_TRACE(series);
        const Real dia = static_cast<Real>(series);
        EXPECT_EQ(section(series).diameters[1], dia);
        Real row[BOLT_COLUMNS] = {};
        Int found = -1;
        GETBOLTDATA(dia, series, row, found);
        EXPECT_EQ(found, 1);
        if (series == SPECIAL_ROOT_AREA) continue; // no table of its own
        EXPECT_EQ(size_at(dia, series).rootArea, 10.0f * dia);
        EXPECT_EQ(BOLT_SIZE_FOR_AREA(series, 10.0f * dia, INTEGRAL).boltDia, dia);
    }
}

TEST_F(BoltTables, TheUnitsRowSaysMillimetresAboveAThousandth) {
    use("[TEMA IMPERIAL]\n0.001\n1.0 10\n[UNC]\n0.0011\n25.4 645.16\n[END]\n");
    EXPECT_EQ(size_at(1.0f, TEMA_IMPERIAL).rootArea, 10.0f);
    EXPECT_EQ(size_at(1.0f, UNC).rootArea, 1.0f);
    EXPECT_EQ(size_at(1.0f, UNC).boltDia, 1.0f);
}

TEST_F(BoltTables, ARowThatEndsEarlyOrCannotBeReadCountsAsFarAsItGoes) {
    use(SMALL_FILE);
    const Section s = section(5);
    ASSERT_EQ(s.count, 3);
    EXPECT_EQ(s.at(1, 4), 20.0f);
    EXPECT_EQ(s.at(1, 5), 0.0f);
    EXPECT_EQ(s.at(2, 1), 14.0f);
    EXPECT_EQ(s.at(2, 2), 104.7f);
    EXPECT_EQ(s.at(2, 3), 0.0f); // "x" is no number, and what comes after it is not read
    EXPECT_EQ(s.at(2, 4), 0.0f);
}

TEST_F(BoltTables, TwentySevenRowsFillASectionAndTheRestIsIgnored) {
    std::string rows = "[TEMA IMPERIAL]\n0 0 0 0 0 0 0 0 0\n";
    for (int i = 1; i <= 26; ++i)
        rows += std::to_string(i) + " " + std::to_string(i) + " 1 1 1 1 1 1 1\n";
    use(rows + "[END]\n");
    Section s = section(1);
    EXPECT_EQ(s.count, 27);
    EXPECT_EQ(s.diameters[26], 26.0f);
    EXPECT_EQ(size_at(26.0f).boltDia, 26.0f);
    EXPECT_EQ(BOLT_SIZE_FOR_AREA(1, 99.0f, INTEGRAL).boltDia, 26.0f);

    use(rows + "27 27 1 1 1 1 1 1 1\n28 28 1 1 1 1 1 1 1\n[END]\n");
    s = section(1);
    EXPECT_EQ(s.count, 27);
    EXPECT_EQ(s.diameters[26], 26.0f);
    EXPECT_EQ(size_at(28.0f).boltDia, 26.0f);
}

TEST_F(BoltTables, AMissingFileGivesZerosAndTheNextRequestTriesAgain) {
    Real a = 0.5f;
    expect_zero(at(a));
    EXPECT_EQ(a, 0.5f);
    EXPECT_EQ(section(1).count, 0);
    EXPECT_TRUE(reported().empty());
    write_file("system", "BOLTDATA.TXT", SMALL_FILE); // no reset
    EXPECT_EQ(at(a).boltDia, 0.5f);
}

TEST_F(BoltTables, AFileWithoutItsEndLineIsNotKept) {
    write_file("system", "BOLTDATA.TXT", "[TEMA IMPERIAL]\n0\n0.5 0.126\n");
    EXPECT_EQ(section(1).count, 0);
    expect_zero(size_at(0.5f));
    write_file("system", "BOLTDATA.TXT", "[TEMA IMPERIAL]\n0\n0.5 0.126\n  text [END] text\n");
    EXPECT_EQ(section(1).count, 2);
    EXPECT_EQ(size_at(0.5f).rootArea, 0.126f);
}

TEST_F(BoltTables, TheEndLineMustBeAmongTheFirst225Lines) {
    const std::string rows = "[TEMA IMPERIAL]\n0\n0.5 0.126\n";
    const auto padded = [&](int lines) {
        std::string text = rows;
        for (int i = 4; i < lines; ++i)
            text += "; filler\n";
        return text + "[END]\n";
    };
    use(padded(225));
    EXPECT_EQ(section(1).count, 2);
    use(padded(226));
    EXPECT_EQ(section(1).count, 0);
}

TEST_F(BoltTables, TheFileLiesInTheSystemFolderOnly) {
    write_file("library", "BOLTDATA.TXT", SMALL_FILE);
    EXPECT_EQ(section(1).count, 0);
}

TEST_F(BoltTables, TheFileIsReadOnce) {
    use_sizes("0.5 0.126\n");
    EXPECT_EQ(size_at(0.5f).rootArea, 0.126f);
    write_file("system", "BOLTDATA.TXT", "[TEMA IMPERIAL]\n0\n0.5 0.999\n[END]\n");
    EXPECT_EQ(size_at(0.5f).rootArea, 0.126f);
    LOAD_BOLT_TABLES(1); // fills the tables again from the lines that were kept
    EXPECT_EQ(size_at(0.5f).rootArea, 0.126f);
    RESET_BOLTING();
    EXPECT_EQ(size_at(0.5f).rootArea, 0.999f);
}

// ---- GETBOLTDATA ---------------------------------------------------------------------------------

TEST_F(BoltTables, GetBoltDataTakesTheFirstRowWithinAThousandthInTheUnitsOfTheFile) {
    use(SMALL_FILE);
    Real row[BOLT_COLUMNS] = {};
    Int found = -1;
    GETBOLTDATA(16.0009f, TEMA_METRIC, row, found);
    EXPECT_EQ(found, 1);
    EXPECT_EQ(row[0], 16.0f);
    EXPECT_EQ(row[1], 138.324f);
    GETBOLTDATA(15.9991f, TEMA_METRIC, row, found);
    EXPECT_EQ(found, 1);
    GETBOLTDATA(16.0011f, TEMA_METRIC, row, found);
    EXPECT_EQ(found, 0);
    EXPECT_EQ(row[0], 20.0f); // the last row of the section
    GETBOLTDATA(16.0f / 25.4f, TEMA_METRIC, row, found);
    EXPECT_EQ(found, 0);
    use_sizes("0.002 1\n"); // a thousandth itself is within
    GETBOLTDATA(0.001f, TEMA_IMPERIAL, row, found);
    EXPECT_EQ(found, 1);
    EXPECT_EQ(row[0], 0.0f); // the units row comes first
    GETBOLTDATA(0.003f, TEMA_IMPERIAL, row, found);
    EXPECT_EQ(found, 1);
    GETBOLTDATA(std::nextafter(0.003f, 1.0f), TEMA_IMPERIAL, row, found);
    EXPECT_EQ(found, 0);
}

TEST_F(BoltTables, GetBoltDataLooksAtTheUnitsRowToo) {
    use(SMALL_FILE);
    Real row[BOLT_COLUMNS] = {};
    Int found = -1;
    GETBOLTDATA(1.0f, TEMA_METRIC, row, found);
    EXPECT_EQ(found, 1);
    EXPECT_EQ(row[0], 1.0f);
    EXPECT_EQ(row[1], 0.0f);
}

TEST_F(BoltTables, GetBoltDataKeepsTheColumnsOfTheRowBeforeWhereARowIsShort) {
    use(SMALL_FILE);
    Real row[BOLT_COLUMNS] = {5.0f, 5.0f, 5.0f, 5.0f, 5.0f, 5.0f, 5.0f, 5.0f, 5.0f};
    Int found = -1;
    GETBOLTDATA(14.0f, BS_3643, row, found);
    EXPECT_EQ(found, 1);
    EXPECT_EQ(row[1], 104.7f);
    EXPECT_EQ(row[2], 30.0f); // of the row before
    EXPECT_EQ(row[3], 20.0f);
}

TEST_F(BoltTables, GetBoltDataLeavesTheRowAloneWithoutASection) {
    use(SMALL_FILE);
    Real row[BOLT_COLUMNS] = {5.0f};
    Int found = -1;
    GETBOLTDATA(5.0f, USER_TABLE, row, found);
    EXPECT_EQ(found, 0);
    EXPECT_EQ(row[0], 5.0f);
}

// ---- lookup by diameter --------------------------------------------------------------------------

TEST_F(BoltTables, ADiameterOfTheTableTakesItsRow) {
    use(SMALL_FILE);
    Real a = 0.75f;
    const BOLT_ROW row = at(a, 1, INTEGRAL, 44);
    EXPECT_EQ(a, 0.75f);
    EXPECT_EQ(row.boltDia, 0.75f);
    EXPECT_EQ(row.rootArea, 0.302f);
    EXPECT_EQ(row.totalArea, 0.302f * 44.0f);
    EXPECT_EQ(row.Bmin, 1.75f);
    EXPECT_EQ(row.Rmin, 1.125f);
    EXPECT_EQ(row.Emin, 0.82f);
    EXPECT_EQ(row.nutCorners, 1.44f);
    EXPECT_EQ(row.wrenchDia, 2.0625f);
    EXPECT_EQ(row.boltCol9, 9.3f);
    EXPECT_TRUE(reported().empty());
}

TEST_F(BoltTables, RingFlangesTakeTheRingColumn) {
    use(SMALL_FILE);
    for (const Int type : {RING, LOOSE}) {
        Real a = 0.75f;
        EXPECT_EQ(at(a, 1, type).Rmin, 0.8125f);
        EXPECT_EQ(at(a, SPECIAL_ROOT_AREA, type).Rmin, 0.8125f);
        EXPECT_EQ(BOLT_SIZE_FOR_AREA(1, 0.302f, type).Rmin, 0.8125f);
    }
    for (const Int type : {INTEGRAL, 2, 4, LAP, COVER, 8}) {
        Real a = 0.75f;
        EXPECT_EQ(at(a, 1, type).Rmin, 1.125f);
        EXPECT_EQ(BOLT_SIZE_FOR_AREA(1, 0.302f, type).Rmin, 1.125f);
    }
}

TEST_F(BoltTables, SevenEighthsTakesItsRowAndOneThatIsAHundredthOff) {
    use_sizes("0.75 0.302\n0.875 0.419\n1.0 0.551\n");
    Real a = 0.875f;
    EXPECT_EQ(at(a).rootArea, 0.419f);
    use_sizes("0.75 0.302\n0.87 0.419\n1.0 0.551\n");
    EXPECT_EQ(at(a).rootArea, 0.419f);
    EXPECT_EQ(a, 0.87f);
    // From below the same row is the upper one of its pair.
    a = 0.865f;
    EXPECT_EQ(at(a).rootArea, 0.419f);
    EXPECT_EQ(a, 0.87f);
    EXPECT_TRUE(reported().empty());
}

TEST_F(BoltTables, ADiameterBetweenTwoSizesTakesTheSmallerWithAWarning) {
    use(SMALL_FILE);
    Real a = 0.9f;
    EXPECT_EQ(at(a).rootArea, 0.302f);
    EXPECT_EQ(a, 0.75f);
    EXPECT_EQ(reported(),
              (std::vector<Line>{{"Warning: bolt dia. 0.900 not found in database, using 0.750 in.",
                                  ERROR_STYLE}}));
    // On both sides of the hundredth.
    a = 0.989f;
    EXPECT_EQ(at(a).boltDia, 0.75f);
    EXPECT_EQ(reported().size(), 1u);
    a = 0.991f;
    EXPECT_EQ(at(a).boltDia, 1.0f);
    EXPECT_EQ(a, 1.0f);
    EXPECT_TRUE(reported().empty());
    a = 0.759f;
    EXPECT_EQ(at(a).boltDia, 0.75f);
    EXPECT_TRUE(reported().empty());
    a = 0.761f;
    EXPECT_EQ(at(a).boltDia, 0.75f);
    EXPECT_EQ(reported().size(), 1u);
}

TEST_F(BoltTables, TheWarningAsTheUserSeesIt) {
    use_sizes("0.75 0.302\n1.0 0.551\n1.125 0.728\n");
    Real a = 1.05f;
    EXPECT_EQ(at(a).boltDia, 1.0f);
    EXPECT_EQ(reported(),
              (std::vector<Line>{{"Warning: bolt dia. 1.050 not found in database, using 1.000 in.",
                                  ERROR_STYLE}}));
}

TEST_F(BoltTables, BelowTheSmallestSizeTheSmallestIsTaken) {
    use(SMALL_FILE);
    Real a = 0.4f;
    EXPECT_EQ(at(a).rootArea, 0.126f);
    EXPECT_EQ(a, 0.5f);
    EXPECT_EQ(reported(),
              (std::vector<Line>{
                  {""},
                  {"Warning: Nominal Bolt Dia.  0.400 in. is Smaller than Min of  0.500 in.",
                   ERROR_STYLE},
                  {""}}));
    a = 0.49995f;
    at(a);
    EXPECT_TRUE(reported().empty());
    a = 0.4998f;
    at(a);
    EXPECT_EQ(reported().size(), 3u);
}

TEST_F(BoltTables, AboveTheLargestSizeTheLargestIsTaken) {
    use_sizes("0.5 0.126\n3.75 10.108\n4.0 11.566\n");
    Real a = 4.5f;
    EXPECT_EQ(at(a).rootArea, 11.566f);
    EXPECT_EQ(a, 4.0f);
    EXPECT_EQ(
        reported(),
        (std::vector<Line>{
            {""},
            {"Warning: Nominal Bolt Dia.  4.500 in. is Larger than Max of  4.000 in.", ERROR_STYLE},
            {""}}));
    a = 4.00005f;
    at(a);
    EXPECT_TRUE(reported().empty());
    a = 4.0002f;
    at(a);
    EXPECT_EQ(reported().size(), 3u);
}

TEST_F(BoltTables, TheLargestSizeItselfTakesItsOwnRow) {
    use(SMALL_FILE);
    Real a = 1.0f;
    EXPECT_EQ(at(a).rootArea, 0.551f);
    EXPECT_TRUE(reported().empty());
}

// Diameters so small that the differences are exact in single precision.
TEST_F(BoltTables, AHundredthItselfIsWithinTheTolerance) {
    use_sizes("0.002 1\n0.02 2\n0.05 3\n");
    Real a = 0.01f; // 0.01 below the second size
    EXPECT_EQ(at(a).rootArea, 2.0f);
    a = std::nextafter(0.01f, 0.0f);
    EXPECT_EQ(at(a).rootArea, 1.0f);
    EXPECT_TRUE(reported().empty());
    use_sizes("0.01 1\n0.05 2\n");
    a = 0.02f; // 0.01 above the first size
    EXPECT_EQ(at(a).rootArea, 1.0f);
    EXPECT_TRUE(reported().empty());
    a = std::nextafter(0.02f, 1.0f);
    EXPECT_EQ(at(a).rootArea, 1.0f);
    EXPECT_EQ(reported().size(), 1u);
}

TEST_F(BoltTables, ATenThousandthBelowTheSmallestIsAllowed) {
    use_sizes("0.0002 1\n1.0 2\n");
    Real a = 0.0001f;
    EXPECT_EQ(at(a).rootArea, 1.0f);
    EXPECT_TRUE(reported().empty());
    a = std::nextafter(0.0001f, 0.0f);
    at(a);
    EXPECT_EQ(reported().size(), 3u);
}

TEST_F(BoltTables, TinyRowsDoNotCount) {
    use_sizes("0.001 0.0001\n");
    expect_zero(size_at(0.001f));
    expect_zero(BOLT_SIZE_FOR_AREA(1, 0.0001f, INTEGRAL));
    use_sizes("0.0011 0.00011\n");
    EXPECT_EQ(size_at(0.001f).boltDia, 0.0011f);
    EXPECT_EQ(BOLT_SIZE_FOR_AREA(1, 0.0001f, INTEGRAL).rootArea, 0.00011f);
}

TEST_F(BoltTables, ALineEndsAtColumn100) {
    std::string row = "1.0";
    row.resize(96, ' ');
    use_sizes(row + "0.551\n"); // columns 97 to 101
    EXPECT_EQ(size_at(1.0f).rootArea, 0.55f);
}

TEST_F(BoltTables, AMetricSectionIsReadInMillimetresAndLeavesInInches) {
    use(SMALL_FILE);
    Real a = 16.0f / 25.4f;
    const BOLT_ROW row = at(a, TEMA_METRIC, INTEGRAL, 12);
    EXPECT_EQ(a, 16.0f / 25.4f);
    EXPECT_EQ(row.boltDia, 16.0f / 25.4f);
    EXPECT_EQ(row.rootArea, 138.324f / 645.16f);
    EXPECT_EQ(row.totalArea, 138.324f * 12.0f / 645.16f);
    EXPECT_EQ(row.Bmin, 44.45f / 25.4f);
    EXPECT_EQ(row.Rmin, 28.54f / 25.4f);
    EXPECT_EQ(row.Emin, 20.7f / 25.4f);
    EXPECT_EQ(row.nutCorners, 31.18f / 25.4f);
    EXPECT_EQ(row.wrenchDia, 53.98f / 25.4f);
    EXPECT_EQ(row.boltCol9, 50.8f / 25.4f);
    EXPECT_TRUE(reported().empty());
}

TEST_F(BoltTables, TheTolerancesOfAMetricSectionAreInMillimetres) {
    use(SMALL_FILE);
    Real a = 15.98f / 25.4f; // 0.0008 in. off, but 0.02 mm
    EXPECT_EQ(at(a, TEMA_METRIC).boltDia, 12.0f / 25.4f);
    EXPECT_EQ(reported(),
              (std::vector<Line>{{"Warning: bolt dia. 0.629 not found in database, using 0.472 in.",
                                  ERROR_STYLE}}));
    a = 15.995f / 25.4f;
    EXPECT_EQ(at(a, TEMA_METRIC).boltDia, 16.0f / 25.4f);
    EXPECT_TRUE(reported().empty());
}

TEST_F(BoltTables, TheWarningsShowTheUsersUnits) {
    use(SMALL_FILE);
    UNITS.diameter = 25.4f;
    UNITS.diameter_label = "mm";
    Real a = 24.0f / 25.4f;
    at(a, TEMA_METRIC);
    EXPECT_EQ(reported()[1].text,
              "Warning: Nominal Bolt Dia. 24.000 mm is Larger than Max of 20.000 mm");
    a = 10.0f / 25.4f;
    at(a, TEMA_METRIC);
    EXPECT_EQ(reported()[1].text,
              "Warning: Nominal Bolt Dia. 10.000 mm is Smaller than Min of 12.000 mm");
    a = 14.0f / 25.4f;
    at(a, TEMA_METRIC);
    EXPECT_EQ(reported()[0].text,
              "Warning: bolt dia. 14.000 not found in database, using 12.000 mm");
}

TEST_F(BoltTables, ATableOfOneRowAlwaysGivesThatRow) {
    use_sizes("1.0 0.551 2.25\n");
    for (const Real dia : {0.2f, 1.0f, 3.0f}) {
        Real a = dia;
        EXPECT_EQ(at(a).Bmin, 2.25f);
        EXPECT_EQ(a, 1.0f);
    }
    EXPECT_EQ(reported().size(), 6u); // too small, listed, too large
    EXPECT_EQ(BOLT_SIZE_FOR_AREA(1, 9.0f, INTEGRAL).boltDia, 1.0f);
}

TEST_F(BoltTables, TheSpecialSeriesTakesItsAreaFromTheRecord) {
    use(SMALL_FILE);
    Real a = 0.6f;
    const BOLT_ROW row = BOLT_TABLE_ROW(a, INTEGRAL, SPECIAL_ROOT_AREA, 0.19f, 20);
    EXPECT_EQ(a, 0.6f);
    EXPECT_EQ(row.totalArea, 0.19f * 20.0f);
    EXPECT_EQ(row.Bmin, 1.5f); // of the 5/8 size, the first that is at least a
    EXPECT_EQ(row.Rmin, 0.9375f);
    EXPECT_EQ(row.Emin, 0.76f);
    EXPECT_EQ(row.nutCorners, 1.23f);
    EXPECT_EQ(row.wrenchDia, 1.75f);
    EXPECT_EQ(row.boltCol9, 9.2f);
    EXPECT_TRUE(reported().empty()); // no warnings in this series
}

TEST_F(BoltTables, TheSpecialSeriesBeyondTheTableHasNoDistances) {
    use(SMALL_FILE);
    Real a = 5.0f;
    const BOLT_ROW row = BOLT_TABLE_ROW(a, INTEGRAL, SPECIAL_ROOT_AREA, 2.0f, 8);
    EXPECT_EQ(row.totalArea, 16.0f);
    EXPECT_EQ(row.Bmin, 0.0f);
    EXPECT_EQ(row.Rmin, 0.0f);
    EXPECT_EQ(row.Emin, 0.0f);
    EXPECT_TRUE(reported().empty());
}

TEST_F(BoltTables, TheSpecialSeriesLooksAtTwentyOneSizesAndAsInches) {
    std::string rows = "[TEMA IMPERIAL]\n1\n"; // a units row that says millimetres
    for (int i = 1; i <= 22; ++i)
        rows += std::to_string(i) + " 1 " + std::to_string(i) + "\n";
    use(rows + "[END]\n");
    Real a = 20.5f;
    EXPECT_EQ(BOLT_TABLE_ROW(a, INTEGRAL, SPECIAL_ROOT_AREA, 1.0f, 4).Bmin, 21.0f);
    a = 21.5f;
    EXPECT_EQ(BOLT_TABLE_ROW(a, INTEGRAL, SPECIAL_ROOT_AREA, 1.0f, 4).Bmin, 0.0f);
}

TEST_F(BoltTables, NotANumberTakesTheFirstRow) {
    use(SMALL_FILE);
    Real a = std::nanf("");
    EXPECT_EQ(at(a).boltDia, 0.5f);
    EXPECT_EQ(BOLT_SIZE_FOR_AREA(1, std::nanf(""), INTEGRAL).boltDia, 0.5f);
}

TEST_F(BoltTables, ASilentPassWritesNothing) {
    use(SMALL_FILE);
    IWRTFL = 0;
    Real a = 0.9f;
    EXPECT_EQ(at(a).boltDia, 0.75f);
    IWRTFL = 1;
    EXPECT_TRUE(reported().empty());
}

// ---- lookup by root area -------------------------------------------------------------------------

TEST_F(BoltTables, TheSizeForAnAreaIsTheUpperOneOfItsPair) {
    use(SMALL_FILE);
    const auto size = [](Real area) { return BOLT_SIZE_FOR_AREA(1, area, INTEGRAL).boltDia; };
    EXPECT_EQ(size(0.0f), 0.5f);
    EXPECT_EQ(size(0.126f), 0.5f);
    EXPECT_EQ(size(0.127f), 0.625f);
    EXPECT_EQ(size(0.202f), 0.625f);
    EXPECT_EQ(size(0.203f), 0.75f);
    EXPECT_EQ(size(0.55f), 1.0f);
    EXPECT_EQ(size(0.551f), 1.0f);
    EXPECT_EQ(size(50.0f), 1.0f);
}

TEST_F(BoltTables, TheSizeForAnAreaBringsItsDistances) {
    use(SMALL_FILE);
    const BOLT_ROW row = BOLT_SIZE_FOR_AREA(SPECIAL_ROOT_AREA, 0.25f, INTEGRAL); // as series 1
    EXPECT_EQ(row.boltDia, 0.75f);
    EXPECT_EQ(row.rootArea, 0.302f);
    EXPECT_EQ(row.Bmin, 1.75f);
    EXPECT_EQ(row.Rmin, 1.125f);
    EXPECT_EQ(row.Emin, 0.82f);
    EXPECT_EQ(row.boltCol9, 9.3f);
}

TEST_F(BoltTables, TheSizeForAnAreaOfAMetricSection) {
    use(SMALL_FILE);
    const BOLT_ROW row = BOLT_SIZE_FOR_AREA(TEMA_METRIC, 0.2f, LOOSE); // 129 mm2
    EXPECT_EQ(row.boltDia, 16.0f / 25.4f);
    EXPECT_EQ(row.rootArea, 138.324f / 645.16f);
    EXPECT_EQ(row.Rmin, 20.64f / 25.4f);
    EXPECT_EQ(row.boltCol9, 50.8f / 25.4f);
}

TEST_F(BoltTables, TheSizeForAnAreaOfAnEmptyTableIsZero) {
    use(SMALL_FILE);
    expect_zero(BOLT_SIZE_FOR_AREA(SABS_1700, 0.2f, INTEGRAL));
}

} // namespace
} // namespace tarvane
