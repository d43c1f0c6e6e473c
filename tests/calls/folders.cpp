#include "folders.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace calls {

namespace fs = std::filesystem;

namespace {

constexpr int DAMAGED = 4;

void write(const fs::path& file, const std::string& content) {
    std::ofstream(file, std::ios::binary) << content;
}

} // namespace

std::string content_of(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

std::string damaged(Chance& chance, std::string content) {
    static constexpr std::string_view NUMBERS[] = {
        "nan",         "1e39", "-1e39", "0", "-1",    "99999999999", "1e-44", "inf",
        "-2147483648", "*",    ";",     "[", "[END]", "[CS-2]",      "]"};
    for (int damages = chance.between(1, 4); damages > 0 && !content.empty(); --damages) {
        const std::size_t at = chance.below(content.size());
        const std::size_t line = content.find('\n', at);
        switch (chance.below(8)) {
        case 0:
            content.resize(at);
            break;
        case 1: // single bytes
            for (int bytes = chance.between(1, 40); bytes > 0; --bytes)
                content[chance.below(content.size())] = static_cast<char>(chance.word());
            break;
        case 2: // one number for another
        case 3:
            for (int numbers = chance.between(1, 20); numbers > 0; --numbers) {
                const std::size_t first =
                    content.find_first_of("0123456789", chance.below(content.size()));
                if (first == std::string::npos) continue;
                const std::size_t end = content.find_first_not_of("0123456789.", first);
                content.replace(first, end == std::string::npos ? 1 : end - first,
                                chance.of(NUMBERS));
            }
            break;
        case 4: // a line removed
            if (line != std::string::npos) content.erase(line, content.find('\n', line + 1) - line);
            break;
        case 5: // the same many times
            if (content.size() < 100000) content.insert(at, content);
            break;
        case 6: // a line without end
            content.insert(at, std::string(chance.below(2000), chance.of({' ', '7', '[', '\0'})));
            break;
        default: // words of four bytes
            for (int words = chance.between(1, 30); words > 0; --words) {
                const std::size_t word = chance.below(content.size()) & ~std::size_t{1};
                const std::uint32_t bits = chance.of({0x7fc00000u, 0xff800000u, 0xffffffffu, 0u,
                                                      0x80000000u, 0x7fffffffu, chance.word()});
                for (std::size_t i = 0; i < 4 && word + i < content.size(); ++i)
                    content[word + i] = static_cast<char>(bits >> (8 * i));
            }
            break;
        }
    }
    return content;
}

Folders::Folders(const fs::path& data, const fs::path& scratch)
    : root(fs::absolute(scratch)), real(root / "real"), work(root / "work") {
    fs::remove_all(root);
    fs::create_directories(real);
    fs::create_directories(work);
    for (const auto& entry : fs::directory_iterator(data)) {
        const fs::path kind = entry.path().extension();
        if (kind == ".txt" || kind == ".TXT" || kind == ".BIN")
            fs::copy_file(entry.path(), real / entry.path().filename());
    }
    // The texts of the report and the settings are the host's.
    write(real / "iotext.txt", "000001  Text of the first\n1_1001  Code\nXX1ABC\n[END]\n");
    write(real / "Settings.ini",
          "[Settings]\nHelpLanguage = 1041\nAlternate System Path = ../damaged0\n");
    bytes_at_start = data_bytes();
}

void Folders::damage(Chance chance) const {
    std::vector<fs::path> files; // in an order that does not depend on the machine
    for (const auto& entry : fs::directory_iterator(real))
        files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    for (int i = 0; i < DAMAGED; ++i) {
        const fs::path folder = root / ("damaged" + std::to_string(i));
        fs::remove_all(folder);
        fs::create_directory(folder);
        for (const fs::path& file : files)
            if (!chance.one_in(12))
                write(folder / file.filename(), damaged(chance, content_of(file)));
    }
}

void Folders::empty_working_folder() const {
    for (const auto& entry : fs::directory_iterator(work))
        fs::remove_all(entry.path());
}

std::uintmax_t Folders::data_bytes() const {
    std::uintmax_t bytes = 0;
    for (const auto& entry : fs::directory_iterator(real))
        bytes += 1 + entry.file_size();
    return bytes;
}

bool Folders::untouched() const {
    constexpr auto FOLDERS = DAMAGED + 2;
    return std::distance(fs::directory_iterator(root), fs::directory_iterator()) == FOLDERS &&
           data_bytes() == bytes_at_start;
}

} // namespace calls
