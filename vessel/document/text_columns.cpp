#include "document/text_columns.h"

#include "values/text.h"

#include <algorithm>

namespace tarvane::vessel {

std::vector<TextColumn> fitted(std::span<const TextColumn> columns,
                               std::span<const std::vector<std::string>> rows, std::size_t page) {
    std::vector<TextColumn> all(columns.begin(), columns.end());
    std::vector<std::size_t> needed(all.size(), 1);
    for (const std::vector<std::string>& row : rows)
        for (std::size_t i = 0; i < row.size(); ++i)
            needed[i] = std::max(needed[i], characters(row[i]) + 1);
    std::size_t used = 0;
    for (const TextColumn& column : all)
        used += column.width;
    std::size_t wanted = needed[0] - std::min(needed[0], all[0].width);
    const auto take = [&](std::size_t spare) {
        const std::size_t taken = std::min(wanted, spare);
        wanted -= taken;
        all[0].width += taken;
        return taken;
    };
    take(page - std::min(page, used));
    for (std::size_t i = all.size() - 1; i > 0; --i)
        all[i].width -= take(all[i].width - std::min(needed[i], all[i].width));
    return all;
}

std::vector<std::string> row_lines(std::span<const TextColumn> columns,
                                   std::span<const std::string> texts) {
    constexpr std::size_t GAP = 2; // before a text that begins before its column
    std::vector<std::vector<std::string>> cells;
    std::size_t count = 1, end = 0, used = 0; // of the columns so far, and of their texts
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const std::size_t wide = characters(texts[i]), begin = end;
        end += columns[i].width;
        // One blank stays between a column and the next.
        if (columns[i].right && used + GAP + wide < end)
            cells.push_back({texts[i]});
        else
            cells.push_back(wrapped(texts[i], columns[i].width - 1));
        count = std::max(count, cells.back().size());
        if (!texts[i].empty())
            used = columns[i].right ? end - 1 : begin + characters(cells.back().front());
    }
    std::vector<std::string> lines;
    for (std::size_t line = 0; line < count; ++line) {
        std::string out;
        for (std::size_t i = 0; i < columns.size(); ++i) {
            const std::string text = line < cells[i].size() ? cells[i][line] : std::string();
            const std::size_t over =
                characters(text) - std::min(characters(text), columns[i].width - 1);
            if (columns[i].right) out.resize(out.size() - over);
            out += columns[i].right ? right_aligned(text, columns[i].width - 1) + ' '
                                    : padded(text, columns[i].width);
        }
        out.erase(out.find_last_not_of(' ') + 1);
        lines.push_back(std::move(out));
    }
    return lines;
}

} // namespace tarvane::vessel
