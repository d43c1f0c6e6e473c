// The exported variables. The public header gives them their linkage and visibility.
#include "frame/exports/exports.h"

#include "frame/switches.h"

extern "C" {
std::int32_t FLAGS_mp_IINOSPECIAL = 0;
std::int32_t FLAGS_mp_LBSAREA = 0;
std::int32_t FLAGS_mp_LCHORD = 0;
std::int32_t GLOBALS_mp_G_NUSE_TABLEG = 0;
std::int32_t GLOBALS_mp_G_NUSE_CORRODEDK = 0;
std::int32_t GLOBALS_mp_G_NUSE_OLD_DIV_2 = 0;
std::int32_t GLOBALS_mp_G_NUSE_CASE2286 = 0;
std::int32_t METRICCONSTANTS_mp_G_NMETRIC_CONSTANT = 0;
}
