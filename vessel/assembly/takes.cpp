#include "assembly/takes.h"

#include "assembly/place.h"
#include "components/flange_input.h"
#include "components/flange_session.h"
#include "components/mdmt_input.h"
#include "components/shell_input.h"
#include "components/shell_session.h"
#include "document/results.h"
#include "tarvane/tarvane.h"

#include <algorithm>
#include <cmath>

namespace tarvane::vessel {

namespace {

using S = ShellNumber;

const ShellInput& shell_of(const Element& element) {
    return static_cast<const ShellInput&>(element);
}
const FlangeInput& flange_of(const Element& element) {
    return static_cast<const FlangeInput&>(element);
}

// Values on their way from one component to another.
class Taker {
  public:
    Taker(Element& taker, Reading& into, const Element& giver)
        : to(taker), reading(into), from(giver), origin(name_of(giver)) {}

    bool own(std::string_view key) const { return reading.own(key); }
    void number(std::string_view key, float value) const {
        if (own(key)) return;
        to.put_number(*to.kind->keys.find(key), value);
        reading.supply(key, origin);
    }
    void text(std::string_view key, const std::string& western) const {
        if (own(key)) return;
        to.put_text(*to.kind->keys.find(key), western);
        reading.supply(key, origin);
    }
    // Keys that the other one was given, by the same names.
    void given(std::initializer_list<std::string_view> keys) const {
        for (const std::string_view key : keys) {
            if (from.origins.at(key).given.null()) continue;
            const Key& theirs = *from.kind->keys.find(key);
            if (is_text_key(theirs))
                text(key, from.text_of(theirs));
            else
                number(key, from.number_of(theirs));
        }
    }
    void fault(std::string_view key, std::string message) const {
        reading.fault(key, std::move(message));
    }
    const std::string& name() const { return origin; }

  private:
    Element& to;
    Reading& reading;
    const Element& from;
    std::string origin;

    static bool is_text_key(const Key& key) {
        return key.quantity == Quantity::text || key.quantity == Quantity::designation;
    }
};

bool is_cylinder(const Element& element) {
    return element.kind == &SHELL_KIND && shell_of(element).shape() == TARVANE_CYLINDER;
}

void take_elevation(const Taker& taker, std::optional<float> elevation) {
    if (elevation) taker.number("elevation", *elevation);
}

// ---- the links -------------------------------------------------------------------------------------------

bool upright(int end) { return end == END_TOP || end == END_BOTTOM; }

// A cylinder has two ends, both of a vessel that stands or both of one that lies.
void check_ends(const ShellInput& head, Reading& reading, const Request& request) {
    const int end = head.whole_setting(S::end);
    if (!reading.sound("end")) return;
    const Key& key = *shell_keys().find("end");
    for (const auto& element : request.elements) {
        if (element == nullptr || element->kind != &SHELL_KIND) continue;
        const ShellInput& other = shell_of(*element);
        const int theirs = other.whole_setting(S::end);
        if (other.number >= head.number ||
            other.text_setting(ShellText::on) != head.text_setting(ShellText::on) || theirs == 0)
            continue;
        const std::string name(choice_name(key.choices, end));
        if (theirs == end)
            reading.fault("end", name_of(other) + " is at the " + name + " end already");
        else if (upright(theirs) != upright(end))
            reading.fault("end", name_of(other) + " is at the " +
                                     std::string(choice_name(key.choices, theirs)) +
                                     " end: the other one is not at the " + name);
    }
}

void take_from_shell(ShellInput& head, Reading& reading, const Taker& taker, const Element& from) {
    if (!is_cylinder(from)) {
        taker.fault("on", "a cylinder is expected, and " + taker.name() + " is not one");
        return take_nothing("on", head, reading);
    }
    const ShellInput& shell = shell_of(from);
    if (!taker.own("D") && !taker.own("Do")) {
        const bool flat = head.shape() == TARVANE_FLAT_HEAD;
        if (shell.outside() && !flat)
            taker.number("Do", shell.diameter());
        else
            taker.number("D", inside_diameter(shell));
    }
    if (!taker.own("material"))
        taker.given(
            {"material", "material_reference", "S", "Sa", "Sy", "Sy_cold", "material_class"});
    take_elevation(taker, elevation_at_end(head, shell));
}

void take_from_neck(FlangeInput& flange, Reading& reading, const Taker& taker,
                    const Element& from) {
    const bool blind = flange.type() == TARVANE_BLIND;
    if (blind || !is_cylinder(from)) {
        taker.fault("attached_to",
                    blind ? "a blind flange is bolted to its mate; mates_with names that"
                          : "a cylinder is expected, and " + taker.name() + " is not one");
        return take_nothing("attached_to", flange, reading);
    }
    const ShellInput& neck = shell_of(from);
    const float t = neck.setting(S::t), bore = inside_diameter(neck);
    const bool standard = reading.own("standard.class") || reading.own("standard.size");
    const bool weld_neck = flange.type() == TARVANE_INTEGRAL_WELD_NECK;
    if (weld_neck && standard) taker.number("standard.wall", t);
    if (weld_neck && !standard) taker.number("g0", t);
    if ((weld_neck || flange.type() == TARVANE_INTEGRAL_RING) && !standard) taker.number("B", bore);
    taker.number("tShell", t);
    taker.number("Dshell", bore);
    taker.number("caShell", neck.setting(S::ci));
    taker.number("Sn", neck.setting(S::S));
    taker.number("Sna", neck.setting(S::Sa));
    taker.number("ci", neck.setting(S::ci));
    taker.number("E", neck.setting(S::E));
    take_elevation(taker, elevation_of(neck));
}

// Rated flanges share what names their rating. The loads of others are those of the pair (assembly/mates).
void take_from_mate(const FlangeInput& flange, Reading& reading, const Taker& taker,
                    const Element& from) {
    const FlangeInput& mate = flange_of(from);
    take_elevation(taker, elevation_of(mate));
    if (flange.rated() != mate.rated()) {
        taker.fault("mates_with", "a flange of kind \"rated\" and one of another kind have no "
                                  "loads in common; " +
                                      taker.name() + (mate.rated() ? " is rated" : " is not"));
        return take_nothing("mates_with", flange, reading);
    }
    if (!flange.rated()) return;
    for (const std::string_view key : {"standard.class", "standard.size"}) {
        const std::string text = mate.text_of(*flange_keys().find(key));
        if (!text.empty()) taker.text(key, text);
    }
    if (taker.own("rating")) return; // of another material, then
    for (const auto& [key, setting] :
         {std::pair("rating", Setting::rating), {"rating_cold", Setting::rating_cold}}) {
        if (mate.setting(setting) > 0.0f) taker.number(key, mate.setting(setting));
    }
}

// ---- metal temperatures ------------------------------------------------------------------------------------

// The governing thickness of a flat head is the greater one of its weld and a quarter of its own, UCS-66(a).
// Without a shell the weld is not known. Its ratio is that of the pressures: it is not under membrane stress.
void take_flat_head(const ShellInput& head, const Taker& taker) {
    const TARVANE_SHELL_RESULTS found = look_at(head);
    if (found.mawp > 0.0f && !taker.own("tr"))
        taker.number("ratio", std::min(head.setting(S::P) / found.mawp, 1.0f));
}

void take_of_shell(const ShellInput& part, const Taker& taker) {
    const float t = part.setting(S::t), Ut = part.setting(S::Ut);
    if (part.shape() == TARVANE_FLAT_HEAD) {
        take_flat_head(part, taker);
    } else {
        taker.number("tg", t);
        if (Ut > 0.0f) taker.number("tg_sr", t - Ut);
        const TARVANE_SHELL_RESULTS found = look_at(part);
        if (found.t_governing > 0.0f && !taker.own("ratio")) taker.number("tr", found.t_governing);
    }
    taker.number("ci", part.setting(S::ci));
    taker.number("E", part.setting(S::E));
    if (!taker.own("material")) {
        if (!part.material().empty()) taker.text("material", part.material());
        if (!part.origins.at("material_reference").given.null())
            taker.number("material_reference", part.setting(S::material_reference));
    }
}

// UCS-66(a): of the weld at the neck; of what is only bolted a quarter of the thickness.
std::optional<float> governing_thickness(const FlangeInput& flange) {
    const float t = flange.record[TARVANE_t], g0 = flange.record[TARVANE_go],
                wall = flange.record[TARVANE_SHELL_THICKNESS];
    switch (flange.type()) {
    case TARVANE_BLIND:
    case TARVANE_LAP_JOINT:
        return t / 4.0f;
    case TARVANE_INTEGRAL_WELD_NECK:
    case TARVANE_REVERSE_WELD_NECK:
        return g0 > 0.0f ? std::optional(std::max(g0, wall)) : std::nullopt;
    default:
        return wall > 0.0f ? std::optional(std::min(t, wall)) : std::nullopt;
    }
}

// Of the pressure to the greatest one that the flange holds cold: it is not under membrane stress, UCS-66(b). A
// rating at the design temperature is not above that.
std::optional<float> pressure_ratio(const FlangeInput& flange, const Request& request) {
    const float P = flange.record[TARVANE_P], rating = flange.setting(Setting::rating);
    if (flange.rated())
        return rating > 0.0f ? std::optional(std::min(std::abs(P) / rating, 1.0f)) : std::nullopt;
    const FlangeOutcome outcome = run_flange(flange, without_report(request));
    RESET_ENGINE();
    const float ratio = outcome.found.stress_ratio;
    const bool found = !outcome.stopped && !outcome.refused() && ratio != TARVANE_NO_VALUE;
    return found && ratio > 0.0f ? std::optional(ratio) : std::nullopt;
}

// By ASME B16.5 or B16.47, but for the bore and the face, which are ordered.
bool is_as_the_standard(const FlangeInput& flange) {
    constexpr std::string_view OWN[] = {"A", "t", "g1", "h", "C", "a", "n"};
    const bool judged_as_given = flange.rated() || flange.analysis() == TARVANE_ANALYSE;
    return judged_as_given && flange.standard().starts_with("ASME B16") &&
           std::none_of(std::begin(OWN), std::end(OWN),
                        [&](std::string_view key) { return flange.gives(key); });
}

void take_of_flange(const FlangeInput& part, const Taker& taker, const Request& request) {
    if (const auto tg = governing_thickness(part)) taker.number("tg", *tg);
    if (!taker.own("tr")) {
        if (const auto ratio = pressure_ratio(part, request)) taker.number("ratio", *ratio);
    }
    taker.number("ci", part.record[TARVANE_ci]);
    taker.number("ce", part.record[TARVANE_ce]);
    if (is_as_the_standard(part)) taker.number("ucs66c", 1.0f);
    if (taker.own("material")) return;
    const std::string material = part.text_of(*flange_keys().find("material"));
    if (!material.empty()) taker.text("material", material);
    if (!part.origins.at("material_reference").given.null())
        taker.number("material_reference", part.setting(Setting::material_reference));
}

} // namespace

void take_over(std::string_view link, Element& to, Reading& reading, const Element& from,
               const Request& request) {
    const Taker taker(to, reading, from);
    if (link == "on") {
        take_from_shell(static_cast<ShellInput&>(to), reading, taker, from);
        check_ends(static_cast<ShellInput&>(to), reading, request);
    } else if (link == "attached_to") {
        take_from_neck(static_cast<FlangeInput&>(to), reading, taker, from);
    } else if (link == "mates_with") {
        take_from_mate(static_cast<FlangeInput&>(to), reading, taker, from);
    } else if (from.kind == &SHELL_KIND) {
        take_of_shell(shell_of(from), taker);
    } else {
        take_of_flange(flange_of(from), taker, request);
    }
}

void take_nothing(std::string_view link, const Element& to, Reading& reading) {
    struct Given {
        std::string_view link, keys[4];
    };
    constexpr Given GIVEN[] = {{"on", {"D", "S", "Sa", "elevation"}},
                               {"attached_to", {"B", "g0", "elevation"}},
                               {"mates_with", {"elevation"}},
                               {"of", {"tg", "curve"}}};
    for (const Given& given : GIVEN) {
        if (given.link != link) continue;
        for (const std::string_view key : given.keys) {
            const bool other = key == "D" && reading.given("Do");
            if (!key.empty() && !other && !reading.given(key) && to.kind->keys.find(key) != nullptr)
                reading.supply(key, std::string(link));
        }
    }
}

// ---- liquid ----------------------------------------------------------------------------------------------

float Liquid::head_at(float elevation) const { return density * std::max(level - elevation, 0.0f); }

void add_head(const Liquid& liquid, Element& to, Reading& reading) {
    const Key* P = to.kind->keys.find("P");
    const Key* elevation = to.kind->keys.find("elevation");
    if (P == nullptr || elevation == nullptr || !reading.given("P")) return;
    if (!reading.given("elevation")) {
        reading.fault("elevation", "missing in " + name_of(to) + "; with liquid in the vessel " +
                                       expected(*elevation, reading.units) + " is expected (" +
                                       std::string(elevation->meaning) + ")");
        return;
    }
    if (!reading.sound("P") || !reading.sound("elevation")) return;
    const float head = liquid.head_at(to.number_of(*elevation));
    if (!(head > 0.0f)) return;
    to.liquid_head = head;
    if (reading.own("P")) return;
    to.put_number(*P, to.number_of(*P) + head);
    reading.adds("P", shown(head, Quantity::pressure, reading.units) + " of liquid");
}

} // namespace tarvane::vessel
