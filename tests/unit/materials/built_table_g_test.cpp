// The table of factor A that is shipped: its form, its published points, and both against the theory.
#include "materials/table_g.h"

#include "../data_folder.h"
#include "../source_table.h"
#include "test_paths.h"

#include <cmath>
#include <cstdio>
#include <numbers>

namespace tarvane {
namespace {

using Section = std::vector<std::pair<double, double>>; // L/Do and A

const std::vector<int> KEYS = {4,  5,   6,   8,   10,  15,  20,  25,  30,  40,  50,  60,
                               80, 100, 125, 150, 200, 250, 300, 400, 500, 600, 800, 1000};

std::vector<std::string> file_lines() {
    std::ifstream file(std::string(TARVANE_DATA_DIR) + "/TableGData.txt");
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);)
        lines.push_back(line);
    return lines;
}

std::map<int, Section> sections() {
    std::map<int, Section> all;
    Section* section = nullptr;
    for (const std::string& line : file_lines()) {
        if (line.empty() || line[0] == ';') continue;
        if (line[0] == '[') {
            section = &all[std::stoi(line.substr(1))];
            continue;
        }
        std::istringstream in(line);
        auto& [length, A] = section->emplace_back();
        in >> length >> A;
        EXPECT_FALSE(in.fail()) << line;
    }
    return all;
}

double by_table(const Section& section, double length) {
    std::size_t i = 1;
    while (section[i].first < length)
        ++i;
    const auto [x0, y0] = section[i - 1];
    const auto [x1, y1] = section[i];
    return y0 * std::pow(y1 / y0, std::log(length / x0) / std::log(x1 / x0));
}

// The elastic buckling strain by von Mises' equation with end pressure, Poisson's ratio 0.3, in the
// form of Windenburg and Trilling (1934), at the number of lobes from 2 on, whole or not, that gives
// the least; no more than 0.1, where the table ends. Written here with t/D and L/D.
double by_theory(double Do_t, double L_Do) {
    const double t_D = 1.0 / Do_t, k = std::pow(std::numbers::pi / (2.0 * L_Do), 2);
    double least = 1.0e9;
    for (double n = 2.0; n < 60.0; n += 0.01) {
        const double n2 = n * n;
        // p / E
        const double p =
            (2.0 * t_D / (std::pow(n2 / k + 1.0, 2)) +
             2.0 * std::pow(t_D, 3) / (3.0 * 0.91) * (std::pow(n2 + k, 2) - 2.0 * n2 + 1.0)) /
            (n2 - 1.0 + k / 2.0);
        if (p > least) break; // it falls and then rises with n
        least = p;
    }
    return std::min(least / (2.0 * t_D), 0.1);
}

// The closed form that the engine uses without the table.
double by_formula(double Do_t, double L_Do) {
    const double x = 1.0 / Do_t, slope = 1.3 * x * std::sqrt(x);
    return std::max(
        {slope / (L_Do - 0.45 * std::sqrt(x)), slope / std::pow(L_Do, 1.05), 1.1 * x * x});
}

// The engine keeps a file of exactly 470 lines and reads 20 columns of each. A length at the first row
// takes the line before it, which must be blank.
TEST(BuiltTableG, Form) {
    const auto lines = file_lines();
    EXPECT_EQ(lines.size(), 470u);
    std::vector<int> keys;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        EXPECT_LE(lines[i].size(), 20u) << lines[i];
        if (lines[i][0] != '[') continue;
        keys.push_back(std::stoi(lines[i].substr(1)));
        ASSERT_LT(i + 2, lines.size());
        EXPECT_TRUE(lines[i + 1].empty()) << lines[i];
        EXPECT_EQ(lines[i + 2].substr(0, 5), "0.05 ") << lines[i];
    }
    EXPECT_EQ(keys, KEYS);
}

TEST(BuiltTableG, EveryLengthIsAnsweredAndAFalls) {
    const auto all = sections();
    for (const int key : KEYS) {
        const Section& section = all.at(key);
        EXPECT_EQ(section.front().first, 0.05);
        EXPECT_EQ(section.back().first, 50.0);
        for (std::size_t i = 1; i < section.size(); ++i) {
            EXPECT_GT(section[i].first, section[i - 1].first) << key;
            EXPECT_LE(section[i].second, section[i - 1].second) << key << section[i].first;
        }
        EXPECT_GT(section.back().second, 0.0);
        EXPECT_LE(section.front().second, 0.1);
    }
    for (double length = 0.05; length <= 50.0; length *= 1.05)
        for (std::size_t i = 1; i < KEYS.size(); ++i)
            EXPECT_LE(by_table(all.at(KEYS[i]), length), by_table(all.at(KEYS[i - 1]), length))
                << KEYS[i] << " at " << length;
}

class BuiltTableGLookup : public data_test::DataTest {
  protected:
    BuiltTableGLookup() { SET_MODULE_DIR(TARVANE_DATA_DIR); }
};

TEST_F(BuiltTableGLookup, TheEngineAnswersAtEveryKeyAndBetween) {
    const auto all = sections();
    for (double length = 0.05; length <= 50.0; length *= 1.4) {
        Real last = 1.0f;
        for (std::size_t i = 0; i < KEYS.size(); ++i) {
            const Real key = static_cast<Real>(KEYS[i]);
            Real at_key = 0.0f, between = 0.0f;
            TABLE_G_FACTOR_A(key, static_cast<Real>(length), at_key);
            const double expected = by_table(all.at(KEYS[i]), length);
            EXPECT_NEAR(static_cast<double>(at_key), expected, 1.0e-4 * expected) << key << length;
            if (i > 0) {
                TABLE_G_FACTOR_A(0.5f * (key + static_cast<Real>(KEYS[i - 1])),
                                 static_cast<Real>(length), between);
                EXPECT_LE(between, last) << key << " at " << length;
                EXPECT_GE(between, at_key) << key << " at " << length;
            }
            last = 1.0001f * at_key;
        }
    }
    Real longest = 0.0f;
    TABLE_G_FACTOR_A(150.0f, 50.0f, longest);
    EXPECT_NEAR(longest, 4.89e-5f, 1.0e-8f);
}

// A few published points at each value of Do/t that has them.
TEST(BuiltTableG, PublishedPoints) {
    struct Published {
        int key;
        double L_Do, A;
    };
    const Published points[] = {
        {150, 0.05, 0.0338},  {150, 0.2, 0.00431}, {150, 1, 0.000726},  {150, 4, 0.000168},
        {150, 10, 6.19e-05},  {150, 50, 4.89e-05}, {200, 0.05, 0.0196}, {200, 0.5, 0.000976},
        {200, 2, 0.000227},   {200, 12, 3.38e-05}, {200, 40, 2.75e-05}, {250, 0.08, 0.00617},
        {250, 0.8, 0.000422}, {250, 8, 3.77e-05},  {250, 20, 1.84e-05}, {300, 0.12, 0.00264},
        {300, 1, 0.000254},   {300, 14, 1.56e-05}, {300, 50, 1.22e-05}, {400, 0.06, 0.00417},
        {400, 0.16, 0.00118}, {400, 1, 0.000165},  {400, 6, 2.57e-05},  {400, 16, 8.82e-06}};
    const auto all = sections();
    for (const Published& p : points)
        EXPECT_NEAR(by_table(all.at(p.key), p.L_Do), p.A, 1.0e-9) << p.key << " at " << p.L_Do;
}

// The theory reproduces each published figure, so it may replace those that are not public.
TEST(BuiltTableG, TheTheoryBehindTheTable) {
    double worst_published = 0.0, worst_computed = 0.0, worst_between = 0.0;
    const auto all = sections();
    int published = 0;
    for (const auto& row : data_test::source_table("table_g.csv")) {
        const int key = std::stoi(row.at("do_t"));
        const double length = std::stod(row.at("l_do"));
        const double deviation = by_table(all.at(key), length) / by_theory(key, length) - 1.0;
        const bool given = row.at("status") == "published";
        EXPECT_NE(given, row.at("a").empty()) << key << " at " << length;
        if (given) ++published;
        double& worst = given ? worst_published : worst_computed;
        if (std::abs(deviation) > std::abs(worst)) worst = deviation;
    }
    EXPECT_EQ(published, 100);
    EXPECT_LT(std::abs(worst_published), 0.005);
    EXPECT_LT(std::abs(worst_computed), 0.0006); // four figures are written
    for (const int key : KEYS)
        for (double length = 0.06; length < 50.0; length *= 1.3) {
            const double deviation = by_table(all.at(key), length) / by_theory(key, length) - 1.0;
            if (std::abs(deviation) > std::abs(worst_between)) worst_between = deviation;
        }
    EXPECT_LT(std::abs(worst_between), 0.02);
    std::printf("Table G against the theory: published rows %+.2f %%, computed rows %+.3f %%, "
                "between the rows %+.2f %%\n",
                100.0 * worst_published, 100.0 * worst_computed, 100.0 * worst_between);
}

// The closed form is some percent above the table where a cylinder is long but not yet without end.
TEST(BuiltTableG, TheClosedForm) {
    for (const auto& [key, section] : sections()) {
        if (key < 10) continue; // the engine has other rules there
        double worst = 0.0, worst_length = 0.0;
        for (const auto& [length, A] : section) {
            if (length < 2.0 / std::sqrt(key)) continue; // towards the pole of the form
            const double deviation = by_formula(key, length) / A - 1.0;
            if (std::abs(deviation) <= std::abs(worst)) continue;
            worst = deviation;
            worst_length = length;
        }
        EXPECT_LT(std::abs(worst), 0.17) << key;
        std::printf("Do/t %4d: closed form %+6.2f %% at L/Do %g\n", key, 100.0 * worst,
                    worst_length);
        // Its level for long cylinders is that of the table.
        EXPECT_NEAR(section.back().second, 1.1 / (1.0 * key * key), 0.025 / (1.0 * key * key));
    }
}

} // namespace
} // namespace tarvane
