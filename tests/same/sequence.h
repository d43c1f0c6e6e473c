// A sequence of calls: a host's beginning, then calls of one routine with others between. All of it is
// drawn from the seed, the name of the routine and the number of the sequence.
#pragma once

#include "host.h"
#include "routines.h"
#include "state.h"

#include <array>
#include <cstdint>
#include <cstdio>

namespace same {

inline constexpr int THEME_CALLS = 20, MOST_CALLS = 40;

struct Record {
    std::size_t routine;
    std::array<std::uint64_t, PARTS> before, parts; // by Part; before the call, and after it
};

// Where a process is; it may end at any place.
struct Progress {
    int calls; // that returned
    std::size_t routine;
    bool in_call;
    Record records[MOST_CALLS];
};

struct Plan {
    std::size_t theme;              // routine
    const bool* exported = nullptr; // routines to draw from
    std::uint64_t seed = 1;
    long limit = 10; // seconds of CPU time for one call
};

class Sequence final : calls::Witness {
  public:
    Sequence(const Plan& the_plan, long number, const calls::Library& the_library, State& the_state,
             Progress& the_progress);

    // Writes what call `shown`, from 0, was given and what it returned.
    void run(int shown = -1, std::FILE* out = nullptr);

  private:
    void call(std::size_t routine);
    void given(const calls::Call& call) override;
    void returned(const calls::Call& call, std::uint32_t result) override;

    const Plan& plan;
    const calls::Library& library;
    State& state;
    Progress& progress;
    calls::Chance chance;
    calls::Host host;
    calls::Manner manner;
    calls::Noise noise = calls::Noise::none;
    std::FILE* out = nullptr; // for the call that is shown
    bool writing = false;
};

} // namespace same
