// Gaskets by name: m and y of the gasket table.
#include "app_fixture.h"
#include "catalogue/data_folder.h"
#include "catalogue/gaskets.h"
#include "components/calculation.h"
#include "document/document.h"
#include "surface/result_json.h"
#include "values/text.h"

#include <algorithm>
#include <cmath>

namespace tarvane::app {
namespace {

constexpr std::size_t M = 25, Y = 26;

// FLANGE_TOML with these lines in place of m and y.
std::string with_gasket(const std::string& lines) {
    return with("m", "", with("y", "", FLANGE_TOML)) + "bolt_size = \"nearest\"\n" + lines;
}

// The same in SI units, of the numbers as they are.
std::string in_si(const std::string& toml) {
    return "[units]\nbase = \"US\"\nthickness = { factor = 25.4, label = \"mm\" }\n"
           "stress = { factor = 0.00689475729, label = \"MPa\" }\n" +
           toml;
}

std::string origin(const FlangeInput& flange, std::string_view key) {
    return flange.origins.at(key).from;
}

TEST(GasketTable, GivesFactorAndSeatingStress) {
    const FlangeInput flange =
        flange_of(with_gasket("gasket = { type = \"spiral wound, stainless\" }\n"));
    EXPECT_EQ(flange.record[M], 3.0f);
    EXPECT_EQ(flange.record[Y], 10000.0f);
    EXPECT_EQ(origin(flange, "m"), "gasket table: spiral wound, stainless");
    EXPECT_EQ(origin(flange, "y"), "gasket table: spiral wound, stainless");
    EXPECT_EQ(origin(flange, "gasket.type"), "file");
    const FlangeInput jacketed =
        flange_of(with_gasket("gasket.type = \"Flat-jacketed, soft Steel\"\n"));
    EXPECT_EQ(jacketed.record[M], 3.75f);
    EXPECT_EQ(jacketed.record[Y], 7600.0f);
}

// 69 N/mm2 are not 10 000 psi: each unit has a column of its own.
TEST(GasketTable, HasAColumnForEachUnit) {
    const ReadResult result =
        read_input(in_si(with_gasket("gasket.type = \"spiral wound, stainless\"\n")));
    ASSERT_TRUE(result.faults.empty()) << fault_line("f", result.faults[0]);
    const FlangeInput& flange = *flanges_of(result.request).front();
    EXPECT_EQ(flange.record[Y], 69.0f / 0.00689475729f);
    EXPECT_NE(flange.record[Y], 10000.0f);
    EXPECT_EQ(result.request.units.to_file(flange.record[Y], Quantity::stress), 69.0f);
}

TEST(GasketTable, LeavesWhatTheFileGives) {
    const FlangeInput flange =
        flange_of(with_gasket("m = 2.5\ngasket = { type = \"spiral wound, stainless\" }\n"));
    EXPECT_EQ(flange.record[M], 2.5f);
    EXPECT_EQ(flange.record[Y], 10000.0f);
    EXPECT_EQ(origin(flange, "m"), "file");
    const FlangeInput both =
        flange_of(with_gasket("gasket = { type = \"grooved metal, stainless\", y = 10100 }\n"));
    EXPECT_EQ(both.record[M], 4.25f);
    EXPECT_EQ(both.record[Y], 10100.0f);
}

// psi that no public copy shows are approximate, and are called so wherever they are used.
TEST(GasketTable, NamesItsApproximateFigures) {
    const std::string grooved = with_gasket("gasket.type = \"grooved metal, stainless\"\n");
    const FlangeInput flange = flange_of(grooved);
    EXPECT_EQ(flange.record[Y], 10100.0f);
    EXPECT_EQ(origin(flange, "y"), "gasket table: grooved metal, stainless, approximate");
    EXPECT_EQ(origin(flange, "m"), "gasket table: grooved metal, stainless");
    EXPECT_EQ(flange.figures,
              (OwnFigures{{"y of the gasket \"grooved metal, stainless\", 10100 psi",
                           "general knowledge of the psi column of Table 2-5.1, without a public "
                           "copy"}}));
    // Not the column in N/mm2, nor what is published or given.
    const FlangeInput published =
        flange_of(with_gasket("gasket.type = \"spiral wound, stainless\"\n"));
    EXPECT_TRUE(published.figures.empty());
    EXPECT_EQ(origin(published, "y"), "gasket table: spiral wound, stainless");
    EXPECT_TRUE(flange_of(grooved + "y = 10100\n").figures.empty());
    const ReadResult si = read_input(in_si(grooved));
    ASSERT_TRUE(si.faults.empty());
    EXPECT_TRUE(flanges_of(si.request).front()->figures.empty());
    EXPECT_EQ(si.request.units.to_file(flanges_of(si.request).front()->record[Y], Quantity::stress),
              69.5f);
}

TEST(GasketTable, NamesTheNearest) {
    EXPECT_EQ(
        fault_lines(with_gasket("gasket.type = \"spiral wound, stainles\"\n")),
        std::vector<std::string>{
            "f:26: gasket.type: no gasket \"spiral wound, stainles\" in the gasket table; the "
            "nearest is spiral wound, stainless; tarvane gaskets lists them"});
    const auto faults = fault_lines(with_gasket("gasket.type = 3\n"));
    ASSERT_EQ(faults.size(), 1u);
    EXPECT_NE(faults[0].find("a text of up to 40 characters is expected, not 3"), std::string::npos)
        << faults[0];
}

// A name of its own for each line, within the key's width; the figures of its two columns are within rounding of each
// other.
TEST(GasketTable, IsSound) {
    std::vector<std::string> names;
    for (const Gasket& gasket : gaskets()) {
        names.push_back(folded(gasket.name));
        EXPECT_LE(gasket.name.size(), 40u) << gasket.name;
        EXPECT_EQ(find_gasket(gasket.name), &gasket);
        const float converted = gasket.y_us * 0.00689475729f;
        EXPECT_NEAR(converted, gasket.y_metric, 0.06f + 0.002f * converted) << gasket.name;
        EXPECT_EQ(std::fmod(gasket.y_us, 100.0f), 0.0f) << gasket.name;
    }
    EXPECT_EQ(std::count_if(gaskets().begin(), gaskets().end(),
                            [](const Gasket& gasket) { return gasket.y_us_published; }),
              5);
    std::sort(names.begin(), names.end());
    EXPECT_EQ(std::adjacent_find(names.begin(), names.end()), names.end());
}

using GasketProgramTest = ProgramTest;

TEST_F(GasketProgramTest, Lists) {
    const ProgramRun all = run("gaskets");
    EXPECT_EQ(all.status, 0);
    EXPECT_EQ(static_cast<std::size_t>(std::count(all.out.begin(), all.out.end(), '\n')),
              gaskets().size() + 5);
    const ProgramRun spiral = run("gaskets \"spiral wound\"");
    EXPECT_NE(
        spiral.out.find("spiral wound, stainless                     3.00     10000      69.0\n"),
        std::string::npos)
        << spiral.out;
    EXPECT_EQ(spiral.out.find("ring joint"), std::string::npos);
    EXPECT_EQ(spiral.out.find("~"), std::string::npos);
    const ProgramRun ring = run("gaskets ring");
    EXPECT_NE(
        ring.out.find("ring joint, stainless                       6.50   ~ 26000     179.0\n"),
        std::string::npos)
        << ring.out;
    EXPECT_NE(ring.out.find("\n~ Approximate: general knowledge of the psi column of Table 2-5.1, "
                            "without a public copy.\n"),
              std::string::npos);
    const ProgramRun none = run("gaskets spirl");
    EXPECT_EQ(none.status, 2);
    EXPECT_EQ(none.out, "");
    EXPECT_NE(none.err.find("no gasket \"spirl\" in the gasket table"), std::string::npos);
}

TEST_F(GasketProgramTest, CallsAnApproximateFigureSoAtTheEnd) {
    const std::string grooved = with_gasket("gasket.type = \"grooved metal, stainless\"\n");
    const std::string out = run("run --plain " + write("f.toml", grooved)).out;
    EXPECT_NE(out.find("\nApproximate figures of the program were used (y of the gasket \"grooved "
                       "metal, stainless\", 10100 psi): hold them against a licensed copy of the "
                       "standard.\n"),
              std::string::npos)
        << out;
    EXPECT_NE(out.find("\nFigures of the program:\n  y of the gasket \"grooved metal, stainless\", "
                       "10100 psi: approximate: general knowledge of the psi column of Table "
                       "2-5.1, without a public copy\n"),
              std::string::npos)
        << out;
    EXPECT_EQ(
        run("run --plain " + write("g.toml", grooved + "y = 10100\n")).out.find("of the program"),
        std::string::npos);
}

TEST(GasketTable, ApproximateFiguresAreInTheResult) {
    set_data_folder(TARVANE_DATA_DIR);
    const auto result_of = [](const std::string& toml) {
        const ReadResult read = read_input(toml);
        return result_json(read.request, calculate(read.request), {});
    };
    const std::string grooved = with_gasket("gasket.type = \"grooved metal, stainless\"\n");
    EXPECT_NE(
        result_of(grooved).find(
            R"("figures":[{"item":"y of the gasket \"grooved metal, stainless\", 10100 psi",)"
            R"("status":"approximate","source":"general knowledge of the psi column of Table )"
            R"(2-5.1, without a public copy"}])"),
        std::string::npos)
        << result_of(grooved);
    EXPECT_EQ(result_of(grooved + "y = 10100\n").find("\"figures\""), std::string::npos);
}

TEST(GasketTable, ApproximateFiguresAreInTheDocument) {
    set_data_folder(TARVANE_DATA_DIR);
    const ReadResult read = read_input(with_gasket("gasket.type = \"grooved metal, stainless\"\n"));
    const CalculationDocument document =
        make_document(read.request, calculate(read.request), {}, Detail::checks);
    const auto assumptions =
        std::find_if(document.opening.begin(), document.opening.end(),
                     [](const DocumentSection& section) { return section.id == "assumptions"; });
    ASSERT_NE(assumptions, document.opening.end());
    const auto* list = std::get_if<DocumentList>(&assumptions->blocks.at(0));
    ASSERT_NE(list, nullptr);
    EXPECT_NE(
        std::find(list->items.begin(), list->items.end(),
                  "A figure of the program is approximate: y of the gasket \"grooved metal, "
                  "stainless\", 10100 psi; general knowledge of the psi column of Table 2-5.1, "
                  "without a public copy"),
        list->items.end());
    bool front = false;
    for (const Block& block : document.front.open_points) {
        const auto* points = std::get_if<Remark>(&block);
        front = front || (points != nullptr &&
                          points->text.find("figure of the program (y of the gasket \"grooved "
                                            "metal, stainless\", 10100 psi)") != std::string::npos);
    }
    EXPECT_TRUE(front);
}

} // namespace
} // namespace tarvane::app
