#include "document/references.h"

#include "catalogue/standard_flanges.h"
#include "components/data_lines.h"
#include "components/external_input.h"
#include "components/flange_input.h"
#include "components/mdmt_input.h"
#include "components/shell_input.h"
#include "fields/external_keys.h"
#include "tarvane/tarvane.h"
#include "values/text.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

namespace tarvane::vessel {

namespace {

struct Reference {
    std::string name, edition;
    std::vector<const Element*> elements; // that go by it
    std::vector<std::string> files;       // of data that do
};

constexpr std::string_view NOT_STATED = "not stated"; // by the data files

class References {
  public:
    Reference& of(const std::string& name, std::string edition) {
        if (edition == NOT_STATED) edition.clear();
        for (Reference& each : all)
            if (each.name == name && each.edition == edition) return each;
        return all.emplace_back(Reference{name, edition, {}, {}});
    }
    const std::vector<Reference>& list() const { return all; }

  private:
    std::vector<Reference> all;
};

int choice_of(const Element& element, std::string_view name) {
    const Key* key = element.kind->keys.find(name);
    return key == nullptr ? 0 : static_cast<int>(element.number_of(*key));
}

constexpr std::string_view CODE_NAMES[] = {
    "", "ASME Boiler and Pressure Vessel Code, Section VIII, Division 1",
    "ASME Boiler and Pressure Vessel Code, Section VIII, Division 2",
    "PD 5500, unfired fusion welded pressure vessels",
    "EN 13445-3, unfired pressure vessels, design"};

// Of a part under external pressure by allowable stresses, or under compression.
bool by_code_case(const Element& element) {
    if (element.kind->table == "compression")
        return choice_of(element, "code") == TARVANE_ASME_VIII_1;
    const ExternalInput* part = nullptr;
    if (element.kind == &EXTERNAL_KIND) part = static_cast<const ExternalInput*>(&element);
    if (element.kind == &SHELL_KIND) {
        const auto& shell = static_cast<const ShellInput&>(element);
        if (shell.external) part = &*shell.external;
    }
    return part != nullptr && part->code() == TARVANE_ASME_VIII_1 && part->by_stress();
}

// "ASME B16.5" of "ASME B16.5 class 300 NPS 6".
std::string without_size(const std::string& standard) {
    return standard.substr(0, std::min(standard.find(" class "), standard.find(" PN")));
}

// The data files shorten it.
std::string name_in_full(const std::string& source) {
    constexpr std::string_view MATERIALS = "II-D";
    std::string name = source.substr(0, source.find_first_of(":;,"));
    if (!name.starts_with(MATERIALS)) return name;
    return "ASME Boiler and Pressure Vessel Code, Section II, Part D" +
           name.substr(MATERIALS.size());
}

// Of a standard flange, by its figures in the data files.
std::string edition_of_standard(const FlangeInput& flange, const std::vector<UsedFile>& files) {
    const auto own = flange.data.find(std::string(STANDARD_FLANGE_FILE));
    for (const UsedFile& file : files) {
        if (file.name != STANDARD_FLANGE_FILE || own == flange.data.end()) continue;
        for (const UsedItem& item : file.items)
            if (item.source && own->second.contains(item.name)) return item.source->edition;
    }
    return {};
}

// As the calculations of flanges say it; the rules of shells are the same in several editions.
std::string edition_of(const Element& element, int code) {
    const int edition = choice_of(element, "edition");
    const Key* key = element.kind->keys.find("edition");
    std::string name =
        key == nullptr ? std::string() : std::string(choice_name(key->choices, edition));
    if (name == "older") return "older, before 2007";
    if (name == "A98") return "1998 addenda";
    // "Current" against "older" and "A98"; the rules of shells in VIII-1 have no other edition here.
    if (element.kind != &FLANGE_KIND) {
        if (name != "current") return name;
        if (code == TARVANE_ASME_VIII_2) return "2007 and later";
        return element.kind == &MDMT_KIND ? "1999 addenda and later" : "current, of no one year";
    }
    switch (code) {
    case TARVANE_PD_5500:
        return "2018+A1:2018";
    case TARVANE_EN_13445:
        return "2014, fourth issue, + A3:2017";
    default:
        return "2017";
    }
}

} // namespace

std::string names_of(const std::vector<const Element*>& elements, const Request& request) {
    if (elements.size() == request.elements.size() && elements.size() > 1) return "all components";
    std::string names;
    for (std::size_t first = 0; first < elements.size();) {
        std::size_t last = first;
        while (last + 1 < elements.size() && elements[last + 1]->kind == elements[first]->kind &&
               elements[last + 1]->number == elements[last]->number + 1)
            ++last;
        names += names.empty() ? "" : ", ";
        if (last - first < 2) last = first;
        names += last == first ? name_of(*elements[first])
                               : std::string(elements[first]->kind->table) + ' ' +
                                     std::to_string(elements[first]->number) + " to " +
                                     std::to_string(elements[last]->number);
        first = last + 1;
    }
    return names;
}

DocumentSection references_section(const Request& request) {
    const std::vector<UsedFile> files = used_files(request);
    References references;
    for (const auto& element : request.elements) {
        const int code = choice_of(*element, "code");
        if (code > 0 && static_cast<std::size_t>(code) < std::size(CODE_NAMES))
            references
                .of(std::string(CODE_NAMES[static_cast<std::size_t>(code)]),
                    edition_of(*element, code))
                .elements.push_back(element.get());
        if (by_code_case(*element))
            references.of("ASME Code Case 2286", {}).elements.push_back(element.get());
        if (element->kind != &FLANGE_KIND) continue;
        if (const auto& flange = static_cast<const FlangeInput&>(*element);
            !flange.standard().empty())
            references.of(without_size(flange.standard()), edition_of_standard(flange, files))
                .elements.push_back(&flange);
    }
    for (const UsedFile& file : files) {
        if (file.name == STANDARD_FLANGE_FILE) continue; // by the flanges
        for (const UsedItem& item : file.items) {
            if (!item.source || item.source->source.empty()) continue;
            const std::string& source = item.source->source;
            std::vector<std::string>& names =
                references.of(name_in_full(source), item.source->edition).files;
            if (std::find(names.begin(), names.end(), file.name) == names.end())
                names.push_back(file.name);
        }
    }
    DocumentTable table{
        .caption = {}, .columns = {{"Reference"}, {"Edition"}, {"Used by"}}, .rows = {}};
    for (const Reference& each : references.list()) {
        std::string used = names_of(each.elements, request);
        for (const std::string& file : each.files)
            used += (used.empty() ? "" : ", ") + file;
        table.rows.push_back(
            {{each.name}, {each.edition.empty() ? "not given" : each.edition}, {std::move(used)}});
    }
    DocumentSection section{.id = "references", .title = "References"};
    section.blocks.emplace_back(std::move(table));
    return section;
}

} // namespace tarvane::vessel
