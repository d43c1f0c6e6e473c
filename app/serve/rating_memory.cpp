#include "serve/rating_memory.h"

#include "assembly/links.h"
#include "catalogue/data_folder.h"
#include "serve/form_values.h"
#include "values/bounded_file.h"
#include "values/sha256.h"
#include "values/text.h"

#include <algorithm>
#include <filesystem>
#include <memory>
#include <numeric>
#include <system_error>

namespace tarvane::app {

namespace {

constexpr std::size_t MOST_KNOWN = 5000;

// Whether one of the data files is another one now.
std::string data_stamps() {
    std::string stamps;
    for (const std::string& file : data_files()) {
        std::error_code none;
        const std::filesystem::path path = path_of(file);
        stamps += file + '\n' + std::to_string(std::filesystem::file_size(path, none)) + '\n' +
                  std::to_string(
                      std::filesystem::last_write_time(path, none).time_since_epoch().count()) +
                  '\n';
    }
    return stamps;
}

// Components that depend on each other have the same number.
std::vector<std::size_t> groups_of(const std::vector<WrittenComponent>& components) {
    std::vector<std::size_t> group(components.size());
    std::iota(group.begin(), group.end(), std::size_t{0});
    const auto text_in = [](const TomlNode& node) {
        const std::string* text = node.value.text();
        return text == nullptr ? std::string() : folded(*text);
    };
    std::vector<std::string> names;
    for (const WrittenComponent& component : components) {
        const TomlNode* description = component.node->member("description");
        names.push_back(description == nullptr ? std::string() : text_in(*description));
    }
    const auto join = [&group](std::size_t from, std::size_t to) {
        for (std::size_t& each : group) {
            if (each == from) each = to;
        }
    };
    for (std::size_t i = 0; i < components.size(); ++i) {
        for (const auto& [key, node] : components[i].node->members) {
            if (!is_link(key)) continue;
            const std::string named = text_in(node);
            for (std::size_t k = 0; k < components.size(); ++k) {
                if (names[k] == named) join(group[i], group[k]);
            }
        }
    }
    return group;
}

// By the path of a component, all that it is made of; nothing for what can't be written down, a date.
std::map<std::string, std::string> parts_of(const std::string& toml) {
    const TomlTree tree = read_tree(toml);
    const std::vector<WrittenComponent> components = components_in(tree.root);
    std::string common = data_stamps();
    for (const auto& member : tree.root.members) {
        const bool component =
            std::any_of(element_kinds().begin(), element_kinds().end(),
                        [&member](const ElementKind* kind) { return kind->table == member.first; });
        if (!component)
            common += key_of(member.first) + " = " + toml_of(content_of(member.second)) + '\n';
    }
    const std::vector<std::size_t> groups = groups_of(components);
    std::map<std::size_t, std::string> of_group;
    for (std::size_t i = 0; i < components.size(); ++i)
        of_group[groups[i]] +=
            components[i].path() + ' ' + toml_of(content_of(*components[i].node)) + '\n';
    std::map<std::string, std::string> parts;
    for (std::size_t i = 0; i < components.size(); ++i)
        parts[components[i].path()] = sha256(common + of_group[groups[i]] + components[i].path());
    return parts;
}

} // namespace

Rating RatingMemory::rating_for(const std::string& toml) {
    auto parts = std::make_shared<std::map<std::string, std::string>>();
    try {
        *parts = parts_of(toml);
    } catch (const EditRefused&) { // nothing is kept
    }
    return [this, parts](const Element& element, const Outcome& outcome, const Request& request) {
        const auto part = parts->find(path_of(element));
        if (part == parts->end()) return find_rated_pressure(element, outcome, request);
        const auto at = known.find(part->second);
        if (at != known.end()) return at->second;
        if (known.size() >= MOST_KNOWN) known.clear();
        return known[part->second] = find_rated_pressure(element, outcome, request);
    };
}

} // namespace tarvane::app
