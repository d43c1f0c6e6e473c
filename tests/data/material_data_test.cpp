// The shipped material files, read through the public header: complete, plausible, found by every
// spelling, the same in both systems of units, and at the figures that public pages state.
#include "shipped_files.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstring>
#include <fstream>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace {

using Record = TARVANE_MATERIAL_RECORD;

constexpr std::int32_t INCH = 0, METRIC = 1;

// The selections of the six files.
struct Selection {
    std::int32_t code, class_2, metric;
    const char* file;
};
constexpr Selection FILES[] = {{1, 1, INCH, "MATFILE1.BIN"},    {1, 1, METRIC, "MATFILE1M.BIN"},
                               {2, 0, INCH, "MatFileD2C1.BIN"}, {2, 0, METRIC, "MatFileD2C1M.BIN"},
                               {2, 1, INCH, "MATFILE2.BIN"},    {2, 1, METRIC, "MATFILE2M.BIN"}};
constexpr Selection DIVISION_1 = FILES[0], CLASS_1 = FILES[2], CLASS_2 = FILES[4];

template <std::size_t N>
std::string text(const char (&field)[N]) {
    std::string value(field, N);
    value.erase(value.find_last_not_of(' ') + 1);
    return value;
}

class ShippedMaterials : public ShippedFiles {
  protected:
    static void select(const Selection& selection) {
        const std::int32_t zero = 0;
        SET_MATERIAL_SELECTION(&selection.metric, &zero, &selection.class_2, &zero);
    }
    static std::vector<Record> all(const Selection& selection) {
        select(selection);
        std::int32_t count = 0;
        MATERIAL_COUNT(&selection.code, &count);
        std::vector<Record> records(static_cast<std::size_t>(count));
        for (std::int32_t i = 1; i <= count; ++i) {
            std::int32_t status = 1;
            MATERIAL_BY_NUMBER(&selection.code, &i, &status,
                               &records[static_cast<std::size_t>(i - 1)]);
            EXPECT_EQ(status, 0);
        }
        return records;
    }
    static bool find(const Selection& selection, std::string_view name, std::int32_t reference,
                     Record& record) {
        select(selection);
        std::int32_t status = 1;
        READ_MATERIAL(&selection.code, name.data(), static_cast<std::int32_t>(name.size()),
                      &reference, &status, &record);
        return status == 0;
    }
};

bool is_bolting(const Record& r) { return text(r.product_form) == "Bolting"; }
bool is_nonferrous(const Record& r) {
    return text(r.uns_number)[0] == 'N' || text(r.uns_number)[0] == 'A';
}

// By the record's own steps of 50 degrees; not above the last figure.
float allowable(const Record& r, float T) {
    const float steps = std::max(T - 100.0f, 0.0f) / 50.0f;
    const std::size_t i = static_cast<std::size_t>(steps);
    const float part = steps - static_cast<float>(i);
    return part == 0.0f ? r.allowable[i]
                        : r.allowable[i] + part * (r.allowable[i + 1] - r.allowable[i]);
}

TEST_F(ShippedMaterials, AreManyAndTheCommonOnesAreThere) {
    std::set<std::string> names;
    for (const Record& r : all(DIVISION_1))
        names.insert(text(r.name));
    EXPECT_GE(names.size(), 60u);
    for (const char* name :
         {"SA-516 60",    "SA-516 65",    "SA-516 70",     "SA-515 60",     "SA-515 65",
          "SA-515 70",    "SA-285 C",     "SA-36",         "SA-105",        "SA-106 B",
          "SA-106 C",     "SA-53 B",      "SA-350 LF2",    "SA-182 F304",   "SA-182 F304L",
          "SA-182 F316",  "SA-182 F316L", "SA-182 F321",   "SA-182 F11 2",  "SA-182 F22 3",
          "SA-182 F51",   "SA-240 304",   "SA-240 304L",   "SA-240 316",    "SA-240 316L",
          "SA-240 321",   "SA-240 347",   "SA-387 11 1",   "SA-387 22 2",   "SA-193 B7",
          "SA-193 B7M",   "SA-193 B16",   "SA-193 B8",     "SA-193 B8M",    "SA-320 L7",
          "SA-203 E",     "SA-333 6",     "SB-209 5083 O", "SB-162 N02200", "SB-127 N04400",
          "SB-168 N06600"})
        EXPECT_TRUE(names.contains(name)) << name;
}

TEST_F(ShippedMaterials, AreComplete) {
    for (const Selection& file : FILES) {
        std::set<std::int32_t> references;
        for (const Record& r : all(file)) {
            SCOPED_TRACE(std::string(file.file) + " " + text(r.name) + " " +
                         std::to_string(r.reference));
            EXPECT_TRUE(references.insert(r.reference).second);
            EXPECT_EQ(text(r.first_name), text(r.name));
            EXPECT_NE(text(r.product_form), "");
            EXPECT_TRUE(text(r.uns_number).size() == 6u || text(r.uns_number) == "-");
            EXPECT_NE(text(r.note), "");
            EXPECT_EQ(text(r.text_92) + text(r.text_316) + text(r.text_404), "");
            EXPECT_GT(r.yield, 0.0f);
            EXPECT_GT(r.tensile, r.yield);
            EXPECT_LE(r.curve, 6);
            EXPECT_GE(r.curve, 0);
            EXPECT_GE(r.curve_normalized, r.curve); // to a better curve, if to another
            EXPECT_GE(r.ucs66g_reduction, 0);
            // Only a material that its specification tests has a temperature and the credit for it.
            EXPECT_EQ(r.impact_temperature<1, r.ucs66g_reduction> 0);
            EXPECT_LE(r.impact_temperature, 1);
            if (is_bolting(r)) continue;
            EXPECT_NE(text(r.p_number), "");
            EXPECT_TRUE(r.min_dia == -1.0f || r.max_dia == -1.0f || r.min_dia < r.max_dia);
            EXPECT_EQ(r.impact_temperature < 1, r.curve == 5);
            if (is_nonferrous(r)) continue;
            EXPECT_GE(r.group, 1);
            // No public chart is known for sure for SA-203 F and SA-537.
            const bool unknown = r.reference == 24 || r.reference == 25 ||
                                 (r.reference >= 180 && r.reference <= 187);
            EXPECT_EQ(text(r.chart).empty(), unknown);
        }
    }
}

TEST_F(ShippedMaterials, HaveStressesThatDoNotRiseWithTemperature) {
    for (const Selection& file : FILES)
        for (const Record& r : all(file)) {
            SCOPED_TRACE(std::string(file.file) + " " + text(r.name) + " " +
                         std::to_string(r.reference));
            EXPECT_GT(r.allowable[0], 0.0f);
            for (std::size_t i = 1; i < 32; ++i) {
                EXPECT_GE(r.allowable[i], 0.0f);
                EXPECT_LE(r.allowable[i], r.allowable[i - 1]) << 100 + 50 * i;
            }
        }
}

// The margins of II-D Appendices 1, 2 and 10, half a unit of the last digit beside them.
TEST_F(ShippedMaterials, KeepTheMarginsOnTensileAndYieldStrengthAtAmbient) {
    const struct {
        Selection file;
        float on_tensile;
    } divisions[] = {{DIVISION_1, 3.5f}, {CLASS_1, 3.0f}, {CLASS_2, 2.4f}};
    constexpr float LAST_DIGIT = 0.051f;
    for (const auto& division : divisions)
        for (const Record& r : all(division.file)) {
            SCOPED_TRACE(std::string(division.file.file) + " " + text(r.name) + " " +
                         std::to_string(r.reference));
            // Quenched and tempered bolting a fifth and a quarter; annealed a quarter and two thirds.
            const bool strong_bolting = is_bolting(r) && r.tensile >= 100.0f;
            const float tensile = r.tensile / (strong_bolting  ? 5.0f
                                               : is_bolting(r) ? 4.0f
                                                               : division.on_tensile);
            const float yield = r.yield * (strong_bolting ? 0.25f : 2.0f / 3.0f);
            const float limit = std::min(tensile, yield);
            EXPECT_LE(r.allowable[0], limit + LAST_DIGIT);
            EXPECT_GE(r.allowable[0], limit - LAST_DIGIT);
        }
}

TEST_F(ShippedMaterials, GiveMoreInDivision2AndMostInItsClass2) {
    const std::vector<Record> class_1 = all(CLASS_1), class_2 = all(CLASS_2);
    ASSERT_EQ(class_1.size(), class_2.size());
    for (std::size_t k = 0; k < class_1.size(); ++k) {
        SCOPED_TRACE(text(class_1[k].name));
        Record division_1;
        ASSERT_TRUE(find(DIVISION_1, text(class_1[k].name), class_1[k].reference, division_1));
        EXPECT_EQ(class_1[k].reference, class_2[k].reference);
        EXPECT_TRUE(text(class_1[k].note).starts_with(text(division_1.note)));
        for (std::size_t i = 0; i < 32; ++i) {
            if (class_1[k].allowable[i] == 0.0f) continue;
            // The public figure of Division 2 for LF2 at 700 F is below that of Division 1.
            const bool exception = class_1[k].reference == 65 && i == 12;
            if (!exception) {
                EXPECT_LE(division_1.allowable[i], class_1[k].allowable[i] + 0.051f)
                    << 100 + 50 * i;
            }
            EXPECT_LE(class_1[k].allowable[i], class_2[k].allowable[i]) << 100 + 50 * i;
        }
    }
}

// Above ambient temperature an allowable stress is at most two thirds of the yield strength there, of the
// high stress rows of austenitic steel 90 %; last digits beside them.
TEST_F(ShippedMaterials, KeepTheMarginOnYieldStrengthAtTemperature) {
    constexpr float LAST_DIGIT = 0.051f;
    int compared = 0;
    for (const Selection& file : {DIVISION_1, CLASS_1, CLASS_2})
        for (const Record& r : all(file)) {
            if (is_bolting(r)) continue;
            const std::string name = text(r.name);
            const bool high = text(r.note).find("high stress") != std::string::npos;
            const float part = high ? 0.9f : 2.0f / 3.0f;
            for (std::size_t i = 1; i < 15 && r.allowable[i] > 0.0f; ++i) {
                const float T = 100.0f + 50.0f * static_cast<float>(i);
                float yield = 0.0f;
                READ_YIELD_STRESS(name.data(), static_cast<std::int32_t>(name.size()), &r.tensile,
                                  &T, &yield);
                // Division 1 gives no figure of its own at 150 F, the yield strength does.
                if (yield == 0.0f || i == 1 || T == 250.0f) continue;
                EXPECT_LE(r.allowable[i], part * (yield + LAST_DIGIT) + LAST_DIGIT)
                    << file.file << " " << name << " " << r.reference << " at " << T;
                ++compared;
            }
        }
    EXPECT_GT(compared, 800);
}

// Where creep governs, Division 2 has no other margin than Division 1.
TEST_F(ShippedMaterials, AllowNoMoreInDivision2WhereCreepGoverns) {
    constexpr std::size_t FROM = 12; // 700 F
    for (const Selection& file : {CLASS_1, CLASS_2})
        for (const Record& r : all(file)) {
            Record division_1;
            ASSERT_TRUE(find(DIVISION_1, text(r.name), r.reference, division_1));
            for (std::size_t i = FROM; i < 32; ++i)
                EXPECT_LE(r.allowable[i], division_1.allowable[i] + 0.001f)
                    << file.file << " " << text(r.name) << " at " << 100 + 50 * i;
        }
}

// Plate, pipe, tube and forgings of 1Cr-1/2Mo lose tensile strength alike.
TEST_F(ShippedMaterials, FallWithTheTensileStrengthOf1CrHalfMo) {
    constexpr float LEFT_AT_200 = 0.98f, LEFT_AT_300 = 0.9625f;
    int count = 0;
    for (const Record& r : all(DIVISION_1)) {
        if (text(r.note) != "1Cr-1/2Mo") continue;
        EXPECT_NEAR(r.allowable[2] * 3.5f / r.tensile, LEFT_AT_200, 0.004f) << text(r.name);
        EXPECT_NEAR(r.allowable[4] * 3.5f / r.tensile, LEFT_AT_300, 0.004f) << text(r.name);
        ++count;
    }
    EXPECT_EQ(count, 5);
}

TEST_F(ShippedMaterials, AreFoundBySeveralSpellings) {
    for (const Selection& file : FILES)
        for (const Record& r : all(file)) {
            const std::string name = text(r.name);
            std::string bare, lower, dashed;
            for (const char c : name) {
                if (c != ' ' && c != '-' && c != '/' && c != '.') bare += c;
                lower += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
                dashed += c == ' ' ? '-' : c == '-' ? '/' : c;
            }
            for (const std::string& spelling : {name, bare, lower, dashed, name + "      "}) {
                Record found;
                EXPECT_TRUE(find(file, spelling, r.reference, found)) << file.file << spelling;
                EXPECT_EQ(std::memcmp(&found, &r, TARVANE_MATERIAL_BYTES), 0) << spelling;
                EXPECT_FALSE(find(file, spelling, r.reference + 1000, found)) << spelling;
            }
        }
}

TEST_F(ShippedMaterials, AreTheSameInMetricFiles) {
    constexpr float ROUNDING = 1.0e-5f;
    for (std::size_t f = 0; f < std::size(FILES); f += 2) {
        const std::vector<Record> inch = all(FILES[f]), metric = all(FILES[f + 1]);
        ASSERT_EQ(inch.size(), metric.size());
        for (std::size_t k = 0; k < inch.size(); ++k) {
            const Record &a = inch[k], &b = metric[k];
            SCOPED_TRACE(std::string(FILES[f].file) + " " + text(a.name));
            EXPECT_EQ(text(a.name), text(b.name));
            EXPECT_EQ(a.reference, b.reference);
            EXPECT_EQ(text(a.note), text(b.note));
            EXPECT_NEAR(b.tensile, a.tensile, ROUNDING * a.tensile);
            EXPECT_NEAR(b.yield, a.yield, ROUNDING * a.yield);
            EXPECT_NEAR(b.thickness_limit, a.thickness_limit, ROUNDING * 10.0f);
            EXPECT_NEAR(b.min_dia, a.min_dia, ROUNDING * 10.0f);
            EXPECT_NEAR(b.max_dia, a.max_dia, ROUNDING * 10.0f);
            EXPECT_FLOAT_EQ(b.allowable[0], a.allowable[0]);
            for (std::size_t i = 1; i < 32; ++i) {
                const float C = i == 1 ? 65.0f : 50.0f + 25.0f * static_cast<float>(i);
                const float F = C * 1.8f + 32.0f;
                // Above the last figure of the inch file there is none.
                const std::size_t above = static_cast<std::size_t>(std::ceil((F - 100.0f) / 50.0f));
                const float expected =
                    above < 32 && a.allowable[above] > 0.0f ? allowable(a, F) : 0.0f;
                EXPECT_NEAR(b.allowable[i], expected, ROUNDING * a.allowable[0]) << C;
            }
        }
    }
}

// Allowable stresses in ksi that public pages state: fourteen materials of one vessel at 558.8 F, where
// a figure interpolated from the table's own is stated to the last digit (scribd 374480147); inputs of
// published ASME examples; worked flange sheets.
TEST_F(ShippedMaterials, GiveThePublishedSpotValues) {
    const struct {
        const char* name;
        std::int32_t reference;
        float T, S;
    } published[] = {
        {"SA-516 70", 1, 100.0f, 20.0f},        {"SA-516 70", 1, 300.0f, 20.0f},
        {"SA-516 70", 1, 558.8f, 19.647f},      {"SA-516 70", 1, 650.0f, 18.8f},
        {"SA-105", 61, 100.0f, 20.0f},          {"SA-105", 61, 558.8f, 18.894f},
        {"SA-105", 61, 650.0f, 17.8f},          {"SA-387 11 1", 18, 650.0f, 17.1f},
        {"SA-193 B7", 401, 100.0f, 25.0f},      {"SA-193 B7", 401, 650.0f, 25.0f},
        {"SA-515 60", 7, 100.0f, 17.1f},        {"SA-36", 10, 100.0f, 16.6f},
        {"SA-36", 10, 558.8f, 16.6f},           {"SA-106 B", 32, 100.0f, 17.1f},
        {"SA-106 B", 32, 558.8f, 17.1f},        {"SA-234 WPB", 72, 100.0f, 17.1f},
        {"SA-234 WPB", 72, 558.8f, 17.1f},      {"SA-240 316L", 104, 100.0f, 16.7f},
        {"SA-240 316L", 104, 558.8f, 14.330f},  {"SA-240 316", 103, 100.0f, 20.0f},
        {"SA-240 316", 103, 558.8f, 17.412f},   {"SA-240 304L", 102, 100.0f, 16.7f},
        {"SA-240 304L", 102, 558.8f, 14.288f},  {"SA-312 TP304", 121, 100.0f, 20.0f},
        {"SA-312 TP304", 121, 558.8f, 16.971f}, {"SA-240 304", 201, 100.0f, 20.0f},
        {"SA-240 304", 201, 558.8f, 12.547f},
    };
    for (const auto& spot : published) {
        Record r;
        ASSERT_TRUE(find(DIVISION_1, spot.name, spot.reference, r)) << spot.name;
        EXPECT_NEAR(allowable(r, spot.T), spot.S, 0.0006f) << spot.name << " at " << spot.T;
    }
    for (const Selection& file : {CLASS_1, CLASS_2}) {
        Record r;
        ASSERT_TRUE(find(file, "SA-516 70", 1, r));
        EXPECT_FLOAT_EQ(allowable(r, 300.0f), 22.4f);
    }
}

// A modulus that the table has, at the material's own reference number.
TEST_F(ShippedMaterials, NameReferencesThatTheModulusTableHas) {
    const float ambient = 70.0f;
    const std::int32_t code = 1;
    for (const Record& r : all(DIVISION_1)) {
        if (r.modulus_reference == 0) continue;
        const float E = ASMEMOD(&ambient, &r.modulus_reference, &code);
        EXPECT_GT(E, 8.0f) << text(r.name);
        EXPECT_LT(E, 35.0f) << text(r.name);
        EXPECT_EQ(r.modulus_reference == 1, text(r.p_number) == "1") << text(r.name);
    }
}

TEST_F(ShippedMaterials, MarkTheirApproximateRows) {
    // Public copies confirm the steels of Division 1 but those rows of large forgings and thick pipes; they
    // have neither bolts nor nonferrous materials, and nothing of Division 2.
    for (const Selection& file : FILES)
        for (const Record& r : all(file)) {
            const bool large = r.reference >= 161 && r.reference <= 165;
            EXPECT_EQ(text(r.note).ends_with("; approximate"),
                      file.code == 2 || r.reference > 300 || large)
                << text(r.name) << ' ' << r.reference << ' ' << file.file;
        }
}

TEST_F(ShippedMaterials, KeepTheSizesOfBoltingApart) {
    const struct {
        std::int32_t reference;
        float diameter;
        std::int32_t ok;
    } cases[] = {{401, 0.5f, 1}, {401, 2.5f, 1},  {401, 2.51f, 0}, {402, 2.5f, 0},
                 {402, 4.0f, 1}, {403, 4.01f, 1}, {403, 7.01f, 0}, {408, 1.0f, 0}};
    for (const auto& check : cases) {
        const std::string_view name = check.reference == 408 ? "SA-193 B8" : "SA-193 B7";
        const std::int32_t code = 1, quiet = 0, keep = -1;
        float lowest = 0.0f, highest = 0.0f;
        std::int32_t ok = 0;
        select(DIVISION_1);
        CHECK_BOLT_MATL_VS_DIAMETER(name.data(), static_cast<std::int32_t>(name.size()),
                                    &check.reference, &lowest, &highest, &ok, &check.diameter,
                                    &quiet, &code, &keep, &keep, &keep);
        EXPECT_EQ(ok, check.reference == 408 ? -1 : check.ok) << check.reference << check.diameter;
    }
}

// The fields at their places in the file, counted in bytes.
TEST_F(ShippedMaterials, LieInRecordsOf414Bytes) {
    std::ifstream file(std::string(TARVANE_DATA_DIR) + "/MATFILE1.BIN", std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    const auto whole = [&](std::size_t at) {
        std::int32_t value;
        std::memcpy(&value, bytes.data() + at, sizeof value);
        return value;
    };
    const auto real = [&](std::size_t at) {
        float value;
        std::memcpy(&value, bytes.data() + at, sizeof value);
        return value;
    };
    ASSERT_EQ(bytes.size() % 414, 0u);
    EXPECT_EQ(whole(0) + whole(4), static_cast<std::int32_t>(bytes.size() / 414) - 1);
    constexpr std::size_t FIRST = 414; // SA-516 70
    EXPECT_EQ(bytes.substr(FIRST, 32), "SA-516 70       SA-516 70       ");
    EXPECT_EQ(whole(FIRST + 32), 1);
    EXPECT_EQ(bytes.substr(FIRST + 36, 5), "Plate");
    EXPECT_EQ(bytes.substr(FIRST + 68, 6), "K02700");
    EXPECT_EQ(bytes.substr(FIRST + 92, 8), "        ");
    EXPECT_EQ(bytes.substr(FIRST + 100, 12), "Carbon steel");
    EXPECT_EQ(real(FIRST + 140), 8.0f);
    EXPECT_EQ(bytes.substr(FIRST + 144, 8), "1       ");
    EXPECT_EQ(whole(FIRST + 152), 2);
    EXPECT_EQ(whole(FIRST + 156), 2);
    EXPECT_EQ(whole(FIRST + 160), 4);
    EXPECT_EQ(real(FIRST + 164), 70.0f);
    EXPECT_EQ(real(FIRST + 168), 38.0f);
    EXPECT_EQ(bytes.substr(FIRST + 172, 8), "CS-2    ");
    EXPECT_EQ(whole(FIRST + 180), 1);
    EXPECT_EQ(whole(FIRST + 184), 1);
    EXPECT_EQ(real(FIRST + 188), 20.0f);
    EXPECT_EQ(real(FIRST + 188 + 4 * 14), 12.0f); // 800 F
    EXPECT_EQ(bytes.substr(FIRST + 316, 40), std::string(40, ' '));
    EXPECT_EQ(real(FIRST + 364), -1.0f);
    EXPECT_EQ(real(FIRST + 368), -1.0f);
    EXPECT_EQ(whole(FIRST + 376), 1);
    EXPECT_EQ(whole(FIRST + 384), 0);
    EXPECT_EQ(bytes.substr(FIRST + 404, 10), std::string(10, ' '));
}

} // namespace
