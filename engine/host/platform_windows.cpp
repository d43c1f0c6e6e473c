// Files, folders, registry, message box, dialog and programs on Windows.
#ifdef _WIN32

#include "host/file_identity.h"
#include "host/platform.h"
#include "host/services.h"

#ifndef NOMINMAX
#define NOMINMAX
#endif
#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include <shlobj.h>

namespace tarvane {

namespace {

using PathName = Terminated<1024>;

// Windows keeps its handles within 32 bits, in 64-bit programs too.
HANDLE file(Int handle) { return reinterpret_cast<HANDLE>(static_cast<INT_PTR>(handle)); }

Int opened(HANDLE handle) {
    if (handle == INVALID_HANDLE_VALUE) return -1;
    return static_cast<Int>(reinterpret_cast<INT_PTR>(handle));
}

constexpr DWORD SHARED = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

Int opened_for_writing(std::string_view path, DWORD disposition) {
    const PathName name(path);
    if (path.empty() || !name.complete()) return -1;
    return opened(CreateFileA(name.get(), GENERIC_READ | GENERIC_WRITE, SHARED, nullptr,
                              disposition, FILE_ATTRIBUTE_NORMAL, nullptr));
}

// Full name of a module, cut when there is no room for it.
Int module_file(HMODULE module, char* into, Int width) {
    const DWORD length = GetModuleFileNameA(module, into, static_cast<DWORD>(width));
    return length < static_cast<DWORD>(width) ? static_cast<Int>(length) : 0;
}

// Software\maker\product\version\Settings of the user, created where it is absent.
bool open_settings_key(std::string_view product, std::string_view version, HKEY& key) {
    Text<300> path;
    const Int length =
        put_together(path, {"Software\\", MAKER, "\\", product, "\\", version, "\\Settings"});
    const Terminated<301> name(path.columns(1, length));
    return length > 0 && RegCreateKeyExA(HKEY_CURRENT_USER, name.get(), 0, nullptr, 0, KEY_READ,
                                         nullptr, &key, nullptr) == ERROR_SUCCESS;
}

// Adds one level to a folder's path, which ends in a separator, and creates it if it is absent.
bool enter_folder(Text<260>& path, Int& length, std::string_view level) {
    Text<260> longer;
    const Int size = put_together(longer, {path.columns(1, length), level, "\\"});
    if (size == 0) return false;
    const Terminated<261> name(longer.columns(1, size - 1));
    if (!CreateDirectoryA(name.get(), nullptr) && GetLastError() != ERROR_ALREADY_EXISTS)
        return false;
    path = longer.view();
    length = size;
    return true;
}

} // namespace

// ---- files -----------------------------------------------------------------------------------

Int open_for_reading(std::string_view path) {
    const PathName name(path);
    if (path.empty() || !name.complete()) return -1;
    const HANDLE handle = CreateFileA(name.get(), GENERIC_READ, SHARED, nullptr, OPEN_EXISTING,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    // A pipe or a device ("NUL", "CON") is no file.
    if (handle != INVALID_HANDLE_VALUE && GetFileType(handle) != FILE_TYPE_DISK) {
        CloseHandle(handle);
        return -1;
    }
    return opened(handle);
}

Int open_for_writing(std::string_view path) { return opened_for_writing(path, CREATE_ALWAYS); }

Int open_for_update(std::string_view path) { return opened_for_writing(path, OPEN_ALWAYS); }

Int read_bytes(Int handle, char* into, Int count) {
    DWORD done = 0;
    if (count < 0 || !ReadFile(file(handle), into, static_cast<DWORD>(count), &done, nullptr))
        return -1;
    return static_cast<Int>(done);
}

bool write_bytes(Int handle, const char* from, Int count) {
    while (count > 0) {
        DWORD done = 0;
        if (!WriteFile(file(handle), from, static_cast<DWORD>(count), &done, nullptr) || done == 0)
            return false;
        from += done;
        count -= static_cast<Int>(done);
    }
    return true;
}

bool seek_to(Int handle, Int offset) {
    return SetFilePointer(file(handle), offset, nullptr, FILE_BEGIN) != INVALID_SET_FILE_POINTER;
}

bool close_handle(Int handle) { return CloseHandle(file(handle)) != 0; }

// The right to delete is asked for only here: a program that reads a report while it is written need
// not share that right.
void delete_and_close(Int handle) {
    const HANDLE again = ReOpenFile(file(handle), DELETE, SHARED, 0);
    if (again != INVALID_HANDLE_VALUE) {
        FILE_DISPOSITION_INFO disposition;
        disposition.DeleteFile = TRUE;
        SetFileInformationByHandle(again, FileDispositionInfo, &disposition, sizeof disposition);
        CloseHandle(again);
    }
    CloseHandle(file(handle));
}

bool file_exists(std::string_view path) {
    const PathName name(path);
    if (path.empty() || !name.complete()) return false;
    const DWORD attributes = GetFileAttributesA(name.get());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

// Only of an open file does the system give its number, and when its name or rights changed.
bool look_at_file(std::string_view path, FILE_IDENTITY& identity) {
    identity = {};
    return file_exists(path);
}

bool look_at_handle(Int, FILE_IDENTITY& identity) {
    identity = {};
    return true;
}

bool is_settled(const FILE_IDENTITY&) { return false; }

namespace platform {

// ---- folders ---------------------------------------------------------------------------------

Int program_file(char* into, Int width) { return module_file(nullptr, into, width); }

Int engine_file(char* into, Int width) {
    HMODULE module = nullptr;
    if (!GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                                GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                            MODULE_DIR.data(), &module))
        return 0;
    return module_file(module, into, width);
}

bool setting(std::string_view product, std::string_view version, std::string_view name,
             Text<260>& value) {
    HKEY key = nullptr;
    if (!open_settings_key(product, version, key)) return false;
    constexpr DWORD LONGEST = 260;
    char text[LONGEST + 2];
    DWORD size = sizeof text - 1, type = 0;
    const LSTATUS status = RegQueryValueExA(key, Terminated<64>(name).get(), nullptr, &type,
                                            reinterpret_cast<BYTE*>(text), &size);
    RegCloseKey(key);
    if (status != ERROR_SUCCESS || type != REG_SZ) return false;
    text[size] = '\0'; // a string of the registry need not end in one
    const std::string_view given(text);
    if (given.size() > LONGEST) return false;
    value = given;
    return true;
}

Int default_system_folder(Int selector, std::string_view product, std::string_view version,
                          Text<260>& path) {
    path.clear();
    const int known_folder = selector == 268   ? CSIDL_APPDATA
                             : selector == 269 ? CSIDL_COMMON_APPDATA
                                               : CSIDL_COMMON_DOCUMENTS;
    char folder[MAX_PATH];
    if (SHGetFolderPathA(nullptr, known_folder, nullptr, SHGFP_TYPE_CURRENT, folder) != S_OK)
        return 0;
    Int length = put_together(path, {folder, "\\"});
    for (const std::string_view level : {MAKER, product, version, std::string_view("System")}) {
        if (length == 0 || !enter_folder(path, length, level)) {
            path.clear();
            return 0;
        }
    }
    return length;
}

// ---- host ------------------------------------------------------------------------------------

void message_box(void* window, const char* text, const char* title) {
    MessageBoxA(static_cast<HWND>(window), text, title, MB_OK | MB_ICONINFORMATION);
}

void dialog_text(void* window, Int control, const char* text) {
    if (window != nullptr) SetDlgItemTextA(static_cast<HWND>(window), control, text);
}

void end_dialog(void* window) {
    if (window != nullptr) EndDialog(static_cast<HWND>(window), 0);
}

bool start_program(std::string_view program, std::string_view command, bool wait) {
    const PathName name(program);
    char line[601]; // the system may write into it
    lstrcpynA(line, Terminated<601>(command).get(), static_cast<int>(sizeof line));
    STARTUPINFOA startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process = {};
    // Without its file the system would look for the program at each blank of the command line.
    if (!CreateProcessA(program.empty() ? nullptr : name.get(), line, nullptr, nullptr, FALSE, 0,
                        nullptr, nullptr, &startup, &process))
        return false;
    if (wait) WaitForSingleObject(process.hProcess, INFINITE);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return true;
}

Int last_error(char* into, Int width) {
    return static_cast<Int>(
        FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                       GetLastError(), 0, into, static_cast<DWORD>(width), nullptr));
}

void clock(Int& year, Int& month, Int& day, Int& hour, Int& minute) {
    SYSTEMTIME now;
    GetLocalTime(&now);
    year = now.wYear;
    month = now.wMonth;
    day = now.wDay;
    hour = now.wHour;
    minute = now.wMinute;
}

} // namespace platform

} // namespace tarvane

#endif
