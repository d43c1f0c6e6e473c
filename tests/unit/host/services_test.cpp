#include "scratch.h"

#include "host/install_paths.h"

#include <cstdlib>
#include <ctime>
#include <vector>

namespace tarvane::host_test {
namespace {

// What a host sees of the calls: one line each.
using Calls = std::vector<std::string>;

void record(void* user, std::string call) { static_cast<Calls*>(user)->push_back(std::move(call)); }

class ServicesTest : public HostTest {
  protected:
    // A host that takes every call and returns from each.
    void take_all() {
        HOST_SERVICES table;
        table.version = HOST_SERVICES_VERSION;
        table.message_box = [](void* user, const char* text, const char* title) {
            record(user, std::string(title) + ": " + text);
        };
        table.dialog_text = [](void* user, Int control, const char* text) {
            record(user, std::to_string(control) + " " + text);
        };
        table.end_dialog = [](void* user) { record(user, "end dialog"); };
        table.report_fatal = [](void* user, Int code) {
            record(user, "fatal " + std::to_string(code));
        };
        table.stop = [](void* user, Int status) { record(user, "stop " + std::to_string(status)); };
        table.clock = [](void* user, Int* year, Int* month, Int* day, Int* hour, Int* minute) {
            record(user, "clock");
            *year = 2031;
            *month = 12;
            *day = 24;
            *hour = 18;
            *minute = 5;
        };
        table.user = &calls;
        SET_HOST_SERVICES(&table);
    }

    Calls calls;
};

TEST_F(ServicesTest, TextsReachTheHostWithItsUserPointer) {
    take_all();
    MESSAGE_BOX("Bolts are too small", "Flange Error Message");
    SET_DIALOG_TEXT(1002, "Iterating");
    EXPECT_EQ(calls, (Calls{"Flange Error Message: Bolts are too small", "1002 Iterating"}));
}

TEST_F(ServicesTest, TheNoDialogSwitchSilencesMessageBoxesOnly) {
    take_all();
    EXPECT_FALSE(DIALOGS_OFF());
    SET_NO_DIALOG(true);
    EXPECT_TRUE(DIALOGS_OFF());
    MESSAGE_BOX("text", "title");
    SET_DIALOG_TEXT(1002, "progress");
    EXPECT_EQ(calls, Calls{"1002 progress"});
}

TEST_F(ServicesTest, LongTextsAreCutAndTerminated) {
    take_all();
    MESSAGE_BOX(std::string(5000, 'x'), std::string(5000, 'y'));
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(calls[0].find_first_not_of('y'), 127u);
    EXPECT_EQ(calls[0].size(), 127 + 2 + 1023u);
}

TEST_F(ServicesTest, WithoutServicesNothingHappens) {
    MESSAGE_BOX("text", "title");
    SET_DIALOG_TEXT(1002, "progress");
    END_DIALOG();
    REPORT_FATAL(3);
    LAUNCH_HELP(0);
    EXPECT_TRUE(calls.empty());
}

TEST_F(ServicesTest, TheTableIsCopied) {
    {
        HOST_SERVICES table;
        table.version = HOST_SERVICES_VERSION;
        table.end_dialog = [](void* user) { record(user, "end"); };
        table.user = &calls;
        SET_HOST_SERVICES(&table);
        table = {};
    }
    END_DIALOG();
    EXPECT_EQ(calls, Calls{"end"});
}

TEST_F(ServicesTest, AnotherVersionIsNotTakenAndNullTakesAway) {
    take_all();
    HOST_SERVICES other;
    for (const Int version : {0, 2, -1}) {
        other.version = version;
        SET_HOST_SERVICES(&other);
        END_DIALOG();
    }
    EXPECT_EQ(calls.size(), 3u);
    SET_HOST_SERVICES(nullptr);
    END_DIALOG();
    EXPECT_EQ(calls.size(), 3u);
}

TEST_F(ServicesTest, ResetKeepsTheServices) {
    take_all();
    SET_NO_DIALOG(true);
    RESET_HOST();
    END_DIALOG();
    EXPECT_EQ(calls, Calls{"end dialog"});
    EXPECT_TRUE(DIALOGS_OFF());
}

// ---- clock -------------------------------------------------------------------------------------

TEST_F(ServicesTest, TheHostsClockCounts) {
    take_all();
    Int year = 0, month = 0, day = 0, hour = 0, minute = 0;
    HOST_CLOCK(year, month, day, hour, minute);
    EXPECT_EQ(year, 2031);
    EXPECT_EQ(month, 12);
    EXPECT_EQ(day, 24);
    EXPECT_EQ(hour, 18);
    EXPECT_EQ(minute, 5);
}

TEST_F(ServicesTest, ThePlatformsClockShowsNow) {
    struct tm parts = {};
    const std::time_t before = std::time(nullptr);
    HOST_CLOCK(parts.tm_year, parts.tm_mon, parts.tm_mday, parts.tm_hour, parts.tm_min);
    const std::time_t after = std::time(nullptr);
    parts.tm_year -= 1900;
    parts.tm_mon -= 1;
    parts.tm_isdst = -1;
    const std::time_t shown = std::mktime(&parts); // local time
    EXPECT_GE(shown, before - before % 60);
    EXPECT_LE(shown, after);
}

TEST_F(ServicesTest, ThePlatformsClockIsOfTheLocalTimeZone) {
    const char* const zone = std::getenv("TZ");
    const std::string kept = zone == nullptr ? "" : zone;
    const auto minutes_of_day = [](const char* name) {
        setenv("TZ", name, 1);
        Int year, month, day, hour, minute;
        HOST_CLOCK(year, month, day, hour, minute);
        return 60 * hour + minute;
    };
    const Int ahead = minutes_of_day("EAST-5:30") - minutes_of_day("UTC0");
    if (zone == nullptr)
        unsetenv("TZ");
    else
        setenv("TZ", kept.c_str(), 1);
    // A minute may pass between the two looks, and midnight lie between the zones.
    EXPECT_LE(std::abs((ahead + 1440) % 1440 - 330), 1);
}

// ---- fatal stop --------------------------------------------------------------------------------

TEST_F(ServicesTest, AStopThatComesBackLetsFatalStopReturn) {
    take_all();
    ASSERT_TRUE(open_unit_for_writing(99, scratch.file("messages.txt")));
    ASSERT_TRUE(open_unit_for_writing(18, scratch.file("scratch.txt")));
    ASSERT_TRUE(open_unit_for_writing(17, scratch.file("other.txt")));
    FATAL_STOP(4);
    EXPECT_EQ(calls, (Calls{"fatal 4", "end dialog", "stop 1"}));
    EXPECT_EQ(unit_handle(99), -1);
    EXPECT_TRUE(file_exists(scratch.file("messages.txt")));
    EXPECT_EQ(unit_handle(18), -1);
    EXPECT_FALSE(file_exists(scratch.file("scratch.txt")));
    EXPECT_NE(unit_handle(17), -1);
}

TEST_F(ServicesTest, ThePlaceOfTheStepsOfAFatalStop) {
    take_all();
    static bool closed_first, still_there;
    static std::string path;
    path = scratch.file("scratch.txt");
    ASSERT_TRUE(open_unit_for_writing(99, scratch.file("messages.txt")));
    ASSERT_TRUE(open_unit_for_writing(18, path));
    SERVICES.report_fatal = [](void*, Int) {
        closed_first = unit_handle(99) == -1;
        still_there = file_exists(path);
    };
    FATAL_STOP(1);
    EXPECT_TRUE(closed_first);
    EXPECT_TRUE(still_there);
}

TEST_F(ServicesTest, WithoutAStopServiceTheProcessEndsWithStatusOne) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(FATAL_STOP(4), ::testing::ExitedWithCode(1), "");
}

} // namespace
} // namespace tarvane::host_test
