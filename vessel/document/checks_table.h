// The checks of a component as a document shows them: one line with the verdict and the check that governs, then
// a row for each check, the worst first. Texts, HTML and PDF are made of the same rows.
#pragma once

#include "catalogue/units.h"
#include "components/element.h"

#include <string>
#include <string_view>
#include <vector>

namespace tarvane::vessel {

// How a reader takes a row in at a glance.
enum class Tone { sound, bad, advice, quiet };

// Texts, UTF-8, in the units of the file. Demand, relation, limit, unit and ratio are empty without figures.
struct CheckRow {
    std::string label, load_case, paragraph; // "bolt stress", "gasket seating", "2-5"
    std::string demand, relation, limit, unit, ratio;
    std::string state;  // "pass", "fail", "warning", "advice", "not made", "waived", "not asked"
    std::string remark; // formula, reason, what the engine marks; may be empty
    Tone tone = Tone::quiet;
};

// "Bolt stress, gasket seating"
std::string row_label(const CheckRow& row);

struct ChecksTable {
    bool passes = false;
    std::string_view verdict; // "pass", "fail", "not made"
    std::string headline;     // "flange 1 (channel): governing check: bolt area, 0.9312"
    std::vector<CheckRow> rows;
};

ChecksTable checks_table(const Element& element, const Outcome& outcome, const UnitSystem& units);

// "0.9312"; empty without figures.
std::string ratio_text(const Check& check, const UnitSystem& units);

// "governing check: bolt area, 0.9312", of the checks of a component or of several.
std::string governing_words(const Checks& checks, const UnitSystem& units);
// The same with the number of those that fail, and with the remarks.
std::string words_of(const Checks& checks, const UnitSystem& units);
// "; warning: bolt of the thread series; advice exceeded: least bolt spacing; waived: head_1_4f": beside the verdict;
// may be empty.
std::string remarks_on(const Checks& checks);

// Characters of the first columns; whether a short remark of a row without figures takes their place.
struct CheckColumns {
    std::size_t label = 36, paragraph = 14;
    bool remark_beside = false;
};

// With more room for the labels that need it, on a page of so many characters.
CheckColumns fitted(const std::vector<CheckRow>& rows, std::size_t page);

// The heads of the columns, and the lines of a row below them, up to 100 columns wide unless the page is wider; the
// state of a row ends its first line.
std::string check_heads(CheckColumns columns = {});
std::vector<std::string> lines_of(const CheckRow& row, CheckColumns columns = {});

// PASS or FAIL with the headline, then the rows. A blank line before and after it.
std::string text_of(const ChecksTable& table, bool colour);

// "PASS  words", "FAIL  words", and the end of the line.
std::string verdict_line(bool passes, std::string_view words, bool colour);

} // namespace tarvane::vessel
