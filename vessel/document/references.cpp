#include "document/references.h"

#include "components/data_lines.h"
#include "components/flange_input.h"
#include "tarvane/tarvane.h"
#include "values/text.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

namespace tarvane::vessel {

namespace {

struct Reference {
    std::string name, edition, of; // the components or the file that goes by it
};

class References {
  public:
    void add(std::string name, std::string edition, const std::string& of) {
        for (Reference& each : all) {
            if (each.name != name || each.edition != edition) continue;
            if (each.of != of && !each.of.ends_with("; " + of)) each.of += "; " + of;
            return;
        }
        all.push_back({std::move(name), std::move(edition), of});
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
    if (element.kind != &FLANGE_KIND) return name;
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

DocumentSection references_section(const Request& request) {
    References references;
    for (const auto& element : request.elements) {
        const int code = choice_of(*element, "code");
        if (code > 0 && static_cast<std::size_t>(code) < std::size(NAMES))
            references.add(std::string(NAMES[static_cast<std::size_t>(code)]),
                           edition_of(*element, code), name_of(*element));
        if (element->kind != &FLANGE_KIND) continue;
        if (const auto& flange = static_cast<const FlangeInput&>(*element);
            !flange.standard().empty())
            references.add(flange.standard(), "", name_of(flange));
    }
    for (const UsedFile& file : used_files(request)) {
        for (const UsedItem& item : file.items) {
            if (!item.source || item.source->source.empty()) continue;
            const std::string& source = item.source->source;
            references.add(source.substr(0, source.find_first_of(":;,")), item.source->edition,
                           file.name);
        }
    }
    DocumentTable table{
        .caption = "References", .columns = {{"Reference"}, {"Edition"}, {"Used by"}}, .rows = {}};
    for (const Reference& each : references.list())
        table.rows.push_back(
            {{each.name}, {each.edition.empty() ? "not given" : each.edition}, {each.of}});
    DocumentSection section{.id = "references", .title = "References"};
    section.blocks.emplace_back(std::move(table));
    return section;
}

} // namespace tarvane::vessel
