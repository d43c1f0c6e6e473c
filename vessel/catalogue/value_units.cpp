#include "catalogue/value_units.h"

#include "values/text.h"

#include <algorithm>
#include <vector>

namespace tarvane::vessel {

namespace {

using enum ValueUnit::Of;

constexpr float ATMOSPHERE = 14.696f; // psi
constexpr float FREEZING = 32.0f, KELVIN_ZERO = -459.67f;

constexpr ValueUnit further(std::string_view name, ValueUnit of) {
    of.name = name;
    of.further = true;
    return of;
}

constexpr ValueUnit INCH{"in", length, 1.0f}, FOOT{"ft", length, 1.0f / 12.0f},
    SQUARE_INCH{"in2", area, 1.0f}, SQUARE_MM{"mm2", area, 645.16f},
    SQUARE_CM{"cm2", area, 6.4516f}, PSI{"psi", stress, 1.0f}, KSI{"ksi", stress, 0.001f},
    NEWTON_A_MM2{"N/mm2", stress, 0.00689475729f}, KGF_A_CM2{"kgf/cm2", stress, 0.0703069580f},
    PSIG{"psig", gauge_pressure, 1.0f}, PSIA{"psia", absolute_pressure, 1.0f},
    POUND_FORCE{"lbf", force, 1.0f}, KIP{"kip", force, 0.001f}, FOOT_POUND{"ft-lb", moment, 1.0f},
    INCH_POUND{"in-lb", moment, 12.0f}, NEWTON_METRE{"N-m", moment, 1.35581795f},
    KILONEWTON_METRE{"kN-m", moment, 0.00135581795f}, POUND{"lb", mass, 1.0f},
    POUND_A_FT3{"lb/ft3", density, 1728.0f}, POUND_A_IN3{"lb/in3", density, 1.0f},
    KG_A_M3{"kg/m3", density, 27679.9047f}, G_A_CM3{"g/cm3", density, 27.6799047f},
    FAHRENHEIT{"F", temperature, 1.0f}, CELSIUS{"C", temperature, 1.8f, FREEZING};

// The case of a letter matters in the SI, so that names are compared as they are.
constexpr ValueUnit UNITS[] = {
    INCH,
    further("in.", INCH),
    further("inch", INCH),
    further("inches", INCH),
    further("\"", INCH),
    further("IN", INCH),
    FOOT,
    further("ft.", FOOT),
    further("foot", FOOT),
    further("feet", FOOT),
    further("'", FOOT),
    further("FT", FOOT),
    {"mm", length, 25.4f},
    {"cm", length, 2.54f},
    {"m", length, 0.0254f},
    SQUARE_INCH,
    further("in²", SQUARE_INCH),
    further("in^2", SQUARE_INCH),
    further("sq in", SQUARE_INCH),
    further("sq. in.", SQUARE_INCH),
    SQUARE_MM,
    further("mm²", SQUARE_MM),
    further("mm^2", SQUARE_MM),
    SQUARE_CM,
    further("cm²", SQUARE_CM),
    further("cm^2", SQUARE_CM),
    PSI,
    further("PSI", PSI),
    further("lb/in2", PSI),
    further("lbf/in2", PSI),
    KSI,
    further("KSI", KSI),
    PSIG,
    further("PSIG", PSIG),
    PSIA,
    further("PSIA", PSIA),
    {"bar", stress, 0.0689475729f},
    {"barg", gauge_pressure, 0.0689475729f},
    {"bara", absolute_pressure, 0.0689475729f},
    {"mbar", stress, 68.9475729f},
    {"Pa", stress, 6894.75729f},
    {"kPa", stress, 6.89475729f},
    {"MPa", stress, 0.00689475729f},
    {"GPa", stress, 0.00000689475729f},
    NEWTON_A_MM2,
    further("N/mm²", NEWTON_A_MM2),
    further("N/mm^2", NEWTON_A_MM2),
    KGF_A_CM2,
    further("kgf/cm²", KGF_A_CM2),
    further("kgf/cm^2", KGF_A_CM2),
    POUND_FORCE,
    further("lb", POUND_FORCE),
    KIP,
    further("kips", KIP),
    {"N", force, 4.44822162f},
    {"kN", force, 0.00444822162f},
    FOOT_POUND,
    further("ft-lbs", FOOT_POUND),
    further("ft-lbf", FOOT_POUND),
    further("lbf-ft", FOOT_POUND),
    further("lb-ft", FOOT_POUND),
    INCH_POUND,
    further("in-lbs", INCH_POUND),
    further("in-lbf", INCH_POUND),
    further("lbf-in", INCH_POUND),
    further("lb-in", INCH_POUND),
    NEWTON_METRE,
    further("N m", NEWTON_METRE),
    further("Nm", NEWTON_METRE),
    further("N·m", NEWTON_METRE),
    KILONEWTON_METRE,
    further("kN m", KILONEWTON_METRE),
    further("kNm", KILONEWTON_METRE),
    further("kN·m", KILONEWTON_METRE),
    POUND,
    further("lbm", POUND),
    {"kg", mass, 0.45359237f},
    POUND_A_FT3,
    further("lb/ft³", POUND_A_FT3),
    further("lb/ft^3", POUND_A_FT3),
    further("lbm/ft3", POUND_A_FT3),
    further("pcf", POUND_A_FT3),
    POUND_A_IN3,
    further("lb/in³", POUND_A_IN3),
    further("lb/in^3", POUND_A_IN3),
    further("lbm/in3", POUND_A_IN3),
    KG_A_M3,
    further("kg/m³", KG_A_M3),
    further("kg/m^3", KG_A_M3),
    G_A_CM3,
    further("g/cm³", G_A_CM3),
    further("g/cm^3", G_A_CM3),
    further("kg/dm3", G_A_CM3),
    further("kg/l", G_A_CM3),
    FAHRENHEIT,
    further("°F", FAHRENHEIT),
    further("deg F", FAHRENHEIT),
    further("degF", FAHRENHEIT),
    CELSIUS,
    further("°C", CELSIUS),
    further("deg C", CELSIUS),
    further("degC", CELSIUS),
    {"K", temperature, 1.8f, KELVIN_ZERO},
};

bool takes(Quantity quantity, ValueUnit::Of of) {
    switch (quantity) {
    case Quantity::thickness:
    case Quantity::diameter:
        return of == length;
    case Quantity::pressure:
        return of == stress || of == gauge_pressure || of == absolute_pressure;
    case Quantity::stress:
        return of == stress;
    case Quantity::force:
        return of == force;
    case Quantity::moment:
        return of == moment;
    case Quantity::area:
        return of == area;
    case Quantity::temperature:
    case Quantity::temperature_scale:
        return of == temperature;
    case Quantity::weight:
        return of == mass;
    case Quantity::density:
        return of == density;
    default:
        return false;
    }
}

} // namespace

float ValueUnit::to_engine(float value, Quantity quantity) const {
    if (of == temperature)
        return quantity == Quantity::temperature_scale ? value * factor : value * factor + offset;
    const float converted = value / factor;
    return of == absolute_pressure ? converted - ATMOSPHERE : converted;
}

const ValueUnit* find_value_unit(std::string_view name, Quantity quantity) {
    for (const ValueUnit& unit : UNITS) {
        if (unit.name == name && takes(quantity, unit.of)) return &unit;
    }
    return nullptr;
}

const ValueUnit* find_value_unit(std::string_view name) {
    for (const ValueUnit& unit : UNITS) {
        if (unit.name == name) return &unit;
    }
    return nullptr;
}

std::string_view quantity_words(Quantity quantity) {
    switch (quantity) {
    case Quantity::thickness:
    case Quantity::diameter:
        return "a length";
    case Quantity::pressure:
        return "a pressure";
    case Quantity::stress:
        return "a stress";
    case Quantity::force:
        return "a force";
    case Quantity::moment:
        return "a moment";
    case Quantity::area:
        return "an area";
    case Quantity::temperature:
        return "a temperature";
    case Quantity::temperature_scale:
        return "a temperature difference";
    case Quantity::weight:
        return "a mass";
    case Quantity::density:
        return "a density";
    default:
        return {};
    }
}

std::string_view quantity_words(ValueUnit::Of of) {
    switch (of) {
    case length:
        return quantity_words(Quantity::thickness);
    case area:
        return quantity_words(Quantity::area);
    case stress:
        return "a pressure or stress";
    case gauge_pressure:
        return "a gauge pressure";
    case absolute_pressure:
        return "an absolute pressure";
    case force:
        return quantity_words(Quantity::force);
    case moment:
        return quantity_words(Quantity::moment);
    case mass:
        return quantity_words(Quantity::weight);
    case density:
        return quantity_words(Quantity::density);
    default:
        return quantity_words(Quantity::temperature);
    }
}

std::string value_unit_names(Quantity quantity) {
    std::string names;
    for (const ValueUnit& unit : UNITS) {
        if (takes(quantity, unit.of) && !unit.further)
            names += (names.empty() ? "" : ", ") + std::string(unit.name);
    }
    return names;
}

std::string unknown_unit(std::string_view name, Quantity quantity) {
    std::vector<std::string_view> names;
    for (const ValueUnit& unit : UNITS) {
        if (takes(quantity, unit.of)) names.push_back(unit.name);
    }
    const std::string_view near = nearest(name, names);
    return "; " + cut(name) + " is not a unit" +
           (near.empty() ? "" : ", the nearest is " + std::string(near));
}

} // namespace tarvane::vessel
