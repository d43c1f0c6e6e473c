// Interface files to the foundation design application: a vessel's supports and loads as an XML file,
// filled in from a template, and an INI file of keys.
#pragma once

#include "frame/text.h"
#include "frame/types.h"

#include <string_view>

namespace tarvane {

// First words of both records: the software and the units.
struct FOUNDATION_HEAD {
    Text<8> version;
    Text<12> application;
    Text<8> applicationVersion;
    Text<20> section1, section2;
    Text<12> vendor;
    Text<8> product, productVersion;
    Text<16> productType;
    Text<10> lengthUnit, temperatureUnit, forceUnit, pressureUnit;
    Text<20> vesselType;
    Text<256> name;
    Text<40> material; // used for a horizontal vessel
};

// 135 words each. Feet, pounds, degrees Fahrenheit; the reals in the order of the keys of the INI file.
struct VERTICAL_FOUNDATION {
    FOUNDATION_HEAD head;
    Real diameter, height, posElevation, boltCircle, anchorCount, anchorSize;
    Real emptyWeight, operatingWeight, testWeight, windShear, windMoment, earthquakeShear,
        earthquakeMoment;
    Real spare[5];
};
struct HORIZONTAL_FOUNDATION {
    FOUNDATION_HEAD head;
    Real length, saddleDistance, saddleLength, saddleWidth, shellTemperature, centerElevation,
        posToCenter;
    Real emptyWeight, operatingWeight, testWeight, bundleWeight, friction, windPressure,
        earthquakeFactor;
    Real anchorCount, anchorSize, posElevation;
    Real spare[1];
};
static_assert(sizeof(VERTICAL_FOUNDATION) == 135 * 4);
static_assert(sizeof(HORIZONTAL_FOUNDATION) == 135 * 4);

// The working records, which the host fills, with its company.
struct FOUNDATION_RECORDS {
    VERTICAL_FOUNDATION vertical;
    HORIZONTAL_FOUNDATION horizontal;
    Text<40> company;
    Real numbers[2]; // of the host's input record; not read
};
extern FOUNDATION_RECORDS FOUNDATION;

// Start values of both records; the company stays.
void FOUNDATION_RECORD_DEFAULTS();

// Writes `name` with the extensions "xml" and "ini". Vertical 1: the vertical record, else the
// horizontal one; exchanger 1: the vessel type of both becomes an exchanger.
void WRITE_FOUNDATION_FILES(std::string_view name, Int vertical, Int exchanger);

void RESET_FOUNDATION();

} // namespace tarvane
