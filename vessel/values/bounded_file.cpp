#include "values/bounded_file.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <stdexcept>

#ifdef _WIN32
#include <fstream>
#else
#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace tarvane::vessel {

namespace {

[[noreturn]] void fail(const std::string& path, const std::string& why = {}) {
    throw std::runtime_error("cannot read " + path + why);
}

#ifdef _WIN32

std::string read_file(const std::string& path, std::size_t limit, bool regular) {
    const std::filesystem::path name = path_of(path);
    std::error_code none;
    if (regular && !std::filesystem::is_regular_file(name, none))
        fail(path, std::filesystem::exists(name, none) ? ": it is not a regular file" : "");
    std::ifstream file(name, std::ios::binary);
    if (!file) fail(path);
    std::string bytes(limit + 1, '\0');
    file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (file.bad()) fail(path);
    bytes.resize(static_cast<std::size_t>(file.gcount()));
    return bytes;
}

#else

class Handle {
  public:
    // Waits neither for a writer of a pipe nor for a device.
    explicit Handle(const std::string& path)
        : number(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC)) {}
    ~Handle() {
        if (number >= 0) close(number);
    }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

    int get() const { return number; }

  private:
    int number;
};

// Characters read, 0 at the end. Waits while a pipe is open at its other end but empty.
std::size_t read_some(int file, char* into, std::size_t count, const std::string& path) {
    for (;;) {
        const ssize_t done = read(file, into, count);
        if (done >= 0) return static_cast<std::size_t>(done);
        if (errno == EAGAIN) {
            pollfd wait{file, POLLIN, 0};
            poll(&wait, 1, -1);
        } else if (errno != EINTR) {
            fail(path);
        }
    }
}

std::string read_file(const std::string& path, std::size_t limit, bool regular) {
    const Handle file(path);
    struct stat status {};
    if (file.get() < 0 || fstat(file.get(), &status) != 0 || S_ISDIR(status.st_mode)) fail(path);
    if (regular && !S_ISREG(status.st_mode)) fail(path, ": it is not a regular file");
    constexpr std::size_t PIECE = 65536;
    std::string bytes;
    while (bytes.size() <= limit) {
        const std::size_t before = bytes.size(), piece = std::min(PIECE, limit + 1 - before);
        bytes.resize(before + piece);
        const std::size_t done = read_some(file.get(), bytes.data() + before, piece, path);
        bytes.resize(before + done);
        if (done == 0) break;
    }
    if (bytes.empty() && S_ISFIFO(status.st_mode)) fail(path, ": nothing came through this pipe");
    return bytes;
}

#endif

} // namespace

std::filesystem::path path_of(std::string_view name) {
    return std::u8string(name.begin(), name.end());
}

std::string read_bounded(const std::string& path, std::size_t limit) {
    return read_file(path, limit, false);
}

std::string read_regular(const std::string& path, std::size_t limit) {
    return read_file(path, limit, true);
}

} // namespace tarvane::vessel
