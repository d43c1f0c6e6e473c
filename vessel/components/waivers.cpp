#include "components/waivers.h"

#include "components/fault_list.h"
#include "values/text.h"

#include <algorithm>
#include <vector>

namespace tarvane::vessel {

namespace {

// What is wrong with an id; empty: nothing.
std::string fault_of(const std::string& id, std::span<const ElementKind* const> kinds) {
    std::vector<std::string_view> names;
    bool known = false;
    for (const ElementKind* kind : kinds) {
        for (const CheckField& field : kind->checks) {
            known = known || field.id == id;
            if (!field.waivable) continue;
            if (field.id == id) return {};
            if (std::find(names.begin(), names.end(), field.id) == names.end())
                names.push_back(field.id);
        }
    }
    std::string list;
    for (const std::string_view name : names)
        list += (list.empty() ? "" : ", ") + in_quotes(name);
    if (known) {
        return "the check " + echoed(id) + " can't be waived" +
               (list.empty() ? "" : "; those that can are " + list);
    }
    const std::string near = nearest_name(id, names);
    return "there is no check " + echoed(id) +
           (near.empty() && !list.empty() ? "; those that can be waived are " + list : near);
}

} // namespace

Taken<std::string> take_waivers(const Value& value, std::span<const ElementKind* const> kinds) {
    const auto wrong = [&](const Value& part) -> Taken<std::string> {
        return {std::nullopt,
                not_expected(part, "a list of checks, [\"head_1_4f\"],", "checks that are waived")};
    };
    std::string ids;
    const auto take = [&](const Value& part) -> std::string {
        const std::string* id = part.text();
        if (id == nullptr) return wrong(part).fault;
        std::string fault = fault_of(*id, kinds);
        if (fault.empty() && !has_waiver(ids, *id)) ids += (ids.empty() ? "" : ",") + *id;
        return fault;
    };
    if (value.text() != nullptr) {
        std::string fault = take(value);
        return fault.empty() ? Taken<std::string>{ids, {}}
                             : Taken<std::string>{std::nullopt, fault};
    }
    const List* list = value.list();
    if (list == nullptr) return wrong(value);
    for (const Value& part : *list) {
        if (std::string fault = take(part); !fault.empty()) return {std::nullopt, fault};
    }
    return {ids, {}};
}

bool has_waiver(std::string_view ids, std::string_view id) {
    while (!ids.empty()) {
        const std::size_t comma = std::min(ids.find(','), ids.size());
        if (ids.substr(0, comma) == id) return true;
        ids.remove_prefix(std::min(comma + 1, ids.size()));
    }
    return false;
}

} // namespace tarvane::vessel
