// `tarvane materials`: the materials of the data files.
#pragma once

#include "catalogue/material_files.h"
#include "components/element.h"

#include <iosfwd>
#include <string>

namespace tarvane::app {

using namespace vessel;

struct MaterialsOptions {
    std::string name; // empty: all
    MaterialSelection selection;
    UnitSystem units = us_units();
    std::string data; // folder of the data files; empty: the one that is found
};

// With a name: the records of that name in full; without such a material, those whose names begin so.
Status list_materials(const MaterialsOptions& options, std::ostream& out, std::ostream& err);

} // namespace tarvane::app
