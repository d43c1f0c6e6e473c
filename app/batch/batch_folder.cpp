#include "batch/batch_folder.h"

#include "terminal/output_file.h"
#include "values/bounded_file.h"
#include "values/json.h"

#include <algorithm>
#include <stdexcept>

namespace tarvane::app {

namespace fs = std::filesystem;

namespace {

constexpr std::int64_t FORM = 1; // of the folder
constexpr const char* DESCRIPTION = "batch.json";
constexpr const char* CSV = "summary.csv";
constexpr const char* JSON = "summary.json";
constexpr std::size_t LARGEST_DESCRIPTION = 100000;
constexpr const char* EXTENSIONS[] = {"txt", "json", "html"};

std::string utf8(const fs::path& path) {
    const std::u8string text = path.generic_u8string();
    return {reinterpret_cast<const char*>(text.data()), text.size()};
}

[[noreturn]] void fail(const fs::path& folder, const std::string& why) {
    throw std::runtime_error(utf8(folder) + ' ' + why);
}

// Nothing but what a batch leaves that is ended before it begins.
bool is_untouched(const fs::path& folder) {
    const fs::directory_iterator entries(folder);
    return std::all_of(begin(entries), end(entries), [](const fs::directory_entry& entry) {
        const std::string name = entry.path().filename().string();
        return name == FolderLock::FILE_NAME || name.starts_with(PARTIAL_PREFIX);
    });
}

void remove_partial_files(const fs::path& folder) {
    std::vector<fs::path> partial;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
        if (entry.path().filename().string().starts_with(PARTIAL_PREFIX))
            partial.push_back(entry.path());
    }
    for (const fs::path& file : partial)
        fs::remove(file);
}

} // namespace

std::optional<fs::path> BatchFolder::base_of(const fs::path& folder) {
    if (!fs::exists(folder)) return std::nullopt;
    if (!fs::is_directory(folder)) fail(folder, "is no folder");
    const fs::path description = folder / DESCRIPTION;
    if (!fs::exists(description)) {
        if (!is_untouched(folder)) fail(folder, "is not empty, and no batch has made it");
        return std::nullopt;
    }
    Faults faults;
    const std::optional<Value> value =
        read_json(read_regular(description.string(), LARGEST_DESCRIPTION), faults);
    const Table* object = value ? value->table() : nullptr;
    const Value* form = object != nullptr ? object->find("batch") : nullptr;
    const Value* base = object != nullptr ? object->find("inputs") : nullptr;
    if (form == nullptr || form->whole() == nullptr || base == nullptr || base->text() == nullptr)
        fail(description, "is damaged");
    if (*form->whole() != FORM) fail(folder, "is of another version of the program");
    return (fs::canonical(folder) / path_of(*base->text())).lexically_normal();
}

BatchFolder::BatchFolder(const fs::path& folder, const fs::path& base, bool resume) {
    fs::create_directories(folder);
    place = fs::canonical(folder);
    lock.emplace(place);
    if (base_of(place)) {
        if (!resume)
            fail(folder,
                 "has a batch already: --resume goes on with it; another --out begins anew");
        remove_partial_files(place);
        return;
    }
    // A folder that is moved together with its inputs still finds them.
    fs::path inputs = base.lexically_relative(place);
    if (inputs.empty()) inputs = base;
    JsonWriter json;
    json.begin_object().key("batch").whole(FORM).key("inputs").text(utf8(inputs)).end_object();
    remove_partial_files(place);
    write_whole((place / DESCRIPTION).string(), json.take() + '\n');
}

fs::path BatchFolder::result(const std::string& item, const std::string& extension) const {
    return place / "results" / path_of(item + '.' + extension);
}

std::vector<Written>
BatchFolder::write_results(const std::string& item,
                           const std::vector<std::pair<std::string, std::string>>& files) {
    std::vector<Written> written;
    for (const auto& [extension, bytes] : files) {
        const fs::path file = result(item, extension);
        fs::create_directories(file.parent_path());
        write_whole(file.string(), bytes, Outlasts::process);
        written.push_back({extension, bytes.size()});
    }
    return written;
}

void BatchFolder::remove_results(const std::string& item) const {
    std::error_code none;
    for (const char* extension : EXTENSIONS)
        fs::remove(result(item, extension), none);
}

bool BatchFolder::has_results(const Entry& entry) const {
    return std::all_of(entry.files.begin(), entry.files.end(), [&](const Written& each) {
        std::error_code failure;
        return fs::file_size(result(entry.row.item, each.extension), failure) == each.bytes &&
               !failure;
    });
}

void BatchFolder::write_summary(const std::string& csv, const std::string& json) const {
    write_whole((place / CSV).string(), csv);
    write_whole((place / JSON).string(), json);
}

void BatchFolder::remove_summary() const {
    for (const char* file : {CSV, JSON})
        fs::remove(place / file);
}

} // namespace tarvane::app
