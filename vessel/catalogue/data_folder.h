// The folder of the data files, and the text files in it that the host reads itself.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tarvane::vessel {

// The engine holds 260 characters of a path, 256 for files beside the library: a longer folder would
// hide some of its files.
inline constexpr std::size_t LONGEST_DATA_FOLDER = 234;
inline constexpr std::size_t LARGEST_DATA_FILE = 64 * 1024 * 1024;

struct KnownSources;
std::shared_ptr<KnownSources> no_sources_yet();

struct DataFolder {
    std::string path;
    std::string how; // it was found: "named by --data", "found beside the library"
    // What was read of the sources of its figures, for all copies.
    std::shared_ptr<KnownSources> sources = no_sources_yet();
};
// Gives the engine a folder. Throws std::runtime_error for one that is not there or whose path is too long.
void set_data_folder(const DataFolder& folder);
// The folder that `by`, a call or an option, names; without one the folder that is found.
void set_data_folder(const std::string& folder, std::string_view by = "the call");
// The same for as long as it lives; then the engine has again the folder that was set before, and where none was,
// the one that is found.
class DataFolderInUse {
  public:
    explicit DataFolderInUse(const DataFolder& folder);
    ~DataFolderInUse();
    DataFolderInUse(const DataFolderInUse&) = delete;
    DataFolderInUse& operator=(const DataFolderInUse&) = delete;

  private:
    std::optional<DataFolder> before;
};
// The folder that was set, else the one that is found.
const DataFolder& data_folder();
// Where the engine looks for a data file.
std::string data_file_path(std::string_view name);
// Why a folder can't be one of data files: "..., which is too long".
std::optional<std::string> data_folder_fault(const std::string& folder);

// Names of the data files that are texts.
std::span<const std::string_view> data_text_files();
// Paths of the data files in the folder.
std::vector<std::string> data_files();

// A section of a text file of the folder: "[name]" and its lines up to the next section, without
// blank lines and comments.
struct FileSection {
    std::string name;
    std::vector<std::string> lines;
};
// Up to "[END]"; none when the file cannot be read.
std::vector<FileSection> read_sections(std::string_view file);

// Reference numbers of the moduli of "ElastAlp07.txt".
std::vector<int> modulus_tables();

// What is approximate in the data files, such as "modulus 5" of ElastAlp07.txt. Material records have a
// mark of their own. Throws std::runtime_error where "approximate.txt" is missing or damaged.
bool is_approximate(std::string_view file, std::string_view item);

} // namespace tarvane::vessel
