// A process of this program that works for this one: texts go to it and come from it.
#pragma once

#include <mutex>
#include <optional>
#include <string>
#include <string_view>

namespace tarvane::app {

// One thread talks to it; any other may end it.
class ChildProcess {
  public:
    // With one argument. Interrupts of the terminal don't reach it. Throws std::runtime_error.
    explicit ChildProcess(const char* argument);
    // Tells it that there is no more, and waits for its end.
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    // False, or nothing: it has ended.
    bool send(std::string_view text);
    std::optional<std::string> receive();
    // Waits for its end: "its process was ended by signal 9 (Killed)".
    std::string end();
    void kill();

  private:
    std::mutex living; // it is not waited for while it is ended
    bool waited = false;
#ifdef _WIN32
    void *process, *to, *from;
#else
    int process, to, from;
#endif
    std::string ended;

    bool write(const char* bytes, std::size_t count);
    bool read(char* bytes, std::size_t count);
    void close_ends();
};

// The other end, in the child: texts that come and go through its standard streams. What else it writes to standard
// output goes to standard error.
class ParentProcess {
  public:
    ParentProcess();

    // Nothing, or false: there is no more.
    std::optional<std::string> receive() const;
    bool send(std::string_view text) const;

  private:
    int from = 0, to;

    bool write(const char* bytes, std::size_t count) const;
    bool read(char* bytes, std::size_t count) const;
};

} // namespace tarvane::app
