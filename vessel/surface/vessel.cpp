// The C surface: handles, their texts, and what becomes of exceptions.
#include "tarvane/vessel.h"

#include "assembly/reader.h"
#include "catalogue/data_files_check.h"
#include "catalogue/data_search.h"
#include "components/calculation.h"
#include "components/engine_session.h"
#include "surface/engine_turn.h"
#include "surface/last_error.h"
#include "surface/result_json.h"
#include "surface/schema.h"
#include "surface/sweep.h"
#include "values/bounded_file.h"
#include "values/json.h"

#include <algorithm>
#include <exception>
#include <filesystem>
#include <mutex>
#include <new>
#include <string>

using namespace tarvane::vessel;

struct TARVANE_VESSEL {
    DataFolder data_folder;   // by a full path, so that the working directory may change
    mutable std::mutex texts; // the following ones are changed and read by many threads
    std::string result, schema;
    LastError error;
};

namespace tarvane::vessel {

LastError& error_of_thread() {
    thread_local LastError error;
    return error;
}

} // namespace tarvane::vessel

namespace {

constexpr std::int32_t KNOWN_WANTS =
    TARVANE_WANT_RESULTS | TARVANE_WANT_REPORT | TARVANE_WANT_DRAWINGS;

// How a call ended.
struct Ended {
    std::int32_t status = TARVANE_OK;
    Faults faults = {};
};

Ended ended(std::int32_t status, std::string reason) {
    return {status, {{.message = std::move(reason)}}};
}

// What the work returns, or what its exception says.
template <class Work>
Ended guarded(const Work& work) {
    try {
        return work();
    } catch (const NoData& problem) {
        return ended(TARVANE_NO_DATA, problem.what());
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& problem) {
        return ended(TARVANE_INTERNAL, problem.what());
    } catch (...) {
        return ended(TARVANE_INTERNAL, "an error of an unknown kind");
    }
}

// One call with a handle: its work puts the text of the result, its end goes to the texts of the handle.
template <class Work>
std::int32_t call(TARVANE_VESSEL& vessel, const Work& work) noexcept {
    std::int32_t status = TARVANE_INTERNAL;
    try {
        const Ended end = guarded(work);
        status = end.status;
        const std::lock_guard<std::mutex> lock(vessel.texts);
        vessel.error.put(end.faults);
    } catch (...) { // no memory left, for the work or for its faults
        const std::lock_guard<std::mutex> lock(vessel.texts);
        vessel.error.last_error = NO_MEMORY;
        if (status == TARVANE_OK) status = TARVANE_INTERNAL;
    }
    return status;
}

bool is_of_data(const Fault& fault) { return is_data_file(fault.key); }

// The faults of a request that was refused.
Ended refused(Faults faults) {
    const bool data = std::all_of(faults.begin(), faults.end(), is_of_data);
    return {data ? TARVANE_NO_DATA : TARVANE_FAULTY, std::move(faults)};
}

Ended parse(const char* text, Value& into) {
    Faults faults;
    std::optional<Value> tree = read_json(text, faults);
    if (!tree) return refused(std::move(faults));
    if (tree->table() == nullptr)
        return ended(TARVANE_FAULTY, "a JSON object is expected, not " + tree->shown());
    into = std::move(*tree);
    return {};
}

Ended read(const char* text, ReadResult& into) {
    Value tree;
    Ended end = parse(text, tree);
    if (end.status != TARVANE_OK) return end;
    Outcome reading; // of what the engine is asked during the reading
    {
        const Services services(reading);
        into = read_request(*tree.table());
    }
    if (reading.stopped)
        return {TARVANE_ENGINE_STOPPED,
                {{.message = "the engine stopped as the request was read",
                  .value = std::to_string(reading.fatal_code)}}};
    return into.faults.empty() ? Ended{} : refused(std::move(into.faults));
}

// What ended a calculation before it was complete.
Ended broken_off(const Calculation& calculation) {
    if (!calculation.problems.empty()) return ended(TARVANE_INTERNAL, calculation.problems.front());
    const Calculated& last = calculation.calculated.back();
    std::string reason;
    for (const std::string& words : calculation.verdicts.back().reasons)
        reason += (reason.empty() ? "" : "; ") + words;
    return {TARVANE_ENGINE_STOPPED,
            {{.message = std::move(reason),
              .path = path_of(*last.element),
              .value = std::to_string(last.outcome->fatal_code)}}};
}

Ended calculated(const TARVANE_VESSEL& vessel, const char* text, std::int32_t want,
                 std::string& into) {
    if ((want & ~KNOWN_WANTS) != 0)
        return {TARVANE_FAULTY,
                {{.message = "TARVANE_WANT_RESULTS or other bits of its list are expected",
                  .path = "want",
                  .value = std::to_string(want)}}};
    const EngineTurn turn(vessel.data_folder);
    ReadResult input;
    Ended end = read(text, input);
    if (end.status != TARVANE_OK) return end;
    input.request.report = (want & TARVANE_WANT_REPORT) != 0;
    const Calculation calculation = calculate(input.request);
    if (!calculation.complete) return broken_off(calculation);
    into = result_json(input.request, calculation,
                       {.results = (want & TARVANE_WANT_RESULTS) != 0,
                        .report = input.request.report,
                        .drawings = (want & TARVANE_WANT_DRAWINGS) != 0});
    return end;
}

// Names up to a null pointer.
std::vector<std::string> names_of(const char* const* names) {
    std::vector<std::string> list;
    for (; *names != nullptr; ++names)
        list.emplace_back(*names);
    return list;
}

struct SweepCall {
    const char* request;
    const char *const *inputs, *const *outputs;
    std::int64_t rows;
    const double* x;
    double* y;
    std::int32_t* fault;
    TARVANE_PROGRESS progress;
    void* user;
};

Ended swept(const TARVANE_VESSEL& vessel, const SweepCall& call, std::int64_t& done) {
    if (call.request == nullptr) return ended(TARVANE_INTERNAL, "a request is expected");
    if (call.inputs == nullptr || call.outputs == nullptr)
        return ended(TARVANE_INTERNAL, "lists of inputs and outputs are expected");
    const std::vector<std::string> inputs = names_of(call.inputs), outputs = names_of(call.outputs);
    constexpr std::int64_t MOST_ROWS = std::int64_t{1} << 40;
    if (call.rows < 0 || call.rows > MOST_ROWS)
        return {TARVANE_INTERNAL,
                {{.message = "a number of rows is expected",
                  .path = "rows",
                  .value = std::to_string(call.rows)}}};
    const auto rows = static_cast<std::size_t>(call.rows);
    if ((call.x == nullptr && rows * inputs.size() > 0) ||
        (call.y == nullptr && rows * outputs.size() > 0))
        return ended(TARVANE_INTERNAL, "arrays of values are expected");

    std::optional<EngineTurn> turn(vessel.data_folder);
    Value tree;
    Ended end = parse(call.request, tree);
    if (end.status != TARVANE_OK) return end;
    SweepArrays arrays{.rows = call.rows,
                       .x = {call.x, rows * inputs.size()},
                       .y = {call.y, rows * outputs.size()},
                       .fault = {call.fault, call.fault != nullptr ? rows : 0},
                       .go_on = {}};
    if (call.progress != nullptr)
        arrays.go_on = [&call](std::int64_t so_far) {
            return call.progress(call.user, so_far, call.rows) == 0;
        };
    SweepEnd made = sweep(std::move(tree), inputs, outputs, arrays, turn, vessel.data_folder);
    if (!made.refused.empty()) return refused(std::move(made.refused));
    done = made.done;
    return {TARVANE_OK, std::move(made.of_rows)};
}

Ended described(const char* what, std::string& into) {
    const std::string_view name = what != nullptr ? what : "";
    if (name == "input")
        into = input_schema();
    else if (name == "result")
        into = result_schema();
    else if (name == "keys")
        into = vocabulary();
    else
        return {TARVANE_FAULTY,
                {{.message = R"("input", "result" or "keys" is expected)",
                  .path = "what",
                  .value = std::string(name)}}};
    return {};
}

// Files of the folder that are missing, with NO_DATA; the engine is free.
Ended look_into(const DataFolder& folder) {
    const EngineTurn turn(folder);
    Ended end;
    for (const std::string& fault : missing_data_files())
        end.faults.push_back({.message = fault});
    if (!end.faults.empty()) end.status = TARVANE_NO_DATA;
    return end;
}

Ended opened(std::int32_t abi, const char* data_folder, TARVANE_VESSEL*& into) {
    if (abi != TARVANE_VESSEL_ABI)
        return {TARVANE_INTERNAL,
                {{.message = "the library is of ABI " + std::to_string(TARVANE_VESSEL_ABI),
                  .path = "abi",
                  .value = std::to_string(abi)}}};
    auto vessel = std::make_unique<TARVANE_VESSEL>();
    vessel->data_folder =
        find_data_folder(data_folder != nullptr ? data_folder : "", "tarvane_open");
    std::string& path = vessel->data_folder.path;
    path = std::filesystem::absolute(path_of(path)).string();
    Ended end = guarded([&] { return look_into(vessel->data_folder); });
    if (end.status != TARVANE_OK) vessel->error.put(end.faults);
    if (end.status == TARVANE_OK || end.status == TARVANE_NO_DATA) into = vessel.release();
    return end;
}

} // namespace

int32_t tarvane_open(int32_t abi, const char* data_folder, TARVANE_VESSEL** vessel) {
    LastError& failed = error_of_thread();
    std::int32_t status = TARVANE_INTERNAL;
    TARVANE_VESSEL* handle = nullptr;
    try {
        const Ended end = guarded([&] {
            if (vessel == nullptr)
                return ended(TARVANE_INTERNAL, "a place for the handle is expected");
            *vessel = nullptr;
            return opened(abi, data_folder, handle);
        });
        status = end.status;
        if (status != TARVANE_OK) failed.put(end.faults);
    } catch (...) { // no memory left
        failed.last_error = NO_MEMORY;
        if (handle == nullptr) status = TARVANE_INTERNAL;
    }
    if (vessel != nullptr) *vessel = handle;
    return status;
}

void tarvane_close(TARVANE_VESSEL* vessel) { delete vessel; }

const char* tarvane_version(void) { return TARVANE_VERSION; }

const char* tarvane_last_error(const TARVANE_VESSEL* vessel) {
    if (vessel == nullptr) return error_of_thread().last_error;
    const std::lock_guard<std::mutex> lock(vessel->texts);
    return vessel->error.last_error;
}

const char* tarvane_schema(TARVANE_VESSEL* vessel, const char* what) {
    if (vessel == nullptr) return nullptr;
    std::string text;
    const std::int32_t status = call(*vessel, [&] { return described(what, text); });
    const std::lock_guard<std::mutex> lock(vessel->texts);
    vessel->schema = std::move(text);
    return status == TARVANE_OK ? vessel->schema.c_str() : nullptr;
}

int32_t tarvane_calculate(TARVANE_VESSEL* vessel, const char* request, int32_t want,
                          const char** result) {
    if (result != nullptr) *result = nullptr;
    if (vessel == nullptr) return TARVANE_INTERNAL;
    std::string text;
    const std::int32_t status = call(*vessel, [&] {
        if (request == nullptr) return ended(TARVANE_INTERNAL, "a request is expected");
        if (result == nullptr) return ended(TARVANE_INTERNAL, "a place for the result is expected");
        return calculated(*vessel, request, want, text);
    });
    const std::lock_guard<std::mutex> lock(vessel->texts);
    vessel->result = std::move(text);
    if (status == TARVANE_OK) *result = vessel->result.c_str();
    return status;
}

int32_t tarvane_sweep(TARVANE_VESSEL* vessel, const char* request, const char* const* inputs,
                      const char* const* outputs, int64_t rows, const double* x, double* y,
                      int32_t* fault, TARVANE_PROGRESS progress, void* user, int64_t* done) {
    std::int64_t made = 0;
    if (done != nullptr) *done = 0;
    if (vessel == nullptr) return TARVANE_INTERNAL;
    const std::int32_t status = call(*vessel, [&] {
        return swept(*vessel, {request, inputs, outputs, rows, x, y, fault, progress, user}, made);
    });
    if (done != nullptr) *done = made;
    return status;
}
