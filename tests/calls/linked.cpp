#include "library.h"

namespace calls {

const Library& linked_library() {
    static const Library LINKED = {
#define TARVANE_ROUTINE(name, words, decorated) &::name,
#define TARVANE_VARIABLE(name) &::name,
#include TARVANE_EXPORT_LIST
#undef TARVANE_ROUTINE
#undef TARVANE_VARIABLE
    };
    return LINKED;
}

} // namespace calls
