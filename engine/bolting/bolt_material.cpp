#include "bolting/bolt_material.h"

#include "frame/switches.h"
#include "materials/material_record.h"
#include "report/lines.h"

namespace tarvane {

namespace {

void store_selector(Int given, Int& selector) {
    if (given >= 0) selector = given;
}

} // namespace

void CHECK_BOLT_MATL_VS_DIAMETER(std::string_view name, Int reference, Real& minDia, Real& maxDia,
                                 Int& ok, Real dia, Int printFlag, Int code, Int metric,
                                 Int forceDiv1, Int d2Class) {
    minDia = maxDia = -1.0f;
    if (from_pd_5500(code)) return;
    store_selector(metric, G_MATL_METRIC);
    store_selector(forceDiv1, G_FORCE_DIV1);
    store_selector(d2Class, G_D2_CLASS);

    ok = -1;
    Text<40> clean = name;
    NUL_TO_BLANK(clean.data(), Text<40>::width());
    MATERIAL_RECORD record;
    Int status;
    READ_MATERIAL(code, clean.view(), reference, status, record);
    if (status != 0) return;
    minDia = record.minDia;
    maxDia = record.maxDia;
    if (minDia < 0.0f && maxDia < 0.0f) return;
    ok = minDia < dia && dia <= maxDia ? 1 : 0;
    if (printFlag != 1 || ok != 0 || metric < 0) return;
    for (const char* line :
         {"Warning:",
          "It seems as if the selected bolt material does not match the bolt diameter range",
          "allowed per the material specification.  Please check the material selection",
          "for the given nominal bolt diameter. "})
        TEXT_LINE(line, WARNING_STYLE);
}

} // namespace tarvane
