// Every exported routine, and how it is called with drawn arguments.
#pragma once

#include "call.h"

#include <span>
#include <string_view>

namespace calls {

// How a call returned.
enum class Outcome { good, overrun, bad_recipe };

struct Routine {
    std::string_view name, recipe; // no data for a routine without a recipe
    Outcome (*call)(const Library& library, Chance& chance, Noise noise, const Manner& manner,
                    std::string_view recipe);
    bool (*exported)(const Library& library);
};

std::span<const Routine> routines();
// The routine of a name that is known to be there.
std::size_t routine_number(std::string_view name);

// Garbage in the exported variables.
void scribble_variables(const Library& library, Chance& chance, Noise noise);

} // namespace calls
