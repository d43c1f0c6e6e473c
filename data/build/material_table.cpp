#include "material_table.h"

#include <algorithm>

namespace tarvane::data {

namespace {

constexpr std::string_view COLUMNS[] = {"reference",
                                        "name",
                                        "part",
                                        "form",
                                        "uns",
                                        "composition",
                                        "note",
                                        "p_number",
                                        "group",
                                        "curve",
                                        "curve_normalized",
                                        "tensile",
                                        "yield",
                                        "chart",
                                        "modulus",
                                        "expansion",
                                        "thickness_limit",
                                        "min_size",
                                        "max_size",
                                        "impact_temperature",
                                        "ucs66g",
                                        "table",
                                        "edition",
                                        "status",
                                        "source"};

constexpr std::string_view CURVES[] = {"", "A", "B", "C", "D", "impact", "exempt"}; // from 0
constexpr std::string_view PARTS[] = {"UCS", "UHA", "UNF"};

constexpr float NO_SIZE_LIMIT = -1.0f;
constexpr std::int32_t NO_IMPACT_TEST = 1; // anything below is the temperature of a test

// Place of the field in a list of words.
std::int32_t choice(const Row& row, std::string_view column,
                    std::span<const std::string_view> words) {
    const std::string& field = row.field(column);
    const auto found = std::find(words.begin(), words.end(), field);
    if (found == words.end()) row.fail(column, "not one of the words for it: \"" + field + "\"");
    return static_cast<std::int32_t>(found - words.begin());
}

float size_limit(const Row& row, std::string_view column) {
    return row.blank(column) ? NO_SIZE_LIMIT : row.positive(column);
}

void take_size_limits(const Row& row, TARVANE_MATERIAL_RECORD& r) {
    r.min_dia = size_limit(row, "min_size");
    r.max_dia = size_limit(row, "max_size");
    // Without an upper limit no bolt at all would match the lower one. Thick forgings and pipes have none.
    const bool open = row.blank("max_size") && row.field("form") != "Bolting";
    if (r.min_dia > 0.0f && !open && !(r.max_dia > r.min_dia))
        row.fail("max_size", "not above min_size: \"" + row.field("max_size") + "\"");
}

std::int32_t impact_temperature(const Row& row) {
    const std::int32_t temperature = row.whole("impact_temperature", NO_IMPACT_TEST);
    if (!row.blank("impact_temperature") && temperature >= NO_IMPACT_TEST)
        row.fail("impact_temperature", "not below 1: " + row.field("impact_temperature"));
    return temperature;
}

TARVANE_MATERIAL_RECORD properties(const Row& row) {
    TARVANE_MATERIAL_RECORD r{};
    put_text(r.name, row.text("name", sizeof r.name));
    put_text(r.first_name, row.text("name"));
    r.reference = row.whole("reference");
    if (r.reference < 1) row.fail("reference", "not above 0: " + row.field("reference"));
    put_text(r.product_form, row.text("form", sizeof r.product_form));
    put_text(r.uns_number, row.text("uns", sizeof r.uns_number));
    put_text(r.text_92, "");
    put_text(r.note, note_text(row, row.approximate()));
    r.thickness_limit = row.blank("thickness_limit") ? 0.0f : row.positive("thickness_limit");
    put_text(r.p_number, row.field("p_number", sizeof r.p_number));
    r.group = row.whole("group", 0);
    r.curve = choice(row, "curve", CURVES);
    r.curve_normalized =
        row.blank("curve_normalized") ? r.curve : choice(row, "curve_normalized", CURVES);
    r.tensile = row.positive("tensile");
    r.yield = row.positive("yield");
    put_text(r.chart, row.field("chart", sizeof r.chart));
    r.modulus_reference = row.whole("modulus", 0);
    r.expansion_reference = row.whole("expansion", 0);
    put_text(r.text_316, "");
    take_size_limits(row, r);
    r.impact_temperature = impact_temperature(row);
    r.ucs66g_reduction = row.whole("ucs66g", 0);
    put_text(r.text_404, "");
    choice(row, "part", PARTS);
    return r;
}

} // namespace

std::string note_text(const Row& material, bool approximate) {
    std::string note = material.text("composition");
    if (!material.blank("note")) note += ", " + material.field("note");
    if (approximate) note += APPROXIMATE_MARK;
    if (note.size() > sizeof TARVANE_MATERIAL_RECORD{}.note)
        material.fail("note", "too long together with composition and status: \"" + note + "\"");
    return note;
}

TARVANE_MATERIAL_RECORD with_stresses(const Material& material, const Row& stresses) {
    TARVANE_MATERIAL_RECORD r = material.record;
    const TemperatureRow figures = temperature_row(stresses);
    std::copy_n(figures.begin(), PLACES, r.allowable);
    const bool properties_are = material.row->approximate(), stresses_are = stresses.approximate();
    put_text(r.note, note_text(*material.row, properties_are || stresses_are));
    stresses.text("table");
    stresses.text("edition");
    return r;
}

TARVANE_MATERIAL_RECORD metric_record(TARVANE_MATERIAL_RECORD r) {
    TemperatureRow inch;
    std::copy_n(r.allowable, PLACES, inch.begin());
    const TemperatureRow metric = metric_row(inch);
    std::copy_n(metric.begin(), PLACES, r.allowable);
    r.tensile /= KSI_OF_MPA;
    r.yield /= KSI_OF_MPA;
    r.thickness_limit *= MM_OF_INCH;
    if (r.min_dia > 0.0f) r.min_dia *= MM_OF_INCH;
    if (r.max_dia > 0.0f) r.max_dia *= MM_OF_INCH;
    return r;
}

TARVANE_MATERIAL_RECORD inch_record(TARVANE_MATERIAL_RECORD r) {
    for (float& stress : r.allowable)
        stress *= KSI_OF_MPA;
    r.tensile *= KSI_OF_MPA;
    r.yield *= KSI_OF_MPA;
    r.thickness_limit /= MM_OF_INCH;
    if (r.min_dia > 0.0f) r.min_dia /= MM_OF_INCH;
    if (r.max_dia > 0.0f) r.max_dia /= MM_OF_INCH;
    return r;
}

MaterialTable::MaterialTable(const Sources& sources)
    : table(sources, "materials_viii1.csv", "name", COLUMNS, TEMPERATURE_COLUMNS) {
    for (const Row& row : table.rows()) {
        const Material material{.row = &row, .record = properties(row)};
        for (const Material& other : list)
            if (other.record.reference == material.record.reference)
                row.fail_again("reference", *other.row);
        list.push_back(material);
    }
}

bool MaterialTable::orphan(const Row& row) const {
    return row.shipped() && std::none_of(list.begin(), list.end(), [&](const Material& material) {
               return material.row->field("reference") == row.field("reference") &&
                      material.row->field("name") == row.field("name");
           });
}

const Material& MaterialTable::of(const Row& row) const {
    const std::int32_t reference = row.whole("reference");
    for (const Material& material : list) {
        if (material.record.reference != reference) continue;
        if (material.row->field("name") != row.text("name"))
            row.fail("name", "\"" + row.field("name") + "\" where " + table.file() + " has \"" +
                                 material.row->field("name") + "\" for this reference");
        return material;
    }
    row.fail("reference", row.field("reference") + " is not in " + table.file());
}

} // namespace tarvane::data
