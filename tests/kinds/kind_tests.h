// What the tests ask of each kind of component, in one file a kind: NAME_test.cpp of this folder.
#pragma once

#include "check_rows.h"

#include <map>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tarvane::app {

// Inputs on both sides of the limit of each check.
struct Covered {
    std::vector<Sides> sides;
    std::vector<Pair> pairs;

    bool has(std::string_view id) const;
    void expect_flips() const;
};

using Lines = std::map<std::string, std::string>; // values by key, as they are written

// Tables of a kind that tests draw. A later member has the word where several know a key.
struct Draw {
    Lines base;
    std::map<std::string, std::vector<std::string>> drawn; // an empty text: the key is not given
    std::map<std::string, std::pair<double, double>> between = {}; // in the engine's units
};
Lines draw_lines(const Draw& draw, std::mt19937& random);

// What a direct call of the engine is given: numbers in its units, flags as 0 and 1, texts.
struct EngineInput {
    Lines values;

    float number(const std::string& key, float otherwise = 0.0f) const;
    std::string text(const std::string& key, const std::string& otherwise = {}) const;
    bool has(const std::string& key) const { return values.contains(key); }
};
// And what it gives, in the engine's units, by the names of the results.
using EngineResults = std::map<std::string, std::optional<float>>;

struct KindTests {
    Covered covered;
    Draw draw;
    // An input text; empty: among the golden ones and the examples there are some.
    std::string example = {};
    // The results of an input by the engine's own C surface, without the library; without it
    // tests/vessel/ways_test.py has the calls.
    EngineResults (*engine)(const EngineInput& input) = nullptr;
    // The values of an outcome that are no results, as bytes, but for that of the key.
    void (*append)(std::string& all, const Outcome& outcome, const Key& key) = nullptr;
};

// An object of this kind, in the test file, makes them known.
struct TestsOfKind {
    TestsOfKind(std::string_view table, KindTests (*make)());
};

// Those of a [[table]]; without a test file, a null pointer.
const KindTests* tests_of(std::string_view table);
std::vector<std::string_view> tables_with_tests();
// Of all kinds of the library.
std::vector<std::string_view> tables_of_kinds();

template <class... Value>
void append_values(std::string& all, const Value&... values) {
    (all.append(reinterpret_cast<const char*>(&values), sizeof values), ...);
}

// The rules of openings: a row where one is broken, and one for openings that break none.
void add_openings(Covered& covered, const std::string& openings, const std::string& d1,
                  const std::string& d2, float large);

inline const std::vector<std::string> SWITCH{"", "true", "false"};

} // namespace tarvane::app
