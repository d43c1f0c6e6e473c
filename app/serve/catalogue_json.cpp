#include "catalogue/bolt_sizes.h"
#include "catalogue/data_files_check.h"
#include "catalogue/data_folder.h"
#include "catalogue/data_sources.h"
#include "catalogue/gaskets.h"
#include "catalogue/material_files.h"
#include "catalogue/standard_flanges.h"
#include "document/results.h"
#include "fields/flange_keys.h"
#include "serve/refused.h"
#include "serve/vocabulary_json.h"
#include "surface/engine_turn.h"
#include "values/decimal.h"
#include "values/json.h"
#include "values/text.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace tarvane::app {

using namespace vessel;

namespace {

constexpr std::size_t MOST_ROWS = 200;
constexpr unsigned NOT_FOUND = 404, UNUSABLE = 422;

struct Row {
    std::string name, detail;
    Table fills;
    std::string from;
    bool approximate = false;
};

// Texts that have every word of a query, compared as names are.
class Words {
  public:
    explicit Words(std::string_view query) {
        while (!query.empty()) {
            const std::size_t end = std::min(query.find(' '), query.size());
            if (std::string word = folded(query.substr(0, end)); !word.empty())
                words.push_back(std::move(word));
            query.remove_prefix(std::min(end + 1, query.size()));
        }
    }
    bool in(std::string_view text) const {
        const std::string all = folded(text);
        return std::all_of(words.begin(), words.end(), [&all](const std::string& word) {
            return all.find(word) != std::string::npos;
        });
    }

  private:
    std::vector<std::string> words;
};

// "MATFILE1.BIN, SA-516 70, 1: approximate, edition not stated: ..."
std::string source_text(std::string_view file, std::string_view item, const ItemSource* source) {
    std::string text = std::string(file) + ", " + std::string(item);
    if (source != nullptr) text += ": " + source->text();
    return text;
}

std::vector<Row> material_rows(const CatalogueQuery& query, const UnitSystem& units) {
    const Words words(query.words);
    const bool bolting = query.key == "bolt_material";
    MaterialSelection selection;
    selection.code =
        folded(query.code).starts_with("viii2") ? TARVANE_ASME_VIII_2 : TARVANE_ASME_VIII_1;
    MaterialFiles files;
    const std::vector<Material>& all = files.all(selection);
    if (all.empty()) throw RequestRefused(UNUSABLE, no_materials(selection));
    std::map<std::string, int> of_name;
    for (const Material& material : all)
        ++of_name[material.name];
    const auto sources = data_sources();
    std::vector<Row> rows;
    for (const Material& m : all) {
        if (bolting != (m.form == "Bolting") || !words.in(m.name + ' ' + m.form + ' ' + m.uns))
            continue;
        const ItemSource source = source_of(m, *sources);
        Row row{.name = m.name,
                .detail = m.form,
                .fills = {},
                .from = source_text(selection.file(), item_of(m), &source),
                .approximate = m.approximate};
        const std::vector<Material::Allowable> allowables = m.allowables();
        if (!allowables.empty()) {
            const auto& [temperature, stress] = allowables.front();
            row.detail += (row.detail.empty() ? "" : "; ") +
                          shown(stress, Quantity::stress, units) + " at " +
                          shown_degrees(temperature, units) + ", to " +
                          shown_degrees(m.last_temperature(), units);
        }
        if (const std::string size = size_range(m, units); !size.empty()) row.detail += "; " + size;
        row.fills.put(query.key, m.name);
        // Which of the records of one name.
        if (of_name[m.name] > 1 && (bolting || query.key == "material"))
            row.fills.put(bolting ? "bolt_reference" : "material_reference",
                          std::int64_t{m.reference});
        rows.push_back(std::move(row));
    }
    return rows;
}

std::string size_value(const FlangeClass& flanges, const NominalSize& size) {
    const std::string text = flanges.size_text(size); // "NPS 26 A", "DN 300"
    return text.substr(text.find(' ') + 1);
}

// A number where it is one.
Value number_or_text(const std::string& text) {
    std::string_view rest = text;
    const auto number = take_decimal<double>(rest);
    if (!number || !rest.empty()) return text;
    if (*number == std::floor(*number)) return static_cast<std::int64_t>(*number);
    return *number;
}

std::vector<Row> flange_rows(const CatalogueQuery& query, const UnitSystem& units) {
    const Words words(query.words);
    const std::vector<FlangeClass> classes = flange_classes();
    if (classes.empty()) throw RequestRefused(UNUSABLE, unknown_class("", classes));
    const auto sources = data_sources();
    std::vector<Row> rows;
    for (const FlangeClass& of : classes) {
        for (const FlangeRow& each : of.rows) {
            const std::string standard(of.standard(each.size())), size = of.size_text(each.size());
            const std::string name = "class " + of.name + ", " + size;
            std::string all = name;
            all.append(" ").append(standard);
            if (!words.in(all)) continue;
            const FlangeLookup found =
                look_up_flange(of, each.size(), FlangeForm::blind, std::nullopt);
            Row row{.name = name,
                    .detail = standard + "; A " + shown(found.flange.A, Quantity::diameter, units) +
                              ", C " + shown(found.flange.C, Quantity::diameter, units) + ", " +
                              number_text(found.flange.n, 0) + " x " +
                              shown(found.flange.a, Quantity::diameter, units),
                    .fills = {},
                    .from = {}};
            if (!found.items.empty()) {
                const std::string& item = found.items.front();
                row.from = source_text(STANDARD_FLANGE_FILE, item,
                                       sources->of(STANDARD_FLANGE_FILE, item));
                row.approximate = is_approximate(STANDARD_FLANGE_FILE, item);
            }
            row.fills.put("standard.class", number_or_text(of.name));
            row.fills.put("standard.size", number_or_text(size_value(of, each.size())));
            rows.push_back(std::move(row));
        }
    }
    return rows;
}

std::vector<Row> gasket_rows(const CatalogueQuery& query, const UnitSystem& units) {
    const Words words(query.words);
    std::vector<Row> rows;
    for (const Gasket& gasket : gaskets()) {
        if (!words.in(gasket.name)) continue;
        const bool metric = units.metric();
        Row row{.name = std::string(gasket.name),
                .detail = "m " + number_text(gasket.m, 2) + ", y " +
                          (metric ? number_text(gasket.y_metric, 1) + " N/mm²"
                                  : number_text(gasket.y_us, 0) + " psi"),
                .fills = {},
                .from = "Appendix 2, Table 2-5.1",
                .approximate = !metric && !gasket.y_us_published};
        if (row.approximate) row.from += "; approximate: " + std::string(Y_US_SOURCE);
        row.fills.put("gasket.type", std::string(gasket.name));
        rows.push_back(std::move(row));
    }
    return rows;
}

// The choice of the key `bolting` that a series is, by its name in the file.
std::string_view bolting_choice(const std::string& series) {
    const std::string name = folded(series);
    for (const Choice& choice : flange_keys().find("bolting")->choices) {
        const std::string known = folded(choice.name);
        if (known == name || (known == "tema" && name == "temaimperial")) return choice.name;
    }
    return {};
}

std::vector<Row> bolt_rows(const CatalogueQuery& query, const UnitSystem& units) {
    constexpr float MILLIMETRES = 25.4f; // in an inch
    const Words words(query.words);
    const auto sources = data_sources();
    std::vector<Row> rows;
    for (const ThreadSeries& series : thread_series()) {
        const std::string_view choice = bolting_choice(series.name);
        if (choice.empty()) continue;
        const ItemSource* source = sources->of(BOLT_FILE, series.name);
        for (const auto& size : series.sizes) {
            const std::string diameter =
                general_text(static_cast<double>(size[0])) + (series.metric ? " mm" : " in.");
            const std::string name = std::string(choice) + ", " + diameter;
            if (!words.in(series.name + ' ' + name)) continue;
            const float inches = series.metric ? size[0] / MILLIMETRES : size[0];
            Row row{.name = name,
                    .detail = "root area " + general_text(static_cast<double>(size[1])) +
                              (series.metric ? " mm²" : " sq in."),
                    .fills = {},
                    .from = source_text(BOLT_FILE, series.name, source),
                    .approximate = is_approximate(BOLT_FILE, series.name)};
            row.fills.put("bolting", std::string(choice));
            // In the units of the file a number, else one with its unit.
            if (series.metric == units.metric())
                row.fills.put("a", number_or_text(general_text(static_cast<double>(size[0]))));
            else if (series.metric)
                row.fills.put("a", general_text(static_cast<double>(size[0])) + " mm");
            else
                row.fills.put("a", general_text(static_cast<double>(inches)) + " in");
            rows.push_back(std::move(row));
        }
    }
    return rows;
}

} // namespace

std::string catalogue_json(std::string_view name, const CatalogueQuery& query) {
    const EngineTurn turn;
    const UnitSystem units = folded(query.units) == "si" ? si_units() : us_units();
    std::vector<Row> rows;
    if (name == "materials")
        rows = material_rows(query, units);
    else if (name == "flanges")
        rows = flange_rows(query, units);
    else if (name == "gaskets")
        rows = gasket_rows(query, units);
    else if (name == "bolts")
        rows = bolt_rows(query, units);
    else
        throw RequestRefused(NOT_FOUND, "there is no such catalogue");
    const std::size_t listed = std::min(rows.size(), MOST_ROWS);
    JsonWriter json;
    json.begin_object().key("rows").begin_list();
    for (std::size_t i = 0; i < listed; ++i) {
        const Row& row = rows[i];
        json.begin_object().key("name").text(row.name).key("detail").text(row.detail);
        json.key("fills").value(row.fills).key("from").text(row.from);
        json.key("approximate").flag(row.approximate).end_object();
    }
    json.end_list().key("more").whole(static_cast<std::int64_t>(rows.size() - listed)).end_object();
    return json.take();
}

} // namespace tarvane::app
