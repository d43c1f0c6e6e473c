#include "report_fixture.h"

#include <limits>

namespace tarvane::report_test {
namespace {

class ChannelTest : public ReportTest {
  protected:
    static std::string indented(std::string_view text, std::size_t width) {
        std::string line = std::string(1, ' ') + std::string(text);
        line.resize(1 + width, ' ');
        return line;
    }
    // A plain record of the file, and one with marks.
    static std::string plain(std::string_view text, std::size_t width = 100) {
        return indented(text, width) + "\n";
    }
    static std::string marked(std::string_view text, std::string_view marks,
                              std::size_t width = 100) {
        return indented(text, width) + std::string(marks) + "\n";
    }
    // A text of any length through WRITE_LINE; it is blank afterwards.
    static void write_text(std::string text) {
        WRITE_LINE(text.data(), static_cast<Int>(text.size()));
        EXPECT_EQ(trimmed_length(text), 0);
    }
    static constexpr const char* NO_MARKS = " 0 0 0 0 0 0";
};

// The channel before any test has touched it: each one starts with a reset.
struct {
    Int master = IWRITE, unit = IOUT, pass = IWRTFL, step = IOSTEP, corrosion = IWRTCA;
    Int lines = LINE_COUNT, digits = G_NSIGDIGITS, status = WRITE_STATUS;
    bool styles = STYLE_ENABLED, comma = DECIMAL_COMMA;
} const LOADED;

// ---- where a line goes --------------------------------------------------------------------------

TEST_F(ChannelTest, BeforeAnyReset) {
    for (const Int value : {LOADED.master, LOADED.unit, LOADED.pass, LOADED.step, LOADED.corrosion,
                            LOADED.lines, LOADED.digits, LOADED.status})
        EXPECT_EQ(value, 0);
    EXPECT_FALSE(LOADED.styles);
    EXPECT_FALSE(LOADED.comma);
}

TEST_F(ChannelTest, AResetUndoesEverything) {
    report_to_store();
    OPEN_LINE_STORE();
    write("a line");
    IOUT = 5;
    IOSTEP = IWRTCA = G_NSIGDIGITS = WRITE_STATUS = 3;
    DECIMAL_COMMA = true;
    FLAGS_mp_IINOSPECIAL = 1;
    SET_LINE_STYLE(1, 2, 3, 4, 5, 6);
    OUTLINE = "left over";
    TEMPLATE = "left over";
    RESET_REPORT();
    for (const Int value :
         {IWRITE, IOUT, IWRTFL, IOSTEP, IWRTCA, LINE_COUNT, G_NSIGDIGITS, WRITE_STATUS})
        EXPECT_EQ(value, 0);
    EXPECT_FALSE(STYLE_ENABLED);
    EXPECT_FALSE(DECIMAL_COMMA);
    EXPECT_TRUE(OUTLINE.blank());
    EXPECT_TRUE(TEMPLATE.blank());
    EXPECT_EQ(record(1), std::string(125, ' '));
    report_to_store();
    write("650 \xB0"
          "F");
    EXPECT_EQ(stored(1), "650 \xB0"
                         "F");
    EXPECT_EQ(stored_marks(1), NO_MARKS);
}

TEST_F(ChannelTest, StateAtLoad) {
    EXPECT_EQ(IWRITE, 0);
    EXPECT_EQ(IOUT, 0);
    EXPECT_EQ(IWRTFL, 0);
    EXPECT_EQ(IOSTEP, 0);
    EXPECT_EQ(IWRTCA, 0);
    EXPECT_EQ(LINE_COUNT, 0);
    EXPECT_FALSE(STYLE_ENABLED);
    EXPECT_FALSE(DECIMAL_COMMA);
    EXPECT_EQ(G_NSIGDIGITS, 0);
    EXPECT_TRUE(OUTLINE.blank());
    EXPECT_TRUE(TEMPLATE.blank());
    for (Int k = 1; k <= STORE_RECORDS; ++k)
        ASSERT_EQ(record(k), std::string(125, ' ')) << k;
}

TEST_F(ChannelTest, AnyGateAtZeroIsSilence) {
    OPEN_LINE_STORE();
    const Int gates[][3] = {{0, 1, 1}, {1, 0, 1}, {1, 1, 0}, {0, 0, 0}, {0, 1, -1}, {1, 0, -1}};
    for (const auto& gate : gates) {
        IWRITE = gate[0], IWRTFL = gate[1], IOUT = gate[2];
        EXPECT_FALSE(reporting());
        SET_LINE_STYLE(1, 2, 3, 4, 5, 6);
        write("a line");
        EXPECT_TRUE(OUTLINE.blank());
        EXPECT_EQ(LINE_COUNT, 0);
        report_to_store(); // the marks are gone
        write("the next");
        EXPECT_EQ(stored_marks(1), NO_MARKS);
        OPEN_LINE_STORE();
    }
    EXPECT_EQ(WRITE_STATUS, 0);
}

TEST_F(ChannelTest, SilenceClearsTheUnderlineFlag) {
    report_to_file();
    IWRTFL = 0;
    SET_LINE_STYLE(0, 1, 0, 0, 0, 0);
    write("silent");
    IWRTFL = 1;
    write("next");
    EXPECT_EQ(file_bytes(), plain("next"));
}

TEST_F(ChannelTest, TheStoreNeedsBothSwitchesAtOne) {
    report_to_store();
    for (const auto& [master, pass] : {std::pair{2, 1}, {1, 2}, {-1, 1}, {1, -1}}) {
        IWRITE = master, IWRTFL = pass;
        write("to a negative unit");
        EXPECT_EQ(LINE_COUNT, 0);
        EXPECT_EQ(WRITE_STATUS, 1);
        EXPECT_TRUE(OUTLINE.blank());
    }
    EXPECT_EQ(record(1), std::string(125, ' '));
    report_to_store();
    IOUT = std::numeric_limits<Int>::min();
    write("to the store");
    EXPECT_EQ(LINE_COUNT, 1);
}

TEST_F(ChannelTest, NoFileIsWrittenForTheStore) {
    report_to_file();
    IOUT = -1;
    write("to the store");
    IOUT = -REPORT_UNIT;
    write("to the store");
    EXPECT_EQ(file_bytes(), "");
    EXPECT_EQ(LINE_COUNT, 2);
}

// ---- the store ----------------------------------------------------------------------------------

TEST_F(ChannelTest, ARecordOfTheStore) {
    report_to_store();
    OPEN_LINE_STORE();
    SET_LINE_STYLE(0, 1, 0, 12, 0, 2);
    write("Flange analysis");
    std::string expected = "    Flange analysis";
    expected.resize(104, ' ');
    expected += " 0 1 012 0 2";
    expected += '\0';
    expected.resize(125, ' ');
    EXPECT_EQ(record(1), expected);
    write("next"); // the marks went out with the first line
    EXPECT_EQ(stored_marks(2), NO_MARKS);
}

TEST_F(ChannelTest, ShorterTextsMoveTheMarksLeft) {
    report_to_store();
    for (const std::size_t length : {0u, 1u, 40u, 99u, 100u, 101u, 300u}) {
        const Int before = LINE_COUNT;
        write_text(std::string(length, 'x'));
        ASSERT_EQ(LINE_COUNT, before + 1);
        std::string expected =
            "    " + std::string(std::min<std::size_t>(length, 100), 'x') + NO_MARKS;
        expected += '\0';
        expected.resize(125, ' ');
        EXPECT_EQ(record(LINE_COUNT), expected) << length;
    }
    char untouched = 'x';
    WRITE_LINE(&untouched, -7); // counts as 0
    EXPECT_EQ(untouched, 'x');
    EXPECT_EQ(record(LINE_COUNT), "    " + std::string(NO_MARKS) + '\0' + std::string(108, ' '));
}

TEST_F(ChannelTest, AFullStoreKeepsItsFirstLinesAndTheLatest) {
    report_to_store();
    for (Int k = 1; k <= 749; ++k)
        write("line " + std::to_string(k));
    EXPECT_EQ(LINE_COUNT, 749);
    write("line 750");
    EXPECT_EQ(LINE_COUNT, 750);
    EXPECT_EQ(stored(750), "line 750");
    write("line 751");
    EXPECT_EQ(LINE_COUNT, 750);
    for (Int k = 1; k <= 749; ++k)
        ASSERT_EQ(stored(k), "line " + std::to_string(k));
    EXPECT_EQ(stored(750), "line 751");
    for (Int k = 752; k <= 2000; ++k)
        write("line " + std::to_string(k));
    EXPECT_EQ(stored(749), "line 749");
    EXPECT_EQ(stored(750), "line 2000");
    EXPECT_EQ(LINE_COUNT, 750);
}

TEST_F(ChannelTest, EntryOfACalculationBlanksOneRecordOnly) {
    report_to_store();
    for (Int k = 1; k <= 600; ++k)
        write("old " + std::to_string(k));
    OPEN_LINE_STORE();
    EXPECT_EQ(LINE_COUNT, 0);
    EXPECT_TRUE(STYLE_ENABLED);
    EXPECT_EQ(record(500), std::string(125, ' '));
    EXPECT_EQ(stored(1), "old 1");
    EXPECT_EQ(stored(499), "old 499");
    EXPECT_EQ(stored(501), "old 501");
    write("new");
    EXPECT_EQ(stored(1), "new");
    EXPECT_EQ(stored(2), "old 2");
}

TEST_F(ChannelTest, EachZeroPutInMovesTheMarks) {
    report_to_store();
    OPEN_LINE_STORE();
    SET_LINE_STYLE(0, 0, 0, 0, 0, 2);
    write(".5 x"); // four blanks come before it in the record
    std::string expected = "    0.5 x";
    expected.resize(105, ' ');
    expected += " 0 0 0 0 0 2";
    expected += '\0';
    expected.resize(125, ' ');
    EXPECT_EQ(record(1), expected);
    write(" = .5 * -.25");
    EXPECT_EQ(stored(2), " = 0.5 * -0.25");
    EXPECT_EQ(record(2).find('\0'), 118u);
    EXPECT_EQ(stored_marks(2), NO_MARKS);
    write("=     .5"); // room before the point: nothing moves
    EXPECT_EQ(stored(3), "=    0.5");
    EXPECT_EQ(record(3).find('\0'), 116u);
}

TEST_F(ChannelTest, TheStoreClearsMarksAndUnderlineFlag) {
    report_to_store();
    SET_LINE_STYLE(0, 1, 0, 0, 0, 0);
    write("heading");
    EXPECT_EQ(stored_lines(), std::vector<std::string>{"heading"}); // no dash row in the store
    report_to_file();
    write("plain");
    EXPECT_EQ(file_bytes(), plain("plain"));
}

// ---- the file -----------------------------------------------------------------------------------

TEST_F(ChannelTest, RecordsOfTheFile) {
    report_to_file();
    OPEN_LINE_STORE();
    write("A plain line");
    SET_LINE_STYLE(0, 0, 0, 0, 0, 2);
    write("A heading:");
    SET_LINE_STYLE(1, -9, 99, 100, -10, 0);
    write("odd marks");
    write("");
    write("after");
    EXPECT_EQ(file_bytes(), plain("A plain line") + marked("A heading:", " 0 0 0 0 0 2") +
                                marked("odd marks", " 1-999**** 0") + plain("") + plain("after"));
    EXPECT_EQ(WRITE_STATUS, 0);
    EXPECT_EQ(LINE_COUNT, 0);
}

TEST_F(ChannelTest, TextsOfOtherLengthsInTheFile) {
    report_to_file();
    OPEN_LINE_STORE();
    write_text("short");
    SET_LINE_STYLE(0, 0, 1, 0, 0, 0);
    write_text("short");
    write_text(std::string(100, 'a'));
    write_text(std::string(101, 'b'));
    write_text(std::string(250, 'c'));
    write_text("");
    EXPECT_EQ(file_bytes(), plain("short", 5) + marked("short", " 0 0 1 0 0 0", 5) +
                                plain(std::string(100, 'a')) + plain(std::string(100, 'b')) +
                                plain(std::string(100, 'c')) + plain("", 0));
}

TEST_F(ChannelTest, MarksThatSumToZeroStay) {
    report_to_file();
    OPEN_LINE_STORE();
    SET_LINE_STYLE(1, -1, 0, 0, 0, 0);
    write("plain all the same");
    IOUT = -1;
    write("and now in the store");
    EXPECT_EQ(stored_marks(1), " 1-1 0 0 0 0");
    EXPECT_EQ(file_bytes(), plain("plain all the same"));
    constexpr Int MOST = std::numeric_limits<Int>::max();
    SET_LINE_STYLE(MOST, MOST, MOST, MOST, MOST, MOST); // a sum beyond an INTEGER
    write("x");
    EXPECT_EQ(stored_marks(2), "************");
}

TEST_F(ChannelTest, NumbersAreRepairedInTheFileToo) {
    report_to_file();
    write(".5 x"); // no blank before it
    write(" = .5 * -.25");
    DECIMAL_COMMA = true;
    write("1.5 psi");
    EXPECT_EQ(file_bytes(), plain(".5 x") + plain(" = 0.5 * -0.25") + plain("1,5 psi"));
}

TEST_F(ChannelTest, ARuleUnderTheLineBeforeTheFirstCalculation) {
    report_to_file();
    SET_LINE_STYLE(0, 1, 0, 0, 0, 0);
    write("Heading");
    write("next");
    OPEN_LINE_STORE();
    SET_LINE_STYLE(0, 1, 0, 0, 0, 0);
    write("Heading");
    EXPECT_EQ(file_bytes(), plain("Heading") + plain("-------") + plain("next") +
                                marked("Heading", " 0 1 0 0 0 0"));
}

TEST_F(ChannelTest, OtherMarksBeforeTheFirstCalculationAreNotKept) {
    report_to_file();
    SET_LINE_STYLE(1, 0, 3, 4, 5, 6);
    write("plain");
    EXPECT_EQ(file_bytes(), plain("plain"));
}

TEST_F(ChannelTest, TheRuleIsAsLongAsTheFinishedText) {
    report_to_file();
    SET_LINE_STYLE(0, -1, 0, 0, 0, 0);
    write("x = .5"); // 7 columns with its zero
    SET_LINE_STYLE(0, 1, 0, 0, 0, 0);
    write_text("two" + std::string(120, 'o')); // at most 100
    SET_LINE_STYLE(0, 1, 0, 0, 0, 0);
    write_text("short   ");
    FLAGS_mp_IINOSPECIAL = 1;
    SET_LINE_STYLE(0, 1, 0, 0, 0, 0);
    write("in\xB2");
    SET_LINE_STYLE(0, 1, 0, 0, 0, 0);
    write("");
    EXPECT_EQ(file_bytes(), plain("x = 0.5") + plain("-------") +
                                plain("two" + std::string(97, 'o')) + plain(std::string(100, '-')) +
                                plain("short", 8) + plain("-----", 8) + plain("in^(2)") +
                                plain("------") + plain("") + plain(""));
}

TEST_F(ChannelTest, AMarkedLineLeavesTheUnderlineFlagForLater) {
    report_to_file();
    SET_LINE_STYLE(0, 1, 0, 0, 0, 0); // flag
    OPEN_LINE_STORE();
    SET_LINE_STYLE(0, 0, 0, 0, 1, 0); // marks beside it
    write("marked");
    write("plain");
    EXPECT_EQ(file_bytes(), marked("marked", " 0 0 0 0 1 0") + plain("plain") + plain("-----"));
}

TEST_F(ChannelTest, AFailedWriteLosesTheLineAndKeepsItsStyle) {
    OPEN_LINE_STORE();
    IWRITE = 1, IWRTFL = 1, IOUT = REPORT_UNIT; // not open
    SET_LINE_STYLE(0, 0, 0, 0, 1, 0);
    write("lost");
    EXPECT_TRUE(OUTLINE.blank());
    EXPECT_EQ(WRITE_STATUS, 1);
    report_to_file();
    write("next");
    IOUT = REPORT_UNIT + 1;
    SET_LINE_STYLE(0, 0, 0, 0, 1, 0);
    write("lost");
    IOUT = REPORT_UNIT;
    SET_LINE_STYLE(0, 0, 0, 0, 0, 2); // unless a new style is set
    write("heading");
    EXPECT_EQ(WRITE_STATUS, 0);
    EXPECT_EQ(file_bytes(), marked("next", " 0 0 0 0 1 0") + marked("heading", " 0 0 0 0 0 2"));
}

TEST_F(ChannelTest, AFailedWriteKeepsTheUnderlineFlag) {
    IWRITE = 1, IWRTFL = 1, IOUT = REPORT_UNIT;
    SET_LINE_STYLE(0, 1, 0, 0, 0, 0);
    write("lost");
    report_to_file();
    write("next");
    EXPECT_EQ(file_bytes(), plain("next") + plain("----"));
}

TEST_F(ChannelTest, UnitsThatCannotBe) {
    IWRITE = 2, IWRTFL = 1;
    for (const Int unit :
         {-1, std::numeric_limits<Int>::min(), 1001, 5000, std::numeric_limits<Int>::max()}) {
        WRITE_STATUS = 0;
        IOUT = unit;
        write("lost");
        EXPECT_EQ(WRITE_STATUS, 1) << unit;
        EXPECT_TRUE(OUTLINE.blank());
    }
}

// ---- headings -----------------------------------------------------------------------------------

TEST_F(ChannelTest, UnderlinedHeadings) {
    report_to_file();
    OPEN_LINE_STORE();
    OUTLINE = "x = .5";
    SET_LINE_STYLE(0, 1, 0, 0, 0, 0);
    WRITE_UNDERLINED(OUTLINE.data(), 100); // the rule has the length before the zero
    EXPECT_TRUE(OUTLINE.blank());
    WRITE_UNDERLINED(OUTLINE.data(), 100);
    WRITE_UNDERLINED(OUTLINE.data(), -3);
    EXPECT_EQ(file_bytes(), marked("x = 0.5", " 0 1 0 0 0 0") + plain("------") + plain("") +
                                plain("") + plain("", 0) + plain("", 0));
}

TEST_F(ChannelTest, ABlankLine) {
    report_to_store();
    OUTLINE = "left over";
    WRITE_BLANK_LINE(OUTLINE.data(), 100);
    EXPECT_EQ(stored_lines(), std::vector<std::string>{""});
    EXPECT_TRUE(OUTLINE.blank());
}

TEST_F(ChannelTest, PlainCharactersAreLatchedWithTheStyle) {
    report_to_store();
    FLAGS_mp_IINOSPECIAL = 1;
    write("g\xB2");
    EXPECT_EQ(stored(1), "g\xB2");
    SET_LINE_STYLE(0, 0, 0, 0, 0, 0);
    FLAGS_mp_IINOSPECIAL = 0;
    write("g\xB2");
    write("650 \xB0"
          "F");
    EXPECT_EQ(stored(2), "g^(2)");
    EXPECT_EQ(stored(3), "650  F");
    FLAGS_mp_IINOSPECIAL = 2; // exactly 1
    SET_LINE_STYLE(0, 0, 0, 0, 0, 0);
    write("g\xB2");
    EXPECT_EQ(stored(4), "g\xB2");
}

// ---- fitting ------------------------------------------------------------------------------------

std::string fitted(std::string source, Int mode, std::size_t target_width = 100) {
    std::string target(target_width, '?');
    FIT_TO_LINE(source.data(), static_cast<Int>(source.size()), target.data(),
                static_cast<Int>(target.size()), mode);
    return target;
}

std::string fitted_trimmed(std::string source, Int mode, std::size_t target_width = 100) {
    return std::string(trimmed(fitted(std::move(source), mode, target_width)));
}

TEST_F(ChannelTest, BelowModeThreeEveryRunOfBlanksBecomesOne) {
    for (const Int mode : {std::numeric_limits<Int>::min(), -1, 0, 1, 2}) {
        EXPECT_EQ(fitted_trimmed("   = 1.5   psi", mode), " = 1.5 psi");
        EXPECT_EQ(fitted_trimmed("   = 1.5   psi        ", mode), " = 1.5 psi");
        EXPECT_EQ(fitted_trimmed(" = 1.5 psi", mode), " = 1.5 psi");
        EXPECT_EQ(fitted("", mode), std::string(100, ' '));
        EXPECT_EQ(fitted("     ", mode), std::string(100, ' '));
    }
    std::string source = "a   b  c ";
    std::string target(4, '?');
    FIT_TO_LINE(source.data(), 9, target.data(), 4, 0);
    EXPECT_EQ(source, "a b c    "); // the source is changed
    EXPECT_EQ(target, "a b ");
}

TEST_F(ChannelTest, FromModeThreeTheFirstColumnsStay) {
    EXPECT_EQ(fitted_trimmed("   = 1.5   psi", 3).size(),
              11u); // its last column is filled and lost
    EXPECT_EQ(fitted_trimmed("   = 1.5   psi ", 3), "   = 1.5 psi");
    EXPECT_EQ(fitted_trimmed("       = 1.5   psi ", 3), "    = 1.5 psi");
    EXPECT_EQ(fitted_trimmed("       = 1.5   psi ", 4), "     = 1.5 psi");
    EXPECT_EQ(fitted_trimmed("       = 1.5   psi ", 100), "       = 1.5   psi");
    std::string source = "a   b  c ";
    std::string target(20, '?');
    FIT_TO_LINE(source.data(), 9, target.data(), 20, 3);
    EXPECT_EQ(source, "a   b  c "); // the source is unchanged
}

TEST_F(ChannelTest, LastColumnsOfTheTarget) {
    const std::string long_text = std::string(119, 'x') + " ";
    EXPECT_EQ(fitted(long_text, 0), std::string(100, 'x'));
    EXPECT_EQ(fitted(long_text, 3), std::string(99, 'x') + " "); // column 100 is not written
    EXPECT_EQ(fitted("abcdef ", 3, 4), "abc ");
    EXPECT_EQ(fitted("abcdef ", 0, 4), "abcd");
    EXPECT_EQ(fitted("abc", 3, 10), "ab        "); // a source filled to its last column
    EXPECT_EQ(fitted("abc", 0, 10), "abc       ");
    EXPECT_EQ(fitted("abc", 3, 0), "");
    char untouched = 'x';
    for (const Int mode : {0, 3})
        FIT_TO_LINE(&untouched, -1, &untouched, -1, mode);
    EXPECT_EQ(untouched, 'x');
}

TEST_F(ChannelTest, AFilledTemplateIsCutAtTheLine) {
    EXPECT_EQ(printed(std::string(98, 'x') + "@3", {1234.5f}, 0), std::string(98, 'x') + "12");
    EXPECT_EQ(printed(std::string(98, 'x') + "@3", {1234.5f}, 3), std::string(98, 'x') + "1");
}

// ---- texts from outside -------------------------------------------------------------------------

TEST_F(ChannelTest, NulsBecomeBlanks) {
    std::string text("\0SA\0-105\0", 9);
    NUL_TO_BLANK(text.data(), 9);
    EXPECT_EQ(text, " SA -105 ");
    std::string part("a\0b\0", 4);
    NUL_TO_BLANK(part.data(), 2);
    EXPECT_EQ(part, std::string("a b\0", 4));
    NUL_TO_BLANK(part.data(), -1);
    EXPECT_EQ(part, std::string("a b\0", 4));
}

TEST_F(ChannelTest, UpperCase) {
    std::string text = "Sa-105 {az}\xB2\xE9 ";
    TO_UPPER(text.data(), static_cast<Int>(text.size()));
    EXPECT_EQ(text, "SA-105 {AZ}\xB2\xE9 ");
    TO_UPPER(text.data(), std::numeric_limits<Int>::min());
}

} // namespace
} // namespace tarvane::report_test
