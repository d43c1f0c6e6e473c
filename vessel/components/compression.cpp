// A [[compression]]: a cylinder under axial compression, bending, shear and external pressure, its stresses against
// those that Code Case 2286 and VIII-2, 4.4.12 allow. The hoop stress is that of an element under external pressure by
// buckling stress; the engine's routines for the other stresses go by the chart and the modulus of that calculation.
#include "components/engine_session.h"
#include "components/external_results.h"
#include "components/external_session.h"
#include "components/key_checks.h"
#include "components/report_lines.h"
#include "components/request.h"
#include "tarvane/tarvane.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace tarvane::vessel {

extern const ElementKind COMPRESSION_KIND;

namespace {

// ---- keys ------------------------------------------------------------------------------------------

enum class CompressionNumber {
    code,
    P_external,
    T,
    ci,
    Ut,
    Sy,
    material_class,
    material_reference,
    D,
    Do,
    t,
    length,
    Lu,
    Ku,
    fa,
    fq,
    fb,
    fv,
    count
};
enum class CompressionText { description, material, chart, waive, count };

using N = CompressionNumber;
using X = CompressionText;

constexpr int at(N number) { return static_cast<int>(number); }
constexpr int at(X text) { return static_cast<int>(text); }

constexpr Place NUMBER = Place::setting, TEXT = Place::text_setting;

constexpr Choice CODES[] = {{"VIII-1", TARVANE_ASME_VIII_1},
                            {"VIII-2", TARVANE_ASME_VIII_2},
                            {"ASME VIII-1", TARVANE_ASME_VIII_1},
                            {"ASME VIII-2", TARVANE_ASME_VIII_2}};

using enum Quantity;

constexpr Key KEYS[] = {
    Key{"description", TEXT, at(X::description), text, "description of the cylinder", "Description"}
        .label("Description")
        .up_to(MOST_DESCRIPTION),
    Key{"waive", TEXT, at(X::waive), waivers, "checks that are waived; the verdict names them"}
        .label("Waived checks"),
    Key{"code", NUMBER, at(N::code), choice, "design code: VIII-1 by Code Case 2286, VIII-2 by 4.4"}
        .label("Design code")
        .of(CODES)
        .otherwise(TARVANE_ASME_VIII_1)
        .to("SET_MODULE_CODE"),
    // ---- loads -------------------------------------------------------------------------------
    Key{"P_external", NUMBER, at(N::P_external), pressure, "external design pressure", "P"}
        .label("External design pressure")
        .to("SHLEXT p"),
    Key{"fa", NUMBER, at(N::fa), stress,
        "axial compressive stress of the axial load, without that of the pressure on the ends",
        "fa"}
        .label("Axial compressive stress"),
    Key{"fq", NUMBER, at(N::fq), stress,
        "axial compressive stress of the external pressure on the ends; P Do / 4 t when it is not "
        "given",
        "fq"}
        .label("Axial stress of the pressure on the ends"),
    Key{"fb", NUMBER, at(N::fb), stress, "compressive stress of the bending moment", "fb"}.label(
        "Bending stress"),
    Key{"fv", NUMBER, at(N::fv), stress, "shear stress of the shear force and torsion", "fv"}.label(
        "Shear stress"),
    Key{"T", NUMBER, at(N::T), temperature, "design temperature"}.to("SHLEXT temp").needs(),
    Key{"ci", NUMBER, at(N::ci), thickness, "internal corrosion allowance", "c"}.to("SHLEXT c"),
    Key{"Ut", NUMBER, at(N::Ut), thickness, "mill under-tolerance", "Ut"}.to("SHLEXT ut"),
    // ---- material ----------------------------------------------------------------------------
    Key{"material", TEXT, at(X::material), text,
        "material; the material files give what the file leaves out"}
        .label("Material")
        .up_to(16),
    Key{"material_reference", NUMBER, at(N::material_reference), whole,
        "reference number of the material, where a name has several"}
        .label("Reference of the material"),
    Key{"chart", TEXT, at(X::chart), text, "external pressure chart, as CS-2"}
        .label("External pressure chart")
        .up_to(8)
        .to("SHLEXT chart")
        .needs(),
    Key{"Sy", NUMBER, at(N::Sy), stress, "yield stress at design temperature", "Sy"}
        .label("Yield stress at design temperature")
        .to("SHLEXT fy")
        .needs(),
    Key{"material_class", NUMBER, at(N::material_class), whole,
        "reference number of the elastic modulus table"}
        .label("Elastic modulus table")
        .otherwise(1)
        .to("SHLEXT material"),
    // ---- dimensions --------------------------------------------------------------------------
    Key{"D", NUMBER, at(N::D), diameter, "inside diameter", "D"}
        .to("SHLEXT d")
        .needs(not_given("Do")),
    Key{"Do", NUMBER, at(N::Do), diameter, "outside diameter, instead of D", "Do"}
        .label("Outside diameter")
        .to("SHLEXT d"),
    Key{"t", NUMBER, at(N::t), thickness, "nominal thickness", "t"}.to("SHLEXT t").needs(),
    Key{"length", NUMBER, at(N::length), diameter,
        "unsupported length between lines of support, as stiffening rings and heads", "L"}
        .label("Unsupported length")
        .to("SHLEXT length")
        .needs(),
    Key{"Lu", NUMBER, at(N::Lu), diameter,
        "laterally unbraced length of the column that the cylinder is part of", "Lu"}
        .label("Unbraced length of the column")
        .to("CC2286_AXIAL lu")
        .needs(given("fa")),
    Key{"Ku", NUMBER, at(N::Ku), number,
        "effective length factor of the column: 2.1 free and fixed ends, 1 both pinned", "Ku"}
        .label("Effective length factor")
        .to("CC2286_AXIAL ku")
        .needs(given("fa")),
};

constexpr KeySection SECTIONS[] = {{"description", "Element"},
                                   {"P_external", "Loads"},
                                   {"material", "Material"},
                                   {"D", "Dimensions"}};

constexpr Synonym SYNONYMS[] = {{"name", "description"},
                                {"P", "P_external"},
                                {"ca", "ci"},
                                {"c", "ci"},
                                {"ID", "D"},
                                {"Di", "D"},
                                {"OD", "Do"},
                                {"Fy", "Sy"},
                                {"L", "length"},
                                {"K", "Ku"},
                                {"modulus", "material_class"}};

constexpr Unheeded UNHEEDED[] = {EXTERNAL_CORROSION};

constexpr KeyTable KEY_TABLE{
    .keys = KEYS, .sections = SECTIONS, .synonyms = SYNONYMS, .unheeded = UNHEEDED};

// ---- checks ----------------------------------------------------------------------------------------

constexpr std::string_view CODE_CASE = "Code Case 2286";
constexpr float MOST_D_OVER_T = 2000.0f;   // for which the equations are given
constexpr float LEAST_COLUMN = 0.15f;      // slenderness from which on the column counts
constexpr float SLENDEREST_COLUMN = 1.2f;  // with hoop compression
constexpr float NO_COLUMN_STRESS = 1.0e6f; // of CC2286_AXIAL

constexpr std::string_view NO_EQUATION =
    "it is not calculated: check it by hand, and waive this check";

constexpr CheckField CHECKS[] = {
    CALCULATION,
    field_of(EXTERNAL_CHECKS, "chart_temperature"),
    {.id = "diameter_to_thickness",
     .paragraph = "4.4.12.2(b)",
     .label = "outside diameter over net thickness",
     .quantity = number},
    {.id = "hoop",
     .paragraph = "4.4.12.2(a)",
     .label = "hoop compression",
     .quantity = stress,
     .asked = "P_external above 0"},
    {.id = "axial",
     .paragraph = "4.4.12.2(b)",
     .label = "axial compression",
     .quantity = stress,
     .asked = "fa above 0"},
    {.id = "column",
     .paragraph = "4.4.12.2(b)",
     .label = "axial compression of the column",
     .quantity = stress,
     .asked = "fa above 0, a slenderness above 0.15"},
    {.id = "bending",
     .paragraph = "4.4.12.2(c)",
     .label = "bending compression",
     .quantity = stress,
     .asked = "fb above 0"},
    {.id = "shear",
     .paragraph = "4.4.12.2(d)",
     .label = "shear",
     .quantity = stress,
     .asked = "fv above 0"},
    {.id = "axial_hoop",
     .paragraph = "4.4.12.2(e)",
     .label = "axial and hoop compression",
     .quantity = stress,
     .asked = "fa and P_external above 0"},
    {.id = "column_hoop",
     .paragraph = "4.4.12.2(e)",
     .label = "axial compression of the column, and hoop",
     .quantity = stress,
     .asked = "fa and P_external above 0, a slenderness above 0.15"},
    {.id = "bending_hoop",
     .paragraph = "4.4.12.2(f)",
     .label = "bending and hoop compression",
     .quantity = stress,
     .asked = "fb and P_external above 0",
     .waivable = true},
    {.id = "shear_hoop",
     .paragraph = "4.4.12.2(g)",
     .label = "shear and hoop compression",
     .quantity = stress,
     .asked = "fv and P_external above 0",
     .waivable = true},
    {.id = "combined",
     .paragraph = "4.4.12.2(h), (i)",
     .label = "axial compression, bending and shear together",
     .quantity = number,
     .asked = "two of fa, fb and fv above 0",
     .waivable = true},
    EXTERNAL_CORROSION_CHECK,
};

consteval const CheckField& field(std::string_view id) { return field_of(CHECKS, id); }

// ---- what is found ---------------------------------------------------------------------------------

struct CompressionOutcome final : Outcome {
    ExternalOutcome hoop;
    float Do = 0.0f, tc = 0.0f; // used
    float fh = 0.0f;            // hoop stress
    float Ey = 0.0f;
    float Fha = 0.0f, Fhe = 0.0f, FSh = 0.0f;
    float Fxa = 0.0f, Fxe = 0.0f, FSx = 0.0f, Fca = 0.0f, lambda = 0.0f;
    float Fba = 0.0f, Fva = 0.0f, Cv = 0.0f;
    float Fxha = 0.0f, Fhxa = 0.0f, Fcha = 0.0f; // 0: not asked for

    bool refused() const override { return hoop.refused(); }
    bool slender() const { return lambda > LEAST_COLUMN; }
    bool too_slender() const { return slender() && !(Fca < NO_COLUMN_STRESS); }
};

struct Compression final : SettingsElement<N, X> {
    ExternalInput shell; // the same cylinder under external pressure

    std::unique_ptr<Element> copy() const override { return std::make_unique<Compression>(*this); }
    std::string description() const override { return text_setting(X::description); }
    void complete(Reading& reading) override;
    std::unique_ptr<Outcome> calculate(const Request& file) const override;
    std::vector<Result> results(const Outcome& outcome) const override;
    Checks find_checks(const Outcome& outcome, const UnitSystem& units) const override;

    bool loaded_by(N stress) const { return setting(stress) > 0.0f; }
    bool under_pressure() const { return loaded_by(N::P_external); }
    bool has_column() const { return loaded_by(N::Lu) && loaded_by(N::Ku); }
};

// ---- reading ---------------------------------------------------------------------------------------

// The keys that the cylinder shares with an [[external]]. Those that are not given follow from its material.
void Compression::complete(Reading& reading) {
    using E = ExternalNumber;
    constexpr std::pair<E, N> SHARED[] = {{E::code, N::code},
                                          {E::P, N::P_external},
                                          {E::T, N::T},
                                          {E::ci, N::ci},
                                          {E::Ut, N::Ut},
                                          {E::Sy, N::Sy},
                                          {E::material_class, N::material_class},
                                          {E::material_reference, N::material_reference},
                                          {E::D, N::D},
                                          {E::Do, N::Do},
                                          {E::t, N::t},
                                          {E::length, N::length}};
    shell.line = line;
    shell.number = number;
    for (const auto& [theirs, ours] : SHARED)
        shell.put_setting(theirs, setting(ours));
    shell.put_setting(E::kind, static_cast<float>(TARVANE_CYLINDER));
    shell.put_setting(E::method, static_cast<float>(METHOD_STRESS));
    shell.texts = {description(), text_setting(X::material), text_setting(X::chart), ""};
    shell.complete(reading);
    for (const auto& [theirs, ours] : SHARED)
        put_setting(ours, shell.setting(theirs));
    texts[static_cast<std::size_t>(X::chart)] = shell.chart();

    const KeyChecks checks(KEY_TABLE, settings, reading);
    checks.above_zero({"Lu", "Ku"});
    checks.at_least_zero({"fa", "fq", "fb", "fv"});
    const float t = setting(N::t), net = (t - setting(N::ci)) - setting(N::Ut);
    const float Do = shell.outside() ? setting(N::Do) : setting(N::D) + 2.0f * (t - setting(N::Ut));
    const float most = net > 0.0f ? setting(N::P_external) * Do / (4.0f * net) : 0.0f;
    constexpr float ROUNDED = 1.001f;
    if (!reading.given("fq")) {
        put_setting(N::fq, most);
        if (most > 0.0f) reading.comes_from("fq", "P_external");
    } else if (checks.sound("fq") && net > 0.0f && setting(N::fq) > ROUNDED * most) {
        checks.fault("fq", "above P Do / 4 t, all that the external pressure gives; the stress of "
                           "an axial load is fa");
    }
}

// ---- running ---------------------------------------------------------------------------------------

void find_allowables(const Compression& given, CompressionOutcome& o) {
    const TARVANE_EXTERNAL_RESULTS& f = o.hoop.found;
    const float Fy = given.setting(N::Sy), L = given.setting(N::length);
    const float none = 0.0f, one = 1.0f;
    const bool column = given.has_column();
    const float Ku = column ? given.setting(N::Ku) : none,
                Lu = column ? given.setting(N::Lu) : none;
    o.Do = f.diameter[TARVANE_AT_GIVEN];
    o.tc = f.thickness[TARVANE_AT_GIVEN];
    o.Ey = f.modulus;
    o.Fha = f.fha[TARVANE_AT_GIVEN];
    o.Fhe = f.fhe[TARVANE_AT_GIVEN];
    o.FSh = f.fs[TARVANE_AT_GIVEN];
    const float P = given.setting(N::P_external);
    o.fh = P * o.Do / (2.0f * o.tc);

    float FSc = 0.0f, FSe = 0.0f;
    const auto axial = [&](float factor) {
        CC2286_AXIAL(&o.Do, &L, &o.tc, &o.Ey, &Fy, &factor, &Lu, &FSc, &o.lambda, &o.Fxa, &FSe,
                     &o.Fxe, &o.Fca);
    };
    axial(Ku);
    // The lower of the two stresses has the greater factor. Not of carbon steel: there is one.
    o.FSx = f.carbon_steel != 0 ? std::max(FSe, FSc) : FSe;
    // The engine's slenderness has the factor of the yielding cylinder, the code's that of Fxa.
    if (f.carbon_steel != 0 && o.FSx > FSc) axial(Ku * std::sqrt(o.FSx / FSc));
    CC2286_BENDING(&o.Do, &o.tc, &o.Ey, &Fy, &FSc, &o.Fxa, &o.Fba);
    CC2286_SHEAR(&o.Do, &L, &o.tc, &o.Ey, &Fy, &o.Fva, &o.Cv);

    if (!given.loaded_by(N::fa) || !given.under_pressure()) return;
    const float fa = given.setting(N::fa), fq = given.setting(N::fq);
    float unused = 0.0f, of_column = 0.0f, with_hoop = 0.0f;
    CC2286_INTERACTION(&P, &o.Do, &o.tc, &fa, &fq, &none, &o.Fha, &o.Fxa, &o.FSh, &o.FSx, &Fy, &one,
                       &o.Fxa, &o.FSx, &o.Fxha, &o.Fhxa, &unused);
    if (o.slender())
        CC2286_INTERACTION(&P, &o.Do, &o.tc, &fa, &fq, &o.lambda, &o.Fha, &o.Fxa, &o.FSh, &o.FSx,
                           &Fy, &one, &o.Fxa, &o.FSx, &of_column, &with_hoop, &o.Fcha);
}

// After the lines of the engine for the hoop stress.
void write_allowables(const Compression& given, const CompressionOutcome& o) {
    const auto stress_line = [](std::string_view label, std::string_view symbol, float value) {
        report_input(label, symbol, value, TARVANE_AS_STRESS);
    };
    report_line("");
    report_heading("Allowable Compressive Stresses:");
    stress_line("Hoop Compression", "Fha", o.Fha);
    stress_line("Axial Compression", "Fxa", o.Fxa);
    if (given.has_column()) {
        report_input("Slenderness", "Lambda", o.lambda, TARVANE_AS_FACTOR);
        if (o.Fca < NO_COLUMN_STRESS) stress_line("Axial Compression, Column", "Fca", o.Fca);
    }
    stress_line("Bending Compression", "Fba", o.Fba);
    stress_line("Shear", "Fva", o.Fva);
    if (o.Fxha > 0.0f) stress_line("Axial Compression with Hoop", "Fxha", o.Fxha);
    if (o.Fcha > 0.0f) stress_line("Column with Hoop Compression", "Fcha", o.Fcha);
    report_line("");
    CLOSING_NOTE();
}

std::unique_ptr<Outcome> Compression::calculate(const Request& file) const {
    auto outcome = std::make_unique<CompressionOutcome>();
    CompressionOutcome& o = *outcome;
    o.hoop = run_external(shell, file);
    o.report = o.hoop.report;
    o.messages = o.hoop.messages;
    o.stopped = o.hoop.stopped;
    o.fatal_code = o.hoop.fatal_code;
    if (o.stopped || o.hoop.no_curve) return outcome;
    const Services services(o);
    find_allowables(*this, o);
    const ReportUnit report(file.report);
    report.switch_on();
    write_allowables(*this, o);
    o.report += report.switch_off_and_read();
    return outcome;
}

// ---- results ---------------------------------------------------------------------------------------

struct Found {
    const Compression& given;
    const CompressionOutcome& o;
    std::string_view nothing; // why there is no result; empty: there are some
};
using F = const Found&;

constexpr std::string_view TABLE = "Allowable Compressive Stresses",
                           NO_PRESSURE = "no external design pressure",
                           NO_COLUMN = "no length and factor of a column",
                           NOT_TOGETHER = "not both fa and P_external are above 0",
                           STOCKY = "the slenderness is not above 0.15",
                           TOO_SLENDER =
                               "no stress is given for a column of Ku Lu from 200 radii of "
                               "gyration on",
                           NO_COLUMN_WITH_HOOP = "no stress with hoop compression is given for a "
                                                 "column of slenderness 1.2 or more";

Got value(F f, float number) { return f.nothing.empty() ? Got(number) : Got::none(f.nothing); }

template <float CompressionOutcome::*MEMBER>
Got member(F f) {
    return value(f, f.o.*MEMBER);
}

Got when(F f, bool there, float number, std::string_view why) {
    return there || !f.nothing.empty() ? value(f, number) : Got::none(why);
}

Got of_column(F f, float number) {
    if (!f.nothing.empty()) return Got::none(f.nothing);
    if (!f.given.has_column()) return Got::none(NO_COLUMN);
    if (f.o.too_slender()) return Got::none(TOO_SLENDER);
    return when(f, f.o.slender(), number, STOCKY);
}

Got of_column_with_hoop(F f) {
    if (f.nothing.empty() && !(f.o.Fxha > 0.0f)) return Got::none(NOT_TOGETHER);
    const Got column = of_column(f, f.o.Fcha);
    return column.value ? when(f, f.o.lambda < SLENDEREST_COLUMN, f.o.Fcha, NO_COLUMN_WITH_HOOP)
                        : column;
}

using O = CompressionOutcome;

constexpr ResultRow<Found> ROWS[] = {
    {{"Do_used", "Do", diameter, "Outside diameter used", TABLE}, member<&O::Do>},
    {{"tc", "tc", thickness, "Thickness less allowances", TABLE}, member<&O::tc>},
    {{"fh", "fh", stress, "Hoop stress of the external pressure", TABLE},
     [](F f) { return when(f, f.given.under_pressure(), f.o.fh, NO_PRESSURE); }},
    {{"fha", "Fha", stress, "Allowable hoop stress", TABLE}, member<&O::Fha>},
    {{"fxa", "Fxa", stress, "Allowable axial stress", TABLE, "without buckling of the column"},
     member<&O::Fxa>},
    {{"fca", "Fca", stress, "Allowable axial stress of the column", TABLE},
     [](F f) { return of_column(f, f.o.Fca); }},
    {{"fba", "Fba", stress, "Allowable bending stress", TABLE}, member<&O::Fba>},
    {{"fva", "Fva", stress, "Allowable shear stress", TABLE}, member<&O::Fva>},
    {{"fxha", "Fxha", stress, "Allowable axial stress with hoop", TABLE,
      "with a hoop stress in the ratio of the given ones"},
     [](F f) { return when(f, f.o.Fxha > 0.0f, f.o.Fxha, NOT_TOGETHER); }},
    {{"fhxa", "Fhxa", stress, "Allowable hoop stress with axial", TABLE,
      "with an axial stress in the ratio of the given ones"},
     [](F f) { return when(f, f.o.Fxha > 0.0f, f.o.Fhxa, NOT_TOGETHER); }},
    {{"fcha", "Fcha", stress, "Allowable column stress with hoop", TABLE}, of_column_with_hoop},
    {{"lambda", "Lambda", number, "Slenderness of the column", TABLE},
     [](F f) { return when(f, f.given.has_column(), f.o.lambda, NO_COLUMN); }},
    // ---- further ones
    {{"modulus", "Ey", stress, "Elastic modulus at temperature"}, member<&O::Ey>},
    {{"fhe", "Fhe", stress, "Elastic hoop buckling stress"}, member<&O::Fhe>},
    {{"fs_hoop", "FS", number, "Factor of safety of the hoop stress"}, member<&O::FSh>},
    {{"fxe", "Fxe", stress, "Axial buckling stress", "",
      "elastic; inelastic by a chart that is not one of carbon steel"},
     member<&O::Fxe>},
    {{"fs_axial", "FS", number, "Factor of safety of the axial stress"}, member<&O::FSx>},
    {{"cv", "Cv", number, "Shear buckling coefficient"}, member<&O::Cv>},
};

constexpr auto FIELDS = fields_of(ROWS);

std::vector<Result> Compression::results(const Outcome& outcome) const {
    const auto& o = static_cast<const CompressionOutcome&>(outcome);
    return results_of(ROWS, FIELDS,
                      Found{*this, o,
                            o.stopped         ? "the engine stopped"
                            : o.hoop.no_curve ? "there is no chart"
                                              : ""});
}

std::string closing_tables(std::span<const Calculated> elements, const UnitSystem& units) {
    return closing_table(TABLE, elements, units);
}

// ---- the rows of the checks ------------------------------------------------------------------------

void check_axial(const Compression& given, const CompressionOutcome& o, Checks& checks) {
    const float fa = given.setting(N::fa);
    checks.push_back(Check::compared(field("axial"), fa, o.Fxa));
    if (o.too_slender())
        checks.push_back(Check::not_made(field("column"), std::string(TOO_SLENDER)));
    else if (o.slender())
        checks.push_back(Check::compared(field("column"), fa, o.Fca));
    if (!given.under_pressure()) return;
    const float all = fa + given.setting(N::fq);
    checks.push_back(Check::compared(field("axial_hoop"), all, std::min(o.Fxha, o.Fxa)));
    if (!o.slender()) return;
    if (o.too_slender() || !(o.lambda < SLENDEREST_COLUMN))
        checks.push_back(Check::not_made(field("column_hoop"), std::string(NO_COLUMN_WITH_HOOP)));
    else
        checks.push_back(Check::compared(field("column_hoop"), fa, std::min(o.Fcha, o.Fca)));
}

// Stresses together whose allowable one is not calculated.
void add_unmade_combinations(const Compression& given, Checks& checks) {
    const auto unmade = [&](const CheckField& row, bool asked) {
        if (!asked) return;
        std::string reason("not made: ");
        reason.append(row.label).append("; ").append(NO_EQUATION);
        checks.push_back(Check::not_made(row, std::move(reason)));
    };
    const int stresses =
        static_cast<int>(given.loaded_by(N::fa)) + given.loaded_by(N::fb) + given.loaded_by(N::fv);
    unmade(field("bending_hoop"), given.under_pressure() && given.loaded_by(N::fb));
    unmade(field("shear_hoop"), given.under_pressure() && given.loaded_by(N::fv));
    unmade(field("combined"), stresses > 1);
}

Checks Compression::find_checks(const Outcome& outcome, const UnitSystem& units) const {
    const auto& o = static_cast<const CompressionOutcome&>(outcome);
    Checks checks = external_checks(shell, o.hoop, units);
    std::erase_if(checks, [](const Check& check) {
        const std::string_view id = check.field().id;
        return id != "calculation" && id != "chart_temperature";
    });
    if (!o.stopped && !o.hoop.no_curve) {
        checks.push_back(
            Check::compared(field("diameter_to_thickness"), o.Do / o.tc, MOST_D_OVER_T));
        if (under_pressure()) checks.push_back(Check::compared(field("hoop"), o.fh, o.Fha));
        if (loaded_by(N::fa)) check_axial(*this, o, checks);
        if (loaded_by(N::fb))
            checks.push_back(Check::compared(field("bending"), setting(N::fb), o.Fba));
        if (loaded_by(N::fv))
            checks.push_back(Check::compared(field("shear"), setting(N::fv), o.Fva));
        add_unmade_combinations(*this, checks);
    }
    for (Check& check : checks) {
        check.listed_in(CHECKS);
        if (shell.code() == TARVANE_ASME_VIII_1 && check.paragraph().starts_with("4.4"))
            check.under(CODE_CASE);
    }
    add_unmade_checks(checks);
    for (Check& check : checks)
        check.listed_in(CHECKS);
    return checks;
}

} // namespace

const ElementKind COMPRESSION_KIND{
    .table = "compression",
    .plural = "cylinders under compression",
    .keys = KEY_TABLE,
    .most = 500,
    .single = false,
    .make =
        [] {
            auto element = std::make_unique<Compression>();
            element->kind = &COMPRESSION_KIND;
            return std::unique_ptr<Element>(std::move(element));
        },
    .tables = closing_tables,
    .results = FIELDS,
    .checks = CHECKS,
};

} // namespace tarvane::vessel
