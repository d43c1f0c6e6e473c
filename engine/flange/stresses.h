// Flange stresses (2-7, 4.16.8, PD 5500 3.8, EN 13445-3 11.5), flat heads by UG-34.
#pragma once

#include "flange/state.h"

#include <initializer_list>
#include <string_view>

namespace tarvane {

// Fills STRESS, the rating terms of a flat head, Cf, Zcover and tMin, each stress with its lines.
void FLANGE_STRESSES(FLANGE_STATE& s);
// The flat head (type 7 without a hub length), called by FLANGE_STRESSES; tCor without allowance.
void FLAT_HEAD_STRESSES(FLANGE_STATE& s, Real tCor);

// Words of one stress: the names of the ASME codes and PD 5500, those of EN 13445 where they
// differ (empty otherwise), and one or two templates ("" for none).
struct STRESS_WORDS {
    std::string_view label{}, labelEN{};
    std::string_view symbol{}, symbolEN{};
    std::string_view template1{}, template2{};
};

// Label in the heading style, symbol line, one or two filled templates, value line; each cut at
// column 78. The values of the templates come in report units, the stress itself in psi. An empty
// second template, or the word "NONE", is left out; a remark follows the ten columns of the unit.
void WRITE_STRESS_LINES(std::string_view label, std::string_view symbol,
                        std::string_view template_text, std::initializer_list<Real> values,
                        std::string_view template2, std::initializer_list<Real> values2, Real value,
                        std::string_view remark = {});

// The same by a table of words.
void WRITE_STRESS_LINES(const STRESS_WORDS& words, bool namesOfEN,
                        std::initializer_list<Real> values, std::initializer_list<Real> values2,
                        Real value);

// A moment as the substituted lines show it: inch-pounds under a factor of 1 (to 1.001), else
// through the moment factor.
Real moment_in_line(Real M);

} // namespace tarvane
