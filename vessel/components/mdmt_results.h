// Results, checks and closing table of metal temperatures.
#pragma once

#include "components/mdmt_session.h"
#include "fields/mdmt_results.h"

#include <optional>

namespace tarvane::vessel {

inline constexpr std::string_view UCS_66C_SOURCE =
    "general knowledge of the paragraph, without a public copy";

// Nothing where the engine found none.
std::optional<float> curve_temperature(const MdmtOutcome& outcome);
std::optional<float> reduced_temperature(const MdmtOutcome& outcome);
std::optional<float> reduction_of(const MdmtOutcome& outcome);
std::optional<float> ug20f_temperature(const MdmtOutcome& outcome);
// A standard flange whose curve does not let it down to the temperature of UCS-66(c).
bool exempt_as_flange(const MdmtInput& element, const MdmtOutcome& outcome);
// The lowest of them all: the element may run as it is down to that temperature.
std::optional<float> lowest_temperature(const MdmtInput& element, const MdmtOutcome& outcome);
// The temperature that the file requires is not reached.
bool falls_short(const MdmtInput& element, const MdmtOutcome& outcome);

MdmtFound found_of(const MdmtInput& element, const MdmtOutcome& outcome);

Checks mdmt_checks(const MdmtInput& element, const MdmtOutcome& outcome, const UnitSystem& units);

std::string mdmt_tables(std::span<const Calculated> elements, const UnitSystem& units);

} // namespace tarvane::vessel
