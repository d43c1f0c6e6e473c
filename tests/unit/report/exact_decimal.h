// Decimal conversion by long arithmetic on digits: every single is a whole number over a power of
// ten, all of whose digits are written out and then rounded once.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace tarvane::report_test {

// Digits of a finite magnitude, least significant first and without zeros before them; `decimals` of them come after the point.
struct ExactDecimal {
    std::vector<int> digits;
    std::size_t decimals = 0;
};

// A whole number by nine decimal digits a place, least first; the longest single has 112 digits.
struct Whole {
    static constexpr std::uint32_t BASE = 1000000000;
    std::uint32_t places[16] = {};
    int used = 0;

    void multiply(std::uint32_t factor) {
        std::uint64_t carry = 0;
        for (int i = 0; i < used; ++i) {
            carry += static_cast<std::uint64_t>(places[i]) * factor;
            places[i] = static_cast<std::uint32_t>(carry % BASE);
            carry /= BASE;
        }
        for (; carry != 0; carry /= BASE)
            places[used++] = static_cast<std::uint32_t>(carry % BASE);
    }
    // As many factors at once as 32 bits hold.
    void multiply(std::uint32_t factor, int times, int at_once) {
        while (times > 0) {
            std::uint32_t product = 1;
            for (int k = 0; k < at_once && times > 0; ++k, --times)
                product *= factor;
            multiply(product);
        }
    }
};

// Tests ask for many forms of a value, one after another: the last one is kept.
inline const ExactDecimal& exact_decimal(float value) {
    static ExactDecimal exact;
    static std::uint32_t last = 0; // zero, which has no digits
    const std::uint32_t bits = std::bit_cast<std::uint32_t>(value) & 0x7FFFFFFF;
    if (bits == last) return exact;
    last = bits;
    const int exponent = static_cast<int>(bits >> 23);
    std::uint32_t mantissa = bits & 0x7FFFFF;
    if (exponent != 0) mantissa |= 0x800000;
    const int power = (exponent != 0 ? exponent : 1) - 150;
    Whole whole;
    if (mantissa != 0) whole.places[whole.used++] = mantissa;
    whole.multiply(2, power, 31);
    whole.multiply(5, -power, 13); // m / 2^k = m * 5^k / 10^k
    exact.digits.assign(static_cast<std::size_t>(9 * whole.used), 0);
    int* digit = exact.digits.data();
    for (int i = 0; i < whole.used; ++i, digit += 9)
        for (int k = 0; k < 9; ++k, whole.places[i] /= 10)
            digit[k] = static_cast<int>(whole.places[i] % 10);
    while (!exact.digits.empty() && exact.digits.back() == 0)
        exact.digits.pop_back();
    exact.decimals = power < 0 ? static_cast<std::size_t>(-power) : 0;
    return exact;
}

enum class Tie { to_even, away };

// Drops the lowest `count` digits and rounds the rest.
inline void drop_digits(std::vector<int>& digits, std::size_t count, Tie tie) {
    if (count == 0) return;
    if (digits.size() < count) digits.resize(count, 0);
    bool rest = false;
    const int* below = digits.data();
    for (std::size_t i = 0; i + 1 < count && !rest; ++i)
        rest = below[i] != 0;
    const int first = digits[count - 1];
    digits.erase(digits.begin(), digits.begin() + static_cast<std::ptrdiff_t>(count));
    const bool odd = !digits.empty() && digits[0] % 2 == 1;
    if (first < 5 || (first == 5 && !rest && tie == Tie::to_even && !odd)) return;
    for (int& digit : digits) {
        if (++digit < 10) return;
        digit = 0;
    }
    digits.push_back(1);
}

// Fixed notation of the magnitude without a zero before the point; no point for 0 decimals.
inline std::string exact_fixed(float value, std::size_t decimals, Tie tie = Tie::to_even) {
    ExactDecimal exact = exact_decimal(value);
    if (exact.decimals > decimals) {
        drop_digits(exact.digits, exact.decimals - decimals, tie);
    } else {
        exact.digits.insert(exact.digits.begin(), decimals - exact.decimals, 0);
    }
    while (exact.digits.size() > decimals && exact.digits.back() == 0)
        exact.digits.pop_back();
    if (exact.digits.size() < decimals) exact.digits.resize(decimals, 0);
    std::string text;
    for (std::size_t i = exact.digits.size(); i-- > 0;) {
        text += static_cast<char>('0' + exact.digits[i]);
        if (i == decimals && decimals != 0) text += '.';
    }
    if (decimals != 0 && exact.digits.size() == decimals) text.insert(0, ".");
    return text.empty() ? "0" : text;
}

// ".dddE+xx" of the magnitude, mantissa 0.1 up to 1.
inline std::string exact_exponent(float value, std::size_t count) {
    ExactDecimal exact = exact_decimal(value);
    while (!exact.digits.empty() && exact.digits.back() == 0)
        exact.digits.pop_back();
    if (exact.digits.empty()) return "." + std::string(count, '0') + "E+00";
    int exponent = static_cast<int>(exact.digits.size()) - static_cast<int>(exact.decimals);
    const std::size_t before = exact.digits.size();
    if (before > count) {
        drop_digits(exact.digits, before - count, Tie::to_even);
        if (exact.digits.size() > count) { // 0.9996 became 1.000
            ++exponent;
            exact.digits.erase(exact.digits.begin());
        }
    } else {
        exact.digits.insert(exact.digits.begin(), count - before, 0);
    }
    std::string text = ".";
    for (std::size_t i = count; i-- > 0;)
        text += static_cast<char>('0' + exact.digits[i]);
    const int size = exponent < 0 ? -exponent : exponent;
    text += exponent < 0 ? "E-" : "E+";
    text += static_cast<char>('0' + size / 10);
    text += static_cast<char>('0' + size % 10);
    return text;
}

} // namespace tarvane::report_test
