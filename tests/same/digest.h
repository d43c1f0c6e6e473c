// A number for bytes: other bytes give another number, almost without exception.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace same {

// Sign and payload of a not-a-number depend on the compiler's order of operands.
inline std::uint32_t without_payload(std::uint32_t real) {
    return (real & 0x7fffffffu) > 0x7f800000u ? 0x7fc00000u : real;
}

class Digest {
  public:
    void add(const void* bytes, std::size_t size) {
        const char* from = static_cast<const char*>(bytes);
        add(size);
        // Four chains side by side, for speed.
        std::uint64_t chains[4] = {state, ~state, state + MIX, state ^ MIX};
        for (; size >= 32; size -= 32, from += 32)
            for (std::size_t i = 0; i < 4; ++i)
                chains[i] = mixed(chains[i], word(from + 8 * i, 8));
        for (const std::uint64_t chain : chains)
            state = mixed(state, chain);
        for (; size > 0; from += 8) {
            const std::size_t count = size < 8 ? size : 8;
            state = mixed(state, word(from, count));
            size -= count;
        }
    }
    // Numbers, of which one not-a-number is as good as any other.
    void add_reals(const void* bytes, std::size_t size) {
        const char* from = static_cast<const char*>(bytes);
        std::uint32_t words[256];
        for (std::size_t count; size > 0; size -= count, from += count) {
            count = size < sizeof words ? size : sizeof words;
            std::memcpy(words, from, count);
            for (std::size_t i = 0; i < count / sizeof *words; ++i)
                words[i] = without_payload(words[i]);
            add(words, count);
        }
    }
    void add(std::uint64_t value) { state = mixed(state, value); }
    std::uint64_t value() const { return state; }

  private:
    static constexpr std::uint64_t MIX = 0x9E3779B97F4A7C15u;

    static std::uint64_t word(const char* from, std::size_t count) {
        std::uint64_t bits = 0;
        std::memcpy(&bits, from, count);
        return bits;
    }
    // Each step can be undone, so that no difference of one word is lost.
    static std::uint64_t mixed(std::uint64_t chain, std::uint64_t bits) {
        chain = (chain ^ bits) * MIX;
        return chain ^ (chain >> 29);
    }

    std::uint64_t state = 0x243F6A8885A308D3u;
};

} // namespace same
