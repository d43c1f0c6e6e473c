#include "data_kind.h"

#include "tarvane/tarvane.h"

#include <algorithm>
#include <fstream>
#include <random>

namespace tarvane::data {

namespace {

namespace fs = std::filesystem;

constexpr void (*KINDS[])(Place& place) = {
    build_bolts,  build_charts,    build_en_materials, build_flanges, build_materials,
    build_moduli, build_name_list, build_table_g,      build_yields,
};

constexpr std::string_view APPROXIMATE_HEAD =
    "; What is approximate in the data files: a section for each file, a line for each item of "
    "it.\n"
    "; Replace the file by one made from a licensed copy of the standard.\n";

// A folder beside the output, so that its files can be moved there whole; deleted with the object.
class Workshop {
  public:
    explicit Workshop(const fs::path& out) {
        std::random_device random;
        folder = out / (".tarvane-data-" + std::to_string(random()));
        fs::create_directories(folder);
    }
    ~Workshop() {
        std::error_code ignored;
        fs::remove_all(folder, ignored);
    }
    Workshop(const Workshop&) = delete;
    Workshop& operator=(const Workshop&) = delete;

    const fs::path& path() const { return folder; }

  private:
    fs::path folder;
};

void point_engine_at(const fs::path& folder) {
    const std::string text = fs::absolute(folder).string();
    SET_MODULE_DIR(text.data(), static_cast<std::int32_t>(text.size()));
    SET_SYSTEM_DIR(text.data(), static_cast<std::int32_t>(text.size()));
}

void write_approximate(const Place& place) {
    std::string text(APPROXIMATE_HEAD);
    for (const auto& [file, items] : place.approximate) {
        text += "\n[" + file + "]\n";
        for (const std::string& item : items)
            text += item + "\n";
    }
    write_file(place.out / "approximate.txt", text + "\n[END]\n");
}

constexpr std::string_view SOURCES_HEAD = "; Where the figures of the data files come from: a "
                                          "section for each file, a line for each item "
                                          "of it:\n"
                                          "; item|status|edition|source\n";

// A bar parts the fields of a line, and a line goes by its first character.
std::string listed(std::string text) {
    std::replace(text.begin(), text.end(), '|', '/');
    return text;
}

void write_sources(const Place& place) {
    std::string text(SOURCES_HEAD);
    for (const auto& [file, items] : place.items) {
        text += "\n[" + file + "]\n";
        for (const auto& [item, from] : items)
            text += listed(item) + '|' + std::string(status_word(from.status)) + '|' +
                    listed(from.edition) + '|' + listed(from.source) + '\n';
    }
    write_file(place.out / "data_sources.txt", text + "\n[END]\n");
}

// Nothing is moved before every file is known to have a place; a folder of its name would stop the
// move half-way.
void move_files(const fs::path& from, const fs::path& to) {
    std::vector<fs::path> names;
    for (const fs::directory_entry& file : fs::directory_iterator(from))
        names.push_back(file.path().filename());
    for (const fs::path& name : names)
        if (fs::is_directory(to / name))
            throw DataError(name.string() + ": a folder of this name is in its place");
    for (const fs::path& name : names)
        fs::rename(from / name, to / name);
}

} // namespace

void Place::note(const std::string& file, const std::string& item, const Row& row) {
    note(file, item, row, row.status());
}

void Place::note(const std::string& file, const std::string& item, const Row& row, Status status) {
    auto& list = items[file];
    const auto known = std::find_if(list.begin(), list.end(),
                                    [&](const auto& entry) { return entry.first == item; });
    if (known != list.end()) {
        known->second.status = std::max(known->second.status, status);
        return;
    }
    const std::string edition = row.blank(EDITION_COLUMN) ? "" : row.field(EDITION_COLUMN);
    list.push_back({item, {status, edition, row.field("source")}});
}

void write_file(const fs::path& path, std::string_view bytes) {
    std::ofstream file(path, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!file.flush()) throw DataError(path.filename().string() + ": cannot be written");
}

void build(const fs::path& sources, const fs::path& out) {
    const Workshop workshop(out);
    Place place{.sources = sources, .out = workshop.path(), .approximate = {}, .items = {}};
    for (const auto build_kind : KINDS) {
        RESET_ENGINE();
        point_engine_at(place.out);
        build_kind(place);
    }
    write_approximate(place);
    write_sources(place);
    move_files(place.out, out);
}

} // namespace tarvane::data
