// Flat bolted covers: UG-34(c)(2) with UG-39(d)(2), PD 5500 3.5.5, EN 13445-3 10.5. Writes nothing.
#include "flange/blind.h"

namespace tarvane {

void BLIND_THICKNESS(const FLANGE_STATE& s, BLIND_CALL& call) {
    const Real d = call.d, Zf = call.Zf, W = call.W, ca = call.ca;
    const Real Pa = std::fabs(call.P);
    const Real Se = s.asme() ? call.S * s.jointE : call.S;
    const Real tn = call.tGiven - ca;
    const Real Wa = std::fabs(W);
    Real& tOut = call.tOut;
    Real& tEdge = call.tEdge;
    Real& pOut = call.pOut;
    tOut = tEdge = pOut = 0.0f;

    if (s.fullFace && s.en_or_pd()) {
        tOut = 0.41f * s.C * std::sqrt(Pa / Se) + ca;
        tEdge = tOut;
        pOut = Se * std::sqrt(tn / (0.41f * s.C)); // the root is not undone: P goes with its square
        return;
    }

    if (Zf > 0.999f && Zf < 1.001f) {
        const Real bt = 1.9f * Wa * s.hg * s.CF / (Se * cube(d));
        tOut = d * std::sqrt(Pa * s.Cf / Se + bt) + ca;
        tEdge = d * std::sqrt(bt) + ca;
        pOut = (square(tn / d) - bt) * Se / s.Cf;
        if (s.code == EN_13445 && Pa > 0.001f) {
            const Real A2 =
                0.309375f * square(d) + 3.0f * s.CF * (d / 4.0f + 2.0f * s.b * s.m) * (s.C - d);
            // W keeps its sign here, unlike in bt.
            const Real tBolt =
                std::sqrt(s.CF * 3.0f * (s.C - d) * W / s.Sa / (PI_IN_FIVE_DECIMALS * d)) + ca;
            const Real tPress = std::sqrt((Pa / Se) * A2) + ca;
            tOut = max(tBolt, tPress);
            pOut = square(tn) * Se / A2;
        }
        if (s.fullFace) {
            tOut = s.C * std::sqrt(Pa * s.Cf / Se) + ca;
            pOut = square(tn / d) * Se / s.Cf;
            tEdge = 0.0f;
        }
    } else {
        const Real bt = 6.0f * Wa * s.hg * s.CF / (Se * s.L * square(d));
        tOut = d * std::sqrt(Zf * Pa * s.Cf / Se + bt) + ca;
        tEdge = d * std::sqrt(bt) + ca;
        pOut = (square(tn / d) - bt) * Se / (s.Cf * Zf);
    }

    // An opening of UG-39(d)(2) doubles the stress, a pattern raises it by its own factor.
    if ((setup_truncated(50) > 0 && s.coverFactor == 1.0f) || s.coverFlag == 1) {
        tOut = (tOut - ca) * 1.41421402f + ca;
    } else if (s.coverFactor > 1.001f) {
        tOut = (tOut - ca) * s.coverFactor * 1.41421402f + ca;
    }
}

} // namespace tarvane
