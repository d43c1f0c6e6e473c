// ANSIFlangeDimensions.txt: standard flanges by class and size.
#include "data_kind.h"
#include "formatted.h"

#include "tarvane/tarvane.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace tarvane::data {

namespace {

constexpr std::string_view FILE_NAME = "ANSIFlangeDimensions.txt";
constexpr std::string_view COLUMNS[] = {
    "class",        "size",        "series", "outside",     "thickness",
    "blind",        "length",      "hub",    "neck",        "bolt_circle",
    "hole",         "bolts",       "bolt",   "wall",        "slip_on_length",
    "slip_on_bore", "raised_face", "status", "face_status", "slip_on_status",
    "source"};

constexpr std::size_t MOST_SIZES = 60, SIZE_COLUMNS = 10, RESULTS = 14;
constexpr float MM = 25.4f;
// The engine adds the low raised face to the hub of a slip on flange of the classes up to 300, and takes
// the tabulated bore below NPS 14 there.
constexpr int LOW_CLASSES_TO = 300;
constexpr float LOW_FACE = 0.06f, BORE_TO = 14.0f;
// From this size on an inch class has the series A and B of B16.47, whose raised face the engine takes off.
constexpr float SERIES_FROM = 26.0f, HIGH_FACE = 0.25f;
constexpr std::string_view SERIES[] = {"", "A", "B"};

struct ClassNumber {
    std::string_view name;
    std::int32_t number;
    bool metric;
};
constexpr ClassNumber CLASSES[] = {
    {"75", 75, false},    {"150", 150, false},  {"300", 300, false},   {"400", 400, false},
    {"600", 600, false},  {"900", 900, false},  {"1500", 1500, false}, {"2500", 2500, false},
    {"PN2.5", 2, true},   {"PN6", 6, true},     {"PN10", 10, true},    {"PN16", 16, true},
    {"PN25", 25, true},   {"PN40", 40, true},   {"PN63", 63, true},    {"PN100", 100, true},
    {"PN160", 160, true}, {"PN250", 250, true}, {"PN320", 320, true},  {"PN400", 400, true}};

constexpr std::string_view HEAD =
    "; Standard flanges: one section a class, a row a size in ascending order, made from the "
    "table\n"
    "; flange_dimensions.csv. Inches, millimetres in the PN classes. No comment inside a section: "
    "it\n"
    "; would end the list of sizes. 0: not known.\n"
    ";\n"
    "; Column               Meaning\n"
    ";  1 size              NPS or DN, alone in the first ten columns of the line\n"
    ";  2 series            0; 1 or 2 for sizes from 26 on with two series\n"
    ";  3 outside           outside diameter\n"
    ";  4 thickness         of the ring, without the raised face; of a series with it\n"
    ";  5 blind             thickness of the blind flange\n"
    ";  6 length            through the hub, without the raised face; of a series with it twice, "
    "as "
    "the\n"
    ";                      reader takes it off ring and hub\n"
    ";  7 hub               diameter of the hub at the ring\n"
    ";  8 neck              diameter of the hub at the weld end\n"
    ";  9 bolt circle       its diameter\n"
    "; 10 hole              bolt hole diameter\n"
    "; 11 bolts             number of bolts\n"
    "; 12 bolt              nominal bolt diameter\n"
    "; 13 bore              of the neck with the standard wall\n"
    "; 14 slip on length    through the hub of the slip on flange; 0.06 less in the classes up to "
    "300,\n"
    ";                      where the reader adds a raised face of 0.06\n"
    "; 15 slip on bore\n"
    "; 16 raised face       its diameter\n"
    "; 17                   not used, 0\n"
    ";\n"
    "; Check the figures against your own copy of the standards before you rely on them.\n";

struct FlangeClass {
    const ClassNumber* kind;
    std::vector<const Row*> sizes;

    bool low() const { return kind->number <= LOW_CLASSES_TO; }
};

std::int32_t series_of(const Row& row) {
    const auto found = std::find(std::begin(SERIES), std::end(SERIES), row.field("series"));
    if (found == std::end(SERIES)) row.fail("series", "neither A, B nor empty");
    return static_cast<std::int32_t>(found - std::begin(SERIES));
}

// "12", "26 A"
std::string size_text(const Row& row) {
    const std::string size = formatted("%g", row.real("size"));
    return row.blank("series") ? size : size + ' ' + row.field("series");
}

// What the engine takes off the ring of a series, and off its hub once more.
float face_of(const Row& row, const FlangeClass& flanges) {
    if (series_of(row) == 0) return 0.0f;
    return flanges.low() ? LOW_FACE : HIGH_FACE;
}

const ClassNumber& class_of(const Row& row) {
    const auto found =
        std::find_if(std::begin(CLASSES), std::end(CLASSES),
                     [&](const ClassNumber& c) { return c.name == row.text("class"); });
    if (found == std::end(CLASSES)) row.fail("class", "no flange class");
    return *found;
}

std::vector<FlangeClass> by_class(const Table& table) {
    std::vector<FlangeClass> all;
    for (const Row& row : table.rows()) {
        const ClassNumber& kind = class_of(row);
        if (all.empty() || all.back().kind != &kind) {
            for (const FlangeClass& other : all)
                if (other.kind == &kind) row.fail("class", "its rows do not stand together");
            all.push_back({&kind, {}});
        }
        FlangeClass& flanges = all.back();
        const std::int32_t series = series_of(row);
        if ((series != 0) != (!kind.metric && row.positive("size") >= SERIES_FROM))
            row.fail("series", "A or B belongs to the sizes from NPS 26 on");
        if (!flanges.sizes.empty()) {
            const std::int32_t before = series_of(*flanges.sizes.back());
            if (series < before) row.fail("series", "before that of the row before");
            if (series == before && row.positive("size") <= flanges.sizes.back()->real("size"))
                row.fail("size", "not above the one before");
        }
        if (flanges.sizes.size() == MOST_SIZES) row.fail("class", "more than 60 sizes");
        flanges.sizes.push_back(&row);
    }
    return all;
}

// What a flange cannot be, whatever its class.
void check_shape(const Row& row) {
    const float circle = row.positive("bolt_circle"), hole = row.positive("hole");
    if (row.positive("outside") <= circle + hole)
        row.fail("outside", "the bolt holes reach the edge");
    if (row.real("hub", 0.0f) >= circle - hole) row.fail("hub", "reaches the bolt holes");
    if (row.positive("bolt") >= hole) row.fail("bolt", "does not go through its hole");
    if (row.whole("bolts") <= 0 || row.whole("bolts") % 4 != 0)
        row.fail("bolts", "not a multiple of four");
    if (row.blank("hub") != row.blank("neck")) row.fail("neck", "hub and neck stand together");
    if (row.real("neck", 0.0f) >= row.real("hub", 1.0f)) row.fail("neck", "not below the hub");
    if (row.blank("slip_on_length") != row.blank("slip_on_bore"))
        row.fail("slip_on_bore", "length and bore of a slip on flange stand together");
    if (!row.blank("raised_face")) row.status_of("face_status");
    if (!row.blank("slip_on_bore")) row.status_of("slip_on_status");
}

template <typename Number>
std::string number(Number value) {
    return formatted("%10.4f", value);
}
float as_written(const std::string& text) { return std::stof(text); }

std::string bore_text(const Row& row) {
    if (row.blank("wall")) return number(0.0);
    return number(static_cast<double>(row.positive("neck")) -
                  2.0 * static_cast<double>(row.positive("wall")));
}

std::string slip_on_length_text(const Row& row, const FlangeClass& flanges) {
    if (row.blank("slip_on_length")) return number(0.0);
    const auto length = static_cast<double>(row.positive("slip_on_length"));
    const auto face = static_cast<double>(flanges.kind->metric ? LOW_FACE * MM : LOW_FACE);
    return number(flanges.low() ? length - face : length);
}

std::string row_text(const Row& row, const FlangeClass& flanges) {
    std::string size = formatted("%g", row.positive("size"));
    size.resize(std::max(size.size(), SIZE_COLUMNS), ' ');
    const float face = face_of(row, flanges);
    const auto with_face = [&](std::string_view column, float added) {
        const float value = row.real(column, 0.0f);
        return number(value > 0.0f ? value + added : value);
    };
    std::string text = size + "  " + std::to_string(series_of(row));
    text += number(row.real("outside", 0.0f)) + with_face("thickness", face) +
            number(row.real("blind", 0.0f)) + with_face("length", 2.0f * face);
    for (const std::string_view column : {"hub", "neck", "bolt_circle", "hole"})
        text += number(row.real(column, 0.0f));
    return text + formatted("%4.0f", row.real("bolts")) + number(row.real("bolt")) +
           bore_text(row) + slip_on_length_text(row, flanges) +
           number(row.real("slip_on_bore", 0.0f)) + number(row.real("raised_face", 0.0f)) + "  0\n";
}

// ---- reading back ----------------------------------------------------------------------------------

enum class Form { weld_neck, slip_on, blind };
using Result = std::array<float, RESULTS>;

Result look_up(const Row& row, const FlangeClass& flanges, Form form, float wall) {
    Result result{};
    float size = row.real("size");
    std::int32_t notfound = 0, series = series_of(row);
    const std::int32_t blind = form == Form::blind, slip_on = form == Form::slip_on,
                       straight_hub = 2, ansi = flanges.kind->metric;
    GET_FLANGE_DIMENSIONS(&size, &flanges.kind->number, result.data(), &notfound, &series, &wall,
                          &blind, &slip_on, &straight_hub, &ansi);
    if ((notfound & 1) != 0) row.fail("size", "not found again in " + std::string(FILE_NAME));
    return result;
}

void expect_near(const Row& row, std::string_view column, float written, float read) {
    if (std::fabs(written - read) > 1.0e-4f) row.expect(column, written, read);
}

void check_row(const Row& row, const FlangeClass& flanges) {
    const float scale = flanges.kind->metric ? MM : 1.0f;
    const auto inches = [&](std::string_view column) { return row.real(column, 0.0f) / scale; };
    const float wall = row.real("wall", 0.25f);
    const Result neck = look_up(row, flanges, Form::weld_neck, wall);
    expect_near(row, "thickness", inches("thickness"), neck[1]);
    row.expect("hole", inches("hole"), neck[3]);
    row.expect("bolts", row.real("bolts"), neck[4]);
    row.expect("bolt", inches("bolt"), neck[5]);
    row.expect("bolt_circle", inches("bolt_circle"), neck[6]);
    row.expect("outside", inches("outside"), neck[8]);
    expect_near(row, "hub", (inches("hub") - inches("neck")) / 2.0f + wall, neck[10]);
    expect_near(row, "length", inches("length") - inches("thickness"), neck[11]);
    row.expect("raised_face", inches("raised_face"), neck[12]);
    if (flanges.low() && !flanges.kind->metric && row.real("size") < BORE_TO)
        row.expect("wall", as_written(bore_text(row)), neck[0]);
    row.expect("blind", inches("blind"), look_up(row, flanges, Form::blind, wall)[1]);
    if (row.blank("slip_on_bore")) return;
    const Result slip_on = look_up(row, flanges, Form::slip_on, wall);
    row.expect("slip_on_bore", inches("slip_on_bore"), slip_on[0]);
    expect_near(row, "slip_on_length", inches("slip_on_length") - inches("thickness"), slip_on[11]);
}

void check_sizes(const FlangeClass& flanges) {
    char sizes[MOST_SIZES][SIZE_COLUMNS];
    std::int32_t count = 0;
    const std::string_view name = flanges.kind->name;
    GET_FLANGE_SIZES(name.data(), static_cast<std::int32_t>(name.size()), sizes[0], sizeof sizes,
                     &count);
    // The list ends where the sizes of a second series begin again.
    std::int32_t first = 0;
    for (const Row* row : flanges.sizes)
        first = first == 0 ? series_of(*row) : first;
    const auto listed = static_cast<std::size_t>(
        std::count_if(flanges.sizes.begin(), flanges.sizes.end(),
                      [&](const Row* row) { return series_of(*row) <= first; }));
    if (static_cast<std::size_t>(count) != listed)
        flanges.sizes.front()->fail("class", std::to_string(count) + " sizes read back");
    for (std::size_t i = 0; i < listed; ++i)
        flanges.sizes[i]->expect("size", flanges.sizes[i]->real("size"), std::stof(sizes[i]));
}

// Items: "class 400 size 4", "class 150 size 26 A", "class 150 size 4 raised face", "class 150 size 4 slip on".
void note_items(const FlangeClass& flanges, Place& place) {
    const std::string file(FILE_NAME);
    const auto note = [&](const Row& row, const std::string& item, Status status) {
        place.note(file, item, row, status);
        if (status == Status::approximate) place.approximate[file].push_back(item);
    };
    for (const Row* row : flanges.sizes) {
        const std::string name =
            "class " + std::string(flanges.kind->name) + " size " + size_text(*row);
        note(*row, name, row->status());
        if (!row->blank("raised_face"))
            note(*row, name + " raised face", row->status_of("face_status"));
        if (!row->blank("slip_on_bore"))
            note(*row, name + " slip on", row->status_of("slip_on_status"));
    }
}

} // namespace

void build_flanges(Place& place) {
    const Table table(place.sources, "flange_dimensions.csv", "class", COLUMNS);
    const std::vector<FlangeClass> all = by_class(table);
    std::string text(HEAD);
    for (const FlangeClass& flanges : all) {
        text += "\n[" + std::string(flanges.kind->name) + "]\n";
        for (const Row* row : flanges.sizes) {
            check_shape(*row);
            text += row_text(*row, flanges);
        }
    }
    text += "\n[END]\n";
    write_file(place.out / FILE_NAME, text);

    for (const FlangeClass& flanges : all) {
        check_sizes(flanges);
        for (const Row* row : flanges.sizes)
            check_row(*row, flanges);
        note_items(flanges, place);
    }
}

} // namespace tarvane::data
