// The tables of data/sources, within the program: a user's folder needs only those that it adds to or replaces.
#pragma once

#include "table.h"

#include <span>

namespace tarvane::data {

std::span<const ShippedTable> shipped_tables();

} // namespace tarvane::data
