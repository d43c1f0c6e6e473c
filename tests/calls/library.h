// The exported routines and variables of one library, by their names. What the library does not have is
// null.
#pragma once

#include "tarvane/tarvane.h"

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

} // namespace calls
