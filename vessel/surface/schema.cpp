#include "surface/schema.h"

#include "assembly/summary.h"
#include "components/element.h"
#include "components/read_units.h"
#include "components/read_value.h"
#include "fields/vessel_keys.h"
#include "values/json.h"
#include "values/text.h"

#include <algorithm>
#include <set>
#include <string_view>
#include <utility>
#include <vector>

namespace tarvane::vessel {

namespace {

// A number, perhaps with a unit of its own, and that or a vacuum.
constexpr std::string_view NUMBER_TEXT = "^\\s*[-+]?\\.?[0-9]",
                           PRESSURE_TEXT = "^\\s*[-+]?\\.?[0-9]|^full vacuum$";
constexpr std::string_view DRAFT = "https://json-schema.org/draft/2020-12/schema";

// A schema as a text, built of others.
std::string object_of(std::initializer_list<std::pair<std::string_view, std::string>> members) {
    JsonWriter json;
    json.begin_object();
    for (const auto& [name, member] : members)
        json.key(name).raw(member);
    json.end_object();
    return json.take();
}

std::string text(std::string_view utf8) {
    JsonWriter json;
    json.text(utf8);
    return json.take();
}

std::string list_of(const std::vector<std::string>& items) {
    JsonWriter json;
    json.begin_list();
    for (const std::string& item : items)
        json.raw(item);
    json.end_list();
    return json.take();
}

std::string texts(std::span<const std::string_view> words) {
    std::vector<std::string> items;
    for (const std::string_view word : words)
        items.push_back(text(word));
    return list_of(items);
}

std::string of_type(std::string_view type) { return object_of({{"type", text(type)}}); }
std::string reference(std::string_view to) {
    return object_of({{"$ref", text("#/$defs/" + std::string(to))}});
}
std::string list_schema(std::string item) {
    return object_of({{"type", text("array")}, {"items", std::move(item)}});
}
std::string nullable(std::string_view type) {
    const std::string_view types[] = {type, "null"};
    return object_of({{"type", texts(types)}});
}

// ---- properties ----------------------------------------------------------------------------------------

// Properties in their order; a name with several meanings accepts any of them.
class Properties {
  public:
    void put(std::string_view name, std::string schema) {
        auto at = std::find_if(all.begin(), all.end(),
                               [name](const auto& property) { return property.first == name; });
        if (at == all.end()) at = all.insert(at, {std::string(name), {}});
        if (std::find(at->second.begin(), at->second.end(), schema) == at->second.end())
            at->second.push_back(std::move(schema));
    }
    void put_all(const Properties& other) {
        for (const auto& [name, schemas] : other.all) {
            for (const std::string& schema : schemas)
                put(name, schema);
        }
    }
    // The members of an object that has no others.
    std::string object(std::span<const std::string_view> required = {}) const {
        JsonWriter json;
        json.begin_object().key("type").text("object").key("properties").begin_object();
        for (const auto& [name, schemas] : all) {
            json.key(name);
            if (schemas.size() == 1)
                json.raw(schemas.front());
            else
                json.begin_object().key("anyOf").raw(list_of(schemas)).end_object();
        }
        json.end_object();
        if (!required.empty()) json.key("required").raw(texts(required));
        json.key("additionalProperties").flag(false).end_object();
        return json.take();
    }

  private:
    std::vector<std::pair<std::string, std::vector<std::string>>> all;
};

// ---- requests ------------------------------------------------------------------------------------------

// The first names of the numbers of a choice, then the others.
std::vector<std::string> choice_values(const Key& key) {
    std::vector<std::string> values;
    std::set<int> numbers;
    for (const Choice& choice : key.choices)
        values.push_back(text(choice.name));
    for (const Choice& choice : key.choices) {
        if (numbers.insert(choice.number).second) values.push_back(std::to_string(choice.number));
    }
    return values;
}

std::string meaning_of(const Key& key) {
    const UnitSystem us = us_units(), si = si_units();
    const std::string unit = to_utf8(us.label(key.quantity)),
                      other = to_utf8(si.label(key.quantity));
    std::string words(key.meaning);
    if (!unit.empty()) words += ", " + unit + (unit == other ? "" : " or " + other);
    return words;
}

// The checks of a kind that can be waived, one of them or a list.
std::string waivers_schema(const ElementKind& kind) {
    std::vector<std::string_view> ids;
    for (const CheckField& field : kind.checks) {
        if (field.waivable) ids.push_back(field.id);
    }
    const std::string id = ids.empty() ? "false" : object_of({{"enum", texts(ids)}});
    return list_of({list_schema(id), id});
}

// Of a key of a kind, or of the vessel.
std::string key_schema(const Key& key, const ElementKind* kind = nullptr) {
    JsonWriter json;
    json.begin_object().key("description").text(meaning_of(key));
    switch (key.quantity) {
    case Quantity::flag:
        json.key("type").text("boolean");
        break;
    case Quantity::choice:
        json.key("enum").raw(list_of(choice_values(key)));
        break;
    case Quantity::whole:
        json.key("type").begin_list().text("integer").text("string").end_list();
        json.key("pattern").text(NUMBER_TEXT);
        break;
    case Quantity::text:
        json.key("type").text("string").key("maxLength").whole(key.width);
        break;
    case Quantity::designation:
        json.key("type").begin_list().text("string").text("number").end_list();
        break;
    case Quantity::waivers:
        json.key("anyOf").raw(waivers_schema(*kind));
        break;
    default:
        json.key("type").begin_list().text("number").text("string").end_list();
        json.key("pattern").text(takes_vacuum(key) ? PRESSURE_TEXT : NUMBER_TEXT);
    }
    json.end_object();
    return json.take();
}

// Everything that a component of the kind may have.
Properties keys_of(const ElementKind& kind) {
    const KeyTable& table = kind.keys;
    Properties properties;
    std::vector<std::pair<std::string, Properties>> inner; // tables within
    const auto inner_of = [&inner](std::string_view name) -> Properties& {
        for (auto& [known, members] : inner) {
            if (known == name) return members;
        }
        return inner.emplace_back(std::string(name), Properties()).second;
    };
    for (const Key& key : table.keys) {
        const std::size_t point = key.name.find('.');
        if (point == std::string_view::npos)
            properties.put(key.name, key_schema(key, &kind));
        else
            inner_of(key.name.substr(0, point))
                .put(key.name.substr(point + 1), key_schema(key, &kind));
    }
    for (const Alias& alias : table.aliases)
        properties.put(alias.other, key_schema(*table.find(alias.ours), &kind));
    for (const InnerTable& own : table.tables) {
        for (const std::string_view name : own.keys)
            inner_of(own.name).put(name, key_schema(*table.find(name), &kind));
    }
    for (const auto& [name, members] : inner)
        properties.put(name, members.object());
    return properties;
}

// The names of the systems.
std::string systems_schema() {
    const std::string_view systems[] = {"US", "SI"};
    return object_of({{"enum", texts(systems)}});
}

// A table of units.
Properties units_table() {
    const auto factor = [](bool positive) {
        return positive ? object_of({{"type", text("number")}, {"exclusiveMinimum", "0"}})
                        : of_type("number");
    };
    Properties units;
    for (const UnitName& unit : unit_names()) {
        Properties members;
        if (unit.quantity == Quantity::temperature) {
            members.put("offset", factor(false));
            members.put("scale", factor(true));
        } else {
            members.put("factor", factor(true));
        }
        members.put("label", of_type("string"));
        units.put(unit.name, members.object());
    }
    return units;
}

std::string units_schema() {
    Properties units = units_table();
    units.put("base", systems_schema());
    return object_of({{"anyOf", list_of({systems_schema(), units.object()})}});
}

Properties document_texts() {
    Properties document, revision;
    for (const Key& key : document_keys())
        document.put(key.name, key_schema(key));
    for (const Key& key : revision_keys())
        revision.put(key.name, key_schema(key));
    document.put(REVISIONS, object_of({{"type", text("array")},
                                       {"maxItems", std::to_string(MOST_REVISIONS)},
                                       {"items", revision.object()}}));
    return document;
}

// A file by its content.
std::string sha256_schema() {
    return object_of({{"type", text("string")}, {"pattern", text("^[0-9a-f]{64}$")}});
}

// The same with the file that was calculated.
std::string result_document_schema() {
    Properties document = document_texts(), input;
    input.put("file", of_type("string"));
    input.put("sha256", sha256_schema());
    const std::string_view members[] = {"file", "sha256"};
    document.put("input", input.object(members));
    return document.object();
}

} // namespace

std::string input_schema() {
    Properties head, common, definitions;
    head.put("tarvane", object_of({{"const", "1"}, {"description", text("form of the request")}}));
    head.put("units", units_schema());
    for (const std::string_view flag : {"decimal_comma", "metric_constants", "strict"})
        head.put(flag, of_type("boolean"));
    JsonWriter definitions_json;
    definitions_json.begin_object();
    for (const ElementKind* kind : element_kinds()) {
        const Properties keys = keys_of(*kind);
        definitions_json.key(kind->table).raw(keys.object());
        common.put_all(keys);
        JsonWriter list;
        list.begin_object().key("type").text("array").key("maxItems");
        list.whole(static_cast<std::int64_t>(kind->most));
        list.key("items").raw(reference(kind->table)).end_object();
        head.put(kind->table, list.take());
        if (kind->single) head.put(kind->table, reference(kind->table));
    }
    Properties of_vessel = common, liquid;
    for (const Key& key : vessel_keys())
        liquid.put(key.name.substr(key.name.find('.') + 1), key_schema(key));
    constexpr std::string_view LIQUID_MEMBERS[] = {"density", "level"};
    of_vessel.put("liquid", liquid.object(LIQUID_MEMBERS));
    definitions_json.key("vessel").raw(of_vessel.object()).end_object();
    head.put("vessel", reference("vessel"));
    head.put_all(common);
    head.put("document", document_texts().object());

    JsonWriter json;
    json.begin_object().key("$schema").text(DRAFT).key("title").text("Request of tarvane");
    json.key("$defs").raw(definitions_json.str());
    // The members of the head in the same object.
    const std::string members = head.object();
    json.raw(std::string_view(members).substr(1, members.size() - 2)).end_object();
    return json.take();
}

// ---- results -------------------------------------------------------------------------------------------

namespace {

std::string inputs_schema(const ElementKind& kind) {
    Properties input;
    const std::string_view types[] = {"number", "string", "boolean", "null"};
    input.put("value", object_of({{"type", texts(types)}}));
    input.put("given", "true");
    input.put("from", of_type("string"));
    const std::string_view required[] = {"value", "from"};
    const std::string schema = input.object(required);
    Properties inputs;
    for (const Key& key : kind.keys.keys)
        inputs.put(key.name, schema);
    return inputs.object();
}

std::string results_schema(const ElementKind& kind) {
    Properties results;
    std::vector<std::string_view> names;
    for (const ResultField& field : kind.results) {
        names.push_back(field.name);
        const std::string words = text(field.label);
        if (!field.choices.empty()) {
            std::vector<std::string> values{"null"};
            for (const Choice& choice : field.choices)
                values.push_back(text(choice.name));
            results.put(field.name, object_of({{"description", words}, {"enum", list_of(values)}}));
            continue;
        }
        const std::string_view types[] = {field.quantity == Quantity::flag ? "boolean" : "number",
                                          "null"};
        results.put(field.name, object_of({{"description", words}, {"type", texts(types)}}));
    }
    return results.object(names);
}

std::string check_schema(const ElementKind& kind) {
    Properties check;
    std::vector<std::string> ids;
    for (const CheckField& field : kind.checks) {
        std::string words(field.label);
        if (!field.asked.empty()) words += "; asked: " + std::string(field.asked);
        ids.push_back(object_of({{"const", text(field.id)}, {"description", text(words)}}));
    }
    check.put("id", ids.empty() ? "false" : object_of({{"oneOf", list_of(ids)}}));
    check.put("paragraph", of_type("string"));
    for (const std::string_view words : {"case", "step"})
        check.put(words, of_type("string"));
    const std::string_view operators[] = {"<=", ">="};
    const std::string_view states[] = {"pass", "fail", "not asked", "not made", "waived"};
    check.put("demand", nullable("number"));
    check.put("operator", object_of({{"enum", texts(operators)}}));
    check.put("limit", nullable("number"));
    check.put("unit", of_type("string"));
    check.put("ratio", nullable("number"));
    check.put("state", object_of({{"enum", texts(states)}}));
    const std::string_view forces[] = {force_name(Force::decides), force_name(Force::warns),
                                       force_name(Force::advises)};
    check.put("force", object_of({{"enum", texts(forces)}}));
    check.put("waivable", of_type("boolean"));
    check.put("remark", of_type("string"));
    check.put("reason", of_type("string"));
    const std::string_view required[] = {"id", "paragraph", "state", "force", "waivable"};
    return check.object(required);
}

// Of the rated pressure: what it stands between, what holds it down, what fails whatever the pressure.
std::string rating_schema() {
    Properties rating;
    for (const std::string_view name : {"pressure", "estimate", "passes", "fails"})
        rating.put(name, nullable("number"));
    rating.put("why", of_type("string"));
    rating.put("held_by", nullable("string"));
    rating.put("anyway", list_schema(of_type("string")));
    rating.put("calculations", of_type("integer"));
    const std::string_view required[] = {"pressure", "estimate", "passes",      "fails",
                                         "held_by",  "anyway",   "calculations"};
    return rating.object(required);
}

std::string component_schema(const ElementKind& kind) {
    Properties why, line, component;
    for (const ResultField& field : kind.results)
        why.put(field.name, of_type("string"));
    line.put("text", of_type("string"));
    line.put("marks", object_of({{"type", text("array")},
                                 {"items", of_type("integer")},
                                 {"minItems", "6"},
                                 {"maxItems", "6"}}));
    component.put("description", of_type("string"));
    component.put("verdict", reference("verdict"));
    component.put("says", of_type("string"));
    component.put("governing", nullable("string"));
    component.put("inputs", inputs_schema(kind));
    component.put("results", results_schema(kind));
    component.put("why", why.object());
    component.put("rating", rating_schema());
    component.put("rating", of_type("null"));
    component.put("checks", list_schema(check_schema(kind)));
    for (const std::string_view words : {"messages", "notes"})
        component.put(words, list_schema(of_type("string")));
    const std::string_view line_members[] = {"text", "marks"};
    component.put("report", list_schema(line.object(line_members)));
    component.put("drawings", reference("drawings"));
    const std::string_view required[] = {"description", "verdict",  "says", "governing",
                                         "inputs",      "messages", "notes"};
    return component.object(required);
}

} // namespace

std::string result_schema() {
    const std::string_view verdicts[] = {"pass", "fail", "not made"};
    const std::string_view statuses[] = {"approximate", "published", "checked"};
    Properties governing, item, file, result;
    const std::string_view governing_members[] = {"component", "check"};
    for (const std::string_view member : governing_members)
        governing.put(member, of_type("string"));
    item.put("item", of_type("string"));
    item.put("status", object_of({{"enum", texts(statuses)}}));
    item.put("edition", of_type("string"));
    item.put("source", of_type("string"));
    const std::string_view item_members[] = {"item", "status"},
                           file_members[] = {"file", "version", "sha256", "used"};
    file.put("file", of_type("string"));
    file.put("version", nullable("string"));
    file.put("sha256", sha256_schema());
    const std::string figure = item.object(item_members);
    file.put("used", list_schema(figure));

    Properties drawing;
    drawing.put("name", of_type("string"));
    drawing.put("svg", of_type("string"));
    const std::string_view drawing_members[] = {"name", "svg"};

    JsonWriter definitions;
    definitions.begin_object();
    definitions.key("verdict").raw(object_of({{"enum", texts(verdicts)}}));
    definitions.key("drawings").raw(list_schema(drawing.object(drawing_members)));
    result.put("tarvane", object_of({{"const", "1"}}));
    result.put("program", of_type("string"));
    result.put("units", systems_schema());
    result.put("unit_system", units_table().object());
    result.put("document", result_document_schema());
    result.put("verdict", reference("verdict"));
    result.put("says", of_type("string"));
    result.put("governing", of_type("null"));
    result.put("governing", governing.object(governing_members));
    result.put("data_edition", of_type("string"));
    result.put("data", list_schema(file.object(file_members)));
    result.put("figures", list_schema(figure));
    Properties row;
    std::vector<std::string_view> rows;
    const std::vector<ResultField> fields = summary_fields();
    rows.reserve(fields.size());
    for (const ResultField& field : fields)
        rows.push_back(field.name);
    row.put("name", object_of({{"enum", texts(rows)}}));
    row.put("label", of_type("string"));
    row.put("value", nullable("number"));
    row.put("unit", of_type("string"));
    row.put("component", nullable("string"));
    row.put("note", of_type("string"));
    row.put("lacks", list_schema(of_type("string")));
    const std::string_view row_members[] = {"name",      "label", "value", "unit",
                                            "component", "note",  "lacks"};
    result.put("summary", list_schema(row.object(row_members)));
    result.put("drawings", reference("drawings"));
    result.put("not_covered", list_schema(of_type("string")));
    for (const ElementKind* kind : element_kinds()) {
        definitions.key(kind->table).raw(component_schema(*kind));
        result.put(kind->table, list_schema(reference(kind->table)));
    }
    definitions.end_object();
    const std::string_view required[] = {"tarvane", "program",   "units", "unit_system", "verdict",
                                         "says",    "governing", "data",  "not_covered"};
    JsonWriter json;
    json.begin_object().key("$schema").text(DRAFT).key("title").text("Result of tarvane");
    json.key("$defs").raw(definitions.str());
    const std::string members = result.object(required);
    json.raw(std::string_view(members).substr(1, members.size() - 2)).end_object();
    return json.take();
}

} // namespace tarvane::vessel
