// Links between the components of a request: which one each of their keys names by its description, and the order in
// which those that are named come before those that name them.
#pragma once

#include "components/element.h"
#include "components/fault_list.h"
#include "values/value.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tarvane::vessel {

// `on` of a head, `attached_to`, `mates_with`, `of` of a metal temperature.
bool is_link(std::string_view key);

// A component as the links see it.
struct Node {
    const ElementKind* kind;
    const Table* table;
    int line;
    std::string path; // "shell[0]"
    std::optional<std::size_t> of =
        {}; // without a name: a metal temperature that the vessel asks for
};

struct Link {
    std::string_view key;
    std::optional<std::size_t> target; // nothing behind a link at fault
};

class Finder;

class Links {
  public:
    // Names that are unknown, not unique, or lead in a circle are faults.
    Links(std::span<const Node> nodes, FaultList& faults);

    const std::vector<Link>& of(std::size_t component) const { return links[component]; }
    const std::vector<std::size_t>& order() const { return sorted; }

  private:
    std::vector<std::vector<Link>> links; // of each component
    std::vector<std::size_t> sorted;

    void refuse_second_mates(std::span<const Node> nodes, Finder& finder);
};

} // namespace tarvane::vessel
