#include "assembly/links.h"

#include "values/text.h"

#include <algorithm>

namespace tarvane::vessel {

namespace {

// What a link can name.
struct LinkKey {
    std::string_view key;
    std::string_view tables[2]; // kinds of components
};
constexpr LinkKey LINK_KEYS[] = {{"on", {"shell"}},
                                 {"attached_to", {"shell"}},
                                 {"mates_with", {"flange"}},
                                 {"of", {"shell", "flange"}}};

bool can_name(const LinkKey& link, const ElementKind& kind) {
    return std::find(std::begin(link.tables), std::end(link.tables), kind.table) !=
           std::end(link.tables);
}

std::string tables_of(const LinkKey& link) {
    std::string names;
    for (const std::string_view table : link.tables)
        if (!table.empty()) names += (names.empty() ? "[[" : " or [[") + std::string(table) + "]]";
    return names;
}

const std::string* description_of(const Node& node) {
    const Value* value = node.table->find("description");
    return value != nullptr ? value->text() : nullptr;
}

// "line 12"; of a request without lines "shell[0]".
std::string place_of(const Node& node) {
    return node.line > 0 ? "line " + std::to_string(node.line) : node.path;
}

std::string name_of(const Node& node) {
    const std::string* description = description_of(node);
    return description != nullptr ? echoed(*description) : node.path;
}

} // namespace

class Finder {
  public:
    Finder(std::span<const Node> of, FaultList& into) : nodes(of), faults(into) {}

    std::optional<std::size_t> find(const Node& from, const LinkKey& link, const Value& value) {
        const std::string* name = value.text();
        // Otherwise a fault of its key.
        if (name == nullptr || characters(*name) > static_cast<std::size_t>(MOST_DESCRIPTION))
            return std::nullopt;
        std::vector<std::size_t> found;
        std::vector<std::string_view> names;
        for (std::size_t i = 0; i < nodes.size(); ++i) {
            const std::string* other = description_of(nodes[i]);
            if (other == nullptr || !can_name(link, *nodes[i].kind)) continue;
            names.push_back(*other);
            if (*other == *name) found.push_back(i);
        }
        if (found.size() == 1) return found.front();
        if (found.empty()) {
            fault(from, link.key,
                  "no " + tables_of(link) + " has the description " + echoed(*name) +
                      nearest_name(*name, names));
        } else {
            fault(from, link.key,
                  "several components have the description " + echoed(*name) + ", " +
                      place_of(nodes[found[0]]) + " and " + place_of(nodes[found[1]]) +
                      "; one is expected");
        }
        return std::nullopt;
    }

    void fault(const Node& from, std::string_view key, std::string message) {
        const Value& value = *from.table->find(key);
        faults.add(value.at, key, std::move(message));
        faults.list().back().path = from.path + '.' + std::string(key);
        faults.list().back().value = value.shown();
    }

  private:
    std::span<const Node> nodes;
    FaultList& faults;
};

namespace {

// Depth first, in the order of the components.
class Sorter {
  public:
    Sorter(std::span<const Node> of, std::vector<std::vector<Link>>& among, Finder& into)
        : nodes(of), links(among), finder(into), states(of.size(), State::unseen) {}

    std::vector<std::size_t> sort() {
        for (std::size_t i = 0; i < nodes.size(); ++i)
            visit(i);
        return std::move(sorted);
    }

  private:
    enum class State { unseen, open, done };
    std::span<const Node> nodes;
    std::vector<std::vector<Link>>& links;
    Finder& finder;
    std::vector<State> states;
    std::vector<std::size_t> path, sorted;

    void visit(std::size_t i) {
        if (states[i] != State::unseen) return;
        states[i] = State::open;
        path.push_back(i);
        for (Link& link : links[i]) {
            if (!link.target) continue;
            if (states[*link.target] == State::open) {
                tell_circle(i, link);
                link.target.reset();
            } else {
                visit(*link.target);
            }
        }
        path.pop_back();
        states[i] = State::done;
        sorted.push_back(i);
    }

    void tell_circle(std::size_t i, const Link& link) {
        std::string members;
        for (auto at = std::find(path.begin(), path.end(), *link.target); at != path.end(); ++at)
            members += name_of(nodes[*at]) + " (" + place_of(nodes[*at]) + "), ";
        finder.fault(nodes[i], link.key,
                     "the links lead in a circle: " + members + "and back to " +
                         name_of(nodes[*link.target]));
    }
};

} // namespace

bool is_link(std::string_view key) {
    return std::any_of(std::begin(LINK_KEYS), std::end(LINK_KEYS),
                       [key](const LinkKey& link) { return link.key == key; });
}

Links::Links(std::span<const Node> nodes, FaultList& faults) : links(nodes.size()) {
    Finder finder(nodes, faults);
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        const Node& node = nodes[i];
        if (node.of) links[i].push_back({"of", *node.of});
        for (const LinkKey& link : LINK_KEYS) {
            const Value* value = node.table->find(link.key);
            if (value == nullptr || node.kind->keys.find(link.key) == nullptr) continue;
            links[i].push_back({link.key, finder.find(node, link, *value)});
        }
    }
    refuse_second_mates(nodes, finder);
    sorted = Sorter(nodes, links, finder).sort();
    // Nothing names a metal temperature, and it goes by flanges whose mates are known.
    std::stable_partition(sorted.begin(), sorted.end(),
                          [&](std::size_t i) { return nodes[i].kind->table != "mdmt"; });
}

// Bolts join two flanges.
void Links::refuse_second_mates(std::span<const Node> nodes, Finder& finder) {
    std::vector<std::optional<std::size_t>> mates(nodes.size());
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        for (Link& link : links[i]) {
            if (link.key != "mates_with" || !link.target) continue;
            const std::size_t pair[] = {i, *link.target};
            const auto* taken =
                std::find_if(std::begin(pair), std::end(pair),
                             [&](std::size_t one) { return mates[one].has_value(); });
            if (taken != std::end(pair)) {
                finder.fault(nodes[i], link.key,
                             name_of(nodes[*taken]) + " has a mate already, in " +
                                 place_of(nodes[*mates[*taken]]));
                link.target.reset();
                continue;
            }
            mates[i] = link.target;
            mates[*link.target] = i;
        }
    }
}

} // namespace tarvane::vessel
