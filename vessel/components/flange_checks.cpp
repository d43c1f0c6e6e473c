#include "components/flange_checks.h"

#include "catalogue/bolt_sizes.h"
#include "document/results.h"
#include "tarvane/tarvane.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>
#include <vector>

namespace tarvane::vessel {

namespace {

constexpr float PI = 3.14159265f;
constexpr float GIVEN = 0.001f;         // a gasket factor or seating stress above it counts
constexpr float BEYOND_BOLTS = 0.0001f; // a gasket that reaches as far beyond is a full face one

float given(const FlangeInput& flange, int element) {
    return flange.record[static_cast<std::size_t>(element)];
}

std::string diameter(std::string_view name, float value, const UnitSystem& units) {
    return std::string(name) + ' ' + shown(value, Quantity::diameter, units);
}

std::string joined(const std::vector<std::string>& parts) {
    std::string text;
    for (const std::string& part : parts)
        text += (text.empty() ? "" : ", ") + part;
    return text;
}

} // namespace

// ---- bolts -----------------------------------------------------------------------------------------

// Appendix 2 and its like are for a gasket within the bolt circle, on a flange that reaches beyond it.
void check_bolt_circle(const FlangeInput& flange, const UnitSystem& units, Verdict& verdict) {
    const bool circular = !(given(flange, TARVANE_D) > 0.0f || given(flange, TARVANE_d) > 0.0f);
    if (flange.analysis() == TARVANE_DESIGN || !circular) return;
    const float C = given(flange, TARVANE_C), A = given(flange, TARVANE_A);
    if (!(C > 0.0f)) return;
    const auto bolts = [&](const char* where) {
        verdict.say(Status::fails,
                    "the bolt circle " + shown(C, Quantity::diameter, units) + ' ' + where);
    };
    if (C >= A)
        bolts("is not below the outside diameter of the flange");
    else if (C <= (given(flange, TARVANE_Go) + given(flange, TARVANE_Gi)) / 2.0f)
        bolts("lies within the gasket");
}

void check_bolt_size(const FlangeInput& flange, const UnitSystem& units, Verdict& verdict) {
    if (!flange.takes_bolt_size()) return;
    const BoltSizes sizes(static_cast<int>(given(flange, TARVANE_THREADS)));
    const float a = given(flange, TARVANE_a);
    if (sizes.empty() || sizes.lists(a)) return;
    verdict.say(Status::fine, "note: the thread series has no bolt of " +
                                  shown(a, Quantity::diameter, units) + "; the bolt of " +
                                  shown(sizes.taken(a), Quantity::diameter, units) + " was taken");
}

// ---- gasket ----------------------------------------------------------------------------------------

namespace {

// Diameters of face, gasket and bolt circle: those given, or those that a design selected.
struct Face {
    float Fod, Fid, Go, Gi, C;
};

std::optional<Face> face_of(const FlangeInput& flange, const FlangeOutcome& outcome) {
    if (flange.analysis() != TARVANE_DESIGN) {
        return Face{given(flange, TARVANE_Fod), given(flange, TARVANE_Fid),
                    given(flange, TARVANE_Go), given(flange, TARVANE_Gi), given(flange, TARVANE_C)};
    }
    // Under external pressure a design does not give back what it selected.
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

// The widths other than that of the contact that the basic width goes by; "" when they are there.
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

void check_partition(const FlangeInput& flange, const UnitSystem& units, Verdict& verdict) {
    if (flange.text[slot::partition_gasket] != 'Y') return;
    if (!counts(flange, TARVANE_mPart, TARVANE_yPart)) return;
    const float tp = given(flange, TARVANE_tp);
    if (!(tp > 0.0f)) {
        verdict.say(Status::fails, "the partition gasket has no contact width: tp " +
                                       shown(tp, Quantity::thickness, units));
    }
}

} // namespace

void check_gasket(const FlangeInput& flange, const FlangeOutcome& outcome, const UnitSystem& units,
                  Verdict& verdict) {
    check_partition(flange, units, verdict);
    const std::optional<Face> face = face_of(flange, outcome);
    if (!face) {
        // The face of such a design is not given back; the width that was taken is.
        const float N = outcome.found.N;
        if (given(flange, TARVANE_P) < 0.0f && outcome.found.status != TARVANE_REFUSED &&
            !(N > 0.0f)) {
            verdict.say(Status::fails, N == TARVANE_NO_VALUE
                                           ? "the contact width of the gasket was not checked"
                                           : "the gasket has no contact width: N " +
                                                 shown(N, Quantity::diameter, units));
        }
        return;
    }
    const Contact contact = contact_of(flange, *face);
    const bool ring_joint = static_cast<int>(given(flange, TARVANE_SKETCH)) == TARVANE_SKETCH_6;
    if (!ring_joint && !(contact.width > 0.0f)) {
        verdict.say(Status::fails,
                    "the gasket has no contact width: " + contact_text(contact, units));
        return;
    }
    const std::string missing = missing_width(flange, units);
    if (!missing.empty() && counts(flange, TARVANE_m, TARVANE_y)) {
        verdict.say(Status::fails, "the gasket has no contact width: " + missing);
        return;
    }

    std::vector<std::string> beyond;
    const auto compare = [&](Limit gasket, const char* word, Limit limit) {
        beyond.push_back(diameter(gasket.name, gasket.diameter, units) + ' ' + word + ' ' +
                         diameter(limit.name, limit.diameter, units));
    };
    const Limit Go{"Go", face->Go}, Gi{"Gi", face->Gi};
    if (face->Go > face->Fod) compare(Go, "above", {"Fod", face->Fod});
    if (flange.type() == TARVANE_LAP_JOINT && face->Go > given(flange, TARVANE_LjOD))
        compare(Go, "above", {"LjOD", given(flange, TARVANE_LjOD)});
    if (face->C > 0.0f && face->Go > face->C + BEYOND_BOLTS) compare(Go, "above", {"C", face->C});
    if (face->Gi < face->Fid) compare(Gi, "below", {"Fid", face->Fid});
    if (beyond.empty()) return;
    verdict.say(Status::fine, "note: the gasket reaches beyond its face or the bolt circle (" +
                                  joined(beyond) + "); the contact width taken is " +
                                  (ring_joint ? "w, " + shown(given(flange, TARVANE_w),
                                                              Quantity::thickness, units)
                                              : contact_text(contact, units)));
}

// ---- standard flange -------------------------------------------------------------------------------

namespace {

// External loads as pressure (NC-3658.1, VIII-2 4.1.11): what the engine added, or, where it has them as
// loads or not at all, the same by its own formula.
float added_pressure(const FlangeInput& flange, const FlangeOutcome& outcome) {
    if (flange.text[slot::external_loads] != 'Y') return 0.0f;
    const bool current_div_2 =
        flange.code() == TARVANE_ASME_VIII_2 && flange.edition() == EDITION_CURRENT;
    if (given(flange, TARVANE_P) >= 0.0f && !current_div_2)
        return outcome.result(TARVANE_ADDED_PRESSURE);
    const float G = outcome.result(TARVANE_G);
    const float F = given(flange, TARVANE_AXIAL_FORCE), M = given(flange, TARVANE_BENDING_MOMENT);
    return 4.0f * std::max(0.0f, F) / (PI * G * G) +
           16.0f * std::fabs(M) * 12.0f / (PI * G * G * G);
}

} // namespace

void check_rating(const FlangeInput& flange, const FlangeOutcome& outcome, const UnitSystem& units,
                  Verdict& verdict) {
    const float rating = flange.setting(Setting::rating);
    if (!(rating > 0.0f)) {
        if (flange.whole_setting(Setting::standard_flange) == 0) return;
        verdict.say(Status::fails,
                    "the check against the pressure rating was not made: give rating, "
                    "the rated pressure of the standard flange at the design "
                    "temperature");
        return;
    }
    const float equivalent = std::fabs(given(flange, TARVANE_P)) + added_pressure(flange, outcome);
    if (equivalent <= rating) return;
    verdict.say(Status::fails,
                "the equivalent pressure " + shown(equivalent, Quantity::pressure, units) +
                    " is above the rating " + shown(rating, Quantity::pressure, units));
}

} // namespace tarvane::vessel
