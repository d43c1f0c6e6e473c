// Any calls of the exported routines, described by a string of bytes:
//
//   2 bytes  seed of the host's beginning
//   and for each call
//   2 bytes  the routine, by the digest of its name: other routines may come and go
//   2 bytes  seed of the arguments
//   1 byte   bits 0 to 2 how much of them is garbage, 3 a report is opened, 4 the exported variables are
//            written, 5 to 7 the number of words put into the arguments
//   and for each of these words 7 bytes: the argument, the place in it (2 bytes), the word
//
// A call keeps to the memory that it was given and returns: the sanitizers and libFuzzer's clock watch.
#include "ground.h"
#include "routines.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <utility>
#include <vector>

namespace {

using namespace calls;

constexpr int MOST_CALLS = 40;

class Bytes {
  public:
    Bytes(const std::uint8_t* first, std::size_t count) : at(first), left(count) {}

    // 0 where there are no more.
    template <typename Word>
    Word next() {
        Word word = 0;
        const std::size_t count = std::min(left, sizeof word);
        std::memcpy(&word, at, count);
        at += count;
        left -= count;
        return word;
    }
    bool any() const { return left > 0; }

  private:
    const std::uint8_t* at;
    std::size_t left;
};

// How many calls there were, printed at the end of the process.
struct Count {
    long all = 0;
    std::vector<long> of_routine = std::vector<long>(routines().size());

    ~Count() {
        if (all == 0) return;
        const auto least = std::min_element(of_routine.begin(), of_routine.end());
        const Routine& routine = routines()[static_cast<std::size_t>(least - of_routine.begin())];
        std::fprintf(stderr, "fuzz: %ld library calls, of %.*s the fewest: %ld\n", all,
                     static_cast<int>(routine.name.size()), routine.name.data(), *least);
    }
};
Count count;

std::uint16_t digest_of(std::string_view name) {
    std::uint32_t digest = 2166136261u;
    for (const char c : name)
        digest = (digest ^ static_cast<unsigned char>(c)) * 16777619u;
    return static_cast<std::uint16_t>(digest ^ (digest >> 16));
}

// The routine whose digest is the next one.
std::size_t routine_of(std::uint16_t digest) {
    static const auto BY_DIGEST = [] {
        std::vector<std::pair<std::uint16_t, std::size_t>> list;
        for (std::size_t i = 0; i < routines().size(); ++i)
            list.emplace_back(digest_of(routines()[i].name), i);
        std::sort(list.begin(), list.end());
        return list;
    }();
    const auto found = std::lower_bound(BY_DIGEST.begin(), BY_DIGEST.end(),
                                        std::pair<std::uint16_t, std::size_t>(digest, 0));
    return found == BY_DIGEST.end() ? BY_DIGEST.front().second : found->second;
}

// Puts the words into the arguments before the call.
class Words final : public Witness {
  public:
    Words(Bytes& the_bytes, int the_number, const Manner& the_manner)
        : bytes(the_bytes), number(the_number), manner(the_manner) {}

    void given(const Call& call) override {
        for (int i = 0; i < number && bytes.any(); ++i)
            put(call.arguments());
    }
    void returned(const Call&, std::uint32_t) override {}

  private:
    Bytes& bytes;
    const int number;
    const Manner& manner;

    void put(const std::vector<Block>& blocks) {
        const std::size_t which = bytes.next<std::uint8_t>();
        const std::size_t place = bytes.next<std::uint16_t>();
        std::uint32_t word = bytes.next<std::uint32_t>();
        if (blocks.empty()) return;
        const Block& block = blocks[which % blocks.size()];
        if (is_bound(block) || block.size < sizeof word) return;
        const std::size_t at = place % (block.size / sizeof word) * sizeof word;
        if (block.word == "record" && !suits_record(at / sizeof word, word)) return;
        std::memcpy(block.content + at, &word, sizeof word);
    }

    // By a promise of the host: addresses are good, a count is that of its arrays, and no file is made
    // outside the working folder.
    static bool is_bound(const Block& block) {
        return block.kind == Block::Kind::addresses || block.word == "count" ||
               block.word == "path" || block.word == "product" || block.word == "extension" ||
               block.word == "folder";
    }

    // The form of a record says how long its text is; and the loop of the failure corrosion takes hours
    // over a thick plate.
    bool suits_record(std::size_t index, std::uint32_t word) const {
        if (index == TARVANE_ELEMENT - 1) return false;
        float value = 0.0f;
        std::memcpy(&value, &word, sizeof value);
        return index != TARVANE_t - 1 || manner.most_thickness == 0.0f ||
               value <= manner.most_thickness;
    }
};

void call(const fuzz::Ground& ground, Host& host, Chance& chance, Bytes& bytes) {
    static constexpr Noise NOISES[8] = {Noise::none, Noise::edge, Noise::little, Noise::half,
                                        Noise::all,  Noise::none, Noise::edge,   Noise::little};
    static const std::size_t FLANGE_CALC = routine_number("FLANGE_CALC");
    const std::size_t number = routine_of(bytes.next<std::uint16_t>());
    chance = Chance(bytes.next<std::uint16_t>(), number);
    const unsigned flags = bytes.next<std::uint8_t>();
    const Noise noise = NOISES[flags & 7];
    if ((flags & 8) != 0) host.report();
    if ((flags & 16) != 0) scribble_variables(ground.library, chance, noise);
    Manner manner;
    if (number == FLANGE_CALC) host.prepare_flange(manner);
    Words words(bytes, static_cast<int>(flags >> 5), manner);
    manner.witness = &words;
    const Routine& routine = routines()[number];
    forget_heard();
    if (routine.call(ground.library, chance, noise, manner, routine.recipe) != Outcome::good)
        __builtin_trap();
    ++count.all;
    ++count.of_routine[number];
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzz::Inside inside;
    const fuzz::Ground& ground = fuzz::ground();
    Bytes bytes(data, size);
    Chance chance(bytes.next<std::uint16_t>(), 0);
    Host host(ground.library, chance);
    ground.reset(host);
    host.begin();
    for (int calls = 0; calls < MOST_CALLS && bytes.any(); ++calls)
        call(ground, host, chance, bytes);
    return 0;
}
