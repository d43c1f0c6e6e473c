#include "batch/worker.h"

#include "catalogue/data_folder.h"
#include "commands/run_output.h"
#include "components/calculation.h"
#include "document/html.h"
#include "document/vessel_verdict.h"
#include "input/input_file.h"
#include "input/toml_limits.h"
#include "surface/result_json.h"
#include "values/bounded_file.h"
#include "values/sha256.h"
#include "values/text.h"

#include <algorithm>
#include <new>
#include <stdexcept>

namespace tarvane::app {

namespace {

// ---- in the process of the worker --------------------------------------------------------------------------

void add_reason(std::string_view words, std::string& reason) {
    if (!words.empty()) reason.append(reason.empty() ? "" : "; ").append(words);
}

void put_faults(Faults faults, Row& row) {
    constexpr std::size_t MOST = 20;
    const Fault first = faults.front();
    const std::size_t more = faults.size() - 1;
    row.status = FAULTY;
    row.exit = Status::bad_input;
    row.reason = first.line > 0 ? "line " + std::to_string(first.line) + ": " : "";
    row.reason += first.key.empty() ? "" : first.key + ": ";
    row.reason = printable(row.reason + first.message);
    if (more > 0) row.reason += "; and " + std::to_string(more) + " more";
    faults.resize(std::min(faults.size(), MOST));
    Faults none;
    row.faults = *read_json(faults_json(faults), none);
}

void put_verdict(const Request& request, const Calculation& c, Row& row) {
    const VesselVerdict verdict = vessel_verdict(request, c);
    row.units = request.units.name;
    row.verdict = verdict.verdict;
    row.says = verdict.words;
    if (!verdict.governing) return;
    row.component = path_of(*verdict.governing->element);
    row.check = verdict.governing->check.field().id;
    row.ratio = verdict.governing->check.ratio();
}

std::string text_of(const Request& request, const Calculation& c) {
    std::string text;
    for (const Calculated& component : c.calculated)
        text += component_text(component, request.units, false);
    return text + closing_text(request, c, false);
}

// Of a calculation that doesn't count: every component says why for itself.
void put_reasons(const Calculation& c, Row& row) {
    for (const Verdict& verdict : c.verdicts) {
        if (verdict.status < Status::bad_input) continue;
        for (const std::string& reason : verdict.reasons)
            add_reason(reason, row.reason);
    }
    for (const std::string& problem : c.problems)
        add_reason(problem, row.reason);
}

void calculate_into(Answer& answer, const std::string& path, const Ways& ways) {
    Row& row = answer.row;
    const std::string text = read_regular(path, LARGEST_INPUT);
    answer.input_sha256 = sha256(text);
    const ReadResult input = read_input(text, element_kinds(), ways.strict);
    if (!input.faults.empty()) {
        put_faults(input.faults, row);
        return;
    }
    const Request& request = input.request;
    const Calculation c = calculate(request);
    row.exit = c.status;
    row.status = c.status >= Status::stopped     ? STOPPED
                 : c.status >= Status::bad_input ? FAULTY
                                                 : OK;
    put_reasons(c, row);
    if (!c.complete) return;
    put_verdict(request, c, row);
    const DocumentFacts facts = facts_of(path, text);
    answer.files = {{"txt", text_of(request, c)}, {"json", run_json(request, c, facts)}};
    if (ways.html)
        answer.files.emplace_back("html", html_of(make_document(request, c, facts, Detail::full)));
}

Answer answer_to(const std::string& path, const Ways& ways) {
    Answer answer;
    const auto fail = [&](std::string_view status, Status exit, std::string reason) {
        answer.row = Row::without_result(status, exit, std::move(reason));
        answer.files.clear();
    };
    try {
        calculate_into(answer, path, ways);
    } catch (const std::bad_alloc&) {
        fail(DIED, Status::stopped, "out of memory");
    } catch (const std::exception& problem) {
        fail(FAULTY, Status::bad_input, printable(problem.what()));
    }
    return answer;
}

std::string json_of(const Row& row) {
    JsonWriter json;
    json.begin_object();
    write_row(row, json);
    return json.end_object().take();
}

bool send(const ParentProcess& parent, const Answer& answer) {
    if (!parent.send(json_of(answer.row)) || !parent.send(answer.input_sha256)) return false;
    for (const auto& [extension, bytes] : answer.files)
        if (!parent.send(extension) || !parent.send(bytes)) return false;
    return parent.send({}); // no further file
}

constexpr std::string_view YES = "yes", NO = "no";

} // namespace

int serve_as_worker() {
    const ParentProcess parent;
    Ways ways;
    const auto data = parent.receive(), strict = parent.receive(), html = parent.receive();
    if (!data || !strict || !html) return static_cast<int>(Status::bad_input);
    ways = {.data = *data, .strict = *strict == YES, .html = *html == YES};
    set_data_folder(ways.data, "--data");
    while (const std::optional<std::string> path = parent.receive())
        if (!send(parent, answer_to(*path, ways))) break;
    return 0;
}

// ---- in the process of the batch ---------------------------------------------------------------------------

void Worker::start() {
    if (process) return;
    auto started = std::make_unique<ChildProcess>(WORKER_COMMAND);
    // One that has ended already is found by the first item.
    static_cast<void>(started->send(ways.data) && started->send(ways.strict ? YES : NO) &&
                      started->send(ways.html ? YES : NO));
    const std::lock_guard lock(changing);
    process = std::move(started);
}

std::string Worker::stop() {
    std::string how = process->end();
    const std::lock_guard lock(changing);
    process.reset();
    return how;
}

void Worker::kill() {
    const std::lock_guard lock(changing);
    if (process) process->kill();
}

std::optional<Answer> Worker::ask(const std::filesystem::path& path) {
    if (!process->send(path.string())) return std::nullopt;
    const auto row = process->receive();
    const auto sha = row ? process->receive() : std::nullopt;
    if (!sha) return std::nullopt;
    Faults faults;
    const std::optional<Value> object = read_json(*row, faults);
    if (!object || object->table() == nullptr) return std::nullopt;
    Answer answer{.row = row_of(*object->table()), .input_sha256 = *sha, .files = {}};
    for (;;) {
        std::optional<std::string> extension = process->receive();
        if (!extension) return std::nullopt;
        if (extension->empty()) return answer;
        std::optional<std::string> bytes = process->receive();
        if (!bytes) return std::nullopt;
        answer.files.emplace_back(std::move(*extension), std::move(*bytes));
    }
}

Answer Worker::calculate(const std::filesystem::path& path) {
    start();
    std::optional<Answer> answer = ask(path);
    if (!answer)
        return {.row = Row::without_result(DIED, Status::stopped, stop()),
                .input_sha256 = {},
                .files = {}};
    // An engine that has stopped is not used again, nor a process that lacked memory.
    if (answer->row.exit == Status::stopped) stop();
    return std::move(*answer);
}

} // namespace tarvane::app
