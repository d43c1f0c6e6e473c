#include "shell/results.h"

namespace tarvane {

SHELL_RESULTS SHELL = SHELL_RESULTS_AT_LOAD;

void RESET_SHELL_RESULTS() { SHELL = SHELL_RESULTS_AT_LOAD; }

std::string_view RULE_OF(Int formula) {
    switch (formula) {
    case UG_27_C_1:
        return "UG-27 (c)(1)";
    case APP_1_1_A_1:
        return "App. 1-1 (a)(1)";
    case APP_1_2_A_1:
        return "App. 1-2 (a)(1)";
    case UG_27_D:
        return "UG-27 (d)";
    case APP_1_1_A_2:
        return "App. 1-1 (a)(2)";
    case APP_1_3:
        return "App. 1-3";
    case UG_32_D:
        return "UG-32 (d)";
    case APP_1_4_C:
        return "App. 1-4 (c)";
    case APP_1_4_D:
        return "App. 1-4 (d)";
    case UG_32_G:
        return "UG-32 (g)";
    case APP_1_4_E:
        return "App. 1-4 (e)";
    case UG_34_C_2:
        return "UG-34 (c)(2)";
    case UG_34_C_3:
        return "UG-34 (c)(3)";
    case AD_204:
        return "AD-204";
    default:
        return {};
    }
}

} // namespace tarvane
