// What the tests ask of cylinders under compression, and their numbers by hand.
#include "kind_tests.h"
#include "tarvane/tarvane.h"

#include <cmath>
#include <cstring>

namespace tarvane::app {

using namespace vessel;
namespace {

const std::string PLAIN =
    "[[compression]]\nT = 300\nchart = \"CS-2\"\nSy = 33600\nDo = 96\nt = 0.5\n"
    "length = 120\n";
const std::string AXIAL = PLAIN + "fa = 3000\nLu = 300\nKu = 1\n";
// A leg: narrow, with the slenderness of a column.
const std::string COLUMN =
    with("length", "length = 240", with("Do", "Do = 12", PLAIN)) + "fa = 3000\nLu = 360\nKu = 1\n";
const std::string PRESSED = "P_external = 15\n";

Covered covered() {
    const std::string long_column = with("Lu", "Lu = 700", COLUMN) + PRESSED;
    Covered all;
    all.sides = {
        {"chart_temperature", 300.0f, 2000.0f, at("T", PLAIN)},
        {"diameter_to_thickness", 0.5f, 0.02f, at("t", PLAIN)},
        {"hoop", 15.0f, 900.0f, at("P_external", PLAIN + PRESSED)},
        {"axial", 1000.0f, 50000.0f, at("fa", AXIAL)},
        {"column", 1000.0f, 50000.0f, at("fa", COLUMN)},
        {"bending", 1000.0f, 50000.0f, at("fb", PLAIN)},
        {"shear", 1000.0f, 50000.0f, at("fv", PLAIN)},
        {"axial_hoop", 1000.0f, 50000.0f, at("fa", AXIAL + PRESSED)},
        {"column_hoop", 1000.0f, 50000.0f, at("fa", COLUMN + PRESSED)},
        // From where on no stress is given for a column.
        {"column", 360.0f, 2000.0f, at("Lu", with("fa", "fa = 10", COLUMN)), "pass",
         NOT_MADE_STATE},
        {"column_hoop", 360.0f, 700.0f, at("Lu", with("fa", "fa = 10", COLUMN) + PRESSED), "pass",
         NOT_MADE_STATE},
    };
    const std::string bent = PLAIN + "fb = 100\n", sheared = PLAIN + "fv = 100\n";
    all.pairs = {
        {"bending_hoop", bent, bent + PRESSED, NO_ROW, NOT_MADE_STATE},
        {"shear_hoop", sheared, sheared + PRESSED, NO_ROW, NOT_MADE_STATE},
        {"combined", bent, bent + "fv = 100\n", NO_ROW, NOT_MADE_STATE},
        {"column_hoop", COLUMN + PRESSED, long_column, "pass", NOT_MADE_STATE},
        {"external_corrosion", "ce = 0\n" + PLAIN, "ce = 0.125\n" + PLAIN, NO_ROW, NOT_MADE_STATE},
    };
    return all;
}

Draw draw() {
    return {.base = {},
            .drawn = {{"code", {"\"VIII-1\"", "\"VIII-2\""}},
                      {"chart", {"\"CS-1\"", "\"CS-2\""}},
                      {"P_external", {"", "5.0", "15.0", "40.0"}},
                      {"fa", {"", "500.0", "5000.0"}},
                      {"fq", {"", "", "200.0"}},
                      {"fb", {"", "800.0"}},
                      {"fv", {"", "300.0"}}},
            .between = {{"T", {70.0, 500.0}},
                        {"ci", {0.0, 0.125}},
                        {"Ut", {0.0, 0.02}},
                        {"Sy", {20000.0, 60000.0}},
                        {"Do", {10.0, 200.0}},
                        {"t", {0.25, 2.0}},
                        {"length", {5.0, 900.0}},
                        {"Lu", {20.0, 2500.0}},
                        {"Ku", {0.5, 2.1}}}};
}

// ---- the engine's own calls --------------------------------------------------------------------------------

EngineResults engine_results(const EngineInput& in) {
    const std::int32_t on = 1, off = 0, code = in.text("code") == "VIII-2" ? 2 : 1,
                       cylinder = TARVANE_CYLINDER, table = 1, service = 0;
    const float P = in.number("P_external"), T = in.number("T"), Do = in.number("Do"),
                t = in.number("t"), c = in.number("ci"), Ut = in.number("Ut"),
                L = in.number("length"), Sy = in.number("Sy"), none = 0.0f, one = 1.0f;
    RESET_ENGINE();
    SET_GLOBALS_FROM_TVN(&off, &off, &off, &on, &off, &on, &off);
    SET_MODULE_CODE(&code);
    SET_YIELD(&Sy);
    GETSETUP()[TARVANE_SETUP_CODE - 1].whole = code;
    char chart[12];
    std::memset(chart, ' ', sizeof chart);
    const std::string name = in.text("chart");
    std::memcpy(chart, name.data(), name.size());
    float maep, tca, slen, outside, a, b, Fha, failure;
    SHLEXT(&P, &T, chart, sizeof chart, &cylinder, &Do, &t, &c, &none, &none, &none, &L, &maep,
           &tca, &slen, &outside, &a, &b, &off, &none, &none, &on, &none, &Ut, &Sy, &table, &Fha,
           &failure, &service);
    const TARVANE_EXTERNAL_RESULTS found = *GETEXTERNALRESULTS();
    const float net = (t - c) - Ut, Ey = found.modulus, FSh = found.fs[TARVANE_AT_GIVEN];

    const float Ku = in.number("Ku"), Lu = in.number("Lu");
    float FSc = 0.0f, lambda, Fxa, FSe, Fxe, Fca, Fba, Fva, Cv;
    CC2286_AXIAL(&Do, &L, &net, &Ey, &Sy, &Ku, &Lu, &FSc, &lambda, &Fxa, &FSe, &Fxe, &Fca);
    if (found.carbon_steel == 1 && FSe > FSc) {
        const float longer = Ku * std::sqrt(FSe / FSc);
        CC2286_AXIAL(&Do, &L, &net, &Ey, &Sy, &longer, &Lu, &FSc, &lambda, &Fxa, &FSe, &Fxe, &Fca);
    }
    CC2286_BENDING(&Do, &net, &Ey, &Sy, &FSc, &Fxa, &Fba);
    CC2286_SHEAR(&Do, &L, &net, &Ey, &Sy, &Fva, &Cv);
    const float FSx = found.carbon_steel == 1 && FSc > FSe ? FSc : FSe;
    const bool column = lambda > 0.15f && Fca != 1.0e6f;
    EngineResults results = {{"Do_used", Do},      {"tc", net},  {"modulus", Ey},   {"fha", Fha},
                             {"fs_hoop", FSh},     {"fxa", Fxa}, {"fba", Fba},      {"fva", Fva},
                             {"lambda", lambda},   {"fxe", Fxe}, {"fs_axial", FSx}, {"cv", Cv},
                             {"fh", std::nullopt}, {"fca", {}},  {"fxha", {}},      {"fhxa", {}},
                             {"fcha", {}}};
    if (column) results["fca"] = Fca;
    if (!(P > 0.0f)) return results;
    results["fh"] = P * Do / (2.0f * net);
    const float fa = in.number("fa"), fq = in.number("fq", P * Do / (4.0f * net));
    if (!(fa > 0.0f)) return results;
    float Fxha = 0.0f, Fhxa = 0.0f, Fxha2 = 0.0f, with_fa = 0.0f, with_fh = 0.0f;
    CC2286_INTERACTION(&P, &Do, &net, &fa, &fq, &none, &Fha, &Fxa, &FSh, &FSx, &Sy, &one, &Fxa,
                       &FSx, &Fxha, &Fhxa, &Fxha2);
    results["fxha"] = Fxha;
    results["fhxa"] = Fhxa;
    CC2286_INTERACTION(&P, &Do, &net, &fa, &fq, &lambda, &Fha, &Fxa, &FSh, &FSx, &Sy, &one, &Fxa,
                       &FSx, &with_fa, &with_fh, &Fxha2);
    if (column && lambda < 1.2f) results["fcha"] = Fxha2;
    return results;
}

const TestsOfKind KNOWN("compression", [] {
    return KindTests{
        .covered = covered(), .draw = draw(), .example = AXIAL + PRESSED, .engine = engine_results};
});

// ---- by hand ---------------------------------------------------------------------------------------------------

// The equations of the code case as they are printed, for carbon steel, in double precision.
struct ByHand {
    double Do, t, L, E, Sy, KuLu;
    double DoT = Do / t, Mx = L / std::sqrt(Do / 2.0 * t);
    double rg = 0.25 * std::sqrt(Do * Do + (Do - 2.0 * t) * (Do - 2.0 * t));

    double FS(double Fic) const {
        return Fic <= 0.55 * Sy ? 2.0 : Fic < Sy ? 2.407 - 0.741 * Fic / Sy : 1.667;
    }
    double Fic_hoop() const {
        const double Ch = Mx >= 2.0 * std::pow(DoT, 0.94) ? 0.55 / DoT
                          : Mx > 13.0                     ? 1.12 * std::pow(Mx, -1.058)
                          : Mx > 1.5                      ? 0.92 / (Mx - 0.579)
                                                          : 1.0;
        const double Fhe = 1.6 * Ch * E / DoT;
        return Fhe / Sy >= 2.439   ? Sy
               : Fhe / Sy <= 0.552 ? Fhe
                                   : 0.7 * Sy * std::pow(Fhe / Sy, 0.4);
    }
    double Fic_axial() const {
        const double yielding = DoT <= 135.0  ? Sy
                                : DoT < 600.0 ? 466.0 * Sy / (331.0 + DoT)
                                              : 0.5 * Sy;
        const double c = Mx <= 1.5 ? 2.64 : Mx < 15.0 ? 3.13 / std::pow(Mx, 0.42) : 1.0;
        const double C = DoT < 1247.0 ? std::min(409.0 * c / (389.0 + DoT), 0.9) : 0.25 * c;
        return std::min(yielding, C * E / DoT);
    }
    double Fha() const { return Fic_hoop() / FS(Fic_hoop()); }
    double Fxa() const { return Fic_axial() / FS(Fic_axial()); }
    double lambda() const { return KuLu / (M_PI * rg) * std::sqrt(Fic_axial() / E); }
    double Fca() const {
        return lambda() < 1.147 ? Fxa() * std::pow(1.0 - 0.74 * (lambda() - 0.15), 0.3)
                                : 0.88 * Fxa() / (lambda() * lambda());
    }
    double Fba() const {
        const double gamma = Sy * DoT / E;
        if (DoT >= 135.0) return Fxa();
        const double Fic = DoT >= 100.0    ? 466.0 * Sy / (331.0 + DoT)
                           : gamma >= 0.11 ? 1.081 * Sy
                                           : Sy * (1.4 - 2.9 * gamma);
        return Fic / FS(Fic);
    }
    double Fva() const {
        const double Cv = Mx >= 4.347 * DoT ? 0.716 / std::sqrt(DoT)
                          : Mx >= 26.0      ? 1.492 / std::sqrt(Mx)
                          : Mx > 1.5 ? 9.64 / (Mx * Mx) * std::sqrt(1.0 + 0.0239 * Mx * Mx * Mx)
                                     : 4.454;
        const double alpha = DoT <= 500.0 ? 0.8 : 1.389 - 0.218 * std::log10(DoT);
        const double Fve = alpha * Cv * E / DoT, ratio = Fve / Sy;
        const double eta = ratio <= 0.48 ? 1.0
                           : ratio < 1.7 ? 0.43 * Sy / Fve + 0.1
                                         : 0.6 * Sy / Fve;
        return eta * Fve / FS(eta * Fve);
    }
    // fx/fh is the ratio of the axial to the hoop stress.
    double Fxha(double fx_over_fh) const {
        const double C1 = (Fic_axial() + Fic_hoop()) / Sy - 1.0, C2 = fx_over_fh;
        return 1.0 / std::sqrt(1.0 / (Fxa() * Fxa()) - C1 / (C2 * Fxa() * Fha()) +
                               1.0 / (C2 * C2 * Fha() * Fha()));
    }
};

void expect_by_hand(const std::string& toml, const ByHand& hand, double fa, double P) {
    const Judged found = judged(toml);
    const auto expect = [&](std::string_view name, double value) {
        const std::optional<float> result = found.result(name);
        ASSERT_TRUE(result.has_value()) << name << ": " << found.why(name);
        EXPECT_NEAR(static_cast<double>(*result), value, 1e-4 * value) << name;
    };
    const double fh = P * hand.Do / (2.0 * hand.t), fq = fh / 2.0;
    expect("modulus", hand.E);
    expect("fh", fh);
    expect("fha", hand.Fha());
    expect("fxa", hand.Fxa());
    expect("lambda", hand.lambda());
    expect("fca", hand.Fca());
    expect("fba", hand.Fba());
    expect("fva", hand.Fva());
    expect("fxha", hand.Fxha((fa + fq) / fh));
    expect("fhxa", hand.Fxha((fa + fq) / fh) / ((fa + fq) / fh));
    const double reduced = std::pow(1.0 - 0.74 * (hand.lambda() - 0.15), 0.3);
    expect("fcha", hand.Fxha(fa / fh) * reduced * (1.0 - fq / hand.Sy));
}

constexpr double CARBON_STEEL_300_F = 28.3e6;

TEST(Compression, OfAThinShellIsAllowedByItsElasticBuckling) {
    const ByHand thin{96.0, 0.25, 480.0, CARBON_STEEL_300_F, 33600.0, 2.1 * 600.0};
    EXPECT_LT(thin.Fic_hoop(), 0.552 * 33600.0);
    EXPECT_LT(thin.Fba(), 0.5 * 33600.0);
    expect_by_hand("[[compression]]\nT = 300\nchart = \"CS-2\"\nSy = 33600\nDo = 96\nt = 0.25\n"
                   "length = 480\nfa = 1500\nLu = 600\nKu = 2.1\nP_external = 2\n",
                   thin, 1500.0, 2.0);
}

TEST(Compression, OfAThickShellIsAllowedByItsYieldStress) {
    const ByHand thick{12.75, 0.5, 20.0, CARBON_STEEL_300_F, 33600.0, 150.0};
    EXPECT_EQ(thick.Fic_axial(), 33600.0);
    EXPECT_EQ(thick.Fic_hoop(), 33600.0);
    EXPECT_NEAR(thick.Fxa(), 33600.0 / 1.667, 1e-6);
    // The allowances come off the wall.
    expect_by_hand("[[compression]]\nT = 300\nchart = \"CS-2\"\nSy = 33600\nD = 11.75\nt = 0.5625\n"
                   "Ut = 0.0625\nlength = 20\nfa = 5000\nLu = 150\nKu = 1\nP_external = 100\n",
                   thick, 5000.0, 100.0);
}

// ---- what is given and what is not -----------------------------------------------------------------------------

TEST(Compression, NeedsTheColumnOfAnAxialStressAlone) {
    EXPECT_TRUE(fault_lines(PLAIN + "fb = 100\nP_external = 15\n").empty());
    EXPECT_EQ(fault_lines(PLAIN + "fa = 100\n").size(), 2u); // Lu and Ku
    const Judged none = judged(PLAIN);
    EXPECT_EQ(none.why("fca"), "no length and factor of a column");
    EXPECT_EQ(none.why("fxha"), "not both fa and P_external are above 0");
    EXPECT_EQ(none.verdict.status, Status::fine);
}

TEST(Compression, RefusesWhatHasNoMeaning) {
    const auto faults = [](const std::string& key, const std::string& line) {
        return fault_lines(with(key, line, AXIAL)).size();
    };
    EXPECT_EQ(faults("fa", "fa = -1"), 1u);
    EXPECT_EQ(faults("Ku", "Ku = 0"), 1u);
    EXPECT_EQ(faults("t", "t = 0"), 1u);
    EXPECT_EQ(faults("Sy", "Sy = 0"), 1u);
    EXPECT_EQ(faults("chart", "chart = \"XX-9\""), 1u);
    EXPECT_EQ(faults("D", "D = 95"), 1u);
    EXPECT_EQ(faults("code", "code = \"PD 5500\""), 1u);
    // The pressure gives 15 * 96 / (4 * 0.5).
    EXPECT_EQ(fault_lines(AXIAL + PRESSED + "fq = 720\n").size(), 0u);
    EXPECT_EQ(fault_lines(AXIAL + PRESSED + "fq = 721\n").size(), 1u);
    EXPECT_EQ(faults("fq", "fq = 1"), 1u);
}

TEST(Compression, TakesChartAndYieldStressOfTheMaterial) {
    const std::string by_name =
        with("Sy", "", with("chart", "", AXIAL)) + "material = \"SA-516 70\"\n";
    const ReadResult read = read_input(by_name);
    ASSERT_TRUE(read.faults.empty()) << fault_line("f", read.faults.front());
    EXPECT_EQ(read.request.elements[0]->origins.at("Sy").from.substr(0, 18), "material SA-516 70");
    EXPECT_EQ(judged(by_name).verdict.status, Status::fine);
}

TEST(Compression, ThatIsNotCalculatedFailsUntilItIsWaived) {
    const std::string both = AXIAL + "fb = 1000\n";
    EXPECT_EQ(judged(both).verdict.status, Status::fails);
    EXPECT_EQ(judged(both + "waive = [\"combined\"]\n").verdict.status, Status::fine);
    EXPECT_EQ(judged(both + "waive = [\"combined\"]\n").state("combined"), "waived");
}

TEST(Compression, CitesTheCodeThatItIsCalculatedBy) {
    EXPECT_EQ(judged(AXIAL).find("axial")->paragraph(), "Code Case 2286");
    EXPECT_EQ(judged("code = \"VIII-2\"\n" + AXIAL).find("axial")->paragraph(), "4.4.12.2(b)");
}

} // namespace
} // namespace tarvane::app
