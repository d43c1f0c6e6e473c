// What is kept of the material files: a lookup gives the same as one that reads the file.
#include "host/file_units.h"
#include "materials/material_record.h"

#include "../data_folder.h"
#include "../material_file.h"
#include "../no_files.h"

namespace tarvane {
namespace {

namespace fs = std::filesystem;
using data_test::NoFiles;
using material_test::Record;

class KeptMaterials : public data_test::DataTest {
  protected:
    // Materials A to F, of this yield strength in ksi and those above it.
    void use(Real yield) {
        std::vector<Record> records;
        for (const char* const name : {"SA-1 A", "SA-1 B", "SA-1 C", "SA-1 D", "SA-1 E", "SA-1 F"})
            records.push_back(Record(name, 1).put(168, yield++));
        write_file(
            "system", NAME,
            material_test::material_file(
                6, 0, {records[0], records[1], records[2], records[3], records[4], records[5]}));
    }
    fs::path file() const { return folder / "system" / NAME; }
    // The yield strength, -1.0 of a material that is not there.
    static Real yield(const char* name, Int reference = 1) {
        MATERIAL_RECORD record;
        record.yield = 99.0f;
        Int status = -1;
        READ_MATERIAL(1, name, reference, status, record);
        EXPECT_TRUE(status == 0 || record.yield == 0.0f); // cleared
        return status == 0 ? record.yield : -1.0f;
    }
    static Real yield_without_files(const char* name, Int reference = 1) {
        const NoFiles none;
        return yield(name, reference);
    }
    void keep() {
        use(30.0f);
        data_test::wait_until_settled();
        EXPECT_EQ(yield("SA-1 A"), 30.0f);
        EXPECT_EQ(yield_without_files("SA-1 A"), 30.0f);
    }

    static constexpr const char* NAME = "MATFILE1.BIN";
};

TEST_F(KeptMaterials, AMaterialOfAnOldFileIsReadOnceAndThatOfANewOneEachTime) {
    use(30.0f);
    EXPECT_EQ(yield("SA-1 A"), 30.0f);
    EXPECT_EQ(yield_without_files("SA-1 A"), -1.0f);
    keep();
    EXPECT_EQ(yield_without_files("sa1a"), 30.0f); // the same name
    // Name and number are kept together, and what was not found is kept too.
    EXPECT_EQ(yield("SA-1 A", 2), -1.0f);
    EXPECT_EQ(yield("SA-1 B"), 31.0f);
    EXPECT_EQ(yield_without_files("SA-1 A"), 30.0f);
    EXPECT_EQ(yield_without_files("SA-1 B"), 31.0f);
    EXPECT_EQ(yield_without_files("SA-1 A", 2), -1.0f);
    RESET_MATERIALS();
    EXPECT_EQ(yield_without_files("SA-1 B"), 31.0f);
}

TEST_F(KeptMaterials, TheMetricSwitchIsOfTheLookup) {
    keep();
    write_file("system", "MATFILE1M.BIN",
               material_test::material_file(1, 0, {Record("SA-1 A", 1).put(168, 300.0f)}));
    data_test::wait_until_settled();
    G_MATL_METRIC = 1;
    EXPECT_EQ(yield("SA-1 A"), 300.0f * 0.145038f);
    EXPECT_EQ(yield_without_files("SA-1 A"), 300.0f * 0.145038f);
    G_MATL_METRIC = 0;
    EXPECT_EQ(yield_without_files("SA-1 A"), 30.0f);
}

TEST_F(KeptMaterials, TheOldestOfFourGoesFirst) {
    keep();
    for (const char* const name : {"SA-1 B", "SA-1 C", "SA-1 D"})
        yield(name);
    EXPECT_EQ(yield_without_files("SA-1 A"), 30.0f);
    yield("SA-1 E");
    EXPECT_EQ(yield("SA-1 E"), 34.0f);
    EXPECT_EQ(yield_without_files("SA-1 B"), 31.0f);
    EXPECT_EQ(yield_without_files("SA-1 F"), -1.0f);
    EXPECT_EQ(yield("SA-1 A"), 30.0f);
}

TEST_F(KeptMaterials, AFileThatChangesIsReadAgain) {
    keep();
    use(40.0f); // of the same size
    EXPECT_EQ(yield("SA-1 A"), 40.0f);

    keep();
    fs::resize_file(file(), 414 + 100);
    EXPECT_EQ(yield("SA-1 A"), -1.0f);

    keep();
    fs::remove(file());
    EXPECT_EQ(yield("SA-1 A"), -1.0f);
    use(40.0f);
    EXPECT_EQ(yield("SA-1 A"), 40.0f);

    keep();
    use(40.0f);
    fs::rename(file(), folder / "library" / NAME);
    EXPECT_EQ(yield("SA-1 A"), 40.0f);
    remove_file("library", NAME);

    keep();
    fs::permissions(file(), fs::perms::none);
    // A user who may read everything may read this, too.
    EXPECT_EQ(yield_without_files("SA-1 A"), -1.0f);
}

TEST_F(KeptMaterials, ALookupNeedsAFreeUnit) {
    keep();
    const auto take = [](void*, const char*, Int) -> Int { return 0; };
    Int status = 0;
    for (Int unit = FIRST_UNIT; unit <= LAST_UNIT; ++unit)
        OPENHOSTUNIT(unit, take, nullptr, status);
    EXPECT_EQ(yield("SA-1 A"), -1.0f);
    for (Int unit = FIRST_UNIT; unit <= LAST_UNIT; ++unit)
        close_unit(unit);
    EXPECT_EQ(yield("SA-1 A"), 30.0f);
}

} // namespace
} // namespace tarvane
