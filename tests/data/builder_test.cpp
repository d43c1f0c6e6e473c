// The program tarvane-data: all files or none, and the place of whatever is wrong.
#include "test_paths.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

const fs::path TABLES = fs::path(TARVANE_SOURCE_DIR) / "data/sources";

std::string content(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

struct Outcome {
    int status;
    std::string complaint;
};

class DataBuilder : public testing::Test {
  protected:
    void SetUp() override {
        fs::remove_all(folder);
        fs::create_directories(out);
        fs::copy(TABLES, sources);
    }
    void TearDown() override { fs::remove_all(folder); }

    void replace(const std::string& file, const std::string& text, const std::string& by) const {
        std::string table = content(sources / file);
        const std::size_t at = table.find(text);
        ASSERT_NE(at, std::string::npos) << text << " in " << file;
        std::ofstream(sources / file, std::ios::binary) << table.replace(at, text.size(), by);
    }

    Outcome outcome() const {
        const std::string command = std::string("\"") + TARVANE_DATA_PROGRAM + "\" \"" +
                                    sources.string() + "\" \"" + out.string() + "\" 2> \"" +
                                    (folder / "complaint").string() + "\"";
        const int status = std::system(command.c_str());
        return {status, content(folder / "complaint")};
    }

    const fs::path folder = fs::path(testing::TempDir()) / "tarvane_data_builder";
    const fs::path sources = folder / "sources", out = folder / "out";
};

TEST_F(DataBuilder, MakesTheFilesThatLieBesideTheLibrary) {
    const Outcome made = outcome();
    ASSERT_EQ(made.status, 0) << made.complaint;
    EXPECT_EQ(made.complaint, "");
    std::size_t count = 0;
    for (const fs::directory_entry& file : fs::directory_iterator(out)) {
        const fs::path built = fs::path(TARVANE_DATA_DIR) / file.path().filename();
        EXPECT_TRUE(content(file.path()) == content(built)) << file.path();
        EXPECT_GT(fs::file_size(file.path()), 0u);
        ++count;
    }
    EXPECT_GE(count, 11u);
}

struct Fault {
    const char *file, *text, *by, *complaint;
};

// One broken row for each check of the tables; the complaint after its file and line.
constexpr Fault FAULTS[] = {
    {"materials_viii1.csv", "SA-516 65", "SA-516 65 and more",
     ": name: longer than 16 characters: \"SA-516 65 and more\""},
    // Its name has nothing to look it up by: only reading the file back finds this row.
    {"materials_viii1.csv", "SA-285 C", "-./-", ": name: not found again in MATFILE1.BIN"},
    {"materials_viii1.csv", "\n9 ", "\n8 ", ": reference: \"8\" stands already in line "},
    {"materials_viii1.csv", "17.9", "19.9", ": 600: higher than the figure before: 19.9"},
    {"materials_viii1.csv", "Plate     ", "          ", ": form: empty"},
    {"materials_viii1.csv", ", exempt", ", E     ", ": curve: not one of the words for it: \"E\""},
    {"materials_viii1.csv", ", UCS ", ", UCX ", ": part: not one of the words for it: \"UCX\""},
    {"materials_viii1.csv", ", -50 ", ", 50  ", ": impact_temperature: not below 1: 50"},
    {"materials_viii1.csv", "2.5     , 4       ", "4       , 2.5     ",
     ": max_size: not above min_size: \"2.5\""},
    {"materials_viii1.csv", "approximate", "sure       ",
     ": status: neither \"published\", \"checked\" nor \"approximate\": \"sure\""},
    {"materials_viii1.csv", "checked    , list-2001", "checked    , ",
     ": status: checked, but the column checks names no source"},
    {"materials_viii2_class1.csv", "SA-516 70", "SA-516 71",
     ": name: \"SA-516 71\" where materials_viii1.csv has \"SA-516 70\" for this reference"},
    {"materials_viii2_class2.csv", "\n1 ", "\n0 ", ": reference: 0 is not in materials_viii1.csv"},
    {"materials_viii2_class2.csv", "\n2 ", "\n1 ", ": name: \"SA-516 65\" where"},
    {"yields.csv", "38.0", "-38.", ": 100: not above 0: -38."},
    {"yields.csv", "38.0", "    ", ": 100: no figure at the first temperature"},
    {"materials_en.csv", "\n2 ", "\n1 ", ": key: \"1\" stands already in line "},
    {"materials_en.csv", ", Rp0.2", ", Rp0.3", ": proof: neither Rp0.2 nor Rp1.0: \"Rp0.3\""},
    {"materials_en.csv", ", 227,", ", 2x7,", ": 50: not a number: \"2x7\""},
    {"charts.csv", ",1.6,", ",1.5,", ": tolerance: the fit misses the points by up to "},
    {"charts.csv", ",1.4,below,", ",1.4,above,", ": fit: neither empty nor below: \"above\""},
    {"charts.csv", ",1.4,below,", ",1.3,below,",
     ": tolerance: the fit misses the points by up to "},
    {"charts.csv", "CS-1,300,29.0", "CS-1,300,28.0", ": modulus: the first point is not on the"},
    {"chart_points.csv", "CS-1,300,1.35e-5", "CS-4,300,1.35e-5",
     ": chart: no curve of this chart and temperature"},
    {"chart_points.csv", "9.0e-4,11806", "9.0e-4,11300", ": b: below the one before"},
    {"bolts.csv", "IMPERIAL,in,0.625", "IMPERIAL,in,0.425", ": diameter: not above the one before"},
    {"bolts.csv", "UNC,in,0.5,", "UNX,in,0.5,", ": series: no thread series"},
    {"flange_dimensions.csv", "150,26,A,", "150,26,,",
     ": series: A or B belongs to the sizes from NPS 26 on"},
    {"flange_dimensions.csv", "150,26,A,", "150,26,C,", ": series: neither A, B nor empty"},
    {"flange_dimensions.csv", "150,28,B,", "150,28,A,", ": series: before that of the row before"},
    {"flange_dimensions.csv", "150,0.75,", "151,0.75,", ": class: no flange class"},
    {"flange_dimensions.csv", "150,0.75,", "150,0.25,", ": size: not above the one before"},
    {"flange_dimensions.csv", "0.75,,3.88,", "0.75,,2.88,",
     ": outside: the bolt holes reach the edge"},
    {"flange_dimensions.csv", "2.75,0.625,4,", "2.75,0.625,6,", ": bolts: not a multiple of four"},
    {"moduli.csv", "31.4,30.8,30.3", "31.4,,30.3", ": -100: a gap before this value"},
    {"moduli.csv", "\n3,TM-1", "\n2,TM-1", ": reference: given twice"},
    {"expansion.csv", "6.4,6.5,6.6", "6.4,6.543,6.6", ": 100: written as 6.543, read back as 6.54"},
    {"table_g.csv", "\n4,0.05,", "\n4,0.06,", ": l_do: the first one is not 0.05"},
    {"table_g.csv", "150,50,4.89e-05", "150,50,5.89e-05", ": a: above the one before"},
};

TEST_F(DataBuilder, RefusesABrokenRowByItsPlaceAndWritesNothing) {
    for (const Fault& fault : FAULTS) {
        SCOPED_TRACE(fault.complaint);
        replace(fault.file, fault.text, fault.by);
        // The line of the fault, by counting.
        const std::string table = content(sources / fault.file);
        const std::string original = content(TABLES / fault.file);
        const std::size_t at = original.find(fault.text) + (fault.text[0] == '\n' ? 1 : 0);
        const auto line = 1 + std::count(original.begin(),
                                         original.begin() + static_cast<std::ptrdiff_t>(at), '\n');

        const Outcome refused = outcome();
        EXPECT_NE(refused.status, 0);
        const std::string place = std::string("tarvane-data: ") + fault.file + ":" +
                                  std::to_string(line) + fault.complaint;
        EXPECT_EQ(refused.complaint.substr(0, place.size()), place) << refused.complaint;
        EXPECT_TRUE(fs::is_empty(out));
        fs::copy_file(TABLES / fault.file, sources / fault.file,
                      fs::copy_options::overwrite_existing);
    }
}

// A curve without a level at its end is fitted to both sides.
TEST_F(DataBuilder, RefusesACurveAboveThePointsThatItIsToStayBelow) {
    replace("chart_points.csv", "CS-2,300,2.5e-2,17550", "CS-2,300,2.5e-2,17500");
    replace("charts.csv", ",1.4,below,", ",9,below,");
    const std::string complaint = outcome().complaint;
    EXPECT_NE(complaint.find(": fit: B = "), std::string::npos) << complaint;
    replace("charts.csv", ",9,below,", ",9,,");
    EXPECT_EQ(outcome().status, 0);
}

TEST_F(DataBuilder, LeavesTheFilesOfAnEarlierRunWhenARowIsBroken) {
    std::ofstream(out / "MATFILE1.BIN") << "earlier";
    replace("yields.csv", "38.0", "x");
    EXPECT_NE(outcome().status, 0);
    EXPECT_TRUE(content(out / "MATFILE1.BIN") == "earlier");
}

TEST_F(DataBuilder, MovesNothingWhenAFileHasNoPlace) {
    fs::create_directories(out / "MATFILE1.BIN" / "other");
    const Outcome refused = outcome();
    EXPECT_NE(refused.status, 0);
    EXPECT_EQ(refused.complaint,
              "tarvane-data: MATFILE1.BIN: a folder of this name is in its place\n");
    const auto entries = std::distance(fs::directory_iterator(out), fs::directory_iterator());
    EXPECT_EQ(entries, 1);
    EXPECT_TRUE(fs::is_directory(out / "MATFILE1.BIN" / "other"));
}

// The properties of a Division 2 record come from another table than its stresses: it is as sure as the
// less sure of the two.
TEST_F(DataBuilder, MarksARecordWhenItsPropertiesOrItsStressesAreApproximate) {
    const auto first_note = [&](const std::string& file) {
        constexpr std::size_t RECORD = 414, NOTE = 100, WIDTH = 40;
        std::string note = content(out / file).substr(RECORD + NOTE, WIDTH);
        note.erase(note.find_last_not_of(' ') + 1);
        return note;
    };
    constexpr const char *MARKED = "Carbon steel; approximate", *BARE = "Carbon steel";
    replace("materials_viii2_class2.csv", "approximate", "published  ");
    ASSERT_EQ(outcome().status, 0);
    EXPECT_EQ(first_note("MATFILE1.BIN"), BARE);
    EXPECT_EQ(first_note("MATFILE2.BIN"), BARE);
    EXPECT_EQ(first_note("MatFileD2C1.BIN"), MARKED);

    replace("materials_viii1.csv", "checked    , list-2001", "approximate, list-2001");
    ASSERT_EQ(outcome().status, 0);
    EXPECT_EQ(first_note("MATFILE1.BIN"), MARKED);
    EXPECT_EQ(first_note("MATFILE2.BIN"), MARKED);
}

// A host finds the status, the edition and the source of an item beside the files.
TEST_F(DataBuilder, ListsWhereEachItemComesFrom) {
    replace("materials_viii1.csv", "approximate",
            "published  "); // SA-182 F304 above 5 in., one of its rows
    ASSERT_EQ(outcome().status, 0);
    const std::string list = content(out / "data_sources.txt");
    for (const char* line :
         {"\n[MATFILE1.BIN]\nSA-516 70, 1|checked|1999 addenda and later|II-D Table 1A "
          "(customary), "
          "confirmed by a public list of "
          "about 2001",
          "\nSA-182 F304, 161|published|", "\nSA-312 TP321, 165|approximate|",
          "\nSA-193 B7, 401|approximate|",
          "\n[MATFILE2.BIN]\nSA-516 70, 1|approximate|2017 and later|two thirds of the Y-1",
          "\nclass 150 size 26 A|checked|not stated|ASME B16.47 series A|\n",
          "\nclass 150 size 4|checked|2020 in one copy|B16.5: ",
          "\nclass 300 size 5 raised face|approximate|",
          "\nTEMA IMPERIAL|published|9th edition|TEMA Standards|\n",
          "\nUNC|published|TEMA 9th edition|", "\nmodulus 3|checked|2007 and later|",
          "\nmodulus 2|approximate|not stated|", "\nexpansion 7|published|before 2010|",
          "\nCS-1|published|not stated|", "\nCS-1 300|published|not stated|",
          "\n150|published|not stated|", "\n4|approximate||computed|",
          "\n5|approximate|before 2003 from 200 C|", "|largest error of the fit -1.57 % at A = "})
        EXPECT_NE(list.find(line), std::string::npos) << line;
    EXPECT_TRUE(list.ends_with("\n[END]\n"));
}

// A host that asks for a yield strength gets no record with a mark.
TEST_F(DataBuilder, ListsApproximateYieldStrengths) {
    replace("yields.csv", ", approximate", ", published  ");
    ASSERT_EQ(outcome().status, 0);
    const std::string list = content(out / "approximate.txt");
    for (const char* section : {"\n[YIELDSTR.BIN]\nSA-516 65\n", "\n[YIELDSTRM.BIN]\nSA-516 65\n"})
        EXPECT_NE(list.find(section), std::string::npos) << section;
}

TEST_F(DataBuilder, RefusesAFolderWithoutATable) {
    fs::remove(sources / "yields.csv");
    const Outcome refused = outcome();
    EXPECT_NE(refused.status, 0);
    EXPECT_EQ(refused.complaint, "tarvane-data: yields.csv: cannot be opened\n");
    EXPECT_TRUE(fs::is_empty(out));
}

TEST_F(DataBuilder, RefusesAnOutputFolderThatIsAFile) {
    fs::remove(out);
    std::ofstream(out) << "a file";
    EXPECT_NE(outcome().status, 0);
    EXPECT_EQ(content(out), "a file");
}

} // namespace
