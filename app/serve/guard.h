// Whether a request is answered at all: by its head alone, before its body is read and before anything looks at
// what it asks for.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tarvane::app {

// The head of a request as it came.
struct RequestHead {
    std::string method, path; // the path without what follows a "?"
    std::vector<std::pair<std::string, std::string>> headers;

    // The header of a name, whatever its case; nothing without one.
    std::optional<std::string_view> header(std::string_view name) const;
    std::size_t count(std::string_view name) const;
};

// What a browser of the user has and nobody else: the token opens the door once, cookie and key go with each
// request. A cookie goes to every server of this computer that the browser visits, whatever its port; so it
// opens nothing without the key, which the page keeps where pages of other ports do not reach.
struct Secrets {
    std::string token, cookie, key;
};

// 32 random bytes each, in hexadecimal digits. Throws std::runtime_error.
Secrets new_secrets();

class Guard {
  public:
    Guard(std::uint16_t of_port, Secrets of_server)
        : port(of_port), secrets(std::move(of_server)) {}

    struct Refusal {
        unsigned status;
        std::string words; // for people
    };
    // Nothing: it is answered. `asset`: the path is that of a file of the page.
    std::optional<Refusal> refusal(const RequestHead& head, bool asset) const;

    // Whether a token is ours; the time that it takes does not depend on where it differs.
    bool is_token(std::string_view given) const;
    std::string cookie_name() const { return "tarvane-" + std::to_string(port); }
    // The header that sets it.
    std::string set_cookie() const;
    const std::string& key() const { return secrets.key; }

  private:
    std::uint16_t port;
    Secrets secrets;

    std::string host_fault(const RequestHead& head) const;
    std::string origin_fault(const RequestHead& head) const;
    std::string type_fault(const RequestHead& head) const;
    bool has_cookie(const RequestHead& head) const;
    bool is_ours(std::string_view host) const;
};

inline constexpr std::string_view OWN_HEADER = "X-Tarvane", ENTRY = "/enter", API = "/api/";

// Largest bodies of requests: of the entry, and of the others.
inline constexpr std::size_t LARGEST_ENTRY = 4096, LARGEST_BODY = 16 * 1024 * 1024;

// Headers of every answer.
std::vector<std::pair<std::string, std::string>> security_headers();

} // namespace tarvane::app
