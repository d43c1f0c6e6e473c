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
    Key{"description", TEXT, at(ExternalText::description), text, "description of the element",
        "Description"}
        .label("Description")
        .up_to(MOST_DESCRIPTION),
    Key{"waive", TEXT, at(ExternalText::waive), waivers,
        "checks that are waived; the verdict names them"}
        .label("Waived checks"),
    Key{"kind", NUMBER, at(N::kind), choice, "kind of shell or head"}
        .of(KINDS)
        .to("SHLEXT element")
        .needs(),
    Key{"code", NUMBER, at(N::code), choice, "design code"}.of(CODES).otherwise(1).to(
        "SET_MODULE_CODE"),
    Key{"edition", NUMBER, at(N::edition), choice, "edition of the code; older for VIII-2"}
        .label("Edition of the code")
        .of(EDITIONS)
        .to("SET_GLOBALS_FROM_TVN use_old_div_2"),
    Key{"method", NUMBER, at(N::method), choice,
        "by the charts, or by buckling stress (Code Case 2286; VIII-2, 4.4); code: as the code has "
        "it"}
        .label("Method")
        .of(EXTERNAL_METHODS)
        .to("SET_GLOBALS_FROM_TVN use_case_2286"),
    Key{"table_g", NUMBER, at(N::table_g), flag,
        "factor A of a cylinder or cone from Table G, where the data files have it"}
        .label("Table G")
        .reads(among("kind", {1, 5}))
        .to("SET_GLOBALS_FROM_TVN use_table_g"),
    // ---- design conditions -------------------------------------------------------------------
    Key{"P_external", NUMBER, at(N::P), pressure,
        "external design pressure; 0: only the allowable one is calculated", "P"}
        .label("External design pressure")
        .to("SHLEXT p")
        .needs(),
    Key{"T", NUMBER, at(N::T), temperature, "design temperature"}.to("SHLEXT temp").needs(),
    Key{"ci", NUMBER, at(N::ci), thickness, "internal corrosion allowance", "c"}.to("SHLEXT c"),
    Key{"Ut", NUMBER, at(N::Ut), thickness, "mill under-tolerance", "Ut"}.to("SHLEXT ut"),
    Key{"service", NUMBER, at(N::service), choice, "service, for the minimum thickness of UG-16(b)"}
        .label("Service")
        .of(SERVICES)
        .to("SHLEXT service"),
    // ---- material ----------------------------------------------------------------------------
    Key{"material", TEXT, at(ExternalText::material), text,
        "material; the material files give what the file leaves out"}
        .label("Material")
        .up_to(16),
    Key{"material_reference", NUMBER, at(N::material_reference), whole,
        "reference number of the material, where a name has several"}
        .label("Reference of the material"),
    Key{"chart", TEXT, at(ExternalText::chart), text, "external pressure chart, as CS-2"}
        .label("External pressure chart")
        .up_to(8)
        .to("SHLEXT chart")
        .needs(),
    Key{"S", NUMBER, at(N::S), stress,
        "allowable stress in tension; cylinders and cones by the charts, cones above 60 degrees, "
        "UG-33(a)(1)",
        "S"}
        .label("Allowable stress in tension")
        .to("SHLEXT s")
        .needs(by_rule("tension")),
    Key{"Sy", NUMBER, at(N::Sy), stress,
        "yield stress at design temperature; buckling stress, charts that depend on it, thin heads",
        "Sy"}
        .label("Yield stress at design temperature")
        .to("SHLEXT fy")
        .needs(by_rule("buckling_yield")),
    Key{"material_class", NUMBER, at(N::material_class), whole,
        "reference number of the elastic modulus table, for buckling stress and thin heads"}
        .label("Elastic modulus table")
        .otherwise(1)
        .to("SHLEXT material"),
    // ---- dimensions --------------------------------------------------------------------------
    Key{"D", NUMBER, at(N::D), diameter, "inside diameter; cone: of the large end", "D"}
        .label("Inside diameter")
        .to("SHLEXT d")
        .needs(not_given("Do") && among("kind", {1, 2, 4, 5})),
    Key{"Do", NUMBER, at(N::Do), diameter, "outside diameter, instead of D", "Do"}
        .label("Outside diameter")
        .to("SHLEXT d"),
    Key{"t", NUMBER, at(N::t), thickness, "nominal thickness", "t"}.to("SHLEXT t").needs(),
    Key{"length", NUMBER, at(N::length), diameter,
        "stiffened length of a cylinder or cone; cone: by UG-33(f) when it is not given", "L"}
        .label("Stiffened length")
        .reads(among("kind", {1, 5}))
        .to("SHLEXT length")
        .needs(among("kind", {1})),
    Key{"k", NUMBER, at(N::k), number, "aspect ratio D/2h of an elliptical head", "k"}
        .label("Aspect ratio D/2h")
        .otherwise(2)
        .reads(among("kind", {2}))
        .shows(3)
        .to("SHLEXT k"),
    Key{"h", NUMBER, at(N::h), diameter, "inside depth of an elliptical head, instead of k"}
        .label("Inside depth")
        .reads(among("kind", {2})),
    Key{"corroded_K", NUMBER, at(N::corroded_K), flag,
        "K of an elliptical head by its corroded shape, for UG-33(a)(1)"}
        .label("K by the corroded shape")
        .reads(among("kind", {2}))
        .to("SHLINT corroded_k"),
    Key{"L", NUMBER, at(N::L), diameter, "inside crown radius of a torispherical head", "L"}
        .label("Inside crown radius")
        .reads(among("kind", {3}))
        .to("SHLEXT l")
        .needs(),
    Key{"r", NUMBER, at(N::r), diameter,
        "inside knuckle radius of a torispherical head, for UG-33(a)(1)", "r"}
        .label("Inside knuckle radius")
        .reads(among("kind", {3}))
        .to("SHLINT r"),
    Key{"skip_1_4f", NUMBER, at(N::skip_1_4f), flag,
        "no Appendix 1-4(f) for UG-33(a)(1); the same as waive = [\"convex_1_4f\"]"}
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
        .to("SHLEXT alpha")
        .needs(),
    Key{"Dsmall", NUMBER, at(N::Dsmall), diameter, "inside diameter of the small end of a cone",
        "Ds"}
        .label("Inside diameter of the small end")
        .reads(among("kind", {5}))
        .to("SHLEXT d_small")
        .needs(),
    Key{"cone_length", NUMBER, at(N::cone_length), diameter, "axial length of a cone", "Lc"}
        .reads(among("kind", {5}))
        .to("SHLEXT cone_length")
        .needs(),
};

constexpr KeySection SECTIONS[] = {{"description", "Element"},
                                   {"P_external", "Design conditions"},
                                   {"material", "Material"},
                                   {"D", "Dimensions"}};

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

constexpr Rule RULES[] = {
    {"tension", "a cylinder or cone by the charts, or a cone above 60 degrees"},
    {"buckling_yield", "by buckling stress, or by a chart that depends on the yield stress"}};

constexpr Unheeded UNHEEDED[] = {EXTERNAL_CORROSION};

constexpr KeyTable TABLE{.keys = KEYS,
                         .sections = SECTIONS,
                         .synonyms = SYNONYMS,
                         .aliases = ALIASES,
                         .rules = RULES,
                         .unheeded = UNHEEDED};

} // namespace

const KeyTable& external_keys() { return TABLE; }

} // namespace tarvane::vessel
