#include "values.h"

#include "tarvane/tarvane.h"

#include <bit>
#include <cfloat>
#include <cmath>
#include <cstring>
#include <limits>

namespace calls {

namespace {

struct RealRange {
    std::string_view word;
    float first, last;
    float often; // a value that means something of its own
};
constexpr RealRange REALS[] = {
    {"P", -50.0f, 600.0f, 0.0f},
    {"S", 5000.0f, 40000.0f, 0.0f},
    {"E", 0.6f, 1.0f, 1.0f},
    {"D", 2.0f, 240.0f, 48.0f},
    {"t", 0.03f, 4.0f, 0.5f},
    {"ca", 0.0f, 0.25f, 0.0f},
    {"k", 1.0f, 3.0f, 2.0f},
    {"L", 5.0f, 240.0f, 48.0f},
    {"r", 0.0f, 15.0f, 3.0f},
    {"angle", 0.0f, 75.0f, 30.0f},
    {"T", -150.0f, 1200.0f, 100.0f},
    {"length", 0.0f, 900.0f, 120.0f},
    {"mega", 5.0f, 31.0f, 29.0f},
    {"modulus", 5.0e6f, 3.1e7f, 2.9e7f},
    {"A", 1.0e-6f, 0.1f, 0.001f},
    {"factor", 0.0f, 3.0f, 1.0f},
    {"feet", 0.0f, 30.0f, 0.2f},
    {"ksi", 10.0f, 110.0f, 38.0f},
    {"class095", 0.9f, 1.5f, 1.4f},
    {"bolt", 0.25f, 4.0f, 0.75f},
    {"size", 0.5f, 60.0f, 12.0f},
    {"ratio", 1.0f, 1200.0f, 150.0f},
    {"attachment", 0.0f, 9.0f, 1.0f},
    {"Tr", -1.0f, 3.0f, 0.4f},
    {"dual", 0.0f, 6.0f, 0.0f},
    {"out", -10.0f, 10.0f, 0.0f},
    {"unitfactor", 0.0f, 30.0f, 25.4f},
};

struct WholeRange {
    std::string_view word;
    std::int32_t first, last, often;
};
constexpr WholeRange WHOLES[] = {
    {"flag", 0, 1, 1},     {"case", 0, 3, 1},           {"code", 1, 4, 1},
    {"row", 1, 500, 1},    {"element", 1, 7, 2},        {"reference", 0, 70, 1},
    {"series", 1, 8, 1},   {"service", 0, 3, 0},        {"material", 0, 9, 1},
    {"curve", 0, 6, 2},    {"mode", 0, 5, 1},           {"cls", 0, 4, 0},
    {"kind", 0, 9, 2},     {"mark", 0, 2, 0},           {"count", 0, 7, 3},
    {"unit", -1, 60, 18},  {"switch", -1, 2, 1},        {"version", 0, 2, 1},
    {"year", 0, 18, 0},    {"out", -1, 9, 0},           {"index", 1, 768, 54},
    {"table", 1, 2, 1},    {"selector", 267, 272, 270}, {"helpkind", 100, 102, 101},
    {"number", 0, 140, 1}, {"rule", 0, 3, 1},           {"workmode", 1, 3, 1},
    {"language", 0, 7, 0},
};

constexpr int FLANGE_CLASSES[] = {0,   2,   6,   10,  16,  25,  40,  63,  75,   100,
                                  150, 160, 250, 300, 320, 400, 600, 900, 1500, 2500};

// Inches, and millimetres of the metric classes.
constexpr float FLANGE_SIZES[] = {0.5f,  0.75f,  1.0f,   1.5f,   2.0f,   3.0f,   4.0f,
                                  6.0f,  8.0f,   12.0f,  16.0f,  20.0f,  24.0f,  26.0f,
                                  30.0f, 36.0f,  48.0f,  60.0f,  15.0f,  25.0f,  50.0f,
                                  80.0f, 100.0f, 150.0f, 300.0f, 600.0f, 1000.0f};

struct Material {
    std::string_view name;
    std::int32_t reference;
};
constexpr Material MATERIALS[] = {
    {"SA-105", 61},       {"SA-193 B7", 401},      {"SA-516 70", 1},
    {"SA-240 304", 101},  {"SA-36", 10},           {"SA-283 C", 11},
    {"SA-350 LF2", 65},   {"SA-106 B", 32},        {"SA-203 D", 16},
    {"SA/CSA-G40.21", 1}, {"SA-193 B16", 405},     {"SA-213 T22", 51},
    {"SA-182 F22 1", 70}, {"SA-204 A", 12},        {"sa 193  B7", 402},
    {"SA-182 F304", 111}, {"SB-265 1", 1},         {"B.7/7-7", 0},
    {"SA-516", 0},        {"SA-240 304 PLATE", 1}, {" ", 0}};
constexpr std::string_view CHARTS[] = {"CS-1",   "CS-2",  "CS-3", "HA-1", "HA-3",
                                       "NFA-11", "NFT-1", "END",  "cs-2", " "};
// Without separators: the files are made in the working folder.
constexpr std::string_view PATHS[] = {"report.txt", "vessel.tvd", "vessel",     "a.b.c",
                                      "x.Tvr",      "vessel.xml", "vessel.ini", " report",
                                      ".",          "report.txt "};
constexpr std::string_view FOLDERS[] = {
    "../real", "../real/", "../damaged0", "../damaged1", "../damaged2", "../damaged3", "../nowhere",
    "",        "."};
constexpr std::string_view LINES[] = {"   = @3 * @2 / ( 2 * @1 )#",
                                      " = (@3*@2)/(@1)^(@2)",
                                      "Required Thickness due to Internal Pressure [tr]:",
                                      "  @n @9 @0 @@ @",
                                      "#",
                                      " = 1.5.2 -.5 0.00 1.0E+05",
                                      " = sqrt( \xb2\xb3\xb0 )^(2)",
                                      "1.5 .5 2. 3.14159274"};
constexpr std::string_view CLASSES[] = {"75",   "150",  "300",   "400",   "600", "2500",
                                        "PN16", "PN40", "PN2.5", "PN400", "PN"};
constexpr std::string_view KEYS[] = {"000001", "1_1001", "XX1ABC", "[END]", "A"};
constexpr std::string_view PRODUCTS[] = {"TARVANE", "Tarvane", "2024", "TARVANE  ", ""};
constexpr std::string_view EXTENSIONS[] = {"xml", ".ini", "", ".", "..", ".Tvr", "tvd"};
constexpr std::string_view NUMBERS[] = {"-50",   "11",  "1",           "1e9",
                                        "-20.5", "abc", "99999999999", "-24"};

// A folder name that reaches the end of the field that holds it.
std::string long_folder(Chance& chance) {
    std::string folder = chance.one_in(2) ? "../real" : "../damaged0";
    const std::size_t size = 225 + chance.below(45);
    while (folder.size() < size)
        folder += folder.size() + 1 == size ? "/" : "/.";
    return folder;
}

// Blanks after a text, as in a field of fixed width.
void pad(Chance& chance, std::string& text) {
    static constexpr std::size_t WIDTHS[] = {8, 12, 15, 16, 40, 100, 125, 192, 600};
    const std::size_t width = chance.of(WIDTHS);
    if (text.size() < width) text.resize(width, ' ');
}

} // namespace

bool is_garbage(Chance& chance, Noise noise) {
    switch (noise) {
    case Noise::none:
    case Noise::edge:
        return false;
    case Noise::little:
        return chance.one_in(10);
    case Noise::half:
        return chance.one_in(2);
    default:
        return true;
    }
}

bool is_edge(Chance& chance, Noise noise) { return noise == Noise::edge && chance.one_in(4); }

float edge_real(Chance& chance, std::span<const float> drawn) {
    static constexpr float EDGES[] = {
        0.0f,   -0.0f,   -1.0f,   -1.0101f, 0.0001f,  0.001f,    0.002f,     0.005f,      0.01f,
        0.05f,  0.0625f, 0.094f,  0.125f,   0.1875f,  0.2f,      0.25f,      0.3f,        0.35f,
        0.375f, 0.385f,  0.394f,  0.4f,     0.5f,     0.6f,      0.625f,     0.665f,      0.75f,
        0.8f,   0.85f,   0.9f,    1.0f,     1.25f,    1.5f,      1.75f,      2.0f,        2.5f,
        3.0f,   4.0f,    5.0f,    6.0f,     8.0f,     10.0f,     12.0f,      15.0f,       20.0f,
        24.0f,  26.0f,   30.0f,   36.0f,    45.0f,    48.0f,     50.0f,      60.0f,       75.0f,
        90.0f,  100.0f,  120.0f,  150.0f,   300.0f,   500.0f,    600.0f,     650.0f,      700.0f,
        800.0f, 900.0f,  1000.0f, 3000.0f,  30000.0f, 100000.0f, 1000000.0f, 10000000.0f, 40.0f,
        -20.0f, -50.0f,  -55.0f,  -155.0f,  -320.0f};
    const float edge =
        !drawn.empty() && chance.one_in(3) ? drawn[chance.below(drawn.size())] : chance.of(EDGES);
    switch (chance.below(6)) {
    case 0:
        return std::nextafter(edge, std::numeric_limits<float>::infinity());
    case 1:
        return std::nextafter(edge, -std::numeric_limits<float>::infinity());
    default:
        return edge;
    }
}

float garbage_real(Chance& chance) {
    using limits = std::numeric_limits<float>;
    static const float SPECIALS[] = {0.0f,
                                     -0.0f,
                                     1.0f,
                                     -1.0f,
                                     2.0f,
                                     0.5f,
                                     -1.0101f,
                                     1.0101f,
                                     0.001f,
                                     0.0001f,
                                     limits::quiet_NaN(),
                                     -limits::quiet_NaN(),
                                     limits::infinity(),
                                     -limits::infinity(),
                                     limits::max(),
                                     limits::lowest(),
                                     limits::min(),
                                     limits::denorm_min(),
                                     -limits::denorm_min(),
                                     limits::epsilon(),
                                     2147483648.0f,
                                     -2147483648.0f,
                                     2147483520.0f,
                                     16777216.0f,
                                     9999999.0f,
                                     650.0f,
                                     1000000.0f,
                                     99999.99f,
                                     -99999.99f};
    switch (chance.below(6)) {
    case 0:
        return std::bit_cast<float>(chance.word());
    case 1:
        return static_cast<float>(chance.between(-12, 60));
    case 2: { // of any size
        const float sign = chance.one_in(2) ? 1.0f : -1.0f;
        return sign * std::ldexp(chance.between(1.0f, 2.0f), chance.between(-40, 60));
    }
    case 3: // a whole number in place of a real, or a signalling not-a-number
        return std::bit_cast<float>(chance.one_in(2) ? chance.word() & 0xffffu
                                                     : 0x7f800001u | (chance.word() & 0x803fffffu));
    default:
        return chance.of(SPECIALS);
    }
}

std::int32_t garbage_whole(Chance& chance) {
    static constexpr std::int32_t SPECIALS[] = {
        0,   1,   -1,   2,    -2,   INT32_MAX, INT32_MIN, INT32_MAX - 1, INT32_MIN + 1, 58,  18,
        99,  100, 101,  256,  499,  500,       501,       749,           750,           751, 768,
        769, 999, 1000, 1001, 1002, 65535,     65536,     536870912,     6000000,       414, 5184};
    switch (chance.below(4)) {
    case 0:
        return std::bit_cast<std::int32_t>(chance.word());
    case 1:
        return chance.between(-5, 80);
    case 2:
        return std::bit_cast<std::int32_t>((std::uint32_t{1} << chance.below(32)) +
                                           static_cast<std::uint32_t>(chance.between(-1, 1)));
    default:
        return chance.of(SPECIALS);
    }
}

std::string garbage_text(Chance& chance) {
    static constexpr std::size_t SIZES[] = {0,   0,   1,   2,   5,   6,   7,   8,   9,   12,  15,
                                            16,  17,  39,  40,  41,  72,  73,  74,  99,  100, 101,
                                            119, 120, 121, 125, 126, 132, 191, 193, 252, 253, 254,
                                            255, 256, 257, 259, 260, 261, 600, 5000};
    static constexpr char LETTERS[] = "@@##^().,+-*/=0123456789eE  _[];:<>&\"'%sdn\\\t\n\r"
                                      "ABCSabcy\xb0\xb2\xe4\xff";
    std::string text(chance.of(SIZES), ' ');
    const std::size_t kind = chance.below(5);
    const std::size_t head = chance.below(text.size() + 1);
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (kind == 0) text[i] = static_cast<char>(chance.word());
        if (kind == 1 || (kind == 2 && i < head)) text[i] = LETTERS[chance.below(sizeof LETTERS)];
        if (kind == 3) text[i] = chance.one_in(8) ? '\0' : LETTERS[9 + chance.below(24)];
    }
    return text; // of kind 4: blank
}

std::int32_t reference_of(std::string_view name) {
    for (const Material& material : MATERIALS)
        if (material.name == name) return material.reference;
    return 0;
}

bool sensible_real(Chance& chance, std::string_view word, float& value) {
    if (word == "size" && !chance.one_in(3)) {
        value = chance.of(FLANGE_SIZES);
        return true;
    }
    for (const RealRange& range : REALS) {
        if (range.word != word) continue;
        value = chance.one_in(3) ? range.often : chance.between(range.first, range.last);
        return true;
    }
    return false;
}

bool sensible_whole(Chance& chance, std::string_view word, std::int32_t& value) {
    if (word == "flangeclass") {
        value = chance.of(FLANGE_CLASSES);
        return true;
    }
    for (const WholeRange& range : WHOLES) {
        if (range.word != word) continue;
        value = chance.one_in(3) ? range.often : chance.between(range.first, range.last);
        return true;
    }
    return false;
}

bool sensible_text(Chance& chance, std::string_view word, std::string& text) {
    if (word == "name")
        text = chance.of(MATERIALS).name;
    else if (word == "chart")
        text = chance.of(CHARTS);
    else if (word == "path")
        text = chance.of(PATHS);
    else if (word == "folder")
        text = chance.one_in(3) ? long_folder(chance) : chance.of(FOLDERS);
    else if (word == "line")
        text = chance.of(LINES);
    else if (word == "classtext")
        text = chance.of(CLASSES);
    else if (word == "key")
        text = chance.of(KEYS);
    else if (word == "product")
        text = chance.of(PRODUCTS);
    else if (word == "extension")
        text = chance.of(EXTENSIONS);
    else if (word == "numbertext")
        text = chance.of(NUMBERS);
    else if (word == "outtext")
        text.clear();
    else
        return false;
    if (word == "outtext" || chance.one_in(2)) pad(chance, text);
    return true;
}

// ---- a flange ------------------------------------------------------------------------------------

void sensible_flange(Chance& chance, float* record) {
    const auto at = [&](int element) -> float& { return TARVANE_AT(record, element); };
    const auto whole = [&](int first, int last) {
        return static_cast<float>(chance.between(first, last));
    };
    std::memset(record, 0, TARVANE_RECORD_ELEMENTS * sizeof *record);
    at(TARVANE_ELEMENT) = whole(-1, 2);
    at(TARVANE_TYPE) = whole(1, 9);
    at(TARVANE_KIND) = whole(1, 3);
    at(TARVANE_P) = chance.one_in(5) ? -15.0f : chance.between(0.0f, 900.0f);
    at(TARVANE_T_DESIGN) = chance.between(-100.0f, 900.0f);
    at(TARVANE_Sfo) = at(TARVANE_Sfa) = 20000.0f;
    at(TARVANE_t) = chance.between(0.2f, 6.0f);
    at(TARVANE_ci) = chance.one_in(2) ? 0.0f : 0.125f;
    at(TARVANE_ce) = chance.one_in(4) ? 0.0625f : 0.0f;
    const float B = chance.between(2.0f, 90.0f), bolt = chance.between(0.5f, 2.0f);
    const float g0 = chance.between(0.1f, 1.5f), g1 = g0 * chance.between(1.0f, 2.5f);
    const bool reverse = at(TARVANE_TYPE) >= 8.0f;
    const float C = B + 2.0f * g1 + chance.between(2.0f, 4.0f) * bolt;
    at(TARVANE_B) = reverse ? 0.6f * B : B;
    at(TARVANE_C) = C;
    at(TARVANE_A) = C + chance.between(1.0f, 3.0f) * bolt;
    if (chance.one_in(4)) { // a cover within its bore: the fatal stop
        at(TARVANE_TYPE) = 7.0f;
        at(TARVANE_B) = 1.1f * at(TARVANE_A);
    }
    at(TARVANE_Fod) = B + 1.5f;
    at(TARVANE_Fid) = B;
    at(TARVANE_Go) = B + chance.between(0.5f, 1.4f);
    at(TARVANE_Gi) = B + chance.between(0.0f, 0.3f);
    at(TARVANE_go) = g0;
    at(TARVANE_g1) = g1;
    at(TARVANE_h) = 1.5f * g0 + 3.1f * (g1 - g0);
    if (chance.one_in(4)) at(TARVANE_h) = chance.between(0.0f, 5.0f);
    if (chance.one_in(4)) at(TARVANE_go) = at(TARVANE_g1) = at(TARVANE_h) = 0.0f;
    if (chance.one_in(4)) { // full face
        at(TARVANE_Gi) = B;
        at(TARVANE_Go) = at(TARVANE_Fod) = at(TARVANE_A);
    }
    at(TARVANE_Sb) = at(TARVANE_Sa) = 25000.0f;
    at(TARVANE_a) = chance.one_in(2) ? 0.75f : bolt;
    at(TARVANE_THREADS) = whole(1, 8);
    at(TARVANE_BOLTS) = 4.0f * std::floor(chance.between(0.3f, 0.7f) * C / bolt);
    at(TARVANE_m) = chance.between(0.0f, 6.5f);
    at(TARVANE_y) = chance.between(0.0f, 26000.0f);
    at(TARVANE_SKETCH) = whole(1, 9);
    at(TARVANE_COLUMN) = whole(1, 2);
    at(TARVANE_tg) = 0.125f;
    at(TARVANE_w) = chance.one_in(3) ? 0.25f : 0.0f;
    at(TARVANE_lp) = chance.one_in(3) ? B : 0.0f;
    at(TARVANE_MATERIAL_CLASS) = whole(0, 12);
    at(TARVANE_D) = at(TARVANE_d) = B;
    if (chance.one_in(4)) at(TARVANE_d) = 0.7f * B;
    if (!chance.one_in(4)) at(TARVANE_L) = 3.0f * C;
    at(TARVANE_LjID) = B + 0.2f;
    at(TARVANE_LjOD) = B + 1.2f;
    at(TARVANE_n) = chance.one_in(3) ? whole(0, 2) : 0.0f;
    at(TARVANE_tw) = 0.25f;
    at(TARVANE_MATING_OPERATING) = chance.between(0.0f, 500000.0f);
    at(TARVANE_MATING_SEATING) = chance.between(0.0f, 500000.0f);
    at(TARVANE_MATING_DESIGN) = chance.between(0.0f, 500000.0f);
    at(TARVANE_AXIAL_FORCE) = chance.between(-1000.0f, 20000.0f);
    at(TARVANE_BENDING_MOMENT) = chance.between(0.0f, 20000.0f);
    at(TARVANE_ROOT_AREA) = 0.302f;
    at(TARVANE_tp) = 0.375f;
    at(TARVANE_DENSITY) = 0.283f;
    at(TARVANE_SHELL_ID) = B;
    at(TARVANE_mPart) = 2.0f;
    at(TARVANE_yPart) = 1600.0f;
    at(TARVANE_SKETCH_PART) = whole(1, 9);
    at(TARVANE_COLUMN_PART) = whole(1, 2);
    at(TARVANE_SHELL_STRESS) = at(TARVANE_SHELL_STRESS_COLD) = 17500.0f;
    if (chance.one_in(3)) {
        at(TARVANE_HOLES) = 1.0f;
        at(TARVANE_HOLE_D1) = at(TARVANE_HOLE_D2) = B / 8.0f;
        at(TARVANE_HOLE_EDGE1) = at(TARVANE_HOLE_EDGE2) = B / 6.0f;
        at(TARVANE_HOLE_PITCH) = B / 3.0f;
    }
    at(TARVANE_ATTACHMENT) = whole(0, 5);
    at(TARVANE_SHELL_THICKNESS) = g0;
    at(TARVANE_HUB_BY_SHELL) = whole(0, 1);
    at(TARVANE_SEATING_RULE) = whole(0, 1);
    at(TARVANE_BOLT_REFERENCE) = whole(399, 405);
    at(TARVANE_MATERIAL_METRIC) = whole(0, 1);
    at(TARVANE_MATERIAL_DIV1) = whole(0, 1);
    at(TARVANE_MATERIAL_CLASS_D2) = whole(0, 1);
    if (chance.one_in(3)) { // amply strong, so that it has something to corrode
        at(TARVANE_P) = chance.between(5.0f, 60.0f);
        at(TARVANE_t) = 0.12f * B + 0.5f;
        at(TARVANE_go) = at(TARVANE_SHELL_THICKNESS) = 0.03f * B + 0.25f;
        at(TARVANE_g1) = chance.between(1.0f, 4.0f) * at(TARVANE_go);
        at(TARVANE_h) = chance.between(0.2f, 6.0f) * at(TARVANE_go);
        at(TARVANE_m) = chance.between(0.5f, 2.0f);
        at(TARVANE_y) = chance.between(0.0f, 1000.0f);
        for (const int element :
             {TARVANE_MATING_OPERATING, TARVANE_MATING_SEATING, TARVANE_MATING_DESIGN,
              TARVANE_AXIAL_FORCE, TARVANE_BENDING_MOMENT})
            at(element) *= 0.001f;
    }
    if (chance.one_in(300)) // a size that moves in fixed steps would not get through
        scale_flange(record, 10000.0f);
    const float metric = chance.one_in(2) ? 25.4f : 1.0f;
    for (int element = TARVANE_UNIT_THICKNESS; element <= TARVANE_UNIT_WEIGHT; ++element)
        at(element) = 1.0f;
    at(TARVANE_UNIT_THICKNESS) = at(TARVANE_UNIT_DIAMETER) = metric;
    at(TARVANE_UNIT_TEMPERATURE_OFFSET) = 0.0f;
}

void scale_flange(float* record, float factor) {
    for (const int element : {TARVANE_t, TARVANE_B, TARVANE_A, TARVANE_Fod, TARVANE_Fid, TARVANE_Go,
                              TARVANE_Gi, TARVANE_go, TARVANE_g1, TARVANE_h, TARVANE_C, TARVANE_a,
                              TARVANE_D, TARVANE_d, TARVANE_SHELL_ID, TARVANE_SHELL_THICKNESS})
        TARVANE_AT(record, element) *= factor;
}

std::string sensible_slots(Chance& chance) {
    std::string slots(TARVANE_TEXT_LENGTH, ' ');
    const auto put = [&](std::size_t offset, std::string_view text) {
        slots.replace(offset, text.size() < 15 ? text.size() : 15,
                      text.substr(0, text.size() < 15 ? text.size() : 15));
    };
    const auto yes = [&](std::size_t offset) { put(offset, chance.one_in(2) ? "Y" : "N"); };
    put(TARVANE_TEXT_MATERIAL, chance.of(MATERIALS).name);
    put(TARVANE_TEXT_BOLT_MATERIAL, chance.one_in(2) ? "SA-193 B7" : chance.of(MATERIALS).name);
    put(TARVANE_TEXT_DESCRIPTION, chance.one_in(2) ? "nozzle        :" : "nozzle");
    yes(TARVANE_TEXT_EXTERNAL_LOADS);
    yes(TARVANE_TEXT_MATING_LOADS);
    yes(TARVANE_TEXT_CHANNEL_COVER);
    yes(TARVANE_TEXT_USE_CORROSION);
    yes(TARVANE_TEXT_PARTITION);
    put(TARVANE_TEXT_CHART, chance.of(CHARTS));
    put(TARVANE_TEXT_THICKNESS_LABEL, "in.");
    put(TARVANE_TEXT_PRESSURE_LABEL, "psig");
    put(TARVANE_TEXT_STRESS_LABEL, "psi");
    put(TARVANE_TEXT_TEMPERATURE, "F");
    return slots;
}

} // namespace calls
