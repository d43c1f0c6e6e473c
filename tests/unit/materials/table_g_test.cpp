#include "materials/table_g.h"

#include "../data_folder.h"

namespace tarvane {
namespace {

constexpr int TABLE_LINES = 470;
constexpr int TABLE_KEYS[] = {4,  5,   6,   8,   10,  15,  20,  25,  30,  40,  50,  60,
                              80, 100, 125, 150, 200, 250, 300, 400, 500, 600, 800, 1000};

// A = 1 / (D/t * L/D), a straight line on logarithms.
std::string row(Real key, Real ld) {
    char line[40];
    std::snprintf(line, sizeof line, "%g %.6E\n", static_cast<double>(ld),
                  static_cast<double>(1.0f / (key * ld)));
    return line;
}
std::string header(int key) { return "[" + std::to_string(key) + "]\n"; }

// L/D 0.5, 1, 2, and on to 2 to the power of 16.
std::string section(int key) {
    std::string text = header(key);
    for (Real ld = 0.5f; ld <= 65536.0f; ld *= 2.0f)
        text += row(static_cast<Real>(key), ld);
    return text;
}

// Comments up to the full number of lines, in front.
std::string lines_of(const std::string& text, int lines = TABLE_LINES) {
    std::string comments;
    for (auto n = std::count(text.begin(), text.end(), '\n'); n < lines; ++n)
        comments += n % 2 == 0 ? "; filler [4]\n" : "\n";
    return comments + text;
}

std::string whole_table(int without = 0) {
    std::string text;
    for (const int key : TABLE_KEYS)
        if (key != without) text += section(key);
    return lines_of(text);
}

class TableG : public data_test::DataTest {
  protected:
    void use(const std::string& text, const std::string& place = "library") const {
        write_file(place, "TableGData.txt", text);
        RESET_MATERIALS();
    }
    static Real factor(Real dt, Real ld) {
        Real a = 7.0f;
        TABLE_G_FACTOR_A(dt, ld, a);
        return a;
    }
    static Real in_row(Real key, Real ld) {
        Real a = 7.0f;
        TABLE_G_ROW(key, ld, a);
        return a;
    }
    static void expect_close(Real a, double b) {
        EXPECT_NEAR(static_cast<double>(a), b, 2.0e-5 * b);
    }
};

TEST_F(TableG, EveryKeyHasItsSection) {
    use(whole_table());
    for (const int key : TABLE_KEYS) {
        expect_close(in_row(static_cast<Real>(key), 3.0f), 1.0 / (3.0 * key));
        expect_close(factor(static_cast<Real>(key), 3.0f), 1.0 / (3.0 * key));
    }
    EXPECT_EQ(in_row(7.0f, 3.0f), -1.0f);
}

TEST_F(TableG, BetweenTwoKeysTheMeanOfBothInterpolations) {
    use(whole_table());
    const double a1 = 1.0 / (10.0 * 3.0), a2 = 1.0 / (15.0 * 3.0);
    const double linear = a1 + (a2 - a1) * (12.0 - 10.0) / (15.0 - 10.0);
    expect_close(factor(12.0f, 3.0f), (linear + 1.0 / (12.0 * 3.0)) / 2.0);
    EXPECT_GT(factor(12.0f, 3.0f), 1.0f / 36.0f);
    const double b1 = 1.0 / 1600.0, b2 = 1.0 / 2000.0;
    expect_close(factor(900.0f, 2.0f), ((b1 + b2) / 2.0 + 1.0 / 1800.0) / 2.0);
}

TEST_F(TableG, TheEndsOfTheKeys) {
    use(whole_table());
    for (const Real dt : {-5.0f, 0.0f, 3.9f, 4.0f})
        expect_close(factor(dt, 3.0f), 1.0 / 12.0);
    for (const Real dt : {1000.0f, 1000.1f, 5000.0f, INFINITY})
        expect_close(factor(dt, 3.0f), 1.0 / 3000.0);
    // At 1000 the previous key is used, too; above it only 1000 itself.
    use(whole_table(800));
    EXPECT_EQ(factor(1000.0f, 3.0f), -1.0f);
    expect_close(factor(1000.1f, 3.0f), 1.0 / 3000.0);
    // At 5 the keys 4 and 5, at 4 too.
    use(whole_table(6));
    expect_close(factor(5.0f, 3.0f), 1.0 / 15.0);
    use(whole_table(5));
    EXPECT_EQ(factor(4.0f, 3.0f), -1.0f);
    EXPECT_EQ(factor(5.0f, 3.0f), -1.0f);
    EXPECT_EQ(factor(6.0f, 3.0f), -1.0f);
    expect_close(factor(8.0f, 3.0f), 1.0 / 24.0);
}

TEST_F(TableG, WithinASectionOnLogarithmsUpToTheLastRow) {
    use(whole_table());
    for (const Real ld : {0.75f, 1.0f, 1.5f, 48.0f, 65536.0f})
        expect_close(in_row(100.0f, ld), 0.01 / static_cast<double>(ld));
    EXPECT_EQ(in_row(100.0f, 65537.0f), -1.0f);  // the next header
    EXPECT_EQ(in_row(1000.0f, 65537.0f), -1.0f); // the end
    EXPECT_EQ(factor(100.0f, 65537.0f), -1.0f);
}

TEST_F(TableG, TheLineBeforeTheRowDecides) {
    use(whole_table());
    EXPECT_EQ(in_row(100.0f, 0.4f), -1.0f); // a header
    EXPECT_EQ(in_row(100.0f, 0.5f), -1.0f);
    use(lines_of("[100]\n; 1 2\n0.5 0.1\n2 0.2\n"));
    EXPECT_EQ(in_row(100.0f, 0.4f), -1.0f); // a comment
    expect_close(in_row(100.0f, 1.0f), 0.141421356);
    use(lines_of("[100]\n\n0.5 0.1\n; 1 2\n2 0.2\n\n4 0.3\n"));
    EXPECT_EQ(in_row(100.0f, 0.4f), 0.1f); // a blank line: the row as it is
    EXPECT_EQ(in_row(100.0f, 1.0f), -1.0f);
    EXPECT_EQ(in_row(100.0f, 3.0f), 0.3f);
}

TEST_F(TableG, ALineThatCannotBeReadEndsTheLookup) {
    use(lines_of("[4]\n\n1 0.1\n[END]\n[100]\n\n1 0.5\n"));
    EXPECT_EQ(in_row(4.0f, 1.0f), 0.1f);
    EXPECT_EQ(in_row(100.0f, 1.0f), -1.0f); // "END" is no number
    use(lines_of("[100]\n\n1 0.5\n2\n3 0.7\n"));
    EXPECT_EQ(in_row(100.0f, 1.0f), 0.5f);
    EXPECT_EQ(in_row(100.0f, 2.0f), -1.0f);
    EXPECT_EQ(in_row(100.0f, 3.0f), -1.0f);
}

TEST_F(TableG, HeadersMayStandAnywhereInALineButNotInAComment) {
    use(lines_of("  D/t [100] x\n\n  ; [4]\n 1 0.5\n"));
    EXPECT_EQ(in_row(4.0f, 1.0f), -1.0f);
    EXPECT_EQ(in_row(100.0f, 1.0f), -1.0f); // the comment comes before the row
    use(lines_of("  D/t [100.0] x\n\n 1 0.5\n"));
    EXPECT_EQ(in_row(100.0f, 1.0f), 0.5f);
}

TEST_F(TableG, ALineEndsAtColumn20) {
    use(lines_of(
        "[100]\n\n1 0.5              7\n2 0.1             79\n3 0.1                  9\n"));
    EXPECT_EQ(in_row(100.0f, 1.0f), 0.5f);
    expect_close(in_row(100.0f, 3.0f), 0.1);
}

TEST_F(TableG, AFactorThatIsNotPositiveIsNoAnswer) {
    use(lines_of("[4]\n\n1 0.1\n[5]\n\n1 0\n[6]\n\n1 -0.1\n"));
    EXPECT_EQ(in_row(4.0f, 1.0f), 0.1f);
    EXPECT_EQ(in_row(6.0f, 1.0f), -0.1f);
    EXPECT_EQ(factor(4.5f, 1.0f), -1.0f);
    EXPECT_EQ(factor(5.5f, 1.0f), -1.0f);
}

TEST_F(TableG, NotANumber) {
    use(whole_table());
    EXPECT_EQ(factor(10.0f, std::nanf("")), -1.0f);
    expect_close(factor(std::nanf(""), 3.0f), 1.0 / 3000.0); // no key bounds it
}

TEST_F(TableG, OnlyACompleteTableIsKept) {
    use(lines_of("[4]\n\n1 0.1\n", TABLE_LINES - 1));
    EXPECT_EQ(in_row(4.0f, 1.0f), 0.1f);
    write_file("library", "TableGData.txt", lines_of("[4]\n\n1 0.2\n"));
    EXPECT_EQ(in_row(4.0f, 1.0f), 0.2f);
    write_file("library", "TableGData.txt", lines_of("[4]\n\n1 0.3\n"));
    EXPECT_EQ(in_row(4.0f, 1.0f), 0.2f);
    RESET_MATERIALS();
    EXPECT_EQ(in_row(4.0f, 1.0f), 0.3f);
    remove_file("library", "TableGData.txt");
    RESET_MATERIALS();
    EXPECT_EQ(in_row(4.0f, 1.0f), -1.0f);
    EXPECT_EQ(factor(4.0f, 1.0f), -1.0f);
}

TEST_F(TableG, NothingBehindLine470Counts) {
    use(lines_of("[4]\n\n1 0.1\n2 0.2\n", TABLE_LINES + 1));
    EXPECT_EQ(in_row(4.0f, 1.0f), 0.1f);
    EXPECT_EQ(in_row(4.0f, 2.0f), -1.0f);
}

TEST_F(TableG, TheFileLiesBesideTheLibraryOnly) {
    use(whole_table(), "system");
    EXPECT_EQ(factor(10.0f, 3.0f), -1.0f);
    SET_MODULE_DIR("");
    EXPECT_EQ(factor(10.0f, 3.0f), -1.0f);
    SET_MODULE_DIR((folder / "system").string());
    expect_close(factor(10.0f, 3.0f), 1.0 / 30.0);
}

} // namespace
} // namespace tarvane
