// The input tests of a flange. The numerical stages rely on them and guard very little themselves.
#include "flange/validation.h"

#include "flange/results.h"
#include "frame/units.h"
#include "report/lines.h"

#include <iterator>

namespace tarvane {

namespace {

using STATE = FLANGE_STATE;

constexpr Int FATAL_ERROR_COUNT = 40; // number of the closing message

bool not_design(const STATE& s) { return s.kind != DESIGN; }
bool blind(const STATE& s) { return s.type == BLIND; }
// A flange whose face may end inside the bore's diameter: loose ring, lap joint.
bool free_of_bore(const STATE& s) { return s.type == LOOSE_RING || s.type == LAP_JOINT; }
bool mating_loads(const STATE& s) { return s.matingLoads(1) == 'Y'; }
// The hub proportions are tested under ASME only, and not for a standard flange.
bool hub_proportions_count(const STATE& s) {
    return s.type == INTEGRAL_WELD_NECK && up_to_asme_viii(s.code) && s.standardFlange == 0;
}

// Corroded contact diameters of the gasket.
Real contact_inside(const STATE& s) { return max(s.Gi, s.Fid + 2.0f * s.ci); }
Real contact_outside(const STATE& s) { return min(s.Go, s.Fod); }

Real corroded_hub(const STATE& s, Real g) { return g - s.ci - s.ce; }
Real hub_taper(const STATE& s) { return s.h / (s.g1 - s.go); }
Real least_hub_length(const STATE& s) { return 1.5f * corroded_hub(s, s.go); }

// One test: the message it raises, when, and the value that the message shows in report units.
struct INPUT_TEST {
    Int message;
    bool (*fires)(const STATE& s);
    Real (*value)(const STATE& s);
};

Real none(const STATE&) { return 0.0f; }

// clang-format off
constexpr INPUT_TEST TESTS[] = {
    {1, [](const STATE& s) { return s.type < INTEGRAL_WELD_NECK || s.type > LOOSE_REVERSE; },
        [](const STATE& s) { return static_cast<Real>(s.type); }},
    {2, [](const STATE& s) { return s.kind < ANALYSE || s.kind > DESIGN; },
        [](const STATE& s) { return static_cast<Real>(s.kind); }},
    {3, [](const STATE& s) { return not_design(s) && s.B >= s.A; },
        [](const STATE& s) { return as_diameter(s.A); }},
    {4, [](const STATE& s) { return s.B < 0.0f; },
        [](const STATE& s) { return as_diameter(s.B); }},
    {5, [](const STATE& s) { return not_design(s) && s.A < 0.0f; },
        [](const STATE& s) { return as_diameter(s.A); }},
    {6, [](const STATE& s) { return s.go != 0.0f && corroded_hub(s, s.go) < 0.0f; },
        [](const STATE& s) { return as_thickness(s.go); }},
    {7, [](const STATE& s) {
            return not_design(s) && s.g1 != 0.0f && corroded_hub(s, s.g1) < 0.0f;
        },
        [](const STATE& s) { return as_thickness(s.g1); }},
    {8, [](const STATE& s) { return s.h <= 0.0001f && (s.go > 0.0f || s.g1 > 0.0f); },
        [](const STATE& s) { return as_thickness(s.h); }},
    {9, [](const STATE& s) { return s.Sfo <= 0.0f; },
        [](const STATE& s) { return as_stress(s.Sfo); }},
    {10, [](const STATE& s) { return s.Sfa <= 0.0f; },
         [](const STATE& s) { return as_stress(s.Sfa); }},
    {11, [](const STATE& s) { return s.Sb <= 0.0f; },
         [](const STATE& s) { return as_stress(s.Sb); }},
    {12, [](const STATE& s) { return s.Sa <= 0.0f; },
         [](const STATE& s) { return as_stress(s.Sa); }},
    {13, [](const STATE& s) {
             return (s.type == INTEGRAL_RING || s.type == LOOSE_RING) && s.nSplits > 2;
         },
         [](const STATE& s) { return static_cast<Real>(s.nSplits); }},
    {14, [](const STATE& s) {
             return blind(s) && s.channelCover(1) == 'Y' && s.Ecover <= 100000.0f;
         },
         [](const STATE& s) { return as_stress(s.Ecover); }},
    {15, [](const STATE& s) { return blind(s) && s.D < 0.0f; },
         [](const STATE& s) { return as_diameter(s.D); }},
    {16, [](const STATE& s) { return blind(s) && s.dS < 0.0f; },
         [](const STATE& s) { return as_diameter(s.dS); }},
    {35, [](const STATE& s) { return blind(s) && s.dS < s.D && s.L <= 0.001f; },
         [](const STATE& s) { return as_diameter(s.dS); }},
    {36, [](const STATE& s) { return blind(s) && s.D < s.dS; },
         [](const STATE& s) { return as_diameter(s.dS); }},
    {17, [](const STATE& s) { return not_design(s) && s.C <= s.B; },
         [](const STATE& s) { return as_diameter(s.C); }},
    {18, [](const STATE& s) {
             return s.h + s.go + s.g1 > 0.001f &&
                    (s.h < 0.01f || s.go < 0.01f || s.g1 < 0.01f);
         },
         [](const STATE& s) { return as_thickness(s.g1); }},
    {19, [](const STATE& s) { return not_design(s) && s.nBolts < 2; },
         [](const STATE& s) { return static_cast<Real>(s.nBolts); }},
    {20, [](const STATE& s) {
             return not_design(s) && s.C <= s.A && s.dh > s.A / 2.0f - s.B / 2.0f;
         },
         [](const STATE& s) { return as_diameter(s.dh); }},
    {21, [](const STATE& s) { return !free_of_bore(s) && s.Fid < s.B; },
         [](const STATE& s) { return as_diameter(s.Fid); }},
    {22, [](const STATE& s) { return not_design(s) && s.Fod > s.A; },
         [](const STATE& s) { return as_diameter(s.Fod); }},
    {23, [](const STATE& s) { return s.Fid >= s.Fod; },
         [](const STATE& s) { return as_diameter(s.Fod); }},
    {24, [](const STATE& s) { return !free_of_bore(s) && s.Gi < s.B; },
         [](const STATE& s) { return as_diameter(s.Gi); }},
    {25, [](const STATE& s) { return not_design(s) && s.Go > s.A; },
         [](const STATE& s) { return as_diameter(s.Go); }},
    {26, [](const STATE& s) { return s.Gi >= s.Go; },
         [](const STATE& s) { return as_diameter(s.Go); }},
    {27, [](const STATE& s) { return s.sketch < 1 || s.sketch > 9; },
         [](const STATE& s) { return static_cast<Real>(s.sketch); }},
    {28, [](const STATE& s) { return s.m < 0.0f; },
         [](const STATE& s) { return s.m; }},
    {29, [](const STATE& s) { return s.y < 0.0f; },
         [](const STATE& s) { return s.m; }}, // shows the gasket factor
    {30, [](const STATE& s) { return s.column < 1.0f || s.column > 2.0f; },
         [](const STATE& s) { return s.column; }},
    {31, [](const STATE& s) { return mating_loads(s) && s.Wmo < 0.0f; },
         [](const STATE& s) { return as_force(s.Wmo); }},
    {32, [](const STATE& s) { return mating_loads(s) && s.Wms < 0.0f; },
         [](const STATE& s) { return as_force(s.Wms); }},
    {33, [](const STATE& s) { return s.matingLoads == "Y" && s.Wmd < 0.0f; },
         [](const STATE& s) { return as_force(s.Wmd); }},
    {34, [](const STATE& s) { return contact_inside(s) >= contact_outside(s); },
         [](const STATE& s) { return as_diameter(contact_inside(s) - contact_outside(s)); }},
    {39, [](const STATE& s) {
             return not_design(s) &&
                    1.1f * s.dh * static_cast<Real>(s.nBolts) > PI_IN_FIVE_DECIMALS * s.C;
         },
         [](const STATE& s) { return static_cast<Real>(s.nBolts); }},
    {41, [](const STATE& s) { return s.C > s.A; },
         [](const STATE& s) { return as_diameter(s.C); }},
    {42, [](const STATE& s) {
             return hub_proportions_count(s) && s.h > 0.0f && s.g1 - s.go > 0.0f &&
                    hub_taper(s) < 2.9999f;
         },
         hub_taper},
    {43, [](const STATE& s) { return blind(s) && s.useCorrosion(1) == 'N'; }, none},
    {44, [](const STATE& s) {
             return hub_proportions_count(s) && s.h > 0.0f && s.go > 0.0f &&
                    s.h < least_hub_length(s);
         },
         [](const STATE& s) { return as_thickness(least_hub_length(s)); }},
    {45, [](const STATE& s) {
             return up_to_asme_viii(s.code) && (s.type < LOOSE_SLIP_ON || s.type > BLIND) &&
                    s.go > s.tShell + 0.00001f && s.tShell > 0.0001f;
         },
         none},
};
// clang-format on

struct FAILURE {
    Int message;
    Real value;
};
static_assert(std::size(TESTS) == 42 && MOST_MESSAGES > 42);

// A blind flange has no hub and no bore, and loads of a mating flange count only when asked for.
void clear_foreign_input(STATE& s) {
    if (blind(s)) s.go = s.g1 = s.h = s.B = 0.0f;
    if (!mating_loads(s)) s.Wmo = s.Wms = s.Wmd = 0.0f;
}

} // namespace

void CHECK_FLANGE_INPUT(FLANGE_STATE& s, Int& fatalCount) {
    fatalCount = 0;
    clear_foreign_input(s);

    FAILURE failures[MOST_MESSAGES];
    Int count = 0;
    for (const INPUT_TEST& test : TESTS)
        if (test.fires(s)) failures[count++] = {test.message, test.value(s)};
    if (count == 0) return;

    BLANK_LINE();
    BLANK_LINE();
    LinePieces().text("Warnings for Flange : ").text(s.description.view()).write(MESSAGE_STYLE);
    BLANK_LINE();

    Int fatal = 0;
    for (Int i = 0; i < count; ++i) {
        NOTE_MESSAGE(failures[i].message, failures[i].value);
        FLANGE_MESSAGE(failures[i].message, failures[i].value, fatal, s.element1, s.code);
        fatalCount += fatal;
        if (fatal == 1 && s.element1 < 0) return; // stand-alone form: the first one ends it
    }
    if (fatalCount == 0) return;
    NOTE_MESSAGE(FATAL_ERROR_COUNT, static_cast<Real>(fatalCount));
    FLANGE_MESSAGE(FATAL_ERROR_COUNT, static_cast<Real>(fatalCount), fatal, s.element1, s.code);
    fatalCount = 1;
}

} // namespace tarvane
