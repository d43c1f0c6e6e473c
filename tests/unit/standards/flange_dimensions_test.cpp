#include "standards/flange_dimensions.h"

#include "../data_folder.h"
#include "tarvane/tarvane.h"

#include <cstring>

namespace tarvane {
namespace {

// Columns: size, series, outside, thickness, blind, length, hub back, hub weld end, bolt circle, hole,
// bolts, bolt, bore, slip-on length, slip-on bore, face, further. The figures are simple, those of no flange.
constexpr const char* FILE_TEXT =
    "; size series outside thickness ...\n"
    "[150]\n"
    "0.5    0  4.0  0.50 0.55 2.00  1.5   0.84  2.75 0.62  4 0.5   0.62 0.60 0.88 1.38 0.1\n"
    "0.75   0  4.5  0.60 0.65 2.25  1.75  1.05  3.0  0.62  4 0.5   0.82 0.60 1.09 1.69 0.2\n"
    "; between the rows\n"
    "12     0 19.0  1.25 1.30 4.50 14.375 12.75 17.0 1.00 12 0.875 12.0 2.19 12.88 15.0 0.3\n"
    "14     0 21.0  1.38 1.40 5.00 15.75 14.0  18.75 1.12 12 1.0   13.25 2.25 14.14 16.25 0.4\n"
    "26     1 34.25 2.69 2.80 4.69 26.625 26.0 31.75 1.38 24 1.25  25.25 0 0 29.5 0.5\n"
    "26     2 30.94 1.62 1.70 3.50 26.94 26.06 29.31 0.88 36 0.75  25.25 0 0 28.5 0.6\n"
    "30     1 38.75 2.94 3.00 5.38 30.75 30.0 36.0 1.38 28 1.25    29.25 0 0 33.75 0.7\n"
    "24     0 32.0  1.88 1.90 6.00 26.12 24.0 29.5 1.38 20 1.25    23.25 3.25 24.25 27.25 0.8\n"
    "[300]\n"
    "30 1 43.0 3.62 3.7 8.25 32.75 30 39.25 1.88 28 1.75 29.25 0 0 33.75 0\n"
    "[400]\n"
    "4 0 10.0 1.38 1.4 3.5 5.75 4.5 7.88 1.0 8 0.875 4.03 2.0 4.57 6.19 0\n"
    "30 1 45.5 4 4 9 33 30 41 2 28 2 29.25 0 0 33.75 0\n"
    "[PN400]\n"
    "100 0 320 60 60 130 178 120 250 42 8 36 100 70 116 162 0\n"
    "[PN16]\n"
    "15 0 95 16 16 38 32 21.3 65 14 4 12 17.3 22 22 45 0\n"
    "100 0 220 20 20 52 131 114.3 180 18 8 16 107.1 40 116 158 7\n"
    "[END]\n"
    "[75]\n"
    "26 1 30 1 1 3 27 26 28 1 36 0.75 25 0 0 27 0\n";

struct Call {
    Real size;
    Int flange_class;
    Int series = 1;
    Real wall = 0.25f;
    Int blind = 0, slipon = 0, hubform = 0, ansi = 0;
    Real result[FLANGE_RESULTS] = {};
    bool notfound = false;

    Call& run() {
        GET_FLANGE_DIMENSIONS(size, flange_class, result, notfound, series, wall, blind, slipon,
                              hubform, ansi);
        return *this;
    }
    bool all_absent(Int to = FLANGE_RESULTS) const {
        for (Int i = 0; i < to; ++i)
            if (result[i] != -1.0f) return false;
        return true;
    }
};

class FlangeDimensions : public data_test::DataTest {
  protected:
    FlangeDimensions() { write_file("system", "ANSIFlangeDimensions.txt", FILE_TEXT); }
};

class FlangeSizes : public FlangeDimensions {
  protected:
    Int count = -7;
    char fields[MOST_FLANGE_SIZES * FLANGE_SIZE_WIDTH];

    std::vector<std::string> sizes(std::string_view name) {
        std::fill(std::begin(fields), std::end(fields), '?');
        GET_FLANGE_SIZES(name, fields, count);
        std::vector<std::string> found;
        for (Int i = 0; i < count; ++i) {
            const std::string field(fields + i * FLANGE_SIZE_WIDTH, FLANGE_SIZE_WIDTH);
            const auto end = field.find('\0');
            EXPECT_NE(end, std::string::npos);
            EXPECT_EQ(field.substr(end + 1), std::string(field.size() - end - 1, ' '));
            found.push_back(field.substr(0, end));
        }
        return found;
    }
};
using Sizes = std::vector<std::string>;

// ---- sizes -----------------------------------------------------------------------------------------

TEST_F(FlangeSizes, AreTheTextsOfTheSectionWithOneNulEach) {
    EXPECT_EQ(sizes("PN16"), (Sizes{"15", "100"}));
    EXPECT_EQ(std::string(fields + 2 * FLANGE_SIZE_WIDTH, FLANGE_SIZE_WIDTH), "          ");
}

TEST_F(FlangeSizes, TheClassTextLosesItsNulsAndLeadingBlanks) {
    using namespace std::string_view_literals;
    EXPECT_EQ(sizes("  PN400\0 "sv), Sizes{"100"});
    EXPECT_EQ(sizes("pn400"), Sizes{});
}

TEST_F(FlangeSizes, ACommentEndsTheList) { EXPECT_EQ(sizes("150"), (Sizes{"0.5", "0.75"})); }

TEST_F(FlangeSizes, ASizeBelowTheOneBeforeItEndsTheList) {
    write_file("system", "ANSIFlangeDimensions.txt",
               "[150]\n0.75 0\n0.5 0\n1 0\n\n 1.5  0\n24 0\n26 1\n26 2\n30 1\n26 3\n60 0\n[END]\n");
    EXPECT_EQ(sizes("150"), (Sizes{"0.75", "0.5", "1", "1.5", "24", "26", "26", "30"}));
}

TEST_F(FlangeSizes, AnUnknownClassHasNone) {
    EXPECT_EQ(sizes("75x"), Sizes{});
    EXPECT_EQ(count, 0);
    EXPECT_EQ(sizes("75"), Sizes{}); // after the end of the data
}

TEST_F(FlangeSizes, WithoutTheFileNothingIsTouched) {
    remove_file("system", "ANSIFlangeDimensions.txt");
    count = 3;
    std::fill(std::begin(fields), std::end(fields), '?');
    GET_FLANGE_SIZES("150", fields, count);
    EXPECT_EQ(count, 3);
    EXPECT_EQ(fields[0], '?');
}

TEST_F(FlangeSizes, TheListEndsWithItsSixtiethEntry) {
    std::string text = "[150]\n";
    for (int i = 1; i <= 61; ++i)
        text += std::to_string(i) + "\n";
    write_file("system", "ANSIFlangeDimensions.txt", text + "[END]\n");
    EXPECT_EQ(sizes("150").size(), 60u);
}

TEST_F(FlangeSizes, ASizeOfTenColumnsIsCutForItsNul) {
    write_file("system", "ANSIFlangeDimensions.txt", "[150]\n1234567890 0\n[END]\n");
    EXPECT_EQ(sizes("150"), Sizes{"123456789"});
}

// A host may pass the length of all fields or, as for an array of texts, that of one.
TEST_F(FlangeSizes, TheExportDoesNotReadTheLengthOfTheFields) {
    for (const Int length : {600, FLANGE_SIZE_WIDTH, 0, -1}) {
        std::memset(fields, '?', sizeof fields);
        Int found = 5;
        ::GET_FLANGE_SIZES("PN16", 4, fields, length, &found);
        EXPECT_EQ(found, 2) << length;
        EXPECT_STREQ(fields, "15");
        EXPECT_EQ(fields[sizeof fields - 1], ' ');
    }
}

// ---- dimensions --------------------------------------------------------------------------------------

TEST_F(FlangeDimensions, AWeldNeckFlangeTakesItsColumns) {
    const Call c = Call{.size = 14.0f, .flange_class = 150}.run();
    EXPECT_FALSE(c.notfound);
    EXPECT_EQ(c.series, 0);
    EXPECT_EQ(c.result[FLANGE_BORE], 14.0f - 2.0f * 0.25f);
    EXPECT_EQ(c.result[FLANGE_THICKNESS], 1.38f); // series 0 keeps its raised face
    EXPECT_EQ(c.result[FLANGE_CLASS], 150.0f);
    EXPECT_EQ(c.result[BOLT_HOLE], 1.12f);
    EXPECT_EQ(c.result[BOLT_COUNT], 12.0f);
    EXPECT_EQ(c.result[BOLT_SIZE], 1.0f);
    EXPECT_EQ(c.result[BOLT_CIRCLE], 18.75f);
    EXPECT_EQ(c.result[HALF_RING_WIDTH], (18.75f - 13.5f) / 4.0f);
    EXPECT_EQ(c.result[FLANGE_OUTSIDE], 21.0f);
    EXPECT_EQ(c.result[HUB_SMALL_END], 0.25f);
    EXPECT_EQ(c.result[HUB_LARGE_END], (15.75f - 14.0f) / 2.0f + 0.25f);
    EXPECT_EQ(c.result[HUB_LENGTH], 5.0f - 1.38f);
    EXPECT_EQ(c.result[FACE_DIAMETER], 16.25f);
    EXPECT_EQ(c.result[LAST_COLUMN], 0.4f);
}

TEST_F(FlangeDimensions, BelowSize14TheLowClassesTakeTheBoreOfTheTable) {
    EXPECT_EQ((Call{.size = 12.0f, .flange_class = 150}.run().result[FLANGE_BORE]), 12.0f);
    EXPECT_EQ((Call{.size = 4.0f, .flange_class = 400}.run().result[FLANGE_BORE]), 3.5f);
    EXPECT_EQ((Call{.size = 12.0f, .flange_class = 150, .blind = 1}.run().result[FLANGE_BORE]),
              11.5f);
}

TEST_F(FlangeDimensions, AWallOfNothingIsThreeEighths) {
    const Call zero = Call{.size = 14.0f, .flange_class = 150, .wall = 0.0f}.run();
    EXPECT_EQ(zero.wall, 0.375f);
    EXPECT_EQ(zero.result[HUB_SMALL_END], 0.375f);
    EXPECT_EQ((Call{.size = 14.0f, .flange_class = 150, .wall = 0.0001f}.run().wall), 0.375f);
    const Real hair = std::nextafter(0.0001f, 1.0f);
    EXPECT_EQ((Call{.size = 14.0f, .flange_class = 150, .wall = hair}.run().wall), hair);
}

TEST_F(FlangeDimensions, AWallThatLeavesNoBoreLeavesTheSize) {
    const Call c = Call{.size = 14.0f, .flange_class = 150, .wall = 7.0f}.run();
    EXPECT_EQ(c.result[FLANGE_BORE], 14.0f);
}

TEST_F(FlangeDimensions, ASizeThatIsNotThereNamesTheNextOne) {
    const Call between = Call{.size = 13.0f, .flange_class = 150}.run();
    EXPECT_TRUE(between.notfound);
    EXPECT_TRUE(between.all_absent(LAST_COLUMN));
    EXPECT_EQ(between.result[LAST_COLUMN], 14.0f);
    const Call beyond = Call{.size = 60.0f, .flange_class = 150}.run();
    EXPECT_TRUE(beyond.notfound);
    EXPECT_TRUE(beyond.all_absent());
}

TEST_F(FlangeDimensions, BelowSize26ALargerSizeOfAnySeriesIsTheNextOne) {
    const char* const rest =
        " 32.0 1.88 1.88 5.0 26.25 24.0 29.5 1.375 20 1.25 23.25 3.25 24.19 27.25 0\n";
    std::string text = "[150]\n";
    for (const char* const row : {"22 0", "24 0", "26 1", "28 1", "26 2"})
        text += row + std::string(rest);
    write_file("system", "ANSIFlangeDimensions.txt", text + "[END]\n");
    const struct {
        Real size;
        Int series, back;
        Real next;
    } missing[] = {
        {25.0f, 0, 0, 26.0f}, {25.0f, 1, 0, 26.0f}, {23.0f, 0, 0, 24.0f}, {27.0f, 1, 1, 28.0f},
        {27.0f, 2, 2, -1.0f}, {28.0f, 2, 2, -1.0f}, {30.0f, 1, 1, -1.0f},
    };
    for (const auto& row : missing) {
        Call c{.size = row.size, .flange_class = 150, .series = row.series, .wall = 0.375f};
        c.run();
        EXPECT_TRUE(c.notfound) << row.size << " " << row.series;
        EXPECT_EQ(c.series, row.back) << row.size;
        EXPECT_TRUE(c.all_absent(LAST_COLUMN)) << row.size;
        EXPECT_EQ(c.result[LAST_COLUMN], row.next) << row.size << " " << row.series;
    }
    const Call found = Call{.size = 24.0f, .flange_class = 150, .series = 0, .wall = 0.375f}.run();
    EXPECT_FALSE(found.notfound);
    EXPECT_EQ(found.result[FLANGE_BORE], 23.25f);
    EXPECT_EQ(found.result[LAST_COLUMN], 0.0f);
    // 26 itself chooses its series.
    EXPECT_FALSE((Call{.size = 26.0f, .flange_class = 150, .series = 2}.run().notfound));
}

// The sizes of a metric class beyond DN 26 have their own series, 0, as the inch sizes from 26 on do.
TEST_F(FlangeDimensions, AMetricSizePassesOverRowsOfAnotherSeries) {
    write_file("system", "ANSIFlangeDimensions.txt",
               "[PN16]\n600 1 840 40 40 95 670 610 770 36 20 33 590 60 610 725 0\n"
               "500 0 715 34 34 90 560 508 650 33 20 30 490 60 510 610 0\n[END]\n");
    EXPECT_FALSE((Call{.size = 500.0f, .flange_class = 16}.run().notfound));
}

TEST_F(FlangeDimensions, ARowOfFewerThan17NumbersIsAnErrorOfTheFile) {
    const std::string good = "4 0 10 1.38 1.4 3.5 5.75 4.5 7.88 1.0 8 0.875 4.03 2.0 4.57 6.19 0\n";
    const auto found = [&](const std::string& rows, Real size = 4.0f) {
        write_file("system", "ANSIFlangeDimensions.txt", "[600]\n" + rows + "[900]\n3 0\n[END]\n");
        const Call c = Call{.size = size, .flange_class = 600}.run();
        EXPECT_EQ(c.notfound, c.all_absent()) << rows;
        return !c.notfound;
    };
    EXPECT_TRUE(found(good));
    EXPECT_TRUE(found("; a comment\n\n" + good));
    EXPECT_FALSE(found("4 0 10 1.38 1.4 3.5 5.75 4.5 7.88 1.0 8 0.875 4.03 2.0 4.57 6.19\n"));
    EXPECT_FALSE(found("4\n"));
    EXPECT_FALSE(found("4 0 10 1.38 1.4 3.5 x 4.5 7.88 1.0 8 0.875 4.03 2.0 4.57 6.19 0\n"));
    EXPECT_TRUE(found("4 0 10 1.38 1.4 3.5 5.75 4.5 7.88 1.0 8 0.875 4.03 2.0 4.57 6.19 0 7 8\n"));
    // Before the row sought, of whatever size and series; a row after it is not reached.
    EXPECT_FALSE(found("3 0 10\n" + good));
    EXPECT_FALSE(found("3 1 10\n" + good));
    EXPECT_FALSE(found("what is this\n" + good));
    EXPECT_TRUE(found(good + "5 0 10\n"));
    // Not the next size either: the row can't be trusted.
    EXPECT_FALSE(found(good + "6 0 10\n", 5.0f));
}

TEST_F(FlangeDimensions, LargeSizesGoBySeries) {
    const Call a = Call{.size = 26.0f, .flange_class = 150, .series = 1}.run();
    const Call b = Call{.size = 26.0f, .flange_class = 150, .series = 2}.run();
    EXPECT_EQ(a.result[FLANGE_OUTSIDE], 34.25f);
    EXPECT_EQ(b.result[FLANGE_OUTSIDE], 30.94f);
    EXPECT_EQ(b.series, 2);
    // Rows of another series count for nothing, be they smaller or larger.
    EXPECT_EQ((Call{.size = 30.0f, .flange_class = 150}.run().result[FLANGE_OUTSIDE]), 38.75f);
    const Call none = Call{.size = 26.0f, .flange_class = 150, .series = 3}.run();
    EXPECT_TRUE(none.notfound);
    EXPECT_EQ(none.result[LAST_COLUMN], -1.0f);
}

TEST_F(FlangeDimensions, LargeSizesLoseTheRaisedFaceOfTheirClass) {
    const Call low = Call{.size = 30.0f, .flange_class = 300}.run();
    EXPECT_EQ(low.result[FLANGE_THICKNESS], 3.62f - 0.06f);
    EXPECT_EQ(low.result[HUB_LENGTH], (8.25f - 3.62f) - 0.06f);
    const Call high = Call{.size = 30.0f, .flange_class = 400}.run();
    EXPECT_EQ(high.result[FLANGE_THICKNESS], 4.0f - 0.25f);
    EXPECT_EQ(high.result[HUB_LENGTH], (9.0f - 4.0f) - 0.25f);
}

TEST_F(FlangeDimensions, ACoverHasItsOwnThicknessAndNoHub) {
    const Call c = Call{.size = 26.0f, .flange_class = 150, .blind = 1}.run();
    EXPECT_EQ(c.result[FLANGE_THICKNESS], 2.80f);
    EXPECT_EQ(c.result[HUB_SMALL_END], 0.0f);
    EXPECT_EQ(c.result[HUB_LARGE_END], 0.0f);
    EXPECT_EQ(c.result[HUB_LENGTH], 0.0f);
}

TEST_F(FlangeDimensions, ASlipOnHubFollowsItsForm) {
    const Real h = (2.25f - 1.38f) + 0.06f, s = std::fabs(15.75f - 14.14f) / 2.0f;
    const Real slope = 0.12278456f, L = s / slope;
    const auto form = [](Int hubform) {
        return Call{.size = 14.0f, .flange_class = 150, .slipon = 1, .hubform = hubform}.run();
    };
    const Call walled = form(1), straight = form(2), bare = form(3);
    for (const Call* c : {&walled, &straight, &bare}) {
        EXPECT_EQ(c->result[FLANGE_BORE], 14.14f);
        EXPECT_EQ(c->result[HUB_LENGTH], h);
        // The lever of the bolts goes by the bore of the pipe.
        EXPECT_EQ(c->result[HALF_RING_WIDTH], (18.75f - 13.5f) / 4.0f);
    }
    EXPECT_EQ(walled.result[HUB_LARGE_END], s + 0.25f);
    EXPECT_EQ(walled.result[HUB_SMALL_END], (L - h) * slope + 0.25f);
    EXPECT_EQ(straight.result[HUB_LARGE_END], s);
    EXPECT_EQ(straight.result[HUB_SMALL_END], s);
    EXPECT_EQ(bare.result[HUB_LARGE_END], s);
    EXPECT_EQ(bare.result[HUB_SMALL_END], (L - h) * slope);
}

TEST_F(FlangeDimensions, ASlopeThatEndsBelowTheWallIsHeldToIt) {
    // s is 0.05, so that the slope ends long before the hub does.
    write_file("system", "ANSIFlangeDimensions.txt",
               "[600]\n4 0 10 1.0 1 3 4.7 4.5 8 1 8 0.875 4 3.0 4.6 6 0\n[END]\n");
    const auto end = [](Int hubform) {
        return Call{.size = 4.0f, .flange_class = 600, .slipon = 1, .hubform = hubform}
            .run()
            .result[HUB_SMALL_END];
    };
    EXPECT_EQ(end(1), 0.25f);
    EXPECT_EQ(end(3), 0.0f);
}

TEST_F(FlangeDimensions, ASlopeThatEndsAboveTheLargeEndStepsBackAnEighth) {
    // The hub is shorter than the ring: h is -0.5 and the slope would end above g1.
    write_file("system", "ANSIFlangeDimensions.txt",
               "[600]\n4 0 10 1.0 1 3 5.6 4.5 8 1 8 0.875 4 0.5 4.6 6 0\n[END]\n");
    const Real s = std::fabs(5.6f - 4.6f) / 2.0f, L = s / 0.12278456f;
    const auto end = [](Int hubform) {
        return Call{.size = 4.0f, .flange_class = 600, .slipon = 1, .hubform = hubform}
            .run()
            .result[HUB_SMALL_END];
    };
    EXPECT_EQ(end(1), ((L + 0.5f) * 0.12278456f + 0.25f) - 0.125f);
    EXPECT_EQ(end(3), (L + 0.5f) * 0.12278456f - 0.125f);
}

TEST_F(FlangeDimensions, ACoverThatIsSlippedOnHasTheCoversThicknessAndTheHub) {
    const Call c =
        Call{.size = 14.0f, .flange_class = 150, .blind = 1, .slipon = 1, .hubform = 2}.run();
    EXPECT_EQ(c.result[FLANGE_THICKNESS], 1.40f);
    EXPECT_EQ(c.result[HUB_LENGTH], (2.25f - 1.40f) + 0.06f);
    EXPECT_EQ(c.result[FLANGE_BORE], 14.14f);
}

TEST_F(FlangeDimensions, AMetricClassComesBackInInches) {
    const Call c = Call{.size = 100.0f, .flange_class = 16, .series = 5}.run();
    EXPECT_FALSE(c.notfound);
    EXPECT_EQ(c.series, 0);
    EXPECT_EQ(c.size, 100.0f / 25.4f);
    EXPECT_EQ(c.result[FLANGE_OUTSIDE], 220.0f / 25.4f);
    EXPECT_EQ(c.result[FLANGE_THICKNESS], 20.0f / 25.4f);
    EXPECT_EQ(c.result[BOLT_COUNT], 8.0f);
    EXPECT_EQ(c.result[BOLT_SIZE], 16.0f / 25.4f);
    EXPECT_EQ(c.result[FLANGE_BORE], 107.1f / 25.4f);
    EXPECT_EQ(c.result[LAST_COLUMN], 7.0f / 25.4f);
}

TEST_F(FlangeDimensions, TheNumber400IsAnInchClassOnlyWithTheSwitchAt0) {
    EXPECT_EQ((Call{.size = 4.0f, .flange_class = 400, .ansi = 0}.run().result[FLANGE_OUTSIDE]),
              10.0f);
    EXPECT_EQ((Call{.size = 100.0f, .flange_class = 400, .ansi = 1}.run().result[FLANGE_OUTSIDE]),
              320.0f / 25.4f);
}

TEST_F(FlangeDimensions, AClassOfNoTextIsNotMissing) {
    Call zero{.size = 4.0f, .flange_class = 0, .notfound = true};
    EXPECT_TRUE(zero.run().notfound); // untouched
    EXPECT_TRUE(zero.all_absent());
    Call odd{.size = 4.0f, .flange_class = 151, .notfound = true};
    EXPECT_FALSE(odd.run().notfound);
    EXPECT_TRUE(odd.all_absent());
}

TEST_F(FlangeDimensions, AMissingFileOrSectionIsNotFound) {
    EXPECT_TRUE((Call{.size = 26.0f, .flange_class = 75}.run().notfound)); // after the end
    remove_file("system", "ANSIFlangeDimensions.txt");
    const Call c = Call{.size = 12.0f, .flange_class = 150}.run();
    EXPECT_TRUE(c.notfound);
    EXPECT_TRUE(c.all_absent());
}

TEST_F(FlangeDimensions, ClassZeroLeavesEveryBitOfTheLogical) {
    float size = 4.0f, wall = 0.25f, result[FLANGE_RESULTS];
    Int series = 0;
    const Int zero = 0;
    for (const Int before : {-1, 0, 6}) {
        Int notfound = before;
        ::GET_FLANGE_DIMENSIONS(&size, &zero, result, &notfound, &series, &wall, &zero, &zero,
                                &zero, &zero);
        EXPECT_EQ(notfound, before);
    }
}

TEST_F(FlangeDimensions, TheExportGivesTheLogicalInBit0) {
    float size = 13.0f, wall = 0.25f, result[FLANGE_RESULTS];
    Int flange_class = 150, notfound = 0, series = 0;
    const Int zero = 0;
    ::GET_FLANGE_DIMENSIONS(&size, &flange_class, result, &notfound, &series, &wall, &zero, &zero,
                            &zero, &zero);
    EXPECT_EQ(notfound, 1);
    size = 12.0f;
    ::GET_FLANGE_DIMENSIONS(&size, &flange_class, result, &notfound, &series, &wall, &zero, &zero,
                            &zero, &zero);
    EXPECT_EQ(notfound, 0);
    EXPECT_EQ(result[BOLT_CIRCLE], 17.0f);
}

} // namespace
} // namespace tarvane
