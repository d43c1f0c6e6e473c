#include "serve/routes.h"

#include "commands/run_output.h"
#include "components/calculation.h"
#include "components/engine_session.h"
#include "document/csv.h"
#include "document/html.h"
#include "document/new_files.h"
#include "input/input_file.h"
#include "serve/assets.h"
#include "serve/document_json.h"
#include "serve/refused.h"
#include "serve/vocabulary_json.h"
#include "surface/engine_turn.h"
#include "terminal/pdf.h"
#include "values/json.h"
#include "values/text.h"

#include <algorithm>
#include <exception>
#include <new>

namespace tarvane::app {

using namespace vessel;

namespace {

constexpr unsigned BAD_REQUEST = 400, FORBIDDEN = 403, NOT_FOUND = 404, CONFLICT = 409,
                   UNUSABLE = 422, FAILED = 500;
constexpr std::size_t MOST_EDITS = 2000;

// ---- members of bodies -----------------------------------------------------------------------------------

const std::string* text_in(const Table& body, std::string_view name) {
    const Value* value = body.find(name);
    if (value == nullptr || value->null()) return nullptr;
    if (value->text() == nullptr)
        throw RequestRefused(BAD_REQUEST, std::string(name) + ": a text is expected");
    return value->text();
}

const std::string& needed_text(const Table& body, std::string_view name) {
    const std::string* text = text_in(body, name);
    if (text == nullptr) throw RequestRefused(BAD_REQUEST, std::string(name) + " is missing");
    return *text;
}

bool flag_in(const Table& body, std::string_view name) {
    const Value* value = body.find(name);
    if (value == nullptr) return false;
    if (value->flag() == nullptr)
        throw RequestRefused(BAD_REQUEST, std::string(name) + ": true or false is expected");
    return *value->flag();
}

std::optional<std::int64_t> whole_in(const Table& body, std::string_view name) {
    const Value* value = body.find(name);
    if (value == nullptr || value->null()) return std::nullopt;
    if (value->whole() == nullptr)
        throw RequestRefused(BAD_REQUEST, std::string(name) + ": a whole number is expected");
    return *value->whole();
}

std::vector<FieldEdit> edits_in(const Table& body) {
    const Value* value = body.find("edits");
    if (value == nullptr) return {};
    const List* list = value->list();
    if (list == nullptr || list->size() > MOST_EDITS)
        throw RequestRefused(BAD_REQUEST, "edits: a list of changes is expected");
    std::vector<FieldEdit> edits;
    for (const Value& item : *list) {
        const Table* table = item.table();
        if (table == nullptr)
            throw RequestRefused(BAD_REQUEST, "edits: a list of changes is expected");
        FieldEdit edit{.path = needed_text(*table, "path"), .typed = {}, .value = {}};
        if (const std::string* typed = text_in(*table, "typed")) edit.typed = *typed;
        if (const Value* given = table->find("value")) edit.value = *given;
        const int kinds =
            (edit.typed ? 1 : 0) + (edit.value ? 1 : 0) + (flag_in(*table, "remove") ? 1 : 0);
        if (kinds != 1)
            throw RequestRefused(BAD_REQUEST, "one of typed, value and remove is expected", "path",
                                 edit.path);
        edits.push_back(std::move(edit));
    }
    return edits;
}

std::string_view query_text(const Query& query, std::string_view name) {
    const auto at = query.find(name);
    return at == query.end() ? std::string_view() : std::string_view(at->second);
}

Reply json_reply(std::string body) {
    Reply answer;
    answer.body = std::move(body);
    return answer;
}

Reply file_reply(const Asset& asset) {
    Reply answer;
    answer.type = asset.type;
    answer.body = asset.bytes;
    return answer;
}

// ---- downloads -------------------------------------------------------------------------------------------

// The name of a file to be saved: RFC 6266.
std::pair<std::string, std::string> attachment(std::string_view name) {
    constexpr std::string_view DIGITS = "0123456789ABCDEF";
    std::string plain, coded;
    for (const char c : name) {
        const auto code = static_cast<unsigned char>(c);
        const bool safe = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
                          (c >= '0' && c <= '9') || c == '-' || c == '_' || c == '.';
        plain += safe ? c : '_';
        if (safe) {
            coded += c;
        } else {
            coded += '%';
            coded += DIGITS[code >> 4];
            coded += DIGITS[code & 15];
        }
    }
    return {"Content-Disposition",
            "attachment; filename=\"" + plain + "\"; filename*=UTF-8''" + coded};
}

struct Made {
    ReadResult input;
    Calculation calculation;
};

// Throws RequestRefused for a text with faults.
void calculate_whole(const std::string& text, Made& made) {
    Outcome reading;
    {
        const Services services(reading);
        made.input = read_input(text);
    }
    if (reading.stopped) throw RequestRefused(UNUSABLE, stop_reason(reading));
    if (!made.input.faults.empty()) {
        const Fault& fault = made.input.faults.front();
        const std::size_t others = made.input.faults.size() - 1;
        throw RequestRefused(
            UNUSABLE,
            "line " + std::to_string(fault.line) + ": " +
                printable(fault.key.empty() ? fault.message : fault.key + ": " + fault.message) +
                (others == 0 ? std::string() : "; and " + std::to_string(others) + " more faults"));
    }
    made.calculation = calculate(made.input.request);
}

} // namespace

Reply error_reply(unsigned status, std::string_view words, std::string_view member,
                  std::string_view value) {
    JsonWriter json;
    json.begin_object().key("error").text(printable(words));
    if (!member.empty()) json.key(member).text(printable(value));
    json.end_object();
    Reply answer = json_reply(json.take());
    answer.status = status;
    return answer;
}

Reply Routes::answer(const RequestHead& head, const Query& query, std::string_view body) {
    try {
        if (const std::optional<Asset> asset = asset_at(head.path)) return file_reply(*asset);
        if (head.path == ENTRY) return enter(body);
        if (!head.path.starts_with(API)) return error_reply(NOT_FOUND, "there is no such page");
        const std::string_view name = std::string_view(head.path).substr(API.size());
        if (head.method == "GET") return get(name, query);
        Faults faults;
        const std::optional<Value> tree = read_json(body, faults);
        if (!tree)
            return error_reply(BAD_REQUEST,
                               faults.empty() ? "JSON is expected" : faults.front().message);
        if (tree->table() == nullptr) return error_reply(BAD_REQUEST, "an object is expected");
        return post(name, *tree->table());
    } catch (const RequestRefused& refused) {
        return error_reply(refused.status, refused.what(), refused.name, refused.more);
    } catch (const NoData& problem) {
        return error_reply(UNUSABLE, problem.what());
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& problem) {
        return error_reply(FAILED, problem.what());
    }
}

Reply Routes::enter(std::string_view body) const {
    Faults faults;
    const std::optional<Value> tree = read_json(body, faults);
    const Table* table = tree ? tree->table() : nullptr;
    const Value* token = table != nullptr ? table->find("token") : nullptr;
    if (token == nullptr || token->text() == nullptr || !guard.is_token(*token->text()))
        return error_reply(FORBIDDEN, "the link is not that of the server that runs now");
    JsonWriter json;
    json.begin_object().key("key").text(guard.key()).key("document");
    if (first_document.empty())
        json.null();
    else
        json.text(first_document);
    json.end_object();
    Reply answer = json_reply(json.take());
    answer.headers.emplace_back("Set-Cookie", guard.set_cookie());
    return answer;
}

Reply Routes::state(const OpenDocument& document) {
    return json_reply(state_json(workbench, document));
}

// The answer to a change, or to the trial of one: `changed` is null for a trial.
Reply Routes::worked(const Table& body, const OpenDocument* changed, const std::string& text) {
    const std::string* component = text_in(body, "component");
    const std::optional<std::int64_t> sequence = whole_in(body, "sequence");
    JsonWriter json;
    json.begin_object().key("sequence");
    if (sequence)
        json.whole(*sequence);
    else
        json.null();
    if (changed != nullptr) json.key("state").raw(state_json(workbench, *changed));
    json.key("result").raw(
        result_json_of(text, component != nullptr ? *component : std::string(), memory));
    json.end_object();
    return json_reply(json.take());
}

Reply Routes::edit(const Table& body, bool keep) {
    OpenDocument& document = workbench.document(needed_text(body, "document"));
    if (const auto version = whole_in(body, "version");
        version && static_cast<std::uint64_t>(*version) != document.version()) {
        Reply answer = error_reply(CONFLICT, "the document was changed elsewhere meanwhile");
        answer.body.back() = ',';
        answer.body += R"("conflict":"version","state":)" + state_json(workbench, document) + "}";
        return answer;
    }
    std::string text = edited(document.text(), edits_in(body));
    if (!keep) return worked(body, nullptr, text);
    document.put(std::move(text));
    return worked(body, &document, document.text());
}

Reply Routes::stepped(const Table& body, bool back) {
    OpenDocument& document = workbench.document(needed_text(body, "document"));
    if (back)
        document.undo();
    else
        document.redo();
    return worked(body, &document, document.text());
}

Reply Routes::post(std::string_view name, const Table& body) {
    if (name == "edit") return edit(body, true);
    if (name == "calculate") return edit(body, false);
    if (name == "undo") return stepped(body, true);
    if (name == "redo") return stepped(body, false);
    if (name == "open") return state(workbench.open(needed_text(body, "handle")));
    if (name == "new") {
        const std::string& kind = needed_text(body, "kind");
        const std::string* units = text_in(body, "units");
        const bool si = units != nullptr && folded(*units) == "si";
        const auto names = new_file_names();
        if (std::find(names.begin(), names.end(), kind) != names.end())
            return state(workbench.create(new_file(kind, si)));
        if (kind != "empty")
            throw RequestRefused(BAD_REQUEST, echoed(kind) + " is nothing to start from");
        return state(
            workbench.create(std::string("tarvane = 1\nunits = \"") + (si ? "SI" : "US") + "\"\n"));
    }
    if (name == "close") {
        workbench.close(needed_text(body, "document"), flag_in(body, "force"));
        return json_reply("{}");
    }
    if (name == "save") {
        OpenDocument& document = workbench.document(needed_text(body, "document"));
        const std::string* as = text_in(body, "name");
        workbench.save(document, as != nullptr ? *as : std::string(), flag_in(body, "force"));
        return state(document);
    }
    if (name == "reload") {
        OpenDocument& document = workbench.document(needed_text(body, "document"));
        workbench.reload(document);
        return state(document);
    }
    throw RequestRefused(NOT_FOUND, "there is no such request");
}

Reply Routes::get(std::string_view name, const Query& query) {
    constexpr std::string_view CATALOGUE = "catalogue/", DOWNLOAD = "download/";
    if (name == "fields") {
        if (fields.empty()) fields = fields_json();
        return json_reply(fields);
    }
    if (name == "files") {
        JsonWriter json;
        json.begin_object().key("folder").text(workbench.folder_name()).key("files").begin_list();
        for (const ListedFile& file : workbench.files()) {
            json.begin_object().key("handle").text(file.handle).key("name").text(file.name);
            json.key("size").whole(static_cast<std::int64_t>(file.size));
            json.key("modified").text(file.modified).end_object();
        }
        json.end_list().end_object();
        return json_reply(json.take());
    }
    if (name.starts_with(CATALOGUE)) {
        CatalogueQuery wanted;
        wanted.words = query_text(query, "q");
        if (query.contains("units")) wanted.units = query_text(query, "units");
        if (query.contains("code")) wanted.code = query_text(query, "code");
        if (query_text(query, "key") == "bolt_material") wanted.key = "bolt_material";
        return json_reply(catalogue_json(name.substr(CATALOGUE.size()), wanted));
    }
    if (name == "state") return state(workbench.document(query_text(query, "document")));
    if (name == "compare") {
        const OpenDocument& document = workbench.document(query_text(query, "document"));
        return json_reply(comparison_json(workbench.text_on_disk(document), document.text()));
    }
    if (name.starts_with(DOWNLOAD))
        return download(name.substr(DOWNLOAD.size()),
                        workbench.document(query_text(query, "document")));
    throw RequestRefused(NOT_FOUND, "there is no such request");
}

Reply Routes::download(std::string_view form, OpenDocument& document) {
    constexpr std::string_view UNTITLED = "untitled.toml";
    const std::string name = document.name().value_or(std::string(UNTITLED));
    const std::string stem = name.substr(0, name.rfind('.'));
    const std::string saved_as = stem + '.' + std::string(form);
    const auto file = [&saved_as](std::string_view type, std::string body) {
        Reply made;
        made.type = type;
        made.body = std::move(body);
        made.headers.push_back(attachment(saved_as));
        return made;
    };
    if (form == "toml") return file("application/toml", document.text());
    if (form != "html" && form != "pdf" && form != "json" && form != "csv")
        throw RequestRefused(NOT_FOUND, "there is no such download");
    const EngineTurn turn;
    Made made;
    calculate_whole(document.text(), made);
    DocumentFacts facts = facts_of(name, document.text());
    facts.created = time_of_documents();
    const Request& request = made.input.request;
    if (form == "json" || form == "csv") {
        if (!made.calculation.complete)
            throw RequestRefused(UNUSABLE, "the calculation was not completed");
        if (form == "csv")
            return file("text/csv; charset=utf-8", csv_of(request, made.calculation));
        return file("application/json", run_json(request, made.calculation, facts));
    }
    std::string html = html_of(make_document(request, made.calculation, facts, Detail::full));
    if (form == "html") return file("text/html; charset=utf-8", std::move(html));
    Reply pdf = file("application/pdf", {}), waiting;
    waiting.later = [html = std::move(html), answer = std::move(pdf)] {
        try {
            Reply made_pdf = answer;
            made_pdf.body = pdf_of(html, false).bytes;
            return made_pdf;
        } catch (const std::runtime_error& problem) {
            return error_reply(UNUSABLE, problem.what());
        }
    };
    return waiting;
}

} // namespace tarvane::app
