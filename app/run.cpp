#include "run.h"

#include "report_view.h"
#include "text.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <memory>
#include <ostream>
#include <random>
#include <sstream>
#include <stdexcept>

namespace tarvane::app {

namespace {

std::string read_whole(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream bytes;
    if (!file || std::filesystem::is_directory(path))
        throw std::runtime_error("cannot read " + path);
    if (file.peek() != std::ifstream::traits_type::eof() && !(bytes << file.rdbuf()))
        throw std::runtime_error("cannot read " + path);
    return bytes.str();
}

std::string name_of(const FlangeInput& flange, std::size_t number) {
    std::string name = "flange " + std::to_string(number);
    if (!flange.description().empty()) name += " (" + to_utf8(flange.description()) + ')';
    return name;
}

Status run_file(const RunOptions& options, std::ostream& out, std::ostream& err) {
    const ReadResult input = read_input(read_whole(options.input));
    for (const Fault& fault : input.faults)
        err << fault_line(options.input, fault) << '\n';
    if (!input.faults.empty()) return Status::bad_input;
    if (!options.data.empty()) set_data_folder(options.data);

    const InputFile& file = input.file;
    std::vector<std::unique_ptr<FlangeOutcome>> outcomes;
    std::vector<FlangeResult> results;
    std::string reports;
    Status status = Status::fine;
    for (std::size_t i = 0; i < file.flanges.size(); ++i) {
        const FlangeInput& flange = file.flanges[i];
        outcomes.push_back(
            std::make_unique<FlangeOutcome>(run_flange(file, static_cast<int>(i) + 1)));
        const FlangeOutcome& outcome = *outcomes.back();
        out << show_report(outcome.report, options.colour) << std::flush;
        const std::string name = name_of(flange, i + 1);
        for (const std::string& message : outcome.messages)
            err << name << ": " << to_utf8(message) << '\n';
        const Verdict verdict = judge(flange, outcome, file.units);
        for (const std::string& reason : verdict.reasons)
            err << name << ": " << reason << '\n';
        status = std::max(status, verdict.status);
        if (verdict.status == Status::stopped) return status;
        reports += outcome.report;
        results.push_back({&flange, &outcome});
    }
    if (!options.report.empty()) write_whole(options.report, reports);
    out << results_table(results, file.units) << design_table(results, file.units) << std::flush;
    return status;
}

} // namespace

Status run(const RunOptions& options, std::ostream& out, std::ostream& err) {
    try {
        return run_file(options, out, err);
    } catch (const std::exception& problem) {
        err << "tarvane: " << problem.what() << '\n';
        return Status::bad_input;
    }
}

void write_whole(const std::string& path, std::string_view bytes) {
    namespace fs = std::filesystem;
    std::random_device random;
    const fs::path target(path);
    fs::path partial = target;
    partial += ".partial-" + std::to_string(random());
    std::error_code failure;
    {
        std::ofstream file(partial, std::ios::binary);
        file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        file.close();
        if (!file) failure = std::make_error_code(std::errc::io_error);
    }
    if (!failure) fs::rename(partial, target, failure);
    if (failure) {
        std::error_code ignored;
        fs::remove(partial, ignored);
        throw std::runtime_error("cannot write " + path);
    }
}

std::string key_table() {
    const UnitSystem us = us_units(), si = si_units();
    std::string table = "Keys of a [[flange]]; at the head of a file they hold for every flange "
                        "without its own.\n\n";
    for (const Key& key : all_keys()) {
        std::string unit;
        switch (key.quantity) {
        case Quantity::flag:
            unit = "true, false";
            break;
        case Quantity::text:
            unit = "text, " + std::to_string(key.width);
            break;
        case Quantity::whole:
            unit = "whole number";
            break;
        case Quantity::choice:
            unit = "name, number";
            break;
        default:
            unit = to_utf8(us.label(key.quantity));
            if (us.label(key.quantity) != si.label(key.quantity))
                unit += ", " + to_utf8(si.label(key.quantity));
        }
        const auto columns = [](const std::string& utf8) {
            return static_cast<std::size_t>(std::count_if(utf8.begin(), utf8.end(), [](char c) {
                return (static_cast<unsigned char>(c) & 0xC0u) != 0x80u;
            }));
        };
        std::string line(key.name);
        line.resize(std::max<std::size_t>(line.size() + 1, 20), ' ');
        line += unit + std::string(columns(unit) < 18 ? 18 - columns(unit) : 1, ' ');
        line += std::string(key.meaning);
        table += line + '\n';
        if (!key.choices.empty()) table += std::string(38, ' ') + choice_names(key.choices) + '\n';
    }
    table += "\nKeys of the file: units = \"US\", \"SI\" or a [units] table; decimal_comma; "
             "metric_constants.\n";
    return table;
}

} // namespace tarvane::app
