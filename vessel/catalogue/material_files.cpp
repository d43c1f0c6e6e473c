#include "catalogue/material_files.h"

#include "catalogue/data_files_check.h"
#include "document/results.h"
#include "values/text.h"

#include <algorithm>
#include <cctype>

namespace tarvane::vessel {

namespace {

constexpr std::int32_t FOUND = 0;
constexpr float PSI_OF_KSI = 1000.0f; // of a ksi
constexpr std::string_view APPROXIMATE = "; approximate";

template <std::size_t N>
std::string text_of(const char (&field)[N]) {
    std::string text(field, N);
    std::replace(text.begin(), text.end(), '\0', ' ');
    const std::size_t first = std::min(text.find_first_not_of(' '), text.size());
    return text.substr(first, text.find_last_not_of(' ') + 1 - first);
}

Material material_of(const TARVANE_MATERIAL_RECORD& r, const MaterialSelection& selection) {
    Material m;
    m.name = text_of(r.name);
    m.reference = r.reference;
    m.form = text_of(r.product_form);
    m.uns = text_of(r.uns_number);
    m.note = text_of(r.note);
    m.approximate = m.note.ends_with(APPROXIMATE);
    if (m.approximate) m.note.resize(m.note.size() - APPROXIMATE.size());
    m.p_number = text_of(r.p_number);
    m.chart = text_of(r.chart);
    m.group = r.group;
    m.curve = r.curve;
    m.curve_normalized = r.curve_normalized;
    m.tensile = r.tensile * PSI_OF_KSI;
    m.yield = r.yield * PSI_OF_KSI;
    m.modulus = r.modulus_reference;
    m.expansion = r.expansion_reference;
    m.thickness_limit = r.thickness_limit;
    m.size_above = r.min_dia;
    m.size_to = r.max_dia;
    m.impact_temperature = r.impact_temperature;
    m.reduction_66g = r.ucs66g_reduction;
    m.selection = selection;
    m.record = r;
    return m;
}

// Temperature of a place of the stress row.
float axis(std::size_t place, bool metric) {
    const auto step = static_cast<float>(place);
    if (!metric) return 100.0f + 50.0f * step;
    const float celsius = place == 0 ? 40.0f : place == 1 ? 65.0f : 50.0f + 25.0f * step;
    return celsius * 1.8f + 32.0f;
}

} // namespace

std::string MaterialSelection::file() const {
    const std::string unit = metric ? "M.BIN" : ".BIN";
    const int from = file_code();
    if (from == TARVANE_ASME_VIII_2 && d2_class == 0) return "MatFileD2C1" + unit;
    if (year != 0) return "the material file of edition " + std::to_string(year);
    return (from == TARVANE_ASME_VIII_2 ? "MATFILE2" : "MATFILE1") + unit;
}

// ---- one material ----------------------------------------------------------------------------------

std::vector<Material::Allowable> Material::allowables() const {
    std::size_t count = std::size(record.allowable);
    while (count > 0 && !(record.allowable[count - 1] > 0.0f))
        --count; // zeros after the last stress: not allowed there
    std::vector<Allowable> list;
    for (std::size_t i = 0; i < count; ++i)
        list.push_back({axis(i, selection.metric), record.allowable[i] * PSI_OF_KSI});
    return list;
}

float Material::last_temperature() const {
    const std::vector<Allowable> list = allowables();
    return list.empty() ? 0.0f : list.back().temperature;
}

float Material::allowable_at(float temperature) const {
    select_materials(selection); // the axis depends on it
    return READ_ALLOWABLE_AT(&record, &temperature) * PSI_OF_KSI;
}

// The figures of a metric file are rounded when they are converted to degrees F.
bool Material::has_allowable_at(float temperature) const {
    return !allowables().empty() && !(temperature > last_temperature() + 0.01f);
}

bool Material::takes_size(float size) const {
    constexpr float ROUNDING = 1.0e-4f; // of a size in other units
    return (size_above <= 0.0f || size > size_above + ROUNDING) &&
           (size_to <= 0.0f || size <= size_to + ROUNDING);
}

std::string item_of(const Material& material) {
    return material.name + ", " + std::to_string(material.reference);
}

std::string size_range(const Material& m, const UnitSystem& units) {
    std::string text;
    if (m.size_above > 0.0f) text = "above " + shown(m.size_above, Quantity::thickness, units);
    if (m.size_to > 0.0f)
        text +=
            (text.empty() ? "up to " : ", up to ") + shown(m.size_to, Quantity::thickness, units);
    return text;
}

std::string_view curve_name(int curve) {
    constexpr std::string_view NAMES[] = {"", "A", "B", "C", "D", "impact", "exempt"};
    return curve >= 0 && curve < static_cast<int>(std::size(NAMES)) ? NAMES[curve] : "";
}

std::string material_key(std::string_view name) {
    std::string key;
    for (const char c : name) {
        if (c != ' ' && c != '.' && c != '/' && c != '-')
            key += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    }
    return key;
}

// ---- files -----------------------------------------------------------------------------------------

void select_materials(const MaterialSelection& selection) {
    const std::int32_t metric = selection.metric ? 1 : 0, force = selection.force_div1 ? 1 : 0;
    const std::int32_t d2_class = selection.d2_class, year = selection.year;
    SET_MATERIAL_SELECTION(&metric, &force, &d2_class, &year);
}

const MaterialFiles::File& MaterialFiles::file(const MaterialSelection& selection) {
    const auto known = files.find(selection);
    if (known != files.end()) return known->second;

    const std::int32_t code = selection.code;
    select_materials(selection);
    File& read = files[selection];
    if (data_file_fault(selection.file())) return read;
    std::int32_t count = 0;
    MATERIAL_COUNT(&code, &count);
    for (std::int32_t number = 1; number <= count; ++number) {
        std::int32_t status = 1;
        TARVANE_MATERIAL_RECORD record{};
        MATERIAL_BY_NUMBER(&code, &number, &status, &record);
        if (status == FOUND) read.materials.push_back(material_of(record, selection));
    }
    for (const Material& material : read.materials)
        read.by_key[material_key(material.name)].push_back(&material);
    return read;
}

const std::vector<Material>& MaterialFiles::all(const MaterialSelection& selection) {
    return file(selection).materials;
}

std::vector<const Material*> MaterialFiles::named(std::string_view name,
                                                  const MaterialSelection& selection) {
    const std::string key = material_key(name);
    const File& read = file(selection);
    const auto found = read.by_key.find(key);
    return key.empty() || found == read.by_key.end() ? std::vector<const Material*>()
                                                     : found->second;
}

std::vector<std::string> MaterialFiles::near_names(std::string_view name,
                                                   const MaterialSelection& selection,
                                                   std::size_t count) {
    std::vector<std::string_view> names;
    for (const Material& material : all(selection))
        names.push_back(material.name);
    std::vector<std::string> near;
    while (near.size() < count) {
        const std::string_view next = nearest(name, names);
        if (next.empty()) break;
        near.emplace_back(next);
        std::erase(names, std::string_view(near.back()));
    }
    return near;
}

std::string no_materials(const MaterialSelection& selection) {
    const auto fault = data_file_fault(selection.file());
    return selection.file() + " is " + fault.value_or("missing or empty");
}

std::string unknown_material(std::string_view name, const MaterialSelection& selection,
                             MaterialFiles& files) {
    if (files.all(selection).empty())
        return "no material " + echoed(name) + ": " + no_materials(selection);
    std::string message = "no material " + echoed(name) + " in " + selection.file();
    const std::vector<std::string> near = files.near_names(name, selection, 3);
    if (!near.empty()) message += near.size() == 1 ? "; the nearest is " : "; the nearest are ";
    for (std::size_t i = 0; i < near.size(); ++i)
        message += (i == 0 ? "" : ", ") + near[i];
    return message;
}

} // namespace tarvane::vessel
