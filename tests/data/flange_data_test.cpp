// The shipped standard flanges, through the public header and as they are in the file.
#include "shipped_files.h"

#include <array>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <map>
#include <numbers>
#include <sstream>
#include <string>
#include <vector>

namespace {

using Row = std::array<float, 17>; // numbers of a line

struct Class {
    std::string name;
    std::vector<Row> rows;
    bool metric() const { return name.starts_with("PN"); }
};

// Columns of a row.
enum Column {
    SIZE,
    SERIES,
    OUTSIDE,
    THICKNESS,
    BLIND,
    LENGTH,
    HUB,
    NECK,
    CIRCLE,
    HOLE,
    BOLTS,
    BOLT,
    BORE,
    SLIP_ON_LENGTH,
    SLIP_ON_BORE,
    FACE,
    LAST
};

struct Flange {
    float bore, t, number, hole, bolts, bolt, circle, quarter, outside, g0, g1, h, face, last;
};

class ShippedFlanges : public ShippedFiles {
  protected:
    ShippedFlanges() {
        std::ifstream file(std::filesystem::path(TARVANE_DATA_DIR) / "ANSIFlangeDimensions.txt");
        for (std::string line; std::getline(file, line) && line != "[END]";) {
            if (line.empty() || line[0] == ';') continue;
            if (line[0] == '[') {
                classes.push_back({line.substr(1, line.size() - 2), {}});
                continue;
            }
            std::istringstream numbers(line);
            Row row{};
            for (float& number : row)
                EXPECT_TRUE(numbers >> number) << line;
            classes.back().rows.push_back(row);
        }
    }

    static Flange flange(int flange_class, float size, float wall, int blind = 0, int slip_on = 0,
                         int ansi = 0, int of_series = 0) {
        std::array<float, 14> result{};
        std::int32_t notfound = 1, series = of_series;
        const std::int32_t number = flange_class, cover = blind, slip = slip_on, straight = 2,
                           inch = ansi;
        GET_FLANGE_DIMENSIONS(&size, &number, result.data(), &notfound, &series, &wall, &cover,
                              &slip, &straight, &inch);
        EXPECT_EQ(notfound & 1, 0) << flange_class << ' ' << size;
        Flange f{};
        float* const fields[] = {&f.bore, &f.t,      &f.number,  &f.hole,    &f.bolts,
                                 &f.bolt, &f.circle, &f.quarter, &f.outside, &f.g0,
                                 &f.g1,   &f.h,      &f.face,    &f.last};
        for (std::size_t i = 0; i < result.size(); ++i)
            *fields[i] = result[i];
        return f;
    }

    std::vector<Class> classes;
};

// Width of the nut across its corners and least spacing of the bolts, in the unit of the class; false for a
// bolt that the thread series does not list.
bool nut_of(const Class& flanges, float bolt, float& corners, float& spacing) {
    const std::int32_t series = flanges.metric() ? 5 : 1; // BS 3643, TEMA imperial
    float row[9] = {};
    std::int32_t found = 0;
    GETBOLTDATA(&bolt, &series, row, &found);
    corners = row[6];
    spacing = row[2];
    return found == 1;
}

TEST_F(ShippedFlanges, AreThoseOfTheClassesInAscendingSize) {
    // Of B16.5 or EN 1092-1, then of series A and series B of B16.47.
    const std::map<std::string, std::array<std::size_t, 3>> sizes{
        {"75", {0, 0, 18}},    {"150", {21, 18, 18}}, {"300", {21, 18, 18}}, {"400", {20, 18, 18}},
        {"600", {21, 18, 18}}, {"900", {19, 12, 12}}, {"1500", {19, 0, 0}},  {"2500", {14, 0, 0}},
        {"PN6", {15, 0, 0}},   {"PN10", {20, 0, 0}},  {"PN16", {24, 0, 0}},  {"PN25", {19, 0, 0}},
        {"PN40", {18, 0, 0}}};
    EXPECT_EQ(classes.size(), sizes.size());
    for (const Class& c : classes) {
        ASSERT_TRUE(sizes.contains(c.name)) << c.name;
        std::array<std::size_t, 3> count_of{};
        for (const Row& row : c.rows)
            ++count_of.at(static_cast<std::size_t>(row[SERIES]));
        EXPECT_EQ(count_of, sizes.at(c.name)) << c.name;
        char list[60][10];
        std::int32_t count = 0;
        GET_FLANGE_SIZES(c.name.data(), static_cast<std::int32_t>(c.name.size()), list[0],
                         sizeof list, &count);
        // The list ends where a second series begins at its first size again.
        const std::size_t listed = count_of[0] + (count_of[1] > 0 ? count_of[1] : count_of[2]);
        ASSERT_EQ(static_cast<std::size_t>(count), listed) << c.name;
        for (std::size_t i = 0; i < c.rows.size(); ++i) {
            if (i < listed) {
                EXPECT_EQ(std::stof(list[i]), c.rows[i][SIZE]);
            }
            EXPECT_EQ(c.rows[i][SERIES] > 0.0f, !c.metric() && c.rows[i][SIZE] >= 26.0f);
            if (i > 0 && c.rows[i][SERIES] == c.rows[i - 1][SERIES]) {
                EXPECT_GT(c.rows[i][SIZE], c.rows[i - 1][SIZE]) << c.name;
            }
        }
    }
}

// What is not known is 0.
TEST_F(ShippedFlanges, CouldBeMade) {
    for (const Class& c : classes) {
        for (const Row& r : c.rows) {
            SCOPED_TRACE("class " + c.name + " size " + std::to_string(r[SIZE]));
            EXPECT_GT(r[OUTSIDE], r[CIRCLE] + r[HOLE]);
            EXPECT_GT(r[CIRCLE] - r[HOLE], r[HUB]);
            EXPECT_GE(r[HUB], r[NECK]);
            EXPECT_GT(r[HOLE], r[BOLT]);
            EXPECT_EQ(std::fmod(r[BOLTS], 4.0f), 0.0f);
            EXPECT_GT(r[BOLTS], 0.0f);
            EXPECT_EQ(r[LAST], 0.0f);
            float corners = 0.0f, spacing = 0.0f;
            constexpr float SMALLEST_METRIC = 12.0f; // of the bolt table
            const bool nut = nut_of(c, r[BOLT], corners, spacing);
            EXPECT_EQ(nut, !c.metric() || r[BOLT] >= SMALLEST_METRIC) << r[BOLT];
            // Nuts side by side; the bolts at most a tenth closer than the spacing of TEMA.
            const float pitch = std::numbers::pi_v<float> * r[CIRCLE] / r[BOLTS];
            if (nut) {
                EXPECT_GT(pitch, corners);
                EXPECT_GT(pitch, 0.9f * spacing);
            }
            const bool drilling_only = c.name == "PN6" || c.name == "PN25" || c.name == "PN40" ||
                                       (c.name == "PN10" && r[SIZE] < 200.0f);
            EXPECT_EQ(r[THICKNESS] > 0.0f, !drilling_only);
            if (c.metric()) continue;
            EXPECT_GT(r[LENGTH], r[THICKNESS]);
            if (r[SERIES] > 0.0f) {
                EXPECT_EQ(r[BLIND], 0.0f);
                EXPECT_NEAR(r[HOLE] - r[BOLT], 0.125f, 1.0e-6f);
                continue;
            }
            EXPECT_EQ(r[BLIND], r[THICKNESS]);
            EXPECT_GT(r[NECK], r[BORE]);
            EXPECT_GT(r[BORE], 0.7f * r[NECK]);
            EXPECT_NEAR(r[HOLE] - r[BOLT], 0.125f, 1.0e-6f);
            EXPECT_LT(r[FACE], r[CIRCLE] - r[HOLE]);
            if (r[SLIP_ON_BORE] > 0.0f) {
                EXPECT_GT(r[SLIP_ON_BORE], r[NECK]);
                EXPECT_LT(r[SLIP_ON_BORE], r[NECK] + 0.27f);
                EXPECT_LT(r[SLIP_ON_BORE], r[HUB]);
                EXPECT_GT(r[SLIP_ON_LENGTH], r[THICKNESS]);
                EXPECT_LT(r[SLIP_ON_LENGTH], r[LENGTH]);
            }
        }
    }
}

TEST_F(ShippedFlanges, GrowWithTheClass) {
    std::map<float, Row> lower;
    int compared = 0;
    for (const Class& c : classes) {
        if (c.metric()) continue;
        for (const Row& r : c.rows) {
            if (r[SERIES] > 0.0f) continue; // class 300 of series A is smaller than class 150
            if (const auto below = lower.find(r[SIZE]); below != lower.end()) {
                for (const Column column : {OUTSIDE, THICKNESS, BLIND, CIRCLE}) {
                    EXPECT_GE(r[column], below->second[column])
                        << "class " << c.name << " size " << r[SIZE] << " column " << column + 1;
                    ++compared;
                }
                // Fewer, larger bolts do occur, but not less of them.
                EXPECT_GE(r[BOLT] * r[BOLT] * r[BOLTS],
                          below->second[BOLT] * below->second[BOLT] * below->second[BOLTS])
                    << "class " << c.name << " size " << r[SIZE];
            }
            lower[r[SIZE]] = r;
        }
    }
    EXPECT_GT(compared, 300);
}

// One row as a standard prints it: outside diameter, thickness, hub, neck, length, bolt circle, bolts.
struct Printed {
    int flange_class;
    float size, O, tf, X, A, Y, W;
    int n;
    float bolt;
};

// Of a published copy of the metric edition, millimetres, bolts in inches.
constexpr Printed MILLIMETRES[] = {
    {150, 0.5f, 90.0f, 9.6f, 30.0f, 21.3f, 46.0f, 60.3f, 4, 0.5f},
    {150, 0.75f, 100.0f, 11.2f, 38.0f, 26.7f, 51.0f, 69.9f, 4, 0.5f},
    {150, 1.0f, 110.0f, 12.7f, 49.0f, 33.4f, 54.0f, 79.4f, 4, 0.5f},
    {150, 1.5f, 125.0f, 15.9f, 65.0f, 48.3f, 60.0f, 98.4f, 4, 0.5f},
    {150, 2.0f, 150.0f, 17.5f, 78.0f, 60.3f, 62.0f, 120.7f, 4, 0.625f},
    {150, 3.0f, 190.0f, 22.3f, 108.0f, 88.9f, 68.0f, 152.4f, 4, 0.625f},
    {150, 4.0f, 230.0f, 22.3f, 135.0f, 114.3f, 75.0f, 190.5f, 8, 0.625f},
    {150, 6.0f, 280.0f, 23.9f, 192.0f, 168.3f, 87.0f, 241.3f, 8, 0.75f},
    {150, 8.0f, 345.0f, 27.0f, 246.0f, 219.1f, 100.0f, 298.5f, 8, 0.75f},
    {150, 12.0f, 485.0f, 30.2f, 365.0f, 323.8f, 113.0f, 431.8f, 12, 0.875f},
    {150, 16.0f, 595.0f, 35.0f, 457.0f, 406.4f, 125.0f, 539.8f, 16, 1.0f},
    {150, 20.0f, 700.0f, 41.3f, 559.0f, 508.0f, 143.0f, 635.0f, 20, 1.125f},
    {150, 24.0f, 815.0f, 46.1f, 663.0f, 610.0f, 151.0f, 749.3f, 20, 1.25f},
    {300, 0.5f, 95.0f, 12.7f, 38.0f, 21.3f, 51.0f, 66.7f, 4, 0.5f},
    {300, 1.0f, 125.0f, 15.9f, 54.0f, 33.4f, 60.0f, 88.9f, 4, 0.625f},
    {300, 1.25f, 135.0f, 17.5f, 64.0f, 42.2f, 64.0f, 98.4f, 4, 0.625f},
    {300, 2.5f, 190.0f, 23.9f, 100.0f, 73.0f, 75.0f, 149.2f, 8, 0.75f},
    {300, 3.0f, 210.0f, 27.0f, 117.0f, 88.9f, 78.0f, 168.3f, 8, 0.75f},
    {300, 5.0f, 280.0f, 33.4f, 178.0f, 141.3f, 97.0f, 235.0f, 8, 0.75f},
    {300, 6.0f, 320.0f, 35.0f, 206.0f, 168.3f, 97.0f, 269.9f, 12, 0.75f},
    {300, 10.0f, 445.0f, 46.1f, 321.0f, 273.0f, 116.0f, 387.4f, 16, 1.0f},
    {300, 12.0f, 520.0f, 49.3f, 375.0f, 323.8f, 129.0f, 450.8f, 16, 1.125f},
    {300, 14.0f, 585.0f, 52.4f, 425.0f, 355.6f, 141.0f, 514.4f, 20, 1.125f},
    {300, 18.0f, 710.0f, 58.8f, 533.0f, 457.0f, 157.0f, 628.6f, 24, 1.25f},
    {300, 24.0f, 915.0f, 68.3f, 702.0f, 610.0f, 167.0f, 812.8f, 24, 1.5f}};

// Of a published copy of the inch edition.
constexpr Printed INCHES[] = {
    {600, 0.75f, 4.62f, 0.62f, 1.88f, 1.05f, 2.25f, 3.25f, 4, 0.63f},
    {600, 2.0f, 6.5f, 1.0f, 3.31f, 2.38f, 2.88f, 5.0f, 8, 0.63f},
    {600, 3.5f, 9.0f, 1.38f, 5.25f, 4.0f, 3.38f, 7.25f, 8, 0.88f},
    {600, 5.0f, 13.0f, 1.75f, 7.44f, 5.56f, 4.5f, 10.5f, 8, 1.0f},
    {600, 8.0f, 16.5f, 2.19f, 10.75f, 8.63f, 5.25f, 13.75f, 12, 1.13f},
    {600, 14.0f, 23.75f, 2.75f, 17.0f, 14.0f, 6.5f, 20.75f, 20, 1.38f},
    {600, 22.0f, 34.25f, 3.75f, 26.25f, 22.0f, 7.75f, 30.62f, 24, 1.75f},
    {900, 3.0f, 9.5f, 1.5f, 5.0f, 3.5f, 4.0f, 7.5f, 8, 0.88f},
    {900, 6.0f, 15.0f, 2.19f, 9.25f, 6.63f, 5.5f, 12.5f, 12, 1.13f},
    {900, 12.0f, 24.0f, 3.12f, 16.5f, 12.75f, 7.88f, 21.0f, 20, 1.38f},
    {900, 18.0f, 31.0f, 4.0f, 22.25f, 18.0f, 9.0f, 27.0f, 20, 1.88f},
    {900, 24.0f, 41.0f, 5.5f, 29.5f, 24.0f, 11.5f, 35.5f, 20, 2.5f},
    {1500, 1.0f, 5.88f, 1.12f, 2.06f, 1.32f, 2.88f, 4.0f, 4, 0.88f},
    {1500, 2.5f, 9.62f, 1.62f, 4.88f, 2.88f, 4.12f, 7.5f, 8, 1.0f},
    {1500, 4.0f, 12.25f, 2.12f, 6.38f, 4.5f, 4.88f, 9.5f, 8, 1.25f},
    {1500, 10.0f, 23.0f, 4.25f, 14.5f, 10.75f, 10.0f, 19.0f, 12, 1.88f},
    {1500, 20.0f, 38.75f, 7.0f, 25.25f, 20.0f, 14.0f, 32.75f, 16, 3.0f},
    {2500, 0.5f, 5.25f, 1.19f, 1.69f, 0.84f, 2.88f, 3.5f, 4, 0.75f},
    {2500, 2.0f, 9.25f, 2.0f, 3.75f, 2.38f, 5.0f, 6.75f, 8, 1.0f},
    {2500, 6.0f, 19.0f, 4.25f, 9.25f, 6.63f, 10.75f, 14.5f, 8, 2.0f},
    {2500, 12.0f, 30.0f, 7.25f, 17.38f, 12.75f, 18.25f, 24.38f, 12, 2.75f}};

// The metric edition rounds outside diameters to 5 mm, hubs and lengths to 1 mm; the inch edition has two
// decimals.
TEST_F(ShippedFlanges, AgreeWithTheMetricEdition) {
    const auto in = [](float mm) { return mm / 25.4f; };
    for (const Printed& p : MILLIMETRES) {
        SCOPED_TRACE("class " + std::to_string(p.flange_class) + " size " + std::to_string(p.size));
        const Flange f = flange(p.flange_class, p.size, 0.1f);
        EXPECT_NEAR(f.outside, in(p.O), in(2.75f));
        EXPECT_NEAR(f.t, in(p.tf), in(0.18f));
        EXPECT_NEAR(2.0f * (f.g1 - f.g0), in(p.X - p.A), in(0.9f));
        EXPECT_NEAR(f.h + f.t, in(p.Y), in(0.8f));
        EXPECT_NEAR(f.circle, in(p.W), in(0.18f));
        EXPECT_EQ(f.bolts, static_cast<float>(p.n));
        EXPECT_EQ(f.bolt, p.bolt);
    }
}

TEST_F(ShippedFlanges, AreThoseOfTheInchEdition) {
    for (const Printed& p : INCHES) {
        SCOPED_TRACE("class " + std::to_string(p.flange_class) + " size " + std::to_string(p.size));
        const Flange f = flange(p.flange_class, p.size, 0.1f);
        EXPECT_EQ(f.outside, p.O);
        EXPECT_EQ(f.t, p.tf);
        EXPECT_NEAR(2.0f * (f.g1 - f.g0), p.X - p.A,
                    0.006f); // the neck is printed with two decimals
        EXPECT_NEAR(f.h + f.t, p.Y, 1.0e-5f);
        EXPECT_EQ(f.circle, p.W);
        EXPECT_EQ(f.bolts, static_cast<float>(p.n));
        EXPECT_NEAR(f.bolt, p.bolt, 0.006f); // eighths with two decimals
        EXPECT_EQ(f.bolt * 8.0f, std::floor(f.bolt * 8.0f));
        EXPECT_EQ(f.hole, f.bolt + 0.125f);
        const Flange cover = flange(p.flange_class, p.size, 0.1f, 1);
        EXPECT_EQ(cover.t, p.tf);
        EXPECT_EQ(cover.h, 0.0f);
    }
}

// ASME B16.47 of published copies, without the raised face that the engine takes off: outside diameter, ring,
// length, hub less neck, bolt circle, bolts.
TEST_F(ShippedFlanges, HaveTheSeriesOfLargeFlanges) {
    constexpr int A = 1, B = 2;
    const struct {
        int flange_class, series;
        float size, O, tf, Y, hub, W;
        float n, bolt;
    } printed[] = {{150, A, 26.0f, 34.25f, 2.63f, 4.69f, 0.62f, 31.75f, 24.0f, 1.25f},
                   {150, B, 26.0f, 30.94f, 1.57f, 3.44f, 0.88f, 29.31f, 36.0f, 0.75f},
                   {150, A, 50.0f, 61.75f, 4.32f, 7.94f, 1.25f, 58.25f, 44.0f, 1.75f},
                   {150, B, 44.0f, 50.25f, 2.32f, 5.32f, 1.26f, 48.12f, 52.0f, 1.0f},
                   {300, A, 60.0f, 71.25f, 6.38f, 10.69f, 1.62f, 67.0f, 32.0f, 2.25f},
                   {600, A, 36.0f, 51.75f, 4.88f, 11.12f, 4.62f, 47.0f, 28.0f, 2.5f},
                   {900, B, 48.0f, 70.25f, 9.19f, 16.5f, 4.88f, 62.5f, 24.0f, 4.0f},
                   {75, B, 60.0f, 66.0f, 2.13f, 5.63f, 1.06f, 63.88f, 44.0f, 1.0f}};
    for (const auto& p : printed) {
        SCOPED_TRACE("class " + std::to_string(p.flange_class) + " size " + std::to_string(p.size) +
                     " series " + std::to_string(p.series));
        const Flange f = flange(p.flange_class, p.size, 0.375f, 0, 0, 0, p.series);
        EXPECT_EQ(f.outside, p.O);
        EXPECT_NEAR(f.t, p.tf, 1.0e-4f);
        EXPECT_NEAR(f.h + f.t, p.Y, 1.0e-4f);
        EXPECT_NEAR(2.0f * (f.g1 - f.g0), p.hub, 1.0e-4f);
        EXPECT_EQ(f.circle, p.W);
        EXPECT_EQ(f.bolts, p.n);
        EXPECT_EQ(f.bolt, p.bolt);
        EXPECT_EQ(f.hole, p.bolt + 0.125f);
    }
}

// One copy prints 2.28 for the length of this size, which the metric edition has as 60 mm.
TEST_F(ShippedFlanges, HaveTheLengthOfTheSmallestSizeOfTheHighClasses) {
    for (const int high : {900, 1500}) {
        const Flange f = flange(high, 0.5f, 0.109f);
        EXPECT_NEAR(f.h + f.t, 2.38f, 1.0e-5f) << high;
    }
}

// NPS 6 class 300 slip on: a length of 2.06 counts a raised face of 0.06, so that the hub is 2.00 - 1.38.
TEST_F(ShippedFlanges, SlipOnHubBeginsAtTheRing) {
    const Flange f = flange(300, 6.0f, 0.28f, 0, 1);
    EXPECT_EQ(f.bore, 6.72f);
    EXPECT_NEAR(f.h, 0.62f, 1.0e-5f);
    EXPECT_NEAR(f.g1, 0.5f * (8.12f - 6.72f), 1.0e-5f);
    EXPECT_NEAR(flange(600, 6.0f, 0.28f, 0, 1).h, 2.62f - 1.88f, 1.0e-5f);
}

TEST_F(ShippedFlanges, BoreOfTheSmallSizesIsThatOfStandardPipe) {
    EXPECT_FLOAT_EQ(flange(150, 6.0f, 0.28f).bore, 6.065f);
    EXPECT_FLOAT_EQ(flange(300, 0.5f, 0.109f).bore, 0.622f);
    EXPECT_FLOAT_EQ(flange(150, 12.0f, 0.375f).bore, 12.0f);
    EXPECT_FLOAT_EQ(flange(150, 24.0f, 0.375f).bore, 23.25f);
    EXPECT_FLOAT_EQ(flange(150, 6.0f, 0.28f).face, 8.5f);
}

// EN 1092-1 type 11, DN 300 PN 16, of a published copy.
TEST_F(ShippedFlanges, MetricClassesAreInMillimetres) {
    const Flange f = flange(16, 300.0f, 7.1f / 25.4f, 0, 0, 1);
    EXPECT_FLOAT_EQ(f.outside * 25.4f, 460.0f);
    EXPECT_FLOAT_EQ(f.t * 25.4f, 28.0f);
    EXPECT_FLOAT_EQ(f.circle * 25.4f, 410.0f);
    EXPECT_FLOAT_EQ(f.hole * 25.4f, 26.0f);
    EXPECT_FLOAT_EQ(f.bolt * 25.4f, 24.0f);
    EXPECT_EQ(f.bolts, 12.0f);
    EXPECT_NEAR(f.g1 * 25.4f, (344.0f - 323.9f) / 2.0f + 7.1f, 1.0e-3f);
}

} // namespace
