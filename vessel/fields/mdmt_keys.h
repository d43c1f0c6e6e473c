// The keys of an [[mdmt]] and where their values are.
#pragma once

#include "fields/keys.h"

namespace tarvane::vessel {

enum class MdmtNumber {
    code,
    edition,
    curve,
    normalized,
    material_reference,
    T,
    required,
    tg,
    tg_sr,
    ci,
    ce,
    E,
    tr,
    ratio,
    pwht,
    credit,
    credit_floor,
    ug20f,
    ucs66c,
    reductions,
    curve_tables,
    low_ratio,
    Sy,
    pad,
    pad_ratio,
    pad_reduction,
    impact_temperature,
    use_66g,
    use_66_1,
    use_ug84,
    d2_class,
    count
};

enum class MdmtText { description, material, of, waive, count };

inline constexpr int MDMT_EDITION_CURRENT = 0, MDMT_EDITION_OLDER = 1, MDMT_EDITION_A98 = 2;

const KeyTable& mdmt_keys();

} // namespace tarvane::vessel
