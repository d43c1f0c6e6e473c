// The inputs of a batch: files and folders become items, each with a name that no other item has.
#pragma once

#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tarvane::app {

struct Item {
    std::string name; // of its results: "channel/cover"
    std::string file; // from the base on: "channel/cover.toml", whatever the system with "/"
    std::filesystem::path path;
};

struct Items {
    std::filesystem::path base; // the folder that all of them are in
    std::vector<Item> items;    // by their names
};

// The name of the results of a file: without ".toml", fit for any file system and for a terminal.
std::string item_name(const std::string& file);

// Each file, and of each folder and the folders in it the files that end in ".toml"; what is hidden and what is in `out`
// is passed over there, and a linked folder is not entered. A file that is named twice is one item. `base`: that of an
// earlier call, in which all files must be; without one the deepest folder that has all of them. Throws
// std::runtime_error: a path that leads nowhere, no file, two files that would write the same results.
Items find_items(std::span<const std::string> paths, const std::filesystem::path& out,
                 const std::optional<std::filesystem::path>& base);

} // namespace tarvane::app
