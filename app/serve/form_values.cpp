#include "serve/form_values.h"

#include "fields/vessel_keys.h"
#include "values/text.h"

#include <algorithm>
#include <array>
#include <optional>

namespace tarvane::app {

namespace {

constexpr std::string_view VESSEL = "vessel", DOCUMENT = "document";
constexpr std::array<std::string_view, 5> HEAD_KEYS{"tarvane", "units", "decimal_comma",
                                                    "metric_constants", "strict"};

const ElementKind* kind_named(std::string_view name) {
    for (const ElementKind* kind : element_kinds()) {
        if (kind->table == name) return kind;
    }
    return nullptr;
}

const Key* key_in(std::span<const Key> keys, std::string_view name) {
    const auto at =
        std::find_if(keys.begin(), keys.end(), [name](const Key& key) { return key.name == name; });
    return at == keys.end() ? nullptr : &*at;
}

bool has(std::span<const std::string_view> names, std::string_view name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

// "gasket.m" in a table of a component: a key of that name, or one that may be written in the table.
const Key* inner_key(const KeyTable& keys, std::string_view table, std::string_view name) {
    if (const Key* own = keys.find(std::string(table) + '.' + std::string(name))) return own;
    for (const InnerTable& inner : keys.tables) {
        if (inner.name == table && has(inner.keys, name)) return keys.find(name);
    }
    return nullptr;
}

// A key of any kind: its own name comes before a second one of another kind.
const Key* common_key(std::string_view name) {
    for (const ElementKind* kind : element_kinds()) {
        if (const Key* key = kind->keys.find(name)) return key;
    }
    for (const ElementKind* kind : element_kinds()) {
        if (const Key* key = kind->keys.resolve(name)) return key;
    }
    return nullptr;
}
const Key* common_inner_key(std::string_view table, std::string_view name) {
    if (const Key* own = key_in(vessel_keys(), std::string(table) + '.' + std::string(name)))
        return own;
    for (const ElementKind* kind : element_kinds()) {
        if (const Key* key = inner_key(kind->keys, table, name)) return key;
    }
    return nullptr;
}

// `key_of` a name, `inner_of` a table and a name in it.
template <class Plain, class Inner>
GivenFields given(const TomlNode& table, const Plain& key_of, const Inner& inner_of) {
    GivenFields found;
    for (const auto& [name, node] : table.members) {
        if (const Key* key = key_of(name); key != nullptr && !node.table()) {
            found.fields.push_back({std::string(key->name), &node});
            continue;
        }
        if (!node.table()) {
            found.unknown.push_back(name);
            continue;
        }
        for (const auto& [member, value] : node.members) {
            if (const Key* key = inner_of(name, member))
                found.fields.push_back({std::string(key->name), &value});
            else
                found.unknown.push_back(std::string(name).append(1, '.').append(member));
        }
    }
    return found;
}

// The names under which a component or the vessel may have a key, the usual one first.
std::vector<TomlPath> names_of(const KeyTable& keys, std::string_view name) {
    std::vector<TomlPath> names;
    const std::size_t point = name.find('.');
    if (point != std::string_view::npos)
        names.push_back({std::string(name.substr(0, point)), std::string(name.substr(point + 1))});
    else
        names.push_back({std::string(name)});
    for (const Alias& alias : keys.aliases) {
        if (alias.ours == name) names.push_back({std::string(alias.other)});
    }
    for (const InnerTable& inner : keys.tables) {
        if (has(inner.keys, name)) names.push_back({std::string(inner.name), std::string(name)});
    }
    return names;
}

const TomlNode* node_at(const TomlNode& from, std::span<const TomlStep> path) {
    const TomlNode* node = &from;
    for (const TomlStep& step : path) {
        const auto* name = std::get_if<std::string>(&step);
        node = name != nullptr ? node->member(*name) : node->item(std::get<std::size_t>(step));
        if (node == nullptr) return nullptr;
    }
    return node;
}

// "standard.class" of the last steps of a path; empty for another form.
std::string name_from(std::span<const TomlStep> steps) {
    std::string name;
    for (const TomlStep& step : steps) {
        const auto* part = std::get_if<std::string>(&step);
        if (part == nullptr) return {};
        name += (name.empty() ? "" : ".") + *part;
    }
    return name;
}

std::string_view name_at(const TomlPath& path, std::size_t place) {
    const auto* name = place < path.size() ? std::get_if<std::string>(&path[place]) : nullptr;
    return name != nullptr ? std::string_view(*name) : std::string_view();
}

bool is_digit(char c) { return c >= '0' && c <= '9'; }

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view BLANKS = " \t\r\n";
    const std::size_t first = text.find_first_not_of(BLANKS);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(BLANKS) + 1 - first);
}

std::size_t digits_in(std::string_view text) {
    return static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), is_digit) -
                                    text.begin());
}

// A number as TOML writes it, with the digits that were typed; nothing for another text.
std::optional<std::string> number_typed(std::string_view typed) {
    std::string sign;
    if (typed.starts_with('-') || typed.starts_with('+')) {
        if (typed[0] == '-') sign = "-";
        typed.remove_prefix(1);
    }
    std::string whole(typed.substr(0, digits_in(typed))), part;
    typed.remove_prefix(whole.size());
    const bool pointed = typed.starts_with('.') || typed.starts_with(',');
    if (pointed) {
        const bool comma = typed[0] == ',';
        typed.remove_prefix(1);
        part = typed.substr(0, digits_in(typed));
        typed.remove_prefix(part.size());
        // "1,500" may be a thousand and a half, or one and a half.
        constexpr std::size_t GROUP = 3;
        if (comma && part.size() == GROUP && !whole.empty() && whole.size() <= GROUP &&
            whole[0] != '0')
            return std::nullopt;
    }
    if (whole.empty() && part.empty()) return std::nullopt;
    std::string exponent;
    if (typed.starts_with('e') || typed.starts_with('E')) {
        typed.remove_prefix(1);
        exponent = "e";
        if (typed.starts_with('-') || typed.starts_with('+')) {
            exponent += typed[0];
            typed.remove_prefix(1);
        }
        const std::size_t digits = digits_in(typed);
        if (digits == 0) return std::nullopt;
        exponent += typed.substr(0, digits);
        typed.remove_prefix(digits);
    }
    if (!typed.empty()) return std::nullopt;
    whole.erase(0, std::min(whole.find_first_not_of('0'), whole.size()));
    if (whole.empty()) whole = "0";
    if (pointed && part.empty()) part = "0";
    return sign + whole + (pointed ? "." + part : "") + exponent;
}

} // namespace

std::string WrittenComponent::path() const {
    return std::string(kind->table) + '[' + std::to_string(place) + ']';
}

GivenFields given_in(const TomlNode& table, const ElementKind& kind) {
    return given(
        table, [&](std::string_view name) { return kind.keys.resolve(name); },
        [&](std::string_view inner, std::string_view name) {
            return inner_key(kind.keys, inner, name);
        });
}

GivenFields given_in_vessel(const TomlNode& table) {
    return given(table, common_key, common_inner_key);
}

GivenFields given_in_head(const TomlNode& root) {
    GivenFields found;
    for (const auto& [name, node] : root.members) {
        if (has(HEAD_KEYS, name))
            found.fields.push_back({name, &node});
        else if (name == VESSEL || name == DOCUMENT || kind_named(name) != nullptr)
            continue;
        else if (const Key* key = common_key(name); key != nullptr && !node.table())
            found.fields.push_back({std::string(key->name), &node});
        else
            found.unknown.push_back(name);
    }
    return found;
}

GivenFields given_in_document(const TomlNode& table) {
    GivenFields found;
    for (const auto& [name, node] : table.members) {
        if (key_in(document_keys(), name) != nullptr) {
            found.fields.push_back({name, &node});
        } else if (name == REVISIONS && node.list()) {
            for (std::size_t i = 0; i < node.items.size(); ++i) {
                const std::string path = name + '[' + std::to_string(i) + "].";
                for (const auto& [member, value] : node.items[i].members)
                    found.fields.push_back({path + member, &value});
            }
        } else {
            found.unknown.push_back(name);
        }
    }
    return found;
}

std::vector<WrittenComponent> components_in(const TomlNode& root) {
    std::vector<WrittenComponent> found;
    for (const ElementKind* kind : element_kinds()) {
        const TomlNode* all = root.member(kind->table);
        if (all == nullptr) continue;
        for (std::size_t i = 0; const TomlNode* node = all->item(i); ++i) {
            if (node->table()) found.push_back({kind, i, node});
            if (all->table()) break;
        }
    }
    std::stable_sort(found.begin(), found.end(),
                     [](const WrittenComponent& a, const WrittenComponent& b) {
                         return a.node->at.begin < b.node->at.begin;
                     });
    return found;
}

const Key* key_at(const TomlPath& field) {
    const std::string_view first = name_at(field, 0);
    const std::span<const TomlStep> steps(field);
    if (const ElementKind* kind = kind_named(first)) {
        if (field.size() < 3 || !name_at(field, 1).empty()) return nullptr;
        const std::string name = name_from(steps.subspan(2));
        if (const Key* key = kind->keys.find(name)) return key;
        const std::size_t point = name.find('.');
        return point == std::string::npos
                   ? kind->keys.resolve(name)
                   : inner_key(kind->keys, std::string_view(name).substr(0, point),
                               std::string_view(name).substr(point + 1));
    }
    if (first == VESSEL) {
        const std::string name = name_from(steps.subspan(1));
        if (const Key* key = key_in(vessel_keys(), name)) return key;
        if (const Key* key = common_key(name)) return key;
        const std::size_t point = name.find('.');
        return point == std::string::npos
                   ? nullptr
                   : common_inner_key(std::string_view(name).substr(0, point),
                                      std::string_view(name).substr(point + 1));
    }
    if (first == DOCUMENT) {
        if (field.size() == 2) return key_in(document_keys(), name_at(field, 1));
        return name_at(field, 1) == REVISIONS ? key_in(revision_keys(), name_at(field, 3))
                                              : nullptr;
    }
    return field.size() == 1 ? common_key(first) : nullptr;
}

TomlPath written_path(const TomlNode& root, const TomlPath& field) {
    const Key* key = key_at(field);
    const std::string_view first = name_at(field, 0);
    const ElementKind* kind = kind_named(first);
    if (key == nullptr || (kind == nullptr && first != VESSEL)) return field;
    const std::size_t depth = kind != nullptr ? 2 : 1;
    const TomlPath table(field.begin(), field.begin() + static_cast<std::ptrdiff_t>(depth));
    const TomlNode* node = node_at(root, table);
    if (node == nullptr) return field;
    std::vector<TomlPath> names;
    for (const ElementKind* each : element_kinds()) {
        if (kind != nullptr && each != kind) continue;
        for (TomlPath& name : names_of(each->keys, key->name))
            names.push_back(std::move(name));
    }
    const auto at = [&](const TomlPath& name) {
        TomlPath path = table;
        path.insert(path.end(), name.begin(), name.end());
        return path;
    };
    for (const TomlPath& name : names) {
        if (node_at(*node, name) != nullptr) return at(name);
    }
    // A table that is there takes the keys that belong into it.
    for (const TomlPath& name : names) {
        const TomlNode* inner = name.size() == 2 ? node->member(name_at(name, 0)) : nullptr;
        if (inner != nullptr && inner->table()) return at(name);
    }
    return names.empty() ? field : at(names.front());
}

std::string typed_value(std::string_view typed, const Key* key) {
    typed = trimmed(typed);
    if (typed.empty()) return {};
    const std::optional<std::string> number = number_typed(typed);
    std::string as_text = toml_of(std::string(typed));
    if (key == nullptr) {
        if (typed == "true" || typed == "false") return std::string(typed);
        return number.value_or(as_text);
    }
    switch (key->quantity) {
    case Quantity::text:
    case Quantity::choice:
        return as_text;
    case Quantity::flag: {
        const std::string word = folded(typed);
        if (word == "true" || word == "yes" || word == "on") return "true";
        if (word == "false" || word == "no" || word == "off") return "false";
        return as_text;
    }
    case Quantity::waivers: {
        List ids;
        while (!typed.empty()) {
            const std::size_t end = std::min(typed.find(','), typed.size());
            if (const std::string_view id = trimmed(typed.substr(0, end)); !id.empty())
                ids.emplace_back(std::string(id));
            typed.remove_prefix(std::min(end + 1, typed.size()));
        }
        return toml_of(ids);
    }
    default:
        return number.value_or(as_text);
    }
}

} // namespace tarvane::app
