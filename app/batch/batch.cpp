#include "batch/batch.h"

#include "batch/batch_folder.h"
#include "batch/interrupts.h"
#include "batch/items.h"
#include "batch/journal.h"
#include "batch/pool.h"
#include "batch/progress.h"
#include "batch/summary.h"
#include "catalogue/data_folder.h"
#include "catalogue/data_search.h"
#include "input/toml_limits.h"
#include "surface/result_json.h"
#include "terminal/standard_output.h"
#include "values/bounded_file.h"
#include "values/sha256.h"

#include <algorithm>
#include <mutex>
#include <ostream>
#include <set>
#include <stdexcept>

namespace tarvane::app {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t ROWS_ON_TERMINAL = 40;

// Names and contents of the data files.
std::string data_sha256() {
    std::vector<std::string> files = data_files();
    std::sort(files.begin(), files.end());
    std::string all;
    for (const std::string& file : files)
        all += path_of(file).filename().string() + ' ' +
               sha256(read_regular(file, LARGEST_DATA_FILE)) + '\n';
    return sha256(all);
}

// Of the content that a file has now; empty where it can't be read.
std::string input_sha256(const fs::path& path) {
    try {
        return sha256(read_regular(path.string(), LARGEST_INPUT));
    } catch (const std::runtime_error&) {
        return {};
    }
}

class Batch {
  public:
    Batch(const BatchOptions& of, Items in, std::ostream& to, std::ostream& messages)
        : options(of), inputs(std::move(in)), out(to), err(messages),
          conditions(conditions_of(of.program, of.ways)),
          folder(path_of(of.out), inputs.base, of.resume), journal(folder.path()) {}

    int run() {
        plan();
        calculate();
        if (interrupts.count() > 1) {
            tell("stopped");
            return interrupts.status();
        }
        journal.gather();
        return conclude();
    }

  private:
    const BatchOptions& options;
    const Items inputs;
    std::ostream &out, &err;
    const Conditions conditions;
    const Interrupts interrupts;
    BatchFolder folder;
    Journal journal;
    std::set<std::string> listed; // items whose rows count
    std::vector<Item> to_do;
    std::size_t left_out = 0; // of earlier runs, under other conditions
    std::mutex counting;
    Tally tally;

    // The result is that of the file as it is now.
    bool holds(const Entry& entry, const fs::path& file) const {
        const std::string sha = input_sha256(file);
        return entry.key == conditions.key(sha) && folder.has_results(entry);
    }

    void plan() {
        for (const Item& item : inputs.items) {
            listed.insert(item.name);
            const auto known = journal.entries().find(item.name);
            if (known != journal.entries().end()) {
                const Entry& entry = known->second;
                if (entry.row.file != item.file)
                    throw std::runtime_error(entry.row.file + " and " + item.file +
                                             " would write the same results");
                if (entry.row.calculated() && holds(entry, item.path)) continue;
                journal.forget(item.name);
            }
            to_do.push_back(item);
        }
        for (const auto& [name, entry] : journal.entries()) {
            if (listed.contains(name)) continue;
            if (holds(entry, inputs.base / path_of(entry.row.file)))
                listed.insert(name);
            else
                ++left_out;
        }
        journal.gather();
        if (to_do.empty()) return;
        folder.remove_summary();
        for (const Item& item : to_do)
            folder.remove_results(item.name);
    }

    // Those that count, by their names.
    std::vector<Row> rows() const {
        std::vector<Row> counting_rows;
        for (const std::string& name : listed) {
            const auto known = journal.entries().find(name);
            if (known != journal.entries().end()) counting_rows.push_back(known->second.row);
        }
        return counting_rows;
    }

    void count(const Row& row) {
        const std::lock_guard lock(counting);
        ++tally.done;
        if (!row.calculated())
            ++tally.not_calculated;
        else if (row.exit != Status::fine)
            ++tally.failing;
    }

    void take(const Item& item, const std::string& sha, Answer answer, double seconds) {
        Entry entry{.row = std::move(answer.row), .key = {}, .files = {}, .seconds = seconds};
        entry.key = conditions.key(sha);
        try {
            entry.files = folder.write_results(item.name, answer.files);
        } catch (const std::exception& problem) {
            folder.remove_results(item.name);
            entry.row = Row::without_result(FAULTY, Status::bad_input, problem.what());
        }
        entry.row.item = item.name;
        entry.row.file = item.file;
        journal.note(entry);
        count(entry.row);
    }

    Ways ways() const {
        Ways with_key = options.ways;
        with_key.key = conditions.key({});
        return with_key;
    }

    void calculate() {
        tally = tally_of(rows());
        tally.all = listed.size();
        Progress progress(err, options.quiet          ? Progress::Form::none
                               : errors_on_terminal() ? Progress::Form::bar
                                                      : Progress::Form::lines);
        const auto now = [this] {
            const std::lock_guard lock(counting);
            return tally;
        };
        if (!to_do.empty())
            run_pool(
                {.items = to_do,
                 .workers = options.jobs,
                 .connections = options.connections,
                 .ways = ways(),
                 .done = [this](const Item& item, const std::string& sha, Answer answer,
                                double seconds) { take(item, sha, std::move(answer), seconds); },
                 .stop = [this] { return interrupts.count(); },
                 .look = [&] { progress.show(now()); }});
        progress.end(now());
    }

    // Beside the summary, and to be seen also where nothing else is written.
    void tell(const std::string& how) const {
        err << "tarvane: " << how << " with " << tally.done << " of " << tally.all
            << " items done; --resume goes on\n";
    }

    int conclude() {
        const std::vector<Row> all = rows();
        const std::size_t missing = listed.size() - all.size();
        folder.write_summary(summary_csv(all), summary_json(all, conditions, missing));
        if (!options.quiet) {
            out << summary_table(all, output_on_terminal() ? ROWS_ON_TERMINAL : 0);
            if (left_out > 0)
                out << left_out
                    << " of earlier calls left out: their input, options, data or program differ\n";
        }
        if (data_sha256() != conditions.data_sha256)
            throw std::runtime_error(
                "the data files were changed meanwhile; --resume calculates anew");
        if (interrupts.count() == 0) return static_cast<int>(worst_of(all));
        tell("interrupted");
        return interrupts.status();
    }
};

} // namespace

Conditions conditions_of(const std::string& program, const Ways& ways) {
    return {.program = program,
            .result_form = RESULT_FORM,
            .strict = ways.strict,
            .html = ways.html,
            .data_version = version_in(path_of(data_folder().path)).value_or(""),
            .data_sha256 = data_sha256()};
}

int run_batch(const BatchOptions& options, std::ostream& out, std::ostream& err) {
    set_data_folder(options.ways.data, "--data");
    const fs::path folder = path_of(options.out);
    Items items = find_items(options.paths, folder, BatchFolder::base_of(folder));
    return Batch(options, std::move(items), out, err).run();
}

} // namespace tarvane::app
