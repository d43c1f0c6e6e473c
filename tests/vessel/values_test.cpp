// Requests that a host makes value by value, and results that it reads so.
#include "values/paths.h"
#include "vessel_fixture.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <memory>
#include <random>

namespace tarvane::vessel {

namespace {

struct CloseValues {
    void operator()(TARVANE_VALUES* values) const { tarvane_values_close(values); }
};
using Values = std::unique_ptr<TARVANE_VALUES, CloseValues>;

Values values_of(const std::string& json = "") { return Values(tarvane_values(json.c_str())); }

// "path: reason (value)" of the latest failed call of the thread.
std::string error() {
    const Value faults = parsed(tarvane_last_error(nullptr));
    return text_at(faults, "[0].path") + ": " + text_at(faults, "[0].reason") + " (" +
           text_at(faults, "[0].value") + ')';
}

TEST(Values, MakeARequestThatIsCalculatedAsItsText) {
    const Values request = values_of();
    const char* const texts[][2] = {{"flange[0].description", "N1"},
                                    {"flange[0].type", "weld neck"},
                                    {"flange[0].bolting", "TEMA"},
                                    {"flange[0].facing", "1a"},
                                    {"flange[0].t", "1.19 in"}};
    for (const auto& [path, text] : texts)
        EXPECT_EQ(tarvane_put_text(request.get(), path, text), TARVANE_OK) << path;
    const std::pair<const char*, double> numbers[] = {
        {"P", 150},    {"T", 300},    {"B", 12},     {"A", 19},     {"g0", 0.375},
        {"g1", 1.19},  {"h", 3.25},   {"Sfo", 2e4},  {"Sfa", 2e4},  {"C", 17},
        {"n", 12},     {"a", 0.875},  {"Sb", 25000}, {"Sa", 25000}, {"Fod", 15.0},
        {"Fid", 12.0}, {"Go", 14.75}, {"Gi", 14.0},  {"m", 3},      {"y", 10000}};
    for (const auto& [key, number] : numbers)
        EXPECT_EQ(
            tarvane_put_number(request.get(), (std::string("flange[0].") + key).c_str(), number),
            TARVANE_OK);
    const Handle vessel;
    const Answer answer = vessel.calculate(tarvane_json(request.get()));
    ASSERT_EQ(answer.status, TARVANE_OK) << tarvane_last_error(vessel.get());
    const Answer same = vessel.calculate(request_of(flange_json()));
    EXPECT_EQ(*at(answer.result, "flange[0].results.mawp").number(),
              *at(same.result, "flange[0].results.mawp").number());
    EXPECT_EQ(at(answer.result, "flange[0].checks").list()->size(),
              at(same.result, "flange[0].checks").list()->size());
}

TEST(Values, GiveWhatIsAtAPath) {
    const Values values = values_of(
        R"({"a": [1, {"b": "text", "n": null}], "designed.C": 2.5, "designed": {"C": 3}, "yes": true, "no": false})");
    ASSERT_TRUE(values);
    const auto kind = [&](const char* path) { return tarvane_kind(values.get(), path); };
    EXPECT_EQ(kind(""), TARVANE_OBJECT);
    EXPECT_EQ(kind(nullptr), TARVANE_OBJECT);
    EXPECT_EQ(kind("a"), TARVANE_LIST);
    EXPECT_EQ(kind("a[0]"), TARVANE_NUMBER);
    EXPECT_EQ(kind("a[1].b"), TARVANE_TEXT);
    EXPECT_EQ(kind("a[1].n"), TARVANE_NULL);
    EXPECT_EQ(kind("yes"), TARVANE_FLAG);
    for (const char* nothing :
         {"b", "a[2]", "a[-1]", "a[0", "a[]", "a[0]x", "a[0].", "a.", "a.b", ".a", "a[1]b",
          "a[1]..b", "a[1].b.c", "a[99999999999999999999]", "[0]", "a[1].[0]"})
        EXPECT_EQ(kind(nothing), TARVANE_NOTHING) << nothing;
    EXPECT_EQ(tarvane_number(values.get(), "a[0]"), 1.0);
    EXPECT_EQ(tarvane_number(values.get(), "yes"), 1.0);
    EXPECT_EQ(tarvane_number(values.get(), "no"), 0.0);
    EXPECT_EQ(tarvane_number(values.get(), "designed.C"), 2.5);
    for (const char* none : {"a[1].n", "a[1].b", "a", "x"})
        EXPECT_TRUE(std::isnan(tarvane_number(values.get(), none))) << none;
    EXPECT_STREQ(tarvane_text(values.get(), "a[1].b"), "text");
    EXPECT_EQ(tarvane_text(values.get(), "a[0]"), nullptr);
    EXPECT_EQ(tarvane_count(values.get(), "a"), 2);
    EXPECT_EQ(tarvane_count(values.get(), ""), 5);
    EXPECT_EQ(tarvane_count(values.get(), "x"), 0);
    EXPECT_EQ(tarvane_count(values.get(), "yes"), 0);
    EXPECT_STREQ(tarvane_name(values.get(), "", 1), "designed.C");
    EXPECT_STREQ(tarvane_name(values.get(), "a[1]", 1), "n");
    for (const std::int64_t place : {std::int64_t{-1}, std::int64_t{2}, INT64_MAX, INT64_MIN})
        EXPECT_EQ(tarvane_name(values.get(), "a[1]", place), nullptr);
    EXPECT_EQ(tarvane_name(values.get(), "a", 0), nullptr);
}

TEST(Values, ReadTheFaultsOfACall) {
    const Handle vessel;
    vessel.calculate(request_of(R"({"P": "ten"})"));
    const Values faults(tarvane_values(tarvane_last_error(vessel.get())));
    ASSERT_TRUE(faults);
    EXPECT_GT(tarvane_count(faults.get(), ""), 10);
    EXPECT_STREQ(tarvane_text(faults.get(), "[0].path"), "flange[0].P");
    EXPECT_STREQ(tarvane_text(faults.get(), "[0].value"), "the text \"ten\"");
}

TEST(Values, ArePutWhereOthersWere) {
    const Values values = values_of(R"({"flange": [{"P": 1, "t": 2}]})");
    EXPECT_EQ(tarvane_put_text(values.get(), "flange[0].P", "10 bar"), TARVANE_OK);
    EXPECT_EQ(tarvane_put_flag(values.get(), "flange[0].rigidity", 7), TARVANE_OK);
    EXPECT_EQ(tarvane_put_flag(values.get(), "flange[1].rigidity", 0), TARVANE_OK);
    EXPECT_EQ(tarvane_put_number(values.get(), "flange[1].standard.class", 150.0), TARVANE_OK);
    EXPECT_EQ(tarvane_put_text(values.get(), "flange[1].waive[0]", "\xC2\xB0\"\\\n"), TARVANE_OK);
    EXPECT_STREQ(tarvane_json(values.get()),
                 R"({"flange":[{"P":"10 bar","t":2,"rigidity":true},{"rigidity":false,)"
                 R"("standard":{"class":150},"waive":["°\"\\\n"]}]})");
    const Values again = values_of(tarvane_json(values.get()));
    EXPECT_STREQ(tarvane_json(again.get()), tarvane_json(values.get()));
}

TEST(Values, LeadToPlacesThatThereAreAndChangeNothingOtherwise) {
    const std::string before = R"({"P":1,"flange":[{"t":2}]})";
    const Values values = values_of(before);
    const std::pair<const char*, const char*> cases[] = {
        {"", ": a path like flange[0].P is expected (3)"},
        {"flange[2].t", "flange[2].t: the next place of the list is 1 (3)"},
        {"flange[1].waive[1]", "flange[1].waive[1]: the next place of the list is 0 (3)"},
        {"shell[1].t", "shell[1].t: the next place of the list is 0 (3)"},
        {"flange.t", "flange.t: \"flange\" is no object (3)"},
        {"P.x", "P.x: \"P\" is no object (3)"},
        {"P[0]", "P[0]: \"P\" is no list (3)"},
        {"[0]", "[0]: \"\" is no list (3)"},
        {"flange[0].", "flange[0].: a path like flange[0].P is expected (3)"},
        {"shell[0].x..y", "shell[0].x..y: a path like flange[0].P is expected (3)"},
        {"shell[0]x", "shell[0]x: a path like flange[0].P is expected (3)"},
        {"shell[x]", "shell[x]: a path like flange[0].P is expected (3)"}};
    for (const auto& [path, reason] : cases) {
        EXPECT_EQ(tarvane_put_number(values.get(), path, 3.0), TARVANE_FAULTY) << path;
        EXPECT_EQ(error(), reason);
        EXPECT_EQ(tarvane_json(values.get()), before);
    }
}

TEST(Values, RefuseWhatNoRequestCanHave) {
    const Values values = values_of();
    for (const double none : {std::numeric_limits<double>::quiet_NaN(), HUGE_VAL, -HUGE_VAL}) {
        EXPECT_EQ(tarvane_put_number(values.get(), "P", none), TARVANE_FAULTY);
        EXPECT_EQ(error(), "P: a finite number is expected ()");
    }
    EXPECT_EQ(tarvane_put_text(values.get(), "P", "\xB0"), TARVANE_FAULTY);
    EXPECT_EQ(error(), "P: a text in UTF-8 is expected ()");
    EXPECT_EQ(tarvane_put_text(values.get(), "P", nullptr), TARVANE_FAULTY);
    EXPECT_EQ(error(), "P: a text is expected ()");
    EXPECT_EQ(tarvane_put_number(values.get(), "\xB0", 1.0), TARVANE_FAULTY);
    EXPECT_NE(error().find(": a path in UTF-8 is expected ()"), std::string::npos) << error();
    EXPECT_EQ(tarvane_put_flag(values.get(), nullptr, 1), TARVANE_FAULTY);
    EXPECT_EQ(tarvane_put_flag(nullptr, "P", 1), TARVANE_FAULTY);
    EXPECT_STREQ(tarvane_json(values.get()), "{}");
    EXPECT_EQ(values_of("{"), nullptr);
    EXPECT_NE(error().find("not JSON from byte"), std::string::npos) << error();

    std::string deep = "a";
    for (int i = 1; i < 64; ++i)
        deep += ".a";
    EXPECT_EQ(tarvane_put_flag(values.get(), (deep + ".a").c_str(), 1), TARVANE_FAULTY);
    EXPECT_EQ(tarvane_put_flag(values.get(), deep.c_str(), 1), TARVANE_OK);
    EXPECT_TRUE(values_of(tarvane_json(values.get())));
    EXPECT_EQ(tarvane_put_number(values.get(), deep.substr(0, 125).c_str(), 2.0),
              TARVANE_OK); // in its place
    EXPECT_EQ(tarvane_put_flag(values.get(), deep.c_str(), 1), TARVANE_FAULTY);
}

TEST(Values, AreNothingWithoutAHandle) {
    tarvane_values_close(nullptr);
    EXPECT_EQ(tarvane_json(nullptr), nullptr);
    EXPECT_EQ(tarvane_kind(nullptr, "P"), TARVANE_NOTHING);
    EXPECT_TRUE(std::isnan(tarvane_number(nullptr, "P")));
    EXPECT_EQ(tarvane_text(nullptr, "P"), nullptr);
    EXPECT_EQ(tarvane_count(nullptr, "P"), 0);
    EXPECT_EQ(tarvane_name(nullptr, "P", 0), nullptr);
}

// A result is written as the shortest decimal of its single; read as a double it rounds to the same single.
TEST(Values, KeepTheBitsOfSingles) {
    std::mt19937 random(5);
    for (int i = 0; i < 200000; ++i) {
        const auto bits = static_cast<std::uint32_t>(random());
        float single;
        std::memcpy(&single, &bits, sizeof single);
        if (!std::isfinite(single)) continue;
        std::array<char, 40> digits;
        const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), single);
        double number = 0.0;
        std::from_chars(digits.data(), end.ptr, number);
        const auto again = static_cast<float>(number);
        ASSERT_EQ(std::memcmp(&again, &single, sizeof single), 0) << bits;
    }
}

// Whatever paths are put, the values are JSON, and what was put last is where it was put.
TEST(Values, AreJsonAfterAnyPuts) {
    const std::string words[] = {"a",   "b",    "a.b",  ".", "[", "]", "[0]",
                                 "[1]", "[00]", "\xE9", "",  "0", "]["};
    std::mt19937 random(7);
    int taken = 0;
    for (int round = 0; round < 300; ++round) {
        const Values values = values_of();
        for (int k = 0; k < 20; ++k) {
            std::string path;
            for (std::size_t n = random() % 6; n > 0; --n)
                path += words[random() % std::size(words)];
            const double number = static_cast<double>(random() % 1000);
            const std::int32_t status = tarvane_put_number(values.get(), path.c_str(), number);
            if (status == TARVANE_OK) {
                ++taken;
                EXPECT_EQ(tarvane_number(values.get(), path.c_str()), number) << path;
            } else {
                EXPECT_EQ(parsed(tarvane_last_error(nullptr)).list()->size(), 1u) << path;
            }
            EXPECT_TRUE(values_of(tarvane_json(values.get()))) << path;
        }
    }
    EXPECT_GT(taken, 300);
}

} // namespace

} // namespace tarvane::vessel
