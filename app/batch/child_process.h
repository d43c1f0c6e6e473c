// Processes that work for this one: texts go to them and come from them.
#pragma once

#include <mutex>
#include <optional>
#include <string>
#include <string_view>

namespace tarvane::app {

// One thread talks through it; any other may end it.
class Channel {
  public:
    Channel() = default;
    virtual ~Channel() = default;
    Channel(const Channel&) = delete;
    Channel& operator=(const Channel&) = delete;

    // False, or nothing: the other side has ended.
    bool send(std::string_view text);
    std::optional<std::string> receive();
    // Waits for that end: "its process was ended by signal 9 (Killed)".
    virtual std::string end() = 0;
    virtual void kill() = 0;

  private:
    virtual bool write(const char* bytes, std::size_t count) = 0;
    virtual bool read(char* bytes, std::size_t count) = 0;
};

// A process of this program.
class ChildProcess : public Channel {
  public:
    // With one argument. Interrupts of the terminal don't reach it. Throws std::runtime_error.
    explicit ChildProcess(const char* argument);
    // Tells it that there is no more, and waits for its end.
    ~ChildProcess() override;

    std::string end() override;
    void kill() override;

  private:
    std::mutex living; // it is not waited for while it is ended
    bool waited = false;
#ifdef _WIN32
    void *process, *to, *from;
#else
    int process, to, from;
#endif
    std::string ended;

    bool write(const char* bytes, std::size_t count) override;
    bool read(char* bytes, std::size_t count) override;
    void close_ends();
};

#ifndef _WIN32

// A process that has one end of a pair of sockets, as this one has the other.
class Connection : public Channel {
  public:
    explicit Connection(int file) : socket(file) {}
    ~Connection() override;

    std::string end() override;
    void kill() override;

  private:
    int socket;

    bool write(const char* bytes, std::size_t count) override;
    bool read(char* bytes, std::size_t count) override;
};

#endif

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
