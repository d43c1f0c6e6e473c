// What the tests ask of metal temperatures. The engine's own calls for them are in tests/vessel/ways_test.py.
#include "components/mdmt_session.h"
#include "kind_tests.h"

namespace tarvane::app {

using namespace vessel;
namespace {

Covered covered() {
    const std::string ratio = METAL + "ratio = 0.8\n";
    const std::string cold = "[[mdmt]]\ncurve = \"D\"\ntg = 0.5\nratio = 0.9\n";
    Covered all;
    all.sides = {
        {"mdmt", 100.0f, -100.0f, at("MDMT", ratio)},
        {"ratio", 0.8f, 1.2f, at("ratio", METAL)},
        {"required_thickness", 0.8f, 1.2f, at("tr", METAL)},
        {"impact_tests", 3.0f, 5.0f, at("tg", ratio)}, // the curves end at 4 in.
        {"heat_treatment", -20.0f, -60.0f, at("MDMT", cold), NO_ROW},
    };
    return all;
}

Draw draw() {
    return {{{"tg", "0.75"}, {"T", "300"}, {"MDMT", "10"}, {"Sy", "38000"}, {"ratio", "0.8"}},
            {{"curve", {"1", "2", "3", "4", "5", "6"}},
             {"code", {"1", "2"}},
             {"edition", {"", "\"older\""}},
             {"material", {"", "\"SA-516 70\""}},
             {"pad", {"false", "false", "true"}},
             {"pad_ratio", {"0.7"}},
             {"pad_reduction", {"20"}},
             {"pwht", SWITCH},
             {"ug20f", SWITCH}}};
}

void append(std::string& all, const Outcome& outcome, const Key&) {
    const auto& o = static_cast<const MdmtOutcome&>(outcome);
    append_values(all, o.exempt_stainless, o.t_min, o.mdmt, o.t_ug20, o.ratio, o.reduction,
                  o.estar_used);
}

const TestsOfKind KNOWN("mdmt", [] {
    return KindTests{.covered = covered(), .draw = draw(), .append = append};
});

} // namespace
} // namespace tarvane::app
