// What a case can call and name: routines, members of the flange state, switches. A new case needs
// nothing here unless it calls a routine that no case has called before.
#pragma once

#include <algorithm>
#include <array>
#include <map>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace cases {

using Value = std::variant<double, std::string>;

// A fault of the case itself, not of what it tests.
struct CaseError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// Inputs of the routine by name, and what it returned.
class Values {
  public:
    void give(const std::string& name, Value value) { given[name] = std::move(value); }
    bool has(const std::string& name) const { return given.contains(name); }
    float real(const std::string& name) const;
    int whole(const std::string& name) const { return static_cast<int>(real(name)); }
    std::string text(const std::string& name) const;

    void set(const std::string& name, double value) { results[name] = value; }
    void set(const std::string& name, std::string value) { results[name] = std::move(value); }

    std::map<std::string, Value> given, results;

  private:
    const Value& find(const std::string& name) const;
};

struct Routine {
    std::string_view name;
    std::vector<std::string_view> arguments; // every other input of the case is a state member
    void (*call)(Values&);
};
const Routine* find_routine(std::string_view name);
void run_shlint(Values& values);

// Members of the flange state and module switches. False: no such name.
bool set_member(const std::string& name, const Value& value);
bool get_member(const std::string& name, Value& value);

// The entry of a table with this name; a null pointer without one.
template <typename Table>
auto* find_in(Table& table, std::string_view name) {
    const auto at = std::find_if(std::begin(table), std::end(table),
                                 [&](const auto& entry) { return entry.name == name; });
    return at == std::end(table) ? nullptr : &*at;
}

// A line of the report with its marks.
struct Line {
    std::string text; // trailing blanks cut
    std::array<int, 6> marks;
};

// State at load, inch units (or SI), the report into the line store.
void prepare(bool si);
std::vector<Line> stored_lines();

// FLANGE_CALC through the host: the inputs are keys of an input file.
void run_host(const std::string& toml, Values& values, std::vector<Line>& lines);
void use_data_folder(const std::string& folder);

} // namespace cases
