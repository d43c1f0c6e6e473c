// `tarvane compare`: what counts as a difference, from both sides, and the exit status.
#include "app_fixture.h"
#include "document/comparison_writers.h"
#include "values/json.h"

namespace tarvane::app {

using namespace vessel;
namespace {

// ---- results that are made up --------------------------------------------------------------------------

std::string check(const std::string& state, const std::string& more = {},
                  const std::string& force = "decides", const std::string& id = "bolt_area") {
    return R"({"id":")" + id + R"(","paragraph":"2-5","state":")" + state + R"(","force":")" +
           force + R"(","waivable":false)" + more + '}';
}

std::string flange(const std::string& description, const std::string& results = {},
                   const std::string& checks = {}, const std::string& verdict = "pass",
                   const std::string& inputs = {}) {
    return R"({"description":")" + description + R"(","verdict":")" + verdict +
           R"(","says":"words","inputs":{)" + inputs + R"(},"results":{)" + results +
           R"(},"checks":[)" + checks + "]}";
}

std::string input(const std::string& name, const std::string& value, const std::string& from) {
    return '"' + name + R"(":{"value":)" + value + R"(,"from":")" + from + R"("})";
}

// The members before the components.
const std::string HEAD = R"("program":"1","units":"US","verdict":"pass","says":"words","data":[])";

std::string result(const std::string& flanges, const std::string& head = HEAD) {
    return R"({"tarvane":1,)" + head + R"(,"flange":[)" + flanges + "]}";
}

Comparison compared(const std::string& a, const std::string& b, double tolerance = 0.0) {
    return compare(read_stored("a", a), read_stored("b", b), tolerance);
}

// What a result of one flange with one number becomes.
Comparison of_numbers(const std::string& name, const std::string& a, const std::string& b,
                      double tolerance = 0.0) {
    return compared(result(flange("", '"' + name + "\":" + a)),
                    result(flange("", '"' + name + "\":" + b)), tolerance);
}

std::string fault_of(const std::string& json) {
    try {
        read_stored("x.json", json);
    } catch (const std::runtime_error& problem) {
        return problem.what();
    }
    return "none";
}

// ---- numbers -------------------------------------------------------------------------------------------

TEST(Compare, AResultDiffersBeyondTheTolerance) {
    EXPECT_TRUE(of_numbers("mawp", "100", "100").same());
    EXPECT_FALSE(of_numbers("mawp", "100", "100.0001").same());
    EXPECT_TRUE(of_numbers("mawp", "100", "102", 2.0).same());
    EXPECT_FALSE(of_numbers("mawp", "100", "102", 1.999).same());
    EXPECT_TRUE(of_numbers("mawp", "100", "98", 2.0).same());
    EXPECT_FALSE(of_numbers("mawp", "100", "98", 1.999).same());
    EXPECT_FALSE(of_numbers("mawp", "-100", "100", 199.0).same());
    EXPECT_FALSE(of_numbers("mawp", "0", "0.001", 1000.0).same()) << "there are no per cent of 0";
    EXPECT_FALSE(of_numbers("mawp", "null", "0", 1000.0).same());
    EXPECT_TRUE(of_numbers("mawp", "null", "null").same());

    const Change change = of_numbers("mawp", "100", "102").results.at(0);
    EXPECT_EQ(change.path, "flange[0].results.mawp");
    EXPECT_EQ(change.component, "flange 1");
    EXPECT_EQ(change.unit, "psig");
    EXPECT_EQ(change.before.shown + ' ' + change.after.shown, "100.00 102.00");
    EXPECT_NEAR(change.percent.value(), 2.0, 1e-9);
    EXPECT_EQ(of_numbers("mawp", "null", "5").results.at(0).before.shown, "none");
}

TEST(Compare, FiguresThatDifferAreSeenTo) {
    const Change change = of_numbers("mawp", "100", "100.00012").results.at(0);
    EXPECT_EQ(change.before.shown + ' ' + change.after.shown, "100.0000 100.0001");
    const Change least = of_numbers("mawp", "1", "1.00000012").results.at(0);
    EXPECT_EQ(least.before.shown + ' ' + least.after.shown, "1 1.0000001");
}

TEST(Compare, ChoicesAndFlagsAreWords) {
    EXPECT_TRUE(of_numbers("mawp_by", "\"a\"", "\"a\"").same());
    const Change change = of_numbers("mawp_by", "\"a\"", "\"b\"").results.at(0);
    EXPECT_EQ(change.before.shown + change.after.shown, "ab");
    EXPECT_FALSE(change.percent.has_value());
    EXPECT_EQ(of_numbers("mawp_by", "true", "false").results.at(0).after.shown, "false");
    EXPECT_EQ(of_numbers("mawp_by", "\"a\"", "null").results.at(0).after.shown, "none");
}

TEST(Compare, FiguresOfAChecksRow) {
    const auto figures = [](const std::string& demand, const std::string& limit,
                            const std::string& ratio) {
        return result(flange("", "",
                             check("pass", ",\"demand\":" + demand + ",\"limit\":" + limit +
                                               ",\"ratio\":" + ratio)));
    };
    const Comparison ratio = compared(figures("1", "2", "0.5"), figures("1", "4", "0.25"));
    ASSERT_EQ(ratio.results.size(), 1u) << "the ratio says it";
    EXPECT_EQ(ratio.results[0].path, "flange[0].checks.bolt_area.ratio");
    EXPECT_EQ(ratio.results[0].label, "bolt area, ratio");
    const Comparison both = compared(figures("1", "2", "0.5"), figures("2", "4", "0.5"));
    ASSERT_EQ(both.results.size(), 2u);
    EXPECT_EQ(both.results[1].path, "flange[0].checks.bolt_area.limit");
}

// ---- units -----------------------------------------------------------------------------------------------

const std::string SI = R"("program":"1","units":"SI","verdict":"pass","says":"words","data":[])";

TEST(Compare, OtherUnitsAreConverted) {
    const auto us = [](const std::string& value) {
        return result(flange("", "\"mawp\":" + value));
    };
    const auto si = [](const std::string& value) {
        return result(flange("", "\"mawp\":" + value), SI);
    };
    const Comparison same = compared(us("100"), si("0.6894757"));
    EXPECT_TRUE(same.same());
    EXPECT_TRUE(same.converted);
    EXPECT_EQ(same.tolerance, TOLERANCE_OF_UNITS);
    EXPECT_EQ(same.asides.at(0).after, "SI");
    EXPECT_TRUE(compared(us("100"), si("0.68953")).same()) << "0.008 per cent";
    EXPECT_FALSE(compared(us("100"), si("0.68955")).same()) << "0.011 per cent";
    EXPECT_TRUE(compared(us("100"), si("0.68955"), 0.02).same());
    EXPECT_EQ(compared(us("100"), si("0.7")).results.at(0).after.shown, "101.53");
    EXPECT_EQ(compared(si("0.7"), us("100")).results.at(0).unit, "MPa");

    // The name is that of the system that a table of units starts from.
    const std::string BAR =
        R"("program":"1","units":"SI","unit_system":{"pressure":{"factor":0.0689475729,"label":"bar"}},)"
        R"("verdict":"pass","says":"words","data":[])";
    EXPECT_TRUE(compared(us("100"), result(flange("", "\"mawp\":6.894757"), BAR)).same());
    EXPECT_FALSE(compared(us("100"), result(flange("", "\"mawp\":0.6894757"), BAR)).same());
}

TEST(Compare, TemperaturesCountFromAbsoluteZero) {
    const auto row = [](const std::string& value, const std::string& head) {
        return R"({"tarvane":1,)" + head + R"(,"summary":[{"name":"mdmt","value":)" + value + "}]}";
    };
    EXPECT_TRUE(compared(row("50", HEAD), row("10", SI)).same());
    const Comparison c = compared(row("50", HEAD), row("60.1934", HEAD));
    ASSERT_EQ(c.results.size(), 1u);
    EXPECT_NEAR(c.results[0].percent.value(), 2.0, 1e-4);
    EXPECT_NEAR(c.results[0].degrees.value(), 10.1934, 1e-4);
    EXPECT_NE(text_of(c).find("+10.19 °F"), std::string::npos) << text_of(c);
    EXPECT_TRUE(compared(row("50", HEAD), row("60.1934", HEAD), 2.001).same());
    EXPECT_TRUE(compared(row("null", HEAD), row("null", HEAD)).same());
    EXPECT_FALSE(compared(row("50", HEAD), row("null", HEAD)).same());
}

// ---- verdicts ----------------------------------------------------------------------------------------------

Turn turn(const std::string& before, const std::string& after) {
    const Comparison c = compared(result(flange("", "", before)), result(flange("", "", after)));
    EXPECT_EQ(c.verdicts.size(), 1u) << before << after;
    EXPECT_EQ(c.worse(), c.verdicts.at(0).turn == Turn::worse);
    return c.verdicts.at(0).turn;
}

TEST(Compare, AVerdictGetsWorseOrBetter) {
    const std::string pass = check("pass"), fail = check("fail"), not_made = check("not made"),
                      waived = check("waived"), not_asked = check("not asked"), none = "",
                      advice = check("fail", "", "advises"), warning = check("fail", "", "warns");
    EXPECT_TRUE(compared(result(flange("", "", pass)), result(flange("", "", pass))).same());
    for (const std::string& sound : {pass, not_asked, none}) {
        for (const std::string& bad : {fail, not_made, waived, advice, warning}) {
            EXPECT_EQ(turn(sound, bad), Turn::worse) << sound << bad;
            EXPECT_EQ(turn(bad, sound), Turn::better) << sound << bad;
        }
    }
    EXPECT_EQ(turn(pass, not_asked), Turn::neither);
    EXPECT_EQ(turn(none, pass), Turn::neither);
    EXPECT_EQ(turn(waived, not_made), Turn::worse);
    EXPECT_EQ(turn(fail, waived), Turn::better);
    EXPECT_EQ(turn(not_made, fail), Turn::worse);
    EXPECT_EQ(turn(fail, not_made), Turn::neither) << "it is not known to pass";
}

TEST(Compare, TheVerdictOfAComponentAndOfTheWhole) {
    const std::string failing =
        R"("program":"1","units":"US","verdict":"fail","says":"words","data":[])";
    const std::string sound = result(flange("N1")),
                      bad = result(flange("N1", "", "", "fail"), failing);
    const Comparison worse = compared(sound, bad);
    ASSERT_EQ(worse.verdicts.size(), 2u);
    EXPECT_EQ(worse.verdicts[0].component, "all components");
    EXPECT_EQ(worse.verdicts[1].component, "flange 1 (N1)");
    EXPECT_TRUE(worse.worse());
    const Comparison better = compared(bad, sound);
    EXPECT_FALSE(better.worse());
    EXPECT_FALSE(better.same());
    EXPECT_EQ(better.verdicts[1].turn, Turn::better);
}

// ---- components ----------------------------------------------------------------------------------------------

// The numbers show which one was compared with which.
std::string numbered(const std::string& description, int number) {
    return flange(description, "\"mawp\":" + std::to_string(number));
}

TEST(Compare, ComponentsMatchByNameElseByNumber) {
    const std::string both = result(numbered("inlet", 1) + ',' + numbered("outlet", 2));
    EXPECT_TRUE(compared(both, result(numbered("outlet", 2) + ',' + numbered("inlet", 1))).same());
    EXPECT_TRUE(compared(both, result(numbered("inlet", 1) + ',' + numbered("new", 2))).same())
        << "a name that is in one alone goes by its number";
    const std::string unnamed = result(numbered("", 1) + ',' + numbered("", 2));
    EXPECT_TRUE(compared(unnamed, unnamed).same());
    EXPECT_TRUE(compared(both, unnamed).same());
    const std::string twice = result(numbered("inlet", 1) + ',' + numbered("inlet", 2));
    EXPECT_TRUE(compared(twice, twice).same());
    EXPECT_FALSE(compared(twice, result(numbered("inlet", 2) + ',' + numbered("inlet", 1))).same());
}

TEST(Compare, AComponentOfOneSideAlone) {
    const std::string one = result(numbered("b", 1)),
                      two = result(numbered("a", 2) + ',' + numbered("b", 1)),
                      bad = result(numbered("b", 1) + ',' + flange("a", "", "", "not made"));
    const Comparison more = compared(one, two);
    ASSERT_EQ(more.unmatched.size(), 1u);
    EXPECT_FALSE(more.unmatched[0].of_first);
    EXPECT_EQ(more.unmatched[0].component, "flange 1 (a)");
    EXPECT_EQ(more.matched, 1u);
    EXPECT_FALSE(more.same());
    EXPECT_FALSE(more.worse());
    EXPECT_TRUE(compared(two, one).unmatched.at(0).of_first);
    EXPECT_TRUE(compared(one, bad).worse()) << "one more that does not pass";
    EXPECT_FALSE(compared(bad, one).worse());
}

// ---- inputs ----------------------------------------------------------------------------------------------

Comparison of_inputs(const std::string& a, const std::string& b) {
    return compared(result(flange("", "", "", "pass", a)), result(flange("", "", "", "pass", b)),
                    50.0);
}

TEST(Compare, InputsDifferByAnything) {
    const Comparison c = of_inputs(input("t", "1", "file"), input("t", "1.0000001", "file"));
    ASSERT_EQ(c.inputs.size(), 1u) << "the tolerance is that of results";
    EXPECT_FALSE(c.same());
    EXPECT_TRUE(c.inputs[0].given());
    EXPECT_EQ(c.inputs[0].path, "flange[0].inputs.t");
    EXPECT_TRUE(of_inputs(input("t", "1", "file"), input("t", "1", "default")).same());
    EXPECT_FALSE(of_inputs(input("material", "\"a\"", "file"), input("material", "\"b\"", "file"))
                     .inputs.empty());
}

TEST(Compare, InputsThatNothingReadsDoNotCount) {
    const std::string idle = input("t", "7", "not read: type blind"),
                      other = input("t", "8", "not read: x"), given = input("t", "1", "file"),
                      standard = input("t", "1", "default");
    EXPECT_TRUE(of_inputs(idle, other).same());
    EXPECT_TRUE(of_inputs(idle, standard).same()) << "a default that another input brings";
    EXPECT_TRUE(of_inputs(standard, "").same());
    EXPECT_EQ(of_inputs(idle, given).inputs.at(0).before.shown, "none");
    EXPECT_EQ(of_inputs(given, "").inputs.at(0).after.shown, "none");
    EXPECT_FALSE(of_inputs(standard, input("t", "2", "default")).same());
}

TEST(Compare, InputsThatFollowComeAfterThoseOfTheFile) {
    const std::string text =
        text_of(of_inputs(input("P_operating", "1", "P") + ',' + input("P", "1", "file"),
                          input("P_operating", "2", "P") + ',' + input("P", "2", "file")));
    const std::size_t given = text.find("Design pressure, P "),
                      follows = text.find("Operating pressure, P_operating");
    ASSERT_NE(given, std::string::npos) << text;
    EXPECT_LT(given, follows);
    EXPECT_LT(text.find("Changed inputs that follow"), follows);
    EXPECT_NE(text.find("different: 1 input, 1 following input"), std::string::npos) << text;
}

// ---- asides ------------------------------------------------------------------------------------------------

TEST(Compare, ProgramsAndDataAreNoDifference) {
    const auto with_data = [](const std::string& program, const std::string& sha,
                              const std::string& status) {
        return R"({"tarvane":1,"program":")" + program +
               R"(","units":"US","verdict":"pass","says":"","document":{"revision":")" + program +
               R"("},"data":[{"file":"f.txt","version":null,"sha256":")" + sha +
               R"(","used":[{"item":"i","status":")" + status + R"("}]}]})";
    };
    const Comparison c =
        compared(with_data("1", "aa", "approximate"), with_data("2", "bb", "checked"));
    EXPECT_TRUE(c.same());
    std::string asides;
    for (const Aside& each : c.asides)
        asides += each.what + ": " + each.before + ", " + each.after + '\n';
    EXPECT_EQ(asides, "program: 1, 2\nf.txt: SHA-256 aa, SHA-256 bb\n"
                      "f.txt, i: approximate, checked\ndocument: Revision of the document: 1, 2\n");
    EXPECT_TRUE(compared(with_data("1", "a", "x"), with_data("1", "a", "x")).asides.empty());
}

TEST(Compare, AResultThatTheOtherProgramLacks) {
    const Comparison c = compared(result(flange("", R"("mawp":1,"old":2)")),
                                  result(flange("", R"("mawp":1,"new":2)")));
    EXPECT_TRUE(c.same());
    EXPECT_EQ(c.asides.at(0).before, "flange.old");
    EXPECT_EQ(c.asides.at(0).after, "flange.new");
}

// ---- what is no result -----------------------------------------------------------------------------------

TEST(Compare, WhatIsNoResultIsTold) {
    EXPECT_EQ(fault_of("{"),
              "x.json: not JSON from byte 2 on: syntax error while parsing object key "
              "- unexpected end of input; expected string literal");
    EXPECT_EQ(fault_of("[]"), "x.json: no result of tarvane: it is no object");
    EXPECT_EQ(fault_of("{}"), "x.json: no result of tarvane: tarvane is missing");
    EXPECT_EQ(fault_of(R"({"tarvane":2})"), "x.json: no result of tarvane: tarvane is not 1");
    EXPECT_EQ(fault_of(R"({"tarvane":1,"flange":[{"P":1}]})"),
              "x.json: no result of tarvane: program is missing")
        << "a request";
    EXPECT_EQ(fault_of(result(flange("", "", "", "fine"))),
              "x.json: no result of tarvane: flange[0].verdict is \"fine\"");
    EXPECT_EQ(fault_of(result(flange("", "", check("odd")))),
              "x.json: no result of tarvane: flange[0].checks[0].state is \"odd\"");
    EXPECT_EQ(fault_of(result(flange("", R"("mawp":[1])"))),
              "x.json: no result of tarvane: flange[0].results.mawp is no plain value");
    EXPECT_EQ(fault_of(result(flange("", "", check("pass", R"(,"ratio":"x")")))),
              "x.json: no result of tarvane: flange[0].checks[0].ratio is no number");
    EXPECT_EQ(fault_of(result(R"({"description":"","verdict":"pass","says":"","inputs":{}})")),
              "x.json: no result of tarvane: flange[0].results is missing")
        << "made without results";
    EXPECT_EQ(fault_of(R"({"tarvane":1,"program":"1","verdict":"pass","says":"","units":"CGS"})")
                  .substr(0, 36),
              "x.json: no result of tarvane: units ");
    EXPECT_EQ(fault_of(result(flange(""))), "none");
}

// ---- the program -----------------------------------------------------------------------------------------

class CompareFiles : public ProgramTest {
  protected:
    CompareFiles() {
        write("a.toml", FLANGE_TOML);
        write("thin.toml", with("t", "t = 0.6"));
        write("thick.toml", with("t", "t = 1.3"));
    }
    ProgramRun compare(const std::string& arguments) const {
        return shell("cd '" + folder.string() + "'; " + std::string(TARVANE_PROGRAM) + " compare " +
                     arguments);
    }
};

TEST_F(CompareFiles, TheStatusSaysWhatCameOut) {
    EXPECT_EQ(compare("a.toml a.toml").status, 0);
    EXPECT_EQ(compare("a.toml thin.toml").status, 1);
    EXPECT_EQ(compare("thin.toml a.toml").status, 3) << "better";
    EXPECT_EQ(compare("a.toml thick.toml").status, 3);
    EXPECT_EQ(compare("a.toml none.toml").status, 2);
    EXPECT_EQ(compare("a.toml").status, 2);
    EXPECT_EQ(compare("a.toml a.toml --tolerance -1").status, 2);
    const ProgramRun worse = compare("a.toml thin.toml");
    EXPECT_NE(worse.out.find("\nWORSE  "), std::string::npos) << worse.out;
    EXPECT_NE(worse.out.find("Flange thickness, t "), std::string::npos) << worse.out;
    EXPECT_LT(worse.out.find("Changed inputs"), worse.out.find("Changed results"));
    EXPECT_LT(worse.out.find("Changed results"), worse.out.find("\nVerdicts"));
    EXPECT_EQ(worse.err, "");
}

TEST_F(CompareFiles, AnInputFileAndItsResultAreTheSame) {
    ASSERT_EQ(
        shell("cd '" + folder.string() + "'; " + TARVANE_PROGRAM + " run a.toml --json a.json")
            .status,
        0);
    EXPECT_EQ(compare("a.toml a.json").status, 0);
    EXPECT_EQ(compare("a.json a.toml").status, 0);
    EXPECT_EQ(compare("a.json a.json").status, 0);
    EXPECT_EQ(compare("a.json thin.toml").status, 1);
}

TEST_F(CompareFiles, WhatCannotBeCompared) {
    write("faulty.toml", with("P", "P = \"ten\""));
    const ProgramRun faulty = compare("a.toml faulty.toml");
    EXPECT_EQ(faulty.status, 2);
    EXPECT_EQ(faulty.out, "");
    EXPECT_EQ(faulty.err.substr(0, 24), "tarvane: faulty.toml:4: ");
    write("result.json", "{\"tarvane\":1}");
    EXPECT_EQ(compare("result.json a.toml").err,
              "tarvane: result.json: no result of tarvane: program is missing\n");
    std::string ring = with("type", "type = \"loose ring\"");
    for (const char* key : {"g0", "g1", "h"})
        ring = with(key, "", ring);
    write("stop.toml", with("Fid", "Fid = 7", with("ci", "ci = 3.6", ring)));
    const ProgramRun stopped = compare("a.toml stop.toml");
    EXPECT_EQ(stopped.status, 2);
    EXPECT_EQ(stopped.err, "tarvane: stop.toml: the calculation was not completed: the engine "
                           "stopped with code 25: the outside diameter is not above the corroded "
                           "inside diameter\n");
}

TEST_F(CompareFiles, ThePageHasWhatTheTextShows) {
    ASSERT_EQ(compare("a.toml thin.toml --html c.html").status, 1);
    const std::string page = read(path("c.html"));
    for (const char* words : {"WORSE:", "Changed inputs", "Changed results", "Changed verdicts",
                              "flange 1 (test flange)", "Flange thickness"})
        EXPECT_NE(page.find(words), std::string::npos) << words << '\n' << page;
    for (const char* words : {"signatures\"", "Open points", "no document number"})
        EXPECT_EQ(page.find(words), std::string::npos) << words;
    ASSERT_EQ(compare("a.toml a.toml --html same.html").status, 0);
    EXPECT_EQ(read(path("same.html")).find("Contents"), std::string::npos) << "it has no sections";
    EXPECT_EQ(compare("a.toml thin.toml --html c.out --json ./c.out").status, 2);
    EXPECT_FALSE(std::filesystem::exists(folder / "c.out"));
    if (shell("command -v tidy").status != 0) GTEST_SKIP() << "tidy is not installed";
    for (const char* name : {"c.html", "same.html"}) {
        const ProgramRun tidy = shell("tidy -quiet -errors '" + path(name) + "'");
        EXPECT_EQ(tidy.status, 0) << tidy.err;
        EXPECT_EQ(tidy.err, "");
    }
}

TEST_F(CompareFiles, TheJsonHasWhatTheTextShows) {
    ASSERT_EQ(compare("a.toml thin.toml --json c.json").status, 1);
    Faults faults;
    const std::optional<Value> json = read_json(read(path("c.json")), faults);
    ASSERT_TRUE(json) << faults.front().message;
    const Table& c = *json->table();
    EXPECT_EQ(*c.find("comparison")->text(), "worse");
    const List& inputs = *c.find("inputs")->list();
    ASSERT_EQ(inputs.size(), 1u);
    const Table& thickness = *inputs[0].table();
    EXPECT_EQ(*thickness.find("path")->text(), "flange[0].inputs.t");
    EXPECT_EQ(thickness.find("before")->number(), 1.19);
    EXPECT_EQ(thickness.find("after")->number(), 0.6);
    bool worse = false;
    for (const Value& each : *c.find("verdicts")->list())
        worse = worse || *each.table()->find("turn")->text() == "worse";
    EXPECT_TRUE(worse);
    EXPECT_FALSE(c.find("results")->list()->empty());
    EXPECT_EQ(compare("a.toml a.toml --json a.toml").err,
              "tarvane: cannot write a.toml: it is the first file\n");
    EXPECT_EQ(compare("a.toml thin.toml --json thin.toml").err,
              "tarvane: cannot write thin.toml: it is the second file\n");
}

} // namespace
} // namespace tarvane::app
