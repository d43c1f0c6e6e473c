// From a request that may be answered to its answer: all of the page's interface but the connection.
#pragma once

#include "serve/guard.h"
#include "serve/rating_memory.h"
#include "serve/workbench.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tarvane::app {

struct Reply {
    unsigned status = 200;
    std::string type = "application/json";
    std::string body = {};
    std::vector<std::pair<std::string, std::string>> headers = {};
    // What takes long and needs neither documents nor engine: made elsewhere, it is the answer.
    std::function<Reply()> later = {};
};

// {"error": "words"}
Reply error_reply(unsigned status, std::string_view words, std::string_view member = {},
                  std::string_view value = {});

using Query = std::map<std::string, std::string, std::less<>>;

class Routes {
  public:
    // `first`: the handle of the document that is open from the start; empty: none.
    Routes(Workbench& files, const Guard& of_server, std::string first)
        : workbench(files), guard(of_server), first_document(std::move(first)) {}

    // Never throws but for want of memory.
    Reply answer(const RequestHead& head, const Query& query, std::string_view body);

  private:
    Workbench& workbench;
    const Guard& guard;
    std::string first_document;
    std::string fields; // made once
    RatingMemory memory;

    Reply enter(std::string_view body) const;
    Reply get(std::string_view name, const Query& query);
    Reply post(std::string_view name, const vessel::Table& body);
    Reply edit(const vessel::Table& body, bool keep);
    Reply stepped(const vessel::Table& body, bool back);
    Reply download(std::string_view form, OpenDocument& document);
    Reply state(const OpenDocument& document);
    Reply worked(const vessel::Table& body, const OpenDocument* changed, const std::string& text);
};

} // namespace tarvane::app
