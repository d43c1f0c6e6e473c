#include "components/flange_results.h"

#include "components/rounded_design.h"
#include "tarvane/tarvane.h"

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
            .rating = flange.setting(Setting::rating),
            .stopped = o.stopped,
            .rated = flange.rated(),
            .rounded = o.rounded ? o.rounded->flange.record.data() : nullptr,
            .rated_pressure = rated_pressure_of(o.rated_pressure)};
}

std::string flange_tables(std::span<const Calculated> elements, const UnitSystem& units) {
    std::vector<Calculated> stressed, designs, rounded, rated;
    for (const Calculated& c : elements) {
        const auto& flange = static_cast<const FlangeInput&>(*c.element);
        (flange.rated() ? rated : stressed).push_back(c);
        if (flange.analysis() == TARVANE_DESIGN) designs.push_back(c);
        if (static_cast<const FlangeOutcome&>(*c.outcome).rounded) rounded.push_back(c);
    }
    return closing_table(FLANGE_TABLE, stressed, units) +
           closing_table(DESIGN_TABLE, designs, units) +
           closing_table(ROUNDED_TABLE, rounded, units) + closing_table(RATED_TABLE, rated, units);
}

} // namespace tarvane::vessel
