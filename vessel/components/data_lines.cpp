#include "components/data_lines.h"

#include "catalogue/data_folder.h"
#include "components/calculation.h"
#include "values/bounded_file.h"
#include "values/sha256.h"
#include "values/text.h"

namespace tarvane::vessel {

std::string_view UsedItem::status() const {
    return approximate ? "approximate" : source ? std::string_view(source->status) : "published";
}

std::string UsedFile::sha256() const {
    return vessel::sha256(read_regular(data_file_path(name), LARGEST_DATA_FILE));
}

std::vector<UsedFile> used_files(const Request& request) {
    std::vector<UsedFile> files;
    for (const auto& [file, items] : data_used(request)) {
        files.push_back({.name = file, .items = {}});
        if (items.empty()) continue; // no item was looked up, and no list of them was needed
        const auto sources = data_sources();
        for (const auto& [item, approximate] : items) {
            const std::string name = to_utf8(item);
            const ItemSource* from = sources->of(file, name);
            files.back().items.push_back(
                {.name = name,
                 .approximate = approximate,
                 .source = from != nullptr ? std::optional(*from) : std::nullopt});
        }
    }
    return files;
}

std::string data_lines(const Request& request, const std::vector<Calculated>& calculated) {
    std::string lines;
    if (const std::string edition = data_edition(); !edition.empty())
        lines += "\nData files: " + edition + ", in " + data_folder().path + "\n";
    for (const UsedFile& file : used_files(request)) {
        std::string list;
        for (const UsedItem& item : file.items)
            if (item.source)
                list.append("  ").append(item.name).append(": ").append(item.source->text() + '\n');
        if (!list.empty()) lines += "\nFigures of " + file.name + ":\n" + list;
    }
    std::string list;
    for (const auto& [item, source] : own_figures(calculated))
        list.append("  ").append(item).append(": approximate: ").append(source) += '\n';
    if (!list.empty()) lines += "\nFigures of the program:\n" + list;
    return lines;
}

} // namespace tarvane::vessel
