// Where the figures of the data files come from: status, edition and source of each item that a host names, and
// the edition that a user gave to data files of his own.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace tarvane::vessel {

struct Material;

inline constexpr std::string_view SOURCES_FILE = "data_sources.txt",
                                  EDITION_FILE = "data_edition.txt";

struct ItemSource {
    std::string status; // "checked", "published", "approximate"
    std::string edition, source, remark;

    // "checked, 1999 addenda and later: II-D Table 1A"
    std::string text() const;
};

// What data_sources.txt of the data folder says. Throws std::runtime_error where it is missing or damaged.
class DataSources {
  public:
    DataSources();

    // A null pointer for an item that is not listed. A material record is "SA-516 70, 1", item_of(Material).
    const ItemSource* of(std::string_view file, std::string_view item) const;

  private:
    std::map<std::pair<std::string, std::string>, ItemSource, std::less<>> items;

    void add(const std::string& file, const std::string& item, const ItemSource& source);
};

// What they say of the figures of a record; those of an earlier version say only whether they are approximate.
ItemSource source_of(const Material& material, const DataSources& sources);

// Those of the data folder, which keeps them; read again only when the file has changed.
std::shared_ptr<const DataSources> data_sources();

// "Licensed tables of 2025" where a user made the data files of the folder; empty for those that are shipped.
std::string data_edition();
// The same as a line of its own for the end of an output, after an empty one: "Data files: Licensed tables of 2025".
std::string edition_line();

} // namespace tarvane::vessel
