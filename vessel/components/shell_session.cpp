#include "components/shell_session.h"

#include "components/engine_session.h"
#include "components/functions.h"
#include "components/shell_report.h"
#include "tarvane/tarvane.h"

#include <algorithm>

namespace tarvane::vessel {

using N = ShellNumber;

namespace {

constexpr float DEGREE = 3.1415927f / 180.0f;

void set_globals(const ShellInput& shell) {
    const std::int32_t corroded_k = shell.whole_setting(N::corroded_K);
    const std::int32_t older = shell.older_division_2() ? ON : OFF;
    SET_GLOBALS_FROM_TVN(&OFF, &corroded_k, &OFF, &OFF, &older, &ON, &OFF);
    const std::int32_t code = shell.whole_setting(N::code);
    SET_MODULE_CODE(&code);
}

// The second name of an argument of SHLINT: k of an ellipse, thickness of the knuckle of a cone.
float ninth_argument(const ShellInput& shell) {
    return shell.setting(shell.shape() == TARVANE_CONE ? N::tk : N::k);
}

void call_shlint(const ShellInput& shell, TARVANE_SHELL_RESULTS& found) {
    const auto at = [&](N number) -> const float* {
        return &shell.settings[static_cast<std::size_t>(number)];
    };
    const std::int32_t element = shell.shape(), reference = shell.whole_setting(N::material_class),
                       service = shell.whole_setting(N::service),
                       outside = shell.outside() ? ON : OFF,
                       skip = shell.whole_setting(N::skip_1_4f),
                       corroded_k = shell.whole_setting(N::corroded_K);
    const float D = shell.diameter(), k = ninth_argument(shell);
    float L = shell.setting(N::L), Sy_cold = shell.setting(N::Sy_cold);
    float t_req, t_req_raw, mawp, map_nc, stress, t_14f, mawp_14f, map_nc_14f;
    std::int32_t status;
    SHLINT(at(N::P), at(N::Sa), at(N::S), at(N::E), &element, &D, at(N::t), at(N::ci), &k, &L,
           at(N::r), at(N::alpha), nullptr, nullptr, at(N::C), at(N::D2), &t_req, &mawp, &map_nc,
           &stress, &reference, at(N::T), &service, &t_req_raw, &outside, &t_14f, at(N::Sy),
           &mawp_14f, &map_nc_14f, &status, &Sy_cold, at(N::Ut), &skip, at(N::d1), at(N::d2),
           at(N::edge1), at(N::edge2), at(N::pitch), at(N::attachment), &corroded_k,
           shell.material().data(), static_cast<std::int32_t>(shell.material().size()));
    found = *GETSHELLRESULTS();
}

void call_shell_report(const ShellInput& shell, const ConvexCheck* check) {
    const auto at = [&](N number) -> const float* {
        return &shell.settings[static_cast<std::size_t>(number)];
    };
    const std::int32_t element = shell.shape(), reference = shell.whole_setting(N::material_class),
                       service = shell.whole_setting(N::service),
                       outside = shell.outside() ? ON : OFF,
                       skip = shell.whole_setting(N::skip_1_4f),
                       corroded_k = shell.whole_setting(N::corroded_K),
                       convex = check != nullptr ? ON : OFF;
    const float D = shell.diameter(), k = ninth_argument(shell);
    const ConvexCheck chart = check != nullptr ? *check : ConvexCheck{};
    SHELL_REPORT(at(N::P), at(N::Sa), at(N::S), at(N::E), &element, &D, at(N::t), at(N::ci), &k,
                 at(N::L), at(N::r), at(N::alpha), at(N::C), at(N::D2), &reference, at(N::T),
                 &service, &outside, at(N::Sy), at(N::Sy_cold), at(N::Ut), &skip, at(N::d1),
                 at(N::d2), at(N::edge1), at(N::edge2), at(N::pitch), at(N::attachment),
                 &corroded_k, shell.material().data(),
                 static_cast<std::int32_t>(shell.material().size()), at(N::temp_limit), &convex,
                 &chart.P, &chart.maep, &chart.tca);
}

void find_failure_corrosion(const ShellInput& shell, ShellOutcome& o) {
    const auto at = [&](N number) -> const float* {
        return &shell.settings[static_cast<std::size_t>(number)];
    };
    const std::int32_t element = shell.shape(), service = shell.whole_setting(N::service),
                       outside = shell.outside() ? ON : OFF,
                       corroded_k = shell.whole_setting(N::corroded_K);
    // It does not have the tolerance, which is taken off the outside.
    const float Ut = shell.setting(N::Ut), t = shell.setting(N::t) - Ut,
                tk = o.found.knuckle != 0 ? shell.setting(N::tk) - Ut : shell.setting(N::tk);
    float D = shell.diameter();
    if (shell.outside() && shell.shape() != TARVANE_FLAT_HEAD) {
        const float slope =
            shell.shape() == TARVANE_CONE ? cos(shell.setting(N::alpha) * DEGREE) : 1.0f;
        D -= 2.0f * Ut / slope;
    }
    COMPUTE_FAILURE_CA_DIV1(at(N::P), &D, at(N::E), at(N::S), &t, at(N::k), at(N::L), at(N::r),
                            at(N::alpha), at(N::C), at(N::D2), &element, &o.fail_ca, &outside, &tk,
                            &o.fail_ca_knuckle, at(N::d1), at(N::d2), at(N::edge1), at(N::edge2),
                            at(N::pitch), at(N::attachment), &service, &corroded_k);
}

void find_forming_strain(const ShellInput& shell, ShellOutcome& o) {
    if (shell.material().empty()) return;
    const auto at = [&](N number) -> const float* {
        return &shell.settings[static_cast<std::size_t>(number)];
    };
    const std::int32_t element = shell.shape(), outside = shell.outside() ? ON : OFF,
                       code = TARVANE_ASME_VIII_1,
                       reference = shell.whole_setting(N::material_reference), index = 0;
    const float D = shell.diameter();
    const float D_small = shell.setting(N::Dsmall) > 0.0f ? shell.setting(N::Dsmall) : D;
    const float straight = shell.setting(N::straight) / 12.0f, none = 0.0f;
    std::int32_t cls = 0;
    float thinning = 0.0f, area = 0.0f, D_max = 0.0f, D_blank = 0.0f;
    FORMING_STRAIN(&element, &outside, &D, at(N::t), &o.strain, shell.material().data(),
                   static_cast<std::int32_t>(shell.material().size()), at(N::r), &D_small,
                   at(N::alpha), &code, &reference, &cls, &index, &thinning, &area, &D_max,
                   &D_blank, at(N::k), at(N::L), &none, &straight);
}

} // namespace

TARVANE_SHELL_RESULTS look_at(const ShellInput& shell) {
    set_globals(shell);
    SET_IWRITE(&OFF);
    TARVANE_SHELL_RESULTS found{};
    call_shlint(shell, found);
    SET_IWRITE(&OFF); // SHLINT may leave it on
    return found;
}

void calculate_pressures(const ShellInput& shell, ShellOutcome& o) {
    o.found = look_at(shell);
    if (!o.by_older_division_2()) find_failure_corrosion(shell, o);
}

void report_formulas(const ShellInput& shell) { call_shell_report(shell, nullptr); }

void report_convex_check(const ShellInput& head, const ConvexCheck& check) {
    call_shell_report(head, &check);
}

void calculate_shell(const ShellInput& shell, ShellOutcome& o) {
    calculate_pressures(shell, o);
    find_forming_strain(shell, o);
}

ShellOutcome run_shell(const ShellInput& shell, const Request& file) {
    ShellOutcome outcome;
    const Services services(outcome);
    RESET_ENGINE();
    set_decimal_comma(file);
    set_units(file);
    const ReportUnit report(file.report);
    calculate_shell(shell, outcome);
    report.switch_on();
    if (file.report) write_shell_report(shell, outcome, file.units);
    outcome.report = report.switch_off_and_read();
    return outcome;
}

} // namespace tarvane::vessel
