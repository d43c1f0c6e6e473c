#include "surface/sweep.h"

#include "assembly/repeated_reading.h"
#include "components/calculation.h"
#include "components/engine_session.h"
#include "components/fault_list.h"
#include "fields/rated_pressure.h"
#include "tarvane/tarvane.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <limits>
#include <map>
#include <tuple>
#include <utility>

namespace tarvane::vessel {

namespace {

constexpr double NO_VALUE = std::numeric_limits<double>::quiet_NaN();
constexpr std::size_t MOST_FAULTS = 1000;
constexpr std::chrono::milliseconds LONGEST_TURN{50};

constexpr std::string_view STOPPED_READING = "the engine stopped as the request was read";
constexpr std::string_view RESULTS = "results.", RATIO = "ratio", PASSED = "passed",
                           GOVERNING = "governing", VESSEL = "vessel";

// "flange[0]" and what comes after the point; nothing for a path of another form.
struct Path {
    std::string table;
    std::optional<std::size_t> number;
    std::string rest;
};

std::optional<Path> split(const std::string& path) {
    const std::size_t point = path.find('.');
    if (point == std::string::npos) return Path{path, {}, {}};
    Path parts{path.substr(0, point), {}, path.substr(point + 1)};
    const std::size_t bracket = parts.table.find('[');
    if (bracket == std::string::npos) return parts;
    std::size_t number = 0;
    const char* first = parts.table.data() + bracket + 1;
    const char* last = parts.table.data() + parts.table.size() - 1;
    const auto [end, error] = std::from_chars(first, last, number);
    if (error != std::errc() || end != last || *last != ']') return std::nullopt;
    parts.number = number;
    parts.table.resize(bracket);
    return parts;
}

// ---- inputs ----------------------------------------------------------------------------------------------

// "flange[0].t [mm]": a place, with the unit of its numbers.
Input input_of(const std::string& name) {
    const std::size_t bracket = name.rfind(" [");
    if (bracket == std::string::npos || name.back() != ']') return {name};
    return {name.substr(0, bracket), name.substr(bracket + 2, name.size() - bracket - 3)};
}

// Puts a number at the path, replacing a value that is there; else returns what is wrong with the path.
std::string put_number_at(Table& root, const std::string& path) {
    const std::optional<Path> parts = split(path);
    if (!parts) return "a path like flange[0].t or vessel.P is expected";
    Table* table = &root;
    std::string rest = path;
    if (parts->number) {
        Value* value = root.find(parts->table);
        List* list = value != nullptr ? value->list() : nullptr;
        if (value != nullptr && *parts->number == 0 && value->table() != nullptr)
            table = value->table();
        else if (list != nullptr && *parts->number < list->size() &&
                 (*list)[*parts->number].table() != nullptr)
            table = (*list)[*parts->number].table();
        else
            return "the request has no " + path.substr(0, path.find('.'));
        rest = parts->rest;
    }
    for (std::size_t point = rest.find('.'); point != std::string::npos; point = rest.find('.')) {
        const std::string name = rest.substr(0, point);
        Value* value = table->find(name);
        if (value == nullptr) value = &table->put(name, Value(Table()));
        table = value->table();
        if (table == nullptr) return name + " is not a table of keys";
        rest.erase(0, point + 1);
    }
    table->put(rest, Value(0.0));
    return {};
}

// ---- outputs ---------------------------------------------------------------------------------------------

struct Output {
    enum class What { result, ratio, passed, governing };
    What what;
    std::optional<std::size_t> component; // place in the request; none: of the vessel
    std::size_t field = 0;                // place among the results of the kind
    std::size_t among = 0;                // place among those of the component that are asked for
};

class Outputs {
  public:
    explicit Outputs(const Request& of) : request(of) {}

    // Nothing, and the reason, for an output that does not exist.
    std::optional<Output> find(const std::string& path, std::string& reason) const {
        std::vector<std::string> names;
        const auto take = [&](std::string name, Output output) {
            if (name == path) found = output;
            names.push_back(std::move(name));
        };
        found.reset();
        put_common(take, std::string(VESSEL), {});
        for (std::size_t i = 0; i < request.elements.size(); ++i) {
            const Element& element = *request.elements[i];
            const std::string of = path_of(element);
            put_common(take, of, i);
            for (std::size_t field = 0; field < element.kind->results.size(); ++field)
                take(of + '.' + std::string(RESULTS) +
                         std::string(element.kind->results[field].name),
                     {Output::What::result, i, field});
        }
        if (!found) {
            const std::vector<std::string_view> candidates(names.begin(), names.end());
            reason = "no output of this request" + nearest_name(path, candidates);
        }
        return found;
    }

  private:
    const Request& request;
    mutable std::optional<Output> found;

    template <class Take>
    void put_common(const Take& take, const std::string& of, std::optional<std::size_t> i) const {
        take(of + '.' + std::string(RATIO), {Output::What::ratio, i});
        take(of + '.' + std::string(PASSED), {Output::What::passed, i});
        take(of + '.' + std::string(GOVERNING), {Output::What::governing, i});
    }
};

// ---- rows ------------------------------------------------------------------------------------------------

// What was found for a component in the present row.
struct Found {
    std::unique_ptr<Outcome> outcome;
    std::vector<Result> results;
    Checks checks;
    bool passed = false;
};

// What is asked for of a component.
struct Asked {
    std::vector<std::size_t> results; // places among those of its kind
    bool checks = false, rating = false;
};

class Sweep {
  public:
    Sweep(RepeatedReading& of, std::vector<Output> wanted)
        : reading(of), outputs(std::move(wanted)), changing(of.changing()) {
        const std::size_t count = reading.request().elements.size();
        components.resize(count);
        asked.resize(count);
        for (Output& output : outputs) {
            if (!output.component) {
                for (Asked& each : asked)
                    each.checks = true;
            } else if (output.what == Output::What::result) {
                Asked& of_component = asked[*output.component];
                output.among = of_component.results.size();
                of_component.results.push_back(output.field);
                of_component.rating = of_component.rating || is_rating(output);
            } else {
                asked[*output.component].checks = true;
            }
        }
        reading.request().report = false;
        reading.request().words = false;
    }

    // The components without inputs, once. A fault ends every row in the same way.
    std::optional<Fault> calculate_the_rest() {
        for (std::size_t i = 0; i < components.size(); ++i) {
            if (std::find(changing.begin(), changing.end(), i) != changing.end()) continue;
            if (auto fault = calculate(i)) return fault;
        }
        return std::nullopt;
    }

    // Others may have had the engine.
    void engine_returns() { latest.reset(); }

    std::optional<Fault> row(std::span<const double> x, std::span<double> y) {
        std::fill(y.begin(), y.end(), NO_VALUE);
        if (!reading.take_numbers(x)) {
            if (auto fault = read(x)) return fault;
        }
        for (const std::size_t i : changing) {
            if (auto fault = calculate(i)) return fault;
        }
        for (std::size_t k = 0; k < outputs.size(); ++k)
            y[k] = value_of(outputs[k]);
        return std::nullopt;
    }

  private:
    RepeatedReading& reading;
    std::vector<Output> outputs;
    std::vector<std::size_t> changing; // components that inputs are of
    std::vector<Found> components;
    std::vector<Asked> asked; // of the components
    // The component of the engine's latest calculation, whose numbers alone have changed since; none: something else
    // has been asked of the engine.
    std::optional<std::size_t> latest;

    std::optional<Fault> read(std::span<const double> x) {
        latest.reset();
        RESET_ENGINE(); // a request is read on an engine as at load
        Outcome of_reading;
        const Services services(of_reading);
        const Faults& faults = reading.read(x);
        if (!faults.empty()) return faults.front();
        if (!of_reading.stopped) return std::nullopt;
        return Fault{.message = std::string(STOPPED_READING),
                     .value = std::to_string(of_reading.fatal_code)};
    }

    // Some sixty calculations more.
    bool is_rating(const Output& output) const {
        const ElementKind& kind = *reading.request().elements[*output.component]->kind;
        return kind.results[output.field].name == RATED_PRESSURE.name;
    }

    std::optional<Fault> calculate(std::size_t i) {
        const Request& request = reading.request();
        const Element& element = *request.elements[i];
        Found& found = components[i];
        if (std::exchange(latest, std::nullopt) == i)
            element.calculate_again(request, found.outcome);
        else
            found.outcome = element.calculate(request);
        if (found.outcome->stopped) return stop_of(element, *found.outcome);
        if (asked[i].rating)
            found.outcome->rated_pressure = find_rated_pressure(element, *found.outcome, request);
        else
            latest = i;
        if (!asked[i].results.empty())
            found.results = element.results_at(*found.outcome, asked[i].results);
        if (asked[i].checks) {
            // In one word: what judge and verdict_of make of them.
            found.checks = element.checks(*found.outcome, request.units);
            found.passed = !found.outcome->refused() && all_pass(found.checks);
        }
        return std::nullopt;
    }

    Fault stop_of(const Element& element, const Outcome& outcome) const {
        std::string reason;
        for (const std::string& words : element.judge(outcome, reading.request().units).reasons)
            reason += (reason.empty() ? "" : "; ") + words;
        return {.message = std::move(reason),
                .path = path_of(element),
                .value = std::to_string(outcome.fatal_code)};
    }

    double value_of(const Output& output) const {
        return output.component ? of_component(output, *output.component) : of_vessel(output);
    }

    double of_component(const Output& output, std::size_t i) const {
        const Found& found = components[i];
        if (output.what == Output::What::passed) return found.passed ? 1.0 : 0.0;
        const Element& element = *reading.request().elements[i];
        if (output.what == Output::What::result) return shown(found.results[output.among]);
        const Check* worst = governing(found.checks);
        if (worst == nullptr) return NO_VALUE;
        if (output.what == Output::What::ratio) return number(worst->ratio());
        return static_cast<double>(&worst->field() - element.kind->checks.data());
    }

    double of_vessel(const Output& output) const {
        if (output.what == Output::What::passed) {
            return std::all_of(components.begin(), components.end(),
                               [](const Found& found) { return found.passed; })
                       ? 1.0
                       : 0.0;
        }
        Checks all;
        std::vector<std::size_t> of;
        for (std::size_t i = 0; i < components.size(); ++i) {
            all.insert(all.end(), components[i].checks.begin(), components[i].checks.end());
            of.insert(of.end(), components[i].checks.size(), i);
        }
        const Check* worst = governing_of_several(all);
        if (worst == nullptr) return NO_VALUE;
        if (output.what == Output::What::ratio) return number(worst->ratio());
        return static_cast<double>(of[static_cast<std::size_t>(worst - all.data())]);
    }

    static double number(std::optional<float> value) {
        return value && std::isfinite(*value) ? static_cast<double>(*value) : NO_VALUE;
    }
    double shown(const Result& result) const {
        if (!result.value) return NO_VALUE;
        return number(reading.request().units.to_file(*result.value, result.field->quantity));
    }
};

// The faults of rows, each once, and their numbers from 1 on. After the last of them there is one for the others.
class RowFaults {
  public:
    explicit RowFaults(Faults& into) : faults(into) {}

    std::int32_t number_of(const Fault& fault) {
        const auto key = std::tuple(fault.path, fault.value, fault.message);
        if (const auto known = numbers.find(key); known != numbers.end()) return known->second;
        if (faults.size() < MOST_FAULTS) {
            faults.push_back(fault);
            numbers.emplace(key, last());
        } else if (faults.size() == MOST_FAULTS) {
            faults.push_back({.message = "one of further faults, which are not listed"});
        }
        return last();
    }

  private:
    Faults& faults;
    std::map<std::tuple<std::string, std::string, std::string>, std::int32_t> numbers;

    std::int32_t last() const { return static_cast<std::int32_t>(faults.size()); }
};

} // namespace

SweepEnd sweep(Value request, std::span<const std::string> inputs,
               std::span<const std::string> outputs, const SweepArrays& arrays,
               std::optional<EngineTurn>& turn, const DataFolder& data_folder) {
    SweepEnd end;
    const auto refuse = [&end](std::string path, std::string reason) {
        end.refused.push_back({.message = std::move(reason), .path = std::move(path)});
    };
    std::vector<Input> places;
    for (const std::string& name : inputs) {
        Input input = input_of(name);
        const bool twice = std::any_of(places.begin(), places.end(), [&](const Input& other) {
            return other.path == input.path;
        });
        if (twice)
            refuse(input.path, "given twice as an input");
        else if (std::string reason = put_number_at(*request.table(), input.path); !reason.empty())
            refuse(input.path, std::move(reason));
        places.push_back(std::move(input));
    }
    if (!end.refused.empty()) return end;

    Outcome asked;
    std::optional<Services> services(std::in_place, asked);
    RepeatedReading reading(*request.table(), places);
    services.reset();
    end.refused = reading.result().faults;
    if (asked.stopped) refuse("", std::string(STOPPED_READING));
    if (!end.refused.empty()) return end;
    for (std::size_t i = 0; i < inputs.size(); ++i) {
        if (!reading.takes(i)) refuse(places[i].path, "no component takes a value from there");
    }
    std::vector<Output> found;
    for (const std::string& path : outputs) {
        std::string reason;
        if (const auto output = Outputs(reading.request()).find(path, reason))
            found.push_back(*output);
        else
            refuse(path, std::move(reason));
    }
    if (!end.refused.empty()) return end;

    Sweep rows(reading, std::move(found));
    const std::optional<Fault> of_all = rows.calculate_the_rest();
    RowFaults faults(end.of_rows);
    using Clock = std::chrono::steady_clock;
    Clock::time_point since = Clock::now();
    for (std::int64_t row = 0; row < arrays.rows; ++row) {
        const auto place = static_cast<std::size_t>(row);
        const std::span<double> y = arrays.y.subspan(place * outputs.size(), outputs.size());
        std::optional<Fault> fault = of_all;
        if (fault)
            std::fill(y.begin(), y.end(), NO_VALUE);
        else
            fault = rows.row(arrays.x.subspan(place * inputs.size(), inputs.size()), y);
        if (!arrays.fault.empty()) arrays.fault[place] = fault ? faults.number_of(*fault) : 0;
        end.done = row + 1;
        if (end.done == arrays.rows || Clock::now() - since < LONGEST_TURN) continue;
        turn.reset();
        const bool go_on = !arrays.go_on || arrays.go_on(end.done);
        turn.emplace(data_folder);
        rows.engine_returns();
        if (!go_on) return end;
        since = Clock::now();
    }
    turn.reset();
    if (arrays.go_on) arrays.go_on(end.done);
    return end;
}

} // namespace tarvane::vessel
