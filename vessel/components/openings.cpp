#include "components/openings.h"

#include "document/results.h"
#include "fields/opening_checks.h"
#include "tarvane/results.h"

namespace tarvane::vessel {

namespace {

struct Words {
    std::string_view what, relation;
};

Words words_of(std::int32_t rule) {
    switch (rule) {
    case TARVANE_OPENING_D1_LARGE:
        return {"UG-39: the opening d1", "is above half the diameter of the head"};
    case TARVANE_OPENING_D2_LARGE:
        return {"UG-39: the opening d2", "is above half the diameter of the head"};
    case TARVANE_OPENINGS_LARGE:
        return {"UG-39(e): the average diameter of the openings",
                "is above a quarter of the diameter of the head"};
    case TARVANE_OPENINGS_NEAR:
        return {"UG-39(e)(3): the pitch of the openings",
                "is below 1.25 times their average diameter"};
    case TARVANE_OPENING_LIGAMENT:
        return {"UG-39(e)(4): the ligament between the openings",
                "is below a quarter of the lesser diameter"};
    case TARVANE_OPENING_D1_AT_EDGE:
        return {"UG-39(e)(5): the distance of the opening d1 to the edge",
                "is below a quarter of d1"};
    default:
        return {"UG-39(e)(5): the distance of the opening d2 to the edge",
                "is below a quarter of d2"};
    }
}

} // namespace

void check_openings(const OpeningFaults& faults, const UnitSystem& units, Checks& checks) {
    if (faults.rules.empty())
        checks.push_back(Check::found(field_of(OPENING_CHECKS, "openings"), true));
    for (std::size_t i = 0; i < faults.rules.size(); ++i) {
        const CheckField& rule = OPENING_CHECKS[faults.rules[i] - TARVANE_OPENING_D1_LARGE];
        Check check = Check::compared(rule, faults.found[i], faults.limits[i]).marked(true);
        if (check.falls_short()) {
            const Words words = words_of(faults.rules[i]);
            check.because(std::string(words.what) + ", " +
                          shown(faults.found[i], Quantity::diameter, units) + ", " +
                          std::string(words.relation) + ", " +
                          shown(faults.limits[i], Quantity::diameter, units));
        }
        checks.push_back(std::move(check));
    }
}

} // namespace tarvane::vessel
