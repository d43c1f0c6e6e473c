// A sweep finds in every row what tarvane_calculate finds with the values of that row, bit for bit.
#include "sweep_fixture.h"

#include <chrono>

namespace tarvane::vessel {

namespace {

TEST(Sweep, OfFlangesIsTheirCalculation) {
    const std::string flange =
        R"({"type": "weld neck", "P": 150, "T": @1, "B": 12.0, "A": 19.0, "t": @0, "g0": 0.375, "g1": 1.19,
        "h": 3.25, "material": "SA-105", "bolting": "TEMA", "C": 17.0, "n": @2, "a": 0.875,
        "bolt_material": "SA-193 B7", "Fod": 15.0, "Fid": 12.0, "Go": 14.75, "Gi": 14.0, "m": 3, "y": 10000,
        "facing": "1a", "rigidity": true, "ci": @3})";
    // Above 1000 degrees the steel has no stress; bolts and thickness make some of them fail.
    compare("flange", R"({"tarvane": 1, "flange": [)" + flange + "]}",
            {{"flange[0].t", 0.5, 3.0},
             {"flange[0].T", 100, 1300},
             {"flange[0].n", 8, 20, true},
             {"flange[0].ci", -0.01, 0.2}},
            40, 10);
}

TEST(Sweep, InOtherUnitsAndOfAllComponents) {
    const std::string shell =
        R"({"kind": "cylinder", "D": 1500, "t": @0, "material": "SA-516 70", "E": 0.85, "ci": 3})";
    compare("shell",
            R"({"tarvane": 1, "units": "SI", "vessel": {"P": @1, "T": @2}, "shell": [)" + shell +
                "]}",
            {{"shell[0].t", 2, 30}, {"vessel.P", 0.1, 4}, {"vessel.T", 20, 450}}, 40, 20);
}

TEST(Sweep, OfExternalPressure) {
    compare("external",
            R"({"external": [{"kind": "cylinder", "P_external": @0, "T": @1, "D": 60, "t": @2,
            "material": "SA-516 70", "length": @3, "ci": 0.125}]})",
            {{"external[0].P_external", 1, 60},
             {"external[0].T", 100, 800},
             {"external[0].t", 0.05, 1.0},
             {"external[0].length", 10, 400}},
            40, 20);
}

TEST(Sweep, OfMetalTemperatures) {
    compare("mdmt",
            R"({"mdmt": [{"material": "SA-516 70", "tg": @0, "ratio": @1, "MDMT": @2, "T": 300}]})",
            {{"mdmt[0].tg", 0.1, 4}, {"mdmt[0].ratio", 0.2, 1.0}, {"mdmt[0].MDMT", -80, 60}}, 40,
            20);
}

// What depends on an input by a link follows it: heads, mates, metal temperatures, the liquid's head.
TEST(Sweep, OfLinkedComponents) {
    const Handle handle;
    const std::string gasket =
        R"("bolt_material": "SA-193 B7", "bolting": "TEMA", "Fid": 6.07, "m": 3, "y": 10000, "facing": "1a", "Gi": 7.19)";
    const std::string request =
        R"({"tarvane": 1,
        "vessel": {"P": @0, "T": 300, "MDMT": @1, "liquid": {"density": 0.036, "level": @2}},
        "shell": [{"description": "Head", "kind": "elliptical", "on": "Shell", "end": "bottom", "t": 0.75},
                  {"description": "Shell", "kind": "cylinder", "D": @3, "t": 0.625, "length": 150,
                   "material": "SA-516 70", "ci": @4, "elevation": 100}],
        "flange": [{"description": "Cover", "type": "blind", "standard": {"class": 300, "size": 6}, "Go": 8.5,
                    "material": "SA-105", "mates_with": "N1", )" +
        gasket + R"(},
                   {"description": "N1", "type": "weld neck", "standard": {"class": 300, "size": 6}, "Go": @5,
                    "material": "SA-105", "elevation": 50, )" +
        gasket + "}]}";
    const std::vector<Range> ranges{{"vessel.P", 100, 300},          {"vessel.MDMT", -60, 0},
                                    {"vessel.liquid.level", 0, 300}, {"shell[1].D", 30, 90},
                                    {"shell[1].ci", 0, 0.7},         {"flange[1].Go", 8, 9}};
    const std::vector<std::string> outputs{"shell[0].results.P",     "shell[0].results.t_req",
                                           "shell[0].results.mawp",  "shell[1].results.P",
                                           "mdmt[0].results.ratio",  "mdmt[1].results.ratio",
                                           "mdmt[1].results.MDMT",   "mdmt[1].results.tg",
                                           "flange[0].results.Wm1",  "flange[0].results.W",
                                           "flange[1].results.Wm1",  "flange[1].results.Wm2",
                                           "flange[0].results.mawp", "flange[1].results.mawp",
                                           "vessel.passed",          "vessel.ratio"};
    std::vector<std::string> inputs;
    for (const Range& range : ranges)
        inputs.push_back(range.path);
    // Each input alone, and all of them.
    for (std::size_t only = 0; only <= inputs.size(); ++only) {
        const bool all = only == inputs.size();
        std::mt19937 chance(7);
        constexpr std::size_t ROWS = 6;
        std::vector<double> x, whole;
        std::vector<double> base;
        for (const Range& range : ranges)
            base.push_back((range.from + 2 * range.to) / 3);
        base[4] = 0.125;
        for (std::size_t row = 0; row < ROWS; ++row) {
            for (std::size_t i = 0; i < ranges.size(); ++i) {
                std::uniform_real_distribution<double> draw(ranges[i].from, ranges[i].to);
                const double value = draw(chance);
                whole.push_back(all || i == only ? value : base[i]);
                if (all || i == only) x.push_back(value);
            }
        }
        const std::vector<std::string> names =
            all ? inputs : std::vector<std::string>{inputs[only]};
        const Swept swept = sweep(handle, filled(request, base), names, outputs, x, ROWS);
        ASSERT_EQ(swept.status, TARVANE_OK) << text_at(swept.error, "[0].reason");
        std::size_t sound = 0;
        for (std::size_t row = 0; row < ROWS; ++row) {
            const Answer answer = handle.calculate(
                filled(request, std::span(whole).subspan(row * ranges.size(), ranges.size())));
            ASSERT_EQ(swept.fault[row] == 0, answer.status == TARVANE_OK) << row;
            if (swept.fault[row] != 0) continue;
            ++sound;
            for (std::size_t i = 0; i < outputs.size(); ++i)
                EXPECT_TRUE(same(swept.y[row * outputs.size() + i],
                                 wanted(handle, answer.result, outputs[i], {})))
                    << row << ' ' << outputs[i] << ' ' << swept.y[row * outputs.size() + i];
        }
        EXPECT_GE(sound, 3u) << only;
    }
}

TEST(Sweep, OfAFlagAndAChoice) {
    const Handle handle;
    const std::string request = request_of(flange_json());
    const std::vector<double> x{0, 1, 1, 1, 0.5, 1, 1, 1.5, 1, 17};
    const Swept swept = sweep(handle, request, {"flange[0].rigidity", "flange[0].code"},
                              {"flange[0].passed"}, x, 5);
    ASSERT_EQ(swept.status, TARVANE_OK) << text_at(swept.error, "[0].reason");
    EXPECT_EQ(swept.fault[0], 0);
    EXPECT_EQ(swept.fault[1], 0);
    for (std::size_t row = 2; row < 5; ++row) {
        EXPECT_GT(swept.fault[row], 0) << row;
        EXPECT_TRUE(std::isnan(swept.y[row]));
    }
    EXPECT_EQ(text_at(swept.error, "[0].reason").find("true or false is expected"), 0u);
    EXPECT_EQ(text_at(swept.error, "[1].path"), "flange[0].code");
}

TEST(Sweep, InUnitsOfItsInputs) {
    const Handle handle;
    const std::string request =
        R"({"flange": [{"type": "weld neck", "P": "@1 bar", "T": "@2 °C", "B": 12.0, "A": 19.0, "t": "@0 mm",
        "g0": 0.375, "g1": 1.19, "h": 3.25, "material": "SA-105", "bolting": "TEMA", "C": 17.0, "n": 12, "a": 0.875,
        "bolt_material": "SA-193 B7", "Fod": 15.0, "Fid": 12.0, "Go": 14.75, "Gi": 14.0, "m": 3, "y": 10000,
        "facing": "1a"}]})";
    std::mt19937 chance(5);
    std::uniform_real_distribution<double> draw(0.0, 1.0);
    std::vector<double> x;
    for (int row = 0; row < 20; ++row)
        x.insert(x.end(), {15.0 + 40.0 * draw(chance), 5.0 + 20.0 * draw(chance),
                           20.0 + 300.0 * draw(chance)});
    EXPECT_EQ(compare_rows(handle, "flange", request,
                           {"flange[0].t [mm]", "flange[0].P [bar]", "flange[0].T [°C]"}, x),
              20u);
    // Without a unit those of the request hold, and one that is none of the key is refused.
    const std::vector<double> one{1.25};
    const Swept own = sweep(handle, request_of(flange_json()), {"flange[0].t"},
                            {"flange[0].results.mawp"}, one, 1);
    const Swept inches = sweep(handle, request_of(flange_json()), {"flange[0].t [in]"},
                               {"flange[0].results.mawp"}, one, 1);
    EXPECT_EQ(own.y, inches.y);
    for (const char* unit : {"bar", "mmm", ""}) {
        const Swept wrong =
            sweep(handle, request_of(flange_json()), {std::string("flange[0].t [") + unit + ']'},
                  {"flange[0].results.mawp"}, one, 1);
        if (*unit == 0) {
            EXPECT_EQ(wrong.y, own.y);
            continue;
        }
        EXPECT_EQ(wrong.status, TARVANE_FAULTY);
        EXPECT_EQ(text_at(wrong.error, "[0].path"), "flange[0].t");
        EXPECT_EQ(text_at(wrong.error, "[0].value"), unit);
        EXPECT_NE(text_at(wrong.error, "[0].reason").find("in one of"), std::string::npos)
            << text_at(wrong.error, "[0].reason");
    }
    // A number that is none is a fault of its row.
    const Swept none = sweep(handle, request_of(flange_json()), {"flange[0].t [mm]"},
                             {"flange[0].results.mawp"}, {std::nan(""), 30.0}, 2);
    EXPECT_EQ(none.fault[0], 1);
    EXPECT_EQ(none.fault[1], 0);
}

// ---- rows at fault ------------------------------------------------------------------------------------------

TEST(SweepFaults, AreOfTheirRows) {
    const Handle handle;
    const double nan = std::nan(""), inf = std::numeric_limits<double>::infinity();
    const Swept swept =
        sweep(handle, request_of(flange_json()), {"flange[0].t"},
              {"flange[0].passed", "vessel.passed"}, {1.0, nan, -1.0, 2.0, nan, inf, 1e300}, 7);
    ASSERT_EQ(swept.status, TARVANE_OK);
    EXPECT_EQ(std::vector(swept.fault.begin(), swept.fault.end() - 1),
              (std::vector<std::int32_t>{0, 1, 2, 0, 1, 3, 4}));
    for (std::size_t row = 0; row < 7; ++row)
        EXPECT_EQ(std::isnan(swept.y[2 * row]), swept.fault[row] != 0);
    EXPECT_EQ(text_at(swept.error, "[0].path"), "flange[0].t");
    EXPECT_EQ(text_at(swept.error, "[0].value"), "nan");
    EXPECT_EQ(text_at(swept.error, "[1].reason"), "it must be above 0");
}

TEST(SweepFaults, OfANumberTooManyAreOne) {
    const Handle handle;
    std::vector<double> x;
    for (int i = 0; i < 1500; ++i)
        x.push_back(1e39 * (i + 1));
    const Swept swept =
        sweep(handle, request_of(flange_json()), {"flange[0].ci"}, {"flange[0].passed"}, x, 1500);
    ASSERT_EQ(swept.status, TARVANE_OK);
    ASSERT_EQ(swept.error.list()->size(), 1001u);
    EXPECT_EQ(swept.fault[999], 1000);
    EXPECT_EQ(swept.fault[1000], 1001);
    EXPECT_EQ(swept.fault[1499], 1001);
}

TEST(SweepFaults, OfTheCallLeaveTheArraysAlone) {
    const Handle handle;
    struct Case {
        std::string request, input, output, path, reason;
    };
    const std::string sound = request_of(flange_json());
    const Case cases[] = {
        {sound, "flange[0].tt", "flange[0].passed", "flange[0].tt",
         "unknown key; the nearest is t"},
        {sound, "flange[1].t", "flange[0].passed", "flange[1].t", "the request has no flange[1]"},
        {sound, "flange[0", "flange[0].passed", "flange[0", "unknown key"},
        {sound, "flange[x].t", "flange[0].passed", "flange[x].t", "a path like flange[0].t"},
        {sound, "units.thickness", "flange[0].passed", "", ""},
        {sound, "decimal_comma", "flange[0].passed", "", ""},
        {sound, "flange[0].t", "flange[0].pased", "flange[0].pased",
         "no output of this request; the nearest is flange[0].passed"},
        {sound, "flange[0].t", "flange[1].passed", "flange[1].passed", "no output of this request"},
        {request_of(flange_json(R"(, "ci": "x")")), "flange[0].t", "flange[0].passed",
         "flange[0].ci", "a number"},
        {"{}", "flange[0].t", "flange[0].passed", "flange[0].t", "the request has no flange[0]"}};
    for (const Case& each : cases) {
        const Swept swept = sweep(handle, each.request, {each.input}, {each.output}, {1.0}, 1);
        EXPECT_EQ(swept.status, TARVANE_FAULTY) << each.input;
        EXPECT_EQ(swept.y[0], UNTOUCHED);
        EXPECT_EQ(swept.fault[0], -1);
        EXPECT_EQ(swept.done, 0);
        if (each.reason.empty()) continue;
        EXPECT_EQ(text_at(swept.error, "[0].path"), each.path);
        EXPECT_EQ(text_at(swept.error, "[0].reason").find(each.reason), 0u)
            << text_at(swept.error, "[0].reason");
    }
    const Swept twice = sweep(handle, sound, {"flange[0].t", "flange[0].t"}, {}, {1.0, 2.0}, 1);
    EXPECT_EQ(twice.status, TARVANE_FAULTY);
}

TEST(SweepFaults, OfNullPointersAndSizes) {
    const Handle handle;
    const std::string request = request_of(flange_json());
    const char* inputs[] = {"flange[0].t", nullptr};
    const char* outputs[] = {"flange[0].passed", nullptr};
    const double x = 1.0;
    double y = UNTOUCHED;
    std::int64_t done = 7;
    const auto call = [&](const char* text, const char* const* in, const char* const* out,
                          std::int64_t rows, const double* from, double* to) {
        return tarvane_sweep(handle.get(), text, in, out, rows, from, to, nullptr, nullptr, nullptr,
                             &done);
    };
    const char* text = request.c_str();
    EXPECT_EQ(call(nullptr, inputs, outputs, 1, &x, &y), TARVANE_INTERNAL);
    EXPECT_EQ(done, 0);
    EXPECT_EQ(call(text, nullptr, outputs, 1, &x, &y), TARVANE_INTERNAL);
    EXPECT_EQ(call(text, inputs, nullptr, 1, &x, &y), TARVANE_INTERNAL);
    EXPECT_EQ(call(text, inputs, outputs, -1, &x, &y), TARVANE_INTERNAL);
    EXPECT_EQ(call(text, inputs, outputs, INT64_MAX, &x, &y), TARVANE_INTERNAL);
    EXPECT_EQ(call(text, inputs, outputs, 1, nullptr, &y), TARVANE_INTERNAL);
    EXPECT_EQ(call(text, inputs, outputs, 1, &x, nullptr), TARVANE_INTERNAL);
    EXPECT_EQ(y, UNTOUCHED);
    EXPECT_EQ(tarvane_sweep(nullptr, text, inputs, outputs, 1, &x, &y, nullptr, nullptr, nullptr,
                            nullptr),
              TARVANE_INTERNAL);
    EXPECT_EQ(tarvane_sweep(handle.get(), text, inputs, outputs, 1, &x, &y, nullptr, nullptr,
                            nullptr, nullptr),
              TARVANE_OK);
    EXPECT_NE(y, UNTOUCHED);
    // No rows, no inputs, no outputs.
    EXPECT_EQ(call(text, inputs, outputs, 0, nullptr, nullptr), TARVANE_OK);
    const char* none[] = {nullptr};
    EXPECT_EQ(call(text, none, outputs, 1, nullptr, &y), TARVANE_OK);
    EXPECT_EQ(done, 1);
    EXPECT_EQ(call(text, inputs, none, 1, &x, nullptr), TARVANE_OK);
}

// ---- progress ------------------------------------------------------------------------------------------------

struct Watched {
    const Handle* handle;
    std::vector<std::int64_t> done;
    std::int64_t stop_at = INT64_MAX;
    bool calls = false;
};

std::int32_t watch(void* user, std::int64_t done, std::int64_t rows) {
    auto& watched = *static_cast<Watched*>(user);
    watched.done.push_back(done);
    EXPECT_LE(done, rows);
    // The library may be called from here.
    if (watched.calls) {
        EXPECT_EQ(watched.handle->calculate(request_of(flange_json())).status, TARVANE_OK);
        EXPECT_EQ(watched.handle->calculate("{}").status, TARVANE_FAULTY);
    }
    return done >= watched.stop_at;
}

TEST(SweepProgress, ShowsTheRowsAndMayEndThem) {
    const Handle handle;
    constexpr std::int64_t ROWS = 20000; // for longer than a turn
    std::vector<double> x;
    for (std::int64_t i = 0; i < ROWS; ++i)
        x.push_back(1.0 + 0.0001 * static_cast<double>(i));
    const std::string request = request_of(flange_json());
    const std::vector<std::string> inputs{"flange[0].t"}, outputs{"flange[0].passed"};
    Watched watched{&handle, {}, INT64_MAX, true};
    const Swept all = sweep(handle, request, inputs, outputs, x, ROWS, watch, &watched);
    ASSERT_EQ(all.status, TARVANE_OK);
    ASSERT_GE(watched.done.size(), 2u);
    EXPECT_EQ(watched.done.back(), ROWS);
    EXPECT_TRUE(std::is_sorted(watched.done.begin(), watched.done.end()));
    EXPECT_EQ(all.done, ROWS);
    const Swept alone = sweep(handle, request, inputs, outputs, x, ROWS);
    EXPECT_EQ(all.y, alone.y);

    Watched early{&handle, {}, 1};
    const Swept some = sweep(handle, request, inputs, outputs, x, ROWS, watch, &early);
    EXPECT_EQ(some.status, TARVANE_OK);
    EXPECT_EQ(early.done.size(), 1u);
    EXPECT_EQ(some.done, early.done[0]);
    EXPECT_LT(some.done, ROWS);
    EXPECT_NE(some.y[static_cast<std::size_t>(some.done) - 1], UNTOUCHED);
    EXPECT_EQ(some.y[static_cast<std::size_t>(some.done)], UNTOUCHED);
    EXPECT_EQ(some.fault[static_cast<std::size_t>(some.done)], -1);
}

} // namespace
} // namespace tarvane::vessel
