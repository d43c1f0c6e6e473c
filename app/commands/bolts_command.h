// `tarvane bolts`: the thread series of the data files, and the sizes of one.
#pragma once

#include "components/element.h"

#include <iosfwd>
#include <string>

namespace tarvane::app {

using namespace vessel;

struct BoltsOptions {
    std::string series, data; // without a series: a list of them
};

Status list_bolts(const BoltsOptions& options, std::ostream& out, std::ostream& err);

} // namespace tarvane::app
