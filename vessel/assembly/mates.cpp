#include "assembly/mates.h"

#include "components/flange_session.h"
#include "document/results.h"
#include "tarvane/tarvane.h"

#include <algorithm>
#include <array>

namespace tarvane::vessel {

namespace {

constexpr int MOST_ROUNDS = 10;
constexpr std::string_view LOAD_KEYS[] = {"mating_operating", "mating_seating", "mating_design"};

using Loads = std::array<float, 3>; // in the order of the keys

// Silently; nothing where the engine has none.
std::optional<Loads> loads_of(const FlangeInput& flange, const Request& request) {
    const FlangeOutcome outcome = run_flange(flange, without_report(request));
    const TARVANE_FLANGE_RESULTS& found = outcome.found;
    if (outcome.stopped || outcome.refused()) return std::nullopt;
    const Loads loads{found.Wm1, found.Wm2, found.W};
    const bool any = std::none_of(loads.begin(), loads.end(),
                                  [](float load) { return load == TARVANE_NO_VALUE; });
    return any ? std::optional(loads) : std::nullopt;
}

void put_loads(FlangeInput& flange, const FlangeInput& mate, const Loads& loads) {
    const KeyTable& keys = flange_keys();
    flange.put_number(*keys.find("mating_loads"), 1.0f);
    flange.origins["mating_loads"].from = name_of(mate);
    for (std::size_t i = 0; i < loads.size(); ++i) {
        flange.put_number(*keys.find(LOAD_KEYS[i]), loads[i]);
        flange.origins[LOAD_KEYS[i]].from =
            "the greater one of " + name_of(flange) + " and " + name_of(mate);
    }
}

std::string words_of(const Loads& loads, const UnitSystem& units) {
    std::string words;
    for (const float load : loads)
        words += (words.empty() ? "" : ", ") + shown(load, Quantity::force, units);
    return words;
}

} // namespace

std::string settle_mates(FlangeInput& flange, FlangeInput& mate, const Request& request) {
    Loads before{};
    std::string fault;
    for (int round = 1;; ++round) {
        const auto ours = loads_of(flange, request), theirs = loads_of(mate, request);
        if (!ours || !theirs) break; // the calculation says why
        Loads greater{};
        for (std::size_t i = 0; i < greater.size(); ++i)
            greater[i] = std::max((*ours)[i], (*theirs)[i]);
        if (round > 1 && greater == before) break;
        if (round == MOST_ROUNDS) {
            fault = "the bolt loads Wm1, Wm2 and W of " + name_of(flange) + " and " +
                    name_of(mate) + " do not converge: " + words_of(before, request.units) +
                    ", then " + words_of(greater, request.units);
            break;
        }
        put_loads(flange, mate, greater);
        put_loads(mate, flange, greater);
        before = greater;
    }
    RESET_ENGINE();
    return fault;
}

} // namespace tarvane::vessel
