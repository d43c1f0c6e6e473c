// What a host may do with the surface, and what it may do wrong.
#include "vessel_fixture.h"

#include <filesystem>
#include <fstream>
#include <set>
#include <thread>

namespace tarvane::vessel {

namespace {

// ---- open and close ------------------------------------------------------------------------------------

TEST(Open, FindsTheDataFilesBesideTheLibrary) {
    TARVANE_VESSEL* vessel = nullptr;
    ASSERT_EQ(tarvane_open(TARVANE_VESSEL_ABI, nullptr, &vessel), TARVANE_OK);
    EXPECT_STREQ(tarvane_last_error(vessel), "[]");
    const char* result = nullptr;
    EXPECT_EQ(tarvane_calculate(vessel, request_of(flange_json()).c_str(), 0, &result), TARVANE_OK);
    tarvane_close(vessel);
    ASSERT_EQ(tarvane_open(TARVANE_VESSEL_ABI, "", &vessel), TARVANE_OK);
    tarvane_close(vessel);
    tarvane_close(nullptr);
}

TEST(Open, RefusesAHeaderOfAnotherNumber) {
    for (const std::int32_t abi : {TARVANE_VESSEL_ABI - 1, TARVANE_VESSEL_ABI + 1}) {
        TARVANE_VESSEL* vessel = Handle().get(); // no null pointer
        EXPECT_EQ(tarvane_open(abi, TARVANE_DATA_DIR, &vessel), TARVANE_INTERNAL);
        EXPECT_EQ(vessel, nullptr);
        const Value error = parsed(tarvane_last_error(nullptr));
        EXPECT_EQ(text_at(error, "[0].path"), "abi");
        EXPECT_EQ(text_at(error, "[0].value"), std::to_string(abi));
        EXPECT_EQ(text_at(error, "[0].reason"), "the library is of ABI 1");
    }
}

TEST(Open, TellsTheThreadThatFailedAndNoOther) {
    EXPECT_EQ(tarvane_open(TARVANE_VESSEL_ABI, nullptr, nullptr), TARVANE_INTERNAL);
    EXPECT_EQ(text_at(parsed(tarvane_last_error(nullptr)), "[0].reason"),
              "a place for the handle is expected");
    std::string other;
    std::thread([&] { other = tarvane_last_error(nullptr); }).join();
    EXPECT_EQ(other, "[]");
    // Opening another one leaves the text alone.
    const Handle handle;
    EXPECT_EQ(handle.opened, TARVANE_OK);
    EXPECT_NE(std::string(tarvane_last_error(nullptr)), "[]");
}

TEST(Open, GivesAHandleWithoutData) {
    const Handle handle("/no/such/folder");
    EXPECT_EQ(handle.opened, TARVANE_NO_DATA);
    ASSERT_NE(handle.get(), nullptr);
    EXPECT_EQ(text_at(parsed(tarvane_last_error(handle.get())), "[0].reason"),
              "there is no data folder /no/such/folder (named by tarvane_open)");
    EXPECT_STREQ(tarvane_last_error(nullptr), tarvane_last_error(handle.get()));
    EXPECT_EQ(handle.calculate(request_of(flange_json())).status, TARVANE_NO_DATA);
}

TEST(Open, NamesEveryMissingFileAndCalculatesWithoutIt) {
    const Folder folder("tarvane_missing");
    std::filesystem::remove(folder.path / "ExtChartData.txt");
    std::filesystem::remove(folder.path / "BOLTDATA.TXT");
    const Handle handle(folder.path.string());
    EXPECT_EQ(handle.opened, TARVANE_NO_DATA);
    const Value error = parsed(tarvane_last_error(handle.get()));
    ASSERT_EQ(error.list()->size(), 2u);
    EXPECT_EQ(text_at(error, "[0].reason"), "BOLTDATA.TXT is missing in the data folder " +
                                                folder.path.string() + " (version " +
                                                tarvane_version() + ", named by tarvane_open)");
    // A flange uses the one, a shell neither.
    const Answer flange = handle.calculate(request_of(flange_json()));
    EXPECT_NE(flange.status, TARVANE_OK);
    EXPECT_EQ(
        handle
            .calculate(R"({"shell": [{"kind": "cylinder", "P": 100, "T": 300, "D": 48, "t": 0.5, )"
                       R"("S": 20000, "Sa": 20000, "E": 0.85}]})")
            .status,
        TARVANE_OK);
}

// ---- data folders ----------------------------------------------------------------------------------------

TEST(Folders, OfTwoHandlesAreKeptApart) {
    const Folder folder("tarvane_moduli");
    // Moduli of another file: every 2 of theirs becomes a 3.
    std::string text;
    {
        std::ifstream in(folder.path / "ElastAlp07.txt", std::ios::binary);
        text.assign(std::istreambuf_iterator<char>(in), {});
    }
    const std::size_t begin = text.find("[Emod]"), end = text.find("[CoE]");
    ASSERT_LT(begin, end);
    for (std::size_t i = begin; i < end; ++i)
        if (text[i] == '2' && text[i + 1] != ' ' && text[i - 1] == ' ') text[i] = '3';
    std::ofstream(folder.path / "ElastAlp07.txt", std::ios::binary) << text;

    const std::string request = request_of(flange_json(R"(, "rigidity": true)"));
    const auto report = [&](const Handle& handle) {
        const Answer answer = handle.calculate(request, TARVANE_WANT_REPORT);
        EXPECT_EQ(answer.status, TARVANE_OK) << text_at(answer.error, "[0].reason");
        return answer.text;
    };
    const Handle shipped, other(folder.path.string());
    const std::string first = report(shipped), second = report(other);
    EXPECT_NE(first, second);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(report(shipped), first);
        EXPECT_EQ(report(other), second);
    }
}

TEST(Folders, StayWhereTheyAreWhenTheWorkingFolderChanges) {
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(TARVANE_DATA_DIR);
    const Handle handle(".");
    std::filesystem::current_path(before);
    EXPECT_EQ(handle.opened, TARVANE_OK);
    EXPECT_EQ(handle.calculate(request_of(flange_json())).status, TARVANE_OK);
}

// ---- results -----------------------------------------------------------------------------------------------

TEST(Calculate, TellsWhatWasTakenAndFromWhere) {
    const Handle handle;
    const Answer answer = handle.calculate(
        request_of(flange_json(R"(, "ci": 1.5875)"), R"("units": {"base": "US", "thickness":
            {"factor": 25.4, "label": "mm"}}, "vessel": {"ce": 0.1}, )"));
    ASSERT_EQ(answer.status, TARVANE_OK) << text_at(answer.error, "[0].reason");
    EXPECT_EQ(*at(answer.result, "tarvane").whole(), 1);
    EXPECT_EQ(text_at(answer.result, "program"), tarvane_version());
    EXPECT_EQ(text_at(answer.result, "flange[0].description"), "N1");
    EXPECT_EQ(*at(answer.result, "flange[0].inputs.ci.value").number(), 1.5875);
    EXPECT_EQ(*at(answer.result, "flange[0].inputs.ci.given").number(), 1.5875);
    EXPECT_EQ(text_at(answer.result, "flange[0].inputs.ci.from"), "file");
    EXPECT_EQ(text_at(answer.result, "flange[0].inputs.type.value"), "weld neck");
    EXPECT_EQ(*at(answer.result, "flange[0].inputs.n.value").whole(), 12);
    EXPECT_EQ(text_at(answer.result, "data[0].file"), "BOLTDATA.TXT");
    EXPECT_EQ(text_at(answer.result, "data[0].used[0].status"), "published");
    EXPECT_EQ(text_at(answer.result, "data[0].used[0].source"), "TEMA Standards");
    EXPECT_EQ(text_at(answer.result, "data[0].used[0].edition"), "9th edition");
    EXPECT_TRUE(at(answer.result, "data_edition").null());
    EXPECT_TRUE(at(answer.result, "flange[0].report").null());
}

// Data files that a user made have his edition.
TEST(Calculate, NamesTheEditionOfDataFilesOfTheUser) {
    const Folder folder("tarvane_own_data");
    std::ofstream(folder.path / "data_edition.txt") << "Invented tables, edition 2\n";
    const Handle handle(folder.path.string());
    const Answer answer = handle.calculate(request_of(flange_json()));
    ASSERT_EQ(answer.status, TARVANE_OK) << text_at(answer.error, "[0].reason");
    EXPECT_EQ(text_at(answer.result, "data_edition"), "Invented tables, edition 2");
}

const Value* row_of(const Value& checks, std::string_view id) {
    for (const Value& check : *checks.list())
        if (text_at(check, "id") == id) return &check;
    return nullptr;
}

TEST(Calculate, TellsWhatACheckDecides) {
    const Handle handle;
    const Answer answer = handle.calculate(request_of(flange_json(R"(, "rigidity": true)")));
    const Value checks = at(answer.result, "flange[0].checks");
    std::set<std::string> forces;
    for (const Value& check : *checks.list())
        forces.insert(text_at(check, "force"));
    EXPECT_EQ(forces, (std::set<std::string>{"decides", "warns", "advises"}));
    // As the tables have it.
    const Value keys = parsed(tarvane_schema(handle.get(), "keys"));
    const Value fields = at(keys, "kinds[0].checks");
    for (const Value& check : *checks.list()) {
        const Value* field = row_of(fields, text_at(check, "id"));
        ASSERT_NE(field, nullptr);
        EXPECT_EQ(text_at(check, "force"), text_at(*field, "force"));
        EXPECT_EQ(*at(check, "waivable").flag(), *at(*field, "waivable").flag());
    }
}

TEST(Calculate, NamesTheValueOfAChoice) {
    const Handle handle;
    const Answer answer = handle.calculate(
        R"({"shell": [{"kind": "cylinder", "P": 100, "T": 300, "D": 48, "t": 0.5,
            "S": 20000, "Sa": 20000, "E": 0.85}]})");
    EXPECT_EQ(text_at(answer.result, "shell[0].results.formula"), "UG-27(c)(1)");
    EXPECT_EQ(text_at(answer.result, "shell[0].results.t_by"), "formula");
}

TEST(Calculate, SaysNothingOfAVersionThatTheFolderHasNot) {
    const Folder folder("tarvane_versions");
    const auto version = [&] {
        const Handle handle(folder.path.string());
        return at(handle.calculate(request_of(flange_json())).result, "data[0].version");
    };
    std::ofstream(folder.path / "data_version.txt") << "2.3.4\n";
    EXPECT_EQ(*version().text(), "2.3.4");
    std::filesystem::remove(folder.path / "data_version.txt");
    EXPECT_TRUE(version().null());
}

TEST(Calculate, WritesNoReportThatNobodyWants) {
    const Handle handle;
    const std::string request = request_of(flange_json());
    const Answer silent = handle.calculate(request, 0);
    EXPECT_TRUE(at(silent.result, "flange[0].results").null());
    EXPECT_TRUE(at(silent.result, "flange[0].report").null());
    const Answer report = handle.calculate(request, TARVANE_WANT_REPORT);
    ASSERT_NE(at(report.result, "flange[0].report").list(), nullptr);
    EXPECT_GT(at(report.result, "flange[0].report").list()->size(), 100u);
    EXPECT_EQ(at(report.result, "flange[0].report[0].marks").list()->size(), 6u);
    EXPECT_NE(report.text.find("Flange Input Data Values"), std::string::npos);
    // Degrees and squares are in UTF-8.
    EXPECT_NE(report.text.find("in\xC2\xB2"), std::string::npos);
}

TEST(Calculate, DrawsComponentsAndTheChartOfWhatWentByOne) {
    const Handle handle;
    const std::string request =
        R"({"external": [{"kind": "cylinder", "P": 15, "T": 300, "D": 60, "t": 0.5, "chart": "CS-2",
            "length": 150, "S": 20000}], "shell": [{"kind": "cylinder", "P": 100, "T": 300, "D": 48, "t": 0.5,
            "S": 20000, "Sa": 20000, "E": 0.85}]})";
    const Answer answer = handle.calculate(request, TARVANE_WANT_DRAWINGS);
    ASSERT_EQ(answer.status, TARVANE_OK) << text_at(answer.error, "[0].reason");
    for (const std::string drawing :
         {"external[0].drawings[0]", "external[0].drawings[1]", "shell[0].drawings[0]"})
        EXPECT_NE(text_at(answer.result, drawing + ".svg").find("<svg"), std::string::npos)
            << drawing;
    EXPECT_EQ(text_at(answer.result, "external[0].drawings[0].name"), "section");
    EXPECT_EQ(text_at(answer.result, "external[0].drawings[1].name"), "chart");
    EXPECT_EQ(text_at(answer.result, "shell[0].drawings[0].name"), "section");
    EXPECT_EQ(at(answer.result, "shell[0].drawings").list()->size(), 1u);
    EXPECT_TRUE(at(answer.result, "drawings").null());
    EXPECT_TRUE(at(handle.calculate(request).result, "external[0].drawings").null());
}

TEST(Calculate, DrawsTheVesselWhereTwoComponentsHaveAnElevation) {
    const Handle handle;
    const auto drawn = [&](const std::string& elevation, std::int32_t want) {
        const std::string shell =
            R"({"kind": "cylinder", "length": 60, "T": 300, "D": 48, "t": 0.5, "S": 20000, "Sa": 20000, "P": 100)";
        const Answer answer =
            handle.calculate(R"({"vessel": {"E": 1}, "shell": [)" + shell +
                                 R"(, "elevation": 0}, )" + shell + elevation + "}]}",
                             want);
        EXPECT_EQ(answer.status, TARVANE_OK) << text_at(answer.error, "[0].reason");
        return at(answer.result, "drawings");
    };
    const auto outline = drawn(R"(, "elevation": 60)", TARVANE_WANT_DRAWINGS);
    ASSERT_NE(outline.list(), nullptr);
    EXPECT_EQ(text_at(outline, "[0].name"), "outline");
    EXPECT_TRUE(drawn("", TARVANE_WANT_DRAWINGS).null());
    EXPECT_TRUE(drawn(R"(, "elevation": 60)", TARVANE_WANT_RESULTS).null());
}

TEST(Calculate, TakesKindsInTheOrderOfTheRequest) {
    const Handle handle;
    const std::string shell =
        R"("shell": [{"description": "S", "kind": "cylinder", "P": 100, "T": 300, "D": 48, "t": 0.5,
            "material": "SA-516 70"}])";
    const std::string flange =
        R"("flange": [{"description": "F", "type": "blind", "kind": "thickness", "P": 100, "T": 300, "t": 2, "A": 32,
            "C": 29.5, "a": 1, "n": 20, "Fod": 27, "Fid": 24, "Go": 27, "Gi": 25, "m": 1, "y": 200, "facing": "1a",
            "bolting": "TEMA", "material": "SA-105", "bolt_material": "SA-193 B7"}])";
    // The metal temperatures that the vessel asks for are in this order, too.
    const auto first = [&](const std::string& components) {
        const Answer answer =
            handle.calculate(R"({"vessel": {"E": 1, "MDMT": 20}, )" + components + '}');
        EXPECT_EQ(answer.status, TARVANE_OK) << text_at(answer.error, "[0].reason");
        return text_at(answer.result, "mdmt[0].description");
    };
    EXPECT_EQ(first(shell + ", " + flange), "S");
    EXPECT_EQ(first(flange + ", " + shell), "F");
}

// ---- schema ------------------------------------------------------------------------------------------------

TEST(Schema, TellsTheTablesOfEveryKind) {
    const Handle handle;
    const Value keys = parsed(tarvane_schema(handle.get(), "keys"));
    const Value kinds = at(keys, "kinds");
    ASSERT_NE(kinds.list(), nullptr);
    for (const Value& kind : *kinds.list()) {
        for (const char* table : {"keys", "results", "checks"}) {
            std::set<std::string> names;
            const Value rows = at(kind, table);
            for (const Value& row : *rows.list()) {
                const std::string name =
                    text_at(row, table == std::string_view("checks") ? "id" : "name");
                EXPECT_TRUE(names.insert(name).second)
                    << text_at(kind, "name") << ' ' << table << ' ' << name;
            }
        }
    }
    EXPECT_EQ(text_at(keys, "kinds[0].name"), "flange");
    EXPECT_EQ(text_at(keys, "kinds[0].keys[0].name"), "description");
}

TEST(Schema, OfAnotherNameIsRefused) {
    const Handle handle;
    for (const char* what : {"", "Input", "keys ", static_cast<const char*>(nullptr)}) {
        EXPECT_EQ(tarvane_schema(handle.get(), what), nullptr);
        EXPECT_EQ(text_at(parsed(tarvane_last_error(handle.get())), "[0].reason"),
                  "\"input\", \"result\" or \"keys\" is expected");
    }
    EXPECT_EQ(tarvane_schema(nullptr, "keys"), nullptr);
    EXPECT_NE(tarvane_schema(handle.get(), "input"), nullptr);
    EXPECT_STREQ(tarvane_last_error(handle.get()), "[]");
}

// ---- faults ------------------------------------------------------------------------------------------------

TEST(Faults, ComeAllWithPathValueAndReason) {
    const Handle handle;
    const Answer answer = handle.calculate(
        request_of(flange_json(R"(, "ci": "ten", "facings": 1)") + R"(, {"type": "blind"})"));
    EXPECT_EQ(answer.status, TARVANE_FAULTY);
    bool ci = false, facings = false, second = false;
    for (std::size_t i = 0; i < answer.faults(); ++i) {
        const std::string place = '[' + std::to_string(i) + ']';
        const std::string path = text_at(answer.error, place + ".path"),
                          reason = text_at(answer.error, place + ".reason");
        if (path == "flange[0].ci") {
            ci = true;
            EXPECT_EQ(text_at(answer.error, place + ".value"), "the text \"ten\"");
            EXPECT_EQ(reason.find("a number in in. is expected"), 0u) << reason;
        }
        facings = facings || (path == "flange[0].facings" && reason.find("facing") != reason.npos);
        second = second || path == "flange[1].P";
    }
    EXPECT_TRUE(ci && facings && second) << answer.faults();
}

TEST(Faults, EndWithTheNextCallThatSucceeds) {
    const Handle handle;
    EXPECT_EQ(handle.calculate("{}").faults(), 1u);
    EXPECT_STREQ(tarvane_last_error(handle.get()), tarvane_last_error(handle.get()));
    EXPECT_EQ(handle.calculate(request_of(flange_json())).faults(), 0u);
}

std::string reason_of(const std::string& request, std::int32_t want = 0) {
    const Handle handle;
    const Answer answer = handle.calculate(request, want);
    EXPECT_EQ(answer.status, TARVANE_FAULTY) << request;
    return text_at(answer.error, "[0].reason");
}

TEST(Faults, OfTheText) {
    EXPECT_NE(reason_of("").find("not JSON from byte"), std::string::npos);
    EXPECT_NE(reason_of("{").find("not JSON from byte"), std::string::npos);
    EXPECT_NE(reason_of("{} {}").find("not JSON from byte"), std::string::npos);
    EXPECT_NE(reason_of(R"({"flange": [NaN]})").find("not JSON"), std::string::npos);
    EXPECT_NE(reason_of(R"({"a": 1e999})").find("not JSON"), std::string::npos);
    EXPECT_NE(reason_of("{\"description\": \"\xE9\"}").find("not JSON"), std::string::npos);
    EXPECT_EQ(reason_of("[1]"), "a JSON object is expected, not a list");
    EXPECT_EQ(reason_of("null").find("a JSON object is expected"), 0u);
    EXPECT_EQ(reason_of(R"({"P": 1, "P": 2})"), "the key \"P\" is given twice");
    EXPECT_EQ(reason_of(R"({"flange": [{"P": 1, "T": 2, "P": 1}]})"),
              "the key \"P\" is given twice");
}

TEST(Faults, BeginBelowSixtyFourLevels) {
    const auto nested = [](std::size_t levels) {
        return R"({"x": )" + std::string(levels - 1, '[') + std::string(levels - 1, ']') + '}';
    };
    EXPECT_EQ(reason_of(nested(64)).find("nests"), std::string::npos);
    EXPECT_EQ(reason_of(nested(65)), "it nests deeper than 64");
    EXPECT_EQ(reason_of(nested(200000)), "it nests deeper than 64");
}

TEST(Faults, OfWhatIsWanted) {
    const std::string request = request_of(flange_json());
    for (const std::int32_t want : {4, 16, -1, 1 << 30}) {
        EXPECT_EQ(reason_of(request, want),
                  "TARVANE_WANT_RESULTS or other bits of its list are expected");
    }
}

TEST(Faults, NumbersOutOfRangeAreOfTheirKey) {
    const Handle handle;
    for (const char* number :
         {"1e39", "-1e39", "1e300", "123456789012345678901234567890123456789012"}) {
        const Answer answer =
            handle.calculate(request_of(flange_json(std::string(R"(, "ci": )") + number)));
        EXPECT_EQ(answer.status, TARVANE_FAULTY) << number;
        EXPECT_EQ(text_at(answer.error, "[0].path"), "flange[0].ci") << number;
    }
}

TEST(NullPointers, AreRefused) {
    const char* result = "";
    const std::string request = request_of(flange_json());
    EXPECT_EQ(tarvane_calculate(nullptr, request.c_str(), 0, &result), TARVANE_INTERNAL);
    EXPECT_EQ(result, nullptr);
    const Handle handle;
    result = "";
    EXPECT_EQ(tarvane_calculate(handle.get(), nullptr, 0, &result), TARVANE_INTERNAL);
    EXPECT_EQ(result, nullptr);
    EXPECT_EQ(text_at(parsed(tarvane_last_error(handle.get())), "[0].reason"),
              "a request is expected");
    EXPECT_EQ(tarvane_calculate(handle.get(), request.c_str(), 0, nullptr), TARVANE_INTERNAL);
    EXPECT_EQ(text_at(parsed(tarvane_last_error(handle.get())), "[0].reason"),
              "a place for the result is expected");
    EXPECT_EQ(tarvane_calculate(nullptr, nullptr, 0, nullptr), TARVANE_INTERNAL);
}

// A ring whose corroded bore grows over its outside diameter ends the run in the engine; the library continues.
TEST(Stopped, IsAStatusWithTheCode) {
    const Handle handle;
    const std::string ring =
        R"({"type": "loose ring", "P": 150, "T": 300, "B": 12.0, "A": 19.0, "t": 1.19, "ci": 3.6,
            "Sfo": 20000, "Sfa": 20000, "bolting": "TEMA", "C": 17.0, "n": 12, "a": 0.875, "Sb": 25000,
            "Sa": 25000, "Fod": 15.0, "Fid": 7, "Go": 14.75, "Gi": 14.0, "m": 3, "y": 10000,
            "facing": "1a"})";
    const Answer answer = handle.calculate(request_of(flange_json() + ", " + ring),
                                           TARVANE_WANT_RESULTS | TARVANE_WANT_REPORT);
    ASSERT_EQ(answer.status, TARVANE_ENGINE_STOPPED) << answer.text;
    EXPECT_EQ(text_at(answer.error, "[0].path"), "flange[1]");
    EXPECT_EQ(text_at(answer.error, "[0].reason").find("the engine stopped with code 25"), 0u);
    EXPECT_EQ(text_at(answer.error, "[0].value"), "25");
    EXPECT_EQ(handle.calculate(request_of(flange_json())).status, TARVANE_OK);
}

} // namespace
} // namespace tarvane::vessel
