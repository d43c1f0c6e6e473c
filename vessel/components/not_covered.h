// What the design code asks of a vessel and the program does not look at: a result says so beside its verdict.
#pragma once

#include "components/request.h"

#include <string_view>
#include <vector>

namespace tarvane::vessel {

std::vector<std::string_view> not_covered(const Request& request);

} // namespace tarvane::vessel
