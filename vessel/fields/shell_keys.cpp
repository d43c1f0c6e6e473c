#include "fields/shell_keys.h"

#include "fields/external_keys.h"
#include "tarvane/tarvane.h"

namespace tarvane::vessel {

namespace {

constexpr Choice KINDS[] = {{"cylinder", TARVANE_CYLINDER},
                            {"elliptical", TARVANE_ELLIPTICAL_HEAD},
                            {"torispherical", TARVANE_TORISPHERICAL_HEAD},
                            {"sphere", TARVANE_SPHERE},
                            {"cone", TARVANE_CONE},
                            {"flat", TARVANE_FLAT_HEAD},
                            {"cylindrical", TARVANE_CYLINDER},
                            {"ellipsoidal", TARVANE_ELLIPTICAL_HEAD},
                            {"flanged and dished", TARVANE_TORISPHERICAL_HEAD},
                            {"spherical", TARVANE_SPHERE},
                            {"hemispherical", TARVANE_SPHERE},
                            {"conical", TARVANE_CONE},
                            {"flat head", TARVANE_FLAT_HEAD}};
constexpr Choice CODES[] = {{"VIII-1", 1}, {"VIII-2", 2}, {"ASME VIII-1", 1}, {"ASME VIII-2", 2}};
constexpr Choice EDITIONS[] = {{"current", SHELL_EDITION_CURRENT}, {"older", SHELL_EDITION_OLDER}};
constexpr Choice SERVICES[] = {
    {"none", 0}, {"air, steam and water", 1}, {"unfired steam boiler", 2}, {"air", 1}, {"steam", 1},
    {"water", 1}};

constexpr int at(ShellNumber number) { return static_cast<int>(number); }
constexpr int at(ShellText text) { return static_cast<int>(text); }

using enum Quantity;
using N = ShellNumber;

constexpr Place NUMBER = Place::setting, TEXT = Place::text_setting;

constexpr Key KEYS[] = {
    // ---- the element -------------------------------------------------------------------------
    {"description",
     TEXT,
     at(ShellText::description),
     text,
     "description of the element",
     {},
     MOST_DESCRIPTION},
    {"kind", NUMBER, at(N::kind), choice, "kind of shell or head", KINDS},
    {"code", NUMBER, at(N::code), choice, "design code", CODES, 0, 1},
    {"edition", NUMBER, at(N::edition), choice,
     "edition of the code; older for formed heads by VIII-2, AD-204", EDITIONS},
    // ---- design conditions -------------------------------------------------------------------
    {"P", NUMBER, at(N::P), pressure, "internal design pressure"},
    {"T", NUMBER, at(N::T), temperature, "design temperature"},
    {"ci", NUMBER, at(N::ci), thickness, "internal corrosion allowance"},
    {"Ut", NUMBER, at(N::Ut), thickness, "mill under-tolerance"},
    {"E", NUMBER, at(N::E), number, "joint efficiency", {}, 0, 1},
    {"service", NUMBER, at(N::service), choice, "service, for the minimum thickness of UG-16(b)",
     SERVICES},
    // ---- material ----------------------------------------------------------------------------
    {"material", TEXT, at(ShellText::material), text, "material", {}, 40},
    {"material_reference", NUMBER, at(N::material_reference), whole,
     "reference number of the material, where several have its name"},
    {"S", NUMBER, at(N::S), stress, "allowable stress at design temperature"},
    {"Sa", NUMBER, at(N::Sa), stress, "allowable stress at ambient temperature"},
    {"Sy", NUMBER, at(N::Sy), stress,
     "yield stress at design temperature, for thin heads by Appendix 1-4(f)"},
    {"Sy_cold", NUMBER, at(N::Sy_cold), stress,
     "yield stress at ambient temperature; Sy when it is not given"},
    {"material_class",
     NUMBER,
     at(N::material_class),
     whole,
     "reference number of the elastic modulus table",
     {},
     0,
     1},
    // ---- dimensions --------------------------------------------------------------------------
    {"D", NUMBER, at(N::D), diameter, "inside diameter; flat head: diameter or one span"},
    {"Do", NUMBER, at(N::Do), diameter, "outside diameter, in place of D"},
    {"t", NUMBER, at(N::t), thickness, "nominal thickness"},
    {"k", NUMBER, at(N::k), number, "aspect ratio D/2h of an elliptical head", {}, 0, 2},
    {"h", NUMBER, at(N::h), diameter, "inside depth of an elliptical head, in place of k"},
    {"corroded_K", NUMBER, at(N::corroded_K), flag,
     "K of an elliptical head by its corroded shape"},
    {"L", NUMBER, at(N::L), diameter, "inside crown radius of a torispherical head"},
    {"r", NUMBER, at(N::r), diameter,
     "inside knuckle radius of a torispherical head, or of a cone"},
    {"straight", NUMBER, at(N::straight), thickness,
     "length of the straight flange of a head, for its surface"},
    {"skip_1_4f", NUMBER, at(N::skip_1_4f), flag, "no Appendix 1-4(f)"},
    {"temp_limit",
     NUMBER,
     at(N::temp_limit),
     temperature,
     "temperature limit of Table 1-4.3 for the material; a note tells when T is not below it",
     {},
     0,
     1.0e9},
    {"alpha", NUMBER, at(N::alpha), number, "half apex angle of a cone, degrees"},
    {"D_small", NUMBER, at(N::D_small), diameter,
     "diameter of the small end of a cone, for its forming strain and external pressure"},
    {"tk", NUMBER, at(N::tk), thickness, "thickness of the knuckle of a cone"},
    {"C", NUMBER, at(N::C), number, "attachment factor of a flat head"},
    {"D2", NUMBER, at(N::D2), diameter, "second span of a non-circular flat head"},
    // ---- external pressure: the keys of an [[external]] -----------------------------------------
    {"external", NUMBER, at(N::external), flag,
     "external pressure too, as an [[external]]; true when P_external is given"},
    {"P_external",
     NUMBER,
     at(N::P_external),
     pressure,
     "external design pressure",
     {},
     0,
     0,
     "external"},
    {"chart",
     TEXT,
     at(ShellText::chart),
     text,
     "external pressure chart; else the material's",
     {},
     8},
    {"method", NUMBER, at(N::method), choice, "method of external pressure", EXTERNAL_METHODS},
    {"table_g", NUMBER, at(N::table_g), flag, "factor A from Table G"},
    {"length", NUMBER, at(N::length), diameter,
     "stiffened length of a cylinder or cone under external pressure"},
    {"cone_length", NUMBER, at(N::cone_length), diameter,
     "axial length of a cone under external pressure"},
    // ---- openings of a flat head -------------------------------------------------------------
    {"openings", NUMBER, at(N::openings), flag,
     "openings in the flat head by UG-39; true when one of their keys is given"},
    {"d1", NUMBER, at(N::d1), diameter, "diameter of the first opening", {}, 0, 0, "openings"},
    {"d2", NUMBER, at(N::d2), diameter, "diameter of the second opening", {}, 0, 0, "openings"},
    {"edge1",
     NUMBER,
     at(N::edge1),
     diameter,
     "distance of the first opening to the edge",
     {},
     0,
     0,
     "openings"},
    {"edge2",
     NUMBER,
     at(N::edge2),
     diameter,
     "distance of the second opening to the edge",
     {},
     0,
     0,
     "openings"},
    {"pitch", NUMBER, at(N::pitch), diameter, "spacing of the openings", {}, 0, 0, "openings"},
    {"attachment",
     NUMBER,
     at(N::attachment),
     whole,
     "how the head is attached; 1, 2 and 5 to 8 limit the doubled C to 0.50, others to 0.75",
     {},
     0,
     0,
     "openings"},
};

constexpr Synonym SYNONYMS[] = {{"name", "description"},
                                {"type", "kind"},
                                {"e", "t"},
                                {"tn", "t"},
                                {"ca", "ci"},
                                {"Di", "D"},
                                {"ID", "D"},
                                {"OD", "Do"},
                                {"f", "S"},
                                {"fa", "Sa"},
                                {"z", "E"},
                                {"Rc", "L"},
                                {"Ri", "L"},
                                {"IKR", "r"},
                                {"rk", "r"},
                                {"a", "alpha"},
                                {"angle", "alpha"},
                                {"UT", "Ut"},
                                {"mill_tolerance", "Ut"},
                                {"joint_efficiency", "E"},
                                {"modulus", "material_class"}};

constexpr Alias ALIASES[] = {{"c", "ci", Shared::other, Shared::both}};

constexpr KeyTable TABLE{KEYS, SYNONYMS, ALIASES};

} // namespace

const KeyTable& shell_keys() { return TABLE; }

} // namespace tarvane::vessel
