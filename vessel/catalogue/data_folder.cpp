#include "catalogue/data_folder.h"

#include "catalogue/data_files_check.h"
#include "tarvane/tarvane.h"
#include "values/bounded_file.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <sstream>
#include <stdexcept>

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace tarvane::vessel {

namespace {

std::string chosen; // empty: that of the library

std::string library_file() {
    const auto routine = reinterpret_cast<const void*>(&RESET_ENGINE);
#ifdef _WIN32
    HMODULE module = nullptr;
    char path[MAX_PATH] = "";
    GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                           GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       static_cast<const char*>(routine), &module);
    GetModuleFileNameA(module, path, MAX_PATH);
    return path;
#else
    Dl_info library{};
    return dladdr(routine, &library) != 0 && library.dli_fname != nullptr ? library.dli_fname : "";
#endif
}

} // namespace

std::optional<std::string> data_folder_fault(const std::string& folder) {
    if (folder.size() <= LONGEST_DATA_FOLDER) return std::nullopt;
    return "out of reach: the path of the data folder has " + std::to_string(folder.size()) +
           " characters, which is too long; at most " + std::to_string(LONGEST_DATA_FOLDER) +
           " are expected";
}

void set_data_folder(const std::string& folder) {
    if (const auto fault = data_folder_fault(folder))
        throw std::runtime_error("the data files are " + *fault);
    std::error_code ignored;
    if (!folder.empty() && !std::filesystem::is_directory(folder, ignored))
        throw std::runtime_error("there is no data folder " + folder);
    chosen = folder;
    SET_SYSTEM_DIR(folder.data(), static_cast<std::int32_t>(folder.size()));
    SET_MODULE_DIR(folder.data(), static_cast<std::int32_t>(folder.size()));
}

std::string data_folder() {
    if (!chosen.empty()) return chosen;
    return std::filesystem::path(library_file()).parent_path().string();
}

std::vector<std::string> data_files() {
    namespace fs = std::filesystem;
    constexpr std::string_view TEXT_FILES[] = {"ANSIFlangeDimensions.txt",
                                               "BOLTDATA.TXT",
                                               "ElastAlp07.txt",
                                               "ExtChartData.txt",
                                               "PLWXML.TXT",
                                               "TableGData.txt",
                                               "approximate.txt",
                                               "VIII-1_Matls_By_Table.txt"};
    std::vector<std::string> paths;
    std::error_code none;
    for (const fs::directory_entry& entry : fs::directory_iterator(data_folder(), none)) {
        const fs::path& path = entry.path();
        if (path.extension() == ".BIN" || std::find(std::begin(TEXT_FILES), std::end(TEXT_FILES),
                                                    path.filename()) != std::end(TEXT_FILES))
            paths.push_back(path.string());
    }
    return paths;
}

std::string data_file_path(std::string_view name) {
    namespace fs = std::filesystem;
    const fs::path beside = fs::path(data_folder()) / name;
    if (!chosen.empty() || name == TABLE_G_FILE) return beside.string();
    const bool either = name == MODULUS_FILE || (name.ends_with(".BIN") && name != "ENMATDATA.BIN");
    std::error_code ignored;
    if (either && fs::is_regular_file(beside, ignored)) return beside.string();

    // The user's choice of another folder, else that of the library.
    const std::int32_t common_documents = 270;
    char folder[260];
    GET_SYSTEM_PATH(&common_documents, "TARVANE", 7, "2024", 4, folder, sizeof folder);
    const std::string_view padded(folder, sizeof folder);
    const std::string_view given = padded.substr(0, padded.find_last_not_of(' ') + 1);
    return (given.empty() ? beside : fs::path(given) / name).string();
}

std::vector<Section> read_sections(std::string_view file) {
    std::vector<Section> sections;
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
    for (const Section& section : read_sections("ElastAlp07.txt")) {
        if (section.name != "Temp") moduli = section.name == "Emod"; // the axis stands within
        if (!moduli) continue;
        for (const std::string& row : section.lines) {
            const int reference = std::atoi(row.c_str());
            if (reference > 0) references.push_back(reference);
        }
    }
    return references;
}

bool is_approximate(std::string_view file, std::string_view item) {
    require_data_file(APPROXIMATE_FILE);
    for (const Section& section : read_sections("approximate.txt")) {
        if (section.name == file &&
            std::find(section.lines.begin(), section.lines.end(), item) != section.lines.end())
            return true;
    }
    return false;
}

} // namespace tarvane::vessel
