#include "document/report_view.h"

#include "app_fixture.h"

namespace tarvane::app {

using namespace vessel;
namespace {

// A record as the engine writes it.
std::string record(const std::string& text, const std::string& marks = "") {
    std::string line = ' ' + text;
    line.resize(101, ' ');
    return line + marks + '\n';
}

TEST(ReportLines, PartTextAndMarks) {
    const auto lines = report_lines(record("  plain  text") + record("a title", " 0 0 0 0 0 2") +
                                    record("") + record("many", "-112 3 4 5 6"));
    ASSERT_EQ(lines.size(), 4u);
    EXPECT_EQ(lines[0].text, "  plain  text");
    EXPECT_EQ(lines[0].marks, (std::array<int, 6>{}));
    EXPECT_EQ(lines[1].text, "a title");
    EXPECT_EQ(lines[1].marks, (std::array<int, 6>{0, 0, 0, 0, 0, 2}));
    EXPECT_EQ(lines[2].text, "");
    EXPECT_EQ(lines[3].marks, (std::array<int, 6>{-1, 12, 3, 4, 5, 6}));
}

TEST(ReportLines, TakeAFullLine) {
    const std::string full(100, '=');
    EXPECT_EQ(report_lines(record(full))[0].text, full);
    EXPECT_EQ(report_lines(record(full, " 0 0 0 0 1 0"))[0].text, full);
}

TEST(ShowReport, PlainHasNoMarksAndNoEscapes) {
    EXPECT_EQ(
        show_report(record("Area, in\xB2", " 0 0 0 0 1 0") + record("") + record(" = 3"), false),
        "Area, in²\n\n = 3\n");
}

TEST(ShowReport, EachMarkHasItsLook) {
    const struct {
        const char* marks;
        const char* look;
    } rows[] = {{" 1 0 0 0 0 0", "\033[1;7;33m"}, {" 0 1 0 0 0 0", "\033[1;4m"},
                {" 0 0 1 0 0 0", "\033[33m"},     {" 0 0 0 1 0 0", "\033[36m"},
                {" 0 0 0 6 0 0", "\033[36m"},     {" 0 0 0 0 1 0", "\033[1;31m"},
                {" 0 0 0 0 0 1", "\033[1m"},      {" 0 0 0 0 0 2", "\033[1;34m"},
                {" 0 0 1 0 1 2", "\033[1;31m"}};
    for (const auto& row : rows)
        EXPECT_EQ(show_report(record("x", row.marks), true), std::string(row.look) + "x\033[0m\n");
    EXPECT_EQ(show_report(record("x"), true), "x\n");
}

TEST(ShowReport, NamesTheDrawing) {
    EXPECT_EQ(show_report(record("</Image=Images\\Flanges\\WeldNeckFlange.bmp/>"), false),
              "[Drawing: WeldNeckFlange]\n");
    EXPECT_EQ(show_report(record("</Image=odd/>"), false), "</Image=odd/>\n");
}

} // namespace
} // namespace tarvane::app
