// A result that was written as JSON, read back: as much of it as a comparison needs, in the units of the file.
#pragma once

#include "catalogue/units.h"
#include "components/element.h"
#include "values/value.h"

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tarvane::vessel {

struct StoredInput {
    std::string name;
    Value value;
    std::string from;
};

struct StoredCheck {
    std::string id, load_case, paragraph, state, force;
    std::optional<float> demand, limit, ratio;
};

struct StoredComponent {
    const ElementKind* kind;
    std::size_t number; // among those of its kind, from 1 on
    std::string description, verdict, says;
    std::vector<StoredInput> inputs;
    std::vector<std::pair<std::string, Value>> results; // null: no value
    std::vector<StoredCheck> checks;
};

struct StoredSummary {
    std::string name;
    std::optional<float> value;
};

// A data file: its version, its SHA-256, and of each item that was used what is known.
struct StoredData {
    std::string version, sha256;
    std::map<std::string, std::string> items;
};

struct StoredResult {
    std::string name; // of the file that it is from
    std::string program, edition, verdict, says;
    UnitSystem units;
    std::map<std::string, StoredData> data;                    // by file
    std::vector<std::pair<std::string, std::string>> document; // its texts
    std::vector<StoredSummary> summary;
    std::vector<StoredComponent> components;
};

// Throws std::runtime_error for what is no such result, and for one that was made without results and checks.
StoredResult read_stored(const std::string& name, std::string_view json);

} // namespace tarvane::vessel
