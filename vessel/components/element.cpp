#include "components/element.h"

#include "catalogue/data_folder.h"
#include "catalogue/data_sources.h"
#include "components/waivers.h"
#include "document/results.h"
#include "values/text.h"

#include <algorithm>

namespace tarvane::vessel {

void Verdict::say(Status grave, std::string reason) {
    status = std::max(status, grave);
    reasons.push_back(std::move(reason));
}

namespace {

// For a check that blocks and has no words of its own.
std::string words_of(const Check& check, const UnitSystem& units) {
    const CheckField& field = check.field();
    std::string words = "the check of the " + std::string(field.label);
    if (check.demand())
        words += ", " + shown(*check.demand(), field.quantity, units) + " against " +
                 shown(*check.limit(), field.quantity, units) + ',';
    return words + (check.state() == State::fail ? " fails" : " was not made");
}

} // namespace

Checks Element::checks(const Outcome& outcome, const UnitSystem& units) const {
    Checks checks = find_checks(outcome, units);
    const std::string ids = waivers();
    if (ids.empty()) return checks;
    for (Check& check : checks) {
        if (has_waiver(ids, check.field().id)) check = check.waived();
    }
    return checks;
}

std::vector<Result> Element::results_at(const Outcome& outcome,
                                        std::span<const std::size_t> places) const {
    const std::vector<Result> all = results(outcome);
    std::vector<Result> some;
    for (const std::size_t place : places)
        some.push_back(all[place]);
    return some;
}

std::string Element::waivers() const {
    const Key* key = kind == nullptr ? nullptr : kind->keys.find(WAIVE);
    return key == nullptr ? std::string() : text_of(*key);
}

bool Element::waives(std::string_view id) const { return has_waiver(waivers(), id); }

Check Element::temperature_check(const CheckField& field) const {
    return Check::not_asked(field, metal_temperature == 0
                                       ? std::string("an [[mdmt]] for the part makes this check")
                                       : "made in mdmt " + std::to_string(metal_temperature));
}

Verdict Element::judge(const Outcome& outcome, const UnitSystem& units) const {
    Verdict verdict;
    std::string wordless;
    if (outcome.refused()) verdict.status = Status::bad_input;
    if (outcome.stopped) verdict.status = Status::stopped;
    for (const Check& check : checks(outcome, units)) {
        if (check.told())
            verdict.say(check.blocks() ? Status::fails : Status::fine, check.reason());
        else if (check.blocks() && wordless.empty())
            wordless = words_of(check, units);
    }
    // Most of these fail together with a check that has words for it.
    if (!wordless.empty() && verdict.status == Status::fine)
        verdict.say(Status::fails, std::move(wordless));
    return verdict;
}

bool Reading::sound(std::string_view key) const {
    const auto place = keys.find(key);
    return place != keys.end() && place->second.sound;
}

void Reading::fault_at(std::string_view place, std::string_view key, std::string message) {
    Fault fault{.line = table_line,
                .key = std::string(key),
                .message = std::move(message),
                .path = table_path + '.' + std::string(key)};
    if (const auto found = keys.find(place); found != keys.end()) {
        fault.line = found->second.line;
        if (place == key && !found->second.path.empty()) {
            fault.key = found->second.written;
            fault.path = found->second.path;
        }
    }
    if (const auto origin = origins.find(place); origin != origins.end()) {
        const Value& given = origin->second.given;
        if (!given.null()) fault.value = given.shown();
    }
    faults.push_back(std::move(fault));
}

void Reading::rely_on(std::string_view file) {
    if (file != APPROXIMATE_FILE && file != SOURCES_FILE) data[std::string(file)];
    if (auto fault = data_files.first_fault(file))
        faults.push_back({.line = table_line,
                          .key = std::string(file),
                          .message = std::move(*fault),
                          .path = table_path});
}

void Reading::use(const std::string& file, const std::string& item) {
    rely_on(file);
    rely_on(APPROXIMATE_FILE);
    rely_on(SOURCES_FILE);
    if (data_files.sound(APPROXIMATE_FILE)) data[file][item] = data_files.approximate(file, item);
}

void Reading::use(const Material& material) {
    rely_on(SOURCES_FILE);
    data[material.selection.file()][item_of(material)] = material.approximate;
}

void Reading::tell(std::string note) {
    if (std::find(notes.begin(), notes.end(), note) == notes.end())
        notes.push_back(std::move(note));
}

std::string stop_reason(const Outcome& outcome) {
    return "the engine stopped with code " + std::to_string(outcome.fatal_code);
}

std::string closing_table(std::string_view title, std::span<const Calculated> elements,
                          const UnitSystem& units) {
    std::vector<ResultColumn> columns;
    columns.reserve(elements.size());
    for (const Calculated& c : elements)
        columns.push_back({to_utf8(column_heading(*c.element)), c.element->results(*c.outcome)});
    return result_table(title, columns, units);
}

bool Element::gives(std::string_view key) const {
    const auto origin = origins.find(key);
    return origin != origins.end() && !origin->second.given.null();
}

void Element::add_unmade_checks(Checks& checks) const {
    for (const Unheeded* each : unheeded)
        checks.push_back(Check::not_made(
            each->check, "not made: " + std::string(each->check.label) + "; " +
                             std::string(each->key.name) + " applies to every component; " +
                             std::string(each->advice)));
}

std::string column_heading(const Element& element) {
    std::string description = element.description();
    if (!description.empty() || element.kind == nullptr) return description;
    return std::string(element.kind->table) + ' ' + std::to_string(element.number);
}

std::string name_of(const Element& element) {
    std::string name = std::string(element.kind->table) + ' ' + std::to_string(element.number);
    const std::string description = element.description();
    if (!description.empty()) name += " (" + to_utf8(description) + ')';
    return name;
}

} // namespace tarvane::vessel
