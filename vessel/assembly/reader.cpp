#include "assembly/reader.h"
#include "assembly/reader_state.h"
#include "components/read_value.h"
#include "values/text.h"

#include <algorithm>
#include <set>
#include <tuple>

namespace tarvane::vessel {

namespace {

constexpr std::string_view FILE_KEYS[] = {"tarvane", "units",  "decimal_comma", "metric_constants",
                                          "strict",  "vessel", "document"};

// "[[flange]], [[shell]]" for the messages.
std::string table_names(Kinds kinds) {
    std::string names;
    for (const ElementKind* kind : kinds)
        names += (names.empty() ? "[[" : ", [[") + std::string(kind->table) + "]]";
    return names;
}

} // namespace

// The tables of one kind in their order; none where there are none, or where they are at fault.
std::vector<Reader::Source> Reader::find_components(const Table& root, const ElementKind& kind) {
    const Value* value = root.find(kind.table);
    if (value == nullptr) return {};
    if (kind.single && value->table() != nullptr) return {{&kind, value, 1}};
    const List* list = value->list();
    if (list != nullptr && list->empty()) return {};
    const std::string name(kind.table);
    const bool tables =
        list != nullptr && std::all_of(list->begin(), list->end(),
                                       [](const Value& v) { return v.table() != nullptr; });
    if (!tables) {
        faults.wrong(*value, name, "a list of [[" + name + "]] tables");
        return {};
    }
    if (list->size() > kind.most) {
        faults.add(value->at, name,
                   "at most " + std::to_string(kind.most) + ' ' + std::string(kind.plural) +
                       " are expected, not " + std::to_string(list->size()));
        return {};
    }
    std::vector<Source> found;
    for (const Value& component : *list)
        found.push_back({&kind, &component, static_cast<int>(found.size()) + 1});
    return found;
}

// Components of all kinds in the order in which they are written; in a notation without lines kind by kind, as its
// members come.
void Reader::find_sources(const Table& root) {
    bool faulty = false;
    for (const ElementKind* kind : known_kinds) {
        const std::size_t before = faults.size();
        const std::vector<Source> found = find_components(root, *kind);
        faulty = faulty || faults.size() > before;
        if (root.find(kind->table) != nullptr) kinds.push_back(kind);
        sources.insert(sources.end(), found.begin(), found.end());
    }
    if (kinds.empty()) kinds.assign(known_kinds.begin(), known_kinds.end());
    if (sources.empty() && !faulty) {
        faults.add({.line = 1}, known_kinds.front()->table,
                   "missing; one or more " + table_names(known_kinds) + " tables are expected");
    }
    std::stable_sort(sources.begin(), sources.end(), [&root](const Source& a, const Source& b) {
        const Position &p = a.value->at, &q = b.value->at;
        if (p.line != q.line) return p.line < q.line;
        if (p.column != q.column) return p.column < q.column;
        return root.entry(a.kind->table) < root.entry(b.kind->table);
    });
}

// Where the code of the vessel doesn't cover metal temperatures the fault is at what asks for them.
bool Reader::refuse_metal_temperatures(const Table& root, const Table& vessel,
                                       const ElementKind& kind) {
    const Value* code = vessel.find("code");
    if (code == nullptr) code = root.find("code");
    const Key& key = *kind.keys.find("code");
    if (code == nullptr || take_number(*code, key, request.units).fault.empty()) return false;
    std::string fault = code_not_covered(*code, kind);
    if (fault.empty()) return false;
    const Value& asks = *vessel.find("MDMT");
    fault.replace(0, kind.plural.size(), "lowest metal temperatures");
    faults.add(asks.at, "MDMT", std::move(fault));
    faults.list().back().path = "vessel.MDMT";
    faults.list().back().value = asks.shown();
    return true;
}

// With MDMT in [vessel] each shell, head and flange is checked for it, unless an [[mdmt]] of the request is of it.
void Reader::add_metal_temperatures(const Table& root) {
    const Value* vessel = root.find("vessel");
    if (vessel == nullptr || vessel->table() == nullptr || vessel->table()->find("MDMT") == nullptr)
        return;
    const auto kind = std::find_if(known_kinds.begin(), known_kinds.end(),
                                   [](const ElementKind* k) { return k->table == "mdmt"; });
    if (kind == known_kinds.end()) return;
    std::set<std::string> named;
    int number = 0;
    for (const Source& source : sources) {
        if (source.kind != *kind) continue;
        ++number;
        const Value* of = source.table().find("of");
        if (of != nullptr && of->text() != nullptr) named.insert(*of->text());
    }
    const std::size_t written = sources.size();
    for (std::size_t i = 0; i < written; ++i) {
        const Source& part = sources[i];
        if (part.kind->table != "shell" && part.kind->table != "flange") continue;
        const Value* description = part.table().find("description");
        const std::string* name = description != nullptr ? description->text() : nullptr;
        if (name != nullptr && named.contains(*name)) continue;
        // A description that can't be read is a fault of the part alone.
        if (name != nullptr &&
            !take_text(*description, *(*kind)->keys.find("description"), request.units)
                 .fault.empty())
            name = nullptr;
        if (refuse_metal_temperatures(root, *vessel->table(), **kind)) break;
        Table table;
        table.put("description", name != nullptr ? *name
                                                 : std::string(part.kind->table) + ' ' +
                                                       std::to_string(part.number));
        implied.emplace_back(std::move(table));
        implied.back().at = part.value->at;
        sources.push_back({*kind, &implied.back(), ++number, i});
    }
    if (number > static_cast<int>((*kind)->most)) {
        faults.add(vessel->table()->find("MDMT")->at, "MDMT",
                   "at most " + std::to_string((*kind)->most) + ' ' + std::string((*kind)->plural) +
                       " are expected, not " + std::to_string(number));
        sources.resize(written);
    } else if (std::find(kinds.begin(), kinds.end(), *kind) == kinds.end()) {
        kinds.push_back(*kind);
    }
}

void Reader::read(const Table& root) {
    read_file_keys(root);
    read_document(root);
    find_sources(root);
    add_metal_temperatures(root);

    std::vector<std::string_view> others(std::begin(FILE_KEYS), std::end(FILE_KEYS));
    for (const ElementKind* kind : known_kinds)
        others.push_back(kind->table);
    check_names(root, "", kinds, true, others);
    for (CommonTable& table : common_tables(root))
        commons.push_back(table);
    for (const CommonTable& common : commons) {
        for (const Table::Entry& entry : common.table) {
            if (!is_link(entry.key)) continue;
            faults.add(entry.at, entry.key, "a key of one component, not of all of them");
            faults.list().back().path = common.prefix + entry.key;
            faults.list().back().value = entry.value.shown();
        }
    }
    read_components();
}

// A component that an input has no part in is read once, the others again and again.
void Reader::read_components() {
    std::vector<Node> nodes;
    for (const Source& source : sources)
        nodes.push_back(
            {source.kind, &source.table(), source.value->at.line, source.path(), source.of});
    links = Links(nodes, faults);
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        linked = linked || !links.of(i).empty();
        for (const Link& link : links.of(i)) {
            if (link.key != "of" || !link.target) continue;
            int& made_in = sources[*link.target].metal_temperature;
            if (made_in == 0) made_in = sources[i].number;
        }
    }
    request.elements.resize(sources.size());
    std::vector<Draft> begun;
    for (const std::size_t i : links.order()) {
        if (!sources[i].of)
            check_names(sources[i].table(), sources[i].path(), Kinds(&sources[i].kind, 1), false,
                        {});
        begun.push_back(begin_component(sources[i]));
        if (!later.empty()) continue;
        finish_component(std::move(begun.back().element), begun.back().reading, i);
        begun.pop_back();
    }
    const std::vector<bool> open = find_drafts(begun);
    for (Draft& draft : begun) {
        if (!open[draft.place]) {
            finish_component(std::move(draft.element), draft.reading, draft.place);
        } else {
            request.elements[draft.place] = draft.element->copy();
            drafts.push_back(std::move(draft));
        }
    }
}

// Those that have inputs, that name one that has, or that have it as their mate; and with an input of the liquid those
// that it stands in.
std::vector<bool> Reader::find_drafts(const std::vector<Draft>& begun) const {
    std::vector<bool> open(sources.size());
    for (const Draft& draft : begun) {
        const bool in_liquid =
            !open_vessel_values.empty() && draft.element->kind->keys.find("elevation") != nullptr;
        open[draft.place] = !draft.open.empty() || in_liquid;
    }
    for (bool found = true; found;) {
        found = false;
        for (const Draft& draft : begun) {
            for (const Link& link : links.of(draft.place)) {
                if (!link.target) continue;
                const bool mates = link.key == "mates_with";
                const bool ours = open[draft.place], theirs = open[*link.target];
                if (ours == theirs || (ours && !mates)) continue;
                open[draft.place] = open[*link.target] = found = true;
            }
        }
    }
    return open;
}

ReadResult read_request(const Table& root, Kinds kinds) {
    ReadResult result;
    Reader(result, kinds).read(root);
    sort_faults(result.faults);
    if (!result.faults.empty()) result.request.elements.clear();
    return result;
}

void sort_faults(Faults& faults) {
    std::stable_sort(faults.begin(), faults.end(),
                     [](const Fault& a, const Fault& b) { return a.line < b.line; });
    std::set<std::tuple<int, std::string, std::string>> known;
    std::erase_if(faults, [&](const Fault& f) {
        // Without lines two components may have the same words.
        const std::string& place = f.line == 0 ? f.path : f.key;
        return !known.emplace(f.line, place, f.message).second;
    });
}

} // namespace tarvane::vessel
