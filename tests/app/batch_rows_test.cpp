// Rows of `tarvane batch`: its journal, its summary, and what it shows while it runs.
#include "app_fixture.h"
#include "batch/journal.h"
#include "batch/progress.h"
#include "batch/summary.h"
#include "components/calculation.h"
#include "values/sha256.h"

namespace tarvane::app {

using namespace vessel;
namespace fs = std::filesystem;
namespace {

using BatchRows = ProgramTest;

Entry an_entry() {
    Entry entry;
    entry.row.item = "a/\"x\"";
    entry.row.file = "a/\"x\".toml";
    entry.row.status = OK;
    entry.row.exit = Status::fails;
    entry.row.units = "SI";
    entry.row.verdict = "fail";
    entry.row.says = "flange 1: Ø, \n governing";
    entry.row.ratio = 1.2345679f;
    entry.row.component = "flange[0]";
    entry.row.check = "bolt_area";
    entry.key = sha256("x");
    entry.files = {{"txt", 12345}, {"json", 0}};
    entry.seconds = 0.25;
    return entry;
}

TEST(BatchJournal, ALineIsReadBackOrNotAtAll) {
    const std::string line = line_of(an_entry());
    EXPECT_EQ(line.find('\n'), std::string::npos);
    const auto entry = entry_of(line);
    ASSERT_TRUE(entry);
    EXPECT_EQ(line_of(*entry), line);
    EXPECT_EQ(entry->row.ratio, 1.2345679f);
    for (std::size_t length = 0; length < line.size(); ++length)
        EXPECT_FALSE(entry_of(line.substr(0, length))) << length;
    EXPECT_FALSE(entry_of(std::string(line.size(), '\0')));
    std::string other = line;
    other.replace(other.find("\"journal\":1"), 11, "\"journal\":2");
    EXPECT_FALSE(entry_of(other));
}

TEST_F(BatchRows, ANewerLineOfTheJournalCounts) {
    Entry entry = an_entry();
    {
        Journal journal(path(""));
        journal.note(entry);
        entry.row.says = "newer";
        journal.note(entry);
        entry.row.item = "other";
        journal.note(entry);
    }
    write("journal/0000000003.json", line_of(entry).substr(0, 40)); // half a line
    Journal journal(path(""));
    ASSERT_EQ(journal.entries().size(), 2u);
    EXPECT_EQ(journal.entries().at("a/\"x\"").row.says, "newer");
    journal.forget("other");
    journal.gather();
    EXPECT_TRUE(fs::is_empty(path("journal")));
    EXPECT_EQ(read(path("journal.jsonl")), line_of(journal.entries().at("a/\"x\"")) + '\n');
    EXPECT_EQ(Journal(path("")).entries().size(), 1u);
}

Row a_row(const std::string& item, std::string_view verdict, std::optional<float> ratio) {
    Row row;
    row.item = item;
    row.status = OK;
    row.verdict = verdict;
    row.exit = verdict == PASS ? Status::fine : Status::fails;
    row.ratio = ratio;
    return row;
}

TEST(BatchSummary, TheWorstRatioComesFirst) {
    Row faulty = Row::without_result(FAULTY, Status::bad_input, "line 3: P: no number");
    faulty.item = "faulty";
    const std::vector<Row> rows{a_row("a", PASS, 0.5f),  faulty,
                                a_row("c", FAIL, 1.01f), a_row("d", FAIL, 12.0f),
                                a_row("e", PASS, {}),    a_row("f", NOT_MADE, {}),
                                a_row("g", PASS, 1.0f)};
    const std::string table = summary_table(rows, 0);
    std::vector<std::string> order;
    std::istringstream lines(table);
    for (std::string line; std::getline(lines, line);)
        if (line.size() > 3 && line[1] == ' ' && line[0] != ' ') order.push_back(line.substr(0, 1));
    EXPECT_EQ(order, (std::vector<std::string>{"f", "d", "c", "g", "a", "e", "7"})) << table;
    EXPECT_NE(table.find("Not calculated:\n  faulty: line 3: P: no number\n"), std::string::npos);
    EXPECT_NE(table.find("7 items: 3 pass, 3 do not, 1 not calculated\n"), std::string::npos)
        << table;
    EXPECT_EQ(worst_of(rows), Status::bad_input);
    const std::string short_table = summary_table(rows, 2);
    EXPECT_NE(short_table.find("and 4 more, in summary.csv"), std::string::npos) << short_table;
    EXPECT_EQ(short_table.find("1.0100"), std::string::npos);
}

TEST(BatchSummary, AResultDependsOnEachOfItsConditions) {
    const Conditions given{"1.0.0", 1, false, false, "1", "data"};
    const std::string key = given.key("input");
    EXPECT_EQ(given.key("input"), key);
    EXPECT_NE(given.key("inpu"), key);
    for (const auto& change : std::vector<void (*)(Conditions&)>{
             [](Conditions& c) { c.program = "1.0.1"; }, [](Conditions& c) { c.result_form = 2; },
             [](Conditions& c) { c.strict = true; }, [](Conditions& c) { c.html = true; },
             [](Conditions& c) { c.data_sha256 = "other"; }}) {
        Conditions other = given;
        change(other);
        EXPECT_NE(other.key("input"), key);
    }
}

TEST(BatchProgress, CountsRateAndTimeLeft) {
    Tally tally{.all = 1000, .done = 100, .before = 0};
    EXPECT_EQ(progress_text(tally, 10.0), "100 of 1000 done, 10/s, 90 s left");
    tally.before = 50; // the rate is that of this run
    EXPECT_EQ(progress_text(tally, 10.0), "100 of 1000 done, 5.0/s, 3 min left");
    tally.failing = 3;
    tally.not_calculated = 1;
    EXPECT_EQ(progress_text(tally, 1e4),
              "100 of 1000 done, 3 do not pass, 1 not calculated, 0.0/s, 50.0 h left");
    tally.before = 100;
    EXPECT_EQ(progress_text(tally, 10.0), "100 of 1000 done, 3 do not pass, 1 not calculated");
    tally = {.all = 10, .done = 10, .before = 0};
    EXPECT_EQ(progress_text(tally, 2.0), "10 of 10 done, 5.0/s");
    EXPECT_EQ(progress_bar(tally, 4), "[####]");
    tally.done = 9;
    EXPECT_EQ(progress_bar(tally, 4), "[###-]");
    EXPECT_EQ(progress_bar({}, 2), "[##]");
}

} // namespace
} // namespace tarvane::app
