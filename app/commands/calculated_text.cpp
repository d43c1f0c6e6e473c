#include "commands/calculated_text.h"

#include "components/calculation.h"
#include "input/input_file.h"
#include "surface/result_json.h"
#include "values/text.h"

#include <stdexcept>

namespace tarvane::app {

using namespace vessel;

std::string calculated_json(const std::string& path, const std::string& text) {
    ReadResult input = read_input(text);
    if (!input.faults.empty()) {
        std::string lines = fault_report(path, input.faults);
        lines.pop_back();
        throw std::runtime_error(lines);
    }
    input.request.report = false;
    const Calculation calculation = calculate(input.request);
    if (!calculation.complete) {
        std::string why;
        for (const std::string& problem : calculation.problems)
            why += ": " + problem;
        if (!calculation.verdicts.empty()) {
            for (const std::string& reason : calculation.verdicts.back().reasons)
                why += ": " + reason;
        }
        throw std::runtime_error(printable(path) + ": the calculation was not completed" + why);
    }
    const DocumentFacts facts;
    return result_json(input.request, calculation, {.results = true}, &facts);
}

} // namespace tarvane::app
