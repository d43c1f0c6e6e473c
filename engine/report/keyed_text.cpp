#include "report/keyed_text.h"

#include "frame/files/data_files.h"
#include "frame/switches.h"
#include "host/services.h"
#include "report/text_edit.h"

#include <cstring>
#include <iterator>

namespace tarvane {

Int LANG_INDEX = 0;

namespace {

constexpr Int LINE_WIDTH = 125;
constexpr Int FILE_LINES = 575;
constexpr std::size_t KEY_WIDTH = 6, TEXT_FROM = 8; // columns 1 to 6, and 9 on

char file_lines[FILE_LINES][LINE_WIDTH];
Int line_count = 0;
bool file_loaded = false;
bool file_read = false; // also when that did not succeed

constexpr std::string_view SUFFIXES[] = {"_Eng.txt", "_Por.txt", "_Spa.txt", "_Fre.txt",
                                         "_Ger.txt", "_Ita.txt", "_Rus.txt"};
constexpr Int LANGUAGES = static_cast<Int>(std::size(SUFFIXES));

void load() {
    if (file_loaded) return;
    file_read = true;
    file_loaded =
        READ_TEXT_TABLE("iotext.txt", &file_lines[0][0], LINE_WIDTH, FILE_LINES, line_count);
}

void give(char* text, Int len, std::string_view found) {
    fill_blank(text, len);
    copy_text(text, found.data(), min(static_cast<Int>(found.size()), not_negative(len)));
}

} // namespace

void GET_KEYED_TEXT(std::string_view key, char* text, Int len) {
    load();
    fill_blank(text, len);
    const Text<KEY_WIDTH> wanted(key);
    for (Int i = 0; i < line_count; ++i) {
        const std::string_view line(file_lines[i], LINE_WIDTH);
        if (line.substr(0, KEY_WIDTH) != wanted.view()) continue;
        give(text, len, trimmed(line).size() > TEXT_FROM ? trimmed(line).substr(TEXT_FROM) : "");
        return;
    }
}

void WRITE_KEYED_LINE(std::string_view key, const Style& style) {
    Text<KEY_WIDTH> own(key);
    own(3) = moduleCode == ASME_VIII_1 ? '1' : '2';
    LINE_BEGUN = true;
    if (reporting()) GET_KEYED_TEXT(own.view(), OUTLINE.data(), OUTLINE.width());
    SET_LINE_STYLE(style.m1, style.m2, style.m3, style.m4, style.m5, style.m6);
    WRITE_LINE(OUTLINE.data(), OUTLINE.width());
}

void LANGUAGE_FILE_PATH(char* path, Int len) {
    NUL_TO_BLANK(path, len);
    const Int index = LANG_INDEX >= 0 && LANG_INDEX < LANGUAGES ? LANG_INDEX : 0;
    const std::string_view base = trimmed({path, static_cast<std::size_t>(not_negative(len))});
    constexpr std::string_view FOLDER = "Lang_Out";
    // "Lang_Out", separator, base name, suffix: the path below the system folder.
    Text<260> name;
    const std::size_t size = FOLDER.size() + 1 + base.size() + SUFFIXES[index].size();
    Text<260> full;
    Int full_len = 0;
    if (size <= 260) {
        Int column = 1;
        const std::string_view separator(&SEPARATOR, 1);
        for (const std::string_view piece : {FOLDER, separator, base, SUFFIXES[index]}) {
            name.put(column, piece);
            column += static_cast<Int>(piece.size());
        }
        SYSTEM_FILE_PATH(full, full_len, name.view());
    }
    give(path, len, full_len <= len ? full.columns(1, full_len) : "");
}

void RESET_KEYED_TEXT() {
    file_loaded = false;
    line_count = 0;
    if (file_read) std::memset(file_lines, 0, sizeof file_lines);
    file_read = false;
    LANG_INDEX = 0;
}

} // namespace tarvane
