// Hydrostatic, gasket and bolt loads (2-5, 4.16.6), required bolt area, design bolt load.
#pragma once

#include "flange/state.h"

namespace tarvane {

// H, Hp, HpPrime, HGY, Hd, Ht, HS, Wm1, Wm2, Am1, Am2, Am, extLoad, pressureArea, hpPerP,
// hpPrimePerP, each with its lines.
void BOLT_LOADS(FLANGE_STATE& s);
// W and HG, with their lines; nothing for a full face reverse flange under PD 5500 and EN 13445.
void FLANGE_DESIGN_BOLT_LOAD(FLANGE_STATE& s);

} // namespace tarvane
