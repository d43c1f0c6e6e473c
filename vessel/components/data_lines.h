// What a calculation takes from the data files, and the lines of an output about it.
#pragma once

#include "catalogue/data_sources.h"
#include "components/request.h"

#include <optional>
#include <string>
#include <vector>

namespace tarvane::vessel {

// An item of a data file that a component uses: "SA-105, 61".
struct UsedItem {
    std::string name; // UTF-8
    bool approximate;
    std::optional<ItemSource> source;

    std::string_view status() const;
};

struct UsedFile {
    std::string name;
    std::vector<UsedItem> items; // none: nothing in it has a status

    std::string sha256() const; // of its bytes; throws std::runtime_error where it can't be read
};

std::vector<UsedFile> used_files(const Request& request);

// Status, edition and source of every item that was used, by file, and the edition of a user's own data files; the
// approximate figures of the library's own tables with their sources.
std::string data_lines(const Request& request, const std::vector<Calculated>& calculated);

} // namespace tarvane::vessel
