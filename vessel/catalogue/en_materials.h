// The steels of ENMATDATA.BIN: proof strengths by temperature. No allowable stress follows from them here.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarvane::vessel {

struct EnMaterial {
    static constexpr std::size_t PLACES = 17;

    std::int32_t key = 0;
    std::string name, number, standard, form;
    std::string proof_kind; // "Rp0.2"
    bool approximate = false;
    float max_thickness = 0.0f; // mm
    float tensile = 0.0f;       // N/mm2
    std::array<float, PLACES>
        proof{}; // N/mm2 at 20, 50, 100, 150 and so on to 800 degrees C; 0: none

    // On a straight line between two temperatures that have one; nothing outside them.
    std::optional<float> proof_at(float celsius) const;
};

// The steels of a name or number, compared as in the engine: without case, blanks, "." "/" and "-".
std::vector<EnMaterial> en_materials_named(std::string_view name);

// "P265GH, 1.0425 (EN 10028-2, Plate, up to 16 mm): Rp0.2 265 N/mm2 at 20 °C, 205 N/mm2 at 200 °C, Rm 410
// N/mm2 (approximate, edition not stated: EN 10028-2 as commonly quoted)". `fahrenheit` is the design temperature.
std::string strengths_of(const EnMaterial& material, std::optional<float> fahrenheit);

} // namespace tarvane::vessel
