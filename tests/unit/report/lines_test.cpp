#include "../edge_numbers.h"
#include "report_fixture.h"

#include <limits>

namespace tarvane::report_test {
namespace {

class LinesTest : public ReportTest {
  protected:
    LinesTest() {
        report_to_store();
        OPEN_LINE_STORE();
    }
    // The one line just written.
    static std::string last() { return stored(LINE_COUNT); }
    static std::string last_marks() { return stored_marks(LINE_COUNT); }
    // A line as a column line prints it: value right-aligned up to column 60.
    static std::string column_line(const std::string& label, const std::string& value,
                                   const std::string& unit) {
        std::string line = label;
        line.append(60 - label.size() - value.size(), ' ');
        line += value;
        return unit.empty() ? line : line + "  " + unit;
    }
};

TEST_F(LinesTest, TextLinesAndTheirStyles) {
    TEXT_LINE("as it stands");
    EXPECT_EQ(last(), "as it stands");
    EXPECT_EQ(last_marks(), " 0 0 0 0 0 0");
    HEADING("Title [W]:");
    EXPECT_EQ(last(), "Title [W]:");
    EXPECT_EQ(last_marks(), " 0 0 0 0 0 2");
    TEXT_LINE("note", NOTE_STYLE);
    EXPECT_EQ(last_marks(), " 0 0 0 1 0 0");
    TEXT_LINE("warning", WARNING_STYLE);
    EXPECT_EQ(last_marks(), " 0 0 1 0 0 0");
    TEXT_LINE("error", ERROR_STYLE);
    EXPECT_EQ(last_marks(), " 0 0 0 0 1 0");
    TEXT_LINE("highlight", HIGHLIGHT_STYLE);
    EXPECT_EQ(last_marks(), " 1 0 0 0 0 0");
    TEXT_LINE("message", MESSAGE_STYLE);
    EXPECT_EQ(last_marks(), " 0 0 0 0 0 1");
    TEXT_LINE("underlined", UNDERLINED_STYLE);
    EXPECT_EQ(last_marks(), " 0 1 0 0 0 0");
    BLANK_LINE();
    EXPECT_EQ(last(), "");
    TEXT_LINE(std::string(130, 'x'));
    EXPECT_EQ(stored_text(LINE_COUNT), std::string(100, 'x'));
    EXPECT_EQ(LINE_COUNT, 10);
}

TEST_F(LinesTest, APlainLineTakesTheMarksThatWait) {
    SET_LINE_STYLE(0, 0, 0, 6, 0, 0);
    TEXT_LINE("remark");
    EXPECT_EQ(last_marks(), " 0 0 0 6 0 0");
    SET_LINE_STYLE(0, 0, 0, 6, 0, 0);
    HEADING("a style of its own");
    EXPECT_EQ(last_marks(), " 0 0 0 0 0 2");
}

TEST_F(LinesTest, UnderlinedLines) {
    UNDERLINED_LINE("Required Thickness:", UNDERLINED_STYLE);
    EXPECT_EQ(stored_lines(),
              (std::vector<std::string>{"Required Thickness:", std::string(19, '-')}));
    EXPECT_EQ(stored_marks(1), " 0 1 0 0 0 0");
    EXPECT_EQ(stored_marks(2), " 0 0 0 0 0 0");
}

TEST_F(LinesTest, ColumnLines) {
    COLUMN_LINE("Flange Outside Diameter", 23.5f, Kind::diameter);
    EXPECT_EQ(last(), column_line("Flange Outside Diameter", "23.500", "in."));
    const std::string label45(45, 'L');
    COLUMN_LINE(label45, 0.125f, Kind::thickness, NOTE_STYLE);
    EXPECT_EQ(last(), label45 + "         0.1250  in.");
    EXPECT_EQ(last_marks(), " 0 0 0 1 0 0");
    // trailing blanks of the label count, and the field is never narrower than 10
    COLUMN_LINE(std::string(50, 'L'), 1.0f, Kind::factor);
    EXPECT_EQ(last(), std::string(50, 'L') + "     1.000");
    COLUMN_LINE(std::string(48, 'L') + "    ", 1.0f, Kind::factor);
    EXPECT_EQ(last(), std::string(48, 'L') + "         1.000");
    COLUMN_LINE(std::string(70, 'L'), -0.0001f, Kind::factor);
    EXPECT_EQ(last(), std::string(70, 'L') + "    -0.000");
    COLUMN_LINE(std::string(50, 'L'), 12345678.0f, Kind::pressure);
    EXPECT_EQ(last(), std::string(50, 'L') + "**********  psig");
    COLUMN_LINE(std::string(49, 'L'), 12345678.0f, Kind::pressure);
    EXPECT_EQ(last(), std::string(49, 'L') + "12345678.00  psig");
    COLUMN_LINE("t", NOT_A_NUMBER, Kind::thickness);
    EXPECT_EQ(last(), column_line("t", "NaN", "in."));
    COLUMN_LINE(std::string(95, 'L'), 1.0f, Kind::factor);
    EXPECT_EQ(last(), std::string(95, 'L'));
    COLUMN_LINE("", 1.0f, Kind::factor);
    EXPECT_EQ(last(), column_line("", "1.000", ""));
    COLUMN_LINE_IN("Design Temperature", 650.4f, 0,
                   "\xB0"
                   "F  ");
    EXPECT_EQ(last(), column_line("Design Temperature", "650",
                                  "\xB0"
                                  "F"));
    COLUMN_LINE_IN("Number", 20.0f, 0, "   ");
    EXPECT_EQ(stored_text(LINE_COUNT), column_line("Number", "20", "") + std::string(40, ' '));
}

TEST_F(LinesTest, DecimalsAndUnitsByKind) {
    struct {
        Kind kind;
        const char *column, *value, *unit;
    } const kinds[] = {
        {Kind::thickness, "12.3457", "12.3457", "in."},
        {Kind::diameter, "12.346", "12.3457", "in."},
        {Kind::pressure, "12.35", "12.346", "psig"},
        {Kind::stress, "12.35", "12.35", "psi"},
        {Kind::force, "12.35", "12.346", "lbf"},
        {Kind::area, "12.346", "12.346", "in\xB2"},
        {Kind::weight, "12.35", "12.346", "lbm"},
        {Kind::factor, "12.346", "12.3457", ""},
    };
    for (const auto& k : kinds) {
        COLUMN_LINE("Label", 12.345678f, k.kind);
        EXPECT_EQ(last(), column_line("Label", k.column, k.unit));
        VALUE_LINE(12.345678f, k.kind);
        EXPECT_EQ(last(), trimmed(std::string(" = ") + k.value + " " + k.unit));
        EXPECT_EQ(unit_label(k.kind), k.unit);
    }
    // moments are held in inch-pounds
    COLUMN_LINE("Label", 12.345678f * 12.0f, Kind::moment);
    EXPECT_EQ(last(), column_line("Label", "12.35", "ft-lbs"));
    VALUE_LINE(12.345678f * 12.0f, Kind::moment);
    EXPECT_EQ(last(), " = 12.346 ft-lbs");
}

TEST_F(LinesTest, ValuesPassThroughTheFactorOfTheirKind) {
    UNITS.thickness = 2.0f, UNITS.pressure = 3.0f, UNITS.diameter = 4.0f, UNITS.stress = 5.0f;
    UNITS.further = 6.0f, UNITS.force = 7.0f, UNITS.moment = 8.0f, UNITS.area = 9.0f;
    UNITS.weight = 10.0f;
    const std::pair<Kind, Real> factors[] = {{Kind::thickness, 2.0f}, {Kind::pressure, 3.0f},
                                             {Kind::diameter, 4.0f},  {Kind::stress, 5.0f},
                                             {Kind::force, 7.0f},     {Kind::area, 9.0f},
                                             {Kind::weight, 10.0f},   {Kind::factor, 1.0f}};
    for (const auto& [kind, factor] : factors)
        EXPECT_EQ(shown(1.5f, kind), 1.5f * factor);
    EXPECT_EQ(shown(100.0f, Kind::moment), 100.0f / 12.0f * 8.0f);
    UNITS.thickness_label = "mm";
    COLUMN_LINE("t", 1.5f, Kind::thickness);
    EXPECT_EQ(last(), column_line("t", "3.0000", "mm"));
    VALUE_LINE(0.125f, Kind::thickness);
    EXPECT_EQ(last(), " = 0.2500 mm");
}

TEST_F(LinesTest, DecimalsOfTheCallers) {
    COLUMN_LINE("P", 285.0f, Kind::pressure, PLAIN, 3);
    EXPECT_EQ(last(), column_line("P", "285.000", "psig"));
    COLUMN_LINE("T", 12.5f, Kind::factor, PLAIN, 0);
    EXPECT_EQ(last(), column_line("T", "13", ""));
    VALUE_LINE(285.0f, Kind::pressure, {}, PLAIN, 1);
    EXPECT_EQ(last(), " = 285.0 psig");
}

TEST_F(LinesTest, ValueLines) {
    VALUE_LINE(111331.859f, Kind::force, ", Mating Flange Load Governs");
    EXPECT_EQ(last(), " = 111331.859 lbf, Mating Flange Load Governs");
    VALUE_LINE(3.529f, Kind::diameter, "Maximum Bolt Spacing Exceeded !", ERROR_STYLE, 3);
    EXPECT_EQ(last(), " = 3.529 in.  Maximum Bolt Spacing Exceeded !");
    EXPECT_EQ(last_marks(), " 0 0 0 0 1 0");
    VALUE_LINE_IN(0.2358f, 4, "in.", "[Note: Exceeds actual gasket width, 0.5000]");
    EXPECT_EQ(last(), " = 0.2358 in.  [Note: Exceeds actual gasket width, 0.5000]");
    VALUE_LINE_IN(0.873f, 3, "(should be <= 1)");
    EXPECT_EQ(last(), " = 0.873 (should be <= 1)");
    VALUE_LINE(1.0f, Kind::factor);
    EXPECT_EQ(last(), " = 1.0000");
    VALUE_LINE(1.0f, Kind::factor, "remark");
    EXPECT_EQ(last(), " = 1.0000  remark");
    VALUE_LINE(1.0f, Kind::factor, ", remark");
    EXPECT_EQ(last(), " = 1.0000, remark");
    // the zero is added when the line is written
    VALUE_LINE(-0.25f, Kind::thickness);
    EXPECT_EQ(last(), " = -0.2500 in.");
    VALUE_LINE(0.0f, Kind::stress);
    EXPECT_EQ(last(), " = 0.00 psi");
    VALUE_LINE(NOT_A_NUMBER, Kind::stress);
    EXPECT_EQ(last(), " = NaN psi");
    VALUE_LINE_IN(-0.4f, 0,
                  "\xB0"
                  "F");
    EXPECT_EQ(last(), " = 0 \xB0"
                      "F");
    VALUE_LINE(1234567936.0f, Kind::force); // no fixed width, no limit
    EXPECT_EQ(last(), " = 1234567936.000 lbf");
}

TEST_F(LinesTest, NumberLines) {
    NUMBER_LINE(" = @3 * sin( @3 / @0 )", {25.5f, 3.1416f, 12.0f});
    EXPECT_EQ(last(), " = 25.5 * sin( 3.142/12 )");
    NUMBER_LINE("   * @3^(2) * @3 * @3 )#", {1.5f, 0.5f, 3.5f}, 4);
    EXPECT_EQ(last(), "   * 1.5^(2) * 0.5 * 3.5 )");
    NUMBER_LINE("   * @3 )#", {1.5f}); // mode 1: one blank
    EXPECT_EQ(last(), " * 1.5 )");
    NUMBER_LINE(" = 2 + 2", {});
    EXPECT_EQ(last(), " = 2 + 2");
    NUMBER_LINE(" = @0 @0 @0 @0 @0 @0", {1.0f, 2.0f, 3.0f, 4.0f, 5.0f, 6.0f, 7.0f, 8.0f});
    EXPECT_EQ(last(), " = 1 2 3 4 5 6");
    NUMBER_LINE(" = @3 / @3", {1.5f, 2.5f}, 1, {}, NOTE_STYLE);
    EXPECT_EQ(last(), " = 1.5/2.5");
    EXPECT_EQ(last_marks(), " 0 0 0 1 0 0");
    NUMBER_LINE(std::string(118, 'x') + "@1@1", {1.5f, 2.5f}); // cut at the template's width
    EXPECT_EQ(last(), std::string(100, 'x'));
}

TEST_F(LinesTest, AUnitBehindATemplate) {
    NUMBER_LINE("EMAP = @3/@2", {10.5f, 2.25f}, 1, "psig      ");
    EXPECT_EQ(last(), "EMAP = 10.5/2.25 psig");
    NUMBER_LINE("EMAP = @3/@2 #", {10.5f, 2.25f}, 1, "psig");
    EXPECT_EQ(last(), "EMAP = 10.5/2.25 psig");
    NUMBER_LINE("EMAP = @3/@2#", {10.5f, 2.25f}, 1, "in.");
    EXPECT_EQ(last(), "EMAP = 10.5/2.25 in.");
    NUMBER_LINE(" = @3   # dropped", {10.5f}, 1, "in\xB2");
    EXPECT_EQ(last(), " = 10.5 in\xB2");
    NUMBER_LINE(" = @3 #", {10.5f}, 1, "    ");
    EXPECT_EQ(last(), " = 10.5");
}

TEST_F(LinesTest, LinesFromPieces) {
    LinePieces().text("K0 = ").bare(0.9f, 2).blanks(3).fixed(12.345f, 8, 2).text("|").write();
    EXPECT_EQ(last(), "K0 = 0.90      12.35|");
    LinePieces line;
    line.padded("Loading", 10)
        .padded("cut to three", 3)
        .whole(7, 3)
        .whole(-42, 0)
        .to_column(25)
        .text("x");
    EXPECT_EQ(line.view(), "Loading   cut  7-42     x");
    line.to_column(8).exponent(12.3f, 10, 3);
    EXPECT_EQ(line.view(), "Loading 0.123E+02"); // what came after it is dropped
    line.write(HEADING_STYLE);
    EXPECT_EQ(last(), "Loading 0.123E+02");
    EXPECT_EQ(last_marks(), " 0 0 0 0 0 2");
    EXPECT_EQ(LinePieces().text("ab").blanks(2).view(), "ab  ");
    EXPECT_EQ(LinePieces().text("abc").to_column(2).view(), "a");
}

TEST_F(LinesTest, PiecesStayWithinTheirLine) {
    constexpr Int LEAST = std::numeric_limits<Int>::min(), MOST = std::numeric_limits<Int>::max();
    LinePieces line;
    line.blanks(LEAST).padded("x", LEAST).to_column(LEAST).to_column(0);
    EXPECT_EQ(line.view(), "");
    line.text(std::string(119, 'x')).text("yz").text("w").blanks(3).fixed(1.5f, 10, 2);
    EXPECT_EQ(line.view(), std::string(119, 'x') + "y");
    line.to_column(MOST).whole(5, 0).padded("abc", MOST).blanks(MOST);
    EXPECT_EQ(line.view(), std::string(119, 'x') + "y");
    line.write();
    EXPECT_EQ(last(), std::string(100, 'x'));
    LinePieces other;
    other.to_column(119).fixed(1.5f, MOST, MOST);
    EXPECT_EQ(other.view().size(), 120u);
    other.to_column(1).padded("a", MOST);
    EXPECT_EQ(other.view(), "a" + std::string(119, ' '));
}

// Every form of this file, one after the other.
void write_every_form() {
    TEXT_LINE("text", NOTE_STYLE);
    TEXT_LINE("text");
    BLANK_LINE();
    HEADING("heading");
    UNDERLINED_LINE("underlined", UNDERLINED_STYLE);
    COLUMN_LINE("label", 1.5f, Kind::stress, WARNING_STYLE);
    VALUE_LINE(1.5f, Kind::stress, "remark");
    COLUMN_LINE_IN("label", 1.5f, 2, "unit");
    VALUE_LINE_IN(1.5f, 2, "unit");
    NUMBER_LINE(" = @3 / @1", {1.5f, 2.5f}, 1, "psi", ERROR_STYLE);
    LinePieces().text("pieces").fixed(1.5f, 10, 2).write(HEADING_STYLE);
}

TEST_F(LinesTest, SilentLinesLeaveNothingBehind) {
    write_every_form();
    const Int lines = LINE_COUNT;
    EXPECT_EQ(lines, 12);
    const Int gates[][3] = {{0, 1, -1}, {1, 0, -1}, {1, 1, 0}};
    for (const auto& gate : gates) {
        report_to_store();
        OPEN_LINE_STORE();
        SET_LINE_STYLE(1, 2, 3, 4, 5, 6);
        OUTLINE = "left over";
        IWRITE = gate[0], IWRTFL = gate[1], IOUT = gate[2];
        write_every_form();
        EXPECT_EQ(LINE_COUNT, 0);
        EXPECT_TRUE(OUTLINE.blank());
        report_to_store();
        write("next");
        EXPECT_EQ(stored_marks(1), " 0 0 0 0 0 0");
    }
}

// One silent line of each form clears what waits, as WRITE_LINE would.
TEST_F(LinesTest, EachSilentFormClearsMarksAndOutline) {
    const std::vector<void (*)()> forms = {
        [] { TEXT_LINE("text"); },
        [] { BLANK_LINE(); },
        [] { HEADING("heading"); },
        [] { UNDERLINED_LINE("underlined"); },
        [] { COLUMN_LINE("label", 1.5f, Kind::stress); },
        [] { VALUE_LINE(1.5f, Kind::stress); },
        [] { COLUMN_LINE_IN("label", 1.5f, 2, "unit"); },
        [] { VALUE_LINE_IN(1.5f, 2, "unit"); },
        [] { NUMBER_LINE(" = @3", {1.5f}); },
        [] { LinePieces().text("pieces").write(); },
    };
    for (const auto& form : forms) {
        report_to_store();
        OPEN_LINE_STORE();
        SET_LINE_STYLE(1, 2, 3, 4, 5, 6);
        OUTLINE = "left over";
        IWRTFL = 0;
        form();
        EXPECT_TRUE(OUTLINE.blank());
        report_to_store();
        write("next");
        EXPECT_EQ(stored_marks(1), " 0 0 0 0 0 0");
    }
}

TEST_F(LinesTest, ASilentStyleStillLooksUpThePlainCharacters) {
    IWRTFL = 0;
    FLAGS_mp_IINOSPECIAL = 1;
    TEXT_LINE("plain");
    IWRTFL = 1;
    write("g\xB2");
    EXPECT_EQ(last(), "g\xB2");
    IWRTFL = 0;
    HEADING("heading");
    FLAGS_mp_IINOSPECIAL = 0;
    IWRTFL = 1;
    write("g\xB2");
    EXPECT_EQ(last(), "g^(2)");
}

TEST_F(LinesTest, PiecesAreComposedForTheReportOnlyUnlessTold) {
    IWRTFL = 0;
    EXPECT_EQ(LinePieces().text("a").fixed(1.0f, 5, 1).view(), "");
    EXPECT_EQ(LinePieces(Compose::always).text("a").fixed(1.0f, 5, 1).view(), "a  1.0");
}

TEST_F(LinesTest, TheTemplateGateDoesNotLookAtTheDestination) {
    IOUT = 0;
    EXPECT_EQ(filled(" = @1 / 2", {1.5f}), " = 1.5/2");
    TEMPLATE = "kept";
    NUMBER_LINE(" = @1", {1.5f}); // goes nowhere
    EXPECT_EQ(TEMPLATE.trimmed(), "kept");
}

} // namespace
} // namespace tarvane::report_test
