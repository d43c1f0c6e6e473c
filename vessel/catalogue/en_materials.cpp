#include "catalogue/en_materials.h"

#include "catalogue/data_files_check.h"
#include "catalogue/data_folder.h"
#include "catalogue/data_sources.h"
#include "catalogue/material_files.h"
#include "document/results.h"
#include "tarvane/tarvane.h"
#include "values/bounded_file.h"

#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>

namespace tarvane::vessel {

namespace {

constexpr std::string_view FILE_NAME = "ENMATDATA.BIN";
constexpr std::size_t RECORD_BYTES = sizeof(TARVANE_EN_RECORD);
constexpr std::int32_t MOST_RECORDS = 10000, MOST_OF_SECOND_COUNT = 200;
constexpr std::string_view APPROXIMATE_PROOF = "; approximate";

// Places of a record, in bytes.
constexpr std::size_t NAME = 4, NUMBER = 28, STANDARD = 36, FORM = 60, NOTE = 84, THICKEST = 124,
                      TENSILE = 128, PROOF = 132;

template <class Number>
Number number_at(const char* record, std::size_t place) {
    Number number{};
    std::memcpy(&number, record + place, sizeof number);
    return number;
}

std::string text_at(const char* record, std::size_t place, std::size_t width) {
    std::string text(record + place, width);
    text.erase(text.find_last_not_of(std::string_view(" \0", 2)) + 1);
    return text;
}

// The keys of the file, which the engine reads records by.
std::vector<std::int32_t> keys() {
    std::vector<std::int32_t> list;
    const std::filesystem::path path = path_of(data_file_path(FILE_NAME));
    std::error_code ignored;
    if (!std::filesystem::is_regular_file(path, ignored)) return list;
    std::ifstream file(path, std::ios::binary);
    char record[RECORD_BYTES];
    if (!file.read(record, RECORD_BYTES)) return list;
    const auto first = number_at<std::int32_t>(record, 0),
               second = number_at<std::int32_t>(record, 4);
    if (first < 0 || first > MOST_RECORDS) return list;
    const std::int32_t count = first + (second < 0 || second > MOST_OF_SECOND_COUNT ? 0 : second);
    for (std::int32_t i = 0; i < count && file.read(record, RECORD_BYTES); ++i)
        list.push_back(number_at<std::int32_t>(record, 0));
    return list;
}

EnMaterial material_of(const TARVANE_EN_RECORD& bytes) {
    const char* record = reinterpret_cast<const char*>(&bytes);
    EnMaterial m;
    m.key = number_at<std::int32_t>(record, 0);
    m.name = text_at(record, NAME, NUMBER - NAME);
    m.number = text_at(record, NUMBER, STANDARD - NUMBER);
    m.standard = text_at(record, STANDARD, FORM - STANDARD);
    m.form = text_at(record, FORM, NOTE - FORM);
    m.proof_kind = text_at(record, NOTE, THICKEST - NOTE);
    m.approximate = m.proof_kind.ends_with(APPROXIMATE_PROOF);
    if (m.approximate) m.proof_kind.resize(m.proof_kind.size() - APPROXIMATE_PROOF.size());
    m.max_thickness = number_at<float>(record, THICKEST);
    m.tensile = number_at<float>(record, TENSILE);
    for (std::size_t i = 0; i < EnMaterial::PLACES; ++i)
        m.proof[i] = number_at<float>(record, PROOF + i * sizeof(float));
    return m;
}

float axis(std::size_t place) { return place == 0 ? 20.0f : 50.0f * static_cast<float>(place); }

std::string strength(float value) { return number_text(value, 0) + " N/mm2"; }

} // namespace

std::optional<float> EnMaterial::proof_at(float celsius) const {
    std::optional<std::size_t> below;
    for (std::size_t i = 0; i < PLACES; ++i) {
        if (!(proof[i] > 0.0f)) continue;
        if (axis(i) == celsius) return proof[i];
        if (axis(i) > celsius) {
            if (!below) return std::nullopt;
            const float part = (celsius - axis(*below)) / (axis(i) - axis(*below));
            return proof[*below] + part * (proof[i] - proof[*below]);
        }
        below = i;
    }
    return std::nullopt;
}

std::vector<EnMaterial> en_materials_named(std::string_view name) {
    std::vector<EnMaterial> found;
    const std::string wanted = material_key(name);
    if (wanted.empty()) return found;
    for (const std::int32_t key : keys()) {
        std::int32_t status = 1;
        TARVANE_EN_RECORD record{};
        READ_EN_MATERIAL(&key, &status, &record);
        if (status != 0) continue;
        EnMaterial material = material_of(record);
        if (material_key(material.name) == wanted || material_key(material.number) == wanted)
            found.push_back(std::move(material));
    }
    return found;
}

std::string strengths_of(const EnMaterial& m, std::optional<float> fahrenheit) {
    constexpr float ROOM = 20.0f;
    std::string text = m.name + ", " + m.number + " (" + m.standard + ", " + m.form + ", up to " +
                       number_text(m.max_thickness, 0) + " mm): " + m.proof_kind;
    if (const auto at_room = m.proof_at(ROOM)) text += ' ' + strength(*at_room) + " at 20 °C,";
    const float celsius = fahrenheit ? (*fahrenheit - 32.0f) / 1.8f : ROOM;
    if (celsius > ROOM) {
        const auto hot = m.proof_at(celsius);
        text += ' ' + (hot ? strength(*hot) : "none") + " at " + number_text(celsius, 0) + " °C,";
    }
    text += " Rm " + strength(m.tensile);
    if (!data_file_fault(SOURCES_FILE))
        if (const ItemSource* from = data_sources()->of(FILE_NAME, std::to_string(m.key)))
            return text + " (" + from->text() + ')';
    return m.approximate ? text + " (approximate)" : text;
}

} // namespace tarvane::vessel
