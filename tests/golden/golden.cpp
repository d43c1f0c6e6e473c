// Runs every input file of a folder and compares the raw report, marks included, character by
// character with the text beside it.
//
//   tarvane_golden GOLDEN_FOLDER DATA_FOLDER [NAME...]
//   tarvane_golden --write OUTPUT_FOLDER GOLDEN_FOLDER DATA_FOLDER [NAME...]
//
// The second form compares nothing and writes the reports into another folder.
#include "catalogue/data_folder.h"
#include "input/input_file.h"
#include "values/text.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;
using namespace tarvane::app;
using namespace tarvane::vessel;

constexpr std::size_t SHOWN_DIFFERENCES = 5;

std::string read_whole(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) throw std::runtime_error("cannot read " + path.string());
    std::ostringstream bytes;
    bytes << file.rdbuf();
    return bytes.str();
}

std::string report_of(const fs::path& toml) {
    const ReadResult input = read_input(read_whole(toml));
    if (!input.faults.empty())
        throw std::runtime_error(fault_line(toml.string(), input.faults.front()));
    std::string report;
    for (const auto& element : input.request.elements)
        report += element->calculate(input.request)->report;
    return report;
}

std::vector<std::string> lines_of(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    if (!text.empty() && text.back() != '\n') lines.back() += " (no line end)";
    return lines;
}

// Blanks at the end and the marks count, so the lines are shown to their last column.
void show(char sign, const std::string& line) {
    std::printf("  %c |%s|\n", sign, to_utf8(line).c_str());
}

// The lines that differ, after the lines that both have in common at the head of each stretch.
void show_differences(const std::string& wanted_text, const std::string& found_text) {
    const std::vector<std::string> wanted = lines_of(wanted_text), found = lines_of(found_text);
    std::size_t i = 0, j = 0, shown = 0;
    while ((i < wanted.size() || j < found.size()) && shown < SHOWN_DIFFERENCES) {
        if (i < wanted.size() && j < found.size() && wanted[i] == found[j]) {
            ++i;
            ++j;
            continue;
        }
        ++shown;
        // The nearest place where three lines in a row agree again.
        std::size_t skip_i = wanted.size() - i, skip_j = found.size() - j;
        const auto agree = [&](std::size_t a, std::size_t b) {
            for (std::size_t k = 0; k < 3; ++k) {
                const bool wanted_ends = a + k >= wanted.size(), found_ends = b + k >= found.size();
                if (wanted_ends != found_ends) return false;
                if (!wanted_ends && wanted[a + k] != found[b + k]) return false;
            }
            return true;
        };
        for (std::size_t distance = 1; distance < skip_i + skip_j; ++distance) {
            bool settled = false;
            for (std::size_t a = 0; a <= distance && !settled; ++a) {
                if (i + a <= wanted.size() && j + (distance - a) <= found.size() &&
                    agree(i + a, j + (distance - a))) {
                    skip_i = a;
                    skip_j = distance - a;
                    settled = true;
                }
            }
            if (settled) break;
        }
        std::printf("  line %zu:\n", i + 1);
        for (std::size_t k = 0; k < skip_i; ++k)
            show('-', wanted[i + k]);
        for (std::size_t k = 0; k < skip_j; ++k)
            show('+', found[j + k]);
        i += skip_i;
        j += skip_j;
    }
    if (shown == SHOWN_DIFFERENCES) std::printf("  ... and perhaps more\n");
}

} // namespace

int main(int argc, char** argv) try {
    std::vector<std::string> arguments(argv + 1, argv + argc);
    fs::path output;
    if (arguments.size() > 1 && arguments[0] == "--write") {
        output = arguments[1];
        arguments.erase(arguments.begin(), arguments.begin() + 2);
    }
    if (arguments.size() < 2) {
        std::fprintf(stderr, "usage: tarvane_golden [--write FOLDER] GOLDEN DATA [NAME...]\n");
        return 2;
    }
    const fs::path folder = arguments[0];
    set_data_folder(fs::absolute(arguments[1]).string());
    const std::vector<std::string> names(arguments.begin() + 2, arguments.end());

    std::vector<fs::path> inputs;
    for (const auto& entry : fs::directory_iterator(folder)) {
        const std::string stem = entry.path().stem().string();
        if (entry.path().extension() != ".toml") continue;
        if (names.empty() || std::find(names.begin(), names.end(), stem) != names.end())
            inputs.push_back(entry.path());
    }
    std::sort(inputs.begin(), inputs.end());
    int failures = 0;
    for (const fs::path& input : inputs) {
        const std::string name = input.stem().string();
        const std::string found = report_of(input);
        if (!output.empty()) {
            std::ofstream file(output / (name + ".txt"), std::ios::binary);
            file << found;
            if (!file.flush()) throw std::runtime_error("cannot write into " + output.string());
            continue;
        }
        const fs::path golden = fs::path(input).replace_extension(".txt");
        if (!fs::exists(golden)) {
            std::printf("FAILED %s: there is no %s\n", name.c_str(), golden.filename().c_str());
            ++failures;
            continue;
        }
        const std::string wanted = read_whole(golden);
        if (found == wanted) {
            std::printf("ok     %s\n", name.c_str());
            continue;
        }
        std::printf("FAILED %s\n", name.c_str());
        show_differences(wanted, found);
        ++failures;
    }
    std::printf("%zu reports, %d failed\n", inputs.size(), failures);
    return failures == 0 && !inputs.empty() ? 0 : 1;
} catch (const std::exception& problem) {
    std::fprintf(stderr, "%s\n", problem.what());
    return 2;
}
