#include "document/text_columns.h"

#include "values/text.h"

#include <algorithm>

namespace tarvane::vessel {

std::vector<std::string> row_lines(std::span<const TextColumn> columns,
                                   std::span<const std::string> texts) {
    std::vector<std::vector<std::string>> cells;
    std::size_t count = 1;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        // One blank stays between a column and the next.
        cells.push_back(wrapped(texts[i], columns[i].width - 1));
        count = std::max(count, cells.back().size());
    }
    std::vector<std::string> lines;
    for (std::size_t line = 0; line < count; ++line) {
        std::string out;
        for (std::size_t i = 0; i < columns.size(); ++i) {
            const std::string text = line < cells[i].size() ? cells[i][line] : std::string();
            out += columns[i].right ? right_aligned(text, columns[i].width - 1) + ' '
                                    : padded(text, columns[i].width);
        }
        out.erase(out.find_last_not_of(' ') + 1);
        lines.push_back(std::move(out));
    }
    return lines;
}

} // namespace tarvane::vessel
