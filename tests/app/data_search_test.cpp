// Where the data files are looked for, on real folders: the program and its library copied into folders of
// their own, and the data files at one place after another.
#include "app_fixture.h"
#include "catalogue/data_search.h"

namespace tarvane::app {

using namespace vessel;
namespace fs = std::filesystem;
namespace {

class DataSearch : public ProgramTest {
  protected:
    DataSearch() {
        const fs::path from = fs::path(TARVANE_PROGRAM).parent_path();
        fs::create_directories(folder / "host/bin");
        fs::create_directories(folder / "engine/lib");
        fs::copy_file(TARVANE_PROGRAM, folder / "host/bin/tarvane");
        for (const fs::directory_entry& file : fs::directory_iterator(from))
            if (file.path().filename().string().starts_with("libtarvane.so."))
                fs::copy_file(file.path(), folder / "engine/lib" / file.path().filename());
    }

    // A folder that counts as one of data files, and has almost none.
    std::string data(const std::string& place, const std::string& version = {}) const {
        fs::create_directories(folder / place);
        write(place + "/approximate.txt", "[END]\n");
        if (!version.empty()) write(place + "/data_version.txt", version + '\n');
        return path(place);
    }

    // What the copy says about a file that its folder lacks.
    std::string message(const std::string& surroundings = {},
                        const std::string& options = {}) const {
        const ProgramRun result =
            shell("env -u TARVANE_DATA LD_LIBRARY_PATH=" + path("engine/lib") + ' ' + surroundings +
                  ' ' + path("host/bin/tarvane") + " chart CS-2 -T 300 " + options);
        EXPECT_EQ(result.status, 2) << result.out;
        return result.err;
    }

    static std::string missing_in(const std::string& place, const std::string& how) {
        return "tarvane: ExtChartData.txt is missing in the data folder " + place + " (" + how +
               ")\n";
    }
};

TEST_F(DataSearch, GoesFromTheCallDownToTheProgramsPlace) {
    const std::string called = data("called", "0.9.0"), variable = data("variable", "1.2.3"),
                      beside = data("engine/lib", "1.0.0"),
                      by_library = data("engine/share/tarvane"),
                      by_program = data("host/share/tarvane");
    const std::string set = "TARVANE_DATA=" + variable;
    EXPECT_EQ(message(set, "--data " + called),
              missing_in(called, "version 0.9.0, named by --data"));
    EXPECT_EQ(message(set), missing_in(variable, "version 1.2.3, named by TARVANE_DATA"));
    EXPECT_EQ(message("TARVANE_DATA="),
              missing_in(beside, "version 1.0.0, found beside the library"));
    fs::remove(beside + "/approximate.txt"); // its version alone is no data
    EXPECT_EQ(message(), missing_in(by_library, "no version, found by the library's place"));
    fs::remove_all(by_library);
    EXPECT_EQ(message(), missing_in(by_program, "no version, found by the program's place"));
}

TEST_F(DataSearch, NamesEveryPlaceWhereNothingWas) {
    const std::string said = message();
    EXPECT_EQ(said.find("tarvane: ExtChartData.txt is missing in the data folder " +
                        path("engine/lib") + " (no version, no data files there, in " +
                        path("engine/share/tarvane") + ", in " + path("host/share/tarvane") +
                        " or in "),
              0u)
        << said;
    EXPECT_NE(said.find("; TARVANE_DATA may name a folder)"), std::string::npos) << said;
}

TEST_F(DataSearch, AFolderThatIsNamedMustBeThere) {
    data("engine/lib");
    EXPECT_EQ(message("TARVANE_DATA=" + path("absent")),
              "tarvane: there is no data folder " + path("absent") + " (named by TARVANE_DATA)\n");
    const std::string empty = path("empty");
    fs::create_directory(empty); // nothing else replaces it
    EXPECT_EQ(message("TARVANE_DATA=" + empty),
              missing_in(empty, "no version, named by TARVANE_DATA"));
    const std::string file = write("file", "");
    EXPECT_EQ(message({}, "--data " + file),
              "tarvane: there is no data folder " + file + " (named by --data)\n");
}

TEST_F(DataSearch, TheEngineLooksInTheSameFolder) {
    fs::create_directories(folder / "host/share/tarvane");
    for (const auto& file : fs::directory_iterator(TARVANE_DATA_DIR)) {
        const std::string kind = file.path().extension().string();
        if (kind == ".txt" || kind == ".TXT" || kind == ".BIN")
            fs::copy_file(file.path(), folder / "host/share/tarvane" / file.path().filename());
    }
    const std::string input = write("in.toml", FLANGE_TOML);
    const ProgramRun moved = shell("env -u TARVANE_DATA LD_LIBRARY_PATH=" + path("engine/lib") +
                                   ' ' + path("host/bin/tarvane") + " run --plain " + input);
    EXPECT_EQ(moved.err, "");
    EXPECT_EQ(moved.out, run("run --plain " + input).out);
    EXPECT_NE(moved.out, "");
}

TEST_F(DataSearch, TheFilesOfABuildHaveTheVersionOfItsProgram) {
    EXPECT_EQ(run("--version").out, read(TARVANE_DATA_DIR + std::string("/data_version.txt")));
}

// ---- the list of places ------------------------------------------------------------------------------

std::vector<std::string> folders(const std::vector<SearchPlace>& places) {
    std::vector<std::string> names;
    for (const SearchPlace& place : places)
        names.push_back(place.folder.string());
    return names;
}

TEST(SearchPlaces, HoldEachFolderOnce) {
    EXPECT_EQ(
        folders(search_places("/p/lib/libtarvane.so.1", "/p/bin/tarvane", "/p/share/tarvane")),
        (std::vector<std::string>{"/p/lib", "/p/share/tarvane"}));
    EXPECT_EQ(folders(search_places("/p/tarvane", "/p/tarvane", "")),
              (std::vector<std::string>{"/p", "/share/tarvane"}));
    EXPECT_EQ(folders(search_places("", "/q/bin/tarvane", "/r/share/tarvane")),
              (std::vector<std::string>{"/q/share/tarvane", "/r/share/tarvane"}));
}

using BuiltIn = ProgramTest;

TEST_F(BuiltIn, ComesLast) {
    for (const char* place : {"share/tarvane", "built"}) {
        fs::create_directories(folder / place);
        write(std::string(place) + "/BOLTDATA.TXT", "");
    }
    const auto found = [&] {
        return described(first_with_data(
            search_places(path("lib/libtarvane.so"), path("bin/tarvane"), path("built"))));
    };
    EXPECT_EQ(found(), path("share/tarvane") + " (no version, found by the library's place)");
    fs::remove(path("share/tarvane/BOLTDATA.TXT"));
    EXPECT_EQ(found(), path("built") + " (no version, built in)");
    // A version is one short word.
    for (const std::string& version :
         {std::string("1 0\n"), std::string(41, '1'), std::string("\n")}) {
        write("built/data_version.txt", version);
        EXPECT_EQ(found(), path("built") + " (no version, built in)") << version;
    }
    write("built/data_version.txt", std::string(40, '1'));
    EXPECT_EQ(found(), path("built") + " (version " + std::string(40, '1') + ", built in)");
}

} // namespace
} // namespace tarvane::app
