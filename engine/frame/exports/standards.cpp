// The exported routines of standard flanges: they unpack their arguments and call.
#include "frame/exports/exports.h"

#include "standards/flange_dimensions.h"

extern "C" {

// The length of the sizes is not read: of an array of texts a host may pass that of one.
void TARVANE_CALL GET_FLANGE_SIZES(const char* class_text, int32_t class_len, char* sizes,
                                   int32_t /*sizes_len*/, int32_t* count) {
    tarvane::GET_FLANGE_SIZES(tarvane::text_of(class_text, class_len), sizes, *count);
}

void TARVANE_CALL GET_FLANGE_DIMENSIONS(float* size, const int32_t* flange_class, float* result,
                                        int32_t* notfound, int32_t* series, float* wall,
                                        const int32_t* blind, const int32_t* slipon,
                                        const int32_t* hubform, const int32_t* ansi) {
    bool missing = tarvane::logical(*notfound);
    tarvane::GET_FLANGE_DIMENSIONS(*size, *flange_class, result, missing, *series, *wall, *blind,
                                   *slipon, *hubform, *ansi);
    if (*flange_class != 0) *notfound = missing ? 1 : 0;
}

} // extern "C"
