// FLANGE_CALC through the C surface: one weld neck flange silent and with its report in the line
// store, and the search for its thickness.
#include "tarvane/tarvane.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string>

namespace {

using Record = std::array<float, TARVANE_RECORD_ELEMENTS>;

constexpr std::int32_t OFF = 0, ON = 1, LINE_STORE = -1;

// The integral flange of the published example E4.16.1, without a vessel.
Record flange(std::int32_t kind) {
    Record r{};
    float* const record = r.data();
    const auto put = [record](int element, float value) { TARVANE_AT(record, element) = value; };
    put(TARVANE_TYPE, TARVANE_INTEGRAL_WELD_NECK);
    put(TARVANE_KIND, static_cast<float>(kind));
    put(TARVANE_P, 135.0f);
    put(TARVANE_T_DESIGN, 650.0f);
    put(TARVANE_Sfo, 17800.0f);
    put(TARVANE_Sfa, 20000.0f);
    put(TARVANE_t, 1.4375f);
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
    return r;
}

void calculate(benchmark::State& state, std::int32_t kind, bool report) {
    RESET_ENGINE();
    SET_METRIC_CONSTANTS();
    const Record input = flange(kind);
    std::string text(TARVANE_TEXT_LENGTH, ' ');
    text.replace(TARVANE_TEXT_DESCRIPTION, 7, "E4.16.1");
    text[TARVANE_TEXT_MATING_LOADS] = 'N';
    const std::int32_t write_case = report ? 1 : 0, code = TARVANE_ASME_VIII_1, element = 0;
    const float joint_efficiency = 1.0f, operating = 135.0f;
    SET_IOUT(report ? &LINE_STORE : &OFF);
    float map_nc = 0, cold = 0, fresh = 0, mawp = 0, t_req = 0;
    for (auto _ : state) {
        Record record = input;
        std::int32_t rigidity = 0;
        const std::int32_t on = report ? ON : OFF;
        SET_IWRITE(&on);
        SET_IWRTFL(&on);
        FLANGE_CALC(record.data(), text.data(), TARVANE_TEXT_LENGTH, &on, &write_case, &map_nc,
                    &cold, &fresh, &mawp, &t_req, &ON, &rigidity, &code, &element, &element,
                    &joint_efficiency, &OFF, &OFF, &operating, &OFF, &OFF);
        benchmark::DoNotOptimize(mawp);
    }
    std::int32_t lines = 0;
    LINE_COUNT(&lines);
    if (!(mawp > 0.0f)) state.SkipWithError("no result");
    if (report != (lines > 100)) state.SkipWithError("the report is not what was asked for");
    state.counters["lines"] = static_cast<double>(lines);
}

void BM_flange_calc_silent(benchmark::State& state) { calculate(state, TARVANE_ANALYSE, false); }
BENCHMARK(BM_flange_calc_silent);

void BM_flange_calc_report_to_store(benchmark::State& state) {
    calculate(state, TARVANE_ANALYSE, true);
}
BENCHMARK(BM_flange_calc_report_to_store);

void BM_flange_calc_thickness_silent(benchmark::State& state) {
    calculate(state, TARVANE_THICKNESS, false);
}
BENCHMARK(BM_flange_calc_thickness_silent);

} // namespace
