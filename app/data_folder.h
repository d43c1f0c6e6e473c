// The folder of the data files, and the text files in it that the host reads itself.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tarvane::app {

// Folder of the data files in place of the library's own; empty: the library's own again.
void set_data_folder(const std::string& folder);
// The folder that was set, else that of the library.
std::string data_folder();

// Paths of the data files in the folder.
std::vector<std::string> data_files();

// A section of a text file of the folder: "[name]" and its lines up to the next section, without
// blank lines and comments.
struct Section {
    std::string name;
    std::vector<std::string> lines;
};
// Up to "[END]"; none when the file cannot be read.
std::vector<Section> read_sections(std::string_view file);

// Reference numbers of the moduli of "ElastAlp07.txt".
std::vector<int> modulus_tables();

// What the data files hold as approximate: "modulus 5" of ElastAlp07.txt, say. Material records carry a
// mark of their own.
bool is_approximate(std::string_view file, std::string_view item);

} // namespace tarvane::app
