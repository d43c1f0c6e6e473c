// Standard flanges: `tarvane flanges`, and what `standard` fills in an input file. The dimension file of
// these tests is the tests' own, except for those on the shipped one.
#include "app_fixture.h"
#include "catalogue/data_folder.h"
#include "catalogue/standard_flanges.h"
#include "components/flange_results.h"
#include "components/flange_session.h"
#include "tarvane/tarvane.h"

#include <set>

namespace tarvane::app {

using namespace vessel;
namespace {

// Columns: size, series, outside, thickness, blind, length, hub, neck, bolt circle, hole, bolts, bolt,
// bore, slip on length (0.06 less), slip on bore, raised face, unused.
constexpr const char* DIMENSIONS =
    "; a comment\n"
    "[150]\n"
    "0.5        0  3.5  0.38 0.40 1.81  1.19  0.84  2.38 0.625  4 0.5   0.622 0.50 0.88  1.38 0\n"
    "1.5        0  5.0  0.62 0.62 2.38  2.56  1.90  3.88 0.625  4 0.5   1.61  0.76 1.95  2.88 0\n"
    "12         0 19.0  1.19 1.25 4.44 14.38 12.75 17.0  1.0   12 0.875 12.0  2.07 12.88 15.0 0\n"
    "[600]\n"
    "6          0 14.0  1.88 1.88 4.62  8.75 6.625 11.5  1.125 12 1.0   6.065 0 0 8.5 0\n"
    "[PN16]\n"
    "300        0 460 28 0 0 344 323.9 410 26 12 24 0 0 0 0 0\n"
    "[PN25]\n"
    "300        0 485 0 0 0 0 0 430 30 16 27 0 0 0 0 0\n"
    "[END]\n";

class Standard : public ProgramTest {
  protected:
    Standard() {
        for (const char* name : {"BOLTDATA.TXT", "ElastAlp07.txt"})
            std::filesystem::copy_file(std::string(TARVANE_DATA_DIR) + '/' + name, path(name));
        write("ANSIFlangeDimensions.txt", DIMENSIONS);
        write("data_sources.txt", "[END]\n");
        write("approximate.txt",
              "[ANSIFlangeDimensions.txt]\nclass 150 size 1.5\nclass 150 slip on\n"
              "class 600 raised face\nclass PN16 size 300\n[END]\n");
        set_data_folder(folder.string());
    }
    ~Standard() override { set_data_folder(TARVANE_DATA_DIR); }

    ProgramRun tarvane(const std::string& arguments) const {
        return run(arguments + " --data " + folder.string());
    }
};

const std::vector<const char*> DIMENSION_KEYS{"B", "A", "t", "g0", "g1", "h", "C", "n", "a", "Fod"};

// FLANGE_TOML without its dimensions, and with lines at its end.
std::string by_name(const std::string& more, const std::string& toml = FLANGE_TOML) {
    std::string text = toml;
    for (const char* key : DIMENSION_KEYS)
        text = with(key, "", text);
    return text + more;
}

// A text without the lines of these keys.
std::string without(std::string text, std::initializer_list<const char*> keys) {
    for (const char* key : keys)
        text = with(key, "", text);
    return text;
}

void expect_line(const ProgramRun& result, const std::string& line) {
    EXPECT_NE(result.out.find(line + '\n'), std::string::npos) << line << '\n' << result.out;
}

// ---- tarvane flanges -----------------------------------------------------------------------------------

TEST_F(Standard, ClassesAreListedInTheOrderOfTheFile) {
    const ProgramRun result = tarvane("flanges");
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, "Classes of ANSIFlangeDimensions.txt\n\n"
                          "Class   Standard              Sizes\n"
                          "------------------------------------------------------\n"
                          "150     ASME B16.5            NPS 0.5 to NPS 12 (3)\n"
                          "600     ASME B16.5            NPS 6 to NPS 6 (1)\n"
                          "PN16    EN 1092-1             DN 300 to DN 300 (1)\n"
                          "PN25    EN 1092-1             DN 300 to DN 300 (1)\n");
}

TEST_F(Standard, SizesOfAClassStandWithTheirMainDimensions) {
    const ProgramRun result = tarvane("flanges 150");
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out.substr(0, 23), "Class 150, ASME B16.5\n\n");
    expect_line(result,
                "NPS 0.5            3.500       0.380       1.190       0.840       2.380       "
                "1.380   4 x 0.500");
    EXPECT_NE(result.out.find("\nNPS 1.5 ~ "), std::string::npos);
    EXPECT_NE(result.out.find("\nNPS 12    "), std::string::npos);
    EXPECT_NE(result.out.find("\n~ Approximate figures: replace ANSIFlangeDimensions.txt by"),
              std::string::npos);
    expect_line(
        tarvane("flanges pn25 --units si"),
        "DN 300             485.0           -           -           -       430.0           "
        "-   16 x 27.0");
}

TEST_F(Standard, OneFlangeIsShownWithItsDimensions) {
    const ProgramRun result = tarvane("flanges 150 12");
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, "ASME B16.5 class 150 NPS 12, welding neck flange\n\n"
                          "Inside diameter                   B             12.000 in.\n"
                          "Outside diameter                  A             19.000 in.\n"
                          "Thickness                         t              1.190 in.\n"
                          "Hub, small end                    g0             0.375 in.\n"
                          "Hub, large end                    g1             1.190 in.\n"
                          "Hub length                        h              3.250 in.\n"
                          "Bolt circle                       C             17.000 in.\n"
                          "Number of bolts                   n                 12\n"
                          "Nominal bolt diameter             a              0.875 in.\n"
                          "Bolt hole diameter                               1.000 in.\n"
                          "Raised face diameter              Fod           15.000 in.\n"
                          "Wall of the pipe                                 0.375 in.\n");
    const ProgramRun si = tarvane("flanges 150 'NPS 12' --units SI --wall 12.7");
    expect_line(si, "Inside diameter                   B              298.4 mm"); // 12.75 - 2 * 0.5
    expect_line(si, "Hub, small end                    g0              12.7 mm");
}

TEST_F(Standard, BlindAndSlipOnFlangesHaveDimensionsOfTheirOwn) {
    const ProgramRun blind = tarvane("flanges 150 12 --blind");
    expect_line(blind, "Thickness                         t              1.250 in.");
    EXPECT_EQ(blind.out.find("Inside"), std::string::npos);
    EXPECT_EQ(blind.out.find("Hub"), std::string::npos);
    const ProgramRun slip_on = tarvane("flanges 150 12 --slip-on");
    expect_line(slip_on, "Inside diameter                   B             12.880 in.");
    expect_line(slip_on, "Hub, large end                    g1             0.750 in.");
    expect_line(slip_on,
                "Hub length                        h              0.940 in."); // 2.13 - 1.19
    EXPECT_NE(slip_on.out.find("Approximate"), std::string::npos);
    EXPECT_EQ(blind.out.find("Approximate"), std::string::npos);
}

TEST_F(Standard, SizesAreNumbersOrFractions) {
    const std::string half = tarvane("flanges 150 0.5").out;
    EXPECT_NE(half, "");
    for (const char* size : {"1/2", "'NPS 1/2'", ".5"})
        EXPECT_EQ(tarvane(std::string("flanges 150 ") + size).out, half) << size;
    const std::string more = tarvane("flanges 'class 150' 1.5").out;
    EXPECT_NE(more, "");
    for (const char* size : {"'1 1/2'", "1-1/2", "'nps 1-1/2'"})
        EXPECT_EQ(tarvane(std::string("flanges 150 ") + size).out, more) << size;
    for (const char* size : {"", " ", "x", "12x", "1/0", "1/", "/2", "-", "NPS", "nan", "inf/2"})
        EXPECT_FALSE(nominal_size(size)) << size;
}

TEST_F(Standard, CommandTellsWhatThereIsInstead) {
    const auto error = [&](const std::string& arguments) {
        const ProgramRun result = tarvane("flanges " + arguments);
        EXPECT_EQ(result.status, 2) << arguments;
        EXPECT_EQ(result.out, "") << arguments;
        return result.err;
    };
    EXPECT_EQ(error("200"), "tarvane: no class \"200\" in ANSIFlangeDimensions.txt; there are 150, "
                            "600, PN16, PN25\n");
    EXPECT_EQ(error("150 2"), "tarvane: no size NPS 2 in class 150; the next is NPS 12\n");
    EXPECT_EQ(error("150 14"), "tarvane: no size NPS 14 in class 150; the largest is NPS 12\n");
    EXPECT_EQ(error("PN16 200"), "tarvane: no size DN 200 in class PN16; the next is DN 300\n");
    EXPECT_EQ(error("600 6 --slip-on"), "tarvane: no slip on flange NPS 6 in class 600\n");
    EXPECT_EQ(error("150 x"), "tarvane: a nominal size is expected, not \"x\"\n");
    EXPECT_EQ(error("150 12 --wall 7"),
              "tarvane: a wall that leaves a bore in the neck is expected\n");
    EXPECT_EQ(error("150 12 --blind --slip-on"), "tarvane: a flange is either blind or slip on\n");
    EXPECT_EQ(error("150 12 --blind --wall 0.5"),
              "tarvane: only a weld neck takes its bore from the wall of the pipe\n");
    EXPECT_EQ(error("150 --blind"),
              "tarvane: --blind, --slip-on and --wall belong to one size of a class\n");
    std::filesystem::remove(path("ANSIFlangeDimensions.txt"));
    EXPECT_EQ(error(""), "tarvane: ANSIFlangeDimensions.txt is missing or empty\n");
}

// ---- standard in an input file ---------------------------------------------------------------------------

TEST_F(Standard, FillsTheDimensionsOfAWeldNeck) {
    const FlangeInput f = flange_of(by_name("standard = { class = 150, size = 12 }\n"));
    const FlangeInput given = flange_of(FLANGE_TOML);
    for (const char* name : DIMENSION_KEYS) {
        const auto element = static_cast<std::size_t>(flange_keys().find(name)->index);
        EXPECT_NEAR(f.record[element], given.record[element], 1.0e-5f) << name;
    }
}

TEST_F(Standard, OwnKeysComeFirst) {
    const FlangeInput f = flange_of(by_name("t = 1.5\nn = 16\nFod = 14.9\n"
                                            "standard = { class = \"150\", size = \"12\" }\n"));
    EXPECT_EQ(f.record[8], 1.5f);
    EXPECT_EQ(f.record[24], 16.0f);
    EXPECT_EQ(f.record[12], 14.9f);
    EXPECT_EQ(f.record[21], 17.0f);
}

TEST_F(Standard, WallGivesTheBoreOfTheNeck) {
    const std::string toml = by_name("standard = { class = 600, size = 6, wall = 0.432 }\n");
    const FlangeInput f = flange_of(toml);
    EXPECT_FLOAT_EQ(f.record[10], 5.761f);
    EXPECT_FLOAT_EQ(f.record[16], 0.432f);
    EXPECT_FLOAT_EQ(f.record[17], 0.5f * (8.75f - 5.761f));
    // Above class 300 and below NPS 14 it is the pipe's bore, too: not that of the nominal size.
    const FlangeInput standard_wall = flange_of(by_name("standard = { class = 600, size = 6 }\n"));
    EXPECT_FLOAT_EQ(standard_wall.record[10], 6.065f);
    EXPECT_FLOAT_EQ(standard_wall.record[16], 0.28f);
}

TEST_F(Standard, FillsByTheTypeOfTheFlange) {
    const FlangeInput slip_on = flange_of(
        with("type", "type = \"slip on\"", by_name("standard = { class = 150, size = 12 }\n")));
    EXPECT_FLOAT_EQ(slip_on.record[10], 12.88f);
    EXPECT_FLOAT_EQ(slip_on.record[16], 0.75f);
    EXPECT_FLOAT_EQ(slip_on.record[17], 0.75f);
    EXPECT_NEAR(slip_on.record[18], 0.94f, 1.0e-5f);
    const FlangeInput blind = flange_of(
        with("type", "type = \"blind\"", by_name("standard = { class = 150, size = 12 }\n")));
    EXPECT_FLOAT_EQ(blind.record[8], 1.25f);
    EXPECT_EQ(blind.record[10], 0.0f);
    EXPECT_EQ(blind.record[16], 0.0f);
    EXPECT_EQ(blind.record[18], 0.0f);
    EXPECT_FLOAT_EQ(blind.record[11], 19.0f);
}

TEST_F(Standard, MetricClassesGiveWhatIsKnown) {
    const std::string head = "units = \"SI\"\n";
    const std::string metric = with("bolting", "bolting = \"TEMA metric\"");
    const FlangeInput f = flange_of(
        head +
        by_name("standard = { class = \"PN16\", size = 300, wall = 7.1 }\nh = 34\nFod = 378\n",
                metric));
    EXPECT_FLOAT_EQ(f.record[11], 460.0f / 25.4f);
    EXPECT_NEAR(f.record[10] * 25.4f, 309.7f, 1.0e-3f);
    EXPECT_NEAR(f.record[17] * 25.4f, 17.15f, 1.0e-3f);
    EXPECT_FLOAT_EQ(f.record[22], 24.0f / 25.4f);
    // An inch bolt would replace its M24.
    EXPECT_EQ(read_input(head + by_name("standard = { class = \"PN16\", size = 300, wall = 7.1 }\n"
                                        "h = 34\nFod = 378\n"))
                  .faults.size(),
              1u);
    // Length of the hub, raised face and, without a wall, bore and hub are not in the table.
    std::set<std::string> missing;
    const ReadResult result =
        read_input(head + by_name("standard = { class = \"PN16\", size = \"DN 300\" }\n", metric));
    for (const Fault& fault : result.faults)
        missing.insert(fault.key);
    EXPECT_EQ(missing, (std::set<std::string>{"B", "g0", "g1", "h", "Fod"}));
}

// The raised face is flat and reaches from the bore to Fod; the bolts have the threads of the standard.
TEST_F(Standard, GivesFaceAndThreads) {
    const std::string bare = without(by_name("gasket = { type = \"spiral wound, stainless\" }\n"
                                             "standard = { class = 150, size = 12 }\n"),
                                     {"Fid", "facing", "bolting", "m", "y"});
    const FlangeInput f = flange_of(bare);
    const std::string origin = "standard ASME B16.5 class 150 NPS 12";
    EXPECT_EQ(f.record[TARVANE_Fid], f.record[TARVANE_B]);
    EXPECT_EQ(f.record[TARVANE_SKETCH], static_cast<float>(TARVANE_SKETCH_1A));
    EXPECT_EQ(f.record[TARVANE_THREADS], static_cast<float>(TARVANE_TEMA_THREADS));
    EXPECT_EQ(f.origins.at("Fid").from, origin + ", raised face");
    EXPECT_EQ(f.origins.at("facing").from, origin + ", raised face");
    EXPECT_EQ(f.origins.at("bolting").from, origin);
    const FlangeInput blind = flange_of(with("type", "type = \"blind\"", bare));
    EXPECT_EQ(blind.record[TARVANE_Fid], 0.0f);
    // What the file says comes first.
    const FlangeInput own = flange_of(bare + "Fid = 13\nfacing = \"1b\"\nbolting = \"UNC\"\n");
    EXPECT_EQ(own.record[TARVANE_Fid], 13.0f);
    EXPECT_EQ(own.record[TARVANE_SKETCH], static_cast<float>(TARVANE_SKETCH_1B));
    EXPECT_EQ(own.record[TARVANE_THREADS], static_cast<float>(TARVANE_UNC_THREADS));
    EXPECT_EQ(own.origins.at("facing").from, "file");
}

// Another face is none of the standard's.
TEST_F(Standard, LeavesTheFaceOfAnotherGasketToTheFile) {
    const auto missing = [](const std::string& keys, const std::string& type) {
        std::set<std::string> found;
        const std::string toml = without(by_name(keys + "gasket.type = \"" + type +
                                                 "\"\nstandard = { class = 150, size = 12 }\n"),
                                         {"Fid", "facing", "bolting", "m", "y"});
        for (const Fault& fault : read_input(toml).faults)
            found.insert(fault.key);
        return found;
    };
    using Keys = std::set<std::string>;
    EXPECT_EQ(missing("", "flat jacketed, stainless"), Keys());
    EXPECT_EQ(missing("", "ring joint, stainless"), (Keys{"facing"}));
    EXPECT_EQ(missing("w = 0.1\n", "flat jacketed, stainless"), (Keys{"facing"})); // a nubbin
    EXPECT_EQ(missing("Fod = 14.9\n", "flat jacketed, stainless"), (Keys{"Fid", "facing"}));
    const std::string by_figures =
        without(by_name("standard = { class = 150, size = 12 }\n"), {"facing"});
    ASSERT_EQ(read_input(by_figures).faults.size(), 1u); // of no gasket that has a name
    EXPECT_EQ(read_input(by_figures).faults.front().key, "facing");
}

TEST_F(Standard, HoldsForEveryFlangeFromTheHead) {
    const std::string two = "standard = { class = 150, size = 12 }\n" + by_name("") +
                            by_name("standard.class = 600\n"
                                    "standard.size = 6\n");
    const ReadResult result = read_input(two);
    ASSERT_TRUE(result.faults.empty()) << fault_line("f", result.faults.front());
    EXPECT_EQ(flanges_of(result.request)[0]->record[11], 19.0f);
    EXPECT_EQ(flanges_of(result.request)[1]->record[11], 14.0f);
}

TEST_F(Standard, FaultsNameClassAndSizeAndNothingElse) {
    const auto fault = [](const std::string& table, const std::string& toml = by_name("")) {
        const std::vector<std::string> lines = fault_lines(toml + table + '\n');
        EXPECT_EQ(lines.size(), 1u) << table << '\n' << lines.back();
        return lines.empty() ? std::string() : lines.front();
    };
    EXPECT_EQ(fault("standard = { class = 150, size = 13 }"),
              "f:17: standard.size: no size NPS 13 in class 150; the largest is NPS 12");
    EXPECT_EQ(fault("standard = { class = 150, size = 4 }"),
              "f:17: standard.size: no size NPS 4 in class 150; the next is NPS 12");
    EXPECT_EQ(
        fault("standard = { class = 16, size = 300 }"),
        "f:17: standard.class: no class \"16\" in ANSIFlangeDimensions.txt; there are 150, 600, "
        "PN16, PN25");
    EXPECT_EQ(fault("standard = { class = 150, size = \"big\" }"),
              "f:17: standard.size: a nominal size is expected, not \"big\"");
    EXPECT_EQ(
        fault("standard = { class = 150 }"),
        "f:1: standard.size: missing in flange 1; a number or a text of up to 10 characters is "
        "expected (its nominal size, NPS or DN)");
    EXPECT_EQ(
        fault("standard = { class = true, size = 12 }"),
        "f:17: standard.class: a number or a text of up to 8 characters is expected, not true "
        "(class of ASME B16.5, ASME B16.47 or EN 1092-1 whose dimensions the flange has: 150, "
        "\"PN16\")");
    EXPECT_EQ(fault("standard = { class = 150, size = 12, wal = 1 }"),
              "f:17: wal: unknown key; the nearest is wall");
    EXPECT_EQ(fault("standard = { class = 150, size = 12, wall = 7 }"),
              "f:17: standard.wall: a wall that leaves a bore in the neck is expected");
    EXPECT_EQ(fault("standard = 150", FLANGE_TOML),
              "f:27: standard: a table of class, size, wall is expected, not 150");
    EXPECT_EQ(
        fault("standard = { class = 150, size = 12 }",
              with("type", "type = \"ring\"", by_name(""))),
        "f:17: standard.class: a flange of this type has no standard dimensions; a weld neck, "
        "slip on or blind flange has");
    EXPECT_EQ(fault("standard = { class = 600, size = 6 }",
                    with("type", "type = \"slip on\"", by_name(""))),
              "f:17: standard.size: no slip on flange NPS 6 in class 600");
}

TEST_F(Standard, TellsTheApproximateFiguresThatWereUsed) {
    using Items = std::set<std::string>;
    const auto approximate = [](const std::string& toml) {
        FlangeInput f = flange_of(toml);
        Items items;
        for (const auto& [item, is] : f.data["ANSIFlangeDimensions.txt"]) {
            if (is) items.insert(item);
        }
        return items;
    };
    EXPECT_EQ(approximate(by_name("standard = { class = 150, size = 12 }\n")), Items{});
    EXPECT_EQ(approximate(by_name("standard = { class = 600, size = 6 }\n")),
              Items{"class 600 size 6 raised face"});
    EXPECT_EQ(approximate(by_name("standard = { class = 600, size = 6 }\nFod = 8.5\n")), Items{});
    EXPECT_EQ(approximate(with("type", "type = \"slip on\"",
                               by_name("standard = { class = 150, size = 1.5 }\n"))),
              (Items{"class 150 size 1.5", "class 150 size 1.5 slip on"}));
}

// ---- the shipped file ------------------------------------------------------------------------------------

// From NPS 26 on a size has a series, with dimensions of its own.
TEST(ShippedStandard, LargeSizesHaveASeries) {
    set_data_folder(TARVANE_DATA_DIR);
    const std::vector<FlangeClass> classes = flange_classes();
    const FlangeClass* flanges = find_class(classes, "150");
    ASSERT_NE(flanges, nullptr);
    const auto outside = [&](const char* text) {
        const std::optional<NominalSize> size = nominal_size(text);
        EXPECT_TRUE(size) << text;
        const FlangeLookup found =
            look_up_flange(*flanges, size.value_or(NominalSize{}), FlangeForm::weld_neck, {});
        EXPECT_EQ(found.fault, "") << text;
        return found.flange.A;
    };
    EXPECT_EQ(outside("26 A"), 34.25f);
    EXPECT_EQ(outside("NPS 26-B"), 30.94f);
    EXPECT_EQ(outside("24"), 32.0f);
    const auto fault = [&](const NominalSize& size) {
        return look_up_flange(*flanges, size, FlangeForm::weld_neck, {}).fault;
    };
    EXPECT_EQ(fault({26.0f}), "no size NPS 26 in class 150; there is NPS 26 A and NPS 26 B");
    EXPECT_EQ(fault({27.0f, FlangeSeries::B}),
              "no size NPS 27 B in class 150; the next is NPS 28 B");
    EXPECT_EQ(fault({24.0f, FlangeSeries::A}), "no size NPS 24 A in class 150; there is NPS 24");
    EXPECT_EQ(flanges->standard({26.0f, FlangeSeries::A}), "ASME B16.47");
    EXPECT_EQ(flanges->standard({24.0f}), "ASME B16.5");
    EXPECT_FALSE(nominal_size("A"));
    EXPECT_FALSE(nominal_size("26 C"));
}

// A flange picked by name and the same flange by its printed dimensions get the same report.
TEST(ShippedStandard, FlangeByNameIsTheFlangeByItsDimensions) {
    set_data_folder(TARVANE_DATA_DIR);
    const std::string class_300 = "B = 6.065\nA = 12.5\nt = 1.38\ng0 = 0.28\ng1 = 1.0275\nh = "
                                  "2.44\nC = 10.62\nn = 12\na = 0.75\n"
                                  "Fod = 8.5\n";
    const std::string gasket_300 =
        with("Fid", "Fid = 6.065", with("Go", "Go = 8.25", with("Gi", "Gi = 7.19", by_name(""))));
    const std::pair<std::string, std::string> pairs[] = {
        {FLANGE_TOML, by_name("standard = { class = 150, size = 12 }\n")},
        {gasket_300 + class_300, gasket_300 + "standard = { class = 300, size = 6 }\n"}};
    for (const auto& [printed, named] : pairs) {
        const ReadResult a = read_input(printed), b = read_input(named);
        ASSERT_TRUE(a.faults.empty()) << fault_line("f", a.faults[0]);
        ASSERT_TRUE(b.faults.empty()) << fault_line("f", b.faults[0]);
        const FlangeOutcome by_figures = run_flange(*flanges_of(a.request)[0], a.request),
                            by_class = run_flange(*flanges_of(b.request)[0], b.request);
        EXPECT_GT(by_class.mawp, 0.0f);
        EXPECT_NEAR(by_class.mawp / by_figures.mawp, 1.0f, 1.0e-5f);
        EXPECT_NE(by_class.report.find("Flange Stress Analysis Results"), std::string::npos);
    }
}

} // namespace
} // namespace tarvane::app
