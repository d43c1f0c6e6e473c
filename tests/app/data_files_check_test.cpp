// Data files that are missing or damaged: named, and the end of a run whose result they decide.
#include "app_fixture.h"
#include "catalogue/data_files_check.h"
#include "catalogue/data_folder.h"

#include <cstring>
#include <functional>

#include <sys/stat.h>

namespace tarvane::app {

using namespace vessel;
namespace {

const std::string UNDER_VACUUM = R"([[external]]
kind = "cylinder"
P = 15
T = 250
Do = 60
t = 0.375
length = 120
S = 20000
chart = "CS-2"
table_g = true
)";

const std::string HEAD = R"([[shell]]
kind = "torispherical"
material = "SA-516 70"
P = 50
T = 300
D = 100
t = 0.25
L = 100
r = 6
)";

const std::string STEAM_DRUM = R"([[shell]]
kind = "cylinder"
material = "SA-516 70"
service = "steam"
P = 10
T = 200
D = 10
t = 0.25
)";

class DataFiles : public ProgramTest {
  protected:
    DataFiles() {
        data = folder / "data";
        std::filesystem::create_directory(data);
        for (const auto& file : std::filesystem::directory_iterator(TARVANE_DATA_DIR)) {
            const std::string kind = file.path().extension().string();
            if (kind == ".txt" || kind == ".TXT" || kind == ".BIN")
                std::filesystem::copy_file(file.path(), data / file.path().filename());
        }
        set_data_folder(data.string());
    }
    ~DataFiles() override { set_data_folder(TARVANE_DATA_DIR); }

    std::string file(std::string_view name) const { return (data / name).string(); }
    std::string whole(std::string_view name) const { return read(file(name)); }
    void put(std::string_view name, const std::string& bytes) const {
        std::filesystem::remove(file(name));
        std::ofstream(file(name), std::ios::binary) << bytes;
    }

    ProgramRun calculate(const std::string& toml) const {
        return run("run " + write("in.toml", toml) + " --data " + data.string());
    }

    // The fault of a file whose bytes are changed; the file is whole again afterwards.
    std::string fault_of(std::string_view name,
                         const std::function<void(std::string& bytes)>& damage) const {
        const std::string sound = whole(name);
        std::string bytes = sound;
        damage(bytes);
        EXPECT_NE(bytes, sound) << name;
        put(name, bytes);
        const auto fault = data_file_fault(name);
        put(name, sound);
        if (!fault) return "none";
        EXPECT_TRUE(fault->ends_with(", in " + place("the call"))) << *fault;
        return fault->substr(0, fault->rfind(", in the data folder "));
    }

    std::string place(const std::string& by) const {
        const std::string version = whole("data_version.txt");
        return "the data folder " + data.string() + " (version " +
               version.substr(0, version.find('\n')) + ", named by " + by + ')';
    }

    std::filesystem::path data;
};

const char* const ALL[] = {"approximate.txt",
                           "data_sources.txt",
                           "BOLTDATA.TXT",
                           "ElastAlp07.txt",
                           "ExtChartData.txt",
                           "TableGData.txt",
                           "YIELDSTR.BIN",
                           "YIELDSTRM.BIN",
                           "ANSIFlangeDimensions.txt",
                           "MATFILE1.BIN",
                           "MATFILE1M.BIN",
                           "MATFILE2.BIN",
                           "MATFILE2M.BIN",
                           "MatFileD2C1.BIN",
                           "MatFileD2C1M.BIN",
                           "VIII-1_Matls_By_Table.txt"};

// ---- runs --------------------------------------------------------------------------------------------

struct Decided {
    const char* file;
    std::string toml;
};
const Decided DECIDED[] = {{"TableGData.txt", UNDER_VACUUM},
                           {"BOLTDATA.TXT", FLANGE_TOML},
                           {"ElastAlp07.txt", FLANGE_TOML},
                           {"ElastAlp07.txt", FLANGE_TOML + "rigidity = true\n"},
                           {"YIELDSTR.BIN", HEAD},
                           {"approximate.txt", FLANGE_TOML},
                           {"data_sources.txt", FLANGE_TOML},
                           {"ExtChartData.txt", UNDER_VACUUM},
                           {"MATFILE1.BIN", HEAD},
                           {"VIII-1_Matls_By_Table.txt", STEAM_DRUM}};

TEST_F(DataFiles, TheFileThatDecidesAResultIsNamedAndEndsTheRun) {
    for (const auto& [name, toml] : DECIDED) {
        SCOPED_TRACE(name);
        const ProgramRun sound = calculate(toml);
        EXPECT_LT(sound.status, 2) << sound.err;
        EXPECT_NE(sound.out, "");

        const std::string bytes = whole(name);
        const auto expect_fault = [&](const char* how) {
            const ProgramRun result = calculate(toml);
            EXPECT_EQ(result.status, 2) << how << '\n' << result.out;
            EXPECT_EQ(result.out, "") << how;
            EXPECT_NE(result.err.find(name), std::string::npos) << how << '\n' << result.err;
        };
        std::filesystem::remove(file(name));
        expect_fault("missing");
        put(name, "");
        expect_fault("empty");
        put(name, bytes.substr(0, bytes.size() / 2));
        expect_fault("cut");
        put(name, std::string(bytes.size(), '\xA7'));
        expect_fault("garbage");
        std::filesystem::remove(file(name));
        ASSERT_EQ(mkfifo(file(name).c_str(), 0600), 0);
        expect_fault("a pipe");
        std::filesystem::remove(file(name));
        std::filesystem::create_symlink("/dev/zero", file(name));
        expect_fault("a device");
        std::filesystem::remove(file(name));
        std::filesystem::create_directory(file(name));
        expect_fault("a folder");
        std::filesystem::remove(file(name));
        put(name, bytes);
    }
}

// Where a file decides nothing, it is not needed.
TEST_F(DataFiles, OtherFilesMayBeMissing) {
    std::string plain = UNDER_VACUUM;
    plain.erase(plain.find("table_g"));
    std::filesystem::remove(file("TableGData.txt"));
    EXPECT_EQ(calculate(plain).status, 0);
    std::string ball = UNDER_VACUUM;
    ball.replace(ball.find("cylinder"), 8, "sphere");
    EXPECT_EQ(calculate(ball).status, 0);
    for (const char* name : {"YIELDSTR.BIN", "ExtChartData.txt", "MATFILE1.BIN",
                             "VIII-1_Matls_By_Table.txt", "ANSIFlangeDimensions.txt"})
        std::filesystem::remove(file(name));
    EXPECT_EQ(calculate(FLANGE_TOML).status, 0);
}

TEST_F(DataFiles, AFileIsNamedOnceForManyElements) {
    std::filesystem::remove(file("BOLTDATA.TXT"));
    const ProgramRun result = calculate(FLANGE_TOML + FLANGE_TOML);
    const std::string line =
        path("in.toml") + ":1: BOLTDATA.TXT: missing in " + place("--data") + '\n';
    EXPECT_EQ(result.err.find(line), 0u) << result.err;
    EXPECT_EQ(result.err.find(": BOLTDATA.TXT: ", line.size()), std::string::npos) << result.err;
}

TEST_F(DataFiles, TheOtherCommandsNameThemToo) {
    const std::string in_folder = " --data " + data.string();
    std::filesystem::remove(file("approximate.txt"));
    for (const char* command : {"chart CS-2 -T 300", "flanges 150"}) {
        const ProgramRun result = run(command + in_folder);
        EXPECT_EQ(result.status, 2) << command;
        EXPECT_EQ(result.err, "tarvane: approximate.txt is missing in " + place("--data") + '\n');
    }
    std::filesystem::rename(file("data_sources.txt"), file("away"));
    const ProgramRun unknown = run("materials" + in_folder);
    EXPECT_EQ(unknown.status, 2);
    EXPECT_EQ(unknown.err, "tarvane: data_sources.txt is missing in " + place("--data") +
                               "; data files of earlier versions do not have it: make them anew by "
                               "tarvane data build, or write it with the one line [END], which "
                               "names no source\n");
    std::filesystem::rename(file("away"), file("data_sources.txt"));
    put("MATFILE1.BIN", whole("MATFILE1.BIN").substr(0, 4140));
    EXPECT_EQ(run("materials" + in_folder)
                  .err.find("tarvane: no materials: MATFILE1.BIN is damaged: it says that it has "),
              0u);
    put("ExtChartData.txt", whole("ExtChartData.txt").substr(0, 900));
    EXPECT_EQ(
        run("chart CS-9 -T 300" + in_folder).err.find("tarvane: ExtChartData.txt is damaged: "),
        0u);
}

// A folder of an earlier version, or of another program's files, as the message says.
TEST_F(DataFiles, AFolderWithoutSourcesIsTakenWhenItsListIsEmpty) {
    std::filesystem::remove(file("data_sources.txt"));
    const ProgramRun refused = calculate(FLANGE_TOML);
    EXPECT_EQ(refused.status, 2);
    EXPECT_EQ(refused.err, path("in.toml") + ":1: data_sources.txt: missing in " + place("--data") +
                               "; data files of earlier versions do not have it: make them anew by "
                               "tarvane data build, or write it with the one line [END], which "
                               "names no source\n");
    put("data_sources.txt", "[END]\n");
    const ProgramRun taken = calculate(FLANGE_TOML);
    EXPECT_EQ(taken.status, 0) << taken.err;
    EXPECT_EQ(taken.out.find("Figures of "), std::string::npos) << taken.out;
    for (const char* command : {"materials", "materials 'SA-516 70'", "chart", "chart CS-2 -T 300",
                                "flanges 150", "flanges 150 4"})
        EXPECT_EQ(run(std::string(command) + " --data " + data.string()).status, 0) << command;
}

// ---- the folder ----------------------------------------------------------------------------------------

TEST_F(DataFiles, AFolderWithTooLongAPath) {
    std::filesystem::path deep = data;
    while (deep.string().size() + 21 < LONGEST_DATA_FOLDER)
        deep /= std::string(20, 'd');
    const std::size_t rest = LONGEST_DATA_FOLDER - deep.string().size() - 1;
    const auto calculate_in = [&](const std::filesystem::path& there) {
        std::filesystem::create_directories(there);
        for (const char* name : ALL)
            std::filesystem::copy_file(file(name), there / name);
        ProgramRun result =
            run("run " + write("in.toml", STEAM_DRUM) + " --data " + there.string());
        if (result.status == 0) {
            const ProgramRun flange =
                run("run " + write("in.toml", FLANGE_TOML) + " --data " + there.string());
            result.status = flange.status;
        }
        return result;
    };
    const ProgramRun longest = calculate_in(deep / std::string(rest, 'e'));
    EXPECT_EQ(longest.status, 0) << longest.err;
    const ProgramRun longer = calculate_in(deep / std::string(rest + 1, 'e'));
    EXPECT_EQ(longer.status, 2);
    EXPECT_EQ(longer.err,
              "tarvane: the data files are out of reach: the path of the data folder has 235 "
              "characters, which is too long; at most 234 are expected\n");
    EXPECT_THROW(set_data_folder(std::string(260, 'x')), std::runtime_error);
}

TEST_F(DataFiles, AFolderThatIsMissing) {
    const ProgramRun result =
        run("run " + write("in.toml", FLANGE_TOML) + " --data " + path("absent"));
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.err,
              "tarvane: there is no data folder " + path("absent") + " (named by --data)\n");
}

// ---- the form of each file -------------------------------------------------------------------------------

TEST_F(DataFiles, ThoseThatAreShippedAreSound) {
    for (const char* name : ALL)
        EXPECT_EQ(data_file_fault(name).value_or("none"), "none") << name;
}

// Cut anywhere, at the ends of lines and records too, unless all that counts is left.
TEST_F(DataFiles, CutAnywhere) {
    for (const std::string name : ALL) {
        const std::string bytes = whole(name);
        std::size_t needed = bytes.size();
        if (const std::size_t end = bytes.rfind("[END]");
            end != std::string::npos && !name.ends_with("BIN"))
            needed = end + 5;
        if (name == "ElastAlp07.txt") needed = bytes.find("[CoE]") + 5;
        if (name == "TableGData.txt") needed = bytes.rfind("\n50 ") + 12;
        const std::size_t step = std::max<std::size_t>(bytes.size() / 97, 1);
        for (std::size_t size = 0; size < needed; size += step) {
            put(name, bytes.substr(0, size));
            EXPECT_TRUE(data_file_fault(name))
                << name << " cut to " << size << " of " << bytes.size();
        }
        put(name, bytes.substr(0, needed - 1));
        EXPECT_TRUE(data_file_fault(name)) << name << " without its last byte that counts";
        put(name, bytes);
    }
}

void replace(std::string& bytes, const std::string& what, const std::string& by) {
    const std::size_t at = bytes.find(what);
    if (at != std::string::npos) bytes.replace(at, what.size(), by);
}

TEST_F(DataFiles, Bolts) {
    const auto fault = [&](const char* what, const char* by) {
        return fault_of("BOLTDATA.TXT", [&](std::string& bytes) { replace(bytes, what, by); });
    };
    const std::string ROW =
        "    0.6250     0.202   1.5000   0.9375   0.9375   0.7500    1.2269    0.0000    0.0";
    EXPECT_EQ(fault(ROW.c_str(), "    0.6250     0.202"),
              "damaged: line 24 lacks the 8 figures of a bolt size");
    EXPECT_EQ(fault("    0.6250     0.202", "    0.5000     0.202"),
              "damaged: line 24 lacks a greater first number");
    EXPECT_EQ(fault("    0.6250     0.202", "    0.6250     0.000"),
              "damaged: line 24 lacks a diameter and an area above 0");
    EXPECT_EQ(fault("    0.6250     0.202", "    0.6250       nan"),
              "damaged: line 24 lacks the 8 figures of a bolt size");
    EXPECT_EQ(fault("[END]", "[FIN]"), "damaged: its line [END] is missing");
    // Comments and the unused last column are the file's own affair.
    EXPECT_EQ(fault(ROW.c_str(), "; 0.6250"), "none");
    EXPECT_EQ(fault(ROW.c_str(), ROW.substr(0, ROW.size() - 3).c_str()), "none");
}

TEST_F(DataFiles, Moduli) {
    const auto fault = [&](const char* what, const char* by) {
        return fault_of("ElastAlp07.txt", [&](std::string& bytes) { replace(bytes, what, by); });
    };
    EXPECT_EQ(fault("31.40", "31.4x"), "damaged: line 16 lacks a reference and 36 values");
    EXPECT_EQ(fault("-325.00", "-325.0x"), "damaged: line 15 lacks 36 temperatures");
    EXPECT_EQ(fault("[CoE]", ";CoE] "), "damaged: its section [CoE] is missing");
    EXPECT_EQ(fault("[Emod]", "; mod]"), "damaged: line 16 lacks a reference and 36 values");
}

TEST_F(DataFiles, TableG) {
    const auto fault = [&](const char* what, const char* by) {
        return fault_of("TableGData.txt", [&](std::string& bytes) { replace(bytes, what, by); });
    };
    EXPECT_NE(fault("[125]", "[126]").find("lacks the next Do/t of the table"), std::string::npos);
    EXPECT_EQ(fault("9.774e-02", "9.774z-02"),
              "damaged: line 12 lacks an L/Do above that before it and its A");
    EXPECT_EQ(fault("9.774e-02", "-9.774e-2"),
              "damaged: line 12 lacks an L/Do above that before it and its A");
    EXPECT_EQ(fault("2.2     9.774e-02", "2.0     9.774e-02"),
              "damaged: line 12 lacks an L/Do above that before it and its A");
    EXPECT_EQ(fault("0.05    1.000e-01\n", "\n"), "damaged: line 11 lacks the row of L/Do 0.05");
    EXPECT_EQ(fault("[4]\n\n", "[4]\n"),
              "damaged: line 9 lacks the line before it that belongs there");
    EXPECT_EQ(fault("2.2     9", "\n2.2     9"),
              "damaged: line 13 lacks the line before it that belongs there");
    EXPECT_EQ(fault("2.2     9", ";\n2.2     9"),
              "damaged: line 13 lacks the line before it that belongs there");
    EXPECT_NE(fault("50      6.873e-02\n", "\n").find("lacks the rows up to L/Do 50 before it"),
              std::string::npos);
}

TEST_F(DataFiles, Records) {
    const auto number = [](std::string& bytes, std::size_t at, auto value) {
        std::memcpy(bytes.data() + at, &value, sizeof value);
    };
    EXPECT_EQ(fault_of("YIELDSTR.BIN",
                       [&](std::string& b) {
                           number(b, 0, std::int32_t{0});
                           number(b, 4, std::int32_t{-1});
                       }),
              "damaged: it does not say how many materials it has");
    EXPECT_NE(
        fault_of("YIELDSTR.BIN", [&](std::string& b) { number(b, 0, std::int32_t{2000000000}); })
            .find("it says that it has 2000000000 materials"),
        std::string::npos);
    const std::size_t second = 2 * 364;
    EXPECT_EQ(
        fault_of("YIELDSTR.BIN", [&](std::string& b) { number(b, second + 188, std::nanf("")); }),
        "damaged: material 2 of it has no sound strengths");
    EXPECT_EQ(fault_of("YIELDSTR.BIN", [&](std::string& b) { number(b, second + 164, 1e30f); }),
              "damaged: material 2 of it has no sound strengths");
    EXPECT_EQ(
        fault_of("YIELDSTR.BIN", [&](std::string& b) { b.replace(second + 16, 16, 16, ' '); }),
        "damaged: material 2 of it has no sound name");
}

TEST_F(DataFiles, NoTextAndNoEnd) {
    EXPECT_EQ(fault_of("BOLTDATA.TXT", [](std::string& b) { b[5] = '\0'; }),
              "damaged: it has characters that are not text");
    EXPECT_EQ(fault_of("BOLTDATA.TXT",
                       [](std::string& b) { b.insert(0, ";" + std::string(65535, 'x') + '\n'); }),
              "none");
    EXPECT_EQ(fault_of("BOLTDATA.TXT",
                       [](std::string& b) { b.insert(0, ";" + std::string(65536, 'x') + '\n'); }),
              "damaged: it has a line without an end");
    std::filesystem::resize_file(file("BOLTDATA.TXT"), LARGEST_DATA_FILE + 1);
    EXPECT_EQ(data_file_fault("BOLTDATA.TXT"),
              "too large for a data file, in " + place("the call"));
}

} // namespace
} // namespace tarvane::app
