// One request with many values: arrays in, arrays out.
#pragma once

#include "surface/engine_turn.h"
#include "values/fault.h"
#include "values/value.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tarvane::vessel {

struct SweepArrays {
    std::int64_t rows;
    std::span<const double> x;        // rows by inputs
    std::span<double> y;              // rows by outputs
    std::span<std::int32_t> fault;    // may be empty
    std::function<bool(std::int64_t)> // of the rows done: false ends early
        go_on;
};

struct SweepEnd {
    Faults refused; // nothing was calculated
    Faults of_rows; // the k-th one is k in `fault`
    std::int64_t done = 0;
};

// `turn` is released now and then, and taken again, so that others get theirs.
SweepEnd sweep(Value request, std::span<const std::string> inputs,
               std::span<const std::string> outputs, const SweepArrays& arrays,
               std::optional<EngineTurn>& turn, const DataFolder& data_folder);

} // namespace tarvane::vessel
