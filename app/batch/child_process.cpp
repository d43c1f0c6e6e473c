#include "batch/child_process.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <system_error>

#ifdef _WIN32
#include <io.h>
#include <windows.h>
#else
#include <csignal>
#include <fcntl.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ; // NOLINT(readability-redundant-declaration): not every system declares it
#endif

namespace tarvane::app {

namespace {

constexpr std::size_t AT_ONCE = 1 << 20;

// ---- a text is its length and its bytes ------------------------------------------------------------------

using Head = std::array<char, sizeof(std::uint64_t)>;

template <class Write>
bool send_text(std::string_view text, const Write& write) {
    const std::uint64_t size = text.size();
    Head head;
    std::memcpy(head.data(), &size, head.size());
    return write(head.data(), head.size()) && write(text.data(), text.size());
}

template <class Read>
std::optional<std::string> receive_text(const Read& read) {
    Head head;
    if (!read(head.data(), head.size())) return std::nullopt;
    std::uint64_t size = 0;
    std::memcpy(&size, head.data(), head.size());
    std::string text;
    while (text.size() < size) {
        const std::size_t before = text.size();
        text.resize(before +
                    static_cast<std::size_t>(std::min<std::uint64_t>(size - before, AT_ONCE)));
        if (!read(text.data() + before, text.size() - before)) return std::nullopt;
    }
    return text;
}

// All of the bytes by `some`, which takes a part of them and returns how many, 0 or less at the end.
template <class Bytes, class Some>
bool all(Bytes* bytes, std::size_t count, const Some& some) {
    while (count > 0) {
        const long done = some(bytes, std::min(count, AT_ONCE));
        if (done <= 0) return false;
        bytes += done;
        count -= static_cast<std::size_t>(done);
    }
    return true;
}

#ifdef _WIN32
long read_some(int file, char* bytes, std::size_t count) {
    return _read(file, bytes, static_cast<unsigned>(count));
}
long write_some(int file, const char* bytes, std::size_t count) {
    return _write(file, bytes, static_cast<unsigned>(count));
}
#else
template <class Call>
long uninterrupted(const Call& call) {
    for (;;) {
        const ssize_t done = call();
        if (done >= 0 || errno != EINTR) return done;
    }
}
long read_some(int file, char* bytes, std::size_t count) {
    return uninterrupted([&] { return ::read(file, bytes, count); });
}
long write_some(int file, const char* bytes, std::size_t count) {
    return uninterrupted([&] { return ::write(file, bytes, count); });
}
#endif

} // namespace

bool Channel::send(std::string_view text) {
    return send_text(text, [this](const char* b, std::size_t n) { return write(b, n); });
}

std::optional<std::string> Channel::receive() {
    return receive_text([this](char* b, std::size_t n) { return read(b, n); });
}

ChildProcess::~ChildProcess() { end(); }

// ---- the child -------------------------------------------------------------------------------------------

#ifdef _WIN32

namespace {

[[noreturn]] void fail() {
    const std::error_code reason(static_cast<int>(GetLastError()), std::system_category());
    throw std::runtime_error("cannot start a process: " + reason.message());
}

// The end of a pipe that the child gets is the one that it may inherit.
void make_pipe(HANDLE& read, HANDLE& write, HANDLE& inherited) {
    if (!CreatePipe(&read, &write, nullptr, 0)) fail();
    SetHandleInformation(inherited, HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT);
}

std::mutex& starting() { // no child inherits the pipe of another
    static std::mutex mutex;
    return mutex;
}

} // namespace

ChildProcess::ChildProcess(const char* argument) : process(nullptr), to(nullptr), from(nullptr) {
    constexpr DWORD LONGEST = 32767;
    const std::lock_guard lock(starting());
    std::wstring program(LONGEST, L'\0');
    program.resize(GetModuleFileNameW(nullptr, program.data(), LONGEST));
    std::wstring line = L'"' + program + L"\" ";
    for (const char* c = argument; *c != '\0'; ++c)
        line += static_cast<wchar_t>(*c);
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    make_pipe(start.hStdInput, to, start.hStdInput);
    make_pipe(from, start.hStdOutput, start.hStdOutput);
    start.hStdError = GetStdHandle(STD_ERROR_HANDLE);
    PROCESS_INFORMATION information{};
    const BOOL started =
        CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, TRUE,
                       CREATE_NEW_PROCESS_GROUP, nullptr, nullptr, &start, &information);
    CloseHandle(start.hStdInput);
    CloseHandle(start.hStdOutput);
    if (!started) {
        close_ends();
        fail();
    }
    CloseHandle(information.hThread);
    process = information.hProcess;
}

bool ChildProcess::write(const char* bytes, std::size_t count) {
    return all(bytes, count, [this](const char* part, std::size_t size) -> long {
        DWORD done = 0;
        return WriteFile(to, part, static_cast<DWORD>(size), &done, nullptr)
                   ? static_cast<long>(done)
                   : -1;
    });
}

bool ChildProcess::read(char* bytes, std::size_t count) {
    return all(bytes, count, [this](char* part, std::size_t size) -> long {
        DWORD done = 0;
        return ReadFile(from, part, static_cast<DWORD>(size), &done, nullptr)
                   ? static_cast<long>(done)
                   : -1;
    });
}

void ChildProcess::close_ends() {
    for (void** end : {&to, &from}) {
        if (*end != nullptr) CloseHandle(*end);
        *end = nullptr;
    }
}

std::string ChildProcess::end() {
    if (waited) return ended;
    close_ends();
    WaitForSingleObject(process, INFINITE);
    const std::lock_guard lock(living);
    DWORD status = 0;
    GetExitCodeProcess(process, &status);
    CloseHandle(process);
    waited = true;
    return ended = "its process ended with status " + std::to_string(status);
}

void ChildProcess::kill() {
    const std::lock_guard lock(living);
    if (!waited) TerminateProcess(process, 1);
}

ParentProcess::ParentProcess() : to(_dup(1)) { _dup2(2, 1); }

#else

namespace {

// Those that a terminal sends to all of its processes.
constexpr int FROM_TERMINAL[] = {SIGINT, SIGQUIT, SIGHUP};

[[noreturn]] void fail(int reason) {
    throw std::runtime_error("cannot start a process: " + std::generic_category().message(reason));
}

void make_pipe(int& read, int& write) {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) fail(errno);
    read = ends[0];
    write = ends[1];
}

} // namespace

ChildProcess::ChildProcess(const char* argument) : process(0), to(-1), from(-1) {
    int its_input = -1, its_output = -1;
    make_pipe(its_input, to);
    make_pipe(from, its_output);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, its_input, STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, its_output, STDOUT_FILENO);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t blocked;
    sigemptyset(&blocked);
    for (const int interrupt : FROM_TERMINAL)
        sigaddset(&blocked, interrupt);
    posix_spawnattr_setsigmask(&attributes, &blocked);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK);
    std::string name = "tarvane", text = argument;
    char* arguments[] = {name.data(), text.data(), nullptr};
    // The program that runs, also when its file has been replaced since.
    const int failure =
        posix_spawn(&process, "/proc/self/exe", &actions, &attributes, arguments, environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    ::close(its_input);
    ::close(its_output);
    if (failure != 0) {
        close_ends();
        fail(failure);
    }
}

bool ChildProcess::write(const char* bytes, std::size_t count) {
    return all(bytes, count, [this](const char* b, std::size_t n) { return write_some(to, b, n); });
}

bool ChildProcess::read(char* bytes, std::size_t count) {
    return all(bytes, count, [this](char* b, std::size_t n) { return read_some(from, b, n); });
}

void ChildProcess::close_ends() {
    for (int* end : {&to, &from}) {
        if (*end >= 0) ::close(*end);
        *end = -1;
    }
}

std::string ChildProcess::end() {
    if (waited) return ended;
    close_ends();
    // Its end is awaited first and taken note of under the lock: no other process has its number until then.
    siginfo_t information{};
    while (waitid(P_PID, static_cast<id_t>(process), &information, WEXITED | WNOWAIT) != 0 &&
           errno == EINTR) {
    }
    const std::lock_guard lock(living);
    int status = 0;
    while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
    }
    waited = true;
    if (WIFSIGNALED(status))
        ended = "its process was ended by signal " + std::to_string(WTERMSIG(status)) + " (" +
                strsignal(WTERMSIG(status)) + ')';
    else
        ended = "its process ended with status " + std::to_string(WEXITSTATUS(status));
    return ended;
}

void ChildProcess::kill() {
    const std::lock_guard lock(living);
    if (!waited) ::kill(process, SIGKILL);
}

// ---- a connection ----------------------------------------------------------------------------------------

Connection::~Connection() { ::close(socket); }

bool Connection::write(const char* bytes, std::size_t count) {
    return all(bytes, count,
               [this](const char* b, std::size_t n) { return write_some(socket, b, n); });
}

bool Connection::read(char* bytes, std::size_t count) {
    return all(bytes, count, [this](char* b, std::size_t n) { return read_some(socket, b, n); });
}

std::string Connection::end() {
    kill();
    return "the process that it was given to has ended";
}

void Connection::kill() { ::shutdown(socket, SHUT_RDWR); }

// ----------------------------------------------------------------------------------------------------------

ParentProcess::ParentProcess() : to(fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 3)) {
    dup2(STDERR_FILENO, STDOUT_FILENO);
}

#endif

bool ParentProcess::write(const char* bytes, std::size_t count) const {
    return all(bytes, count, [this](const char* b, std::size_t n) { return write_some(to, b, n); });
}

bool ParentProcess::read(char* bytes, std::size_t count) const {
    return all(bytes, count, [this](char* b, std::size_t n) { return read_some(from, b, n); });
}

std::optional<std::string> ParentProcess::receive() const {
    return receive_text([this](char* b, std::size_t n) { return read(b, n); });
}

bool ParentProcess::send(std::string_view text) const {
    return send_text(text, [this](const char* b, std::size_t n) { return write(b, n); });
}

} // namespace tarvane::app
