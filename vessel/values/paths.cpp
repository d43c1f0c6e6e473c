#include "values/paths.h"

#include "values/json.h"
#include "values/text.h"

#include <charconv>

namespace tarvane::vessel {

namespace {

// The place of "[12]", which goes from the path; nothing if it does not begin so.
std::optional<std::size_t> take_place(std::string_view& path) {
    if (path.substr(0, 1) != "[") return std::nullopt;
    const std::size_t end = path.find(']');
    if (end == path.npos) return std::nullopt;
    std::size_t place = 0;
    const char* last = path.data() + end;
    const auto [stop, error] = std::from_chars(path.data() + 1, last, place);
    if (error != std::errc() || stop != last) return std::nullopt;
    path.remove_prefix(end + 1);
    return place;
}

// What may come after a step: nothing, a place, or a point and a key.
bool take_point(std::string_view& path) {
    if (path.empty() || path.front() == '[') return true;
    if (path.front() != '.' || path.size() == 1) return false;
    path.remove_prefix(1);
    return path.front() != '[';
}

// The value of the longest key that the path begins with; it goes from the path.
const Value* take_key(const Table& table, std::string_view& path) {
    for (std::size_t end = path.size(); end != path.npos && end > 0;
         end = path.find_last_of(".[", end - 1)) {
        const Value* found = table.find(path.substr(0, end));
        if (found == nullptr) continue;
        path.remove_prefix(end);
        return found;
    }
    return nullptr;
}

// Follows the path as far as there is something; the rest of the path remains. A null pointer: the path is none.
const Value* follow(const Value& tree, std::string_view& path, std::size_t& steps) {
    const Value* here = &tree;
    for (steps = 0; !path.empty(); ++steps) {
        std::string_view rest = path;
        if (const List* list = here->list()) {
            const std::optional<std::size_t> place = take_place(rest);
            if (!place || *place >= list->size()) return here;
            here = &(*list)[*place];
        } else {
            const Table* table = here->table();
            const Value* next = table != nullptr ? take_key(*table, rest) : nullptr;
            if (next == nullptr) return here;
            here = next;
        }
        if (!take_point(rest)) return nullptr;
        path = rest;
    }
    return here;
}

} // namespace

const Value* value_at(const Value& tree, std::string_view path) {
    std::size_t steps = 0;
    const Value* found = follow(tree, path, steps);
    return path.empty() ? found : nullptr;
}

std::optional<std::string> put_at(Value& tree, std::string_view path, Value value) {
    constexpr char NO_PATH[] = "a path like flange[0].P is expected";
    if (path.empty()) return NO_PATH;
    std::string_view rest = path;
    std::size_t steps = 0;
    const Value* found = follow(tree, rest, steps);
    if (found == nullptr) return NO_PATH;
    std::string_view known = path.substr(0, path.size() - rest.size());
    if (known.ends_with('.')) known.remove_suffix(1);

    // What is not there yet, from its end, so that nothing is changed by a path that is none.
    Value* here = const_cast<Value*>(found); // of the tree, which is ours to change
    std::vector<std::string> keys;           // empty: the first place of a list
    std::string_view left = rest;
    bool first = true;
    while (!left.empty()) {
        if (left.front() == '[') {
            const std::optional<std::size_t> place = take_place(left);
            if (!place) return NO_PATH;
            const List* list = first ? here->list() : nullptr;
            if (first && list == nullptr) return in_quotes(printable(known)) + " is no list";
            const std::size_t next = list != nullptr ? list->size() : 0;
            if (*place != next) return "the next place of the list is " + std::to_string(next);
            keys.emplace_back();
        } else {
            if (first && here->table() == nullptr)
                return in_quotes(printable(known)) + " is no object";
            const std::size_t end = std::min(left.find_first_of(".["), left.size());
            if (end == 0) return NO_PATH;
            keys.emplace_back(left.substr(0, end));
            left.remove_prefix(end);
        }
        first = false;
        if (!take_point(left)) return NO_PATH;
        if (steps + keys.size() > DEEPEST_NESTING)
            return "it nests deeper than " + std::to_string(DEEPEST_NESTING);
    }
    while (keys.size() > 1) {
        Value outer = keys.back().empty() ? Value(List()) : Value(Table());
        if (keys.back().empty())
            outer.list()->push_back(std::move(value));
        else
            outer.table()->put(std::move(keys.back()), std::move(value));
        value = std::move(outer);
        keys.pop_back();
    }
    if (keys.empty())
        *here = std::move(value);
    else if (keys.front().empty())
        here->list()->push_back(std::move(value));
    else
        here->table()->put(std::move(keys.front()), std::move(value));
    return std::nullopt;
}

} // namespace tarvane::vessel
