#include "bolt_load_fixture.h"

namespace tarvane::stage_test {
namespace {

// ---- every load to the last bit -----------------------------------------------------------------

struct ExpectedLoads {
    std::uint32_t seed;
    Int type, code;
    bool fullFace, oval;
    Real loads[12]; // H, Hp, hpPerP, HpPrime, hpPrimePerP, HGY, Hd, Ht, HS, Wm1, Wm2, Am1
};

constexpr ExpectedLoads EXPECTED[] = {
    {8,
     INTEGRAL_WELD_NECK,
     ASME_VIII_1,
     false,
     false,
     {189916.797f, 102762.82f, 348.584869f, 0.0f, 0.0f, 0.0f, 44127.5898f, 145789.203f, 0.0f,
      292679.625f, 160517.906f, 18.8157902f}},
    {403,
     INTEGRAL_WELD_NECK,
     ASME_VIII_1,
     false,
     false,
     {288027.969f, 183310.188f, 393.285126f, 0.0f, 0.0f, 0.0f, 48254.2227f, 239773.75f, 0.0f,
      471338.156f, 381166.844f, 24.696785f}},
    {356,
     INTEGRAL_WELD_NECK,
     ASME_VIII_1,
     true,
     false,
     {179122.328f, 140202.516f, 311.215332f, 237229.5f, 526.591553f, 293605.875f, 31377.748f,
      147744.578f, 0.0f, 556554.375f, 493498.688f, 34.2284355f}},
    {826,
     INTEGRAL_WELD_NECK,
     ASME_VIII_1,
     true,
     false,
     {193496.062f, 106274.312f, 299.279938f, 162586.438f, 457.860962f, 343228.562f, 31406.2266f,
      162089.844f, 0.0f, 462356.812f, 592539.75f, 28.8162556f}},
    {8,
     LOOSE_RING,
     ASME_VIII_2,
     false,
     false,
     {189916.797f, 102762.82f, 348.584869f, 0.0f, 0.0f, 0.0f, 44127.5898f, 145789.203f, 0.0f,
      292679.625f, 160517.906f, 19.0122871f}},
    {403,
     LOOSE_RING,
     ASME_VIII_2,
     false,
     false,
     {288027.969f, 183310.188f, 393.285126f, 0.0f, 0.0f, 0.0f, 48254.2227f, 239773.75f, 0.0f,
      471338.156f, 381166.844f, 24.985527f}},
    {1,
     LOOSE_SLIP_ON,
     EN_13445,
     false,
     false,
     {128624.133f, 49183.9023f, 228.443573f, 0.0f, 0.0f, 0.0f, 40917.3164f, 87706.8125f, 0.0f,
      177808.031f, 292651.969f, 9.16064072f}},
    {827,
     LOOSE_SLIP_ON,
     EN_13445,
     false,
     false,
     {195137.281f, 87713.9766f, 301.837494f, 0.0f, 0.0f, 0.0f, 37577.1992f, 157560.078f, 0.0f,
      282851.25f, 330721.156f, 14.7050295f}},
    {36,
     INTEGRAL_WELD_NECK,
     PD_5500,
     true,
     false,
     {234783.219f, 21865.2031f, 69.9015503f, 1445260.0f, 0.0f, 0.0f, 27425.6484f, 207357.562f, 0.0f,
      1701908.38f, 178656.078f, 112.337189f}},
    {814,
     INTEGRAL_WELD_NECK,
     PD_5500,
     true,
     false,
     {258981.75f, 36027.3477f, 98.0602875f, 712372.938f, 0.0f, 0.0f, 45130.0078f, 213851.75f, 0.0f,
      1007382.0f, 145931.719f, 66.6037674f}},
    {112,
     BLIND,
     ASME_VIII_1,
     false,
     true,
     {61499.7148f, 41975.9883f, 148.745529f, 0.0f, 0.0f, 0.0f, 10699.2158f, 0.0f, 0.0f, 103475.703f,
      108382.469f, 6.56571722f}},
    {622,
     BLIND,
     ASME_VIII_1,
     false,
     true,
     {108808.844f, 112983.805f, 229.269073f, 0.0f, 0.0f, 0.0f, 15204.5098f, 0.0f, 0.0f, 221792.656f,
      259315.484f, 12.8724699f}},
    {1632,
     BLIND,
     ASME_VIII_2,
     true,
     true,
     {83243.4453f, 119784.0f, 280.06543f, 135459.859f, 316.71698f, 169580.094f, 9247.56934f, 0.0f,
      0.0f, 338487.312f, 374038.562f, 22.0008278f}},
    {2843,
     BLIND,
     ASME_VIII_2,
     true,
     true,
     {179527.344f, 61624.0273f, 126.356415f, 98462.8984f, 201.892303f, 150064.938f, 22210.4004f,
      0.0f, 0.0f, 339614.281f, 276220.844f, 18.804163f}},
    {209,
     BLIND,
     PD_5500,
     true,
     true,
     {155705.578f, 32872.3711f, 78.2302933f, 187421.234f, 0.0f, 0.0f, 21720.7422f, 0.0f, 0.0f,
      375999.188f, 130394.258f, 18.9754829f}},
    {1976,
     BLIND,
     PD_5500,
     true,
     true,
     {59765.7461f, 25075.4043f, 104.133743f, 158329.297f, 0.0f, 0.0f, 16425.7637f, 0.0f, 0.0f,
      243170.438f, 277788.812f, 13.0983267f}},
    {8,
     REVERSE_WELD_NECK,
     EN_13445,
     true,
     false,
     {216885.5f, 29065.5508f, 98.5941391f, 652931.0f, 0.0f, 0.0f, 144410.281f, 84640.9609f,
      96806.7031f, 280045.0f, 89700.3828f, 18.0035362f}},
    {618,
     REVERSE_WELD_NECK,
     EN_13445,
     true,
     false,
     {333827.125f, 37490.9688f, 83.2762604f, 794168.438f, 0.0f, 0.0f, 116859.32f, 146889.922f,
      76812.0234f, 360313.219f, 106573.883f, 23.0379295f}}};

class LoadsInTheOrderOfTheFormulas : public BoltLoads,
                                     public testing::WithParamInterface<ExpectedLoads> {
  protected:
    // Some flange of three or four digits a value.
    static FLANGE_STATE drawn(std::uint32_t seed) {
        struct Range {
            Real FLANGE_STATE::*member;
            Real low, high;
        };
        static constexpr Range RANGES[] = {
            {&FLANGE_STATE::b, 0.2f, 0.6f},           {&FLANGE_STATE::G, 20.0f, 30.0f},
            {&FLANGE_STATE::m, 2.0f, 4.0f},           {&FLANGE_STATE::y, 3000.0f, 9000.0f},
            {&FLANGE_STATE::Peq, 200.0f, 500.0f},     {&FLANGE_STATE::P, 100.0f, 190.0f},
            {&FLANGE_STATE::lp, 20.0f, 30.0f},        {&FLANGE_STATE::bPart, 0.1f, 0.4f},
            {&FLANGE_STATE::mPart, 2.0f, 4.0f},       {&FLANGE_STATE::yPart, 2000.0f, 5000.0f},
            {&FLANGE_STATE::B, 15.0f, 19.0f},         {&FLANGE_STATE::ci, 0.05f, 0.15f},
            {&FLANGE_STATE::ce, 0.03f, 0.09f},        {&FLANGE_STATE::A, 33.0f, 36.0f},
            {&FLANGE_STATE::go, 0.3f, 0.6f},          {&FLANGE_STATE::C, 31.0f, 32.0f},
            {&FLANGE_STATE::dh, 0.7f, 1.2f},          {&FLANGE_STATE::b2, 0.15f, 0.25f},
            {&FLANGE_STATE::hg, 0.8f, 1.9f},          {&FLANGE_STATE::hgPrime, 0.5f, 0.9f},
            {&FLANGE_STATE::hgDouble, 0.3f, 0.9f},    {&FLANGE_STATE::hd, 2.0f, 3.0f},
            {&FLANGE_STATE::ht, 1.0f, 2.0f},          {&FLANGE_STATE::D, 20.0f, 30.0f},
            {&FLANGE_STATE::dS, 12.0f, 18.0f},        {&FLANGE_STATE::L, 70.0f, 90.0f},
            {&FLANGE_STATE::GiC, 18.0f, 20.0f},       {&FLANGE_STATE::bPrime, 0.2f, 0.5f},
            {&FLANGE_STATE::Sb, 15000.0f, 20000.0f},  {&FLANGE_STATE::Sa, 20000.0f, 25000.0f},
            {&FLANGE_STATE::Faxial, 900.0f, 5000.0f}, {&FLANGE_STATE::Mbend, 300.0f, 900.0f}};
        FLANGE_STATE s;
        for (const Range& range : RANGES) {
            seed = (seed * 1103515245u + 12345u) & 0x7FFFFFFFu;
            const Real step = static_cast<Real>((seed >> 16) % 1000u);
            s.*range.member = range.low + (range.high - range.low) * step / 1000.0f;
        }
        return s;
    }
};

// Flanges whose loads change with the order of operations, calculated by another program that rounds
// each operation to single precision.
TEST_P(LoadsInTheOrderOfTheFormulas, AsComputedOutside) {
    FLANGE_STATE s = drawn(GetParam().seed);
    s.type = GetParam().type;
    s.code = GetParam().code;
    s.fullFace = GetParam().fullFace;
    if (!GetParam().oval) s.D = s.dS = 0.0f;
    BOLT_LOADS(s);
    const Real loads[] = {s.H,  s.Hp, s.hpPerP, s.HpPrime, s.hpPrimePerP, s.HGY,
                          s.Hd, s.Ht, s.HS,     s.Wm1,     s.Wm2,         s.Am1};
    for (std::size_t i = 0; i < std::size(loads); ++i)
        EXPECT_EQ(loads[i], GetParam().loads[i]) << "load " << i;
}

INSTANTIATE_TEST_SUITE_P(Forms, LoadsInTheOrderOfTheFormulas, testing::ValuesIn(EXPECTED));

// ---- W, HG --------------------------------------------------------------------------------------

class DesignBoltLoad : public BoltLoads {
  protected:
    static FLANGE_STATE loaded(Int type = INTEGRAL_WELD_NECK, Int code = ASME_VIII_1) {
        FLANGE_STATE s = flange(type, code);
        s.H = 30000.0f;
        s.Hp = 7000.0f;
        s.Wm1 = 40000.0f;
        s.Wm2 = 50000.0f;
        s.Am = 4.0f;
        return s;
    }
};

TEST_F(DesignBoltLoad, FullLoadOrTheMean) {
    struct {
        Real Wm1;
        Int rule;
        const char *symbol, *numbers, *value;
    } const rows[] = {
        {40000.0f, 1, "Sa * Ab", " = 25000.0 * 10.0", " = 250000.000 lbf"},
        {40000.0f, 0, "Sa * ( Am + Ab ) / 2", " = 25000.0 * ( 4.0 + 10.0 )/2", " = 175000.000 lbf"},
        {40000.0f, 2, "Sa * ( Am + Ab ) / 2", " = 25000.0 * ( 4.0 + 10.0 )/2", " = 175000.000 lbf"},
        {0.0f, 0, "Sa * ( Am + Ab ) / 2", " = 25000.0 * ( 4.0 + 10.0 )/2", " = 175000.000 lbf"},
        {0.0f, 1, "Sa * Ab", " = 25000.0 * 10.0", " = 250000.000 lbf"},
        {-1.0f, 1, "Sa * Ab", " = 25000.0 * 10.0", " = 250000.000 lbf"},
        {-1.0f, 0, "Sa * ( Am2 + Ab ) / 2", " = 25000.0 * ( 2.0 + 10.0 )/2", " = 150000.000 lbf"},
    };
    for (const auto& row : rows) {
        for (Int code = ASME_VIII_1; code <= EN_13445; ++code) {
            FLANGE_STATE s = loaded(INTEGRAL_WELD_NECK, code);
            s.Wm1 = row.Wm1;
            s.seatRule = row.rule;
            std::string symbol = std::string(" = ") + row.symbol;
            if (code == EN_13445) symbol.replace(3, 2, "fb,a");
            EXPECT_EQ(block(design_report(s), W_TITLE),
                      (Lines{std::string(W_TITLE), symbol, row.numbers, row.value}));
        }
    }
}

TEST_F(DesignBoltLoad, TheDesignLoadOfTheMatingFlange) {
    FLANGE_STATE s = loaded();
    s.Wmd = 175000.0f;
    EXPECT_EQ(block(design_report(s), W_TITLE).size(), 4u);
    s.Wmd = 180000.0f;
    const Lines lines = block(design_report(s), W_TITLE);
    EXPECT_EQ(s.W, 180000.0f);
    ASSERT_EQ(lines.size(), 5u);
    EXPECT_EQ(lines[3], " = 175000.000 lbf");
    EXPECT_EQ(lines[4], " = 180000.000 lbf");
}

TEST_F(DesignBoltLoad, GasketLoadByFlangeAndCode) {
    const auto gasket_load = [&](Int type, Int code, bool full) {
        FLANGE_STATE s = loaded(type, code);
        s.fullFace = full;
        Lines lines = block(design_report(s), HG_TITLE);
        if (!lines.empty()) lines.erase(lines.begin());
        return lines;
    };
    for (Int type = INTEGRAL_WELD_NECK; type <= REVERSE_WELD_NECK; ++type) {
        for (Int code = ASME_VIII_1; code <= EN_13445; ++code) {
            EXPECT_EQ(gasket_load(type, code, false),
                      type == BLIND
                          ? (Lines{" = Wm1", " = 40000.000 lbf"})
                          : (Lines{" = Wm1 - H", " = 40000.0 - 30000.0", " = 10000.000 lbf"}));
            if (code >= PD_5500 && type == REVERSE_WELD_NECK) continue;
            EXPECT_EQ(gasket_load(type, code, true),
                      code < PD_5500
                          ? (Lines{" = W - H", " = 175000. - 30000.0", " = 145000.000 lbf"})
                          : (Lines{" = Hp", " = 7000.0", " = 7000.000 lbf"}));
        }
    }
    NEW_DIV_2_RULES = true;
    EXPECT_EQ(gasket_load(BLIND, ASME_VIII_2, false), (Lines{" = Wo", " = 40000.000 lbf"}));
    EXPECT_EQ(gasket_load(LOOSE_RING, ASME_VIII_2, false),
              (Lines{" = Wo - H", " = 40000.0 - 30000.0", " = 10000.000 lbf"}));
}

TEST_F(DesignBoltLoad, NoLinesOfTheGasketLoadUnderExternalPressure) {
    FLANGE_STATE s = loaded();
    s.H = -30000.0f;
    EXPECT_EQ(titles(design_report(s)), Lines{std::string(W_TITLE)});
    EXPECT_EQ(s.HG, 70000.0f);
    s.H = 0.0f;
    EXPECT_EQ(titles(design_report(s)), (Lines{std::string(W_TITLE), std::string(HG_TITLE)}));
    EXPECT_EQ(s.HG, 40000.0f);
}

TEST_F(DesignBoltLoad, AFullFaceReverseFlangeOfTheEuropeanCodesKeepsItsLoads) {
    for (Int code = ASME_VIII_1; code <= EN_13445; ++code) {
        FLANGE_STATE s = loaded(REVERSE_WELD_NECK, code);
        s.fullFace = true;
        s.W = 11.0f;
        s.HG = 12.0f;
        const Lines lines = design_report(s);
        EXPECT_EQ(lines.empty(), code >= PD_5500);
        EXPECT_EQ(s.W, code >= PD_5500 ? 11.0f : 175000.0f);
        EXPECT_EQ(s.HG, code >= PD_5500 ? 12.0f : 145000.0f);
    }
}

// ---- all forms ----------------------------------------------------------------------------------

class EveryForm : public BoltLoads {
  protected:
    template <typename Check>
    static void for_each_form(Check check) {
        for (Int code = ASME_VIII_1; code <= EN_13445; ++code) {
            for (Int type = INTEGRAL_WELD_NECK; type <= REVERSE_WELD_NECK; ++type) {
                for (const bool full : {false, true}) {
                    FLANGE_STATE s = full_face(type, code);
                    s.fullFace = full;
                    check(s);
                    check(with_partition(s));
                    if (type != BLIND) continue;
                    s.D = 30.0f;
                    s.dS = 15.0f;
                    s.L = 80.0f;
                    check(s);
                    check(with_partition(s));
                }
            }
        }
    }
};

// Each number line gives the value line under it, also in other units.
TEST_F(EveryForm, NumbersGiveTheirValues) {
    G_NUSE_OLD_DIV_2 = 1; // the line shows no external loads
    int checked = 0;
    const auto check = [&](FLANGE_STATE s) {
        s.P = 8.75f; // loads whose last digits single precision holds
        s.Peq = 11.25f;
        s.y = 100.0f;
        s.Sb = 800.0f;
        s.Sa = 1000.0f;
        s.m = 2.75f;
        s.ci = 0.0625f;
        BOLT_LOADS(s);
        FLANGE_DESIGN_BOLT_LOAD(s);
        checked += check_printed_arithmetic(take_lines());
    };
    for_each_form(check);
    // two inches, and a pressure unit to go with them
    UNITS.diameter = 0.5f;
    UNITS.area = 0.25f;
    UNITS.pressure = UNITS.stress = 4.0f;
    for_each_form(check);
    EXPECT_GT(checked, 1000);
}

TEST_F(EveryForm, TitlesHaveTheHeadingStyleAndOtherLinesNone) {
    NEW_DIV_2_RULES = false;
    for (const bool current : {false, true}) {
        NEW_DIV_2_RULES = current;
        for_each_form([&](FLANGE_STATE s) {
            s.Wmo = s.Wms = s.Wmd = 1.0e9f;
            BOLT_LOADS(s);
            FLANGE_DESIGN_BOLT_LOAD(s);
            for (Int k = 1; k <= LINE_COUNT; ++k) {
                const bool title = stored(k).ends_with(":");
                EXPECT_EQ(stored_marks(k), title ? " 0 0 0 0 0 2" : " 0 0 0 0 0 0") << stored(k);
            }
            LINE_COUNT = 0;
        });
    }
}

TEST_F(EveryForm, SilentPassesHaveTheSameLoads) {
    for_each_form([&](const FLANGE_STATE& given) {
        FLANGE_STATE loud = given, silent = given;
        BOLT_LOADS(loud);
        FLANGE_DESIGN_BOLT_LOAD(loud);
        take_lines();
        IWRITE = 0;
        BOLT_LOADS(silent);
        FLANGE_DESIGN_BOLT_LOAD(silent);
        EXPECT_EQ(LINE_COUNT, 0);
        IWRITE = 1;
        for (const auto load :
             {&FLANGE_STATE::H, &FLANGE_STATE::Hp, &FLANGE_STATE::HpPrime, &FLANGE_STATE::HGY,
              &FLANGE_STATE::Hd, &FLANGE_STATE::Ht, &FLANGE_STATE::HS, &FLANGE_STATE::Wm1,
              &FLANGE_STATE::Wm2, &FLANGE_STATE::Am, &FLANGE_STATE::W, &FLANGE_STATE::HG,
              &FLANGE_STATE::pressureArea, &FLANGE_STATE::hpPerP, &FLANGE_STATE::hpPrimePerP})
            EXPECT_EQ(silent.*load, loud.*load);
    });
}

TEST_F(EveryForm, EachValueGoesThroughTheFactorOfItsKind) {
    UNITS.diameter = 2.0f;
    UNITS.pressure = 3.0f;
    UNITS.stress = 5.0f;
    UNITS.force = 7.0f;
    UNITS.area = 11.0f;
    FLANGE_STATE s = with_partition(full_face(INTEGRAL_WELD_NECK, ASME_VIII_1));
    Lines lines = report(s);
    EXPECT_TRUE(has(lines, " = 0.785 * 40.0\xB2 * 300.0"));
    EXPECT_TRUE(has(lines, " = 2 * 0.5 * 3.1416 * 40.0 * 2.0 * 300.0"));
    EXPECT_TRUE(has(lines, "   + 2.0 * 36.0 * 0.25 * 3.0 * 300.0"));
    EXPECT_TRUE(has(lines, " = 53432.297 * 3.0/1.5"));
    EXPECT_TRUE(has(lines, " = 0.5 * 3.1416 * 40.0 * 5000.0 * 3.0/1.5"));
    EXPECT_TRUE(has(lines, " = 3.1416 * 36.0\xB2 *300.0/4"));
    EXPECT_TRUE(has(lines, " = 5000.0 * 0.5 * 3.1416 * 40.0"));
    EXPECT_TRUE(has(lines, "   + 10000.0 * 0.25 * 36.0"));
    EXPECT_TRUE(has(lines, " = Maximum of 380208/100000, 361367/125000"));
    EXPECT_TRUE(has(lines, " = 29.874 in\xB2"));
    s = full_face(INTEGRAL_WELD_NECK, EN_13445);
    lines = report(s);
    EXPECT_TRUE(has(lines, " = 0.785 * (50.0 - 2.0)\xB2 * 300.0"));
    EXPECT_TRUE(has(lines, " = ( 178128.297 * 4.5 + 17592.92 * 3.0 + 138544.234 * 3.5 )"));
    EXPECT_TRUE(has(lines, "   /1.0"));
    EXPECT_TRUE(has(lines, " = 3.1416 * 50.0 * 0.5 * 5000.0"));
    s = full_face(REVERSE_WELD_NECK, EN_13445);
    lines = report(s);
    EXPECT_TRUE(has(lines, " = 0.785 * 300.0 * 54.0^(2)"));
    EXPECT_TRUE(has(lines, " = 3.1416 * 50.0 * 0.75 * 5000.0"));
    s = oval_cover(ASME_VIII_1);
    lines = report(s);
    EXPECT_TRUE(has(lines, " = 0.785 * 60.0 * 30.0 * 300.0"));
    EXPECT_TRUE(has(lines, " = 2 * 160.0 * 2.0 * 300.0 * 0.5"));
    EXPECT_TRUE(has(lines, " = 5000.0 * 0.5 * 160.0"));
    s.seatRule = 1;
    EXPECT_TRUE(has(design_report(s), " = 125000.0 * 110.0"));
    s.seatRule = 0;
    s.Am = 2.0f;
    EXPECT_TRUE(has(design_report(s), " = 125000.0 * ( 22.0 + 110.0 )/2"));
    s.Wm1 = -1.0f;
    s.Wm2 = 75000.0f;
    EXPECT_TRUE(has(design_report(s), " = 125000.0 * ( 33.0 + 110.0 )/2"));
    NEW_DIV_2_RULES = true;
    s = flange(INTEGRAL_WELD_NECK, ASME_VIII_2);
    s.Faxial = 3000.0f;
    s.Mbend = 500.0f;
    EXPECT_TRUE(has(report(s), " = Max of (263894 + 21000 + 4*6000/40.0)/100000, 109956/@0 ##"));
}

} // namespace
} // namespace tarvane::stage_test
