// All rows of a batch together: two files for other programs, a table for people.
#pragma once

#include "batch/progress.h"
#include "batch/row.h"

#include <string>
#include <vector>

namespace tarvane::app {

// What all rows have in common.
struct Conditions {
    std::string program;
    int result_form = 0; // of the JSON of a result
    bool strict = false, html = false;
    std::string data_version, data_sha256;

    // What a result depends on: these and the input.
    std::string key(const std::string& input_sha256) const;
};

// The most serious of them.
Status worst_of(const std::vector<Row>& rows);
// Counts of the rows, all of them done.
Tally tally_of(const std::vector<Row>& rows);

// UTF-8, a row of headings, then one for each item by the names. No file has what differs from run to run.
std::string summary_csv(const std::vector<Row>& rows);
// `missing`: items that were not reached.
std::string summary_json(const std::vector<Row>& rows, const Conditions& conditions,
                         std::size_t missing);

// The worst ratio first, then what was not calculated, then the counts. At most `most` items of each; all with 0.
std::string summary_table(const std::vector<Row>& rows, std::size_t most);

} // namespace tarvane::app
