// The report of a whole call.
#pragma once

#include "driver_fixture.h"

namespace tarvane::driver_test {

inline constexpr std::string_view NOTE = "TARVANE is a trademark of Kessendale Lab.";

class DriverReport : public DriverTest {
  protected:
    Lines run_to_file() {
        report_to_file();
        IWRITE = 1;
        flange.run();
        return file_lines();
    }
    // One more call, on the unit that is open.
    Lines again() {
        flange.run();
        return file_lines();
    }
};

} // namespace tarvane::driver_test
