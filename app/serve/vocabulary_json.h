// What the forms of the page are made of: the fields of every kind of component, and the tables of the data files
// whose rows fill them.
#pragma once

#include <string>
#include <string_view>

namespace tarvane::app {

// Kinds with keys, results and checks; the fields of the vessel, the document and the head of the file.
std::string fields_json();

struct CatalogueQuery {
    std::string words;            // that all have to be in a row, in any order
    std::string units = "US";     // of the figures that are shown, and of those that fill fields
    std::string code = "VIII-1";  // of materials
    std::string key = "material"; // the field that wants the row
};

// "materials", "flanges", "gaskets" or "bolts". Throws RequestRefused for another name, and without the data file.
std::string catalogue_json(std::string_view name, const CatalogueQuery& query);

} // namespace tarvane::app
