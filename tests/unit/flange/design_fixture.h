// Common ground of the design tests: a system directory with a few bolts in it.
#pragma once

#include "../edge_numbers.h"
#include "bolting/bolt_tables.h"
#include "flange/design.h"
#include "host/services.h"
#include "stage_fixture.h"

#include <filesystem>
#include <fstream>
#include <unistd.h>

namespace tarvane::design_test {

// Bolts of the tests: diameter, root area, Bmin, Rmin, Rmin of rings, Emin, corners, wrench.
inline constexpr char BOLTS[] = "[TEMA IMPERIAL]\n"
                                "0 0 0 0 0 0 0 0 0\n"
                                "0.500 0.126 1.2500 0.8125 0.7500 0.6250 0.969 1.5000 0\n"
                                "0.625 0.202 1.5000 0.9375 0.8750 0.7500 1.175 1.7500 0\n"
                                "0.750 0.302 1.7500 1.1250 1.0000 0.8125 1.383 2.0625 0\n"
                                "1.000 0.551 2.2500 1.3750 1.2500 1.0625 1.796 2.6250 0\n"
                                "[UNC]\n"
                                "0 0 0 0 0 0 0 0 0\n"
                                "0.500 0.130 1.3000 0.9000 0.8000 0.7000 1.000 1.6000 0\n"
                                "[END]\n";

// A system directory with these bolts in it.
class DesignTest : public stage_test::StageTest {
  protected:
    DesignTest()
        : system_dir(SYSTEM_DIR), system_dir_length(SYSTEM_DIR_LENGTH),
          system_dir_given(SYSTEM_DIR_GIVEN) {
        folder = std::filesystem::path(testing::TempDir()) /
                 ("tarvane_bolts_" + std::to_string(::getpid()));
        std::filesystem::create_directories(folder);
        std::ofstream(folder / "BOLTDATA.TXT", std::ios::binary) << BOLTS;
        SET_SYSTEM_DIR(folder.string());
        RESET_BOLTING();
    }
    ~DesignTest() override {
        std::filesystem::remove_all(folder);
        SYSTEM_DIR = system_dir;
        SYSTEM_DIR_LENGTH = system_dir_length;
        SYSTEM_DIR_GIVEN = system_dir_given;
        RESET_BOLTING();
    }
    void no_bolt_file() {
        std::filesystem::remove(folder / "BOLTDATA.TXT");
        RESET_BOLTING();
    }

  private:
    std::filesystem::path folder;
    Text<260> system_dir;
    Int system_dir_length;
    bool system_dir_given;
};

} // namespace tarvane::design_test
