// Checks and results of a calculation as one table, for spreadsheets and scripts.
#pragma once

#include "components/calculation.h"

#include <string>

namespace tarvane::vessel {

// UTF-8, RFC 4180, a row of headings. Numbers have a decimal point and are the shortest decimals that read back to the
// same singles, in the units of the request. Of a calculation that was completed.
std::string csv_of(const Request& request, const Calculation& calculation);

} // namespace tarvane::vessel
