#include "external/chart_method.h"

namespace tarvane {

Real FACTOR_B(Real A, const CHART_CURVE& curve) {
    if (!(A > curve.Aelastic)) return A * curve.E * 1.0E+6f * 0.5f;
    if (A > curve.Amax) return curve.Bmax;
    const Real x = std::log10(A);
    return min(curve.c0 + curve.c1 * x + curve.c2 * square(x), curve.Bmax);
}

} // namespace tarvane
