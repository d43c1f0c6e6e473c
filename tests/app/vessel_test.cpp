// A vessel as a whole: its summary, its external pressure, its examples.
#include "app_fixture.h"
#include "assembly/summary.h"
#include "components/calculation.h"
#include "components/flange_session.h"
#include "components/rounded_design.h"
#include "components/shell_input.h"

#include <cmath>

namespace tarvane::app {

using namespace vessel;
namespace {

// Stresses of its own: no data file decides.
const std::string VESSEL = R"(tarvane = 1
[vessel]
description = "Drum"
P = 100
T = 300
E = 1
)";
const std::string SHELL = R"([[shell]]
description = "Shell"
kind = "cylinder"
D = 60
t = 0.5
ci = 0.125
S = 17500
Sa = 20000
length = 100
elevation = 20
)";
const std::string HEAD = R"([[shell]]
description = "Head"
kind = "sphere"
on = "Shell"
end = "top"
t = 0.5
S = 16000
Sa = 16000
)";

constexpr double SHELL_MAWP = 17500 * 0.375 / (30.125 + 0.6 * 0.375); // UG-27(c)(1), without E
constexpr double SHELL_MAP = 20000 * 0.5 / (30 + 0.6 * 0.5);
constexpr double WATER = 62.4 / 1728; // lb/cu.in.

const std::string RATED = "[[flange]]\ndescription = \"N1\"\nkind = \"rated\"\ntype = \"blind\"\n"
                          "standard = { class = 150, size = 6 }\nrating = 150\n";

std::string file(const std::string& name) {
    std::ifstream stream(std::string(TARVANE_SOURCE_DIR) + '/' + name);
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

struct Made {
    ReadResult read;
    Calculation calculation;
    std::vector<SummaryRow> rows;

    const SummaryRow& row(std::string_view name) const {
        for (const SummaryRow& each : rows)
            if (each.field->name == name) return each;
        ADD_FAILURE() << name;
        return rows.front();
    }
    double value(std::string_view name) const {
        const auto found = row(name).value;
        return found ? static_cast<double>(*found) : std::nan("");
    }
    std::string by(std::string_view name) const {
        const Element* element = row(name).by;
        return element != nullptr ? element->description() : "nothing";
    }
    Checks checks(std::size_t place) const {
        const Calculated& c = calculation.calculated.at(place);
        return c.element->checks(*c.outcome, read.request.units);
    }
};

Made make(const std::string& toml) {
    Made made{read_input(toml), {}, {}};
    for (const Fault& fault : made.read.faults)
        ADD_FAILURE() << fault_line("f", fault);
    made.calculation = calculate(made.read.request);
    made.rows = summary(made.read.request, made.calculation);
    return made;
}

// ---- summary -----------------------------------------------------------------------------------------------

TEST(Summary, FindsTheLeastPressures) {
    const Made made = make(VESSEL + SHELL + HEAD);
    // S E t / (R + 0.6 t), UG-27(c)(1); 2 S E t / (R + 0.2 t), UG-27(d)
    const double shell = 17500 * 0.375 / (30.125 + 0.6 * 0.375);
    EXPECT_NEAR(made.value("mawp"), shell, 0.01);
    EXPECT_EQ(made.by("mawp"), "Shell");
    EXPECT_NEAR(made.value("map_nc"), 20000 * 0.5 / (30 + 0.6 * 0.5), 0.01);
    EXPECT_EQ(made.by("map_nc"), "Shell");
    // The head has the least ratio, 1; the shell has 20000 / 17500.
    EXPECT_NEAR(made.value("hydrotest_b"), 1.3 * shell, 0.01);
    EXPECT_EQ(made.by("hydrotest_b"), "Head");
    EXPECT_EQ(made.row("hydrotest_b").note, "1.3 MAWP times the least stress ratio 1.0000");
    // Upright, full of water to the top of the head: 100 in. of shell and 30 of head
    EXPECT_NEAR(made.value("hydrotest_c"), 1.3 * 20000 * 0.5 / (30 + 0.6 * 0.5) - 62.4 / 1728 * 130,
                0.01);
    EXPECT_EQ(made.by("hydrotest_c"), "Shell");
}

TEST(Summary, NamesTheMaterialOfTheLeastRatio) {
    const Made made = make(VESSEL + SHELL + HEAD + "material = \"SA-240 304\"\n");
    EXPECT_EQ(made.row("hydrotest_b").note,
              "1.3 MAWP times the least stress ratio 1.0000, of SA-240 304");
}

TEST(Summary, TakesTheHeadOfTheLiquidOff) {
    const Made made = make(VESSEL + "liquid = { density = 0.04, level = 120 }\n" + SHELL + HEAD);
    EXPECT_NEAR(made.value("mawp"), 17500 * 0.375 / (30.125 + 0.6 * 0.375) - 0.04 * 100, 0.01);
    EXPECT_NEAR(static_cast<double>(made.calculation.calculated[0].element->liquid_head), 4.0,
                1e-5);
    // An own pressure is at the component: the head is added to none, and is in it all the same.
    const std::string liquid = "liquid = { density = 0.04, level = 120 }\n";
    const Made own = make(VESSEL + liquid + SHELL + "P = 110\n" + HEAD);
    EXPECT_EQ(static_cast<const ShellInput*>(own.calculation.calculated[0].element)
                  ->setting(ShellNumber::P),
              110.0f);
    EXPECT_NEAR(own.value("mawp"), SHELL_MAWP - 0.04 * 100, 0.01);
    EXPECT_EQ(own.row("mawp").note, "less the head of the liquid there");
    EXPECT_EQ(fault_lines(VESSEL + liquid + with("elevation", "", SHELL) + "P = 110\n").size(), 1u);
}

// AD-204: the thickness that the head requires is above what it has from 392.75 psig on, where the formula of its MAWP
// gives 418.79.
TEST(Summary, TakesNoMawpOfAFormulaAboveWhatTheThicknessAllows) {
    const std::string head = "[[shell]]\nkind = \"torispherical\"\ncode = \"VIII-2\"\n"
                             "edition = \"older\"\nP = 200\nT = 300\nS = 20000\nSa = 20000\n"
                             "D = 72\nL = 72\nr = 4.5\nt = 1\nc = 0.0625\n";
    const Made made = make("[vessel]\n" + head);
    EXPECT_NEAR(made.value("mawp"), 392.75, 0.01);
}

TEST(Summary, SaysWhatItCannotHave) {
    const Made made = make(VESSEL + SHELL + HEAD);
    EXPECT_FALSE(made.row("maep").value);
    EXPECT_EQ(made.row("maep").lacks.size(), 2u);
    EXPECT_FALSE(made.row("mdmt").value);
    EXPECT_EQ(made.row("mdmt").note, "no metal temperature was asked for");
    const Made cold = make("[vessel]\n[[mdmt]]\ncurve = \"B\"\ntg = 1\nratio = 0.8\n");
    for (const char* row : {"mawp", "map_nc", "maep"})
        EXPECT_EQ(cold.row(row).note, "no component has one");
    // Without elevations the head of the test water is not known.
    const Made flat = make(VESSEL + with("elevation", "", SHELL));
    EXPECT_FALSE(flat.row("hydrotest_c").value);
    EXPECT_EQ(
        flat.row("hydrotest_c").lacks,
        (std::vector<std::string>{"shell 1 (Shell): no elevation for the head of the water"}));
    // A rated flange without a material: no stress ratio.
    const Made rated = make(VESSEL + SHELL + RATED);
    EXPECT_EQ(rated.by("mawp"), "N1");
    EXPECT_FALSE(rated.row("hydrotest_b").value);
    EXPECT_EQ(rated.by("hydrotest_b"), "nothing");
    EXPECT_EQ(rated.row("hydrotest_b").lacks,
              (std::vector<std::string>{"flange 1 (N1): no stress ratio"}));
}

TEST(Summary, TakesTheRatioOfTheSameMaterialAtTheSameTemperature) {
    const std::string shell = SHELL + "material = \"SA-105\"\n";
    const std::string rated = RATED + "material = \"SA-105\"\n";
    // 20000 / 17500 of the shell
    const Made same = make(VESSEL + shell + rated);
    EXPECT_NEAR(same.value("hydrotest_b"), 1.3 * 150 * 20000 / 17500, 0.01);
    EXPECT_TRUE(same.row("hydrotest_b").lacks.empty());
    const Made other = make(VESSEL + shell + rated + "T = 200\n");
    EXPECT_FALSE(other.row("hydrotest_b").value);
    EXPECT_EQ(other.row("hydrotest_b").lacks.size(), 1u);
}

TEST(Summary, TestsByALeastRatioAboveOne) {
    // 20000 / 17500 of the shell is less than 20000 / 16000 of the head.
    const Made made = make(VESSEL + SHELL + with("Sa", "Sa = 20000", HEAD));
    EXPECT_NEAR(made.value("hydrotest_b"), 1.3 * SHELL_MAWP * 20000 / 17500, 0.01);
    EXPECT_EQ(made.by("hydrotest_b"), "Shell");
    EXPECT_EQ(made.row("hydrotest_b").note, "1.3 MAWP times the least stress ratio 1.1429");
}

TEST(Summary, FillsALyingVesselToItsDiameter) {
    for (const char* end : {"left", "right"}) {
        const Made made =
            make(VESSEL + SHELL + with("end", "end = \"" + std::string(end) + '"', HEAD));
        EXPECT_NEAR(made.value("hydrotest_c"), 1.3 * SHELL_MAP - WATER * 60, 0.01);
        EXPECT_EQ(made.row("hydrotest_c").note, "1.3 MAPnc less the head of the test water, lying");
    }
    const Made upright = make(VESSEL + SHELL);
    EXPECT_NEAR(upright.value("hydrotest_c"), 1.3 * SHELL_MAP - WATER * 100, 0.01);
    EXPECT_EQ(upright.row("hydrotest_c").note,
              "1.3 MAPnc less the head of the test water, upright");
    // A tower on a vessel that lies.
    const std::string tower = with("description", "description = \"Tower\"", SHELL);
    const Made both =
        make(VESSEL + SHELL + with("end", "end = \"left\"", HEAD) + tower +
             with("on", "on = \"Tower\"", with("description", "description = \"Top\"", HEAD)));
    EXPECT_NEAR(both.value("hydrotest_c"), 1.3 * SHELL_MAP - WATER * 130, 0.01);
}

TEST(Summary, SaysThatARatingIsAtTheDesignTemperature) {
    const Made made = make(VESSEL + SHELL + RATED + "elevation = 40\n");
    EXPECT_EQ(made.value("map_nc"), 150.0);
    EXPECT_EQ(made.row("map_nc").note, "its rating at the design temperature");
    EXPECT_NEAR(made.value("hydrotest_c"), 1.3 * 150 - WATER * (120 - 40), 0.01);
    EXPECT_EQ(made.by("hydrotest_c"), "N1");
    EXPECT_EQ(made.row("hydrotest_c").note,
              "1.3 MAPnc less the head of the test water, upright; MAPnc is its rating at the "
              "design temperature");
    EXPECT_EQ(make(VESSEL + SHELL).row("map_nc").note, "");
}

// With the rating cold it is that one, hot or cold the lesser of all.
TEST(Summary, GoesByTheRatingAtAmbientTemperatureWhereItIsGiven) {
    const std::string rated = RATED + "elevation = 40\n";
    const Made made = make(VESSEL + SHELL + rated + "rating_cold = 160\n");
    EXPECT_EQ(made.value("mawp"), 150.0);
    EXPECT_EQ(made.value("map_nc"), 160.0);
    EXPECT_EQ(made.by("map_nc"), "N1");
    EXPECT_EQ(made.row("map_nc").note, "");
    EXPECT_NEAR(made.value("hydrotest_c"), 1.3 * 160 - WATER * (120 - 40), 0.01);
    EXPECT_EQ(made.row("hydrotest_c").note, "1.3 MAPnc less the head of the test water, upright");
    // The shell governs cold above its MAP.
    EXPECT_EQ(make(VESSEL + SHELL + rated + "rating_cold = 1000\n").by("map_nc"), "Shell");
    EXPECT_EQ(make(VESSEL + SHELL + rated + "rating_cold = 150\n").value("map_nc"), 150.0);
    EXPECT_EQ(fault_lines(RATED + "P = 100\nT = 300\nrating_cold = 149\n"),
              std::vector<std::string>{
                  "f:9: rating_cold: 149.00 psig at ambient temperature is below the rating at the "
                  "design temperature, 150.00 psig"});
    EXPECT_EQ(fault_lines(RATED + "P = 100\nT = 300\nrating_cold = 0\n").size(), 2u);
}

// The mate of a rated flange takes both of its ratings, or has both of its own.
TEST(Summary, SharesTheRatingsOfMates) {
    const std::string first = RATED + "rating_cold = 160\nelevation = 40\n";
    const std::string mate = "[[flange]]\ndescription = \"Mate\"\nkind = \"rated\"\n"
                             "type = \"weld neck\"\nmates_with = \"N1\"\n";
    const auto cold = [&](const std::string& keys) {
        const ReadResult read = read_input(VESSEL + first + mate + keys);
        EXPECT_TRUE(read.faults.empty());
        return read.request.elements.at(1)->number_of(*flange_keys().find("rating_cold"));
    };
    EXPECT_EQ(cold(""), 160.0f);
    EXPECT_EQ(cold("rating = 140\n"), 0.0f);
    EXPECT_EQ(cold("rating_cold = 170\n"), 170.0f);
}

// The place of what is on a cylinder goes by its length from head to head, not by the stiffened one.
TEST(Place, GoesByTheLengthFromHeadToHead) {
    const auto head_at = [](const std::string& shell) {
        const ReadResult read = read_input(VESSEL + shell + HEAD);
        EXPECT_TRUE(read.faults.empty());
        return read.request.elements.at(1)->number_of(
            *read.request.elements[1]->kind->keys.find("elevation"));
    };
    EXPECT_EQ(head_at(SHELL), 120.0f);
    EXPECT_EQ(head_at(SHELL + "tangent_length = 90\n"), 110.0f);
    EXPECT_EQ(head_at(with("length", "tangent_length = 90", SHELL)), 110.0f);
    const Made made = make(VESSEL + SHELL + "tangent_length = 90\n");
    EXPECT_NEAR(made.value("hydrotest_c"), 1.3 * SHELL_MAP - WATER * 90, 0.01);
    EXPECT_EQ(fault_lines(VESSEL + SHELL + "tangent_length = 0\n").size(), 1u);
    // External pressure goes by the stiffened one.
    const std::string vacuum = "tarvane = 1\n[vessel]\nP = 100\nT = 300\nP_external = 15\n"
                               "chart = \"CS-2\"\n";
    const auto maep = [&](const std::string& keys) {
        const Made found = make(vacuum + SHELL + keys);
        return found.value("maep");
    };
    EXPECT_EQ(maep(""), maep("tangent_length = 10\n"));
    EXPECT_GT(maep(""), make(vacuum + with("length", "length = 110", SHELL)).value("maep"));
}

TEST(Summary, HasNoTestByOtherCodes) {
    const auto note = [](const std::string& toml) {
        const Made made = make(toml);
        for (const char* name : {"hydrotest_b", "hydrotest_c"}) {
            EXPECT_FALSE(made.row(name).value);
            EXPECT_EQ(made.row(name).by, nullptr);
        }
        EXPECT_EQ(made.row("hydrotest_b").note, made.row("hydrotest_c").note);
        return made.row("hydrotest_b").note;
    };
    const std::string other = "the test by other codes than VIII-1 is not covered: ",
                      older = "the test of VIII-1 before the 1999 addenda is not covered: ";
    const std::string flange = with("description", "description = \"F\"", FLANGE_TOML);
    EXPECT_EQ(note(VESSEL + SHELL + flange + "code = \"VIII-2\"\n"), other + "flange 1 (F)");
    EXPECT_EQ(note(VESSEL + SHELL + flange + "edition = \"A98\"\n"),
              older + "flange 1 (F) is by an older edition");
    EXPECT_EQ(note(VESSEL + SHELL + flange + "material_year = 13\n"),
              older + "flange 1 (F) is by an older edition");
    EXPECT_EQ(note(VESSEL + SHELL + flange + "material_year = 15\n"), other + "flange 1 (F)");
    EXPECT_TRUE(make(VESSEL + SHELL + RATED + "elevation = 40\nmaterial_year = 1\n")
                    .row("hydrotest_c")
                    .value);
}

TEST(Summary, TakesTheJudgedGeometryOfADesign) {
    const Made made = make(file("tests/golden/weld_neck_design.toml") +
                           "elevation = 0\n[vessel]\ndescription = \"Drum\"\n");
    const auto& outcome = static_cast<const FlangeOutcome&>(*made.calculation.outcomes[0]);
    ASSERT_TRUE(outcome.rounded);
    ASSERT_NE(outcome.rounded->outcome.map_nc, outcome.map_nc);
    EXPECT_EQ(made.value("map_nc"), static_cast<double>(outcome.rounded->outcome.map_nc));
    EXPECT_NEAR(made.value("hydrotest_c"), 1.3 * made.value("map_nc"), 0.01);
}

TEST(Summary, HasNoPressureThatOneComponentLacks) {
    // Seating its gasket is beyond its bolts, whatever the pressure.
    const Made made = make(VESSEL + SHELL + with("y", "y = 40000", FLANGE_TOML));
    EXPECT_FALSE(made.row("mawp").value);
    ASSERT_EQ(made.row("mawp").lacks.size(), 1u);
    EXPECT_EQ(made.row("mawp").lacks[0].find("flange 1 (test flange)"), 0u);
    EXPECT_EQ(made.row("hydrotest_b").note, "there is no MAWP");
    for (const char* name : {"map_nc", "hydrotest_c"}) {
        EXPECT_FALSE(made.row(name).value);
        EXPECT_NE(made.row(name).lacks.back().find("fails whatever the pressure"),
                  std::string::npos);
    }
}

TEST(Summary, FindsTheWarmestTemperature) {
    const Made made = make(VESSEL + "MDMT = -20\ncurve = \"B\"\n" + SHELL + HEAD);
    double warmest = -1000;
    std::string by;
    for (const Calculated& c : made.calculation.calculated) {
        for (const Result& result : c.element->results(*c.outcome)) {
            if (result.field->name != "T_lowest" || !result.value) continue;
            if (static_cast<double>(*result.value) <= warmest) continue;
            warmest = static_cast<double>(*result.value);
            by = c.element->description();
        }
    }
    EXPECT_EQ(made.value("mdmt"), warmest);
    EXPECT_EQ(made.row("mdmt").note, "at the design pressures, not at the MAWP");
    EXPECT_EQ(made.by("mdmt"), by);
}

class VesselProgram : public ProgramTest {};

// A part names the metal temperature that is of it: one that is written, or the one that the vessel asks for.
TEST(MetalTemperature, OfAPartIsNamedInItsRow) {
    const auto reasons = [](const std::string& toml) {
        const Made made_of = make(toml);
        std::vector<std::string> found;
        for (const Calculated& each : made_of.calculation.calculated) {
            for (const Check& check :
                 each.element->checks(*each.outcome, made_of.read.request.units)) {
                if (check.field().id == "metal_temperature" && each.element->kind->table == "shell")
                    found.push_back(check.reason());
            }
        }
        return found;
    };
    const std::string of = "[[mdmt]]\ncurve = \"B\"\nof = \"Head\"\n";
    const std::string none = "an [[mdmt]] for the part makes this check";
    using Reasons = std::vector<std::string>;
    EXPECT_EQ(reasons(VESSEL + SHELL + HEAD), (Reasons{none, none}));
    EXPECT_EQ(reasons(VESSEL + SHELL + HEAD + "[[mdmt]]\ncurve = \"B\"\ntg = 1\nratio = 1\n" + of),
              (Reasons{none, "made in mdmt 2"}));
    EXPECT_EQ(reasons(VESSEL + "MDMT = -20\ncurve = \"B\"\n" + SHELL + HEAD + of),
              (Reasons{"made in mdmt 2", "made in mdmt 1"}));
}

TEST_F(VesselProgram, ShowsTheSummaryOfAVessel) {
    const std::string out = run("run " + write("v.toml", VESSEL + SHELL + HEAD)).out;
    EXPECT_NE(out.find("\nVessel: Drum\n"), std::string::npos);
    EXPECT_NE(out.find("\nMAWP, hot and corroded      psig       216.23  shell 1 (Shell)\n"),
              std::string::npos)
        << out.substr(out.find("\nVessel: Drum\n"));
    // A file without [vessel] is a list of components.
    EXPECT_EQ(run("run " + write("f.toml", FLANGE_TOML)).out.find("\nVessel"), std::string::npos);
}

// ---- external pressure -------------------------------------------------------------------------------------

struct Row {
    std::string id;
    std::optional<float> demand, limit;
    auto operator<=>(const Row&) const = default;
};

std::vector<Row> rows_of(const Checks& checks, bool external) {
    std::vector<Row> rows;
    for (const Check& check : checks) {
        const bool figures = check.ratio() && std::isfinite(*check.ratio());
        if (check.load_case().starts_with("external") == external && figures)
            rows.push_back({std::string(check.field().id), check.demand(), check.limit()});
    }
    return rows;
}

TEST(External, OfAFlangeIsASecondCalculation) {
    const std::string vessel = "tarvane = 1\n[vessel]\nP_external = 15\n";
    const Made both = make(vessel + FLANGE_TOML);
    const Made alone = make(with("P", "P = -15", FLANGE_TOML));
    const std::vector<Row> external = rows_of(both.checks(0), true);
    EXPECT_FALSE(external.empty());
    const std::vector<Row> wanted = rows_of(alone.checks(0), false);
    for (const Row& row : external)
        EXPECT_NE(std::find(wanted.begin(), wanted.end(), row), wanted.end()) << row.id;
    // The internal ones are those without external pressure.
    EXPECT_EQ(rows_of(both.checks(0), false), rows_of(make(FLANGE_TOML).checks(0), false));
    EXPECT_NE(both.calculation.outcomes[0]->report.find("External Pressure"), std::string::npos);
}

TEST(External, IsNoneOfAVesselThatOneComponentLacks) {
    const std::string outside = SHELL + "material = \"SA-516 70\"\nP_external = 15\n";
    const Made alone = make(VESSEL + outside);
    EXPECT_GT(alone.value("maep"), 15.0);
    EXPECT_EQ(alone.by("maep"), "Shell");
    const Made one = make(VESSEL + outside + HEAD);
    EXPECT_FALSE(one.row("maep").value);
    EXPECT_EQ(one.by("maep"), "nothing");
    EXPECT_EQ(one.row("maep").lacks,
              (std::vector<std::string>{"shell 2 (Head): no external pressure"}));
}

TEST(External, OfAVesselIsAtLeastThatOfItsFlanges) {
    const std::string outside = SHELL + "material = \"SA-516 70\"\n";
    const auto with_flange = [&](const std::string& P) {
        return make(VESSEL + "P_external = 15\n" + outside + with("P", "P = 150\n" + P));
    };
    const Made made = with_flange("");
    EXPECT_EQ(made.value("maep"), 15.0);
    EXPECT_EQ(made.by("maep"), "test flange");
    EXPECT_EQ(made.row("maep").note, "at least 15.00 psig: what the flange was checked at; its own "
                                     "MAEP is not known");
    // The shell holds less than what the flange was checked at.
    const Made high = with_flange("P_external = 500\n");
    EXPECT_EQ(high.by("maep"), "Shell");
    EXPECT_EQ(high.value("maep"), make(VESSEL + "P_external = 15\n" + outside).value("maep"));
    EXPECT_EQ(high.row("maep").note, "");
    const Made fails = with_flange("P_external = 5000\n");
    EXPECT_FALSE(fails.row("maep").value);
    EXPECT_EQ(fails.row("maep").lacks,
              (std::vector<std::string>{
                  "flange 1 (test flange): fails at the external design pressure"}));
    // One under external pressure alone.
    EXPECT_EQ(make("tarvane = 1\n[vessel]\n" + with("P", "P = -20")).value("maep"), 20.0);
}

TEST(External, FailsAFlangeByItself) {
    const auto passes = [](const std::string& P) {
        const Made made = make("tarvane = 1\n[vessel]\nP_external = " + P + '\n' + FLANGE_TOML);
        const Checks checks = made.checks(0);
        EXPECT_TRUE(std::all_of(checks.begin(), checks.end(), [](const Check& check) {
            return check.load_case().starts_with("external") || !check.blocks();
        }));
        return made.calculation.status == Status::fine;
    };
    EXPECT_TRUE(passes("15"));
    EXPECT_FALSE(passes("5000"));
}

TEST(External, IsNotAskedOfARatedFlange) {
    const Made made =
        make("tarvane = 1\n[vessel]\nP_external = 15\nP = 10\nT = 100\n[[flange]]\n"
             "kind = \"rated\"\ntype = \"blind\"\nstandard = { class = 150, size = 6 }\n"
             "rating = 150\n");
    std::size_t found = 0;
    for (const Check& check : made.checks(0)) {
        if (check.load_case() != "external") continue;
        ++found;
        EXPECT_EQ(check.state(), State::not_asked);
    }
    EXPECT_EQ(found, 1u);
}

TEST(External, OfAFlatHeadIsItsMawp) {
    const std::string flat = "[[shell]]\nkind = \"flat\"\nD = 20\nt = 1\nC = 0.33\nS = 20000\n"
                             "Sa = 20000\nelevation = 0\n";
    // t = d sqrt(C P / (S E)): P = 20000 / 0.33 / 400
    const auto state = [&](const char* P) {
        const Made made = make(VESSEL + "P_external = " + P + '\n' + flat);
        for (const Check& check : made.checks(0))
            if (check.load_case() == "external") {
                EXPECT_EQ(check.paragraph(), "UG-34(c)(2)");
                return check.state();
            }
        return State::not_made;
    };
    EXPECT_EQ(state("151.5"), State::pass);
    EXPECT_EQ(state("151.6"), State::fail);
    EXPECT_EQ(fault_lines(VESSEL + flat + "P_external = 15\n").size(), 1u);
}

TEST(Codes, ThatDoNotCoverAComponentAreNamed) {
    for (const auto& [code, name] : {std::pair("EN 13445", "EN 13445"), {"BS 5500", "PD 5500"}}) {
        const std::string vessel = "tarvane = 1\n[vessel]\ncode = \"" + std::string(code) + "\"\n";
        const std::string of =
            std::string(" by ") + name + " are not covered; by \"VIII-1\", \"VIII-2\" they are";
        EXPECT_EQ(fault_lines(vessel + "P = 1\nT = 1\n" + SHELL),
                  (std::vector<std::string>{"f:3: code: shells" + of}));
        EXPECT_EQ(fault_lines(vessel + "[[external]]\nkind = \"sphere\"\nP_external = 1\nT = 100\n"
                                       "D = 10\nt = 1\nchart = \"CS-2\"\n"),
                  (std::vector<std::string>{"f:3: code: elements under external pressure" + of}));
    }
    // What MDMT of the vessel asks for has the fault there.
    const std::vector<std::string> both{
        "f:3: code: shells by EN 13445 are not covered; by \"VIII-1\", \"VIII-2\" they are",
        "f:4: MDMT: lowest metal temperatures by EN 13445 are not covered; by \"VIII-1\", "
        "\"VIII-2\" they are"};
    EXPECT_EQ(fault_lines("tarvane = 1\n[vessel]\ncode = \"EN 13445\"\nMDMT = 0\nP = 1\nT = 1\n" +
                          SHELL + HEAD),
              both);
    // Flanges by EN 13445 are covered.
    EXPECT_EQ(fault_lines("tarvane = 1\n[vessel]\ncode = \"EN 13445\"\nMDMT = 0\n" + FLANGE_TOML),
              std::vector<std::string>{both[1]});
    EXPECT_EQ(fault_lines("code = \"VIII-3\"\nP = 1\nT = 1\n" + SHELL).size(), 1u);
}

// ---- examples ----------------------------------------------------------------------------------------------

std::string example(const std::string& name) { return file("examples/" + name); }

TEST(V101, PassesInBothUnitsByTheSameChecks) {
    const Made us = make(example("v101.toml")), si = make(example("v101_si.toml"));
    EXPECT_EQ(us.calculation.status, Status::fine);
    EXPECT_EQ(si.calculation.status, Status::fine);
    ASSERT_EQ(us.calculation.calculated.size(), 14u);
    ASSERT_EQ(si.calculation.calculated.size(), 14u);
    for (std::size_t i = 0; i < 14; ++i) {
        const Checks one = us.checks(i), other = si.checks(i);
        const Check *a = governing(one), *b = governing(other);
        ASSERT_EQ(a == nullptr, b == nullptr) << i;
        if (a == nullptr) continue;
        EXPECT_EQ(a->field().id, b->field().id) << i;
        EXPECT_EQ(a->load_case(), b->load_case()) << i;
        // The metric edition has 1.5 mm for 1/16 in. in UG-16(b).
        if (a->ratio() && b->ratio()) {
            EXPECT_NEAR(*a->ratio(), *b->ratio(), 0.01f) << i;
        }
    }
    for (std::size_t i = 0; i < us.rows.size(); ++i) {
        const SummaryRow &a = us.rows[i], &b = si.rows[i];
        ASSERT_EQ(a.value.has_value(), b.value.has_value()) << a.field->name;
        if (!a.value) continue;
        EXPECT_NEAR(*a.value, *b.value, 0.005f * std::fabs(*a.value)) << a.field->name;
        EXPECT_EQ(a.by->description(), b.by->description()) << a.field->name;
    }
    EXPECT_EQ(us.read.request.document.texts.size(), 3u);
}

// What a component takes from another stands with that one alone.
TEST(V101, SaysNothingTwice) {
    const Made made = make(example("v101.toml"));
    const auto from = [&](std::size_t place, std::string_view key) {
        return made.read.request.elements.at(place)->origins.at(key).from;
    };
    for (const std::size_t head : {1u, 2u}) {
        EXPECT_EQ(from(head, "D"), "shell 1 (Shell)");
        EXPECT_EQ(from(head, "elevation"), "shell 1 (Shell)");
    }
    for (const char* key : {"standard.wall", "tShell", "Sn", "Sna", "ci", "E", "elevation"})
        EXPECT_EQ(from(4, key), "shell 4 (N1 neck)") << key;
    for (const char* key : {"standard.class", "standard.size", "rating", "elevation"})
        EXPECT_EQ(from(6, key), "flange 2 (Manway flange)") << key;
    EXPECT_EQ(from(7, "tr"), "shell 1 (Shell)");
    EXPECT_EQ(from(11, "ratio"), "flange 1 (N1 flange)");
}

TEST(V101, OnePressureChangesAll) {
    const auto pressures = [](const std::string& toml) {
        std::vector<double> found;
        const ReadResult read = read_input(toml);
        for (const auto& element : read.request.elements) {
            if (const Key* P = element->kind->keys.find("P"))
                found.push_back(static_cast<double>(element->number_of(*P)));
        }
        return found;
    };
    std::string toml = example("v101.toml");
    const std::vector<double> low = pressures(toml);
    ASSERT_EQ(low.size(), 7u);
    toml.replace(toml.find("P = 150"), 7, "P = 160");
    const std::vector<double> high = pressures(toml);
    for (std::size_t i = 0; i < low.size(); ++i)
        EXPECT_NEAR(high[i] - low[i], 10.0, 1e-4) << i;
}

} // namespace
} // namespace tarvane::app
