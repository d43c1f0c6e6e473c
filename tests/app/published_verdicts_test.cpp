// Published worked examples as input files: they pass or fail as their sources say. Where a source gives the least
// thickness or the greatest pressure alone, both sides of it are tried.
//
// Not among them, as they have no verdict of this program: shells by the exponential formula of VIII-2 (E4.3.1 with
// 22 400 psi, E4.3.2 with 1.2894 in.), a code that shells are not calculated by; the reinforcement of openings by area
// (plate of 18 in.); factors of hubs, which unit tests compare.
#include "app_fixture.h"
#include "check_rows.h"

namespace tarvane::app {

using namespace vessel;
namespace {

struct Example {
    const char* name;
    std::string toml;
    bool passes;
};

void PrintTo(const Example& example, std::ostream* out) { *out << example.name; }

class PublishedVerdict : public testing::TestWithParam<Example> {};

TEST_P(PublishedVerdict, IsThatOfTheSource) {
    const Judged judgement = judged(GetParam().toml);
    std::string reasons;
    for (const std::string& reason : judgement.verdict.reasons)
        reasons += reason + '\n';
    EXPECT_EQ(judgement.verdict.status, GetParam().passes ? Status::fine : Status::fails)
        << reasons << GetParam().toml;
    EXPECT_EQ(all_pass(judgement.checks), GetParam().passes);
}

constexpr bool PASSES = true, FAILS = false;

std::string shell(const std::string& keys) {
    return "[[shell]]\nT = 100\nSa = 20000\nci = 0\nE = 1.0\n" + keys;
}

// A text with other values: "t = 1".
std::string but(const std::string& text, const std::string& line) {
    return with(line.substr(0, line.find(' ')), line, text);
}

// ---- shells and heads ----------------------------------------------------------------------------------

// ASME example E4.3.1, nominal 1.125; .9369 with its allowance.
const std::string E4_3_1 =
    but(shell("kind = \"cylinder\"\nP = 356\nS = 20000\nD = 90\nt = 1.125\n"), "ci = 0.125");
// industrialseparation.com: .450, "use 0.5 plate"; the sphere .287.
const std::string PLATE_96 =
    but(but(shell("kind = \"cylinder\"\nP = 100\nS = 17500\nD = 96\nt = 0.5\n"), "ci = 0.125"),
        "E = 0.85");
const std::string SPHERE_96 = but(PLATE_96, "kind = \"sphere\"");
// ja.scribd.com/document/338360644: 455 psi, allowed 676 at 1 in.
const std::string CYLINDER_60 =
    shell("kind = \"cylinder\"\nP = 455\nS = 20000\nDo = 60\nt = 1.0\n");
// Its required thickness, .669, is that of the inside radius at 1 in.
const std::string FROM_INSIDE = shell("kind = \"cylinder\"\nP = 455\nS = 20000\nD = 58\nt = 1.0\n");
// An examination paper: .4988.
const std::string EXAM_HEAD = shell("kind = \"elliptical\"\nP = 332\nS = 20000\nD = 60\nt = 0.5\n");
// ASME example E4.1.2, nominal 62 mm: 2.155 with its allowance.
const std::string E4_1_2 =
    but(shell("kind = \"sphere\"\nP = 1673\nS = 20000\nD = 96\nt = 2.44\n"), "ci = 0.125");
// ASME example E4.3.3, a sphere of 3.7264.
const std::string E4_3_3 = shell("kind = \"sphere\"\nP = 2080\nS = 21000\nD = 149\nt = 3.73\n");
// ASME example E4.3.4: .4945 with its allowance. Its knuckle of 4.375 in. is 6 % of the inside diameter alone, UG-32(j)
// asks for 6 % of the outside one.
const std::string E4_3_4 =
    but(shell("kind = \"torispherical\"\nP = 100\nS = 17100\nD = 72\nL = 72\nr = 4.4\nt = 0.5\n"),
        "ci = 0.125");
// ASME example E4.3.5, nominal 1.125: .9267 with its allowance.
const std::string E4_3_5 =
    but(shell("kind = \"elliptical\"\ncorroded_K = true\nP = 356\nS = 20000\nD = 90\nt = 1.125\n"),
        "ci = 0.125");
// ru.scribd.com/document/243133210: .081 needed of .080, 149.0 psi of 150.
const std::string TOO_THIN_HEAD = but(
    shell(
        "kind = \"torispherical\"\nP = 150\nS = 20000\nDo = 17.913\nL = 15.354\nr = 5\nt = 0.08\n"),
    "E = 0.85");
// ASME example E4.3.2: 1.4482 of the corroded cone.
const std::string E4_3_2 =
    shell("kind = \"cone\"\nP = 356\nS = 20000\nD = 150.25\nalpha = 21.0375\nt = 1.8125\n");
// Notebook TopFlangeStress of yuntsebaryon/SLArpaasPressureAna: .27 of a plate of .5. Its openings are
// reinforced by area, which is not calculated here.
const std::string PLATE_18 =
    shell("kind = \"flat\"\nP = 15\nS = 20000\nC = 0.3\nD = 18\nt = 0.5\n");

INSTANTIATE_TEST_SUITE_P(
    Shells, PublishedVerdict,
    testing::Values(
        Example{"E4.3.1", E4_3_1, PASSES}, Example{"E4.3.1", but(E4_3_1, "t = 0.94"), PASSES},
        Example{"E4.3.1", but(E4_3_1, "t = 0.93"), FAILS},
        Example{"96 in. cylinder", PLATE_96, PASSES},
        Example{"96 in. cylinder", but(PLATE_96, "t = 0.4375"), FAILS},
        Example{"96 in. sphere", but(SPHERE_96, "t = 0.3125"), PASSES},
        Example{"96 in. sphere", but(SPHERE_96, "t = 0.28"), FAILS},
        Example{"60 in. cylinder", CYLINDER_60, PASSES},
        Example{"60 in. cylinder", but(CYLINDER_60, "P = 675"), PASSES},
        Example{"60 in. cylinder", but(CYLINDER_60, "P = 677"), FAILS},
        Example{"60 in. cylinder", but(FROM_INSIDE, "t = 0.67"), PASSES},
        Example{"60 in. cylinder", but(FROM_INSIDE, "t = 0.66"), FAILS},
        Example{"examination", EXAM_HEAD, PASSES},
        Example{"examination", but(EXAM_HEAD, "t = 0.498"), FAILS},
        Example{"E4.1.2", E4_1_2, PASSES}, Example{"E4.1.2", but(E4_1_2, "t = 2.15"), FAILS},
        Example{"E4.3.3", E4_3_3, PASSES}, Example{"E4.3.3", but(E4_3_3, "t = 3.72"), FAILS},
        Example{"E4.3.4", E4_3_4, PASSES}, Example{"E4.3.4", but(E4_3_4, "t = 0.49"), FAILS},
        Example{"E4.3.5", E4_3_5, PASSES}, Example{"E4.3.5", but(E4_3_5, "t = 0.92"), FAILS},
        Example{"head that fails", TOO_THIN_HEAD, FAILS},
        Example{"head that fails", but(TOO_THIN_HEAD, "t = 0.081"), PASSES},
        Example{"E4.3.2", E4_3_2, PASSES}, Example{"E4.3.2", but(E4_3_2, "t = 1.44"), FAILS},
        Example{"18 in. plate", PLATE_18, PASSES},
        Example{"18 in. plate", but(PLATE_18, "P = 51.4"), PASSES},
        Example{"18 in. plate", but(PLATE_18, "P = 51.5"), FAILS},
        Example{"18 in. plate", but(PLATE_18, "t = 0.26"), FAILS}));

// ---- external pressure, metal temperature ---------------------------------------------------------------

// ASME example E4.4.1 by the chart, .1034 MPa: 39.88 psi with a modulus of 28.3 million psi, 40.87 with the 29
// of the chart.
const std::string E4_4_1 =
    "[[external]]\nkind = \"cylinder\"\nP = 15\nT = 300\nDo = 92.25\nt = 1.0\nlength = 636\n"
    "chart = \"CS-2\"\nS = 20000\ntable_g = true\n";
// A textbook's cylinder by buckling stress: 48.9 psi.
const std::string BUCKLING =
    "[[external]]\nkind = \"cylinder\"\nmethod = \"stress\"\nP = 15\nT = 300\nDo = 92.25\n"
    "t = 1.125\nci = 0.125\nlength = 636\nSy = 33600\nchart = \"CS-2\"\n";
// VIII-1 Appendix L-3.1: 15.1 psi with a factor A that is read from its figure as .0005. The shipped Table G has
// .000494, which is 14.96 psi: the 15 psi that the example asks for lie between the two.
const std::string L_3_1 =
    "[[external]]\nkind = \"cylinder\"\nP = 14.9\nT = 700\nDo = 168.625\nt = 0.3125\nlength = 39\n"
    "chart = \"CS-2\"\nS = 14300\ntable_g = true\n";
// industrialseparation.com, a tube of D/t below 10 at 500 F: 1850.13 psi with a factor B of 12 100.
const std::string TUBE =
    "[[external]]\nkind = \"cylinder\"\nP = 1840\nT = 500\nDo = 1\nt = 0.109\nlength = 222.9375\n"
    "chart = \"CS-2\"\nS = 9540\n";
// ASME example E3.1: about -7 F of curve D at 1.8125 in., of which the equations come within two degrees.
const std::string E3_1 = "[[mdmt]]\ncurve = \"D\"\ntg = 1.8125\nMDMT = -5\n";

INSTANTIATE_TEST_SUITE_P(
    ExternalAndCold, PublishedVerdict,
    testing::Values(
        Example{"E4.4.1", E4_4_1, PASSES}, Example{"E4.4.1", but(E4_4_1, "P = 39.5"), PASSES},
        Example{"E4.4.1", but(E4_4_1, "P = 42"), FAILS}, Example{"tube", TUBE, PASSES},
        Example{"tube", but(TUBE, "P = 1860"), FAILS}, Example{"buckling stress", BUCKLING, PASSES},
        Example{"buckling stress", but(BUCKLING, "P = 48.8"), PASSES},
        Example{"buckling stress", but(BUCKLING, "P = 49.0"), FAILS},
        Example{"L-3.1", L_3_1, PASSES}, Example{"L-3.1", but(L_3_1, "P = 15.2"), FAILS},
        Example{"E3.1", E3_1, PASSES}, Example{"E3.1", but(E3_1, "MDMT = -9"), FAILS}));

// industrialseparation.com, 97 in. at 500 F: L/Do 4.62 and Do/t 258.67, without a verdict.
TEST(PublishedExternal, RatiosOfALongCylinder) {
    set_data_folder(TARVANE_DATA_DIR);
    const ReadResult input =
        read_input("[[external]]\nkind = \"cylinder\"\nP = 15\nT = 500\nDo = 97\n"
                   "t = 0.375\nlength = 448\nchart = \"CS-2\"\nS = 20000\n");
    ASSERT_TRUE(input.faults.empty());
    const auto outcome = input.request.elements.front()->calculate(input.request);
    EXPECT_NE(outcome->report.find("   0.3750     97.000      448.00    258.67    4.6186  "),
              std::string::npos)
        << outcome->report;
}

// ---- flanges -----------------------------------------------------------------------------------------------

// ASME example E4.16.1, with its rigidity indices .83 and .74.
const std::string E4_16_1 = R"([[flange]]
type = "weld neck"
P = 135
T = 650
B = 26.25
A = 32.875
t = 1.4375
g0 = 0.3125
g1 = 0.6875
h = 2.125
Sfo = 17800
Sfa = 20000
bolting = "TEMA"
C = 31.25
a = 0.75
n = 44
Sb = 25000
Sa = 25000
Fod = 30
Fid = 29
Go = 30
Gi = 29
m = 3.75
y = 7600
facing = "2"
column = "II"
w = 0.125
bolt_correction = false
rigidity = true
)";
// ASME example E4.6.1, the blind flange on it: 1.6523 with its allowance.
const std::string E4_6_1 =
    but(but(but(but(but(but(E4_16_1, "type = \"blind\""), "B = 0"), "g0 = 0"), "g1 = 0"), "h = 0"),
        "t = 1.66") +
    "ci = 0.125\n";
// scribd.com/document/327905617: NPS 10 class 300 under 535469 lb-in and 100 lb, rated 552.4 psi. The equivalent
// pressures are 1882.15 and, with half the moment, 1084.02 psi; both fail.
const std::string NPS_10 = R"([[flange]]
type = "weld neck"
standard = { class = 300, size = 10 }
standard_flange = true
rating = 552.4
P = 285
T = 644
axial_force = 100
bending_moment = 44622.4167
Sfo = 17800
Sfa = 20000
bolting = "TEMA"
Sb = 25000
Sa = 25000
Fid = 11.31
Go = 12.5
Gi = 11.31
m = 3
y = 10000
facing = "1a"
)";

INSTANTIATE_TEST_SUITE_P(
    Flanges, PublishedVerdict,
    testing::Values(Example{"E4.16.1", E4_16_1, PASSES}, Example{"E4.6.1", E4_6_1, PASSES},
                    Example{"E4.6.1", but(E4_6_1, "t = 1.645"), FAILS},
                    Example{"sustained loads", NPS_10, FAILS},
                    Example{"occasional loads", but(NPS_10, "bending_moment = 22311.2083"), FAILS},
                    Example{"no loads", but(but(NPS_10, "bending_moment = 0"), "axial_force = 0"),
                            PASSES}));

TEST(PublishedFlanges, EquivalentPressureIsHeldAgainstTheRating) {
    const Judged sustained = judged(NPS_10);
    EXPECT_NEAR(sustained.find("rating")->demand().value_or(0.0f), 1882.15f, 2.0f);
    EXPECT_NEAR(sustained.find("rating")->ratio().value_or(0.0f), 3.4f, 0.05f);
    const Judged occasional = judged(but(NPS_10, "bending_moment = 22311.2083"));
    EXPECT_NEAR(occasional.find("rating")->ratio().value_or(0.0f), 2.0f, 0.05f);
}

// Of these the sources have bolts and loads, not all that a verdict needs.

// Jawad and Farr, example 10.9: 36.2 sq in. needed of 36.8, 16 bolts of 2 in.
TEST(PublishedFlanges, BoltsOfTheHighPressureFlangeSuffice) {
    const auto flange = [](const std::string& bolts) {
        return "[[flange]]\ntype = \"weld neck\"\nP = 2500\nT = 250\nB = 10.75\nA = 26.5\nt = "
               "4.0\ng0 = 1.0\n"
               "g1 = 3.375\nh = 7.5\nSfo = 17500\nSfa = 17500\nbolting = \"special\"\nroot_area = "
               "2.3\nC = 22.5\n"
               "a = 2.0\nSb = 19200\nSa = 19200\nFod = 15.75\nFid = 13.75\nGo = 15.75\nGi = "
               "13.75\nm = 3\n"
               "y = 10000\nfacing = \"1a\"\n" +
               bolts;
    };
    const Judged enough = judged(flange("n = 16\n"));
    EXPECT_EQ(enough.state("bolt_area"), "pass");
    EXPECT_NEAR(enough.find("bolt_area")->ratio().value_or(0.0f), 36.2f / 36.8f, 1.0e-3f);
    EXPECT_EQ(judged(flange("n = 12\n")).state("bolt_area"), "fail");
}

// Notebook RingFlangeStress of the same author: 13 811 psi of 20 000, spacing 6.506 of 8.186 in.
TEST(PublishedFlanges, RingOfTheCryostatHolds) {
    const Judged ring =
        judged("[[flange]]\ntype = \"loose ring\"\nP = 15\nT = 70\nB = 14\nA = 18\nt = 0.63\n"
               "Sfo = 20000\nSfa = 20000\nbolting = \"special\"\nroot_area = 0.045\nC = 17\n"
               "a = 0.313\nn = 8\nSb = 17500\nSa = 17500\nFod = 15.086\nFid = 14\nGo = 15.086\n"
               "Gi = 14.586\nm = 0\ny = 0\nfacing = \"1a\"\n");
    for (const char* check : {"STo", "bolt_area", "bolt_spacing_max"})
        EXPECT_EQ(ring.state(check), "pass") << check;
}

// scribd.com/doc/169000491, loose ring with tongue and groove: 34.73 sq cm of 20.09, spacing 106.0 of 108.6 mm.
TEST(PublishedFlanges, BoltsOfTheTongueAndGrooveSuffice) {
    const auto ring = [](const std::string& bolts) {
        return "[units]\nbase = \"SI\"\npressure = { factor = 0.0703069577, label = \"kg/cm2\" }\n"
               "stress = { factor = 0.0703069577, label = \"kg/cm2\" }\n\n[[flange]]\ntype = "
               "\"loose ring\"\nP = 5\n"
               "T = 260\nB = 420\nA = 596\nt = 48.6\nci = 1.5\nSfo = 1640.5\nSfa = 1640.5\nbolting "
               "= \"special\"\n"
               "root_area = 217.05\nC = 540\na = 20\nSb = 1960\nSa = 1968\nFod = 469\nFid = "
               "425\nGo = 467\n"
               "Gi = 427\ntg = 3\nw = 22\nm = 3\ny = 316.03\nfacing = \"1c\"\n" +
               bolts;
    };
    const Judged enough = judged(ring("n = 16\n"));
    EXPECT_EQ(enough.state("bolt_area"), "pass");
    // The source leaves out the limit of (w + N)/4 on the basic width.
    EXPECT_LT(enough.find("bolt_area")->ratio().value_or(1.0f), 20.09f / 34.73f);
    EXPECT_EQ(judged(ring("n = 8\n")).state("bolt_area"), "fail");
}

} // namespace
} // namespace tarvane::app
