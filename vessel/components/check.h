// Checks of a component with their states, and the order of the table that shows them.
#pragma once

#include "fields/results.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tarvane::vessel {

enum class State {
    pass,
    fail,
    not_asked, // only an input that was not given would require it; no influence
    not_made,  // the code requires it, a value is missing: the component can't pass
    waived     // the user says so
};

std::string_view state_name(State state); // "pass", "not made"

// A row of the table of checks. Its state is decided by its numbers, unrounded: ratio, rounded to the four
// decimals that are shown, up to 1.0000 passes.
class Check {
  public:
    // Demand against limit, in the engine's units. What isn't a number fails. Temperatures are compared
    // from absolute zero.
    static Check compared(const CheckField& field, float demand, float limit);
    // A finding without figures of its own.
    static Check found(const CheckField& field, bool sound, std::string reason = {});
    static Check not_asked(const CheckField& field, std::string reason);
    static Check not_made(const CheckField& field, std::string reason);
    // The same row, waived by the user. One that passes, or that can't be waived, stays as it is.
    Check waived() const;
    // A sentence for people; the figures are still those of the row.
    Check& because(std::string words);
    // How the demand comes about, where no report shows it: "P*R/(S*E - 0.6*P) = ...".
    Check& shown_by(std::string formula);
    // The engine's own warning or mark, which knows another tolerance.
    Check& marked(bool by_engine);
    // Another case than that of the field: "external".
    Check& in_case(std::string other);
    // Another paragraph than that of the field, a text of the tables: of the code and formula that were taken.
    Check& under(std::string_view other);

    // The field of the same id in the list of a kind, for a row that several kinds share.
    Check& listed_in(std::span<const CheckField> fields);

    const CheckField& field() const { return *described; }
    State state() const { return is; }
    std::optional<float> demand() const { return asked; }
    std::optional<float> limit() const { return allowed; }
    // At most 1 when passed, for "at least", too. Nothing without figures.
    std::optional<float> ratio() const { return used; }
    std::string_view paragraph() const { return other_paragraph.value_or(described->paragraph); }
    std::string_view load_case() const {
        return other_case.empty() ? described->load_case : std::string_view(other_case);
    }
    // "longitudinal hub stress, operating"
    std::string label() const;
    const std::string& reason() const { return words; }
    const std::string& step() const { return formula; }
    // Beside a row that passes although the engine marks it; else empty.
    std::string_view remark() const;
    bool passes() const { return is == State::pass; }
    bool falls_short() const { return is == State::fail || is == State::not_made; }
    // It keeps its component from passing.
    bool blocks() const {
        return is == State::not_made || (is == State::fail && described->force == Force::decides);
    }
    // It fails what is good practice, not the code.
    bool advises() const { return falls_short() && !blocks(); }
    // Its reason is a line of the verdict.
    bool told() const;

  private:
    Check(const CheckField& field, State state) : described(&field), is(state) {}

    const CheckField* described;
    State is;
    std::optional<float> asked, allowed, used;
    std::string words, formula, other_case;
    std::optional<std::string_view> other_paragraph;
    bool engine_marks = false;
};

using Checks = std::vector<Check>;

// The worst first: failed and not made ones by falling ratio, those of good practice that fail, passed ones by
// falling ratio, those of good practice, waived ones, those that are not required.
void sort_worst_first(Checks& checks);

// The check that governs: the worst one that decides and is required; a null pointer without any.
const Check* governing(const Checks& checks);
// The same of the checks of several components: temperatures of a metal that pass come last, as their ratios, which
// count from absolute zero, are always near 1.
const Check* governing_of_several(const Checks& checks);
// None keeps its component from passing.
bool all_pass(const Checks& checks);

} // namespace tarvane::vessel
