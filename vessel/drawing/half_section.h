// The half section of a body of revolution: the axis upright at the left, radii to the right, heights upwards. Where
// the bore would take most of the page, a piece between the axis and the body is broken out.
#pragma once

#include "drawing/dimensions.h"
#include "drawing/sheet.h"

#include <vector>

namespace tarvane::vessel {

// A corner of a section in inches; `open`: no outline to the next corner, as where a part is cut off.
struct Corner {
    double r, z;
    bool open = false;
};

class HalfSection {
  public:
    // The radii from `axis_side` to `body_side` (in.) are broken out; none where they are equal.
    HalfSection(Sheet& on, double scale, double axis_side = 0, double body_side = 0);
    // One with a break if the radius up to `first` is large on the page.
    static HalfSection of_ring(Sheet& on, double scale, double first);

    double x(double r) const;
    double y(double z) const { return -z * mm; }
    double length(double mm_on_page) const { return mm_on_page / mm; } // in.
    Point at(double r, double z) const { return {x(r), y(z)}; }
    bool broken() const { return to > from; }
    bool shows(double r) const { return !(broken() && r > from && r < to); }

    // A part in section with its outline. Holes are rectangles between two corners.
    void part(const std::vector<Corner>& corners, bool rising,
              const std::vector<std::pair<Corner, Corner>>& holes = {});
    // The same, filled: thin parts.
    void filled(const std::vector<Corner>& corners);
    // A level line from the axis to a radius, as of an edge behind the section.
    void edge(double z, double r, const Pen& pen = OUTLINE);
    void line(Corner a, Corner b, const Pen& pen) { sheet.line(at(a.r, a.z), at(b.r, b.z), pen); }
    // Where a wall is cut off at a height.
    void cut(double z, double inner, double outer);
    // The lines of the break over the height of the view, which is returned.
    void break_lines(double low, double high);
    // The axis, from and to a place on the page; a half view has two strokes across it.
    void axis(double top, double bottom);

    Dimension diameter(std::string label, double unit, double d, double z) const;
    Dimension radial(std::string label, double unit, double r1, double z1, double r2,
                     double z2) const;
    Dimension height(std::string label, double unit, Side side, double z1, double r1, double z2,
                     double r2) const;

  private:
    Sheet& sheet;
    double mm; // on the page, of an inch
    double from, to;

    std::vector<Corner> clipped(const std::vector<Corner>& corners, double r, bool below) const;
    std::vector<std::vector<Corner>> pieces(const std::vector<Corner>& corners) const;
};

} // namespace tarvane::vessel
