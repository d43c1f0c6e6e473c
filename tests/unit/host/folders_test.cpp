#include "scratch.h"

#include "host/install_paths.h"
#include "host/platform.h"

#include <pwd.h>

namespace tarvane::host_test {
namespace {

class FolderTest : public HostTest {
  protected:
    // A folder of the root whose path has `length` characters.
    static std::string long_folder(std::size_t length) {
        std::string path(length, 'd');
        path[0] = '/';
        return path;
    }
    static std::string system_path(Int selector, std::string_view product = "TARVANE",
                                   std::string_view version = "2024") {
        Text<260> path("left over");
        Int length = -1;
        GET_SYSTEM_PATH(selector, product, version, path, length);
        EXPECT_EQ(length, path.trimmed_length());
        return std::string(path.trimmed());
    }
    static std::string system_file(std::string_view name) {
        Text<260> path;
        Int length = -1;
        SYSTEM_FILE_PATH(path, length, name);
        EXPECT_EQ(length, path.trimmed_length());
        return std::string(path.trimmed());
    }
    static std::string resolved(std::string_view name) {
        Text<256> path(name);
        Int length = -1;
        RESOLVE_DATA_FILE(path, length);
        EXPECT_EQ(length, path.trimmed_length());
        return std::string(path.trimmed());
    }
};

// ---- folder of the library ---------------------------------------------------------------------

TEST_F(FolderTest, TheLibrarysFolderIsThatOfTheProgramItIsLinkedInto) {
    GET_MODULE_DIR();
    EXPECT_EQ(module_folder(), std::filesystem::read_symlink("/proc/self/exe").parent_path());
}

TEST_F(FolderTest, TheHostsFolderActsAtOnceAndStays) {
    GET_MODULE_DIR();
    SET_MODULE_DIR("/opt/engine  ");
    EXPECT_EQ(module_folder(), "/opt/engine");
    SET_MODULE_DIR("/opt/engine ");
    EXPECT_EQ(module_folder(), "/opt/engine");
    SET_MODULE_DIR(std::string_view("/opt/engine\0 \0", 14));
    EXPECT_EQ(module_folder(), "/opt/engine") << "NULs behind it count as blanks";
    GET_MODULE_DIR();
    RESET_HOST();
    EXPECT_EQ(module_folder(), "/opt/engine");
}

TEST_F(FolderTest, ResetForgetsWhatWasLookedUp) {
    Int found = 0;
    GET_MODULE_DIR();
    GET_SYSTEM_DIR(found);
    EXPECT_EQ(found, 1);
    EXPECT_NE(module_folder(), "");
    EXPECT_NE(system_folder(), "");
    RESET_HOST();
    EXPECT_EQ(module_folder(), "");
    EXPECT_EQ(system_folder(), "");
    EXPECT_TRUE(MODULE_DIR.blank());
    EXPECT_TRUE(SYSTEM_DIR.blank());
}

TEST_F(FolderTest, AFolderThatIsTooLongIsEmpty) {
    SET_MODULE_DIR(std::string(256, 'm'));
    EXPECT_EQ(MODULE_DIR_LENGTH, 256);
    SET_MODULE_DIR(std::string(257, 'm'));
    EXPECT_EQ(MODULE_DIR_LENGTH, 0);
    SET_SYSTEM_DIR(std::string(260, 's'));
    EXPECT_EQ(SYSTEM_DIR_LENGTH, 260);
    SET_SYSTEM_DIR(std::string(261, 's'));
    EXPECT_EQ(SYSTEM_DIR_LENGTH, 0);
}

// ---- data folder -------------------------------------------------------------------------------

TEST_F(FolderTest, WithoutSettingsTheDataLieBesideTheLibrary) {
    SET_MODULE_DIR(scratch.path());
    for (const Int selector : {268, 269, 270, 271})
        EXPECT_EQ(system_path(selector, "no such product"), scratch.path() + "/") << selector;
}

TEST_F(FolderTest, OtherSelectorsGiveAnEmptyPath) {
    SET_MODULE_DIR(scratch.path());
    scratch.write("Settings.ini", "Alternate System Path = /data\n");
    for (const Int selector : {267, 272, 0, -1})
        EXPECT_EQ(system_path(selector), "") << selector;
}

TEST_F(FolderTest, WithoutAnyFolderThePathStaysEmpty) {
    SET_MODULE_DIR("");
    EXPECT_EQ(system_path(270, "no such product"), "");
}

TEST_F(FolderTest, TheSettingsBesideTheLibraryNameTheDataFolder) {
    SET_MODULE_DIR(scratch.path());
    scratch.write("Settings.ini", "; chosen by the user\n"
                                  "[Settings]\r\n"
                                  "Default Language = English\r\n"
                                  "  Alternate System Path = /data/own tables  \r\n");
    EXPECT_EQ(system_path(270), "/data/own tables/");
    Int found = 0;
    GET_SYSTEM_DIR(found);
    EXPECT_EQ(system_folder(), "/data/own tables/");
}

TEST_F(FolderTest, ASeparatorIsAddedBehindOneThatIsThere) {
    SET_MODULE_DIR(scratch.path());
    scratch.write("Settings.ini", "Alternate System Path=/data/\n");
    EXPECT_EQ(system_path(270), "/data//");
}

TEST_F(FolderTest, OnlyTheSettingsSectionAndWholeNamesCount) {
    SET_MODULE_DIR(scratch.path());
    const char* const without[] = {
        "[Hoops]\nAlternate System Path = /data\n",
        "[Settings]\n#Alternate System Path = /data\n",
        "[Settings]\n;Alternate System Path = /data\n",
        "[Settings]\nThe Alternate System Path = /data\n",
        "[Settings]\nAlternate System Paths = /data\n",
        "[Settings]\nAlternate System Path /data\n",
        "[Settings]\nAlternate System Path =\n",
        "",
    };
    for (const char* const content : without) {
        scratch.write("Settings.ini", content);
        EXPECT_EQ(system_path(270), scratch.path() + "/") << content;
    }
    scratch.write("Settings.ini", "[Hoops]\nx = 1\n[Settings]\nAlternate System Path = /data");
    EXPECT_EQ(system_path(270), "/data/");
}

TEST_F(FolderTest, AFolderOfTooManyCharactersIsNotCut) {
    SET_MODULE_DIR(scratch.path());
    scratch.write("Settings.ini", "Alternate System Path = " + long_folder(259) + "\n");
    EXPECT_EQ(system_path(270), long_folder(259) + "/");
    scratch.write("Settings.ini", "Alternate System Path = " + long_folder(260) + "\n");
    EXPECT_EQ(system_path(270), "") << "there is no room for the separator";
}

TEST_F(FolderTest, TheHomeFolderIsThatOfTheUserDatabase) {
    const struct passwd* const entry = getpwuid(getuid());
    Text<260> home;
    const Int length = platform::home_folder(home);
    const std::string expected = entry == nullptr ? "" : entry->pw_dir;
    EXPECT_EQ(home.columns(1, length), expected);
}

TEST_F(FolderTest, AUserIsFoundByTheWholeNumberOfItsLine) {
    const std::string database = scratch.write("passwd", "root:x:0:0:root:/root:/bin/sh\n"
                                                         "\n"
                                                         "broken\n"
                                                         "short:x:100\n"
                                                         "letters:x:10a:10:x:/home/letters:\n"
                                                         "none:x::10:x:/home/none:\n"
                                                         "ten:x:10:10:x:/home/ten:/bin/sh\n"
                                                         "again:x:10:10:x:/home/again:/bin/sh\n"
                                                         "thousand:x:1000:1000::/srv/t:/bin/sh\r\n"
                                                         "most:x:4294967294:1:x:/home/most\n"
                                                         "beyond:x:4294967301:1:x:/home/beyond:\n"
                                                         "wide:x:00000000077:1:x:/home/wide:");
    const auto home_of = [&](std::uint32_t user) {
        Text<260> home("left over");
        return std::string(home.columns(1, platform::home_in_database(database, user, home)));
    };
    EXPECT_EQ(home_of(0), "/root");
    EXPECT_EQ(home_of(10), "/home/ten") << "its first line counts";
    EXPECT_EQ(home_of(1000), "/srv/t");
    EXPECT_EQ(home_of(4294967294u), "/home/most");
    EXPECT_EQ(home_of(100), "") << "a line without a home";
    EXPECT_EQ(home_of(1), "");
    EXPECT_EQ(home_of(5), "") << "not 4294967301";
    EXPECT_EQ(home_of(77), "") << "longer than any number of a user";
    Text<260> home;
    EXPECT_EQ(platform::home_in_database(scratch.file("absent"), 0, home), 0);
    Int unit = 0;
    GETNEXTUNIT(unit);
    EXPECT_EQ(unit, 10) << "nothing stays open";
}

TEST_F(FolderTest, SettingsOfTheUserLieUnderTheHomeFolder) {
    Text<600> path;
    const Int length = platform::user_settings_file("/home/ten", "TARVANE", "2024", path);
    EXPECT_EQ(path.columns(1, length),
              "/home/ten/.config/Kessendale Lab/TARVANE/2024/Settings.ini");
    EXPECT_EQ(platform::user_settings_file(long_folder(700), "TARVANE", "2024", path), 0);
}

// ---- names and paths ---------------------------------------------------------------------------

TEST_F(FolderTest, SystemFilePathAddsASeparatorUnlessThereIsOne) {
    SET_SYSTEM_DIR("/data");
    EXPECT_EQ(system_file("BOLTDATA.TXT"), "/data/BOLTDATA.TXT");
    EXPECT_EQ(system_file("BOLTDATA.TXT   "), "/data/BOLTDATA.TXT");
    SET_SYSTEM_DIR("/data/");
    EXPECT_EQ(system_file("BOLTDATA.TXT"), "/data/BOLTDATA.TXT");
    SET_SYSTEM_DIR("/data\\");
    EXPECT_EQ(system_file("BOLTDATA.TXT"), "/data\\BOLTDATA.TXT");
}

TEST_F(FolderTest, AnEmptySystemFolderGivesAnEmptyPath) {
    SET_SYSTEM_DIR("");
    EXPECT_EQ(system_file("BOLTDATA.TXT"), "");
}

TEST_F(FolderTest, APathThatDoesNotFitIsEmpty) {
    SET_SYSTEM_DIR(long_folder(256));
    EXPECT_EQ(system_file("abc").size(), 260u);
    EXPECT_EQ(system_file("abcd"), "");
}

TEST_F(FolderTest, AFileBesideTheLibraryWinsForResolveOnly) {
    const ScratchFolder suite;
    scratch.write("both.txt", "library");
    suite.write("both.txt", "suite");
    suite.write("suite.txt", "suite");
    SET_MODULE_DIR(scratch.path());
    SET_SYSTEM_DIR(suite.path());
    EXPECT_EQ(resolved("both.txt"), scratch.file("both.txt"));
    EXPECT_EQ(system_file("both.txt"), suite.file("both.txt"));
    EXPECT_EQ(resolved("suite.txt"), suite.file("suite.txt"));
    EXPECT_EQ(resolved("nowhere.txt"), suite.file("nowhere.txt"));
}

TEST_F(FolderTest, TheLibrarysFolderIsJoinedWithOneSeparator) {
    scratch.write("a.txt", "x");
    SET_SYSTEM_DIR("/nowhere");
    SET_MODULE_DIR(scratch.path());
    EXPECT_EQ(resolved("a.txt"), scratch.path() + "/a.txt");
    SET_MODULE_DIR(scratch.path() + "/");
    EXPECT_EQ(resolved("a.txt"), scratch.path() + "/a.txt");
}

TEST_F(FolderTest, WithoutAFolderOfTheLibraryTheNameStays) {
    SET_MODULE_DIR("");
    SET_SYSTEM_DIR("/data");
    EXPECT_EQ(resolved("ElastAlp07.txt"), "ElastAlp07.txt");
}

TEST_F(FolderTest, ResolveFetchesBothFolders) {
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe");
    EXPECT_EQ(resolved(program.filename().string()), program) << "a file beside the library";
    EXPECT_NE(module_folder(), "");
    EXPECT_NE(system_folder(), "") << "fetched along with it";
    forget_folders();
    resolved("no such file.txt");
    EXPECT_NE(module_folder(), "");
    EXPECT_NE(system_folder(), "");
}

TEST_F(FolderTest, ResolveWithoutASystemFolderFindsNothing) {
    SET_MODULE_DIR(scratch.path());
    SET_SYSTEM_DIR("");
    EXPECT_EQ(resolved("absent.txt"), "");
}

TEST_F(FolderTest, ResolvePassesNoPathThatItsFieldCannotHold) {
    SET_MODULE_DIR(scratch.path());
    SET_SYSTEM_DIR(long_folder(251));
    EXPECT_EQ(resolved("abcd").size(), 256u);
    EXPECT_EQ(resolved("abcde"), "");
}

// ---- program, help -----------------------------------------------------------------------------

TEST_F(FolderTest, ThisTestIsNotTheMainHost) { EXPECT_FALSE(IS_MAIN_HOST()); }

TEST_F(FolderTest, HelpLanguageComesFromTheSettings) {
    SET_MODULE_DIR(scratch.path());
    const struct {
        const char* setting;
        Int language;
    } cases[] = {
        {"HelpLanguage = 1041\n", 1041}, {"HelpLanguage = 2052\n", 2052},
        {"HelpLanguage = 1033\n", 1033}, {"HelpLanguage = 1031\n", 1031},
        {"HelpLanguage =\n", 1033},      {"Default Language = x\n", 1033},
        {"HelpLanguage = English\n", 0},
    };
    for (const auto& c : cases) {
        scratch.write("Settings.ini", c.setting);
        EXPECT_EQ(HELP_LANGUAGE(), c.language) << c.setting;
    }
}

TEST_F(FolderTest, HelpFolderByKindAndLanguage) {
    SET_MODULE_DIR(scratch.path());
    const auto folder = [](Int kind) {
        Text<260> text("left over");
        Int length = -1;
        HELP_FOLDER(kind, text, length);
        EXPECT_EQ(length, text.trimmed_length());
        return std::string(text.trimmed());
    };
    scratch.write("Settings.ini", "HelpLanguage = 1041\n");
    EXPECT_EQ(folder(101), "Acrobat/1041/");
    scratch.write("Settings.ini", "HelpLanguage = 2052\n");
    EXPECT_EQ(folder(101), "Acrobat/2052/");
    scratch.write("Settings.ini", "HelpLanguage = 1031\n");
    EXPECT_EQ(folder(101), "Acrobat/1033/");
    EXPECT_EQ(folder(100), "Help/");
    EXPECT_EQ(folder(0), "Help/");
}

TEST_F(FolderTest, HelpCommandWithAndWithoutTopic) {
    const auto command = [](Int topic) {
        Text<600> text;
        return std::string(text.columns(1, HELP_COMMAND(topic, text)));
    };
    SET_MODULE_DIR("/opt/engine");
    EXPECT_EQ(command(0), "/opt/engine/Help.exe /content \"TV/1033\"");
    EXPECT_EQ(command(1234), "/opt/engine/Help.exe /content \"TV/1033\" /topic 1234");
    EXPECT_EQ(command(-1), "/opt/engine/Help.exe /content \"TV/1033\" /topic -1");
    SET_MODULE_DIR(scratch.path() + "/");
    scratch.write("Settings.ini", "HelpLanguage = 2052\n");
    EXPECT_EQ(command(0), scratch.path() + "/Help.exe /content \"TV/2052\"");
}

TEST_F(FolderTest, FatalCommandNamesTheErrorProgramInTheLibrarysFolder) {
    Text<600> text;
    SET_MODULE_DIR("/opt/engine");
    EXPECT_EQ(text.columns(1, FATAL_COMMAND(17, text)), "/opt/engine/TvError.exe 17 2");
    SET_MODULE_DIR("/opt/engine/");
    EXPECT_EQ(text.columns(1, FATAL_COMMAND(-3, text)), "/opt/engine/TvError.exe -3 2");
    forget_folders();
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe");
    EXPECT_EQ(text.columns(1, FATAL_COMMAND(17, text)),
              program.parent_path().string() + "/TvError.exe 17 2");
    SET_MODULE_DIR("");
    EXPECT_EQ(text.columns(1, FATAL_COMMAND(17, text)), "TvError.exe 17 2") << "not in the root";
}

} // namespace
} // namespace tarvane::host_test
