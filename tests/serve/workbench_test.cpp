#include "serve/workbench.h"

#include "app_fixture.h"
#include "serve/refused.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>

namespace tarvane::app {

namespace {

namespace fs = std::filesystem;

class WorkbenchTest : public ProgramTest {
  protected:
    Workbench workbench{folder};

    OpenDocument& open(const std::string& name) {
        for (const ListedFile& file : workbench.files()) {
            if (file.name == name) return workbench.open(file.handle);
        }
        throw std::runtime_error(name + " is not listed");
    }
    // The status of what is refused, with its conflict; empty: it isn't.
    template <class Work>
    static std::string refusal(const Work& work) {
        try {
            work();
        } catch (const RequestRefused& refused) {
            return std::to_string(refused.status) +
                   (refused.more.empty() ? "" : " " + refused.more);
        }
        return {};
    }
    std::vector<std::string> names() {
        std::vector<std::string> all;
        for (const ListedFile& file : workbench.files())
            all.push_back(file.name);
        return all;
    }
};

TEST_F(WorkbenchTest, ListsTheRegularFilesOfItsFolder) {
    write("b.toml", "P = 1\n");
    write("a ü.toml", "");
    write("c.txt", "");
    write(".hidden.toml", "");
    write("bad\x01.toml", "");
    write("bad\xff.toml", "");
    fs::create_directory(folder / "d.toml");
    fs::create_symlink(folder / "b.toml", folder / "link.toml");
    EXPECT_EQ(names(), (std::vector<std::string>{"a ü.toml", "b.toml"}));
    const std::string handle = workbench.files()[1].handle;
    fs::remove(folder / "a ü.toml");
    EXPECT_EQ(workbench.files()[0].handle, handle);
    EXPECT_EQ(workbench.open(handle).text(), "P = 1\n");
    EXPECT_EQ(refusal([&] { workbench.open("b.toml"); }), "404");
    EXPECT_EQ(refusal([&] { workbench.open("f99"); }), "404");
}

TEST_F(WorkbenchTest, AHandleDoesNotFollowALinkThatTookThePlaceOfAFile) {
    write("a.toml", "P = 1\n");
    const std::string handle = workbench.files()[0].handle;
    fs::rename(folder / "a.toml", folder / "other.txt");
    fs::create_symlink(folder / "other.txt", folder / "a.toml");
    EXPECT_EQ(refusal([&] { workbench.open(handle); }), "404");
}

TEST_F(WorkbenchTest, AFileIsOpenOnce) {
    write("a.toml", "P = 1\n");
    OpenDocument& first = open("a.toml");
    EXPECT_EQ(&first, &open("a.toml"));
    first.put("P = 2\n");
    EXPECT_EQ(refusal([&] { workbench.close(first.handle, false); }), "409 unsaved");
    workbench.close(first.handle, true);
    EXPECT_EQ(open("a.toml").text(), "P = 1\n");
    EXPECT_EQ(refusal([&] { workbench.document("d1"); }), "404");
}

TEST_F(WorkbenchTest, TheDocumentThatWasLeftTheLongestGivesWay) {
    write("a.toml", "P = 1\n");
    const std::string changed = open("a.toml").handle, used = workbench.create("x").handle,
                      left = workbench.create("y").handle;
    workbench.document(changed).put("P = 2\n");
    for (int i = 3; i < 64; ++i)
        workbench.create("z").put(std::to_string(i));
    workbench.document(used);
    workbench.create("z");
    EXPECT_EQ(refusal([&] { workbench.document(left); }), "404");
    EXPECT_EQ(workbench.document(used).text(), "x");
    EXPECT_EQ(workbench.document(changed).text(), "P = 2\n");
    // Changes that are in no file are never given up.
    workbench.create("z").put("w");
    workbench.document(used).put("w");
    EXPECT_EQ(refusal([&] { workbench.create("z"); }), "409");
    EXPECT_EQ(workbench.unsaved().size(), 64u);
}

TEST_F(WorkbenchTest, StepsAreUndoneAndDoneAgain) {
    OpenDocument& document = workbench.create("a");
    EXPECT_FALSE(document.can_undo());
    document.put("a");
    EXPECT_EQ(document.version(), 1u);
    document.put("b");
    document.put("c");
    document.undo();
    EXPECT_EQ(document.text(), "b");
    document.undo();
    document.undo();
    EXPECT_EQ(document.text(), "a");
    document.redo();
    EXPECT_EQ(document.text(), "b");
    document.put("d");
    EXPECT_FALSE(document.can_redo());
    document.undo();
    EXPECT_EQ(document.text(), "b");
    // The memory for steps is bounded.
    for (int i = 0; i < 300; ++i)
        document.put("x" + std::to_string(i));
    int steps = 0;
    while (document.can_undo()) {
        document.undo();
        ++steps;
    }
    EXPECT_EQ(steps, 200);
    for (int i = 0; i < 20; ++i)
        document.put(std::string(std::size_t{4} << 20, static_cast<char>('a' + i)));
    for (steps = 0; document.can_undo(); ++steps)
        document.undo();
    EXPECT_EQ(steps, 8);
}

TEST_F(WorkbenchTest, AChangeOnDiskIsNoticedByItsContent) {
    const std::string file = write("a.toml", "P = 1\n");
    OpenDocument& document = open("a.toml");
    EXPECT_EQ(workbench.on_disk(document), OnDisk::same);
    fs::last_write_time(file, fs::last_write_time(file) + std::chrono::hours(1));
    EXPECT_EQ(workbench.on_disk(document), OnDisk::same);
    const auto time = fs::last_write_time(file);
    write("a.toml", "P = 2\n"); // of the same size
    fs::last_write_time(file, time + std::chrono::nanoseconds(1));
    EXPECT_EQ(workbench.on_disk(document), OnDisk::changed);
    EXPECT_EQ(refusal([&] { workbench.save(document, "", false); }), "409 changed");
    EXPECT_EQ(read(file), "P = 2\n");
    workbench.reload(document);
    EXPECT_EQ(document.text(), "P = 2\n");
    EXPECT_TRUE(document.saved());
    EXPECT_TRUE(document.can_undo());
    EXPECT_EQ(workbench.on_disk(document), OnDisk::same);
    fs::remove(file);
    EXPECT_EQ(workbench.on_disk(document), OnDisk::missing);
    EXPECT_EQ(refusal([&] { workbench.save(document, "", false); }), "");
    EXPECT_EQ(read(file), "P = 2\n");
}

TEST_F(WorkbenchTest, SavesUnderPlainNamesOfItsFolderAlone) {
    OpenDocument& document = workbench.create("P = 1\n");
    EXPECT_EQ(workbench.on_disk(document), OnDisk::unsaved);
    EXPECT_EQ(refusal([&] { workbench.save(document, "", false); }), "400");
    for (const std::string name :
         {"../a.toml", "/tmp/a.toml", "a/b.toml", "..", ".toml", ".a.toml", "a.txt", "a.TOML",
          "a\\b.toml", "-a.toml", " a.toml", "a\n.toml", "ä.toml"})
        EXPECT_EQ(refusal([&] { workbench.save(document, name, true); }), "400") << name;
    EXPECT_EQ(refusal([&] { workbench.save(document, std::string("a\0.toml", 7), true); }), "400");
    EXPECT_EQ(refusal([&] { workbench.save(document, std::string(96, 'a') + ".toml", true); }),
              "400");
    EXPECT_EQ(refusal([&] { workbench.save(document, std::string(95, 'a') + ".toml", true); }), "");
    EXPECT_EQ(refusal([&] { workbench.save(document, "N1 of V-101_b.toml", false); }), "");
    EXPECT_EQ(read(path("N1 of V-101_b.toml")), "P = 1\n");
    EXPECT_EQ(document.name(), "N1 of V-101_b.toml");
    EXPECT_TRUE(document.saved());

    write("there.toml", "x = 1\n");
    EXPECT_EQ(refusal([&] { workbench.save(document, "there.toml", false); }), "409 exists");
    fs::create_symlink(path("there.toml"), path("link.toml"));
    EXPECT_EQ(refusal([&] { workbench.save(document, "link.toml", true); }), "422");
    EXPECT_EQ(read(path("there.toml")), "x = 1\n");
    OpenDocument& other = open("there.toml");
    EXPECT_EQ(refusal([&] { workbench.save(document, "there.toml", true); }), "409");
    workbench.close(other.handle, false);
    EXPECT_EQ(refusal([&] { workbench.save(document, "there.toml", true); }), "");
    EXPECT_EQ(read(path("there.toml")), "P = 1\n");
    fs::permissions(path("there.toml"), fs::perms::owner_read);
    document.put("P = 2\n");
    EXPECT_EQ(refusal([&] { workbench.save(document, "", false); }), "422");
    EXPECT_EQ(read(path("there.toml")), "P = 1\n");
    EXPECT_EQ(workbench.unsaved(), std::vector<std::string>{"there.toml"});
}

TEST_F(WorkbenchTest, EditsAreMadeInTheirOrderOrNotAtAll) {
    const std::string text = "[[flange]]\nP = 1 # c\ngasket = { m = 3 }\n";
    EXPECT_EQ(edited(text, {{"flange[0].P", "2,5", {}},
                            {"flange[0].m", "2.0", {}},
                            {"flange[0].y", "10", {}},
                            {"flange[0].P", {}, vessel::Value(std::int64_t{7})},
                            {"flange[1].P", "3", {}}}),
              "[[flange]]\nP = 7 # c\ngasket = { m = 2.0, y = 10 }\n\n[[flange]]\nP = 3\n");
    EXPECT_EQ(edited(text, {{"flange[0].P", "", {}}}), "[[flange]]\ngasket = { m = 3 }\n");
    EXPECT_EQ(edited(text, {{"flange[0]", {}, {}}}), "");
    EXPECT_EQ(refusal([&] {
                  edited(text, {{"flange[0].P", "2", {}}, {"flange[0]", "2", {}}});
              }),
              "400 flange[0]");
    EXPECT_EQ(refusal([&] { edited(text, {{"../a", "2", {}}}); }), "400 ../a");
    EXPECT_EQ(refusal([&] { edited("P = \n", {{"P", "2", {}}}); }), "400 P");
    EXPECT_EQ(refusal([&] {
                  edited(text, {{"flange[0].description", std::string(5 << 20, 'x'), {}}});
              }),
              "400 flange[0].description");
}

} // namespace

} // namespace tarvane::app
