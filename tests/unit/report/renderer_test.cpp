#include "../edge_numbers.h"
#include "report_fixture.h"

#include <cmath>

namespace tarvane::report_test {
namespace {

class RendererTest : public ReportTest {
  protected:
    RendererTest() { report_to_store(); }
};

// ---- one number: value, placeholder digit, printed text -----------------------------------------

struct NumberCase {
    Real value;
    std::string_view digits;
    const char* printed;
};

void PrintTo(const NumberCase& c, std::ostream* out) {
    *out << c.value << " with @" << c.digits << " -> " << c.printed;
}

class PrintedNumber : public ReportTest, public testing::WithParamInterface<NumberCase> {};

TEST_P(PrintedNumber, InTheStore) {
    for (const char digit : GetParam().digits) {
        EXPECT_EQ(printed(std::string(" = @") + digit, {GetParam().value}), GetParam().printed)
            << "@" << digit;
    }
}

TEST_P(PrintedNumber, InTheFile) {
    report_to_file();
    std::string expected;
    for (const char digit : GetParam().digits) {
        write_filled(std::string(" = @") + digit, {GetParam().value}, 0);
        std::string line = std::string(" ") + GetParam().printed;
        line.resize(101, ' ');
        expected += line + "\n";
    }
    EXPECT_EQ(file_bytes(), expected);
}

INSTANTIATE_TEST_SUITE_P(
    HouseStyle, PrintedNumber,
    testing::Values(NumberCase{25.5f, "3", " = 25.5"}, NumberCase{12.0f, "3", " = 12.0"},
                    NumberCase{12.0f, "1", " = 12.0"}, NumberCase{12.0f, "5", " = 12."},
                    NumberCase{12.0f, "0", " = 12"}, NumberCase{12.5f, "0", " = 13"},
                    NumberCase{0.0f, "0", " = 0"}, NumberCase{0.0f, "1234", " = 0.0"},
                    NumberCase{0.0f, "5", " = 0."}, NumberCase{0.25f, "3", " = 0.25"},
                    NumberCase{0.7f, "0", " = 0.7"}, NumberCase{0.00005f, "6", " = 0.500E-04"},
                    NumberCase{-0.25f, "3", " = -0.25"}, NumberCase{3.9996f, "3", " = 4.0"},
                    NumberCase{3.9996f, "4", " = 4.0"}, NumberCase{3.0999f, "4", " = 3.1"},
                    NumberCase{600000.0f, "4", " = 600000"},
                    NumberCase{123456.0f, "4", " = 0.1E+06"},
                    NumberCase{2.0E+8f, "3", " = 0.20000E+09"},
                    NumberCase{-2.0E+8f, "3", " = -0.2E+09"}));

INSTANTIATE_TEST_SUITE_P(
    Limits, PrintedNumber,
    testing::Values(
        // above half a million the decimals go; at it and below they stay
        NumberCase{500000.0f, "1", " = 500000.0"}, NumberCase{500000.03f, "1", " = 500000"},
        NumberCase{500000.5f, "4", " = 500001"}, NumberCase{600000.0f, "8", " = 600000"},
        NumberCase{600000.0f, "9x", " = 600000"}, NumberCase{-600000.0f, "1", " = -600000.0"},
        NumberCase{-600000.0f, "4", " = -0.6E+06"},
        // the exponent form begins above 1.0E+8
        NumberCase{1.0E+8f, "04", " = 100000000"}, NumberCase{100000008.0f, "0", " = 0.10000E+09"},
        NumberCase{123456789.0f, "3", " = 0.12346E+09"}, NumberCase{-1.0E+8f, "0", " = -100000000"},
        NumberCase{-100000008.0f, "0", " = -0.1E+09"},
        NumberCase{3.4028235E+38f, "3", " = 0.34028E+39"},
        NumberCase{-3.4028235E+38f, "3", " = -0.3E+39"},
        // ten columns hold, eleven do not
        NumberCase{12345.678f, "4", " = 12345.6777"}, NumberCase{-12345.678f, "4", " = -0.1E+05"},
        NumberCase{-12345.678f, "3", " = -12345.678"}, NumberCase{123.4567f, "7", " = 0.1E+03"},
        // between 1.0E-6 and 1.0 the small-value forms
        NumberCase{1.0f, "0", " = 1"}, NumberCase{0.99999994f, "0", " = 1.0"},
        NumberCase{0.999f, "2", " = 1."}, NumberCase{0.999f, "1", " = 1.0"},
        NumberCase{0.004f, "2", " = 0."}, NumberCase{0.04f, "1", " = 0.0"},
        NumberCase{0.123456f, "5", " = 0.12346"}, NumberCase{0.123456f, "4", " = 0.1235"},
        NumberCase{0.1234567f, "789 x", " = 0.123457"}, NumberCase{0.123456f, "6", " = 0.123456"},
        NumberCase{1.1E-6f, "3", " = 0."}, NumberCase{1.0E-6f, "3", " = 0.0"},
        NumberCase{std::nextafter(1.0E-6f, 1.0f), "3", " = 0."},
        NumberCase{1.1E-6f, "6", " = 0.110E-05"}, NumberCase{0.0001f, "6", " = 0.100E-03"},
        NumberCase{0.00010001f, "6", " = 0.0001"}, NumberCase{0.00005f, "7", " = 0.00005"},
        NumberCase{0.5f, "12345679", " = 0.5"},
        // exponent form with three decimals
        NumberCase{12.3f, "8", " = 0.123E+02"}, NumberCase{0.0f, "8", " = 0.000E+00"},
        NumberCase{-12.3f, "8", " = -0.123E+02"}));

INSTANTIATE_TEST_SUITE_P(
    NearlyWhole, PrintedNumber,
    testing::Values(
        NumberCase{12.001f, "2", " = 12.0"}, NumberCase{12.0001f, "4", " = 12.0"},
        NumberCase{12.0002f, "4", " = 12.0002"}, NumberCase{12.01f, "2", " = 12.01"},
        NumberCase{3.999f, "3", " = 4.0"}, NumberCase{3.9991f, "4", " = 4.0"},
        NumberCase{3.9989f, "4", " = 3.9989"}, NumberCase{3.0999f, "5", " = 3.0999"},
        NumberCase{99.9f, "8", " = 99.9"}, NumberCase{9.9912E+8f, "3", " = 0.1E+10"},
        NumberCase{-9.99E+7f, "8", " = -0.1E+09"},
        // ten full columns leave no blank for a pattern, but the eleventh counts for the zeros
        NumberCase{1234.0f, "4", " = 1234.0"}, NumberCase{-12345.0f, "3", " = -12345."},
        NumberCase{12345.0f, "4", " = 12345."}, NumberCase{-1234.0f, "3", " = -1234.0"},
        NumberCase{12.00000f, "6", " = 12."}, NumberCase{10.0f, "5", " = 10."}));

INSTANTIATE_TEST_SUITE_P(
    SignsTiesAndStrangers, PrintedNumber,
    testing::Values(NumberCase{-0.001f, "2", " = -0.0"}, NumberCase{-0.001f, "3", " = -0.001"},
                    NumberCase{-0.4f, "0", " = 0"}, NumberCase{-0.5f, "0", " = -1"},
                    NumberCase{-12.5f, "0", " = -13"}, NumberCase{-12.49f, "0", " = -12"},
                    NumberCase{-0.0f, "0", " = 0"}, NumberCase{-0.0f, "1234", " = 0.0"},
                    NumberCase{2.5f, "0", " = 3"}, NumberCase{0.125f, "2", " = 0.12"},
                    NumberCase{0.375f, "2", " = 0.38"}, NumberCase{1.125f, "2", " = 1.12"},
                    NumberCase{1.375f, "2", " = 1.38"}, NumberCase{-0.125f, "2", " = -0.12"},
                    NumberCase{-0.375f, "2", " = -0.38"},
                    NumberCase{-250000.0f, "4", " = -0.2E+06"},
                    NumberCase{-350000.0f, "4", " = -0.4E+06"},
                    NumberCase{NOT_A_NUMBER, "0123456789", " = NaN"},
                    NumberCase{-NOT_A_NUMBER, "3", " = NaN"},
                    NumberCase{UNBOUNDED, "0123456789", " = Infinity"},
                    NumberCase{-UNBOUNDED, "0123456789", " = -Infinity"}));

// ---- the scan -----------------------------------------------------------------------------------

TEST_F(RendererTest, NumbersAreFollowedDirectlyByTheTemplate) {
    EXPECT_EQ(filled(" = @3 * sin( @3 / @0 )", {25.5f, 3.1416f, 12.0f}),
              " = 25.5 * sin( 3.142/12 )");
}

TEST_F(RendererTest, ATemplateWithoutPlaceholdersIsCleanedAllTheSame) {
    EXPECT_EQ(filled(" = a ^(2) , b / c"), " = a^(2), b/c");
    EXPECT_EQ(filled("see note ."), "see note 0.");
    EXPECT_EQ(filled(""), "");
}

TEST_F(RendererTest, TheFirstTerminatorEndsTheTemplate) {
    EXPECT_EQ(filled(" = @1 # + @1", {1.5f, 2.5f}), " = 1.5");
    EXPECT_EQ(
        filled(" = 52.14 * @1 / @4 * @3 * @3/ ( @3 * @0  #", {1.5f, 2.5f, 3.5f, 4.5f, 5.5f, 6.0f}),
        " = 52.14 * 1.5/2.5 * 3.5 * 4.5/( 5.5 * 6");
    EXPECT_EQ(filled("   * @3^(2) * @3 * @3 )#", {1.5f, 2.5f, 3.5f}), "   * 1.5^(2) * 2.5 * 3.5 )");
    EXPECT_EQ(filled("# all dropped @1", {1.5f}), "");
}

TEST_F(RendererTest, TheSeventhPlaceholderPrintsTheRestAsItsOwnText) {
    const std::vector<Real> six{1.0f, 2.0f, 3.0f, 4.0f, 5.0f, 6.0f};
    EXPECT_EQ(filled("@0 @0 @0 @0 @0 @0 @2 and @3", six), "1 2 3 4 5 6 @2 and @3#");
    EXPECT_EQ(filled("@0 @0 @0 @0 @0 @0 @2 and @3 #", six), "1 2 3 4 5 6 @2 and @3 ##");
    EXPECT_EQ(filled("@0 @0 @0 @0 @0 @0 here", six), "1 2 3 4 5 6 here");
}

TEST_F(RendererTest, ATemplateThatFillsItsLastColumnGetsNoTerminator) {
    const std::string full = "@0 @0 @0 @0 @0 @0 @0" + std::string(100, 'x');
    const std::string printed_rest = filled(full, {1.0f, 2.0f, 3.0f, 4.0f, 5.0f, 6.0f});
    EXPECT_EQ(printed_rest, "1 2 3 4 5 6 @0" + std::string(100, 'x'));
    const std::string almost = full.substr(0, 119);
    EXPECT_EQ(filled(almost, {1.0f, 2.0f, 3.0f, 4.0f, 5.0f, 6.0f}),
              "1 2 3 4 5 6 @0" + std::string(99, 'x') + "#");
}

TEST_F(RendererTest, WhateverStandsBehindTheSignIsItsDigit) {
    EXPECT_EQ(filled(" = @", {0.5f}), " =  0.5"); // the terminator
    EXPECT_EQ(filled(" = @", {12.3f}), " =");
    EXPECT_EQ(filled(" = @# x", {0.5f}), " =  0.5 x");      // a terminator of the template's own
    EXPECT_EQ(filled(" = @@1", {0.5f, 0.25f}), " =  0.51"); // another sign
    // in the last column nothing comes after it
    EXPECT_EQ(filled(std::string(119, 'x') + "@", {12.3f}), std::string(119, 'x'));
    EXPECT_EQ(filled(std::string(119, 'x') + "@", {0.25f}), std::string(119, 'x'));
}

TEST_F(RendererTest, APlaceholderThatPrintsNothingTakesItsValueAndTheBlanksBefore) {
    EXPECT_EQ(filled(" = @9 x", {12.3f}), " = x");
    EXPECT_EQ(filled(" = @9 x @1", {12.3f, 4.5f}), " = x 4.5");
    EXPECT_EQ(filled("@9x", {12.3f}), "x");
}

TEST_F(RendererTest, WhatPassesTheLastColumnIsLost) {
    for (std::size_t before = 105; before <= 118; ++before) {
        const std::string text(before, 'x');
        EXPECT_EQ(filled(text + "@4", {1234.5677f}), (text + "1234.5677").substr(0, 120)) << before;
    }
    // the number is made in ten columns wherever it is, so that this is no overflow
    EXPECT_EQ(filled(std::string(116, 'x') + "@1", {123456.5f}), std::string(116, 'x') + "1234");
    // the pattern is seen beyond column 120 too, and no zero is dropped without a blank after it
    EXPECT_EQ(filled(std::string(114, 'x') + "@3", {12.0f}), std::string(114, 'x') + "12.0");
    EXPECT_EQ(filled(std::string(113, 'x') + "@3", {12.5f}), std::string(113, 'x') + "12.5");
    EXPECT_EQ(filled(std::string(114, 'x') + "@3", {12.5f}), std::string(114, 'x') + "12.500");
    EXPECT_EQ(filled(std::string(115, 'x') + "@2", {12.5f}), std::string(115, 'x') + "12.50");
    EXPECT_EQ(filled(std::string(110, 'x') + "@4", {12345.5f}),
              std::string(110, 'x') + "12345.5000");
    EXPECT_EQ(filled(std::string(109, 'x') + "@4", {12345.5f}), std::string(109, 'x') + "12345.5");
    // text after it stops at the last column
    EXPECT_EQ(filled(std::string(112, 'x') + "@1 pounds and ounces", {1.5f}),
              std::string(112, 'x') + "1.5 poun");
}

TEST_F(RendererTest, GatesOffLeaveTheTemplateAsItCame) {
    for (const auto& [master, pass] : {std::pair{0, 1}, {1, 0}, {0, 0}}) {
        IWRITE = master, IWRTFL = pass;
        EXPECT_EQ(filled(" = @3 / @1", {1.5f, 2.5f}), " = @3 / @1");
    }
    IWRITE = 2, IWRTFL = -1, IOUT = 0; // the destination is not tested
    EXPECT_EQ(filled(" = @3 / @1", {1.5f, 2.5f}), " = 1.5/2.5");
}

TEST_F(RendererTest, SignificantDigitsKeepTheDecimalPlaces) {
    for (Int digits = 0; digits <= 6; ++digits) {
        G_NSIGDIGITS = digits;
        EXPECT_EQ(filled(" = @3 + @2", {25.5f, 0.123f}), " = 25.5 +  0.12");
    }
}

TEST_F(RendererTest, SmallValuesKeepTheirLeadingBlank) {
    EXPECT_EQ(printed("(@2)", {0.85f}), "( 0.85)");
    EXPECT_EQ(printed("[@2]", {0.75f}), "[ 0.75]");
    EXPECT_EQ(printed("(@2)", {1.85f}), "(1.85)");
    EXPECT_EQ(printed("(@2)", {-0.85f}), "(-0.85)"); // not a small value
    EXPECT_EQ(printed("   * @2 )#", {0.85f}, 3), "   * 0.85 )");
}

TEST_F(RendererTest, OverflowFormsKeepTheirLeadingBlanks) {
    EXPECT_EQ(filled("(@4)", {123456.0f}), "(   0.1E+06)");
    EXPECT_EQ(filled("(@4)", {-600000.0f}), "(  -0.6E+06)");
    EXPECT_EQ(filled("(@4)", {2.0E+8f}), "(.20000E+09)");
    EXPECT_EQ(filled("(@8)", {12.3f}), "( 0.123E+02)");
    EXPECT_EQ(filled("(@3)", {UNBOUNDED}), "(  Infinity)");
    EXPECT_EQ(filled("(@3)", {-UNBOUNDED}), "( -Infinity)");
    EXPECT_EQ(filled("(@1)", {NOT_A_NUMBER}), "( NaN)");
    EXPECT_EQ(filled("(@5)", {NOT_A_NUMBER}), "(     NaN)");
    EXPECT_EQ(filled("(@6)", {NOT_A_NUMBER}), "(      NaN)");
    EXPECT_EQ(printed("(@4 psi)", {123456.0f}, 1), "( 0.1E+06 psi)");
    EXPECT_EQ(printed(" = (@4 psi)", {123456.0f}, 3), " = ( 0.1E+06 psi)");
}

// ---- cleaning -----------------------------------------------------------------------------------

std::string cleaned(std::string text) {
    CLEAN_TEMPLATE(text.data(), static_cast<Int>(text.size()));
    return text;
}

TEST_F(RendererTest, BlanksCloseUpBeforePowersCommasAndSlashes) {
    EXPECT_EQ(cleaned("a \xB2 b \xB3 c \xBD d ^ e , f / g"), "a\xB2 b\xB3 c\xBD d^ e, f/g       ");
    EXPECT_EQ(cleaned("a   ,   b   /   c"), "a,   b/c         ");
    EXPECT_EQ(cleaned(" ^x "), "^x  ");
    EXPECT_EQ(cleaned("a / / b"), "a//b   ");
    EXPECT_EQ(cleaned("a/ , b"), "a/, b ");
    EXPECT_EQ(cleaned("    "), "    ");
    EXPECT_EQ(cleaned(""), "");
    EXPECT_EQ(filled("@3 ^(2)", {5.25f}), "5.25^(2)");
    EXPECT_EQ(filled("a , b"), "a, b");
    EXPECT_EQ(filled("@1 / @1", {1.5f, 2.0f}), "1.5/2.0");
}

TEST_F(RendererTest, ALeadingSlashMovesThreeColumnsIn) {
    EXPECT_EQ(cleaned("/ 4.5      "), "   /4.5    ");
    EXPECT_EQ(cleaned("   / 4.5   "), "   /4.5    ");
    EXPECT_EQ(cleaned("/abcdef"), "   /abc"); // what passes the end is lost
    EXPECT_EQ(cleaned("/a"), "  ");
    EXPECT_EQ(cleaned("/"), " ");
}

TEST_F(RendererTest, ASlashAtTheEndOfTheTextEndsTheCleaning) {
    EXPECT_EQ(filled(" = 6 * @0 / #", {125000.0f}), " = 6 * 125000/");
    EXPECT_EQ(cleaned("/ a/ "), "/a/  "); // column 1 is no longer scanned
    EXPECT_EQ(cleaned("/ a/"), "/a/ ");
    EXPECT_EQ(cleaned("/a/"), "   "); // no blank after it: all of it moves
    EXPECT_EQ(cleaned("/ "), "/ ");
}

// ---- zeros before the point, decimal comma --------------------------------------------------------

std::string tidied(std::string text) {
    TIDY_NUMBERS(text.data(), static_cast<Int>(text.size()));
    return text;
}

TEST_F(RendererTest, ABarePointGetsItsZero) {
    EXPECT_EQ(tidied(" = .5  "), " = 0.5 ");
    EXPECT_EQ(tidied("x   .5 y"), "x  0.5 y"); // room: nothing moves
    EXPECT_EQ(tidied("x  .5 y "), "x  0.5 y");
    EXPECT_EQ(tidied("(.5 =.5 "), "(.5 =.5 "); // not after a bracket or a sign
    EXPECT_EQ(tidied(".5  "), ".5  ");
    EXPECT_EQ(tidied("note .  "), "note 0. ");
    EXPECT_EQ(tidied("note ."), "note 0"); // the point moves out
    EXPECT_EQ(tidied("note   ."), "note  0.");
    EXPECT_EQ(tidied(" ."), " ."); // too short
    EXPECT_EQ(tidied("a ."), "a 0");
}

TEST_F(RendererTest, TwoPointsGetNoZero) {
    EXPECT_EQ(tidied("a ..  "), "a ..  ");
    EXPECT_EQ(tidied("a   ..   "), "a   ..   ");
    // the same round goes on with the narrow form
    EXPECT_EQ(tidied("a .5   .. "), "a 0.5   ..");
    // a round that changes nothing counts, so that what comes after is never reached
    EXPECT_EQ(tidied("   ..   .5   "), "   ..   .5   ");
    EXPECT_EQ(tidied(" ..  .5   "), " ..  .5   ");
}

TEST_F(RendererTest, ANegativeBarePointGetsItsZero) {
    EXPECT_EQ(tidied("= -.5  "), "= -0.5 ");
    EXPECT_EQ(tidied("=  -.5 x"), "= -0.5 x"); // room: nothing moves
    EXPECT_EQ(tidied("(-.5)  "), "(-0.5) ");
    EXPECT_EQ(tidied("-.5 "), "-0.5");
}

TEST_F(RendererTest, FiveRepairsOfEachSign) {
    EXPECT_EQ(tidied("a .1 .2 .3 .4 .5 .6 .7       "), "a 0.1 0.2 0.3 0.4 0.5 .6 .7  ");
    EXPECT_EQ(tidied("(-.1(-.2(-.3(-.4(-.5(-.6     "), "(-0.1(-0.2(-0.3(-0.4(-0.5(-.6");
}

TEST_F(RendererTest, TheTextStartsWhereItStarted) {
    EXPECT_EQ(tidied("    .5 psi "), "    0.5 psi");
    EXPECT_EQ(tidied("   -.5 psi "), "   -0.5 psi");
    EXPECT_EQ(tidied("  .5 psi  "), "  0.5 psi ");
    EXPECT_EQ(tidied("    a .5   "), "    a 0.5  ");
    EXPECT_EQ(tidied("     .5"), "     0."); // what passes the end is lost
}

std::string with_commas(std::string text) {
    REPLACE_DECIMALS_WITH_COMMAS(text.data(), static_cast<Int>(text.size()));
    return text;
}

TEST_F(RendererTest, TheDecimalComma) {
    EXPECT_EQ(with_commas("1.5 psi"), "1.5 psi");
    DECIMAL_COMMA = true;
    EXPECT_EQ(with_commas("1.5 psi"), "1,5 psi");
    EXPECT_EQ(with_commas("per 4.16.7"), "per 4,16,7");
    EXPECT_EQ(with_commas(".5 in."), ",5 in.");
    EXPECT_EQ(with_commas(" .5 12. x.5"), " .5 12. x.5");
    EXPECT_EQ(with_commas("12."), "12.");
    EXPECT_EQ(with_commas("."), ".");
    EXPECT_EQ(with_commas(".5"), ",5"); // any length
    EXPECT_EQ(tidied(".5"), ".5");      // in the tidying only above length 2
    EXPECT_EQ(tidied(" = .5  "), " = 0,5 ");
    EXPECT_EQ(printed("@1 psi", {1.5f}), "1,5 psi");
    EXPECT_EQ(printed("@3", {0.25f}), " 0,25");
}

// ---- plain characters -----------------------------------------------------------------------------

std::string expanded(std::string text) {
    EXPAND_SPECIAL_CHARS(text.data(), static_cast<Int>(text.size()));
    return text;
}

TEST_F(RendererTest, SuperscriptsBecomePowers) {
    EXPECT_EQ(expanded("g\xB2+ h          "), "g^(2)+ h       ");
    EXPECT_EQ(expanded("g\xB3+ h          "), "g^(3)+ h       ");
    EXPECT_EQ(expanded("a\xB2*b\xB2*c\xB3*d               "), "a^(2)*b^(2)*c^(3)*d      ");
    // three blanks after it: nothing moves
    EXPECT_EQ(expanded("in\xB2    5.723     "), "in^(2) 5.723     ");
    EXPECT_EQ(expanded("in\xB2         "), "in^(2)      ");
}

TEST_F(RendererTest, WhatStandsFurtherRightKeepsItsPlace) {
    // "," and a blank after the superscript, then room: columns p+6 to p+10 are blank after the move
    EXPECT_EQ(expanded("ab\xB2,x      5.723     "), "ab^(2),x   5.723     ");
    EXPECT_EQ(expanded("Area,\xB2x        5.723    "), "Area,^(2)x     5.723    ");
    EXPECT_EQ(expanded("Area,\xB2x    5.723    "), "Area,^(2)x    5.723 ");
}

TEST_F(RendererTest, SuperscriptsWithoutRoomBecomeDigits) {
    EXPECT_EQ(expanded("| in\xB2 |          "), "| in2 |          ");
    EXPECT_EQ(expanded("a\xB2"
                       "bcdef"),
              "a2bcdef"); // the line is full
    // the trimmed length must stay below n - 3
    EXPECT_EQ(expanded("x\xB2 abcd    "), "x^(2) abcd ");
    EXPECT_EQ(expanded("x\xB2 abcd   "), "x2 abcd   ");
    EXPECT_EQ(expanded("\xB2"), "2");
    EXPECT_EQ(expanded("\xB3   "), "3   ");
    EXPECT_EQ(expanded(""), "");
}

TEST_F(RendererTest, OneHalf) {
    EXPECT_EQ(expanded("x\xBD + y      "), "x^(.5)+ y   "); // the blank after it is overwritten
    EXPECT_EQ(expanded("abcd\xBD"), "abcd ");               // last column
    for (const std::size_t p : {5u, 6u, 7u}) {              // columns n-3 to n-1: it stays
        std::string text = "abcdefgh";
        text[p - 1] = '\xBD';
        EXPECT_EQ(expanded(text), text);
    }
    // the rest of the characters are still turned, a second half is not reached
    EXPECT_EQ(expanded("\xB0"
                       "bcde\xBD\xBD"
                       "\xA9"),
              " bcde\xBD\xBD"
              "c");
    EXPECT_EQ(expanded("abcdef\xBD\xBD"), "abcdef\xBD\xBD");
    EXPECT_EQ(expanded("abc\xBD"
                       "efgh"),
              "abc^(.5)"); // with room for its five columns only
}

TEST_F(RendererTest, OtherSigns) {
    EXPECT_EQ(expanded("\xA9 650 \xB0"
                       "F \xF8 \xF8"),
              "c 650  F p p");
}

} // namespace
} // namespace tarvane::report_test
