// JSON of requests and results.
#pragma once

#include "values/fault.h"
#include "values/value.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarvane::vessel {

constexpr std::size_t DEEPEST_NESTING = 64;

// Nothing, and the fault, for a text that is no JSON in UTF-8, that nests deeper than that, or in which an
// object has a key twice.
std::optional<Value> read_json(std::string_view text, Faults& faults);

// Writes one document from front to back. A number that is not finite can't be written: it is null.
class JsonWriter {
  public:
    JsonWriter& begin_object() { return open('{'); }
    JsonWriter& end_object() { return close('}'); }
    JsonWriter& begin_list() { return open('['); }
    JsonWriter& end_list() { return close(']'); }
    JsonWriter& key(std::string_view name);
    JsonWriter& text(std::string_view utf8);
    JsonWriter& whole(std::int64_t value);
    // The shortest decimal that reads back to the same single.
    JsonWriter& single(float value);
    JsonWriter& number(double value);
    JsonWriter& flag(bool value) { return raw(value ? "true" : "false"); }
    JsonWriter& null() { return raw("null"); }
    JsonWriter& value(const Value& tree);
    // A text that is JSON already.
    JsonWriter& raw(std::string_view json);

    const std::string& str() const { return document; }
    std::string take() { return std::move(document); }

  private:
    std::string document;
    bool first = true; // there is nothing before the next value of its list or object

    JsonWriter& open(char bracket);
    JsonWriter& close(char bracket);
    void separate();
    void quote(std::string_view utf8);
};

} // namespace tarvane::vessel
