#include "components/check.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>

namespace tarvane::vessel {

namespace {

constexpr float NO_LIMIT = std::numeric_limits<float>::infinity();
constexpr double FIRST_FAILED = 1.00005; // shown as 1.0001; no single is equal to it

// Demand over limit, the other way round for "at least". Signs count: what a negative limit allows is
// below it.
float ratio_of(float upper, float lower) {
    if (std::isnan(upper) || std::isnan(lower)) return NO_LIMIT;
    if (upper <= 0.0f && lower >= 0.0f) return 0.0f;
    if (lower <= 0.0f) return upper <= lower ? 1.0f : NO_LIMIT;
    const float ratio = upper / lower;
    return std::isnan(ratio) ? NO_LIMIT : ratio;
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
    const float zero = field.quantity == Quantity::temperature ? ABSOLUTE_ZERO : 0.0f;
    const float upper = (field.at_least ? limit : demand) - zero;
    const float lower = (field.at_least ? demand : limit) - zero;
    const float ratio = ratio_of(upper, lower);
    Check check(field, static_cast<double>(ratio) < FIRST_FAILED ? State::pass : State::fail);
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
    if (falls_short() && described->waivable) check.is = State::waived;
    return check;
}

Check& Check::because(std::string sentence) {
    words = std::move(sentence);
    return *this;
}

Check& Check::shown_by(std::string text) {
    formula = std::move(text);
    return *this;
}

Check& Check::in_case(std::string other) {
    other_case = std::move(other);
    return *this;
}

Check& Check::under(std::string_view other) {
    other_paragraph = other;
    return *this;
}

std::string Check::label() const {
    std::string label(described->label);
    if (!load_case().empty()) label.append(", ").append(load_case());
    return label;
}

Check& Check::marked(bool by_engine) {
    engine_marks = by_engine;
    return *this;
}

Check& Check::listed_in(std::span<const CheckField> fields) {
    const std::less_equal<const CheckField*> before; // of pointers into any array
    const CheckField* const first = fields.data();
    if (before(first, described) && before(described + 1, first + fields.size())) return *this;
    for (const CheckField& field : fields)
        if (field.id == described->id) described = &field;
    return *this;
}

std::string_view Check::remark() const { return passes() && engine_marks ? "within 0.005 %" : ""; }

bool Check::told() const {
    return !words.empty() && is != State::not_asked &&
           !(advises() && described->force == Force::advises);
}

namespace {

int rank(const Check& check) {
    switch (check.state()) {
    case State::fail:
        return check.blocks() ? 0 : 2;
    case State::not_made:
        return check.blocks() ? 1 : 2;
    case State::pass:
        return check.field().force == Force::decides ? 3 : 4;
    case State::waived:
        return 5;
    case State::not_asked:
        break;
    }
    return 6;
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

namespace {

template <class Excluded>
const Check* worst_of(const Checks& checks, Excluded excluded) {
    const Check* first = nullptr;
    for (const Check& check : checks) {
        if (excluded(check)) continue;
        const bool counts = check.passes() && check.field().force == Force::decides;
        if (!counts && !check.blocks()) continue;
        const bool worse = first == nullptr || rank(check) < rank(*first) ||
                           (rank(check) == rank(*first) && weight(check) > weight(*first));
        if (worse) first = &check;
    }
    return first;
}

} // namespace

const Check* governing(const Checks& checks) {
    return worst_of(checks, [](const Check&) { return false; });
}

const Check* governing_of_several(const Checks& checks) {
    const Check* worst = worst_of(checks, [](const Check& check) {
        return check.passes() && check.field().quantity == Quantity::temperature;
    });
    return worst != nullptr ? worst : governing(checks);
}

bool all_pass(const Checks& checks) {
    return std::none_of(checks.begin(), checks.end(), [](const Check& c) { return c.blocks(); });
}

} // namespace tarvane::vessel
