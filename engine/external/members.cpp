#include "external/members.h"

#include "external/silence.h"
#include "external/state.h"
#include "external/stress_method.h"

namespace tarvane {

namespace {

Real FS_SILENT(Real F, Real Fic, Real Fy, Real& Fic_used) {
    const SILENCE no_lines;
    Fic_used = Fic;
    return CC2286_FS(F, Fic_used, Fy);
}

// Reduction of a column by its slenderness.
Real slenderness_reduction(Real Lambda) { return pow(1.0f - 0.74f * (Lambda - 0.15f), 0.3f); }

} // namespace

void CC2286_AXIAL(Real Do, Real L, Real t, Real Ey, Real Fy, Real Ku, Real Lu, Real& FSc,
                  Real& Lambda, Real& Fxa, Real& FSe, Real& Fxe, Real& Fca) {
    Fca = 1000000.0f;
    const Real Ro = Do / 2.0f;
    const Real Mx = L / std::sqrt(Ro * t);
    const Real Dot = Do / t;
    const Real rg = 0.25f * std::sqrt(square(Do) + square(Do - 2.0f * t));

    Real Ca = 1.0f;
    if (Mx <= 1.5f)
        Ca = 2.64f;
    else if (Mx < 15.0f)
        Ca = 3.13f / pow(Mx, 0.42f);
    const Real Cc = Dot < 1247.0f ? min(409.0f * Ca / (Dot + 389.0f), 0.9f) : 0.25f * Ca;

    // The factor of safety goes by the same stress that it divides.
    FSe = FS_SILENT(0.0f, Cc * Ey / Dot, Fy, Fxe);
    if (EXTERNAL.CarbonChart != 0) {
        Real Fxc = 0.5f * Fy;
        if (Dot <= 135.0f)
            Fxc = Fy;
        else if (Dot < 600.0f)
            Fxc = 466.0f * Fy / (Dot + 331.0f);
        FSc = FS_SILENT(0.0f, Fxc, Fy, Fxc);
        Fxa = min(Fxe / FSe, Fxc / FSc);
        Lambda = Ku * Lu * std::sqrt(Fxa * FSc / Ey) / (PI * rg);
    } else {
        Fxa = Fxe / FSe;
        Lambda = Ku * Lu * std::sqrt(Fxa * FSe / Ey) / (PI * rg);
    }

    if (Lambda > 0.15f && Ku * Lu / rg < 200.0f) {
        if (Lambda < 1.147f)
            Fca = Fxa * slenderness_reduction(Lambda);
        else
            Fca = 0.88f * Fxa / square(Lambda);
    }
}

void CC2286_BENDING(Real Do, Real t, Real Ey, Real Fy, Real FS, Real Fxa, Real& Fba) {
    const Real Dot = Do / t;
    const Real gamma = Fy * Dot / Ey;
    if (Dot >= 135.0f || EXTERNAL.CarbonChart == 0)
        Fba = Fxa;
    else if (Dot >= 100.0f)
        Fba = 466.0f * Fy / (FS * (Dot + 331.0f));
    else if (gamma >= 0.11f)
        Fba = 1.081f * Fy / FS;
    else
        Fba = (1.4f - 2.9f * gamma) * Fy / FS;
}

void CC2286_SHEAR(Real Do, Real L, Real t, Real Ey, Real Fy, Real& Fva, Real& Cv) {
    const Real Ro = Do / 2.0f;
    const Real Mx = L / std::sqrt(Ro * t);
    const Real Dot = Do / t;

    if (Mx <= 1.5f)
        Cv = 4.454f;
    else if (Mx < 26.0f)
        Cv = (9.64f / square(Mx)) * std::sqrt(1.0f + 0.0239f * cube(Mx));
    else if (Mx < 4.347f * Dot)
        Cv = 1.492f / std::sqrt(Mx);
    if (Mx >= 4.347f * Dot) Cv = 0.716f * std::sqrt(1.0f / Dot); // also below 26

    const Real AlphaV = Dot <= 500.0f ? 0.8f : 1.389f - 0.218f * log10(Dot);
    const Real Fve = AlphaV * Cv * Ey / Dot;
    const Real r = Fve / Fy;
    Real Eta = 0.6f / r;
    if (r <= 0.48f)
        Eta = 1.0f;
    else if (r < 1.7f)
        Eta = 0.43f / r + 0.1f;

    Real Fic = 0.0f;
    const Real FS = FS_SILENT(Fve, Eta * Fve, Fy, Fic);
    Fva = Eta * Fve / FS;
}

void CC2286_INTERACTION(Real P, Real D, Real t, Real Fa, Real Fb, Real Lambda, Real Fha, Real Fxa,
                        Real FSh, Real FSx, Real Fy, Real Ej, Real Fxa2, Real FSx2, Real& Fxha,
                        Real& Fhxa, Real& Fxha2) {
    const Real s = std::fabs(Fa) + std::fabs(Fb);
    const Real h = P * D / (2.0f * t * Ej);
    if (!(s > 0.0f && h > 0.0f && Lambda < 1.2f)) return;

    const Real C1 = (min(Fxa * FSx, Fxa2 * FSx2) + Fha * FSh) / Fy - 1.0f;
    const bool column = Lambda > 0.15f;
    const Real C2 = (column ? s - std::fabs(Fb) : s) / h;
    Fxha = 1.0f / std::sqrt(1.0f / square(Fxa) - C1 / (C2 * Fxa * Fha) +
                            1.0f / (square(C2) * square(Fha)));
    Fhxa = Fxha / C2;
    if (column) Fxha2 = Fxha * slenderness_reduction(Lambda) * (1.0f - Fb / Fy);
}

} // namespace tarvane
