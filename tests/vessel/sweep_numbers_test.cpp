// Rows of a flange's numbers alone, of every type, code and key: what one leaves must not be found in the next one.
#include "sweep_fixture.h"

namespace tarvane::vessel {

namespace {

using Keys = std::map<std::string, std::string>; // of a flange, and their values in JSON

std::string flange_request(const Keys& flange) {
    std::string keys;
    for (const auto& [key, value] : flange)
        keys += (keys.empty() ? "\"" : ", \"") + key + "\": " + value;
    return R"({"tarvane": 1, "flange": [{)" + keys + "}]}";
}

Keys flange_of(int type, int code) {
    const bool reverse = type == 8 || type == 9;
    Keys keys{{"type", std::to_string(type)},
              {"code", std::to_string(code)},
              {"P", "135"},
              {"T", "650"},
              {"t", "1.4375"},
              {"B", reverse ? "20" : "26.25"},
              {"A", "32.875"},
              {"g0", "0.3125"},
              {"g1", "0.6875"},
              {"h", "2.125"},
              {"Fod", "30"},
              {"Fid", "29"},
              {"Go", "30"},
              {"Gi", "29"},
              {"Sfo", "17800"},
              {"Sfa", "20000"},
              {"Sb", "25000"},
              {"Sa", "25000"},
              {"C", "31.25"},
              {"a", "0.75"},
              {"bolting", "1"},
              {"n", "44"},
              {"m", "3.75"},
              {"y", "7600"},
              {"facing", "5"},
              {"column", "2"},
              {"w", "0.125"},
              {"Dshell", "26.25"},
              {"tShell", "0.3125"},
              {"Sn", "17800"},
              {"Sna", "20000"}};
    if (type == 6) keys.insert({{"LjID", "27"}, {"LjOD", "29.5"}});
    return keys;
}

// The engine is not reset between such rows: what one leaves must not be found in the next one, whatever the options.
TEST(Sweep, OfEveryTypeAndCode) {
    const Keys options[] = {
        {{"rigidity", "true"}, {"ci", "0.0625"}, {"corroded_rigidity", "true"}},
        {{"axial_force", "1000"}, {"bending_moment", "500"}, {"quiet_overstress", "true"}},
        {{"lp", "20"}, {"tp", "0.25"}, {"mPart", "3"}, {"yPart", "5000"}, {"tg", "0.125"}},
        {{"mating_operating", "300000"}, {"mating_seating", "200000"}, {"mating_design", "400000"}},
        {{"P_external", "15"}, {"ce", "0.0625"}},
        {{"kind", "2"}, {"rigidity", "true"}},
        {{"p_number", "1"}, {"material", "\"SA-105\""}, {"seating_rule", "1"}},
        {{"failure_corrosion", "true"}, {"ci", "0.125"}},
    };
    std::size_t option = 0;
    for (int type = 1; type <= 9; ++type) {
        for (int code = 1; code <= 4; ++code) {
            for (int round = 0; round < 2; ++round) {
                Keys flange = flange_of(type, code);
                if (round == 0) {
                    for (const auto& [key, value] : options[option++ % std::size(options)])
                        flange[key] = value;
                }
                flange["t"] = "@1";
                flange["P"] = "@0";
                const bool thick = type >= 8;
                compare("flange", flange_request(flange),
                        {{"flange[0].P", -20, 300}, {"flange[0].t", thick ? 3.0 : 0.5, 6}}, 8, 2);
            }
        }
    }
}

// Each number key by itself, from values that are sound to such as are not and back.
TEST(Sweep, OfEachKeyOfAFlange) {
    const Handle handle;
    std::vector<std::string> keys;
    for (const Value& kind : *kinds_of(handle).list()) {
        if (text_at(kind, "name") != "flange") continue;
        const Value& list = at(kind, "keys");
        for (const Value& key : *list.list()) {
            const std::string quantity = text_at(key, "quantity");
            const std::string name = text_at(key, "name");
            const bool number = quantity != "text" && quantity != "choice" && quantity != "flag" &&
                                quantity != "designation" && quantity != "waivers";
            if (number && name.find('.') == std::string::npos) keys.push_back(name);
        }
    }
    ASSERT_GT(keys.size(), 60u);
    const std::vector<std::string> of_cover{"P",  "t",  "D",     "d",     "L",
                                            "D1", "D2", "edge1", "edge2", "pitch"};
    std::size_t compared = 0;
    for (const int type : {1, 7}) {
        Keys flange = flange_of(type, 1);
        flange.insert({{"rigidity", "true"},
                       {"axial_force", "1000"},
                       {"ci", "0.0625"},
                       {"tp", "0.2"},
                       {"bending_moment", "500"},
                       {"lp", "20"},
                       {"mPart", "3"},
                       {"yPart", "5000"}});
        const bool cover = type == 7;
        if (cover)
            flange.insert(
                {{"D1", "2"}, {"D2", "1.5"}, {"edge1", "5"}, {"edge2", "6"}, {"pitch", "9"}});
        for (const std::string& key : keys) {
            if (cover && std::find(of_cover.begin(), of_cover.end(), key) == of_cover.end())
                continue;
            const auto given = flange.find(key);
            const double base = given == flange.end() ? 0.5 : std::stod(given->second);
            Keys swept = flange;
            swept[key] = "@0";
            const std::vector<double> x{base, base * 1.25, 0.0, base, -base, base * 0.5, 1.0};
            compared +=
                compare_rows(handle, "flange", flange_request(swept), {"flange[0]." + key}, x);
        }
    }
    EXPECT_GT(compared, 300u);
}

} // namespace
} // namespace tarvane::vessel
