#include "values/json.h"

#include "values/text.h"

#include <nlohmann/json.hpp>

#include <array>
#include <charconv>
#include <cmath>

namespace tarvane::vessel {

namespace {

// Builds the tree while the parser reads, so that nothing is built of a refused text.
class Builder : public nlohmann::json_sax<nlohmann::json> {
  public:
    Value root;
    std::string reason; // of a refusal

    bool null() override { return put(Value()); }
    bool boolean(bool value) override { return put(Value(value)); }
    bool number_integer(number_integer_t value) override {
        return put(Value(static_cast<std::int64_t>(value)));
    }
    bool number_unsigned(number_unsigned_t value) override {
        if (value > static_cast<number_unsigned_t>(INT64_MAX))
            return put(Value(static_cast<double>(value)));
        return put(Value(static_cast<std::int64_t>(value)));
    }
    bool number_float(number_float_t value, const string_t&) override { return put(Value(value)); }
    bool string(string_t& value) override { return put(Value(std::move(value))); }
    bool binary(binary_t&) override { return refuse("binary data are not JSON"); }
    bool start_object(std::size_t) override { return enter(Value(Table())); }
    bool end_object() override { return leave(); }
    bool start_array(std::size_t) override { return enter(Value(List())); }
    bool end_array() override { return leave(); }
    bool key(string_t& name) override {
        if (open.back()->table()->find(name) != nullptr)
            return refuse("the key " + echoed(name) + " is given twice");
        keys.back() = std::move(name);
        return true;
    }
    bool parse_error(std::size_t position, const std::string&,
                     const nlohmann::json::exception& problem) override {
        // The library's own text begins with its name and number of the error.
        const std::string_view words = problem.what();
        const std::size_t colon = words.find(": ");
        return refuse("not JSON from byte " + std::to_string(position) +
                      " on: " + std::string(colon == words.npos ? words : words.substr(colon + 2)));
    }

  private:
    std::vector<Value*> open;      // the lists and objects that are not closed yet
    std::vector<std::string> keys; // of the next value in each of them

    bool refuse(std::string why) {
        if (reason.empty()) reason = std::move(why);
        return false;
    }
    Value& place(Value value) {
        if (open.empty()) return root = std::move(value);
        if (Table* table = open.back()->table())
            return table->put(std::move(keys.back()), std::move(value));
        return open.back()->list()->emplace_back(std::move(value));
    }
    bool put(Value value) {
        place(std::move(value));
        return true;
    }
    bool enter(Value value) {
        if (open.size() == DEEPEST_NESTING)
            return refuse("it nests deeper than " + std::to_string(DEEPEST_NESTING));
        open.push_back(&place(std::move(value)));
        keys.emplace_back();
        return true;
    }
    bool leave() {
        open.pop_back();
        keys.pop_back();
        return true;
    }
};

} // namespace

std::optional<Value> read_json(std::string_view text, Faults& faults) {
    Builder builder;
    if (nlohmann::json::sax_parse(text.begin(), text.end(), &builder))
        return std::move(builder.root);
    faults.push_back({.message = builder.reason});
    return std::nullopt;
}

// ---- writing ---------------------------------------------------------------------------------------

void JsonWriter::separate() {
    if (!first) document += ',';
    first = false;
}

JsonWriter& JsonWriter::open(char bracket) {
    separate();
    document += bracket;
    first = true;
    return *this;
}

JsonWriter& JsonWriter::close(char bracket) {
    document += bracket;
    first = false;
    return *this;
}

void JsonWriter::quote(std::string_view utf8) {
    constexpr std::string_view HEX = "0123456789abcdef";
    document += '"';
    for (const char c : utf8) {
        const auto code = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            (document += '\\') += c;
        } else if (c == '\n') {
            document += "\\n";
        } else if (code < 0x20) {
            ((document += "\\u00") += HEX[code >> 4]) += HEX[code & 15];
        } else {
            document += c;
        }
    }
    document += '"';
}

JsonWriter& JsonWriter::key(std::string_view name) {
    separate();
    quote(name);
    document += ':';
    first = true;
    return *this;
}

JsonWriter& JsonWriter::text(std::string_view utf8) {
    separate();
    quote(utf8);
    return *this;
}

JsonWriter& JsonWriter::raw(std::string_view json) {
    separate();
    document += json;
    return *this;
}

JsonWriter& JsonWriter::whole(std::int64_t value) { return raw(std::to_string(value)); }

namespace {

template <class T>
std::string shortest(T value) {
    if (!std::isfinite(value)) return "null";
    std::array<char, 40> digits;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value);
    return {digits.data(), end.ptr};
}

} // namespace

JsonWriter& JsonWriter::single(float value) { return raw(shortest(value)); }

JsonWriter& JsonWriter::number(double value) { return raw(shortest(value)); }

JsonWriter& JsonWriter::value(const Value& tree) {
    if (const bool* flagged = tree.flag()) return flag(*flagged);
    if (const std::int64_t* integer = tree.whole()) return whole(*integer);
    if (const std::string* words = tree.text()) return text(*words);
    if (const std::optional<double> real = tree.number()) return number(*real);
    if (const List* list = tree.list()) {
        begin_list();
        for (const Value& item : *list)
            value(item);
        return end_list();
    }
    if (const Table* table = tree.table()) {
        begin_object();
        for (const Table::Entry& entry : *table)
            key(entry.key).value(entry.value);
        return end_object();
    }
    return null();
}

} // namespace tarvane::vessel
