#include "fields/vessel_keys.h"

namespace tarvane::vessel {

namespace {

using enum Quantity;

constexpr int at(VesselNumber number) { return static_cast<int>(number); }

constexpr Key VESSEL_KEYS[] = {Key{"liquid.density", Place::setting, at(VesselNumber::density),
                                   density, "density of the liquid in the vessel"}
                                   .needs(),
                               Key{"liquid.level", Place::setting, at(VesselNumber::level),
                                   diameter, "elevation of the surface of the liquid"}
                                   .needs()};

constexpr Key text_key(std::string_view name, int index, std::string_view meaning) {
    return Key{name, Place::text_setting, index, text, meaning}.up_to(MOST_DESCRIPTION);
}

constexpr Key DOCUMENT_KEYS[] = {text_key("title", 0, "title of the calculation"),
                                 text_key("project", 1, "project"),
                                 text_key("client", 2, "client"),
                                 text_key("site", 3, "site of the vessel"),
                                 text_key("item", 4, "number of the item"),
                                 text_key("number", 5, "number of the document"),
                                 text_key("revision", 6, "revision of the document"),
                                 text_key("date", 7, "date of the revision"),
                                 text_key("prepared", 8, "who prepared it"),
                                 text_key("checked", 9, "who checked it"),
                                 text_key("approved", 10, "who approved it")};

constexpr Key REVISION_KEYS[] = {
    text_key("revision", 0, "revision"),           text_key("date", 1, "its date"),
    text_key("description", 2, "what it changed"), text_key("prepared", 3, "who prepared it"),
    text_key("checked", 4, "who checked it"),      text_key("approved", 5, "who approved it")};

} // namespace

std::span<const Key> vessel_keys() { return VESSEL_KEYS; }
std::span<const Key> document_keys() { return DOCUMENT_KEYS; }
std::span<const Key> revision_keys() { return REVISION_KEYS; }

} // namespace tarvane::vessel
