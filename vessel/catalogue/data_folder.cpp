#include "catalogue/data_folder.h"

#include "catalogue/data_files_check.h"
#include "catalogue/data_search.h"
#include "tarvane/tarvane.h"
#include "values/bounded_file.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <stdexcept>

namespace tarvane::vessel {

namespace {

// The folder given to the engine, which has one for the whole process and does not say which; guarded as it is.
std::optional<DataFolder> given;

void give(const DataFolder& folder) {
    const std::string& path = folder.path;
    SET_SYSTEM_DIR(path.data(), static_cast<std::int32_t>(path.size()));
    SET_MODULE_DIR(path.data(), static_cast<std::int32_t>(path.size()));
}

} // namespace

std::optional<std::string> data_folder_fault(const std::string& folder) {
    if (folder.size() <= LONGEST_DATA_FOLDER) return std::nullopt;
    return "out of reach: the path of the data folder has " + std::to_string(folder.size()) +
           " characters, which is too long; at most " + std::to_string(LONGEST_DATA_FOLDER) +
           " are expected";
}

void set_data_folder(const DataFolder& folder) {
    const std::string& path = folder.path;
    if (const auto fault = data_folder_fault(path))
        throw std::runtime_error("the data files are " + *fault);
    std::error_code ignored;
    if (!std::filesystem::is_directory(path_of(path), ignored))
        throw std::runtime_error("there is no data folder " + path + " (" + folder.how + ')');
    given = folder;
    give(folder);
}

void set_data_folder(const std::string& folder, std::string_view by) {
    set_data_folder(find_data_folder(folder, by));
}

DataFolderInUse::DataFolderInUse(const DataFolder& folder) : before(given) {
    set_data_folder(folder);
}

DataFolderInUse::~DataFolderInUse() {
    given.swap(before);
    if (given) give(*given);
}

const DataFolder& data_folder() {
    if (!given) set_data_folder(find_data_folder({}, {}));
    return *given;
}

std::span<const std::string_view> data_text_files() {
    static constexpr std::string_view NAMES[] = {
        "ANSIFlangeDimensions.txt", "BOLTDATA.TXT",     "ElastAlp07.txt",
        "ExtChartData.txt",         "PLWXML.TXT",       "TableGData.txt",
        "approximate.txt",          "data_edition.txt", "data_sources.txt",
        "VIII-1_Matls_By_Table.txt"};
    return NAMES;
}

std::vector<std::string> data_files() {
    namespace fs = std::filesystem;
    const auto texts = data_text_files();
    std::vector<std::string> paths;
    std::error_code none;
    for (const fs::directory_entry& entry :
         fs::directory_iterator(path_of(data_folder().path), none)) {
        const fs::path& path = entry.path();
        if (path.extension() == ".BIN" ||
            std::find(texts.begin(), texts.end(), path.filename()) != texts.end())
            paths.push_back(path.string());
    }
    return paths;
}

std::string data_file_path(std::string_view name) {
    return (path_of(data_folder().path) / name).string();
}

std::vector<FileSection> read_sections(std::string_view file) {
    std::vector<FileSection> sections;
    std::string text;
    try {
        text = read_regular(data_file_path(file), LARGEST_DATA_FILE);
    } catch (const std::runtime_error&) {
        return sections;
    }
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        const std::size_t first = line.find_first_not_of(" \t\r");
        if (first == std::string::npos || line[first] == ';') continue;
        const std::size_t close = line.find(']', first);
        if (line[first] != '[' || close == std::string::npos) {
            if (!sections.empty())
                sections.back().lines.push_back(
                    line.substr(first, line.find_last_not_of(" \t\r") + 1 - first));
            continue;
        }
        std::string name = line.substr(first + 1, close - first - 1);
        name.erase(name.find_last_not_of(' ') + 1);
        if (name == "END") break;
        sections.push_back({std::move(name), {}});
    }
    return sections;
}

std::vector<int> modulus_tables() {
    std::vector<int> references;
    bool moduli = false;
    for (const FileSection& section : read_sections("ElastAlp07.txt")) {
        if (section.name != "Temp") moduli = section.name == "Emod"; // the axis is in one of them
        if (!moduli) continue;
        for (const std::string& row : section.lines) {
            const int reference = std::atoi(row.c_str());
            if (reference > 0) references.push_back(reference);
        }
    }
    return references;
}

// "class 150 raised face" for "class 150 size 4 raised face": lists of earlier versions name whole classes.
std::string without_size(std::string_view item) {
    std::string text(item);
    const std::size_t size = text.find(" size "), last = text.find_first_of("rs", size + 6);
    if (size == std::string::npos || last == std::string::npos) return text;
    return text.erase(size + 1, last - size - 1);
}

bool is_approximate(std::string_view file, std::string_view item) {
    require_data_file(APPROXIMATE_FILE);
    const std::string whole_class = without_size(item);
    for (const FileSection& section : read_sections("approximate.txt")) {
        if (section.name != file) continue;
        for (const std::string& line : section.lines)
            if (line == item || line == whole_class) return true;
    }
    return false;
}

} // namespace tarvane::vessel
