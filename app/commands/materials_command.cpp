#include "commands/materials_command.h"

#include "catalogue/charts.h"
#include "catalogue/data_folder.h"
#include "catalogue/data_sources.h"
#include "document/results.h"
#include "values/text.h"

#include <algorithm>
#include <functional>
#include <ostream>

namespace tarvane::app {

using namespace vessel;

namespace {

constexpr std::string_view NEITHER = "-"; // the record has nothing

// Allowable stresses are read in ksi and MPa, as the tables of the code show them.
struct StressUnit {
    float psi;
    std::string_view label;
};
StressUnit stress_unit(const UnitSystem& units) {
    return units.metric() ? StressUnit{1000.0f * 0.145038f, "MPa"} : StressUnit{1000.0f, "ksi"};
}

std::string stress_text(float psi, const UnitSystem& units) {
    return number_text(psi / stress_unit(units).psi, units.metric() ? 1 : 2);
}

std::string temperature_text(float temperature, const UnitSystem& units) {
    return number_text(units.to_file(temperature, Quantity::temperature), 0);
}

std::string or_dash(const std::string& text) { return text.empty() ? std::string(NEITHER) : text; }

std::string p_number(const Material& m) {
    std::string text = m.p_number;
    if (m.group != 0) text += (text.empty() ? "Gr. " : " Gr. ") + std::to_string(m.group);
    return or_dash(text);
}

std::string curve(const Material& m) {
    std::string text(curve_name(m.curve));
    const std::string_view normalized = curve_name(m.curve_normalized);
    if (normalized != text) text = or_dash(text) + '/' + or_dash(std::string(normalized));
    return or_dash(text);
}

// The chart of a material, marked where the chart file does not have it.
std::string chart(const Material& m, const std::vector<std::string>& charts) {
    if (m.chart.empty()) return std::string(NEITHER);
    const bool there = std::find(charts.begin(), charts.end(), m.chart) != charts.end();
    return there ? m.chart : m.chart + " *";
}

std::string last_temperature(const Material& m, const UnitSystem& units) {
    if (m.allowables().empty()) return std::string(NEITHER);
    return temperature_text(m.last_temperature(), units);
}

// ---- list ------------------------------------------------------------------------------------------

struct MaterialColumn {
    std::string_view title;
    std::string_view unit;
    bool number;
    std::function<std::string(const Material&, const UnitSystem&)> text;
};

void print_list(const std::vector<const Material*>& materials, const UnitSystem& units,
                std::ostream& out) {
    const std::string to_temperature = "to " + to_utf8(units.label(Quantity::temperature));
    const std::string_view stress = stress_unit(units).label;
    const std::vector<std::string> charts = chart_names();
    const auto sources = data_sources();
    using M = const Material&;
    using U = const UnitSystem&;
    const MaterialColumn columns[] = {
        {"Material", "", false, [](M m, U) { return m.name + (m.approximate ? " ~" : ""); }},
        {"Ref.", "", true, [](M m, U) { return std::to_string(m.reference); }},
        {"Form", "", false, [](M m, U) { return or_dash(m.form); }},
        {"P-No.", "", false, [](M m, U) { return p_number(m); }},
        {"UCS-66", "curve", false, [](M m, U) { return curve(m); }},
        {"Tensile", stress, true, [](M m, U u) { return stress_text(m.tensile, u); }},
        {"Yield", stress, true, [](M m, U u) { return stress_text(m.yield, u); }},
        {"Chart", "", false, [&](M m, U) { return chart(m, charts); }},
        {"Allowed", to_temperature, true, last_temperature},
        {"Figures", "", false, [&](M m, U) { return source_of(m, *sources).status; }},
        {"Edition", "", false, [&](M m, U) { return or_dash(source_of(m, *sources).edition); }},
        {"Note", "", false,
         [](M m, U u) {
             const std::string size = size_range(m, u);
             return m.note + (size.empty() ? "" : ", " + size);
         }},
    };
    std::vector<std::vector<std::string>> lines(materials.size() + 2);
    for (const MaterialColumn& column : columns) {
        lines[0].emplace_back(column.title);
        lines[1].emplace_back(column.unit);
        for (std::size_t i = 0; i < materials.size(); ++i)
            lines[i + 2].push_back(column.text(*materials[i], units));
    }
    std::vector<std::size_t> widths;
    for (std::size_t c = 0; c < std::size(columns); ++c) {
        std::size_t width = 0;
        for (const auto& line : lines)
            width = std::max(width, characters(line[c]));
        widths.push_back(width);
    }
    for (std::size_t i = 0; i < lines.size(); ++i) {
        std::string text;
        for (std::size_t c = 0; c < std::size(columns); ++c) {
            const std::string& field = lines[i][c];
            text += columns[c].number ? right_aligned(field, widths[c]) : padded(field, widths[c]);
            text += "  ";
        }
        text.erase(text.find_last_not_of(' ') + 1);
        out << text << '\n';
        if (i == 1) {
            std::size_t all = 0;
            for (const std::size_t width : widths)
                all += width + 2;
            out << std::string(all - 2, '-') << '\n';
        }
    }
}

// ---- one record ------------------------------------------------------------------------------------

void print_record(const Material& m, const UnitSystem& units, std::ostream& out) {
    const auto line = [&](std::string_view label, const std::string& value) {
        if (!value.empty()) out << padded(label, 32) << value << '\n';
    };
    const std::string stress = ' ' + std::string(stress_unit(units).label);
    const auto number = [](int n) { return n == 0 ? std::string(NEITHER) : std::to_string(n); };

    out << '\n' << m.name << ", reference " << m.reference << '\n';
    line("Composition, note", m.note);
    line("Product form", m.form);
    line("UNS number", m.uns);
    line("P-number", p_number(m));
    line("Curve of Fig. UCS-66", or_dash(std::string(curve_name(m.curve))));
    line("The same, normalized", or_dash(std::string(curve_name(m.curve_normalized))));
    line("Tensile strength", stress_text(m.tensile, units) + stress);
    line("Yield strength", stress_text(m.yield, units) + stress);
    const std::vector<std::string> charts = chart_names();
    const bool missing = chart(m, charts).ends_with('*');
    line("External pressure chart",
         or_dash(m.chart) + (missing ? " (not in " + std::string(CHART_FILE) + ")" : ""));
    line("Elastic modulus table", number(m.modulus));
    line("Expansion coefficient table", number(m.expansion));
    if (m.thickness_limit > 0.0f)
        line("Thickness limit", shown(m.thickness_limit, Quantity::thickness, units));
    line(m.form == "Bolting" ? "Bolt size" : "Thickness", size_range(m, units));
    if (m.impact_temperature < 1)
        line("Impact tested at",
             shown(static_cast<float>(m.impact_temperature), Quantity::temperature, units));
    if (m.reduction_66g != 0) {
        const float scale = units.factor(Quantity::temperature_scale);
        line("Reduction by UCS-66(g)", number_text(static_cast<float>(m.reduction_66g) / scale, 0) +
                                           ' ' + to_utf8(units.label(Quantity::temperature)));
    }
    const ItemSource source = source_of(m, *data_sources());
    line("Figures", source.status);
    line("Edition", source.edition);
    line("Source", source.source);

    out << '\n'
        << padded("Temperature", 16) << "Allowable stress\n"
        << padded(to_utf8(units.label(Quantity::temperature)), 16) << stress_unit(units).label
        << '\n'
        << std::string(32, '-') << '\n';
    for (const Material::Allowable& a : m.allowables()) {
        out << right_aligned(temperature_text(a.temperature, units), 11)
            << right_aligned(stress_text(a.stress, units), 21) << '\n';
    }
}

// External pressure on these is refused until the chart file has their chart.
void print_missing_charts(const std::vector<const Material*>& materials, std::ostream& out) {
    const std::vector<std::string> charts = chart_names();
    const bool any = std::any_of(materials.begin(), materials.end(), [&](const Material* m) {
        return chart(*m, charts).ends_with('*');
    });
    if (any)
        out << "\n* " << CHART_FILE << " does not have this chart: " << own_chart_hint() << '\n';
}

void print_approximate(const std::vector<const Material*>& materials,
                       const MaterialSelection& selection, std::string_view sign,
                       std::ostream& out) {
    const bool any = std::any_of(materials.begin(), materials.end(),
                                 [](const Material* m) { return m->approximate; });
    if (any)
        out << '\n'
            << sign << "Approximate figures: replace " << selection.file()
            << " by one made from a licensed copy of the standard.\n";
}

} // namespace

Status list_materials(const MaterialsOptions& options, std::ostream& out, std::ostream& err) {
    set_data_folder(options.data, "--data");
    MaterialFiles files;
    const MaterialSelection& selection = options.selection;
    std::vector<const Material*> materials;
    for (const Material& material : files.all(selection))
        materials.push_back(&material);
    if (materials.empty()) {
        err << "tarvane: no materials: " << no_materials(selection) << '\n';
        return Status::bad_input;
    }

    if (!options.name.empty()) {
        const std::vector<const Material*> named = files.named(options.name, selection);
        if (!named.empty()) {
            out << "Materials of " << selection.file() << '\n';
            for (const Material* material : named)
                print_record(*material, options.units, out);
            out << edition_line();
            print_approximate(named, selection, "", out);
            return Status::fine;
        }
        const std::string key = material_key(options.name);
        std::erase_if(materials, [&](const Material* m) {
            return key.empty() || !material_key(m->name).starts_with(key);
        });
        if (materials.empty()) {
            err << "tarvane: " << unknown_material(options.name, selection, files) << '\n';
            return Status::bad_input;
        }
    }
    out << "Materials of " << selection.file() << ": " << materials.size() << "\n\n";
    print_list(materials, options.units, out);
    print_missing_charts(materials, out);
    out << edition_line();
    print_approximate(materials, selection, "~ ", out);
    return Status::fine;
}

} // namespace tarvane::app
