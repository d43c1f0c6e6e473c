#include "components/rounded_design.h"

#include "tarvane/tarvane.h"

#include <algorithm>
#include <cmath>

namespace tarvane::vessel {

namespace {

constexpr float WITHIN = 1.0e-3f; // of a step of the grid: it lies on it

class Rounding {
  public:
    Rounding(const FlangeInput& given, const FlangeOutcome& designed, bool metric)
        : flange(given), outcome(designed), steps(metric ? 25.4f : 16.0f) {}

    FlangeInput rounded() const;

  private:
    const FlangeInput& flange;
    const FlangeOutcome& outcome;
    float steps; // in an inch

    float up(float value) const { return std::ceil(value * steps - WITHIN) / steps; }
    float down(float value) const { return std::floor(value * steps + WITHIN) / steps; }
    // What was given, and not selected, stays as it is.
    float up(int designed, int given) const {
        const float value = outcome.result(designed);
        return value == flange.record[static_cast<std::size_t>(given)] ? value : up(value);
    }
};

FlangeInput Rounding::rounded() const {
    FlangeInput out = flange;
    const auto put = [&](int element, float value) {
        out.record[static_cast<std::size_t>(element)] = value;
    };
    put(TARVANE_KIND, TARVANE_ANALYSE);
    // Root areas cannot be selected: the engine took these bolts.
    if (static_cast<int>(flange.record[TARVANE_THREADS]) == TARVANE_SPECIAL_ROOT_AREA)
        put(TARVANE_THREADS, TARVANE_TEMA_THREADS);
    put(TARVANE_BOLTS, outcome.result(TARVANE_DESIGNED_BOLTS));
    put(TARVANE_a, outcome.result(TARVANE_DESIGNED_a));
    put(TARVANE_g1, up(TARVANE_DESIGNED_g1, TARVANE_g1));
    put(TARVANE_go, up(TARVANE_DESIGNED_go, TARVANE_go));
    put(TARVANE_h, up(TARVANE_DESIGNED_h, TARVANE_h));
    put(TARVANE_t, up(outcome.t_req));
    put(TARVANE_Fod, up(TARVANE_DESIGNED_Fod, TARVANE_Fod));
    put(TARVANE_Fid, outcome.result(TARVANE_DESIGNED_Fid));
    put(TARVANE_Go, up(TARVANE_DESIGNED_Go, TARVANE_Go));
    put(TARVANE_Gi, outcome.result(TARVANE_DESIGNED_Gi));

    // The bore of a reverse flange is the inside of its gasket.
    if (flange.type() == TARVANE_REVERSE_WELD_NECK)
        put(TARVANE_B,
            std::max(outcome.result(TARVANE_DESIGNED_Gi), outcome.result(TARVANE_DESIGNED_Fid)));

    // The outside diameter stays as far beyond the bolts as it was.
    const float C = outcome.result(TARVANE_DESIGNED_C), A = outcome.result(TARVANE_DESIGNED_A);
    const bool outside_given = A == flange.record[TARVANE_A];
    const bool full_face = outcome.result(TARVANE_DESIGNED_Go) == A;
    const float circle = outside_given && C < A ? down(C) : up(C);
    const float outside = outside_given ? A : up(circle + (A - C));
    put(TARVANE_C, circle);
    put(TARVANE_A, outside);
    if (full_face) {
        put(TARVANE_Go, outside);
        put(TARVANE_Fod, outside);
    }
    return out;
}

} // namespace

std::shared_ptr<const JudgedFlange>
round_design(const FlangeInput& flange, const FlangeOutcome& outcome, const Request& file) {
    const bool selected = outcome.found.status == TARVANE_CALCULATED && outcome.t_req > 0.0f &&
                          outcome.result(TARVANE_DESIGNED_C) > 0.0f;
    if (flange.analysis() != TARVANE_DESIGN || outcome.stopped || !selected) return nullptr;
    auto design = std::make_shared<JudgedFlange>();
    design->flange = Rounding(flange, outcome, file.units.metric()).rounded();
    design->outcome = run_flange(design->flange, without_report(file));
    return design;
}

} // namespace tarvane::vessel
