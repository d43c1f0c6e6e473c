// The cylinder above a flange: UG-27 and Appendix 1, VIII-2 4.3.3, PD 5500 3.5.1, EN 13445-3 7.4.2.
#include "flange/attached_shell.h"

#include "frame/switches.h"

namespace tarvane {

Real ATTACHED_SHELL_THICKNESS(Int code, Real P, Real D, Real ca, Real ce, Real S, Real E,
                              Int external, Real t, Real& mawpOut) {
    const bool outside = external == 1;
    const Real R = D / 2.0f + ca;
    const Real tc = t - ca - ce;
    const Real Do = D - 2.0f * ce;
    const Real Di = D + 2.0f * ca;

    switch (code) {
    case ASME_VIII_1: {
        const bool highPressure = P > 0.385f * S * E;
        if (outside) {
            if (tc > 0.25f * (D - 2.0f * (t - ca)) || highPressure) { // Appendix 1-2
                const Real Ro = Do / 2.0f;
                mawpOut = S * E * log(Ro / (D / 2.0f - t + ca));
                return Ro * (1.0f - exp(-P / (S * E))) + ca + ce;
            }
            mawpOut = S * E * tc / (Do / 2.0f - 0.4f * tc); // Appendix 1-1
            return P * Do / 2.0f / (S * E + 0.4f * P) + ca + ce;
        }
        if (tc > 0.5f * R || highPressure) {
            mawpOut = S * E * log((R + t - ca - ce) / R);
            return R * (exp(P / (S * E)) - 1.0f) + ca + ce;
        }
        mawpOut = S * E * tc / (R + 0.6f * tc); // UG-27(c)(1)
        return P * R / (S * E - 0.6f * P) + ce + ca;
    }
    case ASME_VIII_2:
        if (older_division_2()) {
            mawpOut = S * tc / (R + 0.5f * tc);
            return P * R / (S - 0.5f * P) + ca + ce;
        }
        mawpOut = S * E * log((2.0f * tc + 2.0f * R) / (2.0f * R));
        return R * (exp(P / (S * E)) - 1.0f) + ca + ce;
    case PD_5500:
        if (outside) {
            mawpOut = 2.0f * S * tc / (Do - tc);
            return P * Do / (2.0f * S + P) + ca + ce;
        }
        mawpOut = 2.0f * S * tc / (Di + tc);
        return P * Di / (2.0f * S - P) + ca + ce;
    default: // EN 13445, with its least thickness where there is no pressure
        if (outside) {
            mawpOut = 2.0f * S * E * tc / (Do - tc);
            if (P <= 0.0001f) return 0.001f * D + ca + ce;
            return P * Do / (2.0f * S * E + P) + ca + ce;
        }
        mawpOut = 2.0f * S * E * tc / (Di + tc);
        if (P <= 0.0001f) return 0.001f * (D + 2.0f * t) + ca + ce;
        return P * Di / (2.0f * S * E - P) + ca + ce;
    }
}

} // namespace tarvane
