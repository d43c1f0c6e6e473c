// Notes on materials by name: exempt austenitic grades, SA-36 and its companions, the curve of a record.
#include "mdmt_fixture.h"

#include "toughness/material_notes.h"

namespace tarvane {
namespace {

using toughness_test::Line;
using toughness_test::material_file;
using toughness_test::metric_report;
using toughness_test::Record;

class MaterialNotes : public toughness_test::ToughnessTest {};

TEST_F(MaterialNotes, KeyOfAName) {
    EXPECT_EQ(MATERIAL_NAME_KEY("SA-202 A"), "SA202A");
    EXPECT_EQ(MATERIAL_NAME_KEY(" SA/202.A - "), "SA202A");
    EXPECT_EQ(MATERIAL_NAME_KEY("SA-202 a"), "SA202a") << "its letters stay";
    EXPECT_EQ(MATERIAL_NAME_KEY(std::string_view("SA\0-487\0 1", 10)), "SA4871");
    EXPECT_TRUE(MATERIAL_NAME_KEY("").blank());
    EXPECT_TRUE(MATERIAL_NAME_KEY("./- ").blank());
}

TEST_F(MaterialNotes, CurveOfTheRecord) {
    write_file("system", "MATFILE1.BIN",
               material_file(1, 0, {Record("SA-516 70", 5).put(156, Int{2}).put(160, Int{4})}));
    Int curve = 7;
    GETUCSCURVE("SA-516 70", 5, 1, 0, curve);
    EXPECT_EQ(curve, 2);
    GETUCSCURVE("sa516-70", 5, 1, 1, curve);
    EXPECT_EQ(curve, 4);
    GETUCSCURVE("SA-516 70", 5, 1, 2, curve);
    EXPECT_EQ(curve, 2) << "1 asks for the thin sections";
    for (const auto& [name, reference, code] :
         {std::tuple{"SA-516 60", 5, 1}, {"SA-516 70", 6, 1}, {"SA-516 70", 5, 2}, {"", 5, 1}}) {
        curve = 7;
        GETUCSCURVE(name, reference, code, 0, curve);
        EXPECT_EQ(curve, -1) << name << reference << code;
    }
}

TEST_F(MaterialNotes, ExemptGradesAreTenSpecificationsByEighteenGrades) {
    const char* const specifications[] = {"SA-182", "SA-213", "SA-240", "SA-249", "SA-268",
                                          "SA-312", "SA-376", "SA-403", "SA-479", "SA-688"};
    const char* const grades[] = {"304",   "304L",   "316",   "316L",   "321",   "347",
                                  "TP304", "TP304L", "TP316", "TP316L", "TP321", "TP347",
                                  "F304",  "F304L",  "F316",  "F316L",  "F321",  "F347"};
    for (const char* const specification : specifications)
        for (const char* const grade : grades) {
            const std::string name = std::string(specification) + " " + grade;
            EXPECT_TRUE(LIS_EXEMPT_SS(1, name)) << name;
            EXPECT_TRUE(LIS_EXEMPT_SS(1, name + "        ")) << name;
        }
    for (const char* const name :
         {"SA-240 304H", "SA-240 309", "SA-516 70", "SA-240", "304", "", "SA-240  304",
          "sa-240 304", "SA-240 304x", " SA-240 304", "SA-240304", "SA-240 304         x"})
        EXPECT_FALSE(LIS_EXEMPT_SS(1, name)) << name;
    EXPECT_FALSE(LIS_EXEMPT_SS(1, std::string_view("SA-240 304\0", 11))) << "a NUL counts";
}

TEST_F(MaterialNotes, ExemptOnlyUnderDivision1) {
    EXPECT_TRUE(LIS_EXEMPT_SS(1, "SA-240 304"));
    EXPECT_TRUE(LIS_EXEMPT_SS(0, "SA-240 304"));
    EXPECT_FALSE(LIS_EXEMPT_SS(2, "SA-240 304"));
    moduleCode = 2;
    EXPECT_FALSE(LIS_EXEMPT_SS(1, "SA-240 304"));
    moduleCode = 1;
    EXPECT_TRUE(LIS_EXEMPT_SS(1, "SA-240 304"));
    SETUP[0].whole = 2; // the code of the setup block is another one
    EXPECT_TRUE(LIS_EXEMPT_SS(1, "SA-240 304"));
}

TEST_F(MaterialNotes, Uha51NoteOfAnExemptGrade) {
    Real r[5] = {7.0f, 7.0f, 7.0f, 7.0f, 7.0f};
    UHA51_NOTE(1, "SA-240 304      ", r[0], r[1], r[2], r[3], r[4]);
    EXPECT_EQ(r[0], -320.0f);
    EXPECT_EQ(r[1], -320.0f);
    EXPECT_EQ(r[2], 1.0101f);
    EXPECT_EQ(r[3], 1.0f);
    EXPECT_EQ(r[4], 1.0f);
    EXPECT_EQ(reported(), (std::vector<Line>{
                              {""},
                              {"SA-240 304, Min Metal Temp without impact per UHA-51: -320 \xB0"
                               "F"},
                          }));
    metric_report();
    UHA51_NOTE(1, "SA-312 TP316L", r[0], r[1], r[2], r[3], r[4]);
    EXPECT_EQ(r[0], -320.0f);
    EXPECT_EQ(reported()[1].text,
              "SA-312 TP316L, Min Metal Temp without impact per UHA-51: -196 \xB0"
              "C");
}

TEST_F(MaterialNotes, Uha51NoteOfAnotherMaterialChangesNothing) {
    Real r[5] = {7.0f, 7.0f, 7.0f, 7.0f, 7.0f};
    UHA51_NOTE(1, "SA-516 70", r[0], r[1], r[2], r[3], r[4]);
    UHA51_NOTE(2, "SA-240 304", r[0], r[1], r[2], r[3], r[4]);
    for (const Real value : r)
        EXPECT_EQ(value, 7.0f);
    EXPECT_TRUE(reported().empty());
}

TEST_F(MaterialNotes, Ucs6WarnsOfThickStructuralSteels) {
    UCS6_NOTE("SA-36", 0.75f, 1, 0);
    EXPECT_EQ(reported(), (std::vector<Line>{
                              {"Warning for Material: SA-36 at 0.7500 in. thick", WARNING_STYLE},
                              {"Please check the requirements of UCS-6(b)(3) for this material.",
                               WARNING_STYLE},
                          }));
    metric_report();
    UCS6_NOTE("SA-283 C  ", 1.0f, 1, 0);
    EXPECT_EQ(reported()[0].text, "Warning for Material: SA-283 C at 25.4000 mm thick");
}

TEST_F(MaterialNotes, Ucs6ByNameThicknessAndCode) {
    struct {
        std::string_view name;
        Real thickness;
        Int code, g40;
        bool warned;
    } const rows[] = {
        {"SA-36", 0.625f, 1, 0, false},        {"SA-36", 0.6251f, 1, 0, true},
        {"SA-36", 0.75f, 0, 0, true},          {"SA-36", 0.75f, 2, 0, false},
        {"SA-36", NAN, 1, 0, false},           {" S A - 3 6 ", 0.75f, 1, 0, true},
        {"SA-36 X", 0.75f, 1, 0, false},       {"SA-362", 0.75f, 1, 0, false},
        {"SA36", 0.75f, 1, 0, false},          {"SA-283", 0.75f, 1, 0, true},
        {"SA- 283 D", 0.75f, 1, 0, true},      {"X SA-283", 0.75f, 1, 0, true},
        {"SA283", 0.75f, 1, 0, false},         {{"SA\0-36", 6}, 0.75f, 1, 0, true},
        {"SA/CSA-G40.21", 0.75f, 1, 1, true},  {"SA/CSA-G40.21", 0.75f, 1, 0, false},
        {"SA/CSA-G40.21", 0.75f, 1, 2, false}, {"SA/CSA-G40.21 38W", 0.75f, 1, 1, false},
        {"SA-516 70", 0.75f, 1, 1, false},     {"", 0.75f, 1, 1, false},
    };
    for (const auto& row : rows) {
        UCS6_NOTE(row.name, row.thickness, row.code, row.g40);
        EXPECT_EQ(reported().size(), row.warned ? 2u : 0u) << row.name << " " << row.thickness;
    }
    METRICCONSTANTS_mp_G_NMETRIC_CONSTANT = 1;
    SET_METRIC_CONSTANTS();
    UCS6_NOTE("SA-36", 0.626f, 1, 0); // no 16 mm here
    EXPECT_EQ(reported().size(), 2u);
}

} // namespace
} // namespace tarvane
