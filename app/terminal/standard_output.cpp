#include "terminal/standard_output.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <string_view>
#include <system_error>

#ifdef _WIN32
#include <cstdlib>

#include <fcntl.h>
#include <io.h>
#include <windows.h>
#else
#include <csignal>
#include <fcntl.h>
#include <unistd.h>
#endif

namespace tarvane::app {

namespace {

#ifdef _WIN32

constexpr int OUTPUT = 1;

// Bytes written, below 0 on a failure. A reader that has gone is an invalid argument here.
long write_some(std::string_view bytes) {
    const int count = _write(OUTPUT, bytes.data(), static_cast<unsigned>(bytes.size()));
    if (count < 0 && errno == EINVAL) errno = EPIPE;
    return count;
}

bool close_output() { return _close(OUTPUT) == 0; }

UINT code_page_before = 0;

#else

constexpr int OUTPUT = STDOUT_FILENO;

long write_some(std::string_view bytes) {
    ssize_t count = -1;
    do
        count = write(OUTPUT, bytes.data(), bytes.size());
    while (count < 0 && errno == EINTR);
    return count;
}

bool close_output() { return close(OUTPUT) == 0 || errno == EINTR; }

#endif

} // namespace

void prepare_standard_streams() {
#ifdef _WIN32
    for (const int stream : {0, 1, 2})
        _setmode(stream, _O_BINARY);
    code_page_before = GetConsoleOutputCP();
    if (code_page_before != 0 && SetConsoleOutputCP(CP_UTF8))
        std::atexit([] { SetConsoleOutputCP(code_page_before); });
#else
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    // Opened in a mode that is not used, they fail as closed ones do.
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        if (fcntl(stream, F_GETFD) < 0 && errno == EBADF)
            open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY);
#endif
}

#ifdef _WIN32

namespace {

bool knows_colour(DWORD stream) {
    const HANDLE console = GetStdHandle(stream);
    DWORD mode = 0;
    return GetConsoleMode(console, &mode) &&
           SetConsoleMode(console, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
}

} // namespace

bool output_on_terminal() { return knows_colour(STD_OUTPUT_HANDLE); }
bool errors_on_terminal() { return knows_colour(STD_ERROR_HANDLE); }

#else

bool output_on_terminal() { return isatty(OUTPUT) != 0; }
bool errors_on_terminal() { return isatty(STDERR_FILENO) != 0; }

#endif

StandardOutput::int_type StandardOutput::overflow(int_type character) {
    if (!traits_type::eq_int_type(character, traits_type::eof()))
        waiting += traits_type::to_char_type(character);
    return traits_type::not_eof(character);
}

std::streamsize StandardOutput::xsputn(const char* from, std::streamsize count) {
    waiting.append(from, static_cast<std::size_t>(count));
    return count;
}

int StandardOutput::sync() {
    write_out();
    return failure == 0 ? 0 : -1;
}

void StandardOutput::write_out() {
    constexpr std::size_t AT_ONCE = 65536;
    std::string_view rest = waiting;
    while (!rest.empty() && failure == 0) {
        const long count = write_some(rest.substr(0, AT_ONCE));
        if (count < 0)
            failure = errno;
        else
            rest.remove_prefix(static_cast<std::size_t>(count));
        written = true;
    }
    waiting.clear();
}

int StandardOutput::finish(int status) {
    constexpr int READER_GONE = 141, NOT_WRITTEN = 2;
    write_out();
    if (failure == 0 && written && !close_output()) failure = errno;
    if (failure == 0) return status;
    if (failure == EPIPE) return READER_GONE;
    std::fprintf(stderr, "tarvane: cannot write standard output: %s\n",
                 std::generic_category().message(failure).c_str());
    return std::max(status, NOT_WRITTEN);
}

} // namespace tarvane::app
