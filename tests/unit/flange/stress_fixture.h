// Common ground of the stress, rating and cover tests: a flange with round numbers, and the report
// lines that a stage wrote, block by block.
#pragma once

#include "../report/report_fixture.h"

#include "flange/state.h"

#include <cmath>

namespace tarvane::stress_test {

using Lines = std::vector<std::string>;

inline constexpr const char* NO_MARKS = " 0 0 0 0 0 0";
inline constexpr const char* TITLE_MARKS = " 0 0 0 0 0 2";
inline constexpr const char* NOTE_MARKS = " 0 0 0 1 0 0";
inline constexpr const char* ERROR_MARKS = " 0 0 0 0 1 0";

class FlangeLinesTest : public report_test::ReportTest {
  protected:
    FlangeLinesTest() {
        RESET_SWITCHES();
        OPEN_LINE_STORE();
        report_to_store();
        weld_neck();
    }
    ~FlangeLinesTest() override { RESET_SWITCHES(); }

    // An integral flange; each number prints short.
    void weld_neck() {
        s = FLANGE_STATE{};
        s.code = ASME_VIII_1;
        s.type = INTEGRAL_WELD_NECK;
        s.A = 36.0f, s.B = 20.0f, s.t = 2.0f;
        s.go = 0.75f, s.g1 = 1.0f, s.h = 3.0f;
        s.f = 1.25f, s.lambda = 0.5f, s.beta = 1.5f;
        s.Y = 8.0f, s.Yr = 6.0f, s.Z = 1.75f, s.e = 0.25f, s.K = 1.5f;
        s.Mop = 200000.0f, s.Matm = 300000.0f, s.Mr = 40000.0f;
        s.Wm1 = 100000.0f, s.Wm2 = 120000.0f, s.W = 150000.0f, s.Ab = 8.0f;
        s.C = 30.0f, s.nBolts = 24, s.aNominal = 1.0f, s.dh = 1.125f;
        s.m = 3.0f, s.b = 0.25f, s.G = 25.0f, s.hg = 2.5f;
        s.P = s.Peq = 100.0f;
        s.Sfo = 20000.0f, s.Sfa = 20000.0f, s.Sb = 25000.0f, s.Sa = 25000.0f;
        s.Ehot = 29007598.0f;
        s.GiC = 21.0f;
        for (auto& row : s.ALLOWED)
            for (Real& limit : row)
                limit = 20000.0f;
    }

    // A flat head of the same size.
    void flat_head() {
        weld_neck();
        s.type = BLIND;
        s.h = s.go = s.g1 = 0.0f;
        s.f = s.lambda = s.beta = s.e = 0.0f;
    }

    // A factor of its own for every kind of value.
    static void tell_units_apart() {
        UNITS.thickness = 10.0f, UNITS.diameter = 100.0f;
        UNITS.pressure = 0.1f, UNITS.stress = 0.01f;
        UNITS.force = 2.0f, UNITS.area = 3.0f;
        UNITS.moment = 1.2f; // a tenth of inch-pounds
    }

    void start_again() {
        OPEN_LINE_STORE();
        report_to_store();
    }

    // The lines under a title, up to the next title or the end; nothing when the title is missing.
    static Lines under(const std::string& title) {
        Lines lines;
        for (Int k = 1; k <= LINE_COUNT; ++k) {
            if (stored(k) != title || stored_marks(k) != TITLE_MARKS) continue;
            for (Int j = k + 1; j <= LINE_COUNT && stored_marks(j) != TITLE_MARKS; ++j)
                lines.push_back(stored(j));
            return lines;
        }
        return lines;
    }

    static Lines titles() {
        Lines lines;
        for (Int k = 1; k <= LINE_COUNT; ++k)
            if (stored_marks(k) == TITLE_MARKS) lines.push_back(stored(k));
        return lines;
    }

    // The marks of the first line that begins with a text; empty when there is none.
    static std::string marks_of(const std::string& begin) {
        for (Int k = 1; k <= LINE_COUNT; ++k)
            if (stored(k).compare(0, begin.size(), begin) == 0) return stored_marks(k);
        return {};
    }

    FLANGE_STATE s;
};

// Stresses place by place.
class StressesTest : public FlangeLinesTest {
  protected:
    Real operating(StressPlace place) const { return s.STRESS[OPERATING][place]; }
    Real seating(StressPlace place) const { return s.STRESS[SEATING][place]; }

    void expect_stresses(const std::vector<double>& op, const std::vector<double>& seat) {
        ASSERT_EQ(op.size(), std::size_t{PLACES});
        ASSERT_EQ(seat.size(), std::size_t{PLACES});
        for (std::size_t place = 0; place < PLACES; ++place) {
            EXPECT_NEAR(s.STRESS[OPERATING][place], op[place], 1e-5 * std::fabs(op[place]))
                << "operating, place " << place;
            EXPECT_NEAR(s.STRESS[SEATING][place], seat[place], 1e-5 * std::fabs(seat[place]))
                << "seating, place " << place;
        }
    }
    void full_face(Int code, Int type = INTEGRAL_WELD_NECK) {
        weld_neck();
        s.code = code, s.type = type, s.fullFace = true;
    }
};

} // namespace tarvane::stress_test
