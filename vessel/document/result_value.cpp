#include "document/result_value.h"

#include "fields/flange_results.h"
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

std::string label_of(const ResultField& field, std::span<const ResultField> all) {
    constexpr std::string_view SAME = "The same";
    std::string label(field.label.substr(0, field.label.find(", times ")));
    if (label.starts_with(SAME)) {
        std::string_view what = SAME;
        for (const ResultField& each : all) {
            if (each.name == field.name) break;
            if (!each.label.starts_with(SAME)) what = each.label;
        }
        label.replace(0, SAME.size(), what);
    }
    if (field.table == DESIGN_TABLE) label += ", selected";
    if (field.table == ROUNDED_TABLE) label += ", rounded";
    return label;
}

std::string_view why_none(const Result& result) {
    return result.value ? std::string_view("not finite") : result.why;
}

} // namespace tarvane::vessel
