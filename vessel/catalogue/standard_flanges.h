// Standard flanges of the data files: classes, sizes and the dimensions of a flange.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarvane::vessel {

inline constexpr std::string_view STANDARD_FLANGE_FILE = "ANSIFlangeDimensions.txt";

// Places of a row, in the unit of its class; 0: not known.
enum class FlangeColumn {
    size,
    series,
    outside,
    thickness,
    blind,
    length,
    hub,
    neck,
    bolt_circle,
    hole,
    bolts,
    bolt,
    bore,
    slip_on_length,
    slip_on_bore,
    raised_face,
    unused,
    count
};

// A nominal size, and from NPS 26 on its series of ASME B16.47.
enum class FlangeSeries { none, A, B };
struct NominalSize {
    float size = 0.0f;
    FlangeSeries series = FlangeSeries::none;

    bool operator==(const NominalSize&) const = default;
};

struct FlangeRow {
    std::array<float, static_cast<std::size_t>(FlangeColumn::count)> numbers{};

    float operator[](FlangeColumn c) const { return numbers[static_cast<std::size_t>(c)]; }
    NominalSize size() const {
        return {numbers[0], static_cast<FlangeSeries>(static_cast<int>(numbers[1]))};
    }
};

struct FlangeClass {
    std::string name; // "150", "PN16"
    std::vector<FlangeRow> rows;

    bool metric() const { return name.starts_with("PN"); } // millimetres and DN
    std::string_view standard(const NominalSize& size) const;
    std::string size_text(const NominalSize& size) const; // "NPS 0.5", "NPS 26 A", "DN 300"
    float inches(float value) const { return metric() ? value / 25.4f : value; }
};

// The classes of the file in its order; none without the file.
std::vector<FlangeClass> flange_classes();
// "150", "class 150", "pn 16"; a null pointer without such a class.
const FlangeClass* find_class(const std::vector<FlangeClass>& classes, std::string_view name);
std::string unknown_class(std::string_view name, const std::vector<FlangeClass>& classes);

// "12", "0.5", "1/2", "1 1/2", "NPS 12", "26 A", "DN 300": nothing for another text.
std::optional<NominalSize> nominal_size(std::string_view text);

enum class FlangeForm { weld_neck, slip_on, blind };

// Inches. What the file or the form of the flange does not have is left open.
struct FlangeDimensions {
    float A = 0.0f, C = 0.0f, n = 0.0f, a = 0.0f, hole = 0.0f;
    std::optional<float> B, t, g0, g1, h, Fod;
    std::optional<float> wall; // of the pipe at a weld neck
};

struct FlangeLookup {
    std::string fault; // empty: found
    bool wall_at_fault = false;
    FlangeDimensions flange;
    std::vector<std::string> items; // of the data file, for what may be approximate
};

// `wall` in inches; without one that of standard pipe.
FlangeLookup look_up_flange(const FlangeClass& flanges, const NominalSize& size, FlangeForm form,
                            std::optional<float> wall);

} // namespace tarvane::vessel
