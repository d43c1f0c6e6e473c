#include "fields/external_results.h"

#include "tarvane/tarvane.h"

#include <algorithm>

namespace tarvane::vessel {

namespace {

using F = const ExternalFound&;
using N = ExternalNumber;

constexpr std::string_view NO_PRESSURE = "no external design pressure",
                           NO_CONVEX = "no check by UG-33 (a)(1)", NO_CHART = "not by a chart",
                           NO_VALUE = "none was found";

Got value(F f, float number) {
    if (!f.nothing.empty()) return Got::none(f.nothing);
    return number == TARVANE_NO_VALUE ? Got::none(NO_VALUE) : Got(number);
}

// Of the design pressure.
Got required(F f, float number) {
    return f.has_pressure ? value(f, number) : Got::none(NO_PRESSURE);
}

template <N KEY>
Got key(F f) {
    return f.given.setting(KEY);
}

using enum Quantity;

// Those of the closing table in their order.
constexpr ResultRow<ExternalFound> ROWS[] = {
    {{"P_external", "P", pressure, "External design pressure", EXTERNAL_TABLE}, key<N::P>},
    {{"maep", "MAEP", pressure, "Maximum allowable external pressure", EXTERNAL_TABLE,
      "the lesser one by the chart and by UG-33 (a)"},
     [](F f) { return value(f, f.convex ? f.convex->governing_maep : f.maep); }},
    {{"maep_convex", "", pressure, "The same by UG-33(a), 1.67 P inside", EXTERNAL_TABLE},
     [](F f) { return f.convex ? value(f, f.convex->maep) : Got::none(NO_CONVEX); }},
    {{"t", "t", thickness, "Given thickness", EXTERNAL_TABLE}, key<N::t>},
    {{"tca", "Tca", thickness, "Required thickness with allowances", EXTERNAL_TABLE,
      "the greater one by the chart and by UG-33 (a)(1)"},
     [](F f) { return required(f, f.convex ? f.convex->governing_thickness : f.tca); }},
    {{"t_convex", "", thickness, "The same by UG-33(a)(1), 1.67 P inside", EXTERNAL_TABLE},
     [](F f) { return f.convex ? required(f, f.convex->thickness) : Got::none(NO_CONVEX); }},
    {{"slen", "Slen", diameter, "Maximum stiffened length", EXTERNAL_TABLE},
     [](F f) { return f.cylinder ? required(f, f.slen) : Got::none("not a cylinder"); }},
    {.field = {.name = "A",
               .symbol = "A",
               .quantity = number,
               .label = "Factor A, times 1000000",
               .table = EXTERNAL_TABLE,
               .meaning = "the closing table shows it times 1000000",
               .times = 1.0e6f},
     .value = [](F f) { return f.by_chart ? value(f, f.factor_a) : Got::none(NO_CHART); }},
    {{"B", "B", stress, "Factor B", EXTERNAL_TABLE},
     [](F f) { return f.by_chart ? value(f, f.factor_b) : Got::none(NO_CHART); }},
    {{"fha", "Fha", stress, "Allowable compressive stress", EXTERNAL_TABLE},
     [](F f) { return f.by_stress ? value(f, f.fha) : Got::none("by a chart"); }},
    {{"ci", "c", thickness, "Corrosion allowance", EXTERNAL_TABLE}, key<N::ci>},
    {{"failure_ca", "", thickness, "Corrosion allowance at failure", EXTERNAL_TABLE},
     [](F f) {
         const Got chart = required(f, f.fail_ca);
         if (!chart.value || !f.convex) return chart;
         return Got(std::min(*chart.value, f.convex->fail_ca));
     }},
    // ---- further ones
    {{"maep_chart", "", pressure, "Maximum allowable external pressure by the chart alone"},
     [](F f) { return value(f, f.maep); }},
    {{"tca_chart", "", thickness, "Required thickness with allowances by the chart alone"},
     [](F f) { return required(f, f.tca); }},
    {{"Do_used", "Do", diameter, "Outside diameter, or crown radius, used"},
     [](F f) { return value(f, f.outside); }},
};

constexpr auto FIELDS = fields_of(ROWS);

} // namespace

std::span<const ResultField> external_result_fields() { return FIELDS; }

std::vector<Result> external_results(const ExternalFound& found) {
    return results_of(ROWS, FIELDS, found);
}

} // namespace tarvane::vessel
