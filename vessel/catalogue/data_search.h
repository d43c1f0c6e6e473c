// The folder that the data files come from: the one that is named, else the first that has any.
#pragma once

#include "catalogue/data_folder.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarvane::vessel {

// Names the folder when a call does not.
inline constexpr const char* DATA_VARIABLE = "TARVANE_DATA";
// One line, the version of the data files beside it.
inline constexpr std::string_view DATA_VERSION_FILE = "data_version.txt";

// A folder that may hold the data files, and how it was found.
struct SearchPlace {
    std::filesystem::path folder;
    std::string how;
};

// Where data files are looked for when no folder is named, in this order; each folder once.
std::vector<SearchPlace> search_places(const std::filesystem::path& library,
                                       const std::filesystem::path& program,
                                       const std::filesystem::path& built_in);

// The first place that has a data file; without any the first place of all, and what to do.
DataFolder first_with_data(const std::vector<SearchPlace>& places);

// The folder that `by` names, else that of the environment, else the first place with data files.
DataFolder find_data_folder(const std::string& named, std::string_view by);

// The version of the data files in a folder; nothing where it has none that is sound.
std::optional<std::string> version_in(const std::filesystem::path& folder);

// "/opt/data (version 1.0.0, named by --data)".
std::string described(const DataFolder& folder);

} // namespace tarvane::vessel
