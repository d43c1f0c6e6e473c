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

std::uint64_t number_of(std::string_view name) {
    Digest digest;
    digest.add(name.data(), name.size());
    return digest.value();
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
             static_cast<std::uint64_t>(number)),
      host(library, chance) {
    manner.own_clock = true;
    manner.witness = this;
}

void Sequence::run(int shown, std::FILE* the_out) {
    progress.calls = 0;
    out = the_out;
    host.reset();
    state.restore_host_blocks();
    host.begin();
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

// ---- a call ------------------------------------------------------------------------------------------

void Sequence::call(std::size_t routine) {
    static constexpr Noise NOISES[] = {Noise::none,   Noise::none,   Noise::none, Noise::none,
                                       Noise::edge,   Noise::edge,   Noise::edge, Noise::little,
                                       Noise::little, Noise::little, Noise::half, Noise::all};
    static const std::size_t FLANGE_CALC = calls::routine_number("FLANGE_CALC");
    noise = chance.of(NOISES);
    if (chance.one_in(20)) scribble_variables(library, chance, noise);
    if (chance.one_in(8)) host.report();
    if (!chance.one_in(4)) host.clear_lines();
    calls::forget_heard();
    manner.code = 0;
    manner.most_thickness = 0.0f;
    if (routine == FLANGE_CALC) host.prepare_flange(manner);
    progress.routine = routine;
    progress.in_call = true;
    const calls::Routine& called = calls::routines()[routine];
    called.call(library, chance, noise, manner, called.recipe);
    progress.in_call = false;
    ++progress.calls;
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
