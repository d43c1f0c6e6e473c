// Common ground of the shell tests: an element with its arguments and results, and moduli from a data
// file of the test's own.
#pragma once

#include "../data_folder.h"

#include "../edge_numbers.h"
#include "shell/shlint.h"

#include <cmath>

namespace tarvane::shell_test {

inline constexpr Real UNTOUCHED = -77.0f;

// Arguments of one call, inside dimensions and carbon steel unless noted; results hold UNTOUCHED
// until a call writes them.
struct Shell {
    Int Element = CYLINDER;
    Real P = 100.0f, Sa = 20000.0f, S = 20000.0f, E = 1.0f;
    Real D = 48.0f, t = 0.5f, c = 0.0f, k = 0.0f, L = 0.0f, r = 0.0f, alpha = 0.0f;
    Real C = 0.3f, D2 = 0.0f;
    Int Material = 1;
    Real Temp = 300.0f;
    Int Service = 0, Outside = 0;
    Real Sy = 0.0f, SyCold = 0.0f, u = 0.0f;
    Int Skip14f = 0;
    Real d1 = 0.0f, d2 = 0.0f, edge1 = 0.0f, edge2 = 0.0f, pitch = 0.0f, openingMaterial = 0.0f;
    Int CorrodedK = 0;
    std::string MaterialName = "SA-516 70";

    Real Treq = UNTOUCHED, MAWP = UNTOUCHED, MAPnc = UNTOUCHED, Stress = UNTOUCHED;
    Real TreqRaw = UNTOUCHED, T14f = UNTOUCHED, MAWP14f = UNTOUCHED, MAPnc14f = UNTOUCHED;
    Int Status14f = -77;

    SHLINT_ARGUMENTS arguments() {
        return {P,
                Sa,
                S,
                E,
                Element,
                D,
                t,
                c,
                k,
                L,
                r,
                alpha,
                C,
                D2,
                Treq,
                MAWP,
                MAPnc,
                Stress,
                Material,
                Temp,
                Service,
                TreqRaw,
                Outside,
                T14f,
                Sy,
                MAWP14f,
                MAPnc14f,
                Status14f,
                SyCold,
                u,
                Skip14f,
                d1,
                d2,
                edge1,
                edge2,
                pitch,
                openingMaterial,
                CorrodedK,
                MaterialName};
    }
    Shell& calculate() {
        SHLINT_ARGUMENTS a = arguments();
        SHLINT(a);
        return *this;
    }
    // The same element at another thickness, or under another pressure.
    Shell at_thickness(Real thickness) const {
        Shell other = *this;
        other.t = thickness;
        other.calculate();
        return other;
    }
};

inline Shell element(Int code) {
    Shell e;
    e.Element = code;
    if (code == ELLIPTICAL) e.k = 2.0f;
    if (code == TORISPHERICAL) e.L = 48.0f, e.r = 3.0f;
    if (code == CONE) e.alpha = 30.0f;
    return e;
}

// Moduli of carbon steel (1) and of an alloy whose modulus differs (20), in millions of psi.
class ShellTest : public data_test::DataTest {
  protected:
    ShellTest() {
        RESET_SHELLS();
        METRICCONSTANTS_mp_G_NMETRIC_CONSTANT = 0;
        write_file("system", "ElastAlp07.txt", moduli());
        IOUT = 0;
    }
    ~ShellTest() override {
        METRICCONSTANTS_mp_G_NMETRIC_CONSTANT = 0;
        RESET_CODE_CONSTANTS();
        RESET_SHELLS();
    }

    static std::string moduli() {
        std::string text = "[Emod]\n[Temp]   " + numbers("70 100 300 500");
        for (const auto& [reference, values] :
             {std::pair{1, "29.4 29.3 28.3 27.3"}, {20, "28.3 28.1 27.0 25.8"}}) {
            std::string row = std::to_string(reference) + " 0";
            row.resize(63, ' ');
            text += row + numbers(values);
        }
        return text + "[CoE]\n";
    }

  private:
    static std::string numbers(std::string values) {
        for (int i = 4; i < 36; ++i)
            values += " 0";
        return values + "\n";
    }
};

} // namespace tarvane::shell_test
