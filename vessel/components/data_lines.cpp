#include "components/data_lines.h"

#include "catalogue/data_folder.h"
#include "catalogue/data_search.h"
#include "catalogue/data_sources.h"
#include "components/calculation.h"
#include "values/text.h"

namespace tarvane::vessel {

std::string data_lines(const Request& request) {
    std::string lines;
    if (const std::string edition = data_edition(); !edition.empty())
        lines += "\nData files: " + edition + ", in " + data_folder().path + "\n";
    for (const auto& [file, items] : data_used(request)) {
        if (items.empty()) continue; // no item was looked up, and no list of them was needed
        const auto sources = data_sources();
        std::string list;
        for (const auto& [item, approximate] : items)
            if (const ItemSource* from = sources->of(file, to_utf8(item)))
                list += "  " + to_utf8(item) + ": " + from->text() + '\n';
        if (!list.empty()) lines += "\nFigures of " + file + ":\n" + list;
    }
    return lines;
}

} // namespace tarvane::vessel
