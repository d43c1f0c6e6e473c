// Common ground of the bolt load tests: flanges of round numbers, and the titles of the loads.
#pragma once

#include "flange/bolt_loads.h"
#include "stage_fixture.h"

namespace tarvane::stage_test {

inline constexpr std::string_view H_TITLE = "Hydrostatic End Load due to Pressure [H]:";
inline constexpr std::string_view HP_TITLE = "Contact Load on Gasket Surfaces [Hp]:";
inline constexpr std::string_view HPP_TITLE = "Full Face Inside Compression [H'p]:";
inline constexpr std::string_view HGY_TITLE =
    "Full Face Inside Compression, Gasket Seating [H'GY]:";
inline constexpr std::string_view HD_TITLE = "Hydrostatic End Load at Flange ID [Hd]:";
inline constexpr std::string_view HT_TITLE = "Pressure Force on Flange Face [Ht]:";
inline constexpr std::string_view HR_TITLE = "Balancing Reaction [Hr]:";
inline constexpr std::string_view WM1_TITLE = "Operating Bolt Load [Wm1]:";
inline constexpr std::string_view WM2_TITLE = "Gasket Seating Bolt Load [Wm2]:";
inline constexpr std::string_view AM_TITLE = "Required Bolt Area [Am]:";
inline constexpr std::string_view W_TITLE = "Flange Design Bolt Load, Gasket Seating [W]:";
inline constexpr std::string_view HG_TITLE = "Gasket Load for the Operating Condition [HG]:";

class BoltLoads : public StageTest {
  protected:
    // A flange of round numbers, its gasket and arms as the earlier stages leave them.
    static FLANGE_STATE flange(Int type = INTEGRAL_WELD_NECK, Int code = ASME_VIII_1) {
        FLANGE_STATE s;
        s.type = type;
        s.code = code;
        s.P = s.Peq = 100.0f;
        s.A = 28.0f;
        s.B = s.Bcor = 18.0f;
        s.C = 25.0f;
        s.go = 0.5f;
        s.G = 20.0f;
        s.b = 0.25f;
        s.m = 2.0f;
        s.y = 1000.0f;
        s.Sb = 20000.0f;
        s.Sa = 25000.0f;
        s.Ab = 10.0f;
        return s;
    }
    static FLANGE_STATE full_face(Int type, Int code) {
        FLANGE_STATE s = flange(type, code);
        s.fullFace = true;
        s.dh = 1.0f;
        s.b2 = 0.2f;
        s.bPrime = 0.375f;
        s.GiC = 16.0f;
        s.hg = 1.5f;
        s.hgPrime = 0.75f;
        s.hgDouble = 0.5f;
        s.hd = 2.25f;
        s.ht = 1.75f;
        return s;
    }
    static FLANGE_STATE oval_cover(Int code) {
        FLANGE_STATE s = flange(BLIND, code);
        s.D = 30.0f;
        s.dS = 15.0f;
        s.L = 80.0f;
        return s;
    }
    static FLANGE_STATE with_partition(FLANGE_STATE s) {
        s.lp = 18.0f;
        s.bPart = 0.125f;
        s.mPart = 3.0f;
        s.yPart = 2000.0f;
        return s;
    }
    static Lines report(FLANGE_STATE& s) {
        BOLT_LOADS(s);
        return take_lines();
    }
    static Lines report(FLANGE_STATE&& s) { return report(s); }
    static Lines design_report(FLANGE_STATE& s) {
        FLANGE_DESIGN_BOLT_LOAD(s);
        return take_lines();
    }
    static bool has(const Lines& lines, std::string_view text) {
        return std::find(lines.begin(), lines.end(), text) != lines.end();
    }
    static Lines titles(const Lines& lines) {
        Lines result;
        for (const std::string& line : lines)
            if (line.ends_with("]:")) result.push_back(line);
        return result;
    }
};

} // namespace tarvane::stage_test
