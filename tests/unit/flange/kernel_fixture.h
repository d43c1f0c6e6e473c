// A kernel run on the sample flange, without the driver around it.
#pragma once

#include "driver_fixture.h"

namespace tarvane::driver_test {

class KernelTest : public DriverTest {
  protected:
    // Record and arguments into the state.
    void prepare() {
        READ_FLANGE_RECORD(s, FLANGE_RECORD(flange.elements.data()), flange.text.data(), TEXT_SLOT);
        REWRITE_LOOSE_REVERSE(s);
        s.code = flange.code;
        s.reportKernel = flange.reportKernel;
        s.quietOverstress = flange.quietOverstress;
        s.rigidity = flange.rigidity;
        s.corrodedRigidity = flange.corrodedRigidity;
        s.standardFlange = flange.standardFlange;
        s.jointE = flange.jointE;
        s.element1 = truncated(flange.at(1));
        OPEN_LINE_STORE();
    }
    // The lines of a run on the state as it is, with the report open.
    Lines run() {
        LINE_COUNT = 0;
        IWRTFL = 1;
        if (IOUT != REPORT_UNIT) IOUT = -1;
        ANALYZE_FLANGE(s);
        return IOUT == REPORT_UNIT ? file_lines() : store_lines();
    }
    Lines prepared_run() {
        prepare();
        return run();
    }
    static Real worst_ratio(const FLANGE_STATE& x) {
        Real r = 999.0f;
        for (const auto& row : x.RATIO)
            for (Int i : {HUB, RADIAL, TANGENTIAL, AVERAGE})
                r = min(r, row[i]);
        return r;
    }
    void full_face() { flange.set({{12, 32.8f}, {14, 32.8f}, {15, 26.5f}}); }
    void cover() { flange.set({{2, 7.0f}, {8, 2.5f}}); }

    FLANGE_STATE s;
};

inline constexpr std::string_view
    SUMMARY = "Flange Stress Analysis Results:",
    REQUIRED = "Minimum Required Flange Thickness            ",
    OPERATING_MAWP = "Estimated M.A.W.P. ( Operating )             ",
    SEATING_MAWP = "Estimated M.A.W.P. ( Gasket Seating )        ",
    CENTER = "Reqd. Blind Flange Thickness at Center       ",
    EDGE = "Reqd. Blind Flange Thickness at Gasket       ",
    TEMA = "Min. Required Flange Thickness per TEMA      ",
    FINISHED = "Estimated Finished Weight of Flange at given Thk. ",
    FORGING = "Estimated Unfinished Weight of Forging at given Thk",
    NO_MAWP = "Note: MAWP Cannot be calculated due to Entered Mating Flange "
              "Loads.",
    OVERSTRESS = "Warning: Actual Flange Stress Exceeds Allowable!";

} // namespace tarvane::driver_test
