#include "shell/forming.h"

#include "frame/switches.h"
#include "materials/material_record.h"
#include "shell/elements.h"

namespace tarvane {

namespace {

Real ellipse_area(const HEAD_AREA_ARGUMENTS& h, Real Ro) {
    const Real depth = h.Dmax / (2.0f * h.k);
    const Real e = max(std::sqrt(1.0f - square(depth) / square(Ro)), 0.001f);
    return (2.0f * PI * square(Ro) + (PI * square(depth) / e) * log((1.0f + e) / (1.0f - e))) /
           2.0f;
}

Real torisphere_area(const HEAD_AREA_ARGUMENTS& h, Real Ro) {
    const Real a = h.L - h.r;
    const Real b = h.D / 2.0f - h.r;
    const Real difference = square(a) - square(b);
    const Real depth = difference > 0.0f ? h.L - std::sqrt(difference) : h.r / 2.0f / h.L * h.D;
    return PI * square(Ro) * ((square(depth) / square(Ro)) * (2.0f - depth / Ro) + 1.0f);
}

bool holds(std::string_view text, std::string_view piece) {
    return text.find(piece) != std::string_view::npos;
}

// UCS-79 and UHA-44: which materials have a limit at all. The record shows it by its class, its external
// pressure chart and its note.
bool strain_counts(const MATERIAL_RECORD& material) {
    const std::string_view chart = material.chart.view();
    if (holds(chart, "NFN")) return material.group == 1 || holds(material.note.view(), "tube");
    return (material.group == 1 || material.group == 16) &&
           (holds(chart, "CS") || holds(chart, "HA"));
}

Real fibre_elongation(const FORMING_ARGUMENTS& f, Real Di, Real Rf) {
    switch (f.Element) {
    case CYLINDER:
    case CONE:
        return 50.0f * f.t / Rf;
    case ELLIPTICAL:
        return 75.0f * f.t / (0.17f * Di + f.t / 2.0f);
    case TORISPHERICAL:
        return 75.0f * f.t / (f.r + f.t / 2.0f);
    case SPHERE:
        return 75.0f * f.t / Rf;
    default:
        return f.Strain;
    }
}

// VIII-2 Table 6.1: a head by the flat blank that it is made from.
void blank_strain(FORMING_ARGUMENTS& f, Real Di, Real Do) {
    HEAD_AREA_ARGUMENTS head{.D = Di,
                             .t = f.t,
                             .ts = f.t,
                             .L = f.L,
                             .r = f.r,
                             .Straight = f.Straight,
                             .k = f.k,
                             .Type = f.Element,
                             .Area = f.Area,
                             .Dmax = f.Dmax};
    HEAD_SURFACE_AREA(head);
    f.Dblank = std::sqrt(4.0f * f.Area / PI);
    f.Thinning = 100.0f * log(f.Dblank / (Do - 2.0f * f.t));
}

} // namespace

void HEAD_SURFACE_AREA(HEAD_AREA_ARGUMENTS& h) {
    h.Dmax = h.D + 2.0f * max(h.t, h.ts);
    const Real Ro = h.Dmax / 2.0f;
    const Real Sf = 12.0f * h.Straight;
    const Real flange = PI * h.Dmax * Sf;
    switch (h.Type) {
    case ELLIPTICAL:
        h.Area = ellipse_area(h, Ro) + flange;
        break;
    case TORISPHERICAL:
        h.Area = torisphere_area(h, Ro) + flange;
        break;
    case SPHERE:
        h.Area = PI * square(h.Dmax) / 2.0f + flange;
        break;
    default:
        break;
    }
}

void FORMING_STRAIN(FORMING_ARGUMENTS& f) {
    f.Strain = 0.0f;
    f.Thinning = 0.0f;
    if (from_pd_5500(f.Code)) return;
    MATERIAL_RECORD material;
    Int status = 0;
    READ_MATERIAL(f.Code, f.Material, f.Reference, status, material);
    f.Class = material.group;
    if (!strain_counts(material) || f.Element >= FLAT_HEAD_ELEMENT) return;

    const bool cone = f.Element == CONE;
    const Real Dm = cone ? min(f.Dsmall, f.D) : f.D;
    const Real walls = cone ? 2.0f * f.t / cosine_of_degrees(f.Alpha) : 2.0f * f.t;
    const Real Di = f.Outside == 0 ? Dm : Dm - walls;
    const Real Do = f.Outside == 0 ? Dm + walls : Dm;
    const Real Rf = (Di + Do) / 4.0f;
    if (Rf <= 0.01f) {
        f.Strain = 100.0f;
        return;
    }
    f.Strain = fibre_elongation(f, Di, Rf);
    const bool formedHead = f.Element >= ELLIPTICAL && f.Element <= SPHERE;
    if (f.Code == ASME_VIII_2 && formedHead) blank_strain(f, Di, Do);
}

} // namespace tarvane
