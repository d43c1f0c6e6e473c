// `tarvane batch`: many input files become results in one folder.
#pragma once

#include "batch/batch.h"

#include <iosfwd>

namespace tarvane::app {

int batch(const BatchOptions& options, std::ostream& out, std::ostream& err);

} // namespace tarvane::app
