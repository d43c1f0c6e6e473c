#include "shell_formula.h"

#include "functions.h"
#include "tarvane/tarvane.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <stdexcept>

namespace tarvane::app {

void Symbols::put(std::string_view name, float value, int kind) {
    symbols.push_back({std::string(name), value, kind});
}

const Symbol& Symbols::find(std::string_view name) const {
    for (const Symbol& symbol : symbols) {
        if (symbol.name == name) return symbol;
    }
    throw std::logic_error("no symbol " + std::string(name));
}

namespace {

constexpr char SQUARED = '\xB2';
constexpr std::size_t MOST_VALUES = 6; // of a number line
constexpr std::string_view FUNCTIONS[] = {"ln", "exp", "sqrt", "max", "min"};

bool is_letter(char c) { return std::isalpha(static_cast<unsigned char>(c)) != 0; }
bool is_digit(char c) { return std::isdigit(static_cast<unsigned char>(c)) != 0; }
bool in_name(char c) { return is_letter(c) || is_digit(c); }

// The name that begins at `at`: "tc", "ln", and "cos(alpha)" as one.
std::string_view name_at(std::string_view text, std::size_t at) {
    std::size_t end = at;
    while (end < text.size() && in_name(text[end]))
        ++end;
    if (text.substr(at, end - at) == "cos") end = text.find(')', end) + 1;
    return text.substr(at, end - at);
}

bool is_function(std::string_view name) {
    return std::find(std::begin(FUNCTIONS), std::end(FUNCTIONS), name) != std::end(FUNCTIONS);
}

// ---- the value -------------------------------------------------------------------------------------

class Evaluation {
  public:
    Evaluation(std::string_view formula_text, const Symbols& known)
        : text(formula_text), symbols(known) {}

    float value() {
        const float result = sum();
        skip();
        if (at < text.size()) throw std::logic_error("formula: " + std::string(text));
        return result;
    }
    std::vector<Symbol> used; // in the order of the text

  private:
    std::string_view text;
    const Symbols& symbols;
    std::size_t at = 0;

    void skip() {
        while (at < text.size() && text[at] == ' ')
            ++at;
    }
    bool take(char c) {
        skip();
        if (at >= text.size() || text[at] != c) return false;
        ++at;
        return true;
    }

    float sum() {
        float left = product();
        for (;;) {
            if (take('+')) {
                left = left + product();
            } else if (take('-')) {
                left = left - product();
            } else {
                return left;
            }
        }
    }
    float product() {
        float left = factor();
        for (;;) {
            if (take('*')) {
                left = left * factor();
            } else if (take('/')) {
                left = left / factor();
            } else {
                return left;
            }
        }
    }
    float factor() {
        if (take('-')) return -factor();
        const float base = primary();
        return take(SQUARED) ? base * base : base;
    }
    float closed() {
        const float inner = sum();
        if (!take(')')) throw std::logic_error("formula: " + std::string(text));
        return inner;
    }
    float primary() {
        if (take('(')) return closed();
        skip();
        if (at < text.size() && is_letter(text[at])) {
            const std::string_view name = name_at(text, at);
            at += name.size();
            if (is_function(name)) return function(name);
            used.push_back(symbols.find(name));
            return used.back().value;
        }
        std::size_t end = at;
        while (end < text.size() && (is_digit(text[end]) || text[end] == '.'))
            ++end;
        const float number = std::stof(std::string(text.substr(at, end - at)));
        at = end;
        return number;
    }
    float function(std::string_view name) {
        if (!take('(')) throw std::logic_error("formula: " + std::string(text));
        float x = sum();
        while (take(',')) {
            const float y = sum();
            if (name == "max" ? x < y : y < x) x = y;
        }
        if (!take(')')) throw std::logic_error("formula: " + std::string(text));
        if (name == "ln") return log(x);
        if (name == "exp") return exp(x);
        return name == "sqrt" ? std::sqrt(x) : x;
    }
};

// ---- the number line -------------------------------------------------------------------------------

char decimals_of_kind(int kind) {
    switch (kind) {
    case TARVANE_AS_STRESS:
        return '2';
    case TARVANE_AS_PRESSURE:
        return '3';
    default:
        return '4';
    }
}

int shown_kind(int kind, int result, bool stress_unit_differs) {
    const bool pressure = kind == TARVANE_AS_PRESSURE || kind == TARVANE_AS_STRESS;
    if (kind == TARVANE_AS_DIAMETER) return TARVANE_AS_THICKNESS;
    if (!pressure || !stress_unit_differs) return kind;
    return result == TARVANE_AS_STRESS ? TARVANE_AS_STRESS : TARVANE_AS_PRESSURE;
}

// Where a text of too many values is broken: before the division that stands outside all brackets, or
// else before the last product.
std::size_t place_to_break(std::string_view text) {
    std::size_t division = text.size(), product = text.size();
    int depth = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '(') ++depth;
        if (text[i] == ')') --depth;
        if (depth != 0) continue;
        if (text[i] == '/') division = i;
        if (text[i] == '*') product = i;
    }
    return division < text.size() ? division : product;
}

// The text from `from` to `to`, with each symbol as "@n".
NumberLine line_of(const Formula& formula, std::size_t from, std::size_t to, std::size_t& next,
                   bool stress_unit_differs) {
    NumberLine line;
    const std::string_view text = formula.text;
    for (std::size_t i = from; i < to;) {
        if (!is_letter(text[i])) {
            line.text += text[i++];
            continue;
        }
        const std::string_view name = name_at(text, i);
        i += name.size();
        if (is_function(name)) {
            line.text += name;
            continue;
        }
        const Symbol& symbol = formula.values[next++];
        line.text += {'@', decimals_of_kind(symbol.kind)};
        line.values.push_back(symbol.value);
        line.kinds.push_back(shown_kind(symbol.kind, formula.kind, stress_unit_differs));
    }
    return line;
}

} // namespace

Formula formula(std::string_view title, std::string_view text, std::string_view rule, int kind,
                const Symbols& symbols) {
    Evaluation evaluation(text, symbols);
    const float value = evaluation.value();
    return {std::string(title),        std::string(text), std::string(rule), kind, value,
            std::move(evaluation.used)};
}

void rename_symbol(Formula& formula, std::string_view from, std::string_view to) {
    for (std::size_t at = 0; at < formula.text.size();) {
        const std::string_view name = name_at(formula.text, at);
        const std::size_t width = std::max(name.size(), std::size_t{1});
        if (name != from) {
            at += width;
            continue;
        }
        formula.text.replace(at, width, to);
        at += to.size();
    }
    for (Symbol& symbol : formula.values) {
        if (symbol.name == from) symbol.name = to;
    }
}

std::vector<NumberLine> number_lines(const Formula& formula, bool stress_unit_differs) {
    const std::size_t whole = formula.text.size();
    const std::size_t middle =
        formula.values.size() > MOST_VALUES ? place_to_break(formula.text) : whole;
    std::size_t next = 0;
    std::vector<NumberLine> lines{line_of(formula, 0, middle, next, stress_unit_differs)};
    lines[0].text = " = " + lines[0].text;
    if (middle < whole) {
        lines.push_back(line_of(formula, middle, whole, next, stress_unit_differs));
        lines[1].text = "   " + lines[1].text;
    }
    return lines;
}

} // namespace tarvane::app
