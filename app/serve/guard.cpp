#include "serve/guard.h"

#include "values/text.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <stdexcept>
#include <sys/random.h>

namespace tarvane::app {

using vessel::echoed;

namespace {

constexpr std::size_t RANDOM_BYTES = 32;

std::string random_digits() {
    constexpr std::string_view DIGITS = "0123456789abcdef";
    unsigned char bytes[RANDOM_BYTES];
    if (getrandom(bytes, sizeof bytes, 0) != static_cast<ssize_t>(sizeof bytes))
        throw std::runtime_error("the system gives no random bytes");
    std::string digits;
    for (const unsigned char byte : bytes) {
        digits += DIGITS[byte >> 4];
        digits += DIGITS[byte & 15];
    }
    return digits;
}

bool same_word(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
        return std::tolower(static_cast<unsigned char>(x)) ==
               std::tolower(static_cast<unsigned char>(y));
    });
}

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t") + 1 - first);
}

// In a time that depends on the length of the given text alone.
bool same_secret(std::string_view given, std::string_view ours) {
    if (ours.empty()) return false;
    unsigned difference = given.size() == ours.size() ? 0u : 1u;
    for (std::size_t i = 0; i < given.size(); ++i)
        difference |= static_cast<unsigned char>(given[i]) ^
                      static_cast<unsigned>(static_cast<unsigned char>(ours[i % ours.size()]));
    return difference == 0;
}

} // namespace

std::optional<std::string_view> RequestHead::header(std::string_view name) const {
    for (const auto& [known, value] : headers) {
        if (same_word(known, name)) return value;
    }
    return std::nullopt;
}

std::size_t RequestHead::count(std::string_view name) const {
    return static_cast<std::size_t>(
        std::count_if(headers.begin(), headers.end(),
                      [name](const auto& each) { return same_word(each.first, name); }));
}

Secrets new_secrets() { return {random_digits(), random_digits(), random_digits()}; }

bool Guard::is_token(std::string_view given) const { return same_secret(given, secrets.token); }

std::string Guard::set_cookie() const {
    return cookie_name() + "=" + secrets.cookie + "; HttpOnly; SameSite=Strict; Path=/";
}

// "127.0.0.1:8123", "localhost:8123"
bool Guard::is_ours(std::string_view host) const {
    const std::size_t colon = host.rfind(':');
    if (colon == std::string_view::npos) return false;
    const std::string_view name = host.substr(0, colon);
    return host.substr(colon + 1) == std::to_string(port) &&
           (name == "127.0.0.1" || same_word(name, "localhost"));
}

// A name that was made to lead here shows what a foreign page calls us.
std::string Guard::host_fault(const RequestHead& head) const {
    if (head.count("Host") != 1) return "one header Host is expected";
    const std::string_view host = *head.header("Host");
    if (is_ours(host)) return {};
    return "this server is http://127.0.0.1:" + std::to_string(port) + "/, not " + echoed(host);
}

std::string Guard::origin_fault(const RequestHead& head) const {
    constexpr std::string_view SCHEME = "http://";
    if (head.count("Origin") > 1) return "one header Origin is expected";
    if (const auto origin = head.header("Origin")) {
        if (!origin->starts_with(SCHEME) || !is_ours(origin->substr(SCHEME.size())))
            return "a page from elsewhere asks: " + echoed(*origin);
    }
    // The address may be followed from anywhere, from the file that hands over the token above all.
    if (head.method == "GET" && head.path == "/" && head.header("Sec-Fetch-Mode") == "navigate" &&
        head.header("Sec-Fetch-Dest") == "document")
        return {};
    if (head.count("Sec-Fetch-Site") > 1) return "one header Sec-Fetch-Site is expected";
    const auto site = head.header("Sec-Fetch-Site");
    if (site && *site != "same-origin" && *site != "none")
        return "a page from elsewhere asks: " + echoed(*site);
    return {};
}

std::string Guard::type_fault(const RequestHead& head) const {
    constexpr std::string_view JSON = "application/json";
    const std::string_view type = head.header("Content-Type").value_or("");
    const std::string_view name = trimmed(type.substr(0, type.find(';')));
    if (head.count("Content-Type") != 1 || !same_word(name, JSON))
        return "Content-Type: application/json is expected";
    return {};
}

bool Guard::has_cookie(const RequestHead& head) const {
    const std::string name = cookie_name();
    bool found = false;
    for (const auto& [header, value] : head.headers) {
        if (!same_word(header, "Cookie")) continue;
        std::string_view rest = value;
        while (!rest.empty()) {
            const std::size_t end = std::min(rest.find(';'), rest.size());
            const std::string_view pair = trimmed(rest.substr(0, end));
            const std::size_t equals = pair.find('=');
            if (equals != std::string_view::npos && pair.substr(0, equals) == name)
                found = same_secret(pair.substr(equals + 1), secrets.cookie) || found;
            rest.remove_prefix(std::min(end + 1, rest.size()));
        }
    }
    return found;
}

std::optional<Guard::Refusal> Guard::refusal(const RequestHead& head, bool asset) const {
    if (std::string fault = host_fault(head); !fault.empty()) return Refusal{403, std::move(fault)};
    if (std::string fault = origin_fault(head); !fault.empty())
        return Refusal{403, std::move(fault)};
    const bool writes = head.method == "POST";
    if (!writes && head.method != "GET") return Refusal{405, "GET or POST is expected"};
    // Of a length that isn't known nothing is taken, nor anything with a question.
    if (head.header("Transfer-Encoding")) return Refusal{411, "a body in one piece is expected"};
    if (!writes && head.header("Content-Length").value_or("0") != "0")
        return Refusal{413, "a request without a body is expected"};
    const bool entry = head.path == ENTRY, api = head.path.starts_with(API);
    if (!entry && !api) {
        if (!asset) return Refusal{404, "there is no such page"};
        if (writes) return Refusal{405, "GET is expected"};
        return std::nullopt;
    }
    if (head.count(OWN_HEADER) != 1 || head.header(OWN_HEADER)->empty())
        return Refusal{403, "the header " + std::string(OWN_HEADER) + " is missing"};
    if (entry && !writes) return Refusal{405, "POST is expected"};
    if (api && (!has_cookie(head) || !same_secret(*head.header(OWN_HEADER), secrets.key)))
        return Refusal{401, "open the link of the file that the terminal names"};
    if (writes) {
        if (std::string fault = type_fault(head); !fault.empty())
            return Refusal{415, std::move(fault)};
        const std::string_view length = head.header("Content-Length").value_or("");
        std::size_t bytes = 0;
        const auto [end, error] =
            std::from_chars(length.data(), length.data() + length.size(), bytes);
        if (error == std::errc::invalid_argument || end != length.data() + length.size())
            return Refusal{411, "Content-Length is expected"};
        if (error != std::errc() || bytes > (entry ? LARGEST_ENTRY : LARGEST_BODY))
            return Refusal{413, "the body is too large"};
    }
    return std::nullopt;
}

std::vector<std::pair<std::string, std::string>> security_headers() {
    return {{"Content-Security-Policy",
             "default-src 'none'; script-src 'self'; style-src 'self'; img-src 'self' data:; "
             "font-src 'self'; connect-src 'self'; form-action 'none'; frame-ancestors 'none'; "
             "base-uri 'none'"},
            {"X-Content-Type-Options", "nosniff"},
            {"X-Frame-Options", "DENY"},
            {"Referrer-Policy", "no-referrer"},
            {"Cross-Origin-Resource-Policy", "same-origin"},
            {"Cross-Origin-Opener-Policy", "same-origin"},
            {"Cache-Control", "no-store"}};
}

} // namespace tarvane::app
