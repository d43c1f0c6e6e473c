// From a tree of values to the components that it describes.
#pragma once

#include "components/element.h"
#include "components/request.h"
#include "values/value.h"

#include <span>

namespace tarvane::vessel {

ReadResult read_request(const Table& root,
                        std::span<const ElementKind* const> kinds = element_kinds());

// Faults in the order of their lines, each once: a key for every component is read with each
// of them.
void sort_faults(Faults& faults);

} // namespace tarvane::vessel
