#include "report/channel.h"

#include "host/file_units.h"
#include "report/renderer.h"
#include "report/text_edit.h"

#include <algorithm>
#include <cstring>

namespace tarvane {

Int IWRITE = 0, IOUT = 0, IWRTFL = 0;
Int IOSTEP = 0, IWRTCA = 0;

Text<100> OUTLINE;
Text<120> TEMPLATE;

char LINESCOM[STORE_RECORDS][STORE_WIDTH];
Int LINE_COUNT = 0;
bool LINE_STORE_GIVEN = false;

bool STYLE_ENABLED = false;
bool DECIMAL_COMMA = false;

Int WRITE_STATUS = 0;

bool LINE_BEGUN = false;
Int SPECIAL_LATCH = 0;

namespace {

constexpr Int LINE_WIDTH = 100;
constexpr Int MARKS = 6;
constexpr Int MARKS_WIDTH = 2 * MARKS;
constexpr Int STORE_INDENT = 4;
constexpr Int BLANKED_AT_ENTRY = 500; // record that FLANGE_CALC blanks

Style marks = PLAIN;
bool underline = false;

Int records_used = STORE_RECORDS; // since the store was blank

void blank_store() {
    const Int records = LINE_STORE_GIVEN ? STORE_RECORDS : records_used;
    std::memset(LINESCOM, ' ', static_cast<std::size_t>(records) * STORE_WIDTH);
    records_used = 0;
}
[[maybe_unused]] const bool blank_at_load = (blank_store(), true);

void clear_style() {
    marks = PLAIN;
    underline = false;
}

bool marks_sum_to_zero() {
    std::uint32_t sum = 0;
    for (const Int mark : {marks.m1, marks.m2, marks.m3, marks.m4, marks.m5, marks.m6}) {
        sum += static_cast<std::uint32_t>(mark);
    }
    return sum == 0;
}

void put_marks(char* columns) {
    for (const Int mark : {marks.m1, marks.m2, marks.m3, marks.m4, marks.m5, marks.m6}) {
        if (mark >= 0 && mark <= 9) {
            columns[0] = ' ';
            columns[1] = static_cast<char>('0' + mark);
        } else {
            std::memcpy(columns, whole_number(mark, 2).chars, 2);
        }
        columns += 2;
    }
}

void store_line(const char* text, Int n) {
    if (LINE_COUNT < STORE_RECORDS) ++LINE_COUNT; // a full store keeps the latest line
    records_used = max(records_used, LINE_COUNT);
    char* const record = LINESCOM[LINE_COUNT - 1];
    fill_blank(record, STORE_WIDTH);
    char* to = record + STORE_INDENT;
    copy_text(to, text, n);
    put_marks(to + n);
    to[n + MARKS_WIDTH] = '\0';
    TIDY_NUMBERS(record, STORE_WIDTH);
}

// One text record of the report file, in one write.
bool write_record(const char* text, Int n, bool with_marks) {
    char record[1 + LINE_WIDTH + MARKS_WIDTH + 1];
    Int size = 0;
    record[size++] = ' ';
    copy_text(record + size, text, n);
    size += n;
    if (with_marks) {
        put_marks(record + size);
        size += MARKS_WIDTH;
    }
    record[size++] = '\n';
    const bool written = write_to_unit(IOUT, record, size);
    WRITE_STATUS = written ? 0 : 1;
    return written;
}

void write_rule(Int length, Int n) {
    Text<LINE_WIDTH> rule;
    std::fill_n(rule.data(), min(length, n), '-');
    write_record(rule.data(), n, false);
}

void write_line_to_unit(char* text, Int len, Int n) {
    TIDY_NUMBERS(text, len);
    if (!marks_sum_to_zero()) {
        if (write_record(text, n, true)) marks = PLAIN;
    } else if (write_record(text, n, false) && underline) {
        write_rule(last_column(text, len), n);
        underline = false;
    }
}

} // namespace

void WRITE_LINE(char* text, Int len) {
    len = not_negative(len);
    if (!reporting()) {
        fill_blank(text, len);
        clear_style();
        return;
    }
    const Int n = min(len, LINE_WIDTH);
    if (SPECIAL_LATCH == 1) EXPAND_SPECIAL_CHARS(text, len);
    if (IWRITE == 1 && IWRTFL == 1 && IOUT < 0) {
        store_line(text, n);
        clear_style();
    } else {
        write_line_to_unit(text, len, n);
    }
    fill_blank(text, len);
}

bool WRITE_RECORD_AS_IT_STANDS(const char* text, Int len) {
    return write_to_unit(IOUT, text, len) && write_to_unit(IOUT, "\n", 1);
}

void WRITE_BLANK_LINE(char* text, Int len) {
    fill_blank(text, len);
    WRITE_LINE(text, len);
}

void WRITE_UNDERLINED(char* text, Int len) {
    const Int length = last_column(text, len);
    WRITE_LINE(text, len);
    std::fill_n(text, length, '-');
    WRITE_LINE(text, len);
}

void SET_LINE_STYLE(Int m1, Int m2, Int m3, Int m4, Int m5, Int m6) {
    SPECIAL_LATCH = FLAGS_mp_IINOSPECIAL;
    LINE_BEGUN = true;
    if (STYLE_ENABLED) {
        marks = {m1, m2, m3, m4, m5, m6};
        return;
    }
    marks = PLAIN;
    if (m2 != 0) underline = true;
}

void DROP_LINE() {
    clear_style();
    OUTLINE.clear();
    LINE_BEGUN = false;
}

void FIT_TO_LINE(char* source, Int source_len, char* target, Int target_len, Int mode) {
    source_len = not_negative(source_len);
    target_len = not_negative(target_len);
    const Int last = last_column(source, source_len);
    if (mode < 3) {
        // each run of blanks becomes one
        Int to = 0;
        for (Int from = 0; from < last; ++from) {
            if (source[from] == ' ' && to > 0 && source[to - 1] == ' ') continue;
            source[to++] = source[from];
        }
        fill_blank(source + to, last - to);
        const Int kept = min(to, target_len);
        copy_text(target, source, kept);
        fill_blank(target + kept, target_len - kept);
        return;
    }
    fill_blank(target, target_len);
    const Int end = min(last + 1, source_len);
    Int to = 1;
    for (Int from = 1; from < end && to < target_len; ++from) {
        put_column(target, to, source[from - 1]);
        if (from <= mode || source[from - 1] != ' ' || source[from] != ' ') ++to;
    }
}

void NUL_TO_BLANK(char* text, Int len) { std::replace(text, text + not_negative(len), '\0', ' '); }

void TO_UPPER(char* text, Int len) {
    for (Int i = 0; i < len; ++i) {
        if (text[i] >= 'a' && text[i] <= 'z') text[i] = static_cast<char>(text[i] - 'a' + 'A');
    }
}

void OPEN_LINE_STORE() {
    STYLE_ENABLED = true;
    LINE_COUNT = 0;
    fill_blank(LINESCOM[BLANKED_AT_ENTRY - 1], STORE_WIDTH);
}

void RESET_REPORT() {
    IWRITE = IOUT = IWRTFL = 0;
    IOSTEP = IWRTCA = 0;
    OUTLINE.clear();
    TEMPLATE.clear();
    blank_store();
    LINE_COUNT = 0;
    STYLE_ENABLED = false;
    DECIMAL_COMMA = false;
    G_NSIGDIGITS = 0;
    clear_style();
    SPECIAL_LATCH = 0;
    LINE_BEGUN = false;
    WRITE_STATUS = 0;
}

} // namespace tarvane
