#include "flange_input.h"

#include "flange_results.h"
#include "flange_session.h"
#include "input_file.h"

namespace tarvane::app {

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
};

// ---- reading ---------------------------------------------------------------------------------------

std::string FlangeInput::description() const {
    std::string name = text.substr(slot::description, 15);
    if (name.back() == ':') name.back() = ' ';
    name.erase(name.find_last_not_of(' ') + 1);
    return name;
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

void FlangeInput::complete(Reading& reading) {
    if (!reading.given("P_operating")) put_setting(Setting::design_pressure_operating, record[4]);

    if (setting(Setting::keep_thickness) != 0.0f) {
        char& last = text[slot::description + 14];
        if (last != ' ') {
            reading.fault("description",
                          "a text of up to 14 characters is expected together with keep_thickness");
        }
        last = ':';
    }
    const bool edition_fits =
        edition() == EDITION_CURRENT || code() == (edition() == EDITION_OLDER ? 2 : 1);
    if (!edition_fits) {
        reading.fault("edition", edition() == EDITION_OLDER
                                     ? "\"older\" is an edition of code VIII-2 only"
                                     : "\"A98\" is an edition of code VIII-1 only");
    }
    if (text[slot::channel_cover] == 'Y') {
        if (type() != 7) {
            reading.fault("channel_cover", "only a blind flange is one");
        } else if (reading.given("B")) {
            reading.fault("B", "a channel cover has no inside diameter");
        }
        record[10] = setting(Setting::cover_modulus);
    }
}

// By type and kind.
std::vector<std::string_view> FlangeInput::required(const Reading& reading) const {
    const auto has = [&](std::string_view key) { return reading.given(key); };
    std::vector<std::string_view> keys{"type", "P",   "T",  "Sfo", "Sfa", "bolting", "Sb",    "Sa",
                                       "Fod",  "Fid", "Go", "Gi",  "m",   "y",       "facing"};
    // Where the type or the kind is at fault, what it needs is not known.
    for (const std::string_view key : {"type", "kind"}) {
        if (has(key) && !reading.sound(key)) return keys;
    }
    const auto also = [&](std::initializer_list<std::string_view> more) {
        keys.insert(keys.end(), more);
    };
    if (has("type") && type() != 7) also({"B"});
    if (analysis() == 1) also({"t"});
    if (analysis() != 3) also({"A", "C", "a", "n"});
    const bool hub = type() == 1 || type() == 8 || has("g0") || has("g1") || has("h");
    if (hub && type() != 7 && type() != 9) also({"g0", "g1", "h"});
    if (analysis() == 3 && type() == 8) also({"A"});
    if (type() == 6) also({"LjID", "LjOD"});
    if (type() == 9) also({"tShell"});
    if (has("D") || has("d")) also({"D", "d"});
    if (static_cast<int>(record[23]) == 3) also({"root_area"});
    if (text[slot::mating_loads] == 'Y')
        also({"mating_operating", "mating_seating", "mating_design"});
    if (text[slot::partition_gasket] == 'Y') also({"lp", "tp", "mPart", "yPart"});
    if (record[69] == 1.0f) also({"D1"});
    return keys;
}

// ---- running ---------------------------------------------------------------------------------------

std::unique_ptr<Outcome> FlangeInput::calculate(const InputFile& file) const {
    return std::make_unique<FlangeOutcome>(run_flange(*this, file));
}

Verdict FlangeInput::judge(const Outcome& outcome, const UnitSystem& units) const {
    return judge_flange(*this, static_cast<const FlangeOutcome&>(outcome), units);
}

std::vector<const FlangeInput*> flanges_of(const InputFile& file) {
    std::vector<const FlangeInput*> flanges;
    for (const auto& element : file.elements) {
        if (element->kind == &FLANGE_KIND)
            flanges.push_back(static_cast<const FlangeInput*>(element.get()));
    }
    return flanges;
}

} // namespace tarvane::app
