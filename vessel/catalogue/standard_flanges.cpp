#include "catalogue/standard_flanges.h"

#include "catalogue/data_folder.h"
#include "document/results.h"
#include "values/decimal.h"
#include "values/text.h"

#include "tarvane/tarvane.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace tarvane::vessel {

namespace {

using Column = FlangeColumn;

constexpr std::size_t RESULTS = 14;
// Places of the engine's result.
enum Result { THICKNESS = 1, HOLE = 3, BOLTS, BOLT, CIRCLE, OUTSIDE = 8, G0, G1, HUB, FACE, NEXT };

constexpr std::int32_t STRAIGHT_HUB = 2; // of a slip on flange

std::string short_text(float value) { return general_text(static_cast<double>(value)); }

// "12", "26 A"
std::string plain_text(const NominalSize& size) {
    constexpr std::string_view SERIES[] = {"", " A", " B"};
    const auto series = static_cast<std::size_t>(size.series);
    return short_text(size.size) + std::string(series < std::size(SERIES) ? SERIES[series] : "");
}

// The number of a class as the engine takes it: that of "PN2.5" is 2.
std::int32_t number_of(const FlangeClass& flanges) {
    return std::atoi(flanges.name.c_str() + (flanges.metric() ? 2 : 0));
}

std::string names_of(const std::vector<FlangeClass>& classes) {
    std::string names;
    for (const FlangeClass& c : classes)
        names += (names.empty() ? "" : ", ") + c.name;
    return names;
}

// "NPS 26 A and NPS 26 B": the same size in the series that have it.
std::string series_with(const FlangeClass& flanges, const NominalSize& size) {
    std::string list;
    for (const FlangeRow& row : flanges.rows)
        if (row.size().size == size.size)
            list += (list.empty() ? "" : " and ") + flanges.size_text(row.size());
    return list;
}

// The size of the file that the engine names as the next one.
NominalSize next_size(const FlangeClass& flanges, const NominalSize& size, float next) {
    const auto row =
        std::find_if(flanges.rows.begin(), flanges.rows.end(), [&](const FlangeRow& r) {
            return r.size().size == next &&
                   (size.series == FlangeSeries::none || r.size().series == size.series);
        });
    return row == flanges.rows.end() ? NominalSize{next} : row->size();
}

FlangeRow row_of(std::string_view line) {
    FlangeRow row;
    for (float& number : row.numbers)
        number = take_decimal<float>(line).value_or(0.0f);
    return row;
}

std::optional<float> known(float value) {
    return value > 0.0f ? std::optional(value) : std::nullopt;
}

// The standard wall, from the neck and its bore, to a ten-thousandth.
std::optional<float> standard_wall(const FlangeClass& flanges, const FlangeRow& row) {
    const float neck = flanges.inches(row[Column::neck]), bore = flanges.inches(row[Column::bore]);
    if (!(bore > 0.0f) || !(neck > bore)) return std::nullopt;
    return std::round((neck - bore) * 0.5e4f) / 1.0e4f;
}

std::optional<float> number_at(std::string_view text) {
    float value = 0.0f;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc{} || end != text.data() + text.size() || !std::isfinite(value))
        return std::nullopt;
    return value;
}

// "12", "0.5", "1/2"
std::optional<float> number_or_fraction(std::string_view text) {
    const std::size_t slash = text.find('/');
    if (slash == std::string_view::npos) return number_at(text);
    const auto over = number_at(text.substr(0, slash)), under = number_at(text.substr(slash + 1));
    if (!over || !under || !(*under > 0.0f)) return std::nullopt;
    return *over / *under;
}

} // namespace

std::string_view FlangeClass::standard(const NominalSize& size) const {
    if (metric()) return "EN 1092-1";
    return size.series == FlangeSeries::none ? "ASME B16.5" : "ASME B16.47";
}

std::string FlangeClass::size_text(const NominalSize& size) const {
    return (metric() ? "DN " : "NPS ") + plain_text(size);
}

std::vector<FlangeClass> flange_classes() {
    std::vector<FlangeClass> classes;
    for (const FileSection& section : read_sections(STANDARD_FLANGE_FILE)) {
        classes.push_back({section.name, {}});
        for (const std::string& line : section.lines)
            classes.back().rows.push_back(row_of(line));
    }
    return classes;
}

const FlangeClass* find_class(const std::vector<FlangeClass>& classes, std::string_view name) {
    std::string wanted = folded(name);
    if (wanted.starts_with("class")) wanted.erase(0, 5);
    const auto found = std::find_if(classes.begin(), classes.end(),
                                    [&](const FlangeClass& c) { return folded(c.name) == wanted; });
    return found == classes.end() ? nullptr : &*found;
}

std::string unknown_class(std::string_view name, const std::vector<FlangeClass>& classes) {
    const std::string file(STANDARD_FLANGE_FILE);
    if (classes.empty()) return file + " is missing or empty";
    return "no class " + echoed(name) + " in " + file + "; there are " + names_of(classes);
}

std::optional<NominalSize> nominal_size(std::string_view text) {
    std::string words;
    for (const char c : text)
        words += c == '-' ? ' ' : c; // "1-1/2"
    NominalSize nominal;
    words.erase(words.find_last_not_of(' ') + 1);
    if (!words.empty() && (words.back() == 'A' || words.back() == 'B')) {
        nominal.series = words.back() == 'A' ? FlangeSeries::A : FlangeSeries::B;
        words.pop_back();
    }
    bool any = false;
    for (std::size_t at = 0; at < words.size();) {
        const std::size_t end = std::min(words.find(' ', at), words.size());
        const std::string word = words.substr(at, end - at);
        at = end + 1;
        if (word.empty() || (!any && (folded(word) == "nps" || folded(word) == "dn"))) continue;
        const std::optional<float> value = number_or_fraction(word);
        if (!value || !(*value > 0.0f)) return std::nullopt;
        nominal.size += *value;
        any = true;
    }
    return any ? std::optional(nominal) : std::nullopt;
}

FlangeLookup look_up_flange(const FlangeClass& flanges, const NominalSize& size, FlangeForm form,
                            std::optional<float> wall) {
    FlangeLookup found;
    const auto row = std::find_if(flanges.rows.begin(), flanges.rows.end(),
                                  [&](const FlangeRow& r) { return r.size() == size; });
    if (row != flanges.rows.end() && !wall && form == FlangeForm::weld_neck)
        wall = standard_wall(flanges, *row);

    float nominal = size.size, engine_wall = wall.value_or(0.0f), result[RESULTS] = {};
    std::int32_t notfound = 0, series = static_cast<std::int32_t>(size.series);
    const std::int32_t number = number_of(flanges), blind = form == FlangeForm::blind,
                       slip_on = form == FlangeForm::slip_on, pn = flanges.metric();
    GET_FLANGE_DIMENSIONS(&nominal, &number, result, &notfound, &series, &engine_wall, &blind,
                          &slip_on, &STRAIGHT_HUB, &pn);
    const std::string name = "class " + flanges.name;
    if ((notfound & 1) != 0 || row == flanges.rows.end()) {
        found.fault = "no size " + flanges.size_text(size) + " in " + name;
        const std::string in_series = series_with(flanges, size);
        if (!in_series.empty()) {
            found.fault += "; there is " + in_series;
        } else if (result[NEXT] > 0.0f) {
            found.fault +=
                "; the next is " + flanges.size_text(next_size(flanges, size, result[NEXT]));
        } else if (!flanges.rows.empty()) {
            found.fault += "; the largest is " + flanges.size_text(flanges.rows.back().size());
        }
        return found;
    }
    const std::string item = name + " size " + plain_text(size);
    found.items.push_back(item);

    FlangeDimensions& f = found.flange;
    f.A = result[OUTSIDE];
    f.C = result[CIRCLE];
    f.n = result[BOLTS];
    f.a = result[BOLT];
    f.hole = result[HOLE];
    f.t = known(result[THICKNESS]);
    f.Fod = known(result[FACE]);
    if (f.Fod) found.items.push_back(item + " raised face");
    if (form == FlangeForm::slip_on) {
        if (!((*row)[Column::slip_on_bore] > 0.0f)) {
            found.fault = "no slip on flange " + flanges.size_text(size) + " in " + name;
            return found;
        }
        found.items.push_back(item + " slip on");
        f.B = flanges.inches((*row)[Column::slip_on_bore]);
        f.g0 = result[G0];
        f.g1 = result[G1];
        f.h = result[HUB];
    } else if (form == FlangeForm::weld_neck) {
        if ((*row)[Column::length] > 0.0f) f.h = result[HUB];
        const float neck = flanges.inches((*row)[Column::neck]);
        if (wall && neck > 0.0f) {
            if (!(*wall > 0.0f) || !(neck - 2.0f * *wall > 0.0f)) {
                found.fault = "a wall that leaves a bore in the neck is expected";
                found.wall_at_fault = true;
                return found;
            }
            // The engine calculates a bore of its own from the nominal size; the neck has that of the pipe.
            f.wall = wall;
            f.B = neck - 2.0f * *wall;
            f.g0 = result[G0];
            f.g1 = result[G1];
        }
    }
    return found;
}

} // namespace tarvane::vessel
