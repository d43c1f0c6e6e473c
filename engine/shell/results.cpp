#include "shell/results.h"

namespace tarvane {

namespace {

constexpr Int BYTES = static_cast<Int>(sizeof(SHELL_RESULTS));

constexpr SHELL_RESULTS at_load() {
    SHELL_RESULTS r{};
    r.version = SHELL_RESULTS_VERSION;
    r.bytes = BYTES;
    return r;
}

// No stage has run.
constexpr SHELL_RESULTS begun() {
    SHELL_RESULTS r = at_load();
    r.tc = r.t_req_raw = r.t_least = r.t_req = r.t_14f = r.t_governing = r.t_required = NO_VALUE;
    r.mawp = r.map_nc = r.stress = NO_VALUE;
    r.mawp_formula = r.map_nc_formula = r.stress_formula = NO_VALUE;
    r.mawp_knuckle = r.map_nc_knuckle = r.stress_knuckle = NO_VALUE;
    r.mawp_14f = r.map_nc_14f = r.t_crown = r.t_knuckle = NO_VALUE;
    r.crown_radius = r.ratio = r.ratio_new = r.modulus_design = r.modulus_ambient = NO_VALUE;
    r.attachment_factor = r.spacing_factor = r.shape_factor = r.span = NO_VALUE;
    return r;
}

constexpr SHELL_RESULTS AT_LOAD = at_load(), BEGUN = begun();

} // namespace

SHELL_RESULTS SHELL = AT_LOAD;

void BEGIN_SHELL_RESULTS() {
    const auto serial = static_cast<std::uint32_t>(SHELL.serial) + 1u;
    SHELL = BEGUN;
    SHELL.serial = static_cast<Int>(serial);
}

void RESET_SHELL_RESULTS() { SHELL = AT_LOAD; }

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
