// The keys of an [[external]] and where their values are.
#pragma once

#include "fields/keys.h"
#include "fields/shell_checks.h"

namespace tarvane::vessel {

enum class ExternalNumber {
    kind,
    code,
    edition,
    method,
    table_g,
    P,
    T,
    ci,
    Ut,
    service,
    S,
    Sy,
    material_class,
    material_reference,
    D,
    Do,
    t,
    length,
    k,
    h,
    corroded_K,
    L,
    r,
    skip_1_4f,
    temp_limit,
    alpha,
    Dsmall,
    cone_length,
    count
};

enum class ExternalText { description, material, chart, waive, count };

inline constexpr int EXTERNAL_EDITION_CURRENT = 0, EXTERNAL_EDITION_OLDER = 1;
inline constexpr int METHOD_OF_THE_CODE = 0, METHOD_CHART = 1, METHOD_STRESS = 2;

inline constexpr Choice EXTERNAL_METHODS[] = {
    {"code", METHOD_OF_THE_CODE},      {"chart", METHOD_CHART},
    {"stress", METHOD_STRESS},         {"charts", METHOD_CHART},
    {"Code Case 2286", METHOD_STRESS}, {"buckling stress", METHOD_STRESS}};

// The ce of shells and heads.
inline constexpr Unheeded EXTERNAL_CORROSION{
    Key{"ce", Place::setting, -1, Quantity::thickness, "external corrosion allowance"},
    "shells and heads are not calculated with external corrosion: take it off t, or add it to Ut, "
    "the tolerance, which comes off the outside",
    EXTERNAL_CORROSION_CHECK};

const KeyTable& external_keys();

} // namespace tarvane::vessel
