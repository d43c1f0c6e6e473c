#include "drawing/flange_shape.h"

#include "tarvane/tarvane.h"

#include <cmath>

namespace tarvane::vessel {

namespace {

constexpr int PLAIN_FACINGS = 2; // sketches 1a and 1b: 1, 2

bool possible(const FlangeShape& s) {
    for (const double length :
         {s.A,   s.B,  s.t,  s.g0, s.g1,   s.h,    s.tw, s.C,    s.a,           s.Fod,
          s.Fid, s.Go, s.Gi, s.tg, s.LjID, s.LjOD, s.tp, s.wall, s.wall_inside, s.ci})
        if (!std::isfinite(length) || length < 0 || length > 1e5) return false;
    if (!(s.t > 0) || !(s.A > 0) || s.A <= s.B) return false;
    if (s.type != TARVANE_BLIND && !(s.B > 0)) return false;
    if (s.C >= s.A || (s.C > 0 && s.C <= s.B)) return false;
    if (s.Go < s.Gi || s.Fod > s.A * 1.0001) return false;
    if (s.B / 2 + s.g1 >= s.A / 2) return false;
    return !s.reverse() || s.A / 2 - std::max(s.g1, s.wall) > s.B / 2;
}

} // namespace

std::optional<FlangeShape> shape_of(const FlangeInput& given, const FlangeOutcome& whole) {
    const FlangeInput& flange = whole.rounded ? whole.rounded->flange : given;
    const FlangeOutcome& outcome = whole.rounded ? whole.rounded->outcome : whole;
    if (given.analysis() == TARVANE_DESIGN && !whole.rounded) return std::nullopt;
    const bool calculated = !outcome.refused() && !outcome.stopped;
    const FlangeInput judged = calculated ? flange.as_judged(outcome) : flange;
    const auto at = [&](int element) {
        const float value = judged.record[static_cast<std::size_t>(element)];
        return value == TARVANE_NO_VALUE ? 0.0 : static_cast<double>(value);
    };
    const auto slot_says = [&](int offset) {
        return judged.text[static_cast<std::size_t>(offset)] == 'Y';
    };

    FlangeShape s;
    s.type = judged.type();
    s.channel_cover = s.type == TARVANE_BLIND && slot_says(slot::channel_cover);
    s.A = at(TARVANE_A);
    s.t = at(TARVANE_t);
    s.t_found = judged.record[TARVANE_t] != given.record[TARVANE_t];
    s.C = at(TARVANE_C);
    s.a = at(TARVANE_a);
    s.bolts = static_cast<int>(at(TARVANE_BOLTS));
    s.Fod = at(TARVANE_Fod);
    s.Fid = at(TARVANE_Fid);
    s.Go = at(TARVANE_Go);
    s.Gi = at(TARVANE_Gi);
    s.tg = at(TARVANE_tg);
    s.ci = at(TARVANE_ci);
    s.ce = at(TARVANE_ce);
    s.w = at(TARVANE_w);
    if (const Key* key = judged.kind->keys.find("facing");
        key && at(TARVANE_SKETCH) > PLAIN_FACINGS)
        s.facing = choice_name(key->choices, static_cast<int>(at(TARVANE_SKETCH)));
    s.splits = static_cast<int>(at(TARVANE_n));
    if (s.type == TARVANE_BLIND) {
        if (at(TARVANE_HOLES) == 1)
            s.openings = {at(TARVANE_HOLE_D1), at(TARVANE_HOLE_D2), at(TARVANE_HOLE_PITCH)};
        s.opening_factor = judged.setting(Setting::opening_factor) > 0;
        s.long_span = at(TARVANE_D);
        s.short_span = at(TARVANE_d);
    } else {
        s.B = at(TARVANE_B);
        s.wall = at(TARVANE_SHELL_THICKNESS);
        s.wall_inside = at(TARVANE_SHELL_ID);
        s.tw = at(TARVANE_tw);
        if (s.type != TARVANE_LOOSE_REVERSE) {
            s.g0 = at(TARVANE_go);
            s.g1 = std::max(at(TARVANE_g1), s.g0);
            s.h = at(TARVANE_h);
        }
    }
    if (s.type == TARVANE_LAP_JOINT) {
        s.LjID = at(TARVANE_LjID);
        s.LjOD = at(TARVANE_LjOD);
    }
    if (slot_says(slot::partition_gasket)) s.tp = at(TARVANE_tp);
    if (!possible(s)) return std::nullopt;

    if (calculated && !judged.rated()) {
        const TARVANE_FLANGE_RESULTS& found = outcome.found;
        const auto known = [](float value) -> std::optional<double> {
            if (value == TARVANE_NO_VALUE || !std::isfinite(value)) return std::nullopt;
            return static_cast<double>(value);
        };
        s.full_face = found.full_face == 1;
        if (found.G > 0.0f) s.G = known(found.G);
        s.hG = known(found.hg);
        if (s.type != TARVANE_BLIND) {
            s.hT = known(found.ht);
            s.hD = known(found.hd);
        }
        if (s.full_face) s.hG_outer = known(found.hgPrime);
        // EN 13445 11.6, PD 5500: of a reverse flange from the bolts to the shell.
        s.hD_outwards = s.full_face && s.reverse() && found.code >= 3;
        if (s.channel_cover) {
            s.deflection = known(found.deflection);
            s.deflection_allowed = known(found.deflection_allowed);
        }
    }
    return s;
}

} // namespace tarvane::vessel
