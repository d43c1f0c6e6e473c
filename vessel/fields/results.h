// Descriptions of what a calculation gives: results and checks, one table of each for a kind of component.
// The result of a request, the closing tables, the schema and `tarvane keys` share them.
#pragma once

#include "fields/keys.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace tarvane::vessel {

struct ResultField {
    std::string_view name;   // "mawp", unique among the results of the kind
    std::string_view symbol; // of the report; may be empty
    Quantity quantity;
    std::string_view label;               // "Maximum allowable working pressure"
    std::string_view table = {};          // title of the closing table that lists it; none: empty
    std::string_view meaning = {};        // what the label leaves open
    std::span<const Choice> choices = {}; // the meanings of the numbers of a choice
    float times = 1.0f;                   // in the closing table, which shows few decimals
};

// A result, in the engine's units; nothing, and why, where there is none.
struct Result {
    const ResultField* field;
    std::optional<float> value;
    std::string_view why = {};
};

// What a row of a kind's table finds: a value or why there is none. What isn't finite is no value.
struct Got {
    std::optional<float> value;
    std::string_view why = {};

    Got(float number) {
        if (std::isfinite(number))
            value = number;
        else
            why = "not a finite number";
    }
    static Got none(std::string_view why) {
        Got got(0.0f);
        got.value.reset();
        got.why = why;
        return got;
    }
};

// A row of the table of results of a kind, with the way from what was found to its value.
template <class Found>
struct ResultRow {
    ResultField field;
    Got (*value)(const Found& found);
};

template <class Found, std::size_t COUNT>
constexpr std::array<ResultField, COUNT> fields_of(const ResultRow<Found> (&rows)[COUNT]) {
    std::array<ResultField, COUNT> fields{};
    for (std::size_t i = 0; i < COUNT; ++i)
        fields[i] = rows[i].field;
    return fields;
}

// That of a row; `fields` are those of the rows.
template <class Found, std::size_t COUNT>
Result result_of(const ResultRow<Found> (&rows)[COUNT],
                 const std::array<ResultField, COUNT>& fields, const Found& found,
                 std::size_t place) {
    const Got got = rows[place].value(found);
    return {&fields[place], got.value, got.why};
}

// One a row.
template <class Found, std::size_t COUNT>
std::vector<Result> results_of(const ResultRow<Found> (&rows)[COUNT],
                               const std::array<ResultField, COUNT>& fields, const Found& found) {
    std::vector<Result> results;
    results.reserve(COUNT);
    for (std::size_t i = 0; i < COUNT; ++i)
        results.push_back(result_of(rows, fields, found, i));
    return results;
}

// What it means for the component that a check fails. One that the code asks for and that could not be made
// keeps it from passing whatever its force.
enum class Force {
    decides, // it can't pass
    warns,   // it passes, with a line that says so
    advises  // it passes: the row shows it, nothing more
};

constexpr std::string_view force_name(Force force) {
    return force == Force::decides ? "decides" : force == Force::warns ? "warns" : "advises";
}

struct CheckField {
    std::string_view id;        // "bolt_area", unique among the checks of the kind
    std::string_view paragraph; // of the code: "2-5", "UG-27 (c)(1)"; "TEMA" where no code applies
    std::string_view label;     // "bolt area": what is compared
    Quantity quantity;          // of demand and limit
    bool at_least = false;      // the demand must not be below the limit; else not above it
    Force force = Force::decides;
    std::string_view asked = {};     // the condition under which the code asks; empty: always
    bool waivable = false;           // by the user
    std::string_view load_case = {}; // "gasket seating"; empty: there is but one
};

// The field of an id, looked up when the program is compiled: an id that isn't there does not compile.
template <std::size_t COUNT>
consteval const CheckField& field_of(const CheckField (&fields)[COUNT], std::string_view id) {
    for (const CheckField& field : fields)
        if (field.id == id) return field;
    throw "no such check";
}

} // namespace tarvane::vessel
