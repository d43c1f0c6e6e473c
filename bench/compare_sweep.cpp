// Sweeps of flanges by tarvane_sweep against silent calls of FLANGE_CALC from a host with the same inputs: thickness
// and pressure, for each type. The calls are made whenever the sweep tells its progress, so that both have the same
// noise.
//
//   compare_sweep [ROWS]
//
// Times are CPU times. Status 1: a row of the two differs.
#include "tarvane/tarvane.h"
#include "tarvane/vessel.h"

#include <array>
#include <bit>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <random>
#include <string>
#include <vector>

namespace {

using Record = std::array<float, TARVANE_RECORD_ELEMENTS>;

constexpr std::int32_t OFF = 0, ON = 1, CODE = TARVANE_ASME_VIII_1;
constexpr int TYPES = 9;

// A number of the request and of the record.
struct Input {
    const char* key;
    int element;
    float value;
};

// A flange on the shell of the published example E4.16.1, made into every type.
std::vector<Input> flange(int type) {
    const bool reverse = type == TARVANE_REVERSE_WELD_NECK || type == TARVANE_LOOSE_REVERSE;
    std::vector<Input> inputs{{"type", TARVANE_TYPE, static_cast<float>(type)},
                              {"kind", TARVANE_KIND, TARVANE_ANALYSE},
                              {"T", TARVANE_T_DESIGN, 650.0f},
                              {"Sfo", TARVANE_Sfo, 17800.0f},
                              {"Sfa", TARVANE_Sfa, 20000.0f},
                              {"B", TARVANE_B, reverse ? 20.0f : 26.25f},
                              {"A", TARVANE_A, 32.875f},
                              {"Fod", TARVANE_Fod, 30.0f},
                              {"Fid", TARVANE_Fid, 29.0f},
                              {"Go", TARVANE_Go, 30.0f},
                              {"Gi", TARVANE_Gi, 29.0f},
                              {"g0", TARVANE_go, 0.3125f},
                              {"g1", TARVANE_g1, 0.6875f},
                              {"h", TARVANE_h, 2.125f},
                              {"Sb", TARVANE_Sb, 25000.0f},
                              {"Sa", TARVANE_Sa, 25000.0f},
                              {"C", TARVANE_C, 31.25f},
                              {"a", TARVANE_a, 0.75f},
                              {"bolting", TARVANE_THREADS, TARVANE_TEMA_THREADS},
                              {"n", TARVANE_BOLTS, 44.0f},
                              {"m", TARVANE_m, 3.75f},
                              {"y", TARVANE_y, 7600.0f},
                              {"facing", TARVANE_SKETCH, TARVANE_SKETCH_2},
                              {"column", TARVANE_COLUMN, 2.0f},
                              {"w", TARVANE_w, 0.125f},
                              {"material_class", TARVANE_MATERIAL_CLASS, 1.0f},
                              {"Dshell", TARVANE_SHELL_ID, 26.25f},
                              {"Sn", TARVANE_SHELL_STRESS, 17800.0f},
                              {"Sna", TARVANE_SHELL_STRESS_COLD, 20000.0f},
                              {"tShell", TARVANE_SHELL_THICKNESS, 0.3125f}};
    if (type == TARVANE_LAP_JOINT) {
        inputs.push_back({"LjID", TARVANE_LjID, 27.0f});
        inputs.push_back({"LjOD", TARVANE_LjOD, 29.5f});
    }
    return inputs;
}

std::string request(const std::vector<Input>& inputs) {
    std::string text = R"({"tarvane": 1, "flange": [{"rigidity": true)";
    for (const Input& input : inputs) {
        char number[64];
        std::snprintf(number, sizeof number, ", \"%s\": %.9g", input.key,
                      static_cast<double>(input.value));
        text += number;
    }
    return text + "}]}";
}

Record record_of(const std::vector<Input>& inputs) {
    Record record{};
    float* const elements = record.data();
    for (const Input& input : inputs)
        TARVANE_AT(elements, input.element) = input.value;
    TARVANE_AT(elements, TARVANE_ELEMENT) = 1.0f;
    TARVANE_AT(elements, TARVANE_DENSITY) = 0.283599f; // the default of the request
    return record;
}

// What both find in a row; the sweep the check that governs, too.
struct Row {
    double mawp = 0.0, map_nc = 0.0, J = 0.0;

    static bool same(double a, double b) {
        return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b) ||
               (std::isnan(a) && std::isnan(b));
    }
    bool operator==(const Row& other) const {
        return same(mawp, other.mawp) && same(map_nc, other.map_nc) && same(J, other.J);
    }
};

double cpu_seconds() {
    struct timespec now;
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1.0e-9;
}

// ---- calls of a host ---------------------------------------------------------------------------------------

// After another flange of the host, once.
void set_up_calls() {
    const std::int32_t code = CODE;
    RESET_ENGINE();
    SET_MODULE_CODE(&code);
    SET_METRIC_CONSTANTS();
    SET_IOUT(&OFF);
}

std::string text_of_flange() {
    std::string text(TARVANE_TEXT_LENGTH, ' ');
    text[TARVANE_TEXT_USE_CORROSION] = 'Y';
    for (const int flag : {TARVANE_TEXT_EXTERNAL_LOADS, TARVANE_TEXT_MATING_LOADS,
                           TARVANE_TEXT_CHANNEL_COVER, TARVANE_TEXT_PARTITION})
        text[static_cast<std::size_t>(flag)] = 'N';
    return text;
}

double number(float value) {
    return value == TARVANE_NO_VALUE || !std::isfinite(value) ? std::nan("")
                                                              : static_cast<double>(value);
}

Row call(const Record& base, const std::string& base_text, double t, double P) {
    Record record = base;
    std::string text = base_text;
    float* const elements = record.data();
    TARVANE_AT(elements, TARVANE_t) = static_cast<float>(t);
    TARVANE_AT(elements, TARVANE_P) = static_cast<float>(P);
    const float joint_efficiency = 1.0f, operating = static_cast<float>(P);
    const std::int32_t code = CODE, element = 1;
    std::int32_t rigidity = 1;
    float mawp = 0, map_nc = 0, t_req = 0, fresh = 0, cold = 0;
    FLANGE_CALC(record.data(), text.data(), TARVANE_TEXT_LENGTH, &ON, &OFF, &map_nc, &cold, &fresh,
                &mawp, &t_req, &OFF, &rigidity, &code, &element, &element, &joint_efficiency, &OFF,
                &OFF, &operating, &OFF, &OFF);
    const TARVANE_FLANGE_RESULTS& found = *GETFLANGERESULTS();
    const float J = found.J_given[TARVANE_OPERATING];
    return {number(mawp), number(map_nc), J == 0.0f ? std::nan("") : number(J)};
}

// ---- sweeps ------------------------------------------------------------------------------------------------

constexpr const char* INPUTS[] = {"flange[0].t", "flange[0].P", nullptr};
constexpr const char* OUTPUTS[] = {"flange[0].results.mawp",
                                   "flange[0].results.map_nc",
                                   "flange[0].results.J_operating",
                                   "flange[0].ratio",
                                   "flange[0].governing",
                                   "flange[0].passed",
                                   nullptr};
constexpr std::size_t NUMBERS = std::size(OUTPUTS) - 1;

// ---- both --------------------------------------------------------------------------------------------------

struct Times {
    double calls = 0.0, sweep = 0.0;
    std::size_t rows = 0, passed = 0, differ = 0;

    Times& operator+=(const Times& other) {
        calls += other.calls;
        sweep += other.sweep;
        rows += other.rows;
        passed += other.passed;
        differ += other.differ;
        return *this;
    }
    void print(const char* name) const {
        const double us = 1.0e6 / static_cast<double>(rows);
        std::printf("%4s %9zu %11.2f %11.2f %8.2f %7.0f %%\n", name, rows, calls * us, sweep * us,
                    sweep / calls, 100.0 * static_cast<double>(passed) / static_cast<double>(rows));
        std::fflush(stdout);
    }
};

[[noreturn]] void give_up(const char* words, const char* why) {
    std::fprintf(stderr, "compare_sweep: %s: %s\n", words, why);
    std::exit(2);
}

// The rows of one type.
struct Rows {
    Record record;
    std::string text = text_of_flange();
    std::vector<double> x;
    std::vector<Row> called = {};
    double seconds = 0.0; // of the calls

    // Those up to `done`.
    void call_up_to(std::size_t done) {
        const double start = cpu_seconds();
        for (std::size_t i = called.size(); i < done; ++i)
            called.push_back(call(record, text, x[2 * i], x[2 * i + 1]));
        seconds += cpu_seconds() - start;
    }
};

std::int32_t progress(void* user, std::int64_t done, std::int64_t) {
    static_cast<Rows*>(user)->call_up_to(static_cast<std::size_t>(done));
    return 0;
}

Times times_of(TARVANE_VESSEL* vessel, int type, std::size_t count) {
    const std::vector<Input> inputs = flange(type);
    const std::string json = request(inputs);
    Rows rows{.record = record_of(inputs), .x = std::vector<double>(2 * count)};
    rows.called.reserve(count);
    const bool thick = type == TARVANE_REVERSE_WELD_NECK || type == TARVANE_LOOSE_REVERSE;
    std::mt19937 chance(static_cast<unsigned>(type));
    std::uniform_real_distribution<double> t(thick ? 3.0 : 1.0, thick ? 6.0 : 4.0), P(50.0, 300.0);
    for (std::size_t i = 0; i < count; ++i) {
        rows.x[2 * i] = t(chance);
        rows.x[2 * i + 1] = P(chance);
    }
    std::vector<double> y(NUMBERS * count);
    std::vector<std::int32_t> fault(count);
    set_up_calls();
    call(rows.record, rows.text, rows.x[0], rows.x[1]); // reads the data files

    const double start = cpu_seconds();
    const std::int32_t status =
        tarvane_sweep(vessel, json.c_str(), INPUTS, OUTPUTS, static_cast<std::int64_t>(count),
                      rows.x.data(), y.data(), fault.data(), progress, &rows, nullptr);
    Times times{
        .calls = rows.seconds, .sweep = cpu_seconds() - start - rows.seconds, .rows = count};
    if (status != TARVANE_OK) give_up("tarvane_sweep", tarvane_last_error(vessel));
    for (std::size_t i = 0; i < count; ++i) {
        const double* const found = &y[NUMBERS * i];
        if (fault[i] != 0) give_up("a row has a fault", tarvane_last_error(vessel));
        times.differ += rows.called[i] == Row{found[0], found[1], found[2]} ? 0 : 1;
        times.passed += found[5] == 1.0 ? 1 : 0;
    }
    return times;
}

} // namespace

int main(int count, char** arguments) {
    const std::size_t rows = count > 1 ? std::strtoul(arguments[1], nullptr, 10) : 100000;
    if (count > 2 || rows < TYPES) give_up("usage", "compare_sweep [ROWS]");
    TARVANE_VESSEL* vessel = nullptr;
    if (tarvane_open(TARVANE_VESSEL_ABI, nullptr, &vessel) != TARVANE_OK)
        give_up("tarvane_open", tarvane_last_error(vessel));
    std::printf("%-4s %9s %11s %11s %8s %9s\n", "type", "rows", "calls, us", "sweep, us", "ratio",
                "passed");
    Times all;
    for (int type = 1; type <= TYPES; ++type) {
        const std::size_t before = rows * static_cast<std::size_t>(type - 1) / TYPES,
                          after = rows * static_cast<std::size_t>(type) / TYPES;
        const Times times = times_of(vessel, type, after - before);
        times.print(std::to_string(type).c_str());
        all += times;
    }
    all.print("all");
    tarvane_close(vessel);
    if (all.differ == 0) return 0;
    std::printf("%zu rows of the sweeps and of the calls differ\n", all.differ);
    return 1;
}
