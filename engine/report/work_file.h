// The work file, in which intermediate values wait for other programs of the suite: 250 records of
// 768 words on unit 58.
#pragma once

#include "frame/text.h"
#include "frame/types.h"

#include <string_view>

namespace tarvane {

extern Text<256> WORK_FILE_NAME; // once it holds ".Tvr" it is not changed

enum WorkFileMode : Int { OPEN_WORK_FILE = 1, DELETE_WORK_FILE = 2, CLOSE_WORK_FILE = 3 };

// Mode 1 opens the file that belongs to the host's file `name`, empty with `clear` 1; a failure ends
// the host's run. Modes 2 and 3 close it, with and without deleting it.
void WORK_FILE(Int mode, std::string_view name, Int clear);

// Word `index` of the first record. status 0 done, 2 not: no open file, or an index outside 1 to 768.
void PUT_WORK_WORD(Int index, Real value, Int& status);

// The name with another extension, in place; NULs of both become blanks. A name without "." gets it
// at its end. What does not fit changes nothing.
void CHANGE_EXTENSION(char* name, Int name_len, char* extension, Int extension_len);

// Path of the file beside the file `name` with an extension (".xml") of its own. False when
// it does not fit: the path may then be that of the file itself.
template <std::size_t N>
bool BESIDE(Text<N>& path, std::string_view name, const Text<4>& extension) {
    const std::size_t last = name.find_last_not_of(std::string_view(" \0", 2));
    Text<4> ending = extension;
    path = name;
    CHANGE_EXTENSION(path.data(), path.width(), ending.data(), ending.width());
    return (last == std::string_view::npos || last < N) && path.trimmed().ends_with(ending.view());
}

void RESET_WORK_FILE();

} // namespace tarvane
