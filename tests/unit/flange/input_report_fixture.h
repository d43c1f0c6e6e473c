// The echo of a flange.
#pragma once

#include "flange/input_report.h"

#include "frame/element_tables.h"
#include "stage_fixture.h"

namespace tarvane::input_report_test {

using stage_test::Lines;
using S = FLANGE_STATE;

// An integral flange with everything that its echo shows.
inline FLANGE_STATE weld_neck() {
    FLANGE_STATE s = stage_test::ptb3_e4_16_1();
    s.element1 = 1;
    s.kind = ANALYSE;
    s.Tdesign = 650.0f;
    s.ci = 0.0625f;
    s.ce = 0.03125f;
    s.Sa = 25000.5f;
    s.aNominal = s.dh = 0.75f;
    s.series = 1;
    s.nBolts = 44;
    s.Fod = 30.5f;
    s.Fid = 28.5f;
    s.w = 0.0f;
    s.sketch = 2;
    s.rigidity = 1;
    s.element = 3;
    s.boltRow = 4;
    s.flangeMaterial = "SA-105";
    s.boltMaterial = "SA-193 B7";
    s.description = "Nozzle N1";
    s.useCorrosion = "Y";
    s.matingLoads = "N";
    return s;
}

class InputReport : public stage_test::StageTest {
  protected:
    InputReport() { clear_host_tables(); }
    ~InputReport() override { clear_host_tables(); }

    static void clear_host_tables() {
        ELEMENT_TABLES[2] = ELEMENT_ROW{};
        HOST_RECORD = HOST_INPUT{};
        SET_MATERIAL_ITEM_NAME(1, 3, "");
        SET_MATERIAL_ITEM_NAME(2, 4, "");
    }

    static Lines echo(FLANGE_STATE& s) {
        FLANGE_INPUT_REPORT(s);
        return take_lines();
    }
    static Lines echo_of(FLANGE_STATE s) { return echo(s); }

    static bool has(const Lines& lines, std::string_view line) {
        return std::find(lines.begin(), lines.end(), line) != lines.end();
    }
    // A line that begins with this label.
    static std::string line_with(const Lines& lines, std::string_view label) {
        for (const std::string& line : lines)
            if (line.starts_with(label)) return line;
        return {};
    }
};

inline void blind(S& s) {
    s.type = BLIND;
    s.go = s.g1 = s.h = 0.0f;
    s.D = 27.5f;
    s.dS = 20.25f;
    s.L = 98.175f;
}
inline void channel_cover(S& s) {
    s.channelCover = "Y";
    s.Ecover = 29000000.0f;
    s.dfAllow = 0.03f;
}
inline void external(S& s) {
    s.externalLoads = "Y";
    s.Faxial = 1000.25f;
    s.Mbend = 2500.5f;
}

} // namespace tarvane::input_report_test
