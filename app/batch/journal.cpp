#include "batch/journal.h"

#include "terminal/output_file.h"
#include "values/bounded_file.h"

#include <algorithm>
#include <fstream>
#include <utility>
#include <vector>

namespace tarvane::app {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view LINE_EXTENSION = ".json";

std::vector<fs::path> files_in(const fs::path& folder) {
    std::vector<fs::path> files;
    std::error_code none;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder, none)) {
        if (entry.path().extension() == LINE_EXTENSION) files.push_back(entry.path());
    }
    // Numbers of one width: the order in which they were written.
    std::sort(files.begin(), files.end());
    return files;
}

} // namespace

Journal::Journal(const fs::path& folder)
    : whole(folder / "journal.jsonl"), single(folder / "journal") {
    fs::create_directories(single);
    take(whole);
    for (const fs::path& file : files_in(single))
        take(file);
}

void Journal::take(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    for (std::string line; std::getline(stream, line);) {
        if (std::optional<Entry> entry = entry_of(line)) {
            const std::string item = entry->row.item;
            known[item] = std::move(*entry);
        }
    }
}

void Journal::note(const Entry& entry) {
    constexpr std::size_t DIGITS = 10;
    std::string name;
    {
        const std::lock_guard lock(taking);
        name = std::to_string(noted++);
        known[entry.row.item] = entry;
    }
    name.insert(0, DIGITS - name.size(), '0').append(LINE_EXTENSION);
    write_whole((single / name).string(), line_of(entry) + '\n', Outlasts::process);
}

void Journal::gather() {
    std::string lines;
    for (const auto& [item, entry] : known)
        lines += line_of(entry) + '\n';
    write_whole(whole.string(), lines);
    for (const fs::path& file : files_in(single))
        fs::remove(file);
    noted = 0;
}

} // namespace tarvane::app
