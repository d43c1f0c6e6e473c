// The checks of the first component of an input text, and the value of one input at which a check flips.
#pragma once

#include "app_fixture.h"
#include "catalogue/data_folder.h"

#include <cmath>
#include <cstdio>
#include <functional>
#include <memory>

namespace tarvane::app {

struct Judged {
    Checks checks;
    Verdict verdict;
    std::vector<Result> results;

    // In the case, where one is named.
    const Check* find(std::string_view id, std::string_view load_case = {}) const {
        for (const Check& check : checks)
            if (check.field().id == id && (load_case.empty() || check.load_case() == load_case))
                return &check;
        return nullptr;
    }
    std::string state(std::string_view id, std::string_view load_case = {}) const {
        const Check* check = find(id, load_case);
        return check == nullptr ? "no row" : std::string(state_name(check->state()));
    }
    std::optional<float> result(std::string_view name) const {
        for (const Result& result : results)
            if (result.field->name == name) return result.value;
        ADD_FAILURE() << "no result " << name;
        return std::nullopt;
    }
    std::string why(std::string_view name) const {
        for (const Result& result : results)
            if (result.field->name == name) return std::string(result.why);
        return "no result";
    }
};

inline Judged judged(const std::string& toml) {
    set_data_folder(TARVANE_DATA_DIR);
    const ReadResult input = read_input(toml);
    EXPECT_TRUE(input.faults.empty()) << fault_line("f", input.faults.front()) << '\n' << toml;
    if (input.request.elements.empty()) return {};
    const Element& element = *input.request.elements.front();
    const auto outcome = element.calculate(input.request);
    const UnitSystem& units = input.request.units;
    return {element.checks(*outcome, units), element.judge(*outcome, units),
            element.results(*outcome)};
}

using Text = std::function<std::string(float)>;

// A check on both sides of its limit: `text` makes an input text of a value, and at `sound` the row of the check is in
// the one state, at `failing` in the other.
struct Sides {
    std::string_view id;
    float sound, failing;
    Text text;
    std::string_view sound_state = "pass", failing_state = "fail", load_case = {};

    std::string state(float value) const { return judged(text(value)).state(id, load_case); }
};
inline constexpr std::string_view NO_ROW = "no row", NOT_MADE_STATE = "not made";

// The row, its figures and the verdict on the component next to the limit, which is found by bisection.
inline void expect_flip(const Sides& sides) {
    auto [id, sound, failing, text, sound_state, failing_state, load_case] = sides;
    SCOPED_TRACE(std::string(id) + ' ' + std::string(load_case));
    ASSERT_EQ(sides.state(sound), sound_state) << text(sound);
    ASSERT_EQ(sides.state(failing), failing_state) << text(failing);
    for (int step = 0; step < 40; ++step) {
        const float middle = (sound + failing) / 2.0f;
        if (middle == sound || middle == failing) break;
        (sides.state(middle) == sound_state ? sound : failing) = middle;
    }
    EXPECT_NEAR(sound, failing, 1e-6f + 1e-4f * std::fabs(sound));
    const Judged passes = judged(text(sound)), fails = judged(text(failing));
    const Check* below = passes.find(id, load_case);
    ASSERT_NE(fails.find(id, load_case), nullptr);
    const Check& above = *fails.find(id, load_case);
    EXPECT_EQ(state_name(above.state()), failing_state);
    if (below != nullptr) {
        EXPECT_FALSE(below->blocks());
    }
    EXPECT_EQ(above.blocks(), above.field().force == Force::decides);
    if (above.blocks()) {
        EXPECT_NE(fails.verdict.status, Status::fine);
        EXPECT_FALSE(fails.verdict.reasons.empty());
    }
    if (!above.ratio()) return;
    if (below == nullptr) { // a rule of openings, which allows a thousandth of an inch
        EXPECT_NEAR(*above.demand(), *above.limit(), 0.0011f);
        EXPECT_GT(*above.ratio(), 1.0f);
        return;
    }
    EXPECT_LT(static_cast<double>(below->ratio().value_or(0.0f)), 1.00005);
    EXPECT_GT(static_cast<double>(*above.ratio()), 1.00005);
    // The figures are those of the state, whichever way round they are compared.
    const double demand = static_cast<double>(*above.demand()),
                 limit = static_cast<double>(*above.limit());
    if (above.field().at_least)
        EXPECT_LT(demand, limit);
    else
        EXPECT_GT(demand, limit);
}

// A check without a number to bisect: an input text for each side.
struct Pair {
    std::string_view id;
    std::string sound, failing;
    std::string_view sound_state = "pass", failing_state = "fail";
};

inline void expect_pair(const Pair& pair) {
    SCOPED_TRACE(pair.id);
    const Judged passes = judged(pair.sound), fails = judged(pair.failing);
    EXPECT_EQ(passes.state(pair.id), pair.sound_state) << pair.sound;
    ASSERT_EQ(fails.state(pair.id), pair.failing_state) << pair.failing;
    if (pair.failing_state == NO_ROW) return;
    const Check& check = *fails.find(pair.id);
    EXPECT_EQ(check.blocks(), check.field().force == Force::decides);
    if (check.blocks()) {
        EXPECT_NE(fails.verdict.status, Status::fine);
    }
}

// FLANGE_TOML, or another text, with a number at a key.
inline Text at(std::string key, std::string toml = FLANGE_TOML) {
    return [key, toml](float value) {
        char number[40];
        std::snprintf(number, sizeof number, "%.9g", static_cast<double>(value));
        std::string text = number;
        if (text.find_first_of(".e") == std::string::npos) text += ".0";
        return with(key, key + " = " + text, toml);
    };
}

inline std::string with_all(std::initializer_list<std::pair<const char*, const char*>> keys,
                            std::string toml = FLANGE_TOML) {
    for (const auto& [key, line] : keys)
        toml = with(key, line, toml);
    return toml;
}

// ---- input texts ------------------------------------------------------------------------------------------------

inline const std::string BLIND = with_all(
    {{"type", "type = \"blind\""}, {"B", ""}, {"g0", ""}, {"g1", ""}, {"h", ""}, {"t", "t = 2"}});
inline const std::string REVERSE = with_all({{"type", "type = \"reverse weld neck\""},
                                             {"B", "B = 8"},
                                             {"A", "A = 20"},
                                             {"C", "C = 17"},
                                             {"t", "t = 3"}});
inline const std::string FULL_FACE = with_all(
    {{"Fod", "Fod = 19"}, {"Go", "Go = 19"}, {"Gi", "Gi = 13"}, {"m", "m = 1"}, {"y", "y = 200"}});
inline const std::string SHELL = "[[shell]]\nP = 100\nT = 200\nS = 20000\nSa = 17000\nt = 0.75\n";
inline const std::string CYLINDER = SHELL + "kind = \"cylinder\"\nD = 48\n";
inline const std::string TORISPHERE = SHELL + "kind = \"torispherical\"\nD = 48\nL = 48\nr = 3\n";
inline const std::string CONE = SHELL + "kind = \"cone\"\nD = 48\nalpha = 30\n";
inline const std::string FLAT = with("t", "t = 2", SHELL + "kind = \"flat\"\nD = 12\nC = 0.3\n");
inline const std::string THIN = "[[shell]]\nP = 10\nT = 200\nS = 20000\nSa = 20000\nt = 0.18\n"
                                "kind = \"torispherical\"\nD = 100\nL = 100\nr = 7\n";
inline const std::string EXTERNAL =
    "[[external]]\nP_external = 15\nT = 300\nchart = \"CS-2\"\nt = 0.5\nS = 20000\n";
inline const std::string PIPE = EXTERNAL + "kind = \"cylinder\"\nDo = 48\nlength = 100\n";
inline const std::string HEAD = EXTERNAL + "kind = \"elliptical\"\nD = 96\nk = 2\n";
inline const std::string METAL = "[[mdmt]]\ncurve = \"B\"\ntg = 1.0\n";

} // namespace tarvane::app
