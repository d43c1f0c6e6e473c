#include "catalogue/data_sources.h"

#include "catalogue/data_files_check.h"
#include "catalogue/data_folder.h"
#include "catalogue/material_files.h"
#include "values/bounded_file.h"
#include "values/text.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <stdexcept>

namespace tarvane::vessel {

namespace {

constexpr std::size_t FIELDS = 5; // item|status|edition|source|remark
constexpr std::size_t LONGEST_EDITION = 80;
constexpr std::string_view NOT_STATED =
    "not stated"; // by the copies of the standard that have the figures

// The least sure last.
constexpr std::array<std::string_view, 3> STATUSES = {"checked", "published", "approximate"};

std::size_t doubt(std::string_view status) {
    return static_cast<std::size_t>(std::find(STATUSES.begin(), STATUSES.end(), status) -
                                    STATUSES.begin());
}

std::array<std::string, FIELDS> fields_of(std::string_view line) {
    std::array<std::string, FIELDS> fields;
    for (std::string& field : fields) {
        const std::size_t bar = std::min(line.find('|'), line.size());
        field = line.substr(0, bar);
        line.remove_prefix(std::min(bar + 1, line.size()));
    }
    return fields;
}

} // namespace

std::string ItemSource::text() const {
    std::string text = status;
    if (!edition.empty()) text += (edition == NOT_STATED ? ", edition " : ", ") + edition;
    if (!source.empty() && source != edition) text += ": " + source;
    return text;
}

DataSources::DataSources() {
    require_data_file(SOURCES_FILE);
    for (const FileSection& section : read_sections(SOURCES_FILE))
        for (const std::string& line : section.lines) {
            const auto [item, status, edition, source, remark] = fields_of(line);
            if (doubt(status) == STATUSES.size()) continue;
            add(section.name, item, {status, edition, source, remark});
        }
}

void DataSources::add(const std::string& file, const std::string& item, const ItemSource& source) {
    const auto [known, fresh] = items.try_emplace({file, item}, source);
    if (!fresh && doubt(source.status) > doubt(known->second.status))
        known->second.status = source.status;
}

const ItemSource* DataSources::of(std::string_view file, std::string_view item) const {
    const auto found = items.find(std::pair(std::string(file), std::string(item)));
    if (found != items.end()) return &found->second;
    if (file != BOLT_FILE) return nullptr;
    // A thread series is "TEMA" or "TEMA metric" to a host, "TEMA IMPERIAL" and "TEMA METRIC" in its file.
    const std::string wanted = folded(item) == "tema" ? "temaimperial" : folded(item);
    for (const auto& [key, source] : items)
        if (key.first == file && folded(key.second) == wanted) return &source;
    return nullptr;
}

struct KnownSources {
    std::filesystem::file_time_type written;
    std::shared_ptr<const DataSources> read;
};

std::shared_ptr<KnownSources> no_sources_yet() { return std::make_shared<KnownSources>(); }

std::shared_ptr<const DataSources> data_sources() {
    std::error_code none;
    const auto written =
        std::filesystem::last_write_time(path_of(data_file_path(SOURCES_FILE)), none);
    KnownSources& known = *data_folder().sources;
    if (!known.read || known.written != written)
        known = {written, std::make_shared<const DataSources>()};
    return known.read;
}

std::string edition_line() {
    const std::string edition = data_edition();
    return edition.empty() ? edition : "\nData files: " + edition + '\n';
}

ItemSource source_of(const Material& material, const DataSources& sources) {
    const ItemSource* from = sources.of(material.selection.file(), item_of(material));
    ItemSource source = from != nullptr ? *from : ItemSource{"published", "", "", ""};
    if (material.approximate) source.status = "approximate";
    return source;
}

std::string data_edition() {
    std::string text;
    try {
        text = read_regular(data_file_path(EDITION_FILE), LONGEST_EDITION + 2);
    } catch (const std::runtime_error&) {
        return {};
    }
    text.resize(std::min(text.find_first_of("\r\n"), text.size()));
    const bool sound =
        text.size() <= LONGEST_EDITION &&
        std::all_of(text.begin(), text.end(), [](unsigned char c) { return c >= ' '; });
    return sound ? text : std::string();
}

} // namespace tarvane::vessel
