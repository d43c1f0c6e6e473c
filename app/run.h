// `tarvane run`: an input file becomes reports, tables and an exit status.
#pragma once

#include "element.h"

#include <iosfwd>
#include <string>
#include <string_view>

namespace tarvane::app {

struct RunOptions {
    std::string input;
    std::string report; // raw report file; empty: none
    std::string data;   // folder of the data files; empty: beside the library
    bool colour = false;
};

Status run(const RunOptions& options, std::ostream& out, std::ostream& err);

// The whole file or nothing: written under another name in the same folder, then renamed. Throws
// std::runtime_error.
void write_whole(const std::string& path, std::string_view bytes);

// Table of the keys of an input file, kind by kind.
std::string key_table();

} // namespace tarvane::app
