#include "../host/scratch.h"

#include <random>
#include <vector>

namespace tarvane::host_test {
namespace {

class DataFileTest : public HostTest {
  protected:
    std::vector<std::string> lines_of(std::string_view content, Int width) {
        scratch.write("lines.txt", content);
        return read_lines(scratch.file("lines.txt"), width);
    }

    static std::vector<std::string> read_lines(const std::string& path, Int width) {
        EXPECT_TRUE(open_unit_for_reading(20, path));
        LineReader reader(20);
        std::vector<std::string> lines;
        std::string line(static_cast<std::size_t>(width) + 1, '#');
        while (reader.next(line.data(), width)) {
            EXPECT_EQ(line.back(), '#');
            lines.push_back(line.substr(0, static_cast<std::size_t>(width)));
        }
        EXPECT_EQ(line, std::string(static_cast<std::size_t>(width), ' ') + '#');
        close_unit(20);
        return lines;
    }
};

using Lines = std::vector<std::string>;

// ---- lines -------------------------------------------------------------------------------------

TEST_F(DataFileTest, LinesArePaddedAndCut) {
    EXPECT_EQ(lines_of("ab\nabcdef\n\nabcd\n", 4), (Lines{"ab  ", "abcd", "    ", "abcd"}));
}

TEST_F(DataFileTest, TheLastLineNeedsNoEnd) {
    EXPECT_EQ(lines_of("ab\ncd", 2), (Lines{"ab", "cd"}));
    EXPECT_EQ(lines_of("ab\n", 2), Lines{"ab"});
    EXPECT_EQ(lines_of("", 2), Lines{});
    EXPECT_EQ(lines_of("\n", 2), Lines{"  "});
}

TEST_F(DataFileTest, ACarriageReturnBeforeTheLineEndIsNotPartOfTheLine) {
    EXPECT_EQ(lines_of("ab\r\ncd\r\n", 4), (Lines{"ab  ", "cd  "}));
    EXPECT_EQ(lines_of("ab\r", 4), Lines{"ab  "});
    EXPECT_EQ(lines_of("a\rb\r\r\n", 6), Lines{"a\rb\r  "});
    EXPECT_EQ(lines_of("abcd\r\nx", 4), (Lines{"abcd", "x   "}));
}

TEST_F(DataFileTest, LinesAcrossTheReadersBuffer) {
    for (const std::size_t length : {4094u, 4095u, 4096u, 4097u, 8192u, 20000u}) {
        const std::string filler(length, 'x');
        EXPECT_EQ(lines_of(filler + "\r\nnext\r\n", 5), (Lines{"xxxxx", "next "})) << length;
    }
}

TEST_F(DataFileTest, ALineBeyondTheLongestIsAnError) {
    const std::string longest(LONGEST_LINE, 'x');
    EXPECT_EQ(lines_of("a\n" + longest + "\nb\n", 3), (Lines{"a  ", "xxx", "b  "}));
    ASSERT_TRUE(open_unit_for_reading(20, scratch.write("long.txt", "a\n" + longest + "x\nb\n")));
    LineReader reader(20);
    char line[3];
    EXPECT_TRUE(reader.next(line, 3));
    EXPECT_FALSE(reader.broken());
    for (int again = 0; again < 2; ++again) {
        EXPECT_FALSE(reader.next(line, 3));
        EXPECT_EQ(std::string_view(line, 3), "   ");
        EXPECT_TRUE(reader.broken());
    }
    close_unit(20);
}

TEST_F(DataFileTest, AClosedUnitHasNoLines) {
    LineReader reader(30);
    char line[4];
    EXPECT_FALSE(reader.next(line, 4));
    reader.rewind();
    EXPECT_FALSE(reader.next(line, 4));
}

TEST_F(DataFileTest, AReadErrorEndsTheFile) {
    ASSERT_TRUE(open_unit_for_reading(20, scratch.write("a.txt", "one\ntwo\n")));
    LineReader reader(20);
    close_handle(unit_handle(20)); // without the unit's knowledge
    char line[] = "left over";
    EXPECT_FALSE(reader.next(line, 9));
    EXPECT_STREQ(line, "         ");
    EXPECT_FALSE(reader.next(line, 9));
}

TEST_F(DataFileTest, RewindBeginsAgain) {
    const std::string path = scratch.write("a.txt", "one\ntwo\n");
    ASSERT_TRUE(open_unit_for_reading(20, path));
    LineReader reader(20);
    char line[3];
    const auto expect_line = [&](const char* text) {
        ASSERT_TRUE(reader.next(line, 3));
        EXPECT_EQ(std::string_view(line, 3), text);
    };
    expect_line("one");
    reader.rewind();
    expect_line("one");
    expect_line("two");
    EXPECT_FALSE(reader.next(line, 3));
    reader.rewind();
    expect_line("one");
}

// The same rules another way: the whole content at once.
Lines split(const std::string& content, std::size_t width) {
    Lines lines;
    std::size_t at = 0;
    while (at < content.size()) {
        const std::size_t end = content.find('\n', at);
        std::string line = content.substr(at, end == std::string::npos ? end : end - at);
        at = end == std::string::npos ? content.size() : end + 1;
        if (!line.empty() && line.back() == '\r') line.pop_back();
        line.resize(width, ' ');
        lines.push_back(line);
    }
    return lines;
}

TEST_F(DataFileTest, AnyBytesAreReadLineByLine) {
    std::mt19937 random(31);
    std::uniform_int_distribution<int> any_byte(0, 255), length(0, 9000), shape(0, 5);
    for (int round = 0; round < 60; ++round) {
        std::string content;
        for (int n = length(random); n > 0; --n) {
            const int what = shape(random);
            content += what == 0 ? '\n' : what == 1 ? '\r' : static_cast<char>(any_byte(random));
        }
        ASSERT_EQ(lines_of(content, 7), split(content, 7)) << "round " << round;
    }
}

// ---- records -----------------------------------------------------------------------------------

TEST_F(DataFileTest, RecordsAreCountedFromOne) {
    const std::string path = scratch.write("records.bin", "aaabbbccc");
    ASSERT_TRUE(open_unit_for_reading(20, path));
    char record[3];
    ASSERT_TRUE(READ_RECORD(20, 2, record, 3));
    EXPECT_EQ(std::string_view(record, 3), "bbb");
    ASSERT_TRUE(READ_RECORD(20, 1, record, 3));
    EXPECT_EQ(std::string_view(record, 3), "aaa");
    ASSERT_TRUE(READ_RECORD(20, 3, record, 3));
    EXPECT_EQ(std::string_view(record, 3), "ccc");
    EXPECT_FALSE(READ_RECORD(20, 4, record, 3));
    EXPECT_FALSE(READ_RECORD(20, 0, record, 3));
    EXPECT_FALSE(READ_RECORD(20, -1, record, 3));
    EXPECT_FALSE(READ_RECORD(20, INT32_MAX, record, 3));
    EXPECT_FALSE(READ_RECORD(21, 1, record, 3)) << "not open";
}

TEST_F(DataFileTest, ARecordThatIsCutShortIsNone) {
    const std::string path = scratch.write("records.bin", "aaaabb");
    ASSERT_TRUE(open_unit_for_reading(20, path));
    char record[4];
    EXPECT_TRUE(READ_RECORD(20, 1, record, 4));
    EXPECT_FALSE(READ_RECORD(20, 2, record, 4));
}

// ---- text tables -------------------------------------------------------------------------------

class TextTable : public DataFileTest {
  protected:
    static constexpr Int WIDTH = 8, LIMIT = 5;

    TextTable() { SET_SYSTEM_DIR(scratch.path()); }

    bool read(std::string_view content) {
        scratch.write("TABLE.TXT", content);
        return read_file();
    }
    bool read_file() {
        table.assign(WIDTH * LIMIT + 1, '#');
        const bool loaded = READ_TEXT_TABLE("TABLE.TXT", table.data(), WIDTH, LIMIT, lines);
        EXPECT_EQ(table.back(), '#');
        Int unit = 0;
        GETNEXTUNIT(unit);
        EXPECT_EQ(unit, 10) << "nothing stays open";
        return loaded;
    }
    void expect_nothing() const {
        EXPECT_EQ(lines, 0);
        EXPECT_EQ(table, std::string(WIDTH * LIMIT, ' ') + '#');
    }

    std::string table;
    Int lines = -1;
};

TEST_F(TextTable, EndsAtTheEndLineWhichCounts) {
    EXPECT_TRUE(read("[A]\n1 2\n[END]\nbeyond\n"));
    EXPECT_EQ(lines, 3);
    EXPECT_EQ(table.substr(0, 24), "[A]     1 2     [END]   ");
}

TEST_F(TextTable, TheEndMarkMayStandAnywhereInTheWidth) {
    EXPECT_TRUE(read(" ;[END]x\n"));
    EXPECT_EQ(lines, 1);
    EXPECT_FALSE(read("    [END]\n")) << "its bracket is cut off";
    expect_nothing();
    EXPECT_FALSE(read("[end]\n"));
}

TEST_F(TextTable, WithoutAnEndLineNothingIsKept) {
    EXPECT_FALSE(read("[A]\n1 2\n"));
    expect_nothing();
    EXPECT_FALSE(read(""));
    expect_nothing();
}

TEST_F(TextTable, AFullTableWithoutAnEndLineIsNotKept) {
    EXPECT_TRUE(read("1\n2\n3\n4\n[END]\n")) << "in the last place";
    EXPECT_EQ(lines, 5);
    EXPECT_FALSE(read("1\n2\n3\n4\n5\n[END]\n"));
    expect_nothing();
}

TEST_F(TextTable, AFileThatIsNotThereGivesAnEmptyTable) {
    EXPECT_FALSE(read_file());
    expect_nothing();
    scratch.write("TABLE.TXT", "[END]\n");
    EXPECT_TRUE(read_file()) << "read again at the next need";
    SET_SYSTEM_DIR("");
    EXPECT_FALSE(read_file());
    expect_nothing();
}

TEST_F(TextTable, AFileBesideTheLibraryIsNotLookedFor) {
    const ScratchFolder library;
    library.write("TABLE.TXT", "[END]\n");
    SET_MODULE_DIR(library.path());
    EXPECT_FALSE(read_file());
}

TEST_F(TextTable, AnyBytesStayWithinTheTable) {
    std::mt19937 random(5);
    std::uniform_int_distribution<int> any_byte(0, 255), length(0, 80), shape(0, 7);
    for (int round = 0; round < 300; ++round) {
        std::string content;
        for (int n = length(random); n > 0; --n) {
            const int what = shape(random);
            if (what == 0)
                content += '\n';
            else if (what == 1)
                content += "[END]";
            else
                content += static_cast<char>(any_byte(random));
        }
        const bool loaded = read(content);
        const Lines all = split(content, WIDTH);
        std::size_t end = 0;
        while (end < all.size() && all[end].find("[END]") == std::string::npos)
            ++end;
        ASSERT_EQ(loaded, end < all.size() && end < LIMIT);
        if (!loaded) {
            expect_nothing();
            continue;
        }
        ASSERT_EQ(lines, static_cast<Int>(end) + 1);
        for (std::size_t i = 0; i <= end; ++i)
            ASSERT_EQ(table.substr(i * WIDTH, WIDTH), all[i]);
    }
}

} // namespace
} // namespace tarvane::host_test
