// Results, checks and closing table of elements under external pressure.
#pragma once

#include "components/external_session.h"
#include "fields/external_results.h"

namespace tarvane::vessel {

bool is_short_of_pressure(const ExternalInput& element, const ExternalOutcome& outcome);
bool is_short_of_thickness(const ExternalInput& element, const ExternalOutcome& outcome);
// By the chart and, for a head, by UG-33(a)(1).
float governing_maep(const ExternalOutcome& outcome);
float governing_thickness(const ExternalOutcome& outcome);
// The search for the longest stiffened length has a limit: a longer one may be allowed too.
bool ends_at_limit(const ExternalOutcome& outcome);

ExternalFound found_of(const ExternalInput& element, const ExternalOutcome& outcome);

Checks external_checks(const ExternalInput& element, const ExternalOutcome& outcome,
                       const UnitSystem& units);

std::string external_tables(std::span<const Calculated> elements, const UnitSystem& units);

} // namespace tarvane::vessel
