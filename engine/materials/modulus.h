// Elastic modulus and expansion coefficient (ASME Section II Part D tables by reference number, the
// built-in tables of PD 5500 and EN materials) and the external pressure charts.
#pragma once

#include "frame/text.h"
#include "frame/types.h"

#include <string_view>

namespace tarvane {

inline constexpr Real AMBIENT = 70.0f; // degrees Fahrenheit of a modulus new and cold

// Stores the chart name, cut at 8 characters or blank-padded.
void SET_CHART(std::string_view name);

// Modulus in millions of psi; temperature in degrees Fahrenheit; reference number of the table.
// Codes 3 and 4 take the built-in tables, every other code the reference table.
Real ASMEMOD(Real temperature, Int reference, Int code);

// Modulus in psi of a chart class (1.4, 1.1, 0.95); 0 for any other class. The three classes share
// one working axis: class 0.95 puts its own there, and it stays for the other two until
// RESET_MATERIALS.
void MODULUS(Real chart_class, Real& result, Real temperature);
// Class of a chart for MODULUS: 1.1 for "HA-3", 0.95 for "NFT-1", else 1.4.
Real CHART_CLASS(std::string_view name);

// Looks up both properties in "ElastAlp07.txt"; a reference of -1 skips its half. `emod_out` in
// millions of psi, `coe_out` in 1.0E-6 per degree Fahrenheit, 0 when there is none. A modulus that
// the table does not have is taken from the external pressure chart of SET_CHART.
void READ_ELAST_ALPHA(Int emod_ref, Int coe_ref, Real coe_temperature, Real emod_temperature,
                      Real& coe_out, Real& emod_out);
// The warning block for the two statuses.
void PROPERTY_WARNINGS(Int emod_status, Int coe_status);

// EMOD_STATUS: 0 fine; 1 not found; 2 taken from the external pressure chart; 3 the same, with the
// chart's highest temperature passed. COE_STATUS: 0 fine, 1 failed.
extern Int EMOD_STATUS, COE_STATUS;

// Where the modulus of the latest ASMEMOD came from, numbered as TARVANE_MODULUS_OF_TABLE and its companions.
enum MODULUS_SOURCE : Int {
    OF_TABLE = 0,
    OF_CHART = 2,
    CHART_EXCEEDED = 3,
    CARBON_STEEL = 4,
    NO_MODULUS = 5
};
extern MODULUS_SOURCE MODULUS_CAME;

inline constexpr Int PROPERTY_POINTS = 36; // temperatures of an axis

// What the latest lookup read.
struct PROPERTY_LOOKUP {
    Text<7> emod_identifier, coe_identifier; // table of the code
    Text<36> emod_description, coe_description;
    Real EMOD_EXTRA = 0.0f;                 // second number of the modulus row
    Real axis[PROPERTY_POINTS] = {};        // degrees Fahrenheit
    Real emod_values[PROPERTY_POINTS] = {}; // millions of psi
    Real coe_values[PROPERTY_POINTS] = {};  // 1.0E-6 per degree
    Real emod_temperature = 0.0f;           // as held to the ends of the axis
    Real coe_temperature = 0.0f;
    Real modulus_psi = 0.0f;
    Real expansion = 0.0f; // plain ratio per degree
};
extern PROPERTY_LOOKUP PROPERTIES;

// A chart's curve at one temperature: a straight line up to Aelastic, then a quadratic in log10(A) up to
// Amax.
struct CHART_CURVE {
    Real t_used = 0.0f; // temperature of the curve: the one asked for, at most the chart's highest
    Real E = 0.0f;      // modulus, millions of psi
    Real Aelastic = 0.0f;                 // A at the end of the straight line
    Real second = 0.0f;                   // the other value of that point, not used
    Real Amax = 0.0f;                     // largest A of the curve
    Real Bmax = 0.0f;                     // B there, psi
    Real c0 = 0.0f, c1 = 0.0f, c2 = 0.0f; // coefficients of B against log10(A)
};

// Chart row at a temperature (Section II Part D, Subpart 3). `name` is a field of 12 characters, of which
// 8 count. Outputs that the lookup does not reach stay as they were passed in. The charts "CS-3" and
// "NFA-11" depend on the yield stress (psi). CHART_TAKEN names the chart whose rows the latest lookup
// took, which is CS-2 for many a name; blank: the file has none.
extern Text<8> CHART_TAKEN;
void READ_CHART(std::string_view name, Real temperature, CHART_CURVE& curve, Real yield);
void READ_CHART(const char* name, Int name_len, Real temperature, Real& t_used, Real& E,
                Real& Aelastic, Real& second, Real& Amax, Real& Bmax, Real& c0, Real& c1, Real& c2,
                Real yield);
// Twice the B at the end of the chart's curve (psi); 0 where the chart takes the yield as input.
void GET_YIELD_STRESS_FROM_CHART(std::string_view name, Real temperature, Real& result);

// Working axis, chart table, lookup state, Table G and class names back to their state at load.
// The kept content of "ElastAlp07.txt" is forgotten; RESET_MATERIALS calls it.
void RESET_MODULUS_TABLE();
void RESET_MATERIALS();

} // namespace tarvane
