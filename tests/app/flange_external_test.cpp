// The case "external" of a flange: its calculation under external pressure is of the geometry that the internal
// one found and shows.
#include "app_fixture.h"
#include "check_rows.h"
#include "components/flange_session.h"
#include "document/results.h"

#include <algorithm>

namespace tarvane::app {

using namespace vessel;
namespace {

std::string number(float value) {
    char text[40];
    std::snprintf(text, sizeof text, "%.9g", static_cast<double>(value));
    return text;
}

bool is_external(const Check& check) { return check.load_case().starts_with("external"); }

bool external_passes(const Judged& flange) {
    return std::none_of(flange.checks.begin(), flange.checks.end(),
                        [](const Check& check) { return is_external(check) && check.blocks(); });
}

// Each row of the case external is one of the flange that has that pressure alone.
void expect_rows_of(const Judged& alone, const Judged& both) {
    std::size_t compared = 0;
    for (const Check& check : both.checks) {
        if (!is_external(check) || check.field().id == "required_thickness") continue;
        const Check* same = alone.find(check.field().id);
        ASSERT_NE(same, nullptr) << check.field().id;
        EXPECT_EQ(same->state(), check.state()) << check.field().id;
        EXPECT_EQ(same->demand(), check.demand()) << check.field().id;
        EXPECT_EQ(same->limit(), check.limit()) << check.field().id;
        compared += check.demand() ? 1 : 0;
    }
    EXPECT_GT(compared, 3u);
}

std::string of_kind(const std::string& kind, float P_external) {
    return with_all({{"kind", ("kind = \"" + kind + '"').c_str()},
                     {"P", "P = 10"},
                     {"P_external", ("P_external = " + number(P_external)).c_str()}});
}

// The pressures at both sides of which the case external passes and fails, next to each other.
std::pair<float, float> limit_of(const std::string& kind) {
    float sound = 15.0f, failing = 6000.0f;
    EXPECT_TRUE(external_passes(judged(of_kind(kind, sound))));
    EXPECT_FALSE(external_passes(judged(of_kind(kind, failing))));
    while (failing - sound > 0.01f) {
        const float middle = (sound + failing) / 2.0f;
        (external_passes(judged(of_kind(kind, middle))) ? sound : failing) = middle;
    }
    return {sound, failing};
}

class FlangeExternal : public testing::TestWithParam<const char*> {};

TEST_P(FlangeExternal, IsOfTheThicknessThatIsShown) {
    const bool finds = GetParam() == std::string_view("thickness");
    const auto [sound, failing] = limit_of(GetParam());
    EXPECT_LT(failing, 5000.0f);
    for (const float P : {sound, failing}) {
        const Judged both = judged(of_kind(GetParam(), P));
        const float t = finds ? both.result("t_req").value_or(0.0f) : 1.19f;
        const std::string given = with("t", "t = " + number(t), of_kind("analyse", P));
        expect_rows_of(
            judged(with_all({{"P", ("P = -" + number(P)).c_str()}, {"P_external", ""}}, given)),
            both);
        EXPECT_EQ(external_passes(judged(given)), P == sound);
        EXPECT_EQ(both.verdict.status, P == sound ? Status::fine : Status::fails);
    }
}

INSTANTIATE_TEST_SUITE_P(Kinds, FlangeExternal, testing::Values("analyse", "thickness"),
                         [](const auto& of) { return std::string(of.param); });

TEST(FlangeExternalThickness, NamesWhatTheExternalPressureRequires) {
    const Judged flange = judged(of_kind("thickness", 6000.0f));
    const auto row =
        std::find_if(flange.checks.begin(), flange.checks.end(), [](const Check& check) {
            return is_external(check) && check.field().id == "required_thickness";
        });
    ASSERT_NE(row, flange.checks.end());
    EXPECT_EQ(row->state(), State::fail);
    const float required =
        judged(with_all({{"P", "P = -6000"}, {"P_external", ""}}, of_kind("thickness", 6000.0f)))
            .result("t_req")
            .value_or(0.0f);
    const float found = flange.result("t_req").value_or(0.0f);
    ASSERT_GT(required, found);
    EXPECT_EQ(row->demand(), required);
    EXPECT_EQ(row->limit(), found);
    const UnitSystem units = us_units();
    EXPECT_EQ(row->reason(), "the external pressure requires a thickness of " +
                                 shown(required, Quantity::thickness, units) + ", above the " +
                                 shown(found, Quantity::thickness, units) + " judged");
    EXPECT_NE(
        std::find(flange.verdict.reasons.begin(), flange.verdict.reasons.end(), row->reason()),
        flange.verdict.reasons.end());
    // That thickness holds it.
    const std::string given =
        with("t", "t = " + number(required * 1.0001f), of_kind("analyse", 6000.0f));
    EXPECT_TRUE(external_passes(judged(given)));
    // Where the thickness found does, there is no such row.
    const Judged fine = judged(of_kind("thickness", 15.0f));
    EXPECT_TRUE(std::none_of(fine.checks.begin(), fine.checks.end(), [](const Check& check) {
        return is_external(check) && check.field().id == "required_thickness";
    }));
}

// The thickness of the internal pressure is the one that is shown, and it stays.
TEST(FlangeExternalThickness, LeavesTheInternalCaseAsItIs) {
    const Judged both = judged(of_kind("thickness", 6000.0f)),
                 alone = judged(with("P_external", "", of_kind("thickness", 6000.0f)));
    EXPECT_EQ(both.result("t_req"), alone.result("t_req"));
    for (const Check& check : alone.checks) {
        const Check* same = both.find(check.field().id);
        ASSERT_NE(same, nullptr) << check.field().id;
        EXPECT_EQ(same->demand(), check.demand()) << check.field().id;
    }
}

} // namespace
} // namespace tarvane::app
