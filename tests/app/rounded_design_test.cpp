// A flange of kind "design" is judged by its geometry as a drawing gives it: sixteenths of an inch, or millimetres.
#include "app_fixture.h"
#include "check_rows.h"
#include "components/calculation.h"
#include "components/flange_session.h"
#include "components/rounded_design.h"

#include <algorithm>
#include <tuple>

namespace tarvane::app {

using namespace vessel;
namespace {

const char* const NAMES[] = {"B", "n",   "a",   "C",  "g1", "g0", "h",
                             "A", "Fod", "Fid", "Go", "Gi", "t"};

std::string golden(const std::string& name) {
    std::ifstream stream(std::string(TARVANE_SOURCE_DIR) + "/tests/golden/" + name + ".toml");
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

std::string digits(float value) {
    char text[40];
    std::snprintf(text, sizeof text, "%.9g", static_cast<double>(value));
    return text;
}

// The input with the rounded geometry of its design in place of what it gives, to be analysed. US units.
std::string as_given(const std::string& design) {
    const Judged judged_design = judged(design);
    std::string text = with("kind", "kind = \"analyse\"", design);
    for (const char* name : NAMES) {
        const auto value = judged_design.result("rounded." + std::string(name));
        if (!value) continue;
        const bool count = std::string_view(name) == "n";
        text = with(name,
                    std::string(name) + " = " +
                        (count ? std::to_string(static_cast<int>(*value)) : digits(*value)),
                    text);
    }
    return text;
}

class RoundedDesigns : public testing::TestWithParam<const char*> {};

TEST_P(RoundedDesigns, AreJudgedAsIfTheyWereGiven) {
    const std::string design = golden(GetParam());
    const Judged rounded = judged(design), given = judged(as_given(design));
    for (const Check& check : given.checks) {
        const Check* same = rounded.find(check.field().id);
        ASSERT_NE(same, nullptr) << check.field().id;
        EXPECT_EQ(same->state(), check.state()) << check.field().id;
        EXPECT_EQ(same->demand(), check.demand()) << check.field().id;
        EXPECT_EQ(same->limit(), check.limit()) << check.field().id;
    }
    // Beside them only that a thickness was found.
    EXPECT_EQ(rounded.checks.size(), given.checks.size() + 1);
    EXPECT_EQ(rounded.state("search"), "pass");
    EXPECT_EQ(rounded.verdict.status, given.verdict.status);
    // What the design itself found is there as ever.
    EXPECT_TRUE(rounded.result("designed.t"));
    EXPECT_NE(rounded.result("STo"), given.result("STo").value_or(-1.0f));
}

TEST_P(RoundedDesigns, LieOnTheGrid) {
    const std::string design = golden(GetParam());
    for (const auto& [head, steps] : {std::pair("", 16.0f), std::pair("units = \"SI\"\n", 25.4f)}) {
        // The same inches for metric units: the report of the design is in its units.
        ReadResult input = read_input(design);
        ASSERT_TRUE(input.faults.empty());
        if (*head != 0) input.request.units = si_units();
        const auto outcome = input.request.elements[0]->calculate(input.request);
        const auto& found = static_cast<const FlangeOutcome&>(*outcome);
        ASSERT_NE(found.rounded, nullptr);
        const FlangeInput& flange = found.rounded->flange;
        const auto on_grid = [&](float value) {
            return std::fabs(value * steps - std::round(value * steps)) < 2.0e-3f;
        };
        for (const int element : {TARVANE_t, TARVANE_C, TARVANE_g1, TARVANE_h, TARVANE_Go})
            EXPECT_TRUE(on_grid(flange.record[static_cast<std::size_t>(element)]) ||
                        flange.record[static_cast<std::size_t>(element)] ==
                            flanges_of(input.request)[0]->record[static_cast<std::size_t>(element)])
                << element;
        EXPECT_TRUE(on_grid(flange.record[TARVANE_t]));
        EXPECT_GE(flange.record[TARVANE_t], found.t_req - 1.0e-4f);
        EXPECT_LT(flange.record[TARVANE_t], found.t_req + 1.0f / steps);
        // The bolts keep their distances to the edge.
        EXPECT_GE(flange.record[TARVANE_A] - flange.record[TARVANE_C],
                  found.result(TARVANE_DESIGNED_A) - found.result(TARVANE_DESIGNED_C) - 1.0e-3f);
        EXPECT_EQ(flange.record[TARVANE_a], found.result(TARVANE_DESIGNED_a));
        EXPECT_EQ(flange.record[TARVANE_BOLTS], found.result(TARVANE_DESIGNED_BOLTS));
    }
}

INSTANTIATE_TEST_SUITE_P(Goldens, RoundedDesigns,
                         testing::Values("weld_neck_design", "loose_ring_design", "blind_design",
                                         "reverse_design", "loose_slip_on_design"),
                         [](const auto& of) { return std::string(of.param); });

TEST(RoundedDesign, IsNoneWhereNothingWasDesigned) {
    const Judged analysed = judged(FLANGE_TOML);
    EXPECT_FALSE(analysed.result("rounded.t"));
    EXPECT_EQ(analysed.why("rounded.t"), "kind is not design");
    // Under external pressure a design does not give back what it selected.
    const std::string external = with("P", "P = -15", golden("weld_neck_design"));
    EXPECT_EQ(judged(external).why("rounded.t"), "no design to round");
    EXPECT_EQ(judged(external).state("search"), "pass");
}

// Under external pressure, too, it is that geometry: each row of the case is one of the geometry given.
TEST_P(RoundedDesigns, AreTheGeometryOfTheExternalPressure) {
    for (const auto& [P, passes] : {std::pair("15", true), std::pair("20000", false)}) {
        const std::string design = golden(GetParam()) + "P_external = " + P + '\n';
        const Judged rounded = judged(design), given = judged(as_given(design));
        const auto external_rows = [](const Judged& of) {
            std::vector<std::tuple<std::string, std::string, State, std::optional<float>,
                                   std::optional<float>>>
                rows;
            for (const Check& check : of.checks)
                if (check.load_case().starts_with("external"))
                    rows.emplace_back(check.field().id, check.load_case(), check.state(),
                                      check.demand(), check.limit());
            return rows;
        };
        EXPECT_FALSE(external_rows(rounded).empty());
        EXPECT_EQ(external_rows(rounded), external_rows(given));
        EXPECT_EQ(rounded.verdict.status == Status::fine, passes);
    }
}

// Without it there is nothing to judge under external pressure.
TEST(RoundedDesign, IsMissingUnderExternalPressureWhereNothingWasSelected) {
    const std::string design = with("P", "P = -15", golden("weld_neck_design"));
    EXPECT_EQ(judged(design).state("calculation"), "no row");
    const Judged both = judged(design + "P_external = 15\n");
    ASSERT_EQ(both.state("calculation"), "not made");
    EXPECT_EQ(both.find("calculation")->load_case(), "external");
    EXPECT_EQ(both.verdict.status, Status::fails);
}

// The engine may refuse the rounded geometry although it selected the one before: then no calculation was made.
TEST(RoundedDesign, IsNotMadeWhereTheRoundedGeometryIsRefused) {
    set_data_folder(TARVANE_DATA_DIR);
    for (const char* external : {"", "P_external = 15\n"}) {
        const ReadResult input = read_input(golden("weld_neck_design") + external);
        ASSERT_TRUE(input.faults.empty());
        const Element& element = *input.request.elements.front();
        const auto made = element.calculate(input.request);
        auto& outcome = static_cast<FlangeOutcome&>(*made);
        ASSERT_TRUE(outcome.rounded);
        EXPECT_TRUE(all_pass(element.checks(outcome, input.request.units)));
        auto refused = std::make_shared<JudgedFlange>(*outcome.rounded);
        refused->outcome.found.status = TARVANE_REFUSED;
        outcome.rounded = refused;
        outcome.external = nullptr; // of no geometry
        const Checks checks = element.checks(outcome, input.request.units);
        std::vector<std::string> labels;
        for (const Check& check : checks)
            if (check.state() == State::not_made) labels.push_back(check.label());
        std::vector<std::string> expected = {"calculation"};
        if (external[0] != '\0') expected.emplace_back("calculation, external");
        EXPECT_EQ(labels, expected);
        const Verdict verdict = element.judge(outcome, input.request.units);
        EXPECT_EQ(verdict.status, Status::fails);
        EXPECT_EQ(verdict_of(verdict, checks), NOT_MADE);
        EXPECT_EQ(element.rating_basis(outcome).why, "no calculation was made");
    }
}

// Where a check fails at the rounded geometry, the flange fails.
TEST(RoundedDesign, FailsWhereItsGeometryFails) {
    const std::string design = golden("weld_neck_design");
    const std::string rigid = with("rigidity", "rigidity = true", design);
    EXPECT_EQ(judged(rigid).verdict.status, judged(as_given(rigid)).verdict.status);
    const std::string ratings = design + "rating = 100\n"; // below P
    EXPECT_EQ(judged(ratings).state("rating"), "fail");
    EXPECT_EQ(judged(ratings).verdict.status, Status::fails);
}

TEST(RoundedDesign, RatedPressureIsThatOfTheRoundedGeometry) {
    set_data_folder(TARVANE_DATA_DIR);
    const auto rated_of = [](const std::string& toml) {
        return calculate(read_input(toml).request).outcomes.front()->rated_pressure.value().P;
    };
    const std::string design = golden("weld_neck_design");
    EXPECT_EQ(rated_of(design), rated_of(as_given(design)));
    EXPECT_GT(rated_of(design).value_or(0.0f), 135.0f);
}

} // namespace
} // namespace tarvane::app
