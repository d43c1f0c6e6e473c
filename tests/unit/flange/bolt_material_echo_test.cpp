// The bolt material against the bolt diameter, as the input echo asks for it.
#include "../data_folder.h"
#include "../material_file.h"
#include "sample_flange.h"

#include <algorithm>

namespace tarvane {
namespace {

constexpr const char* QUESTION =
    "It seems as if the selected bolt material does not match the bolt diameter range";

class BoltMaterialEcho : public data_test::DataTest {
  protected:
    SampleFlange flange;

    // The report of the sample flange, its bolt material made from 2-1/2 to 4 in.
    std::vector<std::string> report() {
        write_file(
            "system", "MATFILE1.BIN",
            material_test::material_file(
                1, 0, {material_test::Record("SA-193 B7", 4).put(364, 2.5f).put(368, 4.0f)}));
        flange.at(75) = 4.0f;
        UNITS = UNIT_CONSTANTS{};
        IWRITE = IWRTFL = 1;
        IOUT = -1;
        flange.run();
        return stored_lines();
    }
};

TEST_F(BoltMaterialEcho, StandsBehindTheTableAndBeforeTheImage) {
    const std::vector<std::string> lines = report();
    const auto at = [&](std::string_view text) {
        return std::find_if(lines.begin(), lines.end(), [&](const std::string& line) {
            return line.find(text) != std::string::npos;
        });
    };
    ASSERT_NE(at(QUESTION), lines.end());
    EXPECT_LT(at("Flange Face Nubbin Width"), at(QUESTION));
    EXPECT_EQ(at("</Image"), at("for the given nominal bolt diameter.") + 1);
}

TEST_F(BoltMaterialEcho, IsNotAskedForSpecialBoltsAndOtherCodes) {
    flange.at(23) = 3.0f;
    flange.at(51) = 0.302f;
    EXPECT_FALSE(has_line(report(), QUESTION));
    flange.at(23) = 1.0f;
    flange.code = 3;
    EXPECT_FALSE(has_line(report(), QUESTION));
    flange.code = 1;
    flange.at(22) = 3.0f; // within its range
    EXPECT_FALSE(has_line(report(), QUESTION));
}

} // namespace
} // namespace tarvane
