#include "drawing/dimensions.h"

#include "document/results.h"
#include "drawing/font.h"
#include "values/decimal.h"

#include <cmath>
#include <optional>
#include <utility>

namespace tarvane::vessel {

namespace {

// All in mm.
constexpr double FIRST_ROW = 10, ROW = 7; // from the outline, then from each other
constexpr double ARROW = 3, TAIL = 2.5;   // of arrows that are outside
constexpr double PAD = 1;                 // beside a text
constexpr double ABOVE_LINE = 0.8;        // an ISO text
constexpr double PAST_LINE = 2;           // extension lines
constexpr double PAST_AXIS = 5;           // dimension lines of a half view
constexpr double GAP = 1.5;     // before extension lines of ASME, and between dimensions of a row
constexpr double CLEAR = 0.8;   // between a text and a line across it
constexpr double FARTHEST = 45; // of a text from its dimension
constexpr std::size_t MOST_ROWS = 16;

struct Span {
    double low, high;
    bool meets(const Span& other) const { return low < other.high && other.low < high; }
    Span with(const Span& other) const {
        return {std::min(low, other.low), std::max(high, other.high)};
    }
};

// A place that was found. Along the strip.
struct Placed {
    const Dimension* dimension;
    std::size_t row;
    Span ends; // from the lower to the higher
    Span text; // the room of the text
    Span line; // of the dimension line
    bool arrows_outside;
};

// What a single is true to.
constexpr double SINGLE = 2e-7;

// A hundredth of a millimetre, or half a thousandth of an inch, is what a drawing shows.
int decimals_in(double unit) {
    const double digits = std::ceil(std::log10(unit / 0.0102) - 1e-9);
    return static_cast<int>(std::clamp(digits, 0.0, 6.0));
}

class Strip {
  public:
    Strip(Sheet& on, const DimensionStyle& how, Side at, const StripRoom& within,
          const std::vector<Dimension>& all)
        : sheet(on), style(how), side(at), room(within) {
        for (const Dimension& one : all)
            if (one.side == side) waiting.push_back(&one);
        // The shortest nearest to the part.
        std::stable_sort(
            waiting.begin(), waiting.end(),
            [](const Dimension* a, const Dimension* b) { return length(*a) < length(*b) - 0.01; });
    }

    void draw() {
        while (!waiting.empty()) {
            const Dimension* next = waiting.front();
            waiting.erase(waiting.begin());
            if (!place(*next)) sheet.dropped.push_back(next->label);
        }
        find_rows();
        for (const Placed& one : placed)
            draw(one);
    }

  private:
    Sheet& sheet;
    const DimensionStyle& style;
    Side side;
    StripRoom room;
    std::vector<const Dimension*> waiting;
    std::vector<Placed> placed;
    std::vector<double> rows; // distance of their lines from the edge

    static double length(const Dimension& d) { return std::abs(d.to - d.from); }
    bool upright() const { return side == Side::left || side == Side::right; }
    bool aligned() const { return style.iso || !upright(); } // text along the line
    double along(const Dimension& d) const {
        return aligned() ? text_width(d.label, TEXT_SIZE) : TEXT_HEIGHT;
    }
    double across(const Dimension& d) const {
        return aligned() ? TEXT_HEIGHT : text_width(d.label, TEXT_SIZE);
    }

    // Whether the row has room, and no extension line of a dimension farther out runs through the text.
    bool free(std::size_t row, const Dimension& own, const Span& text, const Span& line) const {
        const Span wide{text.low - CLEAR, text.high + CLEAR};
        const auto crossed = [&](const Dimension& other) {
            const auto in = [&](double at) { return at > wide.low && at < wide.high; };
            return in(other.to) || in(other.from);
        };
        for (const Dimension* other : waiting)
            if (crossed(*other)) return false;
        for (const Placed& other : placed) {
            if (other.row > row && crossed(*other.dimension)) return false;
            if (other.row != row) continue;
            const Span taken{other.line.with(other.text).low - GAP,
                             other.line.with(other.text).high + GAP};
            if (taken.meets(line.with(text))) return false;
        }
        // Its own extension lines stay off the texts of the rows that they pass.
        for (const Placed& other : placed) {
            if (other.row >= row) continue;
            for (const double at : {own.from, own.to})
                if (at > other.text.low - CLEAR && at < other.text.high + CLEAR) return false;
        }
        return text.low >= room.low && text.high <= room.high && line.low >= room.low &&
               line.high <= room.high;
    }

    bool place(const Dimension& d) {
        for (std::size_t row = 0; row < MOST_ROWS; ++row)
            if (const auto found = in_row(d, row)) {
                placed.push_back(*found);
                return true;
            }
        return false;
    }

    std::optional<Placed> in_row(const Dimension& d, std::size_t row) const {
        const Span ends{std::min(d.from, d.to), std::max(d.from, d.to)};
        const double between = ends.high - ends.low, text = along(d);
        const double arrows = (d.half ? 1 : 2) * ARROW;
        const double past = d.half ? PAST_AXIS : 0;
        const auto placed_at = [&](Span at, bool outside) -> std::optional<Placed> {
            Span line = ends;
            if (outside) line = {line.low - (d.half ? 0 : ARROW + TAIL), line.high + ARROW + TAIL};
            if (d.half) (d.to > d.from ? line.low : line.high) += d.to > d.from ? -past : past;
            // In the gap of a line, or above it: the line reaches a text that is outside.
            if (at.low < line.low) line.low = style.iso ? at.low : at.high + PAD;
            if (at.high > line.high) line.high = style.iso ? at.high : at.low - PAD;
            if (!free(row, d, at, line)) return std::nullopt;
            return Placed{&d, row, ends, at, line, outside};
        };
        // Between the ends: in the middle, else as near to it as the lines of others let it.
        const auto inside = [&](double low, double high, bool outside) -> std::optional<Placed> {
            const double middle = (ends.low + ends.high) / 2, most = (high - low - text) / 2;
            for (double off = 0; off <= most + 0.001; off += 1) {
                for (const double sign : {1.0, -1.0}) {
                    const double centre =
                        std::clamp(middle + sign * off, low + text / 2, high - text / 2);
                    if (const auto found =
                            placed_at({centre - text / 2, centre + text / 2}, outside))
                        return found;
                }
            }
            return std::nullopt;
        };
        const bool arrow_high = !d.half || d.to > d.from, arrow_low = !d.half || d.to < d.from;
        if (between >= text + arrows + 2 * PAD) {
            const auto found = inside(ends.low + PAD + (arrow_low ? ARROW : 0),
                                      ends.high - PAD - (arrow_high ? ARROW : 0), false);
            if (found) return found;
        }
        if (between >= text + 2 * PAD) {
            const auto found = inside(ends.low + PAD, ends.high - PAD, true);
            if (found) return found;
        }
        // Beside it.
        const bool outside = between < arrows + 1.5;
        const double high = ends.high + PAD + (outside && arrow_high ? ARROW + TAIL : 0) +
                            (d.half && !arrow_high ? past : 0);
        const double low = ends.low - PAD - (outside && arrow_low ? ARROW + TAIL : 0) -
                           (d.half && !arrow_low ? past : 0);
        for (double off = 0; off < FARTHEST; off += 1) {
            if (const auto found = placed_at({high + off, high + off + text}, outside))
                return found;
            if (const auto found = placed_at({low - off - text, low - off}, outside)) return found;
        }
        return std::nullopt;
    }

    // How far the lines of the rows are from the edge.
    void find_rows() {
        std::vector<double> wide; // the texts of each row, across
        for (const Placed& one : placed) {
            if (one.row >= wide.size()) wide.resize(one.row + 1, 0);
            wide[one.row] = std::max(wide[one.row], across(*one.dimension));
        }
        // Where texts are on their lines they reach to both sides.
        double at = 0;
        for (std::size_t i = 0; i < wide.size(); ++i) {
            const double own = aligned() ? 0 : wide[i] / 2;
            const double before = i == 0 ? FIRST_ROW - ROW : aligned() ? 0 : wide[i - 1] / 2 - 3;
            at += std::max(ROW, own + 4) + std::max(0.0, before);
            rows.push_back(at);
        }
    }

    Point on_page(double u, double v) const {
        switch (side) {
        case Side::above:
            return {u, room.edge - v};
        case Side::below:
            return {u, room.edge + v};
        case Side::left:
            return {room.edge - v, u};
        default:
            return {room.edge + v, u};
        }
    }
    // From the edge, of a place across the strip on the page.
    double from_edge(double at) const {
        return side == Side::above || side == Side::left ? room.edge - at : at - room.edge;
    }

    void draw(const Placed& one) {
        const Dimension& d = *one.dimension;
        const double v = rows[one.row];
        const auto extension = [&](double u, double from) {
            sheet.line(on_page(u, from_edge(from) + (style.iso ? 0 : GAP)),
                       on_page(u, v + PAST_LINE), THIN);
        };
        if (!d.half) extension(d.from, d.from_at);
        extension(d.to, d.to_at);

        // The line, with a gap where the text is on it.
        const Span gap{one.text.low - PAD, one.text.high + PAD};
        if (style.iso || !gap.meets(one.line)) {
            sheet.line(on_page(one.line.low, v), on_page(one.line.high, v), THIN);
        } else {
            if (gap.low > one.line.low)
                sheet.line(on_page(one.line.low, v), on_page(gap.low, v), THIN);
            if (gap.high < one.line.high)
                sheet.line(on_page(gap.high, v), on_page(one.line.high, v), THIN);
        }

        const auto arrow = [&](double u, bool to_higher) {
            const double sign = to_higher != one.arrows_outside ? 1 : -1;
            sheet.arrow(on_page(u, v), upright() ? Point{0, sign} : Point{sign, 0});
        };
        if (!d.half || d.to > d.from) arrow(one.ends.high, true);
        if (!d.half || d.to < d.from) arrow(one.ends.low, false);

        const double u = (one.text.low + one.text.high) / 2;
        const Point at = on_page(u, v);
        if (!style.iso)
            sheet.text({at.x, at.y + TEXT_HEIGHT / 2}, d.label, Anchor::middle);
        else if (upright())
            sheet.text({at.x - ABOVE_LINE, at.y}, d.label, Anchor::middle, true);
        else
            sheet.text({at.x, at.y - ABOVE_LINE}, d.label, Anchor::middle);
        sheet.measures.push_back({d.label,
                                  (one.ends.high - one.ends.low + d.taken_out) * (d.half ? 2 : 1),
                                  d.unit, sheet.scale});
    }
};

} // namespace

std::string DimensionStyle::rounded(double value, int decimals) const {
    std::string text = fixed_text(value, decimals);
    if (decimals > 0) {
        while (text.back() == '0')
            text.pop_back();
        if (text.back() == '.') text.pop_back();
    }
    if (!iso && text.starts_with("0.")) text.erase(0, 1);
    if (decimal_comma) std::replace(text.begin(), text.end(), '.', ',');
    return text;
}

std::string DimensionStyle::number(double value, double unit) const {
    return rounded(value, decimals_in(unit));
}

std::string DimensionStyle::length(double inches, Quantity quantity, const UnitSystem& units,
                                   bool found) const {
    const auto value = static_cast<double>(units.to_file(static_cast<float>(inches), quantity));
    if (found) return rounded(value, decimals_of(quantity, units));
    int decimals = decimals_in(25.4 / static_cast<double>(units.factor(quantity)));
    // 3.175 mm has one more, and no others that a single could tell.
    const double step = std::pow(10.0, decimals + 1);
    if (std::abs(std::round(value * step) / step - value) < SINGLE * value) ++decimals;
    return rounded(value, decimals);
}

void draw_strip(Sheet& sheet, const DimensionStyle& style, Side side, const StripRoom& room,
                const std::vector<Dimension>& all) {
    Strip(sheet, style, side, room, all).draw();
}

} // namespace tarvane::vessel
