// A TOML text with the place of every value in it, for changes that leave all other bytes as they are.
#pragma once

#include "values/fault.h"
#include "values/value.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tarvane::app {

// Bytes of a text: from the first one to the one after the last.
struct TextRange {
    std::size_t begin = 0, end = 0;
};

struct TomlNode {
    enum class Form {
        value,
        array,        // [1, 2]
        inline_table, // { a = 1 }
        header_table, // [a], an item of [[a]], and the whole text
        dotted_table, // a.b = 1
        header_array  // of [[a]]
    };

    Form form = Form::value;
    TextRange at; // of a value, an array or an inline table; of a table with a header, its header
    vessel::Value value = {};                                // of a value
    std::vector<std::pair<std::string, TomlNode>> members{}; // of a table
    std::vector<TomlNode> items{};                           // of an array

    bool table() const {
        return form == Form::inline_table || form == Form::header_table ||
               form == Form::dotted_table;
    }
    bool list() const { return form == Form::array || form == Form::header_array; }
    // None: a null pointer. A table that is alone is the first item of its name.
    const TomlNode* member(std::string_view key) const;
    const TomlNode* item(std::size_t index) const;
};

struct TomlTree {
    TomlNode root;
    std::optional<vessel::Fault> fault; // why the text is no TOML; the root is empty then
};

TomlTree read_tree(std::string_view text);

// What the text says, whatever its form.
vessel::Value content_of(const TomlNode& node);

} // namespace tarvane::app
