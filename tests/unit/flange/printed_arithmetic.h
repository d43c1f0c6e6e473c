// A printed formula, evaluated again from its own text. Every number represents all the values that
// round to it, so the result is an interval, and the value line under the formula must be in it.
#pragma once

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <stdexcept>
#include <string>
#include <string_view>

namespace tarvane::stage_test {

struct Interval {
    double low, high;
    bool meets(const Interval& other) const { return low <= other.high && other.low <= high; }
};

// A printed number. Small whole numbers are the constants of the formula and exact; larger ones have
// lost their decimals to the report's rounding.
inline Interval printed_number(std::string_view text, std::size_t& at) {
    const std::size_t start = at;
    int decimals = -1;
    while (at < text.size() && (std::isdigit(static_cast<unsigned char>(text[at])) != 0 ||
                                (text[at] == '.' && decimals < 0))) {
        if (text[at] == '.')
            decimals = 0;
        else if (decimals >= 0)
            ++decimals;
        ++at;
    }
    double unit = std::pow(10.0, -std::max(decimals, 0));
    double power = 1.0;
    if (at < text.size() && text[at] == 'E') {
        char* end = nullptr;
        const std::string exponent(text.substr(at + 1));
        power = std::pow(10.0, static_cast<double>(std::strtol(exponent.c_str(), &end, 10)));
        at += 1 + static_cast<std::size_t>(end - exponent.c_str());
    }
    if (at == start) throw std::runtime_error("number expected in: " + std::string(text));
    const double value = std::strtod(std::string(text.substr(start, at - start)).c_str(), nullptr);
    const bool exact = decimals < 0 && power == 1.0 && value < 1000.0;
    const double slack = exact ? 0.0 : 0.5 * unit * power * 1.000001;
    return {value - slack, value + slack};
}

class PrintedFormula {
  public:
    explicit PrintedFormula(std::string_view formula) : text(formula) {}

    Interval value() {
        const Interval result = accept("Maximum of") ? list_maximum() : sum();
        skip();
        if (at != text.size()) throw std::runtime_error("rest of formula: " + text.substr(at));
        return result;
    }

  private:
    std::string text;
    std::size_t at = 0;

    void skip() {
        while (at < text.size() && text[at] == ' ')
            ++at;
    }
    bool accept(std::string_view token) {
        skip();
        if (text.compare(at, token.size(), token) != 0) return false;
        at += token.size();
        return true;
    }

    Interval list_maximum() {
        Interval result = sum();
        while (accept(",")) {
            const Interval next = sum();
            result = {std::max(result.low, next.low), std::max(result.high, next.high)};
        }
        return result;
    }

    Interval sum() {
        Interval result = product();
        for (;;) {
            if (accept("+")) {
                const Interval next = product();
                result = {result.low + next.low, result.high + next.high};
            } else if (accept("-")) {
                const Interval next = product();
                result = {result.low - next.high, result.high - next.low};
            } else {
                return result;
            }
        }
    }

    static Interval times(const Interval& a, const Interval& b) {
        const double p[4] = {a.low * b.low, a.low * b.high, a.high * b.low, a.high * b.high};
        return {*std::min_element(p, p + 4), *std::max_element(p, p + 4)};
    }

    Interval product() {
        Interval result = factor();
        for (;;) {
            if (accept("*")) {
                result = times(result, factor());
            } else if (accept("/")) {
                const Interval divisor = factor();
                if (divisor.low <= 0.0 && divisor.high >= 0.0)
                    return {-std::numeric_limits<double>::infinity(),
                            std::numeric_limits<double>::infinity()};
                result = times(result, {1.0 / divisor.high, 1.0 / divisor.low});
            } else {
                return result;
            }
        }
    }

    Interval factor() {
        if (accept("-")) {
            const Interval negated = factor();
            return {-negated.high, -negated.low};
        }
        Interval result{};
        if (accept("max(")) {
            result = list_maximum();
            close(")");
        } else if (accept("(")) {
            result = sum();
            close(")");
        } else {
            skip();
            result = printed_number(text, at);
        }
        while (accept("\xB2") || accept("^(2)"))
            result = times(result, result);
        return result;
    }

    void close(std::string_view bracket) {
        if (!accept(bracket)) throw std::runtime_error("bracket expected at: " + text.substr(at));
    }
};

} // namespace tarvane::stage_test
