// A request as a tree of values, in whatever notation it was written: a table of the input file, a
// JSON object, a dictionary of Python.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace tarvane::vessel {

// Where a value, or the key of a table, is written. 0: the notation has no lines.
struct Position {
    int line = 0, column = 0;
};

class Value;
using List = std::vector<Value>;

// The keys of a table in the order in which they were written, each once.
class Table {
  public:
    struct Entry;
    using Iterator = std::vector<Entry>::const_iterator;

    Table();
    Table(const Table& other);
    Table(Table&& other) noexcept;
    Table& operator=(const Table& other);
    Table& operator=(Table&& other) noexcept;
    ~Table();

    const Entry* entry(std::string_view key) const; // none: a null pointer
    const Value* find(std::string_view key) const;  // the same
    Value* find(std::string_view key);
    // Replaces the value that the key may have.
    Value& put(std::string key, Value value, Position at = {});
    bool empty() const;
    std::size_t size() const;
    Iterator begin() const;
    Iterator end() const;

  private:
    std::vector<Entry> entries;
    std::map<std::string, std::size_t, std::less<>> places;
};

// What a notation has and no field accepts: "a date or time".
struct Foreign {
    std::string what;
};

class Value {
  public:
    Position at;

    Value() = default; // null
    Value(bool flag) : content(flag) {}
    Value(std::int64_t whole) : content(whole) {}
    Value(double number) : content(number) {}
    Value(std::string text) : content(std::move(text)) {}
    Value(const char* text) : content(std::string(text)) {}
    Value(List list) : content(std::move(list)) {}
    Value(Table table) : content(std::move(table)) {}
    Value(Foreign foreign) : content(std::move(foreign)) {}

    bool null() const { return std::holds_alternative<std::monostate>(content); }
    const bool* flag() const { return std::get_if<bool>(&content); }
    const std::int64_t* whole() const { return std::get_if<std::int64_t>(&content); }
    const std::string* text() const { return std::get_if<std::string>(&content); }
    const List* list() const { return std::get_if<List>(&content); }
    const Table* table() const { return std::get_if<Table>(&content); }
    List* list() { return std::get_if<List>(&content); }
    Table* table() { return std::get_if<Table>(&content); }
    // A number with or without a point.
    std::optional<double> number() const;
    // "the text "ten"", 2.5, true, "a list": as a message shows it, shortened to what a line holds.
    std::string shown() const;

  private:
    std::variant<std::monostate, bool, std::int64_t, double, std::string, List, Table, Foreign>
        content;
};

struct Table::Entry {
    std::string key;
    Value value;
    Position at; // of the key
};

// Functions that use the entries are defined where Entry is complete.
inline Table::Table() = default;
inline Table::Table(const Table& other) = default;
inline Table::Table(Table&& other) noexcept = default;
inline Table& Table::operator=(const Table& other) = default;
inline Table& Table::operator=(Table&& other) noexcept = default;
inline Table::~Table() = default;
inline bool Table::empty() const { return entries.empty(); }
inline std::size_t Table::size() const { return entries.size(); }
inline Table::Iterator Table::begin() const { return entries.begin(); }
inline Table::Iterator Table::end() const { return entries.end(); }

} // namespace tarvane::vessel
