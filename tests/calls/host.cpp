#include "host.h"

#include "routines.h"

#include <cstring>
#include <filesystem>
#include <string>

namespace calls {

namespace {

// The rounds of the failure corrosion loop grow with the thickness: thick plates are rare.
constexpr std::size_t LOOP_ONE_IN = 20, TO_TEN_INCHES_ONE_IN = 10, ABOVE_ONE_IN = 50;
static_assert(LOOP_ONE_IN * ABOVE_ONE_IN >= 1000, "plates above 10 in.: once in 1,000 calls");

// A routine that a library may lack.
template <typename Routine, typename... Arguments>
void call_if_there(Routine routine, Arguments... arguments) {
    if (routine != nullptr) routine(arguments...);
}

} // namespace

// ---- the host's beginning --------------------------------------------------------------------------

void Host::reset() const {
    forget_heard();
    for (std::int32_t unit = 1; unit <= 1000; ++unit)
        call_if_there(library.CLOSEUNIT, &unit);
    for (const auto& entry : std::filesystem::directory_iterator("."))
        std::filesystem::remove_all(entry.path());
    call_if_there(library.RESET_ENGINE);
    const TARVANE_HOST_SERVICES services = staying_services();
    call_if_there(library.SET_HOST_SERVICES, &services);
    void* window = nullptr;
    call_if_there(library.SET_HOST_WINDOW, &window);
    const std::int32_t off = 0;
    call_if_there(library.SET_NO_DIALOG, &off);
    for (std::int32_t table = 1; table <= 2; ++table)
        for (std::int32_t row = 1; row <= TARVANE_ELEMENT_ROWS; ++row)
            call_if_there(library.SET_MATERIAL_ITEM, &table, &row, " ", 1);
    const float factors[11] = {1, 1, 1, 1, 1, 1, 1, 1, 0, 1, 1};
    const std::string_view labels = "in.       psig      in.       psi       lb./in^3  lb.       "
                                    "ft.lb.    in\xb2       \xb0"
                                    "F        lb.       ";
    call_if_there(library.SET_UNITS, factors, labels.data(),
                  static_cast<std::int32_t>(labels.size()));
}

void Host::begin() const {
    folders();
    if (library.GETSETUP != nullptr) {
        TARVANE_SETUP_ELEMENT* const setup = library.GETSETUP();
        setup[TARVANE_SETUP_CODE - 1].whole = chance.between(1, 4);
        for (const int element : {TARVANE_SETUP_NO_CORRECTION, TARVANE_SETUP_ROOT_TWO})
            setup[element - 1].real = chance.one_in(4) ? 1.0f : 0.0f;
        for (const int element : {TARVANE_SETUP_PRINT_EXTERNAL, TARVANE_SETUP_EDITION})
            setup[element - 1].real = chance.one_in(4) ? 0.0f : 1.0f;
    }
    if (chance.one_in(2)) scribble_variables(library, chance, Noise::none);
    call_if_there(library.SET_METRIC_CONSTANTS);
    std::int32_t flags[7];
    for (std::int32_t& flag : flags)
        flag = chance.between(0, 1);
    if (chance.one_in(2))
        call_if_there(library.SET_GLOBALS_FROM_TVN, flags, flags + 1, flags + 2, flags + 3,
                      flags + 4, flags + 5, flags + 6);
    if (chance.one_in(2))
        call_if_there(library.SET_TOUGHNESS_SWITCHES, flags + 1, flags + 2, flags + 3, flags + 4,
                      flags + 5, flags + 6, flags);
    if (chance.one_in(4)) {
        const std::int32_t year = chance.one_in(2) ? 0 : chance.between(0, 18);
        call_if_there(library.SET_MATERIAL_SELECTION, flags + 5, flags + 6, flags, &year);
    }
    std::string chart;
    sensible_text(chance, "chart", chart);
    call_if_there(library.SET_CHART, chart.data(), static_cast<std::int32_t>(chart.size()));
    const float yield = chance.between(20000.0f, 60000.0f);
    call_if_there(library.SET_YIELD, &yield);
    const std::int32_t cases = chance.one_in(2) ? 1 : 0;
    call_if_there(library.SET_IWRTCA, &cases);
    host_blocks();
    report();
}

// What a vessel's host gives in addition to the arguments.
void Host::host_blocks() const {
    for (const std::string_view name : {"GETELEMENTTABLES", "GETHOSTINPUT", "READ_IMPACT_TABLE"}) {
        const Routine& routine = routines()[routine_number(name)];
        if (routine.exported(library) && !chance.one_in(3))
            routine.call(library, chance, Noise::none, Manner(), routine.recipe);
    }
}

// The data files, seldom others: damaged, or none. The library's own folder is not one of them.
void Host::folders() const {
    static constexpr std::string_view OTHERS[] = {"../damaged0", "../damaged1", "../damaged2",
                                                  "../damaged3", "../nowhere"};
    const std::string_view system = chance.one_in(10) ? chance.of(OTHERS) : "../real";
    const std::string_view module = chance.one_in(10) ? chance.of(OTHERS) : system;
    set_folders(system, module);
}

void Host::set_folders(std::string_view system, std::string_view module) const {
    call_if_there(library.SET_SYSTEM_DIR, system.data(), static_cast<std::int32_t>(system.size()));
    call_if_there(library.SET_MODULE_DIR, module.data(), static_cast<std::int32_t>(module.size()));
}

void Host::report() const {
    const std::int32_t on = 1, file = 20, store = -1;
    std::int32_t status = 0;
    const std::size_t kind = chance.below(6);
    if (kind == 0) return;
    if (kind <= 2) {
        call_if_there(library.OPENUNIT, &file, "report", 6, &status);
        call_if_there(library.SET_IOUT, &file);
    } else {
        call_if_there(library.SET_IOUT, &store);
    }
    call_if_there(library.SET_IWRITE, &on);
    call_if_there(library.SET_IWRTFL, &on);
    call_if_there(library.BEGIN_REPORT);
}

void Host::clear_lines() const {
    call_if_there(library.BEGIN_REPORT);
    if (library.GETLINESCOMFLG != nullptr)
        std::memset(library.GETLINESCOMFLG(), ' ',
                    std::size_t{TARVANE_STORE_RECORDS} * TARVANE_STORE_WIDTH);
}

// A third of the flanges meet a design code of the module that is not theirs, or other Division 2 rules
// than the call before.
void Host::prepare_flange(Manner& manner) {
    manner.code = chance.between(1, 4);
    std::int32_t module_code = manner.code;
    if (chance.one_in(3)) {
        if (chance.one_in(2))
            module_code = 1 + (manner.code + chance.between(0, 2)) % 4;
        else
            old_division_2 = 1 - old_division_2;
    }
    call_if_there(library.SET_MODULE_CODE, &module_code);
    if (library.GLOBALS_mp_G_NUSE_OLD_DIV_2 != nullptr)
        *library.GLOBALS_mp_G_NUSE_OLD_DIV_2 = old_division_2;
    const std::int32_t loop = chance.one_in(LOOP_ONE_IN) ? 1 : 0;
    const std::int32_t stress_ratio = chance.between(0, 1);
    call_if_there(library.SET_SWITCHES, &loop, &stress_ratio);
    if (loop == 0 || chance.one_in(ABOVE_ONE_IN)) return;
    manner.most_thickness = chance.one_in(TO_TEN_INCHES_ONE_IN) ? 10.0f : 1.0f;
}

} // namespace calls
