#include "document/front_page.h"

#include "components/data_lines.h"
#include "components/flange_input.h"
#include "document/component_section.h"
#include "document/results.h"
#include "document/vessel_verdict.h"
#include "fields/vessel_keys.h"
#include "values/text.h"

#include <algorithm>

namespace tarvane::vessel {

namespace {

constexpr std::string_view UNTITLED = "Calculation of pressure parts";

std::string text_in(const Texts& texts, std::string_view key) {
    for (const auto& [name, text] : texts)
        if (name == key) return text;
    return {};
}

std::vector<FrontText> facts_of(const Request& request) {
    std::vector<FrontText> facts;
    const auto add = [&](std::string_view label, std::string text) {
        if (!text.empty()) facts.push_back({std::string(label), std::move(text)});
    };
    add("Project", document_text(request, "project"));
    add("Client", document_text(request, "client"));
    add("Site", document_text(request, "site"));
    add("Item", document_text(request, "item"));
    add("Vessel", request.description);
    add("Document", document_text(request, "number"));
    add("Revision", document_text(request, "revision"));
    add("Date", document_text(request, "date"));
    return facts;
}

DocumentTable signatures_of(const Request& request) {
    DocumentTable table{.caption = "Responsible",
                        .columns = {{"Role"}, {"Name"}, {"Date"}, {"Signature"}},
                        .rows = {}};
    for (const auto& [label, key] :
         {std::pair{"Prepared", "prepared"}, std::pair{"Checked", "checked"},
          std::pair{"Approved", "approved"}})
        table.rows.push_back({{label}, {document_text(request, key)}, {}, {}});
    return table;
}

DocumentTable revisions_of(const Request& request) {
    DocumentTable table{
        .caption = "Revisions",
        .columns =
            {{"Revision"}, {"Date"}, {"Description"}, {"Prepared"}, {"Checked"}, {"Approved"}},
        .rows = {}};
    for (const Texts& revision : request.document.revisions) {
        std::vector<Cell> row;
        for (const Key& key : revision_keys())
            row.push_back({text_in(revision, key.name)});
        table.rows.push_back(std::move(row));
    }
    return table;
}

Tone tone_of_verdict(std::string_view verdict) { return verdict == PASS ? Tone::sound : Tone::bad; }

DocumentTable components_of(const Request& request, const Calculation& calculation) {
    DocumentTable table{
        .caption = "Components",
        .columns = {{"Component"}, {"Verdict"}, {"Governing check"}, {"Ratio", true}},
        .rows = {}};
    for (std::size_t i = 0; i < calculation.calculated.size(); ++i) {
        const auto& [element, outcome] = calculation.calculated[i];
        const Checks checks = element->checks(*outcome, request.units);
        const std::string_view verdict = verdict_of(calculation.verdicts[i], checks);
        const Check* worst = governing(checks);
        table.rows.push_back(
            {{name_of(*element)},
             {shown_verdict(verdict), tone_of_verdict(verdict)},
             {worst == nullptr ? "no check is asked" : worst->label()},
             {worst == nullptr ? std::string() : ratio_text(*worst, request.units)}});
    }
    for (std::size_t i = calculation.calculated.size(); i < request.elements.size(); ++i)
        table.rows.push_back({{name_of(*request.elements[i])},
                              {shown_verdict(NOT_MADE), Tone::bad},
                              {"not calculated"},
                              {}});
    return table;
}

// ---- open points ---------------------------------------------------------------------------------------------

using Points = std::vector<std::string>;

void add_points(std::vector<Block>& blocks, std::string_view word, Points points, Tone tone) {
    for (std::string& point : points)
        blocks.emplace_back(Remark{std::string(word), std::move(point), tone});
}

std::string with_reason(const Calculated& of, const Check& check, const UnitSystem& units) {
    std::string text = name_of(*of.element) + ": " + check.label();
    if (!check.reason().empty()) text += ": " + check.reason();
    const std::optional<RatedPressure>& rated = of.outcome->rated_pressure;
    // Of a flange it is an estimate.
    if (of.element->kind == &FLANGE_KIND && check.field().id == "mawp" && rated && rated->P)
        text += "; this MAWP is an estimate, the rated pressure is " +
                shown(*rated->P, Quantity::pressure, units);
    return text;
}

std::vector<Block> open_points(const Request& request, const Calculation& calculation) {
    Points failing, unmade, warned, waived, approximate;
    for (const Calculated& of : calculation.calculated) {
        for (const Check& check : of.element->checks(*of.outcome, request.units)) {
            Points* to = check.state() == State::not_made ? &unmade
                         : check.state() == State::waived ? &waived
                         : check.blocks()                 ? &failing
                         : check.advises()                ? &warned
                                                          : nullptr;
            if (to != nullptr) to->push_back(with_reason(of, check, request.units));
        }
    }
    for (std::size_t i = calculation.calculated.size(); i < request.elements.size(); ++i)
        unmade.push_back(name_of(*request.elements[i]) +
                         ": not calculated, the run ended before it");
    for (const UsedFile& file : used_files(request)) {
        std::string items;
        for (const UsedItem& item : file.items)
            if (item.approximate) items += (items.empty() ? "" : ", ") + item.name;
        if (!items.empty())
            approximate.push_back(
                "figures of " + file.name + " (" + items +
                "): replace the file by one made from a licensed copy of the standard");
    }
    for (const auto& [item, source] : own_figures(calculation.calculated))
        approximate.push_back("figure of the program (" + item +
                              "): hold it against a licensed copy of the standard");
    std::vector<Block> blocks;
    add_points(blocks, "Fails", std::move(failing), Tone::bad);
    add_points(blocks, "Not made", std::move(unmade), Tone::bad);
    add_points(blocks, "Problem", calculation.problems, Tone::bad);
    add_points(blocks, "Waived", std::move(waived), Tone::advice);
    add_points(blocks, "Warning", std::move(warned), Tone::advice);
    add_points(blocks, "Approximate", std::move(approximate), Tone::advice);
    if (blocks.empty()) blocks.emplace_back(Paragraph{"None."});
    return blocks;
}

} // namespace

std::string shown_verdict(std::string_view verdict) {
    return verdict == PASS ? "PASS" : verdict == FAIL ? "FAIL" : "NOT MADE";
}

std::string document_text(const Request& request, std::string_view key) {
    return text_in(request.document.texts, key);
}

FrontPage front_page(const Request& request, const Calculation& calculation) {
    const VesselVerdict verdict = vessel_verdict(request, calculation);
    FrontPage front;
    front.title = document_text(request, "title");
    if (front.title.empty()) front.title = UNTITLED;
    front.facts = facts_of(request);
    front.signatures = signatures_of(request);
    front.revisions = revisions_of(request);
    front.passes = verdict.passes;
    front.verdict = shown_verdict(verdict.verdict);
    front.words = verdict.words;
    front.components = components_of(request, calculation);
    front.open_points = open_points(request, calculation);
    return front;
}

} // namespace tarvane::vessel
