#include "document/input_rows.h"

#include "components/read_value.h"
#include "components/strict.h"
#include "document/results.h"
#include "values/decimal.h"
#include "values/text.h"

#include <cmath>

namespace tarvane::vessel {

namespace {

constexpr std::string_view DEFAULT = "default", NOT_READ = "not read";

// As many digits as the single has: an input is not rounded.
std::string number_of_input(float value, const Value& given, const Key& key,
                            const UnitSystem& units) {
    constexpr int SINGLE = 7;
    constexpr float LONGEST = 1.0e7f;
    if (std::fabs(value) >= LONGEST) return number_text(value, 0);
    if (given.number()) return with_mark(general_text(static_cast<double>(value), SINGLE), units);
    // A dimension of a standard, or of another component.
    constexpr int USUAL = 6;
    if (key.quantity == Quantity::thickness || key.quantity == Quantity::diameter)
        return with_mark(general_text(static_cast<double>(value), USUAL), units);
    return number_text(value, key.decimals.value_or(decimals_of(key.quantity, units)), units);
}

std::string value_of(const Element& element, const Key& key, const Value& given,
                     const UnitSystem& units) {
    if (is_text(key)) return to_utf8(element.text_of(key));
    const float number = element.number_of(key);
    if (key.quantity == Quantity::flag) return number != 0.0f ? "yes" : "no";
    const std::string_view name = choice_name(key.choices, static_cast<int>(number));
    if (!key.choices.empty() && !name.empty()) return std::string(name);
    if (key.quantity == Quantity::whole) return number_text(number, 0);
    return number_of_input(as_given(key, number, given, units), given, key, units);
}

bool is_shown(const Element& element, const Key& key, const Origin& origin) {
    if (!origin.given.null()) return true;
    if (origin.from.starts_with(NOT_READ)) return false;
    if (is_text(key)) return !element.text_of(key).empty();
    constexpr float BEYOND_EVERYTHING = 1.0e8f; // a limit that is none
    const float number = element.number_of(key);
    if (std::fabs(number) > BEYOND_EVERYTHING) return false;
    return origin.from != DEFAULT || number != 0.0f;
}

// What was written where it is not the number itself: "file: 10 bar".
std::string source_of(const Key& key, const Origin& origin) {
    const std::string* text = origin.given.text();
    std::string source = origin.from.empty() ? std::string(DEFAULT) : origin.from;
    const bool number = !is_text(key) && key.choices.empty();
    if (number && text != nullptr && !text->empty() && text->front() >= '0' && text->front() <= '9')
        source += ": " + *text;
    return source;
}

template <class Test>
std::vector<InputRow> rows_of(const Element& element, const UnitSystem& units, Test wanted) {
    std::vector<InputRow> rows;
    for (const Key& key : element.kind->keys.keys) {
        const auto origin = element.origins.find(key.name);
        if (origin == element.origins.end() || !wanted(key, origin->second)) continue;
        rows.push_back({.key = &key,
                        .value = value_of(element, key, origin->second.given, units),
                        .unit = to_utf8(units.label(key.quantity)),
                        .source = source_of(key, origin->second)});
    }
    return rows;
}

} // namespace

float as_given(const Key& key, float engine, const Value& given, const UnitSystem& units) {
    if (const std::optional<double> number = given.number()) {
        const auto single = static_cast<float>(*number);
        if (units.to_engine(single, key.quantity) == engine) return single;
    }
    return units.to_file(engine, key.quantity);
}

std::vector<InputRow> input_rows(const Element& element, const UnitSystem& units) {
    return rows_of(element, units, [&](const Key& key, const Origin& origin) {
        return is_shown(element, key, origin);
    });
}

std::vector<InputRow> every_input_row(const Element& element, const UnitSystem& units) {
    return rows_of(element, units, [](const Key&, const Origin&) { return true; });
}

std::vector<InputRow> default_rows(const Element& element, const UnitSystem& units) {
    return rows_of(element, units, [](const Key& key, const Origin& origin) {
        return refuses_default(key.name) && origin.from == DEFAULT;
    });
}

} // namespace tarvane::vessel
