// What the codes say about a material by its name and record: curve of UCS-66, UHA-51, UCS-6.
#pragma once

#include "frame/text.h"
#include "frame/types.h"

#include <string_view>

namespace tarvane {

// UCS-66 curve from the material's record, for thin sections when Thin is 1; -1 without a record.
void GETUCSCURVE(std::string_view Spec, Int Reference, Int Code, Int Thin, Int& Curve);

// The name without its punctuation and blanks: "SA-202 A" is "SA202A".
Text<16> MATERIAL_NAME_KEY(std::string_view name);

// UHA-51: austenitic grades that are exempt from impact testing. Only while moduleCode and Code are
// below 2.
bool LIS_EXEMPT_SS(Int Code, std::string_view Name);

// Results and note of an exempt grade; nothing for other materials.
void UHA51_NOTE(Int Code, std::string_view Name, Real& Tmin, Real& Mdmt, Real& Ratio, Real& Factor1,
                Real& Factor2);

// UCS-6(b)(3): warning about SA-36, SA-283 and, with G40Flag 1, SA/CSA-G40.21 above 5/8 in. Only for
// Code below 2.
void UCS6_NOTE(std::string_view Material, Real Thickness, Int Code, Int G40Flag);

} // namespace tarvane
