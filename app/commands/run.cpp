#include "commands/run.h"

#include "catalogue/charts.h"
#include "catalogue/data_folder.h"
#include "catalogue/data_sources.h"
#include "commands/run_output.h"
#include "components/calculation.h"
#include "document/csv.h"
#include "document/html.h"
#include "input/input_file.h"
#include "input/toml_limits.h"
#include "terminal/output_file.h"
#include "terminal/pdf.h"
#include "values/bounded_file.h"
#include "values/text.h"

#include <algorithm>
#include <filesystem>
#include <ostream>
#include <utility>
#include <vector>

namespace tarvane::app {

using namespace vessel;

namespace {

// "external-2.svg" in the folder: the chart of the second [[external]].
std::string chart_file(const std::string& folder, const Element& element) {
    const std::string name =
        std::string(element.kind->table) + '-' + std::to_string(element.number) + ".svg";
    return (path_of(folder) / name).string();
}

// No file that is read, and no other output, is overwritten.
void check_outputs(const RunOptions& options, const Request& file) {
    std::vector<FileInUse> in_use{{"the input file", options.input}};
    const FileInUse outputs[] = {{"the report", options.report},
                                 {"the HTML", options.html},
                                 {"the PDF", options.pdf},
                                 {"the JSON", options.json},
                                 {"the CSV", options.csv}};
    for (const FileInUse& output : outputs) {
        if (output.path.empty()) continue;
        check_output(output.path, in_use);
        in_use.push_back(output);
    }
    if (options.charts.empty()) return;
    for (const auto& element : file.elements)
        refuse_same_file(chart_file(options.charts, *element), in_use);
}

// The named files. One that can't be written is a problem; the others are written all the same.
class OutputFiles {
  public:
    OutputFiles(const RunOptions& of, const Request& read, DocumentFacts known, Calculation& made)
        : options(of), request(read), facts(std::move(known)), c(made) {}

    void write() const {
        write_results();
        write_document();
        if (!options.charts.empty()) draw_charts();
    }

  private:
    const RunOptions& options;
    const Request& request;
    const DocumentFacts facts;
    Calculation& c;

    template <class Work>
    void attempt(const Work& work) const {
        try {
            work();
        } catch (const std::exception& problem) {
            c.problems.emplace_back(problem.what());
            c.status = std::max(c.status, Status::bad_input);
        }
    }

    // `content` is not asked for a file that isn't wanted.
    template <class Content>
    void write_file(const std::string& path, const Content& content) const {
        if (!path.empty()) attempt([&] { write_whole(path, content()); });
    }

    // Lines of WeasyPrint; the PDF is there all the same.
    void tell(std::string_view lines) const {
        while (!lines.empty()) {
            const std::size_t end = std::min(lines.find('\n'), lines.size());
            if (end > 0) c.problems.push_back("weasyprint: " + printable(lines.substr(0, end)));
            lines.remove_prefix(std::min(end + 1, lines.size()));
        }
    }

    // Files that a calculation has which came to its end.
    void write_results() const {
        if (!c.complete) {
            for (const std::string& path : {options.report, options.json, options.csv}) {
                if (!path.empty())
                    c.problems.push_back(path +
                                         " is not written: the calculation was not completed");
            }
            return;
        }
        write_file(options.report, [this] {
            std::string reports;
            for (const Calculated& each : c.calculated)
                reports += each.outcome->report;
            reports += edition_line(); // of a user's own data files alone
            return reports;
        });
        write_file(options.json, [this] { return run_json(request, c, facts); });
        write_file(options.csv, [this] { return csv_of(request, c); });
    }

    // A document says itself how far its calculation came.
    void write_document() const {
        if (options.html.empty() && options.pdf.empty()) return;
        attempt([this] {
            const std::string html = html_of(make_document(request, c, facts, options.detail));
            write_file(options.html, [&html]() -> const std::string& { return html; });
            write_file(options.pdf, [&] {
                Pdf pdf = pdf_of(html, options.pdf_ua);
                tell(pdf.said);
                return std::move(pdf.bytes);
            });
        });
    }

    void draw_charts() const {
        for (std::size_t i = 0; i < c.calculated.size(); ++i) {
            if (c.verdicts[i].status == Status::stopped) continue;
            const Element& element = *c.calculated[i].element;
            const std::optional<ChartPoint> point = element.chart_point(*c.calculated[i].outcome);
            if (!point) continue;
            write_file(chart_file(options.charts, element), [&] {
                return chart_svg(point->chart, point->temperature, point->yield, point->A,
                                 request.units, request.units.decimal_comma, DrawnFor::file);
            });
        }
    }
};

Status run_file(const RunOptions& options, std::ostream& out, std::ostream& err) {
    set_data_folder(options.data, "--data");
    const std::string text = read_bounded(options.input, LARGEST_INPUT);
    const ReadResult input = read_input(text, element_kinds(), options.strict);
    err << fault_report(options.input, input.faults);
    if (!input.faults.empty()) return Status::bad_input;

    const Request& file = input.request;
    check_outputs(options, file);
    Calculation c = calculate(file);
    // The files come first: they are there when the reader of standard output leaves early.
    DocumentFacts facts = facts_of(options.input, text);
    facts.created = time_of_documents();
    OutputFiles(options, file, std::move(facts), c).write();
    for (std::size_t i = 0; i < c.calculated.size(); ++i) {
        const auto& [element, outcome] = c.calculated[i];
        out << component_text(c.calculated[i], file.units, options.colour) << std::flush;
        const std::string name = name_of(*element);
        for (const std::string& message : outcome->messages)
            err << name << ": " << to_utf8(message) << '\n';
        for (const std::string& note : element->notes)
            err << name << ": note: " << note << '\n';
        for (const std::string& reason : c.verdicts[i].reasons)
            err << name << ": " << reason << '\n';
    }
    out << closing_text(file, c, options.colour) << std::flush;
    for (const std::string& problem : c.problems)
        err << "tarvane: " << problem << '\n';
    return c.status;
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

} // namespace tarvane::app
