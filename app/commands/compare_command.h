// `tarvane compare`: what differs between two calculations.
#pragma once

#include <iosfwd>
#include <string>

namespace tarvane::app {

struct CompareOptions {
    std::string first, second; // input files, or results as JSON
    double tolerance = 0.0;    // of results, in per cent
    std::string html, json;    // files to write; empty: none
    std::string data;          // folder of the data files; empty: the one that is found
};

// Exit statuses.
enum class Compared { same = 0, worse = 1, bad_input = 2, different = 3 };

Compared compare_files(const CompareOptions& options, std::ostream& out, std::ostream& err);

} // namespace tarvane::app
