// Damaged input files: each is read, or refused with faults that a terminal can take. The damage is random
// by a fixed seed; the run ends after a number of files or of seconds, whichever comes first.
//
//   input_fuzz DATA_FOLDER FOLDER_OF_EXAMPLES [FILES [SEED]]
#include "catalogue/data_folder.h"
#include "input/input_file.h"
#include "input_text.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace {

using namespace tarvane::app;
using namespace tarvane::vessel;
using namespace fuzz;

constexpr std::chrono::seconds LONGEST_RUN{20};

std::vector<std::string> examples(const std::filesystem::path& folder) {
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() == ".toml") files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end()); // the same damage wherever it runs
    std::vector<std::string> texts;
    for (const auto& file : files) {
        std::ostringstream bytes;
        bytes << std::ifstream(file, std::ios::binary).rdbuf();
        texts.push_back(bytes.str());
    }
    return texts;
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 3) return 2;
    const std::size_t most = argc > 3 ? std::strtoul(argv[3], nullptr, 10) : 3000;
    const unsigned seed = argc > 4 ? static_cast<unsigned>(std::strtoul(argv[4], nullptr, 10)) : 1;
    set_data_folder(argv[1]);
    const std::vector<std::string> texts = examples(argv[2]);
    if (texts.empty()) return 2;
    Damage damage(seed);
    const auto begin = std::chrono::steady_clock::now();
    std::size_t files = 0, read = 0;
    for (; files < most && std::chrono::steady_clock::now() - begin < LONGEST_RUN; ++files) {
        const std::string text =
            damage.of(texts[damage.below(texts.size())], texts[damage.below(texts.size())]);
        std::ofstream("input_fuzz.last.toml", std::ios::binary)
            << text; // for a fault that ends the run
        const ReadResult result = read_input(text);
        read += result.faults.empty();
        if (!is_sound(result)) {
            std::printf("file %zu of seed %u, in input_fuzz.last.toml:\n%s", files + 1, seed,
                        fault_report("f", result.faults).c_str());
            return 1;
        }
    }
    std::remove("input_fuzz.last.toml");
    std::printf("%zu damaged files, %zu of them still without faults\n", files, read);
    return files > 0 && read < files ? 0 : 1;
}
