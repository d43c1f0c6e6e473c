// Texts of the report that are in files: "iotext.txt" by key, and the names of translated files.
#pragma once

#include "frame/text.h"
#include "frame/types.h"
#include "report/channel.h"

#include <string_view>

namespace tarvane {

// The text of a key of 6 characters (a shorter one is blank-padded), blank when there is none.
void GET_KEYED_TEXT(std::string_view key, char* text, Int len);

// The text of a key as a report line. Column 3 of the key is the design code's: "1" under ASME VIII-1,
// "2" under any other.
void WRITE_KEYED_LINE(std::string_view key, const Style& style);

extern Int LANG_INDEX; // 0 English, Portuguese, Spanish, French, German, Italian, 6 Russian

// `path` holds a base name on entry and the path of its translated file on return; blank without a
// system folder or when it does not fit.
void LANGUAGE_FILE_PATH(char* path, Int len);

// Table and language back to their state at load.
void RESET_KEYED_TEXT();

} // namespace tarvane
