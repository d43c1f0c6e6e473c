// Checks and results of a calculation as one table, for spreadsheets and scripts.
#pragma once

#include "components/calculation.h"

#include <span>
#include <string>

namespace tarvane::vessel {

// A row of a table, with the end of its line; RFC 4180.
std::string csv_row(std::span<const std::string> fields);

// UTF-8, a row of headings. Numbers have a decimal point and are the shortest decimals that read back to the
// same singles, in the units of the request. Of a calculation that was completed.
std::string csv_of(const Request& request, const Calculation& calculation);

} // namespace tarvane::vessel
