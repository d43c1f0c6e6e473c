// What the tests ask of flanges. The engine's own calls for them are in tests/vessel/ways_test.py.
#include "components/flange_session.h"
#include "kind_tests.h"

namespace tarvane::app {

using namespace vessel;
namespace {

Covered covered() {
    const std::string known = with_all({{"Sfo", ""}, {"Sfa", ""}}) + "material = \"SA-105\"\n";
    const std::string shell = FLANGE_TOML + "Sn = 20000\nSna = 20000\nDshell = 12\n"
                                            "tShell = 0.375\nattachment = 1\n";
    // The stresses of SA-182 F304, reference 111, hold up to 5 in.
    const std::string sized =
        with_all({{"kind", "kind = \"thickness\""}, {"t", ""}, {"Sfo", ""}, {"Sfa", ""}}, BLIND) +
        "material = \"SA-182 F304\"\nmaterial_reference = 111\n";
    const std::string asked = FLANGE_TOML + "rigidity = true\n";
    const std::string channel =
        with("t", "t = 2", BLIND) + "channel_cover = true\nEcover = 29000000\ndfAllow = 0.03\n";
    const std::string part = FLANGE_TOML + "lp = 12\nmPart = 3\nyPart = 10000\n";
    const std::string en = "code = \"EN 13445\"\n";

    Covered all;
    auto& sides = all.sides;
    for (const std::string_view id : {"SHo", "SRo", "STo", "SAo", "BSo"})
        sides.push_back({id, 100.0f, 20000.0f, at("P")});
    for (const std::string_view id : {"SHa", "SRa", "STa", "SAa"})
        sides.push_back({id, 20000.0f, 20.0f, at("Sfa")});
    const std::vector<Sides> others = {
        {"calculation", 15.0f, 14.0f, at("Fod"), NO_ROW, NOT_MADE_STATE},
        {"STo", 100.0f, 5000.0f, at("P", BLIND)},
        {"SVo", 10.0f, 20000.0f, at("P", REVERSE)},
        {"SFo", 10.0f, 20000.0f, at("P", FULL_FACE)},
        {"BSa", 25000.0f, 500.0f, at("Sa")},
        {"SVa", 20000.0f, 20.0f, at("Sfa", REVERSE)},
        {"bolt_area", 100.0f, 5000.0f, at("P")},
        {"mawp", 100.0f, 5000.0f, at("P")},
        {"required_thickness", 2.0f, 0.5f, at("t", BLIND)},
        {"J_operating", 100.0f, 20000.0f, at("P", asked)},
        {"J_seating", 10000.0f, 1.0e6f, at("y", asked)},
        {"modulus", 300.0f, 2000.0f, at("T", asked)},
        {"bolt_circle", 17.0f, 20.0f, at("C")},
        {"bolt_circle", 17.0f, 14.0f, at("C")},
        {"partition_width", 0.1f, -0.1f, at("tp", part)},
        {"gasket_width", 14.0f, 14.76f, at("Gi")},
        {"gasket_place", 14.75f, 15.5f, at("Go")},
        {"rating", 200.0f, 100.0f, at("rating")},
        {"deflection", 3.0f, 1.0f, at("t", channel)},
        {"bolt_size", 0.875f, 0.93f, at("a", FLANGE_TOML + "bolt_size = \"nearest\"\n")},
        {"material_size", 150.0f, 6000.0f,
         at("P", with_all({{"n", "n = 24"}, {"a", "a = 2"}, {"A", "A = 24"}}, sized))},
        {"bolt_spacing_min", 17.0f, 15.0f, at("C", with("n", "n = 24"))},
        {"bolt_spacing_max", 17.0f, 40.0f, at("C", with_all({{"A", "A = 60"}, {"n", "n = 20"}}))},
        {"radial_distance", 17.5f, 15.0f, at("C")},
        {"edge_distance", 19.0f, 17.5f, at("A")},
        {"gasket_width_min", 10000.0f, 1000.0f, at("y")},
        {"full_face_thickness", 2.0f, 0.05f, at("t", FULL_FACE + en)},
        {"hub_cylinder", 100.0f, 5000.0f, at("P")},
        {"hub_thickness", 0.375f, 0.02f, at("g0", FLANGE_TOML + en)},
        {"attached_shell", 100.0f, 5000.0f, at("P_operating", shell)},
        // UCS-56: P-number 1 above 1 1/4 in. without preheat.
        {"heat_treatment", 0.5f, 2.0f, at("g0", "pwht = false\n" + with("g1", "g1 = 2.5", known))},
    };
    sides.insert(sides.end(), others.begin(), others.end());
    const std::string openings = BLIND + "D1 = 2\nD2 = 1\nedge1 = 2\nedge2 = 2\npitch = 6\n";
    add_openings(all, openings, "D1", "D2", 8.0f);
    all.pairs = {{"openings", openings, with("D1", "D1 = 9", openings), "pass", NO_ROW},
                 {"bolt_count", FLANGE_TOML, with("n", "n = 14")}};
    return all;
}

Draw draw() {
    return {{{"P", "150"},     {"T", "300"},        {"B", "12.0"},         {"A", "19.0"},
             {"t", "1.6"},     {"g0", "0.375"},     {"g1", "1.19"},        {"h", "3.25"},
             {"Sfo", "20000"}, {"Sfa", "20000"},    {"C", "17.0"},         {"n", "12"},
             {"a", "0.875"},   {"Sb", "25000"},     {"Sa", "25000"},       {"Fod", "15.0"},
             {"Fid", "12.0"},  {"Go", "14.75"},     {"Gi", "14.0"},        {"m", "3"},
             {"y", "10000"},   {"column", "\"I\""}, {"root_area", "0.42"}, {"LjID", "12.5"},
             {"LjOD", "14.5"}, {"tShell", "0.375"}, {"w", "0.25"},         {"rating", "300"},
             {"ci", "0.0625"}, {"Dshell", "12"},    {"Sn", "18000"}},
            {{"type",
              {"\"weld neck\"", "\"slip on\"", "\"ring\"", "\"loose slip on\"", "\"loose ring\"",
               "\"lap joint\"", "\"blind\"", "\"blind\"", "\"reverse weld neck\"",
               "\"loose reverse\""}},
             {"kind", {"\"analyse\"", "\"thickness\"", "\"design\"", "\"rated\""}},
             {"code", {"1", "2", "3", "4"}},
             {"bolting", {"1", "2", "3"}},
             {"facing", {"1", "2", "5", "6", "8", "9"}},
             {"bolt_size", {"\"nearest\""}},
             {"partition_gasket", SWITCH},
             {"external_loads", SWITCH},
             {"mating_loads", {"", "false"}},
             {"channel_cover", {"", "true", "false"}},
             {"patterned_holes", SWITCH},
             {"rigidity", SWITCH},
             {"D1", {"", "2"}},
             {"facing_part", {"", "1", "6"}},
             {"lp", {"", "11"}},
             {"tp", {"", "0.5"}},
             {"mPart", {"", "3"}},
             {"yPart", {"", "9000"}},
             {"d", {"", "9"}},
             {"D", {"", "14"}}}};
}

// All but the element of the key itself.
void append(std::string& all, const Outcome& outcome, const Key& key) {
    const auto& o = static_cast<const FlangeOutcome&>(outcome);
    append_values(all, o.map_nc, o.t_req_new_cold, o.t_req_new, o.mawp, o.t_req, o.found);
    for (int i = 1; i <= RECORD_ELEMENTS; ++i)
        if (key.place != Place::record || key.index != i) append_values(all, o.result(i));
}

const TestsOfKind KNOWN("flange", [] {
    return KindTests{.covered = covered(), .draw = draw(), .append = append};
});

} // namespace
} // namespace tarvane::app
