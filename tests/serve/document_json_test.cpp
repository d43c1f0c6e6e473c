#include "serve/document_json.h"

#include "app_fixture.h"
#include "catalogue/data_folder.h"
#include "components/calculation.h"
#include "document/checks_table.h"
#include "serve/refused.h"
#include "serve/vocabulary_json.h"
#include "values/json.h"

#include <gtest/gtest.h>

namespace tarvane::app {

namespace {

Value parsed(const std::string& json) {
    Faults faults;
    std::optional<Value> tree = read_json(json, faults);
    EXPECT_TRUE(tree) << json;
    return tree.value_or(Value(Table()));
}

// "components[0].path" of a tree; null without it.
const Value& at(const Value& tree, std::string_view path) {
    static const Value NONE;
    const Value* value = &tree;
    while (!path.empty()) {
        if (path.front() == '[') {
            const auto place = static_cast<std::size_t>(std::stoul(std::string(path.substr(1))));
            if (value->list() == nullptr || place >= value->list()->size()) return NONE;
            value = &(*value->list())[place];
            path.remove_prefix(path.find(']') + 1);
        } else {
            if (path.front() == '.') path.remove_prefix(1);
            const std::size_t end = std::min(path.find_first_of(".["), path.size());
            const Table* table = value->table();
            value = table == nullptr ? nullptr : table->find(path.substr(0, end));
            if (value == nullptr) return NONE;
            path.remove_prefix(end);
        }
    }
    return *value;
}
std::string text_at(const Value& tree, std::string_view path) {
    const Value& value = at(tree, path);
    return value.text() != nullptr ? *value.text() : value.shown();
}

class DocumentJson : public ProgramTest {
  protected:
    DocumentJson() { set_data_folder(std::string(TARVANE_DATA_DIR)); }

    RatingMemory memory;

    std::string result_of(const std::string& toml, const std::string& component) {
        return result_json_of(toml, component, memory);
    }

    const std::string vessel = read(std::string(TARVANE_SOURCE_DIR) + "/examples/v101.toml");
};

TEST_F(DocumentJson, AResultSaysWhatTheRunSays) {
    const Value result = parsed(result_of(vessel, "flange[0]"));
    ReadResult input = read_input(vessel);
    ASSERT_TRUE(input.faults.empty());
    const Calculation calculation = calculate(input.request);
    EXPECT_EQ(text_at(result, "verdict"), "pass");
    ASSERT_EQ(at(result, "components").list()->size(), calculation.calculated.size());
    for (std::size_t i = 0; i < calculation.calculated.size(); ++i) {
        const auto& [element, outcome] = calculation.calculated[i];
        const std::string entry = "components[" + std::to_string(i) + "]";
        Checks checks = element->checks(*outcome, input.request.units);
        sort_worst_first(checks);
        EXPECT_EQ(text_at(result, entry + ".path"), path_of(*element));
        EXPECT_EQ(text_at(result, entry + ".says"), words_of(checks, input.request.units));
        EXPECT_EQ(text_at(result, entry + ".verdict"), verdict_of(calculation.verdicts[i], checks));
        EXPECT_EQ(*at(result, entry + ".implied").flag(), element->kind->table == "mdmt");
        if (path_of(*element) != "flange[0]") continue;
        const ChecksTable table = checks_table(*element, *outcome, input.request.units);
        ASSERT_EQ(at(result, "component.checks").list()->size(), table.rows.size());
        for (std::size_t k = 0; k < table.rows.size(); ++k) {
            const std::string row = "component.checks[" + std::to_string(k) + "]";
            EXPECT_EQ(text_at(result, row + ".label"), table.rows[k].label);
            EXPECT_EQ(text_at(result, row + ".demand"), table.rows[k].demand);
            EXPECT_EQ(text_at(result, row + ".shown_ratio"), table.rows[k].ratio);
            EXPECT_EQ(text_at(result, row + ".remark"), table.rows[k].remark);
            EXPECT_EQ(text_at(result, row + ".state"), table.rows[k].state);
        }
    }
    EXPECT_EQ(text_at(result, "component.inputs.P.from"), "file, 1.81 psig of liquid");
    EXPECT_TRUE(text_at(result, "component.drawing.svg").starts_with("<svg"));
    EXPECT_EQ(text_at(result, "component.drawing.svg").find(" style="), std::string::npos);
    EXPECT_NE(text_at(result, "component.calculation").find("<pre"), std::string::npos);
    EXPECT_TRUE(text_at(result, "outline.svg").starts_with("<svg"));
    EXPECT_FALSE(at(result, "summary").list()->empty());
}

TEST_F(DocumentJson, WithoutAComponentTheOneThatGovernsIsShown) {
    const Value result = parsed(result_of(vessel, ""));
    EXPECT_EQ(text_at(result, "component.path"), text_at(result, "governing.component"));
    const Value gone = parsed(result_of(vessel, "flange[99]"));
    EXPECT_EQ(text_at(gone, "component.path"), text_at(gone, "governing.component"));
}

TEST_F(DocumentJson, FaultsNameTheirFields) {
    std::string wrong = vessel;
    wrong.replace(wrong.find("P = 150"), 7, "P = \"x\"");
    const Value result = parsed(result_of(wrong, "flange[0]"));
    EXPECT_EQ(text_at(result, "verdict"), "faulty");
    EXPECT_EQ(text_at(result, "faults[0].path"), "vessel.P");
    EXPECT_TRUE(at(result, "component").null());
    EXPECT_EQ(at(result, "components").list()->size(), 7u);
    EXPECT_EQ(text_at(result, "components[0].name"), "shell 1 (Shell)");
    const Value none = parsed(result_of("P = \n", ""));
    EXPECT_EQ(text_at(none, "verdict"), "faulty");
    EXPECT_EQ(at(none, "faults[0].line").number(), 1.0);
    const Value empty = parsed(result_of("tarvane = 1\n", ""));
    EXPECT_EQ(text_at(empty, "verdict"), "faulty");
}

// Two calculations after each other give the same, whatever was calculated between them.
TEST_F(DocumentJson, AResultDependsOnItsTextAlone) {
    const std::string first = result_of(vessel, "flange[0]");
    result_of(FLANGE_TOML, "");
    result_of("P = \n", "");
    EXPECT_EQ(result_of(vessel, "flange[0]"), first);
}

// What is remembered of components is what would be found anew: after changes of themselves, of what they are linked
// with, of the vessel, and of their order.
TEST_F(DocumentJson, WhatIsRememberedIsWhatWouldBeFound) {
    const std::vector<std::vector<FieldEdit>> steps = {
        {{"flange[0].rigidity", "false", {}}},
        {{"vessel.P", "140", {}}},
        {{"shell[0].D", "61", {}}},                // of the heads that are on it
        {{"flange[1].standard.class", "300", {}}}, // of its mate, too
        {{"shell[3].t", "0.5", {}}},               // of the flange that is attached to it
        {{"shell[3].elevation", "10", {}}},
        {{"shell[3].description", "N9 neck", {}}, {"flange[0].attached_to", "N9 neck", {}}},
        {{"shell[1]", {}, {}}},
        {{"vessel.liquid.level", "100 in", {}}},
        {{"units", "SI", {}}},
        {{"units", "US", {}}}};
    std::string text = vessel;
    result_of(text, "");
    for (const std::vector<FieldEdit>& step : steps) {
        text = edited(text, step);
        for (const char* const component : {"flange[0]", "shell[1]"}) {
            RatingMemory none;
            EXPECT_EQ(result_of(text, component), result_json_of(text, component, none))
                << step[0].path << ' ' << component;
        }
    }
}

TEST_F(DocumentJson, AStateHasTheFieldsOfItsText) {
    write("v.toml", vessel);
    Workbench workbench(folder);
    OpenDocument& document = workbench.open_named("v.toml");
    const Value state = parsed(state_json(workbench, document));
    EXPECT_EQ(text_at(state, "name"), "v.toml");
    EXPECT_EQ(text_at(state, "text"), vessel);
    EXPECT_EQ(text_at(state, "units"), "US");
    EXPECT_EQ(text_at(state, "on_disk"), "same");
    EXPECT_TRUE(*at(state, "newer").flag());
    EXPECT_TRUE(at(state, "syntax").null());
    EXPECT_EQ(text_at(state, "about.given.project.value"), "Condensate recovery");
    EXPECT_EQ(text_at(state, "vessel.given.P.written"), "150");
    EXPECT_EQ(at(state, "vessel.given.P.line").number(), 14.0);
    EXPECT_EQ(text_at(state, "components[4].path"), "flange[0]");
    EXPECT_EQ(text_at(state, "components[4].description"), "N1 flange");
    const Table* given = at(state, "components[4].given").table();
    ASSERT_NE(given, nullptr);
    EXPECT_NE(given->find("standard.class"), nullptr);
    EXPECT_NE(given->find("Go"), nullptr);

    // What is no UTF-8 can't be shown, and stays in the file.
    write("w.toml", "# \xff\nP = 1\n");
    const OpenDocument& western = workbench.open_named("w.toml");
    const Value shown = parsed(state_json(workbench, western));
    EXPECT_FALSE(at(shown, "syntax").null());
    EXPECT_EQ(western.text(), "# \xff\nP = 1\n");

    document.put("P = \n");
    const Value broken = parsed(state_json(workbench, document));
    EXPECT_EQ(at(broken, "syntax.line").number(), 1.0);
    EXPECT_TRUE(at(broken, "components").list()->empty());
    EXPECT_FALSE(*at(broken, "saved").flag());
}

TEST_F(DocumentJson, WhatChangedIsShownAsInputsResultsAndLines) {
    std::string after = vessel;
    after.replace(after.find("P = 150"), 7, "P = 600");
    const Value changed = parsed(comparison_json(vessel, after));
    EXPECT_FALSE(*at(changed, "same").flag());
    EXPECT_FALSE(at(changed, "inputs").list()->empty());
    EXPECT_FALSE(at(changed, "verdicts").list()->empty());
    ASSERT_EQ(at(changed, "lines").list()->size(), 6u);
    EXPECT_EQ(text_at(changed, "lines[2].sign"), "-");
    EXPECT_EQ(text_at(changed, "lines[3].sign"), "+");
    const Value same = parsed(comparison_json(vessel, vessel));
    EXPECT_TRUE(*at(same, "same").flag());
    EXPECT_TRUE(at(same, "lines").list()->empty());
    const Value faulty = parsed(comparison_json(vessel, vessel + "x = 1\n"));
    EXPECT_FALSE(*at(faulty, "same").flag());
    EXPECT_EQ(at(faulty, "lines").list()->size(), 3u);
    EXPECT_NE(text_at(faulty, "says").find("x"), std::string::npos);
}

TEST_F(DocumentJson, EveryKeyIsAField) {
    const Value fields = parsed(fields_json());
    const List& kinds = *at(fields, "kinds").list();
    ASSERT_EQ(kinds.size(), element_kinds().size());
    for (std::size_t i = 0; i < kinds.size(); ++i) {
        const List& keys = *at(kinds[i], "keys").list();
        ASSERT_EQ(keys.size(), element_kinds()[i]->keys.keys.size());
        for (std::size_t k = 0; k < keys.size(); ++k) {
            const Key& key = element_kinds()[i]->keys.keys[k];
            EXPECT_EQ(text_at(keys[k], "name"), key.name);
            EXPECT_EQ(text_at(keys[k], "meaning"), key.meaning);
            EXPECT_EQ(at(keys[k], "required").null(), !key.needed);
        }
    }
    const auto field = [&](std::string_view kind, std::string_view name) -> const Value& {
        static const Value NONE;
        for (const Value& each : kinds) {
            if (text_at(each, "name") != kind) continue;
            for (const Value& key : *at(each, "keys").list()) {
                if (*key.table()->find("name")->text() == name) return key;
            }
        }
        return NONE;
    };
    EXPECT_EQ(text_at(field("shell", "E"), "default.US"), "1");
    EXPECT_EQ(text_at(field("flange", "T"), "units.SI"), "°C");
    EXPECT_EQ(text_at(field("flange", "standard.class"), "picker"), "flanges");
    EXPECT_EQ(text_at(field("flange", "gasket.type"), "picker"), "gaskets");
    EXPECT_EQ(text_at(field("flange", "material"), "picker"), "materials");
    EXPECT_TRUE(*at(field("flange", "attached_to"), "link").flag());
    EXPECT_TRUE(at(field("flange", "P"), "link").null());
    const Value& units = at(field("flange", "P"), "value_units");
    ASSERT_NE(units.list(), nullptr);
    EXPECT_TRUE(std::any_of(units.list()->begin(), units.list()->end(),
                            [](const Value& unit) { return *unit.text() == "bar"; }));
}

// What a row of a catalogue fills is accepted by the reader.
TEST_F(DocumentJson, RowsOfTheCataloguesFillTheirFields) {
    const auto rows = [](std::string_view name, const CatalogueQuery& query) {
        const Value all = parsed(catalogue_json(name, query));
        return *at(all, "rows").list();
    };
    const auto faults_with = [](const Value& row, std::string text) {
        std::vector<FieldEdit> edits;
        for (const Table::Entry& fill : *at(row, "fills").table())
            edits.push_back({"flange[0]." + fill.key, {}, fill.value});
        text = edited(std::move(text), edits);
        const ReadResult input = read_input(text);
        return input.faults.empty() ? std::string() : fault_line("f", input.faults.front()) + text;
    };
    const List materials = rows("materials", {.words = "516 70", .units = "US"});
    ASSERT_EQ(materials.size(), 1u);
    EXPECT_EQ(text_at(materials[0], "name"), "SA-516 70");
    EXPECT_EQ(text_at(materials[0], "detail"), "Plate; 20000.00 psi at 100 °F, to 1000 °F");
    EXPECT_EQ(faults_with(materials[0], with("Sfo", "", with("Sfa", ""))), "");
    const List bolting =
        rows("materials", {.words = "B7", .units = "US", .code = "VIII-1", .key = "bolt_material"});
    ASSERT_FALSE(bolting.empty());
    int of_one_name = 0;
    for (const Value& row : bolting)
        of_one_name +=
            text_at(row, "name") == "SA-193 B7" && at(row, "fills.bolt_reference").whole();
    EXPECT_GT(of_one_name, 1);
    EXPECT_EQ(faults_with(bolting[0], with("Sb", "", with("Sa", ""))), "");
    EXPECT_TRUE(rows("materials", {.words = "no such steel"}).empty());

    for (const char* const query : {"class 300 NPS 6", "PN16 DN 100", "150 26 A"}) {
        const List flanges = rows("flanges", {.words = query});
        ASSERT_FALSE(flanges.empty()) << query;
        for (const Value& row : flanges)
            EXPECT_EQ(faults_with(row, FLANGE_TOML), "") << text_at(row, "name");
    }
    for (const Value& row : rows("gaskets", CatalogueQuery()))
        EXPECT_EQ(faults_with(row, with("m", "", with("y", ""))), "") << text_at(row, "name");
    for (const char* const units : {"US", "SI"}) {
        const List bolts = rows("bolts", {.words = "", .units = units});
        ASSERT_FALSE(bolts.empty());
        const std::string head = "units = \"" + std::string(units) + "\"\n";
        for (const Value& row : bolts) {
            const std::string text =
                edited(head + FLANGE_TOML, {{"flange[0].bolting", {}, at(row, "fills.bolting")},
                                            {"flange[0].a", {}, at(row, "fills.a")}});
            for (const Fault& fault : read_input(text).faults) {
                EXPECT_NE(fault.key, "a") << text_at(row, "name") << fault.message;
                EXPECT_NE(fault.key, "bolting") << text_at(row, "name") << fault.message;
            }
        }
    }
    EXPECT_THROW(catalogue_json("none", CatalogueQuery()), RequestRefused);
}

} // namespace

} // namespace tarvane::app
