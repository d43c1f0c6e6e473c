#include "report_fixture.h"

#include "tarvane/tarvane.h"

namespace tarvane::report_test {
namespace {

// Report lines of a host's own, through the exported routines.
class HostLines : public ReportTest {
  protected:
    HostLines() {
        report_to_store();
        ::BEGIN_REPORT();
        UNITS.thickness = 25.4f;
        UNITS.thickness_label = "mm";
        UNITS.pressure = 0.5f;
        UNITS.pressure_label = "bar";
        UNITS.diameter = 2.0f;
        UNITS.diameter_label = "dd";
        UNITS.stress = 3.0f;
        UNITS.stress_label = "MPa";
        UNITS.force = 4.0f;
        UNITS.force_label = "N";
        UNITS.moment = 6.0f;
        UNITS.moment_label = "N-m";
        UNITS.area = 5.0f;
        UNITS.area_label = "cm2";
        UNITS.weight = 0.25f;
        UNITS.weight_label = "kg";
    }
    static std::string last() { return stored(LINE_COUNT); }
    static std::string last_marks() { return stored_marks(LINE_COUNT); }
    static Int length(std::string_view text) { return static_cast<Int>(text.size()); }
};

constexpr Int NO_STYLE[6] = {0, 0, 0, 0, 0, 0};

TEST_F(HostLines, ATextAndAHeadingTakeTheirMarks) {
    const Int style[6] = {1, 2, 3, 4, 5, 6};
    ::WRITE_TEXT("a line of the host's", 20, style);
    EXPECT_EQ(last(), "a line of the host's");
    EXPECT_EQ(last_marks(), " 1 2 3 4 5 6");
    ::WRITE_TEXT("cut here, not there", 8, NO_STYLE);
    EXPECT_EQ(last(), "cut here");
    EXPECT_EQ(last_marks(), " 0 0 0 0 0 0");
    ::WRITE_HEADING("Title:", 6);
    EXPECT_EQ(last(), "Title:");
    EXPECT_EQ(last_marks(), " 0 0 0 0 0 2");
    ::WRITE_TEXT("nothing", -1, NO_STYLE);
    EXPECT_EQ(last(), "");
    EXPECT_EQ(LINE_COUNT, 4);
}

TEST_F(HostLines, AValueGoesThroughFactorLabelAndDecimalsOfItsKind) {
    struct {
        Int kind;
        std::string column, value; // after the label, and after " = "
    } const rows[] = {
        {TARVANE_AS_THICKNESS, "304.8000  mm", "304.8000 mm"},
        {TARVANE_AS_DIAMETER, "24.000  dd", "24.0000 dd"},
        {TARVANE_AS_PRESSURE, "6.00  bar", "6.000 bar"},
        {TARVANE_AS_STRESS, "36.00  MPa", "36.00 MPa"},
        {TARVANE_AS_FORCE, "48.00  N", "48.000 N"},
        {TARVANE_AS_MOMENT, "6.00  N-m", "6.000 N-m"}, // 12 in-lb are one ft-lb
        {TARVANE_AS_AREA, "60.000  cm2", "60.000 cm2"},
        {TARVANE_AS_WEIGHT, "3.00  kg", "3.000 kg"},
        {TARVANE_AS_FACTOR, "12.000", "12.0000"},
    };
    const Real twelve = 12.0f;
    const std::string_view label = "A label of the host's";
    for (const auto& row : rows) {
        ::WRITE_COLUMN(label.data(), length(label), &twelve, &row.kind, NO_STYLE);
        const std::string number = row.column.substr(0, row.column.find(' '));
        const std::size_t blanks = 60 - label.size() - number.size();
        EXPECT_EQ(last(), std::string(label) + std::string(blanks, ' ') + row.column);
        ::WRITE_VALUE(&twelve, &row.kind, "", 0, NO_STYLE);
        EXPECT_EQ(last(), " = " + row.value);
    }
}

TEST_F(HostLines, ARemarkStandsBehindTheValueAndMarksOnItsLine) {
    const Real value = 0.5f;
    const Int kind = TARVANE_AS_PRESSURE, style[6] = {0, 0, 0, 1, 0, 0};
    ::WRITE_VALUE(&value, &kind, "too low", 7, style);
    EXPECT_EQ(last(), " = 0.250 bar  too low");
    EXPECT_EQ(last_marks(), " 0 0 0 1 0 0");
    ::WRITE_VALUE(&value, &kind, ", governs", 9, NO_STYLE);
    EXPECT_EQ(last(), " = 0.250 bar, governs");
    ::WRITE_COLUMN("Low", 3, &value, &kind, style);
    EXPECT_EQ(last_marks(), " 0 0 0 1 0 0");
}

TEST_F(HostLines, EachPlaceholderTakesTheNextValueInItsKind) {
    const Real values[] = {12.5f, 100.0f, 0.85f, 1.0f, 2.0f, 3.0f};
    const Int kinds[] = {TARVANE_AS_DIAMETER, TARVANE_AS_STRESS, TARVANE_AS_FACTOR,
                         TARVANE_AS_FACTOR,   TARVANE_AS_FACTOR, TARVANE_AS_FORCE};
    const std::string_view line = " = @3 * @0 * @2 + @0 + @0 + @0";
    const Int six = 6, ordinary = 1;
    ::WRITE_NUMBERS(line.data(), length(line), values, kinds, &six, &ordinary);
    EXPECT_EQ(last(), " = 25.0 * 300 * 0.85 + 1 + 2 + 12");

    const std::string_view continued = "   * @3";
    const Int one = 1, keep_four = 4;
    ::WRITE_NUMBERS(continued.data(), length(continued), values, kinds, &one, &keep_four);
    EXPECT_EQ(last(), "   * 25.0");
    ::WRITE_NUMBERS(continued.data(), length(continued), values, kinds, &one, &ordinary);
    EXPECT_EQ(last(), " * 25.0");
}

TEST_F(HostLines, NothingIsWrittenOfAKindOrCountThatDoesNotExist) {
    const Real value[7] = {};
    const Int known = TARVANE_AS_FACTOR, one = 1, ordinary = 1;
    for (const Int kind : {-1, TARVANE_AS_FACTOR + 1}) {
        ::WRITE_COLUMN("Label", 5, value, &kind, NO_STYLE);
        ::WRITE_VALUE(value, &kind, "", 0, NO_STYLE);
        ::WRITE_NUMBERS(" = @0", 5, value, &kind, &one, &ordinary);
    }
    for (const Int count : {-1, 7})
        ::WRITE_NUMBERS(" = @0", 5, value, &known, &count, &ordinary);
    EXPECT_EQ(LINE_COUNT, 0);
    const Int none = 0;
    ::WRITE_NUMBERS("no number", 9, value, &known, &none, &ordinary);
    EXPECT_EQ(last(), "no number");
}

TEST_F(HostLines, AReportBeginsWithAnEmptyStoreAndKeepsMarks) {
    RESET_REPORT();
    report_to_store();
    const Int style[6] = {0, 0, 0, 0, 1, 0};
    ::WRITE_TEXT("before", 6, style);
    EXPECT_EQ(last_marks(), " 0 0 0 0 0 0") << "no flange and no report has begun yet";
    ::BEGIN_REPORT();
    EXPECT_EQ(LINE_COUNT, 0);
    ::WRITE_TEXT("behind", 6, style);
    EXPECT_EQ(stored(1), "behind");
    EXPECT_EQ(last_marks(), " 0 0 0 0 1 0");
}

TEST_F(HostLines, WithTheReportOffNothingIsWritten) {
    IWRTFL = 0;
    const Real value = 1.0f;
    const Int kind = TARVANE_AS_FACTOR, one = 1;
    ::WRITE_TEXT("text", 4, NO_STYLE);
    ::WRITE_HEADING("text", 4);
    ::WRITE_COLUMN("text", 4, &value, &kind, NO_STYLE);
    ::WRITE_VALUE(&value, &kind, "", 0, NO_STYLE);
    ::WRITE_NUMBERS(" = @0", 5, &value, &kind, &one, &one);
    EXPECT_EQ(LINE_COUNT, 0);
}

} // namespace
} // namespace tarvane::report_test
