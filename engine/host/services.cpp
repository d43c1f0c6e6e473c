#include "host/services.h"

#include "host/file_identity.h"
#include "host/install_paths.h"
#include "host/platform.h"

namespace tarvane {

Text<256> MODULE_DIR;
Int MODULE_DIR_LENGTH = 0;
Text<260> SYSTEM_DIR;
Int SYSTEM_DIR_LENGTH = 0;
bool MODULE_DIR_GIVEN = false, SYSTEM_DIR_GIVEN = false;

HOST_SERVICES SERVICES;

namespace {

void* host_window = nullptr;
bool no_dialog = false;

// Selector of the folder of the engine's own data.
constexpr Int COMMON_DOCUMENTS = 270;

Looks looks = Looks::own;
const void* looked_at = nullptr;

// Without trailing blanks and NULs.
std::string_view without_padding(std::string_view path) {
    while (!path.empty() && (path.back() == ' ' || path.back() == '\0'))
        path.remove_suffix(1);
    return path;
}

} // namespace

LOOKS_ARE::LOOKS_ARE(Looks now) : before(looks) {
    looks = now;
    LOOK_AGAIN();
}
LOOKS_ARE::~LOOKS_ARE() {
    looks = before;
    LOOK_AGAIN();
}

void NOTE_LOOK(const void* table) { looked_at = looks == Looks::shared ? table : nullptr; }
bool LOOK_SERVES(const void* table) { return looked_at == table; }
void LOOK_AGAIN() { looked_at = nullptr; }

void GET_MODULE_DIR() {
    if (MODULE_DIR_GIVEN) return;
    MODULE_DIR.clear();
    MODULE_DIR_LENGTH = 0;
    char file[1024];
    const Int length = platform::engine_file(file, static_cast<Int>(sizeof file));
    const std::string_view path(file, static_cast<std::size_t>(length));
    const std::size_t end = path.find_last_of("/\\");
    if (end == std::string_view::npos) return;
    // The root keeps its separator: without it nothing would be left.
    const std::string_view folder = path.substr(0, end == 0 ? 1 : end);
    MODULE_DIR_LENGTH = put_together(MODULE_DIR, {folder});
}

void GET_SYSTEM_DIR(Int& found) {
    found = 1;
    if (SYSTEM_DIR_GIVEN) return;
    GET_SYSTEM_PATH(COMMON_DOCUMENTS, PRODUCT_KEY, VERSION_KEY, SYSTEM_DIR, SYSTEM_DIR_LENGTH);
}

void SET_MODULE_DIR(std::string_view path) {
    MODULE_DIR_GIVEN = true;
    MODULE_DIR_LENGTH = put_together(MODULE_DIR, {without_padding(path)});
}

void SET_SYSTEM_DIR(std::string_view path) {
    SYSTEM_DIR_GIVEN = true;
    SYSTEM_DIR_LENGTH = put_together(SYSTEM_DIR, {without_padding(path)});
}

void SET_HOST_SERVICES(const HOST_SERVICES* table) {
    if (table == nullptr)
        SERVICES = {};
    else if (table->version == HOST_SERVICES_VERSION)
        SERVICES = *table;
}

void SET_HOST_WINDOW(void* window) { host_window = window; }

void SET_NO_DIALOG(bool off) { no_dialog = off; }

bool DIALOGS_OFF() { return no_dialog; }

void MESSAGE_BOX(std::string_view text, std::string_view title) {
    if (no_dialog) return;
    const LOOKS_ARE meanwhile(Looks::own);
    const Terminated<1024> message(text);
    const Terminated<128> caption(title);
    if (SERVICES.message_box != nullptr)
        SERVICES.message_box(SERVICES.user, message.get(), caption.get());
    else
        platform::message_box(host_window, message.get(), caption.get());
}

void SET_DIALOG_TEXT(Int control, std::string_view text) {
    const LOOKS_ARE meanwhile(Looks::own);
    const Terminated<256> line(text);
    if (SERVICES.dialog_text != nullptr)
        SERVICES.dialog_text(SERVICES.user, control, line.get());
    else
        platform::dialog_text(host_window, control, line.get());
}

void END_DIALOG() {
    const LOOKS_ARE meanwhile(Looks::own);
    if (SERVICES.end_dialog != nullptr)
        SERVICES.end_dialog(SERVICES.user);
    else
        platform::end_dialog(host_window);
}

void HOST_CLOCK(Int& year, Int& month, Int& day, Int& hour, Int& minute) {
    const LOOKS_ARE meanwhile(Looks::own);
    if (SERVICES.clock != nullptr)
        SERVICES.clock(SERVICES.user, &year, &month, &day, &hour, &minute);
    else
        platform::clock(year, month, day, hour, minute);
}

void RESET_HOST() {
    if (!MODULE_DIR_GIVEN) MODULE_DIR_LENGTH = put_together(MODULE_DIR, {});
    if (!SYSTEM_DIR_GIVEN) SYSTEM_DIR_LENGTH = put_together(SYSTEM_DIR, {});
}

} // namespace tarvane
