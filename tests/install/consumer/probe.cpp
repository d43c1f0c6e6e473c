// probe.c by the layer for C++.
#include "tarvane/tarvane.hpp"

#include <cstdio>
#include <cstring>
#include <dlfcn.h>

int main(int argc, char** argv) {
    try {
        Dl_info place;
        if (dladdr(reinterpret_cast<const void*>(&tarvane_version), &place) == 0) return 3;
        std::printf("library %s\n", place.dli_fname);
        std::printf("version %s\n", tarvane::Vessel::version().c_str());
        tarvane::Request request;
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
                               {"h", 3.25},
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
                               {"m", 3},
                               {"y", 10000},
                               {"facing", "1a"},
                               {"tg", 0.125},
                               {"material", "SA-105"},
                               {"bolt_material", "SA-193 B7"}});
        const tarvane::Result result = tarvane::Vessel(argc > 1 ? argv[1] : "").calculate(request);
        const auto mawp = static_cast<float>(result["flange[0]"].result("mawp").value());
        unsigned bits;
        std::memcpy(&bits, &mawp, sizeof bits);
        std::printf("data %s\n", result.values().text("data[0].version").value().c_str());
        std::printf("flange mawp %08X\n", bits);
        return 0;
    } catch (const std::exception& error) {
        std::printf("%s\n", error.what());
        return 1;
    }
}
