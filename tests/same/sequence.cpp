#include "sequence.h"

#include "digest.h"

#include <cstring>
#include <filesystem>
#include <string>

#include <sys/time.h>
#include <unistd.h>

namespace same {

using calls::Block;
using calls::Noise;

namespace {

// The rounds of the failure corrosion loop go with the thickness: thick plates are rare.
constexpr std::size_t LOOP_ONE_IN = 20, TO_TEN_INCHES_ONE_IN = 10, ABOVE_ONE_IN = 50;
static_assert(LOOP_ONE_IN * ABOVE_ONE_IN >= 1000, "plates above 10 in.: once in 1,000 calls");

std::uint64_t number_of(std::string_view name) {
    Digest digest;
    digest.add(name.data(), name.size());
    return digest.value();
}

// A routine that a library may lack.
template <typename Routine, typename... Arguments>
void call_if_there(Routine routine, Arguments... arguments) {
    if (routine != nullptr) routine(arguments...);
}

void limit_time(long seconds) {
    itimerval timer = {};
    timer.it_value.tv_sec = seconds;
    setitimer(ITIMER_PROF, &timer, nullptr);
}

Form form_of(Block::Kind kind) {
    switch (kind) {
    case Block::Kind::reals:
        return Form::reals;
    case Block::Kind::wholes:
        return Form::wholes;
    case Block::Kind::text:
        return Form::text;
    default:
        return Form::record;
    }
}

void write_arguments(std::FILE* out, const calls::Call& call) {
    int number = 0;
    for (const Block& block : call.arguments()) {
        ++number;
        if (block.kind == Block::Kind::addresses) continue;
        const Form form = form_of(block.kind);
        const bool numbers = form == Form::reals || form == Form::wholes;
        write_content(out, std::to_string(number) + ' ' + std::string(block.word), form,
                      block.content, block.size, numbers ? sizeof(float) : block.size);
    }
}

// The marks around the blocks count, too: a routine may have written there.
std::uint64_t digest_of(const calls::Call& call, std::uint32_t result) {
    Digest digest;
    for (const Block& block : call.arguments())
        if (block.kind == Block::Kind::reals)
            digest.add_reals(block.content, block.size);
        else if (block.kind != Block::Kind::addresses)
            digest.add(block.content, block.size);
    digest.add(result);
    digest.add(call.blocks_intact() ? 1 : 0);
    return digest.value();
}

} // namespace

Sequence::Sequence(const Plan& the_plan, long number, const calls::Library& the_library,
                   State& the_state, Progress& the_progress)
    : plan(the_plan), library(the_library), state(the_state), progress(the_progress),
      chance(the_plan.seed * 1000003 + number_of(calls::routines()[the_plan.theme].name),
             static_cast<std::uint64_t>(number)) {
    manner.own_clock = true;
    manner.witness = this;
}

void Sequence::run(int shown, std::FILE* the_out) {
    progress.calls = 0;
    out = the_out;
    start();
    for (int k = 0; k < THEME_CALLS; ++k) {
        if (chance.one_in(3)) {
            const std::size_t other = chance.below(calls::routines().size());
            if (plan.exported[other]) {
                writing = progress.calls == shown;
                call(other);
            }
        }
        writing = progress.calls == shown;
        call(plan.theme);
    }
    limit_time(0);
}

// ---- the host's beginning --------------------------------------------------------------------------

// Everything is as at load, whatever the sequences before did.
void Sequence::start() {
    calls::forget_heard();
    for (std::int32_t unit = 1; unit <= 1000; ++unit)
        call_if_there(library.CLOSEUNIT, &unit);
    for (const auto& entry : std::filesystem::directory_iterator("."))
        std::filesystem::remove_all(entry.path());
    call_if_there(library.RESET_ENGINE);
    state.restore_host_blocks();
    const TARVANE_HOST_SERVICES services = calls::staying_services();
    call_if_there(library.SET_HOST_SERVICES, &services);
    void* window = nullptr;
    call_if_there(library.SET_HOST_WINDOW, &window);
    const std::int32_t off = 0, on = 1;
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
    calls::sensible_text(chance, "chart", chart);
    call_if_there(library.SET_CHART, chart.data(), static_cast<std::int32_t>(chart.size()));
    const float yield = chance.between(20000.0f, 60000.0f);
    call_if_there(library.SET_YIELD, &yield);
    call_if_there(library.SET_IWRTCA, chance.one_in(2) ? &on : &off);
    host_blocks();
    report();
}

// What a vessel's host gives beside the arguments.
void Sequence::host_blocks() {
    for (const std::string_view name : {"GETELEMENTTABLES", "GETHOSTINPUT", "READ_IMPACT_TABLE"}) {
        const calls::Routine& routine = calls::routines()[calls::routine_number(name)];
        if (routine.exported(library) && !chance.one_in(3))
            routine.call(library, chance, Noise::none, calls::Manner(), routine.recipe);
    }
}

// The data files, seldom others: damaged, or none. The library's own folder is not one of them.
void Sequence::folders() {
    static constexpr std::string_view OTHERS[] = {"../damaged0", "../damaged1", "../damaged2",
                                                  "../damaged3", "../nowhere"};
    const std::string_view system = chance.one_in(10) ? chance.of(OTHERS) : "../real";
    const std::string_view module = chance.one_in(10) ? chance.of(OTHERS) : system;
    call_if_there(library.SET_SYSTEM_DIR, system.data(), static_cast<std::int32_t>(system.size()));
    call_if_there(library.SET_MODULE_DIR, module.data(), static_cast<std::int32_t>(module.size()));
}

// To the line store, to a file, or none.
void Sequence::report() {
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

// What differed there must not hide what comes.
void Sequence::clear_lines() {
    call_if_there(library.BEGIN_REPORT);
    if (library.GETLINESCOMFLG != nullptr)
        std::memset(library.GETLINESCOMFLG(), ' ',
                    std::size_t{TARVANE_STORE_RECORDS} * TARVANE_STORE_WIDTH);
}

// ---- a call ------------------------------------------------------------------------------------------

void Sequence::call(std::size_t routine) {
    static constexpr Noise NOISES[] = {Noise::none,   Noise::none,   Noise::none, Noise::none,
                                       Noise::edge,   Noise::edge,   Noise::edge, Noise::little,
                                       Noise::little, Noise::little, Noise::half, Noise::all};
    static const std::size_t FLANGE_CALC = calls::routine_number("FLANGE_CALC");
    noise = chance.of(NOISES);
    if (chance.one_in(20)) scribble_variables(library, chance, noise);
    if (chance.one_in(8)) report();
    if (!chance.one_in(4)) clear_lines();
    calls::forget_heard();
    manner.code = 0;
    manner.most_thickness = 0.0f;
    if (routine == FLANGE_CALC) prepare_flange();
    progress.routine = routine;
    progress.in_call = true;
    const calls::Routine& called = calls::routines()[routine];
    called.call(library, chance, noise, manner, called.recipe);
    progress.in_call = false;
    ++progress.calls;
}

// A third of the flanges meet a design code of the module that is not theirs, or other Division 2 rules
// than the call before.
void Sequence::prepare_flange() {
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

void Sequence::given(const calls::Call& call) {
    Record& record = progress.records[progress.calls];
    record.routine = progress.routine;
    record.parts[GIVEN] = digest_of(call, 0);
    record.before[GIVEN] = record.before[RESULTS] = 0;
    state.digest(record.before.data());
    if (writing) {
        std::fprintf(out, "%s is given\n",
                     std::string(calls::routines()[progress.routine].name).c_str());
        write_arguments(out, call);
        std::fflush(out);
    }
    limit_time(plan.limit);
}

void Sequence::returned(const calls::Call& call, std::uint32_t result) {
    limit_time(plan.limit);
    Record& record = progress.records[progress.calls];
    record.parts[RESULTS] = digest_of(call, result);
    state.digest(record.parts.data());
    if (!writing) return;
    std::fprintf(out, "and returns %08x%s\n", result,
                 call.blocks_intact() ? "" : ", having written outside its arguments");
    write_arguments(out, call);
    state.write(out);
    std::fflush(out);
}

} // namespace same
