#include "materials/class_names.h"

#include <iterator>
#include <string_view>

namespace tarvane {

MATERIAL_CLASS MATERIAL_CLASS_NAMES[MATERIAL_CLASSES];
bool MATERIAL_CLASS_NAMES_GIVEN = false;

namespace {

// Several classes carry one name.
constexpr std::string_view LOW_CARBON = "Carbon Steel C <= 0.3%";
constexpr std::string_view CARBON_STEEL = "Carbon Steel";
constexpr std::string_view STRAIGHT_CHROME = "Straight Chrome";
constexpr std::string_view AUSTENITIC = "Austenitic Stainless";
constexpr std::string_view NICKEL_STEEL = "Nickel Steel";
constexpr std::string_view HIGH_NICKEL = "High Nickel Alloys";
constexpr std::string_view ALUMINUM = "Aluminum and Aluminum Alloys";
constexpr std::string_view COPPER = "Copper and Copper Alloys";

struct ENTRY {
    std::string_view name;
    Int number;
};

constexpr ENTRY ENTRIES[] = {
    {LOW_CARBON, 1},
    {"5-9 Chrome", 7},
    {AUSTENITIC, 9},
    {STRAIGHT_CHROME, 8},
    {AUSTENITIC, 9},
    {"Nickel Alloy", 25},
    {NICKEL_STEEL, 4},
    {ALUMINUM, 11},
    {"Carbon Steel C > 0.3%", 2},
    {COPPER, 18},
    {ALUMINUM, 16},
    {COPPER, 23},
    {COPPER, 15},
    {HIGH_NICKEL, 29},
    {"Error ...", 1},
    {CARBON_STEEL, 3},
    {CARBON_STEEL, 3},
    {CARBON_STEEL, 3},
    {LOW_CARBON, 1},
    {NICKEL_STEEL, 4},
    {"2.25Cr-3Cr", 6},
    {"5Cr-9Cr", 7},
    {"5Cr-9Cr", 7},
    {STRAIGHT_CHROME, 8},
    {STRAIGHT_CHROME, 8},
    {AUSTENITIC, 9},
    {AUSTENITIC, 9},
    {AUSTENITIC, 9},
    {AUSTENITIC, 9},
    {AUSTENITIC, 9},
    {ALUMINUM, 11},
    {ALUMINUM, 11},
    {"Unalloyed Titanium", 41},
    {HIGH_NICKEL, 25},
    {HIGH_NICKEL, 29},
    {HIGH_NICKEL, 35},
    {HIGH_NICKEL, 36},
    {HIGH_NICKEL, 40},
    {HIGH_NICKEL, 28},
    {HIGH_NICKEL, 24},
    {COPPER, 23},
    {COPPER, 20},
    {COPPER, 18},
    {COPPER, 16},
    {COPPER, 18},
    {COPPER, 18},
    {COPPER, 17},
    {"Zirconium NFZ-1", 42},
    {AUSTENITIC, 9},
    {HIGH_NICKEL, 39},
    {LOW_CARBON, 1},
    {LOW_CARBON, 1},
    {"Zirconium NFZ-2", 43},
    {"AL-6XN", 9},
    {"S31803", 9},
    {"18Cr-5Ni-3Mo", 9},
    {"26Cr-4Ni-Mo", 9},
    {"26Cr-4Ni-Mo-N", 9},
    {"Al-29-4-2", 46},
    {"SEA-CURE", 47},
    {"1Cr-1/2Mo", 44},
    {"1/2-2Cr", 44},
    {"21/4-3Cr", 6},
    {"R20033", 48},
    {"65Ni-28Mo-2Fe", 49},
    {"80-20 Cu-Ni (C71000)", 22},
    {"Other Low Alloy Steels, Group 2", 3},
    {"31Ni-33Fe-27Cr-6.5Mo-Cu-N (N08031)", 50},
    {"65Ni-29.5Mo-2Fe-Cr (N10675)", 50},
};
static_assert(std::size(ENTRIES) == MATERIAL_CLASSES);

bool names_set = false;

} // namespace

void SET_MATERIAL_CLASS_NAMES() {
    names_set = true;
    MATERIAL_CLASS* row = MATERIAL_CLASS_NAMES;
    for (const ENTRY& entry : ENTRIES)
        *row++ = {entry.name, entry.number};
}

void RESET_MATERIAL_CLASS_NAMES() {
    if (!names_set && !MATERIAL_CLASS_NAMES_GIVEN) return;
    names_set = false;
    for (MATERIAL_CLASS& row : MATERIAL_CLASS_NAMES)
        row = {};
}

} // namespace tarvane
