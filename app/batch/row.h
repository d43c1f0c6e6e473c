// What a batch says of an item: a row of its summary, and with it what the journal has to know.
#pragma once

#include "components/element.h"
#include "values/json.h"
#include "values/value.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarvane::app {

using namespace vessel;

// How the calculation of an item ended: to its end, with faults of the input, by a stop of the engine, with its process.
inline constexpr std::string_view OK = "ok", FAULTY = "fault", STOPPED = "stopped", DIED = "died";

// Words as in the JSON of a run.
struct Row {
    std::string item, file;
    std::string status;
    Status exit = Status::fine; // as of `tarvane run`
    std::string units;          // empty as what follows: not calculated
    std::string verdict, says;
    std::optional<float> ratio; // of the check that governs
    std::string component, check;
    std::string reason;    // why there is no result, or none that counts
    Value faults = List(); // of the input: path, value, reason

    // Of an item without a result.
    static Row without_result(std::string_view status, Status exit, std::string reason);
    bool calculated() const { return status == OK; }
};

// The members of a row, into an object that is open.
void write_row(const Row& row, JsonWriter& json);
// Throws std::runtime_error for what write_row has not written.
Row row_of(const Table& object);

// A file of results, to see that it is still there and whole.
struct Written {
    std::string extension;
    std::uintmax_t bytes = 0;
};

struct Entry {
    Row row;
    std::string key; // of what the results depend on
    std::vector<Written> files;
    double seconds = 0.0;
};

// One line without its end.
std::string line_of(const Entry& entry);
// Nothing for a line that is not whole.
std::optional<Entry> entry_of(std::string_view line);

} // namespace tarvane::app
