// One value of a request in the form that its key needs.
#pragma once

#include "fields/keys.h"
#include "values/value.h"

#include <optional>
#include <string>
#include <string_view>

namespace tarvane::vessel {

// A value, or why there is none.
template <class T>
struct Taken {
    std::optional<T> value;
    std::string fault;
};

// In the engine's units: a number, or the text of one, is parsed as double and rounded once; then the factor of
// the request's unit, or of the text's own, is applied in single precision.
Taken<float> take_number(const Value& value, const Key& key, const UnitSystem& units);
// In the engine's Western characters.
Taken<std::string> take_text(const Value& value, const Key& key, const UnitSystem& units);

bool is_text(const Key& key);
// Whether "full vacuum" is a value of the key: the external pressure of a flange is a negative P.
bool takes_vacuum(const Key& key);

// "a number in mm is expected, not the text "ten" (meaning)".
std::string not_expected(const Value& value, const std::string& wanted,
                         std::string_view meaning = {});

} // namespace tarvane::vessel
