// A host in C++ of the vessel library: a flange, its verdict and some of its results, a sweep, and what a fault looks
// like.
//   calculate [DATA_FOLDER]      without a folder the library looks for the data files
#include "tarvane/tarvane.hpp"

#include <cstdio>

namespace {

tarvane::Request make_request() {
    tarvane::Request request = {{"units", "US"}};
    request.add("flange", {{"description", "N1"},
                           {"type", "weld neck"},
                           {"P", 150},
                           {"T", 300},
                           {"ci", 0.0625},
                           {"B", 12},
                           {"A", 19},
                           {"t", 1.19},
                           {"g0", 0.375},
                           {"g1", 1.19},
                           {"h", {82.55, "mm"}}, // in a unit of its own
                           {"Sfo", 20000},
                           {"Sfa", 20000},
                           {"bolting", "TEMA"},
                           {"C", 17},
                           {"n", 12},
                           {"a", 0.875},
                           {"Sb", 25000},
                           {"Sa", 25000},
                           {"Fod", 15},
                           {"Fid", 12},
                           {"Go", 14.75},
                           {"Gi", 14},
                           {"facing", "1a"},
                           {"m", 3},
                           {"y", 10000},
                           {"tg", 0.125}});
    return request;
}

void show(const tarvane::Component& component, const char* name) {
    if (const std::optional<double> value = component.result(name))
        std::printf("%s %.3f\n", name, *value);
    else // a result without a value has a reason
        std::printf("%s: %s\n", name, component.why(name).c_str());
}

void calculate(const tarvane::Vessel& vessel, const tarvane::Request& request) {
    const tarvane::Result result = vessel.calculate(request);
    std::printf("%s\n", result.verdict().c_str());
    const tarvane::Component flange = result["flange[0]"];
    std::printf("%s\n", flange.says().c_str());
    show(flange, "mawp");
    show(flange, "map_nc");
    show(flange, "t_req");
    std::printf("rated pressure %.3f\n", flange.rated_pressure().value());
    const tarvane::Check worst = flange.checks().front();
    std::printf("first check %s, ratio %.3f\n", worst.id.c_str(), worst.ratio.value());
}

void sweep(const tarvane::Vessel& vessel, const tarvane::Request& request) {
    const std::vector<double> thickness = {0.75, 1.0, 1.19};
    const tarvane::Sweep table = vessel.sweep(
        request, {"flange[0].t"}, {"flange[0].results.mawp", "flange[0].passed"}, thickness);
    for (std::size_t row = 0; row < table.rows; ++row)
        std::printf("t %.3f: mawp %.3f, %s\n", thickness[row], table.value(row, 0).value(),
                    table.value(row, 1) == 1.0 ? "pass" : "no pass");
}

} // namespace

int main(int argc, char** argv) {
    try {
        const tarvane::Vessel vessel(argc > 1 ? argv[1] : "");
        std::printf("tarvane %s\n", tarvane::Vessel::version().c_str());
        tarvane::Request request = make_request();
        calculate(vessel, request);
        sweep(vessel, request);
        try {
            request.put("flange[0].P", "ten"); // this one is at fault
            calculate(vessel, request);
            return 1;
        } catch (const tarvane::InputError& error) {
            std::printf("fault %s: %s\n", error.field().c_str(), error.reason().c_str());
        }
        return 0;
    } catch (const tarvane::Error& error) {
        std::printf("%s\n", error.what());
        return 1;
    }
}
