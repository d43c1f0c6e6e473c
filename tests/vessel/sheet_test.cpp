// What a page of a drawing is written as.
#include "drawing/font.h"
#include "drawing/sheet.h"
#include "drawing_lint.h"
#include "random_drawings.h"
#include "values/decimal.h"

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

// Makers of PDF take their time for each letter of a label, of a blank, too.
TEST(Sheets, LeaveTheBlanksOfADimensionToShiftsInADocument) {
    Sheet sheet;
    const double blank = text_width(" ", TEXT_SIZE), width = text_width("Go = \xC3\x98"
                                                                        "14",
                                                                        TEXT_SIZE);
    sheet.text({50, 10},
               "Go = \xC3\x98"
               "14",
               Anchor::middle);
    sheet.text({50, 20}, "EL = 5", Anchor::end, true);
    sheet.text({50, 30}, "A = 1, B = 2");
    sheet.text({50, 40}, "Top head", Anchor::middle);
    const std::string svg = sheet.svg(100, 100, "", DrawnFor::document);
    const auto has = [&](const std::string& text) { return svg.find(text) != std::string::npos; };
    const std::string shift = fixed_text(blank, 2);
    EXPECT_TRUE(has("<text x=\"" + fixed_text(50 - width / 2, 2) + "\" y=\"10\" dx=\"0 0 " + shift +
                    ' ' + shift +
                    "\">Go=\xC3\x98"
                    "14</text>"))
        << svg;
    EXPECT_TRUE(has("<text x=\"" + fixed_text(50 - text_width("EL = 5", TEXT_SIZE), 2) +
                    "\" y=\"20\" dx=\"0 0 " + shift + ' ' + shift +
                    "\" transform=\"rotate(-90 50 20)\">EL=5</text>"))
        << svg;
    EXPECT_TRUE(has("<text x=\"50\" y=\"30\" dx=\"0 " + shift + ' ' + shift + " 0 0 0 " + shift +
                    ' ' + shift + "\">A=1, B=2</text>"))
        << svg;
    EXPECT_TRUE(has(" lengthAdjust=\"spacingAndGlyphs\" text-anchor=\"middle\">Top head</text>"))
        << svg;
    EXPECT_NE(sheet.svg(100, 100, "").find(">A = 1, B = 2</text>"), std::string::npos)
        << "a page takes a label as it is";
}

} // namespace
} // namespace tarvane::vessel
