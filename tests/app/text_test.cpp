#include "values/text.h"

#include "app_fixture.h"

#include <array>

namespace tarvane::app {

using namespace vessel;
namespace {

TEST(WesternText, GoesBothWays) {
    for (int code = 0x20; code < 0x100; ++code) {
        if (code >= 0x7F && code < 0xA0) continue; // control characters
        const std::string western(1, static_cast<char>(code));
        EXPECT_EQ(to_western(to_utf8(western)), western) << code;
    }
}

TEST(WesternText, RefusesWhatHasNoPlace) {
    EXPECT_EQ(to_western("\xCE\xA9"), std::nullopt);     // capital omega
    EXPECT_EQ(to_western("\xE2\x82\xAC"), std::nullopt); // euro sign
    EXPECT_EQ(to_western("\xC2\x80"), std::nullopt);     // a control character
    EXPECT_EQ(to_western("a\tb"), std::nullopt);
    EXPECT_EQ(to_western("\xC3"), std::nullopt); // cut sequence
    EXPECT_EQ(to_western("\x7F"), std::nullopt);
}

TEST(Names, CompareWithoutCaseAndSeparators) {
    EXPECT_EQ(folded("EN 13445-3"), folded("en13445_3"));
    EXPECT_NE(folded("VIII-1"), folded("VIII-2"));
}

TEST(Nearest, PrefersAnotherCaseToAnotherLetter) {
    constexpr std::array<std::string_view, 4> keys{"Go", "Gi", "g0", "Sfo"};
    EXPECT_EQ(nearest("GO", keys), "Go");
    EXPECT_EQ(nearest("sfo", keys), "Sfo");
    EXPECT_EQ(nearest("Gox", keys), "Go");
    EXPECT_EQ(nearest("something else", keys), "");
}

TEST(Wrapped, BreaksAtBlanksAndWithinLongWords) {
    using Lines = std::vector<std::string>;
    EXPECT_EQ(wrapped("", 5), Lines{""});
    EXPECT_EQ(wrapped("a  b", 5), Lines{"a  b"}); // fits as it is
    EXPECT_EQ(wrapped("12345", 5), Lines{"12345"});
    EXPECT_EQ(wrapped("123456", 5), (Lines{"12345", "6"}));
    EXPECT_EQ(wrapped("12345 6", 5), (Lines{"12345", "6"}));
    EXPECT_EQ(wrapped("1234 56", 5), (Lines{"1234", "56"}));
    EXPECT_EQ(wrapped("1 2 3 4", 5), (Lines{"1 2 3", "4"}));
    EXPECT_EQ(wrapped("ÄÖÜÄÖ ÄÖÜÄÖÜ", 5), (Lines{"ÄÖÜÄÖ", "ÄÖÜÄÖ", "Ü"}));
}

} // namespace
} // namespace tarvane::app
