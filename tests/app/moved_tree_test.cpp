// The folder of the programs, copied elsewhere.
#include "app_fixture.h"

namespace tarvane::app {

using namespace vessel;
namespace {

using MovedTree = ProgramTest;

TEST_F(MovedTree, ACopyLoadsItsOwnLibraryAndData) {
    namespace fs = std::filesystem;
    const fs::path from = fs::path(TARVANE_PROGRAM).parent_path();
    for (const fs::directory_entry& file : fs::directory_iterator(from)) {
        const std::string name = file.path().filename().string();
        if (name == "tarvane" || name == "libtarvane.so.1" || file.path().extension() == ".txt" ||
            file.path().extension() == ".TXT")
            fs::copy_file(file.path(), folder / name);
    }
    const std::string copy = path("tarvane");
    ASSERT_EQ(std::system(("ldd " + copy + " >" + path("loaded")).c_str()), 0);
    EXPECT_NE(read(path("loaded")).find("libtarvane.so.1 => " + path("libtarvane.so.1")),
              std::string::npos)
        << read(path("loaded"));

    const auto flanges = [&] {
        const std::string command = copy + " flanges >" + path("stdout") + " 2>" + path("stderr");
        return std::system(command.c_str()) == 0 ? read(path("stdout")) : "";
    };
    EXPECT_EQ(flanges(), run("flanges").out);
    write("ANSIFlangeDimensions.txt", "[75]\n[END]\n");
    EXPECT_NE(flanges(), run("flanges").out);
}

TEST_F(MovedTree, NothingIsBoundLaterThanAtTheStart) {
    const std::string library =
        (std::filesystem::path(TARVANE_PROGRAM).parent_path() / "libtarvane.so").string();
    for (const std::string& file : {std::string(TARVANE_PROGRAM), library}) {
        ASSERT_EQ(std::system(("readelf -dlW " + file + " >" + path("headers")).c_str()), 0);
        const std::string headers = read(path("headers"));
        EXPECT_NE(headers.find(" NOW"), std::string::npos) << headers;
        EXPECT_NE(headers.find("GNU_RELRO"), std::string::npos) << headers;
        const std::size_t path_line = headers.find("(RUNPATH)");
        if (file == library && path_line == std::string::npos) continue;
        ASSERT_NE(path_line, std::string::npos) << headers;
        const std::string line =
            headers.substr(path_line, headers.find('\n', path_line) - path_line);
        EXPECT_NE(line.find("[$ORIGIN/../lib:$ORIGIN]"), std::string::npos) << line;
    }
}

} // namespace
} // namespace tarvane::app
