// SHLEXT through the C surface, silent: a cylinder by the charts and by buckling stress. The chart file
// is one of the program's own, so that the lookup is measured without the data of an installation.
#include "tarvane/tarvane.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

// A folder with one chart, deleted when the program ends.
struct ChartFolder {
    std::filesystem::path path = std::filesystem::temp_directory_path() / "tarvane_external_bench";
    ChartFolder() {
        std::filesystem::create_directories(path);
        std::ofstream(path / "ExtChartData.txt") << "[HA-1]\n"
                                                    "100 0 28.0 3e-4 4200 0.1 8586 12086 4000 500\n"
                                                    "400 0 26.0 3e-4 3900 0.1 8286 11786 4000 500\n"
                                                    "\n[END]\n";
    }
    ~ChartFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }
};

void cylinder(benchmark::State& state, std::int32_t case_2286) {
    const ChartFolder folder;
    const std::string path = folder.path.string();
    RESET_ENGINE();
    SET_SYSTEM_DIR(path.data(), static_cast<std::int32_t>(path.size()));
    GETSETUP()[0].whole = TARVANE_ASME_VIII_1;
    GLOBALS_mp_G_NUSE_CASE2286 = case_2286;
    const std::int32_t element = TARVANE_CYLINDER, off = 0;
    const float p = 15.0f, temp = 300.0f, d = 96.0f, t = 0.5f, c = 0.125f, zero = 0.0f;
    const float length = 60.0f, s = 17500.0f, fy = 30000.0f;
    char chart[] = "HA-1        ";
    float maep = 0, tca = 0, slen = 0, d_o = 0, a = 0, b = 0, fha = 0, fail_ca = 0;
    for (auto _ : state) {
        SHLEXT(&p, &temp, chart, 12, &element, &d, &t, &c, &zero, &zero, &zero, &length, &maep,
               &tca, &slen, &d_o, &a, &b, &off, &zero, &zero, &off, &s, &zero, &fy, &off, &fha,
               &fail_ca, &off);
        benchmark::DoNotOptimize(slen);
    }
    if (!(maep > 15.0f && slen > length)) state.SkipWithError("no result");
    if ((fha > 0.0f) != (case_2286 == 1)) state.SkipWithError("not the method that was asked for");
}

void BM_shlext_charts(benchmark::State& state) { cylinder(state, 0); }
BENCHMARK(BM_shlext_charts);

void BM_shlext_buckling_stress(benchmark::State& state) { cylinder(state, 1); }
BENCHMARK(BM_shlext_buckling_stress);

} // namespace
