// What the host checks of a flange beyond the engine: pressure rating, gasket, bolt size, columns.
#include "components/flange_checks.h"

#include "app_fixture.h"
#include "catalogue/bolt_sizes.h"
#include "catalogue/data_folder.h"
#include "components/flange_results.h"
#include "document/report_view.h"
#include "tarvane/tarvane.h"
#include "values/text.h"

#include <cmath>

namespace tarvane::app {

using namespace vessel;
namespace {

using Lines = std::vector<std::string>;

struct FlangeRun {
    ReadResult input;
    FlangeOutcome outcome;
    Verdict verdict;

    const FlangeInput& flange() const { return *flanges_of(input.request).at(0); }
    // Whether the report has a line that begins so, and the number after it.
    std::optional<float> report_number(std::string_view beginning) const {
        for (const ReportLine& line : report_lines(outcome.report)) {
            if (std::string_view(line.text).starts_with(beginning))
                return std::strtof(line.text.substr(beginning.size()).c_str(), nullptr);
        }
        return std::nullopt;
    }
    bool reports(std::string_view text) const {
        return to_utf8(outcome.report).find(text) != std::string::npos;
    }
};

FlangeRun calculate(const std::string& toml) {
    set_data_folder(TARVANE_DATA_DIR);
    FlangeRun run{read_input(toml), {}, {}};
    EXPECT_TRUE(run.input.faults.empty()) << fault_line("f", run.input.faults.front()) << toml;
    if (run.input.request.elements.empty()) return run;
    run.outcome = run_flange(run.flange(), run.input.request);
    run.verdict = run.flange().judge(run.outcome, run.input.request.units);
    return run;
}

Lines faults_of(const std::string& toml) {
    set_data_folder(TARVANE_DATA_DIR);
    return fault_lines(toml);
}

std::string with_all(std::initializer_list<std::pair<const char*, const char*>> keys,
                     std::string toml = FLANGE_TOML) {
    for (const auto& [key, line] : keys)
        toml = with(key, line, toml);
    return toml;
}

// ---- pressure rating of a standard flange -------------------------------------------------------------

const std::string STANDARD = FLANGE_TOML + "standard_flange = true\n";

TEST(Rating, NotGivenIsNoPass) {
    const FlangeRun run = calculate(STANDARD);
    EXPECT_TRUE(run.reports("Pressure rating of the flange will be used"));
    EXPECT_EQ(run.verdict.status, Status::fails);
    EXPECT_EQ(run.verdict.reasons,
              Lines{"the check against the pressure rating was not made: give rating, the rated "
                    "pressure of the standard flange at the design temperature"});
}

TEST(Rating, IsHeldAgainstThePressure) {
    EXPECT_EQ(calculate(STANDARD + "rating = 150\n").verdict.status, Status::fine);
    const FlangeRun run = calculate(STANDARD + "rating = 149.99\n");
    EXPECT_EQ(run.verdict.status, Status::fails);
    EXPECT_EQ(run.verdict.reasons,
              Lines{"the equivalent pressure 150.00 psig is above the rating 149.99 psig"});
    // Of a flange with stress calculations too, when it is given.
    EXPECT_EQ(calculate(FLANGE_TOML + "rating = 149.99\n").verdict.status, Status::fails);
    EXPECT_EQ(faults_of(STANDARD + "rating = 0\n"), Lines{"f:28: rating: it must be above 0"});
}

// 4 F / pi G^2 + 16 M / pi G^3, of an external moment in foot-pounds.
float with_loads(float pressure, float force, float moment, float G) {
    constexpr float pi = 3.14159265f;
    return pressure + 4.0f * force / (pi * G * G) + 16.0f * 12.0f * moment / (pi * G * G * G);
}

TEST(Rating, IsHeldAgainstTheEquivalentPressure) {
    const std::string loaded = STANDARD + "axial_force = 3000\nbending_moment = 1500\n";
    for (const std::string& toml :
         {loaded, loaded + "code = \"VIII-2\"\n", loaded + "code = \"EN 13445\"\n",
          with("P", "P = -150", loaded), with("P", "P = -150", loaded + "code = \"VIII-2\"\n")}) {
        const float G = calculate(toml).outcome.result(TARVANE_G);
        ASSERT_GT(G, 14.0f) << toml;
        const float equivalent = with_loads(150.0f, 3000.0f, 1500.0f, G);
        EXPECT_GT(equivalent, 190.0f);
        const auto rated = [&](float rating) {
            return calculate(toml + "rating = " + std::to_string(rating) + '\n').verdict.status;
        };
        EXPECT_EQ(rated(equivalent * 1.0001f), Status::fine) << toml;
        EXPECT_EQ(rated(equivalent * 0.9999f), Status::fails) << toml;
    }
    // A compressive force relieves nothing.
    const std::string pressed = STANDARD + "axial_force = -3000\nrating = ";
    EXPECT_EQ(calculate(pressed + "150\n").verdict.status, Status::fine);
    EXPECT_EQ(calculate(pressed + "149\n").verdict.status, Status::fails);
    // Loads that are switched off do not count.
    const std::string idle = loaded + "external_loads = false\nrating = 150\n";
    EXPECT_EQ(calculate(idle).verdict.status, Status::fine);
}

using Program = ProgramTest;

TEST_F(Program, StandardFlangeNeedsItsRating) {
    const std::string file = write("standard.toml", STANDARD);
    const ProgramRun unrated = run("run " + file);
    EXPECT_EQ(unrated.status, 1);
    EXPECT_NE(unrated.err.find("the check against the pressure rating was not made"),
              std::string::npos)
        << unrated.err;
    const ProgramRun rated = run("run " + write("rated.toml", STANDARD + "rating = 230\n"));
    EXPECT_EQ(rated.status, 0) << rated.err;
}

// ---- contact of the gasket ----------------------------------------------------------------------------

const std::string BLIND = with_all(
    {{"type", "type = \"blind\""}, {"B", ""}, {"g0", ""}, {"g1", ""}, {"h", ""}, {"t", "t = 2"}});

const std::string WITHOUT_FACE = with_all({{"kind", "kind = \"design\""},
                                           {"Fod", "Fod = 34"},
                                           {"Fid", "Fid = 30"},
                                           {"Go", "Go = 33"},
                                           {"Gi", "Gi = 31.5"},
                                           {"A", "A = 40"},
                                           {"C", "C = 37"}},
                                          BLIND);

TEST(Gasket, WithoutContactFailsOfADesignedFlangeToo) {
    const FlangeRun run = calculate(WITHOUT_FACE);
    EXPECT_EQ(run.outcome.result(TARVANE_Wm2), 0.0f); // what made the flange look sound
    EXPECT_EQ(run.verdict.status, Status::fails);
    EXPECT_EQ(run.verdict.reasons,
              Lines{"the gasket has no contact width: 0.000 in., from Gi 31.500 in. to Fod 31.500 "
                    "in."});
    // Half an inch of face, and the design is left as it was.
    const FlangeRun sound = calculate(with("Gi", "Gi = 30", WITHOUT_FACE));
    EXPECT_EQ(sound.verdict.status, Status::fine) << sound.verdict.reasons.front();
}

TEST(Gasket, OfADesignUnderExternalPressureIsCheckedByItsWidth) {
    const FlangeRun run = calculate(with("P", "P = -15", WITHOUT_FACE));
    EXPECT_EQ(run.outcome.result(TARVANE_DESIGNED_C), 0.0f);
    ASSERT_FALSE(run.verdict.reasons.empty());
    EXPECT_EQ(run.verdict.status, Status::fails);
    EXPECT_EQ(run.verdict.reasons.back(), "the gasket has no contact width: N 0.000 in.");
    const FlangeRun sound = calculate(with("P", "P = -15", with("Gi", "Gi = 30", WITHOUT_FACE)));
    EXPECT_GT(sound.outcome.found.N, 0.0f);
    for (const std::string& reason : sound.verdict.reasons)
        EXPECT_EQ(reason.find("contact width"), std::string::npos) << reason;
}

TEST(Gasket, WithoutContactHasItsFiguresWhenTheEngineRefusesIt) {
    const FlangeRun run = calculate(with_all({{"Fod", "Fod = 14"}, {"Gi", "Gi = 14"}}));
    EXPECT_EQ(run.verdict.status, Status::bad_input);
    EXPECT_EQ(run.verdict.reasons,
              (Lines{"the input check found fatal errors, no calculation was made",
                     "the gasket has no contact width: 0.000 in., from Gi 14.000 in. to Fod 14.000 "
                     "in."}));
}

TEST(Gasket, NeedsTheWidthsThatItsSketchGoesBy) {
    const std::string ring_joint = with("facing", "facing = \"6\"");
    const FlangeRun without = calculate(ring_joint);
    EXPECT_EQ(without.outcome.result(TARVANE_Wm2), 0.0f);
    EXPECT_EQ(without.verdict.status, Status::fails);
    EXPECT_EQ(without.verdict.reasons.back(),
              "the gasket has no contact width: facing sketch 6 takes w, 0.0000 in.");
    const FlangeRun with_w = calculate(ring_joint + "w = 0.4375\n");
    EXPECT_EQ(with_w.verdict.status, Status::fine) << with_w.verdict.reasons.front();

    const std::string nubbin = with("facing", "facing = \"1c\"");
    EXPECT_EQ(calculate(nubbin).verdict.status, Status::fails);
    EXPECT_EQ(calculate(nubbin + "tg = 0.125\n").verdict.status, Status::fine);
    EXPECT_EQ(calculate(nubbin + "w = 0.125\n").verdict.status, Status::fine);

    // A self-energizing gasket needs no load.
    const std::string o_ring = with_all({{"m", "m = 0"}, {"y", "y = 0"}}, ring_joint);
    EXPECT_EQ(calculate(o_ring).verdict.status, Status::fine);

    const std::string part = FLANGE_TOML + "lp = 12\nmPart = 3\nyPart = 10000\n";
    EXPECT_EQ(calculate(part + "tp = 0.05\n").verdict.status, Status::fine);
    EXPECT_EQ(calculate(part + "tp = 0\n").verdict.reasons.back(),
              "the partition gasket has no contact width: tp 0.0000 in.");
}

// The width of the note is the one that the report shows.
TEST(Gasket, BeyondItsFaceGetsANoteWithTheContactWidth) {
    struct Case {
        std::string toml, note, line;
        float width;
    };
    const std::string begin = "note: the gasket reaches beyond its face or the bolt circle (";
    const Case cases[] = {
        {with("Fod", "Fod = 14.5"),
         begin + "Go 14.750 in. above Fod 14.500 in.); the contact width taken is 0.250 in., from "
                 "Gi 14.000 in. to Fod 14.500 in.",
         "Gasket Contact Width,       N = (Fod - Gi) / 2  ", 0.25f},
        {with("Fid", "Fid = 14.25"),
         begin + "Gi 14.000 in. below Fid 14.250 in.); the contact width taken is 0.250 in., from "
                 "Fid 14.250 in. to Go 14.750 in.",
         "Gasket Contact Width,       N = (Go - Gi) / 2   ", 0.25f},
        // In a groove of its own the gasket counts as a whole.
        {with_all({{"Fid", "Fid = 14.25"}, {"facing", "facing = \"1c\""}}) + "tg = 0.125\n",
         begin + "Gi 14.000 in. below Fid 14.250 in.); the contact width taken is 0.375 in., from "
                 "Gi 14.000 in. to Go 14.750 in.",
         "Gasket Contact Width,       N = (Go - Gi) / 2   ", 0.375f},
    };
    for (const Case& c : cases) {
        const FlangeRun run = calculate(c.toml);
        EXPECT_NE(std::find(run.verdict.reasons.begin(), run.verdict.reasons.end(), c.note),
                  run.verdict.reasons.end())
            << c.note << '\n'
            << (run.verdict.reasons.empty() ? "" : run.verdict.reasons.back());
        const std::optional<float> width = run.report_number(c.line);
        ASSERT_TRUE(width.has_value()) << c.line;
        EXPECT_EQ(*width, c.width) << c.line;
    }
    // A note alone lets a flange pass.
    const FlangeRun noted = calculate(with("Fid", "Fid = 14.125"));
    EXPECT_EQ(noted.verdict.reasons.size(), 1u);
    EXPECT_EQ(noted.verdict.status, Status::fine);
}

TEST(Gasket, WithinItsFaceGetsNoNote) {
    EXPECT_TRUE(calculate(FLANGE_TOML).verdict.reasons.empty());
    const std::string flush = with_all({{"Go", "Go = 15"}, {"Gi", "Gi = 14"}, {"Fid", "Fid = 14"}});
    for (const std::string& reason : calculate(flush).verdict.reasons)
        EXPECT_EQ(reason.find("note:"), std::string::npos) << reason;
}

TEST(Gasket, OfALapJointIsLimitedByItsLap) {
    const std::string lap = with_all({{"type", "type = \"lap joint\""}, {"Go", "Go = 14.75"}}) +
                            "LjID = 12\nLjOD = 14.5\n";
    const Lines reasons = calculate(lap).verdict.reasons;
    EXPECT_NE(
        std::find(reasons.begin(), reasons.end(),
                  "note: the gasket reaches beyond its face or the bolt circle (Go 14.750 in. "
                  "above LjOD 14.500 in.); the contact width taken is 0.250 in., from Gi "
                  "14.000 in. to LjOD 14.500 in."),
        reasons.end());
    EXPECT_NE(calculate(with("LjOD", "LjOD = 14", lap))
                  .verdict.reasons.back()
                  .find("no contact width: 0.000 in., from Gi 14.000 in. to LjOD 14.000 in."),
              std::string::npos);
}

// Beyond the bolt circle it is a full face gasket: Taylor Forge counts it to the bolt circle, EN 13445-3
// 11.6 the narrower side.
TEST(Gasket, BeyondTheBoltCircleTellsItsWidth) {
    const std::string full = with_all({{"Fod", "Fod = 19"}, {"Go", "Go = 19"}, {"Gi", "Gi = 13"}});
    const auto noted = [&](const std::string& toml, const std::string& words) {
        const Lines reasons = calculate(toml).verdict.reasons;
        return std::any_of(reasons.begin(), reasons.end(), [&](const std::string& reason) {
            return reason.starts_with("note: ") && reason.find(words) != std::string::npos;
        });
    };
    EXPECT_TRUE(noted(full,
                      "(Go 19.000 in. above C 17.000 in.); the contact width taken is 2.000 in., "
                      "from Gi 13.000 in. to C 17.000 in."));
    EXPECT_TRUE(
        noted(full + "code = \"EN 13445\"\n", "is 1.000 in., from C 17.000 in. to Go 19.000 in."));
}

TEST_F(Program, DesignWithoutContactWidthFails) {
    const ProgramRun result = run("run " + write("design.toml", WITHOUT_FACE));
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(
        result.err.find("flange 1 (test flange): the gasket has no contact width: 0.000 in., "),
        std::string::npos)
        << result.err;
}

// ---- bolt sizes ---------------------------------------------------------------------------------------

TEST(BoltSize, OfTheSeriesOnly) {
    EXPECT_EQ(
        faults_of(with("a", "a = 0.9")),
        Lines{"f:17: a: the thread series \"TEMA\" has no bolt of 0.900 in.; the nearest are of "
              "0.875 in. and 1.000 in., and bolt_size = \"nearest\" takes 0.875 in."});
    EXPECT_EQ(
        faults_of(with("a", "a = 0.25")),
        Lines{"f:17: a: the thread series \"TEMA\" has no bolt of 0.250 in.; the nearest are of "
              "0.500 in., and bolt_size = \"nearest\" takes 0.500 in."});
    // Within the distance that the engine accepts.
    EXPECT_TRUE(faults_of(with("a", "a = 0.885")).empty());
    EXPECT_TRUE(faults_of(with("a", "a = 0.865")).empty());
    EXPECT_EQ(faults_of(with("a", "a = 0.8851")).size(), 1u);
    EXPECT_EQ(faults_of(with("a", "a = 0.8649")).size(), 1u);
    EXPECT_TRUE(faults_of(with("a", "a = 0.49995")).empty());
    EXPECT_EQ(faults_of(with("a", "a = 0.4998")).size(), 1u);
    EXPECT_EQ(faults_of(with_all({{"a", "a = 0"}, {"n", "n = 12"}})).size(), 1u);
    // A root area needs no size, and a design selects one.
    EXPECT_TRUE(faults_of(with_all({{"a", "a = 0.9"}, {"bolting", "bolting = \"special\""}}) +
                          "root_area = 0.4\n")
                    .empty());
    EXPECT_TRUE(faults_of(with("a", "a = 0.9") + "kind = \"design\"\n").empty());
    EXPECT_EQ(
        faults_of(with("bolting", "bolting = \"user table\"")),
        Lines{"f:14: bolting: BOLTDATA.TXT has no bolts of the thread series \"user table\""});
}

TEST(BoltSize, OfAMetricSeriesInItsOwnUnit) {
    const std::string metric = with("bolting", "bolting = \"TEMA metric\"");
    const auto of = [&](double millimetres) {
        return with("a", "a = " + std::to_string(millimetres / 25.4), metric);
    };
    for (const double size : {12.0, 16.0, 30.0, 36.0})
        EXPECT_TRUE(faults_of(of(size)).empty()) << size;
    const Lines faults = faults_of(of(33.0));
    ASSERT_EQ(faults.size(), 1u);
    EXPECT_NE(faults[0].find("takes 1.181 in."), std::string::npos) << faults[0]; // 30 mm
}

// The engine's report says in the same words what it used.
TEST(BoltSize, NearestIsNoted) {
    const FlangeRun run = calculate(with("a", "a = 0.9") + "bolt_size = \"nearest\"\n");
    EXPECT_EQ(
        run.verdict.reasons,
        Lines{"note: the thread series has no bolt of 0.900 in.; the bolt of 0.875 in. was taken"});
    EXPECT_EQ(run.verdict.status, Status::fine);
    EXPECT_TRUE(run.reports("Warning: bolt dia."));
    const FlangeRun listed = calculate(FLANGE_TOML + "bolt_size = \"nearest\"\n");
    EXPECT_TRUE(listed.verdict.reasons.empty());
    EXPECT_EQ(run.outcome.result(TARVANE_Ab), listed.outcome.result(TARVANE_Ab));
}

// The bolt area shows what the engine uses, for every series between, below and above its sizes.
TEST(BoltSize, TakenIsThatOfTheEngine) {
    set_data_folder(TARVANE_DATA_DIR);
    for (const std::int32_t series : {TARVANE_TEMA_THREADS, TARVANE_UNC_THREADS,
                                      TARVANE_TEMA_METRIC_THREADS, TARVANE_BS_3643_THREADS}) {
        const BoltSizes sizes(series);
        ASSERT_FALSE(sizes.empty());
        float diameters[27], rows[27][9];
        std::int32_t count = 0;
        BOLTHELPER(&series, diameters, rows[0], &count);
        const float inch = diameters[0] > 0.001f ? 25.4f : 1.0f;
        const auto area_of = [&](float taken) {
            for (const auto& row : rows)
                if (std::fabs(row[0] - taken * inch) < 0.0001f)
                    return row[1] / (inch > 1.0f ? 645.16f : 1.0f);
            return -1.0f;
        };
        ReadResult input = read_input(FLANGE_TOML);
        FlangeInput flange = *flanges_of(input.request).at(0);
        flange.record[TARVANE_THREADS] = static_cast<float>(series);
        for (float a = 0.3f; a < 1.4f; a += 0.0437f) {
            flange.record[TARVANE_a] = a;
            const FlangeOutcome outcome = run_flange(flange, input.request);
            const float Ab = outcome.result(TARVANE_Ab);
            if (Ab == 0.0f) continue; // refused: too many bolts
            EXPECT_NEAR(12.0f * area_of(sizes.taken(a)) / Ab, 1.0f, 1e-5f) << series << ' ' << a;
        }
        EXPECT_EQ(sizes.taken(20.0f), sizes.neighbours(20.0f).at(0));
    }
}

// ---- columns ------------------------------------------------------------------------------------------

TEST(Column, IsRequiredWhereTheColumnsDiffer) {
    for (const char* sketch : {"2", "3", "4", "5"}) {
        const std::string toml =
            with("facing", std::string("facing = \"") + sketch + '"') + "w = 0.1\n";
        EXPECT_EQ(
            faults_of(toml),
            Lines{"f:1: column: missing in flange 1; one of \"I\", \"II\" is expected (column for "
                  "gasket seating; required for the facings 2 to 5, whose columns differ)"})
            << sketch;
        const FlangeRun first = calculate(toml + "column = \"I\"\n"),
                        second = calculate(toml + "column = \"II\"\n");
        EXPECT_NE(first.outcome.result(TARVANE_Wm1), second.outcome.result(TARVANE_Wm1)) << sketch;
    }
    for (const char* sketch : {"1a", "1b", "1c", "1d", "6"}) {
        const std::string toml =
            with("facing", std::string("facing = \"") + sketch + '"') + "w = 0.1\ntg = 0.1\n";
        EXPECT_TRUE(faults_of(toml).empty()) << sketch;
        const FlangeRun first = calculate(toml + "column = \"I\"\n"),
                        second = calculate(toml + "column = \"II\"\n");
        EXPECT_EQ(first.outcome.result(TARVANE_Wm1), second.outcome.result(TARVANE_Wm1)) << sketch;
    }
}

TEST(Column, OfThePartitionGasketToo) {
    const std::string part = FLANGE_TOML + "lp = 12\ntp = 0.1\nmPart = 3\nyPart = 10000\n";
    EXPECT_TRUE(faults_of(part).empty());
    const std::string other = part + "facing_part = \"3\"\n";
    ASSERT_EQ(faults_of(other).size(), 1u);
    EXPECT_NE(faults_of(other)[0].find("column_part: missing"), std::string::npos);
    EXPECT_TRUE(faults_of(other + "column_part = \"I\"\n").empty());
    EXPECT_TRUE(faults_of(other + "partition_gasket = false\n").empty());
}

TEST(Column, NamesOfOtherHostsFindTheirKeys) {
    EXPECT_EQ(faults_of(FLANGE_TOML + "bolts = 12\n"),
              Lines{"f:27: bolts: unknown key; the nearest is n, number of bolts"});
    EXPECT_NE(faults_of(FLANGE_TOML + "sketch_part = 1\n").at(0).find("the nearest is facing_part"),
              std::string::npos);
}

// ---- descriptions -------------------------------------------------------------------------------------

const std::string LONG = "Channel side girth flange of the feed water heater";

TEST_F(Program, LongDescriptionIsKeptWhole) {
    const std::string flange = with("description", "description = \"" + LONG + '"');
    const std::string shell = "[[shell]]\ndescription = \"" + LONG +
                              "\"\nkind = \"cylinder\"\nP = 100\nT = 100\nS = 20000\nSa = 20000\n"
                              "D = 60\nt = 0.1\n";
    const std::string mdmt = "[[mdmt]]\ndescription = \"" + LONG + "\"\ncurve = \"B\"\ntg = 1\n";
    const ProgramRun result =
        run("run --plain " + write("long.toml", with("t", "t = 0.75", flange) + shell + mdmt));
    EXPECT_EQ(result.status, 1);
    // The engine's line has the first 15 characters, those of the host continue below.
    EXPECT_NE(result.out.find("Description: Channel side gi\n"), std::string::npos) << result.out;
    const std::string below(62, ' ');
    EXPECT_NE(result.out.find("Description: Channel side girth flange of the feed\n" + below +
                              "water heater\n"),
              std::string::npos)
        << result.out;
    for (const char* kind : {"flange 1 (", "shell 1 ("})
        EXPECT_NE(result.err.find(kind + LONG + "): "), std::string::npos) << result.err;
    const std::size_t tables = result.out.find("\nResults ");
    ASSERT_NE(tables, std::string::npos);
    for (const char* part :
         {"   Channel side\n", " girth flange of\n", "  the feed water\n", "   heater\n"})
        EXPECT_NE(result.out.find(part, tables), std::string::npos) << result.out.substr(tables);
}

// The colon in the last column is a flag of the engine.
TEST(Description, HasNoFlagInItsFifteenthCharacter) {
    const auto slot_of = [](const std::string& text, const std::string& more) {
        return flange_of(with("description", "description = \"" + text + '"') + more)
            .text.substr(slot::description, 15);
    };
    EXPECT_EQ(slot_of("Channel flange: second", ""), "Channel flange ");
    EXPECT_EQ(slot_of("Channel flange:", ""), "Channel flange ");
    EXPECT_EQ(slot_of("Channel flange, second", ""), "Channel flange,");
    EXPECT_EQ(slot_of("Channel flange, second", "keep_thickness = true\n"), "Channel flange:");
    EXPECT_EQ(
        flange_of(with("description", "description = \"Channel flange: second\"")).description(),
        "Channel flange: second");
}

} // namespace
} // namespace tarvane::app
