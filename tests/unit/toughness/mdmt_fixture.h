// Common ground of the toughness tests: switches, host record and constants as at load but for the
// reductions, which are allowed; one element, and its report.
#pragma once

#include "toughness/mdmt.h"

#include "../data_folder.h"
#include "../material_file.h"
#include "frame/element_tables.h"
#include "frame/switches.h"
#include "frame/units.h"
#include "toughness/impact_table.h"
#include "toughness/ucs66_curves.h"

#include <gtest/gtest.h>

namespace tarvane::toughness_test {

using data_test::Line;
using material_test::material_file;
using material_test::Record;

// Values of a report in degrees Celsius and millimetres.
inline void metric_report() {
    UNITS.thickness = 25.4f;
    UNITS.thickness_label = "mm";
    UNITS.temperature_offset = 32.0f;
    UNITS.temperature_scale = 1.8f;
    UNITS.temperature_label = "\xB0"
                              "C";
    UNITS.stress = 0.00689476f;
    UNITS.stress_label = "MPa";
}

class ToughnessTest : public data_test::DataTest {
  protected:
    ToughnessTest() : host(HOST_RECORD) {
        HOST_RECORD = HOST_INPUT{};
        RESET_IMPACT_TABLE();
        SET_METRIC_CONSTANTS();
        G_USE_A6 = 1;
    }
    ~ToughnessTest() override {
        HOST_RECORD = host;
        RESET_IMPACT_TABLE();
        RESET_CODE_CONSTANTS();
    }

    static void require_temperature(const char* text) {
        HOST_RECORD.required_temperature[0] = text;
    }

    // An impact table of one entry in list 1, by its four switches.
    static void impact_table(const char* switches, const char* name = "SA-350 LF2",
                             const char* temperature = "-50") {
        HOST_RECORD.impact_switches = switches;
        HOST_RECORD.impact_counts[0] = "1";
        HOST_RECORD.impact_names[0][0] = name;
        HOST_RECORD.impact_numbers[0][0] = temperature;
        READ_IMPACT_TABLE();
    }

    // The only material: impact test temperature, reduction of UCS-66(g), yield strength.
    void material(Int impact, Int ucs66g = 0, Real yield = 36.0f) {
        const std::string file = material_file(
            1, 0, {Record("SA-350 LF2", 3).put(168, yield).put(376, impact).put(384, ucs66g)});
        write_file("system", "MATFILE1.BIN", file);
        write_file("system", "MATFILE2.BIN", file);
    }

  private:
    HOST_INPUT host;
};

// One element under Division 1 with nothing special about it.
inline MDMT_CALL element_of(Int Curve, Real Tg, Real Tr = -1.0f) {
    MDMT_CALL a;
    a.Curve = Curve;
    a.Tg = Tg;
    a.Tr = Tr;
    a.Estar = 1.0f;
    a.Code = 1;
    a.Tdesign = 300.0f;
    a.Spec = "SA-350 LF2";
    a.Index = 3;
    a.Kind = 1;
    return a;
}

} // namespace tarvane::toughness_test
