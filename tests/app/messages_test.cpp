// What the host says about lines that are no TOML, values too long to repeat, impossible temperatures,
// and materials that do not fit: on the shipped data files.
#include "app_fixture.h"
#include "catalogue/data_folder.h"
#include "input/syntax_message.h"
#include "values/text.h"

namespace tarvane::app {

using namespace vessel;
namespace {

class Messages : public testing::Test {
  protected:
    Messages() { set_data_folder(TARVANE_DATA_DIR); }
};

// ---- lines that are no TOML --------------------------------------------------------------------------

TEST_F(Messages, SayWhatIsWrongWithALineInTheWordsOfItsWriter) {
    constexpr const char* UNQUOTED =
        "; a text is written between quotation marks, a number in digits";
    constexpr const char* UNIT =
        "; a number is written without its unit, a text between quotation marks";
    const struct {
        std::string line, fault;
    } cases[] = {
        {"P = ten", std::string("P: unquoted text: ten") + UNQUOTED},
        {"P = ten # bar", std::string("P: unquoted text: ten") + UNQUOTED},
        {"material = SA-516 70", std::string("material: unquoted text: SA-516 70") + UNQUOTED},
        {"P = 150 psi", std::string("P: unquoted text: 150 psi") + UNIT},
        {"B = 300mm", std::string("B: unquoted text: 300mm") + UNIT},
        {"description = \"cover", "description: quotation mark missing: \"cover"},
        {"description = 'cover", "description: quotation mark missing: 'cover"},
        {"description = cover\"", "description: quotation mark missing: cover\""},
        {"material = \"a\"b\"", "material: quotation mark missing: \"a\"b\""},
        {"\"P = 10", "quotation mark missing: \"P = 10"},
        {"P = 1,5", "P: 1,5 has a comma; a number is written with a decimal point"},
        {"P = 10.", "P: 10. needs a digit before and after its decimal point"},
        {"P = -.5", "P: -.5 needs a digit before and after its decimal point"},
        {"P = 010", "P: 010 begins with a zero too many"},
        {"P =", "P: a value is missing after the ="},
        {"P 10", "key = value is expected, not P 10"},
        {"use_corrosion = True", "use_corrosion: True is written in small letters: true"},
        {"type = \"ring\" x", "type: x follows the text; only a comment with # may"},
    };
    for (const auto& c : cases) {
        const auto faults = fault_lines("[[flange]]\n" + c.line + "\nT = 300\n");
        EXPECT_EQ(faults, std::vector<std::string>{"f:2: " + c.fault}) << c.line;
    }
}

TEST_F(Messages, LeaveTheParserItsWordWhereTheLineTellsNothing) {
    for (const char* line : {"P = = 3", "P = [1, 2", "P = 10\nP = 20", "[[flange]"}) {
        const auto faults = fault_lines(std::string("[[flange]]\n") + line + "\nT = 300\n");
        ASSERT_EQ(faults.size(), 1u) << line;
        EXPECT_NE(faults[0].find("Error while parsing"), std::string::npos) << faults[0];
    }
    // Lines without a fault are none: marks in a comment, in the other kind of mark, escaped.
    for (const char* line :
         {"P = 10 # ten \"x", "description = 'a \" b'", "description = \"a \\\" b\""})
        for (const std::string& fault : fault_lines(with("P", line)))
            EXPECT_EQ(fault.find("quotation"), std::string::npos) << fault;
    EXPECT_EQ(syntax_fault("P = 1e+5 bar", 1, "x").message,
              "unquoted text: 1e+5 bar; a number is written without its unit, a text between "
              "quotation marks");
    EXPECT_EQ(syntax_fault("P = 1e5", 1, "what it says").message, "what it says");
    EXPECT_EQ(syntax_fault("", 1, "what it says").message, "what it says");
    EXPECT_EQ(syntax_fault("one line", 7, "what it says").message, "what it says");
}

TEST_F(Messages, RepeatSixtyCharactersOfAValue) {
    EXPECT_EQ(cut(std::string(60, 'x')), std::string(60, 'x'));
    EXPECT_EQ(cut(std::string(61, 'x')), std::string(60, 'x') + "...");
    std::string wide;
    for (int i = 0; i < 61; ++i)
        wide += "ü";
    EXPECT_EQ(cut(wide), wide.substr(0, 120) + "...");

    const std::string value(5000, 'x'), start(60, 'x');
    for (const std::string& line : {"P = " + value, "P = \"" + value + '"', "P = 10 " + value,
                                    "description = \"" + value, "type = \"" + value + '"'}) {
        const auto faults = fault_lines("[[flange]]\n" + line + '\n');
        bool cut_off = false;
        for (const std::string& fault : faults) {
            EXPECT_LT(fault.size(), 600u) << line.substr(0, 20);
            cut_off = cut_off || fault.find("xxx...") != std::string::npos;
        }
        EXPECT_TRUE(cut_off) << line.substr(0, 20);
    }
    EXPECT_EQ(fault_lines(with("P", "P = \"" + value + '"')),
              std::vector<std::string>{"f:4: P: a number in psig is expected, not the text \"" +
                                       start +
                                       "...\" (design pressure, negative for external pressure)"});
}

TEST_F(ProgramTest, RepeatsSixtyCharactersOfAnArgument) {
    const std::string value(300, 'x'), start(60, 'x');
    for (const std::string& command : {"chart " + value + " -T 100", "materials " + value,
                                       "flanges " + value, "flanges 150 " + value}) {
        const ProgramRun result = run(command);
        EXPECT_EQ(result.status, 2);
        EXPECT_NE(result.err.find('"' + start + "...\""), std::string::npos) << result.err;
        EXPECT_EQ(result.err.find(start + 'x'), std::string::npos) << result.err;
    }
}

TEST_F(ProgramTest, NamesADataFolderThatIsNotThere) {
    const std::string missing = path("nowhere"), file = write("f.toml", FLANGE_TOML);
    for (const std::string& command :
         {"run " + file, std::string("materials"), std::string("chart CS-2 -T 100"),
          std::string("flanges 150"), std::string("mdmt --curve B -t 1")}) {
        for (const std::string& data : {missing, file}) {
            const ProgramRun result = run(command + " --data " + data);
            EXPECT_EQ(result.status, 2) << command;
            EXPECT_NE(result.err.find(data), std::string::npos) << command << ": " << result.err;
            EXPECT_NE(result.err.find("data folder"), std::string::npos) << result.err;
        }
    }
}

// ---- temperatures ------------------------------------------------------------------------------------

TEST_F(Messages, RefuseATemperatureBelowAbsoluteZero) {
    EXPECT_TRUE(fault_lines(with("T", "T = -459.67")).empty());
    EXPECT_EQ(
        fault_lines(with("T", "T = -459.68")),
        std::vector<std::string>{"f:5: T: a temperature from absolute zero on, -459.67 °F, is "
                                 "expected, not -459.68 (design temperature)"});
    const std::string si = "units = \"SI\"\nbolt_size = \"nearest\"\n";
    EXPECT_TRUE(fault_lines(si + with("T", "T = -273.15")).empty());
    EXPECT_EQ(
        fault_lines(si + with("T", "T = -273.16")),
        std::vector<std::string>{"f:7: T: a temperature from absolute zero on, -273.15 °C, is "
                                 "expected, not -273.16 (design temperature)"});
}

// Every temperature key of every kind; a difference of temperatures has no zero.
TEST_F(Messages, KnowEveryTemperatureKey) {
    int temperatures = 0;
    for (const ElementKind* kind : element_kinds()) {
        for (const Key& key : kind->keys.keys) {
            const bool temperature = key.quantity == Quantity::temperature;
            if (!temperature && key.quantity != Quantity::temperature_scale) continue;
            const std::string place(kind->table), name(key.name);
            for (const std::string units : {"units = \"US\"\n", "units = \"SI\"\n"}) {
                bool told = false;
                for (const std::string& fault :
                     fault_lines(units + "[[" + place + "]]\n" + name + " = -460\n"))
                    told = told || fault.find(name + ": a temperature from absolute zero on") !=
                                       std::string::npos;
                EXPECT_EQ(told, temperature) << place << ' ' << name;
            }
            temperatures += temperature ? 1 : 0;
        }
    }
    EXPECT_GE(temperatures, 6);
}

TEST_F(ProgramTest, RefusesATemperatureBelowAbsoluteZero) {
    EXPECT_EQ(run("chart CS-2 -T -459").status, 0);
    const ProgramRun result = run("chart CS-2 -T -460");
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.err,
              "tarvane: a temperature from absolute zero on, -459.67 °F, is expected\n");
    EXPECT_EQ(run("chart CS-2 -T -274 --units si").status, 2);
    EXPECT_EQ(run("mdmt --curve B -t 1 -T -460").status, 2);
}

std::string with_material(const std::string& T) {
    return with("Sfo", "", with("Sfa", "", with("T", T))) + "material = \"SA-516 70\"\n";
}

TEST_F(Messages, TellATemperatureBelowThoseOfTheData) {
    const auto notes = [](const std::string& toml) {
        const ReadResult result = read_input(toml);
        EXPECT_TRUE(result.faults.empty()) << fault_line("f", result.faults.front());
        return result.request.elements.at(0)->notes;
    };
    EXPECT_TRUE(notes(with_material("T = 70")).empty());
    EXPECT_TRUE(notes(with_material("T = -20")).empty());
    EXPECT_EQ(notes(with_material("T = -21")),
              std::vector<std::string>{"-21.00 °F is below the first temperature of MATFILE1.BIN, "
                                       "-20.00 °F: the first figure of SA-516 70 was taken"});
    EXPECT_TRUE(notes(with("T", "T = -100")).empty()); // stresses of its own
}

TEST_F(ProgramTest, TellsATemperatureBelowThoseOfTheData) {
    const ProgramRun result = run("run " + write("f.toml", with_material("T = -50")));
    EXPECT_NE(
        result.err.find("flange 1 (test flange): note: -50.00 °F is below the first temperature of "
                        "MATFILE1.BIN"),
        std::string::npos)
        << result.err;
    EXPECT_EQ(run("run " + write("f.toml", with_material("T = 100"))).err.find("note: "),
              std::string::npos);
}

// ---- materials ---------------------------------------------------------------------------------------

TEST_F(Messages, TellThatOtherCodesTakeNoStressFromAFile) {
    const std::string other = with("Sfo", "", with("Sfa", "", with("T", "T = 392")));
    const std::string file =
        " takes no allowable stress from a material file: Sfo and Sfa are to be given "
        "(force_div1 = true takes those of VIII-1)";
    EXPECT_EQ(
        fault_lines(other + "code = \"EN 13445\"\nmaterial = \"P 265 gh\"\n"),
        std::vector<std::string>{
            "f:26: material: EN 13445" + file +
            "; ENMATDATA.BIN has P265GH, 1.0425 (EN 10028-2, Plate, up to 16 mm): Rp0.2 265 "
            "N/mm2 at 20 °C, 205 N/mm2 at 200 °C, Rm 410 N/mm2 (approximate, edition not stated: "
            "EN 10028-2 as commonly quoted, not held against a copy)"
            "; ENMATDATA.BIN has P265GH, 1.0425 (EN 10216-2, Smls. tube, up to 16 mm): Rp0.2 265 "
            "N/mm2 at 20 °C, 192 N/mm2 at 200 °C, Rm 410 N/mm2 (approximate, edition not stated: "
            "EN 10216-2 as commonly quoted; from 100 C on as in public lists, at 20 C not held "
            "against a copy)"});
    EXPECT_EQ(fault_lines(other + "code = \"PD 5500\"\nmaterial = \"SA-516 70\"\n"),
              std::vector<std::string>{"f:26: material: PD 5500" + file});
    // By its number; between two temperatures; above the last one.
    const std::string tube = "code = \"EN 13445\"\nmaterial = \"1.4462\"\n";
    EXPECT_NE(fault_lines(with("T", "T = 347", other) + tube)[0].find("325 N/mm2 at 175 °C"),
              std::string::npos)
        << fault_lines(with("T", "T = 347", other) + tube)[0];
    EXPECT_NE(fault_lines(with("T", "T = 932", other) + tube)[0].find("none at 500 °C"),
              std::string::npos);
    EXPECT_NE(fault_lines(with("T", "T = 32", other) + tube)[0].find("460 N/mm2 at 20 °C, Rm 640"),
              std::string::npos);
    // The bolts' stresses; one that is given is not looked up.
    EXPECT_NE(
        fault_lines(with("Sb", "") + "code = 4\nbolt_material = \"SA-193 B7\"\n")[0].find(
            "bolt_material: EN 13445 takes no allowable stress from a material file: Sb is to be"),
        std::string::npos);
    EXPECT_TRUE(fault_lines(FLANGE_TOML + "code = 4\nmaterial = \"P265GH\"\n").empty());
}

TEST_F(Messages, ListWhatTellsTheRecordsOfANameApart) {
    const std::string bolts = with("Sb", "", with("Sa", "", with("a", "", FLANGE_TOML)));
    const auto faults = fault_lines(bolts + "bolt_material = \"SA-193 B7\"\n");
    const std::string all = faults.empty() ? "" : faults[0] + (faults.size() > 1 ? faults[1] : "");
    EXPECT_NE(
        all.find("3 records of SA-193 B7 in MATFILE1.BIN: 401 (1Cr-1/5Mo, up to 2.5000 in.), 402 "
                 "(1Cr-1/5Mo, above 2.5000 in., up to 4.0000 in.), 403 (1Cr-1/5Mo, above 4.0000 "
                 "in., up to 7.0000 in.); choose one by bolt_reference"),
        std::string::npos)
        << all;
}

// Large forgings and thick pipes have stresses of their own.
TEST_F(Messages, LetNoRecordServeAnotherThickness) {
    const auto forging = [](const std::string& t, const std::string& more) {
        return with("Sfo", "", with("Sfa", "", with("t", t))) + "material = \"SA-182 F304\"\n" +
               more;
    };
    const std::string usual = "material_reference = 111\n", large = "material_reference = 161\n";
    EXPECT_FLOAT_EQ(flange_of(forging("t = 5", usual)).record[6], 18900.0f);
    EXPECT_FLOAT_EQ(flange_of(forging("t = 5.01", large)).record[6], 17700.0f);
    const std::string there = "; there is 111 (18Cr-8Ni, high stress, up to 5.0000 in.), 161 "
                              "(18Cr-8Ni, high stress, above "
                              "5.0000 in.), 211 (18Cr-8Ni, low stress)";
    EXPECT_EQ(
        fault_lines(forging("t = 5.01", usual)),
        std::vector<std::string>{"f:25: material_reference: no SA-182 F304 with this reference in "
                                 "MATFILE1.BIN for a thickness of 5.0100 in." +
                                 there});
    EXPECT_EQ(fault_lines(forging("t = 5", large)).size(), 1u);
    EXPECT_EQ(
        fault_lines(forging("t = 5.01", "")),
        std::vector<std::string>{
            "f:25: material: 2 records of SA-182 F304 in MATFILE1.BIN: 161 (18Cr-8Ni, high stress, "
            "above 5.0000 in.), 211 (18Cr-8Ni, low stress); choose one by material_reference"});
    // 5 in. in millimetres.
    const std::string si = "units = \"SI\"\nbolt_size = \"nearest\"\n";
    EXPECT_TRUE(fault_lines(si + forging("t = 127", usual)).empty());
    EXPECT_FALSE(fault_lines(si + forging("t = 127.1", usual)).empty());
    // Beyond the figures of the large size.
    const auto hot = fault_lines(with("T", "T = 301", forging("t = 6", large)));
    ASSERT_EQ(hot.size(), 1u);
    EXPECT_NE(hot[0].find("its last one is at 300.00 °F"), std::string::npos) << hot[0];

    const std::string pipe = "[[shell]]\nkind = \"cylinder\"\nP = 100\nT = 100\nD = 60\nmaterial = "
                             "\"SA-312 TP321\"\n";
    EXPECT_TRUE(fault_lines(pipe + "t = 0.376\n").empty()); // one record is left
    EXPECT_EQ(fault_lines(pipe + "t = 0.375\n").size(), 1u);
    EXPECT_TRUE(fault_lines(pipe + "t = 0.375\nmaterial_reference = 125\n").empty());
    EXPECT_EQ(fault_lines(pipe + "t = 0.5\nmaterial_reference = 225\n").size(), 1u);
}

// A thickness that the program finds is not known when the record is chosen.
TEST_F(ProgramTest, FailsAThicknessFoundAboveTheSizeOfTheStresses) {
    const std::string toml = R"([[flange]]
kind = "thickness"
type = "ring"
P = 100
T = 300
B = 60
A = 90
material = "SA-182 F304"
material_reference = 111
bolting = "TEMA"
C = 82
n = 60
a = 2.5
Sb = 25000
Sa = 25000
Fod = 70
Fid = 60
Go = 64
Gi = 62
m = 1
y = 200
facing = "1a"
column = "II"
)";
    const std::string thin = with("Sfo", "", with("Sfa", "", with("t", "kind = \"thickness\"")));
    const ProgramRun fine = run("run " + write("f.toml", thin + "material = \"SA-182 F304\"\n"
                                                                "material_reference = 111\n"));
    EXPECT_EQ(fine.err.find("apply up to"), std::string::npos) << fine.err;
    const ProgramRun thick = run("run " + write("f.toml", toml));
    EXPECT_EQ(thick.status, 1) << thick.err;
    EXPECT_NE(
        thick.err.find(
            "the stresses of SA-182 F304, reference 111, apply up to 5.0000 in., not for the"),
        std::string::npos)
        << thick.err;
}

TEST_F(Messages, NameTheChartThatAMaterialBelongsTo) {
    for (const char* name : {"SA-387 11 2", "SA-387 22 2", "SA-182 F22 3"}) {
        const std::string material = std::string("material = \"") + name + "\"\n";
        const std::string says =
            std::string("chart: ") + name +
            " belongs to external pressure chart CS-3, which ExtChartData.txt "
            "does not have: it has CS-1 and CS-2; external pressure on a "
            "material of another chart needs one of your own, see tarvane data";
        const std::string external =
            "[[external]]\nkind = \"cylinder\"\nP = 15\nT = 300\nDo = 60\nt = "
            "0.5\nlength = 90\n";
        EXPECT_EQ(fault_lines(external + material), std::vector<std::string>{"f:8: " + says});
        const std::string shell =
            "[[shell]]\nkind = \"cylinder\"\nP = 100\nT = 300\nDo = 60\nt = 1\n";
        EXPECT_TRUE(fault_lines(shell + material).empty());
        EXPECT_EQ(fault_lines(shell + "P_external = 15\nlength = 90\n" + material),
                  std::vector<std::string>{"f:9: " + says});
    }
}

// ---- hubs --------------------------------------------------------------------------------------------

TEST_F(Messages, AskForNoHubWhereTheFileSaysThereIsNone) {
    const std::string ring = with("type", "type = \"slip on\"", with("g0", "", with("g1", "")));
    EXPECT_TRUE(fault_lines(with("h", "", ring)).empty());
    EXPECT_TRUE(fault_lines(with("h", "h = 0", ring)).empty());
    EXPECT_TRUE(fault_lines(with("h", "g0 = 0\ng1 = 0", ring)).empty());
    EXPECT_EQ(fault_lines(with("h", "h = 1", ring)).size(), 2u);             // g0 and g1
    EXPECT_EQ(fault_lines(with("h", "g0 = 0.375\nh = 0", ring)).size(), 1u); // g1
    EXPECT_EQ(fault_lines(with("h", "")).size(), 1u);                        // a weld neck has one
}

} // namespace
} // namespace tarvane::app
