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
    {"description",
     TEXT,
     at(MdmtText::description),
     text,
     "description of the element",
     {},
     MOST_DESCRIPTION},
    {"code", NUMBER, at(N::code), choice, "design code", CODES, 0, 1},
    {"edition", NUMBER, at(N::edition), choice,
     "edition: older for VIII-2 by AM-218, A98 for Fig. UCS-66.1 of VIII-1 before 1999", EDITIONS},
    {"MDMT", NUMBER, at(N::required), temperature, "minimum design metal temperature asked for"},
    {"T", NUMBER, at(N::T), temperature, "design temperature"},
    // ---- material ----------------------------------------------------------------------------
    {"curve", NUMBER, at(N::curve), choice,
     "curve of Fig. UCS-66; of the material's record when it is not given", CURVES},
    {"material",
     TEXT,
     at(MdmtText::material),
     text,
     "material; the material files give the curve and the yield stress",
     {},
     16},
    {"material_reference", NUMBER, at(N::material_reference), whole,
     "reference number of the material, where a name has several"},
    {"normalized", NUMBER, at(N::normalized), flag, "curve of the normalized material"},
    {"Sy", NUMBER, at(N::Sy), stress, "specified minimum yield stress; VIII-2, 3.11"},
    {"d2_class",
     NUMBER,
     at(N::d2_class),
     whole,
     "Division 2 class: 0 with the lower limit of 3.11 at a stress ratio of 0.3, else 0.24",
     {},
     0,
     1},
    // ---- thickness and stress ----------------------------------------------------------------
    {"tg", NUMBER, at(N::tg), thickness, "governing thickness"},
    {"tg_sr", NUMBER, at(N::tg_sr), thickness,
     "thickness for the ratio, where it is not the governing one"},
    {"ci", NUMBER, at(N::ci), thickness, "internal corrosion allowance"},
    {"ce", NUMBER, at(N::ce), thickness, "external corrosion allowance"},
    {"E", NUMBER, at(N::E), number, "joint efficiency; E* of the ratio is 0.8 or more", {}, 0, 1},
    {"tr", NUMBER, at(N::tr), thickness, "required thickness, without corrosion allowance"},
    {"ratio",
     NUMBER,
     at(N::ratio),
     number,
     "stress or pressure ratio, in place of tr; 1 when neither is given",
     {},
     0,
     1},
    {"reductions",
     NUMBER,
     at(N::reductions),
     flag,
     "the reduction by the ratio may be taken",
     {},
     0,
     1},
    {"pad", NUMBER, at(N::pad), flag,
     "a reinforcing pad governs; ratio and reduction are those of its shell"},
    {"pad_ratio", NUMBER, at(N::pad_ratio), number, "ratio of the shell", {}, 0, 0, "pad"},
    {"pad_reduction",
     NUMBER,
     at(N::pad_reduction),
     temperature_scale,
     "temperature reduction of the shell",
     {},
     0,
     0,
     "pad"},
    // ---- heat treatment, exemptions ----------------------------------------------------------
    {"pwht", NUMBER, at(N::pwht), flag, "the element is heat treated after welding"},
    {"credit", NUMBER, at(N::credit), flag,
     "it may take the credit of UCS-68(c) or AM-218.4: heat treated, but not because it must be"},
    {"credit_floor", NUMBER, at(N::credit_floor), flag, "the credit ends at -55 F, not at -155 F"},
    {"ug20f", NUMBER, at(N::ug20f), flag, "it may use the exemption of UG-20(f)"},
    {"curve_tables", NUMBER, at(N::curve_tables), flag,
     "curves of Fig. UCS-66 by their table, not by equations"},
    // ---- impact tests ------------------------------------------------------------------------
    {"impact_temperature", NUMBER, at(N::impact_temperature), temperature,
     "temperature of the impact tests, for the curve \"impact tested\""},
    {"use_66g", NUMBER, at(N::use_66g), flag,
     "reduction of UCS-66(g) for an impact tested material"},
    {"use_66_1", NUMBER, at(N::use_66_1), flag,
     "reduction of Fig. UCS-66.1 for an impact tested material"},
    {"use_ug84", NUMBER, at(N::use_ug84), flag,
     "reduction of UG-84(b)(2) for an impact tested element"},
};

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

constexpr KeyTable TABLE{KEYS, SYNONYMS, ALIASES};

} // namespace

const KeyTable& mdmt_keys() { return TABLE; }

} // namespace tarvane::vessel
