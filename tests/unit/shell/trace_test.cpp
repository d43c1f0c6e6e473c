// The texts that the stages of SHLINT pass to a trace: evaluated with the values passed with them, each gives the
// value of its stage, on both sides of each switch.
#include "shell_fixture.h"

#include "frame/switches.h"
#include "report/channel.h"
#include "shell/app_1_4f_head.h"
#include "shell/convex_head.h"
#include "shell/elements.h"

#include <functional>

namespace tarvane {
namespace {

using namespace shell_test;

// Sums, products, signs, squares, brackets and functions, in double precision. `next` gives the values of
// the symbols in the order of the text.
class Evaluator {
  public:
    using Next = std::function<double(const std::string&)>;
    Evaluator(std::string formula_text, Next next_value)
        : text(std::move(formula_text)), next(std::move(next_value)) {}
    double value() {
        const double result = sum();
        EXPECT_EQ(peek(), '\0') << text;
        return result;
    }

  private:
    std::string text;
    Next next;
    std::size_t at = 0;

    char peek() {
        while (at < text.size() && text[at] == ' ')
            ++at;
        return at < text.size() ? text[at] : '\0';
    }
    bool take(char c) {
        if (peek() != c) return false;
        ++at;
        return true;
    }
    double sum() {
        double left = product();
        while (peek() == '+' || peek() == '-')
            left = take('+') ? left + product() : (take('-'), left - product());
        return left;
    }
    double product() {
        double left = signed_factor();
        while (peek() == '*' || peek() == '/')
            left = take('*') ? left * signed_factor() : (take('/'), left / signed_factor());
        return left;
    }
    double signed_factor() {
        if (take('-')) return -signed_factor();
        const double base = primary();
        return take('\xB2') ? base * base : base;
    }
    double primary() {
        if (take('(')) return bracket();
        std::string word;
        while (at < text.size() &&
               (std::isalnum(static_cast<unsigned char>(text[at])) != 0 || text[at] == '.'))
            word += text[at++];
        EXPECT_FALSE(word.empty()) << text << " at " << at;
        if (word.empty()) return NAN;
        if (std::isdigit(static_cast<unsigned char>(word[0])) != 0) return std::stod(word);
        if (word == "cos") { // the angle has no value of its own
            const std::size_t end = text.find(')', at);
            word += text.substr(at, end + 1 - at);
            at = end + 1;
            return next(word);
        }
        return peek() == '(' ? (take('('), function(word)) : next(word);
    }
    double bracket() {
        const double inner = sum();
        EXPECT_TRUE(take(')')) << text;
        return inner;
    }
    double function(const std::string& name) {
        std::vector<double> arguments{sum()};
        while (take(','))
            arguments.push_back(sum());
        EXPECT_TRUE(take(')')) << text;
        if (name == "max") return *std::max_element(arguments.begin(), arguments.end());
        if (name == "min") return *std::min_element(arguments.begin(), arguments.end());
        EXPECT_EQ(arguments.size(), 1u);
        if (name == "ln") return std::log(arguments[0]);
        if (name == "exp") return std::exp(arguments[0]);
        EXPECT_EQ(name, "sqrt");
        return std::sqrt(arguments[0]);
    }
};

TRACE trace;

const TRACE_SYMBOL_VALUE* symbol_named(std::string_view shown) {
    for (Int i = trace.symbols - 1; i >= 0; --i)
        if (trace.symbol[i].shown == shown) return &trace.symbol[i];
    return nullptr;
}

void expect_same(double by_text, Real by_stage, std::string_view text) {
    EXPECT_NEAR(by_text, double(by_stage), 2e-5 * std::fabs(double(by_stage))) << text;
}

void expect_texts_hold() {
    for (Int i = 0; i < trace.formulas; ++i) {
        const TRACE_FORMULA_VALUE& f = trace.formula[i];
        Int used = 0;
        Evaluator evaluator(std::string(f.text.trimmed()), [&](const std::string& name) {
            if (used >= f.count) {
                ADD_FAILURE() << "no value of " << name << " in " << f.text.trimmed();
                return 0.0;
            }
            const TRACE_SYMBOL_VALUE& symbol = f.values[used++];
            EXPECT_EQ(symbol.shown, name) << f.text.trimmed();
            EXPECT_NE(symbol.value, NO_VALUE) << name << " in " << f.text.trimmed();
            return double(symbol.value);
        });
        expect_same(evaluator.value(), f.value, f.text.trimmed());
        EXPECT_EQ(used, f.count) << f.text.trimmed();
        EXPECT_LT(f.text.trimmed_length(), 96) << f.text.trimmed();
    }
    for (Int i = 0; i < trace.columns; ++i) {
        const TRACE_COLUMN_VALUE& column = trace.column[i];
        if (column.expression.empty()) continue;
        Evaluator evaluator(std::string(column.expression), [&](const std::string& name) {
            const TRACE_SYMBOL_VALUE* symbol = symbol_named(name);
            EXPECT_NE(symbol, nullptr) << name << " in " << column.expression;
            return symbol != nullptr ? double(symbol->value) : 0.0;
        });
        expect_same(evaluator.value(), column.value, column.expression);
    }
    EXPECT_LT(trace.symbols, TRACE::MOST_SYMBOLS);
    EXPECT_LT(trace.columns, TRACE::MOST_COLUMNS + 1);
    EXPECT_LT(trace.formulas, TRACE::MOST_FORMULAS);
}

// The last formula of a group.
const TRACE_FORMULA_VALUE* last(TRACE_GROUP group) {
    for (Int i = trace.formulas - 1; i >= 0; --i)
        if (trace.formula[i].group == group) return &trace.formula[i];
    return nullptr;
}
Real value_of(TRACE_GROUP group) {
    const TRACE_FORMULA_VALUE* formula = last(group);
    return formula != nullptr ? formula->value : NOT_A_NUMBER;
}
std::string text_of(TRACE_GROUP group) {
    const TRACE_FORMULA_VALUE* formula = last(group);
    return formula != nullptr ? std::string(formula->text.trimmed()) : "";
}

class Trace : public ShellTest {
  protected:
    ~Trace() override { G_USE_A5 = 0; }

    // Runs with a trace and without one: the same bits, and the texts hold.
    static void check(const Shell& given) {
        Shell silent = given, traced = given;
        silent.calculate();
        const SHELL_RESULTS without = SHELL;
        BEGIN_TRACE(trace, 0);
        K_COLUMN = K_COLUMN_AT_ENTRY;
        SHLINT_ARGUMENTS arguments = traced.arguments();
        SHELL_ELEMENT(arguments, &trace);
        SHELL.serial = without.serial;
        EXPECT_EQ(std::memcmp(&without, &SHELL, sizeof without), 0);
        for (const auto& [one, other] : {std::pair{silent.Treq, traced.Treq},
                                         {silent.TreqRaw, traced.TreqRaw},
                                         {silent.MAWP, traced.MAWP},
                                         {silent.MAPnc, traced.MAPnc},
                                         {silent.Stress, traced.Stress},
                                         {silent.L, traced.L},
                                         {silent.T14f, traced.T14f}})
            EXPECT_EQ(one, other);
        expect_texts_hold();
        if (SHELL.formula != AD_204) {
            EXPECT_EQ(value_of(TRACE_GROUP::thickness), traced.TreqRaw);
        }
        const bool limited = last(TRACE_GROUP::mawp_14f) != nullptr;
        EXPECT_EQ(value_of(limited ? TRACE_GROUP::mawp_14f : TRACE_GROUP::mawp), traced.MAWP);
        const bool limitedNew = last(TRACE_GROUP::map_nc_14f) != nullptr;
        EXPECT_EQ(value_of(limitedNew ? TRACE_GROUP::map_nc_14f : TRACE_GROUP::map_nc),
                  traced.MAPnc);
        EXPECT_EQ(value_of(TRACE_GROUP::stress), traced.Stress);
        EXPECT_EQ(value_of(TRACE_GROUP::governing), SHELL.t_required);
    }
    static void check(const Shell& given, Int formula) {
        check(given);
        EXPECT_EQ(SHELL.formula, formula);
        EXPECT_EQ(last(TRACE_GROUP::thickness)->rule, RULE_OF(formula));
    }

    // Inside and outside, with and without the tolerance, which changes names of the texts.
    template <typename Check>
    static void on_all_sides(Shell e, Check each) {
        for (const Int Outside : {0, 1})
            for (const Real u : {0.0f, 0.01f}) {
                SCOPED_TRACE(testing::Message() << "outside " << Outside << " Ut " << u);
                e.Outside = Outside;
                e.u = u;
                each(e);
            }
    }
};

Shell some(Int code) {
    Shell e = element(code);
    e.P = 110.0f, e.Sa = 20000.0f, e.S = 17500.0f, e.E = 0.85f;
    e.t = 0.75f, e.c = 0.0625f;
    return e;
}

TEST_F(Trace, CylinderAndSphereThinAndThick) {
    on_all_sides(some(CYLINDER), [](Shell e) {
        check(e, e.Outside == 0 ? UG_27_C_1 : APP_1_1_A_1);
        EXPECT_EQ(SHELL.thick, 0);
        e.t = 17.0f;
        check(e, APP_1_2_A_1);
        EXPECT_EQ(SHELL.thick, 1);
        e.t = 3.0f;
        e.P = 0.385f * e.S * e.E; // exactly: thin
        check(e, e.Outside == 0 ? UG_27_C_1 : APP_1_1_A_1);
        e.P = above(e.P);
        check(e, APP_1_2_A_1);
        EXPECT_EQ(SHELL.thick, 2);
        e.t = 17.0f;
        check(e, APP_1_2_A_1);
        EXPECT_EQ(SHELL.thick, 3);
    });
    on_all_sides(some(SPHERE), [](Shell e) {
        check(e, e.Outside == 0 ? UG_27_D : APP_1_1_A_2);
        e.t = 12.0f;
        check(e, APP_1_3);
        EXPECT_EQ(SHELL.thick, 1);
        e.t = 3.0f;
        e.P = 0.665f * e.S * e.E;
        check(e, e.Outside == 0 ? UG_27_D : APP_1_1_A_2);
        e.P = above(e.P);
        check(e, APP_1_3);
        EXPECT_EQ(SHELL.thick, 2);
    });
}

// The walls at which the forms change: exactly at them thin, one hair above thick.
TEST_F(Trace, ChangesWithTheWall) {
    struct WallLimit {
        Int element;
        Real D, t;
        Int thin, thick;
    };
    for (const WallLimit& at : {WallLimit{CYLINDER, 10.0f, 2.5f, UG_27_C_1, APP_1_2_A_1},
                                WallLimit{SPHERE, 10.0f, 0.356f * 5.0f, UG_27_D, APP_1_3}}) {
        Shell e = element(at.element);
        e.D = at.D, e.t = at.t, e.P = 1000.0f;
        check(e, at.thin);
        e.t = above(e.t);
        check(e, at.thick);
    }
    Shell outside = element(CYLINDER);
    outside.Outside = 1, outside.D = 12.0f, outside.t = 2.0f, outside.P = 1000.0f; // (D - 2t)/4 = t
    check(outside, APP_1_1_A_1);
    outside.t = above(outside.t);
    check(outside, APP_1_2_A_1);
}

TEST_F(Trace, FormedHeads) {
    on_all_sides(some(ELLIPTICAL), [](Shell e) {
        for (const Real k : {2.0f, 1.7f})
            for (const Int CorrodedK : {0, 1}) {
                e.k = k, e.CorrodedK = CorrodedK;
                const bool twoToOne = k == 2.0f && CorrodedK == 0 && e.Outside == 0;
                check(e, twoToOne ? UG_32_D : APP_1_4_C);
                EXPECT_EQ(text_of(TRACE_GROUP::factor),
                          CorrodedK == 1 ? "( kc\xB2 + 2 ) / 6" : "( k\xB2 + 2 ) / 6");
            }
    });
    on_all_sides(some(TORISPHERICAL), [](Shell e) { check(e, APP_1_4_D); });
}

TEST_F(Trace, ConesWithAndWithoutKnuckle) {
    on_all_sides(some(CONE), [](Shell e) {
        const Int formula = e.Outside == 0 ? UG_32_G : APP_1_4_E;
        check(e, formula);
        EXPECT_EQ(SHELL.knuckle, 0);
        e.r = 0.001f, e.k = 0.7f; // no knuckle yet
        check(e, formula);
        EXPECT_EQ(SHELL.knuckle, 0);
        EXPECT_EQ(SHELL.mawp_knuckle, NO_VALUE);
        e.r = 1.0f, e.k = 0.3f;
        check(e, formula);
        EXPECT_EQ(SHELL.knuckle, 1);
        EXPECT_EQ(SHELL.mawp_by, BY_KNUCKLE);
        EXPECT_EQ(SHELL.map_nc_by, BY_KNUCKLE);
        EXPECT_EQ(SHELL.stress_by, BY_KNUCKLE);
        EXPECT_EQ(SHELL.mawp, SHELL.mawp_knuckle);
        EXPECT_GT(SHELL.mawp_formula, SHELL.mawp_knuckle);
        EXPECT_EQ(text_of(TRACE_GROUP::stress), "max( Sact, Sk )");
        e.r = 9.0f, e.k = 1.5f; // stronger than the cone
        check(e, formula);
        EXPECT_EQ(SHELL.mawp_by, BY_FORMULA);
        EXPECT_EQ(SHELL.stress_by, BY_FORMULA);
        EXPECT_EQ(SHELL.mawp, SHELL.mawp_formula);
        EXPECT_GT(SHELL.mawp_knuckle, SHELL.mawp);
    });
}

TEST_F(Trace, FlatHeadsWithSpansAndOpenings) {
    on_all_sides(some(FLAT_HEAD_ELEMENT), [](Shell e) {
        e.D = 12.0f, e.t = 1.0f;
        for (const Real D2 : {0.0f, 9.0f, 12.0f, 40.0f})
            for (const int holes : {0, 1, 2}) {
                e.D2 = D2;
                e.d1 = holes > 0 ? 2.0f : 0.0f, e.edge1 = 2.0f;
                e.d2 = holes > 1 ? 1.5f : 0.0f, e.edge2 = 2.0f, e.pitch = 3.0f;
                check(e, D2 == 0.0f ? UG_34_C_2 : UG_34_C_3);
                EXPECT_EQ(SHELL.openings, holes == 0   ? OPENINGS_FOUND::NONE
                                          : holes == 1 ? OPENINGS_FOUND::APART
                                                       : OPENINGS_FOUND::BY_FACTOR);
                const std::string text = text_of(TRACE_GROUP::thickness);
                EXPECT_EQ(text.find("Z *") != std::string::npos, D2 != 0.0f) << text;
                EXPECT_EQ(text.find("F *") != std::string::npos, holes > 0) << text;
                EXPECT_EQ(text.find("dc") != std::string::npos, e.Outside == 0) << text;
            }
        e.d1 = 2.0f, e.edge1 = 0.1f;
        check(e);
        EXPECT_EQ(SHELL.openings, OPENINGS_FOUND::IN_VIOLATION);
        e.d1 = e.d2 = 0.0f;
        check(e);
        EXPECT_EQ(SHELL.openings, OPENINGS_FOUND::NONE);
    });
}

TEST_F(Trace, OlderDivisionTwo) {
    G_USE_A5 = 1;
    for (const Int code : {ELLIPTICAL, TORISPHERICAL})
        on_all_sides(some(code), [](Shell e) {
            for (const Int Material : {1, 20})
                for (const Real r : {3.0f, 7.0f}) {
                    e.Material = Material, e.r = r;
                    check(e);
                    EXPECT_EQ(SHELL.formula, AD_204);
                    EXPECT_EQ(SHELL.mawp_by == BY_KNUCKLE, SHELL.t_crown < SHELL.t_knuckle);
                    EXPECT_EQ(text_of(TRACE_GROUP::thickness), "max( tm, tk )");
                }
        });
    // Both stresses must have governed somewhere above.
    Shell head = some(TORISPHERICAL);
    check(head);
    const Int tight = SHELL.mawp_by;
    head.r = 9.0f, head.E = 0.5f;
    check(head);
    EXPECT_EQ(tight, BY_KNUCKLE);
    EXPECT_EQ(SHELL.mawp_by, BY_FORMULA);
    // t/L 0.06 ends the tables.
    head.c = 0.0f, head.P = 900.0f;
    head.t = 2.8f;
    check(head);
    EXPECT_EQ(SHELL.formula, AD_204);
    head.t = 3.0f;
    check(head, APP_1_4_D);
    EXPECT_EQ(text_of(TRACE_GROUP::thickness), "P * Lc * Mc / ( 2 * S * E - 0.2 * P )");
}

// Thin heads: the lesser pressure, and the greater thickness.
TEST_F(Trace, HeadsLimitedByAppendix14f) {
    for (const Int code : {ELLIPTICAL, TORISPHERICAL}) {
        Shell e = element(code);
        e.t = 0.07f, e.P = 15.0f;
        check(e);
        EXPECT_EQ(SHELL.thin, 1);
        EXPECT_EQ(SHELL.thin_new, 1);
        EXPECT_EQ(SHELL.evaluated_14f, 0);
        EXPECT_EQ(SHELL.lacks_14f, LACKS_YIELD);
        EXPECT_EQ(last(TRACE_GROUP::mawp_14f), nullptr);
        for (const Real Sy : {1000.0f, 4000.0f, 60000.0f}) {
            e.Sy = Sy;
            check(e);
            EXPECT_EQ(SHELL.evaluated_14f, Sy > 1000.0f ? 1 : 0);
            if (Sy == 1000.0f) continue;
            const TRACE_FORMULA_VALUE* limited = last(TRACE_GROUP::mawp_14f);
            ASSERT_NE(limited, nullptr);
            const bool governs = SHELL.mawp_14f < SHELL.mawp_formula;
            EXPECT_EQ(SHELL.mawp_by, governs ? BY_APP_1_4F : BY_FORMULA);
            EXPECT_EQ(limited->rule, governs ? "App. 1-4 (f)" : RULE_OF(SHELL.formula));
            EXPECT_EQ(governs, Sy == 4000.0f);
            EXPECT_EQ(SHELL.t_status_14f, HEAD_THIN);
        }
        e.Skip14f = 1;
        e.Sy = 1000.0f;
        write_file("system", "ElastAlp07.txt", "");
        check(e);
        EXPECT_EQ(SHELL.lacks_14f, LACKS_YIELD + LACKS_MODULI + SKIPPED);
        write_file("system", "ElastAlp07.txt", moduli());
    }
}

TEST_F(Trace, GoverningThickness) {
    Shell e = some(CYLINDER);
    check(e);
    EXPECT_EQ(text_of(TRACE_GROUP::governing), "tr + c");
    EXPECT_EQ(SHELL.t_by, BY_FORMULA);
    e.u = 0.01f;
    check(e);
    EXPECT_EQ(text_of(TRACE_GROUP::governing), "tr + c + Ut");
    const auto governing = [] { return trace.formula[trace.formulas - 2]; };
    e.P = 5.0f;
    check(e);
    EXPECT_EQ(text_of(TRACE_GROUP::governing), "tg + c + Ut");
    EXPECT_EQ(governing().text.trimmed(), "max( tr, tmin )");
    EXPECT_EQ(governing().rule, "UG-16 (b)");
    EXPECT_EQ(SHELL.t_by, BY_LEAST_THICKNESS);
    e.Service = 2;
    check(e);
    EXPECT_EQ(governing().rule, "UG-16 (b)(3)");
    EXPECT_EQ(SHELL.t_by, BY_SERVICE);
    EXPECT_EQ(SHELL.t_least, 0.25f);
    e.Service = 1;
    check(e);
    EXPECT_EQ(governing().rule, "UG-16 (b)"); // not in the list
    write_file("system", "VIII-1_Matls_By_Table.txt", "SA-516 70\n");
    check(e);
    EXPECT_EQ(governing().rule, "UG-16 (b)(4)");
    EXPECT_EQ(SHELL.t_governing, 0.09375f);

    Shell head = element(TORISPHERICAL);
    head.t = 0.07f, head.P = 15.0f, head.Sy = 30000.0f;
    check(head);
    EXPECT_EQ(governing().text.trimmed(), "max( tr, t14f, tmin )");
    EXPECT_EQ(governing().rule, SHELL.t_14f > SHELL.t_req ? "App. 1-4 (f)" : "UG-16 (b)");
    head.D = head.L = 96.0f, head.r = 6.0f, head.t = 0.15f, head.P = 30.0f;
    check(head);
    EXPECT_EQ(governing().text.trimmed(), "max( tr, t14f )");
    EXPECT_EQ(SHELL.t_by == BY_APP_1_4F, SHELL.t_14f > SHELL.t_req);
}

TEST_F(Trace, ConvexHead) {
    Real Pi, treq, MAEPi, MAEPg, Tg;
    for (const Real mawp : {150.0f, 200.0f}) {
        check(some(ELLIPTICAL));
        CONVEX_HEAD_ARGUMENTS h{.P = 60.0f,
                                .MAEP = 101.0f,
                                .Tca = mawp == 150.0f ? 0.4f : 0.6f,
                                .TreqRaw = 0.4f,
                                .t_required = 0.5f,
                                .MAWP = mawp,
                                .Pi = Pi,
                                .treq = treq,
                                .MAEPi = MAEPi,
                                .MAEPg = MAEPg,
                                .Tg = Tg};
        CONVEX_HEAD(h, &trace);
        expect_texts_hold();
        EXPECT_EQ(text_of(TRACE_GROUP::convex_pressure), "1.67 * P");
        EXPECT_FLOAT_EQ(Pi, 100.2f);
        EXPECT_EQ(treq, 0.5f);
        EXPECT_EQ(MAEPg, mawp == 150.0f ? MAEPi : 101.0f);
        EXPECT_EQ(Tg, mawp == 150.0f ? 0.5f : 0.6f);
        for (const Real raw : {0.0f, -0.1f, std::numeric_limits<Real>::infinity(), NOT_A_NUMBER}) {
            CONVEX_HEAD_ARGUMENTS none = h;
            none.TreqRaw = raw;
            CONVEX_HEAD(none, nullptr);
            EXPECT_TRUE(std::isinf(treq)) << raw;
            EXPECT_TRUE(std::isinf(Tg)) << raw;
        }
    }
}

} // namespace
} // namespace tarvane
