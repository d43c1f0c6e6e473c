#include "batch/worker.h"

#include "batch/batch.h"
#include "catalogue/data_folder.h"
#include "commands/run_output.h"
#include "components/calculation.h"
#include "document/html.h"
#include "document/vessel_verdict.h"
#include "input/input_file.h"
#include "surface/result_json.h"
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

void calculate_into(Answer& answer, const Input& input, const Ways& ways) {
    Row& row = answer.row;
    const ReadResult read = read_input(input.text, element_kinds(), ways.strict);
    if (!read.faults.empty()) {
        put_faults(read.faults, row);
        return;
    }
    const Request& request = read.request;
    const Calculation c = calculate(request);
    row.exit = c.status;
    row.status = c.status >= Status::stopped     ? STOPPED
                 : c.status >= Status::bad_input ? FAULTY
                                                 : OK;
    put_reasons(c, row);
    if (!c.complete) return;
    put_verdict(request, c, row);
    const DocumentFacts facts = facts_of(input.file, input.text);
    answer.files = {{"txt", text_of(request, c)}, {"json", run_json(request, c, facts)}};
    if (ways.html)
        answer.files.emplace_back("html", html_of(make_document(request, c, facts, Detail::full)));
}

Answer answer_to(const Input& input, const Ways& ways) {
    Answer answer;
    const auto fail = [&](std::string_view status, Status exit, std::string reason) {
        answer.row = Row::without_result(status, exit, std::move(reason));
        answer.files.clear();
    };
    try {
        calculate_into(answer, input, ways);
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
    if (!parent.send(json_of(answer.row))) return false;
    for (const auto& [extension, bytes] : answer.files)
        if (!parent.send(extension) || !parent.send(bytes)) return false;
    return parent.send({}); // no further file
}

constexpr std::string_view YES = "yes", NO = "no";

bool send(Channel& process, const Ways& ways) {
    return process.send(ways.key) && process.send(ways.data) &&
           process.send(ways.strict ? YES : NO) && process.send(ways.html ? YES : NO);
}

std::optional<Ways> receive_ways(const ParentProcess& parent) {
    const auto key = parent.receive(), data = parent.receive(), strict = parent.receive(),
               html = parent.receive();
    if (!key || !data || !strict || !html) return std::nullopt;
    return Ways{.key = *key, .data = *data, .strict = *strict == YES, .html = *html == YES};
}

std::optional<Input> receive_input(const ParentProcess& parent) {
    std::optional<std::string> file = parent.receive(), text = file ? parent.receive() : file;
    if (!text) return std::nullopt;
    return Input{std::move(*file), std::move(*text)};
}

// Of a relay from the batch; nothing: its results are the same.
std::string difference_of(const Ways& ways, const std::string& program) {
    try {
        set_data_folder(ways.data, "--data");
        const Conditions here = conditions_of(program, ways);
        if (here.key({}) == ways.key) return {};
        return "its program (version " + program + " here) or its data files (" +
               data_folder().path + ", version " + here.data_version +
               ") are others than those of the batch";
    } catch (const std::exception& problem) {
        return problem.what();
    }
}

} // namespace

int serve_as_worker() {
    const ParentProcess parent;
    const std::optional<Ways> ways = receive_ways(parent);
    if (!ways) return static_cast<int>(Status::bad_input);
    set_data_folder(ways->data, "--data");
    while (const std::optional<Input> input = receive_input(parent))
        if (!send(parent, answer_to(*input, *ways))) break;
    return 0;
}

int serve_as_relay(const std::string& program) {
    const ParentProcess parent;
    const std::optional<Ways> ways = receive_ways(parent);
    if (!ways) return static_cast<int>(Status::bad_input);
    const std::string difference = difference_of(*ways, program);
    if (!parent.send(difference) || !difference.empty()) return static_cast<int>(Status::bad_input);
    Worker worker(*ways);
    while (const std::optional<Input> input = receive_input(parent))
        if (!send(parent, worker.calculate(*input))) break;
    return 0;
}

// ---- in the process of the batch ---------------------------------------------------------------------------

namespace {

Answer died(std::string reason) {
    return {.row = Row::without_result(DIED, Status::stopped, std::move(reason)), .files = {}};
}

} // namespace

void Worker::start() {
    if (process) return;
    std::unique_ptr<Channel> started;
#ifndef _WIN32
    if (connection) started = std::make_unique<Connection>(*connection);
#endif
    if (!started) started = std::make_unique<ChildProcess>(WORKER_COMMAND);
    // One that has ended already is found by the first item.
    static_cast<void>(send(*started, ways));
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
    killed = true;
    if (process) process->kill();
}

std::optional<Answer> Worker::ask(const Input& input) {
    if (!process->send(input.file) || !process->send(input.text)) return std::nullopt;
    const std::optional<std::string> row = process->receive();
    if (!row) return std::nullopt;
    if (row->empty()) { // of a connection: its other side has found no process for it
        const std::optional<std::string> reason = process->receive();
        if (!reason) return std::nullopt;
        return died(printable(*reason));
    }
    Faults faults;
    const std::optional<Value> object = read_json(*row, faults);
    if (!object || object->table() == nullptr) return std::nullopt;
    Answer answer{.row = row_of(*object->table()), .files = {}};
    for (;;) {
        std::optional<std::string> extension = process->receive();
        if (!extension) return std::nullopt;
        if (extension->empty()) return answer;
        std::optional<std::string> bytes = process->receive();
        if (!bytes) return std::nullopt;
        answer.files.emplace_back(std::move(*extension), std::move(*bytes));
    }
}

Answer Worker::calculate(const Input& input) {
    start();
    std::optional<Answer> answer = ask(input);
    if (!answer && connection && !killed)
        throw std::runtime_error("the process that calculates the items has ended");
    if (!answer) return died(stop());
    // An engine that has stopped is not used again, nor a process that lacked memory.
    if (answer->row.exit == Status::stopped && !connection) stop();
    return std::move(*answer);
}

} // namespace tarvane::app
