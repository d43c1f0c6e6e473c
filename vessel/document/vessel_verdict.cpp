#include "document/vessel_verdict.h"

#include "components/not_covered.h"
#include "document/checks_table.h"

#include <algorithm>

namespace tarvane::vessel {

VesselVerdict vessel_verdict(const Request& request, const Calculation& calculation) {
    Checks all;
    std::vector<const Element*> of;
    std::string failing, beside;
    std::string_view worst_of_all = PASS;
    for (std::size_t i = 0; i < calculation.calculated.size(); ++i) {
        const auto& [element, outcome] = calculation.calculated[i];
        const Checks checks = element->checks(*outcome, request.units);
        const std::string_view own = verdict_of(calculation.verdicts[i], checks);
        if (own == FAIL || worst_of_all == PASS) worst_of_all = own;
        if (own != PASS)
            failing += (failing.empty() ? "" : "; ") + name_of(*element) + ": " +
                       governing_words(checks, request.units);
        if (const std::string remarks = remarks_on(checks); !remarks.empty())
            beside += "; " + name_of(*element) + ": " + remarks.substr(2);
        all.insert(all.end(), checks.begin(), checks.end());
        of.insert(of.end(), checks.size(), element);
    }
    VesselVerdict verdict{.passes = failing.empty() && calculation.complete,
                          .verdict = worst_of_all,
                          .words = {},
                          .not_covered = not_covered(request)};
    if (const Check* worst = governing_of_several(all))
        verdict.governing = {of[static_cast<std::size_t>(worst - all.data())], *worst};
    if (verdict.passes) {
        const bool advised =
            std::any_of(all.begin(), all.end(), [](const Check& check) { return check.advises(); });
        verdict.words =
            advised ? "every check that decides passes" : "every check that tarvane makes passes";
        if (verdict.governing)
            verdict.words += "; " + governing_words({verdict.governing->check}, request.units) +
                             ", of " + name_of(*verdict.governing->element);
    } else {
        verdict.words = failing;
        if (!calculation.complete) {
            if (verdict.verdict == PASS) verdict.verdict = NOT_MADE;
            verdict.words += (failing.empty() ? "" : "; ");
            verdict.words += "the run ended before its last component";
        }
    }
    verdict.words += beside;
    return verdict;
}

std::string text_of(const VesselVerdict& verdict, bool colour) {
    std::string out = '\n' + verdict_line(verdict.passes, verdict.words, colour);
    if (verdict.not_covered.empty()) return out;
    out += "\ntarvane makes no checks of:\n";
    for (const std::string_view words : verdict.not_covered)
        out += "  " + std::string(words) + '\n';
    return out;
}

} // namespace tarvane::vessel
