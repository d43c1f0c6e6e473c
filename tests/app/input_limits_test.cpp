// What is refused in an input file by its form: size, keys, nesting, characters; and how many faults show.
#include "app_fixture.h"
#include "input/toml_limits.h"
#include "values/bounded_file.h"
#include "values/text.h"

#include <sys/stat.h>

namespace tarvane::app {

using namespace vessel;
namespace {

std::string repeated(const std::string& piece, std::size_t count) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i)
        text += piece;
    return text;
}

std::string only_fault(const std::string& toml) {
    const std::vector<std::string> lines = fault_lines(toml);
    EXPECT_EQ(lines.size(), 1u);
    return lines.empty() ? "" : lines.front();
}

bool is_within_limits(const std::string& toml) { return !check_limits(toml); }

// ---- keys ------------------------------------------------------------------------------------------

const std::string TOO_MANY_PARTS = "a key of at most 10 parts is expected";
const std::string TOO_LONG = "a key of at most 100 characters is expected";

// An assertion of the parser itself would fail.
TEST(InputLimits, BracketsOfAHeader) {
    EXPECT_TRUE(is_within_limits("[[a]]\n"));
    for (const char* const text : {"[[[", "[[[a]]]\n", "[ [a]\n"})
        EXPECT_EQ(only_fault(text), R"(f:1: "[" is not allowed in a key)") << text;
}

TEST(InputLimits, PartsOfAKey) {
    const std::string ten = "a" + repeated(".a", 9);
    for (const std::string form : {"%", "[%]", "[[%]]", "b = { % = 1 }", "b = { c = 1, % = 1 }"}) {
        const auto with_key = [&](const std::string& key) {
            std::string toml = "units = \"US\"\n" + form;
            toml.replace(toml.find('%'), 1, form == "%" ? key + " = 1" : key);
            return toml;
        };
        EXPECT_TRUE(is_within_limits(with_key(ten))) << form;
        EXPECT_EQ(only_fault(with_key(ten + ".a")), "f:2: " + TOO_MANY_PARTS) << form;
        EXPECT_EQ(only_fault(with_key("a" + repeated(" . \"a\"", 49999))), "f:2: " + TOO_MANY_PARTS)
            << form;
    }
}

TEST(InputLimits, LengthOfAKey) {
    const std::string longest(100, 'k');
    EXPECT_TRUE(is_within_limits(longest + " = 1\n"));
    EXPECT_TRUE(is_within_limits("[" + longest + "]\n"));
    EXPECT_TRUE(is_within_limits("    '" + longest.substr(2) + "' = 1\n"));
    EXPECT_EQ(only_fault(longest + "k = 1\n"), "f:1: " + TOO_LONG);
    EXPECT_EQ(only_fault("\n[" + longest + "k]\n"), "f:2: " + TOO_LONG);
    EXPECT_EQ(only_fault("'" + longest.substr(1) + "' = 1\n"), "f:1: " + TOO_LONG);
    EXPECT_EQ(only_fault("b = { " + longest + "k = 1 }\n"), "f:1: " + TOO_LONG);
    // Without a value after it, too.
    EXPECT_EQ(only_fault(std::string(4000000, 'k')), "f:1: " + TOO_LONG);
}

// Points, signs and brackets of values, texts and comments belong to no key.
TEST(InputLimits, OtherTextsAreNoKeys) {
    for (const std::string& toml :
         {"a = \"" + repeated("x.", 500) + "\"\n", "a = '" + repeated("[", 500) + "'\n",
          "a = \"\"\"\n" + repeated("[%.\n", 500) + "\\\"\"\"\" # \xCF\xBF\n",
          "a = '''\n" + repeated("{\xCF\xBF\n", 500) + "''''\n",
          "# " + repeated("[%.\xCF\xBF", 500) + "\n",
          "a = [" + repeated("1.5, ", 500) + "]\nb = " + repeated("1", 500) + "\n",
          std::string("a = { b = \"\\\"#\", c = 1 } # [%\n[x] # y\n[[ 'x y' . \"z\" ]]\r\n")})
        EXPECT_TRUE(is_within_limits(toml)) << toml.substr(0, 40) << check_limits(toml)->message;
}

TEST(InputLimits, Nesting) {
    EXPECT_TRUE(is_within_limits("a = " + repeated("[", 20) + repeated("]", 20) + "\n"));
    const std::string message = "lists and tables within others, at most 20 deep, are expected";
    EXPECT_EQ(only_fault("a = " + repeated("[", 21) + repeated("]", 21) + "\n"), "f:1: " + message);
    EXPECT_EQ(only_fault("\na = " + repeated("{ a = ", 100000)), "f:2: " + message);
    // One after the other is not one within the other.
    EXPECT_TRUE(
        is_within_limits("a = [" + repeated("[1], ", 30) + "]\n" + repeated("b = [1]\n", 30)));
}

// ---- characters --------------------------------------------------------------------------------------

// Steps that the parser has no rule for, and characters that its tables miss.
TEST(InputLimits, WhatTheParserTripsOver) {
    EXPECT_EQ(only_fault("[#"), "f:1: the name of a table is expected, not a comment");
    EXPECT_EQ(only_fault("\n[ a . # b\n]"), "f:2: the name of a table is expected, not a comment");
    for (const char* const header : {"\n[", "\n[[ ", "\n[a.", "\n[\"a\" . "}) {
        for (const char* const end : {"\n", "\r\n", "\n["})
            EXPECT_EQ(only_fault(std::string(header) + end),
                      "f:2: the name of a table is expected, not the end of the line")
                << header;
    }
    EXPECT_EQ(only_fault("[ .a]"), "f:1: the name of a table is expected, not a point");
    EXPECT_EQ(only_fault("[%"), "f:1: \"%\" is not allowed in a key");
    EXPECT_EQ(only_fault("[[a]]\nP% = 3"), "f:2: \"%\" is not allowed in a key");
    EXPECT_EQ(only_fault("a = \xCF\xBF\x31\x30\x30"),
              "f:1: \"\xCF\xBF\" is allowed between quotation marks only");
    EXPECT_EQ(only_fault("a = [}"), "f:1: \"}\" cannot end what begins with \"[\"");
    EXPECT_EQ(only_fault("a = { b = 1\n]"), "f:2: \"]\" cannot end what begins with \"{\"");
    // Quotation marks and brackets within a word begin nothing.
    for (const char* const word :
         {"0x\"\"-[u.k'''", "5'", "+1\"", "1979-05-27 5'", "[1'", "{ b = 5\""})
        EXPECT_EQ(only_fault("\na = " + std::string(word) + "\xCF\xBF"),
                  "f:2: \"\xCF\xBF\" is allowed between quotation marks only")
            << word;
    EXPECT_TRUE(
        is_within_limits("a = [1,'\xCF\xBF', \"\xCF\xBF\"]\nb = { c = 1,'d'='\xCF\xBF' }\n"));
    EXPECT_EQ(only_fault("g\xC3\xB6 = 1"),
              "f:1: \"\xC3\xB6\" is allowed between quotation marks only");
    EXPECT_EQ(only_fault("a = \xFF"), "f:1: \"\\xFF\" is allowed between quotation marks only");
    EXPECT_TRUE(is_within_limits("\xEF\xBB\xBF" + FLANGE_TOML)) << "the mark of a UTF-8 file";
}

// The parser asks of the first letter of a continued line whether it is a blank.
TEST(InputLimits, LettersAfterTheEndOfALineInAText) {
    const ReadResult result = read_input(
        with("description", "description = \"\"\"\\\n  \xC3\xA9t\xC3\xA9 \\\n\n \xC2\xB5\"\"\""));
    ASSERT_TRUE(result.faults.empty()) << fault_report("f", result.faults);
    EXPECT_EQ(result.request.elements.at(0)->description(), "\xE9t\xE9 \xB5");
}

TEST(InputLimits, ALineThatTripsTheParser) {
    const std::string lines = "tarvane = 1\n# more\n";
    EXPECT_EQ(only_fault(lines + "day = 1979-05-27T:32\nP = 1\n"),
              "f:3: day: unquoted text: 1979-05-27T:32; a number is written without its unit, a "
              "text between quotation marks");
    EXPECT_EQ(only_fault(lines + "days = [\n1979-05-27T:32"),
              "f:4: key = value is expected, not 1979-05-27T:32");
}

TEST(InputLimits, ControlCharactersAreShownByTheirNumbers) {
    EXPECT_EQ(only_fault(with("m", "m = \"\\u001b[2J\\u009b1m\\u007f\\u202e\"")),
              "f:24: m: a number is expected, not the text \"\\u001B[2J\\u009B1m\\u007F\\u202E\" "
              "(gasket factor)");
    const std::vector<std::string> lines =
        fault_lines(FLANGE_TOML + "\"\\u001b]0;x\\u0007\" = 1\n");
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0].find_first_of("\x1b\x07"), std::string::npos);
    EXPECT_NE(lines[0].find("\\u001B]0;x\\u0007: unknown key"), std::string::npos) << lines[0];
    // Raw ones are refused and named by the parser.
    for (const char* raw :
         {"a = \"\x1b[2J\"\n", "a\x1b = 1\n", "# \x1b\n", "a = \x1b\n", "[\x1b]\n"})
        EXPECT_EQ(only_fault(raw).find('\x1b'), std::string::npos) << raw;
}

TEST(InputLimits, PrintableKeepsEveryOtherCharacter) {
    const std::string text = "\xC2\xB0\x46 \xE2\x82\xAC \xF0\x9F\x94\xA9 ~!";
    EXPECT_EQ(printable(text), text);
    EXPECT_EQ(printable(std::string("\0\t\n\x1f\x7f", 5)), "\\u0000\\u0009\\u000A\\u001F\\u007F");
    EXPECT_EQ(printable("\xC2\x80\xC2\x9F\xC2\xA0"), "\\u0080\\u009F\xC2\xA0");
    // Cut short, overlong, a surrogate, beyond the last.
    EXPECT_EQ(printable("\xE2\x82"), "\\xE2\\x82");
    EXPECT_EQ(printable("\xC0\x9B"), "\\xC0\\x9B");
    EXPECT_EQ(printable("\xE0\x82\x9B"), "\\xE0\\x82\\x9B");
    EXPECT_EQ(printable("\xED\xA0\x80"), "\\xED\\xA0\\x80");
    EXPECT_EQ(printable("\xF4\x90\x80\x80"), "\\xF4\\x90\\x80\\x80");
}

// ---- number of faults --------------------------------------------------------------------------------

std::string unknown_keys(std::size_t count) {
    std::string toml;
    for (std::size_t i = 0; i < count; ++i)
        toml += "material_reference" + std::to_string(count - i) + " = 1\n";
    return toml;
}

TEST(InputLimits, FiftyFaultsAndACount) {
    const auto report = [](std::size_t count) {
        return fault_report("f", read_input(FLANGE_TOML + unknown_keys(count)).faults);
    };
    const std::string fifty = report(50), more = report(51);
    EXPECT_EQ(std::count(fifty.begin(), fifty.end(), '\n'), 50);
    EXPECT_EQ(fifty.find("more faults"), std::string::npos);
    EXPECT_EQ(std::count(more.begin(), more.end(), '\n'), 51);
    EXPECT_TRUE(more.ends_with("\nand 1 more faults\n")) << more;
    // Those of the first lines, each with the key that may be meant.
    EXPECT_TRUE(more.starts_with("f:27: material_reference51: unknown key; the nearest is "));
    const std::size_t last = more.find("f:76: material_reference2: unknown key; the nearest is ");
    EXPECT_NE(last, std::string::npos) << more;
}

// No second is measured: with a search for each of them this takes minutes.
TEST(InputLimits, ManyUnknownKeys) {
    const ReadResult result = read_input(FLANGE_TOML + unknown_keys(100000));
    EXPECT_EQ(result.faults.size(), 100000u);
    EXPECT_EQ(result.faults.back().line, 100026);
}

// ---- files -----------------------------------------------------------------------------------------

using InputFiles = ProgramTest;

TEST_F(InputFiles, UpToFourMegabytes) {
    std::string text = FLANGE_TOML + "#";
    text.resize(LARGEST_INPUT, 'x');
    EXPECT_EQ(run("run " + write("largest.toml", text)).status, 0);
    const std::string larger = write("larger.toml", text + 'x');
    const ProgramRun result = run("run " + larger);
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.err, larger + ":1: an input file of at most 4 MB is expected\n");
}

TEST_F(InputFiles, AFileWithoutAnEnd) {
    const ProgramRun result = run("run /dev/zero");
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.err, "/dev/zero:1: an input file of at most 4 MB is expected\n");
}

TEST_F(InputFiles, APipeThatNobodyWritesInto) {
    const std::string pipe = path("pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const ProgramRun result = run("run " + pipe);
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.err, "tarvane: cannot read " + pipe + ": nothing came through this pipe\n");
}

TEST_F(InputFiles, APipeWithAnInputFile) {
    const std::string file = write("flange.toml", FLANGE_TOML);
    const ProgramRun direct = run("run " + file);
    EXPECT_EQ(direct.status, 0);
    const std::string command = "(sleep 0.2; cat " + file + ") | " + TARVANE_PROGRAM +
                                " run /dev/stdin >" + path("stdout") + " 2>" + path("stderr");
    EXPECT_EQ(std::system(command.c_str()), 0);
    EXPECT_EQ(read(path("stdout")), direct.out);
    EXPECT_EQ(read(path("stderr")), "");
}

TEST_F(InputFiles, OnlyRegularFilesWhereTheyAreAskedFor) {
    EXPECT_EQ(read_regular(write("a", "four"), 4), "four");
    EXPECT_EQ(read_regular(path("a"), 3), "four") << "one more than the limit";
    EXPECT_EQ(read_regular(path("a"), 2), "fou");
    ASSERT_EQ(mkfifo(path("pipe").c_str(), 0600), 0);
    for (const std::string& other :
         {path("pipe"), path("absent"), folder.string(), std::string("/dev/zero")})
        EXPECT_THROW(read_regular(other, 4), std::runtime_error) << other;
}

} // namespace
} // namespace tarvane::app
