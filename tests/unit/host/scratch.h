// A folder of the test's own, and the engine's folders and services put back when a test ends.
#pragma once

#include "frame/files/data_files.h"
#include "frame/numbers.h"
#include "host/file_units.h"
#include "host/services.h"

#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

#include <unistd.h>

namespace tarvane::host_test {

class ScratchFolder {
  public:
    ScratchFolder() {
        static std::atomic<int> count{0};
        folder = std::filesystem::temp_directory_path() /
                 ("tarvane_" + std::to_string(getpid()) + "_" + std::to_string(++count));
        std::filesystem::create_directories(folder);
    }
    ~ScratchFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(folder, ignored);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    std::string path() const { return folder.string(); }
    std::string file(std::string_view name) const { return (folder / name).string(); }
    std::string write(std::string_view name, std::string_view content) const {
        std::ofstream(file(name), std::ios::binary) << content;
        return file(name);
    }
    std::string read(std::string_view name) const {
        std::ifstream in(file(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    }

  private:
    std::filesystem::path folder;
};

// Keeps what a host provides, and closes every unit, around each test.
class HostTest : public ::testing::Test {
  protected:
    HostTest()
        : kept_module_dir(MODULE_DIR), kept_module_length(MODULE_DIR_LENGTH),
          kept_module_given(MODULE_DIR_GIVEN), kept_system_dir(SYSTEM_DIR),
          kept_system_length(SYSTEM_DIR_LENGTH), kept_system_given(SYSTEM_DIR_GIVEN),
          kept_services(SERVICES), kept_dialogs_off(DIALOGS_OFF()) {
        SERVICES = {};
        SET_NO_DIALOG(false);
        forget_folders();
    }
    ~HostTest() override {
        for (Int unit = 1; unit <= LAST_UNIT; ++unit)
            close_unit(unit);
        MODULE_DIR = kept_module_dir;
        MODULE_DIR_LENGTH = kept_module_length;
        MODULE_DIR_GIVEN = kept_module_given;
        SYSTEM_DIR = kept_system_dir;
        SYSTEM_DIR_LENGTH = kept_system_length;
        SYSTEM_DIR_GIVEN = kept_system_given;
        SERVICES = kept_services;
        SET_NO_DIALOG(kept_dialogs_off);
    }

    // As at load: nothing given, nothing looked up.
    static void forget_folders() {
        MODULE_DIR_GIVEN = SYSTEM_DIR_GIVEN = false;
        RESET_HOST();
    }

    static std::string module_folder() {
        return std::string(MODULE_DIR.columns(1, MODULE_DIR_LENGTH));
    }
    static std::string system_folder() {
        return std::string(SYSTEM_DIR.columns(1, SYSTEM_DIR_LENGTH));
    }

    ScratchFolder scratch;

  private:
    Text<256> kept_module_dir;
    Int kept_module_length;
    bool kept_module_given;
    Text<260> kept_system_dir;
    Int kept_system_length;
    bool kept_system_given;
    HOST_SERVICES kept_services;
    bool kept_dialogs_off;
};

} // namespace tarvane::host_test
