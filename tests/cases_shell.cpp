// SHLINT as a routine of the case language. Inputs that are left out are zero, S and E apart.
#include "cases_routines.h"

#include "shell/shlint.h"

namespace cases {

using namespace tarvane;

void run_shlint(Values& v) {
    const auto real = [&](const char* name, Real otherwise = 0.0f) {
        return v.has(name) ? v.real(name) : otherwise;
    };
    const auto whole = [&](const char* name) { return v.has(name) ? v.whole(name) : 0; };
    Real L = real("L"), SyCold = real("SyCold");
    Real Treq = 0, MAWP = 0, MAPnc = 0, Stress = 0, TreqRaw = 0, T14f = 0, MAWP14f = 0,
         MAPnc14f = 0;
    Int Status14f = 0;
    const std::string name = v.has("MaterialName") ? v.text("MaterialName") : std::string();
    SHLINT_ARGUMENTS s{.P = real("P"),
                       .Sa = real("Sa", v.real("S")),
                       .S = v.real("S"),
                       .E = real("E", 1.0f),
                       .Element = v.whole("Element"),
                       .D = real("D"),
                       .t = real("t"),
                       .c = real("c"),
                       .k = real("k"),
                       .L = L,
                       .r = real("r"),
                       .alpha = real("alpha"),
                       .C = real("C"),
                       .D2 = real("D2"),
                       .Treq = Treq,
                       .MAWP = MAWP,
                       .MAPnc = MAPnc,
                       .Stress = Stress,
                       .Material = whole("Material"),
                       .Temp = real("Temp"),
                       .Service = whole("Service"),
                       .TreqRaw = TreqRaw,
                       .Outside = whole("Outside"),
                       .T14f = T14f,
                       .Sy = real("Sy"),
                       .MAWP14f = MAWP14f,
                       .MAPnc14f = MAPnc14f,
                       .Status14f = Status14f,
                       .SyCold = SyCold,
                       .u = real("Ut"),
                       .Skip14f = whole("Skip14f"),
                       .d1 = real("d1"),
                       .d2 = real("d2"),
                       .edge1 = real("edge1"),
                       .edge2 = real("edge2"),
                       .pitch = real("pitch"),
                       .openingMaterial = real("openingMaterial"),
                       .CorrodedK = whole("CorrodedK"),
                       .MaterialName = name};
    SHLINT(s);
    for (const auto& [result, value] : {std::pair{"Treq", Treq},
                                        {"MAWP", MAWP},
                                        {"MAPnc", MAPnc},
                                        {"Stress", Stress},
                                        {"TreqRaw", TreqRaw},
                                        {"L", L},
                                        {"T14f", T14f},
                                        {"MAWP14f", MAWP14f},
                                        {"MAPnc14f", MAPnc14f}})
        v.set(result, static_cast<double>(value));
    v.set("Status14f", static_cast<double>(Status14f));
}

} // namespace cases
