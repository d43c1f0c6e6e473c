// The codes, standards and tables that a calculation goes by.
#pragma once

#include "document/document.h"

namespace tarvane::vessel {

DocumentSection references_section(const Request& request);

} // namespace tarvane::vessel
