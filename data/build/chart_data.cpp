// ExtChartData.txt: the external pressure charts, each curve fitted into a row of ten numbers.
#include "chart_fit.h"
#include "data_kind.h"
#include "formatted.h"

#include "tarvane/tarvane.h"

#include <algorithm>
#include <cmath>

namespace tarvane::data {

namespace {

constexpr std::string_view FILE_NAME = "ExtChartData.txt";
constexpr std::string_view CURVE_COLUMNS[] = {"chart", "temperature", "modulus", "tolerance",
                                              "fit",   "status",      "source",  "note"};
constexpr std::string_view POINT_COLUMNS[] = {"chart", "temperature", "a", "b", "source"};
constexpr std::size_t NAME_WIDTH = 8;
constexpr std::size_t MOST_ROWS = 10, MOST_LINES = 650;

constexpr std::string_view HEAD =
    "; External pressure charts: a section for each, a row for each temperature, made from the\n"
    "; tables charts.csv and chart_points.csv.\n"
    ";\n"
    "; Temperature (F), not used, modulus (10^6 psi), A and B at the end of the straight part, A "
    "and\n"
    "; B at the end of the curve, and c0, c1, c2 of B = c0 + c1 log10(A) + c2 log10(A)^2 between.\n"
    "; Check the figures against your own copy of the code before you rely on them.\n"
    "\n";

struct Curve {
    const Row& source;
    float temperature;
    std::vector<ChartPoint> points;
    ChartRow row;
};

bool belongs(const Row& point, const Row& curve) {
    return point.field("chart") == curve.field("chart") &&
           point.real("temperature") == curve.real("temperature");
}

std::vector<ChartPoint> points_of(const Row& curve, const Table& all) {
    std::vector<ChartPoint> points;
    for (const Row& row : all.rows()) {
        if (!belongs(row, curve)) continue;
        row.text("source");
        const ChartPoint point{static_cast<double>(row.real("a")),
                               static_cast<double>(row.real("b"))};
        if (!(point.A > 0.0) || (!points.empty() && point.A <= points.back().A))
            row.fail("a", "not above the one before");
        if (!(point.B > 0.0) || (!points.empty() && point.B < points.back().B))
            row.fail("b", "below the one before");
        points.push_back(point);
    }
    if (points.size() < 2) curve.fail("temperature", "less than two points of this curve");
    return points;
}

Side side_of(const Row& curve) {
    if (curve.blank("fit")) return Side::both;
    if (curve.field("fit") != "below")
        curve.fail("fit", "neither empty nor below: \"" + curve.field("fit") + "\"");
    return Side::below;
}

Curve fitted(const Row& source, const Table& all_points) {
    Curve curve{source, source.real("temperature"), points_of(source, all_points), {}};
    const double E = 1.0e6 * static_cast<double>(source.real("modulus"));
    if (points_on_line(E, curve.points) == 0)
        source.fail("modulus", "the first point is not on the line of this modulus");
    curve.row = fit_chart(E, curve.points, side_of(source));
    return curve;
}

std::string in_percent(const Deviation& worst) {
    return formatted("%+.2f", 100.0 * worst.relative) + " % at A = " + formatted("%.3e", worst.A);
}

std::string row_text(const Curve& curve) {
    const ChartRow& r = curve.row;
    return formatted("%7.2f  0", curve.temperature) + formatted("%8.3f", r.E / 1.0e6) +
           formatted("%13.5e", r.Aelastic) + formatted("%10.1f", 0.5 * r.E * r.Aelastic) +
           formatted("%13.5e", r.Amax) + formatted("%10.1f", r.Bmax) + formatted("%16.8e", r.c0) +
           formatted("%16.8e", r.c1) + formatted("%16.8e", r.c2) + "\n";
}

std::string section_text(const std::string& chart, const std::vector<Curve>& curves) {
    std::string text;
    for (const Curve& curve : curves)
        text += "; " + chart + " to " + formatted("%g", curve.temperature) + " F, " +
                curve.source.field("status") + ": worst deviation at its points " +
                in_percent(worst_at_points(curve.row, curve.points)) + "\n";
    text += "[" + chart + "]\n";
    for (const Curve& curve : curves)
        text += row_text(curve);
    return text + "\n";
}

// A row as the engine gives it.
struct EngineRow {
    float E, Aelastic, Amax, Bmax, c0, c1, c2;

    double B(double A) const {
        const float a = static_cast<float>(A);
        float b = 0.0f;
        FACTOR_B(&a, &E, &Aelastic, &Amax, &Bmax, &c0, &c1, &c2, &b);
        return static_cast<double>(b);
    }
};

// The charts that depend on the yield stress have their rows under temperatures just above a limit: the
// yield in ksi counts hundredths of a degree.
EngineRow read_back(const Curve& curve) {
    const std::string& chart = curve.source.field("chart");
    float temperature = curve.temperature, yield = 0.0f;
    if (chart == "CS-3" || chart == "NFA-11") {
        const float limit = chart == "CS-3" ? 300.0f : 150.0f;
        yield = (curve.temperature - limit) * 1.0e5f;
        temperature = limit;
    }
    float t_used = 0.0f, second = 0.0f;
    EngineRow row{};
    READ_CHART(chart.data(), static_cast<std::int32_t>(chart.size()), &temperature, &t_used, &row.E,
               &row.Aelastic, &second, &row.Amax, &row.Bmax, &row.c0, &row.c1, &row.c2, &yield);
    curve.source.expect("temperature", temperature, t_used);
    return row;
}

// Between the rows the engine interpolates, so that a number may differ in its last bits.
void check(const Curve& curve, float usual_tolerance) {
    constexpr double ROUNDING = 0.1; // psi, of the figures in the file
    const EngineRow read = read_back(curve);
    if (!within(read.E, curve.source.real("modulus"), 1.0e-6))
        curve.source.expect("modulus", curve.source.real("modulus"), read.E);
    const double tolerance =
        0.01 * static_cast<double>(curve.source.real("tolerance", usual_tolerance));
    if (const Deviation worst = worst_at_points(curve.row, curve.points);
        std::abs(worst.relative) > tolerance)
        curve.source.fail("tolerance", "the fit misses the points by up to " + in_percent(worst) +
                                           ", more than " + formatted("%g", 100.0 * tolerance) +
                                           " %");
    for (const ChartPoint& p : curve.points) {
        const double written = B_of_row(curve.row, p.A), B = read.B(p.A);
        const std::string at = " at A = " + formatted("%g", p.A);
        if (!within(B, written, 1.0e-4))
            curve.source.fail("temperature", "B = " + formatted("%g", written) + at +
                                                 " read back as " + formatted("%g", B));
        // On the straight part the modulus counts, not the rounded point.
        if (p.A <= curve.row.Aelastic) continue;
        if (!within(B, p.B, tolerance))
            curve.source.fail("tolerance", "B = " + formatted("%g", B) + at +
                                               " where the point has " + formatted("%g", p.B));
        if (side_of(curve.source) == Side::below && B > p.B + ROUNDING)
            curve.source.fail("fit", "B = " + formatted("%g", B) + at + " is above the point, " +
                                         formatted("%g", p.B));
    }
}

} // namespace

void build_charts(Place& place) {
    const Table curves(place.sources, "charts.csv", "chart", CURVE_COLUMNS);
    const Table points(place.sources, "chart_points.csv", "chart", POINT_COLUMNS);
    for (const Row& point : points.rows())
        if (std::none_of(curves.rows().begin(), curves.rows().end(),
                         [&](const Row& curve) { return belongs(point, curve); }))
            point.fail("chart", "no curve of this chart and temperature");

    std::vector<std::pair<std::string, std::vector<Curve>>> charts;
    for (const Row& row : curves.rows()) {
        const std::string& chart = row.text("chart", NAME_WIDTH);
        if (charts.empty() || charts.back().first != chart) {
            for (const auto& [name, unused] : charts)
                if (name == chart) row.fail("chart", "its rows do not stand together");
            charts.push_back({chart, {}});
        }
        std::vector<Curve>& of_chart = charts.back().second;
        if (!of_chart.empty() && row.real("temperature") <= of_chart.back().temperature)
            row.fail("temperature", "not above the one before");
        if (of_chart.size() == MOST_ROWS) row.fail("temperature", "more than 10 rows");
        of_chart.push_back(fitted(row, points));
        place.note(std::string(FILE_NAME), chart, row);
        const Curve& curve = of_chart.back();
        place.note(std::string(FILE_NAME), chart + " " + formatted("%g", curve.temperature), row,
                   "largest error of the fit " +
                       in_percent(worst_at_points(curve.row, curve.points)));
        if (!row.shipped())
            place.fits.push_back(chart + " to " + formatted("%g", curve.temperature) +
                                 " F: largest error of the fit " +
                                 in_percent(worst_at_points(curve.row, curve.points)));
        std::vector<std::string>& marked = place.approximate[std::string(FILE_NAME)];
        if (row.approximate() && (marked.empty() || marked.back() != chart))
            marked.push_back(chart);
    }

    std::string text(HEAD);
    for (const auto& [chart, of_chart] : charts)
        text += section_text(chart, of_chart);
    text += "[END]\n";
    if (static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')) > MOST_LINES)
        throw DataError(std::string(FILE_NAME) + ": more than 650 lines");
    write_file(place.out / FILE_NAME, text);

    for (const auto& [chart, of_chart] : charts)
        for (const Curve& curve : of_chart)
            check(curve, place.sources.tolerance);
}

} // namespace tarvane::data
