// The connections: requests of browsers of this computer, guarded, to their answers.
#pragma once

#include "serve/guard.h"
#include "serve/routes.h"

#include <cstdint>
#include <memory>

namespace tarvane::app {

// A socket of 127.0.0.1 that listens, and its port.
struct Listener {
    int socket;
    std::uint16_t port;
};
// `port` 0: one that is free. Throws std::runtime_error, which names a port that is taken.
Listener listen_on(std::uint16_t port);

class Server {
  public:
    // Answers until it is stopped; requests one after the other, in a thread of its own. Throws std::runtime_error.
    Server(const Listener& listener, const Guard& guard, Routes& routes);
    ~Server();
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    // No connection any more. False: work of another program that an answer waits for is still going on, and its thread
    // with it.
    bool stop();

  private:
    struct State;
    std::unique_ptr<State> state;
};

} // namespace tarvane::app
