// The exported routines that write report lines for a host.
#include "frame/exports/exports.h"

#include "report/channel.h"
#include "report/furniture.h"
#include "report/keyed_text.h"
#include "report/lines.h"
#include "report/work_file.h"

using tarvane::give_text;
using tarvane::Int;
using tarvane::Kind;
using tarvane::Real;
using tarvane::text_of;

static_assert(static_cast<int>(Kind::thickness) == TARVANE_AS_THICKNESS);
static_assert(static_cast<int>(Kind::pressure) == TARVANE_AS_PRESSURE);
static_assert(static_cast<int>(Kind::stress) == TARVANE_AS_STRESS);
static_assert(static_cast<int>(Kind::factor) == TARVANE_AS_FACTOR);

namespace {

bool known(Int kind) { return kind >= TARVANE_AS_THICKNESS && kind <= TARVANE_AS_FACTOR; }

tarvane::Style style_of(const Int* marks) {
    return {marks[0], marks[1], marks[2], marks[3], marks[4], marks[5]};
}

} // namespace

extern "C" {

void TARVANE_CALL BEGIN_REPORT(void) { tarvane::OPEN_LINE_STORE(); }

void TARVANE_CALL WRITE_TEXT(const char* text, int32_t text_len, const int32_t* style) {
    tarvane::TEXT_LINE(text_of(text, text_len), style_of(style));
}

void TARVANE_CALL WRITE_HEADING(const char* text, int32_t text_len) {
    tarvane::HEADING(text_of(text, text_len));
}

void TARVANE_CALL WRITE_COLUMN(const char* label, int32_t label_len, const float* value,
                               const int32_t* kind, const int32_t* style) {
    if (!known(*kind)) return;
    tarvane::COLUMN_LINE(text_of(label, label_len), *value, static_cast<Kind>(*kind),
                         style_of(style));
}

void TARVANE_CALL WRITE_VALUE(const float* value, const int32_t* kind, const char* remark,
                              int32_t remark_len, const int32_t* style) {
    if (!known(*kind)) return;
    tarvane::VALUE_LINE(*value, static_cast<Kind>(*kind), text_of(remark, remark_len),
                        style_of(style));
}

void TARVANE_CALL WRITE_NUMBERS(const char* line, int32_t line_len, const float* values,
                                const int32_t* kinds, const int32_t* count, const int32_t* mode) {
    constexpr Int MOST_VALUES = 6;
    if (*count < 0 || *count > MOST_VALUES) return;
    Real shown[MOST_VALUES] = {};
    for (Int i = 0; i < *count; ++i) {
        if (!known(kinds[i])) return;
        shown[i] = tarvane::shown(values[i], static_cast<Kind>(kinds[i]));
    }
    tarvane::NUMBER_LINE(text_of(line, line_len),
                         {shown[0], shown[1], shown[2], shown[3], shown[4], shown[5]}, *mode);
}

// ---- furniture of the report file ----------------------------------------------------------------

void TARVANE_CALL WRITE_FRONT_PAGE(const char* title, int32_t title_len) {
    tarvane::WRITE_FRONT_PAGE(text_of(title, title_len));
}

void TARVANE_CALL CLOSING_NOTE(void) { tarvane::CLOSING_NOTE(); }

void TARVANE_CALL REPORT_DATE(char* date, int32_t date_len, char* time, int32_t time_len) {
    tarvane::Text<11> date_text;
    tarvane::Text<9> time_text;
    tarvane::REPORT_DATE(date_text, time_text);
    give_text(date, date_len, date_text.view());
    give_text(time, time_len, time_text.view());
}

void TARVANE_CALL GET_KEYED_TEXT(const char* key, int32_t key_len, char* text, int32_t text_len) {
    tarvane::GET_KEYED_TEXT(text_of(key, key_len), text, text_len);
}

void TARVANE_CALL WRITE_KEYED_LINE(const char* key, int32_t key_len, const int32_t* m1,
                                   const int32_t* m2, const int32_t* m3, const int32_t* m4,
                                   const int32_t* m5, const int32_t* m6) {
    tarvane::WRITE_KEYED_LINE(text_of(key, key_len), {*m1, *m2, *m3, *m4, *m5, *m6});
}

void TARVANE_CALL SET_LANGUAGE(const int32_t* index) { tarvane::LANG_INDEX = *index; }

void TARVANE_CALL LANGUAGE_FILE_PATH(char* path, int32_t path_len) {
    tarvane::LANGUAGE_FILE_PATH(path, path_len);
}

void TARVANE_CALL CHANGE_EXTENSION(char* name, int32_t name_len, char* extension,
                                   int32_t extension_len) {
    tarvane::CHANGE_EXTENSION(name, name_len, extension, extension_len);
}

void TARVANE_CALL WORK_FILE(const int32_t* mode, const char* name, int32_t name_len, const int32_t*,
                            const int32_t* clear) {
    tarvane::WORK_FILE(*mode, text_of(name, name_len), *clear);
}

void TARVANE_CALL PUT_WORK_WORD(const int32_t* index, const float* value, int32_t* status) {
    tarvane::PUT_WORK_WORD(*index, *value, *status);
}

} // extern "C"
