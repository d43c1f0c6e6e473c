// Between the fields of a form and the text of an input file: where the text has a field, under whichever of its
// names, and how what a user types is written.
#pragma once

#include "components/element.h"
#include "serve/toml_edit.h"
#include "serve/toml_tree.h"

#include <string>
#include <string_view>
#include <vector>

namespace tarvane::app {

using namespace vessel;

// A field that the text gives, by the name of its key.
struct GivenField {
    std::string name;
    const TomlNode* node;
};
struct GivenFields {
    std::vector<GivenField> fields;
    std::vector<std::string> unknown; // names that no key has
};

// Of the table of a component.
GivenFields given_in(const TomlNode& table, const ElementKind& kind);
// Of [vessel], of the head of the file, of [document].
GivenFields given_in_vessel(const TomlNode& table);
GivenFields given_in_head(const TomlNode& root);
GivenFields given_in_document(const TomlNode& table);

// A table of a component in the text.
struct WrittenComponent {
    const ElementKind* kind;
    std::size_t place; // among those of its kind, from 0 on
    const TomlNode* node;

    std::string path() const; // "flange[0]"
};
// In the order of the text.
std::vector<WrittenComponent> components_in(const TomlNode& root);

// The key of a field: "flange[0].P", "vessel.P", "document.project". A null pointer for one that has none, as
// "units".
const Key* key_at(const TomlPath& field);
// Where the text has the field, or where it belongs: "flange[0].gasket.m" of "flange[0].m".
TomlPath written_path(const TomlNode& root, const TomlPath& field);

// What a user typed into a field, as the text has it: "0,5" is 0.5, "10 bar" a text. Empty for nothing.
std::string typed_value(std::string_view typed, const Key* key);

} // namespace tarvane::app
