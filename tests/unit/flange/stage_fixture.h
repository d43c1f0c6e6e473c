// Common ground of the tests of the flange stages: a report into the line store, the published
// flanges, and the check of printed formulas against the values under them.
#pragma once

#include "../report/report_fixture.h"
#include "flange/state.h"
#include "printed_arithmetic.h"

#include <cmath>
#include <iterator>

namespace tarvane::stage_test {

using Lines = std::vector<std::string>;

inline std::string joined(const Lines& lines) {
    std::string text;
    for (const std::string& line : lines)
        text += line + "\n";
    return text;
}

// Single precision against a second computation in double.
inline void expect_close(Real actual, double expected, double relative = 2e-6) {
    EXPECT_NEAR(static_cast<double>(actual), expected, relative * std::fabs(expected));
}

class StageTest : public report_test::ReportTest {
  protected:
    StageTest() {
        state_at_load();
        OPEN_LINE_STORE();
        report_to_store();
    }
    ~StageTest() override { state_at_load(); }

    static void state_at_load() {
        RESET_SWITCHES();
        RESET_CODE_CONSTANTS();
    }

    // Lines written since the last call.
    static Lines take_lines() {
        Lines lines = stored_lines();
        LINE_COUNT = 0;
        return lines;
    }

    // The lines from a heading up to the next one: heading, symbol line, number lines, value lines.
    static Lines block(const Lines& lines, std::string_view heading) {
        const auto first = std::find(lines.begin(), lines.end(), trimmed(heading));
        if (first == lines.end()) return {};
        const auto is_heading = [](const std::string& line) {
            return line.ends_with("]:") || line.ends_with(": ") || line.ends_with("Calculations:");
        };
        return {first, std::find_if(std::next(first), lines.end(), is_heading)};
    }

    static bool has_unit(const std::string& line) {
        const std::string text = line.substr(0, line.find_first_of(",["));
        return text.find(" lbf") != std::string::npos || text.find(" in.") != std::string::npos ||
               text.find(" in\xB2") != std::string::npos || text.find(" N") != std::string::npos ||
               text.find(" mm") != std::string::npos;
    }

    // Evaluates every printed formula: the number lines between a symbol line and the first value
    // line after it. Returns how many there were.
    static int check_printed_arithmetic(const Lines& lines) {
        int checked = 0;
        for (std::size_t i = 0; i + 2 < lines.size(); ++i) {
            if (!lines[i].ends_with("]:")) continue;
            std::string formula;
            std::size_t at = i + 2;
            while (at < lines.size() && !has_unit(lines[at]))
                formula += lines[at++];
            if (formula.empty() || at == lines.size()) continue;
            SCOPED_TRACE(lines[i] + "\n" + formula + "\n" + lines[at]);
            if (formula.find('@') != std::string::npos) continue; // more than six placeholders

            const std::size_t number = lines[at].find("= ") + 2;
            const bool negative = lines[at][number] == '-';
            std::size_t end = number + (negative ? 1 : 0);
            Interval value = printed_number(lines[at], end);
            if (negative) value = {-value.high, -value.low};
            const Interval result = PrintedFormula(formula.substr(formula.find('=') + 1)).value();
            EXPECT_TRUE(result.meets(value)) << result.low << " to " << result.high;
            ++checked;
        }
        return checked;
    }
};

// Welding-neck flange of Jawad and Farr, "Structural Analysis and Design of Process Equipment",
// example 10.9. The outside diameter is not part of the printed example.
inline FLANGE_STATE jawad_farr_10_9() {
    FLANGE_STATE s;
    s.type = INTEGRAL_WELD_NECK;
    s.code = ASME_VIII_1;
    s.P = s.Peq = 2500.0f;
    s.Sfo = s.Sfa = 17500.0f;
    s.Sb = s.Sa = 19200.0f;
    s.B = s.Bcor = 10.75f;
    s.A = 26.5f;
    s.C = 22.5f;
    s.g1 = 3.375f;
    s.go = 2.0f;
    s.Gi = s.GiC = 13.75f;
    s.Go = s.GoC = 15.75f;
    s.Fod = 15.75f;
    s.m = 3.0f;
    s.y = 10000.0f;
    s.sketch = 1;
    s.column = 2.0f;
    s.Ab = 36.8f;
    return s;
}

// Example E4.16.1 of ASME PTB-3, an integral flange with a jacketed gasket on a nubbin face.
inline FLANGE_STATE ptb3_e4_16_1() {
    FLANGE_STATE s;
    s.type = INTEGRAL_WELD_NECK;
    s.code = ASME_VIII_1;
    s.P = s.Peq = 135.0f;
    s.Sfo = 17800.0f;
    s.Sfa = 20000.0f;
    s.Sb = s.Sa = 25000.0f;
    s.B = s.Bcor = 26.25f;
    s.A = 32.875f;
    s.C = 31.25f;
    s.t = 1.4375f;
    s.go = 0.3125f;
    s.g1 = 0.6875f;
    s.h = 2.125f;
    s.Gi = s.GiC = 29.0f;
    s.Go = s.GoC = 30.0f;
    s.Fod = 30.0f;
    s.w = 0.125f;
    s.m = 3.75f;
    s.y = 7600.0f;
    s.sketch = 5;
    s.column = 2.0f;
    s.Ab = 44.0f * 0.302f;
    return s;
}

// Loose ring of a cryostat with an O-ring: RingFlangeStress of
// github.com/yuntsebaryon/SLArpaasPressureAna. Its loads are formed with 0.785 for a quarter of pi.
inline FLANGE_STATE cryostat_ring() {
    FLANGE_STATE s;
    s.type = LOOSE_RING;
    s.code = ASME_VIII_1;
    s.P = s.Peq = 15.0f;
    s.Sb = s.Sa = 17500.0f;
    s.A = 18.0f;
    s.B = s.Bcor = 14.0f;
    s.C = 17.0f;
    s.G = 15.086f;
    s.t = 0.63f;
    s.Ab = 8.0f * 0.045f;
    return s;
}

} // namespace tarvane::stage_test
