#include "drawing/chart_drawing.h"

#include "document/results.h"
#include "drawing/font.h"
#include "drawing/sheet.h"
#include "values/decimal.h"
#include "values/text.h"

#include <algorithm>
#include <cmath>

namespace tarvane::vessel {

namespace {

// ---- page ------------------------------------------------------------------------------------------

constexpr double WIDTH = 1000, HEIGHT = 720;
constexpr double ON_PAPER = 170; // its width, mm
constexpr double LEFT = 80, RIGHT = 830, TOP = 90, BOTTOM = 640;
constexpr double LABEL_STEP = 15; // lines of text beside the curves
constexpr int SAMPLES = 160;      // points of a curve

constexpr std::string_view INK = "#222222", FAINT = "#e3e3e3", GRID = "#b9b9b9", CURVE = "#555555",
                           COLOUR = "#b3261e";

std::string coordinate(double x) { return fixed_text(x, 2); }

std::string number(double x) { return general_text(x); }

struct TextStyle {
    double size = 13;
    std::string_view anchor = "start";
    std::string_view colour = INK;
    bool upright = true; // false: read from below
};

class Page {
  public:
    void line(double x1, double y1, double x2, double y2, std::string_view colour, double width) {
        body += "<line x1=\"" + coordinate(x1) + "\" y1=\"" + coordinate(y1) + "\" x2=\"" +
                coordinate(x2) + "\" y2=\"" + coordinate(y2) + "\" stroke=\"" +
                std::string(colour) + "\" stroke-width=\"" + number(width) + "\"/>\n";
    }
    void path(const std::vector<std::pair<double, double>>& points, std::string_view colour,
              double width) {
        std::string list;
        for (const auto& [x, y] : points) {
            list += coordinate(x);
            list += ',';
            list += coordinate(y);
            list += ' ';
        }
        body += "<polyline fill=\"none\" stroke=\"" + std::string(colour) + "\" stroke-width=\"" +
                number(width) + "\" stroke-linejoin=\"round\" points=\"" + list + "\"/>\n";
    }
    void text(double x, double y, std::string_view content, TextStyle style = {}) {
        body += "<text x=\"" + coordinate(x) + "\" y=\"" + coordinate(y) + "\" font-size=\"" +
                number(style.size) + "\" text-anchor=\"" + std::string(style.anchor) +
                "\" fill=\"" + std::string(style.colour) + '"';
        if (!style.upright)
            body += " transform=\"rotate(-90 " + coordinate(x) + ' ' + coordinate(y) + ")\"";
        body += '>' + escaped(content) + "</text>\n";
    }
    void dot(double x, double y, std::string_view colour) {
        body += "<circle cx=\"" + coordinate(x) + "\" cy=\"" + coordinate(y) +
                "\" r=\"5\" fill=\"#ffffff\" stroke=\"" + std::string(colour) +
                "\" stroke-width=\"2.5\"/>\n";
    }
    void rectangle(double x, double y, double width, double height) {
        body += "<rect x=\"" + coordinate(x) + "\" y=\"" + coordinate(y) + "\" width=\"" +
                coordinate(width) + "\" height=\"" + coordinate(height) +
                "\" fill=\"#ffffff\" stroke=\"" + std::string(GRID) + "\"/>\n";
    }
    // An area that keeps the grid and the curves off a text.
    void clear(double x, double y, double width, double height) {
        body += "<rect x=\"" + coordinate(x) + "\" y=\"" + coordinate(y) + "\" width=\"" +
                coordinate(width) + "\" height=\"" + coordinate(height) + "\" fill=\"#ffffff\"/>\n";
    }
    Figure figure(std::string alt) const {
        Figure figure{.svg = {},
                      .alt = std::move(alt),
                      .width = ON_PAPER,
                      .height = ON_PAPER * HEIGHT / WIDTH,
                      .scale = {},
                      .dropped = {}};
        const double pixels = std::round(ON_PAPER * 96 / 25.4);
        const std::string size = "width=\"" + number(WIDTH) + "\" height=\"" + number(HEIGHT) + '"';
        figure.svg = "<svg xmlns=\"http://www.w3.org/2000/svg\" role=\"img\" aria-label=\"" +
                     escaped(figure.alt) + "\" width=\"" + number(pixels) + "\" height=\"" +
                     number(std::round(pixels * HEIGHT / WIDTH)) +
                     "\" style=\"width:" + number(figure.width) +
                     "mm;height:" + number(figure.height) + "mm\" viewBox=\"0 0 " + number(WIDTH) +
                     ' ' + number(HEIGHT) + "\">\n<rect " + size + " fill=\"#ffffff\" stroke=\"" +
                     std::string(INK) + "\" stroke-width=\"3\"/>\n<g font-family=\"" +
                     std::string(FONT_FAMILY) + "\">\n" + body + "</g>\n</svg>\n";
        return figure;
    }

  private:
    std::string body;
};

// ---- axes ------------------------------------------------------------------------------------------

// A logarithmic axis between two values, from one edge of the plot to the other.
struct Axis {
    double low, high, from, to;

    double at(double value) const {
        return from + (to - from) * std::log10(value / low) / std::log10(high / low);
    }
};

// The next round number (1, 2 or 5 times a power of ten) at or below a value, and at or above it.
double round_below(double value) {
    const double decade = std::pow(10.0, std::floor(std::log10(value)));
    const double lead = value / decade;
    return decade * (lead >= 5 ? 5 : lead >= 2 ? 2 : 1);
}
double round_above(double value) {
    const double decade = std::pow(10.0, std::floor(std::log10(value)));
    const double lead = value / decade;
    return decade * (lead <= 1 ? 1 : lead <= 2 ? 2 : lead <= 3 ? 3 : lead <= 5 ? 5 : 10);
}

// Marks of an axis: each whole digit of each decade, and those among them that have a number.
struct Mark {
    double value;
    int digit;
};
std::vector<Mark> marks(const Axis& axis) {
    std::vector<Mark> list;
    for (double decade = std::pow(10.0, std::floor(std::log10(axis.low))); decade <= axis.high;
         decade *= 10) {
        for (int digit = 1; digit <= 9; ++digit) {
            const double value = decade * digit;
            if (value > axis.low * 0.9999 && value < axis.high * 1.0001)
                list.push_back({value, digit});
        }
    }
    return list;
}

std::string grouped(double value) {
    std::string text = number(value);
    if (text.find('.') == std::string::npos && text.find('e') == std::string::npos)
        for (std::size_t at = text.size(); at > 3; at -= 3)
            text.insert(at - 3, 1, ' ');
    return text;
}

std::string power_of_ten(double value) {
    std::string plain = fixed_text(value, 5);
    plain.erase(plain.find_last_not_of('0') + 1);
    if (plain.ends_with('.')) plain.pop_back();
    return plain;
}

void draw_axes(Page& page, const Axis& A, const Axis& B, const std::string& unit) {
    for (const Mark& mark : marks(A))
        page.line(A.at(mark.value), TOP, A.at(mark.value), BOTTOM, mark.digit == 1 ? GRID : FAINT,
                  1);
    for (const Mark& mark : marks(B))
        page.line(LEFT, B.at(mark.value), RIGHT, B.at(mark.value), mark.digit == 1 ? GRID : FAINT,
                  1);
    for (const Mark& mark : marks(A)) {
        if (mark.digit == 1) {
            page.text(A.at(mark.value), BOTTOM + 20, power_of_ten(mark.value),
                      {.anchor = "middle"});
        } else if (mark.digit == 2 || mark.digit == 5) {
            page.text(A.at(mark.value), BOTTOM + 18, std::to_string(mark.digit),
                      {.size = 11, .anchor = "middle"});
        }
    }
    for (const Mark& mark : marks(B)) {
        const bool crowded = mark.digit == 7 || mark.digit == 9;
        if (!crowded)
            page.text(LEFT - 8, B.at(mark.value) + 4, grouped(mark.value),
                      {.size = mark.digit == 1 ? 13.0 : 11.0, .anchor = "end"});
    }
    page.path({{LEFT, TOP}, {RIGHT, TOP}, {RIGHT, BOTTOM}, {LEFT, BOTTOM}, {LEFT, TOP}}, INK, 1.5);
    page.text((LEFT + RIGHT) / 2, BOTTOM + 48, "Factor A", {.size = 16, .anchor = "middle"});
    page.text(26, (TOP + BOTTOM) / 2, "Factor B, " + unit,
              {.size = 16, .anchor = "middle", .upright = false});
}

// ---- curves ----------------------------------------------------------------------------------------

class Drawing {
  public:
    explicit Drawing(const ChartDrawing& what) : chart(what) {
        float B_end = chart.asked.Bmax, A_end = chart.asked.Amax;
        for (const ChartCurve& curve : chart.curves) {
            B_end = std::max(B_end, curve.Bmax);
            A_end = std::max(A_end, curve.Amax);
        }
        if (chart.A) A_end = std::max(A_end, *chart.A);
        const double high = shown_stress(B_end) * 1.05;
        B = {round_below(high / 20), round_above(high), BOTTOM, TOP};
        // Where the straight line of the requested curve rises from the lower edge.
        const double first = straight_A(chart.asked, B.low);
        A = {std::pow(10.0, std::floor(std::log10(first))),
             std::pow(10.0, std::ceil(std::log10(static_cast<double>(A_end)) - 1e-4)), LEFT, RIGHT};
        if (chart.A) A.low = std::min(A.low, round_below(static_cast<double>(*chart.A)));
    }

    Figure draw() {
        const std::string unit = to_utf8(chart.units.label(Quantity::stress));
        draw_axes(page, A, B, unit);
        std::vector<Label> labels;
        for (const ChartCurve& curve : chart.curves) {
            if (curve.temperature != chart.asked.temperature) draw_curve(curve, CURVE, 1.4, labels);
        }
        draw_curve(chart.asked, COLOUR, 2.6, labels);
        write_labels(labels);
        if (chart.A) mark_point(unit);
        write_moduli(unit); // over the line of the point
        const std::string title = "External pressure chart " + chart.name;
        page.text(LEFT, 44, title, {.size = 22});
        page.text(LEFT, 70, "in colour: " + temperature_text(chart.asked.temperature),
                  {.size = 14, .colour = COLOUR});
        std::string alt = title + ", stress B over factor A, curve of " +
                          temperature_text(chart.asked.temperature);
        if (chart.A) alt += ", point " + point_text(unit);
        return page.figure(std::move(alt));
    }

  private:
    struct Label {
        double x, y; // end of the curve
        std::string text;
        std::string_view colour;
    };

    const ChartDrawing& chart;
    Page page;
    Axis A{}, B{};

    double shown_stress(float psi) const {
        return static_cast<double>(chart.units.to_file(psi, Quantity::stress));
    }
    std::string temperature_text(float temperature) const {
        return number_text(chart.units.to_file(temperature, Quantity::temperature), 0) + ' ' +
               to_utf8(chart.units.label(Quantity::temperature));
    }
    double straight_A(const ChartCurve& curve, double stress) const {
        const double psi =
            stress * static_cast<double>(chart.units.to_engine(1.0f, Quantity::stress));
        return 2 * psi / (static_cast<double>(curve.E) * 1e6);
    }

    void draw_curve(const ChartCurve& curve, std::string_view colour, double width,
                    std::vector<Label>& labels) {
        // From the lower or the left edge up to the last A.
        const double first = std::max(straight_A(curve, B.low), A.low);
        const double last = static_cast<double>(curve.Amax);
        std::vector<double> factors{static_cast<double>(curve.Aelastic)};
        for (int i = 0; i <= SAMPLES; ++i)
            factors.push_back(first * std::pow(last / first, i / static_cast<double>(SAMPLES)));
        std::sort(factors.begin(), factors.end());
        std::vector<std::pair<double, double>> points;
        for (const double factor : factors) {
            if (factor < first || factor > last * 1.000001) continue;
            const double stress = shown_stress(curve.B(static_cast<float>(factor)));
            points.emplace_back(A.at(factor),
                                std::clamp(B.at(std::max(stress, B.low)), TOP, BOTTOM));
        }
        if (points.empty()) return;
        page.path(points, colour, width);
        labels.push_back({points.back().first, points.back().second,
                          temperature_text(curve.temperature), colour});
    }

    // Beside the plot, from the top down, no two in one line; a thin line leads to each curve.
    void write_labels(std::vector<Label>& labels) {
        std::stable_sort(labels.begin(), labels.end(),
                         [](const Label& a, const Label& b) { return a.y < b.y; });
        double y = TOP;
        std::vector<double> places;
        for (const Label& label : labels) {
            y = std::max(label.y, y);
            places.push_back(y);
            y += LABEL_STEP;
        }
        // Not below the plot: labels that are too low move up.
        double lowest = BOTTOM;
        for (std::size_t i = labels.size(); i-- > 0; lowest -= LABEL_STEP)
            places[i] = std::min(places[i], lowest);
        for (std::size_t i = 0; i < labels.size(); ++i) {
            const Label& label = labels[i];
            page.path({{label.x, label.y}, {RIGHT + 6, label.y}, {RIGHT + 18, places[i]}},
                      label.colour, 0.6);
            page.text(RIGHT + 22, places[i] + 4, label.text, {.colour = label.colour});
        }
    }

    // Moduli of the curves, in the corner that no curve reaches.
    void write_moduli(const std::string& unit) {
        std::vector<std::pair<std::string, std::string_view>> lines;
        const auto add = [&](const ChartCurve& curve, std::string_view colour) {
            const float E = chart.units.to_file(curve.E * 1e6f, Quantity::stress);
            const std::string modulus =
                chart.units.metric() ? number_text(E / 1000.0f, 1) + " \xC2\xB7 10\xC2\xB3 "
                                     : number_text(E / 1e6f, 1) + " \xC2\xB7 10\xE2\x81\xB6 ";
            lines.emplace_back(
                "E = " + modulus + unit + " at " + temperature_text(curve.temperature), colour);
        };
        bool drawn = false;
        for (const ChartCurve& curve : chart.curves) {
            const bool asked = curve.temperature == chart.asked.temperature;
            add(curve, asked ? COLOUR : INK);
            drawn = drawn || asked;
        }
        if (!drawn) add(chart.asked, COLOUR);
        constexpr double BOX = 240;
        const double height = LABEL_STEP * static_cast<double>(lines.size()) + 14;
        const double top = BOTTOM - 14 - height;
        page.rectangle(RIGHT - 14 - BOX, top, BOX, height);
        for (std::size_t i = 0; i < lines.size(); ++i)
            page.text(RIGHT - 4 - BOX, top + 19 + LABEL_STEP * static_cast<double>(i),
                      lines[i].first, {.size = 12, .colour = lines[i].second});
    }

    std::string point_text(const std::string& unit) const {
        const double factor = static_cast<double>(*chart.A);
        return "A = " + general_text(factor, 3) +
               ", B = " + general_text(shown_stress(chart.asked.B(*chart.A)), 4) + ' ' + unit;
    }

    void mark_point(const std::string& unit) {
        const double factor = static_cast<double>(*chart.A);
        const double stress = shown_stress(chart.asked.B(*chart.A));
        const double x = A.at(factor);
        const double y = std::clamp(B.at(std::max(stress, B.low)), TOP, BOTTOM);
        page.line(x, BOTTOM, x, y, COLOUR, 1);
        page.line(x, y, LEFT, y, COLOUR, 1);
        page.dot(x, y, COLOUR);
        const std::string text = point_text(unit);
        page.clear(LEFT + 10, y - 23, text_width(text, 13) + 4, 17);
        page.text(LEFT + 12, y - 8, text, {.colour = COLOUR});
    }
};

} // namespace

Figure draw_chart(const ChartDrawing& chart) { return Drawing(chart).draw(); }

} // namespace tarvane::vessel
