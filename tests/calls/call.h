// The arguments of one call, each in memory of its own that is as large as the header promises.
#pragma once

#include "library.h"
#include "values.h"

#include "tarvane/tarvane.h"

#include <cstring>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace calls {

#if defined(__SANITIZE_ADDRESS__)
#define CALLS_UNDER_ASAN true
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define CALLS_UNDER_ASAN true
#endif
#endif
#ifndef CALLS_UNDER_ASAN
#define CALLS_UNDER_ASAN false
#endif
inline constexpr bool UNDER_ADDRESS_SANITIZER = CALLS_UNDER_ASAN;

class Call;

// Looks at a call: at its arguments before, and at the results after it.
class Witness {
  public:
    virtual ~Witness() = default;
    virtual void given(const Call& call) = 0;
    virtual void returned(const Call& call, std::uint32_t result) = 0;
};

// What a sequence of calls is like.
struct Manner {
    bool may_end = false; // a fatal stop may end the process
    bool trace = false;
    bool own_clock = false;      // the host always has a clock
    std::int32_t code = 0;       // not 0: the design code, unless garbage replaces it
    float most_thickness = 0.0f; // not 0: a thicker flange is made smaller
    Witness* witness = nullptr;
};

// An argument in memory of its own.
struct Block {
    enum class Kind { reals, wholes, text, record, addresses };
    std::string_view word;
    Kind kind;
    char* memory; // with its marks
    char* content;
    std::size_t size;
};

class Call {
  public:
    Call(const Library& the_library, Chance& the_chance, Noise the_noise, const Manner& the_manner,
         std::string_view the_recipe);
    ~Call();
    Call(const Call&) = delete;
    Call& operator=(const Call&) = delete;

    // The next argument, by its type and by the next word of the recipe.
    template <typename Argument>
    Argument argument() {
        if constexpr (std::is_same_v<Argument, std::int32_t>) {
            return text_length; // of the text before it
        } else {
            using Kept = std::remove_const_t<std::remove_pointer_t<Argument>>;
            next_word();
            if constexpr (std::is_same_v<Kept, float>)
                return reals();
            else if constexpr (std::is_same_v<Kept, std::int32_t>)
                return wholes();
            else if constexpr (std::is_same_v<Kept, char>)
                return text();
            else if constexpr (std::is_same_v<Kept, void>)
                return spare();
            else if constexpr (std::is_same_v<Kept, void*>)
                return window();
            else if constexpr (std::is_same_v<Kept, TARVANE_HOST_SERVICES>)
                return services();
            else if constexpr (std::is_same_v<Argument, TARVANE_TAKE_RECORD>)
                return taker();
            else
                return reinterpret_cast<Kept*>(record(sizeof(Kept)));
        }
    }

    // Every word of the recipe was used, and each was known.
    bool complete() const { return known && recipe.empty(); }
    // Nothing was written outside the blocks.
    bool blocks_intact() const;
    const std::vector<Block>& arguments() const { return blocks; }

  private:
    void next_word();
    char* block(Block::Kind kind, const void* content, std::size_t size);
    float* reals();
    std::int32_t* wholes();
    char* text();
    char* text_block(std::string content);
    char* flange_slots();
    void* spare();
    void** window();
    TARVANE_HOST_SERVICES* services();
    TARVANE_TAKE_RECORD taker();
    char* record(std::size_t size);
    std::size_t array_size() const;

    const Library& library;
    Chance& chance;
    Noise noise;
    const Manner& manner;
    std::string_view recipe, word, array;
    bool known = true;
    std::int32_t text_length = 0, shared_count = 0, reference = 1;
    std::vector<Block> blocks;
    std::vector<float> drawn; // numbers
    float* flange = nullptr;
    float* latest_real = nullptr;
    std::int32_t* latest_whole = nullptr;
};

// Garbage in the fields of a block that the engine returns: bytes, or words of texts and numbers.
void scribble(Chance& chance, Noise noise, void* block, std::size_t size);

// The table of services of a host that survives: its fatal report and its stop return. Its clock
// is stopped.
TARVANE_HOST_SERVICES staying_services();
// What the engine said to such a host, and that it is recorded from now on.
const std::string& heard();
void forget_heard();

} // namespace calls
