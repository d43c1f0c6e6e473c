// Two results beside each other, as data: what was put in differently, what came out differently, which verdicts
// changed. comparison_writers.h makes text, JSON and a document of it.
#pragma once

#include "document/stored_result.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarvane::vessel {

// One side of a change: a number in the units of the first result, or a word; neither: there is no value.
struct ComparedValue {
    std::optional<float> number;
    std::string shown; // as people read it; "none" without a value
    std::string from;  // of an input: where it comes from
};

// Of an input, a result, or a figure of a check.
struct Change {
    std::string component; // "flange 1 (cover)", "vessel"
    std::string path;      // "flange[0].inputs.t", of the second result
    std::string label, symbol, unit;
    ComparedValue before, after;
    // Of the first number; of temperatures counted from absolute zero. Nothing without two numbers, or from 0.
    std::optional<double> percent;
    std::optional<double> degrees; // of temperatures

    // An input that is in one of the files; it does not follow from others or from data files.
    bool given() const { return before.from.starts_with("file") || after.from.starts_with("file"); }
};

enum class Turn { worse, better, neither };
std::string_view turn_name(Turn turn);

// Of the whole, of a component, or of a check.
struct VerdictChange {
    std::string component, path;
    std::string label;     // "verdict", "bolt area"
    std::string paragraph; // of a check
    std::string before,
        after; // "pass", "fail", "not made", "warning" ...; "none": there is no such check
    Turn turn = Turn::neither;
};

// A component that only one of the results has.
struct Unmatched {
    bool of_first = false;
    std::string component, path, verdict, says;
};

// What is no difference of the design: programs, data files, texts of the document.
struct Aside {
    std::string what, before, after; // empty: that side has none
};

struct ComparedResult {
    std::string name, units, verdict, says;
};

struct Comparison {
    ComparedResult first, second;
    double tolerance = 0.0;  // in per cent, as it was applied
    bool converted = false;  // the second result has other units
    std::size_t matched = 0; // components
    std::vector<Change> inputs, results;
    std::vector<VerdictChange> verdicts;
    std::vector<Unmatched> unmatched;
    std::vector<Aside> asides;

    // A verdict got worse, or the second result alone has a component that does not pass.
    bool worse() const;
    // No input, result, verdict or component differs.
    bool same() const;
};

// Results in other units differ in their last digits by the conversion alone: below this many per cent is no
// difference of theirs.
inline constexpr double TOLERANCE_OF_UNITS = 0.01;

// `tolerance`: results and figures of checks that differ by no more, in per cent, are the same.
Comparison compare(const StoredResult& first, const StoredResult& second, double tolerance);

} // namespace tarvane::vessel
