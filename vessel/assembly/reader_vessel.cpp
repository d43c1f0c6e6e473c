#include "assembly/reader_state.h"
#include "components/read_units.h"
#include "components/read_value.h"
#include "document/results.h"
#include "values/text.h"

#include <algorithm>

namespace tarvane::vessel {

namespace {

constexpr std::int64_t NEWEST_FORM = 1;

} // namespace

bool Reader::read_flag(const Table& root, std::string_view key, bool fallback) {
    const Value* value = root.find(key);
    if (value == nullptr) return fallback;
    if (const bool* flag = value->flag()) return *flag;
    faults.wrong(*value, key, "true or false");
    return fallback;
}

void Reader::read_file_keys(const Table& root) {
    if (const Value* units = root.find("units")) request.units = read_units(*units, faults);
    request.units.decimal_comma = read_flag(root, "decimal_comma", false);
    request.metric_constants = read_flag(root, "metric_constants", request.units.metric());
    strict = read_flag(root, "strict", false);
    if (strict && root.find("units") == nullptr)
        faults.add({.line = 1}, "units",
                   "missing; a strict request gives them, else they would be " +
                       in_quotes(request.units.name));
    const Value* form = root.find("tarvane");
    newer_form = form != nullptr;
    if (form != nullptr && (form->whole() == nullptr || *form->whole() != NEWEST_FORM))
        faults.wrong(*form, "tarvane", "1, the form of the file,");
}

// The head of the file and [vessel] are one thing: a key in both is a fault.
std::vector<CommonTable> Reader::common_tables(const Table& root) {
    std::vector<CommonTable> tables{{root, "", root.find("tarvane") != nullptr}};
    const Value* vessel = root.find("vessel");
    if (vessel == nullptr) return tables;
    if (vessel->table() == nullptr) {
        faults.wrong(*vessel, "vessel", "a table of keys that apply to every component");
        return tables;
    }
    constexpr std::string_view OWN[] = {"description", "liquid"};
    check_names(*vessel->table(), "vessel", kinds, true, OWN);
    for (const Table::Entry& entry : *vessel->table()) {
        if (root.find(entry.key) == nullptr) continue;
        faults.add(entry.at, entry.key,
                   "given at the head of the file, too; one of them is expected");
        faults.list().back().path = "vessel." + entry.key;
        faults.list().back().value = entry.value.shown();
    }
    tables.push_back({*vessel->table(), "vessel.", true});
    read_vessel(*vessel->table());
    return tables;
}

void Reader::read_vessel(const Table& vessel) {
    request.of_vessel = true;
    if (const Value* description = vessel.find("description")) {
        if (description->text() != nullptr)
            request.description = *description->text();
        else
            faults.wrong(*description, "description", "a text");
    }
    const Value* inner = vessel.find("liquid");
    if (inner == nullptr) return;
    if (inner->table() == nullptr)
        return faults.wrong(*inner, "liquid", "a table of density, level");
    for (const Key& key : vessel_keys()) {
        const std::string_view name = key.name.substr(key.name.find('.') + 1);
        const std::string path = "vessel." + std::string(key.name);
        const Value* value = inner->table()->find(name);
        if (value == nullptr) {
            faults.add(inner->at, key.name,
                       "missing; " + expected(key, request.units) + " is expected (" +
                           std::string(key.meaning) + ')');
            faults.list().back().path = path;
            continue;
        }
        if (const auto input = input_at(path)) {
            check_unit(key, *value, *input);
            open_vessel_values.emplace_back(&key, *input);
            continue;
        }
        put_vessel_value(key, *value);
    }
    std::vector<const Table::Entry*> unknown;
    for (const Table::Entry& entry : *inner->table()) {
        const auto keys = vessel_keys();
        if (std::none_of(keys.begin(), keys.end(), [&](const Key& key) {
                return key.name.substr(key.name.find('.') + 1) == entry.key;
            }))
            unknown.push_back(&entry);
    }
    constexpr std::string_view NAMES[] = {"density", "level"};
    faults.unknown(std::move(unknown), "vessel.liquid",
                   [&](std::string_view name) { return nearest_name(name, NAMES); });
}

void Reader::put_vessel_value(const Key& key, const Value& value) {
    Taken<float> number = take_number(value, key, request.units);
    if (number.fault.empty() && key.name == "liquid.density" && !(*number.value > 0.0f))
        number.fault = "it must be above 0";
    if (number.fault.empty() && key.name == "liquid.density" && *number.value > DENSEST_LIQUID)
        number.fault = value.shown() + " would be " +
                       shown(*number.value, Quantity::density, request.units) +
                       ", and no liquid is as dense; give the unit: " +
                       (request.units.metric() ? "\"1000 kg/m3\"" : "\"62.4 lb/ft3\"");
    if (!number.fault.empty()) {
        faults.add(value.at, key.name, std::move(number.fault));
        faults.list().back().path = "vessel." + std::string(key.name);
        faults.list().back().value = value.shown();
        return;
    }
    vessel_values[static_cast<std::size_t>(key.index)] = number.value;
}

std::optional<Liquid> Reader::liquid() const {
    const auto& [density, level] = vessel_values;
    return density && level ? std::optional(Liquid{*density, *level}) : std::nullopt;
}

Texts Reader::read_texts(const Table& table, std::span<const Key> keys, const std::string& path,
                         std::span<const std::string_view> others) {
    std::vector<std::string_view> names(others.begin(), others.end());
    Texts texts;
    for (const Key& key : keys) {
        names.push_back(key.name);
        const Value* value = table.find(key.name);
        if (value == nullptr) continue;
        const std::string* text = value->text();
        if (text != nullptr && characters(*text) <= static_cast<std::size_t>(key.width)) {
            texts.emplace_back(key.name, *text);
            continue;
        }
        faults.wrong(*value, key.name, expected(key, request.units), key.meaning);
        faults.list().back().path = path + '.' + std::string(key.name);
    }
    std::vector<const Table::Entry*> unknown;
    for (const Table::Entry& entry : table) {
        if (std::find(names.begin(), names.end(), entry.key) == names.end())
            unknown.push_back(&entry);
    }
    faults.unknown(std::move(unknown), path,
                   [&](std::string_view name) { return nearest_name(name, names); });
    return texts;
}

void Reader::read_document(const Table& root) {
    const Value* document = root.find("document");
    if (document == nullptr) return;
    if (document->table() == nullptr)
        return faults.wrong(*document, "document", "a table of texts");
    constexpr std::string_view OTHERS[] = {REVISIONS};
    request.document.texts = read_texts(*document->table(), document_keys(), "document", OTHERS);
    const Value* revisions = document->table()->find(REVISIONS);
    if (revisions == nullptr) return;
    const List* list = revisions->list();
    const bool tables = list != nullptr && list->size() <= MOST_REVISIONS &&
                        std::all_of(list->begin(), list->end(),
                                    [](const Value& v) { return v.table() != nullptr; });
    if (!tables) {
        faults.wrong(*revisions, REVISIONS,
                     "a list of up to " + std::to_string(MOST_REVISIONS) + " tables of texts");
        faults.list().back().path = "document." + std::string(REVISIONS);
        return;
    }
    for (std::size_t i = 0; i < list->size(); ++i)
        request.document.revisions.push_back(
            read_texts(*(*list)[i].table(), revision_keys(),
                       "document." + std::string(REVISIONS) + '[' + std::to_string(i) + ']', {}));
}

} // namespace tarvane::vessel
