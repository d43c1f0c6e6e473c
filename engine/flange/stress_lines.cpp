#include "flange/stresses.h"
#include "report/lines.h"
#include "report/renderer.h"

namespace tarvane {

namespace {

constexpr Int LAST_COLUMN = 78;
constexpr Int FIT_MODE = 4; // the first four columns keep their layout

std::string_view cut(std::string_view text) { return text.substr(0, LAST_COLUMN); }

void write_fitted(Text<120>& source) {
    Text<100> line;
    FIT_TO_LINE(source.data(), source.width(), line.data(), line.width(), FIT_MODE);
    TEXT_LINE(line.columns(1, LAST_COLUMN));
}

void write_filled(std::string_view text, std::initializer_list<Real> values) {
    Real V[6] = {};
    Int count = 0;
    for (const Real value : values)
        if (count < 6) V[count++] = value;
    Text<120> filled = text;
    FILL_TEMPLATE(filled, V[0], V[1], V[2], V[3], V[4], V[5]);
    write_fitted(filled);
}

} // namespace

Real moment_in_line(Real M) {
    const Real u = UNITS.moment;
    if (u >= 1.0f && u <= 1.001f) return M * u;
    return as_moment(M);
}

void WRITE_STRESS_LINES(std::string_view label, std::string_view symbol,
                        std::string_view template_text, std::initializer_list<Real> values,
                        std::string_view template2, std::initializer_list<Real> values2, Real value,
                        std::string_view remark) {
    HEADING(cut(label));
    if (!reporting()) return;
    TEXT_LINE(cut(symbol));
    write_filled(template_text, values);
    if (!template2.empty() && template2 != "NONE") write_filled(template2, values2);

    LinePieces line;
    line.text(" = ").bare(as_stress(value), 2).text(" ");
    line.padded(UNITS.stress_label.view(), UNITS.stress_label.width()).text(remark);
    Text<120> value_line = line.view();
    write_fitted(value_line);
}

void WRITE_STRESS_LINES(const STRESS_WORDS& words, bool namesOfEN,
                        std::initializer_list<Real> values, std::initializer_list<Real> values2,
                        Real value) {
    const bool labelEN = namesOfEN && !words.labelEN.empty();
    const bool symbolEN = namesOfEN && !words.symbolEN.empty();
    WRITE_STRESS_LINES(labelEN ? words.labelEN : words.label,
                       symbolEN ? words.symbolEN : words.symbol, words.template1, values,
                       words.template2, values2, value);
}

} // namespace tarvane
