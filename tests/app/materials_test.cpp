// Materials and charts of data files: the commands, and what `material` fills in an input file. The
// material files and charts of these tests are the tests' own.
#include "app_fixture.h"
#include "catalogue/charts.h"
#include "catalogue/data_folder.h"
#include "catalogue/material_files.h"
#include "commands/materials_command.h"

#include <cmath>
#include <cstring>

namespace tarvane::app {

using namespace vessel;
namespace {

template <std::size_t N>
void put(char (&field)[N], const std::string& text) {
    std::memset(field, ' ', N);
    std::memcpy(field, text.data(), std::min(N, text.size()));
}

// Stresses fall by 1 ksi a place from `first` on, over `places` temperatures.
TARVANE_MATERIAL_RECORD record(const std::string& name, int reference, const std::string& note,
                               float first, int places) {
    TARVANE_MATERIAL_RECORD r{};
    put(r.first_name, name);
    put(r.name, name);
    r.reference = reference;
    put(r.product_form, "Plate");
    put(r.uns_number, "K00001");
    put(r.text_92, "");
    put(r.note, note);
    put(r.p_number, "9A");
    r.group = 1;
    r.curve = 2;
    r.curve_normalized = 4;
    r.tensile = 70.0f;
    r.yield = 38.0f;
    put(r.chart, "CS-2");
    r.modulus_reference = 4;
    r.expansion_reference = 1;
    for (int i = 0; i < places; ++i)
        r.allowable[i] = first - static_cast<float>(i);
    put(r.text_316, "");
    r.min_dia = r.max_dia = -1.0f;
    r.impact_temperature = 1;
    put(r.text_404, "");
    return r;
}

TARVANE_MATERIAL_RECORD bolt(int reference, float first, float above, float to) {
    TARVANE_MATERIAL_RECORD r = record("SA-193 B7", reference, "1Cr-1/5Mo", first, 10);
    put(r.product_form, "Bolting");
    r.min_dia = above;
    r.max_dia = to;
    return r;
}

// A data folder with files of the test: MATFILE1.BIN, MATFILE1M.BIN, ExtChartData.txt.
class DataFolder : public ProgramTest {
  protected:
    DataFolder() {
        // Tables that these tests don't change.
        for (const char* name : {"BOLTDATA.TXT", "ElastAlp07.txt"})
            std::filesystem::copy_file(std::string(TARVANE_DATA_DIR) + '/' + name, path(name));
        const std::vector<TARVANE_MATERIAL_RECORD> records{
            record("SA-516 70", 1, "Carbon steel; approximate", 20.0f, 12),
            record("SA-240 304", 101, "18Cr-8Ni, high stress", 19.0f, 10),
            record("SA-240 304", 201, "18Cr-8Ni, low stress", 18.0f, 10),
            bolt(401, 25.0f, -1.0f, 2.5f),
            bolt(402, 23.0f, 2.5f, 4.0f),
            record("SA-36", 10, "Carbon steel", 16.0f, 3)};
        write_records("MATFILE1.BIN", records);
        TARVANE_MATERIAL_RECORD metric = record("SA-516 485", 1, "Carbon steel", 138.0f, 5);
        metric.tensile = 485.0f;
        metric.yield = 260.0f;
        write_records("MATFILE1M.BIN", {metric});
        write("ExtChartData.txt", "[CS-2]\n"
                                  "300 0 29.0 7.0e-04 10150 0.1 16614.7 19614.7 3000 0\n"
                                  "500 0 27.0 6.0e-04 8100 0.1 12543.7 14543.7 2000 0\n\n"
                                  "[CS-3]\n"
                                  "300.4 0 29.0 1.0e-03 14500 0.1 20000 23000 3000 0\n\n"
                                  "[HA-1]\n"
                                  "100 0 28.0 3.0e-04 4200 0.1 12000 15000 3000 0\n\n"
                                  "[END]\n");
        write("approximate.txt", "[ExtChartData.txt]\nHA-1\n[BOLTDATA.TXT]\nTEMA\n"
                                 "[ElastAlp07.txt]\nmodulus 4\n[END]\n");
        write("data_sources.txt", "[END]\n");
        set_data_folder(folder.string());
    }
    ~DataFolder() override { set_data_folder(TARVANE_DATA_DIR); }

    void write_records(const std::string& name,
                       const std::vector<TARVANE_MATERIAL_RECORD>& records) const {
        std::string bytes(TARVANE_MATERIAL_BYTES, '\0');
        const auto count = static_cast<std::int32_t>(records.size());
        std::memcpy(bytes.data(), &count, sizeof count);
        for (const TARVANE_MATERIAL_RECORD& r : records)
            bytes.append(reinterpret_cast<const char*>(&r), TARVANE_MATERIAL_BYTES);
        write(name, bytes);
    }

    ProgramRun tarvane(const std::string& arguments) const {
        return run(arguments + " --data " + folder.string());
    }
};

// FLANGE_TOML without keys, and with lines at its end.
std::string flange(std::initializer_list<const char*> without, const std::string& more,
                   std::string toml = FLANGE_TOML) {
    for (const char* key : without)
        toml = with(key, "", toml);
    return toml + more;
}

// ---- tarvane materials -------------------------------------------------------------------------------

using Materials = DataFolder;

TEST_F(Materials, AreListedInTheOrderOfTheFile) {
    const ProgramRun result = tarvane("materials");
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out.substr(0, 29), "Materials of MATFILE1.BIN: 6\n");
    std::size_t last = 0;
    for (const char* line : {"SA-516 70 ~     1  Plate    9A Gr. 1  B/D       70.00  38.00  CS-2   "
                             "    650  approximate  -        Carbon steel",
                             "SA-240 304    101  Plate    9A Gr. 1  B/D       70.00  38.00  CS-2   "
                             "    550  published    -        18Cr-8Ni, high",
                             "SA-193 B7     402  Bolting  9A Gr. 1  B/D       70.00  38.00  CS-2   "
                             "    550  published    -        1Cr-1/5Mo, "
                             "above 2.5000 in., up to 4.0000 in.",
                             "SA-36          10  "}) {
        const std::size_t at = result.out.find(line);
        ASSERT_NE(at, std::string::npos) << line << '\n' << result.out;
        EXPECT_GT(at, last);
        last = at;
    }
    EXPECT_NE(result.out.find("~ Approximate figures: replace MATFILE1.BIN by"), std::string::npos);
}

TEST_F(Materials, ShowTheWholeRecordOfAName) {
    const ProgramRun result = tarvane("materials 'sa516-70'");
    EXPECT_EQ(result.status, 0) << result.err;
    for (const char* line :
         {"SA-516 70, reference 1", "Composition, note               Carbon steel\n",
          "P-number                        9A Gr. 1", "Curve of Fig. UCS-66            B\n",
          "The same, normalized            D\n", "Tensile strength                70.00 ksi",
          "External pressure chart         CS-2", "Figures                         approximate",
          "        100                20.00\n", "        650                 9.00\n",
          "Approximate figures: replace MATFILE1.BIN by"})
        EXPECT_NE(result.out.find(line), std::string::npos) << line << '\n' << result.out;
    EXPECT_EQ(result.out.find("        700"), std::string::npos); // no stress there
}

TEST_F(Materials, OfOneNameComeTogether) {
    const ProgramRun result = tarvane("materials 'SA-240 304'");
    EXPECT_NE(result.out.find("SA-240 304, reference 101"), std::string::npos);
    EXPECT_NE(result.out.find("SA-240 304, reference 201"), std::string::npos);
    EXPECT_EQ(result.out.find("pproximate"), std::string::npos);
}

TEST_F(Materials, AreFoundByHowTheirNameBegins) {
    const ProgramRun result = tarvane("materials SA-2");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out.substr(0, 29), "Materials of MATFILE1.BIN: 2\n");
}

TEST_F(Materials, ThatAreUnknownGiveNearNames) {
    const ProgramRun result = tarvane("materials 'SA-517 70'");
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err,
              "tarvane: no material \"SA-517 70\" in MATFILE1.BIN; the nearest is SA-516 70\n");
    EXPECT_EQ(tarvane("materials 'SA-196 70'").err,
              "tarvane: no material \"SA-196 70\" in MATFILE1.BIN; the nearest are SA-516 70, "
              "SA-193 B7\n");
}

TEST_F(Materials, WithoutAFileAreNone) {
    const ProgramRun result = tarvane("materials --code VIII-2");
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.err, "tarvane: no materials: MatFileD2C1.BIN is missing in the data folder " +
                              folder.string() + " (no version, named by --data)\n");
    EXPECT_EQ(tarvane("materials --code VIII-2 --class 1").err, result.err);
    EXPECT_EQ(tarvane("materials --code VIII-2 --class 2").err,
              "tarvane: no materials: MATFILE2.BIN is missing in the data folder " +
                  folder.string() + " (no version, named by --data)\n");
    for (const char* none : {"0", "3"}) {
        const ProgramRun refused = tarvane(std::string("materials --code VIII-2 --class ") + none);
        EXPECT_EQ(refused.status, 2);
        EXPECT_NE(refused.err.find("--class"), std::string::npos) << refused.err;
    }
}

TEST_F(Materials, OfTheMetricFileStandInTheirUnits) {
    const ProgramRun si = tarvane("materials SA-516-485 --metric --units SI");
    EXPECT_EQ(si.status, 0) << si.err;
    for (const char* line :
         {"Tensile strength                485.0 MPa", "         40                138.0\n",
          "         65                137.0\n", "        100                136.0\n",
          "        150                134.0\n"})
        EXPECT_NE(si.out.find(line), std::string::npos) << line << '\n' << si.out;
    // 138 MPa at 40 degrees C
    const ProgramRun us = tarvane("materials SA-516-485 --metric");
    EXPECT_NE(us.out.find("        104                20.02\n"), std::string::npos) << us.out;
}

// ---- material = in an input file ------------------------------------------------------------------------

using MaterialKey = DataFolder;

TEST_F(MaterialKey, FillsWhatTheFileLeavesOut) {
    const FlangeInput f =
        flange_of(flange({"Sfo", "Sfa"}, "material = \"SA-516 70\"\n", with("T", "T = 325")));
    EXPECT_FLOAT_EQ(f.record[6], 15500.0f); // 16 ksi at 300 F, 15 at 350
    EXPECT_FLOAT_EQ(f.record[7], 20000.0f);
    EXPECT_EQ(f.record[34], 4.0f);
    EXPECT_EQ(f.text.substr(slot::chart, 8), "CS-2    ");
    EXPECT_EQ(f.whole_setting(Setting::p_number), 9);
    EXPECT_FLOAT_EQ(f.setting(Setting::chart_yield), 38000.0f);
}

TEST_F(MaterialKey, ComesBehindItsOwnKeys) {
    const FlangeInput f = flange_of(FLANGE_TOML + "material = \"SA-516 70\"\nmaterial_class = 2\n"
                                                  "chart = \"HA-1\"\np_number = 8\n"
                                                  "chart_yield = 1000\n");
    EXPECT_EQ(f.record[6], 20000.0f);
    EXPECT_EQ(f.record[7], 20000.0f);
    EXPECT_EQ(f.record[34], 2.0f);
    EXPECT_EQ(f.text.substr(slot::chart, 8), "HA-1    ");
    EXPECT_EQ(f.whole_setting(Setting::p_number), 8);
    EXPECT_EQ(f.setting(Setting::chart_yield), 1000.0f);
    EXPECT_EQ(f.data.count("MATFILE1.BIN"), 0u); // no stress was used
    const FlangeInput half = flange_of(flange({"Sfa"}, "material = \"SA-516 70\"\n"));
    EXPECT_EQ(half.record[6], 20000.0f);
    EXPECT_FLOAT_EQ(half.record[7], 20000.0f);
}

TEST_F(MaterialKey, ConvertsToTheUnitsOfTheEngine) {
    const std::string si = "units = \"SI\"\n" + flange({"Sfo", "Sfa"},
                                                       "material = \"SA-516 485\"\n"
                                                       "material_metric = true\n"
                                                       "bolt_size = \"nearest\"\n",
                                                       with("T", "T = 82.5"));
    const FlangeInput f = flange_of(si);
    EXPECT_NEAR(f.record[6], 136.5f * 145.038f, 1.0f); // 137 MPa at 65 C, 136 at 100
    EXPECT_NEAR(f.record[7], 138.0f * 145.038f, 0.1f);
    // The inch file is used for a file in SI units, too.
    const FlangeInput inch =
        flange_of("units = \"SI\"\n" + flange({"Sfo", "Sfa"},
                                              "material = \"SA-516 70\"\nbolt_size = \"nearest\"\n",
                                              with("T", "T = 162.777778")));
    EXPECT_NEAR(inch.record[6], 15500.0f, 0.1f);
}

TEST_F(MaterialKey, OfBoltsGoesByTheirSize) {
    const std::string bolts =
        flange({"Sb", "Sa"}, "bolt_material = \"SA-193 B7\"\n", with("T", "T = 150"));
    const FlangeInput small = flange_of(bolts);
    EXPECT_FLOAT_EQ(small.record[19], 24000.0f);
    EXPECT_FLOAT_EQ(small.record[20], 25000.0f);
    EXPECT_EQ(small.record[75], 401.0f);
    EXPECT_EQ(flange_of(with("a", "a = 2.5", bolts)).record[75], 401.0f);
    const FlangeInput large = flange_of(with("a", "a = 2.75", bolts));
    EXPECT_FLOAT_EQ(large.record[20], 23000.0f);
    EXPECT_EQ(large.record[75], 402.0f);
    EXPECT_EQ(fault_lines(with("a", "a = 4.5", bolts) + "bolt_size = \"nearest\"\n"),
              std::vector<std::string>{
                  "f:25: bolt_material: no SA-193 B7 in MATFILE1.BIN for bolts of 4.500 in."});
    EXPECT_FLOAT_EQ(flange_of(bolts + "bolt_reference = 402\n").record[20], 23000.0f);
}

TEST_F(MaterialKey, OfSeveralRecordsAsksForTheReference) {
    const std::string steel = flange({"Sfo", "Sfa"}, "material = \"SA-240 304\"\n");
    EXPECT_EQ(fault_lines(steel),
              std::vector<std::string>{
                  "f:25: material: 2 records of SA-240 304 in MATFILE1.BIN: 101 (18Cr-8Ni, high "
                  "stress), 201 (18Cr-8Ni, low stress); choose one by material_reference"});
    EXPECT_FLOAT_EQ(flange_of(steel + "material_reference = 201\n").record[7], 18000.0f);
    EXPECT_EQ(fault_lines(steel + "material_reference = 7\n"),
              std::vector<std::string>{
                  "f:25: material_reference: no SA-240 304 with reference 7 in MATFILE1.BIN; there "
                  "is 101 (18Cr-8Ni, high stress), 201 (18Cr-8Ni, low stress)"});
    // It is only a name where the file gives the stresses.
    EXPECT_TRUE(fault_lines(FLANGE_TOML + "material = \"SA-240 304\"\n").empty());
}

TEST_F(MaterialKey, ThatIsUnknownIsAFaultWhereItIsNeeded) {
    EXPECT_TRUE(fault_lines(FLANGE_TOML + "material = \"P245GH\"\n").empty());
    const auto faults = fault_lines(flange({"Sfo", "Sfa"}, "material = \"SA-515 70\"\n"));
    EXPECT_EQ(faults, std::vector<std::string>{"f:25: material: no material \"SA-515 70\" in "
                                               "MATFILE1.BIN; the nearest is SA-516 70"});
    EXPECT_EQ(
        fault_lines(flange({"Sfa"}, "code = 4\nmaterial = \"SA-516 70\"\n")),
        std::vector<std::string>{
            "f:27: material: EN 13445 takes no allowable stress from a material file: Sfa is to be "
            "given (force_div1 = true takes those of VIII-1)"});
    EXPECT_TRUE(fault_lines(flange({"Sfa"}, "code = 4\nmaterial = \"SA-516 70\"\n"
                                            "force_div1 = true\n"))
                    .empty());
}

TEST_F(MaterialKey, WithoutAStressAtTheTemperatureTellsTheLimit) {
    const std::string toml = flange({"Sfo", "Sfa"}, "material = \"SA-36\"\n");
    EXPECT_TRUE(fault_lines(with("T", "T = 200", toml)).empty());
    EXPECT_EQ(fault_lines(with("T", "T = 210", toml)),
              std::vector<std::string>{
                  "f:25: Sfo: SA-36 has no allowable stress at 210.00 °F in MATFILE1.BIN; its last "
                  "one is at 200.00 °F"});
    EXPECT_EQ(
        fault_lines("units = \"SI\"\n" + with("T", "T = 100", toml) + "bolt_size = \"nearest\"\n"),
        std::vector<std::string>{
            "f:26: Sfo: SA-36 has no allowable stress at 100.00 °C in MATFILE1.BIN; its last "
            "one is at 93.33 °C"});
    // A stress given in the file comes first.
    EXPECT_TRUE(fault_lines(with("T", "T = 210", toml) + "Sfo = 9000\n").empty());
}

TEST_F(MaterialKey, LeavesTheFaultOfTheTemperatureAlone) {
    EXPECT_EQ(fault_lines(flange({"Sfo", "Sfa", "T"}, "material = \"SA-36\"\n")).size(), 1u);
}

TEST_F(MaterialKey, TellsTheApproximateFilesThatWereUsed) {
    const std::string toml = flange({"Sfo", "Sfa"}, "material = \"SA-516 70\"\nrigidity = true\n");
    const ProgramRun result = tarvane("run " + write("f.toml", toml + toml));
    EXPECT_EQ(result.status, 0) << result.err;
    const auto line = [](const std::string& file, const std::string& items) {
        return "\nApproximate figures of " + file + " were used (" + items +
               "): replace the file by one made from a licensed copy of the standard.\n";
    };
    const std::string lines = line("BOLTDATA.TXT", "TEMA") + line("ElastAlp07.txt", "modulus 4") +
                              line("MATFILE1.BIN", "SA-516 70, 1");
    EXPECT_NE(result.out.find(lines + "\nPASS  every check that decides passes"), std::string::npos)
        << result.out.substr(result.out.size() - 1200);
    const ProgramRun own =
        tarvane("run " + write("own.toml", with("bolting", "bolting = \"UNC\"")));
    EXPECT_EQ(own.out.find("Approximate"), std::string::npos);
}

// Two records of one name, one of them checked: each has its own status and source.
TEST_F(MaterialKey, NamesTheSourceOfTheRecordThatIsUsed) {
    const auto file_with = [&](const std::string& reference, const std::string& t) {
        return write("f" + reference + ".toml",
                     flange({"Sfo", "Sfa"},
                            "material = \"SA-182 F304\"\nmaterial_reference = " + reference + '\n',
                            with("t", "t = " + t, with("T", "T = 200"))));
    };
    const std::string upto = file_with("111", "1.19"), above = file_with("161", "6");
    const ProgramRun checked = run("run " + upto), approximate = run("run " + above);
    const std::string item = "\nFigures of MATFILE1.BIN:\n  SA-182 F304, ";
    EXPECT_NE(checked.out.find(item + "111: checked, 1999 addenda and later: II-D Table 1A"),
              std::string::npos)
        << checked.out << checked.err;
    EXPECT_EQ(checked.out.find("MATFILE1.BIN were used"), std::string::npos);
    EXPECT_NE(
        approximate.out.find(item + "161: approximate, 1999 addenda and later: at 300 F as in"),
        std::string::npos)
        << approximate.out << approximate.err;
    EXPECT_NE(approximate.out.find("MATFILE1.BIN were used (SA-182 F304, 161)"), std::string::npos);
}

// ---- tarvane chart ---------------------------------------------------------------------------------------

using Chart = DataFolder;

TEST_F(Chart, ShowsTheCurveAtATemperature) {
    const ProgramRun result = tarvane("chart cs2 --temperature 400");
    EXPECT_EQ(result.status, 0) << result.err;
    for (const char* line :
         {"External pressure chart CS-2\n", "Temperature of the chart    400.00 °F\n",
          "Modulus of the chart        28000000 psi\n", // between 29 and 27 million
          " 1.000e-05          140.00\n",               // A E / 2
          " 6.500e-04         9100.00  end of the straight line\n",
          " 1.000e-01        14579.20  end of the curve\n"}) // 17079.2 + 2500 log10(0.1)
        EXPECT_NE(result.out.find(line), std::string::npos) << line << '\n' << result.out;
    EXPECT_EQ(result.out.find("pproximate"), std::string::npos);
}

TEST_F(Chart, HasNoCurveAboveItsLastTemperature) {
    const ProgramRun above = tarvane("chart CS-2 -T 270 --units si");
    EXPECT_EQ(above.status, 2);
    EXPECT_EQ(above.out, "");
    EXPECT_EQ(above.err, "tarvane: chart CS-2 has no curve at 270 °C; its last one is at 260 °C\n");
    const ProgramRun result = tarvane("chart CS-2 -T 260 --units si");
    EXPECT_EQ(result.status, 0);
    EXPECT_NE(result.out.find("Temperature                 260.00 °C\n"), std::string::npos);
    EXPECT_NE(result.out.find("Temperature of the chart    260.00 °C\n"), std::string::npos);
    EXPECT_NE(result.out.find("B, MPa\n"), std::string::npos);
}

TEST_F(Chart, SaysThatItIsApproximate) {
    EXPECT_NE(
        tarvane("chart HA-1 -T 100").out.find("Approximate figures: replace ExtChartData.txt "),
        std::string::npos);
}

TEST_F(Chart, RefusesWhatItDoesNotHave) {
    const auto error = [&](const std::string& arguments) {
        const ProgramRun result = tarvane("chart " + arguments);
        EXPECT_EQ(result.status, 2) << arguments;
        EXPECT_EQ(result.out, "") << arguments;
        return result.err;
    };
    EXPECT_EQ(error("CS-9 -T 100"),
              "tarvane: no chart \"CS-9\" in ExtChartData.txt, which has CS-2, CS-3 and HA-1; "
              "external pressure on a material of another chart needs one of your own, see tarvane "
              "data\n");
    EXPECT_EQ(error("CS-9"), error("CS-9 -T 100"));
    EXPECT_EQ(error("CS-3 -T 100"),
              "tarvane: chart CS-3 depends on the yield stress: give it by --yield\n");
    EXPECT_EQ(error("CS-2 -T 100 --A 0"), "tarvane: a factor A is a number above 0\n");
    EXPECT_EQ(error("CS-2 -T nan"), "tarvane: a temperature and a yield stress are numbers\n");
    EXPECT_NE(error("CS-2").find("--temperature"), std::string::npos);
    EXPECT_EQ(
        error("NFN-1 -T 100"),
        "tarvane: no chart \"NFN-1\" in ExtChartData.txt, which has CS-2, CS-3 "
        "and HA-1; external pressure on a material of another chart needs one of your own, see "
        "tarvane data\n");
    EXPECT_EQ(tarvane("chart CS-3 -T 100 --yield 40000").status, 0);
    std::filesystem::remove(path("ExtChartData.txt"));
    EXPECT_EQ(error("CS-2 -T 100"), "tarvane: ExtChartData.txt is missing in the data folder " +
                                        folder.string() + " (no version, named by --data)\n");
}

// Tags that open and close in order, attributes in quotes: enough for XML without entities of its own.
void expect_well_formed(const std::string& xml) {
    std::vector<std::string> open;
    std::size_t at = 0;
    while ((at = xml.find('<', at)) != std::string::npos) {
        const std::size_t end = xml.find('>', at);
        ASSERT_NE(end, std::string::npos);
        const std::string tag = xml.substr(at + 1, end - at - 1);
        EXPECT_EQ(tag.find('<'), std::string::npos) << tag;
        EXPECT_EQ(std::count(tag.begin(), tag.end(), '"') % 2, 0) << tag;
        if (tag.starts_with('/')) {
            ASSERT_FALSE(open.empty());
            EXPECT_EQ(open.back(), tag.substr(1));
            open.pop_back();
        } else if (!tag.starts_with('?') && !tag.ends_with('/')) {
            open.push_back(tag.substr(0, tag.find(' ')));
        }
        at = end;
    }
    EXPECT_TRUE(open.empty());
}

TEST_F(Chart, IsDrawnWithItsCurvesAndThePoint) {
    const ProgramRun result = tarvane("chart CS-2 -T 400 --A 0.0005 --svg " + path("chart.svg"));
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_NE(result.out.find("At A = 5.000e-04            B = 7000.00 psi"), std::string::npos)
        << result.out;
    const std::string svg = read(path("chart.svg"));
    EXPECT_TRUE(svg.starts_with("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg "));
    expect_well_formed(svg);
    for (const char* text :
         {">Factor A</text>", ">Factor B, psi</text>", ">300 °F</text>", ">400 °F</text>",
          ">500 °F</text>", "point A = 0.0005, B = 7\u00A0000 psi", "E = 28.0 · 10⁶ psi at 400 °F"})
        EXPECT_NE(svg.find(text), std::string::npos) << text;
    EXPECT_EQ(svg.find("nan"), std::string::npos);
    EXPECT_EQ(svg.find("inf"), std::string::npos);
    const std::string si = path("si.svg");
    EXPECT_EQ(tarvane("chart CS-2 -T 200 --units si --svg " + si).status, 0);
    EXPECT_NE(read(si).find(">Factor B, MPa</text>"), std::string::npos);
}

TEST_F(Chart, DrawingIsWrittenWhollyOrNotAtAll) {
    const ProgramRun result = tarvane("chart CS-2 -T 400 --svg " + path("no/such/chart.svg"));
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.err, "tarvane: cannot write " + path("no/such/chart.svg") +
                              ": No such file or directory\n");
}

} // namespace
} // namespace tarvane::app
