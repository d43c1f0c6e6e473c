#include "run.h"

#include "charts.h"
#include "data_folder.h"
#include "files.h"
#include "input_file.h"
#include "report_view.h"
#include "text.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <memory>
#include <ostream>
#include <vector>

namespace tarvane::app {

namespace {

// The closing tables of all kinds; `calculated` holds the elements in the order of the file.
std::string closing_tables(const std::vector<Calculated>& calculated, const UnitSystem& units) {
    std::string tables;
    for (const ElementKind* kind : element_kinds()) {
        std::vector<Calculated> own;
        std::copy_if(calculated.begin(), calculated.end(), std::back_inserter(own),
                     [kind](const Calculated& c) { return c.element->kind == kind; });
        if (!own.empty()) tables += kind->tables(own, units);
    }
    return tables;
}

// One line for each data file of which approximate rows were used.
std::string approximate_lines(const InputFile& file) {
    ApproximateUses uses;
    for (const auto& element : file.elements) {
        for (const auto& [data_file, items] : element->approximate)
            uses[data_file].insert(items.begin(), items.end());
    }
    std::string lines;
    for (const auto& [data_file, items] : uses) {
        lines += "\nApproximate figures of " + data_file + " were used (";
        for (const std::string& item : items)
            lines += (item == *items.begin() ? "" : ", ") + item;
        lines += "): replace the file by one made from a licensed copy of the standard.\n";
    }
    return lines;
}

// "external-2.svg" in the folder: the chart of the second [[external]] with its point.
void draw_chart_of(const Element& element, const Outcome& outcome, const UnitSystem& units,
                   const std::string& folder) {
    const std::optional<ChartPoint> point = element.chart_point(outcome);
    if (!point) return;
    const std::string name =
        std::string(element.kind->table) + '-' + std::to_string(element.number) + ".svg";
    write_whole((std::filesystem::path(folder) / name).string(),
                chart_svg(point->chart, point->temperature, point->yield, point->A, units));
}

Status run_file(const RunOptions& options, std::ostream& out, std::ostream& err) {
    if (!options.data.empty()) set_data_folder(options.data);
    const ReadResult input = read_input(read_whole(options.input));
    for (const Fault& fault : input.faults)
        err << fault_line(options.input, fault) << '\n';
    if (!input.faults.empty()) return Status::bad_input;

    const InputFile& file = input.file;
    std::vector<std::unique_ptr<Outcome>> outcomes;
    std::vector<Calculated> calculated;
    std::string reports;
    Status status = Status::fine;
    for (const auto& element : file.elements) {
        outcomes.push_back(element->calculate(file));
        const Outcome& outcome = *outcomes.back();
        out << show_report(outcome.report, options.colour) << std::flush;
        const std::string name = name_of(*element);
        for (const std::string& message : outcome.messages)
            err << name << ": " << to_utf8(message) << '\n';
        const Verdict verdict = element->judge(outcome, file.units);
        for (const std::string& reason : verdict.reasons)
            err << name << ": " << reason << '\n';
        status = std::max(status, verdict.status);
        if (verdict.status == Status::stopped) return status;
        reports += outcome.report;
        if (!options.charts.empty()) draw_chart_of(*element, outcome, file.units, options.charts);
        calculated.push_back({element.get(), &outcome});
    }
    if (!options.report.empty()) write_whole(options.report, reports);
    out << closing_tables(calculated, file.units) << approximate_lines(file) << std::flush;
    return status;
}

} // namespace

Status run(const RunOptions& options, std::ostream& out, std::ostream& err) {
    try {
        return run_file(options, out, err);
    } catch (const std::exception& problem) {
        err << "tarvane: " << problem.what() << '\n';
        return Status::bad_input;
    }
}

namespace {

// "in., mm": what stands behind a key.
std::string unit_of(const Key& key) {
    const UnitSystem us = us_units(), si = si_units();
    switch (key.quantity) {
    case Quantity::flag:
        return "true, false";
    case Quantity::text:
        return "text, " + std::to_string(key.width);
    case Quantity::designation:
        return "number, text";
    case Quantity::whole:
        return "whole number";
    case Quantity::choice:
        return "name, number";
    default: {
        std::string unit = to_utf8(us.label(key.quantity));
        if (us.label(key.quantity) != si.label(key.quantity))
            unit += ", " + to_utf8(si.label(key.quantity));
        return unit;
    }
    }
}

} // namespace

std::string key_table() {
    std::string table;
    for (const ElementKind* kind : element_kinds()) {
        const std::string name(kind->table);
        table.append("Keys of a [[").append(name);
        table.append("]]; at the head of a file they hold for every ").append(name);
        table.append(" without its own.\n\n");
        for (const Key& key : kind->keys.keys) {
            // A name or unit of more than its column keeps one blank behind it.
            table += padded(std::string(key.name) + ' ', 20) + padded(unit_of(key) + ' ', 18) +
                     std::string(key.meaning) + '\n';
            if (!key.choices.empty())
                table += std::string(38, ' ') + choice_names(key.choices) + '\n';
        }
        table += '\n';
    }
    table += "Keys of the file: units = \"US\", \"SI\" or a [units] table; decimal_comma; "
             "metric_constants.\n";
    return table;
}

} // namespace tarvane::app
