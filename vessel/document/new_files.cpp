#include "document/new_files.h"

#include <array>

namespace tarvane::vessel {

namespace {

constexpr std::array<std::string_view, 3> NEW_FILES{"flange", "heads", "drum"};

// {150|1.0}: the values of US and of SI units.
constexpr std::string_view HEAD = R"(tarvane = 1                 # form of this file
units = "{US|SI}"                # {in., psi, lbf, degrees F|mm, MPa, N, degrees C}; `tarvane keys` lists the unit of every key

)";

constexpr std::string_view FLANGE = R"([[flange]]
description = "N1 flange"
type = "weld neck"          # `tarvane explain type` lists the others
standard = { class = 300, size = 6 }    # A, B, C, t, hub, bolts; any key given here comes before it
material = "SA-105"         # allowable stresses, modulus and chart come from the material files
bolt_material = "SA-193 B7"
bolting = "TEMA"            # thread series
)";

constexpr std::string_view GASKET = R"(rigidity = true             # evaluate the rigidity index
# Face and gasket: spiral wound, on the raised face
Fid = {6.07|154.2}                  # inside diameter of the face
gasket = { Go = {8.25|209.5}, Gi = {7.19|182.6}, tg = {0.175|4.5}, m = 3, y = {10000|68.95}, facing = "1a" }
)";

constexpr std::string_view CONDITIONS =
    R"(P = {150|1.0}                     # internal design pressure, {psig|MPa}
T = {300|150}                     # design temperature, degrees {F|C}
ci = {0.125|3.0}                  # internal corrosion allowance
)";

constexpr std::string_view HEADS =
    R"([vessel]                    # applies to every component without its own
)";

constexpr std::string_view HEADS_MORE = R"(E = 0.85                    # joint efficiency
material = "SA-516 70"      # S, Sa, yield stresses and modulus come from the material files

[[shell]]
description = "Elliptical head"
kind = "elliptical"
D = {60|1500}                      # inside diameter; Do in its place: outside diameter
k = 2.0                     # D/2h
t = {0.625|16}                   # nominal thickness

[[shell]]
description = "Torispherical head"
kind = "torispherical"
D = {60|1500}
L = {60|1500}                      # inside crown radius
r = {4|100}                       # inside knuckle radius
t = {0.75|20}

[[shell]]
description = "Hemispherical head"
kind = "sphere"
D = {60|1500}
t = {0.375|10}
)";

constexpr std::string_view DRUM =
    R"([document]
project = "Project"
number = "V-101-C-001"
revision = "A"

[vessel]                    # applies to every component without its own
description = "V-101 knock-out drum"
code = "VIII-1"
P = {150|1.0}                     # at the top, {psig|MPa}; the head of the liquid is added by elevation
P_external = "full vacuum"
T = {300|150}                     # design temperature, degrees {F|C}
MDMT = {-20|-29}                  # every pressure part is checked for it
ci = {0.125|3.0}                  # internal corrosion allowance
E = 0.85                    # joint efficiency
material = "SA-516 70"      # S, Sa, yield stresses and modulus come from the material files
bolt_material = "SA-193 B7"
liquid = { density = "{62.4 lb/ft3|1000 kg/m3}", level = {90|2300} }    # level: elevation of the surface

[[shell]]
description = "Shell"
kind = "cylinder"
D = {60|1500}                      # inside diameter
t = {0.625|16}                   # nominal thickness
tangent_length = {150|3800}        # from head to head
length = {160|4050}                # stiffened, under vacuum: with a third of the depth of each head
elevation = 0               # of the lowest point

[[shell]]
description = "Top head"
kind = "elliptical"         # 2:1 without k = D/2h
on = "Shell"                # D, material, place
end = "top"
t = {0.625|16}

[[shell]]
description = "Bottom head"
kind = "elliptical"
on = "Shell"
end = "bottom"
t = {0.625|16}

[[shell]]
description = "N1 neck"
kind = "cylinder"
Do = {6.625|168.3}
t = {0.432|10.97}
length = {8|200}
material = "SA-106 B"
elevation = {40|1000}

[[flange]]
description = "N1 flange"
type = "weld neck"          # `tarvane explain type` lists the others
standard = { class = 300, size = 6 }    # A, B, C, t, hub, face, bolts; any key given here comes before it
attached_to = "N1 neck"     # wall, bore, allowable stresses, corrosion, elevation
material = "SA-105"
gasket = { type = "spiral wound, stainless", Go = {8.25|209.5}, Gi = {7.19|182.6}, tg = {0.175|4.5} }    # `tarvane gaskets`: m and y
rigidity = true             # evaluate the rigidity index

[[flange]]
description = "Manway flange"
type = "weld neck"
kind = "rated"              # by its rating, UG-44; no stresses
standard = { class = 150, size = 20, wall = {0.5|12.7} }
rating = {230|1.58}                # at T, {psig|MPa}
material = "SA-105"
elevation = {75|1900}

[[flange]]
description = "Manway cover"
type = "blind"
kind = "rated"
mates_with = "Manway flange"    # class, size, rating and elevation of its mate
material = "SA-105"
)";

std::string in_units(std::string_view text, bool si) {
    std::string out;
    while (true) {
        // Braces of inner tables have no bar before they close or open again.
        const std::size_t bar = text.find('|');
        if (bar == std::string_view::npos) return out.append(text);
        const std::size_t from = text.rfind('{', bar), to = text.find('}', bar);
        out.append(text.substr(0, from));
        out.append(si ? text.substr(bar + 1, to - bar - 1) : text.substr(from + 1, bar - from - 1));
        text.remove_prefix(to + 1);
    }
}

} // namespace

std::span<const std::string_view> new_file_names() { return NEW_FILES; }

std::string new_file(std::string_view name, bool si) {
    std::string text(HEAD);
    const auto add = [&](std::initializer_list<std::string_view> parts) {
        for (const std::string_view part : parts)
            text += part;
    };
    if (name == "flange") add({FLANGE, CONDITIONS, GASKET});
    if (name == "heads") add({HEADS, CONDITIONS, HEADS_MORE});
    if (name == "drum") add({DRUM});
    return in_units(text, si);
}

} // namespace tarvane::vessel
