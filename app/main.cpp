// The command line of the host.
#include "run.h"

#include <CLI/CLI.hpp>

#include <cstdio>
#include <exception>
#include <iostream>

#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

namespace {

bool on_terminal() {
#ifdef _WIN32
    return _isatty(_fileno(stdout)) != 0;
#else
    return isatty(STDOUT_FILENO) != 0;
#endif
}

} // namespace

int main(int argc, char** argv) try {
    using namespace tarvane::app;
    CLI::App app{"Calculations of bolted flanges and flat covers of pressure vessels"};
    app.set_version_flag("--version", TARVANE_VERSION);
    app.require_subcommand(1);

    RunOptions options;
    std::string colour = "auto";
    bool plain = false;
    CLI::App* run_command = app.add_subcommand("run", "Calculate the flanges of an input file");
    run_command->add_option("file", options.input, "Input file (TOML)")->required();
    run_command->add_option("--report", options.report,
                            "Write the report file with its style marks");
    run_command->add_option("--data", options.data, "Folder of the data files");
    run_command->add_option("--colour,--color", colour, "auto, always or never")
        ->check(CLI::IsMember({"auto", "always", "never"}));
    run_command->add_flag("--plain", plain, "The same as --colour never");
    CLI::App* keys_command = app.add_subcommand("keys", "List the keys of an input file");

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : static_cast<int>(Status::bad_input);
    }
    if (keys_command->parsed()) {
        std::cout << key_table();
        return 0;
    }
    options.colour = !plain && (colour == "always" || (colour == "auto" && on_terminal()));
    return static_cast<int>(run(options, std::cout, std::cerr));
} catch (const std::exception& problem) {
    std::fprintf(stderr, "tarvane: %s\n", problem.what());
    return static_cast<int>(tarvane::app::Status::bad_input);
}
