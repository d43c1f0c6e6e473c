// Results and checks as data: their descriptions, the states of a row, the order of the table.
#include "components/check.h"

#include "components/element.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <limits>
#include <set>
#include <type_traits>

namespace tarvane::app {

using namespace vessel;
namespace {

constexpr CheckField AT_MOST{"most", "UG-27", "a stress", Quantity::stress};
constexpr CheckField AT_LEAST{"least", "UG-27", "a pressure", Quantity::pressure, true};
constexpr CheckField WARM{"warm", "UCS-66", "a temperature", Quantity::temperature};
constexpr CheckField ADVICE{"advice",           "TEMA", "a spacing",
                            Quantity::diameter, false,  Force::advises};
constexpr CheckField WAIVABLE{.id = "waivable",
                              .paragraph = "U-2(g)",
                              .label = "a thickness",
                              .quantity = Quantity::thickness,
                              .waivable = true,
                              .load_case = "operating"};
constexpr CheckField WARNING{"warning",          "UG-32", "a radius",
                             Quantity::diameter, false,   Force::warns};

constexpr float INF = std::numeric_limits<float>::infinity(),
                NO_NUMBER = std::numeric_limits<float>::quiet_NaN();

// ---- descriptions ------------------------------------------------------------------------------------

bool legal(std::string_view name, bool point) {
    for (const std::string_view of : {"designed.", "rounded."})
        if (point && name.starts_with(of)) name.remove_prefix(of.size());
    return !name.empty() && std::isalpha(static_cast<unsigned char>(name[0])) != 0 &&
           std::all_of(name.begin(), name.end(),
                       [](unsigned char c) { return std::isalnum(c) != 0 || c == '_'; });
}

TEST(Descriptions, NamesAreLegalAndUnique) {
    for (const ElementKind* kind : element_kinds()) {
        std::set<std::string_view> results, checks;
        EXPECT_FALSE(kind->results.empty()) << kind->table;
        EXPECT_FALSE(kind->checks.empty()) << kind->table;
        for (const ResultField& field : kind->results) {
            EXPECT_TRUE(legal(field.name, true)) << field.name;
            EXPECT_TRUE(results.insert(field.name).second) << kind->table << ' ' << field.name;
            EXPECT_FALSE(field.label.empty()) << field.name;
            EXPECT_EQ(field.quantity == Quantity::choice, !field.choices.empty()) << field.name;
        }
        for (const CheckField& field : kind->checks) {
            EXPECT_TRUE(legal(field.id, false)) << field.id;
            EXPECT_TRUE(checks.insert(field.id).second) << kind->table << ' ' << field.id;
            EXPECT_FALSE(field.label.empty()) << field.id;
        }
    }
}

// A row of a closing table has 38 columns for its label and 6 for its symbol.
TEST(Descriptions, LabelsOfClosingTablesFit) {
    for (const ElementKind* kind : element_kinds()) {
        for (const ResultField& field : kind->results) {
            if (field.table.empty()) continue;
            EXPECT_LE(field.label.size(), field.symbol.empty() ? 44u : 38u) << field.name;
            EXPECT_LE(field.symbol.size(), 6u) << field.name;
        }
    }
}

// ---- states ------------------------------------------------------------------------------------------

TEST(CheckState, IsThatOfTheFourDecimalsShown) {
    for (const float limit : {0.0123f, 1.0f, 20000.0f, 3.0e7f}) {
        float demand = limit;
        while (Check::compared(AT_MOST, demand, limit).passes())
            demand = std::nextafter(demand, INF);
        char text[32];
        std::snprintf(text, sizeof text, "%.4f",
                      static_cast<double>(*Check::compared(AT_MOST, demand, limit).ratio()));
        EXPECT_STREQ(text, "1.0001");
        const float last = std::nextafter(demand, 0.0f);
        std::snprintf(text, sizeof text, "%.4f",
                      static_cast<double>(*Check::compared(AT_MOST, last, limit).ratio()));
        EXPECT_STREQ(text, "1.0000");
    }
}

TEST(CheckState, OfAtLeastHasTheRatioTheOtherWayRound) {
    const Check sound = Check::compared(AT_LEAST, 200.0f, 150.0f);
    EXPECT_TRUE(sound.passes());
    EXPECT_EQ(*sound.ratio(), 0.75f);
    EXPECT_EQ(*sound.demand(), 200.0f);
    EXPECT_EQ(*sound.limit(), 150.0f);
    EXPECT_TRUE(Check::compared(AT_LEAST, 100.0f, 150.0f).blocks());
}

TEST(CheckState, OfWhatIsNoNumberFails) {
    EXPECT_FALSE(Check::compared(AT_MOST, NO_NUMBER, 1.0f).passes());
    EXPECT_FALSE(Check::compared(AT_MOST, 1.0f, NO_NUMBER).passes());
    EXPECT_FALSE(Check::compared(AT_MOST, INF, INF).passes());
    EXPECT_FALSE(Check::compared(AT_MOST, INF, 1.0f).passes());
    EXPECT_FALSE(Check::compared(AT_LEAST, NO_NUMBER, 0.0f).passes());
    EXPECT_FALSE(Check::compared(AT_MOST, 1.0f, 0.0f).passes());
    // A compression passes, and so does nothing at all.
    EXPECT_TRUE(Check::compared(AT_MOST, -5.0f, 1.0f).passes());
    EXPECT_TRUE(Check::compared(AT_MOST, 0.0f, 0.0f).passes());
    // Below 0 the lesser value is further down.
    EXPECT_TRUE(Check::compared(AT_MOST, -5.0f, -4.0f).passes());
    EXPECT_FALSE(Check::compared(AT_MOST, -4.0f, -5.0f).passes());
}

TEST(CheckState, OfTemperaturesIsFromAbsoluteZero) {
    EXPECT_TRUE(Check::compared(WARM, -30.0f, -20.0f).passes());
    EXPECT_TRUE(Check::compared(WARM, -20.0f, -20.0f).passes());
    EXPECT_TRUE(Check::compared(WARM, -20.02f, -20.0f).passes());
    EXPECT_FALSE(Check::compared(WARM, -19.9f, -20.0f).passes());
    EXPECT_FALSE(Check::compared(WARM, 0.1f, 0.0f).passes());
    EXPECT_NEAR(*Check::compared(WARM, 0.0f, 459.67f).ratio(), 0.5f, 1e-6f);
}

TEST(CheckState, RemarksOnWhatTheEngineMarksAllTheSame) {
    EXPECT_EQ(Check::compared(AT_MOST, 20000.3f, 20000.0f).marked(true).remark(), "within 0.005 %");
    EXPECT_EQ(Check::compared(AT_MOST, 20000.3f, 20000.0f).marked(false).remark(), "");
    EXPECT_EQ(Check::compared(AT_MOST, 20002.0f, 20000.0f).marked(true).remark(), "");
}

TEST(CheckState, WaivedOnlyWhereItFallsShort) {
    EXPECT_EQ(Check::not_made(WAIVABLE, "no yield").waived().state(), State::waived);
    EXPECT_EQ(Check::compared(WAIVABLE, 2.0f, 1.0f).waived().state(), State::waived);
    EXPECT_FALSE(Check::compared(WAIVABLE, 2.0f, 1.0f).waived().blocks());
    EXPECT_EQ(Check::compared(WAIVABLE, 1.0f, 1.0f).waived().state(), State::pass);
    EXPECT_EQ(Check::not_asked(WAIVABLE, "not given").waived().state(), State::not_asked);
    // Not every check can be.
    EXPECT_EQ(Check::compared(AT_MOST, 2.0f, 1.0f).waived().state(), State::fail);
    EXPECT_EQ(Check::not_made(AT_MOST, "").waived().state(), State::not_made);
}

// A state comes from numbers, a finding or a reason; nothing sets it beside them.
TEST(CheckState, CantContradictItsNumbers) {
    static_assert(!std::is_constructible_v<Check, const CheckField&, State>);
    static_assert(!std::is_default_constructible_v<Check>);
    Check check = Check::compared(AT_MOST, 2.0f, 1.0f);
    check.because("words").marked(true).shown_by("a formula").in_case("external").under("UG-99");
    EXPECT_EQ(check.state(), State::fail);
    EXPECT_EQ(*check.ratio(), 2.0f);
    EXPECT_EQ(check.load_case(), "external");
    EXPECT_EQ(check.paragraph(), "UG-99");
    EXPECT_EQ(check.label(), "a stress, external");
    EXPECT_EQ(Check::not_made(WAIVABLE, "").label(), "a thickness, operating");
}

TEST(CheckState, BlocksOnlyWhereTheCheckDecides) {
    EXPECT_TRUE(Check::found(AT_MOST, false).blocks());
    EXPECT_TRUE(Check::not_made(AT_MOST, "").blocks());
    // What the code asks for and nobody made, whatever it counts for.
    EXPECT_TRUE(Check::not_made(ADVICE, "").blocks());
    EXPECT_TRUE(Check::not_made(WARNING, "").blocks());
    EXPECT_TRUE(Check::compared(ADVICE, 2.0f, 1.0f).advises());
    EXPECT_FALSE(Check::not_made(ADVICE, "").advises());
    EXPECT_FALSE(Check::not_asked(AT_MOST, "").blocks());
    EXPECT_FALSE(Check::compared(ADVICE, 2.0f, 1.0f).blocks());
    EXPECT_TRUE(Check::compared(ADVICE, 2.0f, 1.0f).falls_short());
    EXPECT_FALSE(Check::compared(WARNING, 2.0f, 1.0f).blocks());
    // A warning is a line of the verdict, an advice is not.
    EXPECT_TRUE(Check::found(WARNING, false, "words").told());
    EXPECT_FALSE(Check::found(ADVICE, false, "words").told());
    EXPECT_FALSE(Check::not_asked(AT_MOST, "words").told());
    EXPECT_TRUE(Check::found(AT_MOST, true, "note: words").told());
}

// ---- order -------------------------------------------------------------------------------------------

TEST(CheckOrder, IsWorstFirst) {
    Checks checks{Check::not_asked(AT_MOST, "0"),
                  Check::compared(WAIVABLE, 2.0f, 1.0f).waived().because("1"),
                  Check::compared(ADVICE, 0.9f, 1.0f).because("a"),
                  Check::compared(AT_MOST, 0.5f, 1.0f).because("2"),
                  Check::compared(AT_LEAST, 1.0f, 0.9f).because("3"),
                  Check::found(AT_MOST, true, "4"),
                  Check::compared(ADVICE, 9.0f, 1.0f).because("5"),
                  Check::not_made(AT_MOST, "6"),
                  Check::compared(AT_MOST, 3.0f, 1.0f).because("7"),
                  Check::found(AT_LEAST, false, "8")};
    EXPECT_FALSE(all_pass(checks));
    EXPECT_EQ(governing(checks)->reason(), "8");
    sort_worst_first(checks);
    std::string order;
    for (const Check& check : checks)
        order += check.reason();
    EXPECT_EQ(order, "8765324a10");
}

TEST(CheckOrder, GoverningIsTheWorstThatDecides) {
    EXPECT_EQ(governing({}), nullptr);
    EXPECT_EQ(governing({Check::not_asked(AT_MOST, "")}), nullptr);
    EXPECT_EQ(governing({Check::compared(ADVICE, 9.0f, 1.0f)}), nullptr);
    const Checks sound{Check::compared(AT_MOST, 0.5f, 1.0f), Check::compared(ADVICE, 9.0f, 1.0f),
                       Check::compared(AT_LEAST, 1.0f, 0.9f), Check::found(AT_MOST, true)};
    EXPECT_TRUE(all_pass(sound));
    EXPECT_EQ(governing(sound), &sound[2]);
}

// -20 F against -10 F is a ratio of 0.98, whatever the margin is worth.
TEST(CheckOrder, OfSeveralComponentsHasPassedTemperaturesLast) {
    const Checks checks{Check::compared(WARM, -20.0f, -10.0f),
                        Check::compared(AT_MOST, 0.5f, 1.0f)};
    EXPECT_EQ(governing(checks), &checks[0]);
    EXPECT_EQ(governing_of_several(checks), &checks[1]);
    const Checks alone{Check::compared(WARM, -20.0f, -10.0f)};
    EXPECT_EQ(governing_of_several(alone), &alone[0]);
    const Checks failing{Check::compared(AT_MOST, 0.5f, 1.0f),
                         Check::compared(WARM, 20.0f, -10.0f)};
    EXPECT_EQ(governing_of_several(failing), &failing[1]);
}

} // namespace
} // namespace tarvane::app
