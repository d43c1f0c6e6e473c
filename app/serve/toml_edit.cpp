#include "serve/toml_edit.h"

#include "serve/toml_lines.h"
#include "serve/toml_tree.h"
#include "values/text.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <optional>
#include <span>

namespace tarvane::app {

using namespace vessel;

namespace {

using Form = TomlNode::Form;
using Steps = std::span<const TomlStep>;

bool is_blank(char c) { return c == ' ' || c == '\t'; }

// A value in the tables and lists that the steps name.
std::string nested(Steps steps, std::string written) {
    for (std::size_t i = steps.size(); i-- > 0;) {
        if (const auto* name = std::get_if<std::string>(&steps[i]))
            written.insert(0, "{ " + key_of(*name) + " = ").append(" }");
        else
            written.insert(0, 1, '[').append(1, ']');
    }
    return written;
}

// ---- the text as it is expected -------------------------------------------------------------------------

// Another tree with a value at a path, or without what is there.
Value changed(const Value& old, Steps steps, const Value* now) {
    const bool last = steps.size() == 1;
    if (const auto* place = std::get_if<std::size_t>(&steps[0])) {
        List list = old.list() != nullptr ? *old.list() : List();
        if (*place == list.size()) list.emplace_back();
        if (last && now == nullptr)
            list.erase(list.begin() + static_cast<std::ptrdiff_t>(*place));
        else
            list[*place] = last ? *now : changed(list[*place], steps.subspan(1), now);
        return list;
    }
    const auto& name = std::get<std::string>(steps[0]);
    Table table;
    const Table* before = old.table();
    if (before != nullptr) {
        for (const Table::Entry& entry : *before) {
            if (entry.key != name) table.put(entry.key, entry.value);
        }
    }
    if (last && now == nullptr) return table;
    const Value* member = before == nullptr ? nullptr : before->find(name);
    table.put(name,
              last ? *now : changed(member == nullptr ? Value() : *member, steps.subspan(1), now));
    return table;
}

bool same(const Value& a, const Value& b) {
    if (a.table() != nullptr && b.table() != nullptr) {
        const Table &left = *a.table(), &right = *b.table();
        return left.size() == right.size() &&
               std::all_of(left.begin(), left.end(), [&right](const Table::Entry& entry) {
                   const Value* other = right.find(entry.key);
                   return other != nullptr && same(entry.value, *other);
               });
    }
    if (a.list() != nullptr && b.list() != nullptr)
        return std::equal(a.list()->begin(), a.list()->end(), b.list()->begin(), b.list()->end(),
                          same);
    if (a.text() != nullptr && b.text() != nullptr) return *a.text() == *b.text();
    if (a.flag() != nullptr && b.flag() != nullptr) return *a.flag() == *b.flag();
    if (a.whole() != nullptr && b.whole() != nullptr) return *a.whole() == *b.whole();
    if (a.whole() != nullptr || b.whole() != nullptr) return false;
    if (a.number() && b.number())
        return std::bit_cast<std::uint64_t>(*a.number()) ==
               std::bit_cast<std::uint64_t>(*b.number());
    return a.shown() == b.shown(); // dates and times
}

std::string in_words(Steps steps) {
    std::string words;
    for (const TomlStep& step : steps) {
        if (const auto* name = std::get_if<std::string>(&step))
            words += (words.empty() ? "" : ".") + *name;
        else
            words += '[' + std::to_string(std::get<std::size_t>(step)) + ']';
    }
    return words;
}

// ---- the change --------------------------------------------------------------------------------------------

class Editor {
  public:
    Editor(std::string_view of, const TomlPath& to) : text(of), tree(read_tree(of)), path(to) {
        if (tree.fault)
            throw EditRefused("line " + std::to_string(tree.fault->line) +
                              " is no TOML: " + printable(tree.fault->message));
        if (path.empty() || !std::holds_alternative<std::string>(path[0])) refuse("has no name");
        drop_places_of_lone_tables();
    }

    // `table`: of a new component, which gets lines of its own.
    std::string put(const std::string& written, const Value& value) {
        const Table* table = value.table();
        std::vector<const TomlNode*> way = walk();
        std::string changed_text;
        if (way.size() == path.size() + 1) {
            const TomlNode& there = *way.back();
            if (there.form != Form::value && there.form != Form::array &&
                there.form != Form::inline_table)
                refuse("is a table of its own, whose values are changed one by one");
            changed_text = splice(there.at, written);
        } else {
            const Steps rest = Steps(path).subspan(way.size() - 1);
            changed_text = add(*way.back(), rest, written, table);
        }
        check(changed_text, changed(content_of(tree.root), path, &value));
        return changed_text;
    }

    std::string remove() {
        std::vector<const TomlNode*> way = walk();
        if (way.size() != path.size() + 1) return std::string(text);
        const TomlNode* node = way.back();
        std::string changed_text;
        if (const std::size_t around = enclosing(way); around != 0) {
            const TomlNode& brackets = *way[around];
            const std::vector<std::size_t> between = commas(text, brackets.at);
            const bool alone = brackets.form == Form::inline_table && between.empty();
            if (alone) {
                path.resize(around);
                return remove();
            }
            changed_text = without_item(brackets, node->at, between);
        } else {
            std::vector<TextRange> gone;
            find_lines(*node, gone);
            changed_text = std::string(text);
            std::sort(gone.begin(), gone.end(),
                      [](const TextRange& a, const TextRange& b) { return a.begin > b.begin; });
            std::size_t end = text.size();
            for (const TextRange& range : gone) {
                if (range.begin >= end) continue;
                changed_text.erase(range.begin, std::min(range.end, end) - range.begin);
                end = range.begin;
            }
        }
        // The last [[name]] takes the list with it, the last a.b = 1 the table.
        for (std::size_t i = path.size(); i-- > 1;) {
            const TomlNode& parent = *way[i];
            if (parent.form == Form::header_array && parent.items.size() == 1)
                path.resize(i);
            else if (parent.form == Form::dotted_table && parent.members.size() == 1)
                path.resize(i);
            else
                break;
        }
        check(changed_text, changed(content_of(tree.root), path, nullptr));
        return changed_text;
    }

  private:
    std::string_view text;
    TomlTree tree;
    TomlPath path;

    [[noreturn]] void refuse(const std::string& why) const {
        throw EditRefused(in_words(path) + ' ' + why);
    }

    void check(std::string_view now, const Value& expected) const {
        const TomlTree after = read_tree(now);
        if (after.fault || !same(content_of(after.root), expected))
            refuse("is written in a form that can't be changed here; change it in the file");
    }

    // A lone [table] is the first of its kind without being in a list.
    void drop_places_of_lone_tables() {
        const TomlNode* node = &tree.root;
        for (std::size_t i = 0; i < path.size() && node != nullptr;) {
            const auto* place = std::get_if<std::size_t>(&path[i]);
            if (place != nullptr && node->table()) {
                if (*place != 0)
                    refuse("would be a second one, for which the first has to be written as [[" +
                           std::get<std::string>(path[i - 1]) + "]]");
                path.erase(path.begin() + static_cast<std::ptrdiff_t>(i));
                continue;
            }
            node = place != nullptr ? node->item(*place)
                                    : node->member(std::get<std::string>(path[i]));
            ++i;
        }
    }

    // The nodes along the path, from the whole text on, as far as there are any.
    std::vector<const TomlNode*> walk() const {
        std::vector<const TomlNode*> way{&tree.root};
        for (const TomlStep& step : path) {
            const TomlNode& node = *way.back();
            const auto* name = std::get_if<std::string>(&step);
            if (name != nullptr ? !node.table() : !node.list()) refuse("is not there");
            const TomlNode* next =
                name != nullptr ? node.member(*name) : node.item(std::get<std::size_t>(step));
            if (next == nullptr) break;
            way.push_back(next);
        }
        return way;
    }

    std::string splice(const TextRange& range, std::string_view written) const {
        std::string all(text.substr(0, range.begin));
        all += written;
        all += text.substr(range.end);
        return all;
    }
    std::string insert(std::size_t at, std::string_view written) const {
        return splice({at, at}, written);
    }

    // ---- places ----

    // Where headers begin.
    static void find_headers(const TomlNode& node, std::vector<std::size_t>& begins) {
        for (const auto& [key, member] : node.members) {
            if (member.form == Form::header_table) begins.push_back(member.at.begin);
            find_headers(member, begins);
        }
        for (const TomlNode& item : node.items) {
            if (item.form == Form::header_table) begins.push_back(item.at.begin);
            find_headers(item, begins);
        }
    }

    // The lines of a table: from its header up to the next one.
    TextRange body_of(const TomlNode& table) const {
        std::vector<std::size_t> begins;
        find_headers(tree.root, begins);
        const bool whole = &table == &tree.root;
        TextRange body{whole ? line_begin(text, 0) : table.at.begin, text.size()};
        for (const std::size_t begin : begins) {
            if ((begin > body.begin || whole) && begin < body.end)
                body.end = line_begin(text, begin);
        }
        return body;
    }

    // The last value that is written in a range.
    static void find_last(const TomlNode& node, const TextRange& range, TextRange& last) {
        if (node.form == Form::value || node.form == Form::array ||
            node.form == Form::inline_table) {
            if (node.at.begin >= range.begin && node.at.end <= range.end && node.at.end > last.end)
                last = node.at;
            return;
        }
        for (const auto& [key, member] : node.members)
            find_last(member, range, last);
        for (const TomlNode& item : node.items)
            find_last(item, range, last);
    }
    TextRange last_value(const TextRange& body) const {
        TextRange last{0, 0};
        find_last(tree.root, body, last);
        return last;
    }

    // The brackets on the way that a value is in, by their place there; 0: none.
    static std::size_t enclosing(const std::vector<const TomlNode*>& way) {
        for (std::size_t i = way.size() - 1; i-- > 1;) {
            if (way[i]->form == Form::inline_table || way[i]->form == Form::array) return i;
            if (way[i]->form == Form::header_table) return 0;
        }
        return 0;
    }

    // ---- adding ----

    // A line of its own at a place where a line begins, or at the end of a text without a line end.
    std::string insert_lines(std::size_t at, const std::vector<std::string>& lines) const {
        const std::string_view line_end = line_end_of(text);
        const bool open =
            at > 0 && at == text.size() && text[at - 1] != '\n' && line_begin(text, at) != at;
        std::string all;
        for (const std::string& line : lines) {
            if (open) all += line_end;
            all += line;
            if (!open) all += line_end;
        }
        return insert(at, all);
    }

    std::string add(const TomlNode& parent, Steps rest, const std::string& written,
                    const Table* table) {
        if (const auto* place = std::get_if<std::size_t>(&rest[0])) {
            if (*place != parent.items.size()) refuse("is not there");
            if (parent.form == Form::array) return add_item(parent, rest, written);
            return add_header(Steps(path).first(path.size() - rest.size()), true, rest.subspan(1),
                              written, table);
        }
        const auto& name = std::get<std::string>(rest[0]);
        if (&parent == &tree.root && rest.size() > 1) {
            const auto* place = std::get_if<std::size_t>(&rest[1]);
            if (place != nullptr && *place != 0) refuse("is not there");
            return add_header(rest.first(1), place != nullptr,
                              rest.subspan(place != nullptr ? 2 : 1), written, table);
        }
        for (const TomlStep& step : rest) {
            const auto* place = std::get_if<std::size_t>(&step);
            if (place != nullptr && *place != 0) refuse("is not there");
        }
        const std::string value = key_of(name) + " = " + nested(rest.subspan(1), written);
        if (parent.form == Form::inline_table) return add_member(parent, value);
        if (parent.form == Form::dotted_table) return add_dotted(parent, value);
        return add_line(parent, value);
    }

    // After the last value of a table, or after its header.
    std::string add_line(const TomlNode& table, const std::string& line) const {
        const TextRange body = body_of(table), last = last_value(body);
        if (last.end > 0)
            return insert_lines(after_line(text, last.end), {indentation(text, last.begin) + line});
        if (&table == &tree.root) return insert_lines(body.begin, {line});
        return insert_lines(after_line(text, table.at.begin),
                            {indentation(text, table.at.begin) + line});
    }

    // Beside the others of its table, after the same names: "gasket.m = 3". In brackets there is no room for it.
    std::string add_dotted(const TomlNode& table, const std::string& line) const {
        TextRange last{0, 0};
        find_last(table, {0, text.size()}, last);
        const std::size_t begin = line_begin(text, last.begin);
        const std::string indent = indentation(text, last.begin);
        const std::string_view key =
            text.substr(begin + indent.size(), last.begin - begin - indent.size());
        const std::size_t point = key.rfind('.', key.find('='));
        if (point == std::string_view::npos) refuse("can't be added here; add it in the file");
        return insert_lines(after_line(text, last.end),
                            {indent + std::string(key.substr(0, point + 1)) + line});
    }

    std::string add_member(const TomlNode& table, const std::string& member) const {
        TextRange last{0, 0};
        for (const auto& [key, value] : table.members)
            find_last(value, table.at, last);
        if (last.end > 0) return insert(last.end, ", " + member);
        return splice(table.at, "{ " + member + " }");
    }

    std::string add_item(const TomlNode& array, Steps rest, const std::string& written) const {
        const std::string item = nested(rest.subspan(1), written);
        if (array.items.empty()) return insert(array.at.begin + 1, item);
        return insert(array.items.back().at.end, ", " + item);
    }

    // [name] before the first table, [[name]] at the end.
    std::string add_header(Steps names, bool of_list, Steps rest, const std::string& written,
                           const Table* table) const {
        std::string name;
        for (const TomlStep& step : names) {
            const auto* part = std::get_if<std::string>(&step);
            if (part == nullptr) refuse("can't be added here; add it in the file");
            name += (name.empty() ? "" : ".") + key_of(*part);
        }
        std::vector<std::string> lines{of_list ? "[[" + name + "]]" : "[" + name + "]"};
        if (!rest.empty()) {
            const auto* key = std::get_if<std::string>(&rest[0]);
            if (key == nullptr) refuse("is not there");
            lines.push_back(key_of(*key) + " = " + nested(rest.subspan(1), written));
        } else {
            if (table == nullptr) refuse("is a table");
            for (const Table::Entry& entry : *table)
                lines.push_back(key_of(entry.key) + " = " + toml_of(entry.value));
        }
        if (of_list) {
            if (!text.empty()) lines.insert(lines.begin(), "");
            return insert_lines(text.size(), lines);
        }
        const TextRange body = body_of(tree.root), last = last_value(body);
        const std::size_t at = last.end > 0 ? after_line(text, last.end) : body.begin;
        if (last.end > 0) lines.insert(lines.begin(), "");
        if (at < text.size() && !blank_line(text, at)) lines.emplace_back();
        return insert_lines(at, lines);
    }

    // ---- removing ----

    // From its beginning to the next one, or from the comma before it.
    std::string without_item(const TomlNode& brackets, const TextRange& item,
                             const std::vector<std::size_t>& between) const {
        const auto next = std::lower_bound(between.begin(), between.end(), item.end);
        TextRange gone = item;
        if (brackets.form == Form::inline_table) {
            gone.begin = next == between.begin() ? brackets.at.begin + 1 : *(next - 1) + 1;
            while (is_blank(text[gone.begin]))
                ++gone.begin;
        }
        if (next != between.end()) {
            gone.end = *next + 1;
            while (is_blank(text[gone.end]))
                ++gone.end;
        } else if (next != between.begin()) {
            gone.begin = *(next - 1);
        }
        return splice(gone, "");
    }

    // The lines of all values of a node; of one with a header that, too, and blank lines after it.
    void find_lines(const TomlNode& node, std::vector<TextRange>& gone) const {
        if (node.form == Form::value || node.form == Form::array ||
            node.form == Form::inline_table) {
            gone.push_back({line_begin(text, node.at.begin), after_line(text, node.at.end)});
            return;
        }
        if (node.form == Form::header_table) {
            const TextRange last = last_value(body_of(node));
            TextRange lines{line_begin(text, node.at.begin),
                            after_line(text, std::max(last.end, node.at.begin))};
            while (blank_line(text, lines.end))
                lines.end = after_line(text, lines.end);
            gone.push_back(lines);
        }
        for (const auto& [key, member] : node.members) {
            if (node.form == Form::dotted_table || member.form == Form::header_table ||
                member.form == Form::header_array)
                find_lines(member, gone);
        }
        for (const TomlNode& item : node.items)
            find_lines(item, gone);
    }
};

} // namespace

std::string with_value(std::string_view text, const TomlPath& path, const Value& value) {
    return Editor(text, path).put(toml_of(value), value);
}

std::string with_written(std::string_view text, const TomlPath& path, std::string_view written) {
    const TomlTree tree = read_tree("x = " + std::string(written) + "\n");
    const TomlNode* value = tree.root.member("x");
    if (tree.fault || value == nullptr || tree.root.members.size() != 1)
        throw EditRefused(echoed(written) + " is no value");
    return Editor(text, path).put(std::string(written), content_of(*value));
}

std::string without(std::string_view text, const TomlPath& path) {
    return Editor(text, path).remove();
}

} // namespace tarvane::app
