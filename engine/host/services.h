// What the engine asks of the machine and of its host: files, folders, message box, dialog, clock.
#pragma once

#include "frame/text.h"
#include "frame/types.h"

#include <string_view>

namespace tarvane {

// ---- files: plain handles without buffers of their own, so that nothing is allocated -------------
// A handle is 0 or more; -1 means that the file could not be opened.
Int open_for_reading(std::string_view path);       // a regular file of less than 2 GB only
Int open_for_writing(std::string_view path);       // created or emptied
Int open_for_update(std::string_view path);        // created or as it is
Int read_bytes(Int handle, char* into, Int count); // bytes read, 0 at the end, -1 on an error
bool write_bytes(Int handle, const char* from, Int count);
bool seek_to(Int handle, Int offset); // from the start of the file
bool close_handle(Int handle);        // false when something written before is lost
void delete_and_close(Int handle);
bool file_exists(std::string_view path); // a folder, a pipe or a device is no file

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
// True once the host has given the folder; it is then never looked up again, also when empty.
extern bool MODULE_DIR_GIVEN, SYSTEM_DIR_GIVEN;

// Each looks its folder up unless the host gave it; what can't be found, or is too long, is empty.
void GET_MODULE_DIR();
void GET_SYSTEM_DIR(Int& found); // found: 1
// Override by the host, at once.
void SET_MODULE_DIR(std::string_view path);
void SET_SYSTEM_DIR(std::string_view path);

// ---- host --------------------------------------------------------------------------------------
#if defined(_WIN32) && !defined(_WIN64)
#define TARVANE_HOST_CALL __stdcall
#else
#define TARVANE_HOST_CALL
#endif

// Services of the host. The user pointer is passed first in each call; texts end in a NUL.
struct HOST_SERVICES {
    Int version = 0;
    void(TARVANE_HOST_CALL* message_box)(void* user, const char* text, const char* title) = nullptr;
    void(TARVANE_HOST_CALL* dialog_text)(void* user, Int control, const char* text) = nullptr;
    void(TARVANE_HOST_CALL* end_dialog)(void* user) = nullptr;
    void(TARVANE_HOST_CALL* report_fatal)(void* user, Int code) = nullptr;
    void(TARVANE_HOST_CALL* stop)(void* user, Int status) = nullptr;
    void(TARVANE_HOST_CALL* clock)(void* user, Int* year, Int* month, Int* day, Int* hour,
                                   Int* minute) = nullptr;
    void* user = nullptr;
};
inline constexpr Int HOST_SERVICES_VERSION = 1;

extern HOST_SERVICES SERVICES; // copy of the host's table

// Copies the table; null removes the services, and a table of another version is not taken.
void SET_HOST_SERVICES(const HOST_SERVICES* table);
void SET_HOST_WINDOW(void* window); // owner of message boxes, and the dialog
void SET_NO_DIALOG(bool off);

// Message box with the information icon, unless the no-dialog switch is on.
void MESSAGE_BOX(std::string_view text, std::string_view title);
bool DIALOGS_OFF(); // the host's no-dialog switch
// Text of a control on the host's dialog.
void SET_DIALOG_TEXT(Int control, std::string_view text);
void END_DIALOG();
void HOST_CLOCK(Int& year, Int& month, Int& day, Int& hour, Int& minute);
// Ends the host's run (report of the code, end of the dialog, stop). When the host gave a stop
// service that returns, the routine returns and the caller leaves its call at once.
void FATAL_STOP(Int code);
// Ends the host's process through its stop service, which may return; without one at once.
void STOP_HOST(Int status);

// Folders that were looked up are forgotten; what the host provided stays.
void RESET_HOST();

} // namespace tarvane
