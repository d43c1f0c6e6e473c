// Common ground of the external pressure tests: charts and moduli of the tests' own, elements with
// plain dimensions, and SHLEXT as the host calls it.
#pragma once

#include "../data_folder.h"

#include "external/shlext.h"
#include "external/state.h"

#include <cmath>
#include <cstring>

namespace tarvane::external_test {

using data_test::Line;

// The curves are continuous at the end of the straight line.
inline constexpr const char* CHARTS = "[CS-2]\n"
                                      "300 0 29.0 0.0005 7250 0.1 11506 15006 4000 500\n"
                                      "700 0 25.0 0.0004 5000 0.1 9318.8 12818.8 4000 500\n"
                                      "\n"
                                      "[CS-3]\n"
                                      "300.4 0 29.0 0.0005 7250 0.1 20000 15006 4000 500\n"
                                      "300.6 0 29.0 0.0005 7250 0.1 30000 15006 4000 500\n"
                                      "\n"
                                      "[NFA-11]\n"
                                      "150.14 0 10.0 0.0005 2500 0.1 8000 10256 4000 500\n"
                                      "150.18 0 10.0 0.0005 2500 0.1 8000 10256 4000 500\n"
                                      "\n"
                                      "[HA-1]\n"
                                      "100 0 28.0 0.0003 4200 0.1 8586.2 12086.2 4000 500\n"
                                      "400 0 26.0 0.0003 3900 0.1 8286.2 11786.2 4000 500\n"
                                      "\n"
                                      "[END]\n";

constexpr double wide(Real x) { return static_cast<double>(x); }

// A call with its chart field; what SHLEXT returns starts as marked values.
struct Vessel : SHLEXT_CALL {
    char field[13] = "CS-2        ";

    explicit Vessel(Int kind, std::string_view chart = "CS-2") {
        std::memset(field, ' ', 12);
        std::memcpy(field, chart.data(), std::min<std::size_t>(chart.size(), 12));
        Element = kind;
        P = 15.0f, Temp = 300.0f;
        D = 96.0f, t = 0.5f, c = 0.125f;
        k = 2.0f, L = 96.0f, Alpha = 30.0f, Length = 60.0f;
        Dsmall = 48.0f, ConeLength = 41.5692f;
        MAEP = -11.0f, Tca = -12.0f, Slen = -13.0f, Do = -14.0f;
        FactorA = -15.0f, FactorB = -16.0f, Fha = -17.0f, FailCA = -18.0f;
        Print = 1;
        S = 17500.0f, Fy = 33600.0f;
        Material = 1;
    }
    Vessel& run() {
        Chart = field;
        SHLEXT(*this);
        return *this;
    }
};

class ExternalTest : public data_test::DataTest {
  protected:
    ExternalTest() {
        RESET_EXTERNAL();
        use_charts(CHARTS);
        write_file("library", "ElastAlp07.txt", moduli());
        SETUP[0].whole = ASME_VIII_1;
        SETUP[47].real = 1.0f;
    }
    ~ExternalTest() override { RESET_EXTERNAL(); }

    void use_charts(const std::string& text) {
        write_file("system", "ExtChartData.txt", text);
        RESET_MATERIALS();
    }

    // Reference 1: 28.3 million psi at 300 degrees.
    static std::string moduli() {
        std::string text = "[Emod]\n[Temp]   ";
        for (const char* T : {"70", "300", "700"})
            text += std::string(" ") + T;
        for (int i = 3; i < 36; ++i)
            text += " 0";
        std::string row = "1 0";
        row.resize(19, ' ');
        row += "TM-1    Carbon steel";
        row.resize(63, ' ');
        text += "\n" + row;
        for (const char* E : {"29.4", "28.3", "25.5"})
            text += std::string(" ") + E;
        for (int i = 3; i < 36; ++i)
            text += " 0";
        return text + "\n[CoE]\n";
    }

    // Silent, for many calls in a row.
    static Vessel quiet(Vessel element) {
        element.Print = 0;
        return element.run();
    }

    static void by_buckling_stress() { GLOBALS_mp_G_NUSE_CASE2286 = 1; }

    // The report of the last call, without its marks.
    static std::vector<std::string> texts() {
        std::vector<std::string> all;
        for (const Line& line : reported())
            all.push_back(line.text);
        return all;
    }
};

} // namespace tarvane::external_test
