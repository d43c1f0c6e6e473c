#include "drawing/frame.h"

#include "drawing/font.h"
#include "values/decimal.h"
#include "values/text.h"

#include <cmath>

namespace tarvane::vessel {

namespace {

constexpr double MARGIN = 4, LINE_STEP = 4.6, LEAST_WIDTH = 142; // mm

constexpr double SCALES[] = {10,        5,         2,          1,          1 / 2.0,   1 / 2.5,
                             1 / 5.0,   1 / 10.0,  1 / 20.0,   1 / 25.0,   1 / 50.0,  1 / 100.0,
                             1 / 200.0, 1 / 500.0, 1 / 1000.0, 1 / 2000.0, 1 / 5000.0};

constexpr int MORE_SCALES = 3; // tried where dimensions are dropped

// The height of the frame's part for its words.
double for_lines(const std::vector<std::string>& lines) {
    return LINE_STEP * static_cast<double>(lines.size()) + 2.5;
}

} // namespace

std::span<const double> preferred_scales() { return SCALES; }

std::string scale_text(double scale, const DimensionStyle& style) {
    if (scale >= 1) return general_text(scale) + " : 1";
    std::string reduction = general_text(1 / scale);
    if (style.decimal_comma) std::replace(reduction.begin(), reduction.end(), '.', ',');
    return "1 : " + reduction;
}

std::string units_text(const UnitSystem& units) {
    const auto unit = [&](Quantity quantity) {
        const std::string label = to_utf8(units.label(quantity));
        return label == "in." ? std::string("inches") : label;
    };
    const std::string diameter = unit(Quantity::diameter), thickness = unit(Quantity::thickness);
    if (diameter == thickness) return "dimensions in " + diameter;
    return "diameters and lengths in " + diameter + ", thicknesses in " + thickness;
}

DimensionStyle dimension_style(const UnitSystem& units, bool decimal_comma) {
    return {.iso = units.metric(), .decimal_comma = decimal_comma};
}

double unit_of(const UnitSystem& units, Quantity quantity) {
    return 25.4 / static_cast<double>(units.factor(quantity));
}

std::string openings_text(const Openings& openings, const std::string& name,
                          const UnitSystem& units, const DimensionStyle& style) {
    const auto written = [&](double inches) {
        return style.length(inches, Quantity::diameter, units);
    };
    std::string text = openings.second > 0 ? "openings " : "opening ";
    text += name + "1 = \xC3\x98" + written(openings.first);
    if (openings.second > 0) text += ", " + name + "2 = \xC3\x98" + written(openings.second);
    if (openings.pitch > 0) text += ", pitch " + written(openings.pitch);
    return text;
}

std::optional<Draft> drafted(Sheet sheet, const DimensionStyle& style, const UnitSystem& units,
                             const FrameText& text) {
    const Box ink = sheet.extent();
    const double width = std::max(ink.width(), LEAST_WIDTH) + 2 * MARGIN;
    if (width > MOST_WIDTH) return std::nullopt;

    Figure figure;
    figure.alt = text.alt;
    figure.dropped = sheet.dropped;
    figure.title = text.title;
    // Few words: a program that makes a PDF takes its time for each letter of a drawing.
    std::string about;
    const auto say = [&](const std::string& words) {
        about += (about.empty() ? "" : ". ") + words;
    };
    if (sheet.scale > 0) {
        figure.scale = scale_text(sheet.scale, style);
        say("Scale " + figure.scale + ", " + units_text(units));
        figure.alt += ", scale " + figure.scale + ", " + units_text(units);
    }
    for (const std::string& note : text.notes)
        say(note);
    const auto add = [&](const std::string& what, const std::vector<std::string>& list) {
        std::string all;
        for (const std::string& each : list)
            all += (all.empty() ? what : "; ") + each;
        if (!all.empty()) say(all);
    };
    add("Indicated: ", text.indicated);
    add("Not drawn: ", text.not_drawn);
    figure.notes = about;
    add("Without room: ", sheet.dropped);
    for (const Measure& measure : sheet.measures)
        figure.alt += "; " + measure.label;

    std::vector<std::string> lines = fitted_lines(text.title, TEXT_SIZE, width - 2 * MARGIN);
    for (std::string& line : fitted_lines(about, TEXT_SIZE, width - 2 * MARGIN))
        lines.push_back(std::move(line));
    figure.width = width;
    figure.height = ink.height() + 2 * MARGIN + for_lines(lines);
    if (figure.height > MOST_HEIGHT) return std::nullopt;
    sheet.move((width - ink.width()) / 2 - ink.left, MARGIN - ink.top);
    return Draft{std::move(sheet), std::move(figure), std::move(lines)};
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): it is changed, by the names of its parts.
Drawn framed(Draft draft, DrawnFor surroundings) {
    auto& [sheet, figure, lines] = draft;
    const double views = figure.height - for_lines(lines), width = figure.width;
    if (surroundings == DrawnFor::document) {
        figure.height = views;
    } else {
        double y = views + LINE_STEP - 0.6;
        for (std::string& line : lines) {
            sheet.text({MARGIN, y}, std::move(line));
            y += LINE_STEP;
        }
        sheet.line({0, views}, {width, views}, THIN);
    }
    const double edge = THICK_LINE / 2, height = figure.height;
    sheet.stroke({{edge, edge},
                  {width - edge, edge},
                  {width - edge, height - edge},
                  {edge, height - edge},
                  {edge, edge}},
                 OUTLINE);
    figure.svg = sheet.svg(width, height, figure.alt, surroundings);
    return {std::move(sheet), std::move(figure)};
}

std::optional<Draft> largest_draft(const std::function<std::optional<Draft>(double scale)>& draw) {
    std::optional<Draft> best;
    int tried = 0;
    for (const double scale : SCALES) {
        std::optional<Draft> draft = draw(scale);
        if (!draft) continue;
        if (!best || draft->figure.dropped.size() < best->figure.dropped.size())
            best = std::move(draft);
        if (best->figure.dropped.empty() || ++tried > MORE_SCALES) break;
    }
    return best;
}

} // namespace tarvane::vessel
