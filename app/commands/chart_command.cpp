#include "commands/chart_command.h"

#include "catalogue/charts.h"
#include "catalogue/data_folder.h"
#include "catalogue/data_sources.h"
#include "document/results.h"
#include "terminal/output_file.h"
#include "values/decimal.h"
#include "values/text.h"

#include "tarvane/tarvane.h"

#include <algorithm>
#include <cmath>
#include <ostream>
#include <stdexcept>

namespace tarvane::app {

namespace {

std::string factor_text(float A) { return exponent_text(static_cast<double>(A), 3); }

// Values of A for the table: a few in each decade up to the end of the curve, and the ends of its two
// parts.
std::vector<float> table_factors(const ChartCurve& curve) {
    constexpr float STEPS[] = {1.0f, 1.5f, 2.0f, 3.0f, 4.0f, 5.0f, 6.0f, 8.0f};
    const auto is_end = [&](float A) {
        return std::fabs(A / curve.Aelastic - 1.0f) < 1e-4f ||
               std::fabs(A / curve.Amax - 1.0f) < 1e-4f;
    };
    std::vector<float> factors{curve.Aelastic};
    if (curve.Amax > curve.Aelastic) factors.push_back(curve.Amax);
    for (float decade = 1e-5f; decade < curve.Amax; decade *= 10.0f) {
        for (const float step : STEPS) {
            const float A = decade * step;
            if (A < curve.Amax && !is_end(A)) factors.push_back(A);
        }
    }
    std::sort(factors.begin(), factors.end());
    return factors;
}

// A curve of a chart, and what its data file says of the fit to the points of the code.
struct Fit {
    float temperature;
    std::string error; // "largest error +1.57 % at A = 6.450e-04"; empty where nothing is said
};

std::vector<Fit> fits_of(const std::string& name) {
    const auto sources = data_sources();
    std::vector<Fit> fits;
    for (const float temperature : chart_temperatures(name)) {
        char item[64];
        std::snprintf(item, sizeof item, "%s %g", name.c_str(), static_cast<double>(temperature));
        const ItemSource* from = sources->of(CHART_FILE, item);
        std::string error = from != nullptr ? from->remark : "";
        constexpr std::string_view OF_THE_FIT = " of the fit";
        if (const std::size_t at = error.find(OF_THE_FIT); at != std::string::npos)
            error.erase(at, OF_THE_FIT.size());
        fits.push_back({temperature, std::move(error)});
    }
    return fits;
}

void print_charts(const std::vector<std::string>& names, const UnitSystem& units,
                  std::ostream& out) {
    out << "Charts of " << CHART_FILE << '\n';
    const auto sources = data_sources();
    for (const std::string& name : names) {
        out << '\n' << name;
        if (const ItemSource* from = sources->of(CHART_FILE, name)) out << ": " << from->text();
        out << '\n';
        for (const Fit& fit : fits_of(name)) {
            out << "  to " << shown(fit.temperature, Quantity::temperature, units);
            if (!fit.error.empty()) out << ": " << fit.error;
            out << '\n';
        }
    }
    out << "\nThere are no other charts, none for stainless steel unless it is listed: "
        << own_chart_hint() << ".\n";
}

void print_table(const ChartOptions& options, const std::string& name, float temperature,
                 const ChartCurve& curve, std::ostream& out) {
    const UnitSystem& units = options.units;
    const auto line = [&](std::string_view label, const std::string& value) {
        out << padded(label, 28) << value << '\n';
    };
    out << "External pressure chart " << name << '\n';
    line("Temperature", shown(temperature, Quantity::temperature, units));
    line("Temperature of the chart", shown(curve.temperature, Quantity::temperature, units));
    if (needs_yield(name)) {
        line("Yield stress",
             shown(units.to_engine(options.yield, Quantity::stress), Quantity::stress, units));
    }
    line("Modulus of the chart", number_text(units.to_file(curve.E * 1e6f, Quantity::stress), 0) +
                                     ' ' + to_utf8(units.label(Quantity::stress)));
    const std::vector<Fit> fits = fits_of(name);
    for (const Fit& fit : fits)
        if (!fit.error.empty())
            line("Fit at " + shown(fit.temperature, Quantity::temperature, units), fit.error);
    if (const ItemSource* from = data_sources()->of(CHART_FILE, name))
        line("Figures", from->text());
    line("Straight line up to A =", factor_text(curve.Aelastic));
    line("Curve up to A =", factor_text(curve.Amax));
    if (options.A) {
        line("At A = " + factor_text(*options.A),
             "B = " + shown(curve.B(*options.A), Quantity::stress, units));
    }
    out << '\n'
        << right_aligned("A", 10)
        << right_aligned("B, " + to_utf8(units.label(Quantity::stress)), 16) << '\n'
        << std::string(26, '-') << '\n';
    for (const float A : table_factors(curve)) {
        out << right_aligned(factor_text(A), 10)
            << right_aligned(value_text(curve.B(A), Quantity::stress, units), 16);
        if (A == curve.Aelastic) out << "  end of the straight line";
        if (A == curve.Amax) out << "  end of the curve";
        out << '\n';
    }
}

} // namespace

Status show_chart(const ChartOptions& options, std::ostream& out, std::ostream& err) {
    const auto refuse = [&](const std::string& reason) {
        err << "tarvane: " << reason << '\n';
        return Status::bad_input;
    };
    set_data_folder(options.data, "--data");
    if (!options.svg.empty()) check_output(options.svg, {});
    RESET_ENGINE();
    const UnitSystem& units = options.units;
    const float temperature = units.to_engine(options.temperature, Quantity::temperature);
    const float yield = units.to_engine(options.yield, Quantity::stress);
    if (!std::isfinite(temperature) || !std::isfinite(yield))
        return refuse("a temperature and a yield stress are numbers");
    if (below_absolute_zero(temperature))
        return refuse("a temperature from absolute zero on, " +
                      shown(ABSOLUTE_ZERO, Quantity::temperature, units) + ", is expected");
    if (options.A && !(*options.A > 0.0f && std::isfinite(*options.A)))
        return refuse("a factor A is a number above 0");

    if (options.name.empty()) {
        const std::vector<std::string> names = chart_names();
        if (names.empty()) return refuse(unknown_chart(""));
        print_charts(names, units, out);
        out << edition_line();
        return Status::fine;
    }
    const std::optional<std::string> name = chart_in_file(options.name);
    if (!name) return refuse(unknown_chart(options.name));
    if (!options.temperature_given)
        return refuse("the temperature of the chart is expected: --temperature");
    if (needs_yield(*name) && !(yield > 0.0f))
        return refuse("chart " + *name + " depends on the yield stress: give it by --yield");

    const std::vector<float> rows = chart_temperatures(*name);
    if (!rows.empty() && temperature > rows.back() + 0.01f)
        return refuse("chart " + *name + " has no curve at " + shown_degrees(temperature, units) +
                      "; its last one is at " + shown_degrees(rows.back(), units));
    const ChartCurve curve = read_curve(*name, temperature, yield);
    if (!(curve.E > 0.0f && curve.Amax > 0.0f))
        return refuse("the rows of chart " + *name + " cannot be read");
    // The drawing comes first, so that it exists when the reader of standard output leaves early.
    Status status = Status::fine;
    if (!options.svg.empty()) {
        try {
            write_whole(options.svg, chart_svg(*name, temperature, yield, options.A, units, false,
                                               DrawnFor::file));
        } catch (const std::runtime_error& problem) {
            status = refuse(problem.what());
        }
    }
    print_table(options, *name, temperature, curve, out);
    out << edition_line();
    if (is_approximate(CHART_FILE, *name))
        out << "\nApproximate figures: replace " << CHART_FILE
            << " by one made from a licensed copy of the standard.\n";
    return status;
}

} // namespace tarvane::app
