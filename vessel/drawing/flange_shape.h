// The geometry of a flange as it was judged, in inches: that of kind "thickness" at the thickness that was found, that of
// kind "design" as it was selected and rounded.
#pragma once

#include "components/flange_session.h"
#include "drawing/frame.h"

#include <optional>
#include <string>

namespace tarvane::vessel {

// 0: not given, or not known.
struct FlangeShape {
    int type = 0; // TARVANE_INTEGRAL_WELD_NECK and so on
    bool channel_cover = false;
    bool full_face = false;
    double A = 0, B = 0, t = 0, g0 = 0, g1 = 0, h = 0, tw = 0;
    double C = 0, a = 0;
    int bolts = 0;
    double Fod = 0, Fid = 0, Go = 0, Gi = 0, tg = 0, LjID = 0, LjOD = 0;
    double tp = 0;                        // partition gasket
    double long_span = 0, short_span = 0; // of a cover that is not circular
    double wall = 0, wall_inside = 0;     // of the attached shell: thickness, inside diameter
    double ci = 0, ce = 0;
    bool t_found = false; // not given
    std::string facing;   // sketch of a facing that is not plain: "2"
    double w = 0;         // of its nubbin
    int splits = 0;
    Openings openings; // in a cover
    bool opening_factor = false;
    std::optional<double> G, hG, hT, hD, hG_outer; // hG_outer: h'G of a full face gasket

    bool hD_outwards = false;                             // from the bolt circle
    std::optional<double> deflection, deflection_allowed; // of a channel cover

    bool reverse() const { return type >= 8; }
};

// Nothing without a geometry, or with one that no flange can have.
std::optional<FlangeShape> shape_of(const FlangeInput& flange, const FlangeOutcome& outcome);

} // namespace tarvane::vessel
