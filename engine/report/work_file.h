// The work file, in which intermediate values wait for other programs of the suite: 250 records of
// 768 words on unit 58.
#pragma once

#include "frame/text.h"
#include "frame/types.h"

#include <string_view>

namespace tarvane {

extern Text<256> WORK_FILE_NAME; // once it holds ".Tvr" it stays

enum WorkFileMode : Int { OPEN_WORK_FILE = 1, DELETE_WORK_FILE = 2, CLOSE_WORK_FILE = 3 };

// Mode 1 opens the file that belongs to the host's file `name`, afresh with `clear` 1; a failure ends
// the host's run. Modes 2 and 3 close it, with and without deleting it.
void WORK_FILE(Int mode, std::string_view name, Int clear);

// Word `index` of the first record. status 0 done, 2 not: no open file, or an index outside 1 to 768.
void PUT_WORK_WORD(Int index, Real value, Int& status);

// The name with another extension, in place; NULs of both become blanks. A name without "." gets it
// behind its end. What does not fit changes nothing.
void CHANGE_EXTENSION(char* name, Int name_len, char* extension, Int extension_len);

void RESET_WORK_FILE();

} // namespace tarvane
