#include "shell_div2_rules.h"

#include "tarvane/tarvane.h"

#include <cmath>
#include <optional>

namespace tarvane::app {

using N = ShellNumber;
using namespace as;

namespace {

constexpr float MILLION = 1.0e6f;
constexpr float LEAST_RATIO = 0.002f, GREATEST_RATIO = 0.06f; // t/L of the factor tables
constexpr float BASIC_STRESS = 115000.0f;                     // of the knuckle
constexpr int MOST_PASSES = 12;

constexpr std::string_view RULE = "AD-204";

class Head {
  public:
    explicit Head(const ShellInput& element) : shell(element) {
        const std::int32_t reference = shell.whole_setting(N::material_class), asme = 1;
        const float ambient = 70.0f, T = shell.setting(N::T);
        cold = ASMEMOD(&ambient, &reference, &asme);
        hot = ASMEMOD(&T, &reference, &asme);
        const bool by_modulus =
            (reference >= 16 && reference <= 70) || (reference >= 105 && reference <= 117);
        limit = by_modulus ? cold * BASIC_STRESS / 30.0f : BASIC_STRESS;
    }

    // False outside the tables.
    bool calculate(ShellRules& rules) {
        Symbols symbols = common();
        const std::optional<float> greatest = solve(symbols);
        if (!greatest || !in_tables(place(t))) return false;

        rules.older_division_2 = true;
        rules.columns.clear(); // the tolerance is not taken off here
        rules.columns.push_back({"Elastic Modulus at Ambient", "Eamb", "", cold * MILLION, STRESS});
        rules.columns.push_back(
            {"Elastic Modulus at Temperature", "Et", "", hot * MILLION, STRESS});
        rules.columns.push_back({"Limit of the Knuckle Stress", "Slim", "", limit, STRESS});
        rules.thickness = {
            formula("Required Thickness of the Crown [tm]:", "P * Lc * M / ( 2 * S * E - 0.2 * P )",
                    RULE, THICKNESS, symbols),
            formula("Required Thickness of the Knuckle [tk]:",
                    "3 * P * Lc * K * Eamb / ( 4 * Slim * Et )", RULE, THICKNESS, symbols)};
        const float tm = rules.thickness[0].value, tk = rules.thickness[1].value;
        symbols.put("tm", tm, THICKNESS);
        symbols.put("tk", tk, THICKNESS);
        rules.thickness.push_back(formula("Required Thickness due to Internal Pressure [tr]:",
                                          "max( tm, tk )", RULE, THICKNESS, symbols));
        pressures(rules, tm < tk);
        return true;
    }

  private:
    const ShellInput& shell;
    const float t = shell.setting(N::t), c = shell.setting(N::c), u = shell.setting(N::Ut);
    float cold = 0.0f, hot = 0.0f, limit = 0.0f;
    float Dw = 0.0f, Lw = 0.0f; // diameter and crown radius at a thickness

    Symbols common() const {
        Symbols symbols;
        symbols.put("P", shell.setting(N::P), PRESSURE);
        symbols.put("S", shell.setting(N::S), STRESS);
        symbols.put("Sa", shell.setting(N::Sa), STRESS);
        symbols.put("E", shell.setting(N::E), FACTOR);
        symbols.put("t", t, THICKNESS);
        symbols.put("tc", t - c, THICKNESS);
        symbols.put("Eamb", cold * MILLION, STRESS);
        symbols.put("Et", hot * MILLION, STRESS);
        symbols.put("Slim", limit, STRESS);
        symbols.put("So", BASIC_STRESS, STRESS);
        return symbols;
    }
    static bool in_tables(float ratio) { return ratio >= LEAST_RATIO && ratio <= GREATEST_RATIO; }

    float place(float T) {
        Dw = shell.outside() ? shell.diameter() - 2.0f * T : shell.diameter();
        Lw = shell.shape() == TARVANE_ELLIPTICAL_HEAD ? 0.9f * Dw : shell.setting(N::L);
        return (T - c) / (Lw + c);
    }
    float M(float T, float ca, float tolerance) const {
        const std::int32_t shape = shell.shape();
        const float r = shell.setting(N::r);
        return DIV2_M_FACTOR(&Dw, &r, &T, &Lw, &ca, &shape, &tolerance);
    }
    float K(float T, float ca, float tolerance) const {
        const std::int32_t shape = shell.shape();
        const float r = shell.setting(N::r);
        return DIV2_K_FACTOR(&Dw, &r, &T, &Lw, &ca, &shape, &tolerance);
    }

    // The passes of SHLINT: to a change below 0.005 in. and one pass further, twelve at most. Puts the
    // values of the last pass; nothing when a pass leaves the tables.
    std::optional<float> solve(Symbols& symbols) {
        const float P = shell.setting(N::P), S = shell.setting(N::S), E = shell.setting(N::E);
        float T = t, before = 0.0f, greatest = 0.0f, k = 0.0f, m = 0.0f;
        bool last = false;
        for (int n = 0; !last; ++n) {
            last = (n != 0 && std::fabs(before - T) < 0.005f) || n == MOST_PASSES - 1;
            before = T;
            const float ratio = place(T);
            if (ratio < LEAST_RATIO || ratio > GREATEST_RATIO) return std::nullopt;
            k = K(before, c, u);
            m = M(before, c, u);
            const float crown = P * (Lw + c) * m / (2.0f * S * E - 0.2f * P);
            const float knuckle = 3.0f * P * (Lw + c) * k * cold / (4.0f * limit * hot);
            greatest = crown < knuckle ? knuckle : crown;
            T = greatest + c + u;
        }
        symbols.put("Lc", Lw + c, LENGTH);
        symbols.put("M", m, FACTOR);
        symbols.put("K", k, FACTOR);
        return greatest;
    }

    // At the given thickness: what governs there is what governs the required one.
    void pressures(ShellRules& rules, bool by_knuckle) const {
        Symbols symbols = common();
        symbols.put("Lc", Lw + c, LENGTH);
        symbols.put("Ln", Lw, LENGTH);
        symbols.put("K", K(t, c, u), FACTOR);
        symbols.put("Kn", K(t, 0.0f, 0.0f), FACTOR);
        symbols.put("M", M(t, c, u), FACTOR);
        symbols.put("Mn", M(t, 0.0f, 0.0f), FACTOR);
        rules.columns.push_back({"Corroded Thickness", "tc", "t - c", t - c, THICKNESS});
        rules.columns.push_back({"Crown Radius at Given Thickness", "Ln", "", Lw, LENGTH});
        rules.columns.push_back({"Corroded Crown Radius", "Lc", "Ln + c", Lw + c, LENGTH});
        const auto column = [&](std::string_view label, std::string_view name) {
            rules.columns.push_back(
                {std::string(label), std::string(name), "", symbols.find(name).value, FACTOR});
        };
        column("Factor of the Crown, Corroded", "M");
        column("Factor of the Crown, New", "Mn");
        column("Factor of the Knuckle, Corroded", "K");
        column("Factor of the Knuckle, New", "Kn");
        const auto put = [&](std::vector<Formula>& into, std::string_view title,
                             std::string_view crown, std::string_view knuckle, int kind) {
            into.push_back(formula(title, by_knuckle ? knuckle : crown, RULE, kind, symbols));
        };
        put(rules.mawp, "Maximum Allowable Working Pressure at Given Thickness, Corroded [MAWP]:",
            "2 * S * E * tc / ( Lc * M + 0.2 * tc )", "tc * Slim * 4 * Et / ( 3 * Lc * K * Eamb )",
            PRESSURE);
        put(rules.map_nc, "Maximum Allowable Pressure, New and Cold [MAPNC]:",
            "2 * Sa * E * t / ( Ln * Mn + 0.2 * t )", "t * 4 * So / ( 3 * Ln * Kn )", PRESSURE);
        put(rules.stress, "Actual Stress at Given Pressure and Thickness, Corroded [Sact]:",
            "P * ( M * Lc + 0.2 * tc ) / ( 2 * E * tc )", "3 * P * Lc * K * Eamb / ( 4 * tc * Et )",
            STRESS);
    }
};

} // namespace

bool older_division_2_rules(const ShellInput& shell, ShellRules& rules) {
    return shell.older_division_2() && Head(shell).calculate(rules);
}

} // namespace tarvane::app
