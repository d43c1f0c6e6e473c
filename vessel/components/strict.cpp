#include "components/strict.h"

#include "document/results.h"
#include "values/text.h"

#include <algorithm>

namespace tarvane::vessel {

namespace {

// The column of a facing sketch that has two is required of every request.
constexpr std::string_view KEYS[] = {"code", "edition", "E", "ci", "ce"};

std::string default_of(const Element& element, const Key& key, const UnitSystem& units) {
    const float number = element.number_of(key);
    if (key.quantity == Quantity::choice)
        return in_quotes(choice_name(key.choices, static_cast<int>(number)));
    return units.label(key.quantity).empty() ? value_text(number, key.quantity, units)
                                             : shown(number, key.quantity, units);
}

} // namespace

bool refuses_default(std::string_view key) {
    return std::find(std::begin(KEYS), std::end(KEYS), key) != std::end(KEYS);
}

void refuse_defaults(const Element& element, Reading& reading) {
    for (const Key& key : element.kind->keys.keys) {
        const auto origin = element.origins.find(key.name);
        if (!refuses_default(key.name) || origin == element.origins.end() ||
            origin->second.from != "default")
            continue;
        reading.fault(key.name, "missing in " + std::string(element.kind->table) + ' ' +
                                    std::to_string(element.number) +
                                    "; a strict request gives it (" + std::string(key.meaning) +
                                    "), else it would be " +
                                    default_of(element, key, reading.units));
    }
}

} // namespace tarvane::vessel
