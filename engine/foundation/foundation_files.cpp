#include "foundation/foundation_files.h"

#include "frame/element_tables.h"
#include "frame/files/data_files.h"
#include "frame/numbers.h"
#include "host/file_units.h"
#include "host/services.h"
#include "report/renderer.h"
#include "report/work_file.h"

namespace tarvane {

FOUNDATION_RECORDS FOUNDATION;

namespace {

constexpr Int TEMPLATE_WIDTH = 120;

// ---- values ------------------------------------------------------------------------------------

// Text of a value: a text of a record as it is, or a real with three decimals.
class VALUE {
  public:
    VALUE(std::string_view record_text) : text(trimmed(record_text)) {} // NOLINT
    template <std::size_t N>
    VALUE(const Text<N>& record_text) : VALUE(record_text.view()) {}         // NOLINT
    VALUE(Real real) : number(fixed_number(real, 60, 3)), is_number(true) {} // NOLINT

    std::string_view view() const { return is_number ? left_justified(number.view()) : text; }

  private:
    std::string_view text;
    NumberText number;
    bool is_number = false;
};

// ---- lines of a file -----------------------------------------------------------------------------

// Lines of a text file; once a write has failed nothing more is written.
class OUTPUT_FILE {
  public:
    bool open(std::string_view path) {
        GETNEXTUNIT(unit);
        return open_unit_for_writing(unit, trimmed(path));
    }
    void close() { close_unit(unit); }
    bool failed() const { return failure; }

    OUTPUT_FILE& put(std::string_view piece) {
        const bool written =
            write_bytes(unit_handle(unit), piece.data(), static_cast<Int>(piece.size()));
        failure = failure || !written;
        return *this;
    }
    void line(std::string_view text) { put(text).put("\n"); }
    void key(std::string_view name, const VALUE& value) { put(name).put("=").line(value.view()); }

    // Text of an element, with XML's own characters escaped.
    void put_escaped(std::string_view text) {
        for (const char& c : text) {
            if (c == '&')
                put("&amp;");
            else if (c == '<')
                put("&lt;");
            else if (c == '>')
                put("&gt;");
            else
                put({&c, 1});
        }
    }

  private:
    Int unit = 0;
    bool failure = false;
};

// ---- the template --------------------------------------------------------------------------------

struct TAG {
    std::string_view text;
    VALUE value;
    std::string_view closing = {}; // the value goes before it
};

// Replaces the value of a tag that begins at `at` in the line.
void FILL_LINE(OUTPUT_FILE& file, std::string_view line, const TAG& tag, std::size_t at) {
    std::size_t from = line.find('>', at);
    std::size_t to = line.find('<', from == std::string_view::npos ? at : from);
    if (!tag.closing.empty() && line.find(tag.closing, at) != std::string_view::npos) {
        to = line.find(tag.closing, at);
        from = line.rfind('>', to);
    }
    if (from == std::string_view::npos) {
        file.line(line);
        return;
    }
    file.put(line.substr(0, from + 1));
    file.put_escaped(tag.value.view());
    file.line(to == std::string_view::npos ? std::string_view() : line.substr(to));
}

// The first tag of the list that the line holds decides.
template <std::size_t N>
void COPY_LINE(OUTPUT_FILE& file, std::string_view line, const TAG (&tags)[N]) {
    for (const TAG& tag : tags) {
        const std::size_t at = line.find(tag.text);
        if (at == std::string_view::npos) continue;
        FILL_LINE(file, line, tag, at);
        return;
    }
    file.line(line);
}

// False when the template could not be read to its end or the file not be written.
template <std::size_t N>
bool COPY_TEMPLATE(Int unit, OUTPUT_FILE& file, const TAG (&tags)[N]) {
    LineReader reader(unit);
    char buffer[TEMPLATE_WIDTH];
    while (!file.failed() && reader.next(buffer, TEMPLATE_WIDTH))
        COPY_LINE(file, trimmed({buffer, TEMPLATE_WIDTH}), tags);
    return !file.failed() && !reader.broken();
}

bool FILL_VERTICAL_TEMPLATE(Int unit, OUTPUT_FILE& file) {
    const VERTICAL_FOUNDATION& v = FOUNDATION.vertical;
    const TAG tags[] = {
        {"CompanyName", FOUNDATION.company},
        {"EquipmentName", v.head.name},
        {"EquipmentType", v.head.vesselType},
        {"<Diameter", v.diameter},
        {"BoltCircleDiameter", v.boltCircle},
        {"NumberofAnchorBolts", v.anchorCount},
        {"SizeofAnchorBolts", v.anchorSize},
        {"Height", v.height},
        {"<PointOfSupport", v.posElevation},
        {"<Empty", v.emptyWeight, "</weight>"},
        {"<Operating", v.operatingWeight, "</weight>"},
        {"<Test", v.testWeight, "</weight>"},
        {"#WShear", v.windShear, "</shear>"},
        {"#EShear", v.earthquakeShear, "</shear>"},
        {"#WMoment", v.windMoment, "</moment>"},
        {"#EMoment", v.earthquakeMoment, "</moment>"},
    };
    return COPY_TEMPLATE(unit, file, tags);
}

bool FILL_HORIZONTAL_TEMPLATE(Int unit, OUTPUT_FILE& file) {
    const HORIZONTAL_FOUNDATION& h = FOUNDATION.horizontal;
    const TAG tags[] = {
        {"CompanyName", FOUNDATION.company},
        {"EquipmentName", h.head.name},
        {"EquipmentType", h.head.vesselType},
        {"NumberofAnchorBolts", h.anchorCount},
        {"SizeofAnchorBolts", h.anchorSize},
        {"<PointOfSupport", h.posElevation},
        {"<MaterialType", h.head.material},
        {"<Length", h.length},
        {"<SaddleLength", h.saddleLength},
        {"<SaddleWidth", h.saddleWidth},
        {"<POSToCLDistance", h.posToCenter},
        {"<SaddleSupportDistance", h.saddleDistance},
        {"<ShellDesignTemperature", h.shellTemperature},
        {"<FrictionCoefficient", h.friction},
        {"<Empty", h.emptyWeight, "</weight>"},
        {"<Operating", h.operatingWeight, "</weight>"},
        {"<Test", h.testWeight, "</weight>"},
        {"#WPressure", h.windPressure, "</pressure>"},
        {"#LoadFactor", h.earthquakeFactor, "</loadfactor>"},
    };
    return COPY_TEMPLATE(unit, file, tags);
}

// ---- the INI file --------------------------------------------------------------------------------

void WRITE_HEAD_KEYS(OUTPUT_FILE& file, const FOUNDATION_HEAD& head) {
    file.line("[GENERAL]");
    file.key("Version", head.version);
    file.key("Application", head.application);
    file.key("Application Version No", head.applicationVersion);
    file.key("Section 1", head.section1);
    file.key("Section 2", head.section2);
    file.line("[EQUIPMENT DESIGN SOFTWARE INFORMATION]");
    file.key("Software Vendor", head.vendor);
    file.key("Product Name", head.product);
    file.key("Product Version", head.productVersion);
    file.key("Product Type", head.productType);
    file.line("[UNITS]");
    file.key("Length Unit", head.lengthUnit);
    file.key("Temperature Unit", head.temperatureUnit);
    file.key("Force Unit", head.forceUnit);
    file.key("Pressure Unit", head.pressureUnit);
    file.line("[EQUIPMENT PARAMETERS]");
    file.key("Name", head.name);
}

void WRITE_VERTICAL_KEYS(OUTPUT_FILE& file) {
    const VERTICAL_FOUNDATION& v = FOUNDATION.vertical;
    WRITE_HEAD_KEYS(file, v.head);
    file.key("Diameter", v.diameter);
    file.key("Type", v.head.vesselType);
    file.key("Height", v.height);
    file.key("POS Elevation", v.posElevation);
    file.key("Bolt Circle Diameter", v.boltCircle);
    file.key("Number of Anchor Bolts", v.anchorCount);
    file.key("Size of Anchor Bolts", v.anchorSize);
    file.line("[EQUIPMENT LOADS]");
    file.key("Empty Weight", v.emptyWeight);
    file.key("Operating Weight", v.operatingWeight);
    file.key("Test Weight", v.testWeight);
    file.key("Wind Shear", v.windShear);
    file.key("Wind Moment", v.windMoment);
    file.key("Earthquake Shear", v.earthquakeShear);
    file.key("Earthquake Moment", v.earthquakeMoment);
}

void WRITE_HORIZONTAL_KEYS(OUTPUT_FILE& file) {
    const HORIZONTAL_FOUNDATION& h = FOUNDATION.horizontal;
    WRITE_HEAD_KEYS(file, h.head);
    file.key("Type", h.head.vesselType);
    file.key("Material", h.head.material);
    file.key("Length", h.length);
    file.key("Dist. Between Saddle Supports", h.saddleDistance);
    file.key("Saddle Length", h.saddleLength);
    file.key("Saddle Width", h.saddleWidth);
    file.key("Shell Design Temp", h.shellTemperature);
    file.key("C.L. Elevation", h.centerElevation);
    file.key("POS To CL Dist", h.posToCenter);
    file.line("[EQUIPMENT LOADS]");
    file.key("Empty Weight", h.emptyWeight);
    file.key("Operating Weight", h.operatingWeight);
    file.key("Test Weight", h.testWeight);
    file.key("Bundle Weight", h.bundleWeight);
    file.key("Friction Coefficient", h.friction);
    file.key("Wind Pressure", h.windPressure);
    file.key("Earthquake Load Factor", h.earthquakeFactor);
}

// ---- names ---------------------------------------------------------------------------------------

// The part after the folders of a path.
std::string_view file_name(std::string_view path) {
    const std::size_t end = path.find_last_of("\\/");
    return left_justified(end == std::string_view::npos ? path : path.substr(end + 1));
}

// Neither file can hold a control character in a value; a host in C pads its texts with NULs.
void blank_controls(char* text, std::size_t count) {
    for (char* at = text; at < text + count; ++at)
        if (static_cast<unsigned char>(*at) < ' ') *at = ' ';
}
void blank_controls(FOUNDATION_HEAD& head) {
    static_assert(sizeof(FOUNDATION_HEAD) == 468); // characters, nothing between them
    blank_controls(reinterpret_cast<char*>(&head), sizeof head);
}

FOUNDATION_HEAD default_head(std::string_view vessel_type) {
    FOUNDATION_HEAD head;
    head.version = "1.0";
    head.application = "Plinthwerk";
    head.applicationVersion = "5.0";
    head.section1 = "Equipment Parameters";
    head.section2 = "Equipment Loads";
    head.vendor = "Kessendale";
    head.product = "TARVANE";
    head.productVersion = "7.0";
    head.productType = "Pressure Vessel";
    head.lengthUnit = "Ft";
    head.temperatureUnit = "deg F";
    head.forceUnit = "lbs";
    head.pressureUnit = "lbs/sq f";
    head.vesselType = vessel_type;
    head.name = "File Name Here";
    return head;
}

} // namespace

void FOUNDATION_RECORD_DEFAULTS() {
    FOUNDATION.vertical = {};
    FOUNDATION.vertical.head = default_head("Vertical Vessel");
    FOUNDATION.horizontal = {};
    FOUNDATION.horizontal.head = default_head("Horizontal Vessel");
    FOUNDATION.horizontal.head.material = "Carbon Steel";
    for (Int i = 0; i < 2; ++i) {
        Int whole = 0;
        PARSE_REAL(HOST_RECORD.foundation[i].view(), FOUNDATION.numbers[i], whole);
    }
}

void WRITE_FOUNDATION_FILES(std::string_view name, Int vertical, Int exchanger) {
    const bool upright = vertical == 1;
    Text<260> path;
    Int path_len = 0, unit = 0;
    SYSTEM_FILE_PATH(path, path_len, "PLWXML.TXT");
    GETNEXTUNIT(unit);
    if (!open_unit_for_reading(unit, path.columns(1, path_len))) return;

    FOUNDATION.vertical.head.name = FOUNDATION.horizontal.head.name = file_name(name);
    if (exchanger == 1) {
        FOUNDATION.vertical.head.vesselType = "Vertical Exchanger";
        FOUNDATION.horizontal.head.vesselType = "Horizontal Exchanger";
    }
    blank_controls(FOUNDATION.vertical.head);
    blank_controls(FOUNDATION.horizontal.head);
    blank_controls(FOUNDATION.company.data(), sizeof FOUNDATION.company);

    OUTPUT_FILE xml;
    bool written = BESIDE(path, name, ".xml") && xml.open(path.view());
    if (written) {
        written = upright ? FILL_VERTICAL_TEMPLATE(unit, xml) : FILL_HORIZONTAL_TEMPLATE(unit, xml);
        xml.close();
    }
    close_unit(unit);
    if (!written) return;

    OUTPUT_FILE ini;
    if (!BESIDE(path, name, ".ini") || !ini.open(path.view())) return;
    if (upright)
        WRITE_VERTICAL_KEYS(ini);
    else
        WRITE_HORIZONTAL_KEYS(ini);
    ini.close();
    if (ini.failed()) return;
    MESSAGE_BOX(
        "The Plinth Werk interface files (.xml and .ini) were written in the current directory.",
        "File Written OK");
}

void RESET_FOUNDATION() { FOUNDATION = {}; }

} // namespace tarvane
