#include "shell/trace.h"

namespace tarvane {

namespace {

constexpr Int VALUES_OF_A_LINE = 6;
constexpr std::string_view FUNCTIONS[] = {"ln", "exp", "sqrt", "max", "min"};

bool is_letter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }
bool in_name(char c) { return is_letter(c) || (c >= '0' && c <= '9'); }

// The name that begins at `at`: "tc", "ln", and "cos(alpha)" as one.
std::string_view name_at(std::string_view text, std::size_t at) {
    std::size_t end = at;
    while (end < text.size() && in_name(text[end]))
        ++end;
    if (text.substr(at, end - at) == "cos") end = text.find(')', end) + 1;
    return text.substr(at, end - at);
}

bool is_function(std::string_view name) {
    for (const std::string_view function : FUNCTIONS)
        if (name == function) return true;
    return false;
}

// The value given last counts.
TRACE_SYMBOL_VALUE symbol_of(const TRACE& trace, std::string_view name) {
    for (Int i = trace.symbols - 1; i >= 0; --i)
        if (trace.symbol[i].name == name) return trace.symbol[i];
    return {name, name, NO_VALUE, Kind::factor};
}

// ---- the number line ---------------------------------------------------------------------------------

char decimals_of(Kind kind) {
    if (kind == Kind::stress) return '2';
    return kind == Kind::pressure ? '3' : '4';
}

bool stress_unit_differs() { return UNITS.pressure != UNITS.stress; }

Real shown_value(const TRACE_SYMBOL_VALUE& symbol, Kind result) {
    if (symbol.kind == Kind::diameter) return as_thickness(symbol.value);
    const bool pressure = symbol.kind == Kind::pressure || symbol.kind == Kind::stress;
    if (!pressure || !stress_unit_differs()) return shown(symbol.value, symbol.kind);
    return result == Kind::stress ? as_stress(symbol.value) : as_pressure(symbol.value);
}

// Where a text of too many values is broken: before the division outside all brackets, or else before
// the last product.
std::size_t place_to_break(std::string_view text) {
    std::size_t division = text.size(), product = text.size();
    Int depth = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '(') ++depth;
        if (text[i] == ')') --depth;
        if (depth != 0) continue;
        if (text[i] == '/') division = i;
        if (text[i] == '*') product = i;
    }
    return division < text.size() ? division : product;
}

// The text from `from` to `to` with "@n" for each symbol, the first of which is values[next].
void number_line(const TRACE_FORMULA_VALUE& f, std::size_t from, std::size_t to, Int& next,
                 std::string_view margin, Int mode) {
    const std::string_view text = f.text.trimmed();
    Real values[VALUES_OF_A_LINE] = {};
    Int count = 0;
    LinePieces line;
    line.text(margin);
    for (std::size_t i = from; i < to;) {
        if (!is_letter(text[i])) {
            line.text(text.substr(i++, 1));
            continue;
        }
        const std::string_view name = name_at(text, i);
        i += name.size();
        if (is_function(name)) {
            line.text(name);
            continue;
        }
        const TRACE_SYMBOL_VALUE& symbol = f.values[next++];
        const char decimals = decimals_of(symbol.kind);
        line.text("@").text({&decimals, 1});
        if (count < VALUES_OF_A_LINE) values[count++] = shown_value(symbol, f.kind);
    }
    NUMBER_LINE(line.view(), {values[0], values[1], values[2], values[3], values[4], values[5]},
                mode);
}

void write_formula(const TRACE_FORMULA_VALUE& f) {
    constexpr Int KEEP_MARGIN = 4; // of a line that goes on
    const std::string_view text = f.text.trimmed();
    HEADING(f.title);
    LinePieces symbols;
    symbols.text(" = ").text(text);
    if (!f.rule.empty()) symbols.text(" per ").text(f.rule);
    symbols.write();
    const std::size_t middle = f.count > VALUES_OF_A_LINE ? place_to_break(text) : text.size();
    Int next = 0;
    number_line(f, 0, middle, next, " = ", 1);
    if (middle < text.size()) number_line(f, middle, text.size(), next, "   ", KEEP_MARGIN);
    VALUE_LINE(f.value, f.kind);
}

} // namespace

// ---- recording ---------------------------------------------------------------------------------------

void BEGIN_TRACE(TRACE& trace, Int gate, std::string_view pressure_name) {
    trace.gate = gate;
    trace.pressure_name = pressure_name;
    trace.symbols = trace.columns = trace.formulas = 0;
}

void TRACE_SYMBOL(TRACE& trace, std::string_view name, Real value, Kind kind,
                  std::string_view shown) {
    if (trace.symbols == TRACE::MOST_SYMBOLS) return;
    trace.symbol[trace.symbols++] = {name, shown.empty() ? name : shown, value, kind};
}

void TRACE_COLUMN(TRACE& trace, std::string_view label, std::string_view name,
                  std::string_view expression, Real value, Kind kind) {
    TRACE_SYMBOL(trace, name, value, kind);
    if (trace.columns == TRACE::MOST_COLUMNS) return;
    trace.column[trace.columns++] = {label, name, expression, value, kind};
}

void TRACE_FORMULA(TRACE& trace, TRACE_GROUP group, std::string_view title, std::string_view text,
                   std::string_view rule, Kind kind, Real value) {
    if (trace.formulas == TRACE::MOST_FORMULAS) return;
    TRACE_FORMULA_VALUE& f = trace.formula[trace.formulas++];
    f.group = group;
    f.title = title;
    f.rule = rule;
    f.kind = kind;
    f.value = value;
    f.count = 0;
    f.text = "";
    Int column = 1;
    const auto put = [&](std::string_view piece) {
        f.text.put(column, piece);
        column += static_cast<Int>(piece.size());
    };
    for (std::size_t i = 0; i < text.size();) {
        const std::string_view name = is_letter(text[i]) ? name_at(text, i) : text.substr(i, 1);
        i += name.size();
        if (!is_letter(name[0]) || is_function(name)) {
            put(name);
            continue;
        }
        const TRACE_SYMBOL_VALUE symbol = symbol_of(trace, name);
        put(symbol.shown);
        if (f.count < TRACE_FORMULA_VALUE::MOST_VALUES) f.values[f.count++] = symbol;
    }
}

void TRACE_FACTOR(TRACE& trace, std::string_view title, std::string_view name,
                  std::string_view text, std::string_view rule, Real value, Kind kind) {
    TRACE_FORMULA(trace, TRACE_GROUP::factor, title, text, rule, kind, value);
    TRACE_SYMBOL(trace, name, value, kind);
}

// ---- lines -------------------------------------------------------------------------------------------

void WRITE_TRACED(const TRACE& trace, TRACE_GROUP group) {
    for (Int i = 0; i < trace.formulas; ++i)
        if (trace.formula[i].group == group) write_formula(trace.formula[i]);
}

void WRITE_TRACED_COLUMNS(const TRACE& trace) {
    constexpr Int EXPRESSION_SYMBOL_ENDS = 27, SYMBOL_ENDS = 44;
    for (Int i = 0; i < trace.columns; ++i) {
        const TRACE_COLUMN_VALUE& value = trace.column[i];
        const auto name = static_cast<Int>(value.name.size());
        const auto label = static_cast<Int>(value.label.size());
        const Int ends = value.expression.empty() ? SYMBOL_ENDS : EXPRESSION_SYMBOL_ENDS;
        LinePieces line;
        line.padded(value.label, max(ends - name, label)).text(value.name);
        if (!value.expression.empty()) line.text(" = ").text(value.expression);
        COLUMN_LINE(line.view(), value.value, value.kind);
    }
    if (stress_unit_differs()) {
        TEXT_LINE("Note: in the formulas stresses and pressures both stand in the unit of the "
                  "result.",
                  NOTE_STYLE);
    }
}

} // namespace tarvane
