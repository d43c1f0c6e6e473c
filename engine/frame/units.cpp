#include "frame/units.h"

#include "frame/switches.h"

namespace tarvane {

UNIT_CONSTANTS UNITS;

Real C_ONE_SIXTEENTH = 0.0f, C_ONE_THIRTYSECOND = 0.0f, C_ONE_EIGHTH = 0.0f, C_THREE_EIGHTHS = 0.0f,
     C_FIVE_EIGHTHS = 0.0f, C_ONE_QUARTER = 0.0f, C_ONE_HALF = 0.0f, C_ONE = 0.0f,
     C_ONE_AND_QUARTER = 0.0f, C_ONE_AND_HALF = 0.0f, C_THREE_THIRTYSECONDS = 0.0f,
     C_THREE_QUARTERS = 0.0f, C_FOUR = 0.0f, C_SIX = 0.0f, C_TWENTY = 0.0f, C_THIRTY = 0.0f,
     C_FORTY = 0.0f, C_SIXTY = 0.0f;

namespace {

struct CodeConstant {
    Real& constant;
    Real inch;
    Real metric; // the metric edition's dimension in inches
};

constexpr CodeConstant code_constants[] = {
    {C_ONE_SIXTEENTH, 0.0625f, 0.05905512f},         // 1.5 mm
    {C_ONE_THIRTYSECOND, 0.03125f, 0.031496063f},    // 0.8 mm
    {C_ONE_EIGHTH, 0.125f, 0.11811024f},             // 3 mm
    {C_THREE_EIGHTHS, 0.375f, 0.39370078f},          // 10 mm
    {C_FIVE_EIGHTHS, 0.625f, 0.62992126f},           // 16 mm
    {C_ONE_QUARTER, 0.25f, 0.23622048f},             // 6 mm
    {C_ONE_HALF, 0.5f, 0.511811f},                   // 13 mm
    {C_ONE, 1.0f, 0.984252f},                        // 25 mm
    {C_ONE_AND_QUARTER, 1.25f, 1.2598425f},          // 32 mm
    {C_ONE_AND_HALF, 1.5f, 1.496063f},               // 38 mm
    {C_THREE_THIRTYSECONDS, 0.09375f, 0.098425195f}, // 2.5 mm
    {C_THREE_QUARTERS, 0.75f, 0.7480315f},           // 19 mm
    {C_FOUR, 4.0f, 3.937008f},                       // 100 mm
    {C_SIX, 6.0f, 5.905512f},                        // 150 mm
    {C_TWENTY, 20.0f, 20.078741f},                   // 510 mm
    {C_THIRTY, 30.0f, 29.92126f},                    // 760 mm
    {C_FORTY, 40.0f, 40.157482f},                    // 1020 mm
    {C_SIXTY, 60.0f, 59.84252f},                     // 1520 mm
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
    const bool metric = metric_constants();
    for (const CodeConstant& entry : code_constants)
        entry.constant = metric ? entry.metric : entry.inch;
}

void RESET_CODE_CONSTANTS() {
    for (const CodeConstant& entry : code_constants)
        entry.constant = 0.0f;
}

} // namespace tarvane
