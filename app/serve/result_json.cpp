#include "assembly/summary.h"
#include "catalogue/charts.h"
#include "components/engine_session.h"
#include "components/fault_list.h"
#include "document/component_section.h"
#include "document/html.h"
#include "document/input_rows.h"
#include "document/report_blocks.h"
#include "document/result_value.h"
#include "document/results.h"
#include "document/vessel_verdict.h"
#include "drawing/component_drawing.h"
#include "input/input_file.h"
#include "serve/document_json.h"
#include "serve/form_values.h"
#include "surface/engine_turn.h"
#include "values/json.h"
#include "values/text.h"

#include <algorithm>
#include <exception>
#include <set>

namespace tarvane::app {

namespace {

constexpr std::string_view FAULTY = "faulty", STOPPED = "stopped", NOT_READ = "not read";

std::string_view tone_name(Tone tone) {
    switch (tone) {
    case Tone::sound:
        return "sound";
    case Tone::bad:
        return "bad";
    case Tone::advice:
        return "advice";
    case Tone::quiet:
        break;
    }
    return "quiet";
}

// A page that takes no styles but its own gives a drawing its size by itself.
std::string without_style(std::string svg) {
    constexpr std::string_view STYLE = " style=\"";
    const std::size_t tag = svg.find('>'), begin = svg.find(STYLE);
    if (begin == std::string::npos || begin > tag) return svg;
    const std::size_t end = svg.find('"', begin + STYLE.size());
    return end == std::string::npos ? svg : svg.erase(begin, end + 1 - begin);
}

// ---- what was not calculated --------------------------------------------------------------------------

std::string not_calculated(std::string_view verdict, std::string_view says, const Faults& faults,
                           const std::vector<std::string>& problems, const std::string& toml) {
    JsonWriter json;
    json.begin_object().key("verdict").text(verdict).key("says").text(says);
    json.key("governing").null().key("faults").begin_list();
    const std::size_t shown = std::min(faults.size(), MOST_FAULT_LINES);
    for (std::size_t i = 0; i < shown; ++i) {
        const Fault& fault = faults[i];
        json.begin_object().key("path").text(printable(fault.path));
        json.key("key").text(printable(fault.key)).key("line").whole(fault.line);
        json.key("value").text(printable(fault.value));
        json.key("reason").text(printable(fault.message)).end_object();
    }
    json.end_list().key("problems").begin_list();
    for (const std::string& problem : problems)
        json.text(printable(problem));
    json.end_list().key("components").begin_list();
    const TomlTree tree = read_tree(toml);
    for (const WrittenComponent& component : components_in(tree.root)) {
        const TomlNode* given = component.node->member("description");
        const std::string* words = given != nullptr ? given->value.text() : nullptr;
        std::string name =
            std::string(component.kind->table) + ' ' + std::to_string(component.place + 1);
        if (words != nullptr && !words->empty()) name += " (" + *words + ")";
        json.begin_object().key("path").text(component.path());
        json.key("kind").text(component.kind->table).key("name").text(name);
        json.key("description").text(words != nullptr ? *words : std::string());
        json.key("implied").flag(false).end_object();
    }
    json.end_list().key("component").null().key("outline").null();
    for (const std::string_view none : {"summary", "not_covered", "approximate"})
        json.key(none).begin_list().end_list();
    json.end_object();
    return json.take();
}

// ---- what was ------------------------------------------------------------------------------------------

class ResultWriter {
  public:
    ResultWriter(const Request& of, const Calculation& as, const std::string& toml)
        : request(of), calculation(as) {
        const TomlTree tree = read_tree(toml);
        for (const WrittenComponent& component : components_in(tree.root))
            written.insert(component.path());
    }

    std::string write(const std::string& component) {
        const VesselVerdict verdict = vessel_verdict(request, calculation);
        json.begin_object();
        json.key("verdict").text(calculation.complete ? verdict.verdict : STOPPED);
        json.key("says").text(verdict.words).key("governing");
        if (verdict.governing) {
            json.begin_object().key("component").text(path_of(*verdict.governing->element));
            json.key("check").text(verdict.governing->check.field().id).end_object();
        } else {
            json.null();
        }
        json.key("faults").begin_list().end_list().key("problems").begin_list();
        for (const std::string& problem : calculation.problems)
            json.text(printable(problem));
        if (!calculation.complete && !calculation.verdicts.empty()) {
            for (const std::string& reason : calculation.verdicts.back().reasons)
                json.text(reason);
        }
        json.end_list().key("components").begin_list();
        for (const auto& element : request.elements)
            write_entry(*element);
        json.end_list().key("component");
        write_chosen(component, verdict);
        json.key("outline");
        write_figure(vessel_drawing(request, calculation, DrawnFor::page));
        write_rest(verdict);
        json.end_object();
        return json.take();
    }

  private:
    const Request& request;
    const Calculation& calculation;
    std::set<std::string> written; // paths of components that the text has
    JsonWriter json;

    const Verdict* verdict_for(const Element& element, const Outcome*& outcome) const {
        for (std::size_t i = 0; i < calculation.calculated.size(); ++i) {
            if (calculation.calculated[i].element != &element) continue;
            outcome = calculation.calculated[i].outcome;
            return &calculation.verdicts[i];
        }
        return nullptr;
    }

    Checks sorted_checks(const Element& element, const Outcome& outcome) const {
        Checks checks = element.checks(outcome, request.units);
        sort_worst_first(checks);
        return checks;
    }

    void write_ratio(std::optional<float> ratio) {
        json.key("ratio");
        if (ratio)
            json.single(*ratio);
        else
            json.null();
    }

    void write_entry(const Element& element) {
        const std::string path = path_of(element);
        json.begin_object().key("path").text(path).key("kind").text(element.kind->table);
        json.key("name").text(name_of(element));
        json.key("description").text(to_utf8(element.description()));
        json.key("implied").flag(!written.contains(path));
        const Outcome* outcome = nullptr;
        if (const Verdict* verdict = verdict_for(element, outcome)) {
            const Checks checks = sorted_checks(element, *outcome);
            const Check* worst = governing(checks);
            json.key("verdict").text(verdict_of(*verdict, checks));
            json.key("says").text(words_of(checks, request.units)).key("governing");
            if (worst != nullptr)
                json.text(worst->field().id);
            else
                json.null();
            write_ratio(worst != nullptr ? worst->ratio() : std::nullopt);
        }
        json.end_object();
    }

    void write_figure(const std::optional<Figure>& figure) {
        if (!figure) {
            json.null();
            return;
        }
        json.begin_object().key("svg").text(without_style(figure->svg));
        json.key("alt").text(figure->alt).key("scale").text(figure->scale);
        json.key("dropped").begin_list();
        for (const std::string& each : figure->dropped)
            json.text(each);
        json.end_list().end_object();
    }

    const Element* element_at(const std::string& path) const {
        for (const auto& element : request.elements) {
            if (path_of(*element) == path) return element.get();
        }
        return nullptr;
    }

    void write_chosen(const std::string& path, const VesselVerdict& verdict) {
        const Element* element = element_at(path);
        if (element == nullptr && verdict.governing) element = verdict.governing->element;
        if (element == nullptr && !request.elements.empty()) element = request.elements[0].get();
        const Outcome* outcome = nullptr;
        const Verdict* own = element != nullptr ? verdict_for(*element, outcome) : nullptr;
        if (own == nullptr)
            json.null();
        else
            write_component(*element, *outcome, *own);
    }

    // The others are calculated without lines and without the reasons of their checks.
    std::unique_ptr<Outcome> calculated_aloud(const Element& element, const Outcome& silent) const {
        Request aloud = without_report(request);
        aloud.report = aloud.words = true;
        std::unique_ptr<Outcome> outcome = element.calculate(aloud);
        outcome->rated_pressure = silent.rated_pressure;
        return outcome;
    }

    void write_component(const Element& element, const Outcome& silent, const Verdict& silently) {
        std::unique_ptr<Outcome> aloud;
        std::string failure;
        try {
            aloud = calculated_aloud(element, silent);
        } catch (const std::exception& problem) {
            failure = problem.what();
        }
        const Outcome& outcome = aloud ? *aloud : silent;
        const Verdict verdict = aloud ? element.judge(outcome, request.units) : silently;
        const Checks checks = sorted_checks(element, outcome);
        json.begin_object().key("path").text(path_of(element));
        json.key("name").text(name_of(element));
        json.key("verdict").text(verdict_of(verdict, checks));
        json.key("says").text(words_of(checks, request.units));
        write_inputs(element);
        write_checks(element, outcome, checks);
        write_results(element, outcome);
        json.key("drawing");
        write_figure(component_drawing(element, outcome, request, DrawnFor::page));
        json.key("chart");
        if (const auto point = element.chart_point(outcome))
            write_figure(chart_figure(point->chart, point->temperature, point->yield, point->A,
                                      request.units, request.units.decimal_comma, DrawnFor::page));
        else
            json.null();
        DocumentSection lines;
        if (aloud)
            lines.blocks = report_blocks(element, outcome, request.units, {});
        else
            lines.blocks.emplace_back(Remark{"Not made", printable(failure), Tone::bad});
        json.key("calculation").text(html_of(lines));
        json.key("messages").begin_list();
        for (const std::string& message : outcome.messages)
            json.text(to_utf8(message));
        json.end_list().key("notes").begin_list();
        for (const std::string& note : element.notes)
            json.text(note);
        for (const std::string& reason : verdict.reasons)
            json.text(reason);
        json.end_list().end_object();
    }

    void write_inputs(const Element& element) {
        json.key("inputs").begin_object();
        for (const InputRow& row : every_input_row(element, request.units)) {
            const Origin& origin = element.origins.at(row.key->name);
            json.key(row.key->name).begin_object().key("shown").text(row.value);
            json.key("unit").text(row.unit).key("given").flag(!origin.given.null());
            json.key("read").flag(!origin.from.starts_with(NOT_READ));
            json.key("from").text(row.source).end_object();
        }
        json.end_object();
    }

    void write_checks(const Element& element, const Outcome& outcome, const Checks& checks) {
        const ChecksTable table = checks_table(element, outcome, request.units);
        json.key("checks").begin_list();
        for (std::size_t i = 0; i < table.rows.size(); ++i) {
            const CheckRow& row = table.rows[i];
            const CheckField& field = checks[i].field();
            json.begin_object().key("id").text(field.id).key("label").text(row.label);
            json.key("case").text(row.load_case).key("paragraph").text(row.paragraph);
            json.key("demand").text(row.demand).key("relation").text(row.relation);
            json.key("limit").text(row.limit).key("unit").text(row.unit);
            write_ratio(checks[i].ratio());
            json.key("shown_ratio").text(row.ratio).key("state").text(row.state);
            json.key("remark").text(row.remark).key("tone").text(tone_name(row.tone));
            json.key("force").text(force_name(field.force));
            json.key("waivable").flag(field.waivable).end_object();
        }
        json.end_list();
    }

    void write_results(const Element& element, const Outcome& outcome) {
        json.key("results").begin_list();
        for (const Result& result : element.results(outcome)) {
            const ResultField& field = *result.field;
            const bool none =
                std::holds_alternative<std::monostate>(value_of(result, request.units));
            json.begin_object().key("name").text(field.name).key("label").text(field.label);
            json.key("symbol").text(field.symbol);
            json.key("shown").text(none ? std::string() : result_text(result, request.units));
            json.key("unit").text(to_utf8(request.units.label(field.quantity)));
            json.key("why").text(none ? why_none(result) : std::string_view()).end_object();
        }
        json.end_list();
    }

    void write_rest(const VesselVerdict& verdict) {
        json.key("summary").begin_list();
        if (request.of_vessel && calculation.complete) {
            for (const SummaryRow& row : summary(request, calculation)) {
                json.begin_object().key("name").text(row.field->name);
                json.key("label").text(row.field->label);
                json.key("shown").text(
                    row.value ? value_text(row.value, row.field->quantity, request.units)
                              : std::string());
                json.key("unit").text(to_utf8(request.units.label(row.field->quantity)));
                json.key("component");
                if (row.by != nullptr)
                    json.text(path_of(*row.by));
                else
                    json.null();
                json.key("note").text(row.note).key("lacks").begin_list();
                for (const std::string& each : row.lacks)
                    json.text(each);
                json.end_list().end_object();
            }
        }
        json.end_list().key("not_covered").begin_list();
        for (const std::string_view words : verdict.not_covered)
            json.text(words);
        json.end_list().key("approximate").begin_list();
        for (const auto& [file, items] : data_used(request)) {
            for (const auto& [item, approximate] : items) {
                if (approximate) json.text(std::string(file).append(": ").append(item));
            }
        }
        for (const auto& [item, source] : own_figures(calculation.calculated))
            json.text(std::string(item).append(": ").append(source));
        json.end_list();
    }
};

} // namespace

std::string result_json_of(const std::string& toml, const std::string& component,
                           RatingMemory& memory) {
    const EngineTurn turn;
    Outcome reading; // of what the engine is asked as the text is read
    ReadResult input;
    {
        const Services services(reading);
        input = read_input(toml);
    }
    if (reading.stopped)
        return not_calculated(STOPPED, "the engine stopped as the file was read", {},
                              {stop_reason(reading)}, toml);
    if (!input.faults.empty()) {
        const std::size_t count = input.faults.size();
        return not_calculated(FAULTY, count == 1 ? "a fault" : std::to_string(count) + " faults",
                              input.faults, {}, toml);
    }
    input.request.report = input.request.words = false;
    const Calculation calculation = calculate(input.request, memory.rating_for(toml));
    return ResultWriter(input.request, calculation, toml).write(component);
}

} // namespace tarvane::app
