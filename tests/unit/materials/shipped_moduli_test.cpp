// The modulus and expansion file that is shipped, read as text and through the lookup.
#include "materials/modulus.h"

#include "../data_folder.h"
#include "test_paths.h"

#include <map>

namespace tarvane {
namespace {

class ShippedModuli : public data_test::DataTest {
  protected:
    ShippedModuli() {
        SET_MODULE_DIR(TARVANE_DATA_DIR);
        SET_SYSTEM_DIR(TARVANE_DATA_DIR);
    }

    static Real modulus(Int reference, Real T) {
        Real E = 0.0f, alpha = 0.0f;
        READ_ELAST_ALPHA(reference, -1, 0.0f, T, alpha, E);
        return E;
    }
    static Real coefficient(Int reference, Real T) {
        Real E = 0.0f, alpha = 0.0f;
        READ_ELAST_ALPHA(-1, reference, T, 0.0f, alpha, E);
        return alpha;
    }

    struct Row {
        int section; // 1 moduli, 2 coefficients
        std::string identifier, description;
        std::vector<Real> axis, values;
    };
    static std::vector<Real> reals(const std::string& text) {
        std::istringstream in(text);
        std::vector<Real> all;
        for (std::string word; in >> word;)
            all.push_back(std::stof(word));
        return all;
    }
    // Every data row by section and reference number; the layout is checked on the way.
    static std::map<std::pair<int, int>, Row> rows() {
        std::ifstream file(std::string(TARVANE_DATA_DIR) + "/ElastAlp07.txt");
        EXPECT_TRUE(file.good());
        std::map<std::pair<int, int>, Row> all;
        std::vector<Real> axis;
        int section = 0;
        for (std::string line; std::getline(file, line);) {
            EXPECT_LE(line.size(), 425u);
            if (line.find_first_not_of(' ') == std::string::npos) continue;
            if (line.find(';') != std::string::npos) {
                EXPECT_EQ(line.find('['), std::string::npos) << "a marker in a comment: " << line;
                continue;
            }
            if (line == "[Emod]" || line == "[CoE]") {
                EXPECT_EQ(section, line == "[Emod]" ? 0 : 1);
                ++section;
                axis.clear();
                continue;
            }
            if (line.starts_with("[Temp]")) {
                axis = reals(line.substr(9));
                EXPECT_EQ(axis.size(), 36u);
                continue;
            }
            if (line.size() < 64) {
                ADD_FAILURE() << "a short row: " << line;
                continue;
            }
            const std::vector<Real> head = reals(line.substr(0, 19));
            EXPECT_EQ(head.size(), 2u) << line;
            const Row row{section, line.substr(19, 7), line.substr(27, 36), axis,
                          reals(line.substr(63))};
            EXPECT_EQ(row.axis.size(), 36u) << line;
            EXPECT_EQ(row.values.size(), 36u) << line;
            EXPECT_NE(row.identifier[0], ' ') << line;
            EXPECT_NE(row.description[0], ' ') << line;
            EXPECT_EQ(line[26], ' ') << line;
            const bool fresh =
                all.emplace(std::pair(section, static_cast<int>(head[0])), row).second;
            EXPECT_TRUE(fresh) << "reference given twice: " << line;
        }
        EXPECT_EQ(section, 2);
        return all;
    }
};

TEST_F(ShippedModuli, Layout) {
    const auto all = rows();
    EXPECT_GE(all.size(), 20u);
    for (const auto& [key, row] : all) {
        EXPECT_GT(key.second, 0);
        EXPECT_LE(key.second, 230);
        EXPECT_TRUE(row.identifier.starts_with(key.first == 2    ? "TE-1"
                                               : key.second > 20 ? "TM-4"
                                                                 : "TM-1"))
            << row.identifier;
        // Ascending temperatures, then zeros; values without a gap, then zeros.
        const auto end_of_axis = std::find(row.axis.begin(), row.axis.end(), 0.0f);
        EXPECT_TRUE(std::is_sorted(row.axis.begin(), end_of_axis));
        EXPECT_TRUE(std::all_of(end_of_axis, row.axis.end(), [](Real t) { return t == 0.0f; }));
        const auto end = std::find(row.values.begin(), row.values.end(), 0.0f);
        EXPECT_GE(end - row.values.begin(), 10) << row.description;
        EXPECT_LE(end - row.values.begin(), end_of_axis - row.axis.begin()) << row.description;
        EXPECT_TRUE(std::all_of(end, row.values.end(), [](Real v) { return v == 0.0f; }));
    }
}

TEST_F(ShippedModuli, ModulusFallsWithTemperature) {
    for (const auto& [key, row] : rows()) {
        if (row.section != 1) continue;
        for (std::size_t i = 1; i < 36 && row.values[i] > 0.0f; ++i)
            EXPECT_LT(row.values[i], row.values[i - 1]) << row.description << row.axis[i];
        EXPECT_GT(row.values[0], 25.0f);
        EXPECT_LT(row.values[0], 34.0f);
    }
}

TEST_F(ShippedModuli, CoefficientDoesNotFallWithTemperature) {
    for (const auto& [key, row] : rows()) {
        if (row.section != 2) continue;
        for (std::size_t i = 1; i < 36 && row.values[i] > 0.0f; ++i)
            EXPECT_GE(row.values[i], row.values[i - 1]) << row.description << row.axis[i];
    }
}

TEST_F(ShippedModuli, EveryRowIsFoundByTheLookup) {
    for (const auto& [key, row] : rows()) {
        for (std::size_t i = 0; i < 36 && row.values[i] > 0.0f; ++i) {
            const Real T = row.axis[i];
            if (row.section == 1) {
                EXPECT_NEAR(modulus(key.second, T), row.values[i], 1e-5f) << row.description << T;
                EXPECT_EQ(EMOD_STATUS, 0);
            } else {
                EXPECT_NEAR(coefficient(key.second, T), row.values[i], 1e-5f)
                    << row.description << T;
                EXPECT_EQ(COE_STATUS, 0);
            }
        }
    }
}

// The integral flange of the published example E4.16.1: carbon steel, 29.4e6 psi at 70 degrees F and
// 26.0e6 psi at 650.
TEST_F(ShippedModuli, PublishedFlangeExample) {
    EXPECT_EQ(ASMEMOD(70.0f, 1, ASME_VIII_2) * 1.0e6f, 29.4e6f);
    EXPECT_EQ(ASMEMOD(650.0f, 1, ASME_VIII_2) * 1.0e6f, 26.0e6f);
    EXPECT_TRUE(reported().empty());
}

// Table TM-1 in its metric edition, GPa at degrees Celsius, as published elsewhere.
TEST_F(ShippedModuli, TheMetricEditionAgrees) {
    const std::vector<Real> celsius = {-200, -125, -75, 25,  100, 150, 200, 250, 300,
                                       350,  400,  450, 500, 550, 600, 650, 700};
    const std::pair<Int, std::vector<Real>> groups[] = {
        {1, {216, 212, 209, 202, 198, 195, 192, 189, 185, 179, 171, 162, 151, 137}},
        {9, {209, 204, 201, 195, 189, 186, 183, 179, 176, 172, 169, 165, 160, 156, 151, 146, 140}}};
    for (const auto& [reference, GPa] : groups)
        for (std::size_t i = 0; i < GPa.size(); ++i) {
            const Real T = celsius[i] * 1.8f + 32.0f;
            EXPECT_NEAR(modulus(reference, T) * 6.894757f, GPa[i], 1.0f)
                << reference << " at " << celsius[i];
        }
}

TEST_F(ShippedModuli, AReferenceWithoutAValueFallsBackToCarbonSteel) {
    EXPECT_EQ(ASMEMOD(70.0f, 200, ASME_VIII_1), 29.4f);
    EXPECT_FALSE(reported().empty());
    EXPECT_EQ(ASMEMOD(1150.0f, 1, ASME_VIII_1), 0.0f); // above the last value of carbon steel
}

} // namespace
} // namespace tarvane
