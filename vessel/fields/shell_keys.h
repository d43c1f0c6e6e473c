// The keys of a [[shell]] and where their values are.
#pragma once

#include "fields/keys.h"

namespace tarvane::vessel {

enum class ShellNumber {
    kind,
    code,
    edition,
    P,
    T,
    E,
    S,
    Sa,
    material_class,
    Sy,
    Sy_cold,
    temp_limit,
    skip_1_4f,
    strain_limit,
    D,
    Do,
    t,
    ci,
    Ut,
    service,
    k,
    h,
    corroded_K,
    L,
    r,
    straight,
    alpha,
    tk,
    C,
    D2,
    openings,
    d1,
    d2,
    edge1,
    edge2,
    pitch,
    attachment,
    material_reference,
    Dsmall,
    external,
    P_external,
    method,
    table_g,
    length,
    cone_length,
    tangent_length,
    end,
    elevation,
    count
};

enum class ShellText { description, material, chart, waive, on, count };

inline constexpr int END_TOP = 1, END_BOTTOM = 2, END_LEFT = 3, END_RIGHT = 4;

inline constexpr int SHELL_EDITION_CURRENT = 0, SHELL_EDITION_OLDER = 1;

const KeyTable& shell_keys();

} // namespace tarvane::vessel
