#include "batch/folder_lock.h"

#include "values/bounded_file.h"

#include <algorithm>
#include <cerrno>
#include <stdexcept>
#include <string>
#include <system_error>

#ifdef _WIN32
#include <windows.h>
#else
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>
#endif

namespace tarvane::app {

namespace fs = std::filesystem;

namespace {

[[noreturn]] void fail(const fs::path& folder, const std::error_code& reason) {
    throw std::runtime_error("cannot lock " + folder.string() + ": " + reason.message());
}

// The process that wrote its number.
[[noreturn]] void fail_for_holder(const fs::path& folder) {
    constexpr std::size_t LONGEST = 20;
    std::string holder;
    try {
        holder = vessel::read_regular((folder / FolderLock::FILE_NAME).string(), LONGEST);
    } catch (const std::runtime_error&) {
        holder.clear();
    }
    holder.resize(std::min(holder.find_first_not_of("0123456789"), holder.size()));
    throw std::runtime_error(folder.string() + " is in use by another batch" +
                             (holder.empty() ? "" : ", process " + holder));
}

} // namespace

#ifdef _WIN32

namespace {

// A byte that is never written: the number of the holder can be read beside it.
constexpr DWORD LOCKED_BYTE = 1 << 20;

} // namespace

FolderLock::FolderLock(const fs::path& folder)
    : handle(CreateFileW((folder / FILE_NAME).c_str(), GENERIC_READ | GENERIC_WRITE,
                         FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_ALWAYS,
                         FILE_ATTRIBUTE_NORMAL, nullptr)) {
    const auto reason = [] {
        return std::error_code(static_cast<int>(GetLastError()), std::system_category());
    };
    if (handle == INVALID_HANDLE_VALUE) fail(folder, reason());
    OVERLAPPED place{};
    place.Offset = LOCKED_BYTE;
    if (!LockFileEx(handle, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &place)) {
        const std::error_code why = reason();
        CloseHandle(handle);
        if (why.value() == ERROR_LOCK_VIOLATION) fail_for_holder(folder);
        fail(folder, why);
    }
    const std::string number = std::to_string(GetCurrentProcessId()) + '\n';
    DWORD count = 0;
    WriteFile(handle, number.data(), static_cast<DWORD>(number.size()), &count, nullptr);
    SetEndOfFile(handle);
}

FolderLock::~FolderLock() { CloseHandle(handle); }

#else

FolderLock::FolderLock(const fs::path& folder)
    : file(open((folder / FILE_NAME).c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666)) {
    const auto reason = [] { return std::error_code(errno, std::generic_category()); };
    if (file < 0) fail(folder, reason());
    if (flock(file, LOCK_EX | LOCK_NB) != 0) {
        const std::error_code why = reason();
        close(file);
        if (why == std::errc::operation_would_block) fail_for_holder(folder);
        fail(folder, why);
    }
    const std::string number = std::to_string(getpid()) + '\n';
    if (ftruncate(file, 0) != 0 ||
        pwrite(file, number.data(), number.size(), 0) != static_cast<ssize_t>(number.size())) {
        const std::error_code why = reason();
        close(file);
        fail(folder, why);
    }
}

FolderLock::~FolderLock() { close(file); }

#endif

} // namespace tarvane::app
