#include "drawing/chart_drawing.h"

#include "document/results.h"
#include "drawing/font.h"
#include "values/decimal.h"
#include "values/text.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace tarvane::vessel {

namespace {

// On the page, mm. The plot begins at 0, 0.
constexpr double ALL = 160, BOTTOM = 84, NARROWEST = 40;
constexpr double LABEL_STEP = 4.6; // of the names of the curves
constexpr double CURVE_LEADER = 6; // from the plot to them
constexpr double BESIDE_PLOT = 2;  // from the plot to the numbers of its axes, and between them
constexpr double DOT = 0.9;        // radius
constexpr int SAMPLES = 100;       // of a curve

constexpr std::string_view COLOUR = "#b3261e";
constexpr Pen FAINT{0.15, {}, "#e3e3e3"}, GRID{0.15, {}, "#b9b9b9"}, EDGE{THIN_LINE},
    CURVE{THIN_LINE, {}, "#555555"}, ASKED{THICK_LINE, {}, COLOUR}, LEADING{0.1, {}, "#555555"},
    READING{0.18, {}, COLOUR};

// ---- numbers ---------------------------------------------------------------------------------------

// So many figures, no zeros at the end and no exponent.
std::string figures(double value, int count) {
    const int before = static_cast<int>(std::floor(std::log10(value) + 1e-9)) + 1;
    std::string text = fixed_text(value, std::max(0, count - before));
    if (text.find('.') != std::string::npos) text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') text.pop_back();
    return text;
}

// "12 570"; the blank is one at which no line breaks.
std::string grouped(std::string text) {
    for (std::size_t at = std::min(text.find('.'), text.size()); at > 3; at -= 3)
        text.insert(at - 3, "\xC2\xA0");
    return text;
}

// ---- axes ------------------------------------------------------------------------------------------

// A logarithmic axis between two values, from one edge of the plot to the other.
struct Axis {
    double low, high, from, to;

    double at(double value) const {
        return from + (to - from) * std::log10(value / low) / std::log10(high / low);
    }
};

// The next round number (1, 2, 3 or 5 times a power of ten) at or below a value, and at or above it.
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

// Each whole digit of each decade.
struct AxisMark {
    double value;
    int digit;
};
std::vector<AxisMark> marks(const Axis& axis) {
    std::vector<AxisMark> list;
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

// ---- curves ----------------------------------------------------------------------------------------

class Drawing {
  public:
    explicit Drawing(const ChartDrawing& what)
        : chart(what), style(dimension_style(what.units, what.decimal_comma)) {
        // The asked curve is in the place of one that has its temperature as it is written.
        const std::string asked = temperature_text(chart.asked.temperature);
        for (const ChartCurve& curve : chart.curves)
            if (temperature_text(curve.temperature) != asked) others.push_back(&curve);
        find_axes();
    }

    Draft draw();

  private:
    struct Label {
        Point at; // end of the curve
        std::string text;
        bool asked;
    };

    const ChartDrawing& chart;
    DimensionStyle style;
    std::vector<const ChartCurve*> others;
    Sheet sheet;
    Axis A{}, B{};
    std::vector<Label> labels;

    double shown_stress(float psi) const {
        return static_cast<double>(chart.units.to_file(psi, Quantity::stress));
    }
    std::string written(std::string number) const {
        number = grouped(std::move(number));
        if (style.decimal_comma) std::replace(number.begin(), number.end(), '.', ',');
        return number;
    }
    std::string unit() const { return to_utf8(chart.units.label(Quantity::stress)); }
    std::string temperature_text(float temperature) const {
        return shown_degrees(temperature, chart.units);
    }
    double straight_A(const ChartCurve& curve, double stress) const {
        const double psi =
            stress * static_cast<double>(chart.units.to_engine(1.0f, Quantity::stress));
        return 2 * psi / (static_cast<double>(curve.E) * 1e6);
    }
    Point place(double factor, double stress) const { return {A.at(factor), B.at(stress)}; }

    void find_axes();
    void draw_axes();
    void draw_curve(const ChartCurve& curve, bool asked);
    void write_labels();
    void mark_point();
    std::string moduli() const;
    std::string point_text() const;
};

void Drawing::find_axes() {
    double A_end = 0, B_low = 1e30, B_end = 0;
    const auto reach = [&](const ChartCurve& curve) {
        const double last = shown_stress(curve.Bmax);
        A_end = std::max(A_end, static_cast<double>(curve.Amax));
        B_end = std::max(B_end, last);
        B_low = std::min(B_low, last / 2);
    };
    reach(chart.asked);
    for (const ChartCurve* curve : others)
        reach(*curve);
    B_low = std::min(B_low, B_end / 20);
    double A_low = straight_A(chart.asked, round_below(B_low));
    if (chart.A) {
        const auto factor = static_cast<double>(*chart.A);
        A_low = std::min(A_low, factor);
        A_end = std::max(A_end, factor);
        B_low = std::min(B_low, shown_stress(chart.asked.B(*chart.A)));
    }
    double right = 0, left = 0;
    for (const ChartCurve* curve : others)
        right = std::max(right, text_width(temperature_text(curve->temperature), TEXT_SIZE));
    right = std::max(right, text_width(temperature_text(chart.asked.temperature), TEXT_SIZE));
    B = {round_below(B_low), round_above(B_end * 1.05), BOTTOM, 0};
    for (const AxisMark& mark : marks(B))
        left = std::max(left, text_width(written(figures(mark.value, 1)), TEXT_SIZE));
    const double width = ALL - right - CURVE_LEADER - left - 2 * BESIDE_PLOT - TEXT_SIZE;
    A = {std::pow(10.0, std::floor(std::log10(A_low) + 1e-4)),
         std::pow(10.0, std::ceil(std::log10(A_end) - 1e-4)), 0, std::max(width, NARROWEST)};
}

void Drawing::draw_axes() {
    const double right = A.to;
    for (const bool decades : {false, true}) {
        const Pen& pen = decades ? GRID : FAINT;
        for (const AxisMark& mark : marks(A))
            if ((mark.digit == 1) == decades)
                sheet.line({A.at(mark.value), 0}, {A.at(mark.value), BOTTOM}, pen);
        for (const AxisMark& mark : marks(B))
            if ((mark.digit == 1) == decades)
                sheet.line({0, B.at(mark.value)}, {right, B.at(mark.value)}, pen);
    }
    sheet.stroke({{0, 0}, {right, 0}, {right, BOTTOM}, {0, BOTTOM}, {0, 0}}, EDGE);

    // The numbers of the decades first, of the others those that have the room.
    const auto number = [&](Point at, const std::string& text, Anchor anchor) {
        Sheet trial;
        trial.text(at, text, anchor);
        const Box box = trial.texts()[0].box.grown(BESIDE_PLOT / 2);
        for (const Text& other : sheet.texts())
            if (box.meets(other.box)) return;
        sheet.text(at, text, anchor);
    };
    for (const int digit : {1, 5, 2, 3, 4, 6, 8}) {
        for (const AxisMark& mark : marks(A))
            if (mark.digit == digit && (digit <= 2 || digit == 5))
                number({A.at(mark.value), BOTTOM + BESIDE_PLOT + TEXT_HEIGHT},
                       digit == 1 ? written(figures(mark.value, 1)) : std::to_string(digit),
                       Anchor::middle);
        for (const AxisMark& mark : marks(B))
            if (mark.digit == digit)
                number({-BESIDE_PLOT, B.at(mark.value) + TEXT_HEIGHT / 2},
                       written(figures(mark.value, 1)), Anchor::end);
    }
    const double left = sheet.extent().left;
    sheet.text({right / 2, BOTTOM + 2 * BESIDE_PLOT + 2 * TEXT_HEIGHT + 1}, "Factor A",
               Anchor::middle);
    sheet.text({left - BESIDE_PLOT, BOTTOM / 2}, "Factor B, " + unit(), Anchor::middle, true);
}

// From the lower or the left edge up to its last A.
void Drawing::draw_curve(const ChartCurve& curve, bool asked) {
    const double first = std::max(straight_A(curve, B.low), A.low);
    const auto last = static_cast<double>(curve.Amax);
    std::vector<double> factors{static_cast<double>(curve.Aelastic)};
    for (int i = 0; i <= SAMPLES; ++i)
        factors.push_back(first * std::pow(last / first, i / static_cast<double>(SAMPLES)));
    std::sort(factors.begin(), factors.end());
    Points points;
    for (const double factor : factors) {
        if (factor < first || factor > last * 1.000001) continue;
        const double stress = shown_stress(curve.B(static_cast<float>(factor)));
        points.push_back(place(factor, std::clamp(stress, B.low, B.high)));
    }
    if (points.empty()) return;
    labels.push_back({points.back(), temperature_text(curve.temperature), asked});
    sheet.stroke(std::move(points), asked ? ASKED : CURVE);
}

// Beside the plot, from the top down, no two in one line; a thin line leads to each from its curve.
void Drawing::write_labels() {
    std::stable_sort(labels.begin(), labels.end(),
                     [](const Label& a, const Label& b) { return a.at.y < b.at.y; });
    constexpr auto MOST = static_cast<std::size_t>(BOTTOM / LABEL_STEP);
    while (labels.size() > MOST) {
        const auto last = labels.end() - (labels.back().asked ? 2 : 1);
        sheet.dropped.push_back(last->text);
        labels.erase(last);
    }
    std::vector<double> places;
    double next = 0;
    for (const Label& label : labels) {
        places.push_back(std::max(label.at.y, next));
        next = places.back() + LABEL_STEP;
    }
    // Not below the plot: those that are too low move up.
    double lowest = BOTTOM;
    for (std::size_t i = labels.size(); i-- > 0; lowest -= LABEL_STEP)
        places[i] = std::min(places[i], lowest);
    for (std::size_t i = 0; i < labels.size(); ++i) {
        const auto& [at, text, asked] = labels[i];
        sheet.stroke({at, {A.to + CURVE_LEADER / 3, at.y}, {A.to + CURVE_LEADER - 1, places[i]}},
                     asked ? READING : LEADING);
        sheet.text({A.to + CURVE_LEADER, places[i] + TEXT_HEIGHT / 2}, text, Anchor::start, false,
                   asked ? COLOUR : "#000000");
    }
}

void Drawing::mark_point() {
    const Point at = place(static_cast<double>(*chart.A), shown_stress(chart.asked.B(*chart.A)));
    sheet.stroke({{at.x, BOTTOM}, at, {0, at.y}}, READING);
    Points dot;
    for (int i = 0; i < 24; ++i) {
        const double angle = i * std::numbers::pi / 12;
        dot.push_back({at.x + DOT * std::cos(angle), at.y + DOT * std::sin(angle)});
    }
    sheet.area(std::move(dot), COLOUR);
}

// "E = 29.0 · 10⁶ psi at 300 °F, 27.0 at 500 °F"
std::string Drawing::moduli() const {
    const bool metric = chart.units.metric();
    std::string text = "E = ";
    const auto add = [&](const ChartCurve& curve, bool first) {
        const float E = chart.units.to_file(curve.E * 1e6f, Quantity::stress);
        text += (first ? "" : ", ") + written(number_text(E / (metric ? 1.0e3f : 1.0e6f), 1));
        if (first) text += (metric ? " · 10³ " : " · 10⁶ ") + unit();
        text += " at " + temperature_text(curve.temperature);
    };
    add(chart.asked, true);
    for (const ChartCurve* curve : others)
        add(*curve, false);
    return text;
}

std::string Drawing::point_text() const {
    return "A = " + written(figures(static_cast<double>(*chart.A), 4)) +
           ", B = " + written(figures(shown_stress(chart.asked.B(*chart.A)), 4)) + ' ' + unit();
}

Draft Drawing::draw() {
    sheet.scale = 0;
    draw_axes();
    for (const ChartCurve* curve : others)
        draw_curve(*curve, false);
    draw_curve(chart.asked, true);
    write_labels();
    if (chart.A) mark_point();
    const std::string title = "External pressure chart " + chart.name;
    const std::string curve = "curve of " + temperature_text(chart.asked.temperature);
    const std::string point = chart.A ? ", point " + point_text() : "";
    return drafted(std::move(sheet), style, chart.units,
                   {.title = title,
                    .notes = {"In colour: " + curve + point, moduli()},
                    .indicated = {},
                    .not_drawn = {},
                    .alt = title + ", stress B over factor A, " + curve + point})
        .value_or(Draft{});
}

} // namespace

Draft draw_chart(const ChartDrawing& chart) { return Drawing(chart).draw(); }

} // namespace tarvane::vessel
