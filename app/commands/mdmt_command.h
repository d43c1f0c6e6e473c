// `tarvane mdmt`: the metal temperature of one thickness, without an input file.
#pragma once

#include "components/element.h"

#include <iosfwd>
#include <string>
#include <utility>
#include <vector>

namespace tarvane::app {

using namespace vessel;

struct MdmtOptions {
    // Keys of an [[mdmt]] with their values as an input file writes them.
    std::vector<std::pair<std::string, std::string>> keys;
    std::string units = "US";
    std::string data; // folder of the data files; empty: the one that is found
};

Status show_mdmt(const MdmtOptions& options, std::ostream& out, std::ostream& err);

} // namespace tarvane::app
