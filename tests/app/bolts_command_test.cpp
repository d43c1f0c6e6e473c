// tarvane bolts: the thread series, and the sizes of one.
#include "app_fixture.h"

namespace tarvane::app {
namespace {

using Bolts = ProgramTest;

TEST_F(Bolts, SeriesAreListedWithStatusEditionAndSource) {
    const ProgramRun result = run("bolts");
    EXPECT_EQ(result.status, 0) << result.err;
    for (const char* line :
         {"\nTEMA IMPERIAL   0.5 to 4 in.      published    9th edition       TEMA Standards\n",
          "\nTEMA METRIC     12 to 100 mm      published    9th edition       TEMA Standards\n",
          "\nBS 3643         12 to 80 mm       approximate  TEMA 9th edition  ISO metric coarse; "})
        EXPECT_NE(result.out.find(line), std::string::npos) << line << result.out;
}

TEST_F(Bolts, SizesHaveTheFiguresOfTheTable) {
    const ProgramRun tema = run("bolts TEMA");
    EXPECT_EQ(tema.status, 0) << tema.err;
    EXPECT_NE(tema.out.find("\n      2.5000      4.2920      5.2500      3.0625      3.0625      "
                            "2.5000\n"),
              std::string::npos)
        << tema.out;
    EXPECT_NE(tema.out.find("\nFigures: published, 9th edition: TEMA Standards\n"),
              std::string::npos);
    EXPECT_EQ(tema.out.find("Approximate"), std::string::npos);
    const ProgramRun iso = run("bolts 'bs 3643'");
    EXPECT_NE(iso.out.find("\n       14.00      104.70       44.45       28.54       28.54       "
                           "20.64\n"),
              std::string::npos)
        << iso.out;
    EXPECT_NE(iso.out.find("\nApproximate figures: replace BOLTDATA.TXT by one made from"),
              std::string::npos);
}

TEST_F(Bolts, WhatIsNotThereIsRefused) {
    const ProgramRun other = run("bolts ISO");
    EXPECT_EQ(other.status, 2);
    EXPECT_EQ(other.out, "");
    EXPECT_EQ(other.err.find("tarvane: no thread series \"ISO\" in BOLTDATA.TXT, which has TEMA "
                             "IMPERIAL, UNC, TEMA METRIC"),
              0u)
        << other.err;
    std::filesystem::create_directory(path("data"));
    EXPECT_EQ(run("bolts --data " + path("data")).err.find("tarvane: BOLTDATA.TXT is missing in "),
              0u);
}

} // namespace
} // namespace tarvane::app
