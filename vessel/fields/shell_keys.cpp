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

constexpr Choice ENDS[] = {
    {"top", END_TOP}, {"bottom", END_BOTTOM}, {"left", END_LEFT}, {"right", END_RIGHT}};

constexpr int at(ShellNumber number) { return static_cast<int>(number); }
constexpr int at(ShellText text) { return static_cast<int>(text); }

using enum Quantity;
using N = ShellNumber;

constexpr Place NUMBER = Place::setting, TEXT = Place::text_setting;

constexpr Key KEYS[] = {
    // ---- the element -------------------------------------------------------------------------
    Key{"description", TEXT, at(ShellText::description), text, "description of the element",
        "Description"}
        .label("Description")
        .up_to(MOST_DESCRIPTION),
    Key{"waive", TEXT, at(ShellText::waive), waivers,
        "checks that are waived; the verdict names them"}
        .label("Waived checks"),
    Key{"kind", NUMBER, at(N::kind), choice, "kind of shell or head"}
        .of(KINDS)
        .to("SHLINT element")
        .needs(),
    Key{"code", NUMBER, at(N::code), choice, "design code"}.of(CODES).otherwise(1).to(
        "SET_MODULE_CODE"),
    Key{"edition", NUMBER, at(N::edition), choice,
        "edition of the code; older for formed heads by VIII-2, AD-204"}
        .label("Edition of the code")
        .of(EDITIONS),
    // ---- design conditions -------------------------------------------------------------------
    Key{"P", NUMBER, at(N::P), pressure, "internal design pressure", "P"}.to("SHLINT P").needs(),
    Key{"T", NUMBER, at(N::T), temperature, "design temperature"}.to("SHLINT temp").needs(),
    Key{"ci", NUMBER, at(N::ci), thickness, "internal corrosion allowance", "c"}.to("SHLINT c"),
    Key{"Ut", NUMBER, at(N::Ut), thickness, "mill under-tolerance", "Ut"}.to("SHLINT Ut"),
    Key{"E", NUMBER, at(N::E), number, "joint efficiency", "E"}.otherwise(1).shows(3).to(
        "SHLINT E"),
    Key{"service", NUMBER, at(N::service), choice, "service, for the minimum thickness of UG-16(b)"}
        .label("Service")
        .of(SERVICES)
        .to("SHLINT service"),
    // ---- material ----------------------------------------------------------------------------
    Key{"material", TEXT, at(ShellText::material), text, "material"}.up_to(40).to("SHLINT name"),
    Key{"material_reference", NUMBER, at(N::material_reference), whole,
        "reference number of the material, where several have its name"}
        .label("Reference of the material")
        .to("FORMING_STRAIN reference"),
    Key{"S", NUMBER, at(N::S), stress, "allowable stress at design temperature", "S"}
        .to("SHLINT S")
        .needs(),
    Key{"Sa", NUMBER, at(N::Sa), stress, "allowable stress at ambient temperature", "Sa"}
        .to("SHLINT Sa")
        .needs(),
    Key{"Sy", NUMBER, at(N::Sy), stress,
        "yield stress at design temperature, for thin heads by Appendix 1-4(f)", "Sy"}
        .label("Yield stress at design temperature")
        .to("SHLINT Sy")
        .needs(by_rule("buckling_yield")),
    Key{"Sy_cold", NUMBER, at(N::Sy_cold), stress,
        "yield stress at ambient temperature; Sy when it is not given", "Syc"}
        .label("Yield stress at ambient temperature")
        .reads(among("kind", {2, 3}))
        .to("SHLINT Sy_cold"),
    Key{"material_class", NUMBER, at(N::material_class), whole,
        "reference number of the elastic modulus table"}
        .label("Elastic modulus table")
        .otherwise(1)
        .to("SHLINT material"),
    // ---- dimensions --------------------------------------------------------------------------
    Key{"D", NUMBER, at(N::D), diameter, "inside diameter; flat head: diameter or one span", "D"}
        .label("Inside diameter")
        .to("SHLINT D")
        .needs(not_given("Do")),
    Key{"Do", NUMBER, at(N::Do), diameter, "outside diameter, instead of D", "Do"}
        .label("Outside diameter")
        .to("SHLINT D"),
    Key{"t", NUMBER, at(N::t), thickness, "nominal thickness", "t"}.to("SHLINT t").needs(),
    Key{"k", NUMBER, at(N::k), number, "aspect ratio D/2h of an elliptical head", "k"}
        .label("Aspect ratio D/2h")
        .otherwise(2)
        .reads(among("kind", {2}))
        .shows(3)
        .to("SHLINT k"),
    Key{"h", NUMBER, at(N::h), diameter, "inside depth of an elliptical head, instead of k"}
        .label("Inside depth")
        .reads(among("kind", {2})),
    Key{"corroded_K", NUMBER, at(N::corroded_K), flag,
        "K of an elliptical head by its corroded shape"}
        .label("K by the corroded shape")
        .reads(among("kind", {2}))
        .to("SHLINT corroded_k"),
    Key{"L", NUMBER, at(N::L), diameter, "inside crown radius of a torispherical head", "L"}
        .label("Inside crown radius")
        .reads(among("kind", {3}))
        .to("SHLINT L")
        .needs(),
    Key{"r", NUMBER, at(N::r), diameter,
        "inside knuckle radius of a torispherical head, or of a cone", "r"}
        .label("Inside knuckle radius")
        .reads(among("kind", {3, 5}))
        .to("SHLINT r")
        .needs(by_rule("knuckle")),
    Key{"straight", NUMBER, at(N::straight), thickness,
        "length of the straight flange of a head, for its surface"}
        .label("Straight flange")
        .reads(among("kind", {2, 3, 4}))
        .to("FORMING_STRAIN straight"),
    Key{"strain_limit", NUMBER, at(N::strain_limit), number,
        "greatest forming strain that the material takes without heat treatment, per cent; "
        "UCS-79(d): 5"}
        .label("Limit of the forming strain"),
    Key{"skip_1_4f", NUMBER, at(N::skip_1_4f), flag,
        "no Appendix 1-4(f); the same as waive = [\"head_1_4f\"]"}
        .label("No Appendix 1-4(f)")
        .reads(among("kind", {2, 3}))
        .to("SHLINT skip14f"),
    Key{"temp_limit", NUMBER, at(N::temp_limit), temperature,
        "temperature limit of Table 1-4.3 for the material; a note says when T is not below it"}
        .label("Temperature limit of Table 1-4.3")
        .otherwise(1.0e9)
        .reads(among("kind", {2, 3}))
        .to("SHELL_REPORT temp_limit"),
    Key{"alpha", NUMBER, at(N::alpha), number, "half apex angle of a cone, degrees", "alpha"}
        .label("Half apex angle")
        .reads(among("kind", {5}))
        .shows(4)
        .to("SHLINT alpha")
        .needs(),
    Key{"Dsmall", NUMBER, at(N::Dsmall), diameter,
        "diameter of the small end of a cone, for its forming strain and external pressure", "Ds"}
        .label("Inside diameter of the small end")
        .reads(among("kind", {5}))
        .to("FORMING_STRAIN D_small")
        .needs(on("external")),
    Key{"tk", NUMBER, at(N::tk), thickness, "thickness of the knuckle of a cone", "tk"}
        .label("Knuckle thickness")
        .reads(among("kind", {5}))
        .to("SHLINT k")
        .needs(given("r")),
    Key{"C", NUMBER, at(N::C), number, "attachment factor of a flat head", "C"}
        .label("Attachment factor")
        .reads(among("kind", {6}))
        .shows(3)
        .to("SHLINT C")
        .needs(),
    Key{"D2", NUMBER, at(N::D2), diameter, "second span of a non-circular flat head"}
        .label("Second span")
        .reads(among("kind", {6}))
        .to("SHLINT D2"),
    // ---- external pressure: the keys of an [[external]] -----------------------------------------
    Key{"external", NUMBER, at(N::external), flag,
        "external pressure too, as an [[external]]; true when P_external is given"}
        .label("External pressure too"),
    Key{"P_external", NUMBER, at(N::P_external), pressure, "external design pressure", "P"}
        .opens("external")
        .reads(on("external") && among("kind", {1, 2, 3, 4, 5}))
        .to("SHLEXT p")
        .needs(),
    Key{"chart", TEXT, at(ShellText::chart), text, "external pressure chart; else the material's"}
        .label("External pressure chart")
        .up_to(8)
        .reads(on("external") && among("kind", {1, 2, 3, 4, 5}))
        .to("SHLEXT chart")
        .needs(),
    Key{"method", NUMBER, at(N::method), choice, "method of external pressure"}
        .label("Method of external pressure")
        .of(EXTERNAL_METHODS)
        .reads(on("external") && among("kind", {1, 2, 3, 4, 5}))
        .to("SET_GLOBALS_FROM_TVN use_case_2286"),
    Key{"table_g", NUMBER, at(N::table_g), flag, "factor A from Table G"}
        .reads(on("external") && among("kind", {1, 5}))
        .to("SET_GLOBALS_FROM_TVN use_table_g"),
    Key{"length", NUMBER, at(N::length), diameter,
        "stiffened length of a cylinder or cone under external pressure, UG-28(b); a third of the "
        "depth of each formed head counts",
        "L"}
        .label("Stiffened length")
        .reads(on("external") && among("kind", {1, 5}))
        .to("SHLEXT length")
        .needs(among("kind", {1})),
    Key{"cone_length", NUMBER, at(N::cone_length), diameter,
        "axial length of a cone under external pressure", "Lc"}
        .label("Axial length of a cone")
        .reads(on("external") && among("kind", {5}))
        .to("SHLEXT cone_length")
        .needs(),
    // ---- place in the vessel -----------------------------------------------------------------
    Key{"on", TEXT, at(ShellText::on), text,
        "description of the cylinder that the head closes; it gives diameter, material and place"}
        .label("Cylinder that it closes")
        .up_to(MOST_DESCRIPTION),
    Key{"end", NUMBER, at(N::end), choice, "end of the cylinder that the head closes"}
        .label("End of the cylinder")
        .of(ENDS)
        .reads(given("on"))
        .needs(),
    Key{"tangent_length", NUMBER, at(N::tangent_length), diameter,
        "length of a cylinder from head to head, for the places of what is on it; the stiffened "
        "length when it is not given"}
        .label("Length from head to head")
        .reads(among("kind", {1})),
    Key{"elevation", NUMBER, at(N::elevation), diameter,
        "elevation of the lowest point inside, for the head of the liquid; with on: that of the "
        "end"}
        .label("Elevation"),
    // ---- openings of a flat head -------------------------------------------------------------
    Key{"openings", NUMBER, at(N::openings), flag,
        "openings in the flat head by UG-39; true when one of their keys is given"}
        .label("Openings in the flat head")
        .reads(among("kind", {6})),
    Key{"d1", NUMBER, at(N::d1), diameter, "diameter of the first opening", "d1"}
        .opens("openings", among("kind", {6}))
        .to("SHLINT d1")
        .needs(),
    Key{"d2", NUMBER, at(N::d2), diameter, "diameter of the second opening", "d2"}
        .opens("openings", among("kind", {6}))
        .to("SHLINT d2"),
    Key{"edge1", NUMBER, at(N::edge1), diameter, "distance of the first opening to the edge", "e1"}
        .opens("openings", among("kind", {6}))
        .to("SHLINT edge1")
        .needs(),
    Key{"edge2", NUMBER, at(N::edge2), diameter, "distance of the second opening to the edge", "e2"}
        .opens("openings", among("kind", {6}))
        .to("SHLINT edge2")
        .needs(by_rule("second_opening")),
    Key{"pitch", NUMBER, at(N::pitch), diameter, "spacing of the openings", "p"}
        .opens("openings", among("kind", {6}))
        .to("SHLINT pitch")
        .needs(by_rule("second_opening")),
    Key{"attachment", NUMBER, at(N::attachment), whole,
        "how the head is attached; 1, 2 and 5 to 8 limit the doubled C to 0.50, others to 0.75"}
        .label("Attachment of the head")
        .opens("openings", among("kind", {6}))
        .to("SHLINT opening_material"),
};

constexpr KeySection SECTIONS[] = {{"description", "Element"},        {"P", "Design conditions"},
                                   {"material", "Material"},          {"D", "Dimensions"},
                                   {"external", "External pressure"}, {"on", "Place in the vessel"},
                                   {"openings", "Openings"}};

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

constexpr Alias ALIASES[] = {{"c", "ci", Shared::other, Shared::both},
                             {"D_small", "Dsmall", Shared::other, Shared::both}};

constexpr Rule RULES[] = {
    {"buckling_yield",
     "external pressure by buckling stress, or by a chart that depends on the yield stress"},
    {"knuckle", "kind is \"torispherical\", or it is \"cone\" and tk is given"},
    {"second_opening", "d2 is above 0"}};

constexpr Unheeded UNHEEDED[] = {EXTERNAL_CORROSION};

constexpr KeyTable TABLE{.keys = KEYS,
                         .sections = SECTIONS,
                         .synonyms = SYNONYMS,
                         .aliases = ALIASES,
                         .rules = RULES,
                         .unheeded = UNHEEDED};

} // namespace

const KeyTable& shell_keys() { return TABLE; }

} // namespace tarvane::vessel
