#include "materials/stress_tables.h"

#include "../data_folder.h"
#include "../edge_numbers.h"
#include "../material_file.h"
#include "frame/switches.h"

namespace tarvane {
namespace {

using material_test::Record;

constexpr Real KSI = 0.145038f;

Real fahrenheit(Real C) { return C * 1.8f + 32.0f; }

// ---- allowable stresses ----------------------------------------------------------------------------

class AllowableAt : public data_test::DataTest {
  protected:
    AllowableAt() { // a row without equal steps
        for (Int i = 0; i < ALLOWABLES; ++i)
            record.allowable[i] = at(i + 1);
    }
    static Real at(Int place) { return 1000.0f - square(static_cast<Real>(place)); }
    static Real between(Int place, Real part) {
        return at(place) + part * (at(place + 1) - at(place));
    }
    Real allowable(Real T) const { return READ_ALLOWABLE_AT(record, T); }
    MATERIAL_RECORD record;
};

TEST_F(AllowableAt, EveryFiftyDegreesFromAHundred) {
    for (Int place = 1; place <= 32; ++place)
        EXPECT_FLOAT_EQ(allowable(50.0f + 50.0f * static_cast<Real>(place)), at(place)) << place;
    EXPECT_FLOAT_EQ(allowable(110.0f), between(1, 0.2f));
    EXPECT_FLOAT_EQ(allowable(1640.0f), between(31, 0.8f));
}

TEST_F(AllowableAt, TheFirstBelowTheTableNothingAboveIt) {
    for (const Real T : {-325.0f, 70.0f, 100.0f, 100.001f})
        EXPECT_EQ(allowable(T), at(1)) << T;
    EXPECT_LT(allowable(100.1f), at(1));
    for (const Real T : {std::nextafter(1650.0f, 2000.0f), 1700.0f, INFINITY, NOT_A_NUMBER})
        EXPECT_EQ(allowable(T), 0.0f) << T;
}

TEST_F(AllowableAt, AMetricFileHasItsOwnTemperatures) {
    G_MATL_METRIC = 1;
    for (const Real C : {-40.0f, 20.0f, 39.9f})
        EXPECT_EQ(allowable(fahrenheit(C)), at(1)) << C;
    EXPECT_NEAR(allowable(fahrenheit(52.5f)), between(1, 0.5f), 1.0e-3f);
    EXPECT_NEAR(allowable(fahrenheit(65.0f)), at(2), 1.0e-3f);
    EXPECT_NEAR(allowable(fahrenheit(86.0f)), between(2, 0.6f), 1.0e-3f);
    for (Int place = 3; place <= 31; ++place)
        EXPECT_NEAR(allowable(fahrenheit(100.0f + 25.0f * static_cast<Real>(place - 3))), at(place),
                    1.0e-2f)
            << place;
    EXPECT_NEAR(allowable(fahrenheit(824.0f)), between(31, 0.96f), 1.0e-2f);
    EXPECT_EQ(allowable(fahrenheit(826.0f)), 0.0f);
}

TEST_F(AllowableAt, TheJapaneseEditionsHaveTheirSecondTemperatureAt75) {
    G_MATL_METRIC = 1;
    for (const Int year : {15, 16}) {
        G_MATL_YEAR = year;
        EXPECT_NEAR(allowable(fahrenheit(57.5f)), between(1, 0.5f), 1.0e-3f);
        EXPECT_NEAR(allowable(fahrenheit(80.0f)), between(2, 0.2f), 1.0e-3f);
    }
    for (const Int year : {14, 17}) {
        G_MATL_YEAR = year;
        EXPECT_NEAR(allowable(fahrenheit(80.0f)), between(2, 15.0f / 35.0f), 1.0e-3f);
    }
    G_MATL_METRIC = 0; // an inch file has the temperatures of all inch files
    G_MATL_YEAR = 15;
    EXPECT_FLOAT_EQ(allowable(110.0f), between(1, 0.2f));
}

// ---- yield stresses ----------------------------------------------------------------------------------

class YieldStress : public data_test::DataTest {
  protected:
    // Yield 38, 37.5, 37 and so on.
    static Record material(std::string_view name, Real tensile, Real first = 38.0f) {
        Record record(name, 3);
        record.put(164, tensile);
        for (std::size_t i = 0; i < 32; ++i)
            record.put(188 + 4 * i, first - 0.5f * static_cast<Real>(i));
        return record;
    }
    void use(const std::string& name, std::initializer_list<Record> records,
             const std::string& place = "system") const {
        Record head("", 0);
        head.put(0, Int{1}).put(4, static_cast<Int>(records.size()) - 1);
        std::string file(head.view().substr(0, 364));
        for (const Record& record : records)
            file += record.view().substr(0, 364);
        write_file(place, name, file);
    }
    static Real yield(Real T, Real tensile = 70.0f, std::string_view name = "SA-516 70") {
        Real result = -1.0f;
        READ_YIELD_STRESS(name, tensile, T, result);
        return result;
    }
};

TEST_F(YieldStress, EveryFiftyDegreesFromAHundredToAThousand) {
    use("YIELDSTR.BIN", {material("SA-516 70", 70.0f)});
    for (const Real T : {-20.0f, 70.0f, 100.0f})
        EXPECT_EQ(yield(T), 38.0f) << T;
    EXPECT_FLOAT_EQ(yield(125.0f), 37.75f);
    EXPECT_FLOAT_EQ(yield(150.0f), 37.5f);
    EXPECT_FLOAT_EQ(yield(999.0f), 29.01f);
    EXPECT_FLOAT_EQ(yield(1000.0f), 29.0f);
    for (const Real T : {1000.1f, 1500.0f, INFINITY, NOT_A_NUMBER})
        EXPECT_EQ(yield(T), 0.0f) << T;
}

TEST_F(YieldStress, ByNormalizedNameAndTensileStrengthNotByReference) {
    use("YIELDSTR.BIN", {material("SA-240 316", 75.0f, 30.0f), material("SA-516 70", 70.0f),
                         material("SA-516 70", 80.0f, 45.0f)});
    EXPECT_EQ(yield(100.0f, 70.0f, "sa/516-70"), 38.0f);
    EXPECT_EQ(yield(100.0f, 80.0f), 45.0f);
    EXPECT_EQ(yield(100.0f, 70.0f, "SA-240 316"), 0.0f); // 75 is more than five percent off
    EXPECT_EQ(yield(100.0f, 71.5f, "SA-240 316"), 30.0f);
    EXPECT_EQ(yield(100.0f, 70.0f, "SA-36"), 0.0f);
    for (const char* name : {"", "    ", "-./"})
        EXPECT_EQ(yield(100.0f, 70.0f, name), 0.0f);
}

TEST_F(YieldStress, FivePercentOfTheStrengthGiven) {
    use("YIELDSTR.BIN", {material("SA-516 70", 100.0f)});
    EXPECT_EQ(yield(100.0f, 105.2f), 38.0f); // 5.2 is within 5.26
    EXPECT_EQ(yield(100.0f, 105.4f), 0.0f);
    EXPECT_EQ(yield(100.0f, 95.3f), 38.0f); // 4.7 is within 4.765
    EXPECT_EQ(yield(100.0f, 95.2f), 0.0f);
    EXPECT_EQ(yield(100.0f, -100.0f), 0.0f);
    EXPECT_EQ(yield(100.0f, NOT_A_NUMBER), 0.0f);
}

TEST_F(YieldStress, AMetricFileIsInMegapascalsAtItsOwnTemperatures) {
    G_MATL_METRIC = 1;
    use("YIELDSTRM.BIN", {material("SA-516 70", 485.0f, 260.0f)});
    EXPECT_EQ(yield(70.0f, 70.0f), 260.0f * KSI); // 100 F is below 40 C
    EXPECT_NEAR(yield(fahrenheit(52.5f)), 259.75f * KSI, 1.0e-4f);
    EXPECT_NEAR(yield(fahrenheit(65.0f)), 259.5f * KSI, 1.0e-4f);
    EXPECT_NEAR(yield(fahrenheit(112.5f)), 258.75f * KSI, 1.0e-4f);
    EXPECT_NEAR(yield(977.0f), 250.5f * KSI, 1.0e-3f); // 525 C, place 20
    EXPECT_EQ(yield(977.1f), 0.0f);
    EXPECT_EQ(yield(100.0f, 485.0f), 0.0f); // the strength is given in ksi
}

TEST_F(YieldStress, TheFileGoesByUnitsAndEdition) {
    use("YIELDSTR.BIN", {material("SA-516 70", 70.0f, 31.0f)});
    use("YIELDSTRM.BIN", {material("SA-516 70", 485.0f, 320.0f)});
    use("JPNYLDM.BIN", {material("SA-516 70", 485.0f, 330.0f)});
    const struct {
        Int metric, year;
        Real expected;
    } rows[] = {{0, 0, 31.0f},         {0, 15, 31.0f},        {2, 0, 31.0f},
                {1, 0, 320.0f * KSI},  {1, 14, 320.0f * KSI}, {1, 15, 330.0f * KSI},
                {1, 16, 330.0f * KSI}, {1, 17, 320.0f * KSI}};
    for (const auto& row : rows) {
        G_MATL_METRIC = row.metric;
        G_MATL_YEAR = row.year;
        EXPECT_EQ(yield(100.0f), row.expected) << row.metric << " " << row.year;
    }
    // Place 2 of the Japanese editions is 75 C.
    G_MATL_METRIC = 1, G_MATL_YEAR = 15;
    EXPECT_NEAR(yield(fahrenheit(57.5f)), 329.75f * KSI, 1.0e-4f);
}

TEST_F(YieldStress, AFileBesideTheLibraryWinsAndAMissingOneGivesNothing) {
    EXPECT_EQ(yield(100.0f), 0.0f);
    use("YIELDSTR.BIN", {material("SA-516 70", 70.0f)});
    use("YIELDSTR.BIN", {material("SA-516 70", 70.0f, 50.0f)}, "library");
    EXPECT_EQ(yield(100.0f), 50.0f);
}

// ---- EN materials ------------------------------------------------------------------------------------

class EnMaterial : public data_test::DataTest {
  protected:
    EnMaterial() : untouched(EN_RECORD_BYTES, '?'), record(untouched) {}
    static std::string material(Int key, char fill) {
        std::string bytes(EN_RECORD_BYTES, fill);
        std::memcpy(bytes.data(), &key, sizeof key);
        return bytes;
    }
    void use(Int first, Int second, const std::string& records,
             const std::string& place = "system") const {
        std::string head = material(first, ' ');
        std::memcpy(head.data() + 4, &second, sizeof second);
        write_file(place, "ENMATDATA.BIN", head + records);
    }
    Int read(Int key) {
        record = untouched;
        Int status = 7;
        READ_EN_MATERIAL(key, status, record.data());
        return status;
    }
    const std::string untouched;
    std::string record;
};

TEST_F(EnMaterial, TheWholeRecordOfAKey) {
    use(2, 1, material(11, 'a') + material(22, 'b') + material(33, 'c') + material(44, 'd'));
    EXPECT_EQ(read(11), 0);
    EXPECT_EQ(record, material(11, 'a'));
    EXPECT_EQ(read(33), 0);
    EXPECT_EQ(record, material(33, 'c'));
}

TEST_F(EnMaterial, AKeyThatIsNotThereIsNoFailureButABadKeyIs) {
    use(2, 0, material(11, 'a') + material(22, 'b') + material(33, 'c'));
    for (const Int key : {12, 33, INT32_MAX}) { // 33 is after the counts
        EXPECT_EQ(read(key), 0) << key;
        EXPECT_EQ(record, untouched);
    }
    for (const Int key : {0, -1, -11, INT32_MIN}) {
        EXPECT_EQ(read(key), 1) << key;
        EXPECT_EQ(record, untouched);
    }
}

TEST_F(EnMaterial, ASecondCountThatIsNegativeOrAbove200IsNone) {
    const std::string two = material(11, 'a') + material(22, 'b');
    for (const Int second : {201, 100000, -1, INT32_MIN}) {
        use(1, second, two);
        EXPECT_EQ(read(22), 0) << second;
        EXPECT_EQ(record, untouched) << second;
    }
    use(1, 200, two);
    EXPECT_EQ(read(22), 0);
    EXPECT_EQ(record, material(22, 'b'));
}

TEST_F(EnMaterial, CountsThatReachPastTheEndAreAReadError) {
    for (const Int first : {3, 1000, INT32_MAX}) {
        use(first, 0, material(11, 'a') + material(22, 'b'));
        EXPECT_EQ(read(22), 0) << "found in front of the end";
        EXPECT_EQ(read(33), 1);
        EXPECT_EQ(record, untouched);
    }
    use(2, 0, (material(11, 'a') + material(22, 'b')).substr(0, 2 * EN_RECORD_BYTES - 1));
    EXPECT_EQ(read(22), 1);
    EXPECT_EQ(record, untouched);
    for (const Int first : {0, -5, INT32_MIN}) {
        use(first, 0, material(11, 'a'));
        EXPECT_EQ(read(11), 0);
        EXPECT_EQ(record, untouched);
    }
}

TEST_F(EnMaterial, TheFileLiesInTheSystemFolderOnly) {
    use(1, 0, material(11, 'a'), "library");
    EXPECT_EQ(read(11), 1);
    EXPECT_EQ(record, untouched);
    write_file("system", "ENMATDATA.BIN", "");
    EXPECT_EQ(read(11), 1);
}

} // namespace
} // namespace tarvane
