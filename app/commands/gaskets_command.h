// `tarvane gaskets`: the gasket table.
#pragma once

#include "components/element.h"

#include <iosfwd>
#include <string>

namespace tarvane::app {

using namespace vessel;

// Those with the words in their names; all for an empty text.
Status list_gaskets(const std::string& words, std::ostream& out, std::ostream& err);

} // namespace tarvane::app
