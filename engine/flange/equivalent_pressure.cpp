#include "flange/equivalent_pressure.h"

#include "report/lines.h"

namespace tarvane {

namespace {

void pressure_line(std::string_view label, Real pressure) {
    COLUMN_LINE(label, pressure, Kind::pressure);
}

} // namespace

void EQUIVALENT_PRESSURE(Real F, Real M, Real G, Real Pi, Real P, Real& Peq) {
    const Real pF = 4.0f * max(0.0f, F) / (Pi * square(G));
    const Real pM = 16.0f * std::abs(M) * 12.0f / (Pi * cube(G));
    // External loads raise the pressure that is there: an external one grows, too.
    Peq = P < 0.0f ? P - pF - pM : P + pF + pM;

    BLANK_LINE();
    pressure_line("Original Design Pressure for Flange                  ", P);
    pressure_line("Axial Force Equiv. Pressure (4*max(F,0)/(pi*G^2))    ", pF);
    pressure_line("Bending Moment Equiv. Pressure (16*abs(M)/(pi*G^3))  ", pM);
    LinePieces().blanks(53).text("----------").write();
    pressure_line("Final Equivalent Design Pressure                     ", Peq);
    BLANK_LINE();
    TEXT_LINE("Note:");
    TEXT_LINE("Per ASME NC-3658.1(b), the equivalent pressure is used only");
    TEXT_LINE("to compute the Hydrostatic End Load H.  The original design");
    TEXT_LINE("pressure is used in the remaining calculations.");

    if (F < 0.0f || M < 0.0f) {
        BLANK_LINE();
        TEXT_LINE("Note:");
        TEXT_LINE(
            "Compressive (negative) axial loads on the flange can reduce the design pressure.");
        TEXT_LINE("Only positive axial loads will be used to determine the equivalent pressure.");
        BLANK_LINE();
    }
}

} // namespace tarvane
