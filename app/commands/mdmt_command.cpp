#include "commands/mdmt_command.h"

#include "catalogue/data_folder.h"
#include "catalogue/data_sources.h"
#include "components/mdmt_input.h"
#include "components/mdmt_results.h"
#include "components/mdmt_session.h"
#include "document/results.h"
#include "input/input_file.h"
#include "values/text.h"

#include <cmath>
#include <ostream>

namespace tarvane::app {

using namespace vessel;

using N = MdmtNumber;

namespace {

constexpr std::size_t LABEL_WIDTH = 44;

std::string curve_label(const MdmtInput& element) {
    for (const Choice& curve : mdmt_keys().find("curve")->choices)
        if (curve.number == element.curve()) return std::string(curve.name);
    return {};
}

void print_answer(const MdmtInput& element, const MdmtOutcome& o, const UnitSystem& units,
                  std::ostream& out) {
    const auto line = [&](std::string_view label, const std::string& value) {
        out << padded(label, LABEL_WIDTH) << value << '\n';
    };
    const auto temperature = [&](std::string_view label, std::optional<float> value) {
        if (value) line(label, shown_degrees(*value, units));
    };
    if (!element.material().empty()) line("Material", to_utf8(element.material()));
    line("Curve", curve_label(element));
    line("Governing thickness", shown(element.setting(N::tg), Quantity::thickness, units));
    if (o.ratio >= 0.0f) line("Ratio", number_text(o.ratio, 3));
    temperature("Temperature of the curve", curve_temperature(o));
    if (const auto reduction = reduction_of(o)) {
        line("Temperature reduction",
             number_text(std::round(units.to_file(*reduction, Quantity::temperature_scale)), 0) +
                 ' ' + to_utf8(units.label(Quantity::temperature)));
    }
    temperature("Minimum design metal temperature", reduced_temperature(o));
    temperature("Exempt temperature of UG-20(f)", ug20f_temperature(o));
    temperature("Lowest temperature without impact test", lowest_temperature(element, o));
    if (element.exempt() && !o.exempt_stainless) out << "Exempt from impact tests.\n";
}

} // namespace

// The options are read as an input file, so that units, choices, materials and checks are the same.
Status show_mdmt(const MdmtOptions& options, std::ostream& out, std::ostream& err) {
    set_data_folder(options.data, "--data");
    std::string text = "units = " + in_quotes(options.units) + "\n[mdmt]\n";
    for (const auto& [key, value] : options.keys)
        text.append(key).append(" = ").append(value).append("\n");
    const ReadResult input = read_input(text);
    for (const Fault& fault : input.faults)
        err << "tarvane: " << printable((fault.key.empty() ? "" : fault.key + ": ") + fault.message)
            << '\n';
    if (!input.faults.empty()) return Status::bad_input;

    const auto& element = static_cast<const MdmtInput&>(*input.request.elements.front());
    const MdmtOutcome outcome = run_mdmt(element, input.request);
    const UnitSystem& units = input.request.units;
    print_answer(element, outcome, units, out);
    if (!input.request.elements.front()->data.empty()) out << edition_line();
    const Verdict verdict = element.judge(outcome, units);
    for (const std::string& reason : verdict.reasons)
        err << "tarvane: " << reason << '\n';
    return verdict.status;
}

} // namespace tarvane::app
