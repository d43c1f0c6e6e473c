// What the iterations of the driver are compared with.
#pragma once

#include "driver_fixture.h"

namespace tarvane::driver_test {

class Loops : public DriverTest {
  protected:
    // A kernel run by hand, silent, on the record as it is with a change of the state.
    template <typename Change>
    FLANGE_STATE by_hand(Change change) {
        FLANGE_STATE s;
        s.code = flange.code;
        s.jointE = flange.jointE;
        s.element1 = truncated(flange.at(1));
        s.rigidity = flange.rigidity;
        s.reportKernel = 1;
        READ_FLANGE_RECORD(s, FLANGE_RECORD(flange.elements.data()), flange.text.data(), TEXT_SLOT);
        change(s);
        const Int gate = IWRTFL;
        IWRTFL = 0;
        ANALYZE_FLANGE(s);
        IWRTFL = gate;
        return s;
    }
    static void as_new(FLANGE_STATE& s) {
        s.ci = s.ct = 0.0f;
        s.Sfo = s.Sfa;
        s.Sb = s.Sa;
    }
    static Real least(const FLANGE_STATE& s, std::initializer_list<StressRow> rows) {
        Real r = 1.0e9f;
        for (const StressRow row : rows)
            for (const Real ratio : s.RATIO[row])
                r = min(r, ratio);
        return r;
    }
};

} // namespace tarvane::driver_test
