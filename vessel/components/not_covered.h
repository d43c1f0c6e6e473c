// What the design code requires of a vessel and the program does not check: part of every result.
#pragma once

#include "components/request.h"

#include <string_view>
#include <vector>

namespace tarvane::vessel {

std::vector<std::string_view> not_covered(const Request& request);

} // namespace tarvane::vessel
