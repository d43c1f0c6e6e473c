#include "report/renderer.h"

#include "report/channel.h"
#include "report/text_edit.h"

#include <cstring>

namespace tarvane {

// Reserved for a mode by significant digits; whatever it holds, numbers keep their decimal places.
Int G_NSIGDIGITS = 0;

namespace {

constexpr Int TEMPLATE_WIDTH = 120;
constexpr Int FIELD_WIDTH = 10;
constexpr Int VALUES = 6;

constexpr Real NO_DECIMALS_ABOVE = 500000.0f;
constexpr Real EXPONENT_ABOVE = 1.0E+8f;
constexpr Real SMALL_ABOVE = 1.0E-6f;
constexpr Real EXPONENT_BELOW = 0.0001f; // of the six-decimal form

// ---- one number ---------------------------------------------------------------------------------

struct Field {
    Text<FIELD_WIDTH> text;
    bool failed = false; // the number needs more than ten columns
};

void put_left(Field& field, std::string_view number) {
    if (static_cast<Int>(number.size()) > FIELD_WIDTH) {
        field.failed = true;
        return;
    }
    field.text = number;
}

// Text such as 12.000, 3.9996 or 3.0999: the house prints it with one decimal.
bool nearly_whole(std::string_view field) {
    static constexpr std::string_view PATTERNS[] = {".999",   ".00 ",   ".000 ",
                                                    ".0000 ", ".0001 ", ".0999 "};
    const std::size_t point = field.find('.');
    if (point == std::string_view::npos) return false;
    const std::string_view decimals = field.substr(point);
    if (decimals.size() < 2 || (decimals[1] != '0' && decimals[1] != '9')) return false;
    for (const std::string_view pattern : PATTERNS) {
        if (decimals.starts_with(pattern)) return true;
    }
    return false;
}

void general_number(Field& field, Real v, char c) {
    if (v > NO_DECIMALS_ABOVE) c = '0';
    if (v > EXPONENT_ABOVE || v < -EXPONENT_ABOVE) {
        put_left(field, exponent_number(v, 10, 5).view());
    } else if (c == '0') {
        put_left(field, bare_number(v, 0).view());
    } else if (c >= '1' && c <= '7') {
        put_left(field, bare_number(v, c - '0').view());
    } else if (c == '8') {
        put_left(field, exponent_number(v, 10, 3).view());
    }
    if (!field.failed && nearly_whole(field.text.view())) {
        field.text = left_justified(fixed_number(v, 10, 1).view());
    }
}

void small_number(Field& field, Real v, char c) {
    switch (c) {
    case '0':
    case '1':
        put_left(field, fixed_number(v, 4, 1).view());
        break;
    case '2':
        put_left(field, fixed_number(v, 5, 2).view());
        break;
    case '3':
        put_left(field, fixed_number(v, 6, 3).view());
        break;
    case '4':
        put_left(field, fixed_number(v, 7, 4).view());
        break;
    case '5':
        put_left(field, fixed_number(v, 8, 5).view());
        break;
    case '6':
        if (v <= EXPONENT_BELOW) {
            put_left(field, exponent_number(v, 9, 3).view());
            break;
        }
        [[fallthrough]];
    default:
        put_left(field, fixed_number(v, 9, 6).view());
        break;
    }
}

Field number_field(Real v, char c) {
    Field field;
    if (v >= 1.0f || v <= SMALL_ABOVE) {
        general_number(field, v, c);
    } else {
        small_number(field, v, c); // a not-a-number too
    }
    if (field.failed || field.text(1) == '*') { // asterisks fill the field or are not there
        field.text = exponent_number(v, 10, 1).view();
    }
    return field;
}

// 25.500 becomes 25.5. One zero directly after the point blocks it, so that 12.0 stays.
void drop_trailing_zeros(char* field, Int columns) {
    bool point = false, zeros = false;
    for (Int i = 0; i < columns; ++i) {
        if (field[i] == 'E') return;
        if (field[i] == '.') point = true;
        if (field[i] != '0' || i + 1 == columns || field[i + 1] != ' ') continue;
        if (i > 0 && field[i - 1] == '.') return;
        zeros = true;
    }
    if (!point || !zeros) return;
    for (Int i = columns - 1; i > 0; --i) {
        if (field[i] == ' ' && field[i - 1] == '0') field[i - 1] = ' ';
    }
}

// ---- cleaning -----------------------------------------------------------------------------------

// A blank before one of these is taken out.
bool closes_up(char c) {
    switch (c) {
    case '\xB2':
    case '\xB3':
    case '\xBD':
    case '^':
    case ',':
    case '/':
        return true;
    default:
        return false;
    }
}

// Takes out each run of blanks before a character that closes up, or after a slash.
void close_up_blanks(char* text, Int last) {
    Int to = 0;
    for (Int from = 0; from < last; ++from) {
        const char c = text[from];
        if (c == ' ' && to > 0 && text[to - 1] == '/') continue;
        if (closes_up(c)) {
            while (to > 0 && text[to - 1] == ' ')
                --to;
        }
        text[to++] = c;
    }
    fill_blank(text + to, last - to);
}

// ---- zeros before the point ---------------------------------------------------------------------

// Column where `lead` followed by a point first begins, or 0.
Int find_point_behind(const char* text, Int len, std::string_view lead) {
    const Int width = static_cast<Int>(lead.size());
    for (Int from = 0; from < len;) {
        const Int point = find_character(text + from, len - from, '.');
        if (point == 0) return 0;
        const Int before = from + point - 1; // characters before the point
        Int matched = 0;                     // from the point backwards
        while (matched < width && matched < before &&
               text[before - 1 - matched] == lead[static_cast<std::size_t>(width - 1 - matched)]) {
            ++matched;
        }
        if (matched == width) return before - width + 1;
        from += point;
    }
    return 0;
}

constexpr Int REPAIRS = 5;

// Room before the point takes the zero without moving anything.
void repair_bare_points(char* text, Int len) {
    const auto point_at = [&](Int column) { return column <= len && text[column - 1] == '.'; };
    for (Int round = 0; round < REPAIRS; ++round) {
        const Int narrow = find_point_behind(text, len, " ");
        if (narrow == 0) return;
        const Int wide = find_point_behind(text, len, "   ");
        if (wide != 0 && !point_at(wide + 4)) {
            put_column(text, wide + 2, '0');
        } else if (!point_at(narrow + 2)) {
            move_right(text, len, narrow + 1, 1);
            put_column(text, narrow + 1, '0');
        } else {
            return; // two points: this round and those after it change nothing
        }
    }
}

void repair_negative_points(char* text, Int len) {
    for (Int round = 0; round < REPAIRS; ++round) {
        const Int narrow = find_point_behind(text, len, "-");
        if (narrow == 0) return;
        const Int wide = find_point_behind(text, len, "  -");
        if (wide != 0) {
            put_column(text, wide + 1, '-');
            put_column(text, wide + 2, '0');
        } else {
            move_right(text, len, narrow + 1, 1);
            put_column(text, narrow + 1, '0');
        }
    }
}

Int first_column(const char* text, Int len) {
    Int column = 1;
    while (column <= len && text[column - 1] == ' ')
        ++column;
    return column;
}

// ---- plain characters ---------------------------------------------------------------------------

// A superscript becomes "^(2)" where the line has room, and the bare digit where it has none.
void expand_superscript(char* text, Int n, char superscript, char digit) {
    for (Int p = find_character(text, n, superscript); p != 0;
         p = find_character(text, n, superscript)) {
        if (find_character(text, n, '|') != 0 || last_column(text, n) >= n - 3 || p >= n - 3) {
            text[p - 1] = digit;
            continue;
        }
        const bool moved = !blank_columns(text, n, p + 1, p + 3);
        if (moved) move_right(text, n, p, 3);
        const char power[] = {'^', '(', digit, ')'};
        std::memcpy(text + p - 1, power, sizeof power);
        if (moved && blank_columns(text, n, p + 6, p + 10)) {
            move_left(text, n, p + 6, 3); // what is further right keeps its place
        }
    }
}

void expand_half(char* text, Int n) {
    for (Int p = find_character(text, n, '\xBD'); p != 0; p = find_character(text, n, '\xBD')) {
        if (p == n) {
            text[p - 1] = ' ';
        } else if (p < n - 3) {
            move_right(text, n, p, 3);
            std::memcpy(text + p - 1, "^(.5)", 5); // over the character after the half, too
        } else {
            return; // no room: it stays
        }
    }
}

} // namespace

void FILL_TEMPLATE(Text<120>& text, Real V1, Real V2, Real V3, Real V4, Real V5, Real V6) {
    if (IWRITE == 0 || IWRTFL == 0) return;

    const Real values[VALUES] = {V1, V2, V3, V4, V5, V6};
    Text<TEMPLATE_WIDTH> line;
    Int in = 1, out = 1, value = 0;

    const Int last = last_column(text.data(), TEMPLATE_WIDTH);
    if (last < TEMPLATE_WIDTH) text(last + 1) = '#';

    while (in <= TEMPLATE_WIDTH && out <= TEMPLATE_WIDTH && text(in) != '#') {
        if (text(in) != '@') {
            line(out++) = text(in++);
            continue;
        }
        if (value == VALUES) {
            line.put(out, text.columns(in, TEMPLATE_WIDTH));
            break;
        }
        ++in;
        const char digit = in <= TEMPLATE_WIDTH ? text(in) : ' ';
        ++in;
        line.put(out, number_field(values[value++], digit).text.view());
        const Int columns = min(FIELD_WIDTH + 1, TEMPLATE_WIDTH - out + 1);
        drop_trailing_zeros(&line(out), columns);
        // the number is followed directly by what the template has next
        out = last_column(line.data(), out + columns - 1) + 1;
    }
    text = line;
    CLEAN_TEMPLATE(text.data(), TEMPLATE_WIDTH);
    TIDY_NUMBERS(text.data(), TEMPLATE_WIDTH);
}

void CLEAN_TEMPLATE(char* text, Int len) {
    Int last = last_column(text, len);
    if (last == 0) return;
    close_up_blanks(text, last);
    last = last_column(text, last);
    if (text[last - 1] == '/' && last < len) return;
    if (text[0] == '/') move_right(text, len, 1, 3);
}

void TIDY_NUMBERS(char* text, Int len) {
    if (len <= 2 || find_character(text, len, '.') == 0) return;
    const Int first = first_column(text, len);
    repair_bare_points(text, len);
    repair_negative_points(text, len);
    const Int now = first_column(text, len);
    if (first > now) move_right(text, len, 1, first - now);
    REPLACE_DECIMALS_WITH_COMMAS(text, len);
}

void REPLACE_DECIMALS_WITH_COMMAS(char* text, Int len) {
    if (!DECIMAL_COMMA) return;
    const auto is_digit = [&](Int i) { return text[i] >= '0' && text[i] <= '9'; };
    for (Int i = 0; i + 1 < len; ++i) {
        if (text[i] == '.' && is_digit(i + 1) && (i == 0 || is_digit(i - 1))) text[i] = ',';
    }
}

void EXPAND_SPECIAL_CHARS(char* text, Int len) {
    const Int n = not_negative(len);
    expand_superscript(text, n, '\xB2', '2');
    expand_superscript(text, n, '\xB3', '3');
    expand_half(text, n);
    for (Int i = 0; i < n; ++i) {
        switch (text[i]) {
        case '\xA9':
            text[i] = 'c';
            break;
        case '\xB0':
            text[i] = ' ';
            break;
        case '\xF8':
            text[i] = 'p';
            break;
        default:
            break;
        }
    }
}

} // namespace tarvane
