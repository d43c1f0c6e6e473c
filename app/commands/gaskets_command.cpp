#include "commands/gaskets_command.h"

#include "catalogue/gaskets.h"
#include "document/results.h"
#include "values/text.h"

#include <ostream>

namespace tarvane::app {

Status list_gaskets(const std::string& words, std::ostream& out, std::ostream& err) {
    constexpr std::size_t NAME_WIDTH = 42, NUMBER_WIDTH = 10;
    const std::string wanted = folded(words);
    std::string lines;
    const auto line = [&](std::string_view name, const std::string& m, const std::string& us,
                          const std::string& metric) {
        lines += padded(name, NAME_WIDTH) + right_aligned(m, 6) + right_aligned(us, NUMBER_WIDTH) +
                 right_aligned(metric, NUMBER_WIDTH) + '\n';
    };
    bool any = false, approximate = false;
    line("gasket.type", "m", "y, psi", "y, N/mm2");
    lines += std::string(NAME_WIDTH + 6 + 2 * NUMBER_WIDTH, '-') + '\n';
    for (const Gasket& gasket : gaskets()) {
        if (folded(gasket.name).find(wanted) == std::string::npos) continue;
        any = true;
        approximate = approximate || !gasket.y_us_published;
        line(gasket.name, number_text(gasket.m, 2),
             (gasket.y_us_published ? "" : "~ ") + number_text(gasket.y_us, 0),
             number_text(gasket.y_metric, 1));
    }
    if (!any) {
        err << "tarvane: " << printable(unknown_gasket(words)) << '\n';
        return Status::bad_input;
    }
    out << lines
        << "\nFactor m and seating stress y of Appendix 2, Table 2-5.1. The table has y in both "
           "units, rounded each for itself.\n";
    if (approximate) out << "~ Approximate: " << Y_US_SOURCE << ".\n";
    return Status::fine;
}

} // namespace tarvane::app
