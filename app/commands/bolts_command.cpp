#include "commands/bolts_command.h"

#include "catalogue/bolt_sizes.h"
#include "catalogue/data_files_check.h"
#include "catalogue/data_folder.h"
#include "catalogue/data_sources.h"
#include "document/results.h"
#include "values/decimal.h"
#include "values/text.h"

#include <algorithm>
#include <ostream>

namespace tarvane::app {

namespace {

constexpr std::size_t SERIES_COLUMN = 16, SIZES_COLUMN = 18, STATUS_COLUMN = 13,
                      EDITION_COLUMN = 18, SIZE_COLUMN = 12;

std::string size_text(float size) { return general_text(static_cast<double>(size)); }

void print_series(const std::vector<ThreadSeries>& all, std::ostream& out) {
    out << "Thread series of " << BOLT_FILE << "\n\n"
        << padded("Series", SERIES_COLUMN) << padded("Sizes", SIZES_COLUMN)
        << padded("Figures", STATUS_COLUMN) << padded("Edition", EDITION_COLUMN) << "Source\n"
        << std::string(SERIES_COLUMN + SIZES_COLUMN + STATUS_COLUMN + EDITION_COLUMN + 40, '-')
        << '\n';
    const auto sources = data_sources();
    for (const ThreadSeries& series : all) {
        std::string sizes = "-", line = padded(series.name, SERIES_COLUMN);
        if (!series.sizes.empty())
            sizes = size_text(series.sizes.front()[0]) + " to " +
                    size_text(series.sizes.back()[0]) + (series.metric ? " mm" : " in.");
        line += padded(sizes, SIZES_COLUMN);
        if (const ItemSource* from = sources->of(BOLT_FILE, series.name))
            line += padded(from->status, STATUS_COLUMN) +
                    padded(from->edition.empty() ? "-" : from->edition, EDITION_COLUMN) +
                    from->source;
        out << line.substr(0, line.find_last_not_of(' ') + 1) << '\n';
    }
}

void print_sizes(const ThreadSeries& series, std::ostream& out) {
    constexpr std::string_view TITLES[] = {"Diameter", "Root area", "Spacing",
                                           "From hub", "From ring", "To edge"};
    const int digits = series.metric ? 2 : 4;
    const std::string_view length = series.metric ? "mm" : "in.",
                           area = series.metric ? "mm2" : "in2";
    std::string titles, units;
    for (std::size_t i = 0; i < ThreadSeries::NUMBERS; ++i) {
        titles += right_aligned(TITLES[i], SIZE_COLUMN);
        units += right_aligned(i == 1 ? area : length, SIZE_COLUMN);
    }
    out << "Thread series " << series.name << "\n\n"
        << titles << '\n'
        << units << '\n'
        << std::string(titles.size(), '-') << '\n';
    for (const auto& size : series.sizes) {
        for (const float number : size)
            out << right_aligned(number_text(number, digits), SIZE_COLUMN);
        out << '\n';
    }
    if (const ItemSource* from = data_sources()->of(BOLT_FILE, series.name))
        out << "\nFigures: " << from->text() << '\n';
}

} // namespace

Status list_bolts(const BoltsOptions& options, std::ostream& out, std::ostream& err) {
    set_data_folder(options.data, "--data");
    require_data_file(BOLT_FILE);
    const std::vector<ThreadSeries> all = thread_series();
    if (options.series.empty()) {
        print_series(all, out);
        out << edition_line();
        return Status::fine;
    }
    const std::string given = folded(options.series);
    const std::string wanted =
        given == "tema" ? "temaimperial" : given; // its name in an input file
    const auto found = std::find_if(
        all.begin(), all.end(), [&](const ThreadSeries& s) { return folded(s.name) == wanted; });
    if (found == all.end()) {
        std::string names;
        for (const ThreadSeries& series : all)
            names += (names.empty() ? "" : ", ") + series.name;
        err << "tarvane: no thread series " << echoed(options.series) << " in " << BOLT_FILE
            << ", which has " << names << '\n';
        return Status::bad_input;
    }
    print_sizes(*found, out);
    out << edition_line();
    if (is_approximate(BOLT_FILE, found->name))
        out << "\nApproximate figures: replace " << BOLT_FILE
            << " by one made from a licensed copy of the standard.\n";
    return Status::fine;
}

} // namespace tarvane::app
