#include "foundation/foundation_files.h"

#include "../host/scratch.h"
#include "frame/element_tables.h"
#include "tarvane/tarvane.h"
#include "test_paths.h"

#include <map>
#include <rapidxml/rapidxml.hpp>
#include <regex>

namespace tarvane::host_test {
namespace {

// Text of each element of an XML file by its path ("a/b"); the complaint instead of a result.
struct Xml {
    std::map<std::string, std::string> texts;
    std::string error;

    explicit Xml(std::string bytes) {
        // What the parser accepts: control characters, and "&" that begins no entity.
        const std::regex stray("[\\x00-\\x08\\x0B\\x0C\\x0E-\\x1F]|&(?!(amp|lt|gt|quot|apos);)");
        std::smatch found;
        if (std::regex_search(bytes, found, stray)) {
            error = "not well-formed at byte " + std::to_string(found.position());
            return;
        }
        try {
            rapidxml::xml_document<> document;
            document.parse<rapidxml::parse_validate_closing_tags>(bytes.data());
            for (auto* node = document.first_node(); node != nullptr; node = node->next_sibling())
                take(*node, "");
        } catch (const rapidxml::parse_error& complaint) {
            error = complaint.what();
        }
    }
    std::string at(const std::string& element) const {
        const auto found = texts.find("/FoundationInterface/" + element);
        return found == texts.end() ? "" : found->second;
    }

  private:
    void take(const rapidxml::xml_node<>& node, const std::string& above) {
        std::string path = above + "/" + node.name();
        for (auto* a = node.first_attribute(); a != nullptr; a = a->next_attribute())
            if (std::string(a->name()) == "case") path += a->value();
        for (auto* inner = node.first_node(); inner != nullptr; inner = inner->next_sibling()) {
            if (inner->type() == rapidxml::node_element)
                take(*inner, path);
            else
                texts[path] += inner->value();
        }
    }
};

// "section.key" and its value, in the order of the file.
std::vector<std::pair<std::string, std::string>> ini_keys(const std::string& text) {
    std::vector<std::pair<std::string, std::string>> keys;
    std::istringstream lines(text);
    std::string line, section;
    while (std::getline(lines, line)) {
        if (line.front() == '[') {
            section = line;
            continue;
        }
        const auto equals = line.find('=');
        keys.emplace_back(section + line.substr(0, equals), line.substr(equals + 1));
    }
    return keys;
}
using Keys = std::vector<std::pair<std::string, std::string>>;

class FoundationFiles : public HostTest {
  protected:
    FoundationFiles() {
        ::RESET_ENGINE();
        SET_SYSTEM_DIR(scratch.path());
        std::filesystem::copy_file(std::string(TARVANE_DATA_DIR) + "/PLWXML.TXT",
                                   scratch.file("PLWXML.TXT"));
        SERVICES.user = this;
        SERVICES.message_box = [](void* user, const char* text, const char* title) {
            static_cast<FoundationFiles*>(user)->messages.push_back(std::string(title) + ": " +
                                                                    text);
        };
        FOUNDATION_RECORD_DEFAULTS();
        VERTICAL_FOUNDATION& v = FOUNDATION.vertical;
        Real value = 1.0f;
        for (Real* real : {&v.diameter, &v.height, &v.posElevation, &v.boltCircle, &v.anchorCount,
                           &v.anchorSize, &v.emptyWeight, &v.operatingWeight, &v.testWeight,
                           &v.windShear, &v.windMoment, &v.earthquakeShear, &v.earthquakeMoment})
            *real = value++;
        HORIZONTAL_FOUNDATION& h = FOUNDATION.horizontal;
        value = 101.5f;
        for (Real* real :
             {&h.length, &h.saddleDistance, &h.saddleLength, &h.saddleWidth, &h.shellTemperature,
              &h.centerElevation, &h.posToCenter, &h.emptyWeight, &h.operatingWeight, &h.testWeight,
              &h.bundleWeight, &h.friction, &h.windPressure, &h.earthquakeFactor, &h.anchorCount,
              &h.anchorSize, &h.posElevation})
            *real = value++;
        FOUNDATION.company = "A & B <Works>";
    }
    ~FoundationFiles() override { ::RESET_ENGINE(); }

    void write(Int vertical, Int exchanger = 0) {
        WRITE_FOUNDATION_FILES(scratch.file("tower.tvn"), vertical, exchanger);
    }
    std::string with_template(const std::string& text, Int vertical = 1) {
        scratch.write("PLWXML.TXT", text);
        write(vertical);
        return scratch.read("tower.xml");
    }

    std::vector<std::string> messages;
};

TEST_F(FoundationFiles, AVerticalVesselFillsItsTags) {
    write(1);
    const Xml xml(scratch.read("tower.xml"));
    ASSERT_EQ(xml.error, "");
    EXPECT_EQ(xml.at("Equipment/CompanyName"), "A & B <Works>");
    EXPECT_EQ(xml.at("Equipment/EquipmentName"), "tower.tvn");
    EXPECT_EQ(xml.at("Equipment/EquipmentType"), "Vertical Vessel");
    EXPECT_EQ(xml.at("Equipment/Diameter"), "1.000");
    EXPECT_EQ(xml.at("Equipment/Height"), "2.000");
    EXPECT_EQ(xml.at("Support/PointOfSupport"), "3.000");
    EXPECT_EQ(xml.at("Support/BoltCircleDiameter"), "4.000");
    EXPECT_EQ(xml.at("Support/NumberofAnchorBolts"), "5.000");
    EXPECT_EQ(xml.at("Support/SizeofAnchorBolts"), "6.000");
    EXPECT_EQ(xml.at("Loads/Empty/weight"), "7.000");
    EXPECT_EQ(xml.at("Loads/Operating/weight"), "8.000");
    EXPECT_EQ(xml.at("Loads/Test/weight"), "9.000");
    EXPECT_EQ(xml.at("Loads/Wind/shear#WShear"), "10.000");
    EXPECT_EQ(xml.at("Loads/Wind/moment#WMoment"), "11.000");
    EXPECT_EQ(xml.at("Loads/Earthquake/shear#EShear"), "12.000");
    EXPECT_EQ(xml.at("Loads/Earthquake/moment#EMoment"), "13.000");
    // What belongs to a horizontal vessel stays as the template has it.
    EXPECT_EQ(xml.at("Equipment/MaterialType"), "");
    EXPECT_EQ(xml.at("Support/SaddleLength"), "0.000");
    EXPECT_EQ(xml.at("Loads/Wind/pressure#WPressure"), "0.000");
}

TEST_F(FoundationFiles, AHorizontalVesselFillsItsTags) {
    write(0);
    const Xml xml(scratch.read("tower.xml"));
    ASSERT_EQ(xml.error, "");
    EXPECT_EQ(xml.at("Equipment/EquipmentType"), "Horizontal Vessel");
    EXPECT_EQ(xml.at("Equipment/MaterialType"), "Carbon Steel");
    EXPECT_EQ(xml.at("Equipment/Length"), "101.500");
    EXPECT_EQ(xml.at("Support/SaddleSupportDistance"), "102.500");
    EXPECT_EQ(xml.at("Support/SaddleLength"), "103.500");
    EXPECT_EQ(xml.at("Support/SaddleWidth"), "104.500");
    EXPECT_EQ(xml.at("Equipment/ShellDesignTemperature"), "105.500");
    EXPECT_EQ(xml.at("Support/POSToCLDistance"), "107.500");
    EXPECT_EQ(xml.at("Loads/Empty/weight"), "108.500");
    EXPECT_EQ(xml.at("Loads/Operating/weight"), "109.500");
    EXPECT_EQ(xml.at("Loads/Test/weight"), "110.500");
    EXPECT_EQ(xml.at("Support/FrictionCoefficient"), "112.500");
    EXPECT_EQ(xml.at("Loads/Wind/pressure#WPressure"), "113.500");
    EXPECT_EQ(xml.at("Loads/Earthquake/loadfactor#LoadFactor"), "114.500");
    EXPECT_EQ(xml.at("Support/NumberofAnchorBolts"), "115.500");
    EXPECT_EQ(xml.at("Support/SizeofAnchorBolts"), "116.500");
    EXPECT_EQ(xml.at("Support/PointOfSupport"), "117.500");
    EXPECT_EQ(xml.at("Equipment/Diameter"), "0.000");
    EXPECT_EQ(xml.at("Equipment/Height"), "0.000");
}

const std::string GENERAL = "[GENERAL]", SOFTWARE = "[EQUIPMENT DESIGN SOFTWARE INFORMATION]",
                  PARAMETERS = "[EQUIPMENT PARAMETERS]", LOADS = "[EQUIPMENT LOADS]";

Keys head_keys() {
    return {{GENERAL + "Version", "1.0"},
            {GENERAL + "Application", "Plinthwerk"},
            {GENERAL + "Application Version No", "5.0"},
            {GENERAL + "Section 1", "Equipment Parameters"},
            {GENERAL + "Section 2", "Equipment Loads"},
            {SOFTWARE + "Software Vendor", "Kessendale"},
            {SOFTWARE + "Product Name", "TARVANE"},
            {SOFTWARE + "Product Version", "7.0"},
            {SOFTWARE + "Product Type", "Pressure Vessel"},
            {"[UNITS]Length Unit", "Ft"},
            {"[UNITS]Temperature Unit", "deg F"},
            {"[UNITS]Force Unit", "lbs"},
            {"[UNITS]Pressure Unit", "lbs/sq f"},
            {PARAMETERS + "Name", "tower.tvn"}};
}

TEST_F(FoundationFiles, TheIniFileOfAVerticalVesselHasItsKeysInOrder) {
    write(1);
    Keys expected = head_keys();
    for (const auto& key : Keys{{PARAMETERS + "Diameter", "1.000"},
                                {PARAMETERS + "Type", "Vertical Vessel"},
                                {PARAMETERS + "Height", "2.000"},
                                {PARAMETERS + "POS Elevation", "3.000"},
                                {PARAMETERS + "Bolt Circle Diameter", "4.000"},
                                {PARAMETERS + "Number of Anchor Bolts", "5.000"},
                                {PARAMETERS + "Size of Anchor Bolts", "6.000"},
                                {LOADS + "Empty Weight", "7.000"},
                                {LOADS + "Operating Weight", "8.000"},
                                {LOADS + "Test Weight", "9.000"},
                                {LOADS + "Wind Shear", "10.000"},
                                {LOADS + "Wind Moment", "11.000"},
                                {LOADS + "Earthquake Shear", "12.000"},
                                {LOADS + "Earthquake Moment", "13.000"}})
        expected.push_back(key);
    EXPECT_EQ(ini_keys(scratch.read("tower.ini")), expected);
}

TEST_F(FoundationFiles, TheIniFileOfAHorizontalVesselHasItsKeysInOrder) {
    write(2); // any number but 1
    Keys expected = head_keys();
    for (const auto& key : Keys{{PARAMETERS + "Type", "Horizontal Vessel"},
                                {PARAMETERS + "Material", "Carbon Steel"},
                                {PARAMETERS + "Length", "101.500"},
                                {PARAMETERS + "Dist. Between Saddle Supports", "102.500"},
                                {PARAMETERS + "Saddle Length", "103.500"},
                                {PARAMETERS + "Saddle Width", "104.500"},
                                {PARAMETERS + "Shell Design Temp", "105.500"},
                                {PARAMETERS + "C.L. Elevation", "106.500"},
                                {PARAMETERS + "POS To CL Dist", "107.500"},
                                {LOADS + "Empty Weight", "108.500"},
                                {LOADS + "Operating Weight", "109.500"},
                                {LOADS + "Test Weight", "110.500"},
                                {LOADS + "Bundle Weight", "111.500"},
                                {LOADS + "Friction Coefficient", "112.500"},
                                {LOADS + "Wind Pressure", "113.500"},
                                {LOADS + "Earthquake Load Factor", "114.500"}})
        expected.push_back(key);
    EXPECT_EQ(ini_keys(scratch.read("tower.ini")), expected);
}

TEST_F(FoundationFiles, TheXmlFileSpellsOutItsMarksAndTheIniFileDoesNot) {
    FOUNDATION.horizontal.head.material = "SA-516 <70> & \"N\"";
    write(0);
    const std::string xml = scratch.read("tower.xml");
    EXPECT_NE(xml.find(">SA-516 &lt;70&gt; &amp; \"N\"<"), std::string::npos);
    EXPECT_NE(xml.find(">A &amp; B &lt;Works&gt;<"), std::string::npos);
    EXPECT_EQ(Xml(xml).at("Equipment/MaterialType"), "SA-516 <70> & \"N\"");
    EXPECT_NE(scratch.read("tower.ini").find("Material=SA-516 <70> & \"N\"\n"), std::string::npos);
}

// The same head in both with the material in it, which only a horizontal vessel's files use.
TEST_F(FoundationFiles, BothRecordsHoldAMaterialAndHaveOneLength) {
    TARVANE_FOUNDATION_RECORDS* records = ::GETFOUNDATION();
    EXPECT_EQ(sizeof records->vertical, 135u * 4u);
    EXPECT_EQ(sizeof records->horizontal, 135u * 4u);
    for (const TARVANE_FOUNDATION_HEAD* head :
         {&records->vertical.head, &records->horizontal.head}) {
        EXPECT_EQ(head->material - head->version, 428);
        EXPECT_EQ(sizeof *head, 468u);
    }
    std::memcpy(records->vertical.head.material, "Unobtainium", 11);
    write(1);
    EXPECT_EQ(scratch.read("tower.xml").find("Unobtainium"), std::string::npos);
    EXPECT_EQ(scratch.read("tower.ini").find("Unobtainium"), std::string::npos);
}

TEST_F(FoundationFiles, AMessageTellsThatBothAreWritten) {
    write(1);
    EXPECT_EQ(messages,
              std::vector<std::string>{"File Written OK: The Plinth Werk interface files (.xml and "
                                       ".ini) were written in the current directory."});
}

TEST_F(FoundationFiles, AnExchangerStaysOneUntilTheDefaults) {
    write(1, 1);
    EXPECT_EQ(FOUNDATION.vertical.head.vesselType.trimmed(), "Vertical Exchanger");
    EXPECT_EQ(FOUNDATION.horizontal.head.vesselType.trimmed(), "Horizontal Exchanger");
    write(0, 0);
    EXPECT_EQ(Xml(scratch.read("tower.xml")).at("Equipment/EquipmentType"), "Horizontal Exchanger");
    FOUNDATION_RECORD_DEFAULTS();
    EXPECT_EQ(FOUNDATION.vertical.head.vesselType.trimmed(), "Vertical Vessel");
    EXPECT_EQ(FOUNDATION.company.trimmed(), "A & B <Works>");
}

TEST_F(FoundationFiles, TheDefaultsReadTheTwoNumbersOfTheHost) {
    HOST_RECORD.foundation[0] = "12.5";
    HOST_RECORD.foundation[1] = "x";
    FOUNDATION_RECORD_DEFAULTS();
    EXPECT_EQ(FOUNDATION.numbers[0], 12.5f);
    EXPECT_EQ(FOUNDATION.numbers[1], 0.0f);
}

// ---- how a line is filled ------------------------------------------------------------------------

TEST_F(FoundationFiles, TheTextBetweenTheBracketsIsReplaced) {
    EXPECT_EQ(with_template("  <Diameter a=\"x\">old</Diameter> <!-- tail -->\n"),
              "  <Diameter a=\"x\">1.000</Diameter> <!-- tail -->\n");
}

TEST_F(FoundationFiles, ALineWithoutATagIsCopied) {
    EXPECT_EQ(with_template("<Other>5</Other>\n\n  text\n"), "<Other>5</Other>\n\n  text\n");
}

TEST_F(FoundationFiles, OneTagALineTheFirstOfTheListDecides) {
    // "<Diameter>" comes before "Height" in the list, whatever their order in the line.
    EXPECT_EQ(with_template("<Height>a</Height><Diameter>b</Diameter>\n"),
              "<Height>a</Height><Diameter>1.000</Diameter>\n");
}

TEST_F(FoundationFiles, ATagWithoutABracketMatchesAnywhere) {
    EXPECT_EQ(with_template("<ShellHeight>a</ShellHeight>\n"),
              "<ShellHeight>2.000</ShellHeight>\n");
    EXPECT_EQ(with_template("</Height><x>a</x>\n"), "</Height>2.000<x>a</x>\n");
}

TEST_F(FoundationFiles, AClosingTextTakesTheValueBeforeIt) {
    EXPECT_EQ(with_template("<Empty><a>1</a><weight u=\"lb\">2</weight></Empty>\n"),
              "<Empty><a>1</a><weight u=\"lb\">7.000</weight></Empty>\n");
    EXPECT_EQ(with_template("<Empty>2</Empty>\n"), "<Empty>7.000</Empty>\n"); // without it
}

TEST_F(FoundationFiles, ALineWithoutAnEndOfTheValueIsCutThere) {
    EXPECT_EQ(with_template("<Diameter>old text\n"), "<Diameter>1.000\n");
    EXPECT_EQ(with_template("<Diameter\n"), "<Diameter\n");
}

TEST_F(FoundationFiles, ATemplateLineIsReadTo120Columns) {
    EXPECT_EQ(with_template(std::string(119, 'x') + "yz\n"), std::string(119, 'x') + "y\n");
}

// ---- names and failures --------------------------------------------------------------------------

TEST_F(FoundationFiles, TheNameIsWhatLiesBehindTheFolders) {
    WRITE_FOUNDATION_FILES(scratch.file("C:\\jobs\\ column.tvn"), 1, 0);
    EXPECT_EQ(FOUNDATION.vertical.head.name.trimmed(), "column.tvn");
    EXPECT_TRUE(std::filesystem::exists(scratch.file("C:\\jobs\\ column.xml")));
    EXPECT_TRUE(std::filesystem::exists(scratch.file("C:\\jobs\\ column.ini")));
}

TEST_F(FoundationFiles, WithoutTheTemplateNothingIsWritten) {
    std::filesystem::remove(scratch.file("PLWXML.TXT"));
    write(1, 1);
    EXPECT_FALSE(std::filesystem::exists(scratch.file("tower.xml")));
    EXPECT_FALSE(std::filesystem::exists(scratch.file("tower.ini")));
    EXPECT_EQ(FOUNDATION.vertical.head.vesselType.trimmed(), "Vertical Vessel");
    EXPECT_TRUE(messages.empty());
}

TEST_F(FoundationFiles, AFileThatCannotBeWrittenLeavesOutTheIniAndTheMessage) {
    std::filesystem::create_directory(scratch.file("tower.xml"));
    write(1);
    EXPECT_FALSE(std::filesystem::exists(scratch.file("tower.ini")));
    EXPECT_TRUE(messages.empty());
    Int unit = 0;
    GETNEXTUNIT(unit);
    EXPECT_EQ(unit, FIRST_UNIT); // all closed
}

TEST_F(FoundationFiles, ANameWithoutRoomForTheExtensionIsLeftAlone) {
    std::string folder = scratch.path();
    while (folder.size() + 1 + 200 < 259)
        folder += "/d";
    std::filesystem::create_directories(folder);
    for (const std::size_t size : {258u, 300u}) {
        std::string path = folder + "/";
        path.resize(size, 'x');
        std::ofstream(path) << "vessel";
        WRITE_FOUNDATION_FILES(path, 1, 0);
        EXPECT_EQ(std::filesystem::file_size(path), 6u) << size;
    }
    EXPECT_TRUE(messages.empty());
}

TEST_F(FoundationFiles, NulsAndControlCharactersOfTheHostAreBlanks) {
    FOUNDATION.company = std::string_view("Works\0\n\1!\0\0", 11);
    FOUNDATION.horizontal.head.material = std::string_view("SA-516\0\0\0", 9);
    std::string name = scratch.file("tower.tvn");
    name.resize(400, '\0');
    WRITE_FOUNDATION_FILES(name, 0, 0);
    const Xml xml(scratch.read("tower.xml"));
    ASSERT_EQ(xml.error, "");
    EXPECT_EQ(xml.at("Equipment/CompanyName"), "Works   !");
    EXPECT_EQ(xml.at("Equipment/EquipmentName"), "tower.tvn");
    EXPECT_EQ(xml.at("Equipment/MaterialType"), "SA-516");
    EXPECT_EQ(scratch.read("tower.ini").find('\0'), std::string::npos);
    EXPECT_EQ(messages.size(), 1u);
}

#ifdef __linux__
TEST_F(FoundationFiles, ATemplateThatCannotBeReadLeavesOutTheIniAndTheMessage) {
    std::filesystem::remove(scratch.file("PLWXML.TXT"));
    // A file that opens and gives an error when it is read at its start.
    std::filesystem::create_symlink("/proc/self/mem", scratch.file("PLWXML.TXT"));
    write(1);
    EXPECT_FALSE(std::filesystem::exists(scratch.file("tower.ini")));
    EXPECT_TRUE(messages.empty());
}
#endif

TEST_F(FoundationFiles, AHostReachesTheRecordsByTheirAddress) {
    TARVANE_FOUNDATION_RECORDS* records = ::GETFOUNDATION();
    EXPECT_EQ(records->horizontal.pos_elevation, 117.5f);
    EXPECT_EQ(std::string(records->company, 5), "A & B");
    const Int vertical = 1, exchanger = 0;
    const std::string name = scratch.file("tower.tvn");
    ::WRITE_FOUNDATION_FILES(name.c_str(), static_cast<Int>(name.size()), &vertical, &exchanger);
    EXPECT_EQ(messages.size(), 1u);
    ::FOUNDATION_RECORD_DEFAULTS();
    EXPECT_EQ(records->vertical.diameter, 0.0f);
}

} // namespace
} // namespace tarvane::host_test
