// The program itself, as a user runs it.
#include "app_fixture.h"
#include "catalogue/data_folder.h"
#include "commands/run.h"
#include "components/flange_session.h"
#include "document/report_view.h"

#include <set>

namespace tarvane::app {

using namespace vessel;
namespace {

using Program = ProgramTest;

const std::string EXAMPLES = std::string(TARVANE_SOURCE_DIR) + "/examples/";

TEST_F(Program, ExamplesAreFine) {
    for (const char* name :
         {"weld_neck_nps12", "loose_ring", "en_13445_dn300", "material_files", "standard_flange"}) {
        const ProgramRun result = run("run " + EXAMPLES + name + ".toml");
        EXPECT_EQ(result.status, 0) << name << '\n' << result.err;
        EXPECT_EQ(result.err, "") << name;
        EXPECT_NE(result.out.find("Flange Stress Analysis Results"), std::string::npos) << name;
        EXPECT_NE(result.out.find("MAWP"), std::string::npos) << name;
    }
}

TEST_F(Program, ShowsTheUnitsOfTheFile) {
    const ProgramRun result = run("run " + EXAMPLES + "en_13445_dn300.toml");
    for (const char* line : {"Design Pressure                            P            1.00  MPa",
                             "Design Temperature                                       150  °C",
                             "Flange Outside Diameter                    A         460.000  mm",
                             "Flange Thickness                           e         28.0000  mm"})
        EXPECT_NE(result.out.find(line), std::string::npos) << line;
}

// A flange of the same size in inches and in millimetres gets the same results.
TEST_F(Program, UnitsDoNotChangeTheResults) {
    const ReadResult us = read_input(FLANGE_TOML);
    std::ostringstream si;
    si.precision(9);
    si << "units = \"SI\"\n[[flange]]\n";
    for (const Key& key : flange_keys().keys) {
        if (key.place != Place::record || key.index == 53) continue;
        const float value = flanges_of(us.request)[0]->record[static_cast<std::size_t>(key.index)];
        if (key.quantity == Quantity::flag || !key.group.empty()) continue;
        if (key.quantity == Quantity::choice || key.quantity == Quantity::whole) {
            if (value != 0.0f) si << key.name << " = " << static_cast<int>(value) << '\n';
        } else if (value != 0.0f) {
            si << key.name << " = " << std::showpoint << si_units().to_file(value, key.quantity)
               << std::noshowpoint << '\n';
        }
    }
    const ReadResult metric = read_input(si.str());
    ASSERT_TRUE(metric.faults.empty()) << fault_line("f", metric.faults[0]) << si.str();
    set_data_folder(TARVANE_DATA_DIR);
    const FlangeOutcome a = run_flange(*flanges_of(us.request)[0], us.request),
                        b = run_flange(*flanges_of(metric.request)[0], metric.request);
    EXPECT_GT(a.mawp, 0.0f);
    EXPECT_NEAR(b.mawp / a.mawp, 1.0f, 1e-4f);
    for (int element = 120; element <= 128; ++element)
        EXPECT_NEAR(b.result(element) / a.result(element), 1.0f, 1e-5f) << element;
}

TEST_F(Program, OverstressedFlangeFails) {
    const std::string file = write("thin.toml", with("t", "t = 0.75"));
    const ProgramRun result = run("run " + file);
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.err.find(
                  "flange 1 (test flange): the radial flange stress, gasket seating, 47118.34 psi, "
                  "exceeds its allowable 20000.00 psi\n"),
              std::string::npos)
        << result.err;
    // The message box of the engine comes once.
    const std::string box =
        "flange 1 (test flange): Warning: Actual Flange Stress Exceeds Allowable!";
    const std::size_t first = result.err.find(box);
    EXPECT_NE(first, std::string::npos) << result.err;
    EXPECT_EQ(result.err.find(box, first + 1), std::string::npos);
}

TEST_F(Program, BoltAreaFails) {
    const std::string file = write("bolts.toml", with("Gi", "Gi = 13.25"));
    const ProgramRun result = run("run " + file);
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.err.find("the bolt area 5.028 in² is below the required 5.440 in²"),
              std::string::npos)
        << result.err;
}

TEST_F(Program, PressureAboveTheMawpFails) {
    const std::string file = write("pressure.toml", with("P", "P = 900"));
    const ProgramRun result = run("run " + file);
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.err.find(" is below the design pressure 900.00 psig"), std::string::npos)
        << result.err;
}

TEST_F(Program, FaultsAreBadInputAndNothingIsWritten) {
    const std::string file = write("faults.toml", with("P", "P = \"ten\"") + "Gox = 3\n");
    const ProgramRun result = run("run " + file + " --report " + path("report"));
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err,
              file +
                  ":4: P: a number in psig is expected, not the text \"ten\" (design pressure, "
                  "negative for external pressure)\n" +
                  file +
                  ":27: Gox: unknown key; the nearest is Go, gasket outside "
                  "diameter\n");
    EXPECT_FALSE(std::filesystem::exists(path("report")));
}

// The engine would take a thickness of 2 inches, divide by such an efficiency, add to the wall.
TEST_F(Program, ValuesThatTheEngineTakesOtherwiseAreFaults) {
    struct Case {
        const char *key, *line, *fault;
    };
    const Case cases[] = {{"t", "t = -1", "f:8: t: it must be above 0"},
                          {"t", "t = 0", "f:8: t: it must be above 0"},
                          {"E", "E = 2", "f:27: E: a joint efficiency up to 1 is expected"},
                          {"E", "E = 0", "f:27: E: it must be above 0"},
                          {"ci", "ci = -0.1", "f:27: ci: it must not be below 0"},
                          {"ce", "ce = -0.1", "f:27: ce: it must not be below 0"}};
    for (const Case& c : cases)
        EXPECT_EQ(fault_lines(with(c.key, c.line)), std::vector<std::string>{c.fault});
}

TEST_F(Program, RefusedInputIsBadInput) {
    const std::string file = write("refused.toml", with("A", "A = 11"));
    const ProgramRun result = run("run " + file);
    EXPECT_EQ(result.status, 2);
    EXPECT_NE(result.err.find("flange 1 (test flange): ERROR - Outside Diameter,"),
              std::string::npos)
        << result.err;
    EXPECT_NE(result.out.find("Number of fatal errors: "), std::string::npos);
}

TEST_F(Program, MissingFileIsBadInput) {
    const ProgramRun result = run("run " + path("none.toml"));
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.err, "tarvane: cannot read " + path("none.toml") + '\n');
    EXPECT_EQ(run("run " + folder.string()).status, 2);
}

TEST_F(Program, WrongCommandLineIsBadInput) {
    EXPECT_EQ(run("").status, 2);
    EXPECT_EQ(run("run").status, 2);
    EXPECT_EQ(run("walk").status, 2);
    EXPECT_EQ(run("run --colour pink x.toml").status, 2);
    EXPECT_EQ(run("--help").status, 0);
    EXPECT_EQ(run("--version").out, "1.0.0\n");
}

// The corroded bore grows over the outside diameter: the input check tests B as given, so the
// kernel stops the run.
TEST_F(Program, StopOfTheEngine) {
    std::string ring = with("type", "type = \"loose ring\"");
    for (const char* key : {"g0", "g1", "h"})
        ring = with(key, "", ring);
    ring = with("Fid", "Fid = 7", with("ci", "ci = 3.6", ring)); // a ring may overlap its face
    const std::string file = write("stop.toml", FLANGE_TOML + ring);
    const ProgramRun result = run("run " + file + " --report " + path("report"));
    EXPECT_EQ(result.status, 3) << result.err;
    EXPECT_EQ(result.err, "flange 2 (test flange): the engine stopped with code 25: the outside "
                          "diameter is not above the corroded inside diameter\n"
                          "tarvane: " +
                              path("report") +
                              " is not written: the calculation was not completed\n");
    EXPECT_FALSE(std::filesystem::exists(path("report")));
}

TEST_F(Program, ReportFileHoldsTheRecordsOfAllFlanges) {
    const std::string file =
        write("two.toml", FLANGE_TOML + with("description", "description = \"second\""));
    ASSERT_EQ(run("run " + file + " --plain --report " + path("report")).status, 0);
    const std::string report = read(path("report"));
    const std::size_t first = report.find("Description: test flange");
    const std::size_t second = report.find("Description: second");
    ASSERT_NE(first, std::string::npos);
    ASSERT_NE(second, std::string::npos);
    EXPECT_LT(first, second);
    std::istringstream records(report);
    for (std::string record; std::getline(records, record);) {
        EXPECT_TRUE(record.size() == 101 || record.size() == 113) << record;
        EXPECT_EQ(record[0], ' ');
    }
    std::set<std::string> files;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        files.insert(entry.path().filename());
    EXPECT_EQ(files, (std::set<std::string>{"two.toml", "report", "stdout", "stderr"}));
}

TEST_F(Program, ReportFileIsWrittenWhollyOrNotAtAll) {
    const std::string file = write("one.toml", FLANGE_TOML);
    const std::string nowhere = path("no/such/folder/report");
    const ProgramRun result = run("run " + file + " --report " + nowhere);
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.err, "tarvane: cannot write " + nowhere + ": No such file or directory\n");

    write("report", "older");
    EXPECT_EQ(run("run " + file + " --report " + path("report")).status, 0);
    EXPECT_NE(read(path("report")).substr(0, 5), "older");
}

TEST_F(Program, ColourOnRequestOnly) {
    const std::string file = write("one.toml", FLANGE_TOML);
    EXPECT_EQ(run("run " + file).out.find('\033'), std::string::npos); // a file, no terminal
    EXPECT_NE(run("run " + file + " --colour always").out.find("\033[1;34m"), std::string::npos);
    EXPECT_EQ(run("run " + file + " --colour always --plain").out.find('\033'), std::string::npos);
}

// Without its marks the report file is the standard output, up to the checks and results.
TEST_F(Program, OutputIsTheReportFileAndTheTables) {
    const std::string file = write("one.toml", FLANGE_TOML);
    const std::string out = run("run " + file + " --report " + path("report")).out;
    const std::string shown = show_report(read(path("report")), false);
    EXPECT_EQ(out.substr(0, shown.size()), shown);
    EXPECT_EQ(
        out.substr(shown.size()).rfind("\nPASS  flange 1 (test flange): governing check: ", 0), 0u);
    EXPECT_LT(out.find("\nPASS "), out.find("\nRated pressure: "));
    EXPECT_LT(out.find("\nRated pressure: "), out.find("\nResults "));
}

TEST_F(Program, DesignShowsWhatWasSelected) {
    std::string design = with("kind", "kind = \"design\"", with("type", "type = \"loose ring\""));
    for (const char* key : {"A", "C", "a", "n", "t", "g0", "g1", "h"})
        design = with(key, "", design);
    const ProgramRun result = run("run " + write("design.toml", design));
    EXPECT_NE(result.out.find("\nSelected design "), std::string::npos) << result.out << result.err;
    for (const char* label :
         {"Number of bolts ", "Bolt circle ", "Outside diameter ", "Thickness "})
        EXPECT_NE(result.out.find(label, result.out.find("Selected design")), std::string::npos);
    EXPECT_EQ(run("run " + write("one.toml", FLANGE_TOML)).out.find("Selected design"),
              std::string::npos);
}

TEST_F(Program, DecimalComma) {
    const ProgramRun result =
        run("run " + write("comma.toml", "decimal_comma = true\n" + FLANGE_TOML));
    EXPECT_NE(result.out.find("P          150,00  psig"), std::string::npos);
}

// The input that README shows gives the lines that it shows.
TEST_F(Program, ReadmeTellsTheTruth) {
    const std::string readme = read(std::string(TARVANE_SOURCE_DIR) + "/README.md");
    const std::size_t begin = readme.find("```toml\n") + 8;
    const std::string input = readme.substr(begin, readme.find("```", begin) - begin);
    const ProgramRun result = run("run " + write("readme.toml", input));
    EXPECT_EQ(result.status, 0) << result.err;
    const std::size_t table = readme.find("\nResults ");
    ASSERT_NE(table, std::string::npos);
    std::istringstream lines(readme.substr(table + 1, readme.find("```", table) - table - 1));
    for (std::string line; std::getline(lines, line);) {
        if (line == "...") continue;
        EXPECT_NE(result.out.find(line + '\n'), std::string::npos) << line;
    }

    const std::size_t checks = readme.find("\nPASS  ");
    ASSERT_NE(checks, std::string::npos);
    std::istringstream rows(readme.substr(checks + 1, readme.find("```", checks) - checks - 1));
    for (std::string line; std::getline(rows, line);) {
        if (line == "...") continue;
        EXPECT_NE(result.out.find(line + '\n'), std::string::npos) << line;
    }

    const ProgramRun demo = run("run " + EXAMPLES + "weld_neck_nps12.toml");
    const std::size_t formula = readme.find("Hydrostatic End Load");
    const std::string shown = readme.substr(formula, readme.find("```", formula) - formula);
    EXPECT_NE(demo.out.find(shown), std::string::npos) << shown;
}

// So do the drum and its summary.
TEST_F(Program, ReadmeShowsTheVesselOfTheExample) {
    const std::string readme = read(std::string(TARVANE_SOURCE_DIR) + "/README.md");
    const std::string section = readme.substr(readme.find("\n### A vessel\n"));
    const std::string example = read(EXAMPLES + "v101.toml");
    const std::size_t toml = section.find("```toml\n") + 8;
    std::istringstream given(section.substr(toml, section.find("```", toml) - toml));
    for (std::string line; std::getline(given, line);)
        EXPECT_NE(example.find(line + '\n'), std::string::npos) << line;
    const std::size_t shown = section.find("\nVessel: ");
    const std::string summary = section.substr(shown, section.find("```", shown) - shown);
    const ProgramRun drum = run("run " + EXAMPLES + "v101.toml");
    EXPECT_EQ(drum.status, 0);
    EXPECT_NE(drum.out.find(summary), std::string::npos) << summary;
}

TEST_F(Program, ListsEveryKey) {
    const ProgramRun result = run("keys");
    EXPECT_EQ(result.status, 0);
    for (const Key& key : flange_keys().keys)
        EXPECT_NE(result.out.find('\n' + std::string(key.name) + ' '), std::string::npos)
            << key.name;
}

// ---- what one flange leaves must not reach the next ----------------------------------------------------

std::string reports(const std::string& toml) {
    const ReadResult input = read_input(toml);
    std::string all;
    for (const auto& element : input.request.elements)
        all += element->calculate(input.request)->report;
    return all;
}

TEST(Session, FlangesDoNotReachEachOther) {
    set_data_folder(TARVANE_DATA_DIR);
    const std::string div2 = FLANGE_TOML + "code = 2\n";
    const std::string a98 = FLANGE_TOML + "edition = \"A98\"\nrigidity = true\n";
    const std::string older = div2 + "edition = \"older\"\n";
    const std::string plain = FLANGE_TOML;
    EXPECT_EQ(reports(div2 + a98 + older + plain),
              reports(div2) + reports(a98) + reports(older) + reports(plain));
}

TEST(Session, EditionsNameThemselves) {
    set_data_folder(TARVANE_DATA_DIR);
    const auto has = [](const std::string& more, const char* line) {
        return reports(FLANGE_TOML + more).find(line) != std::string::npos;
    };
    EXPECT_TRUE(has("", "ASME Code, Section VIII Division 1, 2017"));
    EXPECT_TRUE(
        has("edition = \"A98\"\n", "ASME Code, Section VIII Division 1, 1998, Code A-98 Addenda"));
    EXPECT_TRUE(has("code = 2\n", "ASME Code, Section VIII Division 2, 2017"));
    EXPECT_TRUE(
        has("code = 2\nedition = \"older\"\n", "ASME Code, Section VIII, Division 2, 2004, A-06"));
    EXPECT_TRUE(has("code = 3\n", "PD 5500:2018+A1:2018, Section 3.8"));
    EXPECT_TRUE(has("code = 4\n", "European Std: EN 13445-3:2014"));
}

TEST(Session, MaterialsNodesAndClassReachTheReport) {
    set_data_folder(TARVANE_DATA_DIR);
    const std::string report = reports(FLANGE_TOML + std::string(R"(
material = "SA-105"
material_name = "SA-105 forging, normalised"
bolt_material_name = "SA-193 B7 stud bolts"
from_node = "10"
to_node = "20"
standard_flange = true
class = "150"
grade = "GR 1.1"
)"));
    for (const char* text : {"SA-105  SA-105 forging, normalised", "SA-193 B7 stud bolts",
                             "Item: Node 10 to 20", "GR 1.1"})
        EXPECT_NE(report.find(text), std::string::npos) << text;
}

} // namespace
} // namespace tarvane::app
