#include "toughness/impact_table.h"

#include "frame/element_tables.h"
#include "frame/numbers.h"

namespace tarvane {

IMPACT_SWITCHES G_IMPACT;

namespace {

constexpr Int LISTS = 3, PLACES = 11, SINGLE_KIND = 4;

struct ENTRY {
    Text<16> name;
    Real temperature = 0.0f;
};
struct IMPACT_LIST {
    Int count = 0;
    ENTRY entries[PLACES];
};
IMPACT_LIST lists[LISTS];
ENTRY single;

Real number_of(const Text<16>& field) {
    Real value;
    Int whole;
    PARSE_REAL(field.view(), value, whole);
    return value;
}

Int count_of(const Text<16>& field) {
    Real value;
    Int whole;
    PARSE_REAL(field.view(), value, whole);
    return min(max(whole, 0), PLACES);
}

} // namespace

void READ_IMPACT_TABLE() {
    const HOST_INPUT& host = HOST_RECORD;
    G_IMPACT.Ucs66g = host.impact_switches(1) == '1';
    G_IMPACT.Ucs66_1 = host.impact_switches(2) == '1';
    G_IMPACT.Ug84 = host.impact_switches(3) == '1';
    G_IMPACT.UserTable = host.impact_switches(4) == '1';
    for (Int k = 0; k < LISTS; ++k) {
        lists[k].count = count_of(host.impact_counts[k]);
        for (Int i = 0; i < PLACES; ++i)
            lists[k].entries[i] = {host.impact_names[k][i], number_of(host.impact_numbers[k][i])};
    }
    single = {host.single_name, number_of(host.single_number)};
}

void IMPACT_TEST_TEMPERATURE(std::string_view Name, Real& T, Int Kind) {
    T = 100.0f;
    if (!G_IMPACT.UserTable) return;
    const Text<16> name = Name;
    if (Kind == SINGLE_KIND && name == single.name.view()) T = single.temperature;
    if (Kind < 1 || Kind > LISTS) return;
    const IMPACT_LIST& list = lists[Kind - 1];
    for (Int i = 0; i < list.count; ++i)
        if (name == list.entries[i].name.view()) {
            T = list.entries[i].temperature;
            return;
        }
}

void UG84_REDUCTION(Real& R, Real V) {
    R = 0.0f;
    if (!G_IMPACT.UserTable) return;
    if (V <= 40.0f)
        R = 10.0f;
    else if (V < 55.0f)
        R = 5.0f;
}

bool knows_own_temperatures() {
    return HOST_RECORD.version_mark.view().find("-24") != std::string_view::npos;
}

bool LIS_ELEMENT_HAS_OWN_MDMT(Int Element) {
    if (Element < 1 || Element > 32 || !knows_own_temperatures()) return false;
    const Int i = Element - 1;
    return HOST_RECORD.own_mdmt[i / 16](i % 16 + 1) == '1';
}

void RESET_IMPACT_TABLE() {
    G_IMPACT = {};
    for (IMPACT_LIST& list : lists)
        list = {};
    single = {};
}

} // namespace tarvane
