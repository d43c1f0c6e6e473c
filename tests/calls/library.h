// The exported routines and variables of one library, by their names. What the library does not have is
// null.
#pragma once

#include "tarvane/tarvane.h"

#include <cstddef>

namespace calls {

struct Library {
#define TARVANE_ROUTINE(name, words, decorated) decltype(&::name) name = nullptr;
#define TARVANE_VARIABLE(name) decltype(&::name) name = nullptr;
#include TARVANE_EXPORT_LIST
#undef TARVANE_ROUTINE
#undef TARVANE_VARIABLE
};

// That which the program is linked with (linked.cpp).
const Library& linked_library();
// That of a file; ends the program when there is none (loaded.cpp).
Library loaded_library(const char* path);

// Which names of the export list a library has, and a library without those that another lacks.
inline constexpr std::size_t MOST_NAMES = 1000;
struct Names {
    bool there[MOST_NAMES];
};
Names names_of(const Library& library);
void keep(Library& library, const Names& names);

} // namespace calls
