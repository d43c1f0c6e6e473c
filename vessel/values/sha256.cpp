#include "values/sha256.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace tarvane::vessel {

namespace {

using Word = std::uint32_t;
constexpr std::size_t BLOCK = 64; // bytes

// 4.2.2: of the cube roots of the first 64 primes, the first 32 bits after the point.
constexpr std::array<Word, 64> K{
    0x428a2f98, 0x71374491, 0xb5c0fbcf, 0xe9b5dba5, 0x3956c25b, 0x59f111f1, 0x923f82a4, 0xab1c5ed5,
    0xd807aa98, 0x12835b01, 0x243185be, 0x550c7dc3, 0x72be5d74, 0x80deb1fe, 0x9bdc06a7, 0xc19bf174,
    0xe49b69c1, 0xefbe4786, 0x0fc19dc6, 0x240ca1cc, 0x2de92c6f, 0x4a7484aa, 0x5cb0a9dc, 0x76f988da,
    0x983e5152, 0xa831c66d, 0xb00327c8, 0xbf597fc7, 0xc6e00bf3, 0xd5a79147, 0x06ca6351, 0x14292967,
    0x27b70a85, 0x2e1b2138, 0x4d2c6dfc, 0x53380d13, 0x650a7354, 0x766a0abb, 0x81c2c92e, 0x92722c85,
    0xa2bfe8a1, 0xa81a664b, 0xc24b8b70, 0xc76c51a3, 0xd192e819, 0xd6990624, 0xf40e3585, 0x106aa070,
    0x19a4c116, 0x1e376c08, 0x2748774c, 0x34b0bcb5, 0x391c0cb3, 0x4ed8aa4a, 0x5b9cca4f, 0x682e6ff3,
    0x748f82ee, 0x78a5636f, 0x84c87814, 0x8cc70208, 0x90befffa, 0xa4506ceb, 0xbef9a3f7, 0xc67178f2};

using State = std::array<Word, 8>;
// 5.3.3: of the square roots of the first 8 primes.
constexpr State BEGIN{0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a,
                      0x510e527f, 0x9b05688c, 0x1f83d9ab, 0x5be0cd19};

// 6.2.2
void take_block(State& state, const char* block) {
    std::array<Word, 64> w;
    for (std::size_t t = 0; t < 16; ++t) {
        w[t] = 0;
        for (std::size_t i = 0; i < 4; ++i)
            w[t] = w[t] << 8 | static_cast<unsigned char>(block[4 * t + i]);
    }
    for (std::size_t t = 16; t < w.size(); ++t) {
        const Word s0 = std::rotr(w[t - 15], 7) ^ std::rotr(w[t - 15], 18) ^ w[t - 15] >> 3;
        const Word s1 = std::rotr(w[t - 2], 17) ^ std::rotr(w[t - 2], 19) ^ w[t - 2] >> 10;
        w[t] = s1 + w[t - 7] + s0 + w[t - 16];
    }
    auto [a, b, c, d, e, f, g, h] = state;
    for (std::size_t t = 0; t < w.size(); ++t) {
        const Word S1 = std::rotr(e, 6) ^ std::rotr(e, 11) ^ std::rotr(e, 25);
        const Word T1 = h + S1 + ((e & f) ^ (~e & g)) + K[t] + w[t];
        const Word S0 = std::rotr(a, 2) ^ std::rotr(a, 13) ^ std::rotr(a, 22);
        const Word T2 = S0 + ((a & b) ^ (a & c) ^ (b & c));
        h = g, g = f, f = e, e = d + T1, d = c, c = b, b = a, a = T1 + T2;
    }
    const State after{a, b, c, d, e, f, g, h};
    for (std::size_t i = 0; i < state.size(); ++i)
        state[i] += after[i];
}

} // namespace

std::string sha256(std::string_view bytes) {
    State state = BEGIN;
    std::string_view rest = bytes;
    for (; rest.size() >= BLOCK; rest.remove_prefix(BLOCK))
        take_block(state, rest.data());
    // 5.1.1: a bit, zeros, and the length in bits at the end of a block.
    std::string last(rest);
    last += '\x80';
    last.resize(last.size() <= BLOCK - 8 ? BLOCK : 2 * BLOCK);
    const std::uint64_t bits = std::uint64_t{bytes.size()} * 8;
    for (std::size_t i = 0; i < 8; ++i)
        last[last.size() - 1 - i] = static_cast<char>(bits >> (8 * i) & 0xFF);
    for (std::size_t at = 0; at < last.size(); at += BLOCK)
        take_block(state, last.data() + at);

    std::string digits;
    for (const Word word : state) {
        for (int shift = 28; shift >= 0; shift -= 4)
            digits += "0123456789abcdef"[word >> shift & 0xF];
    }
    return digits;
}

} // namespace tarvane::vessel
