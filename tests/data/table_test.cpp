// The reader of the tables in data/sources.
#include "table.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace tarvane::data {
namespace {

constexpr std::string_view COLUMNS[] = {"name", "size", "status", "source"};
constexpr std::string_view OPTIONAL[] = {"100", "150"};
const std::string HEADER = "# a table\n\nname,size,status,source\n";

std::filesystem::path file_of(const std::string& text) {
    const std::filesystem::path path = std::filesystem::path(testing::TempDir()) / "bolts.csv";
    std::ofstream(path, std::ios::binary) << text;
    return path;
}

// What the reader, or the use of the first row, says about a text.
template <typename Use>
std::string complaint(const std::string& text, Use use) {
    try {
        const Table table(file_of(text), COLUMNS, OPTIONAL);
        use(table.rows().front());
    } catch (const DataError& error) {
        return error.what();
    }
    return "nothing";
}
std::string complaint(const std::string& text) {
    return complaint(text, [](const Row&) {});
}

TEST(DataTable, ReadsFieldsWithAndWithoutQuotationMarks) {
    const Table table(file_of("size, name ,source,status,150\r\n"
                              "  # between\n"
                              " 1.5 , \"a, \"\"b\"\" \" ,x y,published,\r\n"
                              "-2e3,c,\"\",approximate,7\n"),
                      COLUMNS, OPTIONAL);
    ASSERT_EQ(table.rows().size(), 2u);
    const Row& first = table.rows()[0];
    EXPECT_EQ(first.field("name"), "a, \"b\" ");
    EXPECT_EQ(first.field("source"), "x y");
    EXPECT_EQ(first.real("size"), 1.5f);
    EXPECT_EQ(first.line(), 3);
    EXPECT_FALSE(first.approximate());
    EXPECT_TRUE(first.blank("150"));
    EXPECT_TRUE(first.blank("100")); // no such column
    const Row& second = table.rows()[1];
    EXPECT_EQ(second.real("size"), -2000.0f);
    EXPECT_TRUE(second.blank("source"));
    EXPECT_EQ(second.whole("150"), 7);
    EXPECT_EQ(table.file(), "bolts.csv");
    EXPECT_EQ(table.number_columns(), std::vector<std::string>{"150"});
}

TEST(DataTable, NamesTheLineOfWhatIsWrong) {
    EXPECT_EQ(complaint("# nothing\n"), "bolts.csv: no line with the names of the columns");
    EXPECT_EQ(complaint(HEADER), "bolts.csv: no rows");
    EXPECT_EQ(complaint(HEADER + "a,1,published\n"),
              "bolts.csv:4: 3 fields where the header has 4");
    EXPECT_EQ(complaint(HEADER + "a,1,published,x,y\n"),
              "bolts.csv:4: 5 fields where the header has 4");
    EXPECT_EQ(complaint(HEADER + "a,1,published,\"x\n"),
              "bolts.csv:4: quotation marks out of place in a,1,published,\"x");
    EXPECT_EQ(complaint(HEADER + "a,1,published,x\"y\n"),
              "bolts.csv:4: quotation marks out of place in a,1,published,x\"y");
    EXPECT_EQ(complaint(HEADER + "a,1,published,\"x\"y\n"),
              "bolts.csv:4: quotation marks out of place in a,1,published,\"x\"y");
    EXPECT_EQ(complaint("name,size,status\n"), "bolts.csv:1: source: the column is missing");
    EXPECT_EQ(complaint("name,size,status,source,colour\n"),
              "bolts.csv:1: colour: no column of this table");
    EXPECT_EQ(complaint("name,size,status,source,size\n"),
              "bolts.csv:1: size: the column stands twice");
    EXPECT_THROW(Table(std::filesystem::path("no/such.csv"), COLUMNS), DataError);
}

TEST(DataTable, NamesTheColumnAndTheValueOfWhatIsWrong) {
    const auto size = [](const Row& row) { row.real("size"); };
    for (const char* text : {"1.5x", "one", "1,5", "nan", "inf", "1e99", "+1", "0x1"}) {
        const std::string field = std::string(text).find(',') == std::string::npos
                                      ? std::string(text)
                                      : '"' + std::string(text) + '"';
        EXPECT_EQ(complaint(HEADER + "a," + field + ",published,x\n", size),
                  "bolts.csv:4: size: not a number: \"" + std::string(text) + "\"");
    }
    EXPECT_EQ(complaint(HEADER + "a,,published,x\n", size), "bolts.csv:4: size: empty");
    EXPECT_EQ(complaint(HEADER + "a,0,published,x\n", [](const Row& row) { row.positive("size"); }),
              "bolts.csv:4: size: not above 0: 0");
    const auto whole = [](const Row& row) { row.whole("size"); };
    EXPECT_EQ(complaint(HEADER + "a,1.5,published,x\n", whole),
              "bolts.csv:4: size: not a whole number: \"1.5\"");
    EXPECT_EQ(complaint(HEADER + "a,3000000000,published,x\n", whole),
              "bolts.csv:4: size: not a whole number: \"3000000000\"");
    EXPECT_EQ(
        complaint(HEADER + "abcd,1,published,x\n", [](const Row& row) { row.text("name", 3); }),
        "bolts.csv:4: name: longer than 3 characters: \"abcd\"");
    EXPECT_EQ(
        complaint(HEADER + "a\tb,1,published,x\n", [](const Row& row) { row.text("name", 9); }),
        "bolts.csv:4: name: characters other than printable ASCII in \"a\tb\"");
    const auto status = [](const Row& row) { row.approximate(); };
    EXPECT_EQ(
        complaint(HEADER + "a,1,sure,x\n", status),
        "bolts.csv:4: status: neither \"published\", \"checked\" nor \"approximate\": \"sure\"");
    EXPECT_EQ(complaint(HEADER + "a,1,published,\n", status), "bolts.csv:4: source: empty");
}

TEST(DataTable, RefusesWhatDoesNotComeBackAsWritten) {
    const std::string text = HEADER + "a,1,published,x\n";
    EXPECT_EQ(complaint(text, [](const Row& row) { row.expect("size", 1.0f, 1.0f); }), "nothing");
    EXPECT_EQ(complaint(text, [](const Row& row) { row.expect("size", 1.0f, 1.5f); }),
              "bolts.csv:4: size: written as 1, read back as 1.5");
    EXPECT_EQ(complaint(text, [](const Row& row) { row.expect("size", 1.0f, std::stof("nan")); }),
              "bolts.csv:4: size: written as 1, read back as nan");
    EXPECT_EQ(complaint(text, [](const Row& row) { row.expect("name", "a", "a  "); }), "nothing");
    EXPECT_EQ(complaint(text, [](const Row& row) { row.expect("name", "a", "b"); }),
              "bolts.csv:4: name: written as \"a\", read back as \"b\"");
}

} // namespace
} // namespace tarvane::data
