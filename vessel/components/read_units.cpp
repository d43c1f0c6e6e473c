#include "components/read_units.h"

#include "values/text.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>

namespace tarvane::vessel {

namespace {

constexpr UnitName UNIT_NAMES[] = {
    {"thickness", Quantity::thickness}, {"pressure", Quantity::pressure},
    {"diameter", Quantity::diameter},   {"stress", Quantity::stress},
    {"force", Quantity::force},         {"moment", Quantity::moment},
    {"area", Quantity::area},           {"temperature", Quantity::temperature},
    {"weight", Quantity::weight},       {"density", Quantity::density}};

bool set_base(UnitSystem& units, const Value& value) {
    const std::string* name = value.text();
    if (name == nullptr) return false;
    if (folded(*name) == "us") {
        units = us_units();
    } else if (folded(*name) == "si") {
        units = si_units();
    } else {
        return false;
    }
    return true;
}

void read_factor(const Value& value, const std::string& key, bool positive, float& into,
                 FaultList& faults) {
    const std::optional<double> number = value.number();
    const float single = number ? static_cast<float>(*number) : 0.0f;
    if (!number || !std::isfinite(single) || (positive && !(single > 0.0f))) {
        faults.wrong(value, key, positive ? "a number above 0" : "a number");
    } else {
        into = single;
    }
}

void read_label(const Value& value, const std::string& key, Quantity quantity, UnitSystem& units,
                FaultList& faults) {
    const std::string* text = value.text();
    const std::optional<std::string> western = text == nullptr ? std::nullopt : to_western(*text);
    const std::size_t width = quantity == Quantity::density ? 20 : label_width(quantity);
    if (!western || western->size() > width) {
        faults.wrong(value, key, "a text of up to " + std::to_string(width) + " characters");
    } else if (quantity == Quantity::density) {
        units.density_label = *western;
    } else {
        const auto place = static_cast<std::size_t>(quantity);
        units.labels[quantity == Quantity::weight ? place - 1 : place] = *western;
    }
}

void read_unit(std::string_view name, const Value& value, Quantity quantity, UnitSystem& units,
               FaultList& faults) {
    const std::string full = "units." + std::string(name);
    const bool temperature = quantity == Quantity::temperature;
    const Table* table = value.table();
    if (table == nullptr) {
        faults.wrong(value, full,
                     temperature ? "a table of offset, scale and label"
                                 : "a table of factor and label");
        return;
    }
    constexpr std::string_view TEMPERATURE_KEYS[] = {"offset", "scale", "label"};
    constexpr std::string_view OTHER_KEYS[] = {"factor", "label"};
    const auto place = static_cast<std::size_t>(quantity);
    std::vector<const Table::Entry*> unknown;
    for (const Table::Entry& entry : *table) {
        const std::string inner = full + '.' + entry.key;
        if (entry.key == "label") {
            read_label(entry.value, inner, quantity, units, faults);
        } else if (temperature && entry.key == "offset") {
            read_factor(entry.value, inner, false, units.factors[place], faults);
        } else if (temperature && entry.key == "scale") {
            read_factor(entry.value, inner, true, units.factors[place + 1], faults);
        } else if (!temperature && entry.key == "factor") {
            read_factor(entry.value, inner, true,
                        quantity == Quantity::density ? units.density_factor : units.factors[place],
                        faults);
        } else {
            unknown.push_back(&entry);
        }
    }
    faults.unknown(std::move(unknown), full, [&](std::string_view key) {
        return nearest_name(key, temperature ? std::span<const std::string_view>(TEMPERATURE_KEYS)
                                             : OTHER_KEYS);
    });
}

} // namespace

std::span<const UnitName> unit_names() { return UNIT_NAMES; }

UnitSystem read_units(const Value& value, FaultList& faults) {
    UnitSystem units = us_units();
    const Table* table = value.table();
    if (table == nullptr) {
        if (!set_base(units, value))
            faults.wrong(value, "units", R"("US", "SI" or a table of units)");
        return units;
    }
    if (const Value* base = table->find("base"); base != nullptr && !set_base(units, *base))
        faults.wrong(*base, "units.base", R"("US" or "SI")");
    std::vector<std::string_view> names{"base"};
    for (const UnitName& unit : UNIT_NAMES)
        names.push_back(unit.name);
    std::vector<const Table::Entry*> unknown;
    for (const Table::Entry& entry : *table) {
        const auto unit = std::find_if(std::begin(UNIT_NAMES), std::end(UNIT_NAMES),
                                       [&](const UnitName& u) { return u.name == entry.key; });
        if (unit != std::end(UNIT_NAMES)) {
            read_unit(entry.key, entry.value, unit->quantity, units, faults);
        } else if (entry.key != "base") {
            unknown.push_back(&entry);
        }
    }
    faults.unknown(std::move(unknown), "units",
                   [&](std::string_view key) { return nearest_name(key, names); });
    return units;
}

} // namespace tarvane::vessel
