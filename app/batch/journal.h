// The journal of a batch: which items are done, with what result, whenever the batch is ended.
#pragma once

#include "batch/row.h"

#include <cstddef>
#include <filesystem>
#include <map>
#include <mutex>
#include <string>

namespace tarvane::app {

// journal.jsonl has a line for each item, by the names. While a batch runs each item that is done becomes a file of its
// own in the folder "journal"; both are written under another name and renamed, so that a line is whole or not there.
class Journal {
  public:
    // Of a folder: reads what is there, a newer line of an item in place of the older one.
    explicit Journal(const std::filesystem::path& folder);

    const std::map<std::string, Entry>& entries() const { return known; }
    // For good from the next `gather` on.
    void forget(const std::string& item) { known.erase(item); }
    // Writes the line of an item. Any thread may, while no other function is called.
    void note(const Entry& entry);
    // Writes what is known as one file and removes the files of single items.
    void gather();

  private:
    std::filesystem::path whole, single;
    std::map<std::string, Entry> known;
    std::mutex taking;
    std::size_t noted = 0;

    void take(const std::filesystem::path& file);
};

} // namespace tarvane::app
