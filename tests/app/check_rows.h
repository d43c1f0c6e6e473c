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

    const Check* find(std::string_view id) const {
        for (const Check& check : checks)
            if (check.field().id == id) return &check;
        return nullptr;
    }
    std::string state(std::string_view id) const {
        const Check* check = find(id);
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

// Both sides of the limit of a check: the row, its figures and the verdict on the component. `text` makes an
// input text of a value; at `sound` the check passes, at `failing` it doesn't.
inline void expect_flip(std::string_view id, float sound, float failing,
                        const std::function<std::string(float)>& text) {
    SCOPED_TRACE(id);
    ASSERT_EQ(judged(text(sound)).state(id), "pass") << text(sound);
    ASSERT_EQ(judged(text(failing)).state(id), "fail") << text(failing);
    for (int step = 0; step < 40; ++step) {
        const float middle = (sound + failing) / 2.0f;
        if (middle == sound || middle == failing) break;
        (judged(text(middle)).state(id) == "pass" ? sound : failing) = middle;
    }
    EXPECT_NEAR(sound, failing, 1e-6f + 1e-4f * std::fabs(sound));
    const Judged passes = judged(text(sound)), fails = judged(text(failing));
    const Check& below = *passes.find(id);
    const Check& above = *fails.find(id);
    EXPECT_FALSE(below.blocks());
    EXPECT_EQ(above.blocks(), above.field().force == Force::decides);
    if (above.blocks()) {
        EXPECT_NE(fails.verdict.status, Status::fine);
        EXPECT_FALSE(fails.verdict.reasons.empty());
    }
    if (!below.ratio() || !above.ratio()) return;
    EXPECT_LT(static_cast<double>(*below.ratio()), 1.00005);
    EXPECT_GT(static_cast<double>(*above.ratio()), 1.00005);
    // The figures are those of the state, whichever way round they are compared.
    const double demand = static_cast<double>(*above.demand()),
                 limit = static_cast<double>(*above.limit());
    if (above.field().at_least)
        EXPECT_LT(demand, limit);
    else
        EXPECT_GT(demand, limit);
}

// The same of a rule of openings: it has a row where it is broken, all of them have one where none is.
inline void expect_opening_flip(std::string_view id, float sound, float failing,
                                const std::function<std::string(float)>& text) {
    SCOPED_TRACE(id);
    ASSERT_EQ(judged(text(sound)).state(id), "no row") << text(sound);
    ASSERT_EQ(judged(text(failing)).state(id), "fail") << text(failing);
    for (int step = 0; step < 40; ++step) {
        const float middle = (sound + failing) / 2.0f;
        if (middle == sound || middle == failing) break;
        (judged(text(middle)).find(id) == nullptr ? sound : failing) = middle;
    }
    const Judged fails = judged(text(failing));
    const Check& broken = *fails.find(id);
    EXPECT_TRUE(broken.blocks());
    EXPECT_NE(fails.verdict.status, Status::fine);
    EXPECT_FALSE(fails.verdict.reasons.empty());
    // The rules of openings allow a thousandth of an inch.
    EXPECT_NEAR(*broken.demand(), *broken.limit(), 0.0011f);
    EXPECT_GT(*broken.ratio(), 1.0f);
}

using Text = std::function<std::string(float)>;

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

} // namespace tarvane::app
