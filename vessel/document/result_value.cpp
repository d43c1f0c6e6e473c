#include "document/result_value.h"

#include "fields/keys.h"

#include <cmath>

namespace tarvane::vessel {

ResultValue value_of(const Result& result, const UnitSystem& units) {
    if (!result.value) return {};
    const float value = units.to_file(*result.value, result.field->quantity);
    if (!std::isfinite(value)) return {};
    if (result.field->quantity == Quantity::flag) return value != 0.0f;
    if (!result.field->choices.empty()) {
        const std::string_view name =
            choice_name(result.field->choices, static_cast<int>(*result.value));
        if (!name.empty()) return name;
    }
    return value;
}

std::string_view why_none(const Result& result) {
    return result.value ? std::string_view("not finite") : result.why;
}

} // namespace tarvane::vessel
