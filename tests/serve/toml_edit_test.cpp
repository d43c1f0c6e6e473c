#include "serve/toml_edit.h"
#include "serve/toml_tree.h"

#include "input/input_file.h"
#include "test_paths.h"

#include <gtest/gtest.h>

#include <fstream>
#include <random>
#include <sstream>

namespace tarvane::app {

using namespace vessel;

namespace {

TomlPath at(std::string_view name) {
    const auto path = path_named(name);
    EXPECT_TRUE(path) << name;
    return path.value_or(TomlPath{"none"});
}

std::string put(std::string_view text, std::string_view path, std::string_view written) {
    return with_written(text, at(path), written);
}
std::string drop(std::string_view text, std::string_view path) { return without(text, at(path)); }

std::string refusal(std::string_view text, std::string_view path, std::string_view written) {
    try {
        put(text, path, written);
    } catch (const EditRefused& refused) {
        return refused.what();
    }
    return "not refused";
}

// ---- places ----------------------------------------------------------------------------------------------

TEST(TomlTree, PlacesSpanExactlyTheValue) {
    const std::string text =
        "\xEF\xBB\xBF# ä°\r\na = 1.50 # x\r\n\"b\" = \"°ü\" # y\r\nc = [1,\r\n "
        "'''z'''] # d\r\ne.f = { g = true, h = { i = 1 } } # k\r\n[[l]] # m\r\n"
        "n = 1979-05-27\r\n[[l]]\r\n[l.o]\r\np = \"\"\"q\r\nr\"\"\"";
    const TomlTree tree = read_tree(text);
    ASSERT_FALSE(tree.fault);
    const auto written = [&](const TomlNode* node) {
        EXPECT_NE(node, nullptr);
        return node == nullptr ? "" : text.substr(node->at.begin, node->at.end - node->at.begin);
    };
    const TomlNode& root = tree.root;
    EXPECT_EQ(written(root.member("a")), "1.50");
    EXPECT_EQ(written(root.member("b")), "\"°ü\"");
    EXPECT_EQ(written(root.member("c")), "[1,\r\n '''z''']");
    const TomlNode* e = root.member("e");
    ASSERT_NE(e, nullptr);
    EXPECT_EQ(e->form, TomlNode::Form::dotted_table);
    const TomlNode* f = e->member("f");
    EXPECT_EQ(written(f), "{ g = true, h = { i = 1 } }");
    EXPECT_EQ(written(f->member("h")), "{ i = 1 }");
    EXPECT_EQ(written(f->member("h")->member("i")), "1");
    const TomlNode* l = root.member("l");
    ASSERT_NE(l, nullptr);
    EXPECT_EQ(l->form, TomlNode::Form::header_array);
    ASSERT_EQ(l->items.size(), 2u);
    EXPECT_EQ(text.substr(l->items[0].at.begin, 5), "[[l]]");
    EXPECT_EQ(text.substr(l->items[1].at.begin, 5), "[[l]]");
    EXPECT_GT(l->items[1].at.begin, l->items[0].at.begin);
    EXPECT_EQ(written(l->items[0].member("n")), "1979-05-27");
    EXPECT_EQ(text.substr(l->items[1].member("o")->at.begin, 5), "[l.o]");
    EXPECT_EQ(written(l->items[1].member("o")->member("p")), "\"\"\"q\r\nr\"\"\"");
}

TEST(TomlPath, NamesAndPlacesInLists) {
    EXPECT_EQ(at("flange[0].standard.class"),
              (TomlPath{"flange", std::size_t{0}, "standard", "class"}));
    EXPECT_EQ(at("units"), (TomlPath{"units"}));
    for (const std::string_view none :
         {"", ".", "a.", ".a", "[0]", "a[", "a[]", "a[-1]", "a[1", "a[0]b", "a b", "a..b", "../a",
          "a/b", "a[99999999999999999999]", "a.b.c.d.e.f.g.h.i"})
        EXPECT_FALSE(path_named(none)) << none;
}

// ---- values ------------------------------------------------------------------------------------------------

TEST(TomlEdit, ReplacesTheBytesOfAValueAlone) {
    EXPECT_EQ(put("P = 150   # psig\nT=300\n", "P", "160"), "P = 160   # psig\nT=300\n");
    EXPECT_EQ(put("P = 150\r\n\tT\t=\t300\t# °\r\n", "T", "31.50"),
              "P = 150\r\n\tT\t=\t31.50\t# °\r\n");
    EXPECT_EQ(put("\xEF\xBB\xBFP = 1", "P", "2"), "\xEF\xBB\xBFP = 2");
    EXPECT_EQ(put("[[f]]\ns = { class = 150, size = 12 } # pipe\n", "f[0].s.size", "\"1 1/2\""),
              "[[f]]\ns = { class = 150, size = \"1 1/2\" } # pipe\n");
    EXPECT_EQ(put("f = [{ P = 1 }, { P = 2 }]\n", "f[1].P", "3"), "f = [{ P = 1 }, { P = 3 }]\n");
    EXPECT_EQ(put("g.m = 1\n# end", "g.m", "2"), "g.m = 2\n# end");
    EXPECT_EQ(put("a = \"\"\"x\ny\"\"\" # z\n", "a", "\"w\""), "a = \"w\" # z\n");
}

TEST(TomlEdit, AKeyComesAfterTheLastValueOfItsTable) {
    const std::string text = "u = 1 # a\n\n# about x\n[[x]]\n  P = 1 # b\n\n# about y\n[y]\n";
    EXPECT_EQ(put(text, "x[0].T", "2"),
              "u = 1 # a\n\n# about x\n[[x]]\n  P = 1 # b\n  T = 2\n\n# about y\n[y]\n");
    EXPECT_EQ(put(text, "y.z", "3"),
              "u = 1 # a\n\n# about x\n[[x]]\n  P = 1 # b\n\n# about y\n[y]\nz = 3\n");
    EXPECT_EQ(put(text, "v", "true"),
              "u = 1 # a\nv = true\n\n# about x\n[[x]]\n  P = 1 # b\n\n# about y\n[y]\n");
    // Not among the values of a table that follows, nor within the brackets of the last one.
    EXPECT_EQ(put("[a]\nb = [1, # c\n 2] # d\n[a.e]\nf = 1", "a.g", "2"),
              "[a]\nb = [1, # c\n 2] # d\ng = 2\n[a.e]\nf = 1");
    EXPECT_EQ(put("[a]\r\nb = 1", "a.c", "2"), "[a]\r\nb = 1\r\nc = 2");
    EXPECT_EQ(put("", "a", "1"), "a = 1\n");
    EXPECT_EQ(put("\xEF\xBB\xBF", "a", "1"), "\xEF\xBB\xBF"
                                             "a = 1\n");
    EXPECT_EQ(put("# c", "a", "1"), "a = 1\n# c");
    // A "[" that begins a line within a value begins no table.
    EXPECT_EQ(put("[a]\nb = [\n[1],\n[2]]\n[c]\nd = 1\n", "a.e", "2"),
              "[a]\nb = [\n[1],\n[2]]\ne = 2\n[c]\nd = 1\n");
}

TEST(TomlEdit, InlineTablesAndListsGrow) {
    EXPECT_EQ(put("s = { class = 150 } # c", "s.size", "12"), "s = { class = 150, size = 12 } # c");
    EXPECT_EQ(put("s = {}\n", "s.size", "12"), "s = { size = 12 }\n");
    EXPECT_EQ(put("s = { a.b = 1 }\n", "s.c", "2"), "s = { a.b = 1, c = 2 }\n");
    EXPECT_EQ(put("x = 1\n", "s.size", "12"), "x = 1\n\n[s]\nsize = 12\n");
    EXPECT_EQ(put("[[f]]\nx = 1\n", "f[0].s.size", "12"), "[[f]]\nx = 1\ns = { size = 12 }\n");
    EXPECT_EQ(put("[[f]]\ng.m = 1\nx = 1\n", "f[0].g.y", "2"), "[[f]]\ng.m = 1\ng.y = 2\nx = 1\n");
    EXPECT_EQ(put("f = [{ a = 1 }, # c\n]\n", "f[1].a", "2"),
              "f = [{ a = 1 }, { a = 2 }, # c\n]\n");
    EXPECT_EQ(put("[d]\nr = []\n", "d.r[0].t", "2"), "[d]\nr = [{ t = 2 }]\n");
    EXPECT_EQ(put("[d]\n", "d.r[0].t", "2"), "[d]\nr = [{ t = 2 }]\n");
}

TEST(TomlEdit, ANewTableHasLinesOfItsOwn) {
    EXPECT_EQ(put("u = 1\n[[f]]\nP = 1\n", "vessel.P", "2"),
              "u = 1\n\n[vessel]\nP = 2\n\n[[f]]\nP = 1\n");
    EXPECT_EQ(put("[[f]]\nP = 1\n", "vessel.P", "2"), "[vessel]\nP = 2\n\n[[f]]\nP = 1\n");
    Table flange;
    flange.put("description", "a \"b\"\\\n");
    flange.put("P", 1.5);
    flange.put("n", std::int64_t{12});
    flange.put("rigidity", true);
    Table standard;
    standard.put("class", std::int64_t{150});
    flange.put("standard", standard);
    const std::string lines = "description = \"a \\\"b\\\"\\\\\\u000A\"\nP = 1.5\nn = 12\n"
                              "rigidity = true\nstandard = { class = 150 }\n";
    EXPECT_EQ(with_value("[[flange]]\nP = 1\n", at("flange[1]"), flange),
              "[[flange]]\nP = 1\n\n[[flange]]\n" + lines);
    EXPECT_EQ(with_value("", at("flange[0]"), flange), "[[flange]]\n" + lines);
    EXPECT_EQ(with_value("u = 1", at("flange[0]"), Table()), "u = 1\n\n[[flange]]");
    EXPECT_EQ(with_value("flange = [{ P = 1 }]", at("flange[1]"), Table()),
              "flange = [{ P = 1 }, { }]");
    EXPECT_THROW(with_value("", at("flange[1]"), flange), EditRefused);
    EXPECT_THROW(with_value("[[flange]]\n", at("flange[2]"), flange), EditRefused);
}

TEST(TomlEdit, ALoneTableIsTheFirstOfItsKind) {
    EXPECT_EQ(put("[mdmt]\ntg = 1\n", "mdmt[0].tg", "2"), "[mdmt]\ntg = 2\n");
    EXPECT_EQ(put("[mdmt]\ntg = 1\n", "mdmt[0].T", "2"), "[mdmt]\ntg = 1\nT = 2\n");
    EXPECT_EQ(drop("[mdmt]\ntg = 1\n\n[a]\n", "mdmt[0]"), "[a]\n");
    EXPECT_NE(refusal("[mdmt]\ntg = 1\n", "mdmt[1].tg", "2").find("[[mdmt]]"), std::string::npos);
}

// ---- removals ----------------------------------------------------------------------------------------------

TEST(TomlEdit, RemovesAKeyWithItsLine) {
    EXPECT_EQ(drop("a = 1 # x\n# y\nb = 2\n", "a"), "# y\nb = 2\n");
    EXPECT_EQ(drop("a = 1\r\nb = [1,\r\n2] # c\r\nd = 1", "b"), "a = 1\r\nd = 1");
    EXPECT_EQ(drop("a = 1\nb = 2", "b"), "a = 1\n");
    EXPECT_EQ(drop("\xEF\xBB\xBF"
                   "a = 1\nb = 2",
                   "a"),
              "\xEF\xBB\xBF"
              "b = 2");
    EXPECT_EQ(drop("a = 1\n", "b"), "a = 1\n");
    EXPECT_EQ(drop("a = 1\n", "b.c[0].d"), "a = 1\n");
    EXPECT_EQ(drop("[f]\ng.m = 1\nx = 1\ng.y = 2\n", "f.g"), "[f]\nx = 1\n");
    EXPECT_EQ(drop("[f]\ng.m = 1\nx = 1\n", "f.g.m"), "[f]\nx = 1\n");
}

TEST(TomlEdit, RemovesAMemberWithItsComma) {
    const std::string text = "s = { a = \"x, }\", b = [1, 2], c = { d = 1 } } # e\n";
    EXPECT_EQ(drop(text, "s.a"), "s = { b = [1, 2], c = { d = 1 } } # e\n");
    EXPECT_EQ(drop(text, "s.b"), "s = { a = \"x, }\", c = { d = 1 } } # e\n");
    EXPECT_EQ(drop(text, "s.c"), "s = { a = \"x, }\", b = [1, 2] } # e\n");
    EXPECT_EQ(drop(text, "s.c.d"), "s = { a = \"x, }\", b = [1, 2] } # e\n");
    EXPECT_EQ(drop("s = { a.b = 1, a.c = 2 }\n", "s.a.b"), "s = { a.c = 2 }\n");
    EXPECT_EQ(drop("x = 1\ns = { a = 1 }\n", "s.a"), "x = 1\n");
    EXPECT_EQ(drop("f = [{ a = 1 }, # 1\n { a = 2 }, # 2\n]\n", "f[0]"),
              "f = [# 1\n { a = 2 }, # 2\n]\n");
    EXPECT_EQ(drop("f = [{ a = 1 }]\n", "f[0]"), "f = []\n");
}

TEST(TomlEdit, RemovesAComponentWithItsTables) {
    const std::string text =
        "u = 1\n\n# one\n[[f]]\nP = 1\n\n# two\n[[f]]\nP = 2 # c\n[f.s]\nx = 1\n\n"
        "\n# three\n[[f]]\nP = 3\n";
    EXPECT_EQ(drop(text, "f[1]"), "u = 1\n\n# one\n[[f]]\nP = 1\n\n# two\n# three\n[[f]]\nP = 3\n");
    EXPECT_EQ(drop(text, "f[2]"),
              "u = 1\n\n# one\n[[f]]\nP = 1\n\n# two\n[[f]]\nP = 2 # c\n[f.s]\nx "
              "= 1\n\n\n# three\n");
    EXPECT_EQ(drop("[[f]]\n", "f[0]"), "");
}

TEST(TomlEdit, WhatCannotBeChangedIsRefused) {
    EXPECT_NE(refusal("a = \n", "b", "1").find("line 1"), std::string::npos);
    EXPECT_NE(refusal("[a]\nb = 1\n", "a", "1").find("table of its own"), std::string::npos);
    EXPECT_NE(refusal("[a.b]\nc = 1\n", "a.d", "1").find("can't be changed"), std::string::npos);
    EXPECT_NE(refusal("a = 1\n", "a.b", "1").find("not there"), std::string::npos);
    EXPECT_NE(refusal("a = 1\n", "a[0].b", "1").find("not there"), std::string::npos);
    for (const std::string_view none : {"", "1 2", "x", "1\ny = 2", "{", "\"", "1 # c\nz = 2"})
        EXPECT_NE(refusal("a = 1\n", "a", none).find("no value"), std::string::npos) << none;
}

// ---- any change of any text ------------------------------------------------------------------------------

// Random files of the kinds that users write, with everything between their values.
class AnyText {
  public:
    explicit AnyText(unsigned seed) : random(seed) {}

    std::size_t below(std::size_t n) {
        return std::uniform_int_distribution<std::size_t>(0, n - 1)(random);
    }
    std::string value() {
        static const std::string VALUES[] = {
            "1",      "1.50", "-0.0e1",    "true", "\"°ä#,]}\"", "'x=1'", "\"\"\"a\"b\"\"\"",
            "[1, 2]", "[ ]",  "{ a = 1 }", "{}",   "\"10 bar\""};
        return VALUES[below(std::size(VALUES))];
    }
    std::string text() {
        static const std::string ENDS[] = {"\n", "\r\n"};
        end = ENDS[below(2)];
        std::string all = below(3) == 0 ? "\xEF\xBB\xBF" : "";
        values(all, below(4));
        for (std::size_t i = below(5); i > 0; --i) {
            filler(all);
            all += below(2) == 0 ? "[[f]]" : "[[s]] # [x]";
            all += end;
            values(all, below(6));
            if (below(4) == 0 && all.ends_with(end)) {
                all += all.rfind("[[f]]") == std::string::npos ||
                               all.rfind("[[f]]") < all.rfind("[[s]]") + 1
                           ? ""
                           : "[f.inner]" + end;
                values(all, 1 + below(2));
            }
        }
        if (below(4) == 0 && all.ends_with(end)) all.resize(all.size() - end.size());
        return all;
    }

  private:
    std::mt19937 random;
    std::string end;

    void filler(std::string& all) {
        if (below(3) == 0) all += "# about [x] = {" + end;
        if (below(3) == 0) all += end;
    }
    void values(std::string& all, std::size_t count) {
        const std::size_t first = below(3);
        for (std::size_t i = 0; i < count; ++i) {
            filler(all);
            static const std::string NAMES[] = {"P",   "T",     "t",    "D.a",
                                                "D.b", "\"k\"", "kind", "x-y"};
            all += std::string(below(2), '\t') + NAMES[(first + i) % std::size(NAMES)] + " = " +
                   value() + (below(2) == 0 ? " # °, \"" : "") + end;
        }
    }
};

// What the two have in common from the front and from the back, without overlap, covers the shorter one up to the
// bytes that were to change.
std::size_t kept(std::string_view a, std::string_view b) {
    const std::size_t shorter = std::min(a.size(), b.size());
    std::size_t front = 0, back = 0;
    while (front < shorter && a[front] == b[front])
        ++front;
    while (back < shorter - front && a[a.size() - 1 - back] == b[b.size() - 1 - back])
        ++back;
    return front + back;
}

// The value at the path; empty without one.
std::string_view value_at(std::string_view text, const TomlNode& root, const std::string& path) {
    const TomlNode* node = &root;
    for (const TomlStep& step : at(path)) {
        const auto* name = std::get_if<std::string>(&step);
        node = name != nullptr ? node->member(*name) : node->item(std::get<std::size_t>(step));
        if (node == nullptr) return {};
    }
    return text.substr(node->at.begin, node->at.end - node->at.begin);
}

TEST(TomlEdit, EveryChangeIsAsAskedAndLeavesTheRest) {
    static const std::string PATHS[] = {
        "P",      "T",        "D.a",         "f[0].P",   "f[0].D.a", "f[1].t", "s[0].t",
        "s[1].P", "f[0].D.c", "s[0].kind.a", "vessel.P", "k",        "f[2].k", "f[0].inner.P"};
    std::size_t put_count = 0, removed = 0;
    for (unsigned seed = 0; seed < 1500; ++seed) {
        AnyText any(seed);
        const std::string text = any.text();
        if (read_tree(text).fault) continue;
        const std::string path = PATHS[any.below(std::size(PATHS))], written = any.value();
        SCOPED_TRACE("seed " + std::to_string(seed) + ", " + path + " = " + written + "\n" + text);
        try {
            const std::string after = put(text, path, written);
            ++put_count;
            // The trees are compared by the change itself; here the bytes around the value.
            const std::string_view before = value_at(text, read_tree(text).root, path);
            EXPECT_GE(kept(text, after) + before.size(), text.size()) << after;
            const TomlTree tree = read_tree(after);
            ASSERT_FALSE(tree.fault);
            EXPECT_EQ(value_at(after, tree.root, path), written);
            EXPECT_EQ(put(put(after, path, "77"), path, written), after);
        } catch (const EditRefused&) {
        }
        try {
            const std::string after = drop(text, path);
            if (after != text) ++removed;
        } catch (const EditRefused&) {
        }
    }
    EXPECT_GT(put_count, 700u);
    EXPECT_GT(removed, 100u);
}

// Files with bytes that are missing, doubled or others: read or refused, changed or refused.
TEST(TomlEdit, AnyBytesAreReadOrRefused) {
    std::ifstream file(std::string(TARVANE_SOURCE_DIR) + "/examples/v101.toml", std::ios::binary);
    std::ostringstream bytes;
    bytes << file.rdbuf();
    const std::string whole = bytes.str();
    ASSERT_GT(whole.size(), 1000u);
    std::mt19937 random(1);
    const auto below = [&random](std::size_t n) {
        return std::uniform_int_distribution<std::size_t>(0, n - 1)(random);
    };
    static constexpr std::string_view PIECES[] = {"[",    "]",        "{",  "}",      "\"", "'",
                                                  "#",    "\n",       "\r", ",",      "=",  ".",
                                                  "\xFF", "\xC3\xA9", "[[", "\"\"\"", "\\", " "};
    std::size_t changed = 0;
    for (int i = 0; i < 1500; ++i) {
        std::string text = whole.substr(0, below(8) == 0 ? below(whole.size()) : whole.size());
        for (std::size_t k = 1 + below(3); k > 0 && !text.empty(); --k) {
            const std::size_t at = below(text.size());
            if (below(2) == 0)
                text.erase(at, 1 + below(20));
            else
                text.insert(at, PIECES[below(std::size(PIECES))]);
        }
        for (const char* const path :
             {"vessel.P", "flange[0].gasket.Go", "flange[0].new", "shell[1]"}) {
            try {
                const std::string after = below(2) == 0 ? drop(text, path) : put(text, path, "7");
                changed += after == text ? 0 : 1;
                EXPECT_FALSE(read_tree(after).fault) << text;
            } catch (const EditRefused&) {
            }
        }
    }
    EXPECT_GT(changed, 1000u);
}

} // namespace

} // namespace tarvane::app
