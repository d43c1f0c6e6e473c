// The command line of the host.
#include "charts.h"
#include "materials_command.h"
#include "run.h"
#include "text.h"

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

// The unit system of --units.
tarvane::app::UnitSystem units_named(const std::string& name) {
    return tarvane::app::folded(name) == "si" ? tarvane::app::si_units() : tarvane::app::us_units();
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
    CLI::App* run_command = app.add_subcommand("run", "Calculate the elements of an input file");
    run_command->add_option("file", options.input, "Input file (TOML)")->required();
    run_command->add_option("--report", options.report,
                            "Write the report file with its style marks");
    run_command->add_option("--data", options.data, "Folder of the data files");
    run_command->add_option("--colour,--color", colour, "auto, always or never")
        ->check(CLI::IsMember({"auto", "always", "never"}));
    run_command->add_flag("--plain", plain, "The same as --colour never");
    const CLI::IsMember UNITS({"us", "si"}, CLI::ignore_case);

    MaterialsOptions materials;
    std::string materials_code = "VIII-1", materials_units = "us";
    CLI::App* materials_command =
        app.add_subcommand("materials", "List the materials of the data files");
    materials_command->add_option("name", materials.name, "Material, or how its name begins");
    materials_command->add_option("--code", materials_code, "VIII-1 or VIII-2")
        ->check(CLI::IsMember({"VIII-1", "VIII-2"}, CLI::ignore_case));
    materials_command->add_flag("--metric", materials.selection.metric, "The metric files");
    materials_command->add_option("--class", materials.selection.d2_class,
                                  "Class of VIII-2: 0 the files of class 1, 1 those of class 2");
    materials_command->add_option("--year", materials.selection.year, "Edition of the files");
    materials_command->add_option("--units", materials_units, "us or si")->check(UNITS);
    materials_command->add_option("--data", materials.data, "Folder of the data files");

    ChartOptions chart;
    std::string chart_units = "us";
    float factor = 0.0f;
    CLI::App* chart_command = app.add_subcommand("chart", "Show an external pressure chart");
    chart_command->add_option("name", chart.name, "Chart, CS-2 for example")->required();
    chart_command->add_option("--temperature,-T", chart.temperature, "Temperature, in the units")
        ->required();
    chart_command->add_option("--yield", chart.yield, "Yield stress, for charts that depend on it");
    CLI::Option* factor_option = chart_command->add_option("--A", factor, "Factor A to mark");
    chart_command->add_option("--svg", chart.svg, "Draw the chart into this file");
    chart_command->add_option("--units", chart_units, "us or si")->check(UNITS);
    chart_command->add_option("--data", chart.data, "Folder of the data files");
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
    if (materials_command->parsed()) {
        materials.selection.code = folded(materials_code) == "viii2" ? 2 : 1;
        materials.units = units_named(materials_units);
        return static_cast<int>(list_materials(materials, std::cout, std::cerr));
    }
    if (chart_command->parsed()) {
        if (factor_option->count() > 0) chart.A = factor;
        chart.units = units_named(chart_units);
        return static_cast<int>(show_chart(chart, std::cout, std::cerr));
    }
    options.colour = !plain && (colour == "always" || (colour == "auto" && on_terminal()));
    return static_cast<int>(run(options, std::cout, std::cerr));
} catch (const std::exception& problem) {
    std::fprintf(stderr, "tarvane: %s\n", problem.what());
    return static_cast<int>(tarvane::app::Status::bad_input);
}
