// Common ground of the report tests: a channel as at load, templates through all stages, and
// the content of the line store or of a file.
#pragma once

#include "frame/switches.h"
#include "frame/units.h"
#include "host/file_units.h"
#include "report/channel.h"
#include "report/lines.h"
#include "report/renderer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace tarvane::report_test {

inline constexpr Int REPORT_UNIT = 17;

class ReportTest : public testing::Test {
  protected:
    ReportTest() { at_load(); }
    ~ReportTest() override {
        close_unit(REPORT_UNIT);
        at_load();
    }

    static void at_load() {
        RESET_REPORT();
        FLAGS_mp_IINOSPECIAL = 0;
        UNITS = UNIT_CONSTANTS{};
    }

    static void report_to_store() { IWRITE = 1, IWRTFL = 1, IOUT = -1; }

    // The report goes to a file from here on; file_bytes() closes it and gives what it holds.
    void report_to_file() {
        const auto* const info = testing::UnitTest::GetInstance()->current_test_info();
        path =
            testing::TempDir() + "tarvane_" + info->test_suite_name() + "_" + info->name() + ".txt";
        std::replace(path.begin() + static_cast<std::ptrdiff_t>(testing::TempDir().size()),
                     path.end(), '/', '_');
        ASSERT_TRUE(open_unit_for_writing(REPORT_UNIT, path));
        IWRITE = 1, IWRTFL = 1, IOUT = REPORT_UNIT;
    }
    std::string file_bytes() {
        close_unit(REPORT_UNIT);
        std::ifstream file(path, std::ios::binary);
        std::ostringstream bytes;
        bytes << file.rdbuf();
        file.close();
        std::remove(path.c_str());
        return bytes.str();
    }

    // Record k of the store, all 125 columns.
    static std::string record(Int k) { return {LINESCOM[k - 1], STORE_WIDTH}; }

    // The marks of record k, and its text without the indent: the marks are the 12 columns before
    // the NUL, wherever that is.
    static std::string stored_marks(Int k) {
        const std::string all = record(k);
        return all.substr(all.find('\0') - 12, 12);
    }
    static std::string stored_text(Int k) {
        const std::string all = record(k);
        return all.substr(4, all.find('\0') - 16);
    }
    static std::string stored(Int k) { return std::string(trimmed(stored_text(k))); }

    // Every line stored so far, trimmed.
    static std::vector<std::string> stored_lines() {
        std::vector<std::string> lines;
        for (Int k = 1; k <= LINE_COUNT; ++k)
            lines.push_back(stored(k));
        return lines;
    }

    static void write(std::string_view text) {
        OUTLINE = text;
        WRITE_LINE(OUTLINE.data(), OUTLINE.width());
    }

    // A filled template, trimmed.
    static std::string filled(std::string_view text, std::vector<Real> values = {}) {
        values.resize(6, 0.0f);
        TEMPLATE = text;
        FILL_TEMPLATE(TEMPLATE, values[0], values[1], values[2], values[3], values[4], values[5]);
        return std::string(TEMPLATE.trimmed());
    }

    static void write_filled(std::string_view text, std::vector<Real> values, Int mode) {
        filled(text, std::move(values));
        FIT_TO_LINE(TEMPLATE.data(), 120, OUTLINE.data(), 100, mode);
        WRITE_LINE(OUTLINE.data(), 100);
    }

    // A template through FILL_TEMPLATE, FIT_TO_LINE and WRITE_LINE into the store, trimmed.
    static std::string printed(std::string_view text, std::vector<Real> values = {}, Int mode = 0) {
        report_to_store();
        write_filled(text, std::move(values), mode);
        return stored(LINE_COUNT);
    }

    std::string path;
};

} // namespace tarvane::report_test
