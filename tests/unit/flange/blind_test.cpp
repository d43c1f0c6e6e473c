// Flat bolted covers against published examples, by code and form, and the pressure of a thickness.
#include "flange/blind.h"
#include "shape_fixture.h"

namespace tarvane {
namespace {

class BlindThickness : public shape_test::ShapeTest {};

// Flat cover of the ASME example E4.6.1.
FLANGE_STATE cover() {
    FLANGE_STATE s;
    s.type = BLIND;
    s.code = ASME_VIII_1;
    s.jointE = 1.0f;
    s.Cf = 0.3f;
    s.hg = 0.875f;
    s.C = 31.25f;
    s.b = 0.2253f;
    s.m = 3.75f;
    s.Sa = 25000.0f;
    return s;
}
BLIND_CALL operating() {
    return {.d = 29.5f,
            .Zf = 1.0f,
            .P = 135.0f,
            .S = 17800.0f,
            .W = 111329.5f,
            .ca = 0.0f,
            .tGiven = 2.0f};
}
BLIND_CALL seating() {
    return {.d = 29.5f,
            .Zf = 1.0f,
            .P = 0.0f,
            .S = 20000.0f,
            .W = 237626.0f,
            .ca = 0.0f,
            .tGiven = 2.0f};
}

TEST_F(BlindThickness, published_cover_in_operation_and_seating) {
    const FLANGE_STATE s = cover();
    BLIND_CALL call = operating();
    BLIND_THICKNESS(s, call);
    EXPECT_CLOSE(call.tOut, 1.52727, 3e-6);
    call.ca = 0.125f;
    BLIND_THICKNESS(s, call);
    EXPECT_CLOSE(call.tOut, 1.6523, 4e-5); // printed with four decimals

    BLIND_CALL seat = seating();
    BLIND_THICKNESS(s, seat);
    EXPECT_CLOSE(seat.tOut, 0.81828, 5e-6);
    EXPECT_EQ(seat.tEdge, seat.tOut);
}

TEST_F(BlindThickness, published_plate_without_a_bolt_load) {
    FLANGE_STATE s = cover();
    BLIND_CALL call{
        .d = 18.0f, .Zf = 1.0f, .P = 15.0f, .S = 20000.0f, .W = 0.0f, .ca = 0.0f, .tGiven = 0.5f};
    BLIND_THICKNESS(s, call);
    EXPECT_CLOSE(call.tOut, 18.0 * std::sqrt(0.3 * 15.0 / 20000.0), 1e-6); // printed 0.27
    EXPECT_CLOSE(call.pOut, 51.44, 1e-4);
    EXPECT_EQ(call.tEdge, 0.0f);
}

TEST_F(BlindThickness, pressure_put_back_asks_for_the_given_thickness) {
    for (const Int code : {ASME_VIII_1, ASME_VIII_2, PD_5500, EN_13445}) {
        for (const Real Zf : {1.0f, 1.6f}) {
            SCOPED_TRACE(testing::Message() << code << " " << Zf);
            FLANGE_STATE s = cover();
            s.code = code;
            s.jointE = 0.9f;
            s.L = 120.0f;
            BLIND_CALL call = operating();
            call.Zf = Zf;
            call.tGiven = 2.5f;
            call.ca = 0.125f;
            BLIND_THICKNESS(s, call);
            ASSERT_GT(call.pOut, 135.0f);
            call.P = call.pOut;
            BLIND_THICKNESS(s, call);
            EXPECT_CLOSE(call.tOut, 2.5, 1e-5);
        }
    }
}

TEST_F(BlindThickness, joint_efficiency_counts_under_asme_only) {
    for (const Int code : {ASME_VIII_1, ASME_VIII_2, PD_5500}) {
        FLANGE_STATE s = cover();
        s.code = code;
        s.jointE = 0.5f;
        BLIND_CALL call = operating();
        call.W = 0.0f;
        BLIND_THICKNESS(s, call);
        const double E = code == PD_5500 ? 1.0 : 0.5;
        EXPECT_CLOSE(call.tOut, 29.5 * std::sqrt(135.0 * 0.3 / (17800.0 * E)), 1e-6) << code;
    }
}

TEST_F(BlindThickness, external_pressure_and_reversed_load_count_by_magnitude) {
    const FLANGE_STATE s = cover();
    BLIND_CALL call = operating();
    BLIND_THICKNESS(s, call);
    BLIND_CALL reversed = operating();
    reversed.P = -135.0f;
    reversed.W = -111329.5f;
    BLIND_THICKNESS(s, reversed);
    EXPECT_EQ(reversed.tOut, call.tOut);
    EXPECT_EQ(reversed.tEdge, call.tEdge);
}

TEST_F(BlindThickness, en_cover_takes_the_larger_of_its_bolt_and_pressure_thickness) {
    FLANGE_STATE s = cover();
    s.code = EN_13445;
    s.CF = 1.2f;
    BLIND_CALL call = operating();
    call.ca = 0.125f;
    BLIND_THICKNESS(s, call);
    const double A2 = 0.309375 * 29.5 * 29.5 + 3 * 1.2 * (29.5 / 4 + 2 * 0.2253 * 3.75) * 1.75;
    const double tPress = std::sqrt(135.0 / 17800.0 * A2);
    const double tBolt = std::sqrt(1.2 * 3 * 1.75 * 111329.5 / 25000.0 / (3.14159012 * 29.5));
    ASSERT_GT(tPress, tBolt);
    EXPECT_CLOSE(call.tOut, tPress + 0.125, 1e-6);
    EXPECT_CLOSE(call.pOut, 1.875 * 1.875 * 17800.0 / A2, 1e-6);
    // The thickness at the gasket is still that of the ASME form.
    const double bt = 1.9 * 111329.5 * 0.875 * 1.2 / (17800.0 * 29.5 * 29.5 * 29.5);
    EXPECT_CLOSE(call.tEdge, 29.5 * std::sqrt(bt) + 0.125, 1e-6);

    call = operating();
    call.W = 40.0f * 111329.5f;
    call.ca = 0.125f;
    BLIND_THICKNESS(s, call);
    EXPECT_CLOSE(call.tOut, std::sqrt(40.0) * tBolt + 0.125, 1e-6);
}

TEST_F(BlindThickness, en_bolt_load_keeps_its_sign) {
    FLANGE_STATE s = cover();
    s.code = EN_13445;
    BLIND_CALL call = operating();
    call.W = -call.W;
    BLIND_THICKNESS(s, call);
    EXPECT_TRUE(std::isnan(call.tOut)); // root of a negative value, kept as the first of the two
    EXPECT_GT(call.tEdge, 0.0f);
}

TEST_F(BlindThickness, en_cover_without_pressure_keeps_the_asme_form) {
    FLANGE_STATE s = cover();
    BLIND_CALL asme = seating();
    BLIND_THICKNESS(s, asme);
    s.code = EN_13445;
    BLIND_CALL en = seating();
    BLIND_THICKNESS(s, en);
    EXPECT_EQ(en.tOut, asme.tOut);
    EXPECT_EQ(en.pOut, asme.pOut);
    en.P = 0.001f;
    BLIND_THICKNESS(s, en);
    EXPECT_CLOSE(en.tOut, static_cast<double>(asme.tOut), 1e-4);
    en.P = std::nextafter(0.001f, 1.0f);
    BLIND_THICKNESS(s, en);
    EXPECT_GT(std::fabs(en.tOut - asme.tOut), 0.01f);
}

TEST_F(BlindThickness, full_face_cover_under_pd_and_en_returns_with_its_own_form) {
    FLANGE_STATE s = cover();
    s.fullFace = true;
    s.coverFlag = 1; // no UG-39 factor on this path
    for (const Int code : {PD_5500, EN_13445}) {
        s.code = code;
        BLIND_CALL call = operating();
        call.ca = 0.125f;
        BLIND_THICKNESS(s, call);
        EXPECT_CLOSE(call.tOut, 0.41 * 31.25 * std::sqrt(135.0 / 17800.0) + 0.125, 1e-6);
        EXPECT_EQ(call.tEdge, call.tOut);
        EXPECT_CLOSE(call.pOut, 17800.0 * std::sqrt(1.875 / (0.41 * 31.25)), 1e-6);
    }
}

TEST_F(BlindThickness, full_face_cover_under_asme_spans_the_bolt_circle) {
    FLANGE_STATE s = cover();
    s.fullFace = true;
    s.Cf = 0.25f;
    for (const Int code : {ASME_VIII_1, ASME_VIII_2}) {
        s.code = code;
        BLIND_CALL call = operating();
        call.ca = 0.125f;
        BLIND_THICKNESS(s, call);
        EXPECT_CLOSE(call.tOut, 31.25 * std::sqrt(135.0 * 0.25 / 17800.0) + 0.125, 1e-6);
        EXPECT_CLOSE(call.pOut, 1.875 * 1.875 / (29.5 * 29.5) * 17800.0 / 0.25, 1e-6);
        EXPECT_EQ(call.tEdge, 0.0f);
    }
}

TEST_F(BlindThickness, shape_factor_of_one_counts_as_circular) {
    FLANGE_STATE s = cover();
    s.L = 0.0f; // would divide by zero in the other form
    BLIND_CALL call = operating();
    call.Zf = 1.0f;
    BLIND_THICKNESS(s, call);
    EXPECT_CLOSE(call.tOut, 1.52727, 3e-6);
    for (const Real Zf : {std::nextafter(0.999f, 1.0f), std::nextafter(1.001f, 1.0f)}) {
        call.Zf = Zf;
        BLIND_THICKNESS(s, call);
        EXPECT_CLOSE(call.tOut, 1.52727, 3e-6) << Zf;
    }
    for (const Real Zf : {0.999f, 1.001f}) {
        call.Zf = Zf;
        BLIND_THICKNESS(s, call);
        EXPECT_TRUE(std::isinf(call.tOut)) << Zf;
    }
}

TEST_F(BlindThickness, non_circular_cover) {
    FLANGE_STATE s = cover();
    s.L = 110.0f;
    s.CF = 1.1f;
    BLIND_CALL call = operating();
    call.d = 20.0f;
    call.Zf = 1.6f;
    call.ca = 0.125f;
    BLIND_THICKNESS(s, call);
    const double bt = 6 * 111329.5 * 0.875 * 1.1 / (17800.0 * 110.0 * 400.0);
    EXPECT_CLOSE(call.tOut, 20 * std::sqrt(1.6 * 135 * 0.3 / 17800 + bt) + 0.125, 1e-6);
    EXPECT_CLOSE(call.tEdge, 20 * std::sqrt(bt) + 0.125, 1e-6);
    EXPECT_CLOSE(call.pOut, (1.875 * 1.875 / 400.0 - bt) * 17800.0 / (0.3 * 1.6), 1e-5);
}

TEST_F(BlindThickness, no_given_thickness_gives_a_negative_pressure_as_it_comes) {
    const FLANGE_STATE s = cover();
    BLIND_CALL call = operating();
    call.tGiven = 0.0f;
    BLIND_THICKNESS(s, call);
    EXPECT_LT(call.pOut, 0.0f);
}

TEST_F(BlindThickness, opening_factor_of_the_cover) {
    FLANGE_STATE s = cover();
    BLIND_CALL plain = operating();
    plain.ca = 0.125f;
    BLIND_THICKNESS(s, plain);
    const double net = static_cast<double>(plain.tOut) - 0.125;
    const auto with = [&](Real setup50, Real factor, Int flag) {
        SETUP[49].real = setup50;
        s.coverFactor = factor;
        s.coverFlag = flag;
        BLIND_CALL call = operating();
        call.ca = 0.125f;
        BLIND_THICKNESS(s, call);
        EXPECT_EQ(call.tEdge, plain.tEdge);
        EXPECT_EQ(call.pOut, plain.pOut);
        return call.tOut;
    };
    const double root2 = std::sqrt(2.0);
    EXPECT_CLOSE(with(1.0f, 1.0f, 0), net * root2 + 0.125, 1e-6); // doubled stress of UG-39(d)(2)
    EXPECT_EQ(with(0.5f, 1.0f, 0), plain.tOut);                   // truncates to 0
    EXPECT_CLOSE(with(0.0f, 1.2f, 0), net * 1.2 * root2 + 0.125, 1e-6);
    EXPECT_CLOSE(with(1.0f, 1.2f, 0), net * 1.2 * root2 + 0.125, 1e-6);
    EXPECT_CLOSE(with(0.0f, 1.2f, 1), net * root2 + 0.125, 1e-6); // the flag goes first
    EXPECT_EQ(with(0.0f, 1.001f, 0), plain.tOut);
    EXPECT_CLOSE(with(0.0f, std::nextafter(1.001f, 2.0f), 0), net * 1.001 * root2 + 0.125, 1e-6);
    EXPECT_EQ(with(0.0f, 0.9f, 0), plain.tOut);
}

TEST_F(BlindThickness, results_of_an_earlier_call_do_not_stay) {
    FLANGE_STATE s = cover();
    BLIND_CALL call = operating();
    BLIND_THICKNESS(s, call);
    s.fullFace = true;
    BLIND_THICKNESS(s, call);
    EXPECT_EQ(call.tEdge, 0.0f);
    EXPECT_TRUE(written().empty());
}

} // namespace
} // namespace tarvane
