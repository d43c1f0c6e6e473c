// Common ground of the tests of data files: a folder of the test's own in place of the suite's
// data folder, one in place of the library's own, and a report into the line store.
#pragma once

#include "bolting/bolt_tables.h"
#include "host/services.h"
#include "materials/modulus.h"
#include "report/report_fixture.h"

#include <chrono>
#include <filesystem>
#include <thread>

namespace tarvane::data_test {

// A line of the report with its marks.
struct Line {
    std::string text;
    Style style = PLAIN;

    friend bool operator==(const Line& a, const Line& b) {
        return a.text == b.text && a.marks() == b.marks();
    }
    std::string marks() const {
        std::string all;
        for (const Int mark : {style.m1, style.m2, style.m3, style.m4, style.m5, style.m6})
            all += " " + std::to_string(mark);
        return all;
    }
    friend void PrintTo(const Line& line, std::ostream* out) {
        *out << '"' << line.text << "\" marked" << line.marks();
    }
};

// Waits until files that were written just now are old enough to be kept.
inline void wait_until_settled() { std::this_thread::sleep_for(std::chrono::milliseconds(2200)); }

class DataTest : public report_test::ReportTest {
  protected:
    DataTest() : folder(std::filesystem::path(testing::TempDir()) / unique_name()) {
        std::filesystem::remove_all(folder);
        std::filesystem::create_directories(folder / "system");
        std::filesystem::create_directories(folder / "library");
        SET_SYSTEM_DIR((folder / "system").string());
        SET_MODULE_DIR((folder / "library").string());
        state_at_load();
        OPEN_LINE_STORE(); // from here on marks are kept
        report_to_store();
    }
    ~DataTest() override {
        state_at_load();
        MODULE_DIR = old_module_dir;
        MODULE_DIR_LENGTH = old_module_length;
        MODULE_DIR_GIVEN = old_module_given;
        SYSTEM_DIR = old_system_dir;
        SYSTEM_DIR_LENGTH = old_system_length;
        SYSTEM_DIR_GIVEN = old_system_given;
        std::filesystem::remove_all(folder);
    }

    static void state_at_load() {
        RESET_SWITCHES();
        RESET_MATERIALS();
        RESET_BOLTING();
    }

    void write_file(const std::string& place, const std::string& name,
                    const std::string& text) const {
        std::ofstream(folder / place / name, std::ios::binary) << text;
    }
    void remove_file(const std::string& place, const std::string& name) const {
        std::filesystem::remove(folder / place / name);
    }

    // What the report holds since the last call; the store is then empty.
    static std::vector<Line> reported() {
        std::vector<Line> lines;
        for (Int k = 1; k <= LINE_COUNT; ++k) {
            const std::string marks = stored_marks(k);
            const auto mark = [&](std::size_t i) { return std::stoi(marks.substr(2 * i, 2)); };
            lines.push_back({stored(k), {mark(0), mark(1), mark(2), mark(3), mark(4), mark(5)}});
        }
        OPEN_LINE_STORE();
        return lines;
    }

    const std::filesystem::path folder;

  private:
    static std::string unique_name() {
        const auto* const info = testing::UnitTest::GetInstance()->current_test_info();
        std::string name = std::string("tarvane_") + info->test_suite_name() + "_" + info->name();
        std::replace(name.begin(), name.end(), '/', '_');
        return name;
    }

    Text<256> old_module_dir = MODULE_DIR;
    Text<260> old_system_dir = SYSTEM_DIR;
    Int old_module_length = MODULE_DIR_LENGTH, old_system_length = SYSTEM_DIR_LENGTH;
    bool old_module_given = MODULE_DIR_GIVEN, old_system_given = SYSTEM_DIR_GIVEN;
};

} // namespace tarvane::data_test
