#include "components/check.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tarvane::vessel {

namespace {

constexpr float NO_LIMIT = std::numeric_limits<float>::infinity();
constexpr float LAST_PASSED = 1.00005f; // shown as 1.0000

// Demand over limit, the other way round for "at least". Signs take part: what a negative limit allows is
// below it.
float ratio_of(float upper, float lower) {
    if (std::isnan(upper) || std::isnan(lower)) return NO_LIMIT;
    if (upper <= 0.0f && lower >= 0.0f) return 0.0f;
    if (lower <= 0.0f) return upper <= lower ? 1.0f : NO_LIMIT;
    return upper / lower;
}

} // namespace

std::string_view state_name(State state) {
    switch (state) {
    case State::pass:
        return "pass";
    case State::fail:
        return "fail";
    case State::not_asked:
        return "not asked";
    case State::not_made:
        return "not made";
    case State::waived:
        break;
    }
    return "waived";
}

Check Check::compared(const CheckField& field, float demand, float limit) {
    const float ratio = field.at_least ? ratio_of(limit, demand) : ratio_of(demand, limit);
    Check check(field, ratio < LAST_PASSED ? State::pass : State::fail);
    check.asked = demand;
    check.allowed = limit;
    check.used = ratio;
    return check;
}

Check Check::found(const CheckField& field, bool sound, std::string reason) {
    Check check(field, sound ? State::pass : State::fail);
    check.words = std::move(reason);
    return check;
}

Check Check::not_asked(const CheckField& field, std::string reason) {
    Check check(field, State::not_asked);
    check.words = std::move(reason);
    return check;
}

Check Check::not_made(const CheckField& field, std::string reason) {
    Check check(field, State::not_made);
    check.words = std::move(reason);
    return check;
}

Check Check::waived() const {
    Check check = *this;
    if (blocks()) check.is = State::waived;
    return check;
}

Check& Check::because(std::string sentence) {
    words = std::move(sentence);
    return *this;
}

namespace {

int rank(const Check& check) {
    switch (check.state()) {
    case State::fail:
        return 0;
    case State::not_made:
        return 1;
    case State::pass:
        return 2;
    case State::waived:
        return 3;
    case State::not_asked:
        break;
    }
    return 4;
}

// Among rows of one rank. A failed finding without figures comes first, a passed one last.
float weight(const Check& check) {
    return check.ratio().value_or(check.passes() ? 0.0f : NO_LIMIT);
}

} // namespace

void sort_worst_first(Checks& checks) {
    std::stable_sort(checks.begin(), checks.end(), [](const Check& a, const Check& b) {
        return rank(a) != rank(b) ? rank(a) < rank(b) : weight(a) > weight(b);
    });
}

const Check* governing(const Checks& checks) {
    const Check* first = nullptr;
    for (const Check& check : checks) {
        if (check.state() == State::not_asked || check.state() == State::waived) continue;
        const bool worse = first == nullptr || rank(check) < rank(*first) ||
                           (rank(check) == rank(*first) && weight(check) > weight(*first));
        if (worse) first = &check;
    }
    return first;
}

bool all_pass(const Checks& checks) {
    return std::none_of(checks.begin(), checks.end(), [](const Check& c) { return c.blocks(); });
}

} // namespace tarvane::vessel
