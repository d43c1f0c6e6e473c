#include "assembly/mates.h"
#include "assembly/reader_state.h"
#include "components/conditions.h"
#include "components/flange_input.h"
#include "components/read_value.h"
#include "components/strict.h"

#include <algorithm>

namespace tarvane::vessel {

Reader::Draft Reader::begin_component(const Source& source) {
    const KeyTable& keys = source.kind->keys;
    const std::string path = source.path();
    Draft draft{
        static_cast<std::size_t>(&source - sources.data()),
        source.kind->make(),
        Reading(request.units, materials, data_files, source.value->at.line, path, faults.list()),
        {}};
    const std::unique_ptr<Element>& element = draft.element;
    element->line = source.value->at.line;
    element->number = source.number;
    element->metal_temperature = source.metal_temperature;

    for (const Key& key : keys.keys) {
        if (!is_text(key))
            element->put_number(key, static_cast<float>(key.default_value(newer_form)));
        Written written = find_own(source.table(), keys, key, path);
        std::string place = path + '.' + written.name;
        for (const CommonTable& table : commons) {
            if (written.value != nullptr) break;
            written = find_common(table, keys, key);
            place = table.prefix + written.name;
        }
        if (written.value == nullptr) continue;
        const std::optional<std::size_t> input = input_at(place);
        if (!input) {
            read_key(written, key, place, *element, draft.reading);
            continue;
        }
        check_unit(key, *written.value, *input);
        draft.open.push_back({*input, &key, std::move(written.name), std::move(place)});
    }
    for (const Unheeded& each : keys.unheeded) {
        if (holds_for_all(each.key)) element->unheeded.push_back(&each);
    }
    return draft;
}

void Reader::finish_component(std::unique_ptr<Element> element, Reading& reading,
                              std::size_t place) {
    const ElementKind& kind = *element->kind;
    const KeyTable& keys = kind.keys;
    take_links(place, *element, reading);
    // A flag that is left open is on when one of the keys that belong to it is given.
    for (const Key& key : keys.keys) {
        if (key.group.empty() || !reading.given(key.name) || reading.given(key.group)) continue;
        element->put_number(*keys.find(key.group), 1.0f);
        reading.comes_from(key.group, std::string(key.name));
    }

    element->complete(reading);

    // What a metal temperature that the vessel asks for lacks of a part at fault is no fault of its own.
    if (!sources[place].of || faults.size() == 0)
        find_missing_keys(*element, request.units, reading);
    element->data = std::move(reading.data);
    element->figures = std::move(reading.figures);
    element->notes = std::move(reading.notes);
    // Without links nobody asks of one reading after another where values came from that are not given.
    const bool asked = later.empty() || strict || linked;
    element->origins = asked ? complete_origins(*element, reading) : reading.take_origins();
    if (strict) refuse_defaults(*element, reading);
    request.elements[place] = std::move(element);
    settle_mates_of(place);
}

void Reader::take_links(std::size_t place, Element& element, Reading& reading) {
    for (const Link& link : links.of(place)) {
        if (link.target)
            take_over(link.key, element, reading, *request.elements[*link.target], request);
        else
            take_nothing(link.key, element, reading);
    }
    if (const std::optional<Liquid> in_vessel = liquid()) add_head(*in_vessel, element, reading);
}

void Reader::settle_mates_of(std::size_t place) {
    for (const Link& link : links.of(place)) {
        if (link.key != "mates_with" || !link.target || faults.size() > 0) continue;
        auto& flange = static_cast<FlangeInput&>(*request.elements[place]);
        auto& mate = static_cast<FlangeInput&>(*request.elements[*link.target]);
        if (flange.rated()) continue;
        const auto given = [](const FlangeInput& f) {
            return !f.origins.at("mating_operating").given.null();
        };
        std::string fault = given(flange) || given(mate)
                                ? "either mates_with or the loads of the mating flange are expected"
                                : settle_mates(flange, mate, request);
        if (fault.empty()) continue;
        const Value& name = *sources[place].table().find(link.key);
        faults.add(name.at, link.key, std::move(fault));
        faults.list().back().path = sources[place].path() + ".mates_with";
        faults.list().back().value = name.shown();
    }
}

} // namespace tarvane::vessel
