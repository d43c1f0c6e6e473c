// Figures of the shipped files that public copies of the tables show to be lower, or distances greater,
// than what is commonly quoted: each one as the lower (greater) figure, through the public header.
#include "shipped_files.h"

#include <cstring>
#include <optional>
#include <string>

namespace {

using Record = TARVANE_MATERIAL_RECORD;

class CorrectedFigures : public ShippedFiles {
  protected:
    static void select(std::int32_t d2_class, bool metric = false) {
        const std::int32_t file = metric ? 1 : 0, force = 0, year = 0;
        SET_MATERIAL_SELECTION(&file, &force, &d2_class, &year);
    }
    static std::optional<Record> record(std::int32_t code, std::string_view name,
                                        std::int32_t reference) {
        std::int32_t status = 1;
        Record r{};
        READ_MATERIAL(&code, name.data(), static_cast<std::int32_t>(name.size()), &reference,
                      &status, &r);
        if (status != 0) ADD_FAILURE() << name << ' ' << reference << " is not there";
        return status == 0 ? std::optional(r) : std::nullopt;
    }
    // Stress in ksi of Division 1 at a temperature of the table (F); 0 where it has none.
    static float stress(std::string_view name, std::int32_t reference, int T) {
        const auto r = record(1, name, reference);
        return r ? r->allowable[(T - 100) / 50] : -1.0f;
    }
};

TEST_F(CorrectedFigures, OfDivision1AreTheLowerOnes) {
    const struct {
        const char* name;
        std::int32_t reference;
        int T;
        float S;
    } lower[] = {{"SA-516 65", 2, 800, 11.4f},    {"SA-516 65", 2, 850, 8.7f},
                 {"SA-516 65", 2, 900, 5.9f},     {"SA-515 65", 6, 800, 11.4f},
                 {"SA-515 65", 6, 850, 8.7f},     {"SA-515 65", 6, 900, 5.9f},
                 {"SA-387 11 1", 18, 750, 17.1f}, {"SA-387 11 1", 18, 800, 16.8f},
                 {"SA-387 11 1", 18, 850, 16.4f}, {"SA-387 11 1", 18, 900, 13.7f}};
    for (const auto& figure : lower)
        EXPECT_FLOAT_EQ(stress(figure.name, figure.reference, figure.T), figure.S)
            << figure.name << " at " << figure.T;
}

TEST_F(CorrectedFigures, EndAtTheLimitOfDivision1) {
    const struct {
        const char* name;
        std::int32_t reference;
        int last; // F
        float S;
    } limits[] = {{"SA-333 1", 36, 650, 14.8f},
                  {"SA-334 6", 48, 650, 17.1f},
                  {"SA-234 WPC", 73, 800, 12.0f},
                  {"SA-420 WPL6", 74, 850, 8.7f}};
    for (const bool metric : {false, true}) {
        select(0, metric);
        for (const auto& limit : limits) {
            const auto r = record(1, limit.name, limit.reference);
            ASSERT_TRUE(r);
            if (!metric) {
                EXPECT_FLOAT_EQ(r->allowable[(limit.last - 100) / 50], limit.S) << limit.name;
            }
            for (int place = 0; place < 32; ++place) {
                const int C = place < 2 ? 40 + 25 * place : 50 + 25 * place;
                const int F = metric ? C * 9 / 5 + 32 : 100 + 50 * place;
                EXPECT_EQ(r->allowable[place] > 0.0f, F <= limit.last) << limit.name << " at " << F;
            }
        }
    }
    // Where Division 1 ends, class 2 has no stress drawn from it.
    select(1);
    const auto tube = record(2, "SA-334 6", 48);
    ASSERT_TRUE(tube);
    EXPECT_FLOAT_EQ(tube->allowable[11], 17.3f); // 650 F
    EXPECT_EQ(tube->allowable[12], 0.0f);
}

TEST_F(CorrectedFigures, OfLargeForgingsAndThickPipesStandInRowsOfTheirSize) {
    const struct {
        const char* name;
        std::int32_t usual, large;
        float size, tensile, yield;
        int T;
        float S;
    } rows[] = {{"SA-182 F304", 111, 161, 5.0f, 70.0f, 30.0f, 300, 17.7f},
                {"SA-182 F316", 113, 162, 5.0f, 70.0f, 30.0f, 300, 19.4f},
                {"SA-182 F321", 115, 163, 5.0f, 70.0f, 30.0f, 300, 17.8f},
                {"SA-182 F347", 116, 164, 5.0f, 70.0f, 30.0f, 300, 17.5f},
                {"SA-312 TP321", 125, 165, 0.375f, 70.0f, 25.0f, 100, 16.7f},
                {"SA-312 TP321", 225, 165, 0.375f, 70.0f, 25.0f, 100, 16.7f}};
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.name) + " " + std::to_string(row.usual));
        const auto usual = record(1, row.name, row.usual), large = record(1, row.name, row.large);
        ASSERT_TRUE(usual && large);
        EXPECT_EQ(usual->max_dia, row.size);
        EXPECT_EQ(usual->min_dia, -1.0f);
        EXPECT_EQ(large->min_dia, row.size);
        EXPECT_EQ(large->max_dia, -1.0f);
        EXPECT_EQ(large->tensile, row.tensile);
        EXPECT_EQ(large->yield, row.yield);
        const auto place = static_cast<std::size_t>((row.T - 100) / 50);
        EXPECT_FLOAT_EQ(large->allowable[place], row.S);
        EXPECT_LE(large->allowable[0], row.tensile / 3.5f + 0.001f);
        // Nothing above what the usual size has, and nothing beyond the last known figure.
        for (std::size_t i = 0; i < 32; ++i) {
            EXPECT_LE(large->allowable[i], usual->allowable[i]) << i;
            EXPECT_EQ(large->allowable[i] > 0.0f, i <= place) << i;
        }
    }
    // The limit goes with the record in Division 2, too.
    for (const std::int32_t d2_class : {0, 1}) {
        select(d2_class);
        const auto pipe = record(2, "SA-312 TP321", 125);
        ASSERT_TRUE(pipe);
        EXPECT_EQ(pipe->max_dia, 0.375f);
    }
}

TEST_F(CorrectedFigures, OfDivision2AreTheLowerOnes) {
    for (const std::int32_t d2_class : {0, 1}) {
        select(d2_class);
        const auto forging = record(2, "SA-350 LF2", 65);
        ASSERT_TRUE(forging);
        EXPECT_FLOAT_EQ(forging->allowable[11], 17.8f);  // 650 F
        EXPECT_FLOAT_EQ(forging->allowable[12], 16.59f); // 700 F
        EXPECT_EQ(forging->allowable[13], 0.0f);
    }
}

TEST_F(CorrectedFigures, NameTheChartOfHeatTreatedChromiumSteels) {
    for (const auto& [name, reference] :
         {std::pair("SA-387 11 2", 19), {"SA-387 22 2", 23}, {"SA-182 F22 3", 71}}) {
        const auto r = record(1, name, reference);
        ASSERT_TRUE(r);
        EXPECT_EQ(std::string(r->chart, sizeof r->chart), "CS-3    ") << name;
    }
    for (const auto& [name, reference] : {std::pair("SA-387 11 1", 18), {"SA-387 22 1", 22}}) {
        const auto r = record(1, name, reference);
        ASSERT_TRUE(r);
        EXPECT_EQ(std::string(r->chart, sizeof r->chart), "CS-2    ") << name;
    }
}

// No B above the public point, at 300 F and below.
TEST_F(CorrectedFigures, OfChartCs2AreTheLowerOnes) {
    const std::string_view name = "CS-2";
    for (float T : {70.0f, 300.0f}) {
        float used, E, Aelastic, second, Amax, Bmax, c0, c1, c2, yield = 0.0f;
        READ_CHART(name.data(), 4, &T, &used, &E, &Aelastic, &second, &Amax, &Bmax, &c0, &c1, &c2,
                   &yield);
        const auto B = [&](float A) {
            float b = 0.0f;
            FACTOR_B(&A, &E, &Aelastic, &Amax, &Bmax, &c0, &c1, &c2, &b);
            return b;
        };
        EXPECT_EQ(B(0.025f), 17550.0f);
        EXPECT_EQ(B(0.1f), 17550.0f);
        EXPECT_NEAR(B(0.0009f), 11806.0f, 0.2f);
        const struct {
            float A, B;
        } points[] = {{8.0e-4f, 11400.0f},   {0.0009f, 11806.0f}, {0.001f, 12300.0f},
                      {0.002669f, 15927.0f}, {0.005f, 17259.0f},  {0.025f, 17550.0f}};
        for (const auto& point : points) {
            EXPECT_LE(B(point.A), point.B + 0.2f) << point.A;
            EXPECT_GE(B(point.A), 0.98f * point.B) << point.A;
        }
    }
}

TEST_F(CorrectedFigures, GiveTheGreaterEdgeDistanceToThe2AndAHalfInchBolt) {
    for (const std::int32_t series : {1, 2}) { // TEMA, UNC
        const struct {
            float diameter, edge;
        } bolts[] = {{2.25f, 2.25f}, {2.5f, 2.5f}, {2.75f, 2.625f}};
        for (const auto& bolt : bolts) {
            float row[9] = {};
            std::int32_t found = 0;
            GETBOLTDATA(&bolt.diameter, &series, row, &found);
            EXPECT_EQ(row[0], bolt.diameter) << series;
            EXPECT_EQ(row[5], bolt.edge) << series << ' ' << bolt.diameter;
        }
    }
}

// N/mm2, at 20 C and in steps of 50 from 50 C on.
TEST_F(CorrectedFigures, Of16Mo3AreThoseOfTheEarlierEdition) {
    const std::int32_t key = 5;
    std::int32_t status = 1;
    TARVANE_EN_RECORD record{};
    READ_EN_MATERIAL(&key, &status, &record);
    ASSERT_EQ(status, 0);
    constexpr float PROOF[] = {275, 273, 264, 250, 215, 200, 170, 160, 150, 145, 140, 0};
    for (std::size_t i = 0; i < std::size(PROOF); ++i) {
        float proof = -1.0f;
        std::memcpy(&proof, reinterpret_cast<const char*>(&record) + 132 + 4 * i, sizeof proof);
        EXPECT_EQ(proof, PROOF[i]) << i;
    }
}

} // namespace
