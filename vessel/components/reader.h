// From a tree of values to the components that it describes.
#pragma once

#include "components/element.h"
#include "components/request.h"
#include "values/value.h"

#include <span>

namespace tarvane::vessel {

ReadResult read_request(const Table& root,
                        std::span<const ElementKind* const> kinds = element_kinds());

// Faults in the order of their lines, each once: a key that holds for every component is read with each
// of them.
void sort_faults(Faults& faults);

// As many faults as a message shows. For those behind them the nearest name is not searched.
inline constexpr std::size_t MOST_FAULT_LINES = 50;

} // namespace tarvane::vessel
