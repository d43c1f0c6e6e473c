// A request as the library calculates it: components in the engine's units.
#pragma once

#include "catalogue/units.h"
#include "components/element.h"
#include "values/fault.h"

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tarvane::vessel {

// Texts by their keys, in the order of the keys; UTF-8.
using Texts = std::vector<std::pair<std::string_view, std::string>>;

// What a request says of the document that its calculation belongs to.
struct Document {
    Texts texts;
    std::vector<Texts> revisions;
};

struct Request {
    UnitSystem units = us_units();
    bool metric_constants = false; // the code's dimensions of its metric edition
    bool report = true;            // its calculation writes the lines of the report
    bool words = true;             // its checks give their reasons and steps
    bool of_vessel = false;        // its components are those of one vessel: there is a [vessel]
    std::string description;       // of the vessel, UTF-8
    Document document;
    // In the order in which they are written, then the metal temperatures that the vessel asks for.
    std::vector<std::unique_ptr<Element>> elements;
};

// The ways of a request for calculations beside its own: no components, no lines of a report.
inline Request without_report(const Request& request) {
    Request silent;
    silent.units = request.units;
    silent.metric_constants = request.metric_constants;
    silent.report = false;
    silent.words = request.words;
    return silent;
}

struct ReadResult {
    Request request;
    Faults faults; // in the order of the lines; the request has no elements when there are any
};

} // namespace tarvane::vessel
