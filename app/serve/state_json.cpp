#include "serve/document_json.h"
#include "serve/form_values.h"
#include "values/json.h"
#include "values/text.h"

#include <algorithm>

namespace tarvane::app {

namespace {

constexpr std::string_view UNITS = "units", FORM = "tarvane";

class StateWriter {
  public:
    explicit StateWriter(const std::string& of) : text(of), tree(read_tree(of)) {
        std::size_t at = 0;
        while (at != std::string::npos) {
            lines.push_back(at);
            at = text.find('\n', at);
            if (at != std::string::npos) ++at;
        }
    }

    std::string write(Workbench& workbench, const OpenDocument& document) {
        json.begin_object();
        json.key("document").text(document.handle).key("name");
        if (document.name())
            json.text(*document.name());
        else
            json.null();
        json.key("version").whole(static_cast<std::int64_t>(document.version()));
        json.key("saved").flag(document.saved());
        json.key("undo").flag(document.can_undo()).key("redo").flag(document.can_redo());
        json.key("on_disk").text(on_disk_name(workbench.on_disk(document)));
        json.key("text").text(shown_text());
        json.key("units").text(metric() ? "SI" : "US");
        json.key("newer").flag(tree.root.member(FORM) != nullptr);
        write_syntax();
        write_table("head", given_in_head(tree.root));
        write_member("vessel", given_in_vessel);
        json.key("about");
        const TomlNode* about = tree.root.member("document");
        write_given(about != nullptr && about->table() ? given_in_document(*about) : GivenFields{});
        json.key("components").begin_list();
        for (const WrittenComponent& component : components_in(tree.root))
            write_component(component);
        json.end_list().end_object();
        return json.take();
    }

  private:
    const std::string& text;
    TomlTree tree;
    std::vector<std::size_t> lines; // their first bytes
    JsonWriter json;

    // One that is no TOML need not even be a text.
    std::string shown_text() const {
        if (!tree.fault) return text;
        std::string shown;
        for (std::size_t at = 0; at < text.size();) {
            const std::size_t end = std::min(text.find('\n', at), text.size());
            shown += printable(std::string_view(text).substr(at, end - at));
            if (end < text.size()) shown += '\n';
            at = end + 1;
        }
        return shown;
    }

    bool metric() const {
        const TomlNode* units = tree.root.member(UNITS);
        if (units != nullptr && units->table()) units = units->member("base");
        const std::string* name = units != nullptr ? units->value.text() : nullptr;
        return name != nullptr && folded(*name) == "si";
    }
    std::int64_t line_of(std::size_t at) const {
        return std::upper_bound(lines.begin(), lines.end(), at) - lines.begin();
    }

    void write_syntax() {
        json.key("syntax");
        if (!tree.fault) {
            json.null();
            return;
        }
        json.begin_object().key("line").whole(tree.fault->line).key("message");
        json.text(printable(tree.fault->key.empty()
                                ? tree.fault->message
                                : tree.fault->key + ": " + tree.fault->message));
        json.end_object();
    }

    void write_members(const GivenFields& given) {
        json.key("given").begin_object();
        std::vector<std::string_view> written;
        for (const GivenField& field : given.fields) {
            // A key that is there under two names is a fault, which says so.
            if (std::find(written.begin(), written.end(), field.name) != written.end()) continue;
            written.push_back(field.name);
            const TextRange& at = field.node->at;
            json.key(field.name).begin_object();
            json.key("written").text(std::string_view(text).substr(at.begin, at.end - at.begin));
            json.key("value").value(content_of(*field.node));
            json.key("line").whole(line_of(at.begin)).end_object();
        }
        json.end_object().key("unknown").begin_list();
        for (const std::string& name : given.unknown)
            json.text(name);
        json.end_list();
    }
    void write_given(const GivenFields& given) {
        json.begin_object();
        write_members(given);
        json.end_object();
    }
    void write_table(std::string_view name, const GivenFields& given) {
        json.key(name);
        write_given(given);
    }
    void write_member(std::string_view name, GivenFields (*fields_of)(const TomlNode&)) {
        const TomlNode* node = tree.root.member(name);
        write_table(name, node != nullptr && node->table() ? fields_of(*node) : GivenFields{});
    }

    void write_component(const WrittenComponent& component) {
        const TomlNode* description = component.node->member("description");
        const std::string* words = description != nullptr ? description->value.text() : nullptr;
        json.begin_object().key("path").text(component.path());
        json.key("kind").text(component.kind->table);
        json.key("line").whole(line_of(component.node->at.begin));
        json.key("description").text(words != nullptr ? *words : std::string());
        write_members(given_in(*component.node, *component.kind));
        json.end_object();
    }
};

} // namespace

std::string state_json(Workbench& workbench, const OpenDocument& document) {
    return StateWriter(document.text()).write(workbench, document);
}

} // namespace tarvane::app
