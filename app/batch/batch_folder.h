// The folder that a batch writes into.
//   lock           held while a batch runs
//   batch.json     what makes it the folder of a batch: where its inputs are
//   journal.jsonl  and the folder "journal": what is done (journal.h)
//   results/       of each item its files
//   summary.csv, summary.json
#pragma once

#include "batch/folder_lock.h"
#include "batch/row.h"

#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tarvane::app {

class BatchFolder {
  public:
    // The folder that all inputs of its batch are in; nothing where no batch has been yet. Throws std::runtime_error
    // for a folder that has other things in it.
    static std::optional<std::filesystem::path> base_of(const std::filesystem::path& folder);

    // Makes the folder where it is not there, and locks it; one that is a batch's already must be wanted so. What an
    // ended batch has left half-written is removed.
    BatchFolder(const std::filesystem::path& folder, const std::filesystem::path& base,
                bool resume);

    const std::filesystem::path& path() const { return place; }

    // Files of an item, whole or not at all.
    std::vector<Written>
    write_results(const std::string& item,
                  const std::vector<std::pair<std::string, std::string>>& files);
    void remove_results(const std::string& item) const;
    // All files of an item are there, with the size that they were written with.
    bool has_results(const Entry& entry) const;

    void write_summary(const std::string& csv, const std::string& json) const;
    void remove_summary() const;

  private:
    std::filesystem::path place;
    std::optional<FolderLock> lock;

    std::filesystem::path result(const std::string& item, const std::string& extension) const;
};

} // namespace tarvane::app
