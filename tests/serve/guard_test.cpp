#include "serve/guard.h"

#include <gtest/gtest.h>

#include <set>

namespace tarvane::app {

namespace {

constexpr std::uint16_t PORT = 8123;
const Secrets SECRETS{std::string(64, 'a'), std::string(64, 'b'), std::string(64, 'c')};
const Guard GUARD(PORT, SECRETS);

// A request of the page that is answered; each test changes a header.
RequestHead head(std::string method = "POST", std::string path = "/api/edit") {
    return {std::move(method),
            std::move(path),
            {{"Host", "127.0.0.1:8123"},
             {"Origin", "http://127.0.0.1:8123"},
             {"Sec-Fetch-Site", "same-origin"},
             {"Content-Type", "application/json"},
             {"Content-Length", "2"},
             {"Cookie", "other=1; tarvane-8123=" + SECRETS.cookie},
             {"X-Tarvane", SECRETS.key}}};
}
RequestHead with(RequestHead changed, const std::string& name, const std::string& value) {
    for (auto& [known, old] : changed.headers) {
        if (known == name) {
            old = value;
            return changed;
        }
    }
    changed.headers.emplace_back(name, value);
    return changed;
}
RequestHead without(RequestHead changed, const std::string& name) {
    std::erase_if(changed.headers, [&](const auto& each) { return each.first == name; });
    return changed;
}
RequestHead twice(RequestHead changed, const std::string& name) {
    changed.headers.emplace_back(name, std::string(*changed.header(name)));
    return changed;
}

// 0: it is answered.
unsigned status(const RequestHead& request, bool asset = false) {
    const auto refusal = GUARD.refusal(request, asset);
    return refusal ? refusal->status : 0;
}

TEST(Guard, TheRequestsOfThePageAreAnswered) {
    EXPECT_EQ(status(head()), 0u);
    EXPECT_EQ(status(with(head("GET", "/api/state"), "Content-Length", "0")), 0u);
    EXPECT_EQ(status(without(without(head(), "Origin"), "Sec-Fetch-Site")), 0u);
    EXPECT_EQ(status(with(head(), "Content-Type", "Application/JSON; charset=utf-8")), 0u);
    EXPECT_EQ(
        status(with(with(head(), "Host", "LOCALHOST:8123"), "Origin", "http://localhost:8123")),
        0u);
    EXPECT_EQ(status({"GET", "/", {{"Host", "localhost:8123"}}}, true), 0u);
    EXPECT_EQ(status(with(without(without(head("POST", "/enter"), "Cookie"), "X-Tarvane"),
                          "X-Tarvane", "1")),
              0u);
}

TEST(Guard, AHostThatIsNotOursIsRefusedOnEveryPath) {
    for (const std::string host :
         {"example.com:8123", "127.0.0.1", "127.0.0.1:8124", "127.0.0.1:08123", "127.0.0.1.:8123",
          "127.0.0.2:8123", "localhost.example.com:8123", "[::1]:8123", "0.0.0.0:8123", "",
          "127.0.0.1:8123, example.com", " 127.0.0.1:8123", "user@127.0.0.1:8123"}) {
        EXPECT_EQ(status(with(head(), "Host", host)), 403u) << host;
        EXPECT_EQ(status({"GET", "/", {{"Host", host}}}, true), 403u) << host;
        EXPECT_EQ(status({"GET", "/none", {{"Host", host}}}), 403u) << host;
        EXPECT_EQ(status({"PUT", "/none", {{"Host", host}}}), 403u) << host;
    }
    EXPECT_EQ(status(without(head(), "Host")), 403u);
    EXPECT_EQ(status(twice(head(), "Host")), 403u);
    EXPECT_NE(GUARD.refusal(with(head(), "Host", "evil.com"), false)->words.find("evil.com"),
              std::string::npos);
}

TEST(Guard, APageFromElsewhereIsRefused) {
    for (const std::string origin :
         {"null", "http://example.com", "http://127.0.0.1:9000", "https://127.0.0.1:8123",
          "http://127.0.0.1", "file://", "", "http://example.com:8123", "HTTP://127.0.0.1:8123"}) {
        EXPECT_EQ(status(with(head(), "Origin", origin)), 403u) << origin;
        EXPECT_EQ(status(with(head("GET", "/"), "Origin", origin), true), 403u) << origin;
    }
    EXPECT_EQ(status(twice(head(), "Origin")), 403u);
    for (const std::string site : {"cross-site", "same-site", "other", ""}) {
        EXPECT_EQ(status(with(head(), "Sec-Fetch-Site", site)), 403u) << site;
        EXPECT_EQ(
            status({"GET", "/page.js", {{"Host", "127.0.0.1:8123"}, {"Sec-Fetch-Site", site}}},
                   true),
            403u)
            << site;
    }
    // The address may be followed from the file that hands over the token, but not put into a frame.
    RequestHead followed{"GET",
                         "/",
                         {{"Host", "127.0.0.1:8123"},
                          {"Sec-Fetch-Site", "cross-site"},
                          {"Sec-Fetch-Mode", "navigate"},
                          {"Sec-Fetch-Dest", "document"}}};
    EXPECT_EQ(status(followed, true), 0u);
    EXPECT_EQ(status(with(followed, "Sec-Fetch-Dest", "iframe"), true), 403u);
    EXPECT_EQ(status(with(followed, "Sec-Fetch-Mode", "no-cors"), true), 403u);
    followed.path = "/api/state";
    EXPECT_EQ(status(followed), 403u);
}

TEST(Guard, CookieAndKeyAreBothNeeded) {
    for (const char* const method : {"GET", "POST"}) {
        const RequestHead request = with(head(method, "/api/files"), "Content-Length", "0");
        EXPECT_EQ(status(request), 0u);
        EXPECT_EQ(status(without(request, "Cookie")), 401u);
        EXPECT_EQ(status(with(request, "Cookie", "tarvane-8123=" + SECRETS.token)), 401u);
        EXPECT_EQ(status(with(request, "Cookie", "tarvane-8124=" + SECRETS.cookie)), 401u);
        EXPECT_EQ(status(with(request, "Cookie", "tarvane-8123=" + SECRETS.cookie + "b")), 401u);
        EXPECT_EQ(status(with(request, "Cookie", "tarvane-8123=")), 401u);
        EXPECT_EQ(status(with(request, "Cookie", ";;=;tarvane-8123")), 401u);
        EXPECT_EQ(status(with(request, "X-Tarvane", "1")), 401u);
        EXPECT_EQ(status(with(request, "X-Tarvane", SECRETS.cookie)), 401u);
        EXPECT_EQ(status(without(request, "X-Tarvane")), 403u);
        EXPECT_EQ(status(twice(request, "X-Tarvane")), 403u);
    }
    EXPECT_TRUE(GUARD.is_token(SECRETS.token));
    for (const std::string& wrong :
         {std::string(), SECRETS.key, SECRETS.token + "a", SECRETS.token.substr(1)})
        EXPECT_FALSE(GUARD.is_token(wrong)) << wrong;
    EXPECT_FALSE(Guard(PORT, {}).is_token(""));
}

TEST(Guard, AWriteNeedsJsonOfAKnownLength) {
    for (const std::string type : {"text/plain", "application/x-www-form-urlencoded", "",
                                   "multipart/form-data", "text/plain; application/json"})
        EXPECT_EQ(status(with(head(), "Content-Type", type)), 415u) << type;
    EXPECT_EQ(status(without(head(), "Content-Type")), 415u);
    EXPECT_EQ(status(twice(head(), "Content-Type")), 415u);
    EXPECT_EQ(status(with(head(), "Transfer-Encoding", "chunked")), 411u);
    const RequestHead question = without(head("GET", "/api/files"), "Content-Length");
    EXPECT_EQ(status(question), 0u);
    EXPECT_EQ(status(with(question, "Transfer-Encoding", "chunked")), 411u);
    EXPECT_EQ(status(with(question, "Content-Length", "2")), 413u);
    EXPECT_EQ(status(without(head(), "Content-Length")), 411u);
    EXPECT_EQ(status(with(head(), "Content-Length", "-1")), 411u);
    EXPECT_EQ(status(with(head(), "Content-Length", "2x")), 411u);
    EXPECT_EQ(status(with(head(), "Content-Length", std::to_string(LARGEST_BODY))), 0u);
    EXPECT_EQ(status(with(head(), "Content-Length", std::to_string(LARGEST_BODY + 1))), 413u);
    EXPECT_EQ(status(with(head(), "Content-Length", "99999999999999999999999")), 413u);
    EXPECT_EQ(status(with(head("POST", "/enter"), "Content-Length", "4096")), 0u);
    EXPECT_EQ(status(with(head("POST", "/enter"), "Content-Length", "4097")), 413u);
}

TEST(Guard, OtherMethodsAndPathsAreRefused) {
    for (const std::string method :
         {"HEAD", "PUT", "DELETE", "OPTIONS", "TRACE", "CONNECT", "post"})
        EXPECT_EQ(status(head(method)), 405u) << method;
    EXPECT_EQ(status(without(head("GET", "/enter"), "Content-Length")), 405u);
    EXPECT_EQ(status(head("POST", "/"), true), 405u);
    EXPECT_EQ(status(without(head("GET", "/none"), "Content-Length")), 404u);
    EXPECT_EQ(status(without(head("GET", "/api"), "Content-Length")), 404u);
}

TEST(Guard, SecretsAreRandomBytesOfTheirOwn) {
    std::set<std::string> known;
    for (int i = 0; i < 8; ++i) {
        const Secrets secrets = new_secrets();
        for (const std::string& each : {secrets.token, secrets.cookie, secrets.key}) {
            EXPECT_EQ(each.size(), 64u);
            EXPECT_TRUE(known.insert(each).second);
        }
    }
    EXPECT_EQ(GUARD.set_cookie(),
              "tarvane-8123=" + SECRETS.cookie + "; HttpOnly; SameSite=Strict; Path=/");
}

} // namespace

} // namespace tarvane::app
