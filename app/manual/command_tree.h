// The commands and options of the program, as its parser knows them, for the man page and for completion.
#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace tarvane::app {

struct OptionText {
    std::vector<std::string> names; // "--jobs", "-j"; of an argument without an option its one name
    std::string value;              // FILE, FOLDER, TEXT, a kind of number; empty: a flag
    std::vector<std::string> choices;
    std::string help;
    bool positional = false, required = false, several = false;
};

struct CommandText {
    std::string name, help;
    std::vector<OptionText> options; // arguments too, in their order
    std::vector<CommandText> commands;
};

// Without what is hidden.
CommandText command_tree(const CLI::App& app);

} // namespace tarvane::app
