// The numbers of a flange: their bounds, and what becomes of other ones, row after row of a sweep.
#include "components/flange_input.h"
#include "components/flange_session.h"
#include "components/request.h"
#include "document/results.h"
#include "tarvane/tarvane.h"

#include <algorithm>
#include <iterator>

namespace tarvane::vessel {

namespace {

bool above_zero(float value) { return value > 0.0f; }
bool not_below_zero(float value) { return value >= 0.0f; }

struct Bound {
    std::string_view key;
    bool (*holds)(float value);
    std::string_view words;
};
constexpr std::string_view ABOVE_ZERO = "it must be above 0",
                           NOT_BELOW_ZERO = "it must not be below 0";
constexpr Bound BOUNDS[] = {
    {"t", above_zero, ABOVE_ZERO},          {"E", above_zero, ABOVE_ZERO},
    {"ci", not_below_zero, NOT_BELOW_ZERO}, {"ce", not_below_zero, NOT_BELOW_ZERO},
    {"tg", not_below_zero, NOT_BELOW_ZERO}, {"y", not_below_zero, NOT_BELOW_ZERO},
    {"rating", above_zero, ABOVE_ZERO},     {"rating_cold", above_zero, ABOVE_ZERO}};

// Keys whose numbers are the calculation's alone, arguments of its call, within the bounds.
// clang-format off
constexpr std::string_view FREE_KEYS[] = {
    "P", "P_operating", "T", "ci", "ce",
    "t", "B", "A", "g0", "g1", "h", "tw", "LjID", "LjOD", "density",
    "Sfo", "Sfa", "Sb", "Sa",
    "C", "a", "n", "root_area",
    "Fod", "Fid", "Go", "Gi", "m", "y", "tg", "w", "lp", "tp", "mPart", "yPart",
    "axial_force", "bending_moment",
    "mating_operating", "mating_seating", "mating_design",
    "D", "d", "L", "D1", "D2", "edge1", "edge2", "pitch",
    "tShell", "caShell", "Dshell", "Sn", "Sna"};
// clang-format on

constexpr std::string_view BLANK = "               "; // a slot

} // namespace

// Values that the engine would use as they are, or read as something else: a thickness that is not above
// 0 counts as 2 inches.
void FlangeInput::check_values(Reading& reading) const {
    for (const Bound& bound : BOUNDS) {
        if (reading.sound(bound.key) && !bound.holds(number_of(*flange_keys().find(bound.key))))
            reading.fault(bound.key, std::string(bound.words));
    }
    const auto value = [&](std::string_view name) { return number_of(*flange_keys().find(name)); };
    // Ratings fall as the temperature rises.
    if (rated() && reading.sound("rating") && reading.sound("rating_cold") &&
        value("rating_cold") < value("rating"))
        reading.fault("rating_cold",
                      shown(value("rating_cold"), Quantity::pressure, reading.units) +
                          " at ambient temperature is below the rating at the design "
                          "temperature, " +
                          shown(value("rating"), Quantity::pressure, reading.units));
    if (reading.sound("E") && value("E") > 1.0f)
        reading.fault("E", "a joint efficiency up to 1 is expected");
}

// Whether another number of a key leaves all else of the reading as it is.
bool FlangeInput::is_free(const Key& key, float value) const {
    if (std::find(std::begin(FREE_KEYS), std::end(FREE_KEYS), key.name) == std::end(FREE_KEYS))
        return false;
    for (const Bound& bound : BOUNDS) {
        if (bound.key == key.name && !bound.holds(value)) return false;
    }
    const bool material = names_material(slot::flange_material),
               bolts = names_material(slot::bolt_material);
    if (key.name == "t") return !material;
    if (key.name == "T") return !material && !bolts;
    if (key.name == "a") return !bolts && bolt_sizes().lists(value);
    // 0: no hub.
    if (key.name == "g0" || key.name == "g1" || key.name == "h")
        return value != 0.0f && number_of(key) != 0.0f;
    return true;
}

bool FlangeInput::replace(const Key& key, float value) {
    if (!is_free(key, value)) return false;
    put_number(key, value);
    if (key.name == "P" && !gives("P_operating"))
        put_setting(Setting::design_pressure_operating, value);
    return true;
}

// Alone, and under internal pressure, a calculation finds the engine as it needs it after another one.
void FlangeInput::calculate_again(const Request& file, std::unique_ptr<Outcome>& last) const {
    auto& own = static_cast<FlangeOutcome&>(*last);
    const bool alone = analysis() == TARVANE_ANALYSE && !has_external() &&
                       record[TARVANE_P] > 0.0f && setting(Setting::failure_corrosion) == 0.0f &&
                       !asks_for_heat_treatment() && !own.stopped && !file.report;
    if (alone)
        run_flange_again(*this, file, own);
    else
        last = calculate(file);
}

bool FlangeInput::asks_for_heat_treatment() const {
    return names_material(slot::flange_material) && whole_setting(Setting::p_number) != 0;
}

bool FlangeInput::names_material(int at) const {
    return text.compare(static_cast<std::size_t>(at), BLANK.size(), BLANK) != 0;
}

} // namespace tarvane::vessel
