// The exported routines of the foundation files: they unpack their arguments and call.
#include "frame/exports/exports.h"

#include "foundation/foundation_files.h"

#include <cstddef>

static_assert(sizeof(TARVANE_FOUNDATION_HEAD) == sizeof(tarvane::FOUNDATION_HEAD));
static_assert(offsetof(TARVANE_FOUNDATION_HEAD, vessel_type) ==
              offsetof(tarvane::FOUNDATION_HEAD, vesselType));
static_assert(offsetof(TARVANE_FOUNDATION_RECORDS, horizontal) ==
              offsetof(tarvane::FOUNDATION_RECORDS, horizontal));
static_assert(offsetof(TARVANE_FOUNDATION_RECORDS, company) ==
              offsetof(tarvane::FOUNDATION_RECORDS, company));

extern "C" {

TARVANE_FOUNDATION_RECORDS* TARVANE_CALL GETFOUNDATION(void) {
    return reinterpret_cast<TARVANE_FOUNDATION_RECORDS*>(&tarvane::FOUNDATION);
}

void TARVANE_CALL FOUNDATION_RECORD_DEFAULTS(void) { tarvane::FOUNDATION_RECORD_DEFAULTS(); }

void TARVANE_CALL WRITE_FOUNDATION_FILES(const char* name, int32_t name_len,
                                         const int32_t* vertical, const int32_t* exchanger) {
    tarvane::WRITE_FOUNDATION_FILES(tarvane::text_of(name, name_len), *vertical, *exchanger);
}

} // extern "C"
