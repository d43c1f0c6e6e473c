#include "components/flange_results.h"

#include "tarvane/tarvane.h"

#include <algorithm>
#include <iterator>
#include <vector>

namespace tarvane::vessel {

FlangeFound found_of(const FlangeInput& flange, const FlangeOutcome& o) {
    return {.given = flange.record.data(),
            .record = o.record.data(),
            .block = o.found,
            .mawp = o.mawp,
            .map_nc = o.map_nc,
            .t_req = o.t_req,
            .t_req_new = o.t_req_new,
            .t_req_new_cold = o.t_req_new_cold,
            .stopped = o.stopped};
}

std::string flange_tables(std::span<const Calculated> elements, const UnitSystem& units) {
    std::vector<Calculated> designs;
    std::copy_if(
        elements.begin(), elements.end(), std::back_inserter(designs), [](const Calculated& c) {
            return static_cast<const FlangeInput*>(c.element)->analysis() == TARVANE_DESIGN;
        });
    return closing_table(FLANGE_TABLE, elements, units) +
           closing_table(DESIGN_TABLE, designs, units);
}

} // namespace tarvane::vessel
