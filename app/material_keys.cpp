#include "material_keys.h"

#include "results.h"
#include "text.h"

#include <algorithm>
#include <cstdlib>
#include <vector>

namespace tarvane::app {

namespace {

bool blank(std::string_view text) { return text.find_first_not_of(' ') == std::string_view::npos; }

// "101 (18Cr-8Ni, high stress), 201 (18Cr-8Ni, low stress)"
std::string reference_list(const std::vector<const Material*>& materials) {
    std::string list;
    for (const Material* m : materials) {
        list += (list.empty() ? "" : ", ") + std::to_string(m->reference);
        if (!m->note.empty()) list += " (" + m->note + ')';
    }
    return list;
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
            return refuse(keys.reference_key,
                          "no " + name + " with reference " + std::to_string(keys.reference) +
                              " in " + keys.selection.file() + "; there is " + reference_list(all));
    } else if (keys.size) {
        keep([&](const Material& m) { return m.takes_size(*keys.size); });
        if (found.empty())
            return refuse(keys.name_key, "no " + name + " in " + keys.selection.file() +
                                             " for bolts of " +
                                             shown(*keys.size, Quantity::diameter, reading.units));
    }
    if (found.size() > 1)
        return refuse(keys.name_key, std::to_string(found.size()) + " records of " + name + " in " +
                                         keys.selection.file() + ": " + reference_list(found) +
                                         "; choose one by " + std::string(keys.reference_key));
    return found.front();
}

std::optional<float> supply_stress(Reading& reading, const MaterialKeys& keys,
                                   const Material& material, std::string_view stress_key,
                                   std::optional<float> temperature) {
    if (reading.given(stress_key)) return std::nullopt;
    reading.supply(stress_key);
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
    if (material.approximate) reading.approximate[keys.selection.file()].insert(material.name);
    return material.allowable_at(std::min(*temperature, last));
}

int p_number_of(const Material& material) { return std::atoi(material.p_number.c_str()); }

} // namespace tarvane::app
