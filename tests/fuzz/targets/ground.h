// Where a target calls the library: a folder of its own with copies of the data files, deleted at the end of the
// process, and the library as at load before each input.
#pragma once

#include "folders.h"
#include "host.h"
#include "library.h"
#include "state.h"

#include <filesystem>

namespace fuzz {

class Ground {
  public:
    Ground();
    ~Ground();
    Ground(const Ground&) = delete;
    Ground& operator=(const Ground&) = delete;

    void reset(const calls::Host& host) const;

    const calls::Folders& folders() const { return its_folders; }
    const calls::Library& library = calls::linked_library();

  private:
    std::filesystem::path scratch;
    calls::Folders its_folders;
    same::State at_load;
};

Ground& ground();

// The process works in the folder of the ground; the relative paths given to libFuzzer are outside.
class Inside {
  public:
    Inside();
    ~Inside();
    Inside(const Inside&) = delete;
    Inside& operator=(const Inside&) = delete;

  private:
    std::filesystem::path before;
};

} // namespace fuzz
