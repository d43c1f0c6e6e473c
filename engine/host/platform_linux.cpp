// Files, folders and clock of Linux. There is no dialog and no program to start here: what the host
// gave no service for goes nowhere.
#ifndef _WIN32

#include "host/file_identity.h"
#include "host/file_units.h"
#include "host/platform.h"
#include "host/services.h"

#include <cerrno>
#include <climits>
#include <cstring>
#include <ctime>

#include <dlfcn.h>
#include <fcntl.h>
#include <pwd.h>
#include <sys/auxv.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tarvane {

namespace {

using PathName = Terminated<PATH_MAX>;

// Offsets within a file are Int. A pipe, a device or a folder is no file: a pipe would hold the host
// until somebody writes into it, a device need not end.
bool is_file(const struct stat& status) {
    return S_ISREG(status.st_mode) && static_cast<std::int64_t>(status.st_size) <= INT32_MAX;
}

constexpr std::int64_t NANOSECONDS = 1'000'000'000;
constexpr std::int64_t SETTLING_TIME = 2 * NANOSECONDS;

std::int64_t nanoseconds(const struct timespec& time) {
    return static_cast<std::int64_t>(time.tv_sec) * NANOSECONDS + time.tv_nsec;
}

bool identify(const struct stat& status, FILE_IDENTITY& identity) {
    if (!is_file(status)) return false;
    identity = {.device = status.st_dev,
                .inode = status.st_ino,
                .size = status.st_size,
                .modified = nanoseconds(status.st_mtim),
                .changed = nanoseconds(status.st_ctim)};
    return true;
}

constexpr std::string_view SETTINGS_NAME = "/Settings.ini";

// Longest line that counts, of a settings file and of the user database.
constexpr Int SETTINGS_WIDTH = 512;

// The field of a line of the user database, counted from 0.
std::string_view database_field(std::string_view line, int field) {
    for (; field > 0; --field) {
        const std::size_t colon = line.find(':');
        if (colon == std::string_view::npos) return {};
        line.remove_prefix(colon + 1);
    }
    return line.substr(0, line.find(':'));
}

bool is_number(std::string_view text, std::uint32_t number) {
    if (text.empty() || text.size() > 10) return false;
    unsigned long long value = 0;
    for (const char c : text) {
        if (c < '0' || c > '9') return false;
        value = value * 10 + static_cast<unsigned long long>(c - '0');
    }
    return value == number;
}

// Opens the settings file: beside the library, else under the user's home folder.
bool open_settings(Int unit, std::string_view product, std::string_view version) {
    Text<600> path;
    if (MODULE_DIR_LENGTH == 0) GET_MODULE_DIR();
    if (MODULE_DIR_LENGTH > 0) {
        const Int length =
            put_together(path, {MODULE_DIR.columns(1, MODULE_DIR_LENGTH), SETTINGS_NAME});
        if (open_unit_for_reading(unit, path.columns(1, length))) return true;
    }
    Text<260> home;
    const Int home_len = platform::home_folder(home);
    if (home_len == 0) return false;
    const Int length =
        platform::user_settings_file(home.columns(1, home_len), product, version, path);
    return open_unit_for_reading(unit, path.columns(1, length));
}

std::string_view without_blanks_around(std::string_view text) {
    return trimmed(left_justified(text));
}

// The file that an address of the engine is in; false when the loader does not know it.
bool loaded_from(const void* address, Dl_info& info) {
    return dladdr(address, &info) != 0 && info.dli_fname != nullptr;
}

Int opened_for_writing(std::string_view path, int flag) {
    const PathName name(path);
    if (path.empty() || !name.complete()) return -1;
    constexpr mode_t FOR_ALL = 0666; // less the process's own mask
    return open(name.get(), O_RDWR | O_CREAT | O_CLOEXEC | flag, FOR_ALL);
}

} // namespace

// ---- files -----------------------------------------------------------------------------------

Int open_for_reading(std::string_view path) {
    const PathName name(path);
    if (path.empty() || !name.complete()) return -1;
    // Opening a pipe must not wait, and opening a terminal must not make it the program's own.
    const int handle = open(name.get(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (handle < 0) return -1;
    struct stat status;
    if (fstat(handle, &status) != 0 || !is_file(status)) {
        close(handle);
        return -1;
    }
    return handle;
}

Int open_for_writing(std::string_view path) { return opened_for_writing(path, O_TRUNC); }

Int open_for_update(std::string_view path) { return opened_for_writing(path, 0); }

Int read_bytes(Int handle, char* into, Int count) {
    if (count < 0) return -1;
    ssize_t done = -1;
    do
        done = read(handle, into, static_cast<std::size_t>(count));
    while (done < 0 && errno == EINTR);
    return static_cast<Int>(done);
}

bool write_bytes(Int handle, const char* from, Int count) {
    while (count > 0) {
        const ssize_t done = write(handle, from, static_cast<std::size_t>(count));
        if (done < 0 && errno == EINTR) continue;
        if (done <= 0) return false;
        from += done;
        count -= static_cast<Int>(done);
    }
    return true;
}

bool seek_to(Int handle, Int offset) { return lseek(handle, offset, SEEK_SET) == offset; }

bool close_handle(Int handle) { return close(handle) == 0 || errno == EINTR; }

void delete_and_close(Int handle) {
    Text<40> entry;
    char number[12];
    Int digits = 0;
    for (Int rest = handle; rest > 0 || digits == 0; rest /= 10)
        number[11 - digits++] = static_cast<char>('0' + rest % 10);
    const Int length =
        put_together(entry, {"/proc/self/fd/", std::string_view(number + 12 - digits,
                                                                static_cast<std::size_t>(digits))});
    char path[PATH_MAX];
    const ssize_t size =
        readlink(Terminated<41>(entry.columns(1, length)).get(), path, sizeof path - 1);
    close(handle);
    if (size <= 0) return;
    path[size] = '\0';
    unlink(path);
}

bool file_exists(std::string_view path) {
    FILE_IDENTITY identity;
    return look_at_file(path, identity);
}

bool look_at_file(std::string_view path, FILE_IDENTITY& identity) {
    const PathName name(path);
    struct stat status;
    return !path.empty() && name.complete() && stat(name.get(), &status) == 0 &&
           identify(status, identity);
}

bool look_at_handle(Int handle, FILE_IDENTITY& identity) {
    struct stat status;
    return fstat(handle, &status) == 0 && identify(status, identity);
}

bool is_settled(const FILE_IDENTITY& identity) {
    struct timespec now;
    if (clock_gettime(CLOCK_REALTIME, &now) != 0) return false;
    const std::int64_t latest = nanoseconds(now) - SETTLING_TIME;
    return identity.modified < latest && identity.changed < latest;
}

namespace platform {

// ---- folders ---------------------------------------------------------------------------------

Int program_file(char* into, Int width) {
    const ssize_t size = readlink("/proc/self/exe", into, static_cast<std::size_t>(width));
    return size > 0 && size < width ? static_cast<Int>(size) : 0;
}

Int engine_file(char* into, Int width) {
    Dl_info engine, program;
    if (!loaded_from(&MODULE_DIR, engine)) return 0;
    // Linked into the program, the engine is in a file that the loader knows only by the name
    // that the program was called by.
    const auto* entry = reinterpret_cast<const void*>(getauxval(AT_ENTRY)); // NOLINT
    if (loaded_from(entry, program) && program.dli_fbase == engine.dli_fbase)
        return program_file(into, width);

    const std::string_view name(engine.dli_fname);
    std::size_t length = 0;
    if (!name.starts_with('/')) {
        // Loaded by a name relative to the working folder of the program.
        if (getcwd(into, static_cast<std::size_t>(width)) == nullptr) return 0;
        length = std::strlen(into);
        if (length + 1 >= static_cast<std::size_t>(width)) return 0;
        into[length++] = '/';
    }
    if (length + name.size() > static_cast<std::size_t>(width)) return 0;
    std::memcpy(into + length, name.data(), name.size());
    return static_cast<Int>(length + name.size());
}

Int home_in_database(std::string_view database, std::uint32_t user, Text<260>& home) {
    constexpr int USER_ID = 2;
    constexpr int HOME = 5;
    Int unit = 0, length = 0;
    GETNEXTUNIT(unit);
    if (!open_unit_for_reading(unit, database)) return 0;
    Text<SETTINGS_WIDTH> line;
    LineReader reader(unit);
    while (length == 0 && reader.next(line.data(), SETTINGS_WIDTH))
        if (is_number(database_field(line.trimmed(), USER_ID), user))
            length = put_together(home, {database_field(line.trimmed(), HOME)});
    close_unit(unit);
    return length;
}

Int user_settings_file(std::string_view home, std::string_view product, std::string_view version,
                       Text<600>& path) {
    return put_together(path,
                        {home, "/.config/", MAKER, "/", product, "/", version, SETTINGS_NAME});
}

// The local file of the user database is read first and without the system
// library, which allocates; users whom it does not list are asked for there.
Int home_folder(Text<260>& home) {
    const Int length = home_in_database("/etc/passwd", getuid(), home);
    if (length > 0) return length;
    char space[4096];
    struct passwd entry;
    struct passwd* found = nullptr;
    if (getpwuid_r(getuid(), &entry, space, sizeof space, &found) != 0 || found == nullptr)
        return 0;
    return put_together(home, {found->pw_dir});
}

// A settings file holds lines "name = value" under "[Settings]"; lines before any section count
// too, and those that begin with ";" or "#" are comments.
bool setting(std::string_view product, std::string_view version, std::string_view name,
             Text<260>& value) {
    Int unit = 0;
    GETNEXTUNIT(unit);
    if (!open_settings(unit, product, version)) return false;
    bool found = false, in_section = true;
    Text<SETTINGS_WIDTH> line;
    LineReader reader(unit);
    while (!found && reader.next(line.data(), SETTINGS_WIDTH)) {
        const std::string_view text = without_blanks_around(line.view());
        if (text.empty() || text.front() == ';' || text.front() == '#') continue;
        if (text.front() == '[') {
            in_section = text == "[Settings]";
            continue;
        }
        const std::size_t equals = text.find('=');
        if (!in_section || equals == std::string_view::npos) continue;
        if (without_blanks_around(text.substr(0, equals)) != name) continue;
        const std::string_view given = without_blanks_around(text.substr(equals + 1));
        found = given.size() <= static_cast<std::size_t>(value.width());
        if (found) value = given;
    }
    close_unit(unit);
    return found;
}

// The data are beside the library.
Int default_system_folder(Int, std::string_view, std::string_view, Text<260>& path) {
    path.clear();
    if (MODULE_DIR_LENGTH == 0) GET_MODULE_DIR();
    if (MODULE_DIR_LENGTH == 0) return 0;
    const std::string_view folder = MODULE_DIR.columns(1, MODULE_DIR_LENGTH);
    return put_together(path, {folder, folder.ends_with('/') ? "" : "/"});
}

// ---- host ------------------------------------------------------------------------------------

void message_box(void*, const char*, const char*) {}
void dialog_text(void*, Int, const char*) {}
void end_dialog(void*) {}
bool start_program(std::string_view, std::string_view, bool) { return false; }
Int last_error(char*, Int) { return 0; }

void clock(Int& year, Int& month, Int& day, Int& hour, Int& minute) {
    const std::time_t now = std::time(nullptr);
    struct tm parts;
    tzset(); // localtime_r alone need not look at the time zone
    if (localtime_r(&now, &parts) == nullptr) parts = {};
    year = parts.tm_year + 1900;
    month = parts.tm_mon + 1;
    day = parts.tm_mday;
    hour = parts.tm_hour;
    minute = parts.tm_min;
}

} // namespace platform

} // namespace tarvane

#endif
