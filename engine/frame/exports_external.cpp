// The exported routines of external: they unpack their arguments and call.
#define TARVANE_BUILD
#include "tarvane/tarvane.h"

#include "frame/export_arguments.h"

extern "C" {} // extern "C"
