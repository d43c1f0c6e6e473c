#include "commands/compare_command.h"

#include "catalogue/data_folder.h"
#include "commands/calculated_text.h"
#include "document/comparison_writers.h"
#include "document/html.h"
#include "document/stored_result.h"
#include "terminal/output_file.h"
#include "terminal/pdf.h"
#include "values/bounded_file.h"
#include "values/text.h"

#include <ostream>
#include <stdexcept>
#include <vector>

namespace tarvane::app {

using namespace vessel;

namespace {

constexpr std::size_t LARGEST_RESULT = 256 * 1024 * 1024;

// What no TOML file begins with.
bool is_json(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t\r\n");
    return first != std::string_view::npos && text[first] == '{';
}

StoredResult side(const std::string& path) {
    const std::string text = read_bounded(path, LARGEST_RESULT);
    if (text.size() > LARGEST_RESULT)
        throw std::runtime_error(printable(path) + ": a result of at most " +
                                 std::to_string(LARGEST_RESULT / (1024 * 1024)) +
                                 " MB is expected");
    return read_stored(printable(path), is_json(text) ? text : calculated_json(path, text));
}

void check_outputs(const CompareOptions& options) {
    std::vector<FileInUse> in_use{{"the first file", options.first},
                                  {"the second file", options.second}};
    const FileInUse outputs[] = {{"the HTML", options.html}, {"the JSON", options.json}};
    for (const FileInUse& output : outputs) {
        if (output.path.empty()) continue;
        check_output(output.path, in_use);
        in_use.push_back(output);
    }
}

Compared compare_sides(const CompareOptions& options, std::ostream& out) {
    set_data_folder(options.data, "--data");
    check_outputs(options);
    const StoredResult first = side(options.first), second = side(options.second);
    const Comparison comparison = compare(first, second, options.tolerance);
    if (!options.json.empty()) write_whole(options.json, json_of(comparison) + '\n');
    if (!options.html.empty())
        write_whole(options.html, html_of(document_of(comparison, time_of_documents())));
    out << text_of(comparison) << std::flush;
    if (comparison.worse()) return Compared::worse;
    return comparison.same() ? Compared::same : Compared::different;
}

} // namespace

Compared compare_files(const CompareOptions& options, std::ostream& out, std::ostream& err) {
    try {
        return compare_sides(options, out);
    } catch (const std::exception& problem) {
        err << "tarvane: " << problem.what() << '\n';
        return Compared::bad_input;
    }
}

} // namespace tarvane::app
