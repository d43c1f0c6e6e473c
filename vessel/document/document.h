// The calculation of a request as a document: what an engineer hands to a client, an inspector, an authority. It is
// data; html.h makes a page of it.
#pragma once

#include "components/calculation.h"
#include "document/checks_table.h"
#include "drawing/figure.h"

#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace tarvane::vessel {

// How much of the calculation it holds: front and summary of the vessel alone; inputs, drawings, checks and results of
// each component, too; and the lines of the calculation.
enum class Detail { summary, checks, full };

// ---- blocks; every text is UTF-8 and plain --------------------------------------------------------------

struct Paragraph {
    std::string text;
    Tone tone = Tone::quiet;
};

// A text with a word before it that says what it is: "Warning", "Not made", "Note".
struct Remark {
    std::string word, text;
    Tone tone = Tone::quiet;
};

struct DocumentList {
    std::vector<std::string> items;
};

struct Cell {
    std::string text;
    Tone tone = Tone::quiet;
};

struct Column {
    std::string head;
    bool number = false; // to the right
};

struct DocumentTable {
    std::string caption; // for readers who do not see its place; may be empty
    std::vector<Column> columns;
    std::vector<std::vector<Cell>>
        rows; // the first cell is the head of its row; the last may reach over the rest
};

// The checks of a component, the worst first.
struct CheckRows {
    std::vector<CheckRow> rows;
};

// Lines of the engine in its columns. A line that is marked says so by its words; the tone adds to it.
struct Line {
    std::string text;
    Tone tone = Tone::quiet;
    bool heading = false;
};

struct Lines {
    std::vector<Line> lines;
};

// A heading, the formula, the numbers in it and the value.
struct Formula {
    std::vector<Line> lines;
    std::string paragraph; // of the code, where the lines don't say it
};

// What a line above it leaves out, beside the lines of the engine.
struct MarginNote {
    std::string text;
};

struct Drawing {
    Figure figure;
    std::string id = {}, caption = {}; // "figure-2", "Figure 2: ..."
};

// A word of the engine that gives way to a drawing.
struct DrawingReference {
    std::string id, text;
};

using Block = std::variant<Paragraph, Remark, DocumentList, DocumentTable, CheckRows, Lines,
                           Formula, MarginNote, Drawing, DrawingReference>;

struct DocumentSection {
    std::string id; // "flange-1", unique
    std::string title;
    std::vector<Block> blocks = {};
    std::vector<DocumentSection> sections = {};
    bool new_page = false; // it begins one
};

// ---- the document ------------------------------------------------------------------------------------------

// A text that the front page shows, and its label.
struct FrontText {
    std::string label, text;
};

struct FrontPage {
    std::string title;
    std::vector<FrontText> facts; // project, client, ..., those that are given
    DocumentTable revisions, signatures;
    bool passes = false;
    std::string verdict;      // "PASS", "FAIL", "NOT MADE"
    std::string words;        // of the verdict
    DocumentTable components; // each with its verdict and the check that governs
    std::vector<Block> open_points;
};

struct CalculationDocument {
    std::string title;
    // The head of every page; empty where nothing is given.
    std::string project, number, revision, date;
    std::string author;  // who prepared it
    std::string created; // ISO 8601; may be empty
    bool metric = false; // its paper is A4, else Letter
    FrontPage front;
    std::vector<DocumentSection> opening;  // scope, assumptions, references: before the contents
    std::vector<DocumentSection> sections; // after them
};

// What the host knows of the request beside the request itself.
struct DocumentFacts {
    std::string input_name;   // of the file, without its folder; empty: no file
    std::string input_sha256; // of its bytes; empty: not known
    std::string created;      // ISO 8601, for the properties of the document; empty: none
};

// Of any calculation, also one that fails or ended before its last component.
CalculationDocument make_document(const Request& request, const Calculation& calculation,
                                  const DocumentFacts& facts, Detail detail);

} // namespace tarvane::vessel
