#include "materials/ucs23_list.h"

#include "../data_folder.h"

namespace tarvane {
namespace {

class Ucs23List : public data_test::DataTest {
  protected:
    void list(const std::string& text) { write_file("system", "VIII-1_Matls_By_Table.txt", text); }
};

TEST_F(Ucs23List, NamesAreFoundToTheLetter) {
    list("; Table UCS-23\n\n[Table UCS-23]\nSA-36\nSA-516 70   \r\n\n SA-105\n");
    EXPECT_TRUE(LIS_UCS23_MATERIAL("SA-36"));
    EXPECT_TRUE(LIS_UCS23_MATERIAL("SA-36      "));
    EXPECT_TRUE(LIS_UCS23_MATERIAL("SA-516 70"));
    EXPECT_FALSE(LIS_UCS23_MATERIAL("SA-516 7"));
    EXPECT_FALSE(LIS_UCS23_MATERIAL("SA-516"));
    EXPECT_FALSE(LIS_UCS23_MATERIAL("sa-36"));
    EXPECT_FALSE(LIS_UCS23_MATERIAL("SA-105")); // begins in column 2
    EXPECT_TRUE(LIS_UCS23_MATERIAL(" SA-105"));
}

TEST_F(Ucs23List, BlankCommentAndSectionLinesAreNoNames) {
    list(";SA-1\nSA-2;\n[SA-3]\nSA-4 [x\n   \nSA-5\n");
    for (const char* name : {";SA-1", "SA-2;", "SA-2", "[SA-3]", "SA-4 [x", "", "   "})
        EXPECT_FALSE(LIS_UCS23_MATERIAL(name)) << name;
    EXPECT_TRUE(LIS_UCS23_MATERIAL("SA-5"));
}

TEST_F(Ucs23List, NamesBehindTheEndDoNotCount) {
    list("SA-36\n[END]\nSA-105\n");
    EXPECT_TRUE(LIS_UCS23_MATERIAL("SA-36"));
    EXPECT_FALSE(LIS_UCS23_MATERIAL("SA-105"));
}

TEST_F(Ucs23List, LinesCountFiftyColumns) {
    const std::string name(50, 'x');
    list(name + "tail\n" + "last, no line end");
    EXPECT_TRUE(LIS_UCS23_MATERIAL(name));
    EXPECT_FALSE(LIS_UCS23_MATERIAL(name + "tail"));
    EXPECT_TRUE(LIS_UCS23_MATERIAL("last, no line end"));
}

TEST_F(Ucs23List, TheFileLiesInTheSystemFolderAndIsClosedAgain) {
    EXPECT_FALSE(LIS_UCS23_MATERIAL("SA-36"));
    write_file("library", "VIII-1_Matls_By_Table.txt", "SA-36\n");
    EXPECT_FALSE(LIS_UCS23_MATERIAL("SA-36"));
    list("SA-36\nSA-105\n");
    Int before = 0, after = 0;
    GETNEXTUNIT(before);
    EXPECT_TRUE(LIS_UCS23_MATERIAL("SA-36"));
    EXPECT_FALSE(LIS_UCS23_MATERIAL("SA-1"));
    GETNEXTUNIT(after);
    EXPECT_EQ(before, after);
}

} // namespace
} // namespace tarvane
