#include "input/input_file.h"

#include "app_fixture.h"
#include "tarvane/tarvane.h"
#include "values/text.h"

#include <cmath>
#include <set>

namespace tarvane::app {

using namespace vessel;
namespace {

// ---- every key ---------------------------------------------------------------------------------------

// A text of the file for a key, and the number that the engine must get.
struct Sample {
    std::string written;
    float value;
};

Sample sample(const Key& key, const UnitSystem& units) {
    if (key.name == "E") return {"0.7", 0.7f};                 // a joint efficiency
    if (key.name == "bolting") return {"\"root area\"", 3.0f}; // there may be no user table
    switch (key.quantity) {
    case Quantity::flag:
        return {"true", 1.0f};
    case Quantity::whole:
        return {"3", 3.0f};
    case Quantity::choice: {
        const Choice& last = key.choices.back();
        return {vessel::in_quotes(last.name), static_cast<float>(last.number)};
    }
    case Quantity::temperature:
        return {"175.5", 175.5f * units.factors[9] + units.factors[8]};
    default:
        return {"7.25", 7.25f / units.factor(key.quantity)};
    }
}

// A flange that may have the key.
std::string flange_for(const Key& key) {
    if (key.name != "channel_cover" && key.name != "Ecover") return FLANGE_TOML;
    std::string cover = with("type", "type = \"blind\"", with("B", ""));
    for (const char* hub : {"g0", "g1", "h"})
        cover = with(hub, "", cover);
    return cover;
}

// Other keys that a key needs.
std::string companions(const Key& key) {
    if (key.name == "D") return "d = 1\n";
    if (key.name == "d") return "D = 1\n";
    if (key.name == "edition") return "code = 1\n";
    if (key.name == "bolting") return "root_area = 1\n";
    if (key.name == "type") return "tShell = 1\n";
    if (key.group == "mating_loads" || key.name == "mating_loads") {
        std::string all;
        for (const char* load : {"mating_operating", "mating_seating", "mating_design"})
            if (key.name != load) all += std::string(load) + " = 1\n";
        return all;
    }
    if (key.group == "partition_gasket" || key.name == "partition_gasket") {
        std::string all;
        for (const char* name : {"lp", "tp", "mPart", "yPart"})
            if (key.name != name) all += std::string(name) + " = 1\n";
        return all;
    }
    if (key.group == "patterned_holes" || key.name == "patterned_holes")
        return key.name == "D1" ? "" : "D1 = 1\n";
    return {};
}

class EveryKey : public testing::TestWithParam<const char*> {};

TEST_P(EveryKey, ReachesItsPlace) {
    const std::string head = std::string("units = \"") + GetParam() + "\"\n";
    const UnitSystem units = std::string(GetParam()) == "SI" ? si_units() : us_units();
    for (const Key& key : flange_keys().keys) {
        SCOPED_TRACE(key.name);
        const std::string name(key.name);
        // They need each other and a file of dimensions, or a name of a table.
        if (name.starts_with("standard.") || name == "gasket.type") continue;
        if (name == "attached_to" || name == "mates_with")
            continue; // they need a component to name
        if (key.quantity == Quantity::text) {
            const std::string longest(static_cast<std::size_t>(key.width), 'x');
            const FlangeInput flange =
                flange_of(with(name, name + " = " + vessel::in_quotes(longest)));
            if (key.place == Place::slot) {
                EXPECT_EQ(flange.text.substr(static_cast<std::size_t>(key.index), longest.size()),
                          longest);
            } else {
                EXPECT_EQ(flange.texts[static_cast<std::size_t>(key.index)], longest);
            }
            EXPECT_EQ(
                fault_lines(with(name, name + " = " + vessel::in_quotes(longest + 'x'))).size(),
                1u);
            continue;
        }
        if (key.quantity == Quantity::waivers) {
            const FlangeInput flange = flange_of(with(name, name + " = [\"heat_treatment\"]"));
            EXPECT_EQ(flange.text_of(key), "heat_treatment");
            continue; // its faults are those of ids
        }
        const Sample given = sample(key, units);
        const std::string toml =
            with(name, name + " = " + given.written, flange_for(key)) + companions(key);
        // The bolt is one of inches.
        const std::string bolts = key.name == "bolt_size" ? "" : "bolt_size = \"nearest\"\n";
        const FlangeInput flange = flange_of(head + toml + bolts);
        switch (key.place) {
        case Place::record:
            EXPECT_EQ(flange.record[static_cast<std::size_t>(key.index)], given.value);
            break;
        case Place::setting:
            EXPECT_EQ(flange.settings[static_cast<std::size_t>(key.index)], given.value);
            break;
        default:
            EXPECT_EQ(flange.text.substr(static_cast<std::size_t>(key.index), 15),
                      "Y              ");
        }
        // A key of a group switches its flag on.
        if (!key.group.empty()) {
            const Key& flag = *flange_keys().find(key.group);
            if (flag.place == Place::record) {
                EXPECT_EQ(flange.record[static_cast<std::size_t>(flag.index)], 1.0f);
            } else {
                EXPECT_EQ(flange.text[static_cast<std::size_t>(flag.index)], 'Y');
            }
        }
        // A text instead of a number, and the other way round.
        const std::string wrong = name + (key.quantity == Quantity::choice ? " = 99" : " = \"no\"");
        const std::vector<std::string> faults = fault_lines(with(name, wrong) + companions(key));
        ASSERT_FALSE(faults.empty());
        EXPECT_NE(faults[0].find(": " + name + ": " + expected(key, us_units())), std::string::npos)
            << faults[0];
    }
}

INSTANTIATE_TEST_SUITE_P(Units, EveryKey, testing::Values("US", "SI"));

TEST(Keys, HaveDifferentNamesAndPlaces) {
    std::set<std::string_view> names;
    std::set<std::pair<int, int>> places;
    for (const Key& key : flange_keys().keys) {
        EXPECT_TRUE(names.insert(key.name).second) << key.name;
        const int kind = key.place == Place::slot_flag ? static_cast<int>(Place::slot)
                                                       : static_cast<int>(key.place);
        EXPECT_TRUE(places.insert({kind, key.index}).second) << key.name;
        EXPECT_TRUE(key.group.empty() || flange_keys().find(key.group) != nullptr) << key.name;
        EXPECT_EQ(key.choices.empty(), key.quantity != Quantity::choice) << key.name;
    }
}

// Elements that the engine reads from a flange of a vessel: all have a key, but for the element
// number, which the host counts.
TEST(Keys, CoverTheRecord) {
    std::set<int> elements;
    for (const Key& key : flange_keys().keys)
        if (key.place == Place::record) elements.insert(key.index);
    const std::set<int> without{1,                  // element number
                                32, 33, 43, 49, 59, // not read
                                47, 62};            // read without effect
    for (int element = 1; element <= 75; ++element)
        EXPECT_EQ(elements.contains(element), !without.contains(element)) << element;
}

// ---- names -------------------------------------------------------------------------------------------

TEST(Choices, TakeNamesInAnyCaseAndNumbers) {
    EXPECT_EQ(flange_of(with("type", R"(type = "Welding-Neck")")).type(), 1);
    EXPECT_EQ(flange_of(with("type", "type = 3")).type(), 3);
    EXPECT_EQ(flange_of(with("code", R"(code = "en 13445")")).code(), 4);
    EXPECT_EQ(flange_of(with("kind", R"(kind = "DESIGN")")).analysis(), 3);
    EXPECT_EQ(flange_of(with("bolting", R"(bolting = "unc")")).record[23], 2.0f);
    EXPECT_EQ(flange_of(with("column", R"(column = "II")")).record[28], 2.0f);
}

// A text is the sketch of the code, a number its place in the list.
TEST(Choices, FacingByNameAndByNumber) {
    const char* names[] = {"1a", "1b", "1c", "1d", "2", "3", "4", "5", "6"};
    for (int i = 1; i <= 9; ++i) {
        const std::string name = names[i - 1];
        const std::string toml = FLANGE_TOML + "column = \"I\"\n";
        EXPECT_EQ(flange_of(with("facing", "facing = \"" + name + '"', toml)).record[27],
                  static_cast<float>(i));
        EXPECT_EQ(flange_of(with("facing", "facing = " + std::to_string(i), toml)).record[27],
                  static_cast<float>(i));
    }
}

// ---- defaults and derived values -----------------------------------------------------------------------

TEST(Defaults, AreThoseOfTheTable) {
    const FlangeInput flange = flange_of(FLANGE_TOML);
    EXPECT_EQ(flange.analysis(), 1);
    EXPECT_EQ(flange.code(), 1);
    EXPECT_EQ(flange.record[28], 1.0f);
    EXPECT_EQ(flange.record[34], 1.0f);
    EXPECT_NEAR(flange.record[53] * 27679.9f, 7850.0f, 1.0f);
    EXPECT_EQ(flange.setting(Setting::joint_efficiency), 1.0f);
    EXPECT_EQ(flange.setting(Setting::bolt_correction), 1.0f);
    EXPECT_EQ(flange.setting(Setting::design_pressure_operating), 150.0f);
    EXPECT_EQ(flange.text.substr(30, 105), "test flange    "   // description
                                           "N              "   // external loads
                                           "N              "   // mating loads
                                           "N              "   // channel cover
                                           "Y              "   // use corrosion
                                           "N              "   // partition gasket
                                           "               "); // chart
}

TEST(Head, HoldsForEveryFlange) {
    const std::string own = with("P", "", with("T", "", FLANGE_TOML));
    const ReadResult result = read_input("P = 80\nT = 120\n" + own + own + "P = 90\n");
    ASSERT_TRUE(result.faults.empty());
    const auto flanges = flanges_of(result.request);
    ASSERT_EQ(flanges.size(), 2u);
    EXPECT_EQ(flanges[0]->record[4], 80.0f);
    EXPECT_EQ(flanges[1]->record[4], 90.0f);
    EXPECT_EQ(flanges[1]->record[5], 120.0f);
}

TEST(Head, FaultCountsOnce) {
    const std::string own = with("P", "", FLANGE_TOML);
    EXPECT_EQ(fault_lines("P = \"x\"\n" + own + own).size(), 1u);
}

TEST(Groups, CanBeSwitchedOff) {
    const FlangeInput flange = flange_of(FLANGE_TOML + "axial_force = 5\nexternal_loads = false\n");
    EXPECT_EQ(flange.text[slot::external_loads], 'N');
    EXPECT_EQ(flange.record[48], 5.0f);
}

TEST(KeepThickness, MarksTheLastColumnOfTheDescription) {
    const FlangeInput flange = flange_of(FLANGE_TOML + "keep_thickness = true\n");
    EXPECT_EQ(flange.text.substr(slot::description, 15), "test flange   :");
    EXPECT_EQ(flange.description(), "test flange");
    const std::string full = with("description", "description = \"fifteen columns\"");
    const FlangeInput longer = flange_of(full + "keep_thickness = true\n");
    EXPECT_EQ(longer.text.substr(slot::description, 15), "fifteen column:");
    EXPECT_EQ(longer.description(), "fifteen columns");
}

TEST(ChannelCover, TakesItsModulusForTheInsideDiameter) {
    std::string cover = with("type", "type = \"blind\"");
    for (const char* key : {"B", "g0", "g1", "h"})
        cover = with(key, "", cover);
    cover += "channel_cover = true\n";
    EXPECT_EQ(flange_of(cover).record[10], 0.0f);
    EXPECT_EQ(flange_of(cover + "Ecover = 28000000\n").record[10], 28000000.0f);
    EXPECT_EQ(fault_lines(cover + "B = 3\n"),
              std::vector<std::string>{"f:24: B: a channel cover has no inside diameter"});
}

TEST(ChannelCover, IsABlindFlange) {
    EXPECT_EQ(fault_lines(FLANGE_TOML + "channel_cover = true\n"),
              std::vector<std::string>{
                  "f:27: channel_cover: only a blind flange can be a channel cover"});
}

TEST(Texts, AreWestern) {
    const FlangeInput flange = flange_of(with("description", "description = \"Kühler ½\""));
    EXPECT_EQ(flange.text.substr(slot::description, 15), "K\xFChler \xBD       ");
}

TEST(WholeNumbers, MayBeWrittenWithAPoint) {
    EXPECT_EQ(flange_of(with("n", "n = 12.0")).record[24], 12.0f);
}

// ---- faults ----------------------------------------------------------------------------------------------

std::vector<std::string> one(const std::string& fault) { return {fault}; }

TEST(Faults, UnknownKey) {
    EXPECT_EQ(fault_lines(FLANGE_TOML + "Gox = 3\n"),
              one("f:27: Gox: unknown key; the nearest is Go, gasket outside diameter"));
    EXPECT_EQ(fault_lines(FLANGE_TOML + "nothing_like_it_at_all = 3\n"),
              one("f:27: nothing_like_it_at_all: unknown key"));
    EXPECT_EQ(fault_lines("unit = \"SI\"\n" + FLANGE_TOML),
              one("f:1: unit: unknown key; the nearest is units"));
}

// "go" is one letter from Go, but the hub is meant.
TEST(Faults, KeyOfAnotherNotation) {
    EXPECT_EQ(fault_lines(FLANGE_TOML + "go = 3\n"),
              one("f:27: go: unknown key; the nearest is g0, thickness of hub at small "
                  "end"));
}

TEST(Faults, TextForANumber) {
    EXPECT_EQ(fault_lines(with("P", "P = \"ten\"")),
              one("f:4: P: a number in psig is expected, not the text \"ten\" (design pressure, "
                  "negative for external pressure)"));
    EXPECT_EQ(fault_lines("units = \"SI\"\n" + with("T", "T = true") + "kind = \"design\"\n"),
              one("f:6: T: a number in °C is expected, not true (design temperature)"));
    EXPECT_EQ(fault_lines(with("m", "m = [3]")),
              one("f:24: m: a number is expected, not a list (gasket factor)"));
    EXPECT_EQ(fault_lines(with("n", "n = 12.5")),
              one("f:16: n: a whole number is expected, not 12.5 (number of bolts)"));
}

TEST(Faults, NumberOutOfRange) {
    EXPECT_EQ(fault_lines(with("y", "y = nan")),
              one("f:25: y: a number in psi is expected, not nan (gasket design seating stress)"));
    EXPECT_EQ(fault_lines(with("y", "y = -inf")).size(), 1u);
    EXPECT_EQ(fault_lines(with("y", "y = 1e39")).size(), 1u); // beyond a single
    EXPECT_EQ(fault_lines(with("n", "n = 16777217")).size(), 1u);
    EXPECT_TRUE(fault_lines(with("n", "n = 16777216")).empty());
}

TEST(Faults, NameOutOfRange) {
    EXPECT_EQ(fault_lines(with("column", "column = \"III\"")),
              one("f:27: column: one of \"I\", \"II\" or 1 to 2 is expected, not the text \"III\" "
                  "(column for gasket seating; required for the facings 2 to 5, whose columns "
                  "differ)"));
    EXPECT_EQ(
        fault_lines(with("kind", "kind = 5")),
        one("f:27: kind: one of \"analyse\", \"thickness\", \"design\", \"rated\" or 1 to 4 is "
            "expected, not 5 (analysis kind; \"rated\" is for a flange accepted by its pressure "
            "rating, without stresses)"));
}

TEST(Faults, MissingValue) {
    EXPECT_EQ(fault_lines(with("Sfo", "")),
              one("f:1: Sfo: missing in flange 1; a number in psi is expected (flange allowable "
                  "stress at design temperature)"));
    const std::string two = FLANGE_TOML + with("type", "");
    EXPECT_EQ(fault_lines(two).size(), 1u);
    EXPECT_EQ(fault_lines(two)[0].substr(0, 33), "f:27: type: missing in flange 2; ");
}

// The keys that a flange requires, by type and kind.
TEST(Faults, MissingByTypeAndKind) {
    const auto missing = [](std::string toml) {
        std::set<std::string> keys;
        for (const Fault& fault : read_input(toml).faults)
            keys.insert(fault.key);
        return keys;
    };
    using Keys = std::set<std::string>;
    std::string plain = FLANGE_TOML; // no hub
    for (const char* key : {"g0", "g1", "h"})
        plain = with(key, "", plain);
    EXPECT_EQ(missing(plain), (Keys{"g0", "g1", "h"}));
    EXPECT_EQ(missing(with("type", "type = 2", plain)), Keys{});
    EXPECT_EQ(missing(with("type", "type = 2", plain) + "h = 3\n"), (Keys{"g0", "g1"}));
    EXPECT_EQ(missing(with("type", "type = 5", plain)), Keys{});
    EXPECT_EQ(missing(with("type", "type = 6", plain)), (Keys{"LjID", "LjOD"}));
    EXPECT_EQ(missing(with("type", "type = 8", plain)), (Keys{"g0", "g1", "h"}));
    EXPECT_EQ(missing(with("type", "type = 9", plain)), Keys{"tShell"});
    EXPECT_EQ(missing(with("B", "", with("type", "type = 7", plain))), Keys{});
    EXPECT_EQ(missing(with("B", "", with("type", "type = 5", plain))), Keys{"B"});
    EXPECT_EQ(missing(with("type", "type = 7", plain) + "d = 3\n"), Keys{"D"});
    EXPECT_EQ(missing(with("t", "")), Keys{"t"});
    EXPECT_EQ(missing(with("t", "", with("kind", "kind = 2"))), Keys{});
    std::string open = FLANGE_TOML; // no geometry that a design selects
    for (const char* key : {"A", "C", "a", "n", "t"})
        open = with(key, "", open);
    EXPECT_EQ(missing(open), (Keys{"A", "C", "a", "n", "t"}));
    EXPECT_EQ(missing(with("kind", "kind = 2", open)), (Keys{"A", "C", "a", "n"}));
    EXPECT_EQ(missing(with("kind", "kind = 3", open)), Keys{});
    EXPECT_EQ(missing(with("bolting", "bolting = \"special\"")), Keys{"root_area"});
    EXPECT_EQ(missing(FLANGE_TOML + "mating_seating = 3\n"),
              (Keys{"mating_operating", "mating_design"}));
    EXPECT_EQ(missing(FLANGE_TOML + "partition_gasket = true\n"),
              (Keys{"lp", "tp", "mPart", "yPart"}));
    EXPECT_EQ(missing(FLANGE_TOML + "pitch = 3\n"), Keys{"D1"});
}

TEST(Faults, EditionOfAnotherCode) {
    EXPECT_EQ(fault_lines(FLANGE_TOML + "edition = \"older\"\n"),
              one("f:27: edition: \"older\" is an edition of code VIII-2 only"));
    EXPECT_EQ(fault_lines(FLANGE_TOML + "code = 2\nedition = \"A98\"\n"),
              one("f:28: edition: \"A98\" is an edition of code VIII-1 only"));
    EXPECT_TRUE(fault_lines(FLANGE_TOML + "code = 2\nedition = \"older\"\n").empty());
    EXPECT_TRUE(fault_lines(FLANGE_TOML + "edition = \"A98\"\n").empty());
}

TEST(Faults, AllOfAFileInTheOrderOfItsLines) {
    std::string toml = with("T", "T = \"hot\"", with("Sb", "", FLANGE_TOML));
    toml = "units = \"XY\"\n" + toml + "zz9 = 1\nn_bolts = 3\n";
    std::vector<int> lines;
    for (const Fault& fault : read_input(toml).faults)
        lines.push_back(fault.line);
    EXPECT_EQ(lines, (std::vector<int>{1, 2, 6, 27, 28}));
}

TEST(Faults, TextThatIsNoToml) {
    const std::vector<Fault> faults = read_input("P = = 1\n").faults;
    ASSERT_EQ(faults.size(), 1u);
    EXPECT_EQ(faults[0].line, 1);
    EXPECT_EQ(faults[0].key, "");
}

TEST(Faults, KeyTwice) {
    const std::vector<Fault> faults = read_input(FLANGE_TOML + "P = 1\n").faults;
    ASSERT_EQ(faults.size(), 1u);
    EXPECT_EQ(faults[0].line, 27);
}

TEST(Faults, NoFlange) {
    std::string tables; // of all kinds
    for (const ElementKind* kind : element_kinds())
        tables += (tables.empty() ? "[[" : ", [[") + std::string(kind->table) + "]]";
    const auto none = one("f:1: flange: missing; one or more " + tables + " tables are expected");
    EXPECT_EQ(fault_lines(""), none);
    EXPECT_EQ(fault_lines("flange = []\n"), none);
    EXPECT_EQ(fault_lines("flange = 3\n"),
              one("f:1: flange: a list of [[flange]] tables is expected, not 3"));
    EXPECT_EQ(fault_lines("[flange]\nP = 1\n"),
              one("f:1: flange: a list of [[flange]] tables is expected, not a table"));
}

TEST(Faults, TooManyFlanges) {
    std::string toml;
    for (int i = 0; i < 501; ++i)
        toml += "[[flange]]\n";
    EXPECT_EQ(fault_lines(toml), one("f:1: flange: at most 500 flanges are expected, not 501"));
}

} // namespace
} // namespace tarvane::app
