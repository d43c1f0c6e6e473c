// A request as the library calculates it: components in the engine's units.
#pragma once

#include "catalogue/units.h"
#include "components/element.h"
#include "values/fault.h"

#include <memory>
#include <vector>

namespace tarvane::vessel {

struct Request {
    UnitSystem units = us_units();
    bool decimal_comma = false;
    bool metric_constants = false; // the code's dimensions of its metric edition
    bool report = true;            // its calculation writes the lines of the report
    std::vector<std::unique_ptr<Element>> elements; // in the order in which they are written
};

// The ways of a request for calculations beside its own: no components, no lines of a report.
inline Request without_report(const Request& request) {
    Request silent;
    silent.units = request.units;
    silent.decimal_comma = request.decimal_comma;
    silent.metric_constants = request.metric_constants;
    silent.report = false;
    return silent;
}

struct ReadResult {
    Request request;
    Faults faults; // in the order of the lines; the request has no elements when there are any
};

} // namespace tarvane::vessel
