// Unit factors and labels: the engine calculates in inches, pounds, psi and degrees Fahrenheit; a
// factor is applied only where a value is printed. Also the small table of code constants.
#pragma once

#include "frame/text.h"
#include "frame/types.h"

namespace tarvane {

// Factors in the order of record elements 100 to 110, labels in the order of text slots 285 to 420.
struct UNIT_CONSTANTS {
    Real thickness = 1.0f; // small lengths
    Real pressure = 1.0f;
    Real diameter = 1.0f;
    Real stress = 1.0f;
    Real further = 1.0f;
    Real force = 1.0f;
    Real moment = 1.0f;
    Real area = 1.0f;
    Real temperature_offset = 0.0f;
    Real temperature_scale = 1.0f;
    Real weight = 1.0f;

    Text<3> thickness_label = "in.";
    Text<10> pressure_label = "psig";
    Text<3> diameter_label = "in.";
    Text<10> stress_label = "psi";
    Text<10> further_label;
    Text<3> force_label = "lbf";
    Text<6> moment_label = "ft-lbs";
    Text<6> area_label = "in\xB2";
    Text<5> temperature_label = "\xB0"
                                "F";
    Text<3> weight_label = "lbm";
};

extern UNIT_CONSTANTS UNITS;

// Values as they are printed.
inline Real as_thickness(Real x) { return x * UNITS.thickness; }
inline Real as_diameter(Real x) { return x * UNITS.diameter; }
inline Real as_pressure(Real x) { return x * UNITS.pressure; }
inline Real as_stress(Real x) { return x * UNITS.stress; }
inline Real as_force(Real x) { return x * UNITS.force; }
inline Real as_area(Real x) { return x * UNITS.area; }
inline Real as_weight(Real x) { return x * UNITS.weight; }
// Moments are held in inch-pounds and shown in foot-pounds or their metric counterpart.
inline Real as_moment(Real x) { return x / 12.0f * UNITS.moment; }
inline Real as_temperature(Real x) {
    return (x - UNITS.temperature_offset) / UNITS.temperature_scale;
}

// Code constants: a dimension of the code's text, or the rounded one of its metric edition, always
// in inches. All zero until SET_METRIC_CONSTANTS has run.
inline constexpr Int CODE_CONSTANTS = 18;
extern Real CODE_CONSTANT[CODE_CONSTANTS];
inline Real& C_ONE_SIXTEENTH = CODE_CONSTANT[0];
inline Real& C_ONE_THIRTYSECOND = CODE_CONSTANT[1];
inline Real& C_ONE_EIGHTH = CODE_CONSTANT[2];
inline Real& C_THREE_EIGHTHS = CODE_CONSTANT[3];
inline Real& C_FIVE_EIGHTHS = CODE_CONSTANT[4];
inline Real& C_ONE_QUARTER = CODE_CONSTANT[5];
inline Real& C_ONE_HALF = CODE_CONSTANT[6];
inline Real& C_ONE = CODE_CONSTANT[7];
inline Real& C_ONE_AND_QUARTER = CODE_CONSTANT[8];
inline Real& C_ONE_AND_HALF = CODE_CONSTANT[9];
inline Real& C_THREE_THIRTYSECONDS = CODE_CONSTANT[10];
inline Real& C_THREE_QUARTERS = CODE_CONSTANT[11];
inline Real& C_FOUR = CODE_CONSTANT[12];
inline Real& C_SIX = CODE_CONSTANT[13];
inline Real& C_TWENTY = CODE_CONSTANT[14];
inline Real& C_THIRTY = CODE_CONSTANT[15];
inline Real& C_FORTY = CODE_CONSTANT[16];
inline Real& C_SIXTY = CODE_CONSTANT[17];

// Fills the code constants by the selector METRICCONSTANTS_mp_G_NMETRIC_CONSTANT.
void SET_METRIC_CONSTANTS();

void RESET_CODE_CONSTANTS();

} // namespace tarvane
