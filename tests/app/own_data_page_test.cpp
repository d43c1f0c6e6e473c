// docs/own_data.md followed to the letter: its files written, its commands run in its order, and what it shows of them
// compared.
#include "app_fixture.h"
#include "test_paths.h"

namespace tarvane::app {
namespace {

namespace fs = std::filesystem;

// "```csv stresses.csv": a block, its kind and, of a file, the name.
struct Block {
    std::string kind, name, text;
};

std::vector<Block> blocks_of(const std::string& page) {
    std::vector<Block> blocks;
    std::istringstream lines(page);
    bool open = false;
    for (std::string line; std::getline(lines, line);) {
        if (!line.starts_with("```")) {
            if (open) blocks.back().text += line + '\n';
            continue;
        }
        open = !open;
        if (!open) continue;
        std::istringstream fence(line.substr(3));
        Block block;
        fence >> block.kind >> block.name;
        blocks.push_back(block);
    }
    EXPECT_FALSE(open);
    return blocks;
}

// A command of a block, and the lines that follow it there.
struct Command {
    std::string line, shown;
};

std::vector<Command> commands_of(const std::string& text) {
    std::vector<Command> commands;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("$ "))
            commands.push_back({line.substr(2), ""});
        else if (!commands.empty())
            commands.back().shown += line + '\n';
    }
    return commands;
}

class OwnDataPage : public ProgramTest {
  protected:
    OwnDataPage() : page(read(std::string(TARVANE_SOURCE_DIR) + "/docs/own_data.md")) {}

    // In the folder of the test, as the user's shell.
    ProgramRun follow(const std::string& command) const {
        EXPECT_TRUE(command.starts_with("tarvane ")) << command;
        return shell("cd " + folder.string() + " && " + TARVANE_PROGRAM + command.substr(7));
    }

    void write_block(const Block& block) const {
        fs::create_directories(fs::path(path(block.name)).parent_path());
        write(block.name, block.text);
    }

    const std::string page;
};

TEST_F(OwnDataPage, IsTrueFromItsFirstCommandToItsLast) {
    std::size_t commands = 0, shown = 0;
    std::string output; // of the command before
    for (const Block& block : blocks_of(page)) {
        SCOPED_TRACE(block.text);
        if (!block.name.empty()) {
            write_block(block);
        } else if (block.kind == "console") {
            for (const Command& command : commands_of(block.text)) {
                const ProgramRun result = follow(command.line);
                const bool refused = command.shown.starts_with("tarvane: ");
                EXPECT_EQ(result.status, refused ? 2 : 0) << command.line << result.err;
                output = result.out + result.err;
                if (!command.shown.empty()) {
                    EXPECT_EQ(output, command.shown);
                }
                ++commands;
            }
        } else {
            ASSERT_EQ(block.kind, "text"); // faults are those of the test below
            if (block.text.starts_with("own/")) continue;
            EXPECT_NE(output.find(block.text), std::string::npos) << output;
            ++shown;
        }
    }
    EXPECT_GE(commands, 9u);
    EXPECT_EQ(shown, 2u);
}

TEST_F(OwnDataPage, FaultsAreThoseThatItShows) {
    const std::vector<Block> blocks = blocks_of(page);
    std::vector<std::string> faults;
    for (const Block& block : blocks) {
        if (block.name == "points.csv") write_block(block);
        if (block.text.find("--as chart") != std::string::npos) {
            ASSERT_EQ(follow(commands_of(block.text)[0].line).status, 0);
        }
        std::istringstream lines(block.text);
        for (std::string line; block.kind == "text" && std::getline(lines, line);)
            if (line.starts_with("own/")) faults.push_back(line + '\n');
    }
    ASSERT_EQ(faults.size(), 2u);
    const std::string points = read(path("own/chart_points.csv"));
    const auto check = [&](const std::string& text, const std::string& by) {
        std::string changed = points;
        const std::size_t at = changed.find(text);
        EXPECT_NE(at, std::string::npos) << text;
        write("own/chart_points.csv", changed.replace(at, text.size(), by));
        const ProgramRun result = follow("tarvane data check own");
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.out, "");
        return result.err;
    };
    EXPECT_EQ(check(",12000,", ",12x00,"), faults[0]);
    // A knee that one quadratic cannot follow.
    const std::string end = points.substr(points.find(",12000,") + 6);
    const std::string source =
        end.substr(0, end.find('\n') + 1); // ",\"Invented tables\"" and the end of the line
    EXPECT_EQ(check("HA-1,100,1.0e-2,12000" + source + "HA-1,100,1.0e-1,12000",
                    "HA-1,100,1.0e-3,8000" + source + "HA-1,100,3.0e-3,11000" + source +
                        "HA-1,100,1.0e-2,13000" + source + "HA-1,100,1.0e-1,13000"),
              faults[1]);
}

} // namespace
} // namespace tarvane::app
