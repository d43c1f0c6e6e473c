// `tarvane data`: a user's own tables by the documented steps, from the plain layout to a run that names them.
#include "app_fixture.h"
#include "catalogue/data_folder.h"
#include "components/calculation.h"
#include "document/document.h"
#include "document/html.h"
#include "test_paths.h"
#include "vessel/vessel_fixture.h"

namespace tarvane::app {
namespace {

namespace fs = std::filesystem;

constexpr int NEW_MATERIALS = 49;

// The charts in turn: MADE-1 has HA-1, MADE-3 HA-3, MADE-4 HA-1.
std::string chart_of(int i) { return "HA-" + std::to_string((i - 1) % 3 + 1); }

// Invented round figures of 50 materials: 49 new ones, and one that is shipped, which has two rows. MPa and degrees C.
std::string plain_table() {
    std::string text = "# invented\n"
                       "material,form,uns,composition,tensile,yield,chart,40,100,150,200,300,400\n";
    for (int i = 1; i <= NEW_MATERIALS; ++i) {
        const int S = 100 + i;
        const auto number = [](double x) { return std::to_string(x); };
        text += "MADE-" + std::to_string(i) + ",Plate,S99999,Made-up steel," + number(3.5 * S) +
                ',' + number(1.5 * S) + ',' + chart_of(i) + ',';
        for (const int less : {0, 0, 5, 10, 20, 30})
            text += std::to_string(S - less) + (less == 30 ? "\n" : ",");
    }
    return text + "SA-240 304,,,,,,,138,137,130,126,116,107\n"
                  "SA-240 304,,,,,,,138,113,103,95,86,79\n";
}

constexpr const char* CHARTS = "chart,temperature,modulus,tolerance,fit,status,source,note\n"
                               "HA-1,100,28.0,,,published,invented,\n"
                               "HA-1,400,26.0,,,published,invented,\n"
                               "HA-2,100,28.0,,,published,invented,\n"
                               "HA-3,100,28.0,,,published,invented,\n";
constexpr const char* POINTS = "chart,temperature,a,b,source\n"
                               "HA-1,100,1.0e-5,140,invented\n"
                               "HA-1,100,4.0e-4,5600,invented\n"
                               "HA-1,100,1.0e-2,12000,invented\n"
                               "HA-1,100,1.0e-1,12000,invented\n"
                               "HA-1,400,1.0e-5,130,invented\n"
                               "HA-1,400,4.0e-4,5200,invented\n"
                               "HA-1,400,1.0e-2,9000,invented\n"
                               "HA-1,400,1.0e-1,9000,invented\n"
                               "HA-2,100,1.0e-5,140,invented\n"
                               "HA-2,100,5.0e-4,7000,invented\n"
                               "HA-2,100,2.0e-2,15000,invented\n"
                               "HA-2,100,1.0e-1,15000,invented\n"
                               "HA-3,100,1.0e-5,140,invented\n"
                               "HA-3,100,4.0e-4,5600,invented\n"
                               "HA-3,100,1.0e-2,10000,invented\n"
                               "HA-3,100,1.0e-1,10000,invented\n";
constexpr const char* EDITION = "Made-up tables, edition 7";

class OwnData : public ProgramTest {
  protected:
    OwnData() {
        write("plain.csv", plain_table());
        fs::create_directories(path("own"));
    }
    ProgramRun import(const std::string& options = "--stress MPa --temperature C") const {
        return run("data import " + path("plain.csv") + ' ' + path("own") + " --edition '" +
                   EDITION + "' " + options);
    }
    void with_charts() const {
        write("own/charts.csv", CHARTS);
        write("own/chart_points.csv", POINTS);
    }
    ProgramRun check(const std::string& options = "") const {
        return run("data check " + path("own") + options);
    }
    ProgramRun build() const { return run("data build " + path("own") + ' ' + path("out")); }
};

TEST_F(OwnData, OfFiftyMaterialsAndThreeChartsIsUsedAndNamed) {
    const ProgramRun imported = import();
    ASSERT_EQ(imported.status, 0) << imported.err;
    EXPECT_EQ(imported.out, "51 rows into materials_viii1.csv of " + path("own") +
                                ", 49 of names that are not shipped\n");
    EXPECT_EQ(read(path("own/edition.txt")), std::string(EDITION) + '\n');
    with_charts();
    const ProgramRun checked = check();
    ASSERT_EQ(checked.status, 0) << checked.err;
    for (const char* line : {"materials_viii1.csv                 51 rows\n",
                             "charts.csv                           4 rows\n",
                             "HA-1 to 400 F: largest error of the fit +0.00 % at A = "})
        EXPECT_NE(checked.out.find(line), std::string::npos) << line << checked.out;
    const ProgramRun made = build();
    ASSERT_EQ(made.status, 0) << made.err;

    // What is shipped is there still, and SA-240 304 has the figures of the user.
    const ProgramRun list = run("materials --data " + path("out"));
    EXPECT_NE(list.out.find("\nSA-516 70"), std::string::npos);
    EXPECT_NE(list.out.find("\nMADE-49"), std::string::npos);
    EXPECT_NE(list.out.find(std::string("\nData files: ") + EDITION), std::string::npos);
    // 300 F between 100 and 150 C, 700 F between 300 and 400 C.
    const ProgramRun steel = run("materials 'SA-240 304' --data " + path("out"));
    EXPECT_NE(steel.out.find("        300                18.88\n"), std::string::npos) << steel.out;
    EXPECT_NE(steel.out.find("        700                11.75\n"), std::string::npos) << steel.out;
    EXPECT_NE(steel.out.find(std::string("Edition                         ") + EDITION),
              std::string::npos);
    const ProgramRun charts = run("chart --data " + path("out"));
    for (const char* line :
         {"\nHA-3: published, Made-up tables, edition 7: invented\n", "\nCS-1: published"})
        EXPECT_NE(charts.out.find(line), std::string::npos) << line << charts.out;

    for (const std::string& command :
         {std::string("materials 'SA-240 304'"), std::string("chart HA-1 -T 200"),
          std::string("chart"), std::string("flanges"), std::string("flanges 150"),
          std::string("flanges 150 4"), std::string("bolts"), std::string("bolts UNC"),
          std::string("mdmt -t 1 --ratio 0.8 --material 'SA-516 70'")})
        EXPECT_NE(run(command + " --data " + path("out"))
                      .out.find(std::string("\nData files: ") + EDITION + '\n'),
                  std::string::npos)
            << command;
}

// Components of a request, for an input file and for the library.
struct Component {
    std::string table;
    std::vector<std::pair<std::string, std::string>> keys;

    Component with(const std::string& key, const std::string& value) const {
        Component other = *this;
        other.keys.emplace_back(key, value);
        return other;
    }
};

std::string toml_of(const std::vector<Component>& components) {
    std::string text;
    for (const Component& c : components) {
        text += "[[" + c.table + "]]\n";
        for (const auto& [key, value] : c.keys)
            text += key + " = " + value + '\n';
    }
    return text;
}

// Components of a table follow each other.
std::string json_of(const std::vector<Component>& components) {
    std::string text = "{", table;
    for (const Component& c : components) {
        text += c.table == table ? "," : (table.empty() ? "" : "],") + ('"' + c.table + "\": [");
        table = c.table;
        std::string object;
        for (const auto& [key, value] : c.keys)
            object += (object.empty() ? "{\"" : ", \"") + key + "\": " + value;
        text += object + '}';
    }
    return text + "]}";
}

// A flange, a shell of each material, and a cylinder under vacuum on each chart.
std::vector<Component> components_of_all() {
    std::vector<Component> all;
    const auto made = [](int i) { return "\"MADE-" + std::to_string(i) + '"'; };
    Component flange{"flange", {}};
    std::istringstream lines(FLANGE_TOML);
    for (std::string line; std::getline(lines, line);) {
        const std::size_t at = line.find(" = ");
        if (at != std::string::npos && line.substr(0, 2) != "Sf")
            flange.keys.emplace_back(line.substr(0, at), line.substr(at + 3));
    }
    all.push_back(flange.with("material", made(NEW_MATERIALS)));
    const Component shell{
        "shell", {{"kind", "\"cylinder\""}, {"P", "100"}, {"T", "300"}, {"D", "60"}, {"t", "0.5"}}};
    for (int i = 1; i <= NEW_MATERIALS; ++i)
        all.push_back(shell.with("material", made(i)));
    all.push_back(shell.with("material", "\"SA-240 304\"").with("material_reference", "201"));
    const Component external{"external",
                             {{"kind", "\"cylinder\""},
                              {"P", "15"},
                              {"T", "100"},
                              {"Do", "60"},
                              {"t", "1"},
                              {"length", "90"}}};
    for (int i = 1; i <= 3; ++i)
        all.push_back(external.with("material", made(i)));
    return all;
}

TEST_F(OwnData, IsNamedWithEachOfItsItemsInARunItsReportAndItsResult) {
    ASSERT_EQ(import().status, 0);
    with_charts();
    ASSERT_EQ(build().status, 0);
    const std::vector<Component> components = components_of_all();
    ASSERT_EQ(components.size(), 1u + 50u + 3u);

    const ProgramRun result =
        run("run " + write("v.toml", toml_of(components)) + " --data " + path("out") +
            " --report " + path("report.txt") + " --json " + path("result.json"));
    EXPECT_EQ(result.status, 0) << result.err;
    std::vector<std::string> lines = {
        "\nData files: " + std::string(EDITION) + ", in " + path("out") + '\n',
        "\n  SA-240 304, 201: published, " + std::string(EDITION) + '\n'};
    for (int i = 1; i <= NEW_MATERIALS; ++i)
        lines.push_back("\n  MADE-" + std::to_string(i) + ", " + std::to_string(1000 + i) +
                        ": published, " + EDITION + '\n');
    for (int i = 1; i <= 3; ++i)
        lines.push_back("\n  " + chart_of(i) + ": published, " + EDITION + ": invented\n");
    for (const std::string& line : lines)
        EXPECT_NE(result.out.find(line), std::string::npos) << line << result.out;
    EXPECT_TRUE(read(path("report.txt")).ends_with("\nData files: " + std::string(EDITION) + '\n'));

    EXPECT_EQ(text_at(parsed(read(path("result.json")).c_str()), "data_edition"), EDITION);

    // The library, which has one data folder for the process.
    const Answer answer = Handle(path("out")).calculate(json_of(components), 0);
    set_data_folder(path("out"));
    const ReadResult input = read_input(toml_of(components));
    const std::string page =
        html_of(make_document(input.request, calculate(input.request), {}, Detail::summary));
    set_data_folder(TARVANE_DATA_DIR);
    EXPECT_NE(page.find("Edition of the data files"), std::string::npos);
    std::size_t on_page = 0;
    for (std::size_t at = page.find(EDITION); at != std::string::npos;
         at = page.find(EDITION, at + 1))
        ++on_page;
    EXPECT_GE(on_page, 1u + 50u + 3u); // that of the folder, and of each item
    ASSERT_EQ(answer.status, TARVANE_OK) << answer.error.shown();
    EXPECT_EQ(text_at(answer.result, "data_edition"), EDITION);
    std::size_t of_edition = 0;
    const Value files = at(answer.result, "data");
    for (const Value& file : *files.list()) {
        const Value used = at(file, "used");
        for (const Value& item : *used.list())
            of_edition +=
                text_at(item, "edition") == EDITION && text_at(item, "status") == "published";
    }
    EXPECT_EQ(of_edition, 50u + 3u) << answer.text;
}

TEST_F(OwnData, FaultsAreNamedByFileLineAndColumn) {
    ASSERT_EQ(import().status, 0);
    with_charts();
    std::string points = POINTS;
    points.replace(points.find("HA-2,100,2.0e-2,15000"), 21, "HA-2,100,2.0e-2,x5000");
    write("own/chart_points.csv", points);
    std::string materials = read(path("own/materials_viii1.csv"));
    materials.replace(materials.find("MADE-3,UHA"), 10, "MADE-3,UHX");
    write("own/materials_viii1.csv", materials);
    write("own/chart.csv", CHARTS);
    const ProgramRun faulty = check();
    EXPECT_EQ(faulty.status, 2);
    EXPECT_EQ(faulty.out, "");
    EXPECT_EQ(faulty.err,
              path("own") + "/chart.csv: no table of this name\n" + path("own") +
                  "/chart_points.csv:12: b: not a number: \"x5000\"\n" + path("own") +
                  "/materials_viii1.csv:5: part: not one of the words for it: \"UHX\"\n");
    EXPECT_EQ(build().status, 2);
    EXPECT_FALSE(fs::exists(path("out")));
}

// A knee that one quadratic cannot follow.
TEST_F(OwnData, ChartThatTheRowMissesIsTakenOnlyWhenToldTo) {
    write("own/edition.txt", "one\n");
    write("own/charts.csv", "chart,temperature,modulus,tolerance,fit,status,source,note\n"
                            "HA-1,100,28.0,,,published,invented,\n");
    write("own/chart_points.csv", "chart,temperature,a,b,source\nHA-1,100,1.0e-5,140,i\n"
                                  "HA-1,100,4.0e-4,5600,i\nHA-1,100,1.0e-3,8000,i\n"
                                  "HA-1,100,3.0e-3,11000,i\nHA-1,100,1.0e-2,13000,i\n"
                                  "HA-1,100,1.0e-1,13000,i\n");
    const ProgramRun refused = check();
    EXPECT_EQ(refused.status, 2);
    EXPECT_EQ(refused.err, path("own") +
                               "/charts.csv:2: tolerance: the fit misses the points by up to "
                               "+4.80 % at A = 3.000e-03, more than 1 %\n");
    EXPECT_EQ(check(" --tolerance 4.7").status, 2);
    const ProgramRun taken = check(" --tolerance 4.9");
    EXPECT_EQ(taken.status, 0) << taken.err;
    EXPECT_NE(taken.out.find("HA-1 to 100 F: largest error of the fit +4.80 % at A = 3.000e-03\n"),
              std::string::npos);
}

TEST_F(OwnData, FolderNamesItsEdition) {
    write("own/charts.csv", CHARTS);
    write("own/chart_points.csv", POINTS);
    EXPECT_EQ(check().err, path("own") +
                               "/edition.txt: missing; one line that names the edition of "
                               "these tables is expected\n");
    write("own/edition.txt", "two\nlines\n");
    EXPECT_EQ(check().err,
              path("own") + "/edition.txt:1: one line of at most 80 characters is expected\n");
    write("own/edition.txt", "one\r\n");
    EXPECT_EQ(check().status, 0);
    EXPECT_EQ(run("data check " + path("none")).err,
              "tarvane: there is no folder " + path("none") + '\n');
    EXPECT_EQ(run("data build " + path("own") + ' ' + path("own")).status, 2);
    EXPECT_FALSE(fs::exists(path("own/MATFILE1.BIN")));
}

TEST_F(OwnData, ImportKeepsUnitsAndRefusesWhatItCannotTake) {
    const auto imported = [&](const std::string& rows, const std::string& options = "") {
        write("plain.csv", rows);
        fs::remove_all(path("own"));
        return import(options);
    };
    ASSERT_EQ(imported("material,tensile,yield,100,300\nMADE-1,70,30,20.0,16.0\n").status, 0);
    // On the straight line between two temperatures, and none above the last one.
    const std::string table = read(path("own/materials_viii1.csv"));
    EXPECT_NE(table.find(",20,19,18,17,16,,"), std::string::npos) << table;
    EXPECT_NE(table.find("\n1001,MADE-1,UCS,-,-,-,"), std::string::npos) << table;
    // A second import adds, and replaces the rows of its names.
    write("plain.csv", "material,tensile,yield,100\nMADE-2,70,30,19.0\nMADE-1,70,30,18.0\n");
    ASSERT_EQ(import("").status, 0);
    const std::string both = read(path("own/materials_viii1.csv"));
    EXPECT_NE(both.find("MADE-2"), std::string::npos);
    EXPECT_EQ(both.find(",20,19,"), std::string::npos);
    EXPECT_EQ(check().status, 0) << check().err;

    EXPECT_EQ(imported("material,tensile,yield,100\nM,70,30,1x\n").err,
              "tarvane: plain.csv:2: 100: not a number: \"1x\"\n");
    EXPECT_EQ(imported("material,tensile,yield,100,200\nM,70,30,10,11\n").err,
              "tarvane: plain.csv:2: 200: higher than the figure before: 11\n");
    EXPECT_EQ(imported("material,yield,100\nM,30,10\n").err,
              "tarvane: plain.csv:2: material: a new one needs its tensile strength: \"M\"\n");
    EXPECT_EQ(imported("material,colour,100\nM,red,10\n").err,
              "tarvane: plain.csv:1: colour: no column of this table\n");
    EXPECT_EQ(imported("material,tensile\nM,70\n").err,
              "tarvane: plain.csv: no column of a temperature, \"100\" for example\n");
    EXPECT_EQ(imported("material,100\nM,10\n", "--as yield").err,
              "tarvane: plain.csv:2: material: not in materials_viii1.csv: import its stresses of "
              "Division 1 first: \"M\"\n");
    EXPECT_FALSE(fs::exists(path("own"))); // nothing is left of an import that is refused
    EXPECT_EQ(imported("material,100,200\nSA-516 70,38,34\n", "--as yield").status, 0);
    EXPECT_NE(read(path("own/yields.csv")).find("\n1,SA-516 70,"), std::string::npos);
}

// The points of the metric tables of charts, and the same ones as the customary tables have them.
TEST_F(OwnData, ChartIsImportedInEitherUnits) {
    const auto imported = [&](const std::string& rows, const std::string& options) {
        write("points.csv", rows);
        return run("data import " + path("points.csv") + ' ' + path("own") + " --edition '" +
                   EDITION + "' --as chart " + options);
    };
    const std::string metric = "chart,temperature,modulus,a,b,source\n"
                               "HA-1,40,193,1.0e-5,0.965,p. 1\nHA-1,40,193,4.0e-4,38.6,p. 1\n"
                               "HA-1,40,193,1.0e-2,80,p. 1\nHA-1,40,193,1.0e-1,80,p. 1\n"
                               "HA-1,200,180,1.0e-5,0.9,p. 2\nHA-1,200,180,4.0e-4,36,p. 2\n"
                               "HA-1,200,180,1.0e-2,60,p. 2\nHA-1,200,180,1.0e-1,60,p. 2\n";
    const ProgramRun result = imported(metric, "--stress MPa --temperature C");
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out,
              "8 points of 2 curves of 1 chart into charts.csv and chart_points.csv of " +
                  path("own") + '\n');
    EXPECT_EQ(read(path("own/edition.txt")), std::string(EDITION) + '\n');
    const std::string curves = read(path("own/charts.csv")),
                      points = read(path("own/chart_points.csv"));
    EXPECT_NE(curves.find("\nHA-1,104,27.992,,,published,\"Made-up tables, edition 7\",p. 1,\n"),
              std::string::npos)
        << curves;
    EXPECT_NE(points.find("\nHA-1,392,1.0e-2,8702.28,p. 2\n"), std::string::npos) << points;
    ASSERT_EQ(check().status, 0) << check().err;
    ASSERT_EQ(build().status, 0);
    const ProgramRun shown = run("chart HA-1 -T 40 --A 0.01 --units si --data " + path("out"));
    const std::size_t at = shown.out.find(" B = ");
    ASSERT_NE(at, std::string::npos) << shown.out;
    EXPECT_NEAR(std::stod(shown.out.substr(at + 5)), 80.0, 0.001) << shown.out;

    // Another chart is added, the one of the same name replaced, one of ksi has a thousand psi.
    const std::string psi = "chart,temperature,modulus,a,b\nHA-2,100,28,1e-5,140\n"
                            "HA-2,100,28,1e-2,12000\nHA-2,100,28,1e-1,12000\n";
    EXPECT_EQ(imported(psi, "").status, 0);
    EXPECT_EQ(read(path("own/chart_points.csv")),
              points + "HA-2,100,1e-5,140,\"Made-up tables, edition 7\"\n"
                       "HA-2,100,1e-2,12000,\"Made-up tables, edition 7\"\n"
                       "HA-2,100,1e-1,12000,\"Made-up tables, edition 7\"\n");
    EXPECT_EQ(imported("chart,temperature,modulus,a,b\nHA-1,100,28,1e-5,.14\n"
                       "HA-1,100,28,1e-2,12\nHA-1,100,28,1e-1,12\n",
                       "--stress ksi")
                  .status,
              0);
    const std::string replaced = read(path("own/chart_points.csv"));
    EXPECT_NE(replaced.find("\nHA-1,100,1e-2,12000,"), std::string::npos) << replaced;
    EXPECT_EQ(replaced.find("8702.28"), std::string::npos);
    EXPECT_EQ(read(path("own/charts.csv")).find("HA-1,392"), std::string::npos);
    EXPECT_EQ(check().status, 0) << check().err;

    // What cannot be taken leaves everything as it was.
    const auto refused = [&](const std::string& rows, const std::string& options) {
        const ProgramRun fault = imported(rows, options);
        EXPECT_EQ(fault.status, 2) << rows;
        EXPECT_EQ(read(path("own/chart_points.csv")), replaced);
        return fault.err;
    };
    EXPECT_EQ(refused("chart,temperature,modulus,a,b\nHA-3,100,28,1e-5,x\n", "--stress MPa"),
              "tarvane: points.csv:2: b: not a number: \"x\"\n");
    EXPECT_EQ(refused("chart,temperature,a,b\nHA-3,100,1e-5,1\n", ""),
              "tarvane: points.csv:1: modulus: the column is missing\n");
    EXPECT_EQ(
        refused("chart,temperature,modulus,a,b\nCS-3,150,200,1e-5,1\n", "--temperature C"),
        "tarvane: points.csv:2: temperature: the curves of CS-3 are given in degrees F: 300.4 "
        "for a yield of 40 ksi\n");
    EXPECT_EQ(import("--stress psi").err,
              "tarvane: stresses in ksi or MPa are expected: --stress\n");
}

// As in a record that is looked for: without regard to case, blanks and hyphens.
TEST_F(OwnData, ImportKnowsAMaterialHoweverItIsWritten) {
    fs::remove_all(path("own"));
    for (const char* name : {"SA516-70", "sa-516 70"}) {
        write("plain.csv", std::string("material,100\n") + name + ",19.5\n");
        const ProgramRun result = import("");
        ASSERT_EQ(result.status, 0) << result.err;
        EXPECT_NE(result.out.find(", 0 of names that are not shipped"), std::string::npos);
    }
    const std::string table = read(path("own/materials_viii1.csv"));
    const std::size_t at = table.find("\n1,SA-516 70,UCS,Plate,");
    ASSERT_NE(at, std::string::npos) << table;
    EXPECT_EQ(table.find("\n1,", at + 1), std::string::npos) << table;
    write("own/materials_viii1.csv", table.substr(0, at + 3) + "sa516-70" + table.substr(at + 12));
    EXPECT_EQ(check().status, 0) << check().err; // it replaces the shipped row
}

TEST_F(OwnData, ImportOfAnotherEditionIsRefused) {
    ASSERT_EQ(import().status, 0);
    const std::string table = read(path("own/materials_viii1.csv"));
    write("plain.csv", "material,100\nSA-516 70,19.5\n");
    const ProgramRun other =
        run("data import " + path("plain.csv") + ' ' + path("own") + " --edition 'Edition 8'");
    EXPECT_EQ(other.status, 2);
    EXPECT_EQ(other.err, "tarvane: the tables of " + path("own") +
                             " are of \"Made-up tables, edition 7\", not of \"Edition 8\": import "
                             "these into a folder of their own\n");
    EXPECT_EQ(read(path("own/materials_viii1.csv")), table);
    EXPECT_EQ(read(path("own/edition.txt")), "Made-up tables, edition 7\n");
    for (const fs::directory_entry& file : fs::directory_iterator(path("own")))
        EXPECT_FALSE(file.path().string().ends_with(".new")) << file.path();
}

} // namespace
} // namespace tarvane::app
