// Descriptions of what a calculation gives: results and checks, one table of each for a kind of component.
// The result of a request, the closing tables, the schema and `tarvane keys` share them.
#pragma once

#include "catalogue/units.h"

#include <string_view>

namespace tarvane::vessel {

struct ResultField {
    std::string_view name;   // "mawp", unique among the results of the kind
    std::string_view symbol; // of the report; may be empty
    Quantity quantity;
    std::string_view label; // "Maximum allowable working pressure": a row of the closing table
    std::string_view meaning = {}; // what the label leaves open
    bool listed = true;            // in the closing table
};

struct CheckField {
    std::string_view id;         // "bolt_area", unique among the checks of the kind
    std::string_view paragraph;  // of the code: "2-5", "UG-27 (c)(1)"
    std::string_view label;      // "bolt area": what is compared
    Quantity quantity;           // of demand and limit
    bool at_least = false;       // the demand must not be below the limit; else not above it
    std::string_view asked = {}; // the condition under which the code asks; empty: always
};

} // namespace tarvane::vessel
