// The only place that touches the platform: files, folders, message box, dialog, fatal path.
#pragma once

#include "frame/text.h"
#include "frame/types.h"

#include <string_view>

namespace tarvane {

// ---- files: plain handles without buffers of their own, so that nothing is allocated -------------
// A handle is 0 or more; -1 means that the file could not be opened.
Int open_for_reading(std::string_view path);
Int open_for_writing(std::string_view path); // created or emptied
Int read_bytes(Int handle, char* into, Int count);        // bytes read, 0 at the end, -1 on an error
bool write_bytes(Int handle, const char* from, Int count);
bool seek_to(Int handle, Int offset);                     // from the start of the file
void close_handle(Int handle);
bool file_exists(std::string_view path);

#ifdef _WIN32
inline constexpr char SEPARATOR = '\\';
#else
inline constexpr char SEPARATOR = '/';
#endif

// ---- folders -----------------------------------------------------------------------------------
extern Text<256> MODULE_DIR; // folder of the library's own file
extern Int MODULE_DIR_LENGTH;
extern Text<260> SYSTEM_DIR; // the suite's data folder
extern Int SYSTEM_DIR_LENGTH;
void GET_MODULE_DIR();
void GET_SYSTEM_DIR(Int& found);

// ---- host --------------------------------------------------------------------------------------
// Caption and text of a message box with the information icon, unless the no-dialog switch is on.
void MESSAGE_BOX(std::string_view text, std::string_view title);
bool DIALOGS_OFF(); // the host's no-dialog switch
// Text of a control on the host's dialog.
void SET_DIALOG_TEXT(Int control, std::string_view text);
// Ends the host's run (report of the code, end of the dialog, stop). When the host gave a stop
// service that comes back, the routine returns and the caller leaves its call at once.
void FATAL_STOP(Int code);

} // namespace tarvane
