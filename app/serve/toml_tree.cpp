#include "serve/toml_tree.h"

#include "input/input_file.h"
#include "input/toml_limits.h"
#include "input/toml_parser.h"

#include <algorithm>

namespace tarvane::app {

namespace {

constexpr std::string_view BYTE_ORDER_MARK = "\xEF\xBB\xBF";

bool continues(char byte) { return (static_cast<unsigned char>(byte) & 0xC0u) == 0x80u; }

// From the lines and columns of the parser, which counts characters, to bytes.
class Places {
  public:
    explicit Places(std::string_view of) : text(of) {
        lines.push_back(text.starts_with(BYTE_ORDER_MARK) ? BYTE_ORDER_MARK.size() : 0);
        for (std::size_t i = 0; i < text.size(); ++i) {
            if (text[i] == '\n') lines.push_back(i + 1);
        }
    }

    TextRange range(const toml::source_region& region) const {
        return {byte(region.begin), byte(region.end)};
    }

  private:
    std::string_view text;
    std::vector<std::size_t> lines; // their first bytes

    std::size_t byte(const toml::source_position& at) const {
        if (at.line == 0) return 0; // of the whole text
        std::size_t i = at.line <= lines.size() ? lines[at.line - 1] : text.size();
        for (toml::source_index left = at.column; left > 1 && i < text.size(); --left) {
            ++i;
            while (i < text.size() && continues(text[i]))
                ++i;
        }
        return i;
    }
};

class Builder {
  public:
    explicit Builder(std::string_view of) : text(of), places(of) {}

    TomlNode node_of(const toml::node& node) const {
        TomlNode made;
        made.at = places.range(node.source());
        if (const auto* table = node.as_table()) {
            made.form = form_of(*table, made.at);
            for (const auto& [key, member] : *table)
                made.members.emplace_back(std::string(key.str()), node_of(member));
        } else if (const auto* array = node.as_array()) {
            made.form = TomlNode::Form::array;
            for (const toml::node& item : *array)
                made.items.push_back(node_of(item));
            if (!made.items.empty() && made.items.front().form == TomlNode::Form::header_table)
                made.form = TomlNode::Form::header_array;
        } else {
            made.value = value_of(node);
        }
        return made;
    }

  private:
    std::string_view text;
    Places places;

    TomlNode::Form form_of(const toml::table& table, const TextRange& at) const {
        if (table.is_inline()) return TomlNode::Form::inline_table;
        return at.begin < text.size() && text[at.begin] == '[' ? TomlNode::Form::header_table
                                                               : TomlNode::Form::dotted_table;
    }

    static Value value_of(const toml::node& node) {
        if (const auto* words = node.as_string()) return words->get();
        if (const auto* flag = node.as_boolean()) return flag->get();
        if (const auto* whole = node.as_integer()) return whole->get();
        if (const auto* number = node.as_floating_point()) return number->get();
        return Foreign{"a date or time"};
    }
};

// The words of the reader for the same text.
TomlTree refused(std::string_view text) {
    Faults faults = read_input(text).faults;
    TomlTree tree;
    tree.root.form = TomlNode::Form::header_table;
    tree.fault = faults.empty() ? Fault{.line = 1, .message = "the text cannot be read as TOML"}
                                : std::move(faults.front());
    return tree;
}

} // namespace

const TomlNode* TomlNode::member(std::string_view key) const {
    const auto at_key = std::find_if(members.begin(), members.end(),
                                     [key](const auto& each) { return each.first == key; });
    return at_key == members.end() ? nullptr : &at_key->second;
}

const TomlNode* TomlNode::item(std::size_t index) const {
    if (table()) return index == 0 ? this : nullptr;
    return index < items.size() ? &items[index] : nullptr;
}

TomlTree read_tree(std::string_view text) {
    if (check_limits(text)) return refused(text);
    try {
        TomlTree tree{Builder(text).node_of(toml::parse(text)), std::nullopt};
        tree.root.form = TomlNode::Form::header_table;
        return tree;
    } catch (const toml::parse_error&) {
        return refused(text);
    } catch (const TomlAssertion&) {
        return refused(text);
    }
}

Value content_of(const TomlNode& node) {
    if (node.table()) {
        Table table;
        for (const auto& [key, member] : node.members)
            table.put(key, content_of(member));
        return table;
    }
    if (node.list()) {
        List list;
        for (const TomlNode& item : node.items)
            list.push_back(content_of(item));
        return list;
    }
    return node.value;
}

} // namespace tarvane::app
