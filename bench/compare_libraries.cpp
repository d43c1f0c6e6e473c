// The same FLANGE_CALC by two builds of the library, in turn: bench/compare builds them and runs this.
//
//   compare_libraries OLD NEW
//
// Times are CPU times, the least of many rounds; each ratio is of old to new.
#include "library.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <string>

namespace {

using calls::Library;
using Record = std::array<float, TARVANE_RECORD_ELEMENTS>;

constexpr std::int32_t OFF = 0, ON = 1, LINE_STORE = -1;
constexpr int SIDES = 2, TYPES = 9, CODES = 4, ROUNDS = 30;
constexpr double ROUND_NS = 1.0e6; // of one side

// A flange on the shell of the published example E4.16.1, made into every type.
Record flange(int type) {
    Record r{};
    float* const record = r.data();
    const auto put = [record](int element, float value) { TARVANE_AT(record, element) = value; };
    put(TARVANE_ELEMENT, 1.0f);
    put(TARVANE_TYPE, static_cast<float>(type));
    put(TARVANE_KIND, TARVANE_ANALYSE);
    put(TARVANE_P, 135.0f);
    put(TARVANE_T_DESIGN, 650.0f);
    put(TARVANE_Sfo, 17800.0f);
    put(TARVANE_Sfa, 20000.0f);
    put(TARVANE_t, type == TARVANE_BLIND ? 2.5f : 1.4375f);
    put(TARVANE_B, 26.25f);
    put(TARVANE_A, 32.875f);
    put(TARVANE_Fod, 30.0f);
    put(TARVANE_Fid, 29.0f);
    put(TARVANE_Go, 30.0f);
    put(TARVANE_Gi, 29.0f);
    put(TARVANE_go, 0.3125f);
    put(TARVANE_g1, 0.6875f);
    put(TARVANE_h, 2.125f);
    put(TARVANE_Sb, 25000.0f);
    put(TARVANE_Sa, 25000.0f);
    put(TARVANE_C, 31.25f);
    put(TARVANE_a, 0.75f);
    put(TARVANE_THREADS, TARVANE_TEMA_THREADS);
    put(TARVANE_BOLTS, 44.0f);
    put(TARVANE_m, 3.75f);
    put(TARVANE_y, 7600.0f);
    put(TARVANE_SKETCH, TARVANE_SKETCH_2);
    put(TARVANE_COLUMN, 2.0f);
    put(TARVANE_w, 0.125f);
    put(TARVANE_MATERIAL_CLASS, 1.0f);
    put(TARVANE_SHELL_ID, 26.25f);
    put(TARVANE_SHELL_STRESS, 17800.0f);
    put(TARVANE_SHELL_STRESS_COLD, 20000.0f);
    put(TARVANE_SHELL_THICKNESS, 0.3125f);
    if (type == TARVANE_LAP_JOINT) {
        put(TARVANE_LjID, 27.0f);
        put(TARVANE_LjOD, 29.5f);
    }
    if (type == TARVANE_REVERSE_WELD_NECK || type == TARVANE_LOOSE_REVERSE) {
        put(TARVANE_B, 20.0f);
        put(TARVANE_t, 4.0f);
    }
    return r;
}

struct Case {
    std::int32_t code;
    int type;
    bool reported, reset;
};

struct Answer {
    Record record;
    float results[5] = {};
    std::int32_t lines = 0;

    bool operator==(const Answer& other) const {
        return std::memcmp(record.data(), other.record.data(), sizeof record) == 0 &&
               std::memcmp(results, other.results, sizeof results) == 0 && lines == other.lines;
    }
};

void begin(const Library& library, const Case& c) {
    library.RESET_ENGINE();
    library.SET_METRIC_CONSTANTS();
    library.SET_MODULE_CODE(&c.code);
    library.SET_IOUT(c.reported ? &LINE_STORE : &OFF);
}

void calculate(const Library& library, const Case& c, const Record& input, Answer& answer) {
    static const std::string blank(TARVANE_TEXT_LENGTH, ' ');
    std::string text = blank;
    text[TARVANE_TEXT_MATING_LOADS] = 'N';
    const std::int32_t on = c.reported ? ON : OFF;
    const float joint_efficiency = 1.0f, operating = 135.0f;
    std::int32_t rigidity = 0;
    answer.record = input;
    if (c.reset) begin(library, c);
    library.SET_IWRITE(&on);
    library.SET_IWRTFL(&on);
    float* const r = answer.results;
    library.FLANGE_CALC(answer.record.data(), text.data(), TARVANE_TEXT_LENGTH, &on, &on, &r[0],
                        &r[1], &r[2], &r[3], &r[4], &ON, &rigidity, &c.code, &ON, &ON,
                        &joint_efficiency, &OFF, &OFF, &operating, &OFF, &OFF);
    library.LINE_COUNT(&answer.lines);
}

double cpu_ns() {
    struct timespec now;
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1.0e9 + static_cast<double>(now.tv_nsec);
}

double time_of(const Library& library, const Case& c, const Record& input, int count) {
    Answer answer;
    const double start = cpu_ns();
    for (int i = 0; i < count; ++i)
        calculate(library, c, input, answer);
    return (cpu_ns() - start) / count;
}

struct Times {
    double of[SIDES] = {};

    double ratio() const { return of[0] / of[1]; }
    Times& operator+=(const Times& other) {
        for (int side = 0; side < SIDES; ++side)
            of[side] += other.of[side];
        return *this;
    }
};

// The host says where the data are: beside each library. If it did not, RESET_ENGINE would forget the
// folders that were looked up.
void give_folders(const Library& library, std::string folder) {
    const std::size_t slash = folder.rfind('/');
    folder = slash == std::string::npos ? "." : folder.substr(0, slash);
    const auto length = static_cast<std::int32_t>(folder.size());
    library.SET_MODULE_DIR(folder.c_str(), length);
    library.SET_SYSTEM_DIR(folder.c_str(), length);
}

bool all_agree = true;

Times times_of(const Library (&libraries)[SIDES], const Case& c) {
    const Record input = flange(c.type);
    Answer answers[SIDES];
    int counts[SIDES];
    Times least;
    for (int side = 0; side < SIDES; ++side) {
        begin(libraries[side], c);
        calculate(libraries[side], c, input, answers[side]);
        least.of[side] = time_of(libraries[side], c, input, 20);
        counts[side] = std::max(10, static_cast<int>(ROUND_NS / least.of[side]));
    }
    const bool report_as_asked = c.reported == (answers[0].lines > 20);
    if (!(answers[0] == answers[1]) || !report_as_asked) {
        std::printf("code %d, type %d: %s\n", static_cast<int>(c.code), c.type,
                    report_as_asked ? "the libraries disagree" : "no report as asked for");
        all_agree = false;
    }
    for (int round = 0; round < ROUNDS; ++round)
        for (int side = 0; side < SIDES; ++side)
            least.of[side] =
                std::min(least.of[side], time_of(libraries[side], c, input, counts[side]));
    return least;
}

void print(const Times& times) {
    std::printf(" %9.2f %9.2f %7.2f", times.of[0] / 1000.0, times.of[1] / 1000.0, times.ratio());
}

} // namespace

int main(int count, char** arguments) {
    if (count != 1 + SIDES) {
        std::fprintf(stderr, "usage: compare_libraries OLD NEW\n");
        return 2;
    }
    const Library libraries[SIDES] = {calls::loaded_library(arguments[1]),
                                      calls::loaded_library(arguments[2])};
    for (int side = 0; side < SIDES; ++side)
        give_folders(libraries[side], arguments[1 + side]);
    std::printf("microseconds a call         silent                      reported"
                "                RESET_ENGINE + silent\n"
                "code type        old       new   ratio       old       new   ratio"
                "       old       new   ratio   new, to warm\n");
    for (std::int32_t code = 1; code <= CODES; ++code) {
        Times totals[3];
        const auto row = [&](const char* name, const Times(&times)[3]) {
            std::printf("%4d %4s", static_cast<int>(code), name);
            for (const Times& part : times)
                print(part);
            std::printf(" %14.2f\n", times[2].of[1] / times[0].of[1]);
            std::fflush(stdout);
        };
        for (int type = 1; type <= TYPES; ++type) {
            const Times times[3] = {times_of(libraries, {code, type, false, false}),
                                    times_of(libraries, {code, type, true, false}),
                                    times_of(libraries, {code, type, false, true})};
            row(std::to_string(type).c_str(), times);
            for (int i = 0; i < 3; ++i)
                totals[i] += times[i];
        }
        row("all", totals);
    }
    return all_agree ? 0 : 1;
}
