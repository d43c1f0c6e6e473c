#include "document/document.h"

#include "assembly/summary.h"
#include "catalogue/data_folder.h"
#include "catalogue/data_search.h"
#include "catalogue/data_sources.h"
#include "components/data_lines.h"
#include "components/strict.h"
#include "document/component_section.h"
#include "document/front_page.h"
#include "document/input_rows.h"
#include "document/references.h"
#include "document/results.h"
#include "document/vessel_verdict.h"
#include "drawing/component_drawing.h"
#include "fields/external_keys.h"
#include "values/bounded_file.h"
#include "values/text.h"

#include <algorithm>
#include <utility>

namespace tarvane::vessel {

namespace {

// ---- scope ---------------------------------------------------------------------------------------------------

// "1 flange", "2 elements under external pressure"
std::string counted(std::size_t count, const ElementKind& kind) {
    std::string name(kind.plural);
    if (count == 1) name.erase(std::min(name.find(' '), name.size()) - 1, 1);
    return std::to_string(count) + ' ' + name;
}

DocumentSection scope_section(const Request& request, const DocumentFacts& facts) {
    std::string parts;
    for (const ElementKind* kind : element_kinds()) {
        const auto count = std::count_if(request.elements.begin(), request.elements.end(),
                                         [kind](const auto& each) { return each->kind == kind; });
        if (count > 0)
            parts += (parts.empty() ? "" : ", ") + counted(static_cast<std::size_t>(count), *kind);
    }
    std::string text = "This document calculates ";
    text += request.description.empty() ? "pressure parts" : request.description;
    text += ": " + parts + ".";
    if (!facts.input_name.empty()) text += " Its input is " + facts.input_name + '.';
    DocumentSection section{.id = "scope", .title = "Scope"};
    section.blocks.emplace_back(Paragraph{std::move(text)});
    section.blocks.emplace_back(Paragraph{
        "A check passes when the ratio of its demand to its limit, rounded to four decimals, is "
        "not "
        "above 1. Checks that an input which was not given would require are shown as not asked; "
        "what the code asks for and could not be made is shown as not made and passes nothing. "
        "What "
        "is outside this calculation is listed in the last section."});
    return section;
}

// ---- assumptions ------------------------------------------------------------------------------------------------

// Sentences with the components that they are about, in the order in which they were found.
class Assumptions {
  public:
    void add(const std::string& words, const Element& element) {
        const auto known = std::find_if(all.begin(), all.end(),
                                        [&](const auto& each) { return each.first == words; });
        if (known == all.end())
            all.push_back({words, {&element}});
        else
            known->second.push_back(&element);
    }
    DocumentList list(const Request& request) const {
        DocumentList items;
        for (const auto& [words, elements] : all)
            items.items.push_back(words + ": " + names_of(elements, request));
        return items;
    }

  private:
    std::vector<std::pair<std::string, std::vector<const Element*>>> all;
};

bool is_off(const Element& element, std::string_view flag) {
    const Key* key = element.kind->keys.find(flag);
    if (key == nullptr) return false;
    const auto origin = element.origins.find(key->name);
    return origin != element.origins.end() && !origin->second.from.starts_with("not read") &&
           element.number_of(*key) == 0.0f;
}

DocumentSection assumptions_section(const Request& request, const Calculation& calculation) {
    Assumptions assumptions;
    for (const auto& each : request.elements) {
        const Element& element = *each;
        for (const InputRow& row : default_rows(element, request.units))
            assumptions.add(row.key->label() + " (" + std::string(row.key->name) + ") is " +
                                row.value + (row.unit.empty() ? "" : ' ' + row.unit) +
                                " by default",
                            element);
        if (element.liquid_head > 0.0f)
            assumptions.add("The head of the liquid is added to the design pressure by elevation",
                            element);
        const Key* method = element.kind->keys.find("method");
        const bool by_stress =
            method != nullptr && element.number_of(*method) == static_cast<float>(METHOD_STRESS);
        if (is_off(element, "table_g") && !by_stress)
            assumptions.add(
                "Factor A comes from the equations of the geometric chart, not from Table G",
                element);
        for (const std::string& note : element.notes)
            assumptions.add(note, element);
    }
    DocumentSection section{.id = "assumptions", .title = "Assumptions"};
    DocumentList list = assumptions.list(request);
    if (request.metric_constants)
        list.items.emplace_back("Dimensions of the code are those of its metric edition");
    for (const UsedFile& file : used_files(request)) {
        std::string items;
        for (const UsedItem& item : file.items)
            if (item.approximate) items += (items.empty() ? "" : ", ") + item.name;
        if (!items.empty())
            list.items.push_back("Figures of " + file.name + " are approximate: " + items);
    }
    for (const auto& [item, source] : own_figures(calculation.calculated))
        list.items.push_back(
            ("A figure of the program is approximate: " + item).append("; ").append(source));
    if (list.items.empty())
        section.blocks.emplace_back(Paragraph{"No default decides, and no figure is approximate."});
    else
        section.blocks.emplace_back(std::move(list));
    return section;
}

// ---- vessel --------------------------------------------------------------------------------------------------------

DocumentSection vessel_section(const Request& request, const Calculation& calculation,
                               int& figures) {
    DocumentSection section{.id = "vessel", .title = "Vessel", .new_page = true};
    DocumentTable table{
        .caption = "What the vessel holds as a whole",
        .columns = {{"Quantity"}, {"Value", true}, {"Unit"}, {"Component that governs"}},
        .rows = {}};
    for (const SummaryRow& row : summary(request, calculation)) {
        const Quantity quantity = row.field->quantity;
        table.rows.push_back({{std::string(row.field->label)},
                              {value_text(row.value, quantity, request.units)},
                              {to_utf8(request.units.label(quantity))},
                              {row.by != nullptr ? name_of(*row.by) : std::string()}});
        if (!row.note.empty()) table.rows.push_back({{row.note}});
        for (const std::string& each : row.lacks)
            table.rows.push_back({{"not known of " + each, Tone::advice}});
    }
    section.blocks.emplace_back(std::move(table));
    if (std::optional<Figure> figure = vessel_drawing(request, calculation, DrawnFor::document)) {
        const std::string title = figure->title + ", by elevation";
        section.blocks.emplace_back(numbered_drawing(std::move(*figure), title, ++figures));
    }
    return section;
}

// ---- basis ------------------------------------------------------------------------------------------------------------

DocumentSection data_section(const Request& request, const DocumentFacts& facts) {
    DocumentSection section{
        .id = "data", .title = "Program, input and data files", .new_page = true};
    DocumentTable basis{
        .caption = "Program and input", .columns = {{"Part"}, {"Version or hash"}}, .rows = {}};
    basis.rows.push_back({{"Program"}, {"tarvane " TARVANE_VERSION}});
    if (!facts.input_name.empty()) basis.rows.push_back({{"Input"}, {facts.input_name}});
    basis.rows.push_back({{"SHA-256 of the input"},
                          {facts.input_sha256.empty() ? "not known" : facts.input_sha256}});
    const std::optional<std::string> version = version_in(path_of(data_folder().path));
    basis.rows.push_back({{"Version of the data files"}, {version.value_or("none given")}});
    if (const std::string edition = data_edition(); !edition.empty())
        basis.rows.push_back({{"Edition of the data files"}, {edition}});
    section.blocks.emplace_back(std::move(basis));

    DocumentTable table{.caption = "Figures that were taken from data files",
                        .columns = {{"Item"}, {"Status"}, {"Edition"}, {"Source"}},
                        .rows = {}};
    for (const UsedFile& file : used_files(request)) {
        table.rows.push_back({{file.name + ", SHA-256 " + file.sha256()}});
        for (const UsedItem& item : file.items) {
            const ItemSource source = item.source.value_or(ItemSource{});
            table.rows.push_back(
                {{item.name},
                 {std::string(item.status()), item.approximate ? Tone::advice : Tone::quiet},
                 {source.edition},
                 {source.source}});
        }
    }
    if (table.rows.empty())
        section.blocks.emplace_back(Paragraph{"No figures were taken from data files."});
    else
        section.blocks.emplace_back(std::move(table));
    return section;
}

DocumentSection not_covered_section(const VesselVerdict& verdict) {
    DocumentSection section{.id = "not-covered", .title = "What tarvane does not check"};
    DocumentList list;
    for (const std::string_view words : verdict.not_covered)
        list.items.emplace_back(words);
    if (list.items.empty())
        section.blocks.emplace_back(Paragraph{"Nothing is listed for these components."});
    else
        section.blocks.emplace_back(std::move(list));
    return section;
}

} // namespace

CalculationDocument make_document(const Request& request, const Calculation& calculation,
                                  const DocumentFacts& facts, Detail detail) {
    CalculationDocument document;
    document.front = front_page(request, calculation);
    document.title = document.front.title;
    document.project = document_text(request, "project");
    document.number = document_text(request, "number");
    document.revision = document_text(request, "revision");
    document.date = document_text(request, "date");
    document.author = document_text(request, "prepared");
    document.created = facts.created;
    document.metric = request.units.metric();

    document.opening.push_back(scope_section(request, facts));
    document.opening.push_back(assumptions_section(request, calculation));
    document.opening.push_back(references_section(request));
    std::vector<DocumentSection>& sections = document.sections;
    int figures = 0;
    if (request.of_vessel && calculation.complete)
        sections.push_back(vessel_section(request, calculation, figures));
    if (detail != Detail::summary) {
        for (std::size_t i = 0; i < calculation.calculated.size(); ++i) {
            const auto& [element, outcome] = calculation.calculated[i];
            sections.push_back(component_section(
                request, {*element, *outcome, calculation.verdicts[i]}, detail, figures));
        }
    }
    sections.push_back(data_section(request, facts));
    sections.push_back(not_covered_section(vessel_verdict(request, calculation)));
    return document;
}

} // namespace tarvane::vessel
