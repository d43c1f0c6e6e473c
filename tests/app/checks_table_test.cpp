// The table of checks that ends a component's output: its line with the verdict, its rows, its width.
#include "document/checks_table.h"

#include "check_rows.h"
#include "values/text.h"

#include <algorithm>
#include <sstream>

namespace tarvane::app {

using namespace vessel;
namespace {

const std::string THIN =
    "[[shell]]\ndescription = \"top\"\nP = 10\nT = 200\nS = 20000\nSa = 20000\n"
    "t = 0.18\nkind = \"torispherical\"\nD = 100\nL = 100\nr = 7\n";

ChecksTable table_of(const std::string& toml) {
    set_data_folder(TARVANE_DATA_DIR);
    const ReadResult input = read_input(toml);
    EXPECT_TRUE(input.faults.empty()) << fault_line("f", input.faults.front());
    const Element& element = *input.request.elements.at(0);
    const auto outcome = element.calculate(input.request);
    return checks_table(element, *outcome, input.request.units);
}

const CheckRow& row_of(const ChecksTable& table, std::string_view label,
                       std::string_view load_case = {}) {
    for (const CheckRow& row : table.rows)
        if (row.label == label && (load_case.empty() || row.load_case == load_case)) return row;
    ADD_FAILURE() << "no row " << label;
    return table.rows.at(0);
}

TEST(ChecksTable, NamesTheGoverningCheck) {
    const ChecksTable table = table_of(FLANGE_TOML);
    EXPECT_TRUE(table.passes);
    EXPECT_EQ(table.headline.rfind("flange 1 (test flange): governing check: ", 0), 0u)
        << table.headline;
    // It is the first row that isn't good practice alone, with its ratio.
    const auto first = std::find_if(table.rows.begin(), table.rows.end(),
                                    [](const CheckRow& row) { return row.tone != Tone::advice; });
    ASSERT_NE(first, table.rows.end());
    EXPECT_NE(table.headline.find(first->label + ", " +
                                  (first->load_case.empty() ? "" : first->load_case + ", ") +
                                  first->ratio),
              std::string::npos)
        << table.headline;
}

TEST(ChecksTable, OfAFailureCountsTheOthers) {
    const ChecksTable table = table_of(with("P", "P = 5000"));
    EXPECT_FALSE(table.passes);
    const auto bad = std::count_if(table.rows.begin(), table.rows.end(),
                                   [](const CheckRow& row) { return row.tone == Tone::bad; });
    EXPECT_GT(bad, 1);
    EXPECT_NE(table.headline.find("; " + std::to_string(bad) + " checks fail or were not made"),
              std::string::npos);
    for (long i = 0; i < bad; ++i)
        EXPECT_EQ(table.rows[static_cast<std::size_t>(i)].tone, Tone::bad);
    EXPECT_EQ(text_of(table, false).rfind("\nFAIL  flange 1 (test flange): ", 0), 0u);
}

TEST(ChecksTable, ShowsWaivedAndUnmadeOnes) {
    const ChecksTable unmade = table_of(THIN);
    EXPECT_FALSE(unmade.passes);
    EXPECT_EQ(unmade.headline,
              "shell 1 (top): governing check: thickness of a thin head, not made");
    EXPECT_EQ(unmade.rows[0].state, "not made");
    EXPECT_NE(unmade.rows[0].remark.find("it needs Sy"), std::string::npos);
    EXPECT_EQ(unmade.rows[0].ratio, "");
    const ChecksTable waived = table_of(THIN + "waive = [\"head_1_4f\"]\n");
    EXPECT_TRUE(waived.passes);
    EXPECT_NE(waived.headline.find("; waived: head_1_4f"), std::string::npos);
    EXPECT_EQ(row_of(waived, "thickness of a thin head").state, "waived");
    EXPECT_EQ(row_of(waived, "thickness of a thin head").tone, Tone::quiet);
}

TEST(ChecksTable, HasFiguresInTheUnitsOfTheFile) {
    const ChecksTable table = table_of(FLANGE_TOML);
    const CheckRow& area = row_of(table, "bolt area");
    EXPECT_EQ(area.relation, ">=");
    EXPECT_EQ(area.demand, "5.028");
    EXPECT_EQ(area.unit, "in²");
    EXPECT_EQ(area.paragraph, "2-5");
    EXPECT_EQ(row_of(table, "bolt stress", "gasket seating").relation, "<=");
    EXPECT_EQ(row_of(table, "pressure rating").state, "not asked");
    EXPECT_EQ(table.rows.back().state, "not asked");
}

TEST(ChecksTable, OfAWarningPassesAndSaysSo) {
    const ChecksTable table = table_of(with("Go", "Go = 15.5", with("n", "n = 16")));
    EXPECT_TRUE(table.passes);
    EXPECT_EQ(row_of(table, "gasket within its face and the bolt circle").state, "warning");
    EXPECT_EQ(row_of(table, "gasket within its face and the bolt circle").tone, Tone::advice);
    EXPECT_TRUE(table.headline.ends_with("; warning: gasket within its face and the bolt circle"))
        << table.headline;
}

TEST(ChecksTable, NamesTheAdviceThatIsExceeded) {
    const ChecksTable table = table_of(with("n", "n = 14"));
    EXPECT_TRUE(table.passes);
    EXPECT_EQ(row_of(table, "number of bolts, a multiple of four").state, "advice");
    EXPECT_TRUE(table.headline.ends_with("; advice exceeded: number of bolts, a multiple of four"))
        << table.headline;
}

// A failure by less than the digits of its figures shows more of them.
TEST(ChecksTable, ShowsTheDigitsThatDecide) {
    const auto text = at("t", "[[shell]]\nP = 100\nT = 200\nS = 20000\nSa = 20000\nt = 0.2\n"
                              "kind = \"cylinder\"\nD = 40\n");
    const float t = *judged(text(0.2f)).find("required_thickness")->demand();
    const ChecksTable table = table_of(text(t * 0.9998f));
    const CheckRow& row = row_of(table, "required thickness");
    EXPECT_EQ(row.state, "fail");
    EXPECT_NE(row.demand, row.limit);
    EXPECT_EQ(row.ratio, "1.0002");
    EXPECT_EQ(row.paragraph, "UG-27(c)(1)");
}

// Paragraphs are those of the code.
TEST(ChecksTable, NamesTheParagraphsOfTheCode) {
    const auto paragraph = [](const std::string& code, std::string_view label) {
        return row_of(table_of(FLANGE_TOML + "code = \"" + code + "\"\n"), label).paragraph;
    };
    EXPECT_EQ(paragraph("VIII-1", "radial flange stress"), "2-8");
    EXPECT_EQ(paragraph("VIII-2", "radial flange stress"), "4.16.8");
    EXPECT_EQ(paragraph("EN 13445", "radial flange stress"), "11.5.4");
    EXPECT_EQ(paragraph("PD 5500", "bolt area"), "3.8.3");
    EXPECT_EQ(paragraph("EN 13445", "pressure rating"), "");
}

TEST(ChecksTable, FitsItsColumns) {
    for (const std::string& toml :
         {FLANGE_TOML + "rigidity = true\n", FLANGE_TOML + "code = \"EN 13445\"\n",
          "units = \"SI\"\n" + THIN, THIN,
          std::string("[[external]]\nP_external = 15\nT = 300\nchart = \"CS-2\"\nt = 0.5\n"
                      "kind = \"elliptical\"\nD = 96\nk = 2\n"),
          std::string("[[mdmt]]\ncurve = \"B\"\ntg = 1.0\n")}) {
        const std::string text = text_of(table_of(toml), false);
        EXPECT_EQ(text.find('\033'), std::string::npos);
        std::istringstream lines(text);
        for (std::string line; std::getline(lines, line);) {
            EXPECT_LE(characters(line), 100u) << line;
            EXPECT_TRUE(line.empty() || line.back() != ' ') << '|' << line << '|';
        }
    }
}

TEST(ChecksTable, OnlyPassIsGreen) {
    const ChecksTable table = table_of(THIN + "waive = [\"head_1_4f\"]\n");
    const std::string text = text_of(table, true);
    EXPECT_NE(text.find("\033[1;32mPASS\033[0m  shell 1 (top)"), std::string::npos);
    EXPECT_NE(text.find("\033[32mpass\033[0m"), std::string::npos);
    EXPECT_EQ(text.find("\033[32mwaived"), std::string::npos);
    const std::string unmade = text_of(table_of(THIN), true);
    EXPECT_NE(unmade.find("\033[1;31mFAIL\033[0m"), std::string::npos);
    EXPECT_NE(unmade.find("\033[1;31mnot made\033[0m"), std::string::npos);
}

} // namespace
} // namespace tarvane::app
