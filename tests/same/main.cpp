// Two builds of the library under the same calls: every exported routine that both have, with sensible
// arguments, edges of decisions and garbage, each library in processes of its own. What the calls return
// and leave for the host to see is compared bit for bit.
//
//   tarvane_same OLD NEW DATA SCRATCH [--calls N] [--seed N] [--only ROUTINE] [--limit SECONDS]
//                [--old-data FOLDER]
//   tarvane_same --replay FILE
//
// N calls of each calculation routine, a tenth of them of each other. SCRATCH is a folder of the program's
// own; everything in it is lost, and the files to replay a difference are left there. --limit is the CPU
// time that a call may take. Status 0: the same; 1: there are differences.
//
// All is compared as it is, except the sign and the payload of a real that is not a number: they depend on
// the compiler. Addresses are not compared; the clock is the host's and is stopped. A part of what a call
// leaves (settings, line store, tables, files) counts as different where it was the same before the call.
#include "folders.h"
#include "sequence.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <map>
#include <memory>
#include <new>
#include <string>
#include <vector>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using namespace same;
namespace fs = std::filesystem;

constexpr int SIDES = 2, SEQUENCES = 16; // of a process
constexpr std::size_t MOST_ROUTINES = 1000, MOST_REPLAYS = 4;
// Seconds after which a sequence is taken for blocked, however busy the machine is.
constexpr long BLOCKED = 600;
// What ends between two calls ends there.
const std::size_t BEGINNING = calls::routines().size();

std::string name_of(std::size_t routine) {
    return routine == BEGINNING ? "BEGINNING" : std::string(calls::routines()[routine].name);
}
constexpr std::string_view SIDE_NAMES[SIDES] = {"old", "new"};

struct Options {
    std::string library[SIDES], data[SIDES], scratch, only;
    unsigned long long seed = 1;
    long calls = 2000, limit = 10;
};

// How a process ended, other than by coming to its end.
struct End {
    bool early = false;
    int status = 0;
    long sequence = 0;
    int calls = 0;

    bool operator==(const End&) const = default;
    std::string told() const {
        if (!early) return "came back";
        if (!WIFSIGNALED(status))
            return "ended the process, status " + std::to_string(WEXITSTATUS(status));
        const int signal = WTERMSIG(status);
        if (signal == SIGPROF || signal == SIGALRM) return "did not come back in its time";
        return "ended by signal " + std::to_string(signal);
    }
};

template <typename T>
T* shared_memory() {
    void* const memory =
        mmap(nullptr, sizeof(T), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) std::abort();
    return new (memory) T();
}

// What the processes of one library report.
struct Told {
    calls::Names names;
    ResultBytes results;
    bool exported[MOST_ROUTINES];
    int sequence; // of the block
    Progress sequences[SEQUENCES];
};

// One library: its folders, and the process that calls it.
class Side {
  public:
    Side(const Options& options, int number)
        : library(fs::absolute(options.library[number])),
          folders(options.data[number], fs::path(options.scratch) / SIDE_NAMES[number]),
          told(*shared_memory<Told>()) {
        folders.damage({options.seed + 1000003, 0});
    }

    // In a process of its own, which begins in the working folder.
    template <typename Work>
    void begin(Work work) {
        std::fflush(nullptr);
        process = fork();
        if (process < 0) std::abort();
        if (process > 0) return;
        fs::current_path(folders.working_folder());
        calls::Library loaded = calls::loaded_library(library.c_str());
        if (kept != nullptr) calls::keep(loaded, *kept);
        work(loaded);
        std::fflush(nullptr);
        _exit(0);
    }
    int wait() {
        int status = 0;
        while (waitpid(process, &status, 0) < 0)
            if (errno != EINTR) std::abort();
        return status;
    }

    // Reported in the order of the routines, too.
    void find_exports() {
        begin([&](const calls::Library& loaded) {
            told.names = calls::names_of(loaded);
            told.results = result_bytes(loaded);
            for (std::size_t i = 0; i < calls::routines().size(); ++i)
                told.exported[i] = calls::routines()[i].exported(loaded);
        });
        if (wait() != 0) std::exit(2);
    }

    // The sequences first to last - 1; of the last one only up to the call to show, if any.
    void begin_block(const Plan& plan, long first, long last, int shown = -1,
                     const char* file = nullptr) {
        folders.empty_working_folder();
        for (Progress& progress : told.sequences)
            progress.calls = 0;
        begin([&, shown, file](const calls::Library& loaded) {
            std::FILE* const out = file == nullptr ? nullptr : std::fopen(file, "w");
            State state(loaded, results);
            for (long number = first; number < last; ++number) {
                told.sequence = static_cast<int>(number - first);
                Progress& progress = told.sequences[told.sequence];
                progress.in_call = false;
                alarm(static_cast<unsigned>(BLOCKED + plan.limit * MOST_CALLS));
                Sequence(plan, number, loaded, state, progress)
                    .run(number == last - 1 ? shown : -1, out);
            }
        });
    }
    End end_block(long first) {
        const int status = wait();
        if (status == 0) return {};
        return {true, status, first + told.sequence, told.sequences[told.sequence].calls};
    }

    // Calls and looks at nothing else from now on.
    void keep(const calls::Names& names, const ResultBytes& bytes) {
        kept = &names;
        results = bytes;
    }

    const fs::path library;
    const calls::Folders folders;
    Told& told;

  private:
    pid_t process = 0;
    const calls::Names* kept = nullptr;
    ResultBytes results{}; // that both libraries have
};

// ---- comparing -----------------------------------------------------------------------------------------

struct Count {
    long calls = 0, differing = 0, ends = 0;
    long parts[PARTS] = {};
};

struct Difference {
    std::size_t theme;
    long first, sequence; // first of its process
    int call;
    std::size_t routine;
    std::string what, file;
};

class Comparison {
  public:
    explicit Comparison(const Options& the_options)
        : options(the_options), sides{Side(options, 0), Side(options, 1)},
          counts(calls::routines().size() + 1) {
        for (Side& side : sides)
            side.find_exports();
        for (std::size_t i = 0; i < calls::routines().size(); ++i)
            exported[i] = sides[0].told.exported[i] && sides[1].told.exported[i];
        exported[BEGINNING] = true;
        for (std::size_t i = 0; i < calls::MOST_NAMES; ++i)
            names.there[i] = sides[0].told.names.there[i] && sides[1].told.names.there[i];
        for (Side& side : sides)
            side.keep(names, shorter(sides[0].told.results, sides[1].told.results));
    }

    int run() {
        // The export list has the calculations first.
        const std::size_t others = calls::routine_number("GETFOUNDATION");
        for (std::size_t i = 0; i < calls::routines().size(); ++i) {
            if (!exported[i]) continue;
            if (!options.only.empty() && calls::routines()[i].name != options.only) continue;
            theme(i, i < others ? options.calls : (options.calls + 9) / 10);
        }
        return summary();
    }

    // Both sides' full results of one call, to files.
    bool show(Difference& difference, const std::string (&files)[SIDES]) {
        const Plan plan = plan_of(difference.theme);
        for (int i = 0; i < SIDES; ++i)
            sides[i].begin_block(plan, difference.first, difference.sequence + 1, difference.call,
                                 files[i].c_str());
        for (int i = 0; i < SIDES; ++i)
            if (const End end = sides[i].end_block(difference.first); end.early)
                std::ofstream(files[i], std::ios::app)
                    << "call " << end.calls + 1 << " of sequence " << end.sequence << ' '
                    << end.told() << '\n';
        return true;
    }

  private:
    Plan plan_of(std::size_t theme) const { return {theme, exported, options.seed, options.limit}; }

    void theme(std::size_t routine, long calls) {
        const Plan plan = plan_of(routine);
        const long sequences = (calls + THEME_CALLS - 1) / THEME_CALLS;
        for (long first = 0; first < sequences;) {
            const long last = std::min(first + SEQUENCES, sequences);
            for (Side& side : sides)
                side.begin_block(plan, first, last);
            const End ends[SIDES] = {sides[0].end_block(first), sides[1].end_block(first)};
            long next = last; // what follows an early end is done again
            for (const End& end : ends)
                if (end.early) next = std::min(next, end.sequence + 1);
            for (long number = first; number < next; ++number)
                compare(plan, first, number, ends);
            first = next;
        }
    }

    void compare(const Plan& plan, long first, long number, const End (&ends)[SIDES]) {
        const Progress& a = sides[0].told.sequences[number - first];
        const Progress& b = sides[1].told.sequences[number - first];
        bool seen[PARTS] = {};
        const int both = std::min(a.calls, b.calls);
        for (int k = 0; k < both; ++k) {
            const Record &x = a.records[k], &y = b.records[k];
            Count& count = counts[x.routine];
            ++count.calls;
            std::string all, fresh;
            for (std::size_t part = 0; part < PARTS; ++part) {
                if (x.parts[part] == y.parts[part]) continue;
                if (x.before[part] != y.before[part]) continue;
                ++count.parts[part];
                all.append(all.empty() ? "" : ", ").append(PART_NAMES[part]);
                if (!seen[part]) fresh = all;
                seen[part] = true;
            }
            if (!all.empty()) ++count.differing;
            if (!fresh.empty()) found({plan.theme, first, number, k, x.routine, all, {}});
        }
        const bool early[SIDES] = {ends[0].early && ends[0].sequence == number,
                                   ends[1].early && ends[1].sequence == number};
        if (!early[0] && !early[1]) return;
        // The routine of the call that did not return, on the side that got less far.
        const int side = early[0] && a.calls == both ? 0 : 1;
        const Progress& ended = side == 0 ? a : b;
        const std::size_t routine = ended.in_call ? ended.routine : BEGINNING;
        Count& count = counts[routine];
        ++count.calls;
        ++count.ends;
        if (early[0] && early[1] && ends[0] == ends[1]) return;
        ++count.differing;
        const auto told = [&](int i) { return early[i] ? ends[i].told() : "came back"; };
        found(
            {plan.theme, first, number, both, routine, "old " + told(0) + ", new " + told(1), {}});
    }

    // The first few of each kind are kept.
    void found(Difference difference) {
        const std::string name = name_of(difference.routine);
        if (++kinds[name + ": " + difference.what] > 2) return;
        if (++of_routine[difference.routine] > MOST_REPLAYS) return;
        difference.file = options.scratch + '/' + name + '.' +
                          std::to_string(of_routine[difference.routine]) + ".replay";
        std::ofstream file(difference.file);
        file << "theme " << name_of(difference.theme) << "\nseed " << options.seed << "\nlimit "
             << options.limit << "\nfirst " << difference.first << "\nsequence "
             << difference.sequence << "\ncall " << difference.call << "\nroutine " << name
             << "\ndiffers " << difference.what << '\n';
        for (int i = 0; i < SIDES; ++i)
            file << SIDE_NAMES[i] << ' ' << sides[i].library.string() << '\n'
                 << SIDE_NAMES[i] << "-data " << fs::absolute(options.data[i]).string() << '\n';
        differences.push_back(std::move(difference));
    }

    int summary() const {
        long all = 0, differing = 0;
        std::size_t compared = 0;
        for (std::size_t i = 0; i < counts.size(); ++i) {
            const Count& count = counts[i];
            const std::string name = name_of(i);
            if (i == BEGINNING && count.calls == 0) continue;
            if (!exported[i]) {
                std::printf("%-28s not called: only one library has it\n", name.c_str());
                continue;
            }
            ++compared;
            all += count.calls;
            differing += count.differing;
            std::string parts;
            for (std::size_t part = 0; part < PARTS; ++part)
                if (count.parts[part] > 0)
                    parts += ", " + std::string(PART_NAMES[part]) + ' ' +
                             std::to_string(count.parts[part]);
            if (count.ends > 0) parts += ", did not come back " + std::to_string(count.ends);
            std::printf("%-28s %9ld calls %9ld differ%s\n", name.c_str(), count.calls,
                        count.differing, parts.c_str());
        }
        if (!differences.empty()) std::printf("\nfirst differences\n");
        for (const Difference& difference : differences)
            std::printf("  %s: %s: --replay %s\n", name_of(difference.routine).c_str(),
                        difference.what.c_str(), difference.file.c_str());
        std::printf("\nsame: seed %llu: %zu routines, %ld calls, %ld differ\n", options.seed,
                    compared, all, differing);
        if (all == 0) return 2;
        return differing == 0 ? 0 : 1;
    }

    const Options options;
    Side sides[SIDES];
    bool exported[MOST_ROUTINES] = {};
    calls::Names names = {};
    std::vector<Count> counts;
    std::vector<Difference> differences;
    std::map<std::string, int> kinds;
    std::map<std::size_t, std::size_t> of_routine;
};

// ---- one call again ------------------------------------------------------------------------------------

int replay(const std::string& path) {
    std::ifstream file(path);
    if (!file) {
        std::fprintf(stderr, "there is no file %s\n", path.c_str());
        return 2;
    }
    std::map<std::string, std::string> values;
    for (std::string line; std::getline(file, line);)
        if (const std::size_t blank = line.find(' '); blank != std::string::npos)
            values[line.substr(0, blank)] = line.substr(blank + 1);
    const auto number = [&](const char* key) { return std::atol(values[key].c_str()); };
    Options options;
    for (int i = 0; i < SIDES; ++i) {
        options.library[i] = values[std::string(SIDE_NAMES[i])];
        options.data[i] = values[std::string(SIDE_NAMES[i]) + "-data"];
    }
    options.scratch = path + ".folder";
    options.seed = static_cast<unsigned long long>(number("seed"));
    options.limit = number("limit");
    Difference difference = {calls::routine_number(values["theme"]),
                             number("first"),
                             number("sequence"),
                             static_cast<int>(number("call")),
                             0,
                             {},
                             {}};
    const std::string shown[SIDES] = {fs::absolute(path).string() + ".old",
                                      fs::absolute(path).string() + ".new"};
    Comparison(options).show(difference, shown);
    fs::remove_all(options.scratch);

    // Once what is given, then what differs.
    std::ifstream given(shown[1]);
    for (std::string line; std::getline(given, line) && !line.starts_with("and returns");)
        std::printf("%s\n", line.c_str());
    std::printf("and the old library (-) differs from the new one (+) in\n");
    std::fflush(stdout);
    const pid_t process = fork();
    if (process == 0) {
        execlp("diff", "diff", "-a", "-U0", shown[0].c_str(), shown[1].c_str(), nullptr);
        _exit(2);
    }
    int status = 0;
    waitpid(process, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 2;
}

} // namespace

int main(int count, char** arguments) {
    const std::vector<std::string> given(arguments + 1, arguments + count);
    if (given.size() == 2 && given[0] == "--replay") return replay(given[1]);
    Options options;
    bool understood = given.size() >= 4 && given.size() % 2 == 0;
    if (understood) {
        options.library[0] = given[0];
        options.library[1] = given[1];
        options.data[0] = options.data[1] = given[2];
        options.scratch = given[3];
    }
    for (std::size_t i = 4; understood && i < given.size(); i += 2) {
        const long long value = std::atoll(given[i + 1].c_str());
        if (given[i] == "--calls")
            options.calls = static_cast<long>(value);
        else if (given[i] == "--seed")
            options.seed = static_cast<unsigned long long>(value);
        else if (given[i] == "--limit")
            options.limit = static_cast<long>(value);
        else if (given[i] == "--only")
            options.only = given[i + 1];
        else if (given[i] == "--old-data")
            options.data[0] = given[i + 1];
        else
            understood = false;
    }
    if (!understood) {
        std::fprintf(stderr,
                     "tarvane_same OLD NEW DATA SCRATCH [--calls N] [--seed N] [--only ROUTINE] "
                     "[--limit SECONDS] [--old-data FOLDER]\ntarvane_same --replay FILE\n");
        return 2;
    }
    fs::remove_all(options.scratch);
    fs::create_directories(options.scratch);
    return Comparison(options).run();
}
