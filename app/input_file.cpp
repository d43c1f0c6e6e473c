#include "input_file.h"

#include "text.h"

#include <toml++/toml.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>

namespace tarvane::app {

namespace {

constexpr double LARGEST_WHOLE = 16777216.0; // the record holds whole numbers as singles

int line_of(const toml::node& node) { return static_cast<int>(node.source().begin.line); }

// What stands in the file, for the end of a message.
std::string found(const toml::node& node) {
    if (const auto* s = node.as_string()) return "the text " + quoted(s->get());
    if (const auto* b = node.as_boolean()) return b->get() ? "true" : "false";
    if (const auto* i = node.as_integer()) return std::to_string(i->get());
    if (const auto* f = node.as_floating_point()) {
        char number[40];
        std::snprintf(number, sizeof number, "%g", f->get());
        return number;
    }
    if (node.is_array()) return "a list";
    if (node.is_table()) return "a table";
    return "a date or time";
}

std::optional<double> number_of(const toml::node& node) {
    if (const auto* i = node.as_integer()) return static_cast<double>(i->get());
    if (const auto* f = node.as_floating_point()) return f->get();
    return std::nullopt;
}

class Reader {
  public:
    explicit Reader(ReadResult& into) : result(into) {}

    void read(const toml::table& root);

  private:
    ReadResult& result;

    void fault(int line, std::string_view key, std::string message) {
        result.faults.push_back({line, std::string(key), std::move(message)});
    }
    void wrong(const toml::node& node, std::string_view key, const std::string& wanted,
               std::string_view meaning = {}) {
        std::string message = wanted + " is expected, not " + found(node);
        if (!meaning.empty()) message += " (" + std::string(meaning) + ')';
        fault(line_of(node), key, std::move(message));
    }

    void unknown_key(const toml::key& key, std::span<const std::string_view> others);
    void read_units(const toml::node& node);
    void read_unit(std::string_view name, const toml::node& node, Quantity quantity);
    void read_units_table(const toml::table& table);
    bool read_flag(const toml::node& node, std::string_view key, bool fallback);
    std::optional<float> read_number(const toml::node& node, const Key& key);
    std::optional<float> read_choice(const toml::node& node, const Key& key);
    std::optional<float> read_value(const toml::node& node, const Key& key);
    std::optional<std::string> read_text(const toml::node& node, const Key& key);
    void read_flange(const toml::table& own, const toml::table& common, std::size_t number);
};

// ---- units ---------------------------------------------------------------------------------------

struct UnitName {
    std::string_view name;
    Quantity quantity;
};
constexpr UnitName UNIT_NAMES[] = {
    {"thickness", Quantity::thickness}, {"pressure", Quantity::pressure},
    {"diameter", Quantity::diameter},   {"stress", Quantity::stress},
    {"force", Quantity::force},         {"moment", Quantity::moment},
    {"area", Quantity::area},           {"temperature", Quantity::temperature},
    {"weight", Quantity::weight},       {"density", Quantity::density}};

bool set_base(UnitSystem& units, const toml::node& node) {
    const auto* name = node.as_string();
    if (name == nullptr) return false;
    if (folded(name->get()) == "us") {
        units = us_units();
    } else if (folded(name->get()) == "si") {
        units = si_units();
    } else {
        return false;
    }
    return true;
}

void Reader::read_units(const toml::node& node) {
    if (const auto* table = node.as_table()) {
        read_units_table(*table);
    } else if (!set_base(result.file.units, node)) {
        wrong(node, "units", R"("US", "SI" or a table of units)");
    }
}

void Reader::read_units_table(const toml::table& table) {
    UnitSystem& units = result.file.units;
    if (const toml::node* base = table.get("base"); base != nullptr && !set_base(units, *base))
        wrong(*base, "units.base", R"("US" or "SI")");
    std::vector<std::string_view> names{"base"};
    for (const UnitName& unit : UNIT_NAMES)
        names.push_back(unit.name);
    for (const auto& [key, node] : table) {
        const std::string_view name = key.str();
        const auto unit = std::find_if(std::begin(UNIT_NAMES), std::end(UNIT_NAMES),
                                       [name](const UnitName& u) { return u.name == name; });
        if (unit != std::end(UNIT_NAMES)) {
            read_unit(name, node, unit->quantity);
        } else if (name != "base") {
            unknown_key(key, names);
        }
    }
}

void Reader::read_unit(std::string_view name, const toml::node& node, Quantity quantity) {
    UnitSystem& units = result.file.units;
    const std::string full = "units." + std::string(name);
    const bool temperature = quantity == Quantity::temperature;
    const auto* table = node.as_table();
    if (table == nullptr) {
        wrong(node, full,
              temperature ? "a table of offset, scale and label" : "a table of factor and label");
        return;
    }
    const auto place = static_cast<std::size_t>(quantity);
    const auto put_factor = [&](float& into, const toml::node& given, const std::string& key,
                                bool positive) {
        const std::optional<double> value = number_of(given);
        const float single = value ? static_cast<float>(*value) : 0.0f;
        if (!value || !std::isfinite(single) || (positive && !(single > 0.0f))) {
            wrong(given, key, positive ? "a number above 0" : "a number");
        } else {
            into = single;
        }
    };
    const std::array<std::string_view, 3> temperature_keys{"offset", "scale", "label"};
    const std::array<std::string_view, 2> other_keys{"factor", "label"};
    for (const auto& [key, given] : *table) {
        const std::string inner = full + '.' + std::string(key.str());
        if (key.str() == "label") {
            const auto* text = given.as_string();
            const std::optional<std::string> western =
                text == nullptr ? std::nullopt : to_western(text->get());
            const std::size_t width = quantity == Quantity::density ? 20 : label_width(quantity);
            if (!western || western->size() > width) {
                wrong(given, inner, "a text of up to " + std::to_string(width) + " characters");
            } else if (quantity == Quantity::density) {
                units.density_label = *western;
            } else {
                units.labels[quantity == Quantity::weight ? place - 1 : place] = *western;
            }
        } else if (temperature && key.str() == "offset") {
            put_factor(units.factors[place], given, inner, false);
        } else if (temperature && key.str() == "scale") {
            put_factor(units.factors[place + 1], given, inner, true);
        } else if (!temperature && key.str() == "factor") {
            put_factor(quantity == Quantity::density ? units.density_factor : units.factors[place],
                       given, inner, true);
        } else if (temperature) {
            unknown_key(key, temperature_keys);
        } else {
            unknown_key(key, other_keys);
        }
    }
}

// ---- values --------------------------------------------------------------------------------------

void Reader::unknown_key(const toml::key& key, std::span<const std::string_view> others) {
    const std::string_view name = key.str();
    std::string message = "no key of this place";
    std::string_view near = synonym(name);
    if (near.empty() || std::find(others.begin(), others.end(), near) == others.end())
        near = nearest(name, others);
    if (!near.empty()) {
        message += "; the nearest is " + std::string(near);
        if (const Key* ours = find_key(near)) message += ", " + std::string(ours->meaning);
    }
    fault(static_cast<int>(key.source().begin.line), name, std::move(message));
}

bool Reader::read_flag(const toml::node& node, std::string_view key, bool fallback) {
    if (const auto* value = node.as_boolean()) return value->get();
    wrong(node, key, "true or false");
    return fallback;
}

std::optional<float> Reader::read_choice(const toml::node& node, const Key& key) {
    if (const auto* text = node.as_string()) {
        const std::string name = folded(text->get());
        for (const Choice& c : key.choices) {
            if (folded(c.name) == name) return static_cast<float>(c.number);
        }
    } else if (const auto* number = node.as_integer()) {
        for (const Choice& c : key.choices) {
            if (c.number == number->get()) return static_cast<float>(c.number);
        }
    }
    std::string wanted = expected(key, result.file.units);
    const auto [low, high] =
        std::minmax_element(key.choices.begin(), key.choices.end(),
                            [](const Choice& a, const Choice& b) { return a.number < b.number; });
    wanted += " or " + std::to_string(low->number) + " to " + std::to_string(high->number);
    wrong(node, key.name, wanted, key.meaning);
    return std::nullopt;
}

std::optional<float> Reader::read_number(const toml::node& node, const Key& key) {
    const UnitSystem& units = result.file.units;
    const std::string wanted = expected(key, units);
    const std::optional<double> value = number_of(node);
    if (!value) {
        wrong(node, key.name, wanted, key.meaning);
        return std::nullopt;
    }
    if (key.quantity == Quantity::whole &&
        (*value != std::floor(*value) || std::fabs(*value) > LARGEST_WHOLE)) {
        wrong(node, key.name, wanted, key.meaning);
        return std::nullopt;
    }
    const float single = units.to_engine(static_cast<float>(*value), key.quantity);
    if (!std::isfinite(single)) {
        wrong(node, key.name, wanted, key.meaning);
        return std::nullopt;
    }
    return single;
}

std::optional<float> Reader::read_value(const toml::node& node, const Key& key) {
    if (key.quantity == Quantity::choice) return read_choice(node, key);
    if (key.quantity == Quantity::flag) {
        if (node.is_boolean()) return read_flag(node, key.name, false) ? 1.0f : 0.0f;
        wrong(node, key.name, expected(key, result.file.units), key.meaning);
        return std::nullopt;
    }
    return read_number(node, key);
}

std::optional<std::string> Reader::read_text(const toml::node& node, const Key& key) {
    const auto* text = node.as_string();
    std::optional<std::string> western = text ? to_western(text->get()) : std::nullopt;
    if (western && western->size() <= static_cast<std::size_t>(key.width)) return western;
    std::string wanted = expected(key, result.file.units);
    if (text != nullptr && !western) wanted += " of the Western alphabet";
    wrong(node, key.name, wanted, key.meaning);
    return std::nullopt;
}

// ---- one flange ----------------------------------------------------------------------------------

// Which keys a flange of this type and kind cannot do without.
std::vector<std::string_view> required_keys(const FlangeInput& flange,
                                            const std::map<std::string_view, bool>& given) {
    const auto has = [&](std::string_view key) { return given.contains(key); };
    std::vector<std::string_view> keys{"type", "P",   "T",  "Sfo", "Sfa", "bolting", "Sb",    "Sa",
                                       "Fod",  "Fid", "Go", "Gi",  "m",   "y",       "facing"};
    // Where the type or the kind is at fault, what it needs is not known.
    for (const std::string_view key : {"type", "kind"}) {
        if (has(key) && !given.at(key)) return keys;
    }
    const int type = flange.type(), kind = flange.kind();
    const auto also = [&](std::initializer_list<std::string_view> more) {
        keys.insert(keys.end(), more);
    };
    if (has("type") && type != 7) also({"B"});
    if (kind == 1) also({"t"});
    if (kind != 3) also({"A", "C", "a", "n"});
    const bool hub = type == 1 || type == 8 || has("g0") || has("g1") || has("h");
    if (hub && type != 7 && type != 9) also({"g0", "g1", "h"});
    if (kind == 3 && type == 8) also({"A"});
    if (type == 6) also({"LjID", "LjOD"});
    if (type == 9) also({"tShell"});
    if (has("D") || has("d")) also({"D", "d"});
    if (static_cast<int>(flange.record[23]) == 3) also({"root_area"});
    if (flange.text[slot::mating_loads] == 'Y')
        also({"mating_operating", "mating_seating", "mating_design"});
    if (flange.text[slot::partition_gasket] == 'Y') also({"lp", "tp", "mPart", "yPart"});
    if (flange.record[69] == 1.0f) also({"D1"});
    return keys;
}

void put_value(FlangeInput& flange, const Key& key, float value) {
    const auto index = static_cast<std::size_t>(key.index);
    if (key.place == Place::record) {
        flange.record[index] = value;
    } else if (key.place == Place::setting) {
        flange.settings[index] = value;
    } else if (key.place == Place::slot_flag) {
        flange.put_text(key.index, 15, value != 0.0f ? "Y" : "N");
    }
}

void Reader::read_flange(const toml::table& own, const toml::table& common, std::size_t number) {
    FlangeInput flange;
    flange.line = line_of(own);
    std::map<std::string_view, bool> given; // by key; false: the value is at fault
    std::map<std::string_view, int> line;   // where a key stands

    for (const Key& key : all_keys()) {
        const toml::node* node = own.get(key.name);
        if (node == nullptr) node = common.get(key.name);
        if (key.quantity == Quantity::text) {
            if (node == nullptr) continue;
            const std::optional<std::string> text = read_text(*node, key);
            given[key.name] = text.has_value();
            line[key.name] = line_of(*node);
            if (!text) continue;
            if (key.place == Place::slot) {
                flange.put_text(key.index, 15, *text);
            } else {
                flange.texts[static_cast<std::size_t>(key.index)] = *text;
            }
            continue;
        }
        put_value(flange, key, static_cast<float>(key.fallback));
        if (node == nullptr) continue;
        const std::optional<float> value = read_value(*node, key);
        given[key.name] = value.has_value();
        line[key.name] = line_of(*node);
        if (value) put_value(flange, key, *value);
    }

    // A flag that the file leaves open is on when one of the keys that belong to it is given.
    for (const Key& key : all_keys()) {
        if (!key.group.empty() && given.contains(key.name) && !given.contains(key.group))
            put_value(flange, *find_key(key.group), 1.0f);
    }

    if (!given.contains("P_operating"))
        flange.settings[static_cast<std::size_t>(Setting::design_pressure_operating)] =
            flange.record[4];

    if (flange.setting(Setting::keep_thickness) != 0.0f) {
        char& last = flange.text[slot::description + 14];
        if (last != ' ') {
            fault(line["description"], "description",
                  "a text of up to 14 characters is expected together with keep_thickness");
        }
        last = ':';
    }
    const bool edition_fits = flange.edition() == EDITION_CURRENT ||
                              flange.code() == (flange.edition() == EDITION_OLDER ? 2 : 1);
    if (!edition_fits) {
        fault(line["edition"], "edition",
              flange.edition() == EDITION_OLDER ? "\"older\" is an edition of code VIII-2 only"
                                                : "\"A98\" is an edition of code VIII-1 only");
    }
    if (flange.text[slot::channel_cover] == 'Y') {
        if (flange.type() != 7) {
            fault(line["channel_cover"], "channel_cover", "only a blind flange is one");
        } else if (given.contains("B")) {
            fault(line["B"], "B", "a channel cover has no inside diameter");
        }
        flange.record[10] = flange.setting(Setting::cover_modulus);
    }

    std::vector<std::string_view> missing;
    for (const std::string_view name : required_keys(flange, given)) {
        if (given.contains(name)) continue;
        if (std::find(missing.begin(), missing.end(), name) != missing.end()) continue;
        missing.push_back(name);
        const Key& key = *find_key(name);
        fault(flange.line, name,
              "missing in flange " + std::to_string(number) + "; " +
                  expected(key, result.file.units) + " is expected (" + std::string(key.meaning) +
                  ")");
    }
    result.file.flanges.push_back(std::move(flange));
}

// ---- the file --------------------------------------------------------------------------------------

void Reader::read(const toml::table& root) {
    InputFile& file = result.file;
    if (const toml::node* units = root.get("units")) read_units(*units);
    file.metric_constants = file.units.metric();
    if (const toml::node* node = root.get("decimal_comma"))
        file.decimal_comma = read_flag(*node, "decimal_comma", false);
    if (const toml::node* node = root.get("metric_constants"))
        file.metric_constants = read_flag(*node, "metric_constants", false);

    std::vector<std::string_view> flange_names;
    for (const Key& key : all_keys())
        flange_names.push_back(key.name);
    std::vector<std::string_view> names = flange_names;
    names.insert(names.end(), {"units", "decimal_comma", "metric_constants", "flange"});
    for (const auto& [key, node] : root) {
        if (std::find(names.begin(), names.end(), key.str()) == names.end())
            unknown_key(key, names);
    }

    const toml::node* flanges = root.get("flange");
    const toml::array* list = flanges == nullptr ? nullptr : flanges->as_array();
    if (flanges == nullptr || (list != nullptr && list->empty())) {
        fault(1, "flange", "missing; one or more [[flange]] tables are expected");
        return;
    }
    if (list == nullptr || !list->is_homogeneous(toml::node_type::table)) {
        wrong(*flanges, "flange", "a list of [[flange]] tables");
        return;
    }
    if (list->size() > MOST_FLANGES) {
        fault(line_of(*flanges), "flange",
              "at most " + std::to_string(MOST_FLANGES) + " flanges are expected, not " +
                  std::to_string(list->size()));
        return;
    }
    std::size_t number = 0;
    for (const toml::node& node : *list) {
        const toml::table& own = *node.as_table();
        for (const auto& [key, value] : own) {
            if (find_key(key.str()) == nullptr) unknown_key(key, flange_names);
        }
        read_flange(own, root, ++number);
    }
}

} // namespace

std::string FlangeInput::description() const {
    std::string name = text.substr(slot::description, 15);
    if (name.back() == ':') name.back() = ' ';
    name.erase(name.find_last_not_of(' ') + 1);
    return name;
}

void FlangeInput::put_text(int offset, std::size_t width, std::string_view western) {
    std::string padded(western.substr(0, width));
    padded.resize(width, ' ');
    text.replace(static_cast<std::size_t>(offset), width, padded);
}

ReadResult read_input(std::string_view toml_text) {
    ReadResult result;
    try {
        const toml::table root = toml::parse(toml_text);
        Reader(result).read(root);
    } catch (const toml::parse_error& error) {
        std::string message(error.description());
        std::replace(message.begin(), message.end(), '\n', ' ');
        result.faults.push_back({static_cast<int>(error.source().begin.line), "", message});
    }
    // A key at the head of the file is read once a flange: its fault counts once.
    std::stable_sort(result.faults.begin(), result.faults.end(),
                     [](const Fault& a, const Fault& b) { return a.line < b.line; });
    const auto same = [](const Fault& a, const Fault& b) {
        return a.line == b.line && a.key == b.key && a.message == b.message;
    };
    for (std::size_t i = 0; i < result.faults.size(); ++i) {
        const auto later = result.faults.begin() + static_cast<std::ptrdiff_t>(i) + 1;
        const Fault kept = result.faults[i];
        result.faults.erase(std::remove_if(later, result.faults.end(),
                                           [&](const Fault& f) { return same(kept, f); }),
                            result.faults.end());
    }
    if (!result.faults.empty()) result.file.flanges.clear();
    return result;
}

std::string fault_line(std::string_view path, const Fault& fault) {
    std::string line(path);
    line += ':' + std::to_string(fault.line) + ": ";
    if (!fault.key.empty()) line += fault.key + ": ";
    return line + fault.message;
}

} // namespace tarvane::app
