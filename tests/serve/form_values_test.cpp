#include "serve/form_values.h"

#include <gtest/gtest.h>

#include <map>

namespace tarvane::app {

namespace {

const std::string TEXT = R"(tarvane = 1
units = "SI"
P = 5

[document]
project = "p"
revisions = [{ revision = "A" }, { revision = "B", date = "2026" }]

[vessel]
P = 150
liquid = { density = 1, level = 2 }
colour = "red"

[[shell]]
description = "Shell"
material = "SA-516 70"

[[flange]]
gasket = { m = 3, type = "spiral" }
standard = { class = 150 }
y = 10

[[flange]]
g0 = 1
)";

const Key* key_of_field(std::string_view path) { return key_at(*path_named(path)); }

std::string where(std::string_view path, std::string_view text = TEXT) {
    const TomlTree tree = read_tree(text);
    EXPECT_FALSE(tree.fault);
    std::string name;
    for (const TomlStep& step : written_path(tree.root, *path_named(path))) {
        if (const auto* part = std::get_if<std::string>(&step))
            name += (name.empty() ? "" : ".") + *part;
        else
            name += '[' + std::to_string(std::get<std::size_t>(step)) + ']';
    }
    return name;
}

std::map<std::string, std::string> names_of(const GivenFields& given) {
    std::map<std::string, std::string> names;
    for (const GivenField& field : given.fields)
        names[field.name] =
            TEXT.substr(field.node->at.begin, field.node->at.end - field.node->at.begin);
    for (const std::string& name : given.unknown)
        names[name] = "unknown";
    return names;
}

using Names = std::map<std::string, std::string>;

TEST(FormValues, TheFieldsOfATextByTheirKeys) {
    const TomlTree tree = read_tree(TEXT);
    const TomlNode& root = tree.root;
    EXPECT_EQ(names_of(given_in_head(root)),
              (Names{{"tarvane", "1"}, {"units", "\"SI\""}, {"P", "5"}}));
    EXPECT_EQ(
        names_of(given_in_vessel(*root.member("vessel"))),
        (Names{
            {"P", "150"}, {"liquid.density", "1"}, {"liquid.level", "2"}, {"colour", "unknown"}}));
    EXPECT_EQ(names_of(given_in_document(*root.member("document"))),
              (Names{{"project", "\"p\""},
                     {"revisions[0].revision", "\"A\""},
                     {"revisions[1].revision", "\"B\""},
                     {"revisions[1].date", "\"2026\""}}));
    const std::vector<WrittenComponent> components = components_in(root);
    ASSERT_EQ(components.size(), 3u);
    EXPECT_EQ(components[0].path(), "shell[0]");
    EXPECT_EQ(components[1].path(), "flange[0]");
    EXPECT_EQ(components[2].path(), "flange[1]");
    EXPECT_EQ(
        names_of(given_in(*components[1].node, *components[1].kind)),
        (Names{{"m", "3"}, {"gasket.type", "\"spiral\""}, {"standard.class", "150"}, {"y", "10"}}));
}

TEST(FormValues, AKeyOfEachPath) {
    EXPECT_EQ(key_of_field("flange[3].P")->name, "P");
    EXPECT_EQ(key_of_field("flange[0].standard.class")->name, "standard.class");
    EXPECT_EQ(key_of_field("flange[0].gasket.m")->name, "m");
    EXPECT_EQ(key_of_field("vessel.liquid.level")->name, "liquid.level");
    EXPECT_EQ(key_of_field("vessel.material")->name, "material");
    EXPECT_EQ(key_of_field("document.project")->quantity, Quantity::text);
    EXPECT_EQ(key_of_field("document.revisions[0].date")->quantity, Quantity::text);
    EXPECT_EQ(key_of_field("P")->name, "P");
    for (const std::string_view none :
         {"units", "flange[0].none", "flange[0]", "flange.P", "vessel.none", "document.none",
          "document.revisions[0].none", "flange[0].standard.none", "none"})
        EXPECT_EQ(key_of_field(none), nullptr) << none;
}

TEST(FormValues, AFieldIsFoundUnderTheNameThatTheTextHas) {
    EXPECT_EQ(where("flange[0].m"), "flange[0].gasket.m");
    EXPECT_EQ(where("flange[0].y"), "flange[0].y");
    EXPECT_EQ(where("flange[0].Go"), "flange[0].gasket.Go"); // the table is there
    EXPECT_EQ(where("flange[1].Go"), "flange[1].Go");
    EXPECT_EQ(where("flange[1].gasket.type"), "flange[1].gasket.type");
    EXPECT_EQ(where("flange[0].standard.size"), "flange[0].standard.size");
    EXPECT_EQ(where("flange[9].m"), "flange[9].m");
    EXPECT_EQ(where("vessel.liquid.level"), "vessel.liquid.level");
    EXPECT_EQ(where("units"), "units");
    // Second names.
    for (const ElementKind* kind : element_kinds()) {
        for (const Alias& alias : kind->keys.aliases) {
            const std::string table(kind->table),
                text = "[[" + table + "]]\n" + std::string(alias.other) + " = 1\n",
                path = table + "[0]." + std::string(alias.ours);
            EXPECT_EQ(where(path, text), table + "[0]." + std::string(alias.other)) << path;
        }
    }
}

TEST(FormValues, WhatIsTypedIsWrittenAsTheKeyNeedsIt) {
    const Key* number = key_of_field("flange[0].P");
    const std::pair<const char*, const char*> NUMBERS[] = {{"160", "160"},
                                                           {" 1.50 ", "1.50"},
                                                           {"0,5", "0.5"},
                                                           {".5", "0.5"},
                                                           {",25", "0.25"},
                                                           {"3.", "3.0"},
                                                           {"-.5", "-0.5"},
                                                           {"+2", "2"},
                                                           {"007", "7"},
                                                           {"00.5", "0.5"},
                                                           {"0", "0"},
                                                           {"1e5", "1e5"},
                                                           {"1.E-3", "1.0e-3"},
                                                           {"0,125", "0.125"},
                                                           {"10,5", "10.5"},
                                                           {"1234,567", "1234.567"},
                                                           {"1,500", "\"1,500\""},
                                                           {"12,500", "\"12,500\""},
                                                           {"1.2.3", "\"1.2.3\""},
                                                           {"10 bar", "\"10 bar\""},
                                                           {"1 1/2 in", "\"1 1/2 in\""},
                                                           {"ten", "\"ten\""},
                                                           {"inf", "\"inf\""},
                                                           {"nan", "\"nan\""},
                                                           {"-", "\"-\""},
                                                           {".", "\".\""},
                                                           {"1e", "\"1e\""},
                                                           {"0x10", "\"0x10\""},
                                                           {"\"", "\"\\\"\""},
                                                           {"1_000", "\"1_000\""},
                                                           {"full vacuum", "\"full vacuum\""},
                                                           {"", ""},
                                                           {"  ", ""}};
    for (const auto& [typed, written] : NUMBERS)
        EXPECT_EQ(typed_value(typed, number), written) << typed;
    const Key* text = key_of_field("flange[0].description");
    EXPECT_EQ(typed_value("160", text), "\"160\"");
    EXPECT_EQ(typed_value(" N1\t", text), "\"N1\"");
    const Key* choice = key_of_field("flange[0].facing");
    EXPECT_EQ(typed_value("1a", choice), "\"1a\"");
    const Key* flag = key_of_field("flange[0].rigidity");
    EXPECT_EQ(typed_value("Yes", flag), "true");
    EXPECT_EQ(typed_value("false", flag), "false");
    EXPECT_EQ(typed_value("perhaps", flag), "\"perhaps\"");
    const Key* designation = key_of_field("flange[0].standard.class");
    EXPECT_EQ(typed_value("300", designation), "300");
    EXPECT_EQ(typed_value("PN16", designation), "\"PN16\"");
    const Key* waivers = key_of_field("shell[0].waive");
    EXPECT_EQ(typed_value("crown_radius, knuckle_radius,", waivers),
              "[\"crown_radius\", \"knuckle_radius\"]");
    EXPECT_EQ(typed_value("SI", nullptr), "\"SI\"");
    EXPECT_EQ(typed_value("true", nullptr), "true");
}

// Whatever is typed, the text stays TOML with that field alone changed, or the edit is refused.
TEST(FormValues, NothingThatIsTypedLeavesItsField) {
    for (const char* const typed :
         {"\"\n[vessel]\nP = 1", "'''", "\"\"\"", "1 # x", "1\ny = 2", "{ a = 1 }", "[1]", "\\",
          "\\u0000", "\x01\x7F", "°", "true", "1979-05-27"}) {
        for (const char* const path : {"flange[0].P", "flange[0].description", "vessel.P"}) {
            const std::string written = typed_value(typed, key_of_field(path));
            const std::string after = with_written(TEXT, *path_named(path), written);
            EXPECT_EQ(without(after, *path_named(path)), without(TEXT, *path_named(path)))
                << typed << " in " << path;
        }
    }
}

} // namespace

} // namespace tarvane::app
