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
                                          "; item|status|edition|source|remark\n";

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
                    listed(from.edition) + '|' + listed(from.source) + '|' + listed(from.remark) +
                    '\n';
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

void build_one(void (*build_kind)(Place& place), Place& place) {
    RESET_ENGINE();
    point_engine_at(place.out);
    build_kind(place);
}

// A table of another name would be left out without a word.
void count_own_rows(const Sources& sources, CheckReport& report) {
    for (const fs::directory_entry& entry : fs::directory_iterator(sources.folder)) {
        if (entry.path().extension() != ".csv") continue;
        const std::string name = entry.path().filename().string();
        const bool known =
            std::any_of(sources.shipped.begin(), sources.shipped.end(),
                        [&](const ShippedTable& table) { return table.file == name; });
        if (!known) {
            report.faults.push_back(name + ": no table of this name");
            continue;
        }
        std::ifstream file(entry.path());
        std::size_t lines = 0;
        for (std::string line; std::getline(file, line);) {
            const std::size_t first = line.find_first_not_of(" \t\r");
            lines += first != std::string::npos && line[first] != '#';
        }
        report.own_rows[name] = lines > 0 ? lines - 1 : 0; // without the names of the columns
    }
    std::sort(report.faults.begin(), report.faults.end());
}

} // namespace

void Place::note(const std::string& file, const std::string& item, const Row& row,
                 std::string remark) {
    note(file, item, row, row.status(), std::move(remark));
}

void Place::note(const std::string& file, const std::string& item, const Row& row, Status status,
                 std::string remark) {
    auto& list = items[file];
    const auto known = std::find_if(list.begin(), list.end(),
                                    [&](const auto& entry) { return entry.first == item; });
    if (known != list.end()) {
        known->second.status = std::max(known->second.status, status);
        return;
    }
    std::string edition = row.shipped() ? std::string() : sources.edition;
    if (!row.blank(EDITION_COLUMN)) edition = row.field(EDITION_COLUMN);
    list.push_back({item, {status, edition, row.field("source"), std::move(remark)}});
}

void write_file(const fs::path& path, std::string_view bytes) {
    std::ofstream file(path, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!file.flush()) throw DataError(path.filename().string() + ": cannot be written");
}

void build(const Sources& sources, const fs::path& out, const std::vector<FurtherFile>& further) {
    const Workshop workshop(out);
    Place place(sources, workshop.path());
    for (const auto build_kind : KINDS)
        build_one(build_kind, place);
    write_approximate(place);
    write_sources(place);
    for (const FurtherFile& file : further)
        write_file(place.out / file.name, file.bytes);
    move_files(place.out, out);
}

CheckReport check(const Sources& sources) {
    CheckReport report;
    count_own_rows(sources, report);
    const Workshop workshop(fs::temp_directory_path());
    Place place(sources, workshop.path());
    for (const auto build_kind : KINDS) {
        try {
            build_one(build_kind, place);
        } catch (const DataError& fault) {
            // A table that several kinds read has its fault once.
            if (std::find(report.faults.begin(), report.faults.end(), fault.what()) ==
                report.faults.end())
                report.faults.emplace_back(fault.what());
        }
    }
    report.fits = place.fits;
    return report;
}

} // namespace tarvane::data
