#include "drawing/half_section.h"

#include <cmath>
#include <utility>

namespace tarvane::vessel {

namespace {

// On the page, mm.
constexpr double WIDEST_BORE = 42;           // that is drawn whole
constexpr double AT_AXIS = 12, AT_BODY = 14; // what a break leaves
constexpr double BREAK_GAP = 3;
constexpr double WIDE_HATCH = 2.4, NARROW_HATCH = 1.2, NARROW_PART = 8;

} // namespace

HalfSection::HalfSection(Sheet& on, double scale, double axis_side, double body_side)
    : sheet(on), mm(25.4 * scale), from(axis_side), to(body_side) {
    sheet.scale = scale;
}

HalfSection HalfSection::of_ring(Sheet& on, double scale, double first) {
    const double inch = 25.4 * scale;
    if (first * inch <= WIDEST_BORE) return HalfSection(on, scale);
    return HalfSection(on, scale, AT_AXIS / inch, first - AT_BODY / inch);
}

double HalfSection::x(double r) const {
    if (!broken() || r <= from) return r * mm;
    return (std::max(r, to) - to + from) * mm + BREAK_GAP;
}

std::vector<Corner> HalfSection::clipped(const std::vector<Corner>& corners, double r,
                                         bool below) const {
    std::vector<Corner> out;
    const auto kept = [&](const Corner& c) { return below ? c.r <= r : c.r >= r; };
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const Corner& a = corners[i];
        const Corner& b = corners[(i + 1) % corners.size()];
        if (kept(a)) out.push_back(a);
        if (kept(a) == kept(b)) continue;
        const double z = a.z + (r - a.r) / (b.r - a.r) * (b.z - a.z);
        // Leaving: what follows is the edge of the break, which has its own line.
        out.push_back({r, z, kept(a) || a.open});
    }
    return out;
}

std::vector<std::vector<Corner>> HalfSection::pieces(const std::vector<Corner>& corners) const {
    if (!broken()) return {corners};
    std::vector<std::vector<Corner>> found;
    for (auto& piece : {clipped(corners, from, true), clipped(corners, to, false)})
        if (piece.size() > 2) found.push_back(piece);
    return found;
}

void HalfSection::part(const std::vector<Corner>& corners, bool rising,
                       const std::vector<std::pair<Corner, Corner>>& holes) {
    std::vector<Points> left_out;
    left_out.reserve(holes.size());
    for (const auto& [a, b] : holes)
        left_out.push_back({at(a.r, a.z), at(b.r, a.z), at(b.r, b.z), at(a.r, b.z)});
    for (const auto& piece : pieces(corners)) {
        Points outline;
        Box box;
        for (const Corner& c : piece) {
            outline.push_back(at(c.r, c.z));
            box.add(outline.back());
        }
        // One line where the outline goes on.
        Points run;
        for (std::size_t i = 0; i < piece.size(); ++i) {
            if (run.empty()) run.push_back(outline[i]);
            if (piece[i].open) {
                if (run.size() > 1) sheet.stroke(std::move(run), OUTLINE);
                run = {};
            } else {
                run.push_back(outline[(i + 1) % piece.size()]);
            }
        }
        if (run.size() > 1) sheet.stroke(std::move(run), OUTLINE);
        const bool narrow = std::min(box.width(), box.height()) < NARROW_PART;
        sheet.section(std::move(outline), rising, narrow ? NARROW_HATCH : WIDE_HATCH, left_out);
    }
}

void HalfSection::filled(const std::vector<Corner>& corners) {
    for (const auto& piece : pieces(corners)) {
        Points outline;
        for (const Corner& c : piece)
            outline.push_back(at(c.r, c.z));
        sheet.area(std::move(outline), "#000000");
    }
}

void HalfSection::edge(double z, double r, const Pen& pen) {
    if (r <= 0) return;
    if (!broken() || r <= from) {
        sheet.line(at(0, z), at(r, z), pen);
        return;
    }
    sheet.line(at(0, z), at(from, z), pen);
    if (r > to) sheet.line(at(to, z), at(r, z), pen);
}

void HalfSection::cut(double z, double inner, double outer) {
    const double over = 1.5;
    sheet.break_line({x(inner) - over, y(z)}, {x(outer) + over, y(z)});
}

void HalfSection::break_lines(double low, double high) {
    if (!broken()) return;
    const double over = 2;
    for (const double at_x : {x(from), x(to)})
        sheet.break_line({at_x, y(high) - over}, {at_x, y(low) + over});
}

void HalfSection::axis(double top, double bottom) {
    sheet.line({0, top}, {0, bottom}, CENTRE);
    for (const double end : {top + 1.5, bottom - 1.5})
        for (const double off : {-0.6, 0.6})
            sheet.line({-1.8, end + off}, {1.8, end + off}, THIN);
}

Dimension HalfSection::diameter(std::string label, double unit, double d, double z) const {
    const double taken_out = broken() && d / 2 > to ? (to - from) * mm - BREAK_GAP : 0;
    return {.side = Side::below,
            .label = std::move(label),
            .unit = unit,
            .from = 0,
            .to = x(d / 2),
            .to_at = y(z),
            .half = true,
            .taken_out = taken_out};
}

Dimension HalfSection::radial(std::string label, double unit, double r1, double z1, double r2,
                              double z2) const {
    return {.side = Side::above,
            .label = std::move(label),
            .unit = unit,
            .from = x(r1),
            .to = x(r2),
            .from_at = y(z1),
            .to_at = y(z2)};
}

Dimension HalfSection::height(std::string label, double unit, Side side, double z1, double r1,
                              double z2, double r2) const {
    return {.side = side,
            .label = std::move(label),
            .unit = unit,
            .from = y(z1),
            .to = y(z2),
            .from_at = x(r1),
            .to_at = x(r2)};
}

} // namespace tarvane::vessel
