#include "terminal/output_file.h"

#include "catalogue/data_folder.h"
#include "values/bounded_file.h"

#include <array>
#include <cerrno>
#include <filesystem>
#include <random>
#include <stdexcept>
#include <system_error>

#ifdef _WIN32
#include <algorithm>
#include <mutex>
#include <utility>

#include <windows.h>
#else
#include <csignal>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace tarvane::app {

namespace {

namespace fs = std::filesystem;

[[noreturn]] void cannot_write(const std::string& path, const std::string& reason) {
    throw std::runtime_error("cannot write " + path + ": " + reason);
}

[[noreturn]] void cannot_write(const std::string& path, const std::error_code& reason) {
    cannot_write(path, reason.message());
}

// The file that a path leads to, which need not exist.
fs::path followed(const fs::path& path) {
    constexpr int MOST_LINKS = 40; // as many as the system follows
    fs::path file = path;
    std::error_code none;
    for (int i = 0; i < MOST_LINKS && fs::is_symlink(fs::symlink_status(file, none)); ++i) {
        const fs::path target = fs::read_symlink(file, none);
        file = target.is_absolute() ? target : file.parent_path() / target;
    }
    return file;
}

fs::path folder_of(const fs::path& file) {
    return file.has_parent_path() ? file.parent_path() : fs::path(".");
}

// The place of a file that does not exist, under one name.
fs::path place_of(const fs::path& path) {
    std::error_code none;
    const fs::path file = followed(path);
    return fs::canonical(folder_of(file), none) / file.filename();
}

bool same_name(const fs::path& a, const fs::path& b) {
#ifdef _WIN32
    return CompareStringOrdinal(a.c_str(), -1, b.c_str(), -1, TRUE) == CSTR_EQUAL;
#else
    return a == b;
#endif
}

bool same_file(const fs::path& a, const fs::path& b) {
    std::error_code none;
    if (fs::exists(a, none) || fs::exists(b, none)) return fs::equivalent(a, b, none);
    return same_name(place_of(a), place_of(b));
}

constexpr fs::perms ANY_WRITE =
    fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;

bool permits_to_write(const fs::path& path) {
#ifdef _WIN32
    static_cast<void>(path);
    return true;
#else
    return faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0;
#endif
}

// The descriptor of standard output or standard error when a path leads to the same file, else -1.
int standard_stream(const std::string& path) {
#ifdef _WIN32
    static_cast<void>(path);
#else
    struct stat wanted, open;
    if (stat(path.c_str(), &wanted) != 0) return -1;
    for (const int stream : {STDOUT_FILENO, STDERR_FILENO})
        if (fstat(stream, &open) == 0 && open.st_dev == wanted.st_dev &&
            open.st_ino == wanted.st_ino)
            return stream;
#endif
    return -1;
}

// What a path leads to, and how it is written.
struct Target {
    fs::path file;
    bool is_stream = false;
};

// Throws when it can't or must not be written.
Target target_of(const std::string& path) {
    std::error_code failure;
    const fs::path name = vessel::path_of(path);
    const fs::file_status status = fs::status(name, failure);
    switch (status.type()) {
    case fs::file_type::not_found: {
        Target target{followed(name)};
        if (!fs::is_directory(folder_of(target.file), failure))
            cannot_write(path, std::make_error_code(std::errc::no_such_file_or_directory));
        if (!permits_to_write(folder_of(target.file)))
            cannot_write(path, std::error_code(errno, std::generic_category()));
        return target;
    }
    case fs::file_type::regular:
        // Later output must not go to a file that is no longer there.
        if (standard_stream(path) >= 0) return {name, true};
        // A file without any permission to write is protected from every user, also from root.
        if ((status.permissions() & ANY_WRITE) == fs::perms::none)
            cannot_write(path, "the file is read-only");
        if (!permits_to_write(name) || !permits_to_write(folder_of(followed(name))))
            cannot_write(path, std::error_code(errno, std::generic_category()));
        return {followed(name)};
    case fs::file_type::character:
    case fs::file_type::fifo:
        return {name, true};
    case fs::file_type::directory:
        cannot_write(path, "it is a folder");
    case fs::file_type::none:
        cannot_write(path, failure);
    default:
        cannot_write(path, "it is neither a file nor a stream");
    }
}

// A name in the folder of a file that nothing has yet.
fs::path partial_beside(const fs::path& file) {
    std::random_device random;
    return folder_of(file) /
           (std::string(PARTIAL_PREFIX) + std::to_string(random()) + std::to_string(random()));
}

#ifdef _WIN32

std::error_code last_error() { return {static_cast<int>(GetLastError()), std::system_category()}; }

// An open file; gone with the object unless `close` has told how that went.
class Handle {
  public:
    Handle(const fs::path& path, DWORD disposition)
        : handle(CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                             nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr)) {}
    ~Handle() {
        if (is_open()) CloseHandle(handle);
    }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

    bool is_open() const { return handle != INVALID_HANDLE_VALUE; }
    bool write(std::string_view bytes) const {
        constexpr std::size_t AT_ONCE = 1 << 20;
        while (!bytes.empty()) {
            DWORD count = 0;
            if (!WriteFile(handle, bytes.data(),
                           static_cast<DWORD>(std::min(bytes.size(), AT_ONCE)), &count, nullptr))
                return false;
            bytes.remove_prefix(count);
        }
        return true;
    }
    bool sync() const { return FlushFileBuffers(handle) != 0; }
    bool close() {
        return !is_open() || CloseHandle(std::exchange(handle, INVALID_HANDLE_VALUE)) != 0;
    }

  private:
    HANDLE handle;
};

// Requests to end, which come on a thread of their own, wait while the object lives.
class NoEndMeanwhile {
  public:
    NoEndMeanwhile() { SetConsoleCtrlHandler(wait, TRUE); }
    ~NoEndMeanwhile() { SetConsoleCtrlHandler(wait, FALSE); }
    NoEndMeanwhile(const NoEndMeanwhile&) = delete;
    NoEndMeanwhile& operator=(const NoEndMeanwhile&) = delete;

  private:
    static BOOL WINAPI wait(DWORD) {
        const std::lock_guard until_done(writing);
        return FALSE;
    }
    static inline std::mutex writing;
    const std::lock_guard<std::mutex> turn{writing};
};

void write_through(const std::string& path, std::string_view bytes) {
    Handle output(vessel::path_of(path), OPEN_EXISTING);
    if (!output.is_open() || !output.write(bytes) || !output.close())
        cannot_write(path, last_error());
}

void replace(const std::string& path, const fs::path& file, std::string_view bytes,
             Outlasts outlasts) {
    const NoEndMeanwhile whole_or_not_at_all;
    const fs::path partial = partial_beside(file);
    Handle output(partial, CREATE_NEW);
    if (!output.is_open()) cannot_write(path, last_error());
    const bool waits = outlasts == Outlasts::power;
    if (output.write(bytes) && (!waits || output.sync()) && output.close() &&
        MoveFileExW(partial.c_str(), file.c_str(),
                    MOVEFILE_REPLACE_EXISTING | (waits ? MOVEFILE_WRITE_THROUGH : 0)))
        return;
    const std::error_code failure = last_error();
    output.close();
    DeleteFileW(partial.c_str());
    cannot_write(path, failure);
}

#else

std::error_code last_error() { return {errno, std::generic_category()}; }

// An open file, closed with the object; `close` says whether that succeeded.
class Descriptor {
  public:
    explicit Descriptor(int opened) : number(opened) {}
    ~Descriptor() {
        if (number >= 0) ::close(number);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int get() const { return number; }
    bool is_open() const { return number >= 0; }
    bool write(std::string_view bytes) const {
        while (!bytes.empty()) {
            const ssize_t count = ::write(number, bytes.data(), bytes.size());
            if (count < 0 && errno == EINTR) continue;
            if (count < 0) return false;
            bytes.remove_prefix(static_cast<std::size_t>(count));
        }
        return true;
    }
    // Some file systems can't do it; that is no failure of the file.
    bool sync() const {
        return fsync(number) == 0 || (errno != EIO && errno != ENOSPC && errno != EDQUOT);
    }
    bool close() {
        const int closed = number;
        number = -1;
        return ::close(closed) == 0 || errno == EINTR;
    }

  private:
    int number;
};

// Requests to end wait while the object lives.
class NoEndMeanwhile {
  public:
    NoEndMeanwhile() {
        sigset_t requests;
        sigemptyset(&requests);
        for (const int request : {SIGINT, SIGTERM, SIGHUP, SIGQUIT})
            sigaddset(&requests, request);
        sigprocmask(SIG_BLOCK, &requests, &before);
    }
    ~NoEndMeanwhile() { sigprocmask(SIG_SETMASK, &before, nullptr); }
    NoEndMeanwhile(const NoEndMeanwhile&) = delete;
    NoEndMeanwhile& operator=(const NoEndMeanwhile&) = delete;

  private:
    sigset_t before;
};

// Owner, group and mode of the file that is replaced. Not every user may give a file to its owner.
bool take_over(int partial, const struct stat& old) {
    constexpr mode_t PERMISSIONS = 07777;
    constexpr uid_t AS_IT_IS = static_cast<uid_t>(-1);
    if (fchown(partial, old.st_uid, old.st_gid) != 0 && fchown(partial, AS_IT_IS, old.st_gid) != 0)
        errno = 0;
    return fchmod(partial, old.st_mode & PERMISSIONS) == 0;
}

void replace(const std::string& path, const fs::path& file, std::string_view bytes,
             Outlasts outlasts) {
    constexpr mode_t FOR_OWNER = 0600, FOR_ALL = 0666; // the second less the process's own mask
    const NoEndMeanwhile whole_or_not_at_all;
    struct stat old;
    const bool replaces = stat(file.c_str(), &old) == 0;
    const fs::path partial = partial_beside(file);
    Descriptor output(open(partial.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC,
                           replaces ? FOR_OWNER : FOR_ALL));
    if (!output.is_open()) cannot_write(path, last_error());
    if (output.write(bytes) && (!replaces || take_over(output.get(), old)) &&
        (outlasts == Outlasts::process || output.sync()) && output.close() &&
        rename(partial.c_str(), file.c_str()) == 0)
        return;
    const std::error_code failure = last_error();
    unlink(partial.c_str());
    cannot_write(path, failure);
}

void write_through(const std::string& path, std::string_view bytes) {
    const int standard = standard_stream(path);
    Descriptor output(standard >= 0 ? fcntl(standard, F_DUPFD_CLOEXEC, 0)
                                    : open(path.c_str(), O_WRONLY | O_NOCTTY | O_CLOEXEC));
    if (!output.is_open() || !output.write(bytes) || !output.close())
        cannot_write(path, last_error());
}

#endif

} // namespace

void refuse_same_file(const std::string& path, std::span<const FileInUse> files) {
    const auto refuse = [&](const std::string& what, const std::string& file) {
        if (same_file(vessel::path_of(path), vessel::path_of(file)))
            cannot_write(path, "it is " + what + (path == file ? "" : ' ' + file));
    };
    for (const FileInUse& file : files)
        refuse(file.what, file.path);
    for (const std::string& file : vessel::data_files())
        refuse("the data file", file);
}

void check_output(const std::string& path, std::span<const FileInUse> files) {
    refuse_same_file(path, files);
    target_of(path);
}

void write_whole(const std::string& path, std::string_view bytes, Outlasts outlasts) {
    const Target target = target_of(path);
    if (target.is_stream)
        write_through(path, bytes);
    else
        replace(path, target.file, bytes, outlasts);
}

} // namespace tarvane::app
