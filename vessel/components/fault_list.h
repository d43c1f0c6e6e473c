// The faults of a request as they are found.
#pragma once

#include "values/fault.h"
#include "values/value.h"

#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tarvane::vessel {

// As many faults as a message shows. For those after them the nearest name is not searched.
inline constexpr std::size_t MOST_FAULT_LINES = 50;

class FaultList {
  public:
    explicit FaultList(Faults& into) : faults(into) {}

    void add(Position at, std::string_view key, std::string message) {
        faults.push_back({.line = at.line,
                          .key = std::string(key),
                          .message = std::move(message),
                          .path = std::string(key)});
    }
    // The value is not what is expected.
    void wrong(const Value& value, std::string_view key, const std::string& wanted,
               std::string_view meaning = {});
    // Keys that the table does not have. `nearest_of` gives the rest of the message, the name that
    // may have been meant; its search takes time, so that it is made only for faults that can be
    // among those that are shown.
    void unknown(std::vector<const Table::Entry*> entries, std::string_view table,
                 const std::function<std::string(std::string_view)>& nearest_of);
    std::size_t size() const { return faults.size(); }
    Faults& list() { return faults; }

  private:
    Faults& faults;
};

// "; the nearest is NAME", or nothing.
std::string nearest_name(std::string_view name, std::span<const std::string_view> others);

} // namespace tarvane::vessel
