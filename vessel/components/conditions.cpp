#include "components/conditions.h"

namespace tarvane::vessel {

namespace {

Holds holds(const Term& term, const Element& element, const Reading& reading) {
    const bool given = reading.given(term.key);
    if (term.is == Term::Is::given) return given ? Holds::yes : Holds::no;
    if (term.is == Term::Is::not_given) return given ? Holds::no : Holds::yes;
    if (given && !reading.sound(term.key)) return Holds::unknown;
    const float number = element.number_of(*element.kind->keys.find(term.key));
    return term.holds(static_cast<int>(number)) ? Holds::yes : Holds::no;
}

} // namespace

Holds holds(const Condition& condition, const Element& element, const Reading& reading) {
    Holds all = Holds::yes;
    for (const Term& term : condition.terms) {
        if (term.is == Term::Is::unused) break;
        const Holds one = holds(term, element, reading);
        if (one == Holds::no) return one;
        if (one == Holds::unknown) all = one;
    }
    if (!condition.rule.empty() && !element.rule(condition.rule, reading)) return Holds::no;
    return all;
}

std::string why_not(const Condition& condition, const Element& element, const Reading& reading) {
    for (const Term& term : condition.terms) {
        if (term.is == Term::Is::unused) break;
        if (holds(term, element, reading) != Holds::no) continue;
        const std::string name(term.key);
        if (term.is == Term::Is::given) return name + " not given";
        if (term.is == Term::Is::not_given) return name + " given";
        const Key& key = *element.kind->keys.find(term.key);
        const int number = static_cast<int>(element.number_of(key));
        if (key.quantity == Quantity::flag) return name + (number != 0 ? " true" : " false");
        const std::string_view choice = choice_name(key.choices, number);
        return choice.empty() ? name + " not given" : name + ' ' + std::string(choice);
    }
    return {};
}

void find_missing_keys(const Element& element, const UnitSystem& units, Reading& reading) {
    for (const Key& key : element.kind->keys.keys) {
        if (!key.needed || reading.given(key.name)) continue;
        if (holds(key.read, element, reading) != Holds::yes ||
            holds(*key.needed, element, reading) != Holds::yes)
            continue;
        reading.fault(key.name, "missing in " + std::string(element.kind->table) + ' ' +
                                    std::to_string(element.number) + "; " + expected(key, units) +
                                    " is expected (" + std::string(key.meaning) + ")");
    }
}

Origins complete_origins(const Element& element, Reading& reading) {
    Origins origins = reading.take_origins();
    for (const Key& key : element.kind->keys.keys) {
        Origin& origin = origins[key.name];
        const std::string reason = why_not(key.read, element, reading);
        if (!reason.empty()) {
            origin.from = "not read: " + reason;
        } else if (origin.from.empty()) {
            origin.from = "default";
        }
    }
    return origins;
}

} // namespace tarvane::vessel
