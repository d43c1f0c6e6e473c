// What a turn of the engine leaves to the next one: nothing but what its folder keeps.
#include "app_fixture.h"
#include "catalogue/charts.h"
#include "catalogue/data_folder.h"
#include "catalogue/data_sources.h"
#include "surface/engine_turn.h"

using namespace tarvane::vessel;

namespace {

TEST(EngineTurn, EndsWithTheFolderThatTheProcessHadBefore) {
    const std::string own = testing::TempDir() + "no_data_files";
    std::filesystem::create_directories(own);
    set_data_folder(TARVANE_DATA_DIR);
    const std::string how = data_folder().how;
    const std::size_t charts = chart_names().size();
    EXPECT_GT(charts, 0u);
    for (int turns = 0; turns < 2; ++turns) {
        const EngineTurn turn(DataFolder{own, "of the turn"});
        EXPECT_EQ(data_folder().how, "of the turn");
        EXPECT_TRUE(chart_names().empty());
        EXPECT_EQ(read_curve("CS-2", 300.0f, 0.0f).E, 0.0f); // by the engine
    }
    EXPECT_EQ(data_folder().how, how);
    EXPECT_EQ(chart_names().size(), charts);
    EXPECT_GT(read_curve("CS-2", 300.0f, 0.0f).E, 0.0f);
}

TEST(EngineTurn, OfAFolderThatIsNotThereChangesNothing) {
    set_data_folder(TARVANE_DATA_DIR);
    const std::string how = data_folder().how;
    EXPECT_THROW(EngineTurn turn(DataFolder{"/no/such/folder", "lost"}), NoData);
    EXPECT_EQ(data_folder().how, how);
    EXPECT_GT(read_curve("CS-2", 300.0f, 0.0f).E, 0.0f);
}

TEST(EngineTurn, AFolderKeepsItsSourcesOverTurns) {
    const DataFolder one{TARVANE_DATA_DIR, "one"}, other{TARVANE_DATA_DIR, "other"};
    const auto sources_in = [](const DataFolder& folder) {
        const EngineTurn turn(folder);
        return data_sources();
    };
    const auto read = sources_in(one);
    EXPECT_NE(sources_in(other), read);
    EXPECT_EQ(sources_in(one), read);
    const DataFolder copy = one;
    EXPECT_EQ(sources_in(copy), read);
}

} // namespace
