#include "drawing/vessel_outline.h"

#include "assembly/place.h"
#include "components/flange_input.h"
#include "components/shell_input.h"
#include "drawing/font.h"
#include "drawing/half_section.h"
#include "drawing/shell_drawing.h"
#include "tarvane/tarvane.h"
#include "values/text.h"

#include <cmath>
#include <numbers>

namespace tarvane::vessel {

namespace {

using S = ShellNumber;

// On the page, mm.
constexpr double WIDEST_OUTLINE = 75, HIGHEST_OUTLINE = 150;
constexpr double LINE = 4.6, KNEE = 6;
constexpr double WIDEST_NAME = 55;
constexpr double BODY = 0.5; // of the largest diameter: cylinders that are not nozzles

// A part of the body: its outside, right half, from the bottom up, in inches.
struct Body {
    const ShellInput* shell;
    std::vector<Corner> outline;
    bool head;
};

// A text beside the view, and what it belongs to.
struct Mark {
    double x, y; // on the page
    std::vector<std::string> lines;
    double at = 0; // the middle of the text, when it is placed
};

double number(const ShellInput& shell, S key) { return static_cast<double>(shell.setting(key)); }

double outside_radius(const ShellInput& shell) {
    return static_cast<double>(inside_diameter(shell)) / 2 + number(shell, S::t);
}

const ShellInput* shell_of(const Element& element) {
    return element.kind == &SHELL_KIND ? static_cast<const ShellInput*>(&element) : nullptr;
}

// A head on the end of a cylinder, upwards from 0.
std::vector<Corner> head_outline(const ShellInput& head) {
    const auto shape = shape_of(head);
    if (!shape) return {};
    const Profile profile = head_profile(*shape);
    if (!profile.empty()) {
        std::vector<Corner> curve = offset(profile, shape->t);
        for (Corner& c : curve)
            c.z += shape->straight;
        return curve;
    }
    const double outer = shape->D / 2 + shape->t;
    if (shape->shape == TARVANE_FLAT_HEAD) return {{outer, 0}, {outer, shape->t}, {0, shape->t}};
    if (!(shape->length > 0)) return {};
    const double angle = shape->alpha * std::numbers::pi / 180;
    const double small = std::max(0.0, outer - shape->length * std::tan(angle));
    return {{outer, 0}, {small, shape->length}, {0, shape->length}};
}

class Outline {
  public:
    Outline(const Request& whole, double scale, const DimensionStyle& how)
        : request(whole), style(how), mm(25.4 * scale) {
        sheet.scale = scale;
        find_bodies();
    }

    std::optional<Draft> draw();

  private:
    const Request& request;
    const DimensionStyle& style;
    double mm;
    Sheet sheet;
    bool lying = false;
    std::vector<Body> bodies;
    std::vector<Mark> names, heights;
    std::vector<Mark> titles; // of the parts of a body that lies: above them

    double y(double z) const { return -z * mm; }
    void find_bodies();
    void add_cylinder(const ShellInput& shell, double foot);
    void add_head(const ShellInput& head, const ShellInput& on);
    void draw_body(const Body& body);
    double right_at(double z) const;
    void mark_heights();
    void mark_names();
    static void place(std::vector<Mark>& marks, double top, double bottom);
    void write(const std::vector<Mark>& marks, double edge, bool left);
    void write_titles();
};

// What lies is drawn along x: `outline` holds x in r and the height above the lowest point in z.
void Outline::add_cylinder(const ShellInput& shell, double foot) {
    const double R = outside_radius(shell), length = static_cast<double>(length_of(shell));
    if (lying) {
        const double low = foot - number(shell, S::t);
        bodies.push_back(
            {&shell, {{0, low}, {length, low}, {length, low + 2 * R}, {0, low + 2 * R}}, false});
    } else {
        bodies.push_back(
            {&shell, {{0, foot}, {R, foot}, {R, foot + length}, {0, foot + length}}, false});
    }
}

void Outline::add_head(const ShellInput& head, const ShellInput& on) {
    std::vector<Corner> outline = head_outline(head);
    const auto foot = elevation_of(on);
    if (outline.empty() || !foot) return;
    const double low = static_cast<double>(*foot), length = static_cast<double>(length_of(on));
    const int end = head.whole_setting(S::end);
    for (Corner& c : outline) {
        if (end == END_TOP)
            c.z += low + length;
        else if (end == END_BOTTOM)
            c.z = low - c.z;
        else
            c = {end == END_LEFT ? -c.z : length + c.z, c.r};
    }
    if (lying) {
        // Both halves, around the axis of the cylinder.
        const double middle = low + static_cast<double>(inside_diameter(on)) / 2;
        std::vector<Corner> whole;
        whole.reserve(2 * outline.size());
        for (const Corner& c : outline)
            whole.push_back({c.r, middle - c.z});
        for (auto c = outline.rbegin(); c != outline.rend(); ++c)
            whole.push_back({c->r, middle + c->z});
        outline = whole;
    }
    bodies.push_back({&head, std::move(outline), true});
}

void Outline::find_bodies() {
    double widest = 0;
    const ShellInput* largest = nullptr;
    for (const auto& element : request.elements) {
        const ShellInput* shell = shell_of(*element);
        if (!shell || shell->shape() != TARVANE_CYLINDER || !elevation_of(*shell) ||
            !(length_of(*shell) > 0.0f))
            continue;
        if (outside_radius(*shell) > widest) {
            widest = outside_radius(*shell);
            largest = shell;
        }
    }
    if (!largest) return;
    lying = lies(*largest, request);
    std::vector<const ShellInput*> cylinders;
    for (const auto& element : request.elements) {
        const ShellInput* shell = shell_of(*element);
        if (!shell || shell->shape() != TARVANE_CYLINDER || !(length_of(*shell) > 0.0f)) continue;
        const auto foot = elevation_of(*shell);
        // How several that lie are beside each other is not known.
        if (!foot || outside_radius(*shell) < BODY * widest || (lying && shell != largest))
            continue;
        add_cylinder(*shell, static_cast<double>(*foot));
        cylinders.push_back(shell);
    }
    for (const auto& element : request.elements) {
        const ShellInput* head = shell_of(*element);
        if (!head || head->text_setting(ShellText::on).empty()) continue;
        for (const ShellInput* cylinder : cylinders)
            if (cylinder->description() == head->text_setting(ShellText::on))
                add_head(*head, *cylinder);
    }
}

void Outline::draw_body(const Body& body) {
    Points right, left;
    for (const Corner& c : body.outline) {
        right.push_back({c.r * mm, y(c.z)});
        left.push_back({-c.r * mm, y(c.z)});
    }
    if (lying && !body.head) right.push_back(right.front());
    sheet.stroke(right, OUTLINE);
    if (!lying) sheet.stroke(left, OUTLINE);
}

// The right side of the body at a height, on the page; the axis where there is none.
double Outline::right_at(double z) const {
    double right = 0;
    for (const Body& body : bodies)
        for (std::size_t i = 0; i + 1 < body.outline.size(); ++i) {
            const Corner a = body.outline[i], b = body.outline[i + 1];
            if (std::min(a.z, b.z) > z || std::max(a.z, b.z) < z) continue;
            const double part = a.z == b.z ? 0 : (z - a.z) / (b.z - a.z);
            right = std::max(right, a.z == b.z ? std::max(a.r, b.r) : a.r + part * (b.r - a.r));
        }
    return right * mm;
}

void Outline::mark_heights() {
    const double unit = unit_of(request.units, Quantity::diameter);
    std::vector<double> all;
    const auto add = [&](double z) {
        for (const double other : all)
            if (std::abs(other - z) < 1e-4 * (1 + std::abs(z))) return;
        all.push_back(z);
    };
    for (const auto& element : request.elements) {
        if (element->kind != &SHELL_KIND && element->kind != &FLANGE_KIND) continue;
        if (const auto z = elevation_of(*element)) add(static_cast<double>(*z));
        if (const auto z = top_of(*element, request)) {
            for (const Body& body : bodies)
                if (body.shell == element.get()) add(static_cast<double>(*z));
        }
    }
    for (const double z : all) {
        const std::string label = "EL " + style.length(z, Quantity::diameter, request.units);
        heights.push_back({lying ? sheet.extent().left : -right_at(z), y(z), {label}});
        sheet.measures.push_back({label, std::abs(y(z)), unit, sheet.scale});
    }
}

void Outline::mark_names() {
    const auto add = [&](double x, double at, const std::string& name) {
        for (Mark& mark : names)
            if (std::abs(mark.y - at) < 0.05 && std::abs(mark.x - x) < 0.05) {
                mark.lines.push_back(name);
                return;
            }
        names.push_back({x, at, {name}});
    };
    for (const auto& element : request.elements) {
        if (element->kind != &SHELL_KIND && element->kind != &FLANGE_KIND) continue;
        const std::string given = to_utf8(element->description());
        const std::string name = given.empty() ? name_of(*element) : given;
        const Body* own = nullptr;
        for (const Body& body : bodies)
            if (body.shell == element.get()) own = &body;
        if (own) {
            double low = 1e9, high = -1e9, first = 1e9, last = -1e9;
            for (const Corner& c : own->outline) {
                low = std::min(low, c.z);
                high = std::max(high, c.z);
                first = std::min(first, c.r);
                last = std::max(last, c.r);
            }
            if (lying) {
                titles.push_back({(first + last) / 2 * mm, 0, {name}});
                continue;
            }
            const double z = low + 0.6 * (high - low);
            add(right_at(z), y(z), name);
        } else if (const auto z = elevation_of(*element)) {
            add(right_at(static_cast<double>(*z)), y(static_cast<double>(*z)), name);
        }
    }
    for (Mark& mark : names) {
        std::vector<std::string> lines;
        for (const std::string& name : mark.lines)
            for (std::string& line : fitted_lines(name, TEXT_SIZE, WIDEST_NAME))
                lines.push_back(std::move(line));
        mark.lines = std::move(lines);
    }
}

// Beside what they belong to as far as the others let them, within the view where there is the room.
void Outline::place(std::vector<Mark>& marks, double top, double bottom) {
    std::stable_sort(marks.begin(), marks.end(),
                     [](const Mark& a, const Mark& b) { return a.y < b.y; });
    const auto half = [](const Mark& mark) {
        return LINE * static_cast<double>(mark.lines.size()) / 2;
    };
    double sum = 0;
    for (const Mark& mark : marks)
        sum += 2 * half(mark);
    double next = std::min(top, bottom - sum) - LINE;
    for (Mark& mark : marks) {
        mark.at = std::max(mark.y, next + half(mark));
        next = mark.at + half(mark);
    }
    double lowest = std::max(bottom, top + sum) + LINE;
    for (auto mark = marks.rbegin(); mark != marks.rend(); ++mark) {
        mark->at = std::min(mark->at, lowest - half(*mark));
        lowest = mark->at - half(*mark);
    }
}

void Outline::write(const std::vector<Mark>& marks, double edge, bool left) {
    const double out = left ? -1 : 1;
    for (const Mark& mark : marks) {
        sheet.stroke(
            {{mark.x, mark.y}, {edge + out * 2, mark.y}, {edge + out * (2 + KNEE), mark.at}}, THIN);
        double base =
            mark.at - LINE * (static_cast<double>(mark.lines.size()) - 1) / 2 + TEXT_HEIGHT / 2;
        for (const std::string& line : mark.lines) {
            sheet.text({edge + out * (3 + KNEE), base}, line, left ? Anchor::end : Anchor::start);
            base += LINE;
        }
    }
}

// In as few rows as their widths let them.
void Outline::write_titles() {
    std::stable_sort(titles.begin(), titles.end(),
                     [](const Mark& a, const Mark& b) { return a.x < b.x; });
    const double lowest = sheet.extent().top - 2;
    std::vector<double> rows; // where their last texts end
    for (const Mark& title : titles) {
        const double half = text_width(title.lines[0], TEXT_SIZE) / 2 + 1.5;
        std::size_t row = 0;
        while (row < rows.size() && rows[row] > title.x - half)
            ++row;
        rows.resize(std::max(rows.size(), row + 1));
        rows[row] = title.x + half;
        sheet.text({title.x, lowest - LINE * static_cast<double>(row)}, title.lines[0],
                   Anchor::middle);
    }
}

std::optional<Draft> Outline::draw() {
    if (bodies.empty()) return std::nullopt;
    for (const Body& body : bodies)
        draw_body(body);
    const Box box = sheet.extent();
    if (box.width() > WIDEST_OUTLINE || box.height() > HIGHEST_OUTLINE) return std::nullopt;
    mark_heights();
    mark_names();
    if (names.size() + titles.size() < 2) return std::nullopt;
    if (lying) {
        const double middle = (box.top + box.bottom) / 2;
        sheet.line({box.left - 4, middle}, {box.right + 4, middle}, CENTRE);
    } else {
        sheet.line({0, box.top - 4}, {0, box.bottom + 4}, CENTRE);
    }
    double top = box.top, bottom = box.bottom; // of what is above or below the body, too
    for (const Mark& mark : heights) {
        top = std::min(top, mark.y);
        bottom = std::max(bottom, mark.y);
    }
    place(heights, top, bottom);
    place(names, top, bottom);
    write(heights, box.left - 4, true);
    write(names, box.right + 4, false);
    if (lying) write_titles();

    FrameText text;
    text.title = request.description.empty() ? "Vessel" : request.description;
    text.notes = {"EL: elevation of the lowest point inside, or of the highest",
                  "Nozzles and flanges are at their elevations, on whatever side"};
    text.alt = text.title + " from outside, components by elevation";
    for (const auto* marks : {&titles, &names})
        for (const Mark& mark : *marks)
            for (const std::string& line : mark.lines)
                text.alt += "; " + line;
    return drafted(std::move(sheet), style, request.units, text);
}

} // namespace

std::optional<Draft> draw_vessel(const Request& request) {
    const DimensionStyle style = dimension_style(request.units, request.units.decimal_comma);
    return largest_draft([&](double scale) { return Outline(request, scale, style).draw(); });
}

} // namespace tarvane::vessel
