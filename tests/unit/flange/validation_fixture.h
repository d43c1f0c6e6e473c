// Common ground of the input tests and their messages: a flange that no test objects to, and the
// boxes that were shown.
#pragma once

#include "../edge_numbers.h"
#include "flange/validation.h"
#include "host/services.h"
#include "stage_fixture.h"

namespace tarvane::validation_test {

using stage_test::Lines;

// An integral flange that no test objects to.
inline FLANGE_STATE sound() {
    FLANGE_STATE s;
    s.element1 = 0;
    s.code = ASME_VIII_1;
    s.type = INTEGRAL_WELD_NECK;
    s.kind = ANALYSE;
    s.P = 135.0f;
    s.Sfo = 17800.0f;
    s.Sfa = 20000.0f;
    s.Sb = s.Sa = 25000.0f;
    s.ci = 0.0625f;
    s.ce = 0.03125f;
    s.B = 26.25f;
    s.A = 32.875f;
    s.C = 31.25f;
    s.t = 1.4375f;
    s.go = 0.3125f;
    s.g1 = 0.6875f;
    s.h = 2.125f;
    s.dh = s.aNominal = 0.75f;
    s.nBolts = 44;
    s.Fid = 28.5f;
    s.Fod = 30.5f;
    s.Gi = 29.0f;
    s.Go = 30.0f;
    s.sketch = 2;
    s.column = 2.0f;
    s.m = 3.75f;
    s.y = 7600.0f;
    s.tShell = 0.3125f;
    s.matingLoads = "N";
    s.useCorrosion = "Y";
    s.description = "Nozzle N1";
    return s;
}

inline FLANGE_STATE sound_blind() {
    FLANGE_STATE s = sound();
    s.type = BLIND;
    s.go = s.g1 = s.h = s.B = 0.0f;
    return s;
}

struct Box {
    std::string text, title;
};
inline std::vector<Box> boxes;
inline void TARVANE_HOST_CALL keep_box(void*, const char* text, const char* title) {
    boxes.push_back({text, title});
}

class Validation : public stage_test::StageTest {
  protected:
    Validation() {
        boxes.clear();
        HOST_SERVICES services;
        services.version = HOST_SERVICES_VERSION;
        services.message_box = keep_box;
        SET_HOST_SERVICES(&services);
    }
    ~Validation() override {
        SET_NO_DIALOG(false);
        SET_HOST_SERVICES(nullptr);
    }

    static Lines check(FLANGE_STATE& s, Int& fatalCount) {
        CHECK_FLANGE_INPUT(s, fatalCount);
        return take_lines();
    }
    // The messages of a flange without the lines around them.
    static Lines messages(FLANGE_STATE s, Int* fatal = nullptr) {
        Int fatalCount = -7;
        Lines lines = check(s, fatalCount);
        if (fatal) *fatal = fatalCount;
        if (lines.empty()) return lines;
        EXPECT_GE(lines.size(), 5u);
        lines.erase(lines.begin(), lines.begin() + 4);
        if (fatalCount != 0 && s.element1 >= 0) {
            EXPECT_TRUE(lines.back().starts_with("Number of fatal errors: "));
            lines.pop_back();
        }
        return lines;
    }
    static std::size_t count(const Lines& lines, std::string_view line) {
        return static_cast<std::size_t>(std::count(lines.begin(), lines.end(), line));
    }
    static std::size_t count_begun(const Lines& lines, std::string_view begin) {
        return static_cast<std::size_t>(std::count_if(
            lines.begin(), lines.end(), [&](const auto& line) { return line.starts_with(begin); }));
    }
};

} // namespace tarvane::validation_test
