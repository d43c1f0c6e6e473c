// `tarvane keys`, `tarvane explain`, `tarvane schema`, `tarvane new` and `tarvane check`.
#pragma once

#include "components/element.h"

#include <iosfwd>
#include <string>

namespace tarvane::app {

using namespace vessel;

Status list_keys(const std::string& table, std::ostream& out);

// JSON for other programs: "input" and "result" schemas, "keys".
Status write_schema(const std::string& name, std::ostream& out);

Status explain_name(const std::string& name, std::ostream& out, std::ostream& err);

struct NewFileOptions {
    std::string name;   // "drum"
    bool si = false;    // units
    std::string output; // a file that does not exist yet; empty: standard output
};
Status write_new_file(const NewFileOptions& options, std::ostream& out, std::ostream& err);

struct CheckOptions {
    std::string input;
    std::string data; // folder of the data files; empty: beside the library
    bool strict = false;
};
// The faults of a file, as `tarvane run` shows them, without a calculation.
Status check_file(const CheckOptions& options, std::ostream& out, std::ostream& err);

} // namespace tarvane::app
