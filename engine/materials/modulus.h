// Elastic modulus and expansion coefficient (ASME Section II Part D tables by reference number, the
// built-in tables of PD 5500 and EN materials) and the external pressure charts.
#pragma once

#include "frame/text.h"
#include "frame/types.h"

#include <string_view>

namespace tarvane {

// Stores the chart name, cut at 8 characters or blank-padded.
void SET_CHART(std::string_view name);

// Modulus in millions of psi; temperature in degrees Fahrenheit; reference number of the table.
// Codes 3 and 4 take the built-in tables, every other code the reference table.
Real ASMEMOD(Real temperature, Int reference, Int code);

// Modulus in psi of a chart class (1.4, 1.1, 0.95); 0 for any other class.
void MODULUS(Real chart_class, Real& result, Real temperature);
Real CHART_CLASS(std::string_view name);

void READ_ELAST_ALPHA(Int emod_ref, Int coe_ref, Real coe_temperature, Real emod_temperature,
                      Real& coe_out, Real& emod_out);
void PROPERTY_WARNINGS(Int emod_status, Int coe_status);
extern Int EMOD_STATUS, COE_STATUS;

// Chart row at a temperature. `name` is a field of 12 characters: 8 count, 9 to 12 are blanked.
void READ_CHART(char* name, Int name_len, Real temperature, Real& t_used, Real& E, Real& Aelastic,
                Real& second, Real& Amax, Real& Bmax, Real& c0, Real& c1, Real& c2, Real yield);
void GET_YIELD_STRESS_FROM_CHART(std::string_view name, Real temperature, Real& result);

void RESET_MATERIALS();

} // namespace tarvane
