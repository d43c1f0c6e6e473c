// When a key is read, or cannot be left out: a conjunction of terms, or a rule that has a name because it
// is more than that. A host that shows a form evaluates the terms itself and asks the library for the rules.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string_view>

namespace tarvane::vessel {

struct Term {
    enum class Is { unused, among, given, not_given };

    std::string_view key;
    Is is = Is::unused;
    std::uint32_t numbers = 0; // of a choice or a flag: a bit each

    constexpr bool holds(int number) const {
        return number >= 0 && number < 32 && (numbers >> number & 1u) != 0;
    }
};

// A rule of a kind: Element::rule answers for it, and these are its words.
struct Rule {
    std::string_view id, words;
};

struct Condition {
    std::array<Term, 3> terms{};
    std::string_view rule{};

    constexpr bool always() const { return terms[0].is == Term::Is::unused && rule.empty(); }
    // Both. A fourth term, or a second rule, is no constant expression.
    constexpr Condition and_also(const Condition& other) const {
        Condition both = *this;
        for (const Term& term : other.terms) {
            if (term.is == Term::Is::unused) continue;
            std::size_t free = 0;
            while (both.terms[free].is != Term::Is::unused)
                ++free;
            both.terms[free] = term;
        }
        if (!other.rule.empty()) both.rule = both.rule.empty() ? other.rule : throw "two rules";
        return both;
    }
};

constexpr Condition among(std::string_view key, std::initializer_list<int> numbers) {
    Term term{key, Term::Is::among};
    for (const int number : numbers)
        term.numbers |= std::uint32_t{1} << number;
    return {{term}};
}
constexpr Condition on(std::string_view flag) { return among(flag, {1}); }
constexpr Condition given(std::string_view key) { return {{Term{key, Term::Is::given}}}; }
constexpr Condition not_given(std::string_view key) { return {{Term{key, Term::Is::not_given}}}; }
constexpr Condition by_rule(std::string_view id) { return {{}, id}; }
constexpr Condition operator&&(const Condition& a, const Condition& b) { return a.and_also(b); }

} // namespace tarvane::vessel
