// Flanges of kind "rated": their rating takes the place of a calculation.
#include "app_fixture.h"
#include "check_rows.h"
#include "components/calculation.h"
#include "components/flange_session.h"
#include "document/report_view.h"
#include "document/results.h"

namespace tarvane::app {

using namespace vessel;
namespace {

// All that a rated flange needs, and what the vessel's own data say of it.
const std::string RATED = R"([[flange]]
description = "Manway flange"
type = "weld neck"
kind = "rated"
P = 150
T = 300
rating = 230
material = "SA-105"
standard = { class = 150, size = 20, wall = 0.5 }
)";

TEST(RatedFlange, PassesByItsRatingAlone) {
    const Judged flange = judged(RATED);
    EXPECT_EQ(flange.verdict.status, Status::fine);
    EXPECT_TRUE(flange.verdict.reasons.empty());
    ASSERT_EQ(flange.checks.size(), 3u);
    EXPECT_EQ(flange.state("rating"), "pass");
    EXPECT_EQ(flange.find("rating")->demand(), 150.0f);
    EXPECT_EQ(flange.find("rating")->limit(), 230.0f);
    EXPECT_EQ(flange.state("heat_treatment"), "not asked");
    EXPECT_EQ(governing(flange.checks)->field().id, "rating");
}

TEST(RatedFlange, FailsAboveItsRating) {
    expect_flip({"rating", 200.0f, 300.0f, at("P", RATED)});
    expect_flip({"rating", 200.0f, 100.0f, at("rating", RATED)});
    expect_flip({"rating", -200.0f, -300.0f, at("P", RATED)});
    const Judged flange = judged(with("P", "P = 231", RATED));
    EXPECT_EQ(flange.verdict.status, Status::fails);
    ASSERT_EQ(flange.verdict.reasons.size(), 1u);
    EXPECT_EQ(flange.verdict.reasons[0],
              "the equivalent pressure 231.00 psig is above the rating 230.00 psig");
}

TEST(RatedFlange, NeedsNothingButPressureTemperatureAndRating) {
    const std::string least = "[[flange]]\ntype = \"blind\"\nkind = \"rated\"\n";
    std::vector<std::string> missing;
    for (const Fault& fault : read_input(least).faults)
        missing.push_back(fault.key);
    EXPECT_EQ(missing, (std::vector<std::string>{"P", "T", "rating"}));
    for (const char* type : {"blind", "weld neck", "slip on", "lap joint", "loose slip on"}) {
        EXPECT_EQ(judged(with("type", "type = \"" + std::string(type) + '"',
                              least + "P = 150\nT = 300\nrating = 230\n"))
                      .verdict.status,
                  Status::fine)
            << type;
    }
    EXPECT_EQ(fault_lines(with("rating", "rating = 0", RATED)),
              std::vector<std::string>{"f:7: rating: it must be above 0"});
}

TEST(RatedFlange, TakesTheDimensionsOfItsStandard) {
    const FlangeInput flange = flange_of(RATED);
    EXPECT_EQ(flange.standard(), "ASME B16.5 class 150 NPS 20");
    EXPECT_EQ(flange.record[11], 27.5f);
    EXPECT_EQ(flange.record[24], 20.0f);
    EXPECT_FLOAT_EQ(flange.record[10], 19.0f);
    EXPECT_EQ(flange_of(with("type", "type = \"blind\"", with("standard", "", RATED)) +
                        "standard = { class = 150, size = 20 }\n")
                  .record[10],
              0.0f);
}

TEST(RatedFlange, ReadsNothingThatStressesGoBy) {
    // A material that no file has, a bolt that no series has and a gasket are no matter.
    const std::string more = RATED + "Sb = 1\ngasket = { m = 3, Go = 20 }\nbolting = \"UNC\"\n"
                                     "a = 0.77\nstandard_flange = true\n";
    const Judged flange = judged(with("material", "material = \"SA-999\"", more));
    EXPECT_EQ(flange.verdict.status, Status::fine);
    const FlangeInput read = flange_of(more);
    for (const char* key : {"Sb", "Sfo", "m", "bolting", "bolt_size", "ci", "standard_flange",
                            "rigidity", "channel_cover"})
        EXPECT_EQ(read.origins.at(key).from, "not read: kind rated") << key;
    EXPECT_EQ(read.origins.at("rating").from, "file");
    EXPECT_EQ(read.origins.at("C").from, "standard ASME B16.5 class 150 NPS 20");
    // The other kinds read them as ever.
    EXPECT_EQ(flange_of(FLANGE_TOML).origins.at("Sb").from, "file");
    EXPECT_EQ(flange_of(FLANGE_TOML).origins.at("rigidity").from, "default");
}

TEST(RatedFlange, RefusesExternalLoads) {
    const std::string expected =
        "a flange of kind \"rated\" takes no external loads; with them give kind \"analyse\", the "
        "gasket and the rating";
    EXPECT_EQ(fault_lines(RATED + "axial_force = 100\n"),
              std::vector<std::string>{"f:10: axial_force: " + expected});
    EXPECT_EQ(fault_lines(RATED + "external_loads = true\n"),
              std::vector<std::string>{"f:10: external_loads: " + expected});
    EXPECT_TRUE(fault_lines(RATED + "axial_force = 100\nexternal_loads = false\n").empty());
}

TEST(RatedFlange, ResultsAreItsRatingAndWhyTheRestIsNone) {
    const Judged flange = judged(RATED);
    EXPECT_EQ(flange.result("rating"), 230.0f);
    EXPECT_EQ(flange.result("P"), 150.0f);
    EXPECT_FLOAT_EQ(flange.result("t").value_or(0.0f), 1.62f);
    for (const char* name : {"SHo", "mawp", "Wm1", "t_req", "weight_finished", "J_seating"}) {
        EXPECT_FALSE(flange.result(name)) << name;
        EXPECT_EQ(flange.why(name), "kind rated: no stresses are calculated") << name;
    }
    EXPECT_EQ(judged(FLANGE_TOML).why("rating"), "not given");
}

TEST(RatedFlange, ReportSaysThatNoStressesWereCalculated) {
    const auto report_of = [](const std::string& toml) {
        const ReadResult input = read_input(toml);
        return show_report(run_flange(*flanges_of(input.request)[0], input.request).report, false);
    };
    const std::string report = report_of(RATED);
    for (const char* line :
         {"\nDescription of Flange Geometry (Type)     Weld Neck\n",
          "\nStandard                                  ASME B16.5 class 150 NPS 20\n",
          "\nPressure Rating at the Design Temperature             230.00  psig\n",
          "\nNo stresses were calculated: the flange is rated by ASME B16.5 class 150 NPS 20, "
          "UG-44.\n",
          "\nDesign Pressure over Pressure Rating                  0.6522\n"})
        EXPECT_NE(report.find(line), std::string::npos) << line << '\n' << report;
    EXPECT_EQ(report.find("Warning"), std::string::npos);
    EXPECT_EQ(report.find("Stress "), std::string::npos) << report;
    EXPECT_NE(report_of(with("P", "P = 231", RATED))
                  .find("Warning: The design pressure is above the pressure rating!"),
              std::string::npos);
    EXPECT_NE(report_of(with("standard", "", RATED))
                  .find("rated by the standard that it is made to, UG-44."),
              std::string::npos);
    EXPECT_NE(report_of(RATED + "code = \"VIII-2\"\n").find("NPS 20, 4.1.11."), std::string::npos);
    EXPECT_NE(report_of(RATED + "code = \"EN 13445\"\n").find("NPS 20.\n"), std::string::npos);
}

// The tolerance of the check is none of the rating.
TEST(RatedFlange, RatedPressureIsItsRating) {
    set_data_folder(TARVANE_DATA_DIR);
    const auto rated_of = [](const std::string& toml) {
        const ReadResult input = read_input(toml);
        const auto found = calculate(input.request).outcomes.front()->rated_pressure.value();
        EXPECT_EQ(found.held_by, "rating");
        EXPECT_FALSE(found.P && *found.P > flange_of(toml).setting(Setting::rating));
        return found.P ? shown(*found.P, Quantity::pressure, input.request.units) : found.why;
    };
    EXPECT_EQ(rated_of(RATED), "230.00 psig");
    EXPECT_EQ(rated_of(with("rating", "rating = 230.009", RATED)), "230.00 psig");
    EXPECT_EQ(rated_of(with("rating", "rating = 1480", RATED)), "1480.00 psig");
    EXPECT_EQ(rated_of(with("rating", "rating = \"15.8 bar\"", RATED)), "229.15 psig");
    // 230 within the tolerance of the check still passes.
    EXPECT_EQ(judged(with("P", "P = 230.01", RATED)).state("rating"), "pass");
}

class RatedProgram : public ProgramTest {};

TEST_F(RatedProgram, TableOfRatedFlangesClosesTheOutput) {
    const ProgramRun result = run("run " + write("rated.toml", RATED));
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_NE(result.out.find("\nRated flanges "), std::string::npos) << result.out;
    EXPECT_EQ(result.out.find("\nResults "), std::string::npos) << result.out;
    EXPECT_EQ(run("run " + write("over.toml", with("P", "P = 231", RATED))).status, 1);
}

} // namespace
} // namespace tarvane::app
