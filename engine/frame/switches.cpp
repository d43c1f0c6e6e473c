#include "frame/switches.h"

namespace tarvane {

Int G_USE_A5 = 0;
Int G_USE_A6 = 0;
Int G_USE_A7 = 0;

Int moduleCode = 0;
bool NEW_DIV_2_RULES = false;
Int CODE_A98_ADDENDA = 0;
Int G_FAILURE_CORROSION = 0;
Int G_PER_ELEMENT_RATIO = 0;
Int G_MATL_METRIC = 0;
Int G_FORCE_DIV1 = 0;
Int G_OLD_EDITION = 0;
Int G_D2_CLASS = 1;
Int G_MATL_YEAR = 0;
bool G_CURRENT_DIV_2 = false;
TOUGHNESS_SWITCHES G_TOUGHNESS;

Text<8> CHART_NAME;
Real CHART_YIELD = 0.0f;

SETUP_ELEMENT SETUP[200] = {};

void RESET_SWITCHES() {
    FLAGS_mp_IINOSPECIAL = 0;
    FLAGS_mp_LBSAREA = 0;
    FLAGS_mp_LCHORD = 0;
    GLOBALS_mp_G_NUSE_TABLEG = 0;
    GLOBALS_mp_G_NUSE_CORRODEDK = 0;
    GLOBALS_mp_G_NUSE_OLD_DIV_2 = 0;
    GLOBALS_mp_G_NUSE_CASE2286 = 0;
    METRICCONSTANTS_mp_G_NMETRIC_CONSTANT = 0;

    G_USE_A5 = 0;
    G_USE_A6 = 0;
    G_USE_A7 = 0;

    moduleCode = 0;
    NEW_DIV_2_RULES = false;
    CODE_A98_ADDENDA = 0;
    G_FAILURE_CORROSION = 0;
    G_PER_ELEMENT_RATIO = 0;
    G_MATL_METRIC = 0;
    G_FORCE_DIV1 = 0;
    G_OLD_EDITION = 0;
    G_D2_CLASS = 1;
    G_MATL_YEAR = 0;
    G_CURRENT_DIV_2 = false;
    G_TOUGHNESS = {};

    CHART_NAME.clear();
    CHART_YIELD = 0.0f;

    for (SETUP_ELEMENT& element : SETUP)
        element.whole = 0;
}

} // namespace tarvane
