// The exported routines of toughness: they unpack their arguments and call.
#define TARVANE_BUILD
#include "tarvane/tarvane.h"

#include "frame/export_arguments.h"

extern "C" {} // extern "C"
