#include "host/install_paths.h"

#include "frame/numbers.h"
#include "host/file_identity.h"
#include "host/file_units.h"
#include "host/platform.h"
#include "host/services.h"

#include <charconv>
#include <cstdlib>

namespace tarvane {

namespace {

constexpr std::string_view ONE_SEPARATOR(&SEPARATOR, 1);

constexpr std::string_view HELP_PROGRAM = "Help.exe", ERROR_PROGRAM = "TvError.exe";

constexpr Int JAPANESE = 1041;
constexpr Int CHINESE = 2052;

// Units that the suite keeps open during a run: its messages, and its scratch file.
constexpr Int MESSAGE_UNIT = 99;
constexpr Int SCRATCH_UNIT = 18;

struct NumberPiece {
    char chars[12];
    std::size_t length;
    explicit NumberPiece(Int value) {
        const auto end = std::to_chars(chars, chars + sizeof chars, value).ptr;
        length = static_cast<std::size_t>(end - chars);
    }
    std::string_view view() const { return {chars, length}; }
};

std::string_view language_folder() {
    switch (HELP_LANGUAGE()) {
    case JAPANESE:
        return "1041";
    case CHINESE:
        return "2052";
    default:
        return "1033";
    }
}

// The folder of the library, with a separator at its end; empty when it is not known.
Int library_folder(Text<260>& folder) {
    if (MODULE_DIR_LENGTH == 0) GET_MODULE_DIR();
    const std::string_view dir = MODULE_DIR.columns(1, MODULE_DIR_LENGTH);
    if (dir.empty() || dir.ends_with('/') || dir.ends_with('\\'))
        return put_together(folder, {dir});
    return put_together(folder, {dir, ONE_SEPARATOR});
}

// Starts a program that is beside the library, where that is known.
bool start_beside_library(std::string_view program, std::string_view command, bool wait) {
    Text<260> folder;
    const Int folder_len = library_folder(folder);
    Text<300> file;
    Int length = 0;
    if (folder_len > 0) length = put_together(file, {folder.columns(1, folder_len), program});
    return platform::start_program(file.columns(1, length), command, wait);
}

} // namespace

void GET_SYSTEM_PATH(Int selector, std::string_view product, std::string_view version,
                     Text<260>& path, Int& path_len) {
    path.clear();
    path_len = 0;
    if (selector < 268 || selector > 271) return;
    Text<260> chosen;
    if (platform::setting(product, version, "Alternate System Path", chosen) && !chosen.blank())
        path_len = put_together(path, {chosen.trimmed(), ONE_SEPARATOR});
    else
        path_len = platform::default_system_folder(selector, product, version, path);
}

bool IS_MAIN_HOST() {
    char file[1024];
    const Int length = platform::program_file(file, static_cast<Int>(sizeof file));
    std::string_view name(file, static_cast<std::size_t>(length));
    const std::size_t separator = name.find_last_of("/\\");
    if (separator != std::string_view::npos) name.remove_prefix(separator + 1);
    return name.find("tvn.exe") != std::string_view::npos;
}

Int HELP_LANGUAGE() {
    Text<260> text;
    if (!platform::setting(PRODUCT_KEY, VERSION_KEY, "HelpLanguage", text) || text.blank())
        text = std::string_view("1033");
    Real value = 0.0f;
    Int language = 0;
    PARSE_REAL(text.view(), value, language);
    return language;
}

void HELP_FOLDER(Int kind, Text<260>& folder, Int& folder_len) {
    constexpr Int LANGUAGE_KIND = 101;
    if (kind == LANGUAGE_KIND)
        folder_len =
            put_together(folder, {"Acrobat", ONE_SEPARATOR, language_folder(), ONE_SEPARATOR});
    else
        folder_len = put_together(folder, {"Help", ONE_SEPARATOR});
}

Int HELP_COMMAND(Int topic, Text<600>& command) {
    Text<260> folder;
    const Int folder_len = library_folder(folder);
    const std::string_view library = folder.columns(1, folder_len);
    const NumberPiece number(topic);
    const bool with_topic = topic != 0;
    return put_together(command,
                        {library, HELP_PROGRAM, " /content \"TV", ONE_SEPARATOR, language_folder(),
                         "\"", with_topic ? " /topic " : "", with_topic ? number.view() : ""});
}

void LAUNCH_HELP(Int topic) {
    Text<600> command;
    const Int length = HELP_COMMAND(topic, command);
    start_beside_library(HELP_PROGRAM, command.columns(1, length), false);
}

Int FATAL_COMMAND(Int code, Text<600>& command) {
    Text<260> folder;
    const Int folder_len = library_folder(folder);
    return put_together(command, {folder.columns(1, folder_len), ERROR_PROGRAM, " ",
                                  NumberPiece(code).view(), " 2"});
}

void REPORT_FATAL(Int code) {
    const LOOKS_ARE meanwhile(Looks::own);
    if (SERVICES.report_fatal != nullptr) {
        SERVICES.report_fatal(SERVICES.user, code);
        return;
    }
    Text<600> command;
    const Int length = FATAL_COMMAND(code, command);
    if (start_beside_library(ERROR_PROGRAM, command.columns(1, length), true)) return;
    char text[512];
    const Int text_len = platform::last_error(text, static_cast<Int>(sizeof text));
    if (text_len > 0) MESSAGE_BOX({text, static_cast<std::size_t>(text_len)}, "GetLastError");
}

void FATAL_STOP(Int code) {
    constexpr Int STATUS = 1;
    close_unit(MESSAGE_UNIT);
    REPORT_FATAL(code);
    close_unit_and_delete(SCRATCH_UNIT);
    END_DIALOG();
    STOP_HOST(STATUS);
}

void STOP_HOST(Int status) {
    const LOOKS_ARE meanwhile(Looks::own);
    if (SERVICES.stop == nullptr) std::exit(status);
    SERVICES.stop(SERVICES.user, status);
}

} // namespace tarvane
