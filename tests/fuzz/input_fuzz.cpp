// Damaged input files: each is read, or refused with faults that a terminal can take. The damage is random
// by a fixed seed; the run ends after a number of files or of seconds, whichever comes first.
//
//   input_fuzz DATA_FOLDER FOLDER_OF_EXAMPLES [FILES [SEED]]
#include "catalogue/data_folder.h"
#include "input/input_file.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace {

using namespace tarvane::app;
using namespace tarvane::vessel;

constexpr std::chrono::seconds LONGEST_RUN{20};

// What turns one thing of a file into another.
const std::string PIECES[] = {"[",
                              "]",
                              "[[",
                              "]]",
                              "{",
                              "}",
                              "#",
                              "%",
                              "=",
                              ".",
                              ",",
                              "\"",
                              "'",
                              "'''",
                              "\"\"\"",
                              "\\",
                              "\n",
                              "\r",
                              "\t",
                              "\xCF\xBF",
                              "\xEF\xBB\xBF",
                              "\xFF",
                              "\x1b",
                              "\x7f",
                              "\xC2\x85",
                              "0x",
                              "1e9",
                              "1e999",
                              "-",
                              "+",
                              "_",
                              "inf",
                              "nan",
                              "true",
                              "1979-05-27T07:32:00Z",
                              "07:32:00.5",
                              "99999999999999999999",
                              "\\u0000",
                              "\\U0010FFFF",
                              "\\ud800",
                              "[#",
                              "[%",
                              "a = \xCF\xBF"
                              "100",
                              "[a.",
                              "{a.",
                              "units.",
                              "standard.",
                              std::string(1, '\0'),
                              std::string(300, '['),
                              std::string(300, 'k'),
                              "\xE2\x80\xA8"};

class Damage {
  public:
    explicit Damage(unsigned seed) : random(seed) {}

    std::string of(std::string text, const std::string& other) {
        for (std::size_t changes = 1 + below(6); changes > 0; --changes)
            change(text, other);
        return text;
    }

    std::size_t below(std::size_t count) { return random() % count; }

  private:
    std::mt19937 random;

    void change(std::string& text, const std::string& other) {
        const std::size_t at = below(text.size() + 1);
        const std::size_t some = below(below(40) + 1);
        switch (below(7)) {
        case 0:
            text.insert(at, PIECES[below(std::size(PIECES))]);
            return;
        case 1:
            text.replace(at, std::min(some, text.size() - at), PIECES[below(std::size(PIECES))]);
            return;
        case 2:
            text.erase(at, some);
            return;
        case 3:
            if (at < text.size()) text[at] = static_cast<char>(random());
            return;
        case 4:
            if (at < text.size()) text[at] = static_cast<char>(text[at] ^ (1 << below(8)));
            return;
        case 5: {
            const std::size_t from = below(other.size());
            text.insert(at, other.substr(from, some));
            return;
        }
        default:
            text.resize(at);
        }
    }
};

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

bool is_fit_for_a_terminal(const std::string& lines) {
    return std::none_of(lines.begin(), lines.end(), [](char c) {
        const auto code = static_cast<unsigned char>(c);
        return (code < 0x20 && c != '\n') || code == 0x7F;
    });
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
        const std::string lines = fault_report("f", result.faults);
        read += result.faults.empty();
        const bool assertion = lines.find("cannot be read as TOML") != std::string::npos;
        const bool sound = result.faults.empty() != result.request.elements.empty();
        if (!sound || assertion || !is_fit_for_a_terminal(lines)) {
            std::printf("file %zu of seed %u, in input_fuzz.last.toml:\n%s", files + 1, seed,
                        lines.c_str());
            return 1;
        }
    }
    std::remove("input_fuzz.last.toml");
    std::printf("%zu damaged files, %zu of them still without faults\n", files, read);
    return files > 0 && read < files ? 0 : 1;
}
