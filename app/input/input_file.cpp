#include "input/input_file.h"

#include "components/fault_list.h"
#include "input/syntax_message.h"
#include "input/toml_limits.h"
#include "input/toml_parser.h"
#include "values/text.h"

#include <algorithm>
#include <optional>
#include <vector>

namespace tarvane::app {

using namespace vessel;

namespace {

Position position_of(const toml::source_region& source) {
    return {static_cast<int>(source.begin.line), static_cast<int>(source.begin.column)};
}

Value value_of(const toml::node& node);

Table table_of(const toml::table& table) {
    Table values;
    for (const auto& [key, node] : table)
        values.put(std::string(key.str()), value_of(node), position_of(key.source()));
    return values;
}

List list_of(const toml::array& array) {
    List values;
    for (const toml::node& node : array)
        values.push_back(value_of(node));
    return values;
}

Value value_of(const toml::node& node) {
    Value value = Foreign{"a date or time"};
    if (const auto* text = node.as_string()) value = text->get();
    if (const auto* flag = node.as_boolean()) value = flag->get();
    if (const auto* whole = node.as_integer()) value = whole->get();
    if (const auto* number = node.as_floating_point()) value = number->get();
    if (const auto* array = node.as_array()) value = list_of(*array);
    if (const auto* table = node.as_table()) value = table_of(*table);
    value.at = position_of(node.source());
    return value;
}

ReadResult refused(Fault fault) { return {{}, {std::move(fault)}}; }

bool trips(std::string_view toml_text) {
    try {
        static_cast<void>(toml::parse(toml_text));
    } catch (const TomlAssertion&) {
        return true;
    } catch (const toml::parse_error&) {
    }
    return false;
}

// The line of a text that the parser trips over, from 1 on: the first lines up to it are the fewest that it trips
// over, as it reads from front to back.
int tripping_line(std::string_view toml_text) {
    std::vector<std::size_t> ends; // of the lines
    for (std::size_t i = 0; i < toml_text.size(); ++i) {
        if (toml_text[i] == '\n') ends.push_back(i + 1);
    }
    const auto first = std::partition_point(ends.begin(), ends.end(), [&](std::size_t end) {
        return !trips(toml_text.substr(0, end));
    });
    return static_cast<int>(first - ends.begin()) + 1;
}

} // namespace

ReadResult read_input(std::string_view toml_text, std::span<const ElementKind* const> kinds,
                      bool strict) {
    if (std::optional<Fault> fault = check_limits(toml_text)) return refused(std::move(*fault));
    try {
        Table root = table_of(toml::parse(toml_text));
        if (strict) root.put("strict", true);
        return read_request(root, kinds);
    } catch (const toml::parse_error& error) {
        return refused(syntax_fault(toml_text, static_cast<int>(error.source().begin.line),
                                    error.description()));
    } catch (const TomlAssertion&) {
        return refused(
            syntax_fault(toml_text, tripping_line(toml_text), "the line cannot be read as TOML"));
    }
}

std::string fault_line(std::string_view path, const Fault& fault) {
    std::string line(path);
    line += ':' + std::to_string(fault.line) + ": ";
    if (!fault.key.empty()) line += fault.key + ": ";
    return printable(line + fault.message);
}

std::string fault_report(std::string_view path, const Faults& faults) {
    std::string lines;
    const std::size_t shown = std::min(faults.size(), MOST_FAULT_LINES);
    for (std::size_t i = 0; i < shown; ++i)
        lines += fault_line(path, faults[i]) + '\n';
    if (faults.size() > shown)
        lines += "and " + std::to_string(faults.size() - shown) + " more faults\n";
    return lines;
}

} // namespace tarvane::app
