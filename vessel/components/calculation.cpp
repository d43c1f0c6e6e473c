#include "components/calculation.h"

#include "components/known_ratings.h"

#include <algorithm>
#include <exception>
#include <iterator>

namespace tarvane::vessel {

Calculation calculate(const Request& request) { return calculate(request, find_rated_pressure); }

Calculation calculate(const Request& request, const Rating& rating) {
    Calculation c;
    for (const auto& element : request.elements) {
        try {
            c.outcomes.push_back(element->calculate(request));
        } catch (const std::exception& problem) {
            c.problems.emplace_back(problem.what());
            c.status = std::max(c.status, Status::bad_input);
            c.complete = false;
            break;
        }
        c.calculated.push_back({element.get(), c.outcomes.back().get()});
        c.verdicts.push_back(element->judge(*c.outcomes.back(), request.units));
        c.status = std::max(c.status, c.verdicts.back().status);
        c.complete = c.verdicts.back().status != Status::stopped;
        if (!c.complete) break;
        Outcome& outcome = *c.outcomes.back();
        outcome.rated_pressure = rating(*element, outcome, request);
    }
    return c;
}

std::string_view verdict_of(const Verdict& verdict, const Checks& checks) {
    const auto blocked_by = [&](State state) {
        return std::any_of(checks.begin(), checks.end(), [state](const Check& check) {
            return check.blocks() && check.state() == state;
        });
    };
    if (blocked_by(State::fail)) return FAIL;
    if (blocked_by(State::not_made)) return NOT_MADE;
    if (verdict.status == Status::fine) return PASS;
    return verdict.status == Status::fails ? FAIL : NOT_MADE;
}

std::string path_of(const Element& element) {
    return std::string(element.kind->table) + '[' + std::to_string(element.number - 1) + ']';
}

std::string closing_tables(const std::vector<Calculated>& calculated, const UnitSystem& units) {
    std::string tables;
    for (const ElementKind* kind : element_kinds()) {
        std::vector<Calculated> own;
        std::copy_if(calculated.begin(), calculated.end(), std::back_inserter(own),
                     [kind](const Calculated& c) { return c.element->kind == kind; });
        if (!own.empty()) tables += kind->tables(own, units);
    }
    return tables;
}

DataUses data_used(const Request& request) {
    DataUses all;
    for (const auto& element : request.elements) {
        for (const auto& [file, items] : element->data)
            all[file].insert(items.begin(), items.end());
    }
    return all;
}

OwnFigures own_figures(const std::vector<Calculated>& calculated) {
    OwnFigures all;
    for (const Calculated& c : calculated) {
        all.insert(c.element->figures.begin(), c.element->figures.end());
        all.insert(c.outcome->figures.begin(), c.outcome->figures.end());
    }
    return all;
}

std::string approximate_lines(const Request& request, const std::vector<Calculated>& calculated) {
    std::string lines;
    for (const auto& [file, items] : data_used(request)) {
        std::string list;
        for (const auto& [item, approximate] : items) {
            if (approximate) list.append(list.empty() ? "" : "; ").append(item);
        }
        if (list.empty()) continue;
        lines.append("\nApproximate figures of ").append(file).append(" were used (").append(list);
        lines += "): replace the file by one made from a licensed copy of the standard.\n";
    }
    std::string list;
    for (const auto& [item, source] : own_figures(calculated))
        list += (list.empty() ? "" : "; ") + item;
    if (!list.empty())
        lines += "\nApproximate figures of the program were used (" + list +
                 "): hold them against a licensed copy of the standard.\n";
    return lines;
}

} // namespace tarvane::vessel
