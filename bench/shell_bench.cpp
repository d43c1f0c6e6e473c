// SHLINT through the C surface: a cylinder, and a thin torispherical head with Appendix 1-4(f), which
// looks up two moduli in their file.
#include "tarvane/tarvane.h"

#include <benchmark/benchmark.h>

namespace {

struct Element {
    std::int32_t element = TARVANE_CYLINDER;
    float P = 100.0f, D = 120.0f, t = 0.5f, L = 0.0f, r = 0.0f, Sy = 0.0f;
    float t_req = 0.0f, mawp = 0.0f, t_14f = 0.0f;
    std::int32_t status = 0;

    void calculate() {
        const float S = 20000.0f, E = 0.85f, c = 0.0f, zero = 0.0f, temp = 300.0f;
        const std::int32_t material = 1, none = 0;
        float map_nc = 0.0f, stress = 0.0f, raw = 0.0f, mawp_14f = 0.0f, map_nc_14f = 0.0f;
        float Sy_cold = Sy;
        SHLINT(&P, &S, &S, &E, &element, &D, &t, &c, &zero, &L, &r, &zero, nullptr, nullptr, &zero,
               &zero, &t_req, &mawp, &map_nc, &stress, &material, &temp, &none, &raw, &none, &t_14f,
               &Sy, &mawp_14f, &map_nc_14f, &status, &Sy_cold, &zero, &none, &zero, &zero, &zero,
               &zero, &zero, &zero, &none, "SA-516 70", 9);
    }
};

void BM_shlint_cylinder(benchmark::State& state) {
    Element e;
    for (auto _ : state) {
        e.calculate();
        benchmark::DoNotOptimize(&e);
        benchmark::ClobberMemory();
    }
    if (!(e.mawp > 0.0f)) state.SkipWithError("no result");
}
BENCHMARK(BM_shlint_cylinder);

void BM_shlint_thin_torispherical_head(benchmark::State& state) {
    Element e;
    e.element = TARVANE_TORISPHERICAL_HEAD;
    e.P = 40.0f, e.t = 0.2f, e.L = 120.0f, e.r = 7.2f, e.Sy = 33600.0f;
    for (auto _ : state) {
        e.calculate();
        benchmark::DoNotOptimize(&e);
        benchmark::ClobberMemory();
    }
    if (e.status != TARVANE_HEAD_THIN || !(e.t_14f > 0.0f))
        state.SkipWithError("Appendix 1-4(f) did not run");
}
BENCHMARK(BM_shlint_thin_torispherical_head);

} // namespace
