#include "catalogue/gaskets.h"

#include "values/text.h"

#include <vector>

namespace tarvane::vessel {

namespace {

constexpr bool PUBLISHED = true, KNOWN = false;

// m and N/mm2: a workbook of Annex H of EN 13445-3, which has the figures of Table 2-5.1, and a second list that
// agrees with it. psi: worked example 10.9 of Jawad and Farr (spiral wound, m 3, 10 000, which is the 69 N/mm2 of
// both spiral wound lines) and ASME example E4.16.1 (flat jacketed, m 3.75, 7600). The other psi are known of the
// table, without a public copy that shows them.
constexpr Gasket GASKETS[] = {
    {"elastomer, below 75 IRH", 0.5f, 0.0f, 0.0f, PUBLISHED},
    {"elastomer, 75 IRH or above", 1.0f, 1.4f, 200.0f, KNOWN},
    {"elastomer with cotton fabric", 1.25f, 2.8f, 400.0f, KNOWN},
    {"elastomer with asbestos fabric, 3-ply", 2.25f, 15.2f, 2200.0f, KNOWN},
    {"elastomer with asbestos fabric, 2-ply", 2.5f, 20.0f, 2900.0f, KNOWN},
    {"elastomer with asbestos fabric, 1-ply", 2.75f, 25.5f, 3700.0f, KNOWN},
    {"asbestos, 3.2 mm", 2.0f, 11.0f, 1600.0f, KNOWN},
    {"asbestos, 1.6 mm", 2.75f, 25.5f, 3700.0f, KNOWN},
    {"asbestos, 0.8 mm", 3.5f, 44.8f, 6500.0f, KNOWN},
    {"vegetable fibre", 1.75f, 7.6f, 1100.0f, KNOWN},
    {"spiral wound, carbon steel", 2.5f, 69.0f, 10000.0f, PUBLISHED},
    {"spiral wound, stainless", 3.0f, 69.0f, 10000.0f, PUBLISHED},
    {"spiral wound, monel", 3.0f, 69.0f, 10000.0f, PUBLISHED},
    {"corrugated with insert, soft aluminium", 2.5f, 20.0f, 2900.0f, KNOWN},
    {"corrugated with insert, soft copper", 2.75f, 25.5f, 3700.0f, KNOWN},
    {"corrugated with insert, soft steel", 3.0f, 31.0f, 4500.0f, KNOWN},
    {"corrugated with insert, monel or chrome", 3.25f, 37.9f, 5500.0f, KNOWN},
    {"corrugated with insert, stainless", 3.5f, 44.8f, 6500.0f, KNOWN},
    {"corrugated jacketed, soft aluminium", 2.75f, 25.5f, 3700.0f, KNOWN},
    {"corrugated jacketed, soft copper", 3.0f, 31.0f, 4500.0f, KNOWN},
    {"corrugated jacketed, soft steel", 3.25f, 37.9f, 5500.0f, KNOWN},
    {"corrugated jacketed, monel or chrome", 3.5f, 44.8f, 6500.0f, KNOWN},
    {"corrugated jacketed, stainless", 3.75f, 52.4f, 7600.0f, KNOWN},
    {"flat jacketed, soft aluminium", 3.25f, 37.9f, 5500.0f, KNOWN},
    {"flat jacketed, soft copper", 3.5f, 44.8f, 6500.0f, KNOWN},
    {"flat jacketed, soft steel", 3.75f, 52.4f, 7600.0f, PUBLISHED},
    {"flat jacketed, monel", 3.5f, 55.1f, 8000.0f, KNOWN},
    {"flat jacketed, 4 to 6 chrome", 3.75f, 62.0f, 9000.0f, KNOWN},
    {"flat jacketed, stainless", 3.75f, 62.0f, 9000.0f, KNOWN},
    {"grooved metal, soft aluminium", 3.25f, 37.9f, 5500.0f, KNOWN},
    {"grooved metal, soft copper", 3.5f, 44.8f, 6500.0f, KNOWN},
    {"grooved metal, soft steel", 3.75f, 52.4f, 7600.0f, KNOWN},
    {"grooved metal, monel or chrome", 3.75f, 62.0f, 9000.0f, KNOWN},
    {"grooved metal, stainless", 4.25f, 69.5f, 10100.0f, KNOWN},
    {"solid flat metal, soft aluminium", 4.0f, 60.6f, 8800.0f, KNOWN},
    {"solid flat metal, soft copper", 4.75f, 89.5f, 13000.0f, KNOWN},
    {"solid flat metal, soft steel", 5.5f, 124.0f, 18000.0f, KNOWN},
    {"solid flat metal, monel or chrome", 6.0f, 150.0f, 21800.0f, KNOWN},
    {"solid flat metal, stainless", 6.5f, 179.0f, 26000.0f, KNOWN},
    {"ring joint, soft steel", 5.5f, 124.0f, 18000.0f, KNOWN},
    {"ring joint, monel or chrome", 6.0f, 150.0f, 21800.0f, KNOWN},
    {"ring joint, stainless", 6.5f, 179.0f, 26000.0f, KNOWN},
};

} // namespace

std::span<const Gasket> gaskets() { return GASKETS; }

const Gasket* find_gasket(std::string_view name) {
    const std::string wanted = folded(name);
    for (const Gasket& gasket : GASKETS) {
        if (folded(gasket.name) == wanted) return &gasket;
    }
    return nullptr;
}

std::string unknown_gasket(std::string_view name) {
    std::vector<std::string_view> names;
    for (const Gasket& gasket : GASKETS)
        names.push_back(gasket.name);
    const std::string_view near = nearest(name, names);
    return "no gasket " + echoed(name) + " in the gasket table" +
           (near.empty() ? "" : "; the nearest is " + std::string(near));
}

} // namespace tarvane::vessel
