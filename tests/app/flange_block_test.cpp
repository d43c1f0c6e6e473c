// The block of GETFLANGERESULTS as a host sees it: against the lines of the golden reports, with the report on
// and off, and as the basis of the verdicts.
#include "app_fixture.h"
#include "catalogue/data_folder.h"
#include "components/engine_session.h"
#include "components/flange_results.h"
#include "components/flange_session.h"
#include "document/report_view.h"
#include "tarvane/tarvane.h"
#include "values/text.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <map>
#include <optional>

namespace tarvane::app {

using namespace vessel;
namespace {

namespace fs = std::filesystem;
using Found = TARVANE_FLANGE_RESULTS;

// The input files of the golden reports by name, read.
std::map<std::string, Request> golden_inputs() {
    set_data_folder(TARVANE_DATA_DIR);
    std::map<std::string, Request> inputs;
    for (const auto& entry :
         fs::directory_iterator(fs::path(TARVANE_SOURCE_DIR) / "tests/golden")) {
        if (entry.path().extension() != ".toml") continue;
        std::ifstream file(entry.path(), std::ios::binary);
        std::ostringstream bytes;
        bytes << file.rdbuf();
        ReadResult read = read_input(bytes.str());
        EXPECT_TRUE(read.faults.empty()) << entry.path();
        inputs.emplace(entry.path().stem().string(), std::move(read.request));
    }
    EXPECT_GT(inputs.size(), 60u);
    return inputs;
}

// ---- the lines of a report -----------------------------------------------------------------------------

// A number as a line shows it, with its decimals.
struct Number {
    double value;
    int decimals;
    bool exponent;
};

std::optional<Number> number_at(std::string_view text) {
    const std::size_t begin = text.find_first_not_of(' ');
    if (begin == std::string_view::npos) return std::nullopt;
    const std::size_t end = std::min(text.find_first_of(" |,", begin), text.size());
    const std::string token(text.substr(begin, end - begin));
    char* stop = nullptr;
    const double value = std::strtod(token.c_str(), &stop);
    if (stop == token.c_str() || *stop != '\0' || !std::isfinite(value)) return std::nullopt;
    const std::size_t point = token.find('.');
    const bool exponent = token.find('E') != std::string::npos;
    const int decimals =
        point == std::string::npos ? 0 : static_cast<int>(token.size() - point - 1);
    return Number{value, decimals, exponent};
}

// The last number of a line before its unit.
std::optional<Number> last_number(std::string_view text) {
    std::optional<Number> last;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t begin = text.find_first_not_of(' ', at);
        if (begin == std::string_view::npos) break;
        if (const auto number = number_at(text.substr(begin))) last = number;
        at = std::min(text.find(' ', begin), text.size());
    }
    return last;
}

bool agrees(const Number& shown, double value) {
    const double half =
        shown.exponent ? std::fabs(value) * 1e-3 : 0.5 * std::pow(10.0, -shown.decimals);
    return std::fabs(shown.value - value) <= half * 1.0001 + std::fabs(value) * 1e-6;
}

using Value = float (*)(const Found&);
struct Item {
    std::string_view label;
    Quantity quantity;
    Value value;
};

#define OF(member) [](const Found& f) { return f.member; }
constexpr Quantity IN_D = Quantity::diameter, IN_T = Quantity::thickness, LB = Quantity::force,
                   PSI = Quantity::stress, PSIG = Quantity::pressure, SQ_IN = Quantity::area,
                   BARE = Quantity::number, MOMENT = Quantity::moment, WEIGHT = Quantity::weight;
constexpr int OP = TARVANE_OPERATING, SEAT = TARVANE_SEATING;

// Headings, after which a line " = value unit" follows.
const Item HEADINGS[] = {
    {"Hydrostatic End Load due to Pressure [H]:", LB, OF(H)},
    {"Contact Load on Gasket Surfaces [Hp]:", LB, OF(Hp)},
    {"Full Face Inside Compression [H'p]:", LB, OF(HpPrime)},
    {"Full Face Inside Compression, Gasket Seating [H'GY]:", LB, OF(HGY)},
    {"Hydrostatic End Load at Flange ID [Hd]:", LB, OF(Hd)},
    {"Pressure Force on Flange Face [Ht]:", LB, OF(Ht)},
    {"Operating Bolt Load [Wm1]:", LB, OF(Wm1)},
    {"Design Bolt Load for the Operating Condition  [Wo]:", LB, OF(Wm1)},
    {"Gasket Seating Bolt Load [Wm2]:", LB, OF(Wm2)},
    {"Design Bolt Load for the Gasket Seating Condition [Wg]:", LB, OF(Wm2)},
    {"Required Bolt Area [Am]:", SQ_IN, OF(Am)},
    {"Flange Design Bolt Load, Gasket Seating [W]:", LB, OF(W)},
    {"Gasket Load for the Operating Condition [HG]:", LB, OF(HG)},
    {"Distance to Gasket Load Reaction [hg]:", IN_D, OF(hg)},
    {"Distance to Face Pressure Reaction [ht]:", IN_D, OF(ht)},
    {"Distance to End Pressure Reaction [hd]:", IN_D, OF(hd)},
    {"Reverse Moment arm[h\"g]:", IN_D, OF(hgDouble)},
    {"Balancing Reaction Moment arm [hr]:", IN_D, OF(hgDouble)},
    {"Min. Gasket Contact Width (Brownell Young) [Not an ASME Calc] [Nmin]:", IN_D, OF(N_min)},
    {"Min. Gasket Contact Width (Brownell Young) [Not an EN 13445 Calc] [Nmin]:", IN_D, OF(N_min)},
    {"Actual Circumferential Bolt Spacing [Bs]:", IN_T, OF(bolt_spacing)},
    {"ASME Maximum Circumferential Spacing between Bolts per App. 2 eq. (3) [Bsmax]:", IN_T,
     OF(bolt_spacing_max)},
    {"ASME Maximum Circumferential Spacing between Bolts, Table 4.16.11 [Bsmax]:", IN_T,
     OF(bolt_spacing_max)},
    {"ASME Moment Multiplier for Bolt Spacing per App. 2 eq. (7) [Bsc]:", BARE, OF(CF)},
    {"ASME Moment Multiplier for Bolt Spacing per Table 4.16.11 [Bsc]:", BARE, OF(CF)},
    {"Hub Small End Required Thickness due to Internal Pressure:", IN_T, OF(hub_required)},
    {"Hub Small End Required Thickness due to Internal Pressure, per EN 13445 7.4.2:", IN_T,
     OF(hub_required)},
    {"Hub Small End Hub MAWP:", PSIG, OF(hub_mawp)},
    {"Required Lap Thickness due to Shear Stress, Operating [trlo]:", IN_T, OF(lap_required[OP])},
    {"Required Lap Thickness due to Shear Stress, Seating [trla]:", IN_T, OF(lap_required[SEAT])},
    {"Longitudinal Hub Stress, Operating [", PSI, OF(stress[OP][TARVANE_HUB_STRESS])},
    {"Longitudinal Hub Stress, Seating [", PSI, OF(stress[SEAT][TARVANE_HUB_STRESS])},
    {"Radial Flange Stress, Operating [", PSI, OF(stress[OP][TARVANE_RADIAL_STRESS])},
    {"Radial Flange Stress, Seating [", PSI, OF(stress[SEAT][TARVANE_RADIAL_STRESS])},
    {"Tangential Flange Stress, Operating [", PSI, OF(stress[OP][TARVANE_TANGENTIAL_STRESS])},
    {"Tangential Flange Stress, Seating [", PSI, OF(stress[SEAT][TARVANE_TANGENTIAL_STRESS])},
    {"Tangential Flange Stress, Flat Head (UG-34), Operating [STo]:", PSI,
     OF(stress[OP][TARVANE_TANGENTIAL_STRESS])},
    {"Tangential Flange Stress, Flat Head (UG-34), Seating [STa]:", PSI,
     OF(stress[SEAT][TARVANE_TANGENTIAL_STRESS])},
    {"Average Flange Stress, Operating [", PSI, OF(stress[OP][TARVANE_AVERAGE_STRESS])},
    {"Average Flange Stress, Seating [", PSI, OF(stress[SEAT][TARVANE_AVERAGE_STRESS])},
    {"Bolt Stress, Operating [", PSI, OF(stress[OP][TARVANE_BOLT_STRESS])},
    {"Bolt Stress, Seating [", PSI, OF(stress[SEAT][TARVANE_BOLT_STRESS])},
    {"Reverse Weld Neck Flange Stress, Operating [SVo]:", PSI,
     OF(stress[OP][TARVANE_REVERSE_STRESS])},
    {"Reverse Weld Neck Flange Stress, Seating [SVa]:", PSI,
     OF(stress[SEAT][TARVANE_REVERSE_STRESS])},
    {"Radial Stress at Bolt Circle, Full Face Gaskets, Operating [SFo]:", PSI,
     OF(stress[OP][TARVANE_FULL_FACE_STRESS])},
    {"Ligament Efficiency per UG-39(e)(2) [e]:", BARE,
     [](const Found& f) { return 0.5f / (f.opening_factor * f.opening_factor); }},
    {"Factor per UG-39(e)(2) [h]:", BARE, OF(opening_factor)},
};

// Lines of one value, the last of the line before its unit.
const Item COLUMNS[] = {
    {"Gasket Contact Width,       N", IN_D, OF(N)},
    {"Basic Gasket Width,        bo", IN_D, OF(bo)},
    {"Effective Gasket Width,     b", IN_D, OF(b)},
    {"Gasket Reaction Diameter,   G", IN_D, OF(G)},
    {"Final Equivalent Design Pressure", PSIG, OF(Peq)},
    {"Original Design Pressure for Flange", PSIG, OF(P)},
    {"Total Moment for Operation", MOMENT, OF(Mop)},
    {"Total Moment for Gasket seating", MOMENT, OF(Matm)},
    {"Total Moment for Seating", MOMENT, OF(Matm)},
    {"Effective Hub Length, ho", IN_T, OF(ho)},
    {"Hub Ratio,          h/h0", BARE, OF(hRatio)},
    {"Thickness Ratio,   g1/g0", BARE, OF(gRatio)},
    {"Factor F ", BARE, OF(F)},
    {"Factor V ", BARE, OF(V)},
    {"Factor f ", BARE, OF(f)},
    {"Minimum Required Flange Thickness", IN_T, OF(t_req)},
    {"Reqd. Blind Flange Thickness at Center", IN_T,
     [](const Found& f) {
         return std::max({f.t_required[OP], f.t_required[SEAT], f.t_min});
     }},
    {"Reqd. Blind Flange Thickness at Gasket", IN_T, OF(t_edge)},
    {"Min. Required Flange Thickness per TEMA", IN_T, OF(t_channel)},
    {"Actual deflection at center", IN_T, OF(deflection)},
    {"Allowed deflection at center", IN_T, OF(deflection_allowed)},
    {"Estimated M.A.W.P. ( Operating )", PSIG, OF(mawp_operating)},
    {"Estimated M.A.W.P. ( Gasket Seating )", PSIG, OF(mawp_seating)},
    {"Estimated Finished Weight", WEIGHT, OF(weight_finished)},
    {"Estimated Unfinished Weight", WEIGHT, OF(weight_forging)},
};

// Values named in a line: "T =      1.817".
const Item NAMED[] = {
    {" K = ", BARE, OF(K)},           {" T = ", BARE, OF(T_factor)},
    {" U = ", BARE, OF(U)},           {" Y = ", BARE, OF(Y)},
    {" Z = ", BARE, OF(Z)},           {" Tr = ", BARE, OF(T_factor)},
    {" Ur = ", BARE, OF(U)},          {" Yr = ", BARE, OF(Yr)},
    {" Alphar = ", BARE, OF(Alphar)}, {" BetaT = ", BARE, OF(T_factor)},
    {" BetaU = ", BARE, OF(U)},       {" BetaY = ", BARE, OF(Y)},
    {" BetaZ = ", BARE, OF(Z)},       {" ALPHA = ", BARE, OF(alpha)},
    {" BETA = ", BARE, OF(beta)},     {" GAMMA = ", BARE, OF(gamma)},
    {" DELTA = ", BARE, OF(delta)},   {" Lamda = ", BARE, OF(lambda)},
};

// Rows of the table of limits: least, actual, largest.
struct Limits {
    std::string_view label;
    Quantity quantity;
    std::vector<Value> values;
};
const Limits LIMITS[] = {
    {"Bolt Area, ", SQ_IN, {OF(Am), OF(Ab)}},
    {"Radial Distance between Hub and Bolts:", IN_D, {OF(radial_min), OF(radial)}},
    {"Radial Distance between Bolts and Edge:", IN_D, {OF(edge_min), OF(edge)}},
    {"Circ. Spacing between the Bolts:",
     IN_D,
     {OF(bolt_spacing_min), OF(bolt_spacing), OF(bolt_spacing_max)}},
};

constexpr std::string_view SUMMARY[] = {
    "Longitudinal Hub  ", "Radial Flange  ",  "Tangential Flange  ", "Maximum Average  ",
    "Bolting  ",          "Reverse Flange  ", "Full Faced Gasket  "};

class Report {
  public:
    Report(std::string flange, const FlangeOutcome& outcome, const UnitSystem& file_units,
           std::map<std::string, int>& into)
        : name(std::move(flange)), found(outcome.found), units(file_units), seen(into) {
        for (const ReportLine& line : report_lines(outcome.report))
            lines.push_back(to_utf8(line.text));
    }

    void compare() {
        for (std::size_t i = 0; i < lines.size(); ++i) {
            for (const Item& item : HEADINGS)
                if (lines[i].starts_with(item.label))
                    expect(item.label, item.quantity, behind(i), item.value(found));
            for (const Item& item : COLUMNS)
                if (lines[i].starts_with(item.label))
                    expect(item.label, item.quantity, last_number(lines[i]), item.value(found));
            compare_named(lines[i]);
            compare_rows(lines[i]);
            compare_rigidity(i);
            compare_failure(lines[i]);
        }
    }

  private:
    std::string name;
    const Found& found;
    const UnitSystem& units;
    std::map<std::string, int>& seen;
    std::vector<std::string> lines;
    const float* rigidity = nullptr;

    double in_report(float value, Quantity quantity) const {
        if (quantity == BARE) return value;
        const double moment = quantity == MOMENT ? 12.0 : 1.0;
        return static_cast<double>(value) / moment * static_cast<double>(units.factor(quantity));
    }

    void expect(std::string_view label, Quantity quantity, const std::optional<Number>& shown,
                float value) {
        if (!shown) return;
        ++seen[std::string(label)];
        EXPECT_TRUE(agrees(*shown, in_report(value, quantity)))
            << name << ": " << label << " shows " << shown->value << ", the block has "
            << in_report(value, quantity);
    }

    // The value line after a heading: the last of its lines, which begin with a blank or "=".
    std::optional<Number> behind(std::size_t heading) const {
        std::optional<Number> value;
        for (std::size_t i = heading + 1; i < lines.size(); ++i) {
            const std::string& line = lines[i];
            if (line.empty() || (line[0] != ' ' && line[0] != '=')) break;
            const std::size_t equals = line.find("= ");
            if (equals <= 1) value = number_at(std::string_view(line).substr(equals + 2));
        }
        return value;
    }

    void compare_named(const std::string& line) {
        if (line.find(" = (") != std::string::npos) return;
        for (const Item& item : NAMED) {
            const std::size_t at = line.find(item.label);
            if (at == std::string::npos) continue;
            const bool factors = line[0] == ' ' || line.starts_with("Factors") ||
                                 line.starts_with("Geometry") || line.starts_with("Stress Factors");
            if (factors)
                expect(item.label, item.quantity,
                       number_at(std::string_view(line).substr(at + item.label.size())),
                       item.value(found));
        }
    }

    void compare_rows(const std::string& line) {
        for (const Limits& row : LIMITS) {
            if (!line.starts_with(row.label)) continue;
            // The label of the area ends in its unit.
            std::size_t at =
                row.quantity == SQ_IN ? line.find(' ', row.label.size() + 1) : row.label.size();
            for (const Value value : row.values) {
                const std::size_t begin = line.find_first_not_of(' ', at);
                if (begin == std::string::npos) break;
                expect(row.label, row.quantity, number_at(std::string_view(line).substr(begin)),
                       value(found));
                at = std::min(line.find(' ', begin), line.size());
            }
        }
        for (int place = 0; place < TARVANE_STRESS_PLACES; ++place) {
            if (!line.starts_with(SUMMARY[place]) || line.find('|') == std::string::npos) continue;
            std::size_t at = SUMMARY[place].size();
            for (const float value : {found.stress[OP][place], found.allowed[OP][place],
                                      found.stress[SEAT][place], found.allowed[SEAT][place]}) {
                expect(SUMMARY[place], PSI, number_at(std::string_view(line).substr(at)), value);
                at = line.find('|', at) + 1;
            }
        }
    }

    void compare_rigidity(std::size_t i) {
        if (lines[i].starts_with("Flange Rigidity Based on Required")) rigidity = found.J_required;
        if (lines[i].starts_with("Flange Rigidity Based on Given")) rigidity = found.J_given;
        const bool index = lines[i].starts_with("Flange Rigidity Index") ||
                           lines[i].starts_with("Flange Rigidity Criterion");
        if (!index) return;
        ASSERT_NE(rigidity, nullptr);
        const bool seating = lines[i].find("Seating") != std::string::npos;
        expect(rigidity == found.J_given ? "J_given" : "J_required", BARE, behind(i),
               rigidity[seating ? SEAT : OP]);
    }

    void compare_failure(const std::string& line) {
        constexpr std::string_view LABELS[] = {"Note: Couldn't determine a limiting rerate",
                                               "Operating          ", "Gasket Seating          ",
                                               "Small End Hub Thickness (Hoop Stress)",
                                               "Flange Rigidity     "};
        for (int by = 0; by < 5; ++by) {
            if (!line.starts_with(LABELS[by])) continue;
            EXPECT_EQ(found.failure_by, by) << name;
            const std::size_t equals = line.find(" = ");
            ASSERT_NE(equals, std::string::npos) << line;
            expect("failure", IN_T, number_at(std::string_view(line).substr(equals + 3)),
                   found.failure_ca);
        }
    }
};

TEST(FlangeBlock, HoldsWhatTheGoldenReportsShow) {
    std::map<std::string, int> seen;
    for (const auto& [name, file] : golden_inputs())
        for (const FlangeInput* flange : flanges_of(file))
            Report(name, run_flange(*flange, file), file.units, seen).compare();
    // Every label is there in one report at least.
    const auto was_seen = [&](std::string_view label) {
        EXPECT_GT(seen[std::string(label)], 0) << label;
    };
    for (const Item& item : HEADINGS)
        was_seen(item.label);
    for (const Item& item : COLUMNS)
        was_seen(item.label);
    for (const Item& item : NAMED)
        was_seen(item.label);
    for (const Limits& row : LIMITS)
        was_seen(row.label);
    for (const std::string_view row : SUMMARY)
        was_seen(row);
    for (const char* other : {"J_given", "J_required", "failure"})
        was_seen(other);
}

// ---- the report on and off -----------------------------------------------------------------------------

// The flange once more, with another report: the block must not show the difference.
Found found_with(const FlangeInput& flange, const Request& file, std::int32_t unit,
                 std::int32_t write_case) {
    FlangeOutcome outcome;
    const Services services(outcome);
    set_up_flange(flange, file);
    SET_IOUT(&unit);
    SET_IWRITE(unit == 0 ? &OFF : &ON);
    SET_IWRTFL(unit == 0 ? &OFF : &ON);
    call_flange(flange, file, write_case, outcome);
    return outcome.found;
}

void expect_alike(const std::string& name, const Found& on, const Found& off) {
    if (std::memcmp(&on, &off, sizeof on) == 0) return;
    const auto* words = reinterpret_cast<const std::int32_t*>(&on);
    const auto* others = reinterpret_cast<const std::int32_t*>(&off);
    for (std::size_t i = 0; i < sizeof on / 4; ++i)
        if (words[i] != others[i])
            ADD_FAILURE() << name << ": word " << i << " of the block differs";
}

void expect_alike_whatever_the_report(const std::string& name, const FlangeInput& flange,
                                      const Request& file) {
    const Found on = run_flange(flange, file).found;
    expect_alike(name + ", off", on, found_with(flange, file, 0, 0));
    expect_alike(name + ", line store", on, found_with(flange, file, -1, on.external != 0 ? 2 : 1));
    expect_alike(name + ", line store, no report", on, found_with(flange, file, -1, 0));
}

TEST(FlangeBlock, IsTheSameWithTheReportOnAndOff) {
    for (const auto& [name, file] : golden_inputs())
        for (const FlangeInput* flange : flanges_of(file))
            expect_alike_whatever_the_report(name, *flange, file);
}

// ---- how a calculation ends ----------------------------------------------------------------------------

Found ended(const std::string& toml) {
    set_data_folder(TARVANE_DATA_DIR);
    const ReadResult read = read_input(toml);
    EXPECT_TRUE(read.faults.empty()) << fault_line("f", read.faults.front());
    const FlangeInput& flange = *flanges_of(read.request).at(0);
    expect_alike_whatever_the_report("ended", flange, read.request);
    return run_flange(flange, read.request).found;
}

TEST(FlangeBlock, RefusedInputLeavesItsMessages) {
    const Found found = ended(with("Gi", "Gi = 14.75", with("Fod", "Fod = 20")));
    EXPECT_EQ(found.status, TARVANE_REFUSED);
    // Fod above A; Gi not below Go; and no contact is left; three fatal ones in all.
    ASSERT_EQ(found.messages, 4);
    EXPECT_EQ(found.message[0], 22);
    EXPECT_EQ(found.message_value[0], 20.0f);
    EXPECT_EQ(found.message[1], 26);
    EXPECT_EQ(found.message_value[1], 14.75f);
    EXPECT_EQ(found.message[2], 34);
    EXPECT_EQ(found.message[3], 40);
    EXPECT_EQ(found.message_value[3], 3.0f);
    EXPECT_EQ(found.message_value[4], TARVANE_NO_VALUE);
    EXPECT_EQ(found.type, TARVANE_INTEGRAL_WELD_NECK);
    EXPECT_EQ(found.mawp, TARVANE_NO_VALUE);
    EXPECT_EQ(found.stress[OP][TARVANE_HUB_STRESS], TARVANE_NO_VALUE);
    EXPECT_EQ(found.evaluations, 0);
}

TEST(FlangeBlock, BoltsTooSmallForTheSearchLeaveTheAreas) {
    const Found found = ended(with("n", "n = 4", with("kind", "kind = \"thickness\"")));
    EXPECT_EQ(found.status, TARVANE_BOLT_AREA_SHORT);
    EXPECT_GT(found.Am, found.Ab);
    EXPECT_GT(found.Ab, 0.0f);
    EXPECT_EQ(found.W, TARVANE_NO_VALUE);
    EXPECT_EQ(found.mawp, TARVANE_NO_VALUE);
}

TEST(FlangeBlock, AStopSaysWhy) {
    // A cover has no bore, and the input check tests none; the ring must be wider all the same.
    const Found found =
        ended(with("type", "type = \"blind\"",
                   with("B", "B = 19.5", with("g0", "", with("g1", "", with("h", ""))))));
    EXPECT_EQ(found.status, TARVANE_STOPPED);
    EXPECT_EQ(found.fatal_code, 25);
}

TEST(FlangeBlock, ExternalPressureHasItsOwnPass) {
    const Found found = ended(with("P", "P = -14.7"));
    EXPECT_EQ(found.status, TARVANE_CALCULATED);
    EXPECT_EQ(found.external, 1);
    EXPECT_EQ(found.P, -14.7f);
    EXPECT_GT(found.Am, 0.0f);
    EXPECT_NE(found.stress[SEAT][TARVANE_HUB_STRESS], TARVANE_NO_VALUE);
    EXPECT_EQ(found.hub_mawp, TARVANE_NO_VALUE); // not evaluated
    EXPECT_EQ(found.map_nc, TARVANE_NO_VALUE);
}

TEST(FlangeBlock, ZerosButVersionAndBytesAfterReset) {
    ended(FLANGE_TOML);
    RESET_ENGINE();
    Found zeros;
    std::memset(&zeros, 0, sizeof zeros);
    zeros.version = TARVANE_FLANGE_RESULTS_VERSION;
    zeros.bytes = sizeof zeros;
    EXPECT_EQ(std::memcmp(GETFLANGERESULTS(), &zeros, sizeof zeros), 0);
}

TEST(FlangeBlock, CountsTheCalculations) {
    const ReadResult read = read_input(FLANGE_TOML);
    const FlangeInput& flange = *flanges_of(read.request).at(0);
    FlangeOutcome outcome;
    const Services services(outcome);
    set_up_flange(flange, read.request);
    for (int i = 1; i <= 3; ++i) {
        call_flange(flange, read.request, 0, outcome);
        EXPECT_EQ(outcome.found.serial, i);
    }
}

// ---- what limits a pressure ----------------------------------------------------------------------------

// Each limit is there in a golden report, and a stress that limits has the least ratio of its condition.
TEST(FlangeBlock, TellsWhatHoldsTheEstimatesDown) {
    std::map<int, int> seen;
    for (const auto& [name, file] : golden_inputs()) {
        for (const FlangeInput* flange : flanges_of(file)) {
            const Found found = run_flange(*flange, file).found;
            ++seen[found.mawp_operating_by];
            ++seen[found.mawp_seating_by];
            ++seen[found.mawp_by];
            ++seen[found.map_nc_by];
            const int place = found.mawp_operating_by - TARVANE_BY_OPERATING_STRESS;
            const bool mating = flange->text[slot::mating_loads] == 'Y';
            if (place < 0 || place >= TARVANE_STRESS_PLACES || found.external != 0 || mating ||
                flange->type() == TARVANE_BLIND)
                continue;
            const bool ring =
                flange->type() == TARVANE_LOOSE_RING || flange->type() == TARVANE_LAP_JOINT;
            for (int other = ring ? TARVANE_TANGENTIAL_STRESS : TARVANE_HUB_STRESS;
                 other < TARVANE_STRESS_PLACES; ++other) {
                if (ring && other == TARVANE_REVERSE_STRESS) continue;
                EXPECT_LE(found.ratio[OP][place], found.ratio[OP][other]) << name;
            }
            if (found.ratio[OP][place] < 990.0f) {
                const float pressure = found.ratio[OP][place] * found.Peq - (found.Peq - found.P);
                EXPECT_NEAR(found.mawp_operating, std::max(pressure, 0.0f), 0.0101f) << name;
            }
        }
    }
    for (const int by :
         {+TARVANE_HELD_BY_NOTHING, +TARVANE_BY_RIGIDITY, +TARVANE_BY_BOLTS, +TARVANE_BY_HUB})
        EXPECT_GT(seen[by], 0) << by;
}

// The hub as a cylinder: given under Division 2, too, whose report has no line of it.
TEST(FlangeBlock, HubThatHoldsTheMawpDown) {
    const std::string stout = with("t", "t = 6", with("g0", "g0 = 0.1"));
    for (const char* code : {"VIII-1", "VIII-2"}) {
        const Found found = ended(with("code", std::string("code = \"") + code + "\"", stout));
        EXPECT_EQ(found.mawp_by, TARVANE_BY_HUB) << code;
        EXPECT_EQ(found.mawp, found.hub_mawp) << code;
        EXPECT_LT(found.hub_mawp, found.mawp_operating) << code;
    }
}

// The stress that the block names decides: raising its limit raises the pressure.
TEST(FlangeBlock, StressThatHoldsTheMawpDown) {
    const Found found = ended(FLANGE_TOML);
    ASSERT_GE(found.mawp_operating_by, TARVANE_BY_OPERATING_STRESS);
    ASSERT_LT(found.mawp_operating_by, TARVANE_BY_OPERATING_STRESS + TARVANE_STRESS_PLACES);
    const int place = found.mawp_operating_by - TARVANE_BY_OPERATING_STRESS;
    for (int other = 0; other < TARVANE_STRESS_PLACES; ++other)
        EXPECT_LE(found.ratio[OP][place], found.ratio[OP][other]);
    EXPECT_NEAR(found.mawp_operating, found.ratio[OP][place] * found.P, 0.01f);
}

} // namespace
} // namespace tarvane::app
