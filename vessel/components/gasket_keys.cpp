#include "components/gasket_keys.h"

#include "catalogue/gaskets.h"
#include "document/results.h"
#include "values/text.h"

namespace tarvane::vessel {

namespace {

constexpr std::string_view TYPE = "gasket.type";

// y in the units of the request has a column of the table to itself.
float seating_stress(const Gasket& gasket, const UnitSystem& units) {
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
    const auto fill = [&](std::string_view key, float value, std::string_view status) {
        if (reading.given(key)) return false;
        if (gasket != nullptr) flange.put_number(*keys.find(key), value);
        reading.supply(key, gasket
                                ? "gasket table: " + std::string(gasket->name) + std::string(status)
                                : std::string());
        return gasket != nullptr;
    };
    fill("m", gasket ? gasket->m : 0.0f, "");
    const bool approximate =
        gasket != nullptr && !reading.units.metric() && !gasket->y_us_published;
    const float y = gasket ? seating_stress(*gasket, reading.units) : 0.0f;
    if (fill("y", y, approximate ? ", approximate" : "") && approximate)
        reading.figures["y of the gasket \"" + std::string(gasket->name) + "\", " +
                        number_text(y, 0) + " psi"] = Y_US_SOURCE;
}

} // namespace tarvane::vessel
