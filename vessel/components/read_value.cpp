#include "components/read_value.h"

#include "catalogue/value_units.h"
#include "document/results.h"
#include "values/decimal.h"
#include "values/number_text.h"
#include "values/text.h"

#include <algorithm>
#include <cmath>

namespace tarvane::vessel {

namespace {

constexpr double LARGEST_WHOLE = 16777216.0; // the engine's record holds whole numbers as singles

Taken<float> wrong(const Value& value, const Key& key, const std::string& wanted) {
    return {std::nullopt, not_expected(value, wanted, key.meaning)};
}

Taken<float> take_choice(const Value& value, const Key& key, const UnitSystem& units) {
    if (const std::string* text = value.text()) {
        const std::string name = folded(*text);
        for (const Choice& c : key.choices) {
            if (folded(c.name) == name) return {static_cast<float>(c.number), {}};
        }
    } else if (const std::int64_t* number = value.whole()) {
        for (const Choice& c : key.choices) {
            if (c.number == *number) return {static_cast<float>(c.number), {}};
        }
    }
    const auto [low, high] =
        std::minmax_element(key.choices.begin(), key.choices.end(),
                            [](const Choice& a, const Choice& b) { return a.number < b.number; });
    return wrong(value, key,
                 expected(key, units) + " or " + std::to_string(low->number) + " to " +
                     std::to_string(high->number));
}

// A number in its own unit; in that of the request where it has none.
struct Measured {
    double number;
    const ValueUnit* unit;

    float in_engine_units(Quantity quantity, const UnitSystem& units) const {
        const auto single = static_cast<float>(number);
        return unit != nullptr ? unit->to_engine(single, quantity)
                               : units.to_engine(single, quantity);
    }
};

std::string with_units(Quantity quantity) {
    const std::string_view words = quantity_words(quantity);
    if (words.empty()) return "a number without a unit";
    return std::string(words) + " in one of " + value_unit_names(quantity);
}

Taken<Measured> measure_text(const std::string& text, const Value& value, const Key& key,
                             const UnitSystem& units) {
    if (key.quantity == Quantity::pressure && folded(text) == folded(FULL_VACUUM)) {
        if (takes_vacuum(key))
            return {Measured{static_cast<double>(FULL_VACUUM_PRESSURE),
                             find_value_unit("psi", Quantity::pressure)},
                    {}};
        return {std::nullopt,
                not_expected(value, expected(key, units),
                             std::string(key.meaning) + "; full vacuum is a P_external")};
    }
    const NumberReading reading = read_number_text(text);
    if (!reading.number) {
        std::string fault = not_expected(value, expected(key, units), key.meaning);
        if (!reading.hint.empty()) fault += "; " + reading.hint;
        return {std::nullopt, std::move(fault)};
    }
    const auto& [number, name] = *reading.number;
    if (name.empty()) return {Measured{number, nullptr}, {}};
    if (const ValueUnit* unit = find_value_unit(name, key.quantity))
        return {Measured{number, unit}, {}};
    const ValueUnit* other = find_value_unit(name);
    std::string fault = not_expected(value, with_units(key.quantity), key.meaning);
    if (other != nullptr)
        fault +=
            "; " + std::string(name) + " is a unit of " + std::string(quantity_words(other->of));
    else
        fault += unknown_unit(name, key.quantity);
    return {std::nullopt, std::move(fault)};
}

Taken<Measured> measure(const Value& value, const Key& key, const UnitSystem& units) {
    if (const std::string* text = value.text()) return measure_text(*text, value, key, units);
    if (const std::optional<double> number = value.number())
        return {Measured{*number, nullptr}, {}};
    return {std::nullopt, not_expected(value, expected(key, units), key.meaning)};
}

// 150, 0.5: a number as a text.
std::optional<std::string> designation(const Value& value) {
    const std::optional<double> number = value.number();
    if (!number || !std::isfinite(*number)) return std::nullopt;
    return general_text(*number, 9);
}

} // namespace

std::string not_expected(const Value& value, const std::string& wanted, std::string_view meaning) {
    std::string message = wanted + " is expected, not " + value.shown();
    if (!meaning.empty()) message += " (" + std::string(meaning) + ')';
    return message;
}

bool takes_vacuum(const Key& key) { return key.name == "P_external"; }

bool is_text(const Key& key) {
    return key.quantity == Quantity::text || key.quantity == Quantity::designation ||
           key.quantity == Quantity::waivers;
}

Taken<float> take_number(const Value& value, const Key& key, const UnitSystem& units) {
    if (key.quantity == Quantity::choice) return take_choice(value, key, units);
    if (key.quantity == Quantity::flag) {
        if (const bool* flag = value.flag()) return {*flag ? 1.0f : 0.0f, {}};
        return wrong(value, key, expected(key, units));
    }
    Taken<Measured> measured = measure(value, key, units);
    if (!measured.value) return {std::nullopt, std::move(measured.fault)};
    const double number = measured.value->number;
    if (key.quantity == Quantity::whole &&
        (number != std::floor(number) || std::fabs(number) > LARGEST_WHOLE))
        return wrong(value, key, expected(key, units));
    const ValueUnit* unit = measured.value->unit;
    const bool absolute = unit != nullptr && unit->of == ValueUnit::Of::absolute_pressure;
    if (absolute && takes_vacuum(key)) // of which side?
        return wrong(value, key, "the pressure outside above that inside, in psi or bar,");
    if (absolute && number < 0.0)
        return wrong(value, key, "an absolute pressure that is not below 0");
    const float single = measured.value->in_engine_units(key.quantity, units);
    if (!std::isfinite(single)) return wrong(value, key, expected(key, units));
    if (key.quantity == Quantity::temperature && below_absolute_zero(single)) {
        return wrong(value, key,
                     "a temperature from absolute zero on, " +
                         shown(ABSOLUTE_ZERO, Quantity::temperature, units) + ',');
    }
    return {single, {}};
}

Taken<std::string> take_text(const Value& value, const Key& key, const UnitSystem& units) {
    const std::string* text = value.text();
    std::optional<std::string> western = text ? to_western(*text) : std::nullopt;
    if (key.quantity == Quantity::designation && !text) western = designation(value);
    if (western && western->size() <= static_cast<std::size_t>(key.width)) return {western, {}};
    std::string wanted = expected(key, units);
    if (text != nullptr && !western) wanted += " of the Western alphabet";
    return {std::nullopt, not_expected(value, wanted, key.meaning)};
}

} // namespace tarvane::vessel
