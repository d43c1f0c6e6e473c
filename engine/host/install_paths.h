// The suite's installation: data folder, help, and the path by which a calculation that can't go on
// ends the host's run.
#pragma once

#include "frame/text.h"
#include "frame/types.h"

#include <string_view>

namespace tarvane {

// The data folder: the one that the user chose, else the default one of the selector (268 the
// user's, 269 common, 270 and 271 common documents; any other: empty), with a separator at its end.
void GET_SYSTEM_PATH(Int selector, std::string_view product, std::string_view version,
                     Text<260>& path, Int& path_len);

// True when the running program's file name holds "tvn.exe".
bool IS_MAIN_HOST();

// 1033 English, 1041 Japanese, 2052 Chinese; 1033 when nothing is chosen, 0 for a text that is no
// number. A language other than these three takes the English folders.
Int HELP_LANGUAGE();

// Folder of the help files: kind 101 by language, any other the common one.
void HELP_FOLDER(Int kind, Text<260>& folder, Int& folder_len);

// The command line that shows a help topic; topic 0 means none.
Int HELP_COMMAND(Int topic, Text<600>& command);
void LAUNCH_HELP(Int topic);

// The command line of the error program.
Int FATAL_COMMAND(Int code, Text<600>& command);
// Reports a fatal code to the user through the host's service, else through the error program.
void REPORT_FATAL(Int code);

} // namespace tarvane
