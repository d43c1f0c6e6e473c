// The command line of the host.
#include "batch/worker.h"
#include "commands/batch_command.h"
#include "commands/bolts_command.h"
#include "commands/chart_command.h"
#include "commands/compare_command.h"
#include "commands/data_command.h"
#include "commands/flanges_command.h"
#include "commands/gaskets_command.h"
#include "commands/materials_command.h"
#include "commands/mdmt_command.h"
#include "commands/run.h"
#include "commands/vocabulary_command.h"
#include "document/new_files.h"
#include "document/vocabulary.h"
#include "manual/command_tree.h"
#include "manual/completion.h"
#include "manual/man_page.h"
#ifdef TARVANE_SERVE
#include "serve/serve.h"
#endif
#include "terminal/standard_output.h"
#include "values/decimal.h"
#include "values/text.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <string_view>
#include <thread>
#include <vector>

namespace {

// Options of `tarvane mdmt`, each with its key of an [[mdmt]].
struct MdmtOption {
    const char *option, *key, *help;
    bool text;
};
constexpr MdmtOption MDMT_OPTIONS[] = {
    {"--curve", "curve", "Curve A to D, \"impact tested\" or exempt; else that of the material",
     true},
    {"--thickness,-t", "tg", "Governing thickness", false},
    {"--ratio", "ratio", "Stress or pressure ratio", false},
    {"--tr", "tr", "Required thickness, instead of the ratio", false},
    {"--corrosion,-c", "ci", "Corrosion allowance", false},
    {"--efficiency,-E", "E", "Joint efficiency", false},
    {"--material", "material", "Material of the data files", true},
    {"--reference", "material_reference", "Its reference number", false},
    {"--required", "MDMT", "Temperature that must be reached", false},
    {"--temperature,-T", "T", "Design temperature, for UG-20(f)", false},
    {"--code", "code", "VIII-1 or VIII-2", true},
    {"--edition", "edition", "older (VIII-2) or A98 (VIII-1)", true},
    {"--yield", "Sy", "Yield stress, for VIII-2", false}};

constexpr std::size_t MDMT_TEMPERATURE = 9; // place of --temperature
static_assert(std::string_view(MDMT_OPTIONS[MDMT_TEMPERATURE].key) == "T");

// "0.5" for ".5", as input files write it.
std::string plain_number(const std::string& text) {
    std::string_view digits = text;
    const std::optional<double> number = tarvane::vessel::take_decimal<double>(digits);
    return number && digits.empty() ? tarvane::vessel::general_text(*number, 9) : text;
}

// The unit system of --units.
tarvane::vessel::UnitSystem units_named(const std::string& name) {
    return tarvane::vessel::folded(name) == "si" ? tarvane::vessel::si_units()
                                                 : tarvane::vessel::us_units();
}

// The whole command line; its exit status.
int command(int argc, char** argv, std::ostream& out) {
    using namespace tarvane::app;
    using namespace tarvane::vessel;
    CLI::App app{"Calculations of pressure vessels: flanges, shells, heads, metal temperatures",
                 "tarvane"};
    app.set_version_flag("--version", TARVANE_VERSION);
    app.require_subcommand(1);
    app.allow_windows_style_options(false); // a path may begin with a slash there too

    RunOptions options;
    std::string colour = "auto";
    bool plain = false;
    CLI::App* run_command = app.add_subcommand("run", "Calculate the elements of an input file");
    run_command->add_option("file", options.input, "Input file (TOML)")
        ->type_name("FILE")
        ->required();
    run_command
        ->add_option("--report", options.report, "Write the report file with its style marks")
        ->type_name("FILE");
    run_command->add_option("--html", options.html, "Write the calculation as a document (HTML)")
        ->type_name("FILE");
    CLI::Option* const pdf =
        run_command
            ->add_option("--pdf", options.pdf,
                         "Write the same document as PDF, by the program weasyprint")
            ->type_name("FILE");
    run_command
        ->add_flag("--pdf-ua", options.pdf_ua,
                   "The PDF with the structure that screen readers use (PDF/UA); takes longer")
        ->needs(pdf);
    std::string detail = "full";
    run_command
        ->add_option("--detail", detail,
                     "Of the document: summary, checks (with those of each component) or full")
        ->check(CLI::IsMember({"summary", "checks", "full"}, CLI::ignore_case));
    run_command->add_option("--json", options.json, "Write the result for programs (JSON)")
        ->type_name("FILE");
    run_command->add_option("--csv", options.csv, "Write checks and results as a table (CSV)")
        ->type_name("FILE");
    run_command->add_option("--data", options.data, "Folder of the data files")
        ->type_name("FOLDER");
    run_command
        ->add_option("--charts", options.charts,
                     "Draw the chart of each element under external pressure into this folder")
        ->type_name("FOLDER")
        ->check(CLI::ExistingDirectory);
    run_command->add_option("--colour,--color", colour, "auto, always or never")
        ->check(CLI::IsMember({"auto", "always", "never"}));
    run_command->add_flag("--plain", plain, "The same as --colour never");
    constexpr const char* STRICT =
        "Refuse defaults that decide about safety: units, code, edition, E, corrosion, column";
    run_command->add_flag("--strict", options.strict, STRICT);
    const CLI::IsMember UNITS({"us", "si"}, CLI::ignore_case);

    BatchOptions batch_options;
    batch_options.program = TARVANE_VERSION;
    batch_options.jobs = std::max(1u, std::thread::hardware_concurrency());
    CLI::App* batch_command = app.add_subcommand(
        "batch", "Calculate many input files, each in a process that it can't take others with");
    batch_command->add_option("path", batch_options.paths, "Input files, and folders with *.toml")
        ->type_name("FILE")
        ->required();
    batch_command->add_option("--out", batch_options.out, "Folder of the results, a new one")
        ->type_name("FOLDER")
        ->required();
    constexpr unsigned MOST_JOBS = 1024;
    batch_command
        ->add_option("--jobs,-j", batch_options.jobs, "Processes side by side; else one a core")
        ->check(CLI::Range(1u, MOST_JOBS));
    batch_command->add_flag(
        "--resume", batch_options.resume,
        "Go on with the batch in the folder: only what is not done, has failed or differs");
    batch_command->add_flag("--html", batch_options.ways.html, "A page for each item, too");
    batch_command->add_flag("--quiet,-q", batch_options.quiet, "No progress and no table");
    batch_command->add_option("--data", batch_options.ways.data, "Folder of the data files")
        ->type_name("FOLDER");
    batch_command->add_flag("--strict", batch_options.ways.strict, STRICT);
#ifndef _WIN32
    batch_command->add_option("--connections", batch_options.connections)
        ->delimiter(',')
        ->group("");
#endif
    const CLI::App* worker_command = app.add_subcommand(WORKER_COMMAND)->group("");
    const CLI::App* relay_command = app.add_subcommand(RELAY_COMMAND)->group("");

    CompareOptions compare;
    CLI::App* compare_command =
        app.add_subcommand("compare", "Show what differs between two calculations");
    compare_command->add_option("first", compare.first, "Input file (TOML), or result (JSON)")
        ->type_name("FILE")
        ->required();
    compare_command->add_option("second", compare.second, "The other one")
        ->type_name("FILE")
        ->required();
    compare_command
        ->add_option("--tolerance", compare.tolerance,
                     "Percent by which results may differ; else 0")
        ->check(CLI::Range(0.0, 1.0e6));
    compare_command->add_option("--html", compare.html, "Write the comparison as a page (HTML)")
        ->type_name("FILE");
    compare_command->add_option("--json", compare.json, "Write it for programs (JSON)")
        ->type_name("FILE");
    compare_command->add_option("--data", compare.data, "Folder of the data files")
        ->type_name("FOLDER");

    std::string serve_file, serve_data;
    std::uint16_t serve_port = 0;
    bool no_browser = false;
    CLI::App* serve_command =
        app.add_subcommand("serve", "Design in a browser: a page on this computer");
    serve_command->add_option("file", serve_file, "Input file (TOML) to open; its folder is served")
        ->type_name("FILE");
    serve_command->add_option("--port", serve_port, "Port of 127.0.0.1; else one that is free")
        ->check(CLI::Range(1, 65535));
    serve_command->add_flag("--no-browser", no_browser, "Open no browser");
    serve_command->add_option("--data", serve_data, "Folder of the data files")
        ->type_name("FOLDER");

    MaterialsOptions materials;
    std::string materials_code = "VIII-1", materials_units = "us";
    CLI::App* materials_command =
        app.add_subcommand("materials", "List the materials of the data files");
    materials_command->add_option("name", materials.name, "Material, or how its name begins");
    materials_command->add_option("--code", materials_code, "VIII-1 or VIII-2")
        ->check(CLI::IsMember({"VIII-1", "VIII-2"}, CLI::ignore_case));
    materials_command->add_flag("--metric", materials.selection.metric, "The metric files");
    int materials_class = 1;
    materials_command->add_option("--class", materials_class, "Class of VIII-2: 1 or 2")
        ->check(CLI::IsMember({1, 2}));
    materials_command->add_option("--year", materials.selection.year, "Edition of the files");
    materials_command->add_option("--units", materials_units, "us or si")->check(UNITS);
    materials_command->add_option("--data", materials.data, "Folder of the data files")
        ->type_name("FOLDER");

    ChartOptions chart;
    std::string chart_units = "us";
    float factor = 0.0f;
    CLI::App* chart_command = app.add_subcommand("chart", "Show an external pressure chart");
    chart_command->add_option("name", chart.name, "Chart, CS-2 for example; without one, a list");
    CLI::Option* chart_temperature = chart_command->add_option(
        "--temperature,-T", chart.temperature, "Temperature, in the units");
    chart_command->add_option("--yield", chart.yield, "Yield stress, for charts that depend on it");
    CLI::Option* factor_option = chart_command->add_option("--A", factor, "Factor A to mark");
    chart_command->add_option("--svg", chart.svg, "Draw the chart into this file")
        ->type_name("FILE");
    chart_command->add_option("--units", chart_units, "us or si")->check(UNITS);
    chart_command->add_option("--data", chart.data, "Folder of the data files")
        ->type_name("FOLDER");
    MdmtOptions mdmt;
    std::array<std::string, std::size(MDMT_OPTIONS)> mdmt_values;
    bool pwht = false, normalized = false, no_ug20f = false;
    CLI::App* mdmt_command =
        app.add_subcommand("mdmt", "Minimum design metal temperature of a thickness");
    for (std::size_t i = 0; i < mdmt_values.size(); ++i)
        mdmt_command->add_option(MDMT_OPTIONS[i].option, mdmt_values[i], MDMT_OPTIONS[i].help)
            ->check(MDMT_OPTIONS[i].text ? CLI::Validator() : CLI::Validator(CLI::Number));
    mdmt_command->add_flag("--pwht", pwht, "Heat treated, with the credit of UCS-68(c)");
    mdmt_command->add_flag("--normalized", normalized, "Curve of the normalized material");
    mdmt_command->add_flag("--no-ug20f", no_ug20f, "No exemption by UG-20(f)");
    std::string mdmt_units = "us";
    mdmt_command->add_option("--units", mdmt_units, "us or si")->check(UNITS);
    mdmt_command->add_option("--data", mdmt.data, "Folder of the data files")->type_name("FOLDER");

    FlangesOptions flanges;
    std::string flange_units = "us";
    float wall = 0.0f;
    CLI::App* flanges_command =
        app.add_subcommand("flanges", "List standard flanges, or show the dimensions of one");
    flanges_command->add_option("class", flanges.name, "150 to 2500, PN16");
    flanges_command->add_option("size", flanges.size, "Nominal size, NPS or DN");
    CLI::Option* wall_option = flanges_command->add_option(
        "--wall", wall, "Wall of the pipe at a weld neck, in the units; else standard pipe");
    flanges_command->add_flag("--blind", flanges.blind, "The blind flange");
    flanges_command->add_flag("--slip-on", flanges.slip_on, "The slip on flange");
    flanges_command->add_option("--units", flange_units, "us or si")->check(UNITS);
    flanges_command->add_option("--data", flanges.data, "Folder of the data files")
        ->type_name("FOLDER");

    BoltsOptions bolts;
    CLI::App* bolts_command =
        app.add_subcommand("bolts", "List the thread series of bolts, or the sizes of one");
    bolts_command->add_option("series", bolts.series, "TEMA, UNC, TEMA metric, BS 3643");
    bolts_command->add_option("--data", bolts.data, "Folder of the data files")
        ->type_name("FOLDER");

    std::string gasket;
    CLI::App* gaskets_command =
        app.add_subcommand("gaskets", "List the gaskets of the gasket table with m and y");
    gaskets_command->add_option("name", gasket, "Words of their names: spiral");

    DataOptions data_options;
    data_options.version = TARVANE_VERSION;
    DataImportOptions data_import;
    CLI::App* data_command = app.add_subcommand("data", "Data files from your own tables");
    data_command->require_subcommand(1);
    CLI::App* data_check = data_command->add_subcommand("check", "Check a folder of tables");
    CLI::App* data_build =
        data_command->add_subcommand("build", "Make data files from a folder of tables");
    for (CLI::App* each : {data_check, data_build}) {
        each->add_option("folder", data_options.folder, "Folder of the tables")
            ->type_name("FOLDER")
            ->required();
        each->add_option("--tolerance", data_options.tolerance,
                         "Percent by which a chart may miss its points; else 1")
            ->check(CLI::Range(0.0, 100.0));
    }
    data_build->add_option("out", data_options.out, "Folder of the data files")
        ->type_name("FOLDER")
        ->required();
    CLI::App* data_import_command = data_command->add_subcommand(
        "import", "Take a table with a row for each material, or for each point of a chart");
    data_import_command->add_option("table", data_import.table, "Table (CSV)")
        ->type_name("FILE")
        ->required();
    data_import_command->add_option("folder", data_import.folder, "Folder of the tables")
        ->type_name("FOLDER")
        ->required();
    data_import_command->add_option("--edition", data_import.edition, "Where the figures are from")
        ->required();
    data_import_command
        ->add_option("--stress", data_import.stress,
                     "ksi or MPa, of a chart also psi; else ksi, of a chart psi")
        ->check(CLI::IsMember({"ksi", "MPa", "psi"}, CLI::ignore_case));
    data_import_command->add_option("--temperature", data_import.temperature, "F or C")
        ->check(CLI::IsMember({"F", "C"}, CLI::ignore_case));
    data_import_command
        ->add_option("--as", data_import.figures,
                     "VIII-1, VIII-2-1 and VIII-2-2 (its classes), yield, or chart")
        ->check(
            CLI::IsMember({"VIII-1", "VIII-2-1", "VIII-2-2", "yield", "chart"}, CLI::ignore_case));

    std::string keys_table;
    CLI::App* keys_command = app.add_subcommand("keys", "List the keys of an input file");
    keys_command->add_option("table", keys_table, "of one table: flange, vessel, document")
        ->check(CLI::IsMember(tarvane::vessel::key_tables()));

    std::string explained;
    CLI::App* explain_command =
        app.add_subcommand("explain", "Explain a key, a result or a check of an input file");
    explain_command->add_option("name", explained, "t, flange.t, flange[0].t")->required();

    std::string schema = "input";
    CLI::App* schema_command = app.add_subcommand(
        "schema", "Write the JSON Schema of an input file, for editors, or of a result");
    schema_command->add_option("name", schema, "input, result, or keys: the tables of keys")
        ->check(CLI::IsMember({"input", "result", "keys"}));

    CheckOptions check;
    CLI::App* check_command =
        app.add_subcommand("check", "Find the faults of an input file, without a calculation");
    check_command->add_option("file", check.input, "Input file (TOML)")
        ->type_name("FILE")
        ->required();
    check_command->add_option("--data", check.data, "Folder of the data files")
        ->type_name("FOLDER");
    check_command->add_flag("--strict", check.strict, STRICT);

    NewFileOptions new_options;
    std::string new_units = "us";
    CLI::App* new_command = app.add_subcommand("new", "Write an input file to start from");
    new_command->add_option("name", new_options.name, "flange, heads or drum")
        ->required()
        ->check(CLI::IsMember(
            std::vector<std::string>(new_file_names().begin(), new_file_names().end())));
    new_command->add_option("--units", new_units, "us or si")->check(UNITS);
    new_command
        ->add_option("--output,-o", new_options.output,
                     "Write to this file, which must not exist yet")
        ->type_name("FILE");

    const std::vector<std::string> words(argv + std::min(argc, 1), argv + argc);
    if (!words.empty() && words[0] == COMPLETE_COMMAND) {
        complete(command_tree(app), {words.begin() + 1, words.end()}, out);
        return 0;
    }
    if (words.size() == 2 && words[0] == MAN_PAGE_COMMAND) {
        write_man_page(command_tree(app), TARVANE_VERSION, words[1], out);
        return 0;
    }
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error, out, std::cerr) == 0 ? 0 : static_cast<int>(Status::bad_input);
    }
    if (worker_command->parsed()) return serve_as_worker();
    if (relay_command->parsed()) return serve_as_relay(TARVANE_VERSION);
    if (batch_command->parsed()) return batch(batch_options, out, std::cerr);
    if (compare_command->parsed()) return static_cast<int>(compare_files(compare, out, std::cerr));
    if (serve_command->parsed()) {
#ifdef TARVANE_SERVE
        return static_cast<int>(serve(
            {.file = serve_file, .port = serve_port, .browser = !no_browser, .data = serve_data},
            out, std::cerr));
#else
        std::cerr << "tarvane: this program has no `serve`: it was built without libmicrohttpd\n";
        return static_cast<int>(Status::bad_input);
#endif
    }
    if (keys_command->parsed()) return static_cast<int>(list_keys(keys_table, out));
    if (data_check->parsed()) return static_cast<int>(check_data(data_options, out, std::cerr));
    if (data_build->parsed()) return static_cast<int>(build_data(data_options, out, std::cerr));
    if (data_import_command->parsed())
        return static_cast<int>(import_data(data_import, out, std::cerr));
    if (explain_command->parsed()) return static_cast<int>(explain_name(explained, out, std::cerr));
    if (schema_command->parsed()) return static_cast<int>(write_schema(schema, out));
    if (check_command->parsed()) return static_cast<int>(check_file(check, out, std::cerr));
    if (new_command->parsed()) {
        new_options.si = folded(new_units) == "si";
        return static_cast<int>(write_new_file(new_options, out, std::cerr));
    }
    if (materials_command->parsed()) {
        materials.selection.code = folded(materials_code) == "viii2" ? 2 : 1;
        materials.selection.d2_class = materials_class - 1; // 0: class 1
        materials.units = units_named(materials_units);
        return static_cast<int>(list_materials(materials, out, std::cerr));
    }
    if (flanges_command->parsed()) {
        if (wall_option->count() > 0) flanges.wall = wall;
        flanges.units = units_named(flange_units);
        return static_cast<int>(list_flanges(flanges, out, std::cerr));
    }
    if (bolts_command->parsed()) return static_cast<int>(list_bolts(bolts, out, std::cerr));
    if (gaskets_command->parsed()) return static_cast<int>(list_gaskets(gasket, out, std::cerr));
    if (chart_command->parsed()) {
        if (factor_option->count() > 0) chart.A = factor;
        chart.temperature_given = chart_temperature->count() > 0;
        chart.units = units_named(chart_units);
        return static_cast<int>(show_chart(chart, out, std::cerr));
    }
    if (mdmt_command->parsed()) {
        // A design temperature that is not given is low enough for UG-20(f).
        if (mdmt_values[MDMT_TEMPERATURE].empty()) mdmt_values[MDMT_TEMPERATURE] = "0";
        for (std::size_t i = 0; i < mdmt_values.size(); ++i) {
            if (mdmt_values[i].empty()) continue;
            const auto& [option, key, help, text] = MDMT_OPTIONS[i];
            mdmt.keys.emplace_back(key, text ? tarvane::vessel::in_quotes(mdmt_values[i])
                                             : plain_number(mdmt_values[i]));
        }
        const auto flag = [&](const char* key, bool on) {
            if (on) mdmt.keys.emplace_back(key, "true");
        };
        flag("pwht", pwht);
        flag("credit", pwht);
        flag("normalized", normalized);
        flag("ug20f", !no_ug20f);
        mdmt.units = units_named(mdmt_units).name;
        return static_cast<int>(show_mdmt(mdmt, out, std::cerr));
    }
    options.detail = folded(detail) == "summary"  ? Detail::summary
                     : folded(detail) == "checks" ? Detail::checks
                                                  : Detail::full;
    options.colour = !plain && (colour == "always" || (colour == "auto" && output_on_terminal()));
    return static_cast<int>(run(options, out, std::cerr));
}

} // namespace

int main(int argc, char** argv) {
    tarvane::app::prepare_standard_streams();
    tarvane::app::StandardOutput output;
    int status = static_cast<int>(tarvane::vessel::Status::bad_input);
    try {
        status = command(argc, argv, output.stream());
    } catch (const std::exception& problem) {
        std::fprintf(stderr, "tarvane: %s\n", problem.what());
    }
    return output.finish(status);
}
