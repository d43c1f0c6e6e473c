// `tarvane flanges`: the standard flanges of the data files.
#pragma once

#include "catalogue/standard_flanges.h"
#include "components/element.h"

#include <iosfwd>
#include <optional>
#include <string>

namespace tarvane::app {

using namespace vessel;

struct FlangesOptions {
    std::string name; // of a class; empty: all classes
    std::string size; // empty: all sizes of the class
    bool blind = false, slip_on = false;
    std::optional<float> wall; // of the pipe at a weld neck, in the units
    UnitSystem units = us_units();
    std::string data; // folder of the data files; empty: the one that is found
};

Status list_flanges(const FlangesOptions& options, std::ostream& out, std::ostream& err);

} // namespace tarvane::app
