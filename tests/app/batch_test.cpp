// `tarvane batch`: its items, its rows, and what a user sees of it. What kills do to it is in batch_kills.py.
#include "app_fixture.h"
#include "batch/batch_folder.h"
#include "batch/items.h"
#include "components/calculation.h"
#include "values/sha256.h"
#include "values/text.h"

#include <array>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <map>
#include <sys/file.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace tarvane::app {

using namespace vessel;
namespace fs = std::filesystem;
namespace {

class Batch : public ProgramTest {
  protected:
    std::string out = path("out");

    // Files "flange N.toml" in the folder "in", that pass.
    void write_flanges(int count) const {
        fs::create_directories(path("in"));
        for (int n = 0; n < count; ++n)
            write("in/flange " + std::to_string(n) + ".toml",
                  with("description", "description = \"flange " + std::to_string(n) + '"'));
    }
    ProgramRun batch(const std::string& more) const {
        return run("batch --out " + out + ' ' + more);
    }
    std::string result(const std::string& name) const { return read(out + "/results/" + name); }
    // The summary's lines without the first, by the item.
    std::map<std::string, std::string> rows() const {
        std::map<std::string, std::string> by_item;
        std::istringstream lines(read(out + "/summary.csv"));
        std::string line;
        std::getline(lines, line);
        while (std::getline(lines, line))
            by_item[line.substr(0, line.find(','))] = line;
        return by_item;
    }
    using Times = std::map<std::string, std::pair<time_t, long>>;
    // When each file of results was written, which nothing can set back.
    Times times_of_results() const {
        Times times;
        for (const fs::directory_entry& entry :
             fs::recursive_directory_iterator(out + "/results")) {
            struct stat status {};
            if (entry.is_regular_file() && stat(entry.path().c_str(), &status) == 0)
                times[entry.path().filename().string()] = {status.st_ctim.tv_sec,
                                                           status.st_ctim.tv_nsec};
        }
        return times;
    }
    std::vector<std::string> written_since(const Times& before) const {
        std::vector<std::string> names;
        for (const auto& [name, time] : times_of_results()) {
            const auto old = before.find(name);
            if (old == before.end() || old->second != time) names.push_back(name);
        }
        return names;
    }
};

using Names = std::vector<std::string>;

Names names_of(const Items& found) {
    Names names;
    for (const Item& item : found.items)
        names.push_back(item.name);
    return names;
}

// ---- items -------------------------------------------------------------------------------------------------

TEST_F(Batch, ItemsAreNamedByTheirWayFromTheFolder) {
    for (const char* name : {"in/b", "in/a/x", "in/a", "in/.hidden", "in/out"})
        fs::create_directories(path(name));
    for (const char* name : {"in/b/x.toml", "in/a/x/y.TOML", "in/a/x.toml", "in/c.toml", "in/c.txt",
                             "in/.hidden/h.toml", "in/.h.toml", "in/out/o.toml"})
        write(name, "");
    fs::create_directory_symlink(path("in/a"), path("in/link"));
    fs::create_symlink(path("in/c.toml"), path("in/d.toml"));
    const std::vector<std::string> folder_alone{path("in")},
        twice{path("in/b/x.toml"), path("in"), path("in") + "/b/../b/x.toml", path("in/c.txt")},
        one{path("in/b/x.toml")}, two{path("in/b/x.toml"), path("in/a")};
    const fs::path not_in = path("in/out");
    EXPECT_EQ(names_of(find_items(folder_alone, not_in, {})),
              (Names{"a/x", "a/x/y", "b/x", "c", "d"}));
    EXPECT_EQ(names_of(find_items(twice, not_in, {})),
              (Names{"a/x", "a/x/y", "b/x", "c", "c.txt", "d"}));
    EXPECT_EQ(names_of(find_items(one, not_in, {})), (Names{"x"}));
    EXPECT_EQ(names_of(find_items(two, not_in, {})), (Names{"a/x", "a/x/y", "b/x"}));
    // A later call has the names of the first one.
    EXPECT_EQ(names_of(find_items(one, not_in, fs::canonical(path("in")))), (Names{"b/x"}));
    EXPECT_THROW(find_items(folder_alone, not_in, fs::canonical(path("in/a"))), std::runtime_error);
}

TEST_F(Batch, NamesAreFitForFilesAndTerminals) {
    EXPECT_EQ(item_name("a/x.toml"), "a/x");
    EXPECT_EQ(item_name("x.inp"), "x.inp");
    EXPECT_EQ(item_name("x\n\xE4.toml"), printable("x\n\xE4"));
    EXPECT_EQ(item_name("x\n\xE4.toml").find('\n'), std::string::npos);
}

TEST_F(Batch, TwoInputsNeverWriteOneOutput) {
    write("x.inp", FLANGE_TOML);
    write("x.inp.toml", FLANGE_TOML);
    const ProgramRun both = batch(path("x.inp") + ' ' + path("x.inp.toml"));
    EXPECT_EQ(both.status, 2);
    EXPECT_NE(both.err.find("x.inp and x.inp.toml would write the same results"), std::string::npos)
        << both.err;
    EXPECT_EQ(batch(path("x.inp")).status, 0);
    const ProgramRun later = batch(path("x.inp.toml") + " --resume");
    EXPECT_EQ(later.status, 2);
    EXPECT_NE(later.err.find("would write the same results"), std::string::npos) << later.err;
}

TEST_F(Batch, RefusesWhatLeadsNowhere) {
    fs::create_directories(path("in"));
    EXPECT_EQ(batch(path("in")).status, 2);
    const ProgramRun missing = batch(path("nothing"));
    EXPECT_EQ(missing.status, 2);
    EXPECT_NE(missing.err.find("there is no such file or folder"), std::string::npos)
        << missing.err;
    EXPECT_FALSE(fs::exists(out));
}

// ---- the program -------------------------------------------------------------------------------------------

TEST_F(Batch, ResultsAreThoseOfARun) {
    fs::create_directories(path("in"));
    for (const char* name : {"v101", "vacuum_and_cold", "material_files"}) {
        const std::string file = name + std::string(".toml");
        fs::copy_file(std::string(TARVANE_SOURCE_DIR) + "/examples/" + file, path("in/" + file));
    }
    const ProgramRun all = batch(path("in") + " --jobs 1");
    EXPECT_EQ(all.status, 0) << all.err;
    for (const std::string name : {"v101", "vacuum_and_cold", "material_files"}) {
        const ProgramRun one =
            run("run " + path("in/" + name + ".toml") + " --json " + path("json"));
        EXPECT_EQ(result(name + ".txt"), one.out) << name;
        EXPECT_EQ(result(name + ".json"), read(path("json"))) << name;
        EXPECT_NE(result(name + ".json"), "") << name;
    }
}

TEST_F(Batch, AFaultyFileCostsItselfAlone) {
    write_flanges(2);
    write("in/thin.toml", with("t", "t = 0.75"));
    write("in/text.toml", with("P", "P = \"ten\""));
    write("in/empty.toml", "");
    // The corroded bore grows over the outside diameter.
    std::string ring = with("type", "type = \"loose ring\"");
    for (const char* key : {"g0", "g1", "h"})
        ring = with(key, "", ring);
    write("in/stopped.toml", FLANGE_TOML + with("Fid", "Fid = 7", with("ci", "ci = 3.6", ring)));
    fs::create_directory(path("in/folder.toml"));
    fs::create_symlink("nothing", path("in/broken.toml"));
    const ProgramRun all = batch(path("in") + " --jobs 1");
    EXPECT_EQ(all.status, 3) << all.err;
    const auto lines = rows();
    ASSERT_EQ(lines.size(), 7u);
    const auto begins = [&](const std::string& item, const std::string& text) {
        EXPECT_EQ(lines.at(item).find(text), 0u) << lines.at(item);
    };
    begins("flange 0", "flange 0,flange 0.toml,ok,0,pass,0.");
    begins("flange 1", "flange 1,flange 1.toml,ok,0,pass,0.");
    begins("thin", "thin,thin.toml,ok,1,fail,");
    begins("text", "text,text.toml,fault,2,,,,,,\"line 4: P: ");
    begins("empty", "empty,empty.toml,fault,2,,,,,,");
    begins("broken", "broken,broken.toml,fault,2,,,,,,cannot read ");
    EXPECT_NE(lines.at("stopped").find(",stopped,3,"), std::string::npos) << lines.at("stopped");
    EXPECT_NE(lines.at("stopped").find("the engine stopped with code 25"), std::string::npos);
    EXPECT_TRUE(fs::exists(out + "/results/thin.txt"));
    for (const char* name : {"text", "empty", "broken", "stopped"})
        EXPECT_FALSE(fs::exists(out + "/results/" + name + ".txt")) << name;
    const std::string json = read(out + "/summary.json");
    EXPECT_NE(json.find("\"items\":7,\"pass\":2,\"fail\":1,\"not_made\":0,\"not_calculated\":4,"
                        "\"missing\":0,\"exit\":3,"),
              std::string::npos)
        << json;
    EXPECT_NE(json.find("\"path\":\"flange[0].P\",\"value\":\"the text \\\"ten\\\"\""),
              std::string::npos);
    EXPECT_NE(all.out.find("7 items: 2 pass, 1 do not, 4 not calculated\n"), std::string::npos)
        << all.out;
    EXPECT_NE(all.err.find("7 of 7 done, 1 do not pass, 4 not calculated, "), std::string::npos)
        << all.err;
}

TEST_F(Batch, AFileThatTakesTheMemoryCostsItselfAlone) {
#if defined(__SANITIZE_ADDRESS__)
    GTEST_SKIP() << "the address space of a sanitized program can't be limited";
#endif
    write_flanges(2);
    std::string lists = "a = [";
    for (int i = 0; i < 1'300'000; ++i)
        lists += "[],";
    write("in/flange 01.toml", lists + "]\n");
    const std::string room =
        sizeof(void*) == 4 ? "150000" : "300000"; // lists take less where pointers do
    const ProgramRun all = shell("ulimit -v " + room + "; " + TARVANE_PROGRAM + " batch -j1 " +
                                 path("in") + " --out " + out);
    EXPECT_EQ(all.status, 3) << all.err;
    EXPECT_NE(all.out.find("Not calculated:\n  flange 01: out of memory\n\n3 items: 2 pass"),
              std::string::npos)
        << all.out;
    EXPECT_EQ(batch(path("in") + " --resume").status, 2); // with memory it is a faulty file
}

TEST_F(Batch, APageForEachItemOnRequest) {
    write_flanges(1);
    ASSERT_EQ(batch(path("in") + " --html").status, 0);
    EXPECT_EQ(result("flange 0.html").find("<!DOCTYPE html>"), 0u);
    EXPECT_NE(result("flange 0.html").find(sha256(read(path("in/flange 0.toml")))),
              std::string::npos);
}

TEST_F(Batch, QuietSaysNothing) {
    write_flanges(2);
    const ProgramRun quiet = batch("--quiet " + path("in"));
    EXPECT_EQ(quiet.status, 0);
    EXPECT_EQ(quiet.out + quiet.err, "");
    EXPECT_EQ(rows().size(), 2u);
}

TEST_F(Batch, RefusesAFolderThatIsNotItsOwn) {
    write_flanges(1);
    EXPECT_EQ(batch(path("in")).status, 0);
    const std::string before = read(out + "/summary.csv");
    const ProgramRun again = batch(path("in"));
    EXPECT_EQ(again.status, 2);
    EXPECT_NE(again.err.find("has a batch already: --resume goes on with it"), std::string::npos)
        << again.err;
    EXPECT_EQ(read(out + "/summary.csv"), before);
    for (const char* resume : {"", " --resume"}) {
        const ProgramRun other = run("batch " + path("in") + " --out " + path("in") + resume);
        EXPECT_EQ(other.status, 2);
        EXPECT_NE(other.err.find("is not empty, and no batch has made it"), std::string::npos)
            << other.err;
    }
    EXPECT_FALSE(fs::exists(path("in/results")));
    // A batch that was ended before it began, and a resume without anything to resume.
    fs::create_directories(path("new"));
    write("new/lock", "1\n");
    write("new/.tarvane-1", "half");
    EXPECT_EQ(run("batch " + path("in") + " --resume --out " + path("new")).status, 0);
    EXPECT_FALSE(fs::exists(path("new/.tarvane-1")));
}

TEST_F(Batch, OneBatchAtATime) {
    write_flanges(1);
    EXPECT_EQ(batch(path("in")).status, 0);
    const int lock = open((out + "/lock").c_str(), O_RDWR | O_CLOEXEC);
    ASSERT_EQ(flock(lock, LOCK_EX), 0);
    write("out/lock", "4711\n");
    const ProgramRun second = batch(path("in") + " --resume");
    EXPECT_EQ(second.status, 2);
    EXPECT_NE(second.err.find("is in use by another batch, process 4711\n"), std::string::npos)
        << second.err;
    EXPECT_EQ(read(out + "/lock"), "4711\n");
    close(lock); // the number of a process that is gone is no lock
    EXPECT_EQ(batch(path("in") + " --resume").status, 0);
}

TEST_F(Batch, ResumeCalculatesWhatDiffers) {
    write_flanges(4);
    EXPECT_EQ(batch(path("in")).status, 0);
    auto before = times_of_results();
    ASSERT_EQ(before.size(), 8u);
    // Content counts, not time.
    write_flanges(4);
    write("in/flange 1.toml", with("P", "P = 151"));
    EXPECT_EQ(batch(path("in") + " --resume").status, 0);
    EXPECT_EQ(written_since(before), (Names{"flange 1.json", "flange 1.txt"}));

    before = times_of_results();
    fs::remove(out + "/results/flange 2.json");
    std::ofstream(out + "/results/flange 3.txt", std::ios::trunc) << "half";
    write("out/results/.tarvane-77", "half");
    EXPECT_EQ(batch(path("in") + " --resume").status, 0);
    EXPECT_EQ(written_since(before),
              (Names{"flange 2.json", "flange 2.txt", "flange 3.json", "flange 3.txt"}));

    before = times_of_results();
    EXPECT_EQ(batch(path("in") + " --resume --strict").status, 2); // no units are given
    EXPECT_TRUE(times_of_results().empty());
    EXPECT_EQ(batch(path("in") + " --resume").status, 0);
    EXPECT_EQ(written_since(before).size(), 8u);

    fs::copy(TARVANE_DATA_DIR, path("data"), fs::copy_options::recursive);
    for (const char* program : {"tarvane", "tarvane_app_tests"})
        fs::remove(path("data") + '/' + program);
    before = times_of_results();
    EXPECT_EQ(batch(path("in") + " --resume --data " + path("data")).status, 0);
    EXPECT_TRUE(written_since(before).empty()); // the same files elsewhere
    std::ofstream(path("data/TableGData.txt"), std::ios::app) << "\n";
    EXPECT_EQ(batch(path("in") + " --resume --data " + path("data")).status, 0);
    EXPECT_EQ(written_since(before).size(), 8u);
}

TEST_F(Batch, ResumeDoesFailedItemsAgainAndKeepsEarlierRows) {
    write_flanges(3);
    write("in/flange 1.toml", with("P", "P = \"ten\""));
    write("in/thin.toml", with("t", "t = 0.75"));
    EXPECT_EQ(batch(path("in")).status, 2);
    auto before = times_of_results();
    // An item that does not pass is no failed item.
    EXPECT_EQ(batch(path("in") + " --resume").status, 2);
    EXPECT_TRUE(written_since(before).empty());
    write_flanges(3);
    EXPECT_EQ(run("batch --resume --out " + out + " '" + path("in/flange 1.toml") + '\'').status,
              1);
    EXPECT_EQ(written_since(before), (Names{"flange 1.json", "flange 1.txt"}));
    const std::string merged = read(out + "/summary.csv") + read(out + "/summary.json");
    EXPECT_EQ(rows().size(), 4u);
    EXPECT_EQ(run("batch --out " + path("fresh") + ' ' + path("in")).status, 1);
    EXPECT_EQ(merged, read(path("fresh/summary.csv")) + read(path("fresh/summary.json")));
    // A file that is gone, or that is another by now, has no row.
    fs::remove(path("in/flange 2.toml"));
    write("in/thin.toml", with("t", "t = 0.76"));
    const ProgramRun rest =
        run("batch --resume --out " + out + " '" + path("in/flange 1.toml") + '\'');
    EXPECT_EQ(rest.status, 0) << rest.err;
    EXPECT_EQ(rows().size(), 2u);
    EXPECT_NE(rest.out.find("2 of earlier calls left out"), std::string::npos) << rest.out;
}

TEST_F(Batch, FolderAndInputsCanMoveTogether) {
    write_flanges(2);
    fs::create_directories(path("project"));
    fs::rename(path("in"), path("project/in"));
    EXPECT_EQ(run("batch " + path("project/in") + " --out " + path("project/out")).status, 0);
    fs::rename(path("project"), path("moved"));
    out = path("moved/out");
    const auto before = times_of_results();
    EXPECT_EQ(batch(path("moved/in") + " --resume").status, 0);
    EXPECT_TRUE(written_since(before).empty());
    EXPECT_EQ(rows().size(), 2u);
}

// ---- ends --------------------------------------------------------------------------------------------------

// A batch as a child of this process, in a group of its own as in a terminal.
class Running {
  public:
    Running(const std::string& in, std::string folder, const std::string& more)
        : out(std::move(folder)), pid(fork()) {
        if (pid != 0) return;
        setpgid(0, 0);
        const int null = open("/dev/null", O_WRONLY);
        dup2(null, STDOUT_FILENO);
        dup2(open((out + ".err").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666), STDERR_FILENO);
        if (more.empty())
            execl(TARVANE_PROGRAM, "tarvane", "batch", in.c_str(), "--out", out.c_str(), "-j2",
                  nullptr);
        else
            execl(TARVANE_PROGRAM, "tarvane", "batch", in.c_str(), "--out", out.c_str(), "-j2",
                  more.c_str(), nullptr);
        _exit(127);
    }

    pid_t group() const { return -pid; }
    std::size_t done() const {
        std::error_code none;
        const fs::directory_iterator lines(out + "/journal", none);
        return none ? 0
                    : static_cast<std::size_t>(std::count_if(
                          begin(lines), end(lines), [](const fs::directory_entry& entry) {
                              return entry.path().extension() == ".json";
                          }));
    }
    // Returns whether so many items were done before it ended.
    bool wait_for(std::size_t items) const {
        siginfo_t ended{};
        while (done() < items) {
            waitid(P_PID, static_cast<id_t>(pid), &ended, WEXITED | WNOHANG | WNOWAIT);
            if (ended.si_pid != 0) return false;
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        return true;
    }
    std::vector<pid_t> workers() const {
        std::vector<pid_t> found;
        std::error_code none;
        for (const fs::directory_entry& thread :
             fs::directory_iterator("/proc/" + std::to_string(pid) + "/task", none)) {
            std::ifstream children(thread.path() / "children");
            for (pid_t child = 0; children >> child;)
                found.push_back(child);
        }
        return found;
    }
    int wait() const {
        int status = 0;
        waitpid(pid, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    }

  private:
    std::string out;
    pid_t pid;
};

TEST_F(Batch, AWorkerThatDiesCostsItsFileAlone) {
    constexpr int FILES = 120, KILLS = 3;
    write_flanges(FILES);
    const Running batch_of(path("in"), out, "");
    int killed = 0;
    for (std::size_t k = 1; k <= KILLS; ++k) {
        ASSERT_TRUE(batch_of.wait_for(k * 20));
        const std::vector<pid_t> workers = batch_of.workers();
        if (!workers.empty() && kill(workers[k % workers.size()], SIGKILL) == 0) ++killed;
    }
    ASSERT_EQ(killed, KILLS);
    EXPECT_EQ(batch_of.wait(), 3);
    const auto lines = rows();
    ASSERT_EQ(lines.size(), std::size_t{FILES});
    int died = 0;
    for (const auto& [item, line] : lines) {
        if (line.find(",ok,0,pass,") != std::string::npos) continue;
        EXPECT_NE(line.find(",died,3,,,,,,its process was ended by signal 9 (Killed)"),
                  std::string::npos)
            << line;
        ++died;
    }
    // One that was killed between two items costs the next one.
    EXPECT_EQ(died, KILLS);
    EXPECT_EQ(batch(path("in") + " --resume").status, 0);
    EXPECT_EQ(read(out + "/summary.csv").find(",died,"), std::string::npos);
    EXPECT_EQ(rows().size(), std::size_t{FILES});
}

TEST_F(Batch, TheFirstInterruptFinishesWhatRuns) {
    constexpr int FILES = 150;
    write_flanges(FILES);
    const Running batch_of(path("in"), out, "");
    ASSERT_TRUE(batch_of.wait_for(10));
    // As a terminal does it: the workers get it, too.
    ASSERT_EQ(kill(batch_of.group(), SIGINT), 0);
    EXPECT_EQ(batch_of.wait(), 130);
    const std::size_t done = rows().size();
    EXPECT_GE(done, 10u);
    EXPECT_LT(done, std::size_t{FILES});
    for (const auto& [item, line] : rows())
        EXPECT_NE(line.find(",ok,0,pass,"), std::string::npos) << line;
    const std::string words =
        "tarvane: interrupted with " + std::to_string(done) + " of 150 items done";
    EXPECT_NE(read(out + ".err").find(words), std::string::npos) << read(out + ".err");
    EXPECT_NE(read(out + "/summary.json").find("\"missing\":" + std::to_string(FILES - done)),
              std::string::npos);
    const auto before = times_of_results();
    EXPECT_EQ(batch(path("in") + " --resume").status, 0);
    EXPECT_EQ(rows().size(), std::size_t{FILES});
    EXPECT_EQ(written_since(before).size(), 2 * (FILES - done));
}

TEST_F(Batch, TheSecondInterruptEndsIt) {
    constexpr int FILES = 150;
    write_flanges(FILES);
    const Running batch_of(path("in"), out, "");
    ASSERT_TRUE(batch_of.wait_for(10));
    // Workers that do not go on: what runs is not finished.
    const std::vector<pid_t> workers = batch_of.workers();
    ASSERT_FALSE(workers.empty());
    for (const pid_t worker : workers)
        kill(worker, SIGSTOP);
    ASSERT_EQ(kill(batch_of.group(), SIGINT), 0);
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    ASSERT_EQ(kill(batch_of.group(), SIGINT), 0);
    EXPECT_EQ(batch_of.wait(), 130);
    EXPECT_FALSE(fs::exists(out + "/summary.csv"));
    for (const pid_t worker : workers)
        EXPECT_NE(kill(worker, 0), 0) << "a worker is left";
    EXPECT_EQ(batch(path("in") + " --resume").status, 0);
    EXPECT_EQ(rows().size(), std::size_t{FILES});
}

TEST_F(Batch, WorkersOfAKilledBatchEnd) {
    write_flanges(150);
    const Running batch_of(path("in"), out, "");
    ASSERT_TRUE(batch_of.wait_for(5));
    const std::vector<pid_t> workers = batch_of.workers();
    ASSERT_FALSE(workers.empty());
    ASSERT_EQ(kill(-batch_of.group(), SIGKILL), 0);
    EXPECT_EQ(batch_of.wait(), -SIGKILL);
    const auto is_left = [](pid_t worker) {
        std::ifstream status("/proc/" + std::to_string(worker) + "/stat");
        const std::string text((std::istreambuf_iterator<char>(status)), {});
        return text.find(") ") != std::string::npos && text[text.find(") ") + 2] != 'Z';
    };
    for (const pid_t worker : workers) {
        for (int i = 0; i < 5000 && is_left(worker); ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        EXPECT_FALSE(is_left(worker));
    }
}

} // namespace
} // namespace tarvane::app
