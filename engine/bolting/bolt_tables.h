// Bolt data: the sections of BOLTDATA.TXT as tables, and the two lookups in them.
#pragma once

#include "frame/types.h"

namespace tarvane {

inline constexpr Int BOLT_ROWS = 27;   // row 0 holds the units flag
inline constexpr Int BOLT_COLUMNS = 9;

// What a row of a thread series says, in inches and square inches.
struct BOLT_ROW {
    Real boltDia = 0.0f;
    Real rootArea = 0.0f;   // of one bolt
    Real totalArea = 0.0f;  // of all bolts
    Real Bmin = 0.0f;       // minimum circumferential spacing
    Real Rmin = 0.0f;       // minimum radial distance hub to bolts (types 3 and 5: the ring column)
    Real Emin = 0.0f;       // minimum distance bolts to edge
    Real nutCorners = 0.0f;
    Real wrenchDia = 0.0f;
    Real boltCol9 = 0.0f;
};

void LOAD_BOLT_FILE();
void LOAD_BOLT_TABLES(Int force);
void BOLTHELPER(Int series, Real* diameters, Real* rows, Int& count);
void GETBOLTDATA(Real dia, Int series, Real* row, Int& found);

// Lookup by diameter, with the warnings of a diameter that is not listed; `a` may be replaced by the
// diameter of the table.
BOLT_ROW BOLT_TABLE_ROW(Real& a, Int type, Int series, Real areaGiven, Int n);
// Lookup by required root area, for the design option.
BOLT_ROW BOLT_SIZE_FOR_AREA(Int series, Real area, Int type);

void RESET_BOLTING();

} // namespace tarvane
