// Common ground of the tests of driver, its loops and the kernel: a host that listens, a report on a
// file unit with its marks, the passes one by one.
#pragma once

#include "flange/kernel.h"
#include "host/file_units.h"
#include "sample_flange.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

namespace tarvane::driver_test {

inline constexpr Int REPORT_UNIT = 17;

// A report line without its margin, and its six marks.
struct Line {
    std::string text, marks;
    bool operator==(const Line&) const = default;
};
using Lines = std::vector<Line>;

inline std::string marks(const Style& style) {
    std::string all;
    for (const Int mark : {style.m1, style.m2, style.m3, style.m4, style.m5, style.m6})
        all += " " + std::to_string(mark);
    return style == PLAIN ? std::string() : all;
}

// Position of the first line that begins with a text, from a line on; -1 when there is none.
inline std::ptrdiff_t find(const Lines& lines, std::string_view text, std::ptrdiff_t from = 0) {
    for (auto i = static_cast<std::size_t>(from); i < lines.size(); ++i)
        if (lines[i].text.starts_with(text)) return static_cast<std::ptrdiff_t>(i);
    return -1;
}
inline bool has(const Lines& lines, std::string_view text) { return find(lines, text) >= 0; }
inline std::ptrdiff_t count(const Lines& lines, std::string_view text) {
    return std::count_if(lines.begin(), lines.end(),
                         [&](const Line& line) { return line.text.starts_with(text); });
}
// The line that begins with a text, an empty one when there is none; and the one `further` on.
inline Line line(const Lines& lines, std::string_view text, std::ptrdiff_t further = 0) {
    const std::ptrdiff_t i = find(lines, text);
    if (i < 0 || i + further >= static_cast<std::ptrdiff_t>(lines.size())) return {};
    return lines[static_cast<std::size_t>(i + further)];
}
// The number that ends in column 60 of a column line; 0 when there is no such line.
inline double column_value(const Lines& lines, std::string_view label) {
    const std::string text = line(lines, label).text;
    return text.size() < 60
               ? 0.0
               : std::strtod(text.substr(label.size(), 60 - label.size()).c_str(), nullptr);
}

inline Lines store_lines() {
    Lines lines;
    for (Int i = 0; i < LINE_COUNT; ++i) {
        const std::string_view record(LINESCOM[i], STORE_WIDTH);
        const std::size_t end = record.find('\0');
        const std::string six(record.substr(end - 12, 12));
        lines.push_back({std::string(trimmed(record.substr(4, end - 16))),
                         six == " 0 0 0 0 0 0" ? std::string() : six});
    }
    return lines;
}

// What the engine asks of the host.
struct HOST {
    std::vector<std::string> boxes, titles, progress;
    std::vector<Int> controls, fatal;
    Int stops = 0;
};

class DriverTest : public testing::Test {
  protected:
    DriverTest() {
        fresh_engine();
        for (ELEMENT_ROW& row : ELEMENT_TABLES)
            row = ELEMENT_ROW{};
        HOST_SERVICES services;
        services.version = HOST_SERVICES_VERSION;
        services.user = &host;
        services.message_box = [](void* user, const char* text, const char* title) {
            static_cast<HOST*>(user)->boxes.emplace_back(text);
            static_cast<HOST*>(user)->titles.emplace_back(title);
        };
        services.dialog_text = [](void* user, Int control, const char* text) {
            static_cast<HOST*>(user)->controls.push_back(control);
            static_cast<HOST*>(user)->progress.emplace_back(text);
        };
        services.report_fatal = [](void* user, Int code) {
            static_cast<HOST*>(user)->fatal.push_back(code);
        };
        services.end_dialog = [](void*) {};
        services.stop = [](void* user, Int) { ++static_cast<HOST*>(user)->stops; };
        tarvane::SET_HOST_SERVICES(&services);
        tarvane::SET_NO_DIALOG(false);
    }
    ~DriverTest() override {
        close_unit(REPORT_UNIT);
        if (!path.empty()) std::remove(path.c_str());
        tarvane::SET_HOST_SERVICES(nullptr);
        tarvane::SET_NO_DIALOG(false);
        for (ELEMENT_ROW& row : ELEMENT_TABLES)
            row = ELEMENT_ROW{};
        fresh_engine();
    }

    // The report goes to a file unit from here on.
    void report_to_file() {
        const auto* const info = testing::UnitTest::GetInstance()->current_test_info();
        path = testing::TempDir() + "tarvane_" + info->test_suite_name() + "_" + info->name();
        ASSERT_TRUE(open_unit_for_writing(REPORT_UNIT, path));
        IOUT = REPORT_UNIT;
    }
    // The content of the file since it was opened; the file is then emptied.
    Lines file_lines() {
        close_unit(REPORT_UNIT);
        Lines lines;
        std::ifstream file(path, std::ios::binary);
        for (std::string record; std::getline(file, record);) {
            if (!record.empty() && record.back() == '\r') record.pop_back();
            lines.push_back({std::string(trimmed(std::string_view(record).substr(1, 100))),
                             record.size() > 101 ? record.substr(101) : std::string()});
        }
        file.close();
        EXPECT_TRUE(open_unit_for_writing(REPORT_UNIT, path));
        return lines;
    }

    HOST host;
    SampleFlange flange;

  private:
    std::string path;
};

} // namespace tarvane::driver_test
