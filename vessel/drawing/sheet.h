// A page of a drawing in millimetres, y downwards: collects its ink and writes it as SVG. What is on it can be
// looked at before it is written, so that a drawing can be checked by its lines and texts, not by its pixels.
#pragma once

#include "drawing/figure.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace tarvane::vessel {

struct Point {
    double x = 0, y = 0;
};
using Points = std::vector<Point>;

struct Box {
    double left = 1e9, top = 1e9, right = -1e9, bottom = -1e9;

    double width() const { return right - left; }
    double height() const { return bottom - top; }
    bool empty() const { return right < left; }
    void add(Point p) {
        left = std::min(left, p.x);
        right = std::max(right, p.x);
        top = std::min(top, p.y);
        bottom = std::max(bottom, p.y);
    }
    Box grown(double by) const { return {left - by, top - by, right + by, bottom + by}; }
    bool meets(const Box& other) const {
        return left < other.right && other.left < right && top < other.bottom && other.top < bottom;
    }
};

// Two line widths, 2 : 1; dashes as in SVG.
struct Pen {
    double width;
    std::string_view dashes = {};
    std::string_view colour = "#000000";

    bool operator==(const Pen&) const = default;
};
inline constexpr double THIN_LINE = 0.25, THICK_LINE = 0.5;
inline constexpr Pen OUTLINE{THICK_LINE}, THIN{THIN_LINE}, CENTRE{THIN_LINE, "7 1.2 1 1.2"},
    DASHED{THIN_LINE, "2.4 1.2"}, PHANTOM{THIN_LINE, "6 1.2 1 1.2 1 1.2"};

// One character height on a drawing: capital letters of 2.5 mm.
inline constexpr double TEXT_HEIGHT = 2.5;
inline constexpr double TEXT_SIZE = 3.43;

struct Stroke {
    Points points;
    Pen pen;
};

struct Area {
    Points outline;
    std::string_view colour;
};

// An area in section. Hatching leaves out the labels, and the holes.
struct Hatched {
    Points outline;
    bool rising; // from left to right; the next part falls
    double spacing;
    std::vector<Points> holes;
};

enum class Anchor { start, middle, end };

struct Text {
    std::string words;
    Point at; // start, middle or end of the base line
    Anchor anchor;
    bool upwards; // read from the right
    std::string_view colour;
    Box box;
};

// A dimension that was drawn: what its label says, and how long it is on the page.
struct Measure {
    std::string label;
    double drawn; // mm on the page, what a break takes out added
    double unit;  // mm of the unit of the label
    double scale; // of its view
};

class Sheet {
  public:
    double scale = 1; // page over object, of the view that is drawn; 0: none
    std::vector<Measure> measures;
    std::vector<std::string> dropped; // labels of dimensions that found no room

    void line(Point from, Point to, const Pen& pen) { strokes.push_back({{from, to}, pen}); }
    void stroke(Points points, const Pen& pen) { strokes.push_back({std::move(points), pen}); }
    void area(Points outline, std::string_view colour);
    void section(Points outline, bool rising, double spacing, std::vector<Points> holes = {}) {
        sections.push_back({std::move(outline), rising, spacing, std::move(holes)});
    }
    // A filled arrow head; `along` is the unit vector in which it points.
    void arrow(Point tip, Point along);
    // A line with the zigzag of a break.
    void break_line(Point from, Point to);
    void text(Point at, std::string words, Anchor anchor = Anchor::start, bool upwards = false,
              std::string_view colour = "#000000");

    // Of everything that was put on it.
    Box extent() const;
    void move(double dx, double dy);

    // Its hatching, now that all labels are known.
    std::vector<Stroke> hatching() const;
    const std::vector<Stroke>& lines() const { return strokes; }
    const std::vector<Area>& fills() const { return areas; }
    const std::vector<Text>& texts() const { return labels; }

    // The page as it is, from 0, 0 on; with the font, or for a page that has it.
    std::string svg(double width, double height, std::string_view alt,
                    DrawnFor surroundings = DrawnFor::page) const;

  private:
    std::vector<Stroke> strokes;
    std::vector<Area> areas;
    std::vector<Hatched> sections;
    std::vector<Text> labels;
};

// Whether a line runs through a box.
bool crosses(const Box& box, Point a, Point b);

std::string escaped(std::string_view text);

} // namespace tarvane::vessel
