#include "catalogue/data_search.h"

#include "tarvane/tarvane.h"
#include "values/bounded_file.h"

#include <algorithm>
#include <cstdlib>
#include <stdexcept>

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#include <sys/auxv.h>
#endif

namespace tarvane::vessel {

namespace fs = std::filesystem;

namespace {

#ifdef _WIN32

fs::path file_of(HMODULE module) {
    constexpr DWORD LONGEST = 32767;
    std::wstring path(LONGEST, L'\0');
    path.resize(GetModuleFileNameW(module, path.data(), LONGEST));
    return path;
}

fs::path program_file() { return file_of(nullptr); }

fs::path library_file() {
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                           GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<const wchar_t*>(&RESET_ENGINE), &module);
    return file_of(module);
}

#else

fs::path program_file() {
    std::error_code none;
    return fs::read_symlink("/proc/self/exe", none);
}

// The loader knows a program only by the name that it was called by.
fs::path library_file() {
    Dl_info library{}, program{};
    if (dladdr(reinterpret_cast<const void*>(&RESET_ENGINE), &library) == 0) return {};
    const auto* entry = reinterpret_cast<const void*>(getauxval(AT_ENTRY)); // NOLINT
    if (dladdr(entry, &program) != 0 && program.dli_fbase == library.dli_fbase)
        return program_file();
    std::error_code none;
    return fs::absolute(library.dli_fname, none);
}

#endif

bool has_data(const fs::path& folder) {
    const auto names = data_text_files();
    return std::any_of(names.begin(), names.end(), [&](std::string_view name) {
        std::error_code none;
        return fs::is_regular_file(folder / name, none);
    });
}

} // namespace

std::vector<SearchPlace> search_places(const fs::path& library, const fs::path& program,
                                       const fs::path& built_in) {
    std::vector<SearchPlace> places;
    const auto look_in = [&](const fs::path& folder, const char* how) {
        const fs::path plain = folder.lexically_normal();
        const bool known = std::any_of(places.begin(), places.end(), [&](const SearchPlace& place) {
            return place.folder == plain;
        });
        if (!known) places.push_back({plain, how});
    };
    const fs::path shared = fs::path("share") / "tarvane";
    if (!library.empty()) {
        const fs::path folder = library.parent_path();
        look_in(folder, "found beside the library");
        look_in(folder / ".." / shared, "found by the library's place");
        // Libraries of several machine types are a folder deeper.
        look_in(folder / TARVANE_DATA_FROM_LIBRARY, "found by the library's place");
    }
    if (!program.empty())
        look_in(program.parent_path() / ".." / shared, "found by the program's place");
    if (!built_in.empty()) look_in(built_in, "built in");
    return places;
}

DataFolder first_with_data(const std::vector<SearchPlace>& places) {
    if (places.empty()) return {};
    for (const SearchPlace& place : places)
        if (has_data(place.folder)) return {place.folder.string(), place.how};
    std::string how = "no data files there";
    for (std::size_t i = 1; i < places.size(); ++i)
        how += (i + 1 < places.size() ? ", in " : " or in ") + places[i].folder.string();
    return {places.front().folder.string(), how + "; " + DATA_VARIABLE + " may name a folder"};
}

DataFolder find_data_folder(const std::string& named, std::string_view by) {
    if (!named.empty()) return {named, "named by " + std::string(by)};
    const char* variable = std::getenv(DATA_VARIABLE);
    if (variable != nullptr && *variable != '\0')
        return {variable, std::string("named by ").append(DATA_VARIABLE)};
    return first_with_data(search_places(library_file(), program_file(), TARVANE_BUILT_IN_DATA));
}

std::optional<std::string> version_in(const fs::path& folder) {
    constexpr std::size_t LONGEST = 40;
    std::string text;
    try {
        text = read_regular((folder / DATA_VERSION_FILE).string(), LONGEST);
    } catch (const std::runtime_error&) {
        return std::nullopt;
    }
    text.resize(std::min(text.find_first_of("\r\n"), text.size()));
    const bool sound =
        !text.empty() && text.size() <= LONGEST &&
        std::all_of(text.begin(), text.end(), [](char c) { return c > ' ' && c < '\x7F'; });
    return sound ? std::optional(text) : std::nullopt;
}

std::string described(const DataFolder& folder) {
    const std::optional<std::string> version = version_in(path_of(folder.path));
    return folder.path + " (" + (version ? "version " + *version : "no version") + ", " +
           folder.how + ')';
}

} // namespace tarvane::vessel
