// The exported routines that write report lines for a host.
#define TARVANE_BUILD
#include "tarvane/tarvane.h"

#include "frame/export_arguments.h"
#include "report/channel.h"
#include "report/lines.h"

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

} // extern "C"
