// The formula line renderer compared with snprintf of the same numbers, and the cost of a silent pass.
#include "report/channel.h"
#include "report/lines.h"
#include "report/renderer.h"

#include <benchmark/benchmark.h>

#include <cstdio>

namespace {

using namespace tarvane;

constexpr const char* FIVE_NUMBERS = " = @4 * @4 * @4 * @4 * @2  #";
constexpr const char* FIVE_FORMATS = " = %.4f * %.4f * %.4f * %.4f * %.2f";
constexpr Real VALUES[] = {3.1416f, 22.6875f, 1.2345f, 17.9061f, 20000.25f};

void set_gates(Int iwrite, Int iwrtfl, Int iout) {
    RESET_REPORT();
    IWRITE = iwrite;
    IWRTFL = iwrtfl;
    IOUT = iout;
}

void fill_once() {
    TEMPLATE = FIVE_NUMBERS;
    FILL_TEMPLATE(TEMPLATE, VALUES[0], VALUES[1], VALUES[2], VALUES[3], VALUES[4], 0.0f);
    benchmark::DoNotOptimize(TEMPLATE.data());
    benchmark::ClobberMemory();
}

void BM_fill_template(benchmark::State& state) {
    set_gates(1, 1, -1);
    for (auto _ : state)
        fill_once();
}
BENCHMARK(BM_fill_template);

void BM_snprintf(benchmark::State& state) {
    char line[121];
    for (auto _ : state) {
        std::snprintf(line, sizeof line, FIVE_FORMATS, static_cast<double>(VALUES[0]),
                      static_cast<double>(VALUES[1]), static_cast<double>(VALUES[2]),
                      static_cast<double>(VALUES[3]), static_cast<double>(VALUES[4]));
        benchmark::DoNotOptimize(line);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BM_snprintf);

void BM_fill_template_silent(benchmark::State& state) {
    set_gates(1, 0, -1);
    for (auto _ : state) {
        FILL_TEMPLATE(TEMPLATE, VALUES[0], VALUES[1], VALUES[2], VALUES[3], VALUES[4], 0.0f);
        benchmark::DoNotOptimize(TEMPLATE.data());
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BM_fill_template_silent);

// All stages of a formula line: filled, fitted, written to the store.
void BM_number_line(benchmark::State& state) {
    set_gates(1, state.range(0) == 0 ? 0 : 1, -1);
    for (auto _ : state) {
        NUMBER_LINE(FIVE_NUMBERS, {VALUES[0], VALUES[1], VALUES[2], VALUES[3], VALUES[4]});
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BM_number_line)->ArgName("reporting")->Arg(1)->Arg(0);

void BM_column_line(benchmark::State& state) {
    set_gates(1, state.range(0) == 0 ? 0 : 1, -1);
    for (auto _ : state) {
        COLUMN_LINE("Flange Outside Diameter", VALUES[1], Kind::diameter);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BM_column_line)->ArgName("reporting")->Arg(1)->Arg(0);

} // namespace

BENCHMARK_MAIN();
