#include "components/fault_list.h"

#include "components/read_value.h"
#include "values/text.h"

#include <algorithm>

namespace tarvane::vessel {

void FaultList::wrong(const Value& value, std::string_view key, const std::string& wanted,
                      std::string_view meaning) {
    add(value.at, key, not_expected(value, wanted, meaning));
    faults.back().value = value.shown();
}

void FaultList::unknown(std::vector<const Table::Entry*> entries, std::string_view table,
                        const std::function<std::string(std::string_view)>& nearest_of) {
    std::stable_sort(
        entries.begin(), entries.end(),
        [](const Table::Entry* a, const Table::Entry* b) { return a->at.line < b->at.line; });
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const Table::Entry& entry = *entries[i];
        std::string message = "unknown key";
        if (i < MOST_FAULT_LINES) message += nearest_of(entry.key);
        add(entry.at, entry.key, std::move(message));
        if (!table.empty()) faults.back().path = std::string(table) + '.' + entry.key;
        faults.back().value = entry.value.shown();
    }
}

std::string nearest_name(std::string_view name, std::span<const std::string_view> others) {
    const std::string_view near = nearest(name, others);
    return near.empty() ? std::string() : "; the nearest is " + std::string(near);
}

} // namespace tarvane::vessel
