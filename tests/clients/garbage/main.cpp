// A host that passes garbage: every exported routine in random order, its arguments, the blocks that the
// engine returns and the data files partly or wholly random, each sequence of calls in a process of
// its own. Whatever the input, a call returns within its time, keeps to the memory that it was given, and
// ends the process by the fatal path alone.
//
//   garbage DATA SCRATCH [--seed N] [--count SEQUENCES] [--calls N] [--seconds N] [--only SEQUENCE]
//           [--limit SECONDS]
//
// SCRATCH is a folder of the program's own; everything in it is lost. --seconds goes on for that time
// instead of a count, --only runs one sequence in this process and prints each call, and --limit is the CPU
// time that a call may take.
#include "folders.h"
#include "library.h"
#include "routines.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <string>
#include <vector>

#include <sys/mman.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

// A sanitizer's find must not look like the fatal path's end.
extern "C" const char* __asan_default_options();
extern "C" const char* __asan_default_options() { return "exitcode=99:detect_leaks=0"; }
extern "C" const char* __ubsan_default_options();
extern "C" const char* __ubsan_default_options() { return "exitcode=99:print_stacktrace=1"; }

namespace {

using namespace calls;

constexpr int FATAL_PATH = 1, OVERRUN = 3, BAD_RECIPE = 4;
constexpr std::size_t MOST_ROUTINES = 1000;

// What the process of a sequence reports to the one that waits for it.
struct Progress {
    int call;
    std::size_t routine;
    bool may_end;
    long calls[MOST_ROUTINES];
};

struct Options {
    std::string data, scratch;
    unsigned long long seed = 1;
    long count = 100, calls = 200, seconds = 0, only = -1;
    long limit = UNDER_ADDRESS_SANITIZER ? 40 : 6; // seconds of CPU time for one call
};

void limit_time(long seconds) {
    itimerval timer = {};
    timer.it_value.tv_sec = seconds;
    setitimer(ITIMER_PROF, &timer, nullptr);
}

// ---- one sequence --------------------------------------------------------------------------------

class Sequence {
  public:
    Sequence(const Options& options, long number, Progress& told)
        : chance(options.seed, static_cast<std::uint64_t>(number)), limit(options.limit),
          progress(told) {
        manner.trace = options.only >= 0;
    }

    int run(long calls) {
        manner.may_end = progress.may_end = chance.one_in(4);
        progress.call = 0;
        static constexpr Noise TEMPERS[] = {Noise::none, Noise::little, Noise::little, Noise::half,
                                            Noise::all};
        temper = chance.of(TEMPERS);
        start();
        for (long k = 1; k <= calls && outcome == Outcome::good; ++k)
            step();
        if (outcome == Outcome::overrun) return OVERRUN;
        return outcome == Outcome::good ? 0 : BAD_RECIPE;
    }

  private:
    // The host's beginning, as the header describes it, or nothing of it.
    void start() {
        if (!manner.may_end) {
            const TARVANE_HOST_SERVICES table = staying_services();
            SET_HOST_SERVICES(&table);
        }
        static constexpr std::string_view FOLDERS[] = {"../real",     "../real",     "../real",
                                                       "../damaged0", "../damaged1", "../damaged2",
                                                       "../damaged3", "../nowhere"};
        const std::string_view system = chance.of(FOLDERS);
        const std::string_view module = chance.one_in(3) ? chance.of(FOLDERS) : system;
        if (!chance.one_in(16))
            SET_SYSTEM_DIR(system.data(), static_cast<std::int32_t>(system.size()));
        if (!chance.one_in(16))
            SET_MODULE_DIR(module.data(), static_cast<std::int32_t>(module.size()));
        if (chance.one_in(40)) take_all_units();
        if (chance.one_in(8)) return;
        GETSETUP()[TARVANE_SETUP_CODE - 1].whole = chance.between(1, 4);
        GETSETUP()[TARVANE_SETUP_PRINT_EXTERNAL - 1].real = 1.0f;
        SET_METRIC_CONSTANTS();
        const std::int32_t failure_corrosion = chance.one_in(3) ? 1 : 0;
        SET_SWITCHES(&failure_corrosion, &failure_corrosion);
        report();
    }

    // As many as the process may have.
    static void take_all_units() {
        for (std::int32_t unit = 1; unit <= 1000; ++unit) {
            std::int32_t status = 0;
            OPENUNIT(&unit, "taken", 5, &status);
        }
    }

    void report() {
        const std::int32_t on = 1, file = 20, store = -1;
        std::int32_t status = 0;
        if (chance.one_in(3)) {
            OPENUNIT(&file, "report", 6, &status);
            SET_IOUT(&file);
        } else {
            SET_IOUT(&store);
        }
        SET_IWRITE(&on);
        SET_IWRTFL(&on);
    }

    // A routine, the calculations more often than the others.
    std::size_t next_routine() {
        static const std::size_t CALCULATIONS[] = {routine_number("FLANGE_CALC"),
                                                   routine_number("FLANGE_CALC"),
                                                   routine_number("FLANGE_CALC"),
                                                   routine_number("SHLINT"),
                                                   routine_number("SHLINT"),
                                                   routine_number("SHLEXT"),
                                                   routine_number("SHLEXT"),
                                                   routine_number("COMPUTE_FAILURE_CA_DIV1"),
                                                   routine_number("APP_1_4F_HEAD"),
                                                   routine_number("MDMT_ELEMENT"),
                                                   routine_number("FORMING_STRAIN"),
                                                   routine_number("PWHT_NEEDED"),
                                                   routine_number("PATTERNED_OPENINGS")};
        return chance.one_in(3) ? chance.of(CALCULATIONS) : chance.below(routines().size());
    }

    void step() {
        if (chance.one_in(12)) report();
        const Noise noise = chance.one_in(3) ? Noise::none : temper;
        if (chance.one_in(20)) scribble_variables(linked_library(), chance, noise);
        progress.routine = next_routine();
        ++progress.call;
        ++progress.calls[progress.routine];
        const Routine& routine = routines()[progress.routine];
        if (manner.trace)
            std::fprintf(stderr, "%d %s", progress.call, std::string(routine.name).c_str());
        limit_time(limit);
        outcome = routine.call(linked_library(), chance, noise, manner, routine.recipe);
        limit_time(0);
        if (manner.trace) std::fprintf(stderr, "\n");
    }

    Chance chance;
    const long limit;
    Progress& progress;
    Manner manner;
    Noise temper = Noise::none;
    Outcome outcome = Outcome::good;
};

// ---- many ----------------------------------------------------------------------------------------

std::string fault_of(int status, const Progress& progress) {
    if (WIFSIGNALED(status)) {
        if (WTERMSIG(status) == SIGPROF) return "did not come back";
        return "ended by signal " + std::to_string(WTERMSIG(status));
    }
    const std::string_view routine = routines()[progress.routine].name;
    switch (WEXITSTATUS(status)) {
    case 0:
        return {};
    case FATAL_PATH:
        if (progress.may_end && (routine == "FLANGE_CALC" || routine == "WORK_FILE")) return {};
        return "ended the process";
    case OVERRUN:
        return "wrote outside its arguments";
    case BAD_RECIPE:
        return "has no recipe for its arguments";
    default:
        return "ended with status " + std::to_string(WEXITSTATUS(status));
    }
}

class Run {
  public:
    explicit Run(const Options& the_options)
        : options(the_options), folders(options.data, options.scratch) {
        void* const shared = mmap(nullptr, sizeof(Progress), PROT_READ | PROT_WRITE,
                                  MAP_SHARED | MAP_ANONYMOUS, -1, 0);
        if (shared == MAP_FAILED || routines().size() > MOST_ROUTINES) std::abort();
        progress = new (shared) Progress();
    }

    // In this process, to be looked at.
    int only() {
        folders.damage(damage_of(options.only));
        std::filesystem::current_path(folders.working_folder());
        return Sequence(options, options.only, *progress).run(options.calls);
    }

    int all() {
        const auto begin = std::chrono::steady_clock::now();
        const auto over = [&] {
            if (options.seconds == 0) return done >= options.count;
            return std::chrono::steady_clock::now() - begin >=
                   std::chrono::seconds(options.seconds);
        };
        for (; !over() && faults < 20; ++done)
            one(done);
        return summary();
    }

  private:
    // The data are damaged again from time to time.
    Chance damage_of(long number) const {
        constexpr long EACH = 50;
        return {options.seed + 1000003, static_cast<std::uint64_t>(number / EACH * EACH)};
    }

    void one(long number) {
        if (number % 50 == 0) folders.damage(damage_of(number));
        folders.empty_working_folder();
        std::fflush(stdout);
        const pid_t child = fork();
        if (child < 0) std::abort();
        if (child == 0) {
            std::filesystem::current_path(folders.working_folder());
            _exit(Sequence(options, number, *progress).run(options.calls));
        }
        int status = 0;
        while (waitpid(child, &status, 0) < 0)
            if (errno != EINTR) std::abort();
        if (WIFEXITED(status) && WEXITSTATUS(status) == FATAL_PATH) ++fatal_ends;
        std::string fault = fault_of(status, *progress);
        if (fault.empty() && !folders.untouched()) fault = "(or one before) left its folder";
        if (fault.empty()) return;
        ++faults;
        const std::string routine(routines()[progress->routine].name);
        std::printf("garbage: %s %s: --seed %llu --calls %ld --only %ld, call %d\n",
                    routine.c_str(), fault.c_str(), options.seed, options.calls, number,
                    progress->call);
    }

    int summary() {
        long calls = 0, least = progress->calls[0];
        for (std::size_t i = 0; i < routines().size(); ++i) {
            const Routine& routine = routines()[i];
            calls += progress->calls[i];
            least = std::min(least, progress->calls[i]);
            if (progress->calls[i] > 0 && routine.recipe.data() != nullptr) continue;
            std::printf("garbage: %s was not called\n", std::string(routine.name).c_str());
            ++faults;
        }
        std::printf(
            "garbage: seed %llu: %ld sequences of %zu routines, %ld calls, each routine %ld "
            "times or more; %ld ended by the fatal path; %d faults\n",
            options.seed, done, routines().size(), calls, least, fatal_ends, faults);
        return faults == 0 ? 0 : 1;
    }

    const Options options;
    const Folders folders;
    Progress* progress = nullptr;
    long done = 0, fatal_ends = 0;
    int faults = 0;
};

} // namespace

int main(int count, char** arguments) {
    Options options;
    std::vector<std::string> given(arguments + 1, arguments + count);
    bool understood = given.size() >= 2 && given.size() % 2 == 0;
    if (understood) {
        options.data = given[0];
        options.scratch = given[1];
    }
    for (std::size_t i = 2; understood && i < given.size(); i += 2) {
        const long long value = std::atoll(given[i + 1].c_str());
        if (given[i] == "--seed")
            options.seed = static_cast<unsigned long long>(value);
        else if (given[i] == "--count")
            options.count = static_cast<long>(value);
        else if (given[i] == "--calls")
            options.calls = static_cast<long>(value);
        else if (given[i] == "--seconds")
            options.seconds = static_cast<long>(value);
        else if (given[i] == "--only")
            options.only = static_cast<long>(value);
        else if (given[i] == "--limit")
            options.limit = static_cast<long>(value);
        else
            understood = false;
    }
    if (!understood) {
        std::fprintf(stderr, "garbage DATA SCRATCH [--seed N] [--count SEQUENCES] [--calls N] "
                             "[--seconds N] [--only SEQUENCE] [--limit SECONDS]\n");
        return 2;
    }
    Run run(options);
    return options.only >= 0 ? run.only() : run.all();
}
