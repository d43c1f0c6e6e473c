#include "drawing/sheet.h"

#include "drawing/font.h"
#include "values/decimal.h"

#include <cmath>
#include <numbers>
#include <utility>

namespace tarvane::vessel {

namespace {

constexpr double ARROW_LENGTH = 3, ARROW_WIDTH = 1; // 3 : 1
constexpr double ROOM_OF_LABEL = 0.8;               // that hatching leaves around it
constexpr double SHORTEST_HATCH = 0.3;

// Two decimals, none that are zero.
std::string number(double mm) {
    std::string text = fixed_text(mm, 2);
    while (text.back() == '0')
        text.pop_back();
    if (text.back() == '.') text.pop_back();
    return text == "-0" ? "0" : text;
}

std::string point(Point p) { return number(p.x) + ' ' + number(p.y); }

std::string path(const Points& points) {
    std::string d = "M" + point(points.front());
    for (std::size_t i = 1; i < points.size(); ++i)
        d += 'L' + point(points[i]);
    return d;
}

// What paths of one look draw, in the order in which the looks came.
using Paths = std::vector<std::pair<std::string, std::string>>;

void add(Paths& paths, const std::string& look, const std::string& d) {
    const auto same = std::find_if(paths.begin(), paths.end(),
                                   [&](const auto& each) { return each.first == look; });
    if (same == paths.end())
        paths.emplace_back(look, d);
    else
        same->second += d;
}

std::string look(const Pen& pen) {
    std::string text = "fill=\"none\" stroke=\"" + std::string(pen.colour) + "\" stroke-width=\"" +
                       number(pen.width) + '"';
    if (pen.dashes.empty()) return text + " stroke-linecap=\"round\" stroke-linejoin=\"round\"";
    return text + " stroke-dasharray=\"" + std::string(pen.dashes) + '"';
}

using Spans = std::vector<std::pair<double, double>>;

// Where a line of the direction `along` through `from` is inside a polygon, by the distance from `from`.
Spans inside(const Points& polygon, Point from, Point along) {
    std::vector<double> crossings;
    for (std::size_t i = 0; i < polygon.size(); ++i) {
        const Point a = polygon[i], b = polygon[(i + 1) % polygon.size()];
        // Signed distances from the line; half open, so that a corner counts once.
        const double da = (a.x - from.x) * along.y - (a.y - from.y) * along.x;
        const double db = (b.x - from.x) * along.y - (b.y - from.y) * along.x;
        if ((da < 0) == (db < 0)) continue;
        const double part = da / (da - db);
        const Point at{a.x + part * (b.x - a.x), a.y + part * (b.y - a.y)};
        crossings.push_back((at.x - from.x) * along.x + (at.y - from.y) * along.y);
    }
    std::sort(crossings.begin(), crossings.end());
    Spans spans;
    for (std::size_t i = 0; i + 1 < crossings.size(); i += 2)
        spans.emplace_back(crossings[i], crossings[i + 1]);
    return spans;
}

void take_out(Spans& spans, const Spans& holes) {
    for (const auto& [low, high] : holes) {
        Spans rest;
        for (const auto& [from, to] : spans) {
            if (high <= from || low >= to) {
                rest.emplace_back(from, to);
                continue;
            }
            if (low > from) rest.emplace_back(from, low);
            if (high < to) rest.emplace_back(high, to);
        }
        spans = std::move(rest);
    }
}

// A label as it is written.
struct Set {
    std::string words;
    double x = 0;
    Anchor anchor = Anchor::start;
    std::string shifts = {}; // of its letters, each of all that follow, too
};

Set as_it_is(const Text& label) { return {label.words, label.at.x, label.anchor}; }

// "t = 1.19" by its letters, which are where they are with the blanks: makers of PDF draw each letter for itself, and a
// blank costs as much as a letter. Its beginning is given, as they do not count the shifts into its length.
Set without_blanks(const Text& label) {
    constexpr std::string_view SIGN = " = ";
    if (label.words.find(SIGN) == std::string::npos) return as_it_is(label);
    Set set;
    const double width = text_width(label.words, TEXT_SIZE);
    set.x = label.at.x - (label.anchor == Anchor::start    ? 0
                          : label.anchor == Anchor::middle ? width / 2
                                                           : width);
    const std::string blank = number(text_width(" ", TEXT_SIZE));
    std::string none; // of the letters since the last shift
    const auto letter = [&](std::string_view bytes, bool shifted) {
        set.words += bytes;
        none += none.empty() && set.shifts.empty() ? "" : " ";
        none += shifted ? blank : "0";
        if (!shifted) return;
        set.shifts += none;
        none.clear();
    };
    bool after_sign = false;
    for (std::size_t i = 0; i < label.words.size();) {
        if (std::string_view(label.words).substr(i).starts_with(SIGN)) {
            letter("=", true);
            i += SIGN.size();
            after_sign = true;
            continue;
        }
        std::size_t end = i + 1;
        while (end < label.words.size() && (label.words[end] & 0xC0) == 0x80)
            ++end;
        letter(std::string_view(label.words).substr(i, end - i), after_sign);
        after_sign = false;
        i = end;
    }
    return set;
}

Points corners(const Box& box) {
    return {
        {box.left, box.top}, {box.right, box.top}, {box.right, box.bottom}, {box.left, box.bottom}};
}

} // namespace

bool crosses(const Box& box, Point a, Point b) {
    // The part of the line that is within the box, side by side.
    double from = 0, to = 1;
    const auto cut = [&](double start, double step, double low, double high) {
        if (std::abs(step) < 1e-12) return start > low && start < high;
        const double first = (low - start) / step, second = (high - start) / step;
        from = std::max(from, std::min(first, second));
        to = std::min(to, std::max(first, second));
        return from < to;
    };
    return cut(a.x, b.x - a.x, box.left, box.right) && cut(a.y, b.y - a.y, box.top, box.bottom);
}

std::string escaped(std::string_view text) {
    std::string out;
    for (const char c : text) {
        switch (c) {
        case '&':
            out += "&amp;";
            break;
        case '<':
            out += "&lt;";
            break;
        case '>':
            out += "&gt;";
            break;
        case '"':
            out += "&quot;";
            break;
        default:
            out += c;
        }
    }
    return out;
}

// All the same way round: they are parts of one path, in which those of two ways would leave a hole.
void Sheet::area(Points outline, std::string_view colour) {
    double around = 0;
    for (std::size_t i = 0; i < outline.size(); ++i) {
        const Point a = outline[i], b = outline[(i + 1) % outline.size()];
        around += a.x * b.y - a.y * b.x;
    }
    if (around < 0) std::reverse(outline.begin() + 1, outline.end());
    areas.push_back({std::move(outline), colour});
}

void Sheet::arrow(Point tip, Point along) {
    const Point back{tip.x - ARROW_LENGTH * along.x, tip.y - ARROW_LENGTH * along.y};
    const double half = ARROW_WIDTH / 2;
    area({tip,
          {back.x - half * along.y, back.y + half * along.x},
          {back.x + half * along.y, back.y - half * along.x}},
         "#000000");
}

void Sheet::break_line(Point from, Point to) {
    const double dx = to.x - from.x, dy = to.y - from.y, length = std::hypot(dx, dy);
    if (length < 0.01) return;
    const Point u{dx / length, dy / length}, across{-u.y, u.x};
    const double middle = length / 2, wide = std::min(1.5, length / 6);
    const auto at = [&](double along, double aside) {
        return Point{from.x + along * u.x + aside * across.x,
                     from.y + along * u.y + aside * across.y};
    };
    stroke({from, at(middle - wide / 2, 0), at(middle - wide / 4, wide),
            at(middle + wide / 4, -wide), at(middle + wide / 2, 0), to},
           THIN);
}

void Sheet::text(Point at, std::string words, Anchor anchor, bool upwards,
                 std::string_view colour) {
    const double width = text_width(words, TEXT_SIZE);
    const double before = anchor == Anchor::start    ? 0
                          : anchor == Anchor::middle ? width / 2
                                                     : width;
    const double up = CAP_HEIGHT * TEXT_SIZE, down = 0.2 * TEXT_SIZE;
    const Box box = upwards ? Box{at.x - up, at.y + before - width, at.x + down, at.y + before}
                            : Box{at.x - before, at.y - up, at.x - before + width, at.y + down};
    labels.push_back({std::move(words), at, anchor, upwards, colour, box});
}

Box Sheet::extent() const {
    Box box;
    for (const Stroke& stroke : strokes)
        for (const Point p : stroke.points)
            box.add(p);
    for (const Area& area : areas)
        for (const Point p : area.outline)
            box.add(p);
    for (const Text& label : labels) {
        box.add({label.box.left, label.box.top});
        box.add({label.box.right, label.box.bottom});
    }
    return box;
}

void Sheet::move(double dx, double dy) {
    const auto moved = [&](Points& points) {
        for (Point& p : points)
            p = {p.x + dx, p.y + dy};
    };
    for (Stroke& stroke : strokes)
        moved(stroke.points);
    for (Area& area : areas)
        moved(area.outline);
    for (Hatched& part : sections) {
        moved(part.outline);
        for (Points& hole : part.holes)
            moved(hole);
    }
    for (Text& label : labels) {
        label.at = {label.at.x + dx, label.at.y + dy};
        label.box = {label.box.left + dx, label.box.top + dy, label.box.right + dx,
                     label.box.bottom + dy};
    }
}

std::vector<Stroke> Sheet::hatching() const {
    std::vector<Stroke> lines;
    for (const Hatched& part : sections) {
        const double step = part.spacing;
        const Point along{std::numbers::sqrt2 / 2,
                          (part.rising ? -1 : 1) * std::numbers::sqrt2 / 2};
        const Point across{-along.y, along.x};
        // The lines are counted from the corner of the page: those of one direction are one pattern.
        double low = 1e9, high = -1e9;
        for (const Point p : part.outline) {
            const double d = p.x * across.x + p.y * across.y;
            low = std::min(low, d);
            high = std::max(high, d);
        }
        for (double d = std::ceil(low / step) * step; d < high; d += step) {
            const Point from{d * across.x, d * across.y};
            Spans spans = inside(part.outline, from, along);
            if (spans.empty()) continue;
            for (const Points& hole : part.holes)
                take_out(spans, inside(hole, from, along));
            for (const Text& label : labels)
                take_out(spans, inside(corners(label.box.grown(ROOM_OF_LABEL)), from, along));
            for (const auto& [begin, end] : spans) {
                if (end - begin < SHORTEST_HATCH) continue;
                lines.push_back({{{from.x + begin * along.x, from.y + begin * along.y},
                                  {from.x + end * along.x, from.y + end * along.y}},
                                 THIN});
            }
        }
    }
    return lines;
}

std::string Sheet::svg(double width, double height, std::string_view alt,
                       DrawnFor surroundings) const {
    const std::string w = number(width), h = number(height);
    // A whole number: validators of HTML take no other.
    const auto pixels = [](double mm) { return std::to_string(std::lround(mm * 96 / 25.4)); };
    std::string out =
        "<svg xmlns=\"http://www.w3.org/2000/svg\" role=\"img\" aria-label=\"" + escaped(alt) +
        "\" width=\"" + pixels(width) + "\" height=\"" + pixels(height) + "\" style=\"width:" + w +
        "mm;height:" + h + "mm\" viewBox=\"0 0 " + w + ' ' + h + "\">\n" +
        (surroundings == DrawnFor::file ? "<style>" + font_face() + "</style>\n" : std::string()) +
        "<rect width=\"" + w + "\" height=\"" + h + "\" fill=\"#ffffff\"/>\n<g font-family=\"" +
        std::string(FONT_FAMILY) + "\" font-size=\"" + number(TEXT_SIZE) + "\">\n";
    // One path for what looks alike: readers of SVG take their time for each.
    Paths filled;
    for (const Area& area : areas)
        add(filled, "fill=\"" + std::string(area.colour) + '"', path(area.outline) + 'Z');
    Paths drawn;
    for (const auto& list : {hatching(), strokes})
        for (const Stroke& stroke : list)
            add(drawn, look(stroke.pen), path(stroke.points));
    for (const Paths& paths : {filled, drawn})
        for (const auto& [look, d] : paths)
            out.append("<path ").append(look).append(" d=\"").append(d).append("\"/>\n");

    for (const Text& label : labels) {
        const Set set =
            surroundings == DrawnFor::document ? without_blanks(label) : as_it_is(label);
        out += "<text x=\"" + number(set.x) + "\" y=\"" + number(label.at.y) + '"';
        // Readers differ in whether the shifts count for the length.
        if (!set.shifts.empty())
            out += " dx=\"" + set.shifts + '"';
        else
            out += " textLength=\"" + number(text_width(set.words, TEXT_SIZE)) +
                   "\" lengthAdjust=\"spacingAndGlyphs\"";
        if (set.anchor != Anchor::start)
            out +=
                set.anchor == Anchor::middle ? " text-anchor=\"middle\"" : " text-anchor=\"end\"";
        if (label.colour != "#000000") out += " fill=\"" + std::string(label.colour) + '"';
        if (label.upwards) out += " transform=\"rotate(-90 " + point(label.at) + ")\"";
        out += '>' + escaped(set.words) + "</text>\n";
    }
    return out + "</g>\n</svg>\n";
}

} // namespace tarvane::vessel
