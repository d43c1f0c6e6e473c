// What was found of a component: values by the names of its kind, and checks with their states.
#pragma once

#include "fields/results.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarvane::vessel {

// A result, in the engine's units; nothing, and why, where there is none.
struct Result {
    const ResultField* field;
    std::optional<float> value;
    std::string_view why = {};
};

enum class State {
    pass,
    fail,
    not_asked, // only an input that nobody gave would ask for it; no influence
    not_made,  // the code asks, a value is missing: the component can't pass
    waived     // the user says so
};

std::string_view state_name(State state); // "pass", "not made"

// A row of the table of checks. Its state is decided by its numbers, unrounded: ratio, rounded to the four
// decimals that are shown, up to 1.0000 passes.
class Check {
  public:
    // Demand against limit, in the engine's units. What isn't finite fails.
    static Check compared(const CheckField& field, float demand, float limit);
    // A finding without figures of its own.
    static Check found(const CheckField& field, bool sound, std::string reason = {});
    static Check not_asked(const CheckField& field, std::string reason);
    static Check not_made(const CheckField& field, std::string reason);
    // The same row, waived by the user; a row that passes stays as it is.
    Check waived() const;
    // A sentence beside the row, for people; the figures stay the row's.
    Check& because(std::string words);

    const CheckField& field() const { return *described; }
    State state() const { return is; }
    std::optional<float> demand() const { return asked; }
    std::optional<float> limit() const { return allowed; }
    // At most 1 when passed, for "at least", too. Nothing without figures.
    std::optional<float> ratio() const { return used; }
    const std::string& reason() const { return words; }
    bool passes() const { return is == State::pass; }
    // It keeps its component from passing.
    bool blocks() const { return is == State::fail || is == State::not_made; }

  private:
    Check(const CheckField& field, State state) : described(&field), is(state) {}

    const CheckField* described;
    State is;
    std::optional<float> asked, allowed, used;
    std::string words;
};

using Checks = std::vector<Check>;

// The worst first: failed and not made ones by falling ratio, passed ones by falling ratio, waived ones, those
// that nobody asked for.
void sort_worst_first(Checks& checks);

// The check that governs: the first of the sorted ones that was asked; a null pointer without any.
const Check* governing(const Checks& checks);
bool all_pass(const Checks& checks);

} // namespace tarvane::vessel
