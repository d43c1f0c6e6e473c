// What is wrong with a drawing, by the lines and texts that were collected for it.
#pragma once

#include "drawing/frame.h"

#include <cmath>
#include <cstdlib>
#include <string>
#include <vector>

namespace tarvane::vessel {

inline bool holds(const Points& polygon, Point p) {
    bool inside = false;
    for (std::size_t i = 0, k = polygon.size() - 1; i < polygon.size(); k = i++) {
        const Point a = polygon[i], b = polygon[k];
        if ((a.y > p.y) != (b.y > p.y) && p.x < (b.x - a.x) * (p.y - a.y) / (b.y - a.y) + a.x)
            inside = !inside;
    }
    return inside;
}

// The number that a label ends with.
inline double labelled(const std::string& label, double& half_digit) {
    std::string text = label.substr(label.rfind(' ') + 1);
    if (text.starts_with("\xC3\x98")) text.erase(0, 2);
    if (text.starts_with("R")) text.erase(0, 1);
    for (char& c : text)
        if (c == ',') c = '.';
    const std::size_t point = text.find('.');
    const std::size_t digits = point == std::string::npos ? 0 : text.size() - point - 1;
    half_digit = 0.5 * std::pow(10.0, -static_cast<double>(digits));
    return std::strtod(text.c_str(), nullptr);
}

inline std::vector<std::string> lint_of(const Sheet& sheet, double width, double height) {
    constexpr double TOUCH = 0.2; // mm; a text may come this near
    std::vector<std::string> faults;
    const std::vector<Text>& texts = sheet.texts();
    const std::vector<Stroke> hatching = sheet.hatching();
    for (std::size_t i = 0; i < texts.size(); ++i) {
        const Box box = texts[i].box.grown(-TOUCH);
        for (std::size_t k = i + 1; k < texts.size(); ++k)
            if (box.meets(texts[k].box))
                faults.push_back("text over text: " + texts[i].words + " | " + texts[k].words);
        const auto check = [&](const std::vector<Stroke>& strokes, const char* what) {
            for (const Stroke& stroke : strokes)
                for (std::size_t k = 0; k + 1 < stroke.points.size(); ++k)
                    if (crosses(box, stroke.points[k], stroke.points[k + 1]))
                        faults.push_back(what + texts[i].words);
        };
        check(sheet.lines(), "line through text: ");
        check(hatching, "hatching through text: ");
        for (const Area& area : sheet.fills()) {
            bool over =
                holds(area.outline, {(box.left + box.right) / 2, (box.top + box.bottom) / 2});
            for (std::size_t k = 0; k < area.outline.size(); ++k)
                over = over ||
                       crosses(box, area.outline[k], area.outline[(k + 1) % area.outline.size()]);
            if (over) faults.push_back("area over text: " + texts[i].words);
        }
    }
    const Box ink = sheet.extent();
    if (ink.left < 0 || ink.top < 0 || ink.right > width || ink.bottom > height)
        faults.push_back("outside the frame");
    for (const Measure& measure : sheet.measures) {
        double tolerance = 0;
        const double says = std::abs(labelled(measure.label, tolerance));
        const double drawn = measure.drawn / measure.scale / measure.unit;
        if (!(std::abs(drawn - says) <= tolerance * 1.001 + 1e-6 * says))
            faults.push_back("drawn as " + std::to_string(drawn) + ": " + measure.label);
    }
    return faults;
}

// A dimension of each name is drawn or listed; each that is drawn has its text, and each that is listed is so in the
// frame, too.
inline std::vector<std::string> missing(const Drawn& drawn, const std::vector<std::string>& names) {
    std::vector<std::string> faults;
    const auto has = [](const std::string& label, const std::string& name) {
        const std::string list = ", " + label.substr(0, label.find(" = ")) + ",";
        return list.find(", " + name + ",") != std::string::npos;
    };
    for (const std::string& name : names) {
        bool found = false;
        for (const Measure& measure : drawn.sheet.measures)
            found = found || has(measure.label, name);
        for (const std::string& label : drawn.figure.dropped)
            found = found || has(label, name);
        if (!found) faults.push_back("neither drawn nor listed: " + name);
    }
    for (const Measure& measure : drawn.sheet.measures)
        if (drawn.figure.svg.find('>' + escaped(measure.label) + "</text>") == std::string::npos)
            faults.push_back("without its text: " + measure.label);
    std::string frame;
    for (const Text& text : drawn.sheet.texts())
        frame += text.words + ' ';
    for (const std::string& label : drawn.figure.dropped)
        if (frame.find(label) == std::string::npos)
            faults.push_back("dropped without a word: " + label);
    return faults;
}

} // namespace tarvane::vessel
