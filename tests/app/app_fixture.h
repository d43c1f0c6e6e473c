// Input texts for the tests of the host, and its program run on files of a folder of the test's own.
#pragma once

#include "components/flange_input.h"
#include "input/input_file.h"
#include "test_paths.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <sys/wait.h>

namespace tarvane::app {

using namespace vessel;

// A complete flange; each test changes the keys that it tests.
inline const std::string FLANGE_TOML = R"([[flange]]
description = "test flange"
type = "weld neck"
P = 150
T = 300
B = 12.0
A = 19.0
t = 1.19
g0 = 0.375
g1 = 1.19
h = 3.25
Sfo = 20000
Sfa = 20000
bolting = "TEMA"
C = 17.0
n = 12
a = 0.875
Sb = 25000
Sa = 25000
Fod = 15.0
Fid = 12.0
Go = 14.75
Gi = 14.0
m = 3
y = 10000
facing = "1a"
)";

// FLANGE_TOML with the line of a key replaced; an empty text removes the line.
inline std::string with(const std::string& key, const std::string& line,
                        std::string toml = FLANGE_TOML) {
    const std::size_t at = toml.find('\n' + key + " = ");
    if (at == std::string::npos) return toml + line + '\n';
    const std::size_t end = toml.find('\n', at + 1);
    return toml.replace(at + 1, end - at, line.empty() ? "" : line + '\n');
}

inline std::vector<std::string> fault_lines(const std::string& toml) {
    std::vector<std::string> lines;
    for (const Fault& fault : read_input(toml).faults)
        lines.push_back(fault_line("f", fault));
    return lines;
}

// The only flange of a text without faults.
inline FlangeInput flange_of(const std::string& toml) {
    const ReadResult result = read_input(toml);
    EXPECT_TRUE(result.faults.empty()) << fault_line("f", result.faults.front());
    const auto flanges = flanges_of(result.request);
    return flanges.empty() ? FlangeInput{} : *flanges.front();
}

struct ProgramRun {
    int status = -1;
    std::string out, err;
};

class ProgramTest : public testing::Test {
  protected:
    ProgramTest() {
        const auto* info = testing::UnitTest::GetInstance()->current_test_info();
        folder = std::filesystem::temp_directory_path() /
                 (std::string("tarvane_app_") + info->name() + '_' + std::to_string(getpid()));
        std::filesystem::create_directories(folder);
    }
    ~ProgramTest() override { std::filesystem::remove_all(folder); }

    std::string path(const std::string& name) const { return (folder / name).string(); }

    std::string write(const std::string& name, const std::string& text) const {
        std::ofstream(path(name), std::ios::binary) << text;
        return path(name);
    }

    static std::string read(const std::string& file) {
        std::ifstream stream(file, std::ios::binary);
        std::ostringstream bytes;
        bytes << stream.rdbuf();
        return bytes.str();
    }

    // Arguments as the shell takes them.
    ProgramRun run(const std::string& arguments) const {
        return shell(std::string(TARVANE_PROGRAM) + ' ' + arguments);
    }

    // Commands of the shell, and the status of the last one.
    ProgramRun shell(const std::string& commands) const {
        const std::string line =
            "{ " + commands + "; } >" + path("stdout") + " 2>" + path("stderr");
        ProgramRun result;
        const int status = std::system(line.c_str());
        if (WIFEXITED(status)) result.status = WEXITSTATUS(status);
        result.out = read(path("stdout"));
        result.err = read(path("stderr"));
        return result;
    }

    std::filesystem::path folder;
};

} // namespace tarvane::app
