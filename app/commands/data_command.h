// `tarvane data`: a user's own tables checked, made into data files, and imported from a plain layout.
#pragma once

#include "components/element.h"

#include <iosfwd>
#include <string>

namespace tarvane::app {

using namespace vessel;

struct DataOptions {
    std::string folder, out;
    float tolerance = 1.0f; // percent by which a chart may miss its points
    std::string version;    // of the program
};

struct DataImportOptions {
    std::string table, folder, edition;
    std::string stress; // empty: ksi, of charts psi
    std::string temperature = "F", figures = "VIII-1";
};

Status check_data(const DataOptions& options, std::ostream& out, std::ostream& err);
Status build_data(const DataOptions& options, std::ostream& out, std::ostream& err);
Status import_data(const DataImportOptions& options, std::ostream& out, std::ostream& err);

} // namespace tarvane::app
