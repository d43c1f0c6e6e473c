#include "serve/handover.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <spawn.h>
#include <stdexcept>
#include <string_view>
#include <sys/stat.h>
#include <sys/wait.h>
#include <system_error>
#include <thread>
#include <unistd.h>

extern char** environ; // NOLINT(readability-redundant-declaration)

namespace tarvane::app {

namespace {

constexpr mode_t USER_ALONE = 0600;

[[noreturn]] void cannot(const std::string& what) {
    throw std::runtime_error("the link to the page cannot be written: " + what + ": " +
                             std::error_code(errno, std::generic_category()).message());
}

// The folder that the system made for this user alone; empty without one.
std::string runtime_folder() {
    const char* const name = std::getenv("XDG_RUNTIME_DIR");
    struct stat is {};
    if (name == nullptr || *name != '/' || lstat(name, &is) != 0) return {};
    const bool ours = S_ISDIR(is.st_mode) && is.st_uid == geteuid() && (is.st_mode & 0077) == 0;
    return ours ? name : "";
}

std::string new_folder() {
    std::string name = (std::filesystem::temp_directory_path() / "tarvane-serve-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) cannot(name);
    return name;
}

std::string page(std::uint16_t port, const std::string& token) {
    const std::string address = "http://127.0.0.1:" + std::to_string(port) + "/#" + token;
    return "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
           "<meta name=\"referrer\" content=\"no-referrer\">\n"
           "<meta http-equiv=\"refresh\" content=\"0; url=" +
           address + "\">\n<title>tarvane</title>\n</head>\n<body>\n<p><a href=\"" + address +
           "\">Open the page of tarvane</a></p>\n</body>\n</html>\n";
}

} // namespace

Handover::Handover(std::uint16_t port, const std::string& token) {
    std::string folder = runtime_folder();
    if (folder.empty()) folder = made_folder = new_folder();
    file = folder + "/tarvane-" + std::to_string(port) + ".html";
    // One that a killed server left: nobody else writes into this folder.
    if (unlink(file.c_str()) != 0 && errno != ENOENT) cannot(file);
    const int to =
        open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, USER_ALONE);
    if (to < 0) cannot(file);
    const std::string text = page(port, token);
    const bool written = fchmod(to, USER_ALONE) == 0 &&
                         write(to, text.data(), text.size()) == static_cast<ssize_t>(text.size());
    if (!written || close(to) != 0) {
        const int reason = errno;
        unlink(file.c_str());
        errno = reason;
        cannot(file);
    }
}

Handover::~Handover() {
    unlink(file.c_str());
    if (!made_folder.empty()) rmdir(made_folder.c_str());
}

bool open_in_browser(const std::string& file) {
    constexpr const char* OPENER = "/usr/bin/xdg-open";
    const auto set = [](const char* name) {
        const char* const value = std::getenv(name);
        return value != nullptr && *value != '\0';
    };
    if ((!set("DISPLAY") && !set("WAYLAND_DISPLAY")) || access(OPENER, X_OK) != 0) return false;
    std::string program = OPENER, path = file;
    const std::array<char*, 3> arguments{program.data(), path.data(), nullptr};
    // A session of its own: Ctrl-C ends the server and not the browser, which takes signals that the server blocks.
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t none;
    sigemptyset(&none);
    posix_spawnattr_setsigmask(&attributes, &none);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSID);
    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        posix_spawn_file_actions_addopen(&files, stream, "/dev/null", O_RDWR, 0);
    pid_t process = 0;
    const int failure =
        posix_spawn(&process, OPENER, &files, &attributes, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&files);
    posix_spawnattr_destroy(&attributes);
    if (failure != 0) return false;
    std::thread([process] {
        int status = 0;
        while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
        }
    }).detach();
    return true;
}

} // namespace tarvane::app
