#include "report/furniture.h"

#include "../host/scratch.h"
#include "frame/switches.h"
#include "report/channel.h"
#include "report/keyed_text.h"
#include "report/work_file.h"
#include "tarvane/tarvane.h"

#include <array>
#include <cstring>

namespace tarvane::host_test {
namespace {

struct Moment {
    Int year, month, day, hour, minute;
};

class Furniture : public HostTest {
  protected:
    Furniture() {
        ::RESET_ENGINE();
        SET_SYSTEM_DIR(scratch.path());
        SERVICES.user = this;
        SERVICES.clock = [](void* user, Int* year, Int* month, Int* day, Int* hour, Int* minute) {
            const Moment& at = static_cast<Furniture*>(user)->now;
            *year = at.year, *month = at.month, *day = at.day;
            *hour = at.hour, *minute = at.minute;
        };
        SERVICES.message_box = [](void* user, const char* text, const char*) {
            static_cast<Furniture*>(user)->messages.emplace_back(text);
        };
        SERVICES.stop = [](void* user, Int status) {
            static_cast<Furniture*>(user)->stopped.push_back(status);
        };
    }
    ~Furniture() override { ::RESET_ENGINE(); }

    std::string date_at(const Moment& moment) {
        now = moment;
        Text<11> date;
        Text<9> time;
        REPORT_DATE(date, time);
        return std::string(date.view());
    }
    std::string time_at(Int hour, Int minute) {
        now = {2026, 11, 22, hour, minute};
        Text<11> date;
        Text<9> time;
        REPORT_DATE(date, time);
        return std::string(time.view());
    }
    void report_to_file() {
        ASSERT_TRUE(open_unit_for_writing(17, scratch.file("report.txt")));
        IWRITE = IWRTFL = 1;
        IOUT = 17;
        OPEN_LINE_STORE();
    }
    std::string report() {
        close_unit(17);
        return scratch.read("report.txt");
    }

    Moment now{2026, 11, 22, 9, 5};
    std::vector<std::string> messages;
    std::vector<Int> stopped;
};

// ---- date and time -----------------------------------------------------------------------------

TEST_F(Furniture, ADayOfOneDigitMovesTheMonthOneColumn) {
    EXPECT_EQ(date_at({2024, 1, 5, 0, 0}), " Jan 5,2024");
    EXPECT_EQ(date_at({2024, 1, 9, 0, 0}), " Jan 9,2024");
    EXPECT_EQ(date_at({2024, 1, 10, 0, 0}), "Jan 10,2024");
    EXPECT_EQ(date_at({2024, 12, 15, 0, 0}), "Dec 15,2024");
}

TEST_F(Furniture, EveryMonthHasItsName) {
    std::string all;
    for (Int month = 1; month <= 12; ++month)
        all += date_at({2024, month, 11, 0, 0}).substr(0, 3);
    EXPECT_EQ(all, "JanFebMarAprMayJunJulAugSepOctNovDec");
}

TEST_F(Furniture, TheTimeIsOfTwelveHours) {
    EXPECT_EQ(time_at(0, 7), "  0:07am ");
    EXPECT_EQ(time_at(9, 5), "  9:05am ");
    EXPECT_EQ(time_at(11, 59), " 11:59am ");
    EXPECT_EQ(time_at(12, 0), " 12:00pm ");
    EXPECT_EQ(time_at(13, 30), "  1:30pm ");
    EXPECT_EQ(time_at(23, 0), " 11:00pm ");
}

TEST_F(Furniture, WhatNoClockShowsIsAsterisks) {
    EXPECT_EQ(date_at({123456, 13, -1, 0, 0}), "    **,****");
    EXPECT_EQ(time_at(-1, 100), " **:**am ");
}

// ---- front page and closing note -----------------------------------------------------------------

TEST_F(Furniture, TheFrontPageHoldsTheRecordsOfThePrintStep) {
    report_to_file();
    std::string title(192, ' ');
    title.replace(0, 5, "FIRST");
    title.replace(64, 6, "SECOND");
    title.replace(128, 64, std::string(64, '3'));
    WRITE_FRONT_PAGE(title);
    const std::string blank = " " + std::string(100, ' ') + "\n";
    const auto marked = [](std::string text) {
        text.resize(100, ' ');
        return " " + text + " 0 0 0 0 0 2\n";
    };
    EXPECT_EQ(report(), "CTABL:        9:05amNov 22,2026  Table of Contents \n" + blank +
                            "T   FIRST" + std::string(59, ' ') + "\nT   SECOND" +
                            std::string(58, ' ') + "\nT   " + std::string(64, '3') + "\n" + blank +
                            blank + blank + marked("Table of Contents ...") + blank + blank +
                            blank + blank +
                            marked("    Table to be filled out during Print Time ! ") + blank);
}

TEST_F(Furniture, TheFrontPageNeedsAReportThatIsOn) {
    report_to_file();
    IWRITE = 0;
    WRITE_FRONT_PAGE("title");
    EXPECT_EQ(report(), "");
}

TEST_F(Furniture, WithoutAFileBehindTheUnitTheFrontPageIsNotBegun) {
    IWRITE = IWRTFL = 1;
    OPEN_LINE_STORE();
    for (const Int unit : {-1, 0, 17}) {
        IOUT = unit;
        WRITE_FRONT_PAGE("title");
        EXPECT_EQ(LINE_COUNT, 0) << unit;
    }
}

TEST_F(Furniture, TheClosingNoteIsABlankLineAndTheMarkedNote) {
    report_to_file();
    CLOSING_NOTE();
    std::string note = "TARVANE is a trademark of Kessendale Lab.";
    note.resize(60, ' ');
    note += "Version 7.0";
    note.resize(100, ' ');
    EXPECT_EQ(report(), " " + std::string(100, ' ') + "\n " + note + " 0 0 0 0 0 2\n");
}

TEST_F(Furniture, TheClosingNoteGoesByBothGates) {
    report_to_file();
    IWRTFL = 0;
    CLOSING_NOTE();
    IWRTFL = 1, IWRITE = 0;
    CLOSING_NOTE();
    EXPECT_EQ(report(), "");
}

// ---- keyed texts -----------------------------------------------------------------------------------

std::string keyed(std::string_view key, Int len = 40) {
    std::string text(static_cast<std::size_t>(len), '?');
    GET_KEYED_TEXT(key, text.data(), len);
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

constexpr const char* KEYED_FILE = "AB1DEF  A text under code 1\n"
                                   "AB2DEF  A text under the others\n"
                                   "AB      padded\n"
                                   "AB1DEF  never seen\n"
                                   "EMPTY1\n"
                                   "[END]\n"
                                   "LATER1  behind the end\n";

TEST_F(Furniture, AKeyGivesTheTextOfItsFirstLine) {
    scratch.write("iotext.txt", KEYED_FILE);
    EXPECT_EQ(keyed("AB1DEF"), "A text under code 1");
    EXPECT_EQ(keyed("AB1DEFGH"), "A text under code 1"); // six characters count
    EXPECT_EQ(keyed("AB"), "padded");
    EXPECT_EQ(keyed("AB1DEF", 6), "A text");
    EXPECT_EQ(keyed("EMPTY1"), "");
    EXPECT_EQ(keyed("ab1def"), "");
    EXPECT_EQ(keyed("LATER1"), "");
}

TEST_F(Furniture, AFileWithoutItsEndOrNoFileGivesBlanks) {
    EXPECT_EQ(keyed("AB1DEF"), "");
    scratch.write("iotext.txt", "AB1DEF  text\n");
    EXPECT_EQ(keyed("AB1DEF"), "");
    scratch.write("iotext.txt", "AB1DEF  text\n[END]\n"); // looked for again until it is complete
    EXPECT_EQ(keyed("AB1DEF"), "text");
}

TEST_F(Furniture, AKeyedLineGoesByTheDesignCode) {
    scratch.write("iotext.txt", KEYED_FILE);
    report_to_file();
    const Style style{0, 0, 0, 0, 1, 0};
    moduleCode = 1;
    WRITE_KEYED_LINE("ABxDEF", style);
    moduleCode = 4;
    WRITE_KEYED_LINE("ABxDEF", style);
    WRITE_KEYED_LINE("XYxDEF", PLAIN); // absent: a blank line
    const auto line = [](std::string text, const char* marks) {
        text.resize(100, ' ');
        return " " + text + marks + "\n";
    };
    EXPECT_EQ(report(), line("A text under code 1", " 0 0 0 0 1 0") +
                            line("A text under the others", " 0 0 0 0 1 0") + line("", ""));
}

TEST_F(Furniture, AKeyedLineTakesTheSpecialCharactersSwitchAlsoWhenItIsSilent) {
    const Int switch_before = FLAGS_mp_IINOSPECIAL;
    FLAGS_mp_IINOSPECIAL = 1;
    WRITE_KEYED_LINE("ABxDEF", PLAIN);
    FLAGS_mp_IINOSPECIAL = switch_before;
    report_to_file();
    std::string line = "in\xB2";
    line.resize(100, ' ');
    WRITE_LINE(line.data(), 100); // no style of its own: by the switch at the latest style
    EXPECT_EQ(report().find('\xB2'), std::string::npos);
}

TEST_F(Furniture, ATranslatedFileLiesInTheFolderOfTranslations) {
    const auto path = [](Int language, std::size_t len) {
        LANG_INDEX = language;
        std::string text("units");
        text.resize(len, ' ');
        LANGUAGE_FILE_PATH(text.data(), static_cast<Int>(len));
        return text.substr(0, text.find_last_not_of(' ') + 1);
    };
    const std::string folder = scratch.path() + SEPARATOR + "Lang_Out" + SEPARATOR;
    const char* const suffixes[] = {"Eng", "Por", "Spa", "Fre", "Ger", "Ita", "Rus"};
    for (Int i = 0; i < 7; ++i)
        EXPECT_EQ(path(i, 200), folder + "units_" + suffixes[i] + ".txt");
    EXPECT_EQ(path(-1, 200), folder + "units_Eng.txt");
    EXPECT_EQ(path(7, 200), folder + "units_Eng.txt");
    EXPECT_EQ(path(0, folder.size() + 13), folder + "units_Eng.txt");
    EXPECT_EQ(path(0, folder.size() + 12), "");
}

TEST_F(Furniture, TheNameOfATranslatedFileMayEndInNuls) {
    LANG_INDEX = 4;
    std::string text("units");
    text.resize(200, '\0');
    LANGUAGE_FILE_PATH(text.data(), 200);
    EXPECT_EQ(text.substr(0, text.find_last_not_of(' ') + 1),
              scratch.path() + SEPARATOR + "Lang_Out" + SEPARATOR + "units_Ger.txt");
}

// ---- extensions ------------------------------------------------------------------------------------

std::string exchanged(std::string name, std::string extension, std::size_t len = 24) {
    name.resize(len, ' ');
    CHANGE_EXTENSION(name.data(), static_cast<Int>(len), extension.data(),
                     static_cast<Int>(extension.size()));
    return name.substr(0, name.find_last_not_of(' ') + 1);
}

TEST_F(Furniture, AnExtensionTakesThePlaceOfTheLastOne) {
    using namespace std::string_literals;
    EXPECT_EQ(exchanged("vessel.tvn", ".xml"), "vessel.xml");
    EXPECT_EQ(exchanged("vessel.tvn", "xml"), "vessel.xml");
    EXPECT_EQ(exchanged("vessel.one.tvn", "ini "), "vessel.one.ini");
    EXPECT_EQ(exchanged("vessel", "xml"), "vessel.xml");
    EXPECT_EQ(exchanged("vessel", ".xml"), "vessel.xml");
    EXPECT_EQ(exchanged("a.b\\vessel", "xml"), "a.xml"); // the last point, also of a folder
    EXPECT_EQ(exchanged("vessel.tvn\0"s, "xml\0"s), "vessel.xml");
    EXPECT_EQ(exchanged("vessel.longer", ".i"), "vessel.i");
}

TEST_F(Furniture, AnExtensionThatDoesNotFitChangesOnlyTheNuls) {
    using namespace std::string_literals;
    EXPECT_EQ(exchanged("vessel", ".xml", 10), "vessel.xml");
    EXPECT_EQ(exchanged("vessel", ".xml", 9), "vessel");
    EXPECT_EQ(exchanged("a\0c.t"s, ".xml", 6), "a c.t");
}

// ---- work file ---------------------------------------------------------------------------------------

class WorkFile : public Furniture {
  protected:
    static constexpr std::size_t RECORD = 3072;
    std::string content() { return scratch.read("job.Tvr"); }
    static Real word(const std::string& bytes, std::size_t index) {
        Real value = 0.0f;
        std::memcpy(&value, bytes.data() + 4 * (index - 1), 4);
        return value;
    }
    std::string name = scratch.file("job.tvn");
};

TEST_F(WorkFile, BeginsWithZerosAndTwelveStartWords) {
    WORK_FILE(1, name, 1);
    WORK_FILE(3, name, 0);
    const std::string bytes = content();
    ASSERT_EQ(bytes.size(), 250 * RECORD);
    const std::array<std::size_t, 12> start{54, 55, 56, 57, 58, 59, 60, 61, 62, 104, 106, 107};
    for (std::size_t i = 1; i <= bytes.size() / 4; ++i) {
        const bool marked = std::find(start.begin(), start.end(), i) != start.end();
        ASSERT_EQ(word(bytes, i), marked ? -1000.0f : 0.0f) << i;
    }
    EXPECT_TRUE(stopped.empty());
}

TEST_F(WorkFile, KeepsItsWordsUnlessItBeginsAfresh) {
    WORK_FILE(1, name, 1);
    Int status = -1;
    PUT_WORK_WORD(1, 3.5f, status);
    EXPECT_EQ(status, 0);
    PUT_WORK_WORD(768, 4.5f, status);
    EXPECT_EQ(status, 0);
    WORK_FILE(3, name, 0);
    WORK_FILE(1, name, 0);
    WORK_FILE(3, name, 0);
    EXPECT_EQ(word(content(), 1), 3.5f);
    EXPECT_EQ(word(content(), 768), 4.5f);
    WORK_FILE(1, name, 1);
    WORK_FILE(3, name, 0);
    EXPECT_EQ(word(content(), 1), 0.0f);
}

TEST_F(WorkFile, ModeTwoDeletesIt) {
    WORK_FILE(1, name, 1);
    WORK_FILE(2, name, 0);
    EXPECT_FALSE(std::filesystem::exists(scratch.file("job.Tvr")));
}

TEST_F(WorkFile, KeepsItsFirstName) {
    WORK_FILE(1, name, 1);
    WORK_FILE(1, scratch.file("other.tvn"), 0);
    EXPECT_FALSE(std::filesystem::exists(scratch.file("other.Tvr")));
    EXPECT_EQ(WORK_FILE_NAME.trimmed(), scratch.file("job.Tvr"));
}

TEST_F(WorkFile, AWordOutsideTheRecordOrWithoutAFileFails) {
    Int status = 0;
    PUT_WORK_WORD(1, 1.0f, status);
    EXPECT_EQ(status, 2);
    WORK_FILE(1, name, 1);
    for (const Int index : {0, 769, -5}) {
        PUT_WORK_WORD(index, 1.0f, status);
        EXPECT_EQ(status, 2) << index;
    }
    PUT_WORK_WORD(54, 1.0f, status);
    EXPECT_EQ(status, 0);
}

TEST_F(WorkFile, AFileThatCannotBeOpenedEndsTheRun) {
    WORK_FILE(1, scratch.file("absent/job.tvn"), 1);
    EXPECT_EQ(stopped, std::vector<Int>{1});
    ASSERT_EQ(messages.size(), 1u);
    Int status = 0;
    PUT_WORK_WORD(1, 1.0f, status);
    EXPECT_EQ(status, 2);
}

// Without room for the extension the work file would be the host's own file, and be deleted.
TEST_F(WorkFile, ANameWithoutRoomForTheExtensionEndsTheRunAndIsLeftAlone) {
    std::string folder = scratch.path();
    while (folder.size() + 1 + 200 < 255)
        folder += "/d";
    std::filesystem::create_directories(folder);
    for (const std::size_t size : {254u, 300u}) {
        std::string path = folder + "/";
        path.resize(size, 'x');
        std::ofstream(path) << "vessel";
        WORK_FILE(1, path, 1);
        WORK_FILE(3, path, 0);
        EXPECT_EQ(std::filesystem::file_size(path), 6u) << size;
        EXPECT_EQ(stopped, std::vector<Int>{1}) << size;
        stopped.clear();
    }
    EXPECT_TRUE(WORK_FILE_NAME.blank());
    WORK_FILE(1, name, 1); // a name that fits is taken afterwards
    EXPECT_TRUE(stopped.empty());
}

TEST_F(WorkFile, ANameMayEndInNuls) {
    name.resize(400, '\0');
    WORK_FILE(1, name, 1);
    EXPECT_TRUE(stopped.empty());
    EXPECT_EQ(content().size(), 250 * RECORD);
}

TEST_F(WorkFile, AnUnknownModeDoesNothing) {
    WORK_FILE(4, name, 1);
    EXPECT_FALSE(std::filesystem::exists(scratch.file("job.Tvr")));
}

} // namespace
} // namespace tarvane::host_test
