#include "components/flange_input.h"

#include "catalogue/bolt_sizes.h"
#include "catalogue/gaskets.h"
#include "catalogue/standard_flanges.h"
#include "components/flange_checks.h"
#include "components/flange_external.h"
#include "components/flange_results.h"
#include "components/flange_session.h"
#include "components/gasket_keys.h"
#include "components/material_keys.h"
#include "components/request.h"
#include "components/rounded_design.h"
#include "document/results.h"
#include "fields/flange_checks.h"
#include "values/text.h"

namespace tarvane::vessel {

const ElementKind FLANGE_KIND{
    .table = "flange",
    .plural = "flanges",
    .keys = flange_keys(),
    .most = MOST_FLANGES,
    .single = false,
    .make =
        [] {
            auto flange = std::make_unique<FlangeInput>();
            flange->kind = &FLANGE_KIND;
            return std::unique_ptr<Element>(std::move(flange));
        },
    .tables = flange_tables,
    .results = flange_result_fields(),
    .checks = FLANGE_CHECKS,
};

// ---- reading ---------------------------------------------------------------------------------------

std::string FlangeInput::description() const {
    std::string name = text_setting(TextSetting::description);
    name.erase(name.find_last_not_of(' ') + 1);
    return name;
}

// The report has room for the first characters. A colon in the last column is no text: the engine rates
// the flange at its given thickness then.
void FlangeInput::write_description() {
    write_slot(slot::description, 15, description());
    char& last = text[slot::description + 14];
    if (setting(Setting::keep_thickness) != 0.0f)
        last = ':';
    else if (last == ':')
        last = ' ';
}

bool FlangeInput::takes_bolt_size() const {
    return analysis() != 3 && static_cast<int>(record[23]) != 3;
}

const BoltSizes& FlangeInput::bolt_sizes() const {
    const int series = static_cast<int>(record[23]);
    const auto known = sizes_read->find(series);
    return known != sizes_read->end()
               ? known->second
               : sizes_read->emplace(series, BoltSizes(series)).first->second;
}

void FlangeInput::write_slot(int offset, std::size_t width, std::string_view western) {
    std::string padded(western.substr(0, width));
    padded.resize(width, ' ');
    text.replace(static_cast<std::size_t>(offset), width, padded);
}

void FlangeInput::put_number(const Key& key, float value) {
    const auto index = static_cast<std::size_t>(key.index);
    if (key.place == Place::record) {
        record[index] = value;
    } else if (key.place == Place::setting) {
        settings[index] = value;
    } else if (key.place == Place::slot_flag) {
        write_slot(key.index, 15, value != 0.0f ? "Y" : "N");
    }
}

void FlangeInput::put_text(const Key& key, const std::string& western) {
    if (key.place == Place::slot) {
        write_slot(key.index, 15, western);
    } else {
        texts[static_cast<std::size_t>(key.index)] = western;
    }
}

float FlangeInput::number_of(const Key& key) const {
    if (key.place == Place::record) return record[static_cast<std::size_t>(key.index)];
    if (key.place == Place::setting) return number_at(key.index);
    return text[static_cast<std::size_t>(key.index)] == 'Y' ? 1.0f : 0.0f;
}

std::string FlangeInput::text_of(const Key& key) const {
    if (key.place != Place::slot) return text_at(key.index);
    std::string slot = text.substr(static_cast<std::size_t>(key.index), 15);
    slot.erase(slot.find_last_not_of(' ') + 1);
    return slot;
}

// ---- standard flange ----------------------------------------------------------------------------------

namespace {

std::optional<FlangeForm> form_of(int type) {
    switch (type) {
    case 1:
        return FlangeForm::weld_neck;
    case 2:
    case 4:
        return FlangeForm::slip_on;
    case 7:
        return FlangeForm::blind;
    default:
        return std::nullopt;
    }
}

struct StandardKey {
    std::string_view name;
    std::size_t element;
    std::optional<float> (*value)(const FlangeDimensions&);
};
using F = const FlangeDimensions&;
constexpr StandardKey STANDARD_KEYS[] = {{"B", 10, [](F f) { return f.B; }},
                                         {"A", 11, [](F f) { return std::optional(f.A); }},
                                         {"t", 8, [](F f) { return f.t; }},
                                         {"g0", 16, [](F f) { return f.g0; }},
                                         {"g1", 17, [](F f) { return f.g1; }},
                                         {"h", 18, [](F f) { return f.h; }},
                                         {"C", 21, [](F f) { return std::optional(f.C); }},
                                         {"a", 22, [](F f) { return std::optional(f.a); }},
                                         {"n", 24, [](F f) { return std::optional(f.n); }},
                                         {"Fod", 12, [](F f) { return f.Fod; }}};

} // namespace

// The raised face of a standard is flat, from the bore on. That of a ring joint is another one, and a nubbin is none of
// the standard's.
void FlangeInput::take_raised_face(Reading& reading, const std::string& standard) {
    const std::string origin = standard + ", raised face";
    if (!reading.given("Fid")) {
        record[TARVANE_Fid] = type() == TARVANE_BLIND ? 0.0f : record[TARVANE_B];
        reading.supply("Fid", origin);
    }
    const Gasket* gasket = reading.sound("gasket.type")
                               ? find_gasket(to_utf8(text_setting(TextSetting::gasket_type)))
                               : nullptr;
    const bool flat = gasket != nullptr && !gasket->name.starts_with("ring joint");
    if (!flat || reading.given("facing") || reading.given("w")) return;
    record[TARVANE_SKETCH] = TARVANE_SKETCH_1A;
    reading.supply("facing", origin);
}

// A key given in the file comes before the dimension of the standard.
void FlangeInput::take_standard(Reading& reading) {
    constexpr std::string_view CLASS = "standard.class", SIZE = "standard.size",
                               WALL = "standard.wall";
    if (!reading.given(CLASS) && !reading.given(SIZE) && !reading.given(WALL)) return;
    // A value that a faulty table would have given is not reported as missing, too.
    const auto refuse = [&](std::string_view key, std::string message) {
        if (!message.empty()) reading.fault(key, std::move(message));
        for (const StandardKey& filled : STANDARD_KEYS)
            if (!reading.given(filled.name)) reading.supply(filled.name);
        for (const std::string_view other : {"Fid", "facing", "bolting"})
            if (!reading.given(other)) reading.supply(other);
    };
    if (!reading.sound(CLASS) || !reading.sound(SIZE)) return refuse(CLASS, "");
    if (reading.given(WALL) && !reading.sound(WALL)) return refuse(WALL, "");
    if (!reading.sound("type")) return refuse("type", "");
    const std::optional<FlangeForm> form = form_of(type());
    if (!form)
        return refuse(CLASS, "a flange of this type has no standard dimensions; a weld neck, slip "
                             "on or blind flange has");
    if (reading.given(WALL) && form != FlangeForm::weld_neck)
        return refuse(WALL, "only a weld neck takes its bore from the wall of the pipe");

    const std::vector<FlangeClass> classes = flange_classes();
    const std::string& name = text_setting(TextSetting::standard_class);
    const FlangeClass* flanges = find_class(classes, name);
    if (flanges == nullptr) return refuse(CLASS, unknown_class(to_utf8(name), classes));
    const std::string& size_text = text_setting(TextSetting::standard_size);
    const std::optional<NominalSize> size = nominal_size(size_text);
    if (!size)
        return refuse(SIZE, "a nominal size is expected, not " + in_quotes(to_utf8(size_text)));
    const std::optional<float> wall =
        reading.given(WALL) ? std::optional(setting(Setting::standard_wall)) : std::nullopt;
    const FlangeLookup found = look_up_flange(*flanges, *size, *form, wall);
    if (!found.fault.empty()) return refuse(found.wall_at_fault ? WALL : SIZE, found.fault);

    standard_name = std::string(flanges->standard(*size)) + (flanges->metric() ? " " : " class ") +
                    flanges->name + ' ' + flanges->size_text(*size);
    const std::string origin = "standard " + standard_name;
    bool face = false;
    for (const StandardKey& key : STANDARD_KEYS) {
        const std::optional<float> value = key.value(found.flange);
        if (!value || reading.given(key.name)) continue;
        record[key.element] = *value;
        reading.supply(key.name, origin);
        face = face || key.name == "Fod";
    }
    if (face) take_raised_face(reading, origin);
    // Coarse threads up to 1 in., 8 threads an inch above.
    if (!flanges->metric() && !reading.given("bolting")) {
        record[TARVANE_THREADS] = TARVANE_TEMA_THREADS;
        reading.supply("bolting", origin);
    }
    for (const std::string& item : found.items) {
        if (face || !item.ends_with("raised face"))
            reading.use(std::string(STANDARD_FLANGE_FILE), item);
    }
}

// ---- materials ---------------------------------------------------------------------------------------

MaterialSelection FlangeInput::material_selection() const {
    return {.code = code(),
            .metric = whole_setting(Setting::material_metric) == 1,
            .force_div1 = whole_setting(Setting::force_div1) == 1,
            .d2_class = whole_setting(Setting::d2_class),
            .year = whole_setting(Setting::material_year)};
}

// A key given in the file comes before the value of the record.
void FlangeInput::take_material(Reading& reading) {
    const auto design_temperature = reading.sound("T") ? std::optional(record[5]) : std::nullopt;
    MaterialKeys keys{.name_key = "material",
                      .reference_key = "material_reference",
                      .name = text.substr(slot::flange_material, 15),
                      .reference = whole_setting(Setting::material_reference),
                      .selection = material_selection(),
                      .temperature = design_temperature};
    if (reading.sound("t")) keys.thickness = record[8];
    const Material* material = find_material(reading, keys, {"Sfo", "Sfa"});
    if (material == nullptr) return;
    if (!reading.given("Sfo") || !reading.given("Sfa")) sized_material = *material;
    if (const auto stress = supply_stress(reading, keys, *material, "Sfo", design_temperature))
        record[6] = *stress;
    if (const auto stress = supply_stress(reading, keys, *material, "Sfa", AMBIENT))
        record[7] = *stress;
    const auto fill = [&](std::string_view key) {
        reading.comes_from(key, origin_of(*material));
        return !reading.given(key);
    };
    if (material->modulus > 0 && fill("material_class"))
        record[34] = static_cast<float>(material->modulus);
    if (fill("chart")) write_slot(slot::chart, 15, material->chart);
    if (fill("chart_yield")) put_setting(Setting::chart_yield, material->yield);
    if (fill("material_reference"))
        put_setting(Setting::material_reference, static_cast<float>(material->reference));
    if (fill("p_number"))
        put_setting(Setting::p_number, static_cast<float>(p_number_of(*material)));
}

void FlangeInput::take_bolt_material(Reading& reading) {
    MaterialKeys keys{.name_key = "bolt_material",
                      .reference_key = "bolt_reference",
                      .name = text.substr(slot::bolt_material, 15),
                      .reference = static_cast<int>(record[75]),
                      .selection = material_selection()};
    const auto design_temperature = reading.sound("T") ? std::optional(record[5]) : std::nullopt;
    keys.temperature = design_temperature;
    if (reading.sound("a")) keys.size = record[22];
    const Material* material = find_material(reading, keys, {"Sb", "Sa"});
    if (material == nullptr) return;
    if (const auto stress = supply_stress(reading, keys, *material, "Sb", design_temperature))
        record[19] = *stress;
    if (const auto stress = supply_stress(reading, keys, *material, "Sa", AMBIENT))
        record[20] = *stress;
    if (reading.given("bolt_reference")) return;
    record[75] = static_cast<float>(material->reference);
    reading.comes_from("bolt_reference", origin_of(*material));
}

// Rows of the text tables that this flange will use.
void FlangeInput::note_tables(Reading& reading) const {
    if (code() <= 2) reading.rely_on(MODULUS_FILE); // looked up for every flange of these codes
    const bool cover = text[slot::channel_cover] == 'Y' && setting(Setting::cover_modulus) == 0.0f;
    if (code() <= 2 && (cover || setting(Setting::rigidity) != 0.0f))
        reading.use("ElastAlp07.txt", "modulus " + std::to_string(static_cast<int>(record[34])));
    for (const Choice& series : flange_keys().find("bolting")->choices) {
        if (series.number != static_cast<int>(record[23])) continue;
        reading.use("BOLTDATA.TXT", std::string(series.name));
    }
}

// ---- checks -----------------------------------------------------------------------------------------

// The engine would use the next smaller size, or the smallest.
void FlangeInput::check_bolt_size(Reading& reading) const {
    const float a = record[22];
    const bool known = reading.sound("a") && reading.sound("bolting") &&
                       (reading.sound("kind") || !reading.given("kind")) &&
                       (a != 0.0f || !reading.supplied("a"));
    if (!known || !takes_bolt_size()) return;
    const int threads = static_cast<int>(record[23]);
    std::string series;
    for (const Choice& choice : flange_keys().find("bolting")->choices) {
        if (choice.number == threads && series.empty()) series = in_quotes(choice.name);
    }
    const BoltSizes& sizes = bolt_sizes();
    if (sizes.empty())
        return reading.fault("bolting", "BOLTDATA.TXT has no bolts of the thread series " + series);
    if (sizes.lists(a) || whole_setting(Setting::bolt_size) == BOLT_NEAREST) return;
    std::string nearest;
    for (const float size : sizes.neighbours(a)) {
        nearest +=
            (nearest.empty() ? "" : " and ") + shown(size, Quantity::diameter, reading.units);
    }
    reading.fault("a", "the thread series " + series + " has no bolt of " +
                           shown(a, Quantity::diameter, reading.units) + "; the nearest are of " +
                           nearest + ", and bolt_size = \"nearest\" takes " +
                           shown(sizes.taken(a), Quantity::diameter, reading.units));
}

// The equivalent pressure of external loads depends on the gasket, which a rated flange does not have.
void FlangeInput::complete_rated(Reading& reading) {
    for (const std::string_view key : {"axial_force", "bending_moment", "external_loads"}) {
        if (!reading.given(key) || text[slot::external_loads] != 'Y') continue;
        reading.fault(key,
                      "a flange of kind \"rated\" takes no external loads; with them give kind "
                      "\"analyse\", the gasket and the rating");
        break;
    }
    write_description();
}

void FlangeInput::complete(Reading& reading) {
    check_values(reading);
    take_standard(reading);
    if (!reading.given("P_operating")) {
        put_setting(Setting::design_pressure_operating, record[4]);
        reading.comes_from("P_operating", "P");
    }
    if (rated()) return complete_rated(reading);
    take_gasket(*this, reading);
    check_bolt_size(reading);
    take_material(reading);
    take_bolt_material(reading);
    note_tables(reading);

    write_description();
    const bool edition_fits =
        edition() == EDITION_CURRENT || code() == (edition() == EDITION_OLDER ? 2 : 1);
    if (!edition_fits) {
        reading.fault("edition", edition() == EDITION_OLDER
                                     ? "\"older\" is an edition of code VIII-2 only"
                                     : "\"A98\" is an edition of code VIII-1 only");
    }
    if (text[slot::channel_cover] == 'Y') {
        if (type() != 7) {
            reading.fault("channel_cover", "only a blind flange can be a channel cover");
        } else if (reading.given("B")) {
            reading.fault("B", "a channel cover has no inside diameter");
        }
        record[10] = setting(Setting::cover_modulus);
    }
    if (reading.sound("P_external") && !(setting(Setting::external_pressure) >= 0.0f))
        reading.fault("P_external", "it must not be below 0");
}

bool FlangeInput::rule(std::string_view id, const Reading& reading) const {
    if (id == "outside_diameter") return !rated() && (analysis() != 3 || type() == 8);
    if (id == "standard")
        return reading.given("standard.class") || reading.given("standard.size") ||
               reading.given("standard.wall");
    // g0, g1 or h of 0 means that there is no hub.
    const auto has = [&](std::string_view key, int element) {
        return reading.given(key) && record[static_cast<std::size_t>(element)] != 0.0f;
    };
    const bool hub = type() == 1 || type() == 8 || has("g0", TARVANE_go) || has("g1", TARVANE_g1) ||
                     has("h", TARVANE_h);
    return !rated() && hub && type() != 7 && type() != 9;
}

// ---- running ---------------------------------------------------------------------------------------

std::unique_ptr<Outcome> FlangeInput::calculate(const Request& file) const {
    auto outcome = std::make_unique<FlangeOutcome>(run_flange(*this, file));
    outcome->rounded = round_design(*this, *outcome, file);
    if (has_external() && !outcome->stopped && !outcome->refused())
        run_external_flange(*this, file, *outcome);
    return outcome;
}

FlangeInput FlangeInput::as_judged(const FlangeOutcome& outcome) const {
    FlangeInput judged = *this;
    if (analysis() != TARVANE_THICKNESS) return judged;
    judged.record[TARVANE_KIND] = TARVANE_ANALYSE;
    const bool at_given = setting(Setting::keep_thickness) != 0.0f && record[TARVANE_t] > 0.0f;
    if (!at_given) judged.record[TARVANE_t] = outcome.t_req;
    return judged;
}

std::vector<Result> FlangeInput::results(const Outcome& outcome) const {
    return flange_results(found_of(*this, static_cast<const FlangeOutcome&>(outcome)));
}

std::vector<Result> FlangeInput::results_at(const Outcome& outcome,
                                            std::span<const std::size_t> places) const {
    const FlangeFound found = found_of(*this, static_cast<const FlangeOutcome&>(outcome));
    std::vector<Result> some;
    some.reserve(places.size());
    for (const std::size_t place : places)
        some.push_back(flange_result(found, place));
    return some;
}

Checks FlangeInput::find_checks(const Outcome& outcome, const UnitSystem& units) const {
    const auto& own = static_cast<const FlangeOutcome&>(outcome);
    Checks checks = own.rounded ? flange_checks(own.rounded->flange, own.rounded->outcome, units)
                                : flange_checks(*this, own, units);
    if (own.rounded) checks.push_back(Check::found(field_of(FLANGE_CHECKS, "search"), true));
    const float found = own.rounded ? own.rounded->flange.record[TARVANE_t] : own.t_req;
    // A thickness that was found can be above the size limit of the stresses.
    const float most = sized_material ? sized_material->size_to : 0.0f;
    if (most > 0.0f && found > 0.0f && !own.stopped && !own.refused()) {
        Check check = Check::compared(field_of(FLANGE_CHECKS, "material_size"), found, most);
        if (check.falls_short()) {
            check.because("the stresses of " + sized_material->name + ", reference " +
                          std::to_string(sized_material->reference) + ", apply up to " +
                          shown(most, Quantity::thickness, units) + ", not for the " +
                          shown(found, Quantity::thickness, units) + " found");
        }
        checks.push_back(std::move(check));
    }
    add_external_checks(*this, own, units, checks);
    for (Check& check : checks)
        check.listed_in(FLANGE_CHECKS);
    return checks;
}

RatingBasis FlangeInput::rating_basis(const Outcome& outcome) const {
    const auto& own = static_cast<const FlangeOutcome&>(outcome);
    if (own.rounded) return own.rounded->flange.rating_basis(own.rounded->outcome);
    RatingBasis basis{.judged = nullptr, .P = record[TARVANE_P]};
    const bool found = analysis() == TARVANE_ANALYSE || rated() || own.t_req > 0.0f;
    if (own.stopped || own.refused())
        basis.why = "no calculation was made";
    else if (basis.P < 0.0f)
        basis.why = "external pressure";
    else if (!(basis.P > 0.0f))
        basis.why = "P is not above 0";
    else if (!found || analysis() == TARVANE_DESIGN)
        basis.why = "no geometry was found";
    if (!basis.why.empty()) return basis;

    // That of a channel cover is a deflection.
    const bool pressure =
        own.mawp != TARVANE_NO_VALUE && own.found.mawp_by != TARVANE_BY_DEFLECTION;
    if (!rated() && pressure) basis.estimate = own.mawp;
    auto judged = std::make_unique<FlangeInput>(as_judged(own));
    if (own.found.Ab != TARVANE_NO_VALUE) judged->mated_bolts = own.found.Ab;
    judged->put_setting(Setting::external_pressure, 0.0f);
    if (rated()) basis.exact = "rating";
    basis.judged = std::move(judged);
    return basis;
}

// The operating load of the mate is in proportion to the pressure. Its design load, of the mean of the required
// and the actual area of the bolts, grows where the operating load comes to require the more; it is not below the
// given one, nor above that in proportion.
void FlangeInput::put_pressure(float P) {
    const float by = P / record[TARVANE_P];
    float& operating = settings[static_cast<std::size_t>(Setting::design_pressure_operating)];
    operating = operating == record[TARVANE_P] ? P : operating * by;
    record[TARVANE_MATING_OPERATING] *= by;
    float& design = record[TARVANE_MATING_DESIGN];
    if (by > 1.0f && record[TARVANE_SEATING_RULE] == 0.0f) {
        const float required = record[TARVANE_MATING_OPERATING] / record[TARVANE_Sb];
        const float mean = record[TARVANE_Sa] * (required + mated_bolts) / 2.0f;
        design = std::min(std::max(mean, design), by * design);
    }
    record[TARVANE_P] = P;
}

std::vector<const FlangeInput*> flanges_of(const Request& file) {
    std::vector<const FlangeInput*> flanges;
    for (const auto& element : file.elements) {
        if (element->kind == &FLANGE_KIND)
            flanges.push_back(static_cast<const FlangeInput*>(element.get()));
    }
    return flanges;
}

} // namespace tarvane::vessel
