#include "kind_tests.h"

#include <algorithm>
#include <cstdlib>

namespace tarvane::app {

bool Covered::has(std::string_view id) const {
    const auto is = [id](const auto& each) { return each.id == id; };
    return std::any_of(sides.begin(), sides.end(), is) ||
           std::any_of(pairs.begin(), pairs.end(), is);
}

void Covered::expect_flips() const {
    for (const Sides& each : sides)
        expect_flip(each);
    for (const Pair& each : pairs)
        expect_pair(each);
}

Lines draw_lines(const Draw& draw, std::mt19937& random) {
    Lines lines = draw.base;
    for (const auto& [key, values] : draw.drawn)
        lines[key] = values[random() % values.size()];
    for (const auto& [key, ends] : draw.between) {
        const double share = static_cast<double>(random()) / static_cast<double>(random.max());
        lines[key] = std::to_string(ends.first + share * (ends.second - ends.first));
    }
    std::erase_if(lines, [](const auto& line) { return line.second.empty(); });
    return lines;
}

float EngineInput::number(const std::string& key, float otherwise) const {
    const auto at = values.find(key);
    return at == values.end() ? otherwise : std::strtof(at->second.c_str(), nullptr);
}

std::string EngineInput::text(const std::string& key, const std::string& otherwise) const {
    const auto at = values.find(key);
    return at == values.end() ? otherwise : at->second;
}

// ---- the kinds -------------------------------------------------------------------------------------------

namespace {

struct Known {
    KindTests (*make)();
    std::optional<KindTests> made = {};
};

std::map<std::string_view, Known>& known_kinds() {
    static std::map<std::string_view, Known> kinds;
    return kinds;
}

} // namespace

TestsOfKind::TestsOfKind(std::string_view table, KindTests (*make)()) {
    known_kinds()[table] = {make};
}

const KindTests* tests_of(std::string_view table) {
    const auto at = known_kinds().find(table);
    if (at == known_kinds().end()) return nullptr;
    Known& known = at->second;
    if (!known.made) known.made = known.make();
    return &*known.made;
}

std::vector<std::string_view> tables_with_tests() {
    std::vector<std::string_view> tables;
    for (const auto& [table, known] : known_kinds())
        tables.push_back(table);
    return tables;
}

std::vector<std::string_view> tables_of_kinds() {
    std::vector<std::string_view> tables;
    for (const ElementKind* kind : element_kinds())
        tables.push_back(kind->table);
    return tables;
}

// ---- openings ---------------------------------------------------------------------------------------------

void add_openings(Covered& covered, const std::string& openings, const std::string& d1,
                  const std::string& d2, float large) {
    const std::string apart = with("pitch", "pitch = 30", openings);
    const std::string near = with("pitch", "pitch = 2.5", openings);
    const auto add = [&](std::string_view id, float sound, float failing, Text text) {
        covered.sides.push_back({id, sound, failing, std::move(text), NO_ROW});
    };
    add("opening_d1", 2.0f, 9.0f, at(d1, openings));
    add("opening_d2", 1.0f, 9.0f, at(d2, apart));
    add("openings_large", 2.0f, large, at(d1, apart));
    add("openings_near", 6.0f, 1.6f, at("pitch", openings));
    add("opening_ligament", 6.0f, 1.6f, at("pitch", openings));
    add("opening_d1_edge", 2.0f, 0.1f, at("edge1", openings));
    add("opening_d2_edge", 2.0f, 0.1f, at("edge2", near));
}

} // namespace tarvane::app
