// What is kept of BOLTDATA.TXT over a reset: the tables are as in a fresh process, which reads the file.
#include "bolting/bolt_tables.h"

#include "../data_folder.h"
#include "../no_files.h"

#include <fcntl.h>
#include <sys/stat.h>

namespace tarvane {
namespace {

namespace fs = std::filesystem;

std::string text_of(const std::string& area) {
    return "[TEMA IMPERIAL]\n0 0 0 0 0 0 0 0 0\n0.5 " + area +
           " 1.25 0.8125 0.625 0.63 1.01 1.5 9.1\n1.0 0.551 2.25 1.375 1.0625 1.07 1.88 2.625 "
           "9.4\n[UNC]\n0 0 0 0 0 0 0 0 0\n0.5 " +
           area + "\n[END]\n";
}

class KeptBolts : public data_test::DataTest {
  protected:
    void use(const std::string& text) { write_file("system", NAME, text); }
    fs::path file() const { return folder / "system" / NAME; }

    // Root area of a half inch bolt, by the tables and by the lines of the file, as in a fresh process.
    static Real area() {
        RESET_BOLTING();
        Real a = 0.5f;
        const Real by_table = BOLT_TABLE_ROW(a, 1, TEMA_IMPERIAL, 0.0f, 4).rootArea;
        Real row[BOLT_COLUMNS] = {};
        Int found = 0;
        GETBOLTDATA(0.5f, UNC, row, found);
        EXPECT_EQ(row[1], by_table);
        EXPECT_EQ(found, by_table > 0.0f ? 1 : 0);
        return by_table;
    }
    static Real area_without_files() {
        const data_test::NoFiles none;
        return area();
    }
    // The file with this text is kept.
    void keep(const std::string& text) {
        use(text);
        data_test::wait_until_settled();
        EXPECT_EQ(area(), 0.126f);
        EXPECT_EQ(area_without_files(), 0.126f);
    }

    static constexpr const char* NAME = "BOLTDATA.TXT";
};

TEST_F(KeptBolts, AnOldFileIsReadOnceAndANewOneAfterEachReset) {
    use(text_of("0.126"));
    EXPECT_EQ(area(), 0.126f);
    EXPECT_EQ(area_without_files(), 0.0f);
    data_test::wait_until_settled();
    EXPECT_EQ(area_without_files(), 0.0f);
    EXPECT_EQ(area(), 0.126f);
    EXPECT_EQ(area_without_files(), 0.126f);
}

TEST_F(KeptBolts, AChangeShowsAfterTheReset) {
    const std::string before = text_of("0.126"), after = text_of("0.127");
    keep(before);
    use(after); // of the same size
    Real a = 0.5f;
    EXPECT_EQ(BOLT_TABLE_ROW(a, 1, TEMA_IMPERIAL, 0.0f, 4).rootArea, 0.126f); // no reset yet
    EXPECT_EQ(area(), 0.127f);

    // Another file takes its name, with the times of the former one.
    keep(before);
    struct stat status;
    ASSERT_EQ(stat(file().c_str(), &status), 0);
    write_file("system", "other", after);
    const struct timespec times[2] = {status.st_atim, status.st_mtim};
    ASSERT_EQ(utimensat(AT_FDCWD, (folder / "system" / "other").c_str(), times, 0), 0);
    fs::rename(folder / "system" / "other", file());
    EXPECT_EQ(area(), 0.127f);

    keep(before);
    fs::create_directories(folder / "elsewhere");
    write_file("elsewhere", NAME, after);
    SET_SYSTEM_DIR((folder / "elsewhere").string());
    EXPECT_EQ(area(), 0.127f);
    SET_SYSTEM_DIR((folder / "system").string());
    EXPECT_EQ(area(), 0.126f);
}

TEST_F(KeptBolts, AFileThatCanNoLongerBeReadLeavesEmptyTables) {
    const std::string text = text_of("0.126");
    keep(text);
    fs::resize_file(file(), text.size() - 6); // without its end
    EXPECT_EQ(area(), 0.0f);

    keep(text);
    fs::remove(file());
    EXPECT_EQ(area(), 0.0f);
    use(text);
    EXPECT_EQ(area(), 0.126f);

    keep(text);
    fs::permissions(file(), fs::perms::none);
    // A user who may read everything may read this, too.
    EXPECT_EQ(area_without_files(), 0.0f);
    fs::permissions(file(), fs::perms::owner_all);

    keep(text);
    fs::remove(file());
    fs::create_directory(file());
    EXPECT_EQ(area(), 0.0f);
}

// A table that is read once more because a caller asks for it is filled from the same lines.
TEST_F(KeptBolts, ForcedTablesAreThoseOfTheLines) {
    keep(text_of("0.126"));
    RESET_BOLTING();
    const data_test::NoFiles none;
    LOAD_BOLT_TABLES(1);
    Real a = 0.5f;
    EXPECT_EQ(BOLT_TABLE_ROW(a, 1, TEMA_IMPERIAL, 0.0f, 4).rootArea, 0.126f);
}

} // namespace
} // namespace tarvane
