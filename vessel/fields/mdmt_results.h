// The results of an [[mdmt]] and its checks.
#pragma once

#include "fields/mdmt_keys.h"
#include "fields/results.h"

#include <optional>

namespace tarvane::vessel {

// What they are taken from, degrees F. Nothing where the engine found none.
struct MdmtFound {
    const Settings<MdmtNumber, MdmtText>& given;
    std::string_view nothing; // why there is no result at all; else empty
    bool asked;               // the temperature that must be reached is given
    std::optional<float> ratio, curve, reduction, reduced, ug20f, lowest;
};

inline constexpr std::string_view MDMT_TABLE = "Metal temperatures";

inline constexpr CheckField MDMT_CHECKS[] = {
    {.id = "calculation",
     .paragraph = "",
     .label = "calculation",
     .quantity = Quantity::number,
     .asked = "where none was made"},
    {.id = "impact_tests",
     .paragraph = "UCS-66",
     .label = "temperature without impact tests",
     .quantity = Quantity::number,
     .asked = "a material that is not exempt"},
    {.id = "mdmt",
     .paragraph = "UCS-66",
     .label = "minimum design metal temperature",
     .quantity = Quantity::temperature,
     .asked = "MDMT is given, a material that is not exempt"},
    {.id = "required_thickness",
     .paragraph = "UCS-66(b)",
     .label = "required thickness",
     .quantity = Quantity::thickness,
     .asked = "tr is given, not a pad"},
    {.id = "ratio",
     .paragraph = "UCS-66(b)",
     .label = "stress ratio",
     .quantity = Quantity::number,
     .asked = "ratio is given, not a pad"},
    {.id = "heat_treatment",
     .paragraph = "UCS-68(b)",
     .label = "heat treatment at this temperature",
     .quantity = Quantity::number,
     .asked = "a temperature that takes a treatment"},
};

std::span<const ResultField> mdmt_result_fields();
std::vector<Result> mdmt_results(const MdmtFound& found);

} // namespace tarvane::vessel
