// Small end of the hub as a cylinder (UG-27, EN 13445-3 7.4.2), lap of a lap joint flange.
#pragma once

#include "flange/state.h"

namespace tarvane {

inline constexpr Real HUB_NOT_RATED = 99999.0f;
// `ci` is the allowance given by the caller; tHubReq is left as it is where no rule sets it; pHub is
// 99999.0 unless a welding neck hub is rated.
void HUB_SMALL_END(FLANGE_GIVEN& s, Real ci, bool silent, Real& tHubReq, Real& pHub);
void LAP_JOINT_THICKNESS(const FLANGE_STATE& s);

} // namespace tarvane
