// Flange stresses (2-7, 4.16.8, PD 5500 3.8, EN 13445-3 11.5), flat heads by UG-34.
#pragma once

#include "flange/state.h"

#include <initializer_list>
#include <string_view>

namespace tarvane {

// Fills STRESS, the rating terms of a flat head, Cf, Zcover and tMin, each stress with its lines.
void FLANGE_STRESSES(FLANGE_STATE& s);
// The flat head (type 7 without a hub length), called by FLANGE_STRESSES.
void FLAT_HEAD_STRESSES(FLANGE_STATE& s, Real tCor);

// Label in the heading style, symbol line, one or two filled templates, value line.
void WRITE_STRESS_LINES(std::string_view label, std::string_view symbol,
                        std::string_view template_text, std::initializer_list<Real> values,
                        std::string_view template2, std::initializer_list<Real> values2,
                        Real value, std::string_view remark = {});

// A moment as the substituted lines show it.
Real moment_in_line(Real M);

} // namespace tarvane
