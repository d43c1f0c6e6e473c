#include "flange/record.h"

#include "flange/geometry.h"
#include "materials/modulus.h"
#include "report/channel.h"

namespace tarvane {

FLANGE_STATE FLANGE;

namespace {

// "Nothing given", by its bits, becomes 0.0 in the host's own record.
void clear_sentinels(const FLANGE_RECORD& record) {
    constexpr auto none = std::bit_cast<std::uint32_t>(NO_VALUE);
    Int found =
        0; // counted first: a record is read several times, and has them only the first time
    for (Int i = 1; i <= RECORD_ELEMENTS; ++i)
        found += std::bit_cast<std::uint32_t>(record(i)) == none ? 1 : 0;
    if (found == 0) return;
    for (Int i = 1; i <= RECORD_ELEMENTS; ++i)
        if (std::bit_cast<std::uint32_t>(record(i)) == none) record(i) = 0.0f;
}

void load_texts(FLANGE_GIVEN& s, const char* text, Int slotLength) {
    Text<15>* const slots[] = {&s.flangeMaterial, &s.boltMaterial,    &s.description,
                               &s.externalLoads,  &s.matingLoads,     &s.channelCover,
                               &s.useCorrosion,   &s.partitionGasket, &s.chartName};
    for (std::size_t i = 0; i < std::size(slots); ++i) {
        const auto length = static_cast<std::size_t>(slotLength);
        *slots[i] = std::string_view(text + i * length, length);
    }
    NUL_TO_BLANK(s.chartName.data(), Text<15>::width());
}

void load_scalars(FLANGE_GIVEN& s, const FLANGE_RECORD& record) {
    s.type = record.whole(2);
    s.kind = record.whole(3);
    s.P = record(4);
    s.Tdesign = record(5);
    s.Sfo = record(6);
    s.Sfa = record(7);
    s.t = record(8);
    s.ci = record(9);
    s.B = record(10);
    s.A = record(11);
    s.Fod = record(12);
    s.Fid = record(13);
    s.Go = record(14);
    s.Gi = record(15);
    s.go = record(16);
    s.g1 = record(17);
    s.h = record(18);
    s.Sb = record(19);
    s.Sa = record(20);
    s.C = record(21);
    s.aNominal = record(22);
    s.dh = record(22);
    s.series = record.whole(23);
    s.nBolts = record.whole(24);
    s.m = record(25);
    s.y = record(26);
    s.sketch = record.whole(27);
    s.column = record(28);
    s.tg = record(29);
    s.w = record(30);
    s.lp = record(31);
    s.materialClass = record.whole(34);
    s.D = record(35);
    s.dS = record(36);
    s.dfAllow = record(37);
    s.L = record(38);
    s.LjID = record(39);
    s.LjOD = record(40);
    s.nSplits = record.whole(41);
    s.tw = record(42);
    s.Wmo = record(44);
    s.Wms = record(45);
    s.Wmd = record(46);
    s.Faxial = record(48);
    s.Mbend = record(50);
    s.rootGiven = record(51);
    s.tp = record(52);
    s.density = record(53);
    s.Dshell = record(54);
    s.mPart = record(55);
    s.yPart = record(56);
    s.sketchPart = record.whole(57);
    s.columnPart = record(58);
    s.Sn = record(60);
    s.Sna = record(61);
    s.ce = record(63);
    s.D1 = record(64);
    s.D2 = record(65);
    s.edge1 = record(66);
    s.edge2 = record(67);
    s.pitch = record(68);
    s.patternedHoles = record.whole(69);
    s.attachment = record.whole(70);
    s.tShell = record(71);
    s.useShellStress = record.whole(72);
    s.seatRule = record.whole(73);
    s.caShell = record(74);
}

// Modulus of a TEMA channel cover: element 10 itself when it is large enough to be one, else that of
// the material's chart at the design temperature. The cover has no bore.
void load_channel_cover(FLANGE_GIVEN& s) {
    if (s.B > 10000000.0f) {
        s.Ecover = s.B;
    } else {
        SET_CHART(s.chartName.view());
        s.Ecover = ASMEMOD(s.Tdesign, s.materialClass, moduleCode) * 1000000.0f;
    }
    s.B = 0.0f;
}

void derive(FLANGE_GIVEN& s) {
    if (!(s.t > 0.0f)) s.t = 2.0f;

    // Series 3 gives the root area of its bolt; it alters the working diameter only.
    if (s.series <= 2) s.rootGiven = 0.0f;
    if (s.series == 3) s.dh = 2.0f * std::sqrt(s.rootGiven / PI_IN_FIVE_DECIMALS);

    if (s.dfAllow <= 0.00001f) s.dfAllow = s.C <= 24.0f ? 0.03f : s.C / 800.0f;

    if (!s.external_loads()) s.Faxial = s.Mbend = 0.0f;
    if (s.partitionGasket(1) != 'Y') s.tp = s.lp = s.mPart = s.yPart = 0.0f;

    s.ct = thickness_allowance(s);

    if (s.type != BLIND) {
        s.D1 = s.D2 = s.edge1 = s.edge2 = s.pitch = 0.0f;
        return;
    }
    s.go = s.g1 = s.h = 0.0f;
    if (s.D == s.dS && s.L <= 0.001f) s.L = PI * s.C;
    if (s.channelCover(1) == 'Y') load_channel_cover(s);
}

} // namespace

void READ_FLANGE_RECORD(FLANGE_GIVEN& s, const FLANGE_RECORD& record, const char* text,
                        Int slotLength) {
    clear_sentinels(record);
    load_texts(s, text, slotLength);
    load_scalars(s, record);
    derive(s);
}

void REWRITE_LOOSE_REVERSE(FLANGE_GIVEN& s) {
    if (s.type != LOOSE_REVERSE) return;
    s.go = s.g1 = s.tShell;
    s.h = 10.0f;
    s.type = REVERSE_WELD_NECK;
    s.looseReverse = true;
}

} // namespace tarvane
