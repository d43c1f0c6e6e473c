#include "shell_rules.h"

#include "functions.h"
#include "shell_div2_rules.h"
#include "tarvane/tarvane.h"

namespace tarvane::app {

using N = ShellNumber;
using namespace as;

namespace {

// The four formulas of one rule. Their titles are alike for all elements.
struct Set {
    std::string rule, thickness, mawp, map_nc, stress;
};

class Rules {
  public:
    Rules(const ShellInput& element, const OpeningFactors& given)
        : shell(element), openings(given) {}

    ShellRules made() {
        put("P", shell.setting(N::P), PRESSURE);
        put("S", shell.setting(N::S), STRESS);
        put("Sa", shell.setting(N::Sa), STRESS);
        put("E", shell.setting(N::E), FACTOR);
        put("t", t, THICKNESS);
        put("c", c, THICKNESS);
        put("Ut", u, THICKNESS);
        put("D", D, LENGTH);
        put("Do", D, LENGTH); // one of the two stands in the formulas
        derive("Corroded Thickness", "tc", u != 0.0f ? "t - c - Ut" : "t - c", tc, THICKNESS);
        switch (shell.shape()) {
        case TARVANE_CYLINDER:
            cylinder();
            break;
        case TARVANE_ELLIPTICAL_HEAD:
            ellipse();
            break;
        case TARVANE_TORISPHERICAL_HEAD:
            torisphere();
            break;
        case TARVANE_SPHERE:
            sphere();
            break;
        case TARVANE_CONE:
            cone();
            break;
        default:
            flat();
            break;
        }
        return std::move(rules);
    }

  private:
    const ShellInput& shell;
    const OpeningFactors& openings;
    Symbols symbols;
    ShellRules rules;

    const float D = shell.diameter();
    const float t = shell.setting(N::t), c = shell.setting(N::c), u = shell.setting(N::Ut);
    const float tc = (t - c) - u;
    const bool outside = shell.outside();

    void put(std::string_view name, float value, int kind) { symbols.put(name, value, kind); }
    // A symbol with a column line of its own.
    void derive(std::string_view label, std::string_view name, std::string_view expression,
                float value, int kind) {
        put(name, value, kind);
        rules.columns.push_back(
            {std::string(label), std::string(name), std::string(expression), value, kind});
    }
    Formula made_of(std::string_view title, std::string_view text, std::string_view rule,
                    int kind) const {
        return formula(title, text, rule, kind, symbols);
    }
    // A factor by a formula; the symbol stands in the brackets of the title.
    void factor(std::string_view title, std::string_view name, std::string_view text,
                std::string_view rule, int kind = FACTOR) {
        rules.factors.push_back(made_of(title, text, rule, kind));
        put(name, rules.factors.back().value, kind);
    }
    void use(const Set& set) {
        rules.thickness.push_back(made_of("Required Thickness due to Internal Pressure [tr]:",
                                          set.thickness, set.rule, THICKNESS));
        rules.mawp.push_back(made_of(
            "Maximum Allowable Working Pressure at Given Thickness, Corroded [MAWP]:", set.mawp,
            set.rule, PRESSURE));
        rules.map_nc.push_back(made_of(
            "Maximum Allowable Pressure, New and Cold [MAPNC]:", set.map_nc, set.rule, PRESSURE));
        rules.stress.push_back(
            made_of("Actual Stress at Given Pressure and Thickness, Corroded [Sact]:", set.stress,
                    set.rule, STRESS));
    }

    float SE(float part) const { return part * shell.setting(N::S) * shell.setting(N::E); }
    float P() const { return shell.setting(N::P); }

    // ---- cylinder and sphere, thin or thick --------------------------------------------------------

    void inside_radii() {
        derive("New Inside Radius", "Rn", "D / 2", D / 2.0f, LENGTH);
        derive("Corroded Inside Radius", "R", "D / 2 + c", D / 2.0f + c, LENGTH);
    }
    // The tolerance is taken off the outside; without one the radius is the new one.
    std::string outside_radii(bool thick) {
        derive("New Outside Radius", "Ro", "Do / 2", D / 2.0f, LENGTH);
        if (u != 0.0f) derive("Outside Radius", "Ru", "Do / 2 - Ut", (D - 2.0f * u) / 2.0f, LENGTH);
        if (thick)
            derive("Corroded Inside Radius", "Ri", "Do / 2 - t + c", D / 2.0f - t + c, LENGTH);
        return u != 0.0f ? "Ru" : "Ro";
    }

    void cylinder() {
        const bool high = SE(0.385f) < P();
        if (outside) {
            const bool thick = (D - 2.0f * (t - c)) / 4.0f < tc || high;
            const std::string R = outside_radii(thick);
            if (thick) {
                return use({"App. 1-2 (a)(1)", R + " * ( 1 - exp( -P / ( S * E ) ) )",
                            "S * E * ln( " + R + " / Ri )", "Sa * E * ln( Ro / ( Ro - t ) )",
                            "P / ( E * ln( " + R + " / Ri ) )"});
            }
            return use({"App. 1-1 (a)(1)", "P * " + R + " / ( S * E + 0.4 * P )",
                        "S * E * tc / ( " + R + " - 0.4 * tc )", "Sa * E * t / ( Ro - 0.4 * t )",
                        "P * ( " + R + " - 0.4 * tc ) / ( E * tc )"});
        }
        inside_radii();
        if ((D / 2.0f + c) / 2.0f < tc || high) {
            return use({"App. 1-2 (a)(1)", "R * ( exp( P / ( S * E ) ) - 1 )",
                        "S * E * ln( ( R + tc ) / R )", "Sa * E * ln( ( Rn + t ) / Rn )",
                        "P / ( E * ln( ( R + tc ) / R ) )"});
        }
        use({"UG-27 (c)(1)", "P * R / ( S * E - 0.6 * P )", "S * E * tc / ( R + 0.6 * tc )",
             "Sa * E * t / ( Rn + 0.6 * t )", "P * ( R + 0.6 * tc ) / ( E * tc )"});
    }

    void sphere() {
        const bool high = SE(0.665f) < P();
        if (outside) {
            const bool thick = 0.356f * (D - 2.0f * (t - c)) / 2.0f < tc || high;
            const std::string R = outside_radii(thick);
            if (thick) {
                return use({"App. 1-3", R + " * ( 1 - exp( -P / ( 2 * S * E ) ) )",
                            "2 * S * E * ln( " + R + " / Ri )",
                            "2 * Sa * E * ln( Ro / ( Ro - t ) )",
                            "( P / 2 ) / ( E * ln( " + R + " / Ri ) )"});
            }
            return use({"App. 1-1 (a)(2)", "P * " + R + " / ( 2 * S * E + 0.8 * P )",
                        "2 * S * E * tc / ( " + R + " - 0.8 * tc )",
                        "2 * Sa * E * t / ( Ro - 0.8 * t )",
                        "P * ( " + R + " - 0.8 * tc ) / ( 2 * E * tc )"});
        }
        inside_radii();
        if (0.356f * (D / 2.0f + c) < tc || high) {
            return use({"App. 1-3", "R * ( exp( P / ( 2 * S * E ) ) - 1 )",
                        "2 * S * E * ln( ( R + tc ) / R )", "2 * Sa * E * ln( ( Rn + t ) / Rn )",
                        "( P / 2 ) / ( E * ln( ( R + tc ) / R ) )"});
        }
        use({"UG-27 (d)", "P * R / ( 2 * S * E - 0.2 * P )", "2 * S * E * tc / ( R + 0.2 * tc )",
             "2 * Sa * E * t / ( Rn + 0.2 * t )", "P * ( R + 0.2 * tc ) / ( 2 * E * tc )"});
    }

    // ---- formed heads ------------------------------------------------------------------------------

    void ellipse() {
        if (older_division_2_rules(shell, rules)) return;
        const float k = shell.setting(N::k);
        const float Di = outside ? D - 2.0f * t : D;
        put("k", k, FACTOR);
        factor("K Factor, New [K]:", "K", "( k\xB2 + 2 ) / 6", "App. 1-4 (c)");
        if (shell.has(N::corroded_K)) {
            put("Di", Di, LENGTH);
            put("h", Di / (2.0f * k), LENGTH);
            factor("Aspect Ratio of the Corroded Shape [kc]:", "kc",
                   "( Di + 2 * c ) / ( 2 * ( h + c ) )", "");
            factor("K Factor, Corroded [Kc]:", "Kc", "( kc\xB2 + 2 ) / 6", "App. 1-4 (c)");
        } else {
            put("Kc", symbols.find("K").value, FACTOR);
        }
        if (outside) {
            const std::string Dr = u != 0.0f ? "Du" : "Do";
            if (u != 0.0f) derive("Outside Diameter", "Du", "Do - 2 * Ut", D - 2.0f * u, LENGTH);
            return use({"App. 1-4 (c)",
                        "P * " + Dr + " * Kc / ( 2 * S * E + 2 * P * ( Kc - 0.1 ) )",
                        "2 * S * E * tc / ( Kc * " + Dr + " - 2 * tc * ( Kc - 0.1 ) )",
                        "2 * Sa * E * t / ( K * Do - 2 * t * ( K - 0.1 ) )",
                        "P * ( Kc * " + Dr + " - 2 * tc * ( Kc - 0.1 ) ) / ( 2 * E * tc )"});
        }
        derive("Corroded Inside Diameter", "Dc", "D + 2 * c", D + 2.0f * c, LENGTH);
        const bool two_to_one = k == 2.0f && !shell.has(N::corroded_K);
        use({two_to_one ? "UG-32 (d)" : "App. 1-4 (c)", "P * Dc * Kc / ( 2 * S * E - 0.2 * P )",
             "2 * S * E * tc / ( Kc * Dc + 0.2 * tc )", "2 * Sa * E * t / ( K * D + 0.2 * t )",
             "P * ( Kc * Dc + 0.2 * tc ) / ( 2 * E * tc )"});
    }

    void torisphere() {
        if (older_division_2_rules(shell, rules)) return;
        const float L = shell.setting(N::L), r = shell.setting(N::r);
        put("L", L, LENGTH);
        put("r", r, LENGTH);
        derive("Corroded Crown Radius", "Lc", "L + c", L + c, LENGTH);
        derive("Corroded Knuckle Radius", "rc", "r + c", r + c, LENGTH);
        factor("M Factor, New [M]:", "M", "( 3 + sqrt( L / r ) ) / 4", "App. 1-4 (d)");
        factor("M Factor, Corroded [Mc]:", "Mc", "( 3 + sqrt( Lc / rc ) ) / 4", "App. 1-4 (d)");
        if (outside) {
            const std::string Lr = u != 0.0f ? "Lu" : "Lo";
            derive("New Outside Crown Radius", "Lo", "L + t", L + t, LENGTH);
            if (u != 0.0f) derive("Outside Crown Radius", "Lu", "L + t - Ut", L + t - u, LENGTH);
            return use({"App. 1-4 (d)", "P * " + Lr + " * Mc / ( 2 * S * E + P * ( Mc - 0.2 ) )",
                        "2 * S * E * tc / ( Mc * " + Lr + " - tc * ( Mc - 0.2 ) )",
                        "2 * Sa * E * t / ( M * Lo - t * ( M - 0.2 ) )",
                        "P * ( Mc * " + Lr + " - tc * ( Mc - 0.2 ) ) / ( 2 * E * tc )"});
        }
        use({"App. 1-4 (d)", "P * Lc * Mc / ( 2 * S * E - 0.2 * P )",
             "2 * S * E * tc / ( Mc * Lc + 0.2 * tc )", "2 * Sa * E * t / ( M * L + 0.2 * t )",
             "P * ( Mc * Lc + 0.2 * tc ) / ( 2 * E * tc )"});
    }

    // ---- cone --------------------------------------------------------------------------------------

    void cone() {
        const float ca = cos(shell.setting(N::alpha) * 3.1415927f / 180.0f);
        derive("Cosine of the Half Apex Angle", "cos(alpha)", "", ca, FACTOR);
        if (outside) {
            const std::string Dr = u != 0.0f ? "Du" : "Do";
            if (u != 0.0f)
                derive("Outside Diameter", "Du", "Do - 2*Ut/cos(alpha)", D - 2.0f * u / ca, LENGTH);
            use({"App. 1-4 (e)", "P * " + Dr + " / ( 2 * cos(alpha) * ( S * E + 0.4 * P ) )",
                 "2 * S * E * tc * cos(alpha) / ( " + Dr + " - 0.8 * tc * cos(alpha) )",
                 "2 * Sa * E * t * cos(alpha) / ( Do - 0.8 * t * cos(alpha) )",
                 "P * ( " + Dr + " - 0.8 * tc * cos(alpha) ) / ( 2 * E * tc * cos(alpha) )"});
        } else {
            derive("Corroded Inside Diameter", "Dc", "D + 2 * c/cos(alpha)", D + 2.0f * (c / ca),
                   LENGTH);
            use({"UG-32 (g)", "P * Dc / ( 2 * cos(alpha) * ( S * E - 0.6 * P ) )",
                 "2 * S * E * tc * cos(alpha) / ( Dc + 1.2 * tc * cos(alpha) )",
                 "2 * Sa * E * t * cos(alpha) / ( D + 1.2 * t * cos(alpha) )",
                 "P * ( Dc + 1.2 * tc * cos(alpha) ) / ( 2 * E * tc * cos(alpha) )"});
        }
        if (shell.knuckle()) knuckle();
    }

    // UG-32(h): a torispherical head whose crown radius is that of the cone at its end. It limits the
    // pressures and raises the stress.
    void knuckle() {
        const float tk = shell.setting(N::tk), r = shell.setting(N::r);
        put("tk", tk, THICKNESS);
        put("r", r, LENGTH);
        derive("Corroded Knuckle Thk.", "tkc", u != 0.0f ? "tk - c - Ut" : "tk - c", (tk - c) - u,
               THICKNESS);
        derive("Corroded Knuckle Radius", "rc", "r + c", r + c, LENGTH);
        factor("Crown Radius of the Knuckle, New [Ln]:", "Ln",
               outside ? "Do / ( 2 * cos(alpha) ) - tk" : "D / ( 2 * cos(alpha) )", "UG-32 (h)",
               LENGTH);
        factor("Crown Radius of the Knuckle, Corroded [Lc]:", "Lc", "Ln + c", "", LENGTH);
        factor("M Factor of the Knuckle, New [M]:", "M", "( sqrt( Ln / r ) + 3 ) / 4",
               "App. 1-4 (d)");
        factor("M Factor of the Knuckle, Corroded [Mc]:", "Mc", "( sqrt( Lc / rc ) + 3 ) / 4",
               "App. 1-4 (d)");
        limit(rules.mawp, "Maximum Allowable Working Pressure of the Knuckle [Pk]:",
              "2 * S * E * tkc / ( Mc * Lc + 0.2 * tkc )", "MAWP", "Pk", "min( MAWP, Pk )",
              "Maximum Allowable Working Pressure, Cone and Knuckle:", PRESSURE);
        limit(rules.map_nc, "Maximum Allowable Pressure of the Knuckle, New and Cold [Pkn]:",
              "2 * Sa * E * tk / ( M * Ln + 0.2 * tk )", "MAPNC", "Pkn", "min( MAPNC, Pkn )",
              "Maximum Allowable Pressure, New and Cold, Cone and Knuckle:", PRESSURE);
        limit(rules.stress,
              "Actual Stress of the Knuckle [Sk]:", "P * ( Mc * Lc + 0.2 * tkc ) / ( 2 * E * tkc )",
              "Sact", "Sk", "max( Sact, Sk )", "Actual Stress, Cone and Knuckle:", STRESS);
    }
    void limit(std::vector<Formula>& formulas, std::string_view title, std::string_view text,
               std::string_view name_of_cone, std::string_view name, std::string_view both,
               std::string_view title_of_both, int kind) {
        put(name_of_cone, formulas.back().value, kind);
        formulas.push_back(made_of(title, text, "UG-32 (h)", kind));
        put(name, formulas.back().value, kind);
        formulas.push_back(made_of(title_of_both, both, "", kind));
    }

    // ---- flat head ---------------------------------------------------------------------------------

    void flat() {
        const float D2 = shell.setting(N::D2);
        const float least = D2 < D ? D2 : D, greatest = D < D2 ? D2 : D;
        const bool holes = shell.setting(N::d1) > 0.0f || shell.setting(N::d2) > 0.0f;
        if (!holes) {
            put("C", openings.C, FACTOR);
        } else {
            derive("Attachment Factor, UG-39 (d)(1)", "C", "", openings.C, FACTOR);
            derive("Spacing Factor, UG-39 (e)(2)", "F", "", openings.F, FACTOR);
        }
        float Z = 1.0f, d = D;
        if (D2 != 0.0f) {
            put("ds", least, LENGTH);
            put("dl", greatest, LENGTH);
            factor("Factor of the Shape, Short over Long Span [Z]:", "Z",
                   "min( 3.4 - 2.4 * ( ds + 2 * c ) / ( dl + 2 * c ), 2.5 )", "UG-34 (c)(3)");
            Z = rules.factors.back().value;
            d = Z > 1.0f ? least : D;
        }
        // Written as it holds for the head: Z with two spans, F with openings.
        const std::string z = D2 != 0.0f ? "Z * " : "", cz = D2 != 0.0f ? "( C * Z )" : "C";
        const std::string f = holes ? "F * " : "";
        const auto over = [&](const std::string& thickness, const std::string& span) {
            return "( " + thickness + " / " + (holes ? "( F * " + span + " )" : span) + " )\xB2";
        };
        const std::string span = outside ? "d" : "dc";
        derive("Span of the Plate", "d", "", d, LENGTH);
        if (!outside) derive("Corroded Span", "dc", "d + 2 * c", d + 2.0f * c, LENGTH);
        // Of an outside dimension the MAWP does not deduct the tolerance.
        if (outside && u != 0.0f)
            derive("Thickness less Corrosion", "tw", "t - c", t - c, THICKNESS);
        const std::string wall = outside && u != 0.0f ? "tw" : "tc";
        const std::string thickness = f + span + " * sqrt( " + z + "C * P / ( S * E ) )";
        const std::string mawp = over(wall, span) + " * S * E / " + cz;
        const std::string map_nc = over("t", "d") + " * Sa * E / " + cz;
        const std::string stress = z + "C * P / ( " + over("tc", span) + " * E )";
        use({D2 != 0.0f ? "UG-34 (c)(3)" : "UG-34 (c)(2)", thickness, mawp, map_nc, stress});
    }
};

} // namespace

HeadModuli head_moduli(const ShellInput& shell) {
    const std::int32_t reference = shell.whole_setting(N::material_class), asme = 1;
    const float T = shell.setting(N::T);
    const float cold = shell.shape() == TARVANE_ELLIPTICAL_HEAD ? 100.0f : 70.0f;
    return {1.0e6f * ASMEMOD(&T, &reference, &asme), 1.0e6f * ASMEMOD(&cold, &reference, &asme)};
}

ShellRules rules_of(const ShellInput& shell, const OpeningFactors& openings) {
    return Rules(shell, openings).made();
}

} // namespace tarvane::app
