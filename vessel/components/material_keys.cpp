#include "components/material_keys.h"

#include "catalogue/en_materials.h"
#include "document/results.h"
#include "values/text.h"

#include <algorithm>
#include <cstdlib>
#include <vector>

namespace tarvane::vessel {

namespace {

bool blank(std::string_view text) { return text.find_first_not_of(' ') == std::string_view::npos; }

bool differ(const std::vector<const Material*>& materials, std::string Material::*field) {
    return std::any_of(materials.begin(), materials.end(),
                       [&](const Material* m) { return m->*field != materials.front()->*field; });
}

// How records of one name differ: "101 (18Cr-8Ni, high stress), 201 (18Cr-8Ni, low stress)",
// "401 (1Cr-1/5Mo, up to 2.5000 in.)".
std::string reference_list(const std::vector<const Material*>& materials, const UnitSystem& units) {
    std::string list;
    const bool forms = differ(materials, &Material::form),
               numbers = differ(materials, &Material::uns);
    for (const Material* m : materials) {
        std::string marks;
        const auto mark = [&](const std::string& text) {
            if (!text.empty()) marks += (marks.empty() ? "" : ", ") + text;
        };
        mark(m->note);
        mark(size_range(*m, units));
        if (forms) mark(m->form);
        if (numbers) mark(m->uns);
        list += (list.empty() ? "" : ", ") + std::to_string(m->reference);
        if (!marks.empty()) list += " (" + marks + ')';
    }
    return list;
}

// "Sfo and Sfa are to be given": the keys that the file leaves out.
std::string to_be_given(const Reading& reading, std::initializer_list<std::string_view> needed) {
    std::vector<std::string_view> left;
    std::copy_if(needed.begin(), needed.end(), std::back_inserter(left),
                 [&](std::string_view key) { return !reading.given(key); });
    std::string list;
    for (std::size_t i = 0; i < left.size(); ++i)
        list += (i == 0 ? "" : i + 1 == left.size() ? " and " : ", ") + std::string(left[i]);
    return list + (left.size() == 1 ? " is" : " are") + " to be given";
}

// Codes without files of allowable stresses.
std::string no_file_for(const MaterialKeys& keys, const std::string& name,
                        const std::string& given) {
    std::string message = (keys.selection.code == TARVANE_PD_5500 ? "PD 5500" : "EN 13445") +
                          std::string(" takes no allowable stress from a material file: ") + given +
                          " (force_div1 = true takes those of VIII-1)";
    for (const EnMaterial& steel : en_materials_named(name))
        message += "; ENMATDATA.BIN has " + strengths_of(steel, keys.temperature);
    return message;
}

} // namespace

const Material* find_material(Reading& reading, const MaterialKeys& keys,
                              std::initializer_list<std::string_view> needed) {
    if (blank(keys.name)) return nullptr;
    const bool wanted = std::any_of(needed.begin(), needed.end(),
                                    [&](std::string_view key) { return !reading.given(key); });
    const auto refuse = [&](std::string_view key, std::string message) -> const Material* {
        if (!wanted) return nullptr;
        reading.fault_at(keys.name_key, key, std::move(message));
        for (const std::string_view stress : needed)
            if (!reading.given(stress)) reading.supply(stress);
        return nullptr;
    };

    std::string name = keys.name;
    name.erase(name.find_last_not_of(' ') + 1);
    const int file_code = keys.selection.file_code();
    if (file_code != TARVANE_ASME_VIII_1 && file_code != TARVANE_ASME_VIII_2) {
        if (!wanted) return nullptr;
        return refuse(keys.name_key,
                      no_file_for(keys, to_utf8(name), to_be_given(reading, needed)));
    }
    std::vector<const Material*> found = reading.materials.named(name, keys.selection);
    if (found.empty())
        return refuse(keys.name_key,
                      unknown_material(to_utf8(name), keys.selection, reading.materials));
    const std::vector<const Material*> all = found;
    const auto keep = [&](auto is_kept) {
        std::erase_if(found, [&](const Material* m) { return !is_kept(*m); });
    };
    if (keys.reference != 0) {
        keep([&](const Material& m) { return m.reference == keys.reference; });
        if (found.empty())
            return refuse(keys.reference_key, "no " + name + " with reference " +
                                                  std::to_string(keys.reference) + " in " +
                                                  keys.selection.file() + "; there is " +
                                                  reference_list(all, reading.units));
    } else if (keys.size) {
        keep([&](const Material& m) { return m.takes_size(*keys.size); });
        if (found.empty())
            return refuse(keys.name_key, "no " + name + " in " + keys.selection.file() +
                                             " for bolts of " +
                                             shown(*keys.size, Quantity::diameter, reading.units));
    }
    if (keys.thickness) {
        keep([&](const Material& m) { return m.takes_size(*keys.thickness); });
        if (found.empty())
            return refuse(keys.reference != 0 ? keys.reference_key : keys.name_key,
                          "no " + name + (keys.reference != 0 ? " with this reference" : "") +
                              " in " + keys.selection.file() + " for a thickness of " +
                              shown(*keys.thickness, Quantity::thickness, reading.units) +
                              "; there is " + reference_list(all, reading.units));
    }
    if (found.size() > 1)
        return refuse(keys.name_key, std::to_string(found.size()) + " records of " + name + " in " +
                                         keys.selection.file() + ": " +
                                         reference_list(found, reading.units) + "; choose one by " +
                                         std::string(keys.reference_key));
    return found.front();
}

std::optional<float> supply_stress(Reading& reading, const MaterialKeys& keys,
                                   const Material& material, std::string_view stress_key,
                                   std::optional<float> temperature) {
    if (reading.given(stress_key)) return std::nullopt;
    reading.supply(stress_key, origin_of(material, temperature.value_or(0.0f), reading.units));
    if (!temperature) return std::nullopt;
    const float last = material.last_temperature();
    if (!material.has_allowable_at(*temperature)) {
        std::string message = material.name + " has no allowable stress at " +
                              shown(*temperature, Quantity::temperature, reading.units) + " in " +
                              keys.selection.file();
        if (last > 0.0f)
            message += "; its last one is at " + shown(last, Quantity::temperature, reading.units);
        reading.fault_at(keys.name_key, stress_key, std::move(message));
        return std::nullopt;
    }
    reading.use(material);
    note_cold(reading, material, keys.selection.file(), *temperature);
    return material.allowable_at(std::min(*temperature, last));
}

std::string origin_of(const Material& material) { return "material " + material.name; }

std::string origin_of(const Material& material, float temperature, const UnitSystem& units) {
    return origin_of(material) + " at " + shown_degrees(temperature, units);
}

void note_cold(Reading& reading, const Material& material, std::string_view file,
               float temperature) {
    if (!(temperature < material.coldest())) return;
    reading.tell(shown(temperature, Quantity::temperature, reading.units) +
                 " is below the first temperature of " + std::string(file) + ", " +
                 shown(material.coldest(), Quantity::temperature, reading.units) +
                 ": the first figure of " + material.name + " was taken");
}

int p_number_of(const Material& material) { return std::atoi(material.p_number.c_str()); }

} // namespace tarvane::vessel
