#include "scratch.h"

#include <csignal>
#include <vector>

#include <sys/resource.h>
#include <sys/stat.h>

namespace tarvane::host_test {
namespace {

class FileTest : public HostTest {};

TEST_F(FileTest, AFileThatIsNotThereGivesNoHandle) {
    EXPECT_EQ(open_for_reading(scratch.file("absent.txt")), -1);
    EXPECT_EQ(open_for_reading(""), -1);
    EXPECT_FALSE(file_exists(scratch.file("absent.txt")));
    EXPECT_FALSE(file_exists(""));
}

TEST_F(FileTest, AFolderIsNoFile) {
    EXPECT_EQ(open_for_reading(scratch.path()), -1);
    EXPECT_EQ(open_for_writing(scratch.path()), -1);
    EXPECT_FALSE(file_exists(scratch.path()));
}

// The opening of a pipe would wait for a writer; /dev/zero never ends.
TEST_F(FileTest, APipeOrADeviceIsNoFile) {
    const std::string pipe = scratch.file("pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    for (const std::string& path : {pipe, std::string("/dev/zero"), std::string("/dev/null")}) {
        EXPECT_EQ(open_for_reading(path), -1) << path;
        EXPECT_FALSE(file_exists(path)) << path;
    }
}

// An offset must reach the last byte.
TEST_F(FileTest, AFileOfTwoGigabytesIsNoDataFile) {
    const std::string path = scratch.write("large.bin", "x");
    std::filesystem::resize_file(path, 2147483647u);
    const Int handle = open_for_reading(path);
    EXPECT_GE(handle, 0);
    close_handle(handle);
    EXPECT_TRUE(file_exists(path));
    std::filesystem::resize_file(path, 2147483648u);
    EXPECT_EQ(open_for_reading(path), -1);
    EXPECT_FALSE(file_exists(path));
}

TEST_F(FileTest, APathThatIsTooLongIsNotCutToAnother) {
    const std::string path = scratch.write("short", "content");
    EXPECT_EQ(open_for_reading(path + std::string(5000, '/')), -1);
    EXPECT_FALSE(file_exists(path + std::string(5000, '/')));
}

TEST_F(FileTest, WritesReadsAndSeeks) {
    const std::string path = scratch.file("out.bin");
    Int handle = open_for_writing(path);
    ASSERT_GE(handle, 0);
    EXPECT_TRUE(write_bytes(handle, "0123456789", 10));
    EXPECT_TRUE(write_bytes(handle, "unused", 0));
    close_handle(handle);
    EXPECT_EQ(scratch.read("out.bin"), "0123456789");
    EXPECT_TRUE(file_exists(path));

    handle = open_for_reading(path);
    ASSERT_GE(handle, 0);
    char bytes[20];
    EXPECT_EQ(read_bytes(handle, bytes, 20), 10);
    EXPECT_EQ(read_bytes(handle, bytes, 20), 0) << "end of the file";
    EXPECT_TRUE(seek_to(handle, 7));
    EXPECT_EQ(read_bytes(handle, bytes, 20), 3);
    EXPECT_EQ(std::string_view(bytes, 3), "789");
    EXPECT_EQ(read_bytes(handle, bytes, -1), -1);
    EXPECT_FALSE(write_bytes(handle, "x", 1)) << "opened for reading";
    close_handle(handle);
}

TEST_F(FileTest, OpeningForWritingEmptiesTheFile) {
    const std::string path = scratch.write("out.txt", "a long text of an earlier run");
    close_handle(open_for_writing(path));
    EXPECT_EQ(scratch.read("out.txt"), "");
}

TEST_F(FileTest, ASharedFileIsReadWhileItIsOpenForWriting) {
    const std::string path = scratch.file("shared.txt");
    const Int writer = open_for_writing(path);
    write_bytes(writer, "shared", 6);
    const Int reader = open_for_reading(path);
    char bytes[6];
    EXPECT_EQ(read_bytes(reader, bytes, 6), 6);
    EXPECT_EQ(std::string_view(bytes, 6), "shared");
    close_handle(reader);
    close_handle(writer);
}

TEST_F(FileTest, DeleteAndCloseRemovesTheFile) {
    const std::string path = scratch.write("gone.txt", "x");
    scratch.write("stays.txt", "x");
    const Int other = open_for_reading(scratch.file("stays.txt"));
    delete_and_close(open_for_writing(path));
    EXPECT_FALSE(file_exists(path));
    EXPECT_TRUE(file_exists(scratch.file("stays.txt")));
    close_handle(other);
}

TEST_F(FileTest, DeleteAndCloseFindsTheFileByItsHandle) {
    const std::string filler = scratch.write("filler.txt", "x");
    std::vector<Int> handles;
    do
        handles.push_back(open_for_reading(filler));
    while (handles.back() >= 0 && handles.back() < 130);
    for (const Int place : {9, 58, 101, 127}) { // handles of two and three digits
        const std::string path = scratch.write("gone.txt", "x");
        for (Int& handle : handles)
            if (handle == place) {
                close_handle(handle);
                handle = open_for_writing(path);
                ASSERT_EQ(handle, place);
                delete_and_close(handle);
                EXPECT_FALSE(file_exists(path)) << place;
                handle = open_for_reading(filler);
                ASSERT_EQ(handle, place) << "it was closed";
            }
    }
    EXPECT_TRUE(file_exists(filler));
    for (const Int handle : handles)
        close_handle(handle);
}

// ---- units -------------------------------------------------------------------------------------

TEST_F(FileTest, TheFirstFreeUnitIsTen) {
    Int unit = 0;
    GETNEXTUNIT(unit);
    EXPECT_EQ(unit, 10);
    GETNEXTUNIT(unit);
    EXPECT_EQ(unit, 10) << "a unit is not reserved";
}

TEST_F(FileTest, UnitsBelowTenAreTheHosts) {
    const std::string path = scratch.write("host.txt", "");
    ASSERT_TRUE(open_unit_for_reading(9, path));
    Int unit = 0;
    GETNEXTUNIT(unit);
    EXPECT_EQ(unit, 10);
}

TEST_F(FileTest, AnOpenUnitIsPassedOverAndAClosedOneComesBack) {
    const std::string path = scratch.write("a.txt", "");
    Int status = -1;
    OPENUNIT(10, scratch.file("report.txt"), status);
    EXPECT_EQ(status, 0);
    ASSERT_TRUE(open_unit_for_reading(11, path));
    ASSERT_TRUE(open_unit_for_reading(13, path));
    Int unit = 0;
    GETNEXTUNIT(unit);
    EXPECT_EQ(unit, 12);
    close_unit(10);
    GETNEXTUNIT(unit);
    EXPECT_EQ(unit, 10);
}

TEST_F(FileTest, AllUnitsInUseGiveOneThousandAndOne) {
    struct rlimit files;
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &files), 0);
    files.rlim_cur = files.rlim_max;
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &files), 0);

    const std::string path = scratch.write("a.txt", "");
    Int opened = 0;
    for (Int unit = 10; unit <= 1000; ++unit)
        opened += open_unit_for_reading(unit, path) ? 1 : 0;
    ASSERT_EQ(opened, 991) << "the system allows fewer open files";
    Int unit = 0;
    GETNEXTUNIT(unit);
    EXPECT_EQ(unit, 1001);
    EXPECT_FALSE(open_unit_for_reading(unit, path));
    close_unit(1000);
    GETNEXTUNIT(unit);
    EXPECT_EQ(unit, 1000);
}

TEST_F(FileTest, UnitsOutsideTheirRangeDoNotOpen) {
    const std::string path = scratch.write("a.txt", "");
    for (const Int unit : {-1, 0, 1001, INT32_MAX, INT32_MIN}) {
        EXPECT_FALSE(open_unit_for_reading(unit, path)) << unit;
        EXPECT_EQ(unit_handle(unit), -1) << unit;
        Int status = 0;
        OPENUNIT(unit, scratch.file("b.txt"), status);
        EXPECT_EQ(status, 1) << unit;
        close_unit(unit);
    }
    EXPECT_FALSE(file_exists(scratch.file("b.txt")));
    EXPECT_TRUE(open_unit_for_reading(1, path));
    EXPECT_TRUE(open_unit_for_reading(1000, path));
}

TEST_F(FileTest, OpenUnitReplacesTheFileAndPassesOverTrailingBlanks) {
    scratch.write("report.txt", "yesterday's report");
    Int status = -1;
    OPENUNIT(20, scratch.file("report.txt") + "     ", status);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(scratch.read("report.txt"), "");
    ASSERT_TRUE(write_bytes(unit_handle(20), "today", 5));

    OPENUNIT(20, scratch.file("other.txt"), status);
    EXPECT_EQ(status, 0) << "the unit takes another file";
    ASSERT_TRUE(write_bytes(unit_handle(20), "other", 5));
    close_unit(20);
    close_unit(20);
    EXPECT_EQ(scratch.read("report.txt"), "today");
    EXPECT_EQ(scratch.read("other.txt"), "other");
}

TEST_F(FileTest, NoUnitKeepsAFileOpenThatItNoLongerHas) {
    const auto open_files = [] {
        using Entries = std::filesystem::directory_iterator;
        return std::distance(Entries("/proc/self/fd"), Entries());
    };
    const std::string path = scratch.write("a.txt", "x");
    const auto before = open_files();
    ASSERT_TRUE(open_unit_for_reading(20, path));
    ASSERT_TRUE(open_unit_for_reading(20, path));
    ASSERT_TRUE(open_unit_for_writing(20, scratch.file("b.txt")));
    ASSERT_TRUE(open_unit_for_writing(20, scratch.file("c.txt")));
    EXPECT_EQ(open_files(), before + 1);
    EXPECT_FALSE(open_unit_for_reading(20, scratch.file("absent.txt")));
    EXPECT_EQ(unit_handle(20), -1) << "what it had is closed all the same";
    ASSERT_TRUE(open_unit_for_writing(20, scratch.file("d.txt")));
    close_unit(20);
    ASSERT_TRUE(open_unit_for_writing(20, scratch.file("e.txt")));
    close_unit_and_delete(20);
    EXPECT_EQ(open_files(), before);
}

// ---- what has got to a unit ----------------------------------------------------------------------

TEST_F(FileTest, TheStatusOfAUnitKeepsWhatWasLost) {
    // Nothing beyond this size can be written, as on a full disk.
    struct rlimit limit, kept;
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &kept), 0);
    limit = kept;
    limit.rlim_cur = 8;
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    Int status = -1;
    OPENUNIT(20, scratch.file("report.txt"), status);
    OPENUNIT(21, scratch.file("other.txt"), status);
    EXPECT_EQ(UNIT_STATUS(20), 0);
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
    const bool first = write_to_unit(20, "12345678", 8), second = write_to_unit(20, "9", 1);
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &kept), 0);
    std::signal(SIGXFSZ, handler);
    EXPECT_TRUE(first);
    EXPECT_FALSE(second);
    EXPECT_EQ(UNIT_STATUS(20), 1);
    EXPECT_TRUE(write_to_unit(20, "10", 2)) << "the report goes on";
    EXPECT_EQ(UNIT_STATUS(20), 1) << "but what was lost is lost";
    EXPECT_EQ(UNIT_STATUS(21), 0) << "of another unit";
    RESET_UNITS();
    EXPECT_EQ(UNIT_STATUS(20), 1);
    close_unit(20);
    EXPECT_EQ(UNIT_STATUS(20), 1);
    OPENUNIT(20, scratch.file("report.txt"), status);
    EXPECT_EQ(UNIT_STATUS(20), 0);
}

TEST_F(FileTest, AResetForgetsWhatClosedUnitsLost) {
    EXPECT_FALSE(write_to_unit(20, "x", 1));
    RESET_UNITS();
    EXPECT_EQ(UNIT_STATUS(20), 0);
}

TEST_F(FileTest, TheStatusTellsAUnitThatCannotBeWritten) {
    EXPECT_FALSE(write_to_unit(20, "x", 1)); // closed
    EXPECT_EQ(UNIT_STATUS(20), 1);
    Int status = -1;
    OPENUNIT(20, scratch.file("none/report.txt"), status);
    EXPECT_EQ(UNIT_STATUS(20), 1);
    for (const Int unit : {-1, 0, 1001, INT32_MAX, INT32_MIN}) {
        EXPECT_FALSE(write_to_unit(unit, "x", 1));
        EXPECT_EQ(UNIT_STATUS(unit), 1) << unit;
    }
    OPENUNIT(20, scratch.file("report.txt"), status);
    close_handle(unit_handle(20)); // without the unit's knowledge: closing it fails
    EXPECT_EQ(UNIT_STATUS(20), 0);
    close_unit(20);
    EXPECT_EQ(UNIT_STATUS(20), 1);
}

// ---- a unit of the host's ------------------------------------------------------------------------

struct Taken {
    std::string text;
    Int answer = 0;
};

Int take_record(void* user, const char* text, Int length) {
    Taken& taken = *static_cast<Taken*>(user);
    taken.text.append(text, static_cast<std::size_t>(length));
    return taken.answer;
}

TEST_F(FileTest, AHostUnitHandsOverWhatAFileWouldGet) {
    Taken taken;
    Int status = -1, next = 0;
    ASSERT_TRUE(open_unit_for_writing(10, scratch.file("before.txt")));
    OPENHOSTUNIT(10, take_record, &taken, status);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(unit_handle(10), -1) << "the file that the unit had is closed";
    GETNEXTUNIT(next);
    EXPECT_EQ(next, 11);
    EXPECT_TRUE(write_to_unit(10, "one\n", 4));
    EXPECT_TRUE(write_to_unit(10, "two\n", 4));
    EXPECT_EQ(UNIT_STATUS(10), 0);
    close_unit(10);
    EXPECT_FALSE(write_to_unit(10, "three\n", 6));
    EXPECT_EQ(taken.text, "one\ntwo\n");
    GETNEXTUNIT(next);
    EXPECT_EQ(next, 10);
}

TEST_F(FileTest, AHostUnitKeepsThatARecordWasNotTaken) {
    Taken taken;
    Int status = -1;
    OPENHOSTUNIT(20, take_record, &taken, status);
    taken.answer = 1;
    EXPECT_FALSE(write_to_unit(20, "x", 1));
    taken.answer = 0;
    EXPECT_TRUE(write_to_unit(20, "x", 1));
    EXPECT_EQ(UNIT_STATUS(20), 1);
    close_unit_and_delete(20); // there is nothing to delete
    EXPECT_EQ(UNIT_STATUS(20), 1);
    OPENHOSTUNIT(20, take_record, &taken, status);
    EXPECT_EQ(UNIT_STATUS(20), 0);
    OPENUNIT(20, scratch.file("report.txt"), status);
    EXPECT_TRUE(write_to_unit(20, "file", 4));
    EXPECT_EQ(scratch.read("report.txt"), "file");
    EXPECT_EQ(taken.text, "xx");
}

TEST_F(FileTest, AHostUnitNeedsARoutineAndAUnit) {
    Int status = 0;
    OPENHOSTUNIT(20, nullptr, nullptr, status);
    EXPECT_EQ(status, 1);
    EXPECT_EQ(UNIT_STATUS(20), 1);
    EXPECT_FALSE(write_to_unit(20, "x", 1));
    for (const Int unit : {-1, 0, 1001}) {
        OPENHOSTUNIT(unit, take_record, nullptr, status);
        EXPECT_EQ(status, 1) << unit;
    }
}

TEST_F(FileTest, OpenUnitFailsInAFolderThatIsNotThere) {
    Int status = 0;
    OPENUNIT(20, scratch.file("none/report.txt"), status);
    EXPECT_EQ(status, 1);
    EXPECT_EQ(unit_handle(20), -1);
    OPENUNIT(20, "", status);
    EXPECT_EQ(status, 1);
}

} // namespace
} // namespace tarvane::host_test
