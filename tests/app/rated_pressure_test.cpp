// The rated pressure: its search on a component of the test's own, and what it finds of flanges and shells.
#include "app_fixture.h"
#include "check_rows.h"
#include "components/calculation.h"
#include "components/flange_session.h"
#include "components/shell_input.h"
#include "components/shell_session.h"
#include "document/results.h"

#include <algorithm>
#include <functional>
#include <random>

namespace tarvane::app {

using namespace vessel;
namespace {

// ---- the search ------------------------------------------------------------------------------------------

constexpr CheckField WALL{"wall", "", "wall", Quantity::pressure},
    FORM{"form", "", "form", Quantity::number}, ESTIMATE{"mawp", "", "MAWP", Quantity::pressure};

// A component whose checks are what the test says of a pressure.
struct Box final : Element {
    float P = 100.0f;
    std::optional<float> estimate;
    std::function<Checks(float)> judge_at;
    std::vector<float>* calculated = nullptr;

    std::unique_ptr<Element> copy() const override { return std::make_unique<Box>(*this); }
    std::string description() const override { return "box"; }
    void put_number(const Key&, float) override {}
    void put_text(const Key&, const std::string&) override {}
    float number_of(const Key&) const override { return 0.0f; }
    std::string text_of(const Key&) const override { return {}; }
    void complete(Reading&) override {}
    std::unique_ptr<Outcome> calculate(const Request& request) const override {
        EXPECT_FALSE(request.report);
        if (calculated != nullptr) calculated->push_back(P);
        return std::make_unique<Outcome>();
    }
    Checks find_checks(const Outcome&, const UnitSystem&) const override { return judge_at(P); }
    RatingBasis rating_basis(const Outcome&) const override { return {copy(), P, estimate, {}}; }
    void put_pressure(float pressure) override { P = pressure; }
};

// Passes in the intervals of pressure.
std::function<Checks(float)> within(std::vector<std::pair<float, float>> intervals) {
    return [intervals](float P) {
        const bool passes = std::any_of(intervals.begin(), intervals.end(), [P](const auto& each) {
            return each.first <= P && P <= each.second;
        });
        return Checks{Check::found(WALL, passes)};
    };
}

RatedPressure rated(const Box& box, const UnitSystem& units = us_units()) {
    Request request;
    request.units = units;
    return find_rated_pressure(box, Outcome(), request).value();
}

UnitSystem pascals() {
    UnitSystem units = si_units();
    units.factors[1] = 6894.75729f;
    units.labels[1] = "Pa";
    return units;
}

TEST(RatedPressure, IsTheLastDigitThatPasses) {
    std::vector<float> calculated;
    Box box;
    box.judge_at = within({{0.0f, 231.117f}});
    box.calculated = &calculated;
    const RatedPressure found = rated(box);
    EXPECT_EQ(found.P, 231.11f);
    EXPECT_EQ(found.passes, 231.11f);
    EXPECT_EQ(found.fails, 231.12f);
    EXPECT_EQ(found.held_by, "wall");
    EXPECT_TRUE(found.anyway.empty());
    EXPECT_EQ(found.calculations, static_cast<int>(calculated.size()));
    EXPECT_LE(found.calculations, 60);
    // Half the design pressure is the start, and a calculation was made at what is shown.
    EXPECT_EQ(calculated.front(), 50.0f);
    EXPECT_NE(std::find(calculated.begin(), calculated.end(), 231.11f), calculated.end());
    // The same whatever the design pressure was.
    for (const float P : {30.0f, 231.0f, 600.0f, 5000.0f}) {
        box.P = P;
        EXPECT_EQ(rated(box).P, 231.11f) << P;
    }
}

TEST(RatedPressure, StartsAtHalfTheLesserOfPressureAndEstimate) {
    std::vector<float> calculated;
    Box box;
    box.judge_at = within({{0.0f, 231.117f}});
    box.calculated = &calculated;
    for (const auto& [estimate, start] :
         {std::pair(60.0f, 30.0f), {300.0f, 50.0f}, {-1.0f, 50.0f}}) {
        calculated.clear();
        box.estimate = estimate;
        EXPECT_EQ(rated(box).P, 231.11f);
        EXPECT_EQ(calculated.front(), start) << estimate;
        EXPECT_EQ(rated(box).estimate, estimate);
    }
}

TEST(RatedPressure, ShowsTheDigitsOfTheUnits) {
    Box box;
    box.judge_at = within({{0.0f, 231.117f}}); // 1.59350 MPa
    const UnitSystem si = si_units();
    const float mpa = si.to_file(rated(box, si).P.value(), Quantity::pressure);
    EXPECT_EQ(number_text(mpa, 4), "1.5934");
    UnitSystem bar = si;
    bar.factors[1] = 0.0689475729f;
    EXPECT_EQ(number_text(bar.to_file(rated(box, bar).P.value(), Quantity::pressure), 3), "15.934");
    // Singles of pascals are further apart than the digits.
    const RatedPressure pa = rated(box, pascals());
    ASSERT_TRUE(pa.P);
    EXPECT_LE(*pa.P, 231.117f);
    EXPECT_GT(*pa.fails, 231.117f);
    EXPECT_NEAR(*pa.P, 231.117f, 1.0e-4f);
}

TEST(RatedPressure, EndsBelowAnIslandOfFailure) {
    Box box;
    box.judge_at = within({{0.0f, 80.0f}, {95.0f, 300.0f}}); // wider than a step up
    EXPECT_EQ(rated(box).P, 80.0f);
    box.P = 400.0f; // the start is beyond it
    EXPECT_EQ(rated(box).P, 300.0f);
}

TEST(RatedPressure, HalvesDownToOnePsi) {
    std::vector<float> calculated;
    Box box;
    box.P = 1000.0f;
    box.calculated = &calculated;
    box.judge_at = within({{0.0f, 1.3f}});
    EXPECT_EQ(rated(box).P, 1.3f);
    calculated.clear();
    box.judge_at = within({{0.0f, 0.4f}});
    const RatedPressure none = rated(box);
    EXPECT_FALSE(none.P);
    EXPECT_EQ(none.why, "it fails down to 0.97 psig, wall");
    EXPECT_EQ(none.fails, 0.97f);
    EXPECT_FALSE(none.passes);
    EXPECT_TRUE(none.anyway.empty());
    EXPECT_EQ(none.held_by, "wall");
}

TEST(RatedPressure, ListsWhatFailsWhateverThePressure) {
    Box box;
    box.judge_at = [](float P) {
        return Checks{Check::found(FORM, false), Check::found(WALL, P <= 231.117f),
                      Check::found(ESTIMATE, false)};
    };
    const RatedPressure found = rated(box);
    EXPECT_EQ(found.P, 231.11f);
    EXPECT_EQ(found.anyway, std::vector<std::string_view>{"form"});
    EXPECT_EQ(found.held_by, "wall");
    // The check of the estimate is none that decides.
    box.judge_at = [](float P) {
        return Checks{Check::compared(ESTIMATE, P, 10.0f), Check::compared(WALL, P, 50.0f)};
    };
    EXPECT_EQ(rated(box).P, 50.0f); // within the tolerance of a check
    EXPECT_TRUE(rated(box).anyway.empty());
    // Nothing else ever fails: there is no rated pressure.
    box.judge_at = [](float) { return Checks{Check::found(FORM, false)}; };
    const RatedPressure none = rated(box);
    EXPECT_FALSE(none.P);
    EXPECT_EQ(none.anyway, std::vector<std::string_view>{"form"});
    EXPECT_EQ(none.calculations, 60);
}

TEST(RatedPressure, GivesUpAfterSixtyCalculations) {
    std::vector<float> calculated;
    Box box;
    box.P = 2.0f;
    box.calculated = &calculated;
    box.judge_at = within({{0.0f, 1.0e6f}});
    const RatedPressure found = rated(box);
    EXPECT_FALSE(found.P);
    EXPECT_EQ(calculated.size(), 60u);
    ASSERT_TRUE(found.passes);
    EXPECT_EQ(*found.passes, calculated.back());
    EXPECT_FALSE(found.fails);
    EXPECT_EQ(found.why,
              "not found: it passes up to " + shown(*found.passes, Quantity::pressure, us_units()));
    // With a failure that is not closed in.
    calculated.clear();
    box.judge_at = within({{0.0f, 200.0f}});
    const RatedPressure bracket = rated(box);
    EXPECT_FALSE(bracket.P);
    EXPECT_EQ(calculated.size(), 60u);
    EXPECT_LE(*bracket.passes, 200.0f);
    EXPECT_GT(*bracket.fails, 200.0f);
    EXPECT_EQ(bracket.held_by, "wall");
    EXPECT_TRUE(bracket.why.starts_with("not found: between 19")) << bracket.why;
}

TEST(RatedPressure, EndsForEveryPressure) {
    Box box;
    box.judge_at = within({{0.0f, 3.0e38f}});
    for (const float P :
         {1.0e-30f, 0.004f, 0.011f, 1.0e30f, 3.0e38f, std::numeric_limits<float>::infinity()}) {
        box.P = P;
        for (const UnitSystem& units : {us_units(), si_units(), pascals()})
            EXPECT_LE(rated(box, units).calculations, 60) << P;
    }
}

// ---- flanges -----------------------------------------------------------------------------------------------

struct Rated {
    RatedPressure rated;
    std::vector<Result> results;
    std::string status;
};

std::optional<RatedPressure> rated_of(const std::string& toml) {
    set_data_folder(TARVANE_DATA_DIR);
    const ReadResult input = read_input(toml);
    EXPECT_TRUE(input.faults.empty()) << fault_line("f", input.faults.front()) << '\n' << toml;
    if (!input.faults.empty()) return std::nullopt;
    return calculate(input.request).outcomes.front()->rated_pressure;
}

TEST(RatedFlangePressure, DoesNotGoByTheDesignPressure) {
    const auto at_100 = rated_of(with("P", "P = 100"));
    ASSERT_TRUE(at_100 && at_100->P);
    for (const char* P : {"P = 20", "P = 150", "P = 400", "P = 900"})
        EXPECT_EQ(rated_of(with("P", P))->P, at_100->P) << P;
    EXPECT_FALSE(at_100->held_by.empty());
}

TEST(RatedFlangePressure, OfAChannelCoverIsWhereItsDeflectionReachesTheLimit) {
    const std::string cover =
        with_all({{"type", "type = \"blind\""}, {"B", ""}, {"g0", ""}, {"g1", ""}, {"h", ""}}) +
        "channel_cover = true\nmaterial = \"SA-105\"\n";
    const auto found = rated_of(cover);
    ASSERT_TRUE(found && found->P) << (found ? found->why : "");
    EXPECT_EQ(found->held_by, "deflection");
    EXPECT_FALSE(found->estimate); // the engine's is no pressure
    const Judged at = judged(with("P", "P = " + number_text(*found->P, 2), cover));
    EXPECT_NEAR(at.find("deflection")->ratio().value_or(0.0f), 1.0f, 1.0e-3f);
}

TEST(RatedFlangePressure, HasFailuresBesideIt) {
    // Seating needs more bolts than there are, at any pressure.
    const auto found = rated_of(with("y", "y = 40000"));
    ASSERT_TRUE(found);
    EXPECT_NE(std::find(found->anyway.begin(), found->anyway.end(), "bolt_area"),
              found->anyway.end());
    const Judged flange = judged(with("y", "y = 40000"));
    EXPECT_EQ(flange.state("bolt_area"), "fail");
}

TEST(RatedFlangePressure, IsNotLookedForWithoutAPositivePressure) {
    EXPECT_EQ(rated_of(with("P", "P = -15"))->why, "external pressure");
    EXPECT_EQ(rated_of(with("P", "P = 0"))->why, "P is not above 0");
    EXPECT_EQ(rated_of(with("Gi", "Gi = 15", with("Go", "Go = 14")))->why,
              "no calculation was made");
    EXPECT_EQ(judged(FLANGE_TOML).why("rated_pressure"), "not asked for");
}

TEST(RatedFlangePressure, OfARatedFlangeIsItsRating) {
    const std::string flange =
        "[[flange]]\ntype = \"blind\"\nkind = \"rated\"\nP = 150\nT = 300\nrating = 230\n";
    const auto found = rated_of(flange);
    ASSERT_TRUE(found && found->P);
    EXPECT_NEAR(*found->P, 230.0f, 230.0f * 5.0e-5f + 0.005f);
    EXPECT_GE(*found->P, 230.0f);
    EXPECT_EQ(found->held_by, "rating");
    EXPECT_FALSE(found->estimate);
}

TEST(RatedFlangePressure, OfAFoundThicknessIsThatOfTheFlangeWithIt) {
    const std::string search = with("kind", "kind = \"thickness\"");
    const float t = judged(search).result("t_req").value_or(0.0f);
    char line[40];
    std::snprintf(line, sizeof line, "t = %.9g", static_cast<double>(t));
    EXPECT_EQ(rated_of(search)->P, rated_of(with("t", line))->P);
    EXPECT_GE(rated_of(search)->P.value_or(0.0f), 149.99f);
    // Rated at the given thickness where that is asked for.
    EXPECT_EQ(rated_of(search + "keep_thickness = true\n")->P, rated_of(FLANGE_TOML)->P);
}

TEST(RatedFlangePressure, OperatingPressureAndMateFollow) {
    FlangeInput flange = flange_of(FLANGE_TOML + "P_operating = 120\nmating_operating = 1000\n"
                                                 "mating_seating = 2000\nmating_design = 3000\n");
    const ReadResult input = read_input(FLANGE_TOML);
    const FlangeOutcome outcome = run_flange(*flanges_of(input.request)[0], input.request);
    const float Ab = outcome.found.Ab;
    ASSERT_GT(Ab, 0.0f);
    const auto basis = flange.rating_basis(outcome);
    const auto& judged = static_cast<const FlangeInput&>(*basis.judged);
    FlangeInput higher = judged, lower = judged;
    higher.put_pressure(300.0f);
    lower.put_pressure(75.0f);
    EXPECT_EQ(higher.record[4], 300.0f);
    EXPECT_EQ(higher.setting(Setting::design_pressure_operating), 240.0f);
    EXPECT_EQ(higher.record[44], 2000.0f);
    EXPECT_EQ(higher.record[45], 2000.0f);
    EXPECT_EQ(higher.record[46], 6000.0f); // more than in proportion it cannot be
    EXPECT_EQ(lower.setting(Setting::design_pressure_operating), 60.0f);
    EXPECT_EQ(lower.record[44], 500.0f);
    EXPECT_EQ(lower.record[46], 3000.0f);
    // The bolts need more for the operating load than the given design load had: W = Sa (Am + Ab)/2.
    FlangeInput loaded = judged;
    loaded.record[44] = 60000.0f;
    loaded.record[46] = 25000.0f * (60000.0f / 25000.0f + Ab) / 2.0f;
    const float given = loaded.record[46];
    loaded.put_pressure(300.0f);
    EXPECT_FLOAT_EQ(loaded.record[46], given + 60000.0f / 2.0f);
    // By the actual area alone it stays.
    FlangeInput by_area = judged;
    by_area.record[73] = 1.0f;
    by_area.put_pressure(300.0f);
    EXPECT_EQ(by_area.record[46], 3000.0f);
    FlangeInput alike = flange_of(FLANGE_TOML);
    alike.put_pressure(0.3f);
    EXPECT_EQ(alike.setting(Setting::design_pressure_operating), 0.3f);
}

// ---- flanges and shells at random ----------------------------------------------------------------------------

class Chance {
  public:
    float between(float low, float high) {
        return std::uniform_real_distribution<float>(low, high)(random);
    }
    bool one_in(int n) { return std::uniform_int_distribution<int>(1, n)(random) == 1; }
    template <class T>
    const T& of(const std::vector<T>& all) {
        return all[std::uniform_int_distribution<std::size_t>(0, all.size() - 1)(random)];
    }

  private:
    std::mt19937 random{20260u};
};

std::string line(const char* key, float value) {
    char text[64];
    std::snprintf(text, sizeof text, "%s = %.4f\n", key, static_cast<double>(value));
    return text;
}

// "P = @" stands for the pressure.
std::string random_flange(Chance& chance, float unit) {
    const float B = chance.between(4.0f, 40.0f), g0 = chance.between(0.01f, 0.04f) * B + 0.15f,
                g1 = g0 * chance.between(1.2f, 2.5f), room = chance.between(1.0f, 2.5f);
    const float a = chance.of<float>({0.625f, 0.75f, 0.875f, 1.0f, 1.25f});
    const float C = B + 2.0f * g1 + 2.0f * room + a, A = C + 2.2f * a;
    const float Gi = B + chance.between(0.2f, 0.8f), Go = Gi + chance.between(0.5f, 1.0f);
    const std::string type =
        chance.of<std::string>({"weld neck", "slip on", "loose ring", "blind"});
    std::string text =
        "[[flange]]\ntype = \"" + type + "\"\nP = @\nbolting = \"TEMA\"\nfacing = \"1a\"\n";
    const bool hub = type == "weld neck" || type == "slip on";
    if (hub)
        text += line("g0", g0 * unit) + line("g1", g1 * unit) +
                line("h", chance.between(1.5f, 3.0f) * (g1 - g0 + 0.2f) * unit);
    if (type != "blind") text += line("B", B * unit);
    text += line("A", A * unit) + line("C", C * unit) + "a = " + number_text(a * unit, 6) + '\n' +
            line("t", chance.between(0.02f, 0.12f) * B * unit + 0.4f * unit) +
            line("Fod", (Go + 0.2f) * unit) + line("Fid", Gi * unit) + line("Go", Go * unit) +
            line("Gi", Gi * unit) + line("ci", (chance.one_in(2) ? 0.0625f : 0.0f) * unit);
    text +=
        "n = " + std::to_string(4 * static_cast<int>(chance.between(2.0f, 2.0f + C / 4.0f))) + '\n';
    text += chance.of<std::string>({"m = 3\n", "m = 2\n", "m = 0\n"});
    const bool metric = unit > 20.0f;
    text += chance.of<std::string>(
        metric ? std::vector<std::string>{"y = 69\n", "y = 11\n", "y = 0\n"}
               : std::vector<std::string>{"y = 10000\n", "y = 1600\n", "y = 0\n"});
    text += metric ? "T = 150\nSfo = 138\nSfa = 138\nSb = 172\nSa = 172\n"
                   : "T = 300\nSfo = 20000\nSfa = 20000\nSb = 25000\nSa = 25000\n";
    if (hub && chance.one_in(3)) text += "rigidity = true\n";
    return text;
}

std::string random_shell(Chance& chance, float unit) {
    const std::string kind = chance.of<std::string>(
        {"cylinder", "elliptical", "torispherical", "sphere", "cone", "flat"});
    const float D = chance.between(6.0f, 120.0f), t = chance.between(0.004f, 0.06f) * D + 0.15f;
    std::string text = "[[shell]]\nkind = \"" + kind + "\"\nP = @\n" +
                       line(kind != "flat" && chance.one_in(3) ? "Do" : "D", D * unit) +
                       line("t", (kind == "flat" ? t + 0.03f * D : t) * unit) +
                       line("ci", (chance.one_in(2) ? 0.0625f : 0.0f) * unit) +
                       chance.of<std::string>({"E = 1.0\n", "E = 0.85\n", "E = 0.7\n"});
    text += unit > 20.0f ? "T = 150\nS = 138\nSa = 138\n" : "T = 300\nS = 20000\nSa = 20000\n";
    if (kind == "torispherical") text += line("L", D * unit) + line("r", 0.1f * D * unit);
    if (kind == "cone") text += line("alpha", chance.between(5.0f, 30.0f));
    if (kind == "flat") text += "C = 0.3\n";
    return text;
}

// Checks that keep it from passing at a pressure as it is written, but for those of the list.
std::vector<std::string> failing_at(std::string text, const std::string& P,
                                    const std::vector<std::string_view>& anyway) {
    text.replace(text.find('@'), 1, P);
    std::vector<std::string> failing;
    for (const Check& check : judged(text).checks) {
        const std::string_view id = check.field().id;
        if (check.blocks() && id != "mawp" &&
            std::find(anyway.begin(), anyway.end(), id) == anyway.end())
            failing.emplace_back(id);
    }
    return failing;
}

TEST(RatedPressureAtRandom, PassesPutBackAndFailsOneDigitUp) {
    constexpr int TRIALS = 300;
    struct Units {
        const char* head;
        UnitSystem units;
        float inch, start;
    };
    UnitSystem bar = si_units();
    bar.factors[1] = 0.0689475729f;
    const std::vector<Units> all{
        {"units = \"US\"\n", us_units(), 1.0f, 60.0f},
        {"units = \"SI\"\n", si_units(), 25.4f, 0.4f},
        {"units = { base = \"SI\", pressure = { factor = 0.0689475729, label = \"bar\" } }\n", bar,
         25.4f, 4.0f}};
    Chance chance;
    int found = 0, by_formula = 0;
    for (int trial = 0; trial < TRIALS; ++trial) {
        const Units& u = all[static_cast<std::size_t>(trial) % all.size()];
        const bool shell = trial % 2 == 0;
        const std::string text =
            u.head + (shell ? random_shell(chance, u.inch) : random_flange(chance, u.inch));
        std::string design = text;
        design.replace(design.find('@'), 1, number_text(u.start * chance.between(0.5f, 5.0f), 3));
        const auto rated = rated_of(design);
        ASSERT_TRUE(rated) << design;
        SCOPED_TRACE(design + "rated " +
                     (rated->P ? shown(*rated->P, Quantity::pressure, u.units) : rated->why));
        EXPECT_LE(rated->calculations, 60);
        if (!rated->P) continue;
        ++found;
        const int decimals = decimals_of(Quantity::pressure, u.units);
        const double P = static_cast<double>(u.units.to_file(*rated->P, Quantity::pressure)),
                     digit = std::pow(10.0, -decimals);
        char back[40], up[40];
        std::snprintf(back, sizeof back, "%.*f", decimals, P);
        std::snprintf(up, sizeof up, "%.*f", decimals, P + digit);
        EXPECT_EQ(failing_at(text, back, rated->anyway), std::vector<std::string>{}) << back;
        const std::vector<std::string> above = failing_at(text, up, rated->anyway);
        EXPECT_NE(std::find(above.begin(), above.end(), rated->held_by), above.end()) << up;
        if (!shell || !rated->estimate || rated->held_by != "required_thickness") continue;
        ++by_formula;
        EXPECT_NEAR(*rated->P / *rated->estimate, 1.0f, 1.0e-4f + static_cast<float>(digit / P));
    }
    EXPECT_GE(found, 270);
    EXPECT_GE(by_formula, 100);
}

} // namespace
} // namespace tarvane::app
