#include "document/references.h"

#include "components/data_lines.h"
#include "components/external_input.h"
#include "components/flange_input.h"
#include "components/mdmt_input.h"
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

class References {
  public:
    Reference& of(const std::string& name, const std::string& edition) {
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

constexpr std::string_view NAMES[] = {
    "", "ASME Boiler and Pressure Vessel Code, Section VIII, Division 1",
    "ASME Boiler and Pressure Vessel Code, Section VIII, Division 2",
    "PD 5500, unfired fusion welded pressure vessels",
    "EN 13445-3, unfired pressure vessels, design"};

// As the calculations of flanges say it; the rules of shells are the same in several editions.
std::string edition_of(const Element& element, int code) {
    const int edition = choice_of(element, "edition");
    const Key* key = element.kind->keys.find("edition");
    const std::string name =
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
    References references;
    for (const auto& element : request.elements) {
        const int code = choice_of(*element, "code");
        if (code > 0 && static_cast<std::size_t>(code) < std::size(NAMES))
            references
                .of(std::string(NAMES[static_cast<std::size_t>(code)]), edition_of(*element, code))
                .elements.push_back(element.get());
        if (code == TARVANE_ASME_VIII_1 && choice_of(*element, "method") == METHOD_STRESS &&
            element->kind == &EXTERNAL_KIND)
            references.of("ASME Code Case 2286", {}).elements.push_back(element.get());
        if (element->kind != &FLANGE_KIND) continue;
        if (const auto& flange = static_cast<const FlangeInput&>(*element);
            !flange.standard().empty())
            references.of(flange.standard(), {}).elements.push_back(&flange);
    }
    for (const UsedFile& file : used_files(request)) {
        for (const UsedItem& item : file.items) {
            if (!item.source || item.source->source.empty()) continue;
            const std::string& source = item.source->source;
            std::vector<std::string>& files =
                references.of(source.substr(0, source.find_first_of(":;,")), item.source->edition)
                    .files;
            if (std::find(files.begin(), files.end(), file.name) == files.end())
                files.push_back(file.name);
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
