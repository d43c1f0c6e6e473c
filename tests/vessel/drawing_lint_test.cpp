// Planted faults that the lint of drawings has to find.
#include "drawing_lint.h"
#include "random_drawings.h"

#include <gtest/gtest.h>

namespace tarvane::vessel {
namespace {

Sheet page() {
    Sheet sheet;
    sheet.text({20, 20}, "t = 1.5");
    return sheet;
}

std::string fault_of(const Sheet& sheet) { return first_of(lint_of(sheet, 100, 100)); }

TEST(DrawingLint, FindsNothingOnACleanPage) { EXPECT_EQ(fault_of(page()), ""); }

TEST(DrawingLint, FindsTextOverText) {
    Sheet sheet = page();
    sheet.text({22, 21}, "h = 2");
    EXPECT_EQ(fault_of(sheet), "text over text: t = 1.5 | h = 2");
}

TEST(DrawingLint, FindsALineThroughText) {
    Sheet sheet = page();
    sheet.line({25, 0}, {25, 90}, THIN);
    EXPECT_EQ(fault_of(sheet), "line through text: t = 1.5");
}

TEST(DrawingLint, FindsALineThatStartsWithinAText) {
    Sheet sheet = page();
    sheet.line({25, 19}, {25, 18.5}, THIN);
    EXPECT_EQ(fault_of(sheet), "line through text: t = 1.5");
}

TEST(DrawingLint, FindsAnAreaOverText) {
    Sheet sheet = page();
    sheet.area({{0, 0}, {90, 0}, {90, 90}, {0, 90}}, "#000000");
    EXPECT_EQ(fault_of(sheet), "area over text: t = 1.5");
}

TEST(DrawingLint, FindsInkOutsideTheFrame) {
    Sheet sheet = page();
    sheet.line({50, 50}, {100.5, 50}, THIN);
    EXPECT_EQ(fault_of(sheet), "outside the frame");
}

TEST(DrawingLint, ComparesLengthsWithLabels) {
    Sheet sheet;
    sheet.measures = {{"t = 1.5", 19.05, 25.4, 0.5},
                      {"A = \xC3\x98"
                       "0,5",
                       0.25, 1, 0.5}};
    EXPECT_EQ(fault_of(sheet), "");
    sheet.measures[0].drawn = 20.5;
    EXPECT_EQ(fault_of(sheet), "drawn as 1.614173: t = 1.5");
}

TEST(DrawingLint, MissesDimensionsThatAreNeitherDrawnNorListed) {
    Drawn drawn;
    EXPECT_EQ(first_of(missing(drawn, {"t"})), "neither drawn nor listed: t");
    drawn.figure.dropped = {"t = 1.5"};
    EXPECT_EQ(first_of(missing(drawn, {"t"})), "dropped without a word: t = 1.5");
    drawn.sheet.text({0, 0}, "Without room: t = 1.5");
    EXPECT_EQ(first_of(missing(drawn, {"t"})), "");
}

} // namespace
} // namespace tarvane::vessel
