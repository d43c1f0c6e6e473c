// tarvane.hpp beside the calls of vessel.h.
#include "tarvane/tarvane.hpp"

#include "vessel_fixture.h"

#include <array>
#include <filesystem>
#include <limits>
#include <span>

namespace {

using tarvane::InputError;
using tarvane::Request;
using tarvane::vessel::at;
using tarvane::vessel::flange_json;
using tarvane::vessel::Handle;
using tarvane::vessel::request_of;
using tarvane::vessel::text_at;

Request flange_request() {
    Request request = {{"tarvane", 1}};
    request.add("flange", {{"description", "N1"},
                           {"type", "weld neck"},
                           {"P", 150},
                           {"T", 300},
                           {"B", 12.0},
                           {"A", 19.0f},
                           {"t", 1.19},
                           {"g0", 0.375},
                           {"g1", 1.19},
                           {"h", 3.25},
                           {"Sfo", 20000},
                           {"Sfa", 20000L},
                           {"C", 17u},
                           {"n", 12},
                           {"a", 0.875},
                           {"bolting", "TEMA"},
                           {"Sb", 25000},
                           {"Sa", 25000},
                           {"Fod", 15},
                           {"Fid", 12},
                           {"Go", 14.75},
                           {"Gi", 14},
                           {"m", 3},
                           {"y", 10000},
                           {"facing", "1a"}});
    return request;
}

// The exception of the work; without one the test fails.
template <class Exception, class Work>
tarvane::Error caught(const Work& work) {
    try {
        work();
    } catch (const Exception& error) {
        return error;
    } catch (const std::exception& other) {
        ADD_FAILURE() << "another exception: " << other.what();
    }
    ADD_FAILURE() << "no exception";
    return {0, {}};
}

class CppLayer : public testing::Test {
  protected:
    const tarvane::Vessel vessel{TARVANE_DATA_DIR};
    const Handle handle;
};

TEST_F(CppLayer, FindsWhatTheCallsFind) {
    const tarvane::Result result = vessel.calculate(flange_request());
    const auto same = handle.calculate(request_of(flange_json()));
    const tarvane::Component flange = result["flange[0]"];
    EXPECT_EQ(flange.path(), "flange[0]");
    EXPECT_EQ(flange.description(), "N1");
    EXPECT_EQ(flange.verdict(), text_at(same.result, "flange[0].verdict"));
    EXPECT_EQ(flange.says(), text_at(same.result, "flange[0].says"));
    EXPECT_EQ(result.passed(), result.verdict() == "pass");
    EXPECT_EQ(result.program(), tarvane::Vessel::version());
    EXPECT_EQ(tarvane::Vessel::version(), tarvane_version());
    EXPECT_EQ(result.governing_component(), "flange[0]");
    EXPECT_EQ(result.governing_check(), flange.governing());
    EXPECT_EQ(flange.rated_pressure(), at(same.result, "flange[0].rating.pressure").number());
    EXPECT_GT(flange.rated_pressure().value(), 100.0);
    EXPECT_EQ(flange.input("P"), 150.0);

    const auto all = at(same.result, "flange[0].results");
    const auto* results = all.table();
    ASSERT_NE(results, nullptr);
    EXPECT_EQ(flange.result_names().size(), results->size());
    int numbers = 0, none = 0, choices = 0;
    for (const std::string& name : flange.result_names()) {
        const auto* wanted = results->find(name);
        ASSERT_NE(wanted, nullptr) << name;
        if (const std::string* text = wanted->text()) {
            EXPECT_EQ(flange.choice(name), *text);
            EXPECT_EQ(caught<InputError>([&] { flange.result(name); }).field(),
                      "flange[0].results." + name);
            ++choices;
        } else if (wanted->null()) {
            EXPECT_EQ(flange.result(name), std::nullopt) << name;
            EXPECT_EQ(flange.choice(name), std::nullopt) << name;
            EXPECT_NE(flange.why(name), "") << name;
            ++none;
        } else {
            EXPECT_EQ(flange.result(name), wanted->number()) << name;
            EXPECT_EQ(flange.why(name), "") << name;
            ++numbers;
        }
    }
    EXPECT_GT(numbers, 50);
    EXPECT_GT(none, 10);
    EXPECT_GT(choices, 0);
}

TEST_F(CppLayer, HasTheChecksWithTheirFigures) {
    const auto same = handle.calculate(request_of(flange_json()));
    const auto checks = vessel.calculate(flange_request())["flange[0]"].checks();
    const auto all = at(same.result, "flange[0].checks");
    const auto* rows = all.list();
    ASSERT_EQ(checks.size(), rows->size());
    int cases = 0, without = 0;
    for (std::size_t k = 0; k < checks.size(); ++k) {
        const auto& row = (*rows)[k];
        const tarvane::Check& check = checks[k];
        const auto same_text = [&](const char* name, const std::string& text) {
            const auto value = at(row, name);
            EXPECT_EQ(text, value.text() != nullptr ? *value.text() : "") << name;
        };
        same_text("id", check.id);
        same_text("paragraph", check.paragraph);
        same_text("case", check.load_case);
        same_text("operator", check.operation);
        same_text("unit", check.unit);
        same_text("state", check.state);
        same_text("force", check.force);
        same_text("reason", check.reason);
        same_text("remark", check.remark);
        same_text("step", check.step);
        EXPECT_EQ(check.waivable, at(row, "waivable").shown() == "true");
        EXPECT_EQ(check.demand, at(row, "demand").number());
        EXPECT_EQ(check.limit, at(row, "limit").number());
        EXPECT_EQ(check.ratio, at(row, "ratio").number());
        EXPECT_EQ(check.passed(), check.state == "pass");
        cases += !check.load_case.empty();
        without += !check.ratio;
    }
    EXPECT_GT(cases, 0);
    EXPECT_GT(without, 0);
}

TEST_F(CppLayer, HasReportAndDrawingsWhenTheyAreWanted) {
    const tarvane::Component plain = vessel.calculate(flange_request())["flange[0]"];
    EXPECT_EQ(plain.report(), "");
    EXPECT_EQ(plain.drawing("section"), std::nullopt);
    EXPECT_TRUE(plain.notes().empty());
    const tarvane::Result whole = vessel.calculate(flange_request(), {true, true, true});
    const tarvane::Component flange = whole["flange[0]"];
    EXPECT_NE(flange.report().find("Flange Input Data Values"), std::string::npos);
    EXPECT_EQ(flange.report_lines().front().marks.size(), 6u);
    EXPECT_EQ(flange.drawing("section").value_or("").substr(0, 4), "<svg");
    EXPECT_EQ(flange.drawing("chart"), std::nullopt);
    EXPECT_EQ(whole.drawing("outline"), std::nullopt);
    const tarvane::Component verdicts =
        vessel.calculate(flange_request(), {false, false, false})["flange[0]"];
    EXPECT_TRUE(verdicts.checks().empty());
    EXPECT_EQ(verdicts.verdict(), flange.verdict());
}

TEST_F(CppLayer, KeepsAResultAfterItsVessel) {
    std::optional<tarvane::Component> flange;
    {
        const tarvane::Vessel other(TARVANE_DATA_DIR);
        flange = other.calculate(flange_request())["flange[0]"];
    }
    vessel.calculate(flange_request());
    EXPECT_GT(flange->result("mawp").value(), 100.0);
}

TEST_F(CppLayer, ListsComponentsOfAllKinds) {
    Request request = flange_request();
    EXPECT_EQ(request.add("shell", {{"kind", "cylinder"},
                                    {"P", 150},
                                    {"T", 300},
                                    {"D", 60},
                                    {"t", {12.7, "mm"}},
                                    {"S", 20000},
                                    {"Sa", 20000},
                                    {"E", 1.0}}),
              "shell[0]");
    const tarvane::Result result = vessel.calculate(request);
    ASSERT_EQ(result.components().size(), 2u);
    EXPECT_EQ(result.components()[1].path(), "shell[0]");
    EXPECT_EQ(result["shell[0]"].input("t"), 0.5);
    for (const char* none : {"flange[1]", "external[0]", "flange", "", "data[0]", "governing"})
        EXPECT_EQ(caught<InputError>([&] { (void)result[none]; }).field(), none);
    EXPECT_EQ(caught<InputError>([&] { (void)result["flange[0]"].result("mwap"); }).field(),
              "flange[0].results.mwap");
    EXPECT_EQ(caught<InputError>([&] { (void)result["flange[0]"].why("mwap"); }).reason(),
              "there is no result of this name");
    EXPECT_EQ(caught<InputError>([&] { (void)result["flange[0]"].choice("mawp"); }).reason(),
              "this result is a number, no choice");
    const tarvane::Result again(result.json());
    EXPECT_EQ(again["shell[0]"].result("mawp"), result["shell[0]"].result("mawp"));
    EXPECT_EQ(caught<InputError>([] { tarvane::Result none("{}"); }).reason(), "this is no result");
}

TEST_F(CppLayer, HasAllFaultsOfARequest) {
    Request request = flange_request();
    request.put("flange[0].P", "ten");
    request.put("flange[0].T", true);
    const auto same = handle.calculate(request.json());
    const tarvane::Error error = caught<InputError>([&] { vessel.calculate(request); });
    EXPECT_EQ(error.status(), TARVANE_FAULTY);
    ASSERT_EQ(error.faults().size(), 2u);
    EXPECT_EQ(error.field(), "flange[0].P");
    EXPECT_EQ(error.value(), "the text \"ten\"");
    EXPECT_EQ(error.reason(), text_at(same.error, "[0].reason"));
    EXPECT_EQ(std::string(error.what()), "flange[0].P: " + error.reason() + " (and 1 more)");
    EXPECT_EQ(error.faults()[1].field, "flange[0].T");
    EXPECT_EQ(error.faults()[1].value, "true");

    request.put("flange[0].P", 150);
    request.put("flange[0].T", 300);
    EXPECT_EQ(vessel.calculate(request).json(), vessel.calculate(flange_request()).json());
    // A ring whose corroded bore grows over its outside diameter.
    request.add("flange", {{"type", "loose ring"},
                           {"P", 150},
                           {"T", 300},
                           {"B", 12},
                           {"A", 19},
                           {"t", 1.19},
                           {"ci", 3.6},
                           {"Sfo", 20000},
                           {"Sfa", 20000},
                           {"bolting", "TEMA"},
                           {"C", 17},
                           {"n", 12},
                           {"a", 0.875},
                           {"Sb", 25000},
                           {"Sa", 25000},
                           {"Fod", 15},
                           {"Fid", 7},
                           {"Go", 14.75},
                           {"Gi", 14},
                           {"m", 3},
                           {"y", 10000},
                           {"facing", "1a"}});
    const tarvane::Error stopped =
        caught<tarvane::EngineStopped>([&] { vessel.calculate(request); });
    EXPECT_EQ(stopped.status(), TARVANE_ENGINE_STOPPED);
    EXPECT_EQ(stopped.field(), "flange[1]");
    EXPECT_EQ(stopped.value(), text_at(handle.calculate(request.json()).error, "[0].value"));
}

TEST_F(CppLayer, PutsNothingOfAComponentWithAFault) {
    Request request = flange_request();
    const std::string before = request.json();
    const double none = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(caught<InputError>([&] {
                  request.add("flange", {{"P", 1.0}, {"T", none}});
              }).field(),
              "flange[1].T");
    EXPECT_EQ(caught<InputError>([&] { request.put("flange[3].P", 1); }).reason(),
              "the next place of the list is 1");
    EXPECT_EQ(caught<InputError>([&] {
                  request.put("flange[0].t", {none, "mm"});
              }).reason(),
              "a finite number is expected");
    EXPECT_EQ(caught<InputError>([&] { request.put("flange[0].t", "\xB0"); }).reason(),
              "a text in UTF-8 is expected");
    EXPECT_EQ(request.json(), before);
    EXPECT_EQ(caught<InputError>([] { Request none_at_all(std::string("{\"a\": ")); }).status(),
              TARVANE_FAULTY);
    const std::vector<tarvane::Member> members = {{"P", 1.0}, {"rigidity", true}};
    EXPECT_EQ(request.add("flange", members), "flange[1]");
    EXPECT_EQ(request.kind("flange[1].rigidity"), TARVANE_FLAG);
}

TEST_F(CppLayer, CopiesValuesAndMovesThem) {
    Request first = flange_request();
    Request second = first;
    second.put("flange[0].P", 151);
    EXPECT_EQ(first.number("flange[0].P"), 150.0);
    first = second;
    EXPECT_EQ(first.number("flange[0].P"), 151.0);
    const Request third = std::move(second);
    EXPECT_EQ(third.number("flange[0].P"), 151.0);
    EXPECT_EQ(second.json(), "{}"); // NOLINT: what a move leaves is promised
    EXPECT_FALSE(second.has("flange"));
    EXPECT_THROW(second.put("P", 1), InputError);
    second = third;
    EXPECT_EQ(second.json(), third.json());
    EXPECT_EQ(third.text("flange[0].type"), "weld neck");
    EXPECT_EQ(third.text("flange[0].P"), std::nullopt);
    EXPECT_EQ(third.number("flange[0].type"), std::nullopt);
}

TEST_F(CppLayer, MovesAHandle) {
    tarvane::Vessel first(TARVANE_DATA_DIR);
    tarvane::Vessel second = std::move(first);
    EXPECT_EQ(second.calculate(flange_request()).verdict(),
              vessel.calculate(flange_request()).verdict());
    for (int again = 0; again < 2; ++again) // NOLINT: what a move leaves is promised
        EXPECT_EQ(caught<tarvane::Error>([&] { first.calculate(flange_request()); }).reason(),
                  "this Vessel was moved from");
    EXPECT_THROW((void)first.schema("keys"), tarvane::Error);
    first = std::move(second);
    EXPECT_NE(first.schema("keys").find("\"flange\""), std::string::npos);
    EXPECT_EQ(caught<InputError>([&] { (void)first.schema("kees"); }).value(), "kees");
}

TEST_F(CppLayer, SaysWhatOpeningLacks) {
    const tarvane::Error error =
        caught<tarvane::NoData>([] { tarvane::Vessel none("/no/such/folder"); });
    EXPECT_EQ(error.status(), TARVANE_NO_DATA);
    EXPECT_NE(error.reason().find("/no/such/folder"), std::string::npos) << error.reason();
}

TEST_F(CppLayer, SweepsAnyContiguousNumbers) {
    const std::vector<std::string> inputs = {"flange[0].t", "flange[0].P"},
                                   outputs = {"flange[0].results.mawp", "flange[0].results.t_req",
                                              "flange[0].passed"};
    const std::array<double, 8> x = {1.19, 150.0, 0.75, 150.0, -1.0, 150.0, 1.0, 100.0};
    const tarvane::Sweep table = vessel.sweep(flange_request(), inputs, outputs, x);
    ASSERT_EQ(table.rows, 4u);
    EXPECT_EQ(table.outputs, 3u);
    for (const std::size_t row : {0u, 1u, 3u}) {
        Request request = flange_request();
        request.put("flange[0].t", x[2 * row]);
        request.put("flange[0].P", x[2 * row + 1]);
        const tarvane::Component flange = vessel.calculate(request)["flange[0]"];
        EXPECT_EQ(static_cast<float>(table.value(row, 0).value()),
                  static_cast<float>(flange.result("mawp").value()));
        EXPECT_EQ(table.value(row, 1), std::nullopt);
        EXPECT_EQ(table.value(row, 2) == 1.0, flange.passed());
        EXPECT_EQ(table.fault_of(row), nullptr);
    }
    ASSERT_NE(table.fault_of(2), nullptr);
    EXPECT_EQ(table.fault_of(2)->field, "flange[0].t");
    EXPECT_EQ(table.value(2, 0), std::nullopt);
    EXPECT_THROW((void)table.value(4, 0), std::out_of_range);
    EXPECT_THROW((void)table.value(0, 3), std::out_of_range);
    EXPECT_THROW((void)table.fault_of(4), std::out_of_range);

    const std::vector<double> vector(x.begin(), x.end());
    EXPECT_EQ(vessel.sweep(flange_request(), inputs, outputs, vector).fault, table.fault);
    EXPECT_EQ(vessel.sweep(flange_request(), inputs, outputs, std::span(x).first(4)).rows, 2u);
    EXPECT_EQ(vessel.sweep(flange_request(), inputs, outputs, std::vector<double>()).rows, 0u);
    EXPECT_EQ(caught<InputError>([&] {
                  vessel.sweep(flange_request(), inputs, outputs, std::span(x).first(3));
              }).field(),
              "x");
    EXPECT_EQ(caught<InputError>([&] { vessel.sweep(flange_request(), {}, outputs, x); }).field(),
              "x");
    EXPECT_EQ(caught<InputError>([&] {
                  vessel.sweep(flange_request(), {"flange[0].tt"}, outputs, x);
              }).field(),
              "flange[0].tt");
}

TEST_F(CppLayer, EndsASweepByItsProgress) {
    const std::vector<double> x(5000, 1.19);
    const std::vector<std::string> inputs = {"flange[0].t"}, outputs = {"flange[0].passed"};
    std::size_t told = 0;
    const tarvane::Sweep ended =
        vessel.sweep(flange_request(), inputs, outputs, x, [&](std::size_t done, std::size_t rows) {
            told = done;
            EXPECT_EQ(rows, x.size());
            return false;
        });
    EXPECT_EQ(ended.rows, told);
    EXPECT_LT(ended.rows, x.size());
    EXPECT_EQ(ended.y.size(), told);
    EXPECT_EQ(ended.fault.size(), told);
    EXPECT_THROW(
        vessel.sweep(flange_request(), inputs, outputs, x,
                     [](std::size_t, std::size_t) -> bool { throw std::domain_error("enough"); }),
        std::domain_error);
    EXPECT_EQ(vessel
                  .sweep(flange_request(), inputs, outputs, x,
                         [](std::size_t, std::size_t) { return true; })
                  .rows,
              x.size());
}

} // namespace
