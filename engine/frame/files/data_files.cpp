#include "frame/files/data_files.h"

#include "frame/files/kept_files.h"
#include "host/file_units.h"
#include "host/services.h"

#include <cstring>

namespace tarvane {

namespace {

bool ends_in_separator(std::string_view folder) {
    return folder.ends_with('/') || folder.ends_with('\\');
}

// Folder, one separator, name; empty when it does not fit.
template <std::size_t N>
void join(Text<N>& path, Int& path_len, std::string_view folder, std::string_view name) {
    const std::size_t gap = ends_in_separator(folder) ? 0 : 1;
    path.clear();
    path_len = 0;
    if (folder.size() + gap + name.size() > N) return;
    path.put(1, folder);
    if (gap != 0) path(static_cast<Int>(folder.size()) + 1) = SEPARATOR;
    path.put(static_cast<Int>(folder.size() + gap) + 1, name);
    path_len = trimmed_length(path.columns(1, static_cast<Int>(folder.size() + gap + name.size())));
}

} // namespace

void SYSTEM_FILE_PATH(Text<260>& path, Int& path_len, std::string_view name) {
    Int found = 0;
    if (SYSTEM_DIR_LENGTH == 0) GET_SYSTEM_DIR(found);
    path.clear();
    path_len = 0;
    if (SYSTEM_DIR_LENGTH == 0) return;
    join(path, path_len, SYSTEM_DIR.columns(1, SYSTEM_DIR_LENGTH), trimmed(name));
}

void MODULE_FILE_PATH(Text<260>& path, Int& path_len, std::string_view name) {
    if (MODULE_DIR_LENGTH == 0) GET_MODULE_DIR();
    path.clear();
    path_len = 0;
    if (MODULE_DIR_LENGTH == 0) return;
    join(path, path_len, MODULE_DIR.columns(1, MODULE_DIR_LENGTH), trimmed(name));
}

namespace {

// True when the file was looked at in doing so.
bool resolve(Text<256>& path, Int& path_len, FILE_IDENTITY& identity) {
    const Text<256> name = path;
    path_len = name.trimmed_length();
    if (MODULE_DIR_LENGTH == 0) {
        Int found = 0;
        GET_MODULE_DIR();
        GET_SYSTEM_DIR(found);
    }
    if (MODULE_DIR_LENGTH == 0) return false;
    join(path, path_len, MODULE_DIR.columns(1, MODULE_DIR_LENGTH), name.trimmed());
    if (path_len > 0 && look_at_file(path.columns(1, path_len), identity)) return true;

    Text<260> system_path;
    SYSTEM_FILE_PATH(system_path, path_len, name.trimmed());
    if (path_len > path.width()) {
        system_path.clear();
        path_len = 0;
    }
    path = system_path.view();
    return false;
}

} // namespace

void RESOLVE_DATA_FILE(Text<256>& path, Int& path_len) {
    FILE_IDENTITY identity;
    resolve(path, path_len, identity);
}

void RESOLVE_DATA_FILE(Text<256>& path, Int& path_len, FILE_IDENTITY& identity) {
    if (resolve(path, path_len, identity)) return;
    if (!look_at_file(path.columns(1, path_len), identity)) identity = {};
}

bool KEPT_FILE::keep(Int unit, std::string_view at, const FILE_IDENTITY& before) {
    FILE_IDENTITY now;
    known = at.size() <= static_cast<std::size_t>(path.width()) &&
            look_at_handle(unit_handle(unit), now) && now == before && is_settled(now);
    if (!known) return false;
    path = at;
    path_len = static_cast<Int>(at.size());
    identity = now;
    return true;
}

bool READ_TEXT_TABLE(std::string_view name, char* table, Int width, Int limit, Int& lines) {
    KEPT_FILE unknown;
    bool same = false;
    return READ_KEPT_TABLE(name, table, width, limit, lines, unknown, same);
}

bool READ_KEPT_TABLE(std::string_view name, char* table, Int width, Int limit, Int& lines,
                     KEPT_FILE& kept, bool& same) {
    Int unit = 0;
    GETNEXTUNIT(unit);
    Text<260> path;
    Int path_len = 0;
    SYSTEM_FILE_PATH(path, path_len, name);
    const std::string_view at = path.columns(1, path_len);
    FILE_IDENTITY identity;
    const bool known = look_at_file(at, identity);
    same = known && unit <= LAST_UNIT && kept.is(at, identity);
    if (same) return true;

    kept.forget();
    lines = 0;
    bool loaded = false;
    if (open_unit_for_reading(unit, at)) {
        const bool settled = known && is_settled(identity);
        LineReader reader(unit);
        char* line = table;
        while (!loaded && lines < limit && reader.next(line, width)) {
            ++lines;
            const std::string_view text(line, static_cast<std::size_t>(width));
            loaded = text.find("[END]") != std::string_view::npos;
            line += width;
        }
        if (loaded && settled) kept.keep(unit, at, identity);
        close_unit(unit);
    }
    if (loaded) return true;
    lines = 0;
    const std::size_t size = static_cast<std::size_t>(width) * static_cast<std::size_t>(limit);
    std::memset(table, ' ', size);
    return false;
}

} // namespace tarvane
