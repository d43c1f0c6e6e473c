#include "components/rated_pressure.h"

#include "components/element.h"
#include "components/request.h"
#include "document/results.h"
#include "values/text.h"

#include <algorithm>
#include <cmath>

namespace tarvane::vessel {

namespace {

constexpr int MOST_CALCULATIONS = 60;
constexpr float LEAST = 1.0f;          // psi: the way down ends below it
constexpr float NEXT_TO_NONE = 0.001f; // psi: what fails here fails whatever the pressure
constexpr double STEP = 1.1;
constexpr std::string_view ESTIMATE = "mawp"; // the check of the engine's own MAWP

std::string words_of(const Check& check) {
    std::string words = check.label();
    if (check.state() == State::not_made) words += ", not made";
    return words;
}

// A calculation at one pressure: the checks that keep the component from passing, the worst first.
struct Trial {
    std::int64_t digits = 0;
    Checks failing;

    bool fails(std::string_view id) const {
        return std::any_of(failing.begin(), failing.end(),
                           [id](const Check& check) { return check.field().id == id; });
    }
};

// Pressures are whole numbers of the last digit that the units show, and reach the engine as a number of the file
// does. What passes has been calculated as it will be read.
class Search {
  public:
    Search(const RatingBasis& of, const Request& file) : basis(of), request(without_report(file)) {
        request.words = false;
        const int decimals = decimals_of(Quantity::pressure, file.units);
        for (int i = 0; i < decimals; ++i)
            digits_in_one *= 10.0;
        found.estimate = of.estimate;
    }

    RatedPressure find() {
        if (!find_start()) return std::move(found);
        if (find_failure() && close_in()) found.P = engine(passing);
        if (passing > 0) found.passes = engine(passing);
        if (failing) {
            found.fails = engine(failing->digits);
            const Check& worst = failing->failing.front();
            found.held_by = worst.field().id;
            found.held_by_words = words_of(worst);
        }
        if (!found.P) found.why = bracket();
        return std::move(found);
    }

  private:
    const RatingBasis& basis;
    Request request; // without components: the silent one of each calculation
    double digits_in_one = 1.0;
    RatedPressure found;
    std::int64_t passing = 0;
    std::optional<Trial> failing;

    float engine(std::int64_t digits) const {
        const double number = static_cast<double>(digits) / digits_in_one;
        return request.units.to_engine(static_cast<float>(number), Quantity::pressure);
    }
    std::int64_t digits_below(float pressure) const {
        constexpr double MOST = 1.0e15; // beyond all that a single can tell apart
        const double number =
            static_cast<double>(request.units.to_file(pressure, Quantity::pressure));
        return static_cast<std::int64_t>(std::floor(std::min(number * digits_in_one, MOST)));
    }

    Checks failing_at(float P) {
        ++found.calculations;
        const std::unique_ptr<Element> trial = basis.judged->copy();
        trial->put_pressure(P);
        const std::unique_ptr<Outcome> outcome = trial->calculate(request);
        Checks checks = trial->checks(*outcome, request.units);
        sort_worst_first(checks);
        std::erase_if(checks, [&](const Check& check) {
            const std::string_view id = check.field().id;
            const bool exceeds = id == basis.exact && check.demand() > check.limit();
            return !(check.blocks() || exceeds) || id == ESTIMATE ||
                   std::find(found.anyway.begin(), found.anyway.end(), id) != found.anyway.end();
        });
        return checks;
    }

    // From half the lesser pressure down, until all passes but what never does.
    bool find_start() {
        float least = basis.P;
        if (basis.estimate && *basis.estimate > 0.0f) least = std::min(least, *basis.estimate);
        std::vector<Trial> down;
        std::int64_t digits = std::max<std::int64_t>(digits_below(least / 2.0f), 1);
        while (true) {
            down.push_back({digits, failing_at(engine(digits))});
            if (down.back().failing.empty()) break;
            if (engine(digits) < LEAST || digits == 1) break;
            digits /= 2;
        }
        if (!down.back().failing.empty()) set_apart(down);
        for (Trial& trial : down) {
            if (trial.failing.empty()) {
                passing = trial.digits;
                return true;
            }
            failing = std::move(trial);
        }
        const Check& worst = failing->failing.front();
        found.fails = engine(failing->digits);
        found.held_by = worst.field().id;
        found.held_by_words = words_of(worst);
        found.why = "it fails down to " + shown(*found.fails, Quantity::pressure, request.units) +
                    ", " + found.held_by_words;
        return false;
    }

    // The checks that no pressure lets pass count no more.
    void set_apart(std::vector<Trial>& down) {
        Checks at_none = failing_at(NEXT_TO_NONE);
        for (const Check& check : at_none) {
            const std::string_view id = check.field().id;
            if (!std::all_of(down.begin(), down.end(),
                             [id](const Trial& trial) { return trial.fails(id); }))
                continue;
            found.anyway.push_back(id);
            found.anyway_words.push_back(words_of(check));
        }
        for (Trial& trial : down) {
            std::erase_if(trial.failing, [&](const Check& check) {
                return std::find(found.anyway.begin(), found.anyway.end(), check.field().id) !=
                       found.anyway.end();
            });
        }
    }

    // Upwards in small steps: an island of failure ends it.
    bool find_failure() {
        while (found.calculations < MOST_CALCULATIONS) {
            const auto up =
                static_cast<std::int64_t>(std::llround(static_cast<double>(passing) * STEP));
            const std::int64_t next = std::max(up, passing + 1);
            Trial trial{next, failing_at(engine(next))};
            if (!trial.failing.empty()) {
                failing = std::move(trial);
                return true;
            }
            passing = next;
        }
        failing.reset();
        return false;
    }

    // To the last digit. Where singles are further apart, digits with one and the same single are one pressure.
    bool close_in() {
        while (failing->digits - passing > 1) {
            const std::int64_t middle = passing + (failing->digits - passing) / 2;
            if (engine(middle) == engine(passing)) {
                passing = middle;
            } else if (engine(middle) == engine(failing->digits)) {
                failing->digits = middle;
            } else if (found.calculations == MOST_CALCULATIONS) {
                return false;
            } else {
                Trial trial{middle, failing_at(engine(middle))};
                if (trial.failing.empty())
                    passing = middle;
                else
                    failing = std::move(trial);
            }
        }
        return true;
    }

    std::string bracket() const {
        const std::string from = shown(*found.passes, Quantity::pressure, request.units);
        if (!found.fails) return "not found: it passes up to " + from;
        return "not found: between " + from + " and " +
               shown(*found.fails, Quantity::pressure, request.units);
    }
};

} // namespace

std::optional<RatedPressure> find_rated_pressure(const Element& element, const Outcome& outcome,
                                                 const Request& request) {
    const RatingBasis basis = element.rating_basis(outcome);
    if (basis.judged != nullptr) return Search(basis, request).find();
    if (basis.why.empty()) return std::nullopt;
    RatedPressure none;
    none.why = basis.why;
    return none;
}

Got rated_pressure_of(const std::optional<RatedPressure>& rated) {
    if (!rated) return Got::none("not asked for");
    return rated->P ? Got(*rated->P) : Got::none(rated->why);
}

std::vector<std::string> rated_pressure_words(const std::optional<RatedPressure>& rated,
                                              const UnitSystem& units) {
    if (!rated) return {};
    std::string words = "Rated pressure: ";
    words += rated->P ? shown(*rated->P, Quantity::pressure, units) : rated->why;
    if (!rated->held_by.empty()) words += "; above it: " + rated->held_by_words;
    if (rated->estimate)
        words += "; the engine's estimate of the MAWP is " +
                 shown(*rated->estimate, Quantity::pressure, units);
    std::string anyway;
    for (const std::string& each : rated->anyway_words)
        anyway += (anyway.empty() ? "Whatever the pressure, this fails: " : "; ") + each;
    std::vector<std::string> all{std::move(words)};
    if (!anyway.empty()) all.push_back(std::move(anyway));
    return all;
}

std::string rated_pressure_text(const std::optional<RatedPressure>& rated,
                                const UnitSystem& units) {
    constexpr std::size_t WIDTH = 100;
    std::string out;
    for (const std::string& words : rated_pressure_words(rated, units)) {
        for (const std::string& line : wrapped(words, WIDTH))
            out += line + '\n';
    }
    return out;
}

} // namespace tarvane::vessel
