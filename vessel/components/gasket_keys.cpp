#include "components/gasket_keys.h"

#include "catalogue/gaskets.h"
#include "document/results.h"
#include "values/text.h"

namespace tarvane::vessel {

namespace {

constexpr std::string_view TYPE = "gasket.type";

// y in the units of the request has a column of the table to itself.
std::optional<float> seating_stress(const Gasket& gasket, const UnitSystem& units) {
    if (!units.metric()) return gasket.y_us;
    return si_units().to_engine(gasket.y_metric, Quantity::stress);
}

} // namespace

void take_gasket(Element& flange, Reading& reading) {
    if (!reading.sound(TYPE)) {
        if (!reading.given(TYPE)) return;
        for (const std::string_view key : {"m", "y"}) // not missing on top of it
            if (!reading.given(key)) reading.supply(key);
        return;
    }
    const KeyTable& keys = flange.kind->keys;
    const std::string name = to_utf8(flange.text_of(*keys.find(TYPE)));
    const Gasket* gasket = find_gasket(name);
    if (gasket == nullptr)
        reading.fault(TYPE, unknown_gasket(name) + "; tarvane gaskets lists them");
    const auto fill = [&](std::string_view key, std::optional<float> value) {
        if (reading.given(key)) return;
        if (value) flange.put_number(*keys.find(key), *value);
        reading.supply(key, gasket ? "gasket table: " + std::string(gasket->name) : std::string());
    };
    fill("m", gasket ? std::optional(gasket->m) : std::nullopt);
    const std::optional<float> y = gasket ? seating_stress(*gasket, reading.units) : std::nullopt;
    if (gasket != nullptr && !y && !reading.given("y"))
        reading.fault_at(TYPE, "y",
                         "the gasket table gives y of " + std::string(gasket->name) +
                             " in N/mm2 only, " + number_text(gasket->y_metric, 1) +
                             ", which is not converted; give y");
    fill("y", y);
}

} // namespace tarvane::vessel
