#include "report/work_file.h"

#include "host/file_units.h"
#include "host/services.h"
#include "report/channel.h"
#include "report/text_edit.h"

namespace tarvane {

Text<256> WORK_FILE_NAME;

namespace {

constexpr Int UNIT = 58;
constexpr Int RECORD_WORDS = 768;
constexpr Int RECORD_LENGTH = 4 * RECORD_WORDS;
constexpr Int RECORDS = 250;
constexpr Int FAILED = 2;

// Words of the first record that begin with a value that no calculation gives.
constexpr Int START_WORDS[] = {54, 55, 56, 57, 58, 59, 60, 61, 62, 104, 106, 107};
constexpr Real START_VALUE = -1000.0f;

// False for a name too long; without its own extension the work file would be the host's file.
bool name_by(std::string_view name) {
    if (WORK_FILE_NAME.view().find(".Tvr") != std::string_view::npos) return true;
    if (BESIDE(WORK_FILE_NAME, name, ".Tvr")) return true;
    WORK_FILE_NAME.clear();
    return false;
}

bool fill_with_start_values() {
    static const Real zeros[RECORD_WORDS] = {};
    for (Int record = 1; record <= RECORDS; ++record)
        if (!WRITE_RECORD(UNIT, record, reinterpret_cast<const char*>(zeros), RECORD_LENGTH))
            return false;
    for (const Int word : START_WORDS) {
        Int status = 0;
        PUT_WORK_WORD(word, START_VALUE, status);
        if (status != 0) return false;
    }
    return true;
}

bool open_afresh_or_as_it_is(bool clear) {
    const std::string_view path = WORK_FILE_NAME.trimmed();
    if (clear && file_exists(path) && open_unit_for_update(UNIT, path)) close_unit_and_delete(UNIT);
    return open_unit_for_update(UNIT, path) && (!clear || fill_with_start_values());
}

} // namespace

void WORK_FILE(Int mode, std::string_view name, Int clear) {
    switch (mode) {
    case OPEN_WORK_FILE:
        if (!name_by(name) || !open_afresh_or_as_it_is(clear == 1)) {
            close_unit(UNIT);
            MESSAGE_BOX("The work file can't be written.", "Work file");
            STOP_HOST(1);
        }
        break;
    case DELETE_WORK_FILE:
        close_unit_and_delete(UNIT);
        break;
    case CLOSE_WORK_FILE:
        close_unit(UNIT);
        break;
    default:
        break;
    }
}

void PUT_WORK_WORD(Int index, Real value, Int& status) {
    Real words[RECORD_WORDS];
    status = FAILED;
    if (index < 1 || index > RECORD_WORDS) return;
    if (!READ_RECORD(UNIT, 1, reinterpret_cast<char*>(words), RECORD_LENGTH)) return;
    words[index - 1] = value;
    if (WRITE_RECORD(UNIT, 1, reinterpret_cast<const char*>(words), RECORD_LENGTH)) status = 0;
}

void CHANGE_EXTENSION(char* name, Int name_len, char* extension, Int extension_len) {
    NUL_TO_BLANK(name, name_len);
    NUL_TO_BLANK(extension, extension_len);
    const Int length = last_column(name, name_len);
    const std::string_view whole(name, static_cast<std::size_t>(length));
    const std::string_view ending =
        trimmed({extension, static_cast<std::size_t>(not_negative(extension_len))});

    const bool with_point = ending.find('.') != std::string_view::npos;
    const std::size_t point = whole.rfind('.');
    const bool add_point = point == std::string_view::npos && !with_point;
    std::size_t keep = whole.size();
    if (point != std::string_view::npos) keep = with_point ? point : point + 1;

    const std::size_t size = keep + (add_point ? 1 : 0) + ending.size();
    if (size > static_cast<std::size_t>(not_negative(name_len))) return;
    char* to = name + keep;
    if (add_point) *to++ = '.';
    copy_text(to, ending.data(), static_cast<Int>(ending.size()));
    fill_blank(name + size, name_len - static_cast<Int>(size));
}

void RESET_WORK_FILE() {
    close_unit(UNIT);
    WORK_FILE_NAME.clear();
}

} // namespace tarvane
