// What the data files of a calculation are: closing lines after a run.
#pragma once

#include "components/element.h"

#include <string>

namespace tarvane::vessel {

struct Request;

// The edition of data files that a user made, and status, edition and source of each item that was used, as far as
// the data folder lists them.
std::string data_lines(const Request& request);

} // namespace tarvane::vessel
