#include "assembly/mates.h"

#include "components/flange_session.h"
#include "document/results.h"
#include "tarvane/tarvane.h"

#include <algorithm>

namespace tarvane::vessel {

namespace {

constexpr int MOST_ROUNDS = 10;
// In the order of the loads.
constexpr std::string_view LOAD_KEYS[] = {"mating_operating", "mating_seating", "mating_design"};

// Silently; nothing where the engine has none.
std::optional<MateLoads> loads_of(const FlangeInput& flange, const Request& request) {
    const FlangeOutcome outcome = run_flange(flange, without_report(request));
    const TARVANE_FLANGE_RESULTS& found = outcome.found;
    if (outcome.stopped || outcome.refused()) return std::nullopt;
    const MateLoads loads{found.Wm1, found.Wm2, found.W};
    const bool any = std::none_of(loads.begin(), loads.end(),
                                  [](float load) { return load == TARVANE_NO_VALUE; });
    return any ? std::optional(loads) : std::nullopt;
}

void put_loads(FlangeInput& flange, const FlangeInput& mate, const MateLoads& loads) {
    const KeyTable& keys = flange_keys();
    flange.put_number(*keys.find("mating_loads"), 1.0f);
    flange.origins["mating_loads"].from = name_of(mate);
    for (std::size_t i = 0; i < loads.size(); ++i) {
        flange.put_number(*keys.find(LOAD_KEYS[i]), loads[i]);
        flange.origins[LOAD_KEYS[i]].from =
            "the greater one of " + name_of(flange) + " and " + name_of(mate);
    }
}

std::string list_of(const MateLoads& loads, const UnitSystem& units) {
    std::string words;
    for (const float load : loads)
        words += (words.empty() ? "" : ", ") + shown(load, Quantity::force, units);
    return words;
}

} // namespace

std::optional<Unsettled> settle_loads(const std::function<std::optional<MateLoads>()>& greater,
                                      const std::function<void(const MateLoads&)>& put) {
    MateLoads before{};
    for (int round = 1;; ++round) {
        const std::optional<MateLoads> now = greater();
        if (!now || (round > 1 && *now == before)) return std::nullopt;
        if (round == MOST_ROUNDS) return Unsettled{before, *now};
        put(*now);
        before = *now;
    }
}

std::string words_of(const Unsettled& loads, const std::string& flange, const std::string& mate,
                     const UnitSystem& units) {
    return "the bolt loads Wm1, Wm2 and W of " + flange + " and " + mate +
           " do not converge: " + list_of(loads.before, units) + ", then " +
           list_of(loads.after, units);
}

std::string settle_mates(FlangeInput& flange, FlangeInput& mate, const Request& request) {
    const auto greater = [&]() -> std::optional<MateLoads> {
        const auto ours = loads_of(flange, request), theirs = loads_of(mate, request);
        if (!ours || !theirs) return std::nullopt;
        MateLoads both{};
        for (std::size_t i = 0; i < both.size(); ++i)
            both[i] = std::max((*ours)[i], (*theirs)[i]);
        return both;
    };
    const auto put = [&](const MateLoads& loads) {
        put_loads(flange, mate, loads);
        put_loads(mate, flange, loads);
    };
    const std::optional<Unsettled> loads = settle_loads(greater, put);
    RESET_ENGINE();
    return loads ? words_of(*loads, name_of(flange), name_of(mate), request.units) : std::string();
}

} // namespace tarvane::vessel
