#include "frame/units.h"

#include "frame/switches.h"

#include <cstring>

namespace tarvane {

UNIT_CONSTANTS UNITS;

Real CODE_CONSTANT[CODE_CONSTANTS] = {};

namespace {

// In the order of their names.
constexpr Real INCH[CODE_CONSTANTS] = {0.0625f, 0.03125f, 0.125f, 0.375f, 0.625f,   0.25f,
                                       0.5f,    1.0f,     1.25f,  1.5f,   0.09375f, 0.75f,
                                       4.0f,    6.0f,     20.0f,  30.0f,  40.0f,    60.0f};
// The metric edition's dimensions in inches.
constexpr Real METRIC[CODE_CONSTANTS] = {
    0.05905512f,  // 1.5 mm
    0.031496063f, // 0.8 mm
    0.11811024f,  // 3 mm
    0.39370078f,  // 10 mm
    0.62992126f,  // 16 mm
    0.23622048f,  // 6 mm
    0.511811f,    // 13 mm
    0.984252f,    // 25 mm
    1.2598425f,   // 32 mm
    1.496063f,    // 38 mm
    0.098425195f, // 2.5 mm
    0.7480315f,   // 19 mm
    3.937008f,    // 100 mm
    5.905512f,    // 150 mm
    20.078741f,   // 510 mm
    29.92126f,    // 760 mm
    40.157482f,   // 1020 mm
    59.84252f,    // 1520 mm
};

bool metric_constants() {
    switch (METRICCONSTANTS_mp_G_NMETRIC_CONSTANT) {
    case 0:
        return false;
    case 1:
        return true;
    default:
        return UNITS.thickness > 1.1f;
    }
}

} // namespace

void SET_METRIC_CONSTANTS() {
    std::memcpy(CODE_CONSTANT, metric_constants() ? METRIC : INCH, sizeof CODE_CONSTANT);
}

void RESET_CODE_CONSTANTS() { std::memset(CODE_CONSTANT, 0, sizeof CODE_CONSTANT); }

} // namespace tarvane
