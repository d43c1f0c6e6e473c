// A kind of data: tables of data/sources, and the files that the engine reads made from them.
//
// Each kind has a file of its own (material_data.cpp, chart_data.cpp, ...) with one function
//
//     void build_charts(Place& place);
//
// declared below and listed in KINDS of build.cpp; its output files are listed in
// data/build/CMakeLists.txt and its columns in docs/data_files.md. The function
//
// 1. reads its tables:     const Table table(place.sources, "charts.csv", "chart", COLUMNS);
// 2. writes its files:     write_file(place.out / "ExtChartData.txt", text);
// 3. reads them back through tarvane/tarvane.h alone and compares every row with the table
//    (Row::expect, Row::fail), so that no row is lost on the way;
// 4. adds approximate rows of text files and yield strengths to place.approximate, and the source of each
//    item that a host names by place.note. Material records that a host reads whole have their own mark.
//
// Whatever is wrong is thrown as a DataError. place.out is a fresh folder that holds the files of this
// run only. build() has pointed both folders of the engine at it and resets the engine before each
// kind, and moves the files to their place only when every kind has passed: all of them or none.
#pragma once

#include "table.h"

#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tarvane::data {

struct ItemSource {
    Status status = Status::published;
    std::string edition, source, remark;
};

struct Place {
    Place(const Sources& from, std::filesystem::path folder)
        : sources(from), out(std::move(folder)) {}

    Sources sources;
    std::filesystem::path out; // folder of the files that are being made
    // By data file: the names of what is approximate in it (a chart, a thread series, ...), listed in
    // approximate.txt for the host, which names the file that a licensed user should replace.
    std::map<std::string, std::vector<std::string>> approximate;
    // By data file and item: status, edition and source, listed in data_sources.txt for the host.
    std::map<std::string, std::vector<std::pair<std::string, ItemSource>>> items;

    // The fits of the folder's own charts, see CheckReport.
    std::vector<std::string> fits;

    // An item of a file comes from a row. Of several rows of one name the least sure status holds, the
    // first edition and source.
    void note(const std::string& file, const std::string& item, const Row& row,
              std::string remark = {});
    void note(const std::string& file, const std::string& item, const Row& row, Status status,
              std::string remark = {});
};

void write_file(const std::filesystem::path& path, std::string_view bytes);

void build_bolts(Place& place);
void build_charts(Place& place);
void build_en_materials(Place& place);
void build_flanges(Place& place);
void build_materials(Place& place);
void build_moduli(Place& place);
void build_name_list(Place& place);
void build_table_g(Place& place);
void build_yields(Place& place);

// A file that is not made from tables and goes to `out` with those that are.
struct FurtherFile {
    std::string name, bytes;
};

// Makes every data file of `sources` in the folder `out`.
// It throws the first fault as a DataError.
void build(const Sources& sources, const std::filesystem::path& out,
           const std::vector<FurtherFile>& further = {});

// What the tables are worth, without making files.
struct CheckReport {
    std::vector<std::string> faults; // "FILE:LINE: column: what", the first of each kind of data
    // Of the folder's own charts: "HA-1 to 100 F: largest error of the fit -0.31 % at A = 1.000e-03".
    std::vector<std::string> fits;
    std::map<std::string, std::size_t> own_rows; // of the folder, by table
};
CheckReport check(const Sources& sources);

} // namespace tarvane::data
