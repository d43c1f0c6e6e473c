#include "commands/data_command.h"

#include "catalogue/data_folder.h"
#include "catalogue/data_search.h"
#include "catalogue/data_sources.h"
#include "values/bounded_file.h"
#include "values/text.h"

#include "data_kind.h"
#include "import.h"
#include "shipped_tables.h"

#include <algorithm>
#include <filesystem>
#include <ostream>
#include <stdexcept>

namespace tarvane::app {

using namespace vessel;

namespace {

namespace fs = std::filesystem;

constexpr std::string_view TABLES_EDITION = "edition.txt"; // of a folder of tables
constexpr std::size_t LONGEST_EDITION = 80;

bool is_edition(std::string_view text) {
    return !text.empty() && text.size() <= LONGEST_EDITION &&
           std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; });
}

// The line that names the tables of a folder; empty with a fault.
std::string edition_of(const fs::path& folder, std::vector<std::string>& faults) {
    std::string text;
    try {
        text = read_regular((folder / TABLES_EDITION).string(), 4096);
    } catch (const std::runtime_error&) {
        faults.push_back(std::string(TABLES_EDITION) +
                         ": missing; one line that names the edition of these tables is expected");
        return {};
    }
    const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
    const std::string rest = text.substr(end);
    text.resize(end);
    if (is_edition(text) && rest.find_first_not_of("\r\n \t") == std::string::npos) return text;
    faults.emplace_back(TABLES_EDITION).append(":1: one line of at most 80 characters is expected");
    return {};
}

data::Sources sources_of(const DataOptions& options, const std::string& edition) {
    return {.folder = path_of(options.folder),
            .shipped = data::shipped_tables(),
            .tolerance = options.tolerance,
            .edition = edition};
}

// What is wrong with the folder, or what there is in it.
struct Checked {
    std::string edition;
    bool sound = false;
};

Checked check_folder(const DataOptions& options, std::ostream& out, std::ostream& err) {
    std::error_code none;
    if (!fs::is_directory(path_of(options.folder), none))
        throw std::runtime_error("there is no folder " + options.folder);
    Checked checked;
    std::vector<std::string> faults;
    checked.edition = edition_of(options.folder, faults);
    data::CheckReport report = data::check(sources_of(options, checked.edition));
    report.faults.insert(report.faults.begin(), faults.begin(), faults.end());
    for (const std::string& fault : report.faults)
        err << (path_of(options.folder) / fault).string() << '\n';
    checked.sound = report.faults.empty();
    if (!checked.sound) return checked;
    out << "Tables of " << options.folder << ": " << checked.edition << "\n\n";
    for (const auto& [file, rows] : report.own_rows)
        out << padded(file, 32) << right_aligned(std::to_string(rows), 6)
            << (rows == 1 ? " row\n" : " rows\n");
    if (report.own_rows.empty()) out << "no tables: those that come with the program alone\n";
    if (!report.fits.empty()) out << '\n';
    for (const std::string& fit : report.fits)
        out << fit << '\n';
    return checked;
}

// PLWXML.TXT is not made from tables: that of the data folder at hand goes along.
std::vector<data::FurtherFile> further_files(const std::string& edition,
                                             const std::string& version) {
    std::vector<data::FurtherFile> files{{std::string(EDITION_FILE), edition + '\n'},
                                         {std::string(DATA_VERSION_FILE), version + '\n'}};
    constexpr std::string_view WORDS = "PLWXML.TXT";
    try {
        files.push_back(
            {std::string(WORDS), read_regular(data_file_path(WORDS), LARGEST_DATA_FILE)});
    } catch (const std::runtime_error&) {
        // Without it the engine has its own words.
    }
    return files;
}

// One folder has one edition, which a run names.
void expect_edition(const DataImportOptions& options) {
    std::vector<std::string> faults;
    const std::string there = edition_of(path_of(options.folder), faults);
    if (!faults.empty()) throw std::runtime_error(faults.front());
    if (there != options.edition)
        throw std::runtime_error("the tables of " + options.folder + " are of \"" + there +
                                 "\", not of \"" + options.edition +
                                 "\": import these into a folder of their own");
}

std::string import_chart_table(const DataImportOptions& options) {
    const std::string unit = folded(options.stress);
    const data::ChartImportReport report =
        data::import_charts({.table = path_of(options.table),
                             .folder = path_of(options.folder),
                             .unit = unit == "mpa"   ? data::ChartUnit::mpa
                                     : unit == "ksi" ? data::ChartUnit::ksi
                                                     : data::ChartUnit::psi,
                             .celsius = folded(options.temperature) == "c",
                             .edition = options.edition});
    const auto counted = [](std::size_t count, const std::string& what) {
        return std::to_string(count) + ' ' + what + (count == 1 ? "" : "s");
    };
    return counted(report.points, "point") + " of " + counted(report.curves, "curve") + " of " +
           counted(report.charts, "chart") + " into charts.csv and chart_points.csv of " +
           options.folder;
}

Status refused(const std::exception& problem, std::ostream& err) {
    err << "tarvane: " << problem.what() << '\n';
    return Status::bad_input;
}

} // namespace

Status check_data(const DataOptions& options, std::ostream& out, std::ostream& err) {
    try {
        return check_folder(options, out, err).sound ? Status::fine : Status::bad_input;
    } catch (const std::exception& problem) {
        return refused(problem, err);
    }
}

Status build_data(const DataOptions& options, std::ostream& out, std::ostream& err) {
    try {
        const std::vector<data::FurtherFile> words = further_files("", options.version);
        const Checked checked = check_folder(options, out, err);
        if (!checked.sound) return Status::bad_input;
        if (fs::exists(path_of(options.out)) &&
            fs::equivalent(path_of(options.folder), path_of(options.out)))
            throw std::runtime_error("the data files go to a folder other than that of the tables");
        std::vector<data::FurtherFile> further = words;
        further.front().bytes = checked.edition + '\n';
        data::build(sources_of(options, checked.edition), path_of(options.out), further);
        out << "\nData files in " << options.out
            << ": name the folder by --data or TARVANE_DATA.\n";
        return Status::fine;
    } catch (const std::exception& problem) {
        return refused(problem, err);
    }
}

Status import_data(const DataImportOptions& options, std::ostream& out, std::ostream& err) {
    try {
        if (!is_edition(options.edition))
            throw std::runtime_error("an edition of at most 80 characters is expected: --edition");
        const std::string figures = folded(options.figures);
        const fs::path edition = path_of(options.folder) / TABLES_EDITION;
        const bool fresh = !fs::exists(edition);
        if (!fresh) expect_edition(options);
        if (figures == "chart") {
            out << import_chart_table(options) << '\n';
            if (fresh) data::replace_file(edition, options.edition + '\n');
            return Status::fine;
        }
        if (folded(options.stress) == "psi")
            throw std::runtime_error("stresses in ksi or MPa are expected: --stress");
        data::ImportOptions import{.table = path_of(options.table),
                                   .folder = path_of(options.folder),
                                   .figures =
                                       figures == "viii21"   ? data::Figures::division_2_class_1
                                       : figures == "viii22" ? data::Figures::division_2_class_2
                                       : figures == "yield"  ? data::Figures::yields
                                                             : data::Figures::division_1,
                                   .mpa = folded(options.stress) == "mpa",
                                   .celsius = folded(options.temperature) == "c",
                                   .edition = options.edition};
        const data::ImportReport report = data::import_table(import, data::shipped_tables());
        if (fresh) data::replace_file(edition, options.edition + '\n');
        out << report.materials << " rows into " << report.file << " of " << options.folder << ", "
            << report.new_names << " of names that are not shipped\n";
        return Status::fine;
    } catch (const std::exception& problem) {
        return refused(problem, err);
    }
}

} // namespace tarvane::app
