// Material records: the binary files of code materials, one for each code, edition and unit system.
#pragma once

#include "frame/text.h"
#include "frame/types.h"

#include <string_view>

namespace tarvane {

inline constexpr Int ALLOWABLES = 32; // at 100, 150, 200 F and so on in steps of 50 F

// One record, laid out as the 414 bytes of the file. Stresses in ksi, lengths in inches, also from a
// metric file.
struct MATERIAL_RECORD {
    Text<16> firstName;
    Text<16> name; // the key, with the reference number
    Int reference = 0;
    Text<32> productForm;
    Text<24> unsNumber;
    Text<8> text92;
    Text<40> note;
    Real thicknessLimit = 0.0f;
    Text<8> pNumber;
    Int group = 0;
    Int curve = 0;           // UCS-66
    Int curveNormalized = 0; // UCS-66, normalized
    Real tensile = 0.0f;
    Real yield = 0.0f;
    Text<8> chart; // external pressure chart
    Int modulusReference = 0, expansionReference = 0;
    Real allowable[ALLOWABLES] = {};
    Text<40> text316;
    Int unused356[2] = {};
    Real minDia = 0.0f, maxDia = 0.0f; // size limits, -1.0: none
    Int unused372 = 0;
    Int impactTemperature = 0; // below 1: impact tested
    Int carried380 = 0;
    Int ucs66gReduction = 0;
    Int unused388[4] = {};
    Text<10> text404;
    char fill[2] = {}; // after the bytes of the file
};

// The record of a name and reference number. Status 0: found; 1: not found, the record cleared, or
// left as it was when the name is blank. The file goes by `code` (forced to 1 by G_FORCE_DIV1), the
// edition G_MATL_YEAR, G_MATL_METRIC, G_D2_CLASS and G_OLD_EDITION.
void READ_MATERIAL(Int code, std::string_view name, Int reference, Int& status,
                   MATERIAL_RECORD& record);

// Blanks in the places of ".", "/", "-" and NUL, then no blanks at all: "SA-516 70" is "SA51670".
void NORMALIZE_MATERIAL_NAME(char* text, Int len);

void CLEAR_MATERIAL(MATERIAL_RECORD& record);

// The file of READ_MATERIAL as a list. Its number of material records, 0 without a file; then each
// record by its number from 1. Status 1: not there, the record cleared.
void MATERIAL_COUNT(Int code, Int& count);
void MATERIAL_BY_NUMBER(Int code, Int number, Int& status, MATERIAL_RECORD& record);

} // namespace tarvane
