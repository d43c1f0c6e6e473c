// Random choices that are the same on every machine for the same seed.
#pragma once

#include <cstddef>
#include <cstdint>

namespace calls {

class Chance {
  public:
    Chance(std::uint64_t seed, std::uint64_t stream) : state(seed * 0x9E3779B97F4A7C15u + stream) {
        bits();
        bits();
    }

    std::uint64_t bits() {
        state += 0x9E3779B97F4A7C15u;
        std::uint64_t x = state;
        x = (x ^ (x >> 30)) * 0xBF58476D1CE4E5B9u;
        x = (x ^ (x >> 27)) * 0x94D049BB133111EBu;
        return x ^ (x >> 31);
    }
    std::uint32_t word() { return static_cast<std::uint32_t>(bits() >> 32); }

    // 0 to count - 1
    std::size_t below(std::size_t count) {
        return static_cast<std::size_t>((static_cast<std::uint64_t>(word()) * count) >> 32);
    }
    bool one_in(std::size_t count) { return below(count) == 0; }
    int between(int first, int last) {
        return first + static_cast<int>(below(static_cast<std::size_t>(last - first + 1)));
    }
    float between(float first, float last) {
        return first + (last - first) * (static_cast<float>(word() >> 8) / 16777216.0f);
    }
    template <typename T, std::size_t N>
    const T& of(const T (&list)[N]) {
        return list[below(N)];
    }

  private:
    std::uint64_t state;
};

} // namespace calls
