// A drawn host: how it begins, where its report goes, what it sets before a flange.
#pragma once

#include "call.h"
#include "chance.h"
#include "library.h"

#include <cstdint>

namespace calls {

class Host {
  public:
    Host(const Library& the_library, Chance& the_chance)
        : library(the_library), chance(the_chance) {}

    // Everything is as at load, whatever was called before, except for the blocks that the host fills.
    void reset() const;
    // The folders, settings and blocks of a host.
    void begin() const;
    // Where the data files are looked for.
    void set_folders(std::string_view system, std::string_view module) const;
    // To the line store, to a file, or none.
    void report() const;
    // What differed there must not hide later differences.
    void clear_lines() const;
    // Settings and arguments of a FLANGE_CALC.
    void prepare_flange(Manner& manner);

  private:
    void folders() const;
    void host_blocks() const;

    const Library& library;
    Chance& chance;
    std::int32_t old_division_2 = 0;
};

} // namespace calls
