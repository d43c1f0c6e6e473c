// A folder of the test's own, and the engine's folders and services put back when a test ends.
#pragma once

#include "frame/data_files.h"
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
        : module_dir(MODULE_DIR), module_length(MODULE_DIR_LENGTH), module_given(MODULE_DIR_GIVEN),
          system_dir(SYSTEM_DIR), system_length(SYSTEM_DIR_LENGTH), system_given(SYSTEM_DIR_GIVEN),
          services(SERVICES), dialogs_off(DIALOGS_OFF()) {
        SERVICES = {};
        SET_NO_DIALOG(false);
        forget_folders();
    }
    ~HostTest() override {
        for (Int unit = 1; unit <= LAST_UNIT; ++unit)
            close_unit(unit);
        MODULE_DIR = module_dir;
        MODULE_DIR_LENGTH = module_length;
        MODULE_DIR_GIVEN = module_given;
        SYSTEM_DIR = system_dir;
        SYSTEM_DIR_LENGTH = system_length;
        SYSTEM_DIR_GIVEN = system_given;
        SERVICES = services;
        SET_NO_DIALOG(dialogs_off);
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
    Text<256> module_dir;
    Int module_length;
    bool module_given;
    Text<260> system_dir;
    Int system_length;
    bool system_given;
    HOST_SERVICES services;
    bool dialogs_off;
};

} // namespace tarvane::host_test
