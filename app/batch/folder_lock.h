// The folder of a batch is of one process at a time.
#pragma once

#include <filesystem>

namespace tarvane::app {

// Held while the object lives, and not longer than its process. Throws std::runtime_error where another process holds it,
// with the number of that process.
class FolderLock {
  public:
    static constexpr const char* FILE_NAME = "lock";

    explicit FolderLock(const std::filesystem::path& folder);
    ~FolderLock();
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;

  private:
#ifdef _WIN32
    void* handle;
#else
    int file;
#endif
};

} // namespace tarvane::app
