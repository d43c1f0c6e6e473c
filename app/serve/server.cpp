#include "serve/server.h"

#include "serve/assets.h"

#include <microhttpd.h>

#include <arpa/inet.h>
#include <atomic>
#include <cerrno>
#include <condition_variable>
#include <cstring>
#include <exception>
#include <mutex>
#include <netinet/in.h>
#include <stdexcept>
#include <sys/socket.h>
#include <system_error>
#include <thread>
#include <unistd.h>

namespace tarvane::app {

namespace {

constexpr unsigned MOST_CONNECTIONS = 256;
constexpr std::size_t CONNECTION_MEMORY = 32 * 1024; // address and headers, and what is on its way
constexpr unsigned IDLE_SECONDS = 60;
constexpr int WAITING_CONNECTIONS = 128; // before they are accepted
constexpr int MOST_LATER = 2;            // answers that are made elsewhere
constexpr unsigned BUSY = 503;

[[noreturn]] void cannot_listen(int socket, const std::string& what) {
    const int reason = errno;
    if (socket >= 0) close(socket);
    throw std::runtime_error(what + ": " +
                             std::error_code(reason, std::generic_category()).message());
}

// A request while it comes in, and its answer where that is made elsewhere.
struct Incoming {
    RequestHead head;
    Query query;
    std::string body;
    Reply answer;
    std::atomic<bool> ready = false;
};

MHD_Result put_header(void* to, MHD_ValueKind, const char* name, const char* value) {
    static_cast<Incoming*>(to)->head.headers.emplace_back(name, value != nullptr ? value : "");
    return MHD_YES;
}

MHD_Result put_argument(void* to, MHD_ValueKind, const char* name, const char* value) {
    static_cast<Incoming*>(to)->query[name] = value != nullptr ? value : "";
    return MHD_YES;
}

MHD_Result send(MHD_Connection* connection, const Reply& answer) {
    // The library copies the bytes; it does not change them.
    MHD_Response* response = MHD_create_response_from_buffer(
        answer.body.size(), const_cast<char*>(answer.body.data()), // NOLINT
        MHD_RESPMEM_MUST_COPY);
    if (response == nullptr) return MHD_NO;
    const auto add = [response](const std::string& name, const std::string& value) {
        MHD_add_response_header(response, name.c_str(), value.c_str());
    };
    add("Content-Type", answer.type);
    for (const auto& [name, value] : security_headers())
        add(name, value);
    for (const auto& [name, value] : answer.headers)
        add(name, value);
    const MHD_Result queued = MHD_queue_response(connection, answer.status, response);
    MHD_destroy_response(response);
    return queued;
}

} // namespace

Listener listen_on(std::uint16_t port) {
    const int made = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (made < 0) cannot_listen(made, "there is no socket");
    // After a server that has just ended; one that runs keeps its port.
    const int on = 1;
    setsockopt(made, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(port);
    socklen_t size = sizeof address;
    if (bind(made, reinterpret_cast<const sockaddr*>(&address), size) != 0 ||
        listen(made, WAITING_CONNECTIONS) != 0)
        cannot_listen(made, errno == EADDRINUSE
                                ? "port " + std::to_string(port) +
                                      " is taken by another program; choose another one with --port"
                                : "port " + std::to_string(port) + " can't be used");
    if (getsockname(made, reinterpret_cast<sockaddr*>(&address), &size) != 0 ||
        address.sin_addr.s_addr != htonl(INADDR_LOOPBACK))
        cannot_listen(made, "the socket is not one of this computer alone");
    return {made, ntohs(address.sin_port)};
}

struct Server::State {
    const Guard& guard;
    Routes& routes;
    MHD_Daemon* daemon = nullptr;
    std::mutex mutex;
    std::condition_variable less;
    int later = 0; // threads that make answers

    State(const Guard& of_server, Routes& to) : guard(of_server), routes(to) {}

    static MHD_Result handle(void* self, MHD_Connection* connection, const char* url,
                             const char* method, const char*, const char* data, std::size_t* size,
                             void** request) noexcept {
        try {
            return static_cast<State*>(self)->take(connection, url, method, data, *size, *request);
        } catch (const std::exception&) { // no memory: the connection ends
            return MHD_NO;
        }
    }

    static void ended(void*, MHD_Connection*, void** request, MHD_RequestTerminationCode) {
        delete static_cast<Incoming*>(*request);
        *request = nullptr;
    }

    MHD_Result take(MHD_Connection* connection, const char* url, const char* method,
                    const char* data, std::size_t& size, void*& request) {
        auto* incoming = static_cast<Incoming*>(request);
        if (incoming == nullptr) {
            auto made = std::make_unique<Incoming>();
            made->head.method = method;
            made->head.path = url;
            MHD_get_connection_values(connection, MHD_HEADER_KIND, put_header, made.get());
            MHD_get_connection_values(connection, MHD_GET_ARGUMENT_KIND, put_argument, made.get());
            incoming = made.release();
            request = incoming;
            const bool asset = asset_at(incoming->head.path).has_value();
            const auto refusal = guard.refusal(incoming->head, asset);
            if (refusal) return send(connection, error_reply(refusal->status, refusal->words));
            return MHD_YES;
        }
        if (size > 0) {
            if (incoming->head.method == "POST") {
                if (size > LARGEST_BODY - incoming->body.size()) return MHD_NO;
                incoming->body.append(data, size);
            }
            size = 0;
            return MHD_YES;
        }
        if (incoming->ready) return send(connection, incoming->answer);
        Reply answer = routes.answer(incoming->head, incoming->query, incoming->body);
        if (!answer.later) return send(connection, answer);
        return wait_for(connection, *incoming, std::move(answer));
    }

    MHD_Result wait_for(MHD_Connection* connection, Incoming& incoming, Reply answer) {
        {
            const std::lock_guard<std::mutex> lock(mutex);
            if (later == MOST_LATER)
                return send(connection, error_reply(BUSY, "other downloads are being made"));
            ++later;
        }
        MHD_suspend_connection(connection);
        const auto work = [this, connection, &incoming, make = std::move(answer.later)] {
            try {
                incoming.answer = make();
            } catch (const std::exception& problem) {
                incoming.answer = error_reply(500, problem.what());
            }
            const std::lock_guard<std::mutex> lock(mutex);
            incoming.ready = true;
            if (daemon != nullptr) MHD_resume_connection(connection);
            --later;
            less.notify_all();
        };
        try {
            std::thread(work).detach();
        } catch (const std::system_error&) {
            const std::lock_guard<std::mutex> lock(mutex);
            --later;
            incoming.answer = error_reply(BUSY, "the system has no thread for it");
            incoming.ready = true;
            MHD_resume_connection(connection);
        }
        return MHD_YES;
    }

    bool stop() {
        if (daemon == nullptr) return true;
        std::unique_lock<std::mutex> lock(mutex);
        if (later > 0) return false;
        MHD_Daemon* stopped = daemon;
        daemon = nullptr;
        lock.unlock();
        MHD_stop_daemon(stopped);
        return true;
    }
};

Server::Server(const Listener& listener, const Guard& guard, Routes& routes)
    : state(std::make_unique<State>(guard, routes)) {
    state->daemon =
        MHD_start_daemon(MHD_USE_EPOLL_INTERNAL_THREAD | MHD_ALLOW_SUSPEND_RESUME, 0, nullptr,
                         nullptr, &State::handle, state.get(), MHD_OPTION_LISTEN_SOCKET,
                         listener.socket, MHD_OPTION_CONNECTION_LIMIT, MOST_CONNECTIONS,
                         MHD_OPTION_CONNECTION_MEMORY_LIMIT, CONNECTION_MEMORY,
                         MHD_OPTION_CONNECTION_TIMEOUT, IDLE_SECONDS, MHD_OPTION_STRICT_FOR_CLIENT,
                         1, MHD_OPTION_NOTIFY_COMPLETED, &State::ended, nullptr, MHD_OPTION_END);
    if (state->daemon == nullptr) cannot_listen(listener.socket, "the server does not start");
}

Server::~Server() { stop(); }

bool Server::stop() { return state->stop(); }

} // namespace tarvane::app
