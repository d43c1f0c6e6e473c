#include "terminal/pdf.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <system_error>
#include <utility>
#include <vector>

#ifndef _WIN32
#include <cerrno>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace tarvane::app {

namespace {

using std::chrono::system_clock;

[[noreturn]] void no_pdf(const std::string& reason) {
    throw std::runtime_error("no PDF was made: " + reason);
}

std::optional<std::chrono::seconds> source_date_epoch() {
    const char* const text = std::getenv("SOURCE_DATE_EPOCH");
    if (text == nullptr) return std::nullopt;
    constexpr std::int64_t LAST = 253402300799; // of the year 9999
    const std::string_view digits = text;
    std::int64_t seconds = -1;
    const auto [end, error] = std::from_chars(text, text + digits.size(), seconds);
    if (error != std::errc() || end != text + digits.size() || seconds < 0 || seconds > LAST)
        return std::nullopt;
    return std::chrono::seconds(seconds);
}

} // namespace

std::string time_of_documents() {
    const std::chrono::seconds now =
        std::chrono::duration_cast<std::chrono::seconds>(system_clock::now().time_since_epoch());
    const std::chrono::seconds time = source_date_epoch().value_or(now);
    const auto day = std::chrono::floor<std::chrono::days>(time);
    const std::chrono::year_month_day date{std::chrono::sys_days(day)};
    const std::chrono::hh_mm_ss clock(time - day);
    char text[32];
    std::snprintf(text, sizeof text, "%04d-%02u-%02uT%02d:%02d:%02dZ", int(date.year()),
                  unsigned(date.month()), unsigned(date.day()), int(clock.hours().count()),
                  int(clock.minutes().count()), int(clock.seconds().count()));
    return text;
}

#ifdef _WIN32

Pdf pdf_of(std::string_view, bool) {
    no_pdf(
        "that needs WeasyPrint on Linux; write the HTML with --html and print it with a browser");
}

#else

namespace {

namespace fs = std::filesystem;

// A file without a name, gone with the object; no other program sees it unless it is handed on.
class NamelessFile {
  public:
    explicit NamelessFile(std::string_view content = {}) : file(std::tmpfile()) {
        if (file == nullptr || fcntl(number(), F_SETFD, FD_CLOEXEC) != 0 ||
            std::fwrite(content.data(), 1, content.size(), file) != content.size() ||
            std::fflush(file) != 0 || lseek(number(), 0, SEEK_SET) != 0) {
            const std::error_code failure(errno, std::generic_category());
            close();
            no_pdf("a file in between cannot be written: " + failure.message());
        }
    }
    ~NamelessFile() { close(); }
    NamelessFile(const NamelessFile&) = delete;
    NamelessFile& operator=(const NamelessFile&) = delete;

    int number() const { return fileno(file); }
    std::string content() const {
        std::string bytes;
        std::rewind(file);
        std::vector<char> block(1 << 16);
        for (std::size_t count = 1; count > 0;) {
            count = std::fread(block.data(), 1, block.size(), file);
            bytes.append(block.data(), count);
        }
        return bytes;
    }

  private:
    std::FILE* file;

    void close() {
        if (file != nullptr) std::fclose(file);
    }
};

bool is_program(const fs::path& path) {
    std::error_code none;
    return fs::is_regular_file(path, none) && access(path.c_str(), X_OK) == 0;
}

// On PATH, or where Debian has it. Folders of PATH that depend on the working directory don't count.
fs::path weasyprint() {
    constexpr std::string_view NAME = "weasyprint";
    const char* const text = std::getenv("PATH");
    std::string_view folders = text != nullptr ? text : "/usr/bin";
    while (!folders.empty()) {
        const std::size_t end = std::min(folders.find(':'), folders.size());
        const fs::path folder = folders.substr(0, end);
        if (folder.is_absolute() && is_program(folder / NAME)) return folder / NAME;
        folders.remove_prefix(std::min(end + 1, folders.size()));
    }
    no_pdf("it needs WeasyPrint, which is not installed: apt-get install weasyprint; or write "
           "the HTML with --html and print it with a browser");
}

// Python counts references and frees by them all that WeasyPrint drops while it lays pages out. Its search for circles
// of objects finds nothing else, and takes a sixth of the time. The program sees the arguments and the folders of
// modules that it has without this: its own folder first, and not the working directory, which -c puts there.
constexpr std::string_view WITHOUT_SEARCH = R"(import sys
own = sys.path[:1] == [""]
if own:
    del sys.path[0]
import gc, os, runpy
gc.disable()
del sys.argv[0]
if own:
    sys.path.insert(0, os.path.dirname(os.path.realpath(sys.argv[0])))
runpy.run_path(sys.argv[0], run_name="__main__")
)";

// Through the interpreter that its first line names, if that is Python.
std::vector<std::string> command_of(const fs::path& program) {
    constexpr std::string_view FLAGS = "BEIOPSqsu"; // that need no value
    const std::string itself = program.string();
    std::ifstream file(program);
    std::string line;
    std::getline(file, line);
    if (!line.starts_with("#!/") && !line.starts_with("#! /")) return {itself};
    std::istringstream text(line.substr(2));
    std::vector<std::string> command{std::istream_iterator<std::string>(text), {}};
    const auto named = [&](std::size_t word) {
        return fs::path(command[word]).filename().string();
    };
    const bool python = named(0).starts_with("python");
    const bool direct = python && (command.size() == 1 ||
                                   (command.size() == 2 && command[1].starts_with('-') &&
                                    command[1].find_first_not_of(FLAGS, 1) == std::string::npos));
    const bool looked_for =
        command.size() == 2 && named(0) == "env" && command[1].starts_with("python");
    if (!direct && !looked_for) return {itself};
    command.insert(command.end(), {"-c", std::string(WITHOUT_SEARCH), itself});
    return command;
}

struct Ended {
    int status = -1; // of wait
    Pdf pdf;
};

Ended run_weasyprint(const fs::path& program, const std::vector<std::string>& options,
                     std::string_view html) {
    const NamelessFile page(html), output, errors;
    std::vector<std::string> command = command_of(program);
    command.insert(command.end(), options.begin(), options.end());
    command.insert(command.end(), {"--encoding", "utf-8", "-", "-"});
    std::vector<char*> argv;
    argv.reserve(command.size() + 1);
    for (std::string& word : command)
        argv.push_back(word.data());
    argv.push_back(nullptr);

    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_adddup2(&files, page.number(), STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&files, output.number(), STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&files, errors.number(), STDERR_FILENO);
    pid_t child = 0;
    const int failure = posix_spawn(&child, argv[0], &files, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&files);
    if (failure != 0)
        no_pdf(program.string() + ": " +
               std::error_code(failure, std::generic_category()).message());
    Ended ended;
    while (waitpid(child, &ended.status, 0) < 0 && errno == EINTR) {
    }
    ended.pdf = {output.content(), errors.content()};
    return ended;
}

std::string how_it_ended(int status) {
    if (WIFSIGNALED(status)) return "was ended by signal " + std::to_string(WTERMSIG(status));
    if (WIFEXITED(status) && WEXITSTATUS(status) != 0)
        return "ended with status " + std::to_string(WEXITSTATUS(status));
    return "wrote no PDF";
}

// Without what it says of every page, which nobody can do anything about.
std::string about_the_page(std::string_view said) {
    std::string lines;
    while (!said.empty()) {
        const std::size_t end = std::min(said.find('\n'), said.size());
        const std::string_view line = said.substr(0, end);
        if (!line.empty() && line.find("PDF/UA support is experimental") == line.npos)
            lines += std::string(line) + '\n';
        said.remove_prefix(std::min(end + 1, said.size()));
    }
    return lines;
}

} // namespace

Pdf pdf_of(std::string_view html, bool accessible) {
    const fs::path program = weasyprint();
    Ended ended = accessible ? run_weasyprint(program, {"--pdf-variant", "pdf/ua-1"}, html)
                             : run_weasyprint(program, {}, html);
    const bool exited = WIFEXITED(ended.status) && WEXITSTATUS(ended.status) == 0;
    if (!exited || !ended.pdf.bytes.starts_with("%PDF-"))
        no_pdf(program.string() + ' ' + how_it_ended(ended.status) +
               (ended.pdf.said.empty() ? "" : ":\n" + ended.pdf.said));
    return {std::move(ended.pdf.bytes), about_the_page(ended.pdf.said)};
}

#endif

} // namespace tarvane::app
