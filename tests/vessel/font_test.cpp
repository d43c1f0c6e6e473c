// The measures of text.
#include "drawing/font.h"
#include "drawing/sheet.h"

#include <gtest/gtest.h>

namespace tarvane::vessel {
namespace {

TEST(Font, BreaksNoEquation) {
    EXPECT_EQ(fitted_lines("face; t = 1.5", TEXT_SIZE, text_width("face; t = 1", TEXT_SIZE)),
              (std::vector<std::string>{"face;", "t = 1.5"}));
    EXPECT_EQ(fitted_lines("at 20 \xC2\xB0", TEXT_SIZE, text_width("at 20", TEXT_SIZE)),
              (std::vector<std::string>{"at", "20 \xC2\xB0"}));
    EXPECT_EQ(fitted_lines("Scale 1 : 2.5, in", TEXT_SIZE, text_width("Scale 1", TEXT_SIZE)),
              (std::vector<std::string>{"Scale", "1 : 2.5,", "in"}));
    EXPECT_EQ(unbroken_words("N: ci = .5. A"), (std::vector<std::string>{"N:", "ci = .5.", "A"}));
    EXPECT_EQ(fitted_lines(" = ", TEXT_SIZE, 100), std::vector<std::string>{" = "});
}

TEST(Font, MeasuresWithItsOwnWidths) {
    EXPECT_DOUBLE_EQ(text_width("0", 2048), 1303);
    EXPECT_DOUBLE_EQ(text_width("\xC3\x98"
                                "1 : 5",
                                2048),
                     1612 + 1303 + 651 + 690 + 651 + 1303);
    EXPECT_DOUBLE_EQ(text_width("\xE2\x89\xA4", 2048), 1716);
}

} // namespace
} // namespace tarvane::vessel
