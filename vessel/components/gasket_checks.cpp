#include "components/flange_checks.h"

#include "document/results.h"
#include "fields/flange_checks.h"
#include "tarvane/tarvane.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarvane::vessel {

namespace {

constexpr float GIVEN = 0.001f;         // a gasket factor or seating stress above it counts
constexpr float BEYOND_BOLTS = 0.0001f; // a gasket that reaches as far beyond is a full face one

consteval const CheckField& field(std::string_view id) { return field_of(FLANGE_CHECKS, id); }

std::string diameter(std::string_view name, float value, const UnitSystem& units) {
    return std::string(name) + ' ' + shown(value, Quantity::diameter, units);
}

std::string joined(const std::vector<std::string>& parts) {
    std::string text;
    for (const std::string& part : parts)
        text += (text.empty() ? "" : ", ") + part;
    return text;
}

// Diameters of face, gasket and bolt circle: those given, or those that a design selected.
struct Face {
    float Fod, Fid, Go, Gi, C;
};

std::optional<Face> face_of(const FlangeInput& flange, const FlangeOutcome& outcome) {
    if (flange.analysis() != TARVANE_DESIGN) {
        return Face{given(flange, TARVANE_Fod), given(flange, TARVANE_Fid),
                    given(flange, TARVANE_Go), given(flange, TARVANE_Gi), given(flange, TARVANE_C)};
    }
    // Under external pressure a design does not return what it selected.
    if (!(outcome.result(TARVANE_DESIGNED_C) > 0.0f)) return std::nullopt;
    return Face{outcome.result(TARVANE_DESIGNED_Fod), outcome.result(TARVANE_DESIGNED_Fid),
                outcome.result(TARVANE_DESIGNED_Go), outcome.result(TARVANE_DESIGNED_Gi),
                outcome.result(TARVANE_DESIGNED_C)};
}

struct Limit {
    std::string_view name;
    float diameter;
};

// Where the gasket bears, by the rules of Table 2-5.2 and of full face gaskets.
struct Contact {
    Limit inside, outside;
    float width;
};

Contact contact_of(const FlangeInput& flange, const Face& face) {
    const int type = flange.type(), sketch = static_cast<int>(given(flange, TARVANE_SKETCH));
    Limit outside{"Go", face.Go}, inside{"Gi", face.Gi};
    const auto lower = [&](Limit other) {
        if (other.diameter < outside.diameter) outside = other;
    };
    const auto raise = [&](Limit other) {
        if (other.diameter > inside.diameter) inside = other;
    };
    lower({"Fod", face.Fod});
    raise({"Fid", face.Fid});
    if (type == TARVANE_LAP_JOINT) lower({"LjOD", given(flange, TARVANE_LjOD)});

    if (face.C > GIVEN && outside.diameter > face.C + BEYOND_BOLTS) { // full face
        const float within = face.C - inside.diameter, beyond = outside.diameter - face.C;
        const bool both_sides =
            flange.code() >= TARVANE_PD_5500 && type < TARVANE_REVERSE_WELD_NECK;
        if (both_sides && beyond < within) return {{"C", face.C}, outside, beyond / 2.0f};
        return {inside, {"C", face.C}, within / 2.0f};
    }
    if (sketch > TARVANE_SKETCH_1B) { // a groove of its own: the face does not limit the gasket
        inside = {"Gi", face.Gi};
        outside = {"Go", face.Go};
    } else if (type < TARVANE_LAP_JOINT) {
        raise({"the corroded bore", given(flange, TARVANE_B) + 2.0f * given(flange, TARVANE_ci)});
    }
    return {inside, outside, (outside.diameter - inside.diameter) / 2.0f};
}

std::string contact_text(const Contact& contact, const UnitSystem& units) {
    return shown(contact.width, Quantity::diameter, units) + ", from " +
           diameter(contact.inside.name, contact.inside.diameter, units) + " to " +
           diameter(contact.outside.name, contact.outside.diameter, units);
}

// The widths, other than that of the contact, that the basic width depends on; "" when they are given.
std::string missing_width(const FlangeInput& flange, const UnitSystem& units) {
    const int sketch = static_cast<int>(given(flange, TARVANE_SKETCH));
    const float w = given(flange, TARVANE_w), tg = given(flange, TARVANE_tg);
    if (sketch == TARVANE_SKETCH_6 && !(w > 0.0f))
        return "facing sketch 6 takes w, " + shown(w, Quantity::thickness, units);
    const bool nubbin = sketch == TARVANE_SKETCH_1C || sketch == TARVANE_SKETCH_1D;
    if (nubbin && !(w + tg > 0.0f)) {
        return "facing sketches 1c and 1d take w, " + shown(w, Quantity::thickness, units) +
               ", and tg, " + shown(tg, Quantity::thickness, units);
    }
    return "";
}

bool counts(const FlangeInput& flange, int factor, int seating_stress) {
    return given(flange, factor) >= GIVEN || given(flange, seating_stress) >= GIVEN;
}

void check_partition(const FlangeInput& flange, const UnitSystem& units, Checks& checks) {
    if (flange.text[slot::partition_gasket] != 'Y') return;
    if (!counts(flange, TARVANE_mPart, TARVANE_yPart)) return;
    const float tp = given(flange, TARVANE_tp);
    const bool bears = tp > 0.0f;
    checks.push_back(Check::found(field("partition_width"), bears,
                                  bears ? ""
                                        : "the partition gasket has no contact width: tp " +
                                              shown(tp, Quantity::thickness, units)));
}

// The face of such a design is not returned; the width that was used is.
void check_taken_width(const FlangeInput& flange, float N, const UnitSystem& units,
                       Checks& checks) {
    if (!(given(flange, TARVANE_P) < 0.0f)) return;
    const CheckField& width = field("gasket_width");
    if (N == TARVANE_NO_VALUE) {
        checks.push_back(Check::not_made(width, "the contact width of the gasket was not checked"));
        return;
    }
    const bool bears = N > 0.0f;
    checks.push_back(Check::found(
        width, bears,
        bears ? "" : "the gasket has no contact width: N " + shown(N, Quantity::diameter, units)));
}

// Gasket diameters beyond the face, the lap or the bolt circle: "Go 14.750 in. above Fod 14.500 in.".
std::vector<std::string> reaches_beyond(const FlangeInput& flange, const Face& face,
                                        const UnitSystem& units) {
    std::vector<std::string> beyond;
    const auto compare = [&](Limit gasket, const char* word, Limit limit) {
        beyond.push_back(diameter(gasket.name, gasket.diameter, units) + ' ' + word + ' ' +
                         diameter(limit.name, limit.diameter, units));
    };
    const Limit Go{"Go", face.Go}, Gi{"Gi", face.Gi};
    if (face.Go > face.Fod) compare(Go, "above", {"Fod", face.Fod});
    if (flange.type() == TARVANE_LAP_JOINT && face.Go > given(flange, TARVANE_LjOD))
        compare(Go, "above", {"LjOD", given(flange, TARVANE_LjOD)});
    if (face.C > 0.0f && face.Go > face.C + BEYOND_BOLTS) compare(Go, "above", {"C", face.C});
    if (face.Gi < face.Fid) compare(Gi, "below", {"Fid", face.Fid});
    return beyond;
}

} // namespace

// The engine calculates without a contact width, and with a gasket that its face does not carry as a whole.
void check_gasket(const FlangeInput& flange, const FlangeOutcome& outcome, const UnitSystem& units,
                  Checks& checks) {
    check_partition(flange, units, checks);
    const std::optional<Face> face = face_of(flange, outcome);
    if (!face) {
        if (!outcome.refused()) check_taken_width(flange, outcome.found.N, units, checks);
        return;
    }
    const Contact contact = contact_of(flange, *face);
    const bool ring_joint = static_cast<int>(given(flange, TARVANE_SKETCH)) == TARVANE_SKETCH_6;
    std::string lacking;
    if (!ring_joint && !(contact.width > 0.0f))
        lacking = contact_text(contact, units);
    else if (counts(flange, TARVANE_m, TARVANE_y))
        lacking = missing_width(flange, units);
    const bool bears = lacking.empty();
    checks.push_back(Check::found(field("gasket_width"), bears,
                                  bears ? "" : "the gasket has no contact width: " + lacking));
    if (!bears) return;

    const std::vector<std::string> beyond = reaches_beyond(flange, *face, units);
    std::string note;
    if (!beyond.empty()) {
        note = "note: the gasket reaches beyond its face or the bolt circle (" + joined(beyond) +
               "); the contact width taken is " +
               (ring_joint ? "w, " + shown(given(flange, TARVANE_w), Quantity::thickness, units)
                           : contact_text(contact, units));
    }
    checks.push_back(Check::found(field("gasket_place"), beyond.empty(), std::move(note)));
}

} // namespace tarvane::vessel
