// Data files: how a name becomes a path, and text tables.
#pragma once

#include "frame/text.h"
#include "frame/types.h"

#include <string_view>

namespace tarvane {

// ---- paths -----------------------------------------------------------------------------------
// path = system directory + separator + name. An empty system directory gives an empty path, and so
// does a path of more than 260 characters.
void SYSTEM_FILE_PATH(Text<260>& path, Int& path_len, std::string_view name);
// The same beside the library; empty when it has no folder.
void MODULE_FILE_PATH(Text<260>& path, Int& path_len, std::string_view name);
// `path` holds a file name on entry and its full path on return: beside the library if a file is
// there, else in the system directory. Without a folder of the library the name is left as it is.
void RESOLVE_DATA_FILE(Text<256>& path, Int& path_len);

// ---- reading -----------------------------------------------------------------------------------
// Fills a table of fixed-width lines from a file in the system directory. Success (and a loaded
// flag) only when a line with "[END]" was seen; `lines` counts that line too. Without success the
// table is blank and `lines` 0.
bool READ_TEXT_TABLE(std::string_view name, char* table, Int width, Int limit, Int& lines);

} // namespace tarvane
