#include "fields/mdmt_keys.h"

#include "tarvane/tarvane.h"

namespace tarvane::vessel {

namespace {

constexpr Choice CODES[] = {{"VIII-1", 1}, {"VIII-2", 2}, {"ASME VIII-1", 1}, {"ASME VIII-2", 2}};
constexpr Choice EDITIONS[] = {
    {"current", MDMT_EDITION_CURRENT}, {"older", MDMT_EDITION_OLDER}, {"A98", MDMT_EDITION_A98}};
constexpr Choice CURVES[] = {{"A", TARVANE_CURVE_A},
                             {"B", TARVANE_CURVE_B},
                             {"C", TARVANE_CURVE_C},
                             {"D", TARVANE_CURVE_D},
                             {"impact tested", TARVANE_CURVE_IMPACT_TESTED},
                             {"exempt", TARVANE_CURVE_EXEMPT},
                             {"impact", TARVANE_CURVE_IMPACT_TESTED}};

constexpr int at(MdmtNumber number) { return static_cast<int>(number); }
constexpr int at(MdmtText text) { return static_cast<int>(text); }

using enum Quantity;
using N = MdmtNumber;

constexpr Place NUMBER = Place::setting, TEXT = Place::text_setting;

constexpr Key KEYS[] = {
    // ---- the element -------------------------------------------------------------------------
    Key{"description", TEXT, at(MdmtText::description), text, "description of the element",
        "Description"}
        .label("Description")
        .up_to(MOST_DESCRIPTION),
    Key{"of", TEXT, at(MdmtText::of), text,
        "description of the shell, head or flange whose metal temperature it is; it gives "
        "material, thickness, "
        "required thickness, E and corrosion"}
        .label("Component")
        .up_to(MOST_DESCRIPTION),
    Key{"waive", TEXT, at(MdmtText::waive), waivers,
        "checks that are waived; the verdict names them"}
        .label("Waived checks"),
    Key{"code", NUMBER, at(N::code), choice, "design code"}.of(CODES).otherwise(1).to(
        "MDMT_ELEMENT code"),
    Key{"edition", NUMBER, at(N::edition), choice,
        "edition: older for VIII-2 by AM-218, A98 for Fig. UCS-66.1 of VIII-1 before 1999"}
        .label("Edition of the code")
        .of(EDITIONS)
        .to("GETSETUP edition"),
    Key{"MDMT", NUMBER, at(N::required), temperature, "required minimum design metal temperature"}
        .label("Required minimum metal temperature")
        .to("GETHOSTINPUT required_temperature")
        .needs(by_rule("temperature_asked")),
    Key{"T", NUMBER, at(N::T), temperature, "design temperature"}
        .to("MDMT_ELEMENT t_design")
        .needs(on("ug20f")),
    // ---- material ----------------------------------------------------------------------------
    Key{"curve", NUMBER, at(N::curve), choice,
        "curve of Fig. UCS-66; of the material's record when it is not given"}
        .label("Curve of Fig. UCS-66")
        .of(CURVES)
        .to("MDMT_ELEMENT curve")
        .needs(),
    Key{"material", TEXT, at(MdmtText::material), text,
        "material; the material files give the curve and the yield stress"}
        .label("Material")
        .up_to(16)
        .to("MDMT_ELEMENT spec"),
    Key{"material_reference", NUMBER, at(N::material_reference), whole,
        "reference number of the material, where a name has several"}
        .label("Reference of the material")
        .to("MDMT_ELEMENT index"),
    Key{"normalized", NUMBER, at(N::normalized), flag, "curve of the normalized material"}
        .label("Normalized material")
        .reads(not_given("curve")),
    Key{"Sy", NUMBER, at(N::Sy), stress, "specified minimum yield stress; VIII-2, 3.11", "Sy"}
        .label("Specified minimum yield stress")
        .to("MDMT_ELEMENT sy")
        .needs(by_rule("division_2")),
    Key{"d2_class", NUMBER, at(N::d2_class), whole,
        "Division 2 class: 0 with the lower limit of 3.11 at a stress ratio of 0.3, else 0.24"}
        .label("Division 2 class")
        .otherwise(1)
        .to("SET_MATERIAL_SELECTION division2_class"),
    // ---- thickness and stress ----------------------------------------------------------------
    Key{"tg", NUMBER, at(N::tg), thickness, "governing thickness", "tg"}
        .to("MDMT_ELEMENT tg")
        .needs(),
    Key{"tg_sr", NUMBER, at(N::tg_sr), thickness,
        "thickness for the ratio, where it is not the governing one"}
        .label("Thickness for the ratio")
        .to("MDMT_ELEMENT tg_sr"),
    Key{"ci", NUMBER, at(N::ci), thickness, "internal corrosion allowance", "c"}.to(
        "MDMT_ELEMENT c"),
    Key{"ce", NUMBER, at(N::ce), thickness, "external corrosion allowance", "ce"}.to(
        "MDMT_ELEMENT c_ext"),
    Key{"E", NUMBER, at(N::E), number, "joint efficiency; E* of the ratio is 0.8 or more", "E"}
        .label("Joint efficiency")
        .otherwise(1)
        .shows(3)
        .to("MDMT_ELEMENT estar"),
    Key{"tr", NUMBER, at(N::tr), thickness, "required thickness, without corrosion allowance", "tr"}
        .label("Required thickness")
        .to("MDMT_ELEMENT tr"),
    Key{"ratio", NUMBER, at(N::ratio), number,
        "stress or pressure ratio, instead of tr; 1 when neither is given"}
        .label("Stress ratio")
        .otherwise(1)
        .shows(3)
        .to("MDMT_ELEMENT tr"),
    Key{"reductions", NUMBER, at(N::reductions), flag, "the reduction by the ratio may be used"}
        .label("Reduction by the ratio")
        .otherwise(1)
        .to("SET_TOUGHNESS_SWITCHES reductions_allowed"),
    Key{"pad", NUMBER, at(N::pad), flag,
        "a reinforcing pad governs; ratio and reduction are those of its shell"}
        .label("Reinforcing pad governs")
        .to("MDMT_ELEMENT pad_governs"),
    Key{"pad_ratio", NUMBER, at(N::pad_ratio), number, "ratio of the shell"}
        .opens("pad")
        .to("MDMT_ELEMENT ratio")
        .needs(),
    Key{"pad_reduction", NUMBER, at(N::pad_reduction), temperature_scale,
        "temperature reduction of the shell"}
        .opens("pad")
        .to("MDMT_ELEMENT reduction")
        .needs(),
    // ---- heat treatment, exemptions ----------------------------------------------------------
    Key{"pwht", NUMBER, at(N::pwht), flag, "the element is heat treated after welding"}
        .label("Post weld heat treatment")
        .to("MDMT_ELEMENT pwht"),
    Key{"credit", NUMBER, at(N::credit), flag,
        "it may take the credit of UCS-68(c) or AM-218.4: heat treated, but not because it must be"}
        .label("Credit of heat treatment")
        .to("MDMT_ELEMENT credit"),
    Key{"credit_floor", NUMBER, at(N::credit_floor), flag,
        "the credit ends at -55 F, not at -155 F"}
        .to("SET_TOUGHNESS_SWITCHES credit55"),
    Key{"ug20f", NUMBER, at(N::ug20f), flag, "it may use the exemption of UG-20(f)"}
        .label("Exemption of UG-20(f)")
        .to("MDMT_ELEMENT ug20_candidate"),
    Key{"ucs66c", NUMBER, at(N::ucs66c), flag,
        "it is a ferritic flange by ASME B16.5 or B16.47, exempt down to -20 F by UCS-66(c)"}
        .label("Exemption of UCS-66(c)")
        .reads(
            among("code", {TARVANE_ASME_VIII_1}) && among("edition", {MDMT_EDITION_CURRENT}) &&
            among("curve", {TARVANE_CURVE_A, TARVANE_CURVE_B, TARVANE_CURVE_C, TARVANE_CURVE_D})),
    Key{"curve_tables", NUMBER, at(N::curve_tables), flag,
        "curves of Fig. UCS-66 by their table, from 0.25 in. on; false: by equations fitted to "
        "them"}
        .label("Curves by their table")
        .in_newer_files(1)
        .to("SET_TOUGHNESS_SWITCHES curve_tables"),
    Key{"low_ratio", NUMBER, at(N::low_ratio), flag,
        "a ratio of up to 0.35 is allowed down to -155 F, UCS-66(b)(3)"}
        .label("Exemption of a low ratio")
        .to("SET_TOUGHNESS_SWITCHES floor_switch"),
    // ---- impact tests ------------------------------------------------------------------------
    Key{"impact_temperature", NUMBER, at(N::impact_temperature), temperature,
        "temperature of the impact tests, for the curve \"impact tested\""}
        .label("Temperature of the impact tests")
        .reads(among("curve", {5}))
        .to("GETHOSTINPUT single_number"),
    Key{"use_66g", NUMBER, at(N::use_66g), flag,
        "reduction of UCS-66(g) for an impact tested material"}
        .label("Reduction of UCS-66(g)")
        .reads(among("curve", {5}))
        .to("GETHOSTINPUT impact_switches"),
    Key{"use_66_1", NUMBER, at(N::use_66_1), flag,
        "reduction of Fig. UCS-66.1 for an impact tested material"}
        .label("Reduction of Fig. UCS-66.1")
        .reads(among("curve", {5}))
        .to("GETHOSTINPUT impact_switches"),
    Key{"use_ug84", NUMBER, at(N::use_ug84), flag,
        "reduction of UG-84(b)(2) for an impact tested element"}
        .label("Reduction of UG-84(b)(2)")
        .reads(among("curve", {5}))
        .to("GETHOSTINPUT impact_switches"),
};

constexpr KeySection SECTIONS[] = {{"description", "Element"},
                                   {"curve", "Material"},
                                   {"tg", "Thickness and stress"},
                                   {"pwht", "Heat treatment, exemptions"},
                                   {"impact_temperature", "Impact tests"}};

constexpr Synonym SYNONYMS[] = {{"name", "description"},
                                {"Treq", "MDMT"},
                                {"T_required", "MDMT"},
                                {"Tmin", "MDMT"},
                                {"thickness", "tg"},
                                {"t", "tg"},
                                {"ca", "ci"},
                                {"Estar", "E"},
                                {"E_star", "E"},
                                {"treq", "tr"},
                                {"stress_ratio", "ratio"},
                                {"Fy", "Sy"},
                                {"PWHT", "pwht"},
                                {"ug_20_f", "ug20f"},
                                {"reference", "material_reference"}};

constexpr Alias ALIASES[] = {{"c", "ci", Shared::other, Shared::both}};

constexpr Rule RULES[] = {
    {"division_2", "code is \"VIII-2\" and edition is not \"older\""},
    {"temperature_asked",
     "code is \"VIII-2\" and edition is not \"older\", or curve is \"impact tested\", "
     "material is given and neither its record nor impact_temperature gives the "
     "temperature of the tests"}};

constexpr KeyTable TABLE{
    .keys = KEYS, .sections = SECTIONS, .synonyms = SYNONYMS, .aliases = ALIASES, .rules = RULES};

} // namespace

const KeyTable& mdmt_keys() { return TABLE; }

} // namespace tarvane::vessel
