#include "fields/external_keys.h"

#include "tarvane/tarvane.h"

namespace tarvane::vessel {

namespace {

constexpr Choice KINDS[] = {{"cylinder", TARVANE_CYLINDER},
                            {"elliptical", TARVANE_ELLIPTICAL_HEAD},
                            {"torispherical", TARVANE_TORISPHERICAL_HEAD},
                            {"sphere", TARVANE_SPHERE},
                            {"cone", TARVANE_CONE},
                            {"cylindrical", TARVANE_CYLINDER},
                            {"ellipsoidal", TARVANE_ELLIPTICAL_HEAD},
                            {"flanged and dished", TARVANE_TORISPHERICAL_HEAD},
                            {"spherical", TARVANE_SPHERE},
                            {"hemispherical", TARVANE_SPHERE},
                            {"conical", TARVANE_CONE}};
constexpr Choice CODES[] = {{"VIII-1", 1}, {"VIII-2", 2}, {"ASME VIII-1", 1}, {"ASME VIII-2", 2}};
constexpr Choice EDITIONS[] = {{"current", EXTERNAL_EDITION_CURRENT},
                               {"older", EXTERNAL_EDITION_OLDER}};
constexpr Choice SERVICES[] = {
    {"none", 0}, {"air, steam and water", 1}, {"unfired steam boiler", 2}, {"air", 1}, {"steam", 1},
    {"water", 1}};

constexpr int at(ExternalNumber number) { return static_cast<int>(number); }
constexpr int at(ExternalText text) { return static_cast<int>(text); }

using enum Quantity;
using N = ExternalNumber;

constexpr Place NUMBER = Place::setting, TEXT = Place::text_setting;

constexpr Key KEYS[] = {
    // ---- the element -------------------------------------------------------------------------
    {"description",
     TEXT,
     at(ExternalText::description),
     text,
     "description of the element",
     {},
     MOST_DESCRIPTION},
    {"kind", NUMBER, at(N::kind), choice, "kind of shell or head", KINDS},
    {"code", NUMBER, at(N::code), choice, "design code", CODES, 0, 1},
    {"edition", NUMBER, at(N::edition), choice, "edition of the code; older for VIII-2", EDITIONS},
    {"method", NUMBER, at(N::method), choice,
     "by the charts, or by buckling stress (Code Case 2286; VIII-2, 4.4); code: as the code has it",
     EXTERNAL_METHODS},
    {"table_g", NUMBER, at(N::table_g), flag,
     "factor A of a cylinder or cone from Table G, where the data files have it"},
    // ---- design conditions -------------------------------------------------------------------
    {"P_external", NUMBER, at(N::P), pressure,
     "external design pressure; 0 asks for the allowable one only"},
    {"T", NUMBER, at(N::T), temperature, "design temperature"},
    {"ci", NUMBER, at(N::ci), thickness, "internal corrosion allowance"},
    {"Ut", NUMBER, at(N::Ut), thickness, "mill under-tolerance"},
    {"service", NUMBER, at(N::service), choice, "service, for the minimum thickness of UG-16(b)",
     SERVICES},
    // ---- material ----------------------------------------------------------------------------
    {"material",
     TEXT,
     at(ExternalText::material),
     text,
     "material; the material files give what the file leaves out",
     {},
     16},
    {"material_reference", NUMBER, at(N::material_reference), whole,
     "reference number of the material, where a name has several"},
    {"chart", TEXT, at(ExternalText::chart), text, "external pressure chart, as CS-2", {}, 8},
    {"S", NUMBER, at(N::S), stress,
     "allowable stress in tension; cylinders and cones by the charts, cones above 60 degrees, "
     "UG-33(a)(1)"},
    {"Sy", NUMBER, at(N::Sy), stress,
     "yield stress at design temperature; buckling stress, charts that depend on it, thin heads"},
    {"material_class",
     NUMBER,
     at(N::material_class),
     whole,
     "reference number of the elastic modulus table, for buckling stress and thin heads",
     {},
     0,
     1},
    // ---- dimensions --------------------------------------------------------------------------
    {"D", NUMBER, at(N::D), diameter, "inside diameter; cone: of the large end"},
    {"Do", NUMBER, at(N::Do), diameter, "outside diameter, in place of D"},
    {"t", NUMBER, at(N::t), thickness, "nominal thickness"},
    {"length", NUMBER, at(N::length), diameter,
     "stiffened length of a cylinder or cone; cone: by UG-33(f) when it is not given"},
    {"k", NUMBER, at(N::k), number, "aspect ratio D/2h of an elliptical head", {}, 0, 2},
    {"h", NUMBER, at(N::h), diameter, "inside depth of an elliptical head, in place of k"},
    {"corroded_K", NUMBER, at(N::corroded_K), flag,
     "K of an elliptical head by its corroded shape, for UG-33(a)(1)"},
    {"L", NUMBER, at(N::L), diameter, "inside crown radius of a torispherical head"},
    {"r", NUMBER, at(N::r), diameter,
     "inside knuckle radius of a torispherical head, for UG-33(a)(1)"},
    {"skip_1_4f", NUMBER, at(N::skip_1_4f), flag, "no Appendix 1-4(f) for UG-33(a)(1)"},
    {"temp_limit",
     NUMBER,
     at(N::temp_limit),
     temperature,
     "temperature limit of Table 1-4.3 for the material; a note tells when T is not below it",
     {},
     0,
     1.0e9},
    {"alpha", NUMBER, at(N::alpha), number, "half apex angle of a cone, degrees"},
    {"Dsmall", NUMBER, at(N::Dsmall), diameter, "inside diameter of the small end of a cone"},
    {"cone_length", NUMBER, at(N::cone_length), diameter, "axial length of a cone"},
};

constexpr Synonym SYNONYMS[] = {{"name", "description"},
                                {"type", "kind"},
                                {"e", "t"},
                                {"tn", "t"},
                                {"ca", "ci"},
                                {"Di", "D"},
                                {"ID", "D"},
                                {"OD", "Do"},
                                {"Fy", "Sy"},
                                {"chart_yield", "Sy"},
                                {"f", "S"},
                                {"Rc", "L"},
                                {"Ri", "L"},
                                {"IKR", "r"},
                                {"rk", "r"},
                                {"a", "alpha"},
                                {"angle", "alpha"},
                                {"UT", "Ut"},
                                {"mill_tolerance", "Ut"},
                                {"modulus", "material_class"},
                                {"Ds", "Dsmall"},
                                {"D_small", "Dsmall"},
                                {"unsupported_length", "length"},
                                {"Le", "length"},
                                {"Lc", "cone_length"}};

constexpr Alias ALIASES[] = {{"c", "ci", Shared::other, Shared::both},
                             {"P", "P_external", Shared::other, Shared::ours}};

constexpr KeyTable TABLE{KEYS, SYNONYMS, ALIASES};

} // namespace

const KeyTable& external_keys() { return TABLE; }

} // namespace tarvane::vessel
