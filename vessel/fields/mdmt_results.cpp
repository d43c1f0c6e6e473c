#include "fields/mdmt_results.h"

namespace tarvane::vessel {

namespace {

using F = const MdmtFound&;
using N = MdmtNumber;

Got found(F f, std::optional<float> value, std::string_view why) {
    if (!f.nothing.empty()) return Got::none(f.nothing);
    return value ? Got(*value) : Got::none(why);
}

constexpr std::string_view NONE = "no temperature was found";

using enum Quantity;

// In the order of the closing table.
constexpr ResultRow<MdmtFound> ROWS[] = {
    {{"tg", "tg", thickness, "Governing thickness", MDMT_TABLE},
     [](F f) { return Got(f.given.setting(N::tg)); }},
    {{"ratio", "", number, "Ratio", MDMT_TABLE},
     [](F f) { return found(f, f.ratio, "no ratio was used"); }},
    {{"T_curve", "", temperature, "Temperature of the curve", MDMT_TABLE},
     [](F f) { return found(f, f.curve, NONE); }},
    {{"reduction", "", temperature_scale, "Temperature reduction", MDMT_TABLE},
     [](F f) { return found(f, f.reduction, "no reduction was used"); }},
    {{"mdmt", "MDMT", temperature, "Minimum design metal temperature", MDMT_TABLE},
     [](F f) { return found(f, f.reduced, NONE); }},
    {{"T_ug20f", "", temperature, "Exempt temperature of UG-20(f)", MDMT_TABLE},
     [](F f) { return found(f, f.ug20f, "UG-20(f) does not apply"); }},
    {{"T_lowest", "", temperature, "Lowest temperature without impact test", MDMT_TABLE},
     [](F f) { return found(f, f.lowest, NONE); }},
    {{"MDMT", "", temperature, "Required temperature", MDMT_TABLE},
     [](F f) { return f.asked ? Got(f.given.setting(N::required)) : Got::none("not given"); }},
};

constexpr auto FIELDS = fields_of(ROWS);

} // namespace

std::span<const ResultField> mdmt_result_fields() { return FIELDS; }

std::vector<Result> mdmt_results(const MdmtFound& f) { return results_of(ROWS, FIELDS, f); }

} // namespace tarvane::vessel
