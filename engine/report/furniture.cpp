#include "report/furniture.h"

#include "host/services.h"
#include "report/channel.h"
#include "report/lines.h"
#include "report/renderer.h"

namespace tarvane {

namespace {

constexpr std::string_view MONTHS[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                       "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

// Two columns; asterisks for what no clock shows. The leading zero of a number below 10 is a blank.
void put_two(char* columns, Int value, char leading) {
    const bool fits = value >= 0 && value <= 99;
    columns[0] = !fits ? '*' : value < 10 ? leading : static_cast<char>('0' + value / 10);
    columns[1] = !fits ? '*' : static_cast<char>('0' + value % 10);
}

bool RECORD(std::string_view text) {
    return WRITE_RECORD_AS_IT_STANDS(text.data(), static_cast<Int>(text.size()));
}

void blank_lines(Int count) {
    for (Int i = 0; i < count; ++i)
        BLANK_LINE();
}

} // namespace

void REPORT_DATE(Text<11>& date, Text<9>& time) {
    Int year = 0, month = 0, day = 0, hour = 0, minute = 0;
    HOST_CLOCK(year, month, day, hour, minute);

    date.clear();
    const bool one_digit = day >= 0 && day < 10;
    if (month >= 1 && month <= 12) date.put(one_digit ? 2 : 1, MONTHS[month - 1]);
    put_two(&date(5), day, ' ');
    date(7) = ',';
    date.put(8, whole_number(year, 4).view());

    time.clear();
    const bool afternoon = hour >= 12;
    put_two(&time(2), hour > 12 ? hour - 12 : hour, ' ');
    time(4) = ':';
    put_two(&time(5), minute, '0');
    time.put(7, afternoon ? "pm" : "am");
}

void WRITE_FRONT_PAGE(std::string_view title) {
    if (IWRITE == 0) return;
    Text<11> date;
    Text<9> time;
    REPORT_DATE(date, time);
    Text<51> contents("CTABL:");
    contents.put(13, time.columns(1, 8));
    contents.put(21, date.view());
    contents.put(34, "Table of Contents");
    if (!RECORD(contents.view())) return;
    BLANK_LINE();

    constexpr Int TITLE_WIDTH = 64;
    const Text<3 * TITLE_WIDTH> whole(title);
    for (Int first = 1; first <= whole.width(); first += TITLE_WIDTH) {
        Text<4 + TITLE_WIDTH> record("T");
        record.put(5, whole.columns(first, first + TITLE_WIDTH - 1));
        RECORD(record.view());
    }
    blank_lines(3);
    HEADING("Table of Contents ...");
    blank_lines(4);
    HEADING("    Table to be filled out during Print Time ! ");
    blank_lines(1);
}

void CLOSING_NOTE() {
    if (IWRITE == 0 || IWRTFL == 0) return;
    BLANK_LINE();
    LinePieces note;
    note.padded("TARVANE is a trademark of Kessendale Lab.", 60).padded("Version 7.0", 16);
    note.write(HEADING_STYLE);
}

} // namespace tarvane
