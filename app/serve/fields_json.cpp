#include "assembly/links.h"
#include "catalogue/value_units.h"
#include "components/element.h"
#include "document/new_files.h"
#include "fields/vessel_keys.h"
#include "serve/vocabulary_json.h"
#include "surface/schema.h"
#include "values/decimal.h"
#include "values/json.h"
#include "values/text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

namespace tarvane::app {

using namespace vessel;

namespace {

// Keys whose values a table of the data files has.
std::string_view picker_of(std::string_view key) {
    if (key == "material" || key == "bolt_material") return "materials";
    if (key.starts_with("standard.") && (key.ends_with(".class") || key.ends_with(".size")))
        return "flanges";
    if (key == "gasket.type") return "gaskets";
    if (key == "bolting" || key == "a") return "bolts";
    return {};
}

List texts_of(std::string_view list) {
    List texts;
    while (!list.empty()) {
        const std::size_t end = std::min(list.find(", "), list.size());
        texts.emplace_back(std::string(list.substr(0, end)));
        list.remove_prefix(std::min(end + 2, list.size()));
    }
    return texts;
}

// As a form shows a value that nothing gives; nothing where none would say anything.
std::optional<std::string> default_text(const Key& key, double engine, const UnitSystem& units) {
    constexpr double BEYOND_EVERYTHING = 1.0e8; // a limit that is none
    constexpr int SINGLE = 7;
    if (key.needed || std::fabs(engine) > BEYOND_EVERYTHING) return std::nullopt;
    switch (key.quantity) {
    case Quantity::text:
    case Quantity::designation:
    case Quantity::waivers:
        return std::nullopt;
    case Quantity::flag:
        return engine != 0.0 ? "true" : "false";
    default:
        break;
    }
    if (!key.choices.empty()) {
        const std::string_view name = choice_name(key.choices, static_cast<int>(engine));
        if (name.empty()) return std::nullopt;
        return std::string(name);
    }
    const float value = units.to_file(static_cast<float>(engine), key.quantity);
    return general_text(static_cast<double>(value), SINGLE);
}

void put_default(Table& field, const char* name, const Key& key, double engine) {
    Table texts;
    for (const UnitSystem& units : {us_units(), si_units()}) {
        if (std::optional<std::string> text = default_text(key, engine, units))
            texts.put(units.name, std::move(*text));
    }
    if (!texts.empty()) field.put(name, std::move(texts));
}

void put_value_units(Table& field, const Key& key) {
    const std::string names = value_unit_names(key.quantity);
    if (!names.empty()) field.put("value_units", texts_of(names));
}

// A key of the tables with what a form needs besides. Its defaults there are in the engine's units.
Table form_field(const Table& written, const Key& key) {
    Table field;
    for (const Table::Entry& entry : written) {
        if (entry.key != "default" && entry.key != "newer_default" && entry.key != "engine")
            field.put(entry.key, entry.value);
    }
    put_default(field, "default", key, key.fallback);
    if (key.newer_fallback) put_default(field, "newer_default", key, *key.newer_fallback);
    put_value_units(field, key);
    if (const std::string_view picker = picker_of(key.name); !picker.empty())
        field.put("picker", std::string(picker));
    if (is_link(key.name)) field.put("link", true);
    return field;
}

// A key that no kind of component has.
Table plain_field(const Key& key) {
    Table field;
    field.put("name", std::string(key.name));
    field.put("label", key.label());
    field.put("meaning", std::string(key.meaning));
    std::string_view quantity = quantity_words(key.quantity); // "a density"
    quantity.remove_prefix(std::min(quantity.find(' ') + 1, quantity.size()));
    field.put("quantity", std::string(quantity.empty() ? "text" : quantity));
    if (const std::string us = to_utf8(us_units().label(key.quantity)); !us.empty()) {
        Table units;
        units.put("US", us);
        units.put("SI", to_utf8(si_units().label(key.quantity)));
        field.put("units", std::move(units));
    }
    if (key.width > 0) field.put("width", std::int64_t{key.width});
    put_value_units(field, key);
    return field;
}

List plain_fields(std::span<const Key> keys) {
    List fields;
    for (const Key& key : keys)
        fields.emplace_back(plain_field(key));
    return fields;
}

struct HeadField {
    const char *name, *label, *meaning;
};
constexpr std::array<HeadField, 4> HEAD_FIELDS{
    {{"units", "Units", "of bare numbers"},
     {"decimal_comma", "Decimal comma", "the report writes numbers with a decimal comma"},
     {"metric_constants", "Metric constants", "dimensions of the code's metric edition"},
     {"strict", "Strict", "refuse defaults that decide about safety"}}};

List head_fields() {
    List fields;
    for (const HeadField& head : HEAD_FIELDS) {
        Table field;
        field.put("name", head.name);
        field.put("label", head.label);
        field.put("meaning", head.meaning);
        if (std::string_view(head.name) == "units") {
            field.put("quantity", "choice");
            List choices;
            for (const auto& [name, number] : {std::pair{"US", 0}, std::pair{"SI", 1}}) {
                Table choice;
                choice.put("name", name);
                choice.put("number", std::int64_t{number});
                choices.emplace_back(std::move(choice));
            }
            field.put("choices", std::move(choices));
        } else {
            field.put("quantity", "flag");
            Table none;
            none.put("US", "false");
            none.put("SI", "false");
            field.put("default", std::move(none));
        }
        fields.emplace_back(std::move(field));
    }
    return fields;
}

} // namespace

std::string fields_json() {
    Faults none;
    const std::optional<Value> tables = read_json(vocabulary(), none);
    List kinds;
    const List& written = *tables->table()->find("kinds")->list();
    for (std::size_t i = 0; i < written.size(); ++i) {
        Table kind = *written[i].table();
        const std::span<const Key> keys = element_kinds()[i]->keys.keys;
        const List& fields = *kind.find("keys")->list();
        List of_form;
        for (std::size_t k = 0; k < keys.size(); ++k)
            of_form.emplace_back(form_field(*fields[k].table(), keys[k]));
        kind.put("keys", std::move(of_form));
        kinds.emplace_back(std::move(kind));
    }
    List new_files{Value("empty")};
    for (const std::string_view name : new_file_names())
        new_files.emplace_back(std::string(name));

    JsonWriter json;
    json.begin_object().key("program").text(TARVANE_VERSION).key("kinds").value(std::move(kinds));
    json.key("vessel").begin_object().key("keys").value(plain_fields(vessel_keys())).end_object();
    json.key("document").begin_object().key("keys").value(plain_fields(document_keys()));
    json.key("revision_keys").value(plain_fields(revision_keys())).end_object();
    json.key("head").begin_object().key("keys").value(head_fields()).end_object();
    json.key("new").value(std::move(new_files)).end_object();
    return json.take();
}

} // namespace tarvane::app
