#include "library.h"

#include <cstdio>
#include <cstdlib>

#include <dlfcn.h>

namespace calls {

Library loaded_library(const char* path) {
    void* const handle = dlopen(path, RTLD_NOW | RTLD_LOCAL);
    if (handle == nullptr) {
        std::fprintf(stderr, "%s\n", dlerror());
        std::exit(2);
    }
    Library library;
#define TARVANE_ROUTINE(name, words, decorated)                                                    \
    library.name = reinterpret_cast<decltype(library.name)>(dlsym(handle, #name));
#define TARVANE_VARIABLE(name)                                                                     \
    library.name = static_cast<decltype(library.name)>(dlsym(handle, #name));
#include TARVANE_EXPORT_LIST
#undef TARVANE_ROUTINE
#undef TARVANE_VARIABLE
    return library;
}

Names names_of(const Library& library) {
    Names names = {};
    std::size_t number = 0;
#define TARVANE_ROUTINE(name, words, decorated) names.there[number++] = library.name != nullptr;
#define TARVANE_VARIABLE(name) names.there[number++] = library.name != nullptr;
#include TARVANE_EXPORT_LIST
#undef TARVANE_ROUTINE
#undef TARVANE_VARIABLE
    return names;
}

void keep(Library& library, const Names& names) {
    std::size_t number = 0;
#define TARVANE_ROUTINE(name, words, decorated)                                                    \
    if (!names.there[number++]) library.name = nullptr;
#define TARVANE_VARIABLE(name)                                                                     \
    if (!names.there[number++]) library.name = nullptr;
#include TARVANE_EXPORT_LIST
#undef TARVANE_ROUTINE
#undef TARVANE_VARIABLE
}

} // namespace calls
