// A host in C++ of the vessel library: calculates the request in JSON on standard input, or one of its own when
// that is a terminal or empty, and prints the result.
//   calculate [DATA_FOLDER]      without a folder the library looks for the data files
#include "tarvane/vessel.h"

#include <cstdio>
#include <iostream>
#include <iterator>
#include <memory>
#include <string>

#ifndef _WIN32
#include <unistd.h>
#endif

namespace {

constexpr char EXAMPLE[] = R"({
    "tarvane": 1,
    "units": "US",
    "flange": [{
        "description": "N1", "type": "weld neck", "P": 150, "T": 300, "ci": 0.0625, "B": 12, "A": 19, "t": 1.19,
        "g0": 0.375, "g1": 1.19, "h": 3.25, "Sfo": 20000, "Sfa": 20000, "bolting": "TEMA", "C": 17, "n": 12,
        "a": 0.875, "Sb": 25000, "Sa": 25000, "Fod": 15, "Fid": 12, "Go": 14.75, "Gi": 14, "m": 3, "y": 10000,
        "facing": "1a", "tg": 0.125, "material": "SA-105", "bolt_material": "SA-193 B7", "tShell": 0.375,
        "Dshell": 12, "Sn": 17100, "Sna": 17100
    }]
})";

std::string request() {
#ifndef _WIN32
    if (isatty(STDIN_FILENO) != 0) return EXAMPLE;
#endif
    const std::string given(std::istreambuf_iterator<char>(std::cin), {});
    return given.empty() ? EXAMPLE : given;
}

struct Close {
    void operator()(TARVANE_VESSEL* vessel) const { tarvane_close(vessel); }
};

} // namespace

int main(int argc, char** argv) {
    TARVANE_VESSEL* opened = nullptr;
    int32_t status = tarvane_open(TARVANE_VESSEL_ABI, argc > 1 ? argv[1] : nullptr, &opened);
    const std::unique_ptr<TARVANE_VESSEL, Close> vessel(opened);
    const char* result = nullptr;
    if (status == TARVANE_OK)
        status = tarvane_calculate(vessel.get(), request().c_str(), TARVANE_WANT_RESULTS, &result);
    if (status != TARVANE_OK) {
        std::fprintf(stderr, "calculate: %s\n", tarvane_last_error(vessel.get()));
        return status;
    }
    std::puts(result);
    return 0;
}
