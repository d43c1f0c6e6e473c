#include "values/value.h"

#include "values/decimal.h"
#include "values/text.h"

namespace tarvane::vessel {

const Table::Entry* Table::entry(std::string_view key) const {
    const auto place = places.find(key);
    return place == places.end() ? nullptr : &entries[place->second];
}

const Value* Table::find(std::string_view key) const {
    const Entry* found = entry(key);
    return found == nullptr ? nullptr : &found->value;
}

Value* Table::find(std::string_view key) {
    const auto place = places.find(key);
    return place == places.end() ? nullptr : &entries[place->second].value;
}

Value& Table::put(std::string key, Value value, Position at) {
    const auto [place, is_new] = places.emplace(key, entries.size());
    if (!is_new) return entries[place->second].value = std::move(value);
    entries.push_back({std::move(key), std::move(value), at});
    return entries.back().value;
}

std::optional<double> Value::number() const {
    if (const auto* whole = std::get_if<std::int64_t>(&content)) return static_cast<double>(*whole);
    if (const auto* number = std::get_if<double>(&content)) return *number;
    return std::nullopt;
}

std::string Value::shown() const {
    if (null()) return "nothing";
    if (const bool* value = flag()) return *value ? "true" : "false";
    if (const std::int64_t* value = whole()) return std::to_string(*value);
    if (const std::string* value = text()) return "the text " + echoed(*value);
    if (list() != nullptr) return "a list";
    if (table() != nullptr) return "a table";
    if (const auto* foreign = std::get_if<Foreign>(&content)) return foreign->what;
    return general_text(*number());
}

} // namespace tarvane::vessel
