#include "report/lines.h"

#include "report/renderer.h"
#include "report/text_edit.h"

#include <algorithm>

namespace tarvane {
namespace {

constexpr Int VALUE_END = 60; // last column of a column line's value
constexpr Int NARROWEST_VALUE = 10;

struct KindForm {
    Int column_decimals, value_decimals;
};

constexpr KindForm form(Kind kind) {
    switch (kind) {
    case Kind::thickness:
        return {4, 4};
    case Kind::diameter:
        return {3, 4};
    case Kind::pressure:
        return {2, 3};
    case Kind::stress:
        return {2, 2};
    case Kind::force:
        return {2, 3};
    case Kind::moment:
        return {2, 3};
    case Kind::area:
        return {3, 3};
    case Kind::weight:
        return {2, 3};
    case Kind::factor:
        break;
    }
    return {3, 4};
}

void set_style(const Style& style) {
    if (style != PLAIN) {
        SET_LINE_STYLE(style.m1, style.m2, style.m3, style.m4, style.m5, style.m6);
    }
}

// OUTLINE, for a text to be put into it.
Text<100>& begun_line() {
    LINE_BEGUN = true;
    return OUTLINE;
}

void write_outline(const Style& style) {
    set_style(style);
    WRITE_LINE(OUTLINE.data(), OUTLINE.width());
}

} // namespace

Real shown(Real value, Kind kind) {
    switch (kind) {
    case Kind::thickness:
        return as_thickness(value);
    case Kind::diameter:
        return as_diameter(value);
    case Kind::pressure:
        return as_pressure(value);
    case Kind::stress:
        return as_stress(value);
    case Kind::force:
        return as_force(value);
    case Kind::moment:
        return as_moment(value);
    case Kind::area:
        return as_area(value);
    case Kind::weight:
        return as_weight(value);
    case Kind::factor:
        break;
    }
    return value;
}

std::string_view unit_label(Kind kind) {
    switch (kind) {
    case Kind::thickness:
        return UNITS.thickness_label.trimmed();
    case Kind::diameter:
        return UNITS.diameter_label.trimmed();
    case Kind::pressure:
        return UNITS.pressure_label.trimmed();
    case Kind::stress:
        return UNITS.stress_label.trimmed();
    case Kind::force:
        return UNITS.force_label.trimmed();
    case Kind::moment:
        return UNITS.moment_label.trimmed();
    case Kind::area:
        return UNITS.area_label.trimmed();
    case Kind::weight:
        return UNITS.weight_label.trimmed();
    case Kind::factor:
        break;
    }
    return {};
}

void WRITE_TEXT(std::string_view text, const Style& style) {
    begun_line() = text;
    write_outline(style);
}

void WRITE_UNDERLINED_TEXT(std::string_view text, const Style& style) {
    begun_line() = text;
    set_style(style);
    WRITE_UNDERLINED(OUTLINE.data(), OUTLINE.width());
}

void WRITE_COLUMN(std::string_view label, Real value, Kind kind, const Style& style, Int decimals) {
    if (decimals == HOUSE_DECIMALS) decimals = form(kind).column_decimals;
    WRITE_COLUMN_IN(label, shown(value, kind), decimals, unit_label(kind), style);
}

void WRITE_VALUE(Real value, Kind kind, std::string_view remark, const Style& style, Int decimals) {
    if (decimals == HOUSE_DECIMALS) decimals = form(kind).value_decimals;
    WRITE_VALUE_IN(shown(value, kind), decimals, unit_label(kind), remark, style);
}

void WRITE_COLUMN_IN(std::string_view label, Real value, Int decimals, std::string_view unit,
                     const Style& style) {
    LinePieces line;
    line.text(label);
    const Int left = VALUE_END - static_cast<Int>(line.view().size());
    line.fixed(value, max(left, NARROWEST_VALUE), decimals).blanks(2).text(trimmed(unit));
    line.write(style);
}

void WRITE_VALUE_IN(Real value, Int decimals, std::string_view unit, std::string_view remark,
                    const Style& style) {
    LinePieces line;
    line.text(" = ").bare(value, decimals);
    unit = trimmed(unit);
    if (!unit.empty()) line.blanks(1).text(unit);
    if (!remark.starts_with(',')) line.blanks(2);
    line.text(remark).write(style);
}

void WRITE_NUMBERS(std::string_view text, std::initializer_list<Real> values, Int mode,
                   std::string_view unit, const Style& style) {
    unit = trimmed(unit);
    if (unit.empty()) {
        TEMPLATE = text;
    } else {
        LinePieces with_unit;
        with_unit.text(trimmed(text.substr(0, text.find('#')))).blanks(1).text(unit);
        TEMPLATE = with_unit.view();
    }
    Real v[6] = {};
    std::copy_n(values.begin(), std::min<std::size_t>(values.size(), 6), v);
    FILL_TEMPLATE(TEMPLATE, v[0], v[1], v[2], v[3], v[4], v[5]);
    Text<100>& line = begun_line();
    FIT_TO_LINE(TEMPLATE.data(), TEMPLATE.width(), line.data(), line.width(), mode);
    write_outline(style);
}

void LinePieces::put(std::string_view piece) {
    line.put(cursor + 1, piece);
    cursor +=
        static_cast<Int>(std::min(piece.size(), static_cast<std::size_t>(line.width() - cursor)));
}

void LinePieces::put_blanks(Int count) {
    cursor += min(not_negative(count), line.width() - cursor); // nothing comes after the cursor
}

void LinePieces::put_padded(std::string_view piece, Int width) {
    const Int end = min(not_negative(width), line.width() - cursor) + cursor;
    put(piece.substr(0, static_cast<std::size_t>(end - cursor)));
    put_blanks(end - cursor);
}

void LinePieces::put_to_column(Int column) {
    const Int before = max(min(column, line.width() + 1), 1) - 1;
    if (before < cursor) fill_blank(&line(before + 1), cursor - before);
    cursor = before;
}

} // namespace tarvane
