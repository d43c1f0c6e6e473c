// Folders of the run: data files as they are, damaged ones, and the folder that the calls work in.
#pragma once

#include "chance.h"

#include <filesystem>
#include <string>

namespace calls {

// The content of a data file with one to four damages.
std::string damaged(Chance& chance, std::string content);
std::string content_of(const std::filesystem::path& file);

class Folders {
  public:
    // Makes the folder again, with a copy of the data files.
    Folders(const std::filesystem::path& data, const std::filesystem::path& scratch);

    // Four folders of damaged copies.
    void damage(Chance chance) const;
    // An empty working folder, for a process to enter.
    void empty_working_folder() const;
    // The folder of the data files as they are.
    const std::filesystem::path& data_folder() const { return real; }
    // Only the working folder was written to.
    bool untouched() const;

    const std::filesystem::path& working_folder() const { return work; }

  private:
    std::uintmax_t data_bytes() const;

    std::filesystem::path root, real, work;
    std::uintmax_t bytes_at_start;
};

} // namespace calls
