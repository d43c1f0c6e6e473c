// Bolt data: the sections of BOLTDATA.TXT as tables, and the two lookups in them.
#pragma once

#include "frame/types.h"

namespace tarvane {

inline constexpr Int BOLT_ROWS = 27; // row 0 holds the units flag
inline constexpr Int BOLT_COLUMNS = 9;

// Thread series; any other number counts as the first.
enum BoltSeries : Int {
    TEMA_IMPERIAL = 1,
    UNC = 2,
    SPECIAL_ROOT_AREA = 3, // root area given by the user; no table of its own
    TEMA_METRIC = 4,
    BS_3643 = 5,
    SABS_1700 = 6,
    METRIC_3P_M30 = 7,
    USER_TABLE = 8,
};

// One row of a thread series, in inches and square inches.
struct BOLT_ROW {
    Real boltDia = 0.0f;
    Real rootArea = 0.0f;   // of one bolt
    Real totalArea = 0.0f;  // of all bolts
    Real Bmin = 0.0f;       // minimum circumferential spacing
    Real Rmin = 0.0f;       // minimum radial distance hub to bolts (types 3 and 5: the ring column)
    Real Emin = 0.0f;       // minimum distance bolts to edge
    Real nutCorners = 0.0f; // distance across corners of the nut
    Real wrenchDia = 0.0f;  // circular wrench end diameter
    Real boltCol9 = 0.0f;   // handed to the design option
};

// Reads "BOLTDATA.TXT" once; a file without its "[END]" line is not kept.
void LOAD_BOLT_FILE();
// Fills the tables of the series, once; again when `force` is 1.
void LOAD_BOLT_TABLES(Int force);

// The rows of a section as the file has them, units row first, in the file's own units.
//   diameters: array of 27 reals; rows: array of 27 times 9 reals, row after row
void BOLTHELPER(Int series, Real* diameters, Real* rows, Int& count);
// The first row of a section whose diameter is within 0.001 of `dia`, in the file's own units.
//   row: array of 9 reals, the last row read when none is found
void GETBOLTDATA(Real dia, Int series, Real* row, Int& found);

// Lookup by diameter, with the warnings of a diameter that is not listed; `a` may be replaced by the
// diameter of the table. Zeros from an empty table.
BOLT_ROW BOLT_TABLE_ROW(Real& a, Int type, Int series, Real areaGiven, Int n);
// Lookup by required root area, for the design option: no nut, no wrench and no total area.
BOLT_ROW BOLT_SIZE_FOR_AREA(Int series, Real area, Int type);

// Forgets file and tables; the quiet switches of the limits table back to 0.
void RESET_BOLTING();

} // namespace tarvane
