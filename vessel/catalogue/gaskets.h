// Gaskets by name: factor m and seating stress y of Appendix 2, Table 2-5.1. The table has y in psi and in N/mm2,
// rounded each for itself, so that neither is calculated from the other.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace tarvane::vessel {

struct Gasket {
    std::string_view name;
    float m;
    float y_metric;      // N/mm2
    float y_us;          // psi
    bool y_us_published; // by a public source; else known of the table, and approximate
};

inline constexpr std::string_view Y_US_SOURCE =
    "general knowledge of the psi column of Table 2-5.1, without a public copy";

std::span<const Gasket> gaskets();

// By its name, without regard to case, blanks and hyphens; none: a null pointer.
const Gasket* find_gasket(std::string_view name);

// "no gasket "spiral" in the gasket table; the nearest is spiral wound, stainless"
std::string unknown_gasket(std::string_view name);

} // namespace tarvane::vessel
