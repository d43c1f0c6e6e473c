#include "batch/row.h"

#include <stdexcept>
#include <utility>

namespace tarvane::app {

namespace {

constexpr std::int64_t ROW_FORM = 1; // of a line of the journal

const Value& member(const Table& object, std::string_view name) {
    const Value* value = object.find(name);
    if (value == nullptr) throw std::runtime_error(std::string(name) + " is missing");
    return *value;
}

std::string text_of(const Value& value) {
    if (value.null()) return {};
    if (const std::string* text = value.text()) return *text;
    throw std::runtime_error("a text is expected");
}

std::string text(const Table& object, std::string_view name) {
    return text_of(member(object, name));
}

std::int64_t whole(const Table& object, std::string_view name) {
    const std::int64_t* number = member(object, name).whole();
    if (number == nullptr) throw std::runtime_error("a whole number is expected");
    return *number;
}

void write_text(std::string_view name, std::string_view value, JsonWriter& json) {
    json.key(name);
    if (value.empty())
        json.null();
    else
        json.text(value);
}

Status status_of(std::int64_t number) {
    if (number < 0 || number > static_cast<std::int64_t>(Status::stopped))
        throw std::runtime_error("an exit status is expected");
    return static_cast<Status>(number);
}

} // namespace

Row Row::without_result(std::string_view status, Status exit, std::string reason) {
    Row row;
    row.status = status;
    row.exit = exit;
    row.reason = std::move(reason);
    return row;
}

void write_row(const Row& row, JsonWriter& json) {
    json.key("item").text(row.item).key("file").text(row.file).key("status").text(row.status);
    json.key("exit").whole(static_cast<int>(row.exit));
    write_text("units", row.units, json);
    write_text("verdict", row.verdict, json);
    json.key("ratio");
    if (row.ratio)
        json.single(*row.ratio);
    else
        json.null();
    json.key("governing");
    if (row.check.empty())
        json.null();
    else
        json.begin_object()
            .key("component")
            .text(row.component)
            .key("check")
            .text(row.check)
            .end_object();
    write_text("says", row.says, json);
    write_text("reason", row.reason, json);
    json.key("faults").value(row.faults);
}

Row row_of(const Table& object) {
    Row row{.item = text(object, "item"),
            .file = text(object, "file"),
            .status = text(object, "status"),
            .exit = status_of(whole(object, "exit")),
            .units = text(object, "units"),
            .verdict = text(object, "verdict"),
            .says = text(object, "says"),
            .ratio = {},
            .component = {},
            .check = {},
            .reason = text(object, "reason"),
            .faults = member(object, "faults")};
    if (const std::optional<double> ratio = member(object, "ratio").number())
        row.ratio = static_cast<float>(*ratio);
    if (const Table* governing = member(object, "governing").table()) {
        row.component = text(*governing, "component");
        row.check = text(*governing, "check");
    }
    return row;
}

std::string line_of(const Entry& entry) {
    JsonWriter json;
    json.begin_object().key("journal").whole(ROW_FORM);
    write_row(entry.row, json);
    json.key("key").text(entry.key).key("seconds").number(entry.seconds);
    json.key("files").begin_object();
    for (const Written& each : entry.files)
        json.key(each.extension).whole(static_cast<std::int64_t>(each.bytes));
    return json.end_object().end_object().take();
}

std::optional<Entry> entry_of(std::string_view line) {
    Faults faults;
    const std::optional<Value> value = read_json(line, faults);
    const Table* object = value ? value->table() : nullptr;
    if (object == nullptr) return std::nullopt;
    try {
        if (whole(*object, "journal") != ROW_FORM) return std::nullopt;
        Entry entry{.row = row_of(*object),
                    .key = text(*object, "key"),
                    .files = {},
                    .seconds = member(*object, "seconds").number().value_or(0.0)};
        const Table* files = member(*object, "files").table();
        if (files == nullptr) return std::nullopt;
        for (const Table::Entry& file : *files)
            entry.files.push_back({file.key, static_cast<std::uintmax_t>(whole(*files, file.key))});
        return entry;
    } catch (const std::runtime_error&) {
        return std::nullopt;
    }
}

} // namespace tarvane::app
