#include "commands/run_output.h"

#include "assembly/summary.h"
#include "components/data_lines.h"
#include "components/rated_pressure.h"
#include "document/checks_table.h"
#include "document/report_view.h"
#include "document/vessel_verdict.h"
#include "surface/result_json.h"
#include "values/bounded_file.h"
#include "values/sha256.h"
#include "values/text.h"

namespace tarvane::app {

DocumentFacts facts_of(const std::string& path, const std::string& text) {
    const std::u8string name = path_of(path).filename().u8string();
    return {.input_name = printable({reinterpret_cast<const char*>(name.data()), name.size()}),
            .input_sha256 = sha256(text),
            .created = {}};
}

std::string run_json(const Request& request, const Calculation& calculation,
                     const DocumentFacts& facts) {
    return result_json(request, calculation, {.results = true, .report = true, .drawings = true},
                       &facts) +
           '\n';
}

std::string component_text(const Calculated& component, const UnitSystem& units, bool colour) {
    const auto& [element, outcome] = component;
    return show_report(outcome->report, colour) +
           text_of(checks_table(*element, *outcome, units), colour) +
           rated_pressure_text(outcome->rated_pressure, units);
}

std::string closing_text(const Request& request, const Calculation& calculation, bool colour) {
    std::string text;
    if (calculation.complete) {
        text = closing_tables(calculation.calculated, request.units) +
               approximate_lines(request, calculation.calculated) +
               data_lines(request, calculation.calculated);
        if (request.of_vessel) text += summary_text(request, summary(request, calculation));
    }
    return text + text_of(vessel_verdict(request, calculation), colour);
}

} // namespace tarvane::app
