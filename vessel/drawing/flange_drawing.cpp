#include "drawing/flange_drawing.h"

#include "drawing/half_section.h"
#include "fields/flange_keys.h"
#include "tarvane/tarvane.h"

#include <cmath>

namespace tarvane::vessel {

namespace {

// On the page, mm.
constexpr double WIDEST = 100, HIGHEST = 74; // the view
constexpr double STUB = 9;                   // of a wall that is cut off
constexpr double BOLT_BELOW = 5;             // what is shown of it beyond the gasket
constexpr double THIN_GASKET = 2.5;          // filled, not hatched
constexpr double JUST_SEEN = 0.7;            // thinner parts are named in a note
constexpr double FOR_STRIP = 5;              // beside the view, before the strip at its side
constexpr double BESIDE = 65;                // of it, for texts of short lengths

// A heavy hexagon nut for a nominal diameter, ASME B18.2.2: across the flats, and its height.
double across_flats(double a) { return 1.5 * a + 0.125; }
double nut_height(double a) { return a; }

std::string title_of(const FlangeShape& s) {
    if (s.channel_cover) return "TEMA channel cover";
    for (const Key& key : flange_keys().keys) {
        if (key.name != "type") continue;
        for (const Choice& choice : key.choices)
            if (choice.number == s.type) return std::string(choice.name) + " flange";
    }
    return "flange";
}

class FlangeSection {
  public:
    FlangeSection(const FlangeShape& shape, const UnitSystem& file_units, const DimensionStyle& how,
                  double scale)
        : s(shape), units(file_units), style(how),
          view(HalfSection::of_ring(sheet, scale, innermost())) {}

    // Nothing when the view does not fit.
    std::optional<Draft> draw(const std::string& name);

  private:
    const FlangeShape& s;
    const UnitSystem& units;
    const DimensionStyle& style;
    Sheet sheet;
    HalfSection view;
    std::vector<Dimension> dimensions;
    std::vector<std::string> notes, thin, indicated, not_drawn;
    double lap = 0;        // thickness of the lap of a lap joint
    double loose_wall = 0; // of what is in the bore of a loose flange, where it is known

    double top() const { return s.t + (s.g1 > 0 ? s.h : 0); }
    double stub() const { return view.length(STUB); }
    bool lap_joint() const { return s.type == TARVANE_LAP_JOINT; }
    bool blind() const { return s.type == TARVANE_BLIND; }
    bool bolted() const { return s.C > 0 && s.a > 0; }
    double nut_radius() const { return std::min(across_flats(s.a) / 2, s.A / 2); }
    bool gasket() const { return s.Go > s.Gi; }
    double gasket_top() const { return -lap; }
    double gasket_bottom() const { return -lap - s.tg; }

    // The least radius of what has to be seen.
    double innermost() const {
        double r = s.A / 2;
        const bool loose = s.type == TARVANE_LOOSE_SLIP_ON || s.type == TARVANE_LOOSE_RING;
        for (const double d : {s.B, s.Gi, s.Fid, s.G.value_or(0), s.C, s.LjID,
                               loose ? s.wall_inside : 0}) // of the others it is not drawn
            if (d > 0) r = std::min(r, d / 2);
        if (bolted()) r = std::min(r, s.C / 2 - across_flats(s.a));
        for (const auto& arm : {s.hG, s.hT, s.hD})
            if (arm && s.C / 2 - *arm > 0) r = std::min(r, s.C / 2 - *arm);
        return r;
    }

    void draw_ring();
    void draw_tube_through(double inner, double wall);
    void draw_loose_wall();
    void draw_lap();
    void draw_reverse();
    void draw_cover();
    void draw_gasket();
    void draw_bolt();
    bool draw_corroded();
    void weld(double r, double z, double across, double up) {
        view.filled({{r, z}, {r + across, z}, {r, z + up}});
    }
    std::vector<std::pair<Corner, Corner>> bolt_hole() const {
        if (!bolted()) return {};
        return {{{s.C / 2 - s.a / 2, 0}, {s.C / 2 + s.a / 2, s.t}}};
    }

    std::string thickness(double inches, bool found = false) const {
        return style.length(inches, Quantity::thickness, units, found);
    }
    std::string diameter(double inches, bool found = false) const {
        return "\xC3\x98" + style.length(inches, Quantity::diameter, units, found);
    }
    void list_the_rest();
    void add_diameters();
    void add_heights();
    void add_radial();
    void see(const std::string& what, double inches) {
        if (inches > 0 && inches < view.length(JUST_SEEN)) thin.push_back(what + thickness(inches));
    }
};

void FlangeSection::draw_ring() {
    const double B = s.B / 2, A = s.A / 2;
    const bool hub = s.g1 > 0 && s.h > 0;
    const double chamfer =
        lap_joint() && s.LjID > s.B && (s.LjID - s.B) / 2 < s.t ? (s.LjID - s.B) / 2 : 0;
    std::vector<Corner> corners;
    if (chamfer > 0)
        corners = {{B + chamfer, 0}};
    else
        corners = {{B, 0}};
    corners.insert(corners.end(), {{A, 0}, {A, s.t}});
    if (hub) corners.insert(corners.end(), {{B + s.g1, s.t}, {B + s.g0, s.t + s.h}});
    corners.push_back({B, top()});
    if (chamfer > 0) corners.push_back({B, chamfer});
    view.part(corners, true, bolt_hole());
    if (s.type != TARVANE_INTEGRAL_WELD_NECK) return;
    const double wall = s.wall > 0 ? s.wall : s.g0;
    if (wall > 0) {
        view.part({{B, top(), true},
                   {B + wall, top()},
                   {B + wall, top() + stub(), true},
                   {B, top() + stub()}},
                  false);
        view.cut(top() + stub(), B, B + wall);
        view.line({B, top()}, {B + std::max(wall, s.g0), top()}, OUTLINE);
    }
    view.edge(0, B);
}

// The wall of an integral slip on or ring flange goes through its ring.
void FlangeSection::draw_tube_through(double inner, double wall) {
    const double outer = inner + wall, A = s.A / 2;
    const double large = std::max(s.g1, wall), small = std::max(s.g0, wall);
    const bool hub = large > wall && s.h > 0;
    std::vector<Corner> corners = {{outer, 0}, {A, 0}, {A, s.t}};
    if (hub) corners.insert(corners.end(), {{inner + large, s.t}, {inner + small, s.t + s.h}});
    const double back = hub ? s.t + s.h : s.t;
    if (!hub || small > wall) corners.push_back({outer, back});
    view.part(corners, true, bolt_hole());

    const double set_back = std::min(wall, s.t / 3);
    const double cut = top() + stub();
    view.part({{inner, set_back}, {outer, set_back}, {outer, cut, true}, {inner, cut}}, false);
    view.cut(cut, inner, outer);
    weld(outer, set_back, -set_back, -set_back);
    const double leg = s.tw > 0 ? s.tw : 0.7 * wall;
    if (!hub || small > wall) weld(outer, back, leg, leg);
    indicated.push_back(s.tw > 0 ? "weld at the face" : "welds");
    view.edge(0, outer);
}

// What a loose flange is put on: a pipe or a shell in its bore.
void FlangeSection::draw_loose_wall() {
    const double outer = s.B / 2, back = top(), cut = back + stub();
    double wall = s.wall_inside > 0 && s.wall_inside < s.B ? (s.B - s.wall_inside) / 2 : s.wall;
    if (wall >= outer) wall = 0;
    loose_wall = wall;
    if (wall > 0) {
        const double inner = outer - wall, set_back = std::min(wall, s.t / 3);
        view.part({{inner, set_back}, {outer, set_back}, {outer, cut, true}, {inner, cut}}, false);
        view.cut(cut, inner, outer);
        weld(outer, set_back, -set_back, -set_back);
        const double leg = s.tw > 0 ? s.tw : 0.7 * wall;
        weld(outer, back, leg, leg);
        indicated.push_back(s.tw > 0 ? "weld at the face" : "welds");
    } else {
        view.line({outer, back}, {outer, cut}, PHANTOM);
        if (s.tw > 0) weld(outer, back, s.tw, s.tw);
        indicated.push_back("outside of the wall in the bore");
    }
    view.edge(0, outer);
}

void FlangeSection::draw_lap() {
    const double B = s.B / 2, L = s.LjOD / 2;
    const double chamfer = s.LjID > s.B && (s.LjID - s.B) / 2 < s.t ? (s.LjID - s.B) / 2 : 0;
    const double cut = top() + stub();
    const double outer = B;
    double wall = s.wall > 0 ? s.wall : s.g0;
    const bool known = wall > 0 && wall < outer;
    if (!known) wall = std::min(view.length(3), outer / 2);
    const double inner = outer - wall;
    lap = wall;
    std::vector<Corner> corners = {{inner, -lap}, {L, -lap}, {L, 0}, {outer + chamfer, 0}};
    if (chamfer > 0) corners.push_back({outer, chamfer});
    corners.insert(corners.end(), {{outer, cut, true}, {inner, cut}});
    if (known) {
        loose_wall = wall;
        view.part(corners, false);
        view.cut(cut, inner, outer);
        notes.push_back("Lap as thick as the wall");
    } else {
        for (std::size_t i = 0; i < corners.size(); ++i)
            if (!corners[i].open) view.line(corners[i], corners[(i + 1) % corners.size()], PHANTOM);
        indicated.push_back("lap");
    }
    view.edge(-lap, inner);
}

void FlangeSection::draw_reverse() {
    const double B = s.B / 2, A = s.A / 2;
    const bool loose = s.type == TARVANE_LOOSE_REVERSE;
    const bool hub = !loose && s.g1 > 0 && s.h > 0;
    std::vector<Corner> corners = {{B, 0}, {A, 0}};
    if (hub)
        corners.insert(corners.end(), {{A, s.t + s.h}, {A - s.g0, s.t + s.h}, {A - s.g1, s.t}});
    else
        corners.push_back({A, s.t});
    corners.push_back({B, s.t});
    view.part(corners, true, bolt_hole());
    const double wall = s.wall > 0 ? s.wall : s.g0, end = hub ? s.t + s.h : s.t;
    if (wall > 0) {
        view.part({{A - wall, end}, {A, end}, {A, end + stub(), true}, {A - wall, end + stub()}},
                  false);
        view.cut(end + stub(), A - wall, A);
        if (loose) {
            weld(A - wall, end, -0.7 * wall, 0.7 * wall);
            indicated.push_back("weld");
        }
    }
    view.edge(0, B);
    view.edge(s.t, B);
}

void FlangeSection::draw_cover() {
    const double A = s.A / 2;
    view.part({{0, 0}, {A, 0}, {A, s.t}, {0, s.t, true}}, true, bolt_hole());
    if (s.long_span > 0 && s.short_span > 0 && s.long_span != s.short_span)
        notes.push_back(
            "Not circular: spans D = " + style.length(s.long_span, Quantity::diameter, units) +
            ", d = " + style.length(s.short_span, Quantity::diameter, units) +
            "; section through the bolt circle");
    if (s.deflection && s.deflection_allowed)
        notes.push_back("Deflection at the centre " + thickness(*s.deflection) + ", allowed " +
                        thickness(*s.deflection_allowed));
}

void FlangeSection::draw_gasket() {
    if (!gasket()) return;
    const double inner = s.Gi / 2, outer = s.Go / 2, high = gasket_top(), low = gasket_bottom();
    const double tp = std::min(s.tp / 2, inner * 0.9);
    if (!(s.tg > 0)) {
        view.line({inner, high}, {outer, high}, {2 * THICK_LINE});
        indicated.push_back("gasket");
    } else if (s.tg < view.length(THIN_GASKET)) {
        view.filled({{inner, low}, {outer, low}, {outer, high}, {inner, high}});
        if (tp > 0) view.filled({{0, low}, {tp, low}, {tp, high}, {0, high}});
    } else {
        view.part({{inner, low}, {outer, low}, {outer, high}, {inner, high}}, false);
        if (tp > 0) view.part({{0, low}, {tp, low}, {tp, high}, {0, high, true}}, false);
    }
}

void FlangeSection::draw_bolt() {
    if (!bolted()) return;
    const double C = s.C / 2, half = s.a / 2, low = gasket_bottom() - view.length(BOLT_BELOW);
    const double nut = nut_radius(), high = s.t + nut_height(s.a);
    view.line({C - half, low}, {C - half, s.t}, OUTLINE);
    view.line({C + half, low}, {C + half, s.t}, OUTLINE);
    view.cut(low, C - half, C + half);
    for (const auto& [a, b] : {std::pair<Corner, Corner>{{C - nut, s.t}, {C - nut, high}},
                               {{C - nut, high}, {C + nut, high}},
                               {{C + nut, high}, {C + nut, s.t}}})
        view.line(a, b, THIN);
    const double end = high + 0.25 * s.a;
    for (const auto& [a, b] : {std::pair<Corner, Corner>{{C - half, high}, {C - half, end}},
                               {{C - half, end}, {C + half, end}},
                               {{C + half, end}, {C + half, high}}})
        view.line(a, b, THIN);
    view.line({C, low - view.length(3)}, {C, end + view.length(3)}, CENTRE);
    notes.push_back((s.bolts > 0 ? std::to_string(s.bolts) + " bolts " : "Bolts ") + diameter(s.a));
    indicated.push_back("nut");
}

// The inside as it is after corrosion; false where there is none that could be drawn.
bool FlangeSection::draw_corroded() {
    const double cut = top() + stub(), A = s.A / 2, B = s.B / 2;
    const auto upright = [&](double r, double from, double to) {
        view.line({r, from}, {r, to}, DASHED);
    };
    switch (s.type) {
    case TARVANE_BLIND:
        if (!gasket() || s.ci >= s.t) return false;
        view.edge(s.ci, s.Gi / 2, DASHED);
        return true;
    case TARVANE_INTEGRAL_WELD_NECK:
    case TARVANE_INTEGRAL_SLIP_ON:
    case TARVANE_INTEGRAL_RING:
        upright(B + s.ci, 0, cut);
        return true;
    case TARVANE_REVERSE_WELD_NECK:
    case TARVANE_LOOSE_REVERSE: {
        const double wall = s.wall > 0 ? s.wall : s.g0;
        if (s.ci >= wall) return false;
        const double end = s.type == TARVANE_LOOSE_REVERSE ? s.t : top();
        upright(A - wall + s.ci, end, end + stub());
        if (end > s.t) view.line({A - s.g1 + s.ci, s.t}, {A - s.g0 + s.ci, end}, DASHED);
        upright(B + s.ci, 0, s.t);
        return true;
    }
    default: // the pipe or shell in the bore
        if (!(loose_wall > 0) || s.ci >= loose_wall) return false;
        upright(B - loose_wall + s.ci, -lap, cut);
        return true;
    }
}

void FlangeSection::add_diameters() {
    struct Named {
        const char* name;
        double d, z;
    };
    std::vector<Named> all = {{"B", s.B, 0},
                              {"LjID", s.LjID, 0},
                              {"LjOD", s.LjOD, -lap},
                              {"Fid", s.Fid, -lap},
                              {"Gi", gasket() ? s.Gi : 0, gasket_bottom()},
                              {"G", s.G.value_or(0), gasket_bottom()},
                              {"Go", gasket() ? s.Go : 0, gasket_bottom()},
                              {"Fod", s.Fod, -lap},
                              {"C", s.C, gasket_bottom() - view.length(BOLT_BELOW + 3)},
                              {"A", s.A, 0}};
    std::erase_if(all, [](const Named& one) { return !(one.d > 0); });
    std::stable_sort(all.begin(), all.end(),
                     [](const Named& a, const Named& b) { return a.d < b.d * (1 - 1e-6); });
    // Each length once, with the names of all that have it.
    for (std::size_t i = 0; i < all.size();) {
        std::string names;
        double lowest = 1e9;
        std::size_t k = i;
        for (; k < all.size() && all[k].d <= all[i].d * (1 + 1e-6); ++k) {
            names += (k > i ? ", " : "") + std::string(all[k].name);
            lowest = std::min(lowest, all[k].z);
        }
        const std::string label = names + " = " + diameter(all[i].d, names == "G");
        dimensions.push_back(
            view.diameter(label, unit_of(units, Quantity::diameter), all[i].d, lowest));
        i = k;
    }
}

void FlangeSection::add_heights() {
    const double unit = unit_of(units, Quantity::thickness), A = s.A / 2;
    const auto add = [&](const char* name, double length, double z1, double r1, double z2,
                         double r2) {
        if (!(length > 0)) return;
        const bool found = s.t_found && length == s.t;
        dimensions.push_back(view.height(std::string(name) + " = " + thickness(length, found), unit,
                                         Side::right, z1, r1, z2, r2));
    };
    add("t", s.t, 0, A, s.t, A);
    if (s.g1 > 0 && s.h > 0 && !blind())
        add("h", s.h, s.t, A, top(), s.reverse() ? A : s.B / 2 + s.g0);
    if (gasket()) add("tg", s.tg, gasket_top(), s.Go / 2, gasket_bottom(), s.Go / 2);
}

void FlangeSection::add_radial() {
    const double unit = unit_of(units, Quantity::thickness);
    const double diameter_unit = unit_of(units, Quantity::diameter);
    const double B = s.B / 2, A = s.A / 2, cut = top() + stub();
    const auto add = [&](const char* name, double length, double r1, double z1, double r2,
                         double z2) {
        if (!(length > 0)) return;
        dimensions.push_back(
            view.radial(std::string(name) + " = " + thickness(length), unit, r1, z1, r2, z2));
    };
    if (!blind() && s.g1 > 0) {
        if (s.reverse()) {
            add("g0", s.g0, A - s.g0, top(), A, cut);
            if (s.g1 > s.g0) add("g1", s.g1, A - s.g1, s.t, A, cut);
        } else {
            add("g0", s.g0, B, cut, B + s.g0, top());
            if (s.g1 > s.g0) add("g1", s.g1, B, cut, B + s.g1, s.t);
        }
    } else if (s.type == TARVANE_LOOSE_REVERSE) {
        add("tShell", s.wall, A - s.wall, s.t + stub(), A, s.t + stub());
    }
    if (!(s.C > 0)) return;
    const double C = s.C / 2;
    const double bolt = bolted() ? s.t + 1.25 * s.a + view.length(3) : s.t;
    const auto arm = [&](const char* name, const std::optional<double>& length, double z,
                         double sign) {
        if (!length) return;
        const double r = C - sign * *length;
        const std::string label =
            std::string(name) + " = " + style.length(*length, Quantity::diameter, units, true);
        if (std::abs(*length) < 1e-6) return;
        if (r < 0 || !view.shows(r)) {
            sheet.dropped.push_back(label);
            return;
        }
        dimensions.push_back(view.radial(label, diameter_unit, r, z, C, bolt));
    };
    arm("hG", s.hG, gasket_top(), 1);
    arm("hT", s.hT, 0, 1);
    arm("hD", s.hD, s.type <= TARVANE_INTEGRAL_RING || s.reverse() ? top() : 0,
        s.hD_outwards ? -1 : 1);
    arm("h'G", s.hG_outer, gasket_top(), -1);
}

// What the section does not have, or hardly.
void FlangeSection::list_the_rest() {
    see("t = ", s.t);
    see("g0 = ", s.g0);
    see("tg = ", s.tg);
    for (std::size_t i = 0; i < thin.size(); ++i)
        notes.push_back((i == 0 ? "Hardly seen: " : "") + thin[i]);
    if (s.Fod > 0 && s.Fod < s.A * 0.999) not_drawn.push_back("raised face");
    if (!s.facing.empty())
        not_drawn.push_back("facing " + s.facing + (s.w > 0 ? ", w = " + thickness(s.w) : ""));
    if (s.splits > 0)
        not_drawn.push_back(s.splits > 1 ? "splits of the ring" : "split of the ring");
    if (s.ce > 0) not_drawn.push_back("outside corrosion ce = " + thickness(s.ce));
    if (s.openings.first > 0) {
        not_drawn.push_back(openings_text(s.openings, "D", units, style));
    } else if (s.opening_factor) {
        not_drawn.push_back("opening");
    }
}

std::optional<Draft> FlangeSection::draw(const std::string& name) {
    const double wall = s.wall > 0 && s.wall < s.A / 2 - s.B / 2 ? s.wall : s.g0;
    switch (s.type) {
    case TARVANE_INTEGRAL_SLIP_ON:
    case TARVANE_INTEGRAL_RING:
        if (wall > 0)
            draw_tube_through(s.B / 2, wall);
        else
            draw_ring();
        break;
    case TARVANE_LOOSE_SLIP_ON:
    case TARVANE_LOOSE_RING:
        draw_ring();
        draw_loose_wall();
        break;
    case TARVANE_LAP_JOINT:
        draw_ring();
        draw_lap();
        break;
    case TARVANE_BLIND:
        draw_cover();
        break;
    case TARVANE_REVERSE_WELD_NECK:
    case TARVANE_LOOSE_REVERSE:
        draw_reverse();
        break;
    default:
        draw_ring();
    }
    draw_gasket();
    draw_bolt();
    if (s.ci > 0) {
        if (s.ci >= view.length(JUST_SEEN) && draw_corroded())
            notes.push_back("Dashed: corroded by ci = " + thickness(s.ci));
        else
            not_drawn.push_back("corrosion ci = " + thickness(s.ci));
    }
    Box box = sheet.extent();
    if (box.right > WIDEST || box.height() > HIGHEST) return std::nullopt;
    if (blind() || s.reverse())
        view.break_lines(std::min(0.0, gasket_bottom()), s.t);
    else
        view.break_lines(-view.length(2), view.length(9));
    box = sheet.extent();

    add_diameters();
    add_heights();
    add_radial();
    // A nut may reach beyond the edge.
    const double right = view.x(std::max(s.A / 2, bolted() ? s.C / 2 + nut_radius() : 0));
    draw_strip(sheet, style, Side::right, {right}, dimensions);
    // The strips above and below reach over that at the right where it leaves them the room.
    const Box with_right = sheet.extent();
    const double high = with_right.top < box.top - 0.1 ? right + FOR_STRIP : right + BESIDE;
    const double low = with_right.bottom > box.bottom + 0.1 ? right + FOR_STRIP : right + BESIDE;
    draw_strip(sheet, style, Side::above, {box.top, -BESIDE, high}, dimensions);
    draw_strip(sheet, style, Side::below, {box.bottom, -BESIDE, low}, dimensions);
    view.axis(box.top - 4, sheet.extent().bottom + 2);

    list_the_rest();
    return drafted(std::move(sheet), style, units,
                   {.title = name + ": " + title_of(s),
                    .notes = notes,
                    .indicated = indicated,
                    .not_drawn = not_drawn,
                    .alt = "Half section of " + name + ", " + title_of(s)});
}

} // namespace

std::optional<Draft> draw_flange(const FlangeShape& shape, const std::string& name,
                                 const UnitSystem& units, const DimensionStyle& style) {
    return largest_draft(
        [&](double scale) { return FlangeSection(shape, units, style, scale).draw(name); });
}

} // namespace tarvane::vessel
