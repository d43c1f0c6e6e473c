// True of any flange, whatever its dimensions: a thickness that was searched meets its limits,
// a pressure that was rated requires the thickness given.
#include "sample_flange.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace tarvane {
namespace {

// Thick rings under high pressure, with bolts enough and near each other.
SampleFlange heavy_flange(std::mt19937& random, Int type) {
    const auto between = [&](Real low, Real high) {
        return std::uniform_real_distribution<Real>(low, high)(random);
    };
    SampleFlange flange;
    const Real B = between(16.0f, 40.0f), g0 = between(0.75f, 1.25f), g1 = g0 + between(0.5f, 1.0f);
    const Real Gi = B + between(0.5f, 1.0f), Go = Gi + between(1.0f, 1.5f);
    const Real bolt = 1.5f, C = std::max(B + 2.0f * g1, Go) + 4.5f;
    flange.set({{2, static_cast<Real>(type)},
                {3, 2.0f},
                {4, between(600.0f, 1200.0f)},
                {5, 300.0f},
                {6, 20000.0f},
                {8, 3.0f},
                {10, B},
                {11, C + 3.5f},
                {12, Go + 0.25f},
                {13, B},
                {14, Go},
                {15, Gi},
                {16, type == 5 ? 0.0f : g0},
                {17, type == 5 ? 0.0f : g1},
                {18, type == 5 ? 0.0f : between(1.5f, 4.0f)},
                {21, C},
                {22, bolt},
                {24, std::floor(PI * C / 3.4f / 4.0f) * 4.0f},
                {25, 2.0f},
                {26, 1600.0f},
                {27, 1.0f},
                {28, 1.0f},
                {30, 0.0f},
                {60, 0.0f},
                {61, 0.0f},
                {71, 0.0f}});
    flange.pOperating = flange.at(4);
    return flange;
}

// Least ratio of the places that the search of this type looks at.
Real worst_ratio(Int type) {
    Real worst = 999.0f;
    for (const auto& row : FLANGE.RATIO) {
        if (type == LOOSE_RING) {
            worst = std::min(worst, row[TANGENTIAL]);
            continue;
        }
        for (const Int place : {HUB, RADIAL, TANGENTIAL, AVERAGE})
            worst = std::min(worst, row[place]);
        if (type == REVERSE_WELD_NECK) worst = std::min(worst, row[REVERSE]);
    }
    return worst;
}

// The thickness goes up to the next thousandth of an inch, and a stress falls with its square or, with
// a hub, up to its cube: above 3 inches that moves the ratio by 0.1 % at the most. The search itself
// ends within 0.00001 of the thickness, so a stress may be above its limit by 0.00003.
TEST(Identities, SearchedThicknessJustMeetsItsLimits) {
    fresh_engine();
    std::mt19937 random(20);
    int met = 0;
    for (int i = 0; i < 1000; ++i) {
        const Int types[] = {1, 2, 4, 5};
        const Int type = types[i % 4];
        SampleFlange flange = heavy_flange(random, type);
        flange.writeCase = 1;
        IWRTFL = 1;
        IOUT =
            12; // the unit is closed: the lines are lost, the boxes and warnings are not kept back
        flange.run();
        if (FLANGE.error != 0 || FLANGE.CF > 1.0f || flange.tReq < 3.0f) continue;
        const Real worst = worst_ratio(type);
        EXPECT_GE(worst, 0.9999f) << "flange " << i << " type " << type << " t " << flange.tReq;
        EXPECT_LE(worst, 1.001f) << "flange " << i << " type " << type << " t " << flange.tReq;
        ++met;

        // The same flange given that thickness: no overstress.
        SampleFlange given = flange;
        given.at(3) = 1.0f;
        given.at(8) = flange.tReq;
        given.run();
        for (Int place = HUB; place <= AVERAGE; ++place)
            for (const Int row : {OPERATING, SEATING})
                EXPECT_LE(FLANGE.STRESS[row][place], 1.00003f * FLANGE.ALLOWED[row][place]) << i;
    }
    EXPECT_GT(met, 100);
}

// The pressure of a cover, used as its design pressure, requires the thickness that was given.
TEST(Identities, RatedPressureOfACoverAsksForItsThickness) {
    fresh_engine();
    std::mt19937 random(21);
    const auto between = [&](Real low, Real high) {
        return std::uniform_real_distribution<Real>(low, high)(random);
    };
    int met = 0;
    for (int i = 0; i < 500; ++i) {
        SampleFlange flange;
        const Real G = between(12.0f, 40.0f);
        flange.set({{2, 7.0f},
                    {4, 50.0f},
                    {6, 20000.0f},
                    {8, between(0.04f, 0.07f) * G},
                    {10, 0.0f},
                    {11, G + 7.0f},
                    {12, G + 1.0f},
                    {13, G - 3.0f},
                    {14, G + 0.5f},
                    {15, G - 0.5f},
                    {21, G + 4.5f},
                    {22, 1.5f},
                    {24, std::floor(PI * G / 3.4f / 4.0f) * 4.0f},
                    {25, 1.0f},
                    {26, 200.0f},
                    {27, 1.0f},
                    {28, 1.0f},
                    {30, 0.0f}});
        flange.pOperating = 50.0f;
        flange.writeCase = 0;
        flange.run();
        const Real rated = FLANGE.MAWPop;
        if (FLANGE.CF > 1.0f || FLANGE.RATIO[OPERATING][BOLTING] < 1.0f || !(rated > 60.0f))
            continue;
        SampleFlange again = flange;
        again.at(4) = rated;
        again.pOperating = rated;
        again.run();
        // Where bolts or seating set the limit, another thickness comes out.
        if (FLANGE.RATIO[OPERATING][BOLTING] <= 1.0f) continue;
        if (FLANGE.RATIO[SEATING][TANGENTIAL] < 1.0f) continue;
        EXPECT_NEAR(FLANGE.RATIO[OPERATING][TANGENTIAL], 1.0f, 0.0005f) << i;
        EXPECT_NEAR(again.tReq, flange.at(8), 0.0005f * flange.at(8)) << i;
        ++met;
    }
    EXPECT_GT(met, 100);
}

} // namespace
} // namespace tarvane
