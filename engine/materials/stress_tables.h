// Stresses by temperature: the allowable stress of a material record, the yield stress from the files
// of the yield stresses (ASME II-D, Table Y-1), and the records of the EN materials.
#pragma once

#include "frame/types.h"
#include "materials/material_record.h"

#include <string_view>

namespace tarvane {

// Allowable stress (ksi) of a record at a temperature (F), at the temperatures of the inch or the
// metric files by G_MATL_METRIC. The first value below them, 0.0 above them.
Real READ_ALLOWABLE_AT(const MATERIAL_RECORD& record, Real T);

// Yield stress (ksi) at a temperature (F) of the material that has the name and, within five
// percent, the tensile strength (ksi). 0.0 when there is none, and above 1000 F (525 C).
void READ_YIELD_STRESS(std::string_view name, Real tensile, Real T, Real& result);

inline constexpr Int EN_RECORD_BYTES = 308;
// Record of an EN material by its key, 308 bytes. Status 1: the key is below 1 or the file can't be
// read. A key that the file does not have gives status 0 and leaves the record as it was.
void READ_EN_MATERIAL(Int key, Int& status, char* record);

} // namespace tarvane
