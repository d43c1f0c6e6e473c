#include "flange/moment_arms.h"

#include "stage_fixture.h"

namespace tarvane::stage_test {
namespace {

class MomentArms : public StageTest {
  protected:
    // A flange of round numbers; corroded: B 18.5, g1 1.0, go 0.375, R 2.3125.
    static FLANGE_STATE flange(Int type = INTEGRAL_WELD_NECK, Int code = ASME_VIII_1) {
        FLANGE_STATE s;
        s.type = type;
        s.code = code;
        s.A = 28.0f;
        s.B = 18.0f;
        s.C = 25.0f;
        s.G = 20.0f;
        s.g1 = 1.25f;
        s.go = 0.625f;
        s.ci = 0.25f;
        s.ce = 0.0625f;
        s.Go = 27.5f;
        s.Gi = 15.0f;
        s.GoC = 27.0f;
        s.GiC = 16.0f;
        s.dh = 1.0f;
        s.b2 = 0.1875f;
        s.hgPrime = s.hgDouble = s.hs = 9.0f;
        return s;
    }
    static FLANGE_STATE full_face(Int type, Int code) {
        FLANGE_STATE s = flange(type, code);
        s.fullFace = true;
        FULL_FACE_ARMS(s);
        return s;
    }
    // The arms of the state's flange; those of the gasket are calculated already.
    static void arms(FLANGE_STATE& s) {
        if (s.fullFace && s.en_or_pd())
            MOMENT_ARMS_FULL_FACE(s);
        else
            MOMENT_ARMS(s);
    }
    static std::string report(FLANGE_STATE& s) {
        arms(s);
        return joined(take_lines());
    }
    static constexpr const char* GASKET_ARM_LINES = "Moment Arm Calculations:\n"
                                                    "Distance to Gasket Load Reaction [hg]:\n"
                                                    " = (C - G ) / 2\n"
                                                    " = ( 25.0 - 20.0 )/2\n"
                                                    " = 2.5000 in.\n";
};

// ---- published flanges --------------------------------------------------------------------------

TEST_F(MomentArms, JawadAndFarr) {
    FLANGE_STATE s = jawad_farr_10_9();
    s.G = 15.043f;
    MOMENT_ARMS(s);
    expect_close(s.hd, 4.1875);
    expect_close(s.hg, 3.7285);
    expect_close(s.ht, 4.80175);
}

TEST_F(MomentArms, AsmeExampleE4_16_1) {
    FLANGE_STATE s = ptb3_e4_16_1();
    s.G = 29.5f;
    MOMENT_ARMS(s);
    EXPECT_EQ(s.hd, 2.15625f);
    EXPECT_EQ(s.ht, 1.6875f);
    EXPECT_EQ(s.hg, 0.875f);
}

TEST_F(MomentArms, CryostatRing) {
    FLANGE_STATE s = cryostat_ring();
    MOMENT_ARMS(s);
    expect_close(s.hg, 0.957);
    expect_close(s.hd, 1.5);
    expect_close(s.ht, 1.2285);
}

// ---- by type ------------------------------------------------------------------------------------

// The hub is measured at its corroded outside: R adds the external allowance, g1 loses it.
TEST_F(MomentArms, IntegralFlange) {
    for (const Int type : {INTEGRAL_WELD_NECK, INTEGRAL_SLIP_ON, INTEGRAL_RING}) {
        FLANGE_STATE s = flange(type);
        EXPECT_EQ(report(s), std::string(GASKET_ARM_LINES) +
                                 "Distance to Face Pressure Reaction [ht]:\n"
                                 " = ( R + g1 + hg ) / 2\n"
                                 " = ( 2.3125 + 0.9375 + 2.5 )/2\n"
                                 " = 2.8750 in.\n"
                                 "Distance to End Pressure Reaction [hd]:\n"
                                 " = R + ( g1 / 2 )\n"
                                 " = 2.3125 + ( 0.9375/2 )\n"
                                 " = 2.7812 in.\n");
        EXPECT_EQ(s.hd, 2.78125f);
        EXPECT_EQ(s.hgPrime, 0.0f);
        EXPECT_EQ(s.hgDouble, 0.0f);
    }
}

TEST_F(MomentArms, LooseFlange) {
    for (const Int type : {LOOSE_SLIP_ON, LOOSE_RING}) {
        FLANGE_STATE s = flange(type);
        EXPECT_EQ(report(s), std::string(GASKET_ARM_LINES) +
                                 "Distance to Face Pressure Reaction [ht]:\n"
                                 " = ( hD + hG ) / 2\n"
                                 " = ( 3.25 + 2.5 )/2\n"
                                 " = 2.8750 in.\n"
                                 "Distance to End Pressure Reaction [hd]:\n"
                                 " = ( C - Bcor )/ 2\n"
                                 " = ( 25.0 - 18.5 )/2\n"
                                 " = 3.2500 in.\n");
    }
}

TEST_F(MomentArms, LapJoint) {
    FLANGE_STATE s = flange(LAP_JOINT);
    EXPECT_EQ(report(s), std::string(GASKET_ARM_LINES) +
                             "Distance to Face Pressure Reaction [ht]:\n"
                             " = ( C - G ) / 2\n"
                             " = ( 25.0 - 20.0 )/2\n"
                             " = 2.5000 in.\n"
                             "Distance to End Pressure Reaction [hd]:\n"
                             " = ( C - Bcor ) / 2\n"
                             " = ( 25.0 - 18.5 )/2\n"
                             " = 3.2500 in.\n");
}

TEST_F(MomentArms, ABlindFlangeShowsTheGasketArmOnly) {
    FLANGE_STATE s = flange(BLIND);
    s.ht = 4.0f;
    EXPECT_EQ(report(s), GASKET_ARM_LINES);
    EXPECT_EQ(s.ht, 0.0f);
    EXPECT_EQ(s.hd, 5.0f);
    EXPECT_EQ(s.hgPrime, 0.0f);
    EXPECT_EQ(s.hgDouble, 0.0f);
}

// Shell bore 28 - 1.25 + 0.5 = 27.25; the external allowance does not enter.
TEST_F(MomentArms, ReverseFlange) {
    FLANGE_STATE s = flange(REVERSE_WELD_NECK);
    EXPECT_EQ(report(s), std::string(GASKET_ARM_LINES) +
                             "Distance to Face Pressure Reaction [ht]:\n"
                             " = ( C - ( Bcor + G ) / 2 ) / 2\n"
                             " = ( 25.0 - ( 27.25 + 20.0 )/2 )/2\n"
                             " = 0.6875 in.\n"
                             "Distance to End Pressure Reaction [hd]:\n"
                             " = ( C + G1cor - 2 * G0cor - Bcor ) / 2\n"
                             " = ( 25.0 + 1.0 - 2 * 0.375 - 27.25 )/2\n"
                             " = -1.0000 in.\n");
    EXPECT_EQ(s.hd, -1.0f);
}

TEST_F(MomentArms, AHubThatBothAllowancesUseUpCountsAsNone) {
    FLANGE_STATE s = flange(REVERSE_WELD_NECK);
    s.go = 0.3125f; // the allowances together: the hub stays as it is without the outer one
    MOMENT_ARMS(s);
    EXPECT_EQ(s.hd, (25.0f + 1.0f - 2.0f * 0.0625f - 27.875f) / 2.0f);
    s.go = 0.28125f;
    MOMENT_ARMS(s);
    EXPECT_EQ(s.hd, (25.0f + 1.0f - 27.9375f) / 2.0f);
    s.g1 = 0.28125f;
    MOMENT_ARMS(s);
    EXPECT_EQ(s.hd, (25.0f - 27.9375f) / 2.0f);

    s = flange();
    s.g1 = 0.28125f; // R grows to 3.25 and the allowance
    MOMENT_ARMS(s);
    EXPECT_EQ(s.ht, (3.25f + 0.0625f - 0.0625f + 2.5f) / 2.0f);
    EXPECT_EQ(s.hd, 3.3125f - 0.0625f / 2.0f);
}

// ---- full face ----------------------------------------------------------------------------------

TEST_F(MomentArms, ArmsOfAFullFaceGasket) {
    for (const Int code : {ASME_VIII_1, ASME_VIII_2}) {
        FLANGE_STATE s = flange(INTEGRAL_WELD_NECK, code);
        FULL_FACE_ARMS(s);
        expect_close(s.hg, 9.0 * 57.0 / (6.0 * 41.0));
        expect_close(s.hgPrime, 2.0 * 79.0 / (6.0 * 52.0));
        s.C = 27.46f; // (C - Gi)(2 Gi + C) first, then the quotient
        s.GiC = 19.73f;
        s.GoC = 30.51f;
        FULL_FACE_ARMS(s);
        EXPECT_EQ(s.hg, 1.82698166f);
        EXPECT_EQ(s.hgPrime, 0.775872767f);
    }
    for (const Int code : {PD_5500, EN_13445}) {
        FLANGE_STATE s = flange(INTEGRAL_WELD_NECK, code);
        s.b2 = 7.0f; // 5 mm whatever the gasket's own width is
        FULL_FACE_ARMS(s);
        expect_close(s.hg, (1.0 + 5.0 / 25.4) / 2.0);
        EXPECT_EQ(s.hgPrime, 0.75f);
        s.dh = 0.9f; // (Go - C) first
        s.C = 26.3f;
        s.GoC = 30.1f;
        FULL_FACE_ARMS(s);
        EXPECT_EQ(s.hgPrime, 1.17500031f);
    }
    EXPECT_EQ(LINE_COUNT, 0);
}

TEST_F(MomentArms, FullFaceByTheTaylorForgeBulletin) {
    for (const Int code : {ASME_VIII_1, ASME_VIII_2}) {
        for (Int type = INTEGRAL_WELD_NECK; type <= REVERSE_WELD_NECK; ++type) {
            FLANGE_STATE s = full_face(type, code);
            const Real hg = s.hg, hgPrime = s.hgPrime;
            EXPECT_EQ(report(s), "Moment Arm Calculations:\n"
                                 "Distance to Gasket Load Reaction [hg]:\n"
                                 " = (C - Gi) * (2 * Gi + C) / (6 * (Gi + C))\n"
                                 " = (25.0 - 16.0) * (2 * 16.0 + 25.0)/\n"
                                 "   (6 * (16.0 + 25.0))\n"
                                 " = 2.0854 in.\n"
                                 "Reverse Moment arm[h\"g]:\n"
                                 " = hg * h'g / ( hg + h'g )\n"
                                 " = 2.0854 * 0.5064/(2.0854 + 0.5064 )\n"
                                 " = 0.4075 in.\n"
                                 "Distance to Face Pressure Reaction [ht]:\n"
                                 " = (R + g1Cor + hg ) / 2.0\n"
                                 " = ( 2.3125 + 1.0 + 2.0854 )/2.0\n"
                                 " = 2.6989 in.\n"
                                 "Distance to End Pressure Reaction [hd]:\n"
                                 " = R + giCor\n"
                                 " = 2.3125 + 1.0\n"
                                 " = 3.3125 in.\n");
            EXPECT_EQ(s.hg, hg);
            EXPECT_EQ(s.hgPrime, hgPrime);
            expect_close(s.hgDouble, 1.0 / (1.0 / 2.08536585 + 1.0 / 0.50641026));
        }
    }
}

TEST_F(MomentArms, FullFaceOfEn13445) {
    FLANGE_STATE s = full_face(INTEGRAL_WELD_NECK, EN_13445);
    s.hg = 0.875f; // only shown here
    EXPECT_EQ(report(s), "Moment Arm Calculations:\n"
                         "Distance to Gasket Load Reaction [hg]:\n"
                         " = ( dh + 2b\" ) / 2\n"
                         " = (1.0 + 0.188)/2\n"
                         " = 0.8750 in.\n"
                         "Balancing Reaction Moment arm [hr]:\n"
                         " = ( Go - C + dh ) / 4\n"
                         " = ( 27.0 - 25.0 + 1.0 )/4\n"
                         " = 0.7500 in.\n"
                         "Distance to Face Pressure Reaction [ht]:\n"
                         " = (C + dh + 2b\" - Bcor ) / 4\n"
                         " = (25.0 + 1.0 + 0.1875 - 18.5 )/4\n"
                         " = 1.9219 in.\n"
                         "Distance to End Pressure Reaction [hd]:\n"
                         " = ( C - Bcor - g1 ) / 2\n"
                         " = ( 25.0 - 18.5 - 1.0 )/2\n"
                         " = 2.7500 in.\n");
    EXPECT_EQ(s.hg, 0.875f);
    EXPECT_EQ(s.hgDouble, 0.75f);
    EXPECT_EQ(s.hs, 9.0f); // of reverse flanges only
    for (const Int type : {LOOSE_RING, LAP_JOINT, BLIND}) {
        s = full_face(type, EN_13445);
        MOMENT_ARMS_FULL_FACE(s);
        EXPECT_EQ(s.hd, 2.75f);
        EXPECT_EQ(take_lines().size(), 17u);
    }
}

TEST_F(MomentArms, FullFaceOfPd5500ShowsNoGasketArms) {
    FLANGE_STATE s = full_face(INTEGRAL_WELD_NECK, PD_5500);
    EXPECT_EQ(report(s), "Moment Arm Calculations:\n"
                         "Distance to Face Pressure Reaction [ht]:\n"
                         " = (C + dh + 2b\" - Bcor ) / 4\n"
                         " = (25.0 + 1.0 + 0.1875 - 18.5 )/4\n"
                         " = 1.9219 in.\n"
                         "Distance to End Pressure Reaction [hd]:\n"
                         " = ( C - Bcor - g1 ) / 2\n"
                         " = ( 25.0 - 18.5 - 1.0 )/2\n"
                         " = 2.7500 in.\n");
    EXPECT_EQ(s.hgDouble, 0.75f);
}

TEST_F(MomentArms, FullFaceOfAReverseFlange) {
    for (const Int code : {PD_5500, EN_13445}) {
        FLANGE_STATE s = full_face(REVERSE_WELD_NECK, code);
        EXPECT_EQ(report(s), "Moment Arm Calculations:\n"
                             "Distance to Face Pressure Reaction [ht]:\n"
                             " = ( 2 * C + dh - 2 * A1 )/6\n"
                             " = ( 2 * 25.0 + 1.0 - 2 * 16.0 )/6\n"
                             " = 3.1667 in.\n"
                             "Distance to End Pressure Reaction [hd]:\n"
                             " = ( B - C - g1 ) / 2\n"
                             " = ( 28.0 - 25.0 - 1.0 )/2\n"
                             " = 1.0000 in.\n");
        EXPECT_EQ(s.hgDouble, 0.75f);
        EXPECT_EQ(s.hs, 0.25f * (50.0f - 27.125f - 16.0f)); // shell bore 28 - 1.25 + 0.375
        s.ci = s.go;                                        // no hub is left
        MOMENT_ARMS_FULL_FACE(s);
        EXPECT_EQ(s.hs, 0.25f * (50.0f - 27.875f - 16.0f));
        take_lines();
    }
}

// ---- order of operations, units, marks ----------------------------------------------------------

// The last bits, computed outside with each operation rounded in the order of the formula.
TEST_F(MomentArms, InTheOrderOfTheFormulas) {
    FLANGE_STATE s;
    s.code = ASME_VIII_1;
    s.A = 33.71f;
    s.B = 18.63f;
    s.C = 27.46f;
    s.G = 21.17f;
    s.g1 = 1.07f;
    s.go = 0.61f;
    s.ci = 0.13f;
    s.ce = 0.07f;
    s.dh = 0.93f;
    s.b2 = 0.197f;
    s.GoC = 30.51f;
    s.GiC = 19.73f;
    s.type = INTEGRAL_WELD_NECK;
    MOMENT_ARMS(s);
    EXPECT_EQ(s.ht, 3.71499944f);
    EXPECT_EQ(s.hd, 3.84999967f);
    s.type = LOOSE_RING;
    MOMENT_ARMS(s);
    EXPECT_EQ(s.ht, 3.71499968f);
    EXPECT_EQ(s.hd, 4.28499985f);
    s.type = REVERSE_WELD_NECK;
    MOMENT_ARMS(s);
    EXPECT_EQ(s.ht, 0.25f);
    EXPECT_EQ(s.hd, -2.65499878f);
    s.fullFace = true;
    FULL_FACE_ARMS(s);
    MOMENT_ARMS(s);
    EXPECT_EQ(s.hgDouble, 0.544596434f);
    EXPECT_EQ(s.ht, 3.09099054f);
    EXPECT_EQ(s.hd, 4.35499954f);
    s.code = EN_13445;
    MOMENT_ARMS_FULL_FACE(s);
    EXPECT_EQ(s.hgDouble, 0.995000303f);
    EXPECT_EQ(s.ht, 2.73166656f);
    EXPECT_EQ(s.hd, 2.65499997f);
    EXPECT_EQ(s.hs, 0.645000458f);
    s.type = INTEGRAL_WELD_NECK;
    MOMENT_ARMS_FULL_FACE(s);
    EXPECT_EQ(s.ht, 2.42425013f);
    EXPECT_EQ(s.hd, 3.81499982f);
}

TEST_F(MomentArms, LengthsGoThroughTheDiameterFactor) {
    UNITS.diameter = 2.0f;
    UNITS.thickness = 5.0f;
    UNITS.diameter_label = "mm";
    FLANGE_STATE s = flange();
    EXPECT_EQ(report(s), "Moment Arm Calculations:\n"
                         "Distance to Gasket Load Reaction [hg]:\n"
                         " = (C - G ) / 2\n"
                         " = ( 50.0 - 40.0 )/2\n"
                         " = 5.0000 mm\n"
                         "Distance to Face Pressure Reaction [ht]:\n"
                         " = ( R + g1 + hg ) / 2\n"
                         " = ( 4.625 + 1.875 + 5.0 )/2\n"
                         " = 5.7500 mm\n"
                         "Distance to End Pressure Reaction [hd]:\n"
                         " = R + ( g1 / 2 )\n"
                         " = 4.625 + ( 1.875/2 )\n"
                         " = 5.5625 mm\n");
}

class EveryArm : public MomentArms {
  protected:
    template <typename Check>
    static void for_each_flange(Check check) {
        for (Int code = ASME_VIII_1; code <= EN_13445; ++code) {
            for (Int type = INTEGRAL_WELD_NECK; type <= REVERSE_WELD_NECK; ++type) {
                FLANGE_STATE s = flange(type, code);
                check(s);
                s = full_face(type, code);
                check(s);
            }
        }
    }
};

TEST_F(EveryArm, NumbersGiveTheirValues) {
    int checked = 0;
    for (const Real factor : {1.0f, 25.4f}) {
        UNITS.diameter = factor;
        for_each_flange([&](FLANGE_STATE& s) {
            s.b2 = 0.196850389f;
            arms(s);
            checked += check_printed_arithmetic(take_lines());
        });
    }
    EXPECT_GT(checked, 300);
}

TEST_F(EveryArm, TitlesHaveTheHeadingStyleAndOtherLinesNone) {
    for_each_flange([&](FLANGE_STATE& s) {
        arms(s);
        ASSERT_GT(LINE_COUNT, 0);
        for (Int k = 1; k <= LINE_COUNT; ++k)
            EXPECT_EQ(stored_marks(k), stored(k).ends_with(":") ? " 0 0 0 0 0 2" : " 0 0 0 0 0 0")
                << stored(k);
        take_lines();
    });
}

TEST_F(EveryArm, SilentPassesHaveTheSameArms) {
    for_each_flange([&](const FLANGE_STATE& given) {
        FLANGE_STATE loud = given, silent = given;
        report(loud);
        IWRTFL = 0;
        report(silent);
        IWRTFL = 1;
        EXPECT_EQ(LINE_COUNT, 0);
        for (const auto arm : {&FLANGE_STATE::hg, &FLANGE_STATE::hgPrime, &FLANGE_STATE::hgDouble,
                               &FLANGE_STATE::ht, &FLANGE_STATE::hd, &FLANGE_STATE::hs})
            EXPECT_EQ(silent.*arm, loud.*arm);
    });
}

} // namespace
} // namespace tarvane::stage_test
