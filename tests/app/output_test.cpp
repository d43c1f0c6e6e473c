// What the program writes: standard output, and the files given to it.
#include "app_fixture.h"
#include "components/engine_session.h"
#include "terminal/output_file.h"

#include "tarvane/tarvane.h"

#include <csignal>
#include <ctime>
#include <set>

#include <sys/stat.h>
#include <unistd.h>

namespace tarvane::app {

using namespace vessel;
namespace {

namespace fs = std::filesystem;

const std::string EXTERNAL_TOML = R"([[external]]
kind = "cylinder"
P = 15
T = 300
D = 60
t = 0.5
length = 150
chart = "CS-2"
S = 17500
)";

class Output : public ProgramTest {
  protected:
    Output() : flange(write("flange.toml", FLANGE_TOML)) {}

    // The same in the folder of the test; $P is the program.
    ProgramRun shell(const std::string& commands) const {
        return ProgramTest::shell("P='" + std::string(TARVANE_PROGRAM) + "'; cd '" +
                                  folder.string() + "'; " + commands);
    }

    std::set<std::string> files() const {
        std::set<std::string> names;
        for (const auto& entry : fs::directory_iterator(folder))
            names.insert(entry.path().filename());
        return names;
    }

    mode_t mode_of(const std::string& name) const {
        struct stat status = {};
        EXPECT_EQ(lstat(path(name).c_str(), &status), 0);
        return status.st_mode & 07777;
    }

    // The report as it is written without obstacles.
    std::string report() const {
        EXPECT_EQ(shell("$P run flange.toml --report plain").status, 0);
        std::string bytes = read(path("plain"));
        fs::remove(path("plain"));
        EXPECT_GT(bytes.size(), 10000u);
        return bytes;
    }

    // A command that is refused before anything is calculated.
    void expect_refused(const std::string& arguments, const std::string& reason) const {
        const ProgramRun result = run(arguments);
        EXPECT_EQ(result.status, 2) << arguments;
        EXPECT_EQ(result.out, "") << arguments;
        EXPECT_EQ(result.err, "tarvane: cannot write " + reason + '\n');
    }

    std::string flange;
};

// ---- the way of the report -----------------------------------------------------------------------

TEST_F(Output, TheReportNeedsNoTemporaryFolder) {
    const std::string wanted = report();
    const ProgramRun result = shell("TMPDIR=/no/such/folder $P run flange.toml --report report");
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(read(path("report")), wanted);
}

TEST_F(Output, AReportThatHasNoRoomLeavesTheOldOne) {
    write("report", "older");
    const ProgramRun result = shell("{ (ulimit -f 8; $P run flange.toml --report report; echo $? >"
                                    "status) 2>&1 >&3 | cat >&2; } 3>&1 | cat");
    EXPECT_EQ(read(path("status")), "2\n");
    EXPECT_EQ(result.err, "tarvane: cannot write report: File too large\n");
    EXPECT_NE(result.out.find("\nResults "), std::string::npos) << "the rest comes all the same";
    EXPECT_EQ(read(path("report")), "older");
    EXPECT_EQ(files(),
              (std::set<std::string>{"flange.toml", "report", "status", "stderr", "stdout"}));
}

TEST_F(Output, ALineThatIsLostIsAnError) {
    const std::int32_t plain[6] = {};
    const auto line = [&plain] { WRITE_TEXT("a line", 6, plain); };
    RESET_ENGINE();
    ReportUnit whole;
    whole.switch_on();
    line();
    EXPECT_EQ(whole.switch_off_and_read().size(), 102u);

    std::int32_t unit = 0;
    GETNEXTUNIT(&unit);
    ReportUnit torn;
    torn.switch_on();
    line();
    CLOSEUNIT(&unit);
    line();
    EXPECT_THROW(torn.switch_off_and_read(), std::runtime_error);
    RESET_ENGINE();
}

// ---- standard output -----------------------------------------------------------------------------

const char* const COMMANDS[] = {"run flange.toml",
                                "keys",
                                "materials SA-516",
                                "chart CS-2 --temperature 300",
                                "mdmt --curve B --thickness 1",
                                "flanges 150",
                                "--help",
                                "run --help",
                                "--version"};

TEST_F(Output, WhatCannotBeWrittenIsToldByEveryCommand) {
    for (const char* const command : COMMANDS) {
        const std::string line = std::string("$P ") + command;
        const ProgramRun full = shell(line + " >/dev/full");
        EXPECT_EQ(full.status, 2) << command;
        EXPECT_EQ(full.err, "tarvane: cannot write standard output: No space left on device\n");
        const ProgramRun closed = shell(line + " >&-");
        EXPECT_EQ(closed.status, 2) << command;
        EXPECT_EQ(closed.err, "tarvane: cannot write standard output: Bad file descriptor\n");
        EXPECT_EQ(shell(line).status, 0) << command;
    }
}

TEST_F(Output, AReaderWhoLeavesHasTheFiles) {
    write("vessel.toml", FLANGE_TOML + EXTERNAL_TOML);
    ASSERT_EQ(
        shell("mkdir whole left; $P run vessel.toml --report whole/report --charts whole").status,
        0);
    // A pipe that is no longer read, from the first byte on.
    const ProgramRun gone = shell("mkfifo pipe; exec 4<>pipe 5>pipe 4<&-; "
                                  "$P run vessel.toml --report left/report --charts left >&5");
    EXPECT_EQ(gone.status, 141);
    EXPECT_EQ(gone.err, "");
    for (const char* const name : {"report", "external-1.svg"})
        EXPECT_EQ(read(path(std::string("left/") + name)), read(path(std::string("whole/") + name)))
            << name;
    for (const char* const command : COMMANDS) {
        const ProgramRun result =
            shell("exec 4<>pipe 5>pipe 4<&-; trap '' PIPE; $P " + std::string(command) + " >&5");
        EXPECT_EQ(result.status, 141) << command;
        EXPECT_EQ(result.err, "") << command;
    }
}

TEST_F(Output, AChartThatCannotBeDrawnKeepsNothingBack) {
    write("vessel.toml", EXTERNAL_TOML + EXTERNAL_TOML);
    fs::create_directories(path("charts/external-1.svg"));
    const ProgramRun result = shell("$P run vessel.toml --report report --charts charts");
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.err, "tarvane: cannot write charts/external-1.svg: it is a folder\n");
    EXPECT_NE(result.out.find("MAEP"), std::string::npos);
    EXPECT_NE(read(path("report")), "");
    EXPECT_TRUE(fs::is_regular_file(path("charts/external-2.svg")));

    fs::create_symlink("/dev/full", path("full"));
    const ProgramRun table = shell("$P chart CS-2 --temperature 300 --svg full");
    EXPECT_EQ(table.status, 2);
    EXPECT_EQ(table.err, "tarvane: cannot write full: No space left on device\n");
    EXPECT_EQ(table.out, shell("$P chart CS-2 --temperature 300").out);
}

// ---- what exists at the path -------------------------------------------------------------------------

TEST_F(Output, TheInputIsNoOutput) {
    fs::create_symlink("flange.toml", path("link"));
    fs::create_hard_link(flange, path("second"));
    expect_refused("run " + flange + " --report " + flange, flange + ": it is the input file");
    for (const std::string& name :
         {path("link"), path("second"), folder.string() + "/./flange.toml"})
        expect_refused("run " + flange + " --report " + name,
                       name + ": it is the input file " + flange);
    EXPECT_EQ(read(flange), FLANGE_TOML);

    const std::string vessel = write("vessel.toml", EXTERNAL_TOML);
    fs::create_hard_link(vessel, path("external-1.svg"));
    expect_refused("run " + vessel + " --charts " + folder.string(),
                   path("external-1.svg") + ": it is the input file " + vessel);
    EXPECT_EQ(read(vessel), EXTERNAL_TOML);
}

TEST_F(Output, ADataFileIsNoOutput) {
    fs::create_directory(path("data"));
    fs::copy_file(fs::path(TARVANE_DATA_DIR) / "ExtChartData.txt", path("data/ExtChartData.txt"));
    fs::create_symlink("data/ExtChartData.txt", path("link"));
    const std::string kept = read(path("data/ExtChartData.txt"));
    expect_refused("chart CS-2 --temperature 300 --data " + path("data") + " --svg " + path("link"),
                   path("link") + ": it is the data file " + path("data/ExtChartData.txt"));
    EXPECT_EQ(read(path("data/ExtChartData.txt")), kept);
}

TEST_F(Output, TwoOutputsAreTwoFiles) {
    const std::string vessel = write("vessel.toml", EXTERNAL_TOML);
    fs::create_directory(path("charts"));
    fs::create_symlink("external-1.svg", path("charts/report"));
    const std::string report = path("charts/report"), chart = path("charts/external-1.svg");
    expect_refused("run " + vessel + " --charts " + path("charts") + " --report " + report,
                   chart + ": it is the report " + report);
    EXPECT_FALSE(fs::exists(chart));
}

TEST_F(Output, EachFileOfARunIsAnother) {
    fs::create_symlink("result", path("link"));
    const std::string result = path("result");
    expect_refused("run " + flange + " --json " + result + " --csv " + path("link"),
                   path("link") + ": it is the JSON " + result);
    expect_refused("run " + flange + " --report " + result + " --json " + result,
                   result + ": it is the report");
    for (const std::string option : {"--json ", "--csv "})
        expect_refused("run " + flange + ' ' + option + flange, flange + ": it is the input file");
    EXPECT_FALSE(fs::exists(result));
    EXPECT_EQ(read(flange), FLANGE_TOML);
}

TEST_F(Output, OneFileThatCannotBeWrittenKeepsTheOthersNotBack) {
    fs::create_symlink("/dev/full", path("full"));
    const ProgramRun run = shell("$P run flange.toml --json full --csv table --report report");
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.err, "tarvane: cannot write full: No space left on device\n");
    EXPECT_NE(run.out.find("\nResults "), std::string::npos);
    EXPECT_EQ(read(path("table")).substr(0, 16), "table,component,");
    EXPECT_NE(read(path("report")), "");
}

TEST_F(Output, ADesignThatFailsHasItsFiles) {
    write("thin.toml", with("t", "t = 0.6"));
    const ProgramRun run = shell("$P run thin.toml --json result --csv table");
    EXPECT_EQ(run.status, 1) << run.err;
    const std::string result = read(path("result"));
    EXPECT_NE(result.find("\"verdict\":\"fail\""), std::string::npos);
    EXPECT_EQ(result.back(), '\n');
    EXPECT_NE(read(path("table")).find(",fail,decides,"), std::string::npos);
}

TEST_F(Output, ACalculationWithoutAnEndHasNoResult) {
    std::string ring = with("type", "type = \"loose ring\"");
    for (const char* key : {"g0", "g1", "h"})
        ring = with(key, "", ring);
    write("stop.toml", with("Fid", "Fid = 7", with("ci", "ci = 3.6", ring)));
    write("result", "older");
    const ProgramRun run = shell("$P run stop.toml --json result --csv table");
    EXPECT_EQ(run.status, 3);
    EXPECT_NE(run.err.find("tarvane: result is not written: the calculation was not completed\n"
                           "tarvane: table is not written: the calculation was not completed\n"),
              std::string::npos)
        << run.err;
    EXPECT_EQ(read(path("result")), "older");
    EXPECT_FALSE(fs::exists(path("table")));
}

TEST_F(Output, FieldsOfTheTableAreQuoted) {
    write("named.toml", with("description", R"(description = 'a "wide", heavy flange')"));
    EXPECT_EQ(shell("$P run named.toml --csv table").status, 0);
    EXPECT_NE(read(path("table")).find("\r\ncheck,flange[0],\"a \"\"wide\"\", heavy flange\","),
              std::string::npos);
}

TEST_F(Output, ALinkKeepsPointingToItsFile) {
    fs::create_directory(path("there"));
    write("there/old", "older");
    fs::create_symlink("there/old", path("link"));
    fs::create_symlink("link", path("link to a link"));
    fs::create_symlink("there/new", path("dangling"));
    const std::string wanted = report();
    EXPECT_EQ(shell("$P run flange.toml --report 'link to a link'").status, 0);
    EXPECT_EQ(shell("$P run flange.toml --report dangling").status, 0);
    for (const char* const link : {"link", "link to a link", "dangling"})
        EXPECT_TRUE(fs::is_symlink(path(link))) << link;
    EXPECT_EQ(read(path("there/old")), wanted);
    EXPECT_EQ(read(path("there/new")), wanted);

    ASSERT_EQ(shell("ln -s loop loop; $P run flange.toml --report loop").status, 2);
    EXPECT_TRUE(fs::is_symlink(path("loop")));
}

TEST_F(Output, AStreamIsWrittenThrough) {
    const std::string wanted = report();
    ASSERT_EQ(
        shell("mkfifo fifo; timeout 20 cat fifo >got & $P run flange.toml --report fifo && wait")
            .status,
        0);
    EXPECT_TRUE(fs::is_fifo(path("fifo")));
    EXPECT_EQ(read(path("got")), wanted);

    // A device, by a link: only the link can be damaged.
    fs::create_symlink("/dev/full", path("device"));
    const ProgramRun full = shell("$P run flange.toml --report device");
    EXPECT_EQ(full.status, 2);
    EXPECT_EQ(full.err, "tarvane: cannot write device: No space left on device\n");
    EXPECT_NE(full.out.find("\nResults "), std::string::npos);
    EXPECT_TRUE(fs::is_symlink(path("device")));

    // One after the other, whatever standard output is.
    const std::string shown = shell("$P run flange.toml").out;
    fs::create_symlink("/dev/stdout", path("out"));
    EXPECT_EQ(shell("$P run flange.toml --report out").out, wanted + shown);
    EXPECT_EQ(shell("$P run flange.toml --report out | cat").out, wanted + shown);
}

TEST_F(Output, WhatIsNoFileIsRefused) {
    expect_refused("run " + flange + " --report " + folder.string(),
                   folder.string() + ": it is a folder");
    const std::string nowhere = path("no/such/folder/report");
    expect_refused("run " + flange + " --report " + nowhere,
                   nowhere + ": No such file or directory");
    expect_refused("chart CS-2 --temperature 300 --svg " + nowhere,
                   nowhere + ": No such file or directory");
}

TEST_F(Output, TheModeStays) {
    for (const mode_t mode : {0600u, 0640u, 0755u, 0200u}) {
        write("report", "older");
        ASSERT_EQ(chmod(path("report").c_str(), mode), 0);
        EXPECT_EQ(shell("umask 022; $P run flange.toml --report report").status, 0);
        EXPECT_EQ(mode_of("report"), mode);
        EXPECT_EQ(shell("umask 027; $P run flange.toml --report new").status, 0);
        EXPECT_EQ(mode_of("new"), 0640u);
        fs::remove(path("report"));
        fs::remove(path("new"));
    }
}

TEST_F(Output, AReadOnlyFileIsRefused) {
    const std::string report = write("report", "older");
    ASSERT_EQ(chmod(report.c_str(), 0444), 0);
    expect_refused("run " + flange + " --report " + report, report + ": the file is read-only");
    expect_refused("chart CS-2 --temperature 300 --svg " + report,
                   report + ": the file is read-only");
    EXPECT_EQ(read(report), "older");
    EXPECT_EQ(mode_of("report"), 0444u);
}

// ---- an end in between -------------------------------------------------------------------------------

TEST_F(Output, AnEndInBetweenLeavesAWholeFileAndNothingElse) {
    fs::remove(flange);
    const std::string contents[] = {std::string(4'000'000, 'a'), std::string(4'000'000, 'b')};
    write_whole(path("report"), contents[0]);
    for (const int request : {SIGTERM, SIGINT, SIGHUP}) {
        for (int i = 0; i < 12; ++i) {
            const pid_t child = fork();
            ASSERT_GE(child, 0);
            if (child == 0) {
                for (;;)
                    for (const std::string& content : contents)
                        write_whole(path("report"), content);
            }
            const timespec while_it_writes{0, 2'000'000 + 700'000 * i};
            nanosleep(&while_it_writes, nullptr);
            kill(child, request);
            int status = 0;
            ASSERT_EQ(waitpid(child, &status, 0), child);
            EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == request);
            ASSERT_EQ(files(), std::set<std::string>{"report"});
            const std::string left = read(path("report"));
            ASSERT_TRUE(left == contents[0] || left == contents[1]);
        }
    }
}

} // namespace
} // namespace tarvane::app
