// What a page of a drawing is written as.
#include "drawing/sheet.h"
#include "drawing_lint.h"
#include "random_drawings.h"

#include <gtest/gtest.h>

namespace tarvane::vessel {
namespace {

TEST(Sheets, DrawWhatLooksAlikeAsOnePath) {
    Sheet sheet;
    sheet.line({0, 0}, {9, 0}, THIN);
    sheet.line({0, 0}, {0, 9}, OUTLINE);
    sheet.line({0, 0}, {9, 9}, THIN);
    // Two arrow heads of which one is the other in a mirror: no hole where they are one over the other.
    sheet.area({{0, 0}, {4, 0}, {4, 4}}, "#000000");
    sheet.area({{0, 0}, {4, 4}, {4, 0}}, "#000000");
    const std::string svg = sheet.svg(10, 10, "");
    std::size_t paths = 0;
    for (std::size_t at = 0; (at = svg.find("<path ", at)) != std::string::npos; ++at)
        ++paths;
    EXPECT_EQ(paths, 3U) << svg;
    EXPECT_NE(svg.find("\"M0 0L4 0L4 4ZM0 0L4 0L4 4Z\""), std::string::npos) << svg;
}

TEST(Hatching, IsBrokenAroundLabels) {
    Sheet sheet;
    sheet.text({20, 20}, "t = 1.5");
    sheet.section({{0, 0}, {90, 0}, {90, 90}, {0, 90}}, true, 2);
    EXPECT_FALSE(sheet.hatching().empty());
    EXPECT_EQ(first_of(lint_of(sheet, 100, 100)), "");
}

} // namespace
} // namespace tarvane::vessel
