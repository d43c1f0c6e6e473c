// The calls of one element under external pressure: what the host sets, SHLEXT, and its results.
#pragma once

#include "components/external_input.h"
#include "components/request.h"

#include <memory>

namespace tarvane::vessel {

struct ConvexHead;

struct ExternalOutcome final : Outcome {
    bool no_curve = false; // there is no chart to calculate with
    bool refused() const override { return no_curve; }
    // By SHLEXT; the rest is taken from it, TARVANE_NO_VALUE where a stage did not run.
    TARVANE_EXTERNAL_RESULTS found{};
    float chart_maximum = 0.0f; // last temperature of the chart, when T is above it (F)
    bool above_chart = false;   // T is above it
    float maep = 0.0f, tca = 0.0f, slen = 0.0f;
    float d_o = 0.0f;                       // outside diameter, or crown radius, used
    float factor_a = 0.0f, factor_b = 0.0f; // by the charts
    float fha = 0.0f;                       // by buckling stress
    float fail_ca = 0.0f;
    std::shared_ptr<const ConvexHead> convex; // none: no such head, or keys are missing
};

// Runs an element of the file. Throws std::runtime_error when the report file cannot be opened or read.
ExternalOutcome run_external(const ExternalInput& element, const Request& file);

} // namespace tarvane::vessel
