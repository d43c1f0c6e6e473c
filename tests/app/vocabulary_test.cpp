// One vocabulary: names on both sides of an alias, keys that hold for every component, where values come
// from, and the commands that describe keys.
#include "app_fixture.h"

#include "catalogue/data_folder.h"
#include "components/external_input.h"
#include "components/mdmt_input.h"
#include "components/shell_input.h"
#include "document/new_files.h"
#include "document/vocabulary.h"
#include "surface/schema.h"

namespace tarvane::app {

using namespace vessel;
namespace {

const std::string SHELL =
    "[[shell]]\nkind = \"cylinder\"\nP = 100\nT = 300\nS = 20000\nSa = 20000\n"
    "D = 60\nt = 1\n";
const std::string EXTERNAL = "[[external]]\nkind = \"sphere\"\nP_external = 15\nT = 300\n"
                             "chart = \"CS-2\"\nD = 60\nt = 1\n";
const std::string MDMT = "[[mdmt]]\ncurve = \"B\"\ntg = 1\n";

std::vector<std::string> one(const std::string& fault) { return {fault}; }

// The number of a key in the first element of a kind.
float number(const std::string& toml, std::string_view table, std::string_view key) {
    const ReadResult read = read_input(toml);
    EXPECT_TRUE(read.faults.empty()) << fault_line("f", read.faults.front());
    for (const auto& element : read.request.elements)
        if (element->kind->table == table)
            return element->number_of(*element->kind->keys.find(key));
    ADD_FAILURE() << table << '.' << key;
    return -1.0f;
}

const char* const OLDER = "";
const char* const NEWER = "tarvane = 1\n";

// ---- aliases -----------------------------------------------------------------------------------------

TEST(Aliases, AreTakenInEveryTable) {
    for (const char* form : {OLDER, NEWER}) {
        for (const std::string name : {"c", "ci"}) {
            const std::string line = name + " = 0.125\n";
            EXPECT_EQ(number(form + FLANGE_TOML + line, "flange", "ci"), 0.125f);
            EXPECT_EQ(number(form + SHELL + line, "shell", "ci"), 0.125f);
            EXPECT_EQ(number(form + EXTERNAL + line, "external", "ci"), 0.125f);
            EXPECT_EQ(number(form + MDMT + line, "mdmt", "ci"), 0.125f);
        }
        EXPECT_EQ(number(form + with("P_external", "P = 7", EXTERNAL), "external", "P_external"),
                  7.0f);
        const std::string cone = with("kind", "kind = \"cone\"\nalpha = 30", SHELL);
        for (const std::string name : {"D_small", "Dsmall"})
            EXPECT_EQ(number(form + cone + name + " = 30\n", "shell", "Dsmall"), 30.0f);
    }
    EXPECT_EQ(fault_lines(SHELL + "ci = 0.1\nc = 0.1\n"),
              one("f:10: c: given as ci, too; one of them is expected"));
    EXPECT_EQ(fault_lines(EXTERNAL + "P = 15\n"),
              one("f:8: P: given as P_external, too; one of them is expected"));
}

// Names are those of the table to the letter.
TEST(Aliases, KeepTheirCase) {
    EXPECT_EQ(fault_lines(SHELL + "CI = 0.1\n").size(), 1u);
    EXPECT_EQ(fault_lines(EXTERNAL + "p_external = 1\n").size(), 1u);
}

TEST(Aliases, AtTheHeadOfOlderFilesReachWhomTheyAlwaysDid) {
    const std::string both = FLANGE_TOML + SHELL;
    EXPECT_EQ(number("ci = 0.125\n" + both, "flange", "ci"), 0.125f);
    EXPECT_EQ(number("ci = 0.125\n" + both, "shell", "ci"), 0.0f);
    EXPECT_EQ(number("ci = 0.125\n" + SHELL, "shell", "ci"), 0.125f);
    EXPECT_EQ(number("c = 0.125\n" + both, "shell", "ci"), 0.125f);
    EXPECT_EQ(number("c = 0.125\n" + both, "flange", "ci"), 0.0f);
    const std::string vacuum = with("P_external", "", EXTERNAL);
    EXPECT_EQ(number("P = 9\n" + vacuum, "external", "P_external"), 9.0f);
    EXPECT_EQ(number("P_external = 9\n" + vacuum, "external", "P_external"), 9.0f);
}

TEST(Aliases, OfNewerFilesHoldForEveryComponent) {
    const std::string both = FLANGE_TOML + SHELL;
    const std::string vacuum = with("P_external", "", EXTERNAL);
    for (const std::string head : {"tarvane = 1\n", "[vessel]\n", "tarvane = 1\n[vessel]\n"}) {
        for (const std::string name : {"c", "ci"}) {
            EXPECT_EQ(number(head + name + " = 0.125\n" + both, "flange", "ci"), 0.125f);
            EXPECT_EQ(number(head + name + " = 0.125\n" + both, "shell", "ci"), 0.125f);
        }
        EXPECT_EQ(number(head + "P_external = 9\n" + vacuum, "external", "P_external"), 9.0f);
        // The internal pressure of the vessel is none from outside.
        const std::vector<std::string> faults = fault_lines(head + "P = 9\n" + SHELL + vacuum);
        ASSERT_EQ(faults.size(), 1u) << head;
        EXPECT_NE(faults[0].find("P_external: missing in external 1"), std::string::npos);
    }
}

// ---- what holds for every component -----------------------------------------------------------------------

TEST(Vessel, AndHeadOfTheFileAreOneThing) {
    const ReadResult twice = read_input("E = 0.85\n[vessel]\nE = 0.85\n" + SHELL);
    ASSERT_EQ(twice.faults.size(), 1u);
    EXPECT_EQ(fault_line("f", twice.faults[0]),
              "f:3: E: given at the head of the file, too; one of them is expected");
    EXPECT_EQ(twice.faults[0].path, "vessel.E");
    EXPECT_EQ(number("[vessel]\nE = 0.85\n" + SHELL, "shell", "E"), 0.85f);
    EXPECT_EQ(number("[vessel]\nE = 0.85\n" + SHELL + "E = 1\n", "shell", "E"), 1.0f);
}

TEST(Vessel, KeepsItsDescription) {
    const auto description = [](const std::string& toml) {
        return read_input(toml).request.elements.at(0)->description();
    };
    EXPECT_EQ(description("description = \"all\"\n" + SHELL), "all"); // an older file
    EXPECT_EQ(description("tarvane = 1\ndescription = \"all\"\n" + SHELL), "");
    EXPECT_EQ(description("[vessel]\ndescription = \"all\"\n" + SHELL), "");
    EXPECT_EQ(description("[vessel]\ndescription = \"all\"\n" + SHELL + "description = \"own\"\n"),
              "own");
}

TEST(Vessel, GasketIsAnotherWayOfWriting) {
    const std::string flat = with("m", "", FLANGE_TOML);
    EXPECT_EQ(number(flat + "gasket = { m = 2.5 }\n", "flange", "m"), 2.5f);
    EXPECT_EQ(fault_lines(FLANGE_TOML + "gasket = { m = 3 }\n"),
              one("f:27: gasket.m: given as m, too; one of them is expected"));
    EXPECT_EQ(number("[vessel]\ngasket = { m = 2.5 }\n" + flat, "flange", "m"), 2.5f);
}

TEST(Vessel, FormOfTheFileIsNamed) {
    EXPECT_TRUE(fault_lines("tarvane = 1\n" + SHELL).empty());
    EXPECT_EQ(fault_lines("tarvane = 2\n" + SHELL),
              one("f:1: tarvane: 1, the form of the file, is expected, not 2"));
}

// ---- external corrosion ------------------------------------------------------------------------------------

const std::string ADVICE =
    "shells and heads are not calculated with external corrosion: take it off t, "
    "or add it to Ut, the tolerance, which comes off the outside";

TEST(ExternalCorrosion, OfAShellIsAFault) {
    EXPECT_EQ(fault_lines(SHELL + "ce = 0.1\n"), one("f:9: ce: unknown key; " + ADVICE));
    EXPECT_EQ(fault_lines(EXTERNAL + "ce = 0\n"), one("f:8: ce: unknown key; " + ADVICE));
    EXPECT_EQ(number(MDMT + "ce = 0.1\n", "mdmt", "ce"), 0.1f);
    EXPECT_EQ(number(FLANGE_TOML + "ce = 0.1\n", "flange", "ce"), 0.1f);
}

TEST(ExternalCorrosion, OfTheVesselKeepsShellsFromPassing) {
    set_data_folder(TARVANE_DATA_DIR);
    for (const std::string head : {"", "tarvane = 1\n", "[vessel]\n"}) {
        for (const std::string& toml : {SHELL, EXTERNAL}) {
            const auto verdict = [&](const std::string& line) {
                const ReadResult read = read_input(head + line + toml);
                EXPECT_TRUE(read.faults.empty()) << fault_line("f", read.faults.front());
                const Element& element = *read.request.elements.at(0);
                const auto outcome = element.calculate(read.request);
                const Checks checks = element.checks(*outcome, read.request.units);
                const Verdict found = element.judge(*outcome, read.request.units);
                EXPECT_EQ(all_pass(checks), found.status == Status::fine);
                EXPECT_EQ(std::count_if(checks.begin(), checks.end(),
                                        [](const Check& check) {
                                            return check.field().id == "external_corrosion" &&
                                                   check.state() == State::not_made;
                                        }),
                          found.status == Status::fine ? 0 : 1);
                return found;
            };
            EXPECT_EQ(verdict("ce = 0\n").status, Status::fine);
            const Verdict kept = verdict("ce = 0.1\n");
            EXPECT_EQ(kept.status, Status::fails);
            EXPECT_EQ(
                kept.reasons,
                one("not made: external corrosion; ce applies to every component; " + ADVICE));
        }
        EXPECT_EQ(number(head + "ce = 0.1\n" + MDMT + SHELL, "mdmt", "ce"), 0.1f);
    }
    EXPECT_EQ(fault_lines("ce = true\n" + SHELL),
              one("f:1: ce: a number in in. is expected, not true (external corrosion allowance)"));
}

// ---- where values come from --------------------------------------------------------------------------------

std::string origin(const std::string& toml, std::string_view key) {
    const ReadResult read = read_input(toml);
    EXPECT_TRUE(read.faults.empty()) << fault_line("f", read.faults.front());
    return read.faults.empty() ? read.request.elements[0]->origins.at(key).from : "";
}

TEST(Origins, OfEveryKeyAreKnown) {
    set_data_folder(TARVANE_DATA_DIR);
    for (const std::string& toml : {FLANGE_TOML, SHELL, EXTERNAL, MDMT}) {
        const ReadResult read = read_input(toml);
        ASSERT_TRUE(read.faults.empty());
        const Element& element = *read.request.elements[0];
        EXPECT_EQ(element.origins.size(), element.kind->keys.keys.size());
        for (const auto& [key, from] : element.origins) {
            EXPECT_FALSE(from.from.empty()) << key;
            if (from.from.starts_with("not read")) continue;
            EXPECT_EQ(from.given.null(), from.from != "file") << key << ": " << from.from;
        }
    }
}

TEST(Origins, NameFileDefaultAndCondition) {
    set_data_folder(TARVANE_DATA_DIR);
    EXPECT_EQ(origin(SHELL, "D"), "file");
    EXPECT_EQ(origin("E = 0.7\n" + SHELL, "E"), "file");
    EXPECT_EQ(origin(SHELL, "E"), "default");
    EXPECT_EQ(origin(SHELL, "alpha"), "not read: kind cylinder");
    EXPECT_EQ(origin(FLANGE_TOML + "column = \"II\"\n", "column"), "not read: facing 1a");
    EXPECT_EQ(origin(with("facing", "facing = \"2\"") + "column = \"II\"\n", "column"), "file");
    EXPECT_EQ(origin(FLANGE_TOML, "lp"), "not read: partition_gasket false");
    EXPECT_EQ(origin(FLANGE_TOML, "P_operating"), "P");
    EXPECT_EQ(origin(MDMT, "normalized"), "not read: curve given");
    EXPECT_EQ(origin(SHELL + "P_external = 15\nchart = \"CS-2\"\nlength = 60\n", "external"),
              "P_external");
    const std::string head = with("kind", "kind = \"elliptical\"\nh = 20", SHELL);
    EXPECT_EQ(origin(head, "k"), "h");
    EXPECT_EQ(origin(with("kind", "kind = \"elliptical\"\nSy = 30000", SHELL), "Sy_cold"), "Sy");
}

TEST(Origins, NameTheMaterial) {
    set_data_folder(TARVANE_DATA_DIR);
    std::string flange = FLANGE_TOML;
    for (const char* key : {"Sfo", "Sfa", "Sb", "Sa"})
        flange = with(key, "", flange);
    flange += "material = \"sa 105\"\nbolt_material = \"SA-193 B7\"\nSfa = 20000\n";
    EXPECT_EQ(origin(flange, "Sfo"), "material SA-105 at 300 °F");
    EXPECT_EQ(origin(flange, "Sfa"), "file");
    for (const char* key : {"material_class", "chart", "chart_yield", "p_number"})
        EXPECT_EQ(origin(flange, key), "material SA-105") << key;
    EXPECT_EQ(origin(flange, "Sb"), "material SA-193 B7 at 300 °F");
    EXPECT_EQ(origin(flange, "Sa"), "material SA-193 B7 at 70 °F");
    EXPECT_EQ(origin(flange, "bolt_reference"), "material SA-193 B7");
    EXPECT_EQ(origin(flange + "chart = \"CS-1\"\n", "chart"), "file");
    const std::string shell =
        with("S", "",
             with("Sa", "material = \"SA-516 70\"", with("kind", "kind = \"elliptical\"", SHELL)));
    EXPECT_EQ(origin(shell, "S"), "material SA-516 70 at 300 °F");
    EXPECT_EQ(origin("units = \"SI\"\n[[shell]]\nkind = 1\nP = 1\nT = 150\nD = 1500\nt = 20\n"
                     "material = \"SA-516 70\"\n",
                     "S"),
              "material SA-516 70 at 150 °C");
    EXPECT_EQ(origin(shell, "Sy"), "material SA-516 70 at 300 °F");
    for (const char* key : {"material_class", "material_reference", "Sy_cold"})
        EXPECT_EQ(origin(shell, key), "material SA-516 70") << key;
    const std::string external = with("chart", "material = \"SA-516 70\"", EXTERNAL);
    EXPECT_EQ(origin(external, "chart"), "material SA-516 70");
    EXPECT_EQ(origin(external, "material_class"), "material SA-516 70");
    EXPECT_EQ(origin("[[mdmt]]\nmaterial = \"SA-516 70\"\ntg = 1\n", "curve"),
              "material SA-516 70");
}

TEST(Origins, NameTheStandard) {
    set_data_folder(TARVANE_DATA_DIR);
    std::string flange = FLANGE_TOML;
    for (const char* key : {"B", "A", "C", "n", "a", "Fod"})
        flange = with(key, "", flange);
    const std::string asme = flange + "standard = { class = 300, size = 12 }\n";
    EXPECT_EQ(origin(asme, "A"), "standard ASME B16.5 class 300 NPS 12");
    EXPECT_EQ(origin(asme, "n"), "standard ASME B16.5 class 300 NPS 12");
    EXPECT_EQ(origin(asme, "t"), "file");
    EXPECT_EQ(origin(asme, "standard.class"), "file");
}

// ---- commands ------------------------------------------------------------------------------------------

class Commands : public ProgramTest {};

TEST_F(Commands, AnswerForTheTablesBesideTheComponents) {
    const std::string density = "vessel.liquid.density: density of the liquid in the vessel\n"
                                "  Value         lbm/in³, kg/m³\n"
                                "  Required      with liquid\n";
    for (const char* name : {"liquid.density", "vessel.liquid.density"}) {
        const ProgramRun one = run(std::string("explain ") + name);
        EXPECT_EQ(one.status, 0);
        EXPECT_EQ(one.out, density);
    }
    for (const char* name : {"liquid", "vessel.liquid"}) {
        const ProgramRun both = run(std::string("explain ") + name);
        EXPECT_EQ(both.out.rfind(density, 0), 0u) << both.out;
        EXPECT_NE(both.out.find("\nvessel.liquid.level: "), std::string::npos) << both.out;
    }
    EXPECT_EQ(run("explain document.project").out, "document.project: project\n"
                                                   "  Value         text, 200\n");
    EXPECT_NE(run("explain revision").out.find("document.revisions.revision: "), std::string::npos);
    EXPECT_EQ(run("explain liquid.densit").status, 2);
    const ProgramRun vessel = run("keys vessel"), document = run("keys document");
    EXPECT_EQ(vessel.status, 0);
    EXPECT_NE(vessel.out.find("\nliquid.level "), std::string::npos);
    EXPECT_EQ(vessel.out.find("project"), std::string::npos);
    EXPECT_EQ(run("explain vessel").out, vessel.out);
    EXPECT_NE(document.out.find("\nproject "), std::string::npos);
    EXPECT_NE(document.out.find("[[document.revisions]]"), std::string::npos);
    EXPECT_EQ(run("keys flange").out.find("Keys of a [[shell]]"), std::string::npos);
    EXPECT_EQ(run("keys flanges").status, 2);
    const std::string all = run("keys").out;
    for (const ProgramRun& one : {vessel, document})
        EXPECT_NE(all.find(one.out), std::string::npos);
}

TEST_F(Commands, ExplainAKeyInEveryKindThatHasIt) {
    const ProgramRun t = run("explain t");
    EXPECT_EQ(t.status, 0);
    for (const char* line : {"flange.t: flange thickness\n", "shell.t: nominal thickness\n",
                             "external.t: nominal thickness\n"})
        EXPECT_NE(t.out.find(line), std::string::npos) << line;
    EXPECT_EQ(t.out.find("mdmt.t"), std::string::npos);
    for (const char* name : {"flange.t", "'flange[0].t'"}) {
        const ProgramRun one_kind = run(std::string("explain ") + name);
        EXPECT_EQ(one_kind.status, 0);
        EXPECT_EQ(one_kind.out, "flange.t: flange thickness\n"
                                "  Label         Flange thickness\n"
                                "  Symbol        t\n"
                                "  Value         in., mm\n"
                                "  Read          always\n"
                                "  Required      when kind is \"analyse\"\n"
                                "  Section       Flange\n"
                                "  Engine        record 8\n"
                                "\n"
                                "flange.results.t: Given thickness\n"
                                "  Value         in., mm\n");
    }
    EXPECT_EQ(explain("flange.checks.bolt_area").text,
              "flange.checks.bolt_area: bolt area\n"
              "  Paragraph     2-5\n"
              "  Compared      in², mm²\n"
              "  Passes        when the demand is not below the limit\n"
              "  Else          the component does not pass\n"
              "  Asked         always\n");
    EXPECT_NE(explain("bolt_spacing_max")
                  .text.find("  Else          the row says so; nothing depends on it\n"),
              std::string::npos);
    EXPECT_NE(
        explain("flange.bolting")
            .text.find(
                "\"3P M30 metric\",\n                \"user table\"; also \"TEMA imperial\", "),
        std::string::npos);
    EXPECT_NE(explain("shell.E").text.find("  Default       1\n"), std::string::npos);
    EXPECT_NE(explain("shell.alpha")
                  .text.find("  Value         number\n"
                             "  Read          when kind is \"cone\"\n"
                             "  Required      where it is read\n"),
              std::string::npos);
    EXPECT_NE(explain("flange.c").text.find("flange.ci: "), std::string::npos);
    EXPECT_NE(explain("flange.gasket.m").text.find("  Also taken    gasket.m\n"),
              std::string::npos);
    EXPECT_NE(explain("shell.ce").text.find("no key of a [[shell]]"), std::string::npos);
}

TEST_F(Commands, ExplainEveryKeyResultAndCheck) {
    for (const ElementKind* kind : element_kinds()) {
        const std::string table(kind->table);
        for (const Key& key : kind->keys.keys) {
            const std::string name = table + '.' + std::string(key.name);
            EXPECT_TRUE(explain(name).text.starts_with(name + ": " + std::string(key.meaning)))
                << name;
        }
        for (const ResultField& field : kind->results)
            EXPECT_NE(explain(field.name).text.find(field.label), std::string::npos) << field.name;
        for (const CheckField& field : kind->checks)
            EXPECT_NE(explain(field.id).text.find(field.paragraph), std::string::npos) << field.id;
    }
}

TEST_F(Commands, SchemaIsThatOfTheLibrary) {
    EXPECT_EQ(run("schema").out, input_schema() + '\n');
    EXPECT_EQ(run("schema input").out, input_schema() + '\n');
    EXPECT_EQ(run("schema result").out, result_schema() + '\n');
    const ProgramRun keys = run("schema keys");
    EXPECT_EQ(keys.status, 0);
    EXPECT_EQ(keys.out, vocabulary() + '\n');
    EXPECT_NE(keys.out.find("\"read\":{\"all\":[{\"key\":\"kind\",\"among\":[3,5]}],\"words\":"
                            "\"kind is one of \\\"torispherical\\\", \\\"cone\\\"\"}"),
              std::string::npos);
    EXPECT_EQ(run("schema other").status, 2);
}

TEST_F(Commands, ExplainNamesTheNearest) {
    const ProgramRun unknown = run("explain flange.Gox");
    EXPECT_EQ(unknown.status, 2);
    EXPECT_EQ(unknown.out, "");
    EXPECT_EQ(unknown.err, "tarvane: no key, result or check \"flange.Gox\"; the nearest is Go\n");
    EXPECT_EQ(run("explain threads").err,
              "tarvane: no key, result or check \"threads\"; here it is flange.bolting\n");
    EXPECT_EQ(run("explain").status, 2);
}

TEST_F(Commands, NewFilesRunAndPass) {
    for (const std::string_view name : new_file_names()) {
        for (const std::string units : {"us", "SI"}) {
            const std::string file = path("new.toml");
            const std::string written = run("new " + std::string(name) + " --units " + units).out;
            const ProgramRun made =
                run("new " + std::string(name) + " --units " + units + " -o " + file);
            EXPECT_EQ(made.status, 0) << made.err;
            EXPECT_EQ(made.out, "");
            EXPECT_EQ(read(file), written);
            EXPECT_EQ(written, new_file(name, units != "us"));
            EXPECT_EQ(written.find('|'), std::string::npos) << written;
            const ProgramRun checked = run("check " + file);
            EXPECT_EQ(checked.status, 0) << checked.err;
            EXPECT_EQ(checked.out, file + ": no faults\n");
            EXPECT_EQ(checked.err, "");
            const ProgramRun calculated = run("run " + file);
            EXPECT_EQ(calculated.status, 0) << name << ' ' << units << '\n' << calculated.err;
            // The flange is rated well above its pressure; a note says by what.
            std::istringstream lines(calculated.err);
            for (std::string line; std::getline(lines, line);)
                EXPECT_NE(line.find(": note: "), std::string::npos) << line;
            std::filesystem::remove(file);
        }
    }
    EXPECT_EQ(run("new drum").out, new_file("drum", false));
    EXPECT_EQ(run("new bridge").status, 2);
}

// The form and the components of a drum.
TEST_F(Commands, NewDrumIsAVessel) {
    set_data_folder(TARVANE_DATA_DIR);
    const ReadResult drum = read_input(new_file("drum", false));
    ASSERT_EQ(drum.request.elements.size(), 14u); // a metal temperature for each of seven
    EXPECT_EQ(drum.request.elements[4]->kind, &FLANGE_KIND);
    EXPECT_TRUE(new_file("drum", false).starts_with("tarvane = 1"));
}

TEST_F(Commands, NewFileNeverReplacesAnother) {
    const std::string file = write("mine.toml", "mine");
    const ProgramRun refused = run("new flange -o " + file);
    EXPECT_EQ(refused.status, 2);
    EXPECT_EQ(refused.err, "tarvane: " + file + " is there already, and stays as it is\n");
    EXPECT_EQ(read(file), "mine");
    std::filesystem::create_symlink(path("nowhere"), path("link.toml"));
    EXPECT_EQ(run("new flange -o " + path("link.toml")).status, 2);
    EXPECT_FALSE(std::filesystem::exists(path("nowhere")));
}

TEST_F(Commands, CheckTellsWhatRunTells) {
    const std::string faulty = write("faulty.toml", with("P", "P = \"ten\"") + "Gox = 3\n");
    const ProgramRun checked = run("check " + faulty), calculated = run("run " + faulty);
    EXPECT_EQ(checked.status, 2);
    EXPECT_EQ(checked.out, "");
    EXPECT_NE(checked.err, "");
    EXPECT_EQ(checked.err, calculated.err);
    EXPECT_EQ(run("check " + path("missing.toml")).err, run("run " + path("missing.toml")).err);
    // An element that fails has no faults.
    EXPECT_EQ(run("check " + write("thin.toml", with("t", "t = 0.75"))).status, 0);
}

} // namespace
} // namespace tarvane::app
