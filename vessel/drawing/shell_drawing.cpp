#include "drawing/shell_drawing.h"

#include "drawing/half_section.h"
#include "tarvane/tarvane.h"

#include <cmath>
#include <numbers>

namespace tarvane::vessel {

namespace {

// On the page, mm.
constexpr double WIDEST_SHELL = 62, HIGHEST_SHELL = 80; // the view
constexpr double FILLED = 1.2;                          // thinner walls are filled
constexpr double WALL_SEEN = 6, LINE_SEEN = 0.7; // walls and lines of corrosion that need no detail
constexpr double DETAIL_WALL = 18, DETAIL_HEIGHT = 24, BEFORE_DETAIL = 14;
constexpr double BELOW_DETAIL = 20, FOR_LABEL = 26, FOR_FRAME = 5;
constexpr double LEADER = 9, LONGEST_LEADER = 60, SHOULDER = 3;
constexpr double LONG = 4; // cylinders of more diameters are broken

std::string title_of(const ShellShape& s) {
    switch (s.shape) {
    case TARVANE_CYLINDER:
        return "cylinder";
    case TARVANE_ELLIPTICAL_HEAD:
        return "elliptical head";
    case TARVANE_TORISPHERICAL_HEAD:
        return "torispherical head";
    case TARVANE_SPHERE:
        return "sphere or hemispherical head";
    case TARVANE_CONE:
        return s.r > 0 ? "cone with knuckle" : "cone";
    default:
        return "flat head";
    }
}

class ShellSection {
  public:
    ShellSection(const ShellShape& shape, const UnitSystem& file_units, const DimensionStyle& how,
                 double scale)
        : s(shape), units(file_units), style(how), view(sheet, scale) {}

    std::optional<Draft> draw(const std::string& name);

  private:
    struct Radius {
        std::string label;
        double r, z, radius, angle; // centre, and the direction of its arrow
    };

    const ShellShape& s;
    const UnitSystem& units;
    const DimensionStyle& style;
    Sheet sheet;
    HalfSection view;
    std::vector<Dimension> dimensions;
    std::vector<Radius> radii;
    std::vector<std::string> notes, not_drawn;
    double low = 0, high = 0; // of the view, in.
    bool as_line = false;     // a wall that is too thin to be drawn with its thickness

    std::string written(double inches, Quantity quantity) const {
        return style.length(inches, quantity, units);
    }
    double page(double inches) const { return inches / view.length(1); }
    // The scale of the detail of the wall; that of the whole where it needs none.
    double detail_scale() const {
        const bool needed = page(s.t) < WALL_SEEN || (s.ci > 0 && page(s.ci) < LINE_SEEN);
        for (const double scale : preferred_scales())
            if (s.t * 25.4 * scale <= DETAIL_WALL)
                return needed ? std::max(scale, sheet.scale) : sheet.scale;
        return sheet.scale;
    }
    bool detail() const { return detail_scale() > sheet.scale; }

    // What is thinner than an outline is drawn as one, at its inside; what is thin is filled.
    void part(const Profile& profile, double t, bool rising = true, bool cut = false);
    void curve(const std::vector<Corner>& points, const Pen& pen) {
        Points line;
        for (const Corner& p : points)
            line.push_back(view.at(p.r, p.z));
        sheet.stroke(std::move(line), pen);
    }
    void corroded(const Profile& profile) {
        if (s.ci > 0 && s.ci < s.t && !detail()) curve(offset(profile, s.ci), DASHED);
    }
    void head(const Profile& profile, double depth);
    void draw_cylinder();
    void draw_cone();
    void draw_flat();
    void add_diameter(double z);
    void add_height(const std::string& name, double length, double z1, double z2,
                    double taken_out = 0);
    void add_radius(const char* name, double radius, double r, double z, double angle) {
        radii.push_back({std::string(name) + " = R" + written(radius, Quantity::diameter), r, z,
                         radius, angle});
    }
    void draw_angle(const ProfilePoint& at);
    void draw_radii();
    void draw_detail();
};

void ShellSection::part(const Profile& profile, double t, bool rising, bool cut) {
    std::vector<Corner> corners = wall(profile, t);
    if (cut) corners[profile.size() - 1].open = true;
    if (page(t) < THICK_LINE) {
        curve(offset(profile, 0), OUTLINE);
        as_line = true;
    } else if (page(t) < FILLED) {
        view.filled(corners);
    } else {
        view.part(corners, rising);
    }
}

void ShellSection::add_diameter(double z) {
    const std::string label = s.outside ? "Do = " : "D = ";
    const double d = s.outside ? s.D + 2 * s.t : s.D;
    dimensions.push_back(view.diameter(label + "\xC3\x98" + written(d, Quantity::diameter),
                                       unit_of(units, Quantity::diameter), d, z));
}

void ShellSection::add_height(const std::string& name, double length, double z1, double z2,
                              double taken_out) {
    Dimension one = view.height(name + " = " + written(length, Quantity::diameter),
                                unit_of(units, Quantity::diameter), Side::left, z1, 0, z2, 0);
    one.taken_out = taken_out;
    dimensions.push_back(one);
}

void ShellSection::head(const Profile& profile, double depth) {
    part(profile, s.t);
    corroded(profile);
    low = -s.straight;
    high = depth + s.t;
    // Where the curve begins.
    view.line({0, 0}, {s.D / 2, 0}, THIN);
    if (s.straight > 0) {
        view.edge(-s.straight, s.D / 2);
        add_height("sf", s.straight, -s.straight, 0);
        notes.push_back("sf: straight flange");
    }
    add_height("h", depth, 0, depth);
    add_diameter(low);
}

void ShellSection::draw_cylinder() {
    const double inner = s.D / 2, outer = inner + s.t;
    // Heads are part of a stiffened length: it is not how long the cylinder is.
    const double length = s.tangent > 0 ? s.tangent : s.length;
    const bool given = length > 0;
    double shown = given ? length : s.D, taken_out = 0;
    const bool broken = given && length > LONG * s.D;
    if (broken) shown = LONG * s.D * 0.6;
    const auto piece = [&](double from, double to, bool open_low, bool open_high) {
        if (page(s.t) < FILLED)
            part({{inner, from, 1, 0}, {inner, to, 1, 0}}, s.t);
        else
            view.part({{inner, from, open_low}, {outer, from}, {outer, to, open_high}, {inner, to}},
                      true);
        if (s.ci > 0 && s.ci < s.t && !detail())
            view.line({inner + s.ci, from}, {inner + s.ci, to}, DASHED);
        if (open_low) view.cut(from, inner, outer);
        if (open_high) view.cut(to, inner, outer);
    };
    if (broken) {
        const double gap = view.length(3);
        piece(0, shown / 2, false, true);
        piece(shown / 2 + gap, shown + gap, true, false);
        taken_out = page(length - shown - gap);
        shown += gap;
    } else {
        piece(0, shown, !given, !given);
    }
    if (given) {
        view.edge(0, inner);
        view.edge(shown, inner);
        add_height(s.tangent > 0 ? "Lt" : "L", length, 0, shown, taken_out);
        notes.push_back(s.tangent > 0 ? "Lt: length from head to head" : "L: stiffened length");
        if (s.tangent > 0 && s.length > 0)
            not_drawn.push_back("stiffened length L = " + written(s.length, Quantity::diameter));
    } else {
        notes.push_back("Length not given");
    }
    high = shown;
    add_diameter(0);
}

void ShellSection::draw_angle(const ProfilePoint& at) {
    // Between the upright and the outside of the cone.
    const double t = s.t, angle = s.alpha * std::numbers::pi / 180, size = 13;
    const Point foot = view.at(at.r + t * at.out_r, at.z + t * at.out_z);
    sheet.line(foot, {foot.x, foot.y - size - 3}, THIN);
    Points curve;
    for (int i = 0; i <= 20; ++i) {
        const double a = angle * i / 20;
        curve.push_back({foot.x - size * std::sin(a), foot.y - size * std::cos(a)});
    }
    sheet.stroke(curve, THIN);
    sheet.text({foot.x + 2, foot.y - size + 1},
               "\xCE\xB1 = " + style.number(s.alpha, 1) + "\xC2\xB0");
}

void ShellSection::draw_cone() {
    const double angle = s.alpha * std::numbers::pi / 180;
    const double c = std::cos(angle), sine = std::sin(angle);
    Profile knuckle;
    ProfilePoint start{s.D / 2, 0, c, sine};
    if (s.r > 0) {
        knuckle = arc(s.D / 2 - s.r, 0, s.r, 0, angle);
        start = knuckle.back();
    }
    double end = s.Dsmall / 2;
    bool cut = false;
    if (!(s.Dsmall > 0)) {
        // Without a small end: a piece of the cone.
        cut = true;
        end = std::max(start.r * 0.45, start.r - 2 * s.D * std::tan(angle));
        notes.push_back("Small end not given");
    }
    const double height = (start.r - end) / std::tan(angle);
    const ProfilePoint last{end, start.z + height, c, sine};
    const Profile straight = {start, last};
    if (!knuckle.empty()) {
        const double thickness = s.tk > 0 ? s.tk : s.t;
        part(knuckle, thickness, false);
        corroded(knuckle);
        add_radius("r", s.r, s.D / 2 - s.r, 0, angle / 2);
    }
    part(straight, s.t, true, cut);
    corroded(straight);
    if (cut) {
        const Corner out = offset(straight, s.t).back();
        sheet.break_line(view.at(end - view.length(1.5) * c, last.z - view.length(1.5) * sine),
                         view.at(out.r + view.length(1.5) * c, out.z + view.length(1.5) * sine));
    } else {
        view.edge(last.z, end);
        Dimension small = view.diameter("Ds = \xC3\x98" + written(s.Dsmall, Quantity::diameter),
                                        unit_of(units, Quantity::diameter), s.Dsmall, last.z);
        small.side = Side::above;
        dimensions.push_back(small);
        if (s.length > 0 && std::abs(s.length / last.z - 1) < 1e-4)
            add_height("Lc", s.length, 0, last.z);
        else if (s.length > 0)
            notes.push_back("Axial length given as " + written(s.length, Quantity::diameter) +
                            ", not that of the diameters and the angle");
    }
    view.edge(0, s.D / 2);
    draw_angle(start);
    high = last.z;
    add_diameter(0);
    if (s.tk > 0 && s.tk != s.t)
        notes.push_back("Knuckle tk = " + written(s.tk, Quantity::thickness));
}

void ShellSection::draw_flat() {
    const std::vector<Corner> plate = {{0, 0}, {s.D / 2, 0}, {s.D / 2, s.t}, {0, s.t, true}};
    if (page(s.t) < THICK_LINE) {
        view.line({0, 0}, {s.D / 2, 0}, OUTLINE);
        as_line = true;
    } else if (page(s.t) < FILLED) {
        view.filled(plate);
    } else {
        view.part(plate, true);
    }
    if (s.ci > 0 && s.ci < s.t && !detail()) view.line({0, s.ci}, {s.D / 2, s.ci}, DASHED);
    high = s.t;
    add_diameter(0);
    if (s.D2 > 0) not_drawn.push_back("second span D2 = " + written(s.D2, Quantity::diameter));
}

// Leaders from outside to the inside surface. They keep off all texts, and their texts off all lines.
void ShellSection::draw_radii() {
    for (const Radius& one : radii) {
        const double c = std::cos(one.angle), sine = std::sin(one.angle);
        const Point tip = view.at(one.r + one.radius * c, one.z + one.radius * sine);
        bool found = false;
        for (double length = page(s.t) + LEADER; length < LONGEST_LEADER && !found; length += 3) {
            const Point knee{tip.x + length * c, tip.y - length * sine};
            const Point shoulder{knee.x + SHOULDER, knee.y};
            const Point at{shoulder.x + 1, knee.y + TEXT_HEIGHT / 2};
            Sheet trial;
            trial.text(at, one.label);
            const Box box = trial.texts()[0].box.grown(0.8);
            found = true;
            for (const Text& text : sheet.texts())
                found = found && !box.meets(text.box) && !crosses(text.box.grown(0.5), tip, knee) &&
                        !crosses(text.box.grown(0.5), knee, shoulder);
            for (const Stroke& stroke : sheet.lines())
                for (std::size_t i = 0; i + 1 < stroke.points.size(); ++i)
                    found = found && !crosses(box, stroke.points[i], stroke.points[i + 1]);
            for (const Area& area : sheet.fills())
                for (const Point p : area.outline)
                    found = found && !box.meets({p.x, p.y, p.x, p.y});
            if (!found) continue;
            sheet.stroke({tip, knee, shoulder}, THIN);
            sheet.arrow(tip, {-c, sine});
            sheet.text(at, one.label);
            sheet.measures.push_back(
                {one.label, page(one.radius), unit_of(units, Quantity::diameter), sheet.scale});
        }
        if (!found) sheet.dropped.push_back(one.label);
    }
}

// The wall at a larger scale, with its corroded line.
void ShellSection::draw_detail() {
    const double main_scale = sheet.scale, scale = detail_scale();
    sheet.scale = scale;
    const double mm = 25.4 * scale, t = s.t * mm, ci = s.ci * mm;
    const Box main = sheet.extent();
    // Beside the whole, else below it: the page is higher than it is wide.
    const bool beside = main.width() + BEFORE_DETAIL + t + FOR_LABEL <= MOST_WIDTH - 2 * FOR_FRAME;
    const double left = beside ? main.right + BEFORE_DETAIL : 0, right = left + t;
    const double top =
        beside ? (view.y(low) + view.y(high) - DETAIL_HEIGHT) / 2 : main.bottom + BELOW_DETAIL;
    const double bottom = top + DETAIL_HEIGHT;
    sheet.section({{left, top}, {right, top}, {right, bottom}, {left, bottom}}, true, 2.4);
    sheet.line({left, top}, {left, bottom}, OUTLINE);
    sheet.line({right, top}, {right, bottom}, OUTLINE);
    for (const double y : {top, bottom})
        sheet.break_line({left - 1.5, y}, {right + 1.5, y});
    const double unit = unit_of(units, Quantity::thickness);
    const StripRoom above{top - 1, left - 8}, below{bottom + 1, left - 8};
    draw_strip(sheet, style, Side::above, above,
               {{.side = Side::above,
                 .label = "t = " + written(s.t, Quantity::thickness),
                 .unit = unit,
                 .from = left,
                 .to = right,
                 .from_at = top,
                 .to_at = top}});
    if (s.ci > 0 && s.ci < s.t) {
        sheet.line({left + ci, top}, {left + ci, bottom}, DASHED);
        draw_strip(sheet, style, Side::below, below,
                   {{.side = Side::below,
                     .label = "ci = " + written(s.ci, Quantity::thickness),
                     .unit = unit,
                     .from = left,
                     .to = left + ci,
                     .from_at = bottom,
                     .to_at = bottom}});
    }
    sheet.text({left - 8, bottom + (s.ci > 0 ? 20 : 8)}, "Wall, " + scale_text(scale, style));
    sheet.scale = main_scale;
}

std::optional<Draft> ShellSection::draw(const std::string& name) {
    constexpr double UP = std::numbers::pi / 2;
    switch (s.shape) {
    case TARVANE_CYLINDER:
        draw_cylinder();
        break;
    case TARVANE_ELLIPTICAL_HEAD:
    case TARVANE_SPHERE:
        head(head_profile(s), head_profile(s).back().z);
        break;
    case TARVANE_TORISPHERICAL_HEAD: {
        const Torisphere shape(s.D, s.L, s.r);
        head(head_profile(s), shape.depth);
        add_radius("L", s.L, 0, shape.crown_centre, (shape.meet + UP) / 2);
        if (s.r > 0)
            add_radius("r", s.r, s.D / 2 - s.r, 0, shape.meet / 2);
        else
            notes.push_back("Knuckle radius not given");
        break;
    }
    case TARVANE_CONE:
        draw_cone();
        break;
    default:
        draw_flat();
    }
    const Box box = sheet.extent();
    if (box.right > WIDEST_SHELL || box.height() > HIGHEST_SHELL) return std::nullopt;

    if (!detail()) {
        const double unit = unit_of(units, Quantity::thickness), inner = s.D / 2;
        const std::string label = "t = " + written(s.t, Quantity::thickness);
        if (s.shape == TARVANE_FLAT_HEAD) {
            dimensions.push_back(view.height(label, unit, Side::left, 0, 0, s.t, 0));
        } else if (s.shape == TARVANE_CONE) {
            notes.push_back(label);
        } else {
            Dimension wall = view.radial(label, unit, inner, low, inner + s.t, low);
            wall.side = Side::below;
            dimensions.push_back(wall);
        }
        if (s.ci > 0 && s.ci < s.t)
            notes.push_back("Dashed: corroded by ci = " + written(s.ci, Quantity::thickness));
    } else if (s.ci > 0 && s.ci < s.t) {
        notes.push_back("Dashed: corroded");
    }
    draw_strip(sheet, style, Side::above, {box.top, -65, box.right + 5}, dimensions);
    // The thickness has its text at the right, where the detail would be.
    const double right = box.right + (detail() ? 5 : FOR_LABEL);
    draw_strip(sheet, style, Side::below, {box.bottom, -65, right}, dimensions);
    view.axis(std::min(box.top, sheet.extent().top) - 3, sheet.extent().bottom + 2);
    // Beside what the other strips have at the left of the axis.
    draw_strip(sheet, style, Side::left, {std::min(-4.0, sheet.extent().left)}, dimensions);
    draw_radii();
    if (as_line) notes.push_back("Wall drawn as a line");
    if (detail()) draw_detail();

    if (s.openings.first > 0) not_drawn.push_back(openings_text(s.openings, "d", units, style));
    if (s.Ut > 0)
        not_drawn.push_back("mill under-tolerance Ut = " + written(s.Ut, Quantity::thickness));
    return drafted(std::move(sheet), style, units,
                   {.title = name + ": " + title_of(s),
                    .notes = notes,
                    .indicated = {},
                    .not_drawn = not_drawn,
                    .alt = "Half section of " + name + ", " + title_of(s)});
}

bool possible(const ShellShape& s) {
    for (const double value : {s.D, s.t, s.ci, s.Ut, s.depth, s.L, s.r, s.straight, s.alpha,
                               s.Dsmall, s.tk, s.length, s.tangent, s.D2})
        if (!std::isfinite(value) || value < 0 || value > 1e5) return false;
    if (!(s.D > 0) || !(s.t > 0)) return false;
    switch (s.shape) {
    case TARVANE_ELLIPTICAL_HEAD:
        return s.depth > 0;
    case TARVANE_TORISPHERICAL_HEAD:
        return Torisphere::possible(s.D, s.L, s.r);
    case TARVANE_CONE: {
        const double angle = s.alpha * std::numbers::pi / 180;
        const double start = s.D / 2 - s.r * (1 - std::cos(angle));
        return s.alpha > 0.5 && s.alpha < 80 && s.r < s.D / 2 && s.Dsmall / 2 < start * 0.999;
    }
    default:
        return true;
    }
}

template <class Number, class Input>
std::optional<ShellShape> common_shape(const Input& in) {
    ShellShape s;
    const auto at = [&](Number number) { return static_cast<double>(in.setting(number)); };
    s.shape = in.shape();
    s.outside = in.outside();
    s.t = at(Number::t);
    s.ci = at(Number::ci);
    s.Ut = at(Number::Ut);
    const double D = static_cast<double>(in.diameter());
    s.D = s.outside ? D - 2 * s.t : D;
    if (s.shape == TARVANE_ELLIPTICAL_HEAD) {
        const double k = at(Number::k);
        s.depth = at(Number::h) > 0 ? at(Number::h) : k > 0 ? s.D / (2 * k) : 0;
    }
    if (s.shape == TARVANE_TORISPHERICAL_HEAD) s.L = at(Number::L);
    if (s.shape == TARVANE_TORISPHERICAL_HEAD || s.shape == TARVANE_CONE) s.r = at(Number::r);
    if (s.shape == TARVANE_CYLINDER) s.length = at(Number::length);
    if (s.shape == TARVANE_CONE) {
        s.alpha = at(Number::alpha);
        s.Dsmall = at(Number::Dsmall);
        s.length = at(Number::cone_length);
    }
    return s;
}

} // namespace

std::optional<ShellShape> shape_of(const ShellInput& shell) {
    using S = ShellNumber;
    std::optional<ShellShape> s = common_shape<S>(shell);
    const bool head = s->shape == TARVANE_ELLIPTICAL_HEAD || s->shape == TARVANE_SPHERE ||
                      s->shape == TARVANE_TORISPHERICAL_HEAD;
    if (head) s->straight = static_cast<double>(shell.setting(S::straight));
    if (s->shape == TARVANE_CYLINDER)
        s->tangent = static_cast<double>(shell.setting(S::tangent_length));
    if (s->shape == TARVANE_CONE) s->tk = static_cast<double>(shell.setting(S::tk));
    if (s->shape == TARVANE_FLAT_HEAD) {
        const auto at = [&](S number) { return static_cast<double>(shell.setting(number)); };
        s->D2 = at(S::D2);
        s->openings = {at(S::d1), at(S::d2), at(S::pitch)};
    }
    return possible(*s) ? s : std::nullopt;
}

std::optional<ShellShape> shape_of(const ExternalInput& shell) {
    const std::optional<ShellShape> s = common_shape<ExternalNumber>(shell);
    return possible(*s) ? s : std::nullopt;
}

Profile head_profile(const ShellShape& s) {
    Profile profile;
    if (s.shape == TARVANE_ELLIPTICAL_HEAD)
        profile = ellipse(s.D / 2, s.depth);
    else if (s.shape == TARVANE_SPHERE)
        profile = arc(0, 0, s.D / 2, 0, std::numbers::pi / 2);
    else if (s.shape == TARVANE_TORISPHERICAL_HEAD)
        profile = Torisphere(s.D, s.L, s.r).profile(s.D, s.L, s.r);
    if (!profile.empty() && s.straight > 0)
        profile.insert(profile.begin(), {s.D / 2, -s.straight, 1, 0});
    return profile;
}

std::optional<Draft> draw_shell(const ShellShape& shape, const std::string& name,
                                const UnitSystem& units, const DimensionStyle& style) {
    return largest_draft(
        [&](double scale) { return ShellSection(shape, units, style, scale).draw(name); });
}

} // namespace tarvane::vessel
