#include "surface/result_json.h"

#include "assembly/summary.h"
#include "catalogue/charts.h"
#include "catalogue/data_folder.h"
#include "catalogue/data_search.h"
#include "catalogue/data_sources.h"
#include "components/data_lines.h"
#include "components/read_units.h"
#include "components/read_value.h"
#include "document/checks_table.h"
#include "document/input_rows.h"
#include "document/report_view.h"
#include "document/result_value.h"
#include "document/vessel_verdict.h"
#include "drawing/component_drawing.h"
#include "fields/vessel_keys.h"
#include "values/bounded_file.h"
#include "values/json.h"
#include "values/text.h"

#include <algorithm>

namespace tarvane::vessel {

namespace {

// A component with what was found for it.
struct Found {
    const Element* element;
    const Outcome* outcome;
    const Verdict* verdict;
    Checks checks; // the worst first
};

std::string_view verdict_of(const Found& found) {
    return vessel::verdict_of(*found.verdict, found.checks);
}

class Writer {
  public:
    Writer(const Request& of, const Calculation& as, Wanted members, const DocumentFacts* facts)
        : request(of), calculation(as), wanted(members), document(facts) {}

    std::string write(const std::vector<Found>& components, const VesselVerdict& verdict);

  private:
    const Request& request;
    const Calculation& calculation;
    Wanted wanted;
    const DocumentFacts* document;
    JsonWriter json;

    void text(std::string_view name, std::string_view utf8) { json.key(name).text(utf8); }
    void value(float engine, Quantity quantity) {
        json.single(request.units.to_file(engine, quantity));
    }
    void optional_value(std::string_view name, std::optional<float> engine, Quantity quantity) {
        json.key(name);
        if (engine)
            value(*engine, quantity);
        else
            json.null();
    }
    void write_texts(const Texts& texts) {
        for (const auto& [name, words] : texts)
            text(name, words);
    }
    void write_units();
    void write_document();
    void write_governing(const std::optional<Governing>& governing);
    void write_summary();
    void write_data();
    bool write_choice(std::span<const Choice> choices, float engine);
    void write_number(const Key& key, float engine, const Value& given);
    void write_inputs(const Element& element);
    void write_results(const Found& found);
    void write_rating(const Outcome& outcome);
    void write_check(const Check& check);
    void write_report(const Outcome& outcome);
    void write_drawing(std::string_view name, std::string_view svg);
    void write_drawings(const Found& found);
    void write_vessel_drawings();
    void write_component(const Found& found);
};

// ---- of the whole request ------------------------------------------------------------------------------

// As a request may write them.
void Writer::write_units() {
    const UnitSystem& units = request.units;
    json.key("unit_system").begin_object();
    for (const auto& [name, quantity] : unit_names()) {
        json.key(name).begin_object();
        if (quantity == Quantity::temperature) {
            json.key("offset").single(units.factor(quantity));
            json.key("scale").single(units.factor(Quantity::temperature_scale));
        } else {
            json.key("factor").single(units.factor(quantity));
        }
        text("label", to_utf8(units.label(quantity)));
        json.end_object();
    }
    json.end_object();
}

// What its front page says, and the file that it is made of.
void Writer::write_document() {
    json.key("document").begin_object();
    write_texts(request.document.texts);
    if (!request.document.revisions.empty()) {
        json.key(REVISIONS).begin_list();
        for (const Texts& revision : request.document.revisions) {
            json.begin_object();
            write_texts(revision);
            json.end_object();
        }
        json.end_list();
    }
    if (!document->input_sha256.empty()) {
        json.key("input").begin_object();
        text("file", document->input_name);
        text("sha256", document->input_sha256);
        json.end_object();
    }
    json.end_object();
}

void Writer::write_governing(const std::optional<Governing>& governing) {
    json.key("governing");
    if (!governing) {
        json.null();
        return;
    }
    json.begin_object();
    text("component", path_of(*governing->element));
    text("check", governing->check.field().id);
    json.end_object();
}

// Of a request with a [vessel].
void Writer::write_summary() {
    json.key("summary").begin_list();
    for (const SummaryRow& row : summary(request, calculation)) {
        json.begin_object();
        text("name", row.field->name);
        text("label", row.field->label);
        optional_value("value", row.value, row.field->quantity);
        text("unit", to_utf8(request.units.label(row.field->quantity)));
        json.key("component");
        if (row.by != nullptr)
            json.text(path_of(*row.by));
        else
            json.null();
        text("note", row.note);
        json.key("lacks").begin_list();
        for (const std::string& each : row.lacks)
            json.text(each);
        json.end_list().end_object();
    }
    json.end_list();
}

void Writer::write_data() {
    const std::optional<std::string> version = version_in(path_of(data_folder().path));
    if (const std::string edition = data_edition(); !edition.empty()) text("data_edition", edition);
    json.key("data").begin_list();
    for (const UsedFile& file : used_files(request)) {
        json.begin_object();
        text("file", file.name);
        json.key("version");
        if (version)
            json.text(*version);
        else
            json.null();
        text("sha256", file.sha256());
        json.key("used").begin_list();
        for (const UsedItem& item : file.items) {
            json.begin_object();
            text("item", item.name);
            text("status", item.status());
            if (item.source && !item.source->edition.empty()) text("edition", item.source->edition);
            if (item.source && !item.source->source.empty()) text("source", item.source->source);
            json.end_object();
        }
        json.end_list().end_object();
    }
    json.end_list();
    const OwnFigures own = own_figures(calculation.calculated);
    if (own.empty()) return;
    json.key("figures").begin_list();
    for (const auto& [item, source] : own) {
        json.begin_object();
        text("item", item);
        text("status", "approximate");
        text("source", source);
        json.end_object();
    }
    json.end_list();
}

// ---- of a component ------------------------------------------------------------------------------------

// The name of a number that has one.
bool Writer::write_choice(std::span<const Choice> choices, float engine) {
    const std::string_view name =
        choices.empty() ? std::string_view() : choice_name(choices, static_cast<int>(engine));
    if (!name.empty()) json.text(name);
    return !name.empty();
}

void Writer::write_number(const Key& key, float engine, const Value& given) {
    if (key.quantity == Quantity::flag) {
        json.flag(engine != 0.0f);
        return;
    }
    if (write_choice(key.choices, engine)) return;
    json.single(as_given(key, engine, given, request.units));
}

void Writer::write_inputs(const Element& element) {
    json.key("inputs").begin_object();
    for (const Key& key : element.kind->keys.keys) {
        const auto origin = element.origins.find(key.name);
        if (origin == element.origins.end()) continue;
        json.key(key.name).begin_object().key("value");
        if (is_text(key))
            json.text(to_utf8(element.text_of(key)));
        else
            write_number(key, element.number_of(key), origin->second.given);
        if (!origin->second.given.null()) json.key("given").value(origin->second.given);
        text("from", origin->second.from);
        json.end_object();
    }
    json.end_object();
}

void Writer::write_results(const Found& found) {
    const std::vector<Result> results = found.element->results(*found.outcome);
    json.key("results").begin_object();
    for (const Result& result : results) {
        json.key(result.field->name);
        const ResultValue value = value_of(result, request.units);
        if (const bool* flag = std::get_if<bool>(&value))
            json.flag(*flag);
        else if (const auto* name = std::get_if<std::string_view>(&value))
            json.text(*name);
        else if (const float* number = std::get_if<float>(&value))
            json.single(*number);
        else
            json.null();
    }
    json.end_object().key("why").begin_object();
    for (const Result& result : results) {
        if (std::holds_alternative<std::monostate>(value_of(result, request.units)))
            text(result.field->name, why_none(result));
    }
    json.end_object();
}

void Writer::write_rating(const Outcome& outcome) {
    json.key("rating");
    if (!outcome.rated_pressure) {
        json.null();
        return;
    }
    const RatedPressure& rated = *outcome.rated_pressure;
    json.begin_object();
    optional_value("pressure", rated.P, Quantity::pressure);
    if (!rated.why.empty()) text("why", rated.why);
    optional_value("estimate", rated.estimate, Quantity::pressure);
    optional_value("passes", rated.passes, Quantity::pressure);
    optional_value("fails", rated.fails, Quantity::pressure);
    json.key("held_by");
    if (rated.held_by.empty())
        json.null();
    else
        json.text(rated.held_by);
    json.key("anyway").begin_list();
    for (const std::string_view id : rated.anyway)
        json.text(id);
    json.end_list();
    json.key("calculations").whole(rated.calculations).end_object();
}

void Writer::write_check(const Check& check) {
    const CheckField& field = check.field();
    json.begin_object();
    text("id", field.id);
    text("paragraph", check.paragraph());
    if (!check.load_case().empty()) text("case", check.load_case());
    if (check.ratio()) {
        optional_value("demand", check.demand(), field.quantity);
        text("operator", field.at_least ? ">=" : "<=");
        optional_value("limit", check.limit(), field.quantity);
        text("unit", to_utf8(request.units.label(field.quantity)));
        json.key("ratio").single(*check.ratio());
    }
    text("state", state_name(check.state()));
    text("force", force_name(field.force));
    json.key("waivable").flag(field.waivable);
    if (!check.reason().empty()) text("reason", check.reason());
    if (!check.remark().empty()) text("remark", check.remark());
    if (!check.step().empty()) text("step", check.step());
    json.end_object();
}

void Writer::write_report(const Outcome& outcome) {
    json.key("report").begin_list();
    for (const ReportLine& line : report_lines(outcome.report)) {
        json.begin_object();
        text("text", to_utf8(line.text));
        json.key("marks").begin_list();
        for (const int mark : line.marks)
            json.whole(mark);
        json.end_list().end_object();
    }
    json.end_list();
}

void Writer::write_drawing(std::string_view name, std::string_view svg) {
    json.begin_object();
    text("name", name);
    text("svg", svg);
    json.end_object();
}

void Writer::write_drawings(const Found& found) {
    json.key("drawings").begin_list();
    if (const auto section =
            component_drawing(*found.element, *found.outcome, request, DrawnFor::page))
        write_drawing("section", section->svg);
    if (const auto point = found.element->chart_point(*found.outcome))
        write_drawing("chart",
                      chart_svg(point->chart, point->temperature, point->yield, point->A,
                                request.units, request.units.decimal_comma, DrawnFor::page));
    json.end_list();
}

void Writer::write_vessel_drawings() {
    const auto outline = vessel_drawing(request, calculation, DrawnFor::page);
    if (!outline) return;
    json.key("drawings").begin_list();
    write_drawing("outline", outline->svg);
    json.end_list();
}

void Writer::write_component(const Found& found) {
    json.begin_object();
    text("description", to_utf8(found.element->description()));
    text("verdict", verdict_of(found));
    text("says", words_of(found.checks, request.units));
    json.key("governing");
    if (const Check* worst = governing(found.checks))
        json.text(worst->field().id);
    else
        json.null();
    write_inputs(*found.element);
    if (wanted.results) {
        write_results(found);
        write_rating(*found.outcome);
        json.key("checks").begin_list();
        for (const Check& check : found.checks)
            write_check(check);
        json.end_list();
    }
    json.key("messages").begin_list();
    for (const std::string& message : found.outcome->messages)
        json.text(to_utf8(message));
    json.end_list().key("notes").begin_list();
    for (const std::string& note : found.element->notes)
        json.text(note);
    for (const std::string& reason : found.verdict->reasons)
        json.text(reason);
    json.end_list();
    if (wanted.report) write_report(*found.outcome);
    if (wanted.drawings) write_drawings(found);
    json.end_object();
}

std::string Writer::write(const std::vector<Found>& components, const VesselVerdict& verdict) {
    json.begin_object().key("tarvane").whole(RESULT_FORM);
    text("program", TARVANE_VERSION);
    text("units", request.units.name);
    write_units();
    if (document != nullptr) write_document();
    text("verdict", verdict.verdict);
    text("says", verdict.words);
    write_governing(verdict.governing);
    if (request.of_vessel && wanted.results) write_summary();
    write_data();
    json.key("not_covered").begin_list();
    for (const std::string_view words : verdict.not_covered)
        json.text(words);
    json.end_list();
    for (const ElementKind* kind : element_kinds()) {
        bool any = false;
        for (const Found& found : components) {
            if (found.element->kind != kind) continue;
            if (!any) json.key(kind->table).begin_list();
            any = true;
            write_component(found);
        }
        if (any) json.end_list();
    }
    if (wanted.drawings) write_vessel_drawings();
    json.end_object();
    return json.take();
}

} // namespace

std::string result_json(const Request& request, const Calculation& calculation, Wanted wanted,
                        const DocumentFacts* document) {
    std::vector<Found> components;
    for (std::size_t i = 0; i < calculation.calculated.size(); ++i) {
        const auto& [element, outcome] = calculation.calculated[i];
        Checks checks = element->checks(*outcome, request.units);
        sort_worst_first(checks);
        components.push_back({element, outcome, &calculation.verdicts[i], std::move(checks)});
    }
    return Writer(request, calculation, wanted, document)
        .write(components, vessel_verdict(request, calculation));
}

std::string faults_json(const Faults& faults) {
    JsonWriter json;
    json.begin_list();
    for (const Fault& fault : faults) {
        json.begin_object();
        // Bytes of a request or a path that are no UTF-8 are written by their numbers.
        json.key("path").text(printable(fault.path));
        json.key("value").text(printable(fault.value));
        json.key("reason").text(printable(fault.message));
        json.end_object();
    }
    json.end_list();
    return json.take();
}

} // namespace tarvane::vessel
