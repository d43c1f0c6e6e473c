// The conditions of the key tables: a value that its condition excludes changes no result.
#include "catalogue/data_folder.h"
#include "components/shell_input.h"
#include "kind_tests.h"

#include <map>
#include <random>
#include <set>

namespace tarvane::app {

using namespace vessel;
namespace {

std::string toml_of(std::string_view table, const Lines& lines) {
    std::string toml = "[[" + std::string(table) + "]]\n";
    for (const auto& [key, value] : lines)
        toml += key + " = " + value + '\n';
    return toml;
}

// Another value that the key takes.
std::string another(const Key& key, std::mt19937& random) {
    if (key.name == "E") return "0.7"; // at most 1
    const auto among_choices = [&] {
        return std::to_string(key.choices[random() % key.choices.size()].number);
    };
    switch (key.quantity) {
    case Quantity::flag:
        return random() % 2 == 0 ? "true" : "false";
    case Quantity::choice:
        return among_choices();
    case Quantity::whole:
        return std::to_string(random() % 9);
    case Quantity::text:
    case Quantity::designation:
        return key.name == "chart" ? "\"CS-1\"" : "\"other\"";
    default:
        return std::to_string(1.0 + static_cast<double>(random() % 1000) / 100.0);
    }
}

// Everything that a calculation gives except the report, whose lines repeat what was given; of a record without
// the element of the key itself.
std::string results_of(const ReadResult& read, const Key& key) {
    const Element& element = *read.request.elements[0];
    const auto outcome = element.calculate(read.request);
    std::string all;
    if (const KindTests* tests = tests_of(element.kind->table); tests->append != nullptr)
        tests->append(all, *outcome, key);
    for (const Result& result : element.results(*outcome)) {
        if (result.field->name == "crown_radius") continue;
        append_values(all, result.value.has_value());
        if (result.value) append_values(all, *result.value);
    }
    const Verdict verdict = element.judge(*outcome, read.request.units);
    all += std::to_string(static_cast<int>(verdict.status));
    for (const std::string& reason : verdict.reasons)
        all += '\n' + reason;
    return all;
}

bool is_read(const ReadResult& read, const Key& key) {
    return !read.request.elements[0]->origins.at(key.name).from.starts_with("not read");
}

// Trials that a kind gets at most, and what each conditional key needs of them.
constexpr int MOST_TRIALS = 1500, ENOUGH = 6;

bool conditional(const ElementKind& kind) {
    const auto& keys = kind.keys.keys;
    return std::any_of(keys.begin(), keys.end(), [](const Key& key) { return !key.read.always(); });
}

class Conditions : public testing::TestWithParam<int> {};

TEST_P(Conditions, HoldWhatIsNotReadAwayFromTheResults) {
    const ElementKind* kind = element_kinds()[static_cast<std::size_t>(GetParam())];
    if (!conditional(*kind)) return; // everything that it is given is read
    const KindTests* tests = tests_of(kind->table);
    ASSERT_NE(tests, nullptr) << "no " << kind->table << "_test.cpp in tests/kinds";
    set_data_folder(TARVANE_DATA_DIR);
    std::mt19937 random(20240u + static_cast<unsigned>(GetParam()));
    std::map<std::string_view, int> tried;
    const auto least_tried = [&] {
        int least = ENOUGH;
        for (const Key& key : kind->keys.keys)
            if (!key.read.always()) least = std::min(least, tried[key.name]);
        return least;
    };
    for (int trial = 0; trial < MOST_TRIALS && least_tried() < ENOUGH; ++trial) {
        const Lines lines = draw_lines(tests->draw, random);
        const ReadResult before = read_input(toml_of(kind->table, lines));
        if (!before.faults.empty()) continue;
        for (const Key& key : kind->keys.keys) {
            if (key.read.always() || tried[key.name] >= ENOUGH || is_read(before, key)) continue;
            Lines changed = lines;
            changed[std::string(key.name)] = another(key, random);
            const ReadResult after = read_input(toml_of(kind->table, changed));
            // A key of a group may have switched its flag on, and it is read then.
            if (!after.faults.empty() || is_read(after, key)) continue;
            ++tried[key.name];
            EXPECT_TRUE(results_of(before, key) == results_of(after, key))
                << key.name << " = " << changed[std::string(key.name)] << ", "
                << after.request.elements[0]->origins.at(key.name).from << "\n"
                << toml_of(kind->table, lines);
        }
    }
    for (const Key& key : kind->keys.keys)
        EXPECT_TRUE(key.read.always() || tried[key.name] >= ENOUGH) << key.name;
}

INSTANTIATE_TEST_SUITE_P(Kinds, Conditions,
                         testing::Range(0, static_cast<int>(element_kinds().size())),
                         [](const auto& of) {
                             return std::string(
                                 element_kinds()[static_cast<std::size_t>(of.param)]->table);
                         });

// ---- the tables on their own -----------------------------------------------------------------------

void expect_sound(const Condition& condition, const KeyTable& keys, const Key& key) {
    for (const Term& term : condition.terms) {
        if (term.is == Term::Is::unused) continue;
        const Key* of = keys.find(term.key);
        ASSERT_NE(of, nullptr) << key.name << ": " << term.key;
        if (term.is != Term::Is::among) continue;
        for (int number = 0; number < 32; ++number) {
            if (!term.holds(number)) continue;
            const bool known = of->quantity == Quantity::flag
                                   ? number < 2
                                   : !choice_name(of->choices, number).empty();
            EXPECT_TRUE(known) << key.name << ": " << term.key << ' ' << number;
        }
    }
    if (condition.rule.empty()) return;
    EXPECT_TRUE(std::any_of(keys.rules.begin(), keys.rules.end(),
                            [&](const Rule& rule) { return rule.id == condition.rule; }))
        << key.name << ": " << condition.rule;
}

TEST(KeyTables, AreWhole) {
    for (const ElementKind* kind : element_kinds()) {
        std::set<std::string_view> names, rules;
        for (const Key& key : kind->keys.keys) {
            SCOPED_TRACE(std::string(kind->table) + '.' + std::string(key.name));
            EXPECT_TRUE(names.insert(key.name).second);
            EXPECT_FALSE(key.label().empty());
            EXPECT_LE(key.label().size(), 45u) << key.label();
            EXPECT_FALSE(kind->keys.section(key).empty());
            EXPECT_TRUE(key.group.empty() || kind->keys.find(key.group) != nullptr);
            EXPECT_EQ(key.choices.empty(), key.quantity != Quantity::choice);
            expect_sound(key.read, kind->keys, key);
            rules.insert(key.read.rule);
            if (!key.needed) continue;
            expect_sound(*key.needed, kind->keys, key);
            rules.insert(key.needed->rule);
            const bool always = key.needed->always() && key.read.always();
            EXPECT_TRUE(!always || key.fallback == 0.0);
        }
        for (const Rule& rule : kind->keys.rules)
            EXPECT_TRUE(rules.contains(rule.id)) << rule.id;
        for (const KeySection& section : kind->keys.sections)
            EXPECT_NE(kind->keys.find(section.first_key), nullptr) << section.first_key;
        for (const Alias& alias : kind->keys.aliases) {
            EXPECT_NE(kind->keys.find(alias.ours), nullptr) << alias.ours;
            EXPECT_EQ(kind->keys.find(alias.other), nullptr) << alias.other;
        }
    }
}

TEST(KeyTables, TellConditionsInWords) {
    const auto words = [](const Condition& condition) { return in_words(condition, shell_keys()); };
    EXPECT_EQ(words({}), "");
    EXPECT_EQ(words(among("kind", {5})), "kind is \"cone\"");
    EXPECT_EQ(words(on("external") && among("kind", {1, 5})),
              "external = true, and kind is one of \"cylinder\", \"cone\"");
    EXPECT_EQ(words(not_given("Do") && given("h")), "Do is not given, and h is given");
    EXPECT_EQ(words(by_rule("second_opening")), "d2 is above 0");
}

// The keys that a component needs, by the rules of its code.
TEST(KeyTables, SayWhatIsNeeded) {
    const auto missing = [](const std::string& toml) {
        std::set<std::string> keys;
        for (const Fault& fault : read_input(toml).faults)
            if (fault.message.starts_with("missing")) keys.insert(fault.key);
        return keys;
    };
    using Set = std::set<std::string>;
    const Set shell{"P", "T", "S", "Sa", "t", "D"};
    const auto and_also = [](Set keys, const Set& more) {
        keys.insert(more.begin(), more.end());
        return keys;
    };
    EXPECT_EQ(missing("[[shell]]\nkind = 1\n"), shell);
    EXPECT_EQ(missing("[[shell]]\n"), and_also(shell, {"kind"}));
    EXPECT_EQ(missing("[[shell]]\nkind = 3\n"), and_also(shell, {"L", "r"}));
    EXPECT_EQ(missing("[[shell]]\nkind = 5\n"), and_also(shell, {"alpha"}));
    EXPECT_EQ(missing("[[shell]]\nkind = 5\nr = 1\n"), and_also(shell, {"alpha", "tk"}));
    EXPECT_EQ(missing("[[shell]]\nkind = 5\ntk = 1\n"), and_also(shell, {"alpha", "r"}));
    EXPECT_EQ(missing("[[shell]]\nkind = 6\nd1 = 1\n"), and_also(shell, {"C", "edge1"}));
    EXPECT_EQ(missing("[[shell]]\nkind = 6\nd1 = 1\nd2 = 1\n"),
              and_also(shell, {"C", "edge1", "edge2", "pitch"}));
    EXPECT_EQ(missing("[[shell]]\nkind = 1\nP_external = 15\n"),
              and_also(shell, {"chart", "length"}));
    EXPECT_EQ(missing("[[shell]]\nkind = 5\nexternal = true\n"),
              and_also(shell, {"alpha", "P_external", "chart", "Dsmall", "cone_length"}));
    EXPECT_EQ(missing("[[shell]]\nkind = 4\nP_external = 15\nmethod = \"stress\"\n"),
              and_also(shell, {"chart", "Sy"}));
    const Set external{"P_external", "T", "t", "chart"};
    EXPECT_EQ(missing("[[external]]\nkind = 3\n"), and_also(external, {"L"}));
    EXPECT_EQ(missing("[[external]]\nkind = 1\n"), and_also(external, {"D", "length", "S"}));
    EXPECT_EQ(missing("[[external]]\nkind = 4\nDo = 3\nmethod = \"stress\"\n"),
              and_also(external, {"Sy"}));
    EXPECT_EQ(missing("[[mdmt]]\n"), (Set{"curve", "tg"}));
    EXPECT_EQ(missing("[[mdmt]]\ncode = 2\nug20f = true\npad = true\n"),
              (Set{"curve", "tg", "Sy", "MDMT", "T", "pad_ratio", "pad_reduction"}));
    EXPECT_EQ(missing("[[mdmt]]\ncode = 2\nedition = \"older\"\n"), (Set{"curve", "tg"}));
    const Set flange{"P",   "T",   "Sfo", "Sfa", "bolting", "Sb", "Sa",
                     "Fod", "Fid", "Go",  "Gi",  "m",       "y",  "facing"};
    EXPECT_EQ(missing("[[flange]]\ntype = 7\nkind = 3\n"), flange);
    EXPECT_EQ(missing("[[flange]]\ntype = 1\nkind = 3\n"),
              and_also(flange, {"B", "g0", "g1", "h"}));
    EXPECT_EQ(missing("[[flange]]\ntype = 8\nkind = 3\n"),
              and_also(flange, {"A", "B", "g0", "g1", "h"}));
    EXPECT_EQ(missing("[[flange]]\ntype = 6\nkind = 2\n"),
              and_also(flange, {"A", "B", "C", "a", "n", "LjID", "LjOD"}));
    EXPECT_EQ(missing("[[flange]]\ntype = 9\ng1 = 1\n"),
              and_also(flange, {"A", "B", "C", "a", "n", "t", "tShell"}));
    EXPECT_EQ(missing("[[flange]]\ntype = 7\nkind = 3\nd = 3\nbolting = 3\nfacing = 5\n"),
              and_also({"P", "T", "Sfo", "Sfa", "Sb", "Sa", "Fod", "Fid", "Go", "Gi", "m", "y"},
                       {"D", "root_area", "column"}));
}

} // namespace
} // namespace tarvane::app
