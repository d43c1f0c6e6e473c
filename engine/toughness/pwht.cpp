#include "toughness/pwht.h"

#include "frame/switches.h"
#include "frame/units.h"
#include "materials/material_record.h"
#include "toughness/material_notes.h"

namespace tarvane {

namespace {

Text<8> squeezed(const Text<8>& text) {
    Text<8> kept;
    Int column = 0;
    for (const char c : text.view())
        if (c != ' ' && c != '\0') kept.put(++column, {&c, 1});
    return kept;
}

struct WELD {
    Text<8> pNumber;
    Int group;
    Text<16> key;
    bool forced, preheat;
    Real thickness;

    bool group_1_or_2() const { return group == 1 || group == 2; }
    bool chromium_manganese() const { return key == "SA202A" || key == "SA202B"; }
    // P-Number 1: limit 1.25 in, with preheat 1.5 in.
    bool above_carbon_limit(Real limit) const {
        return thickness > limit && !(preheat && thickness <= C_ONE_AND_HALF);
    }
};

// UCS-56: what the first rule that speaks of the P-Number says; false where none does.
bool division_1(const WELD& w) {
    const Text<8>& P = w.pNumber;
    if (w.forced) return true;
    if (P == "1" && w.thickness > C_ONE_AND_QUARTER + 1.0e-5f)
        return w.above_carbon_limit(C_ONE_AND_QUARTER + 1.0e-5f);
    if (P == "3" && w.group_1_or_2()) return w.thickness > C_FIVE_EIGHTHS;
    if (P == "3" && w.group == 3) return true;
    if (P == "4" && w.group_1_or_2())
        return !w.chromium_manganese() || w.thickness > C_FIVE_EIGHTHS;
    if (P == "5A" || P == "5B" || P == "5C") return true;
    if ((P == "9A" || P == "9B") && w.group == 1) return w.thickness > C_FIVE_EIGHTHS;
    if (P == "10A") return w.key == "SA4871" || w.key == "SA4872" || w.thickness > C_FIVE_EIGHTHS;
    if (P == "10C") return w.thickness > C_ONE_AND_QUARTER;
    return P == "10B" || P == "10F";
}

// Table 6.8 and its companions.
bool division_2(const WELD& w) {
    const Text<8>& P = w.pNumber;
    if (w.forced) return true;
    if (P == "1" && w.thickness > C_ONE_AND_QUARTER) return w.above_carbon_limit(C_ONE_AND_QUARTER);
    if (P == "3" && w.group_1_or_2()) return w.thickness > C_FIVE_EIGHTHS;
    if (P == "3" && w.group == 3) return true;
    if (P == "4" && w.group_1_or_2()) return w.chromium_manganese() && w.thickness > C_FIVE_EIGHTHS;
    if (P == "5A" || P == "5B" || P == "7") return true;
    if ((P == "9A" || P == "9B") && w.group == 1) return w.thickness > C_FIVE_EIGHTHS;
    if (P == "10A") return w.key == "SA4871" || w.key == "SA4872" || w.thickness > C_FIVE_EIGHTHS;
    return P == "10B" || P == "10E" || P == "10F";
}

} // namespace

void PWHT_NEEDED(std::string_view Material, Int Index, Int Rule, Int Forced, Real Thickness,
                 Int& Required, Int& PNumberOne, Int Preheat, Int& GroupCode) {
    Required = PNumberOne = GroupCode = 0;
    const std::string_view name = trimmed(Material.substr(0, 16));
    MATERIAL_RECORD record;
    Int status;
    READ_MATERIAL(Rule == 2 ? ASME_VIII_2 : ASME_VIII_1, name, Index, status, record);
    if (status != 0) {
        Required = -1;
        return;
    }
    if (C_ONE_AND_QUARTER <= 1.0e-6f) SET_METRIC_CONSTANTS();
    const WELD w{.pNumber = squeezed(record.pNumber),
                 .group = record.group,
                 .key = MATERIAL_NAME_KEY(name),
                 .forced = Forced == 1,
                 .preheat = Preheat == 1,
                 .thickness = Thickness};
    const bool ruled = Rule == 1 || Rule == 2;
    if (ruled && w.pNumber == "8") return; // no heat treatment of austenitic steels
    GroupCode = static_cast<Int>(0u - static_cast<std::uint32_t>(w.group)); // minus, for any bits
    if (w.pNumber == "1") {
        PNumberOne = 1;
        if (w.group_1_or_2()) GroupCode = 1;
    }
    if (ruled) Required = (Rule == 1 ? division_1(w) : division_2(w)) ? 1 : 0;
}

} // namespace tarvane
