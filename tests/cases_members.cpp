// The names of the flange state, of its tables and of the switches.
#include "cases_routines.h"

#include "flange/state.h"
#include "frame/numbers.h"
#include "frame/switches.h"
#include "report/channel.h"

namespace cases {

using namespace tarvane;

namespace {

template <typename T>
struct Member {
    std::string_view name;
    T FLANGE_STATE::*at;
};

#define MEMBER(name)                                                                               \
    { #name, &FLANGE_STATE::name }
const Member<Real> REALS[] = {MEMBER(P),
                              MEMBER(Tdesign),
                              MEMBER(Sfo),
                              MEMBER(Sfa),
                              MEMBER(t),
                              MEMBER(ci),
                              MEMBER(B),
                              MEMBER(A),
                              MEMBER(Fod),
                              MEMBER(Fid),
                              MEMBER(Go),
                              MEMBER(Gi),
                              MEMBER(go),
                              MEMBER(g1),
                              MEMBER(h),
                              MEMBER(Sb),
                              MEMBER(Sa),
                              MEMBER(C),
                              MEMBER(aNominal),
                              MEMBER(dh),
                              MEMBER(m),
                              MEMBER(y),
                              MEMBER(column),
                              MEMBER(tg),
                              MEMBER(w),
                              MEMBER(lp),
                              MEMBER(D),
                              MEMBER(dS),
                              MEMBER(dfAllow),
                              MEMBER(L),
                              MEMBER(LjID),
                              MEMBER(LjOD),
                              MEMBER(tw),
                              MEMBER(Wmo),
                              MEMBER(Wms),
                              MEMBER(Wmd),
                              MEMBER(Faxial),
                              MEMBER(Mbend),
                              MEMBER(rootGiven),
                              MEMBER(tp),
                              MEMBER(density),
                              MEMBER(Dshell),
                              MEMBER(mPart),
                              MEMBER(yPart),
                              MEMBER(columnPart),
                              MEMBER(Sn),
                              MEMBER(Sna),
                              MEMBER(ce),
                              MEMBER(D1),
                              MEMBER(D2),
                              MEMBER(edge1),
                              MEMBER(edge2),
                              MEMBER(pitch),
                              MEMBER(tShell),
                              MEMBER(caShell),
                              MEMBER(ct),
                              MEMBER(Ecover),
                              MEMBER(jointE),
                              MEMBER(coverFactor),
                              MEMBER(Ab),
                              MEMBER(Bmin),
                              MEMBER(Rmin),
                              MEMBER(Emin),
                              MEMBER(CF),
                              MEMBER(GoC),
                              MEMBER(GiC),
                              MEMBER(Bcor),
                              MEMBER(b),
                              MEMBER(G),
                              MEMBER(b2),
                              MEMBER(bPrime),
                              MEMBER(bPart),
                              MEMBER(Peq),
                              MEMBER(dPeq),
                              MEMBER(hRatio),
                              MEMBER(gRatio),
                              MEMBER(ho),
                              MEMBER(F),
                              MEMBER(V),
                              MEMBER(f),
                              MEMBER(T),
                              MEMBER(U),
                              MEMBER(K),
                              MEMBER(Y),
                              MEMBER(Z),
                              MEMBER(Yr),
                              MEMBER(Alphar),
                              MEMBER(e),
                              MEMBER(d),
                              MEMBER(alpha),
                              MEMBER(beta),
                              MEMBER(gamma),
                              MEMBER(delta),
                              MEMBER(lambda),
                              MEMBER(hg),
                              MEMBER(hgPrime),
                              MEMBER(hgDouble),
                              MEMBER(ht),
                              MEMBER(hd),
                              MEMBER(hs),
                              MEMBER(H),
                              MEMBER(Hd),
                              MEMBER(Hp),
                              MEMBER(Ht),
                              MEMBER(HpPrime),
                              MEMBER(HGY),
                              MEMBER(HS),
                              MEMBER(Wm1),
                              MEMBER(Wm2),
                              MEMBER(W),
                              MEMBER(HG),
                              MEMBER(Am1),
                              MEMBER(Am2),
                              MEMBER(Am),
                              MEMBER(Wext),
                              MEMBER(Md),
                              MEMBER(Mg),
                              MEMBER(Mt),
                              MEMBER(Matm),
                              MEMBER(Mr),
                              MEMBER(Mop),
                              MEMBER(Moe),
                              MEMBER(I),
                              MEMBER(Ip),
                              MEMBER(Ecold),
                              MEMBER(Ehot),
                              MEMBER(kf),
                              MEMBER(Zcover),
                              MEMBER(Cf),
                              MEMBER(tMin),
                              MEMBER(WMaxOp),
                              MEMBER(SPerW),
                              MEMBER(SPerP),
                              MEMBER(SPerDP),
                              MEMBER(lambdaReq),
                              MEMBER(MAWPop),
                              MEMBER(MAWPseat),
                              MEMBER(Pbolt),
                              MEMBER(tChannelMin),
                              MEMBER(dfAllowUsed),
                              MEMBER(dfActual),
                              MEMBER(weightForging),
                              MEMBER(weightFinished),
                              MEMBER(tRequired),
                              MEMBER(tOut),
                              MEMBER(jOp),
                              MEMBER(jSeat)};
const Member<Int> WHOLES[] = {
    MEMBER(element1),       MEMBER(type),           MEMBER(kind),
    MEMBER(series),         MEMBER(nBolts),         MEMBER(sketch),
    MEMBER(nSplits),        MEMBER(sketchPart),     MEMBER(patternedHoles),
    MEMBER(attachment),     MEMBER(useShellStress), MEMBER(seatRule),
    MEMBER(code),           MEMBER(rigidity),       MEMBER(corrodedRigidity),
    MEMBER(standardFlange), MEMBER(coverFlag),      MEMBER(noCorrection),
    MEMBER(error)};
const Member<bool> FLAGS[] = {MEMBER(looseReverse), MEMBER(fullFace)};
const Member<Text<15>> TEXTS[] = {
    MEMBER(flangeMaterial), MEMBER(boltMaterial),    MEMBER(description),
    MEMBER(externalLoads),  MEMBER(matingLoads),     MEMBER(channelCover),
    MEMBER(useCorrosion),   MEMBER(partitionGasket), MEMBER(chartName)};
#undef MEMBER

struct Switch {
    std::string_view name;
    Int* at;
};
const Switch SWITCHES[] = {{"moduleCode", &moduleCode},
                           {"CODE_A98_ADDENDA", &CODE_A98_ADDENDA},
                           {"G_NUSE_OLD_DIV_2", &GLOBALS_mp_G_NUSE_OLD_DIV_2},
                           {"IWRITE", &IWRITE},
                           {"IWRTFL", &IWRTFL},
                           {"IOUT", &IOUT}};

// "STRESS(2,1)": row and place as in the tables of the report, counted from 1.
Real* table_entry(const std::string& name) {
    const struct {
        std::string_view name;
        StressTable& table;
    } tables[] = {{"STRESS", FLANGE.STRESS}, {"ALLOWED", FLANGE.ALLOWED}, {"RATIO", FLANGE.RATIO}};
    const std::size_t open = name.find('(');
    if (open == std::string::npos || name.back() != ')') return nullptr;
    const std::string_view base = std::string_view(name).substr(0, open);
    const std::string inside = name.substr(open + 1, name.size() - open - 2);
    if (base == "J" && (inside == "1" || inside == "2")) return &FLANGE.J[inside == "1" ? 0 : 1];
    for (const auto& entry : tables) {
        if (entry.name != base || inside.size() != 3 || inside[1] != ',') continue;
        const int row = inside[0] - '1', place = inside[2] - '1';
        if (row >= 0 && row < 2 && place >= 0 && place < PLACES) return &entry.table[row][place];
    }
    return nullptr;
}

} // namespace

bool set_member(const std::string& name, const Value& value) {
    const auto* number = std::get_if<double>(&value);
    const auto* text = std::get_if<std::string>(&value);
    if (text != nullptr) {
        const auto* member = find_in(TEXTS, name);
        if (member != nullptr) FLANGE.*member->at = std::string_view(*text);
        return member != nullptr;
    }
    const auto real = static_cast<Real>(*number);
    if (const auto* member = find_in(REALS, name)) {
        FLANGE.*member->at = real;
    } else if (const auto* whole = find_in(WHOLES, name)) {
        FLANGE.*whole->at = truncated(real);
    } else if (const auto* flag = find_in(FLAGS, name)) {
        FLANGE.*flag->at = real != 0.0f;
    } else if (const auto* option = find_in(SWITCHES, name)) {
        *option->at = truncated(real);
    } else if (name == "NEW_DIV_2_RULES") {
        NEW_DIV_2_RULES = real != 0.0f;
    } else if (Real* entry = table_entry(name)) {
        *entry = real;
    } else {
        return false;
    }
    return true;
}

bool get_member(const std::string& name, Value& value) {
    if (const auto* member = find_in(REALS, name)) {
        value = static_cast<double>(FLANGE.*member->at);
    } else if (const auto* whole = find_in(WHOLES, name)) {
        value = static_cast<double>(FLANGE.*whole->at);
    } else if (const auto* flag = find_in(FLAGS, name)) {
        value = FLANGE.*flag->at ? 1.0 : 0.0;
    } else if (const auto* option = find_in(SWITCHES, name)) {
        value = static_cast<double>(*option->at);
    } else if (const auto* text = find_in(TEXTS, name)) {
        value = std::string((FLANGE.*text->at).trimmed());
    } else if (name == "NEW_DIV_2_RULES") {
        value = NEW_DIV_2_RULES ? 1.0 : 0.0;
    } else if (const Real* entry = table_entry(name)) {
        value = static_cast<double>(*entry);
    } else {
        return false;
    }
    return true;
}

} // namespace cases
