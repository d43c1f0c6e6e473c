#include "routines.h"

#include <bit>
#include <cstdlib>
#include <iterator>
#include <limits>
#include <tuple>
#include <type_traits>

namespace calls {

namespace {

// ---- what a call returns -------------------------------------------------------------------------

template <typename Element>
void fill(Chance& chance, Noise noise, Element* block, std::size_t count) {
    if (chance.one_in(2)) scribble(chance, noise, block, count * sizeof(Element));
}

void use(Chance&, Noise, float) {}
void use(Chance&, Noise, std::int32_t) {}
void use(Chance&, Noise, const TARVANE_SHELL_RESULTS*) {} // the host only reads them
void use(Chance&, Noise, const TARVANE_FLANGE_RESULTS*) {}
void use(Chance&, Noise, const TARVANE_EXTERNAL_RESULTS*) {}
void use(Chance&, Noise, const TARVANE_MDMT_RESULTS*) {}
void use(Chance& chance, Noise noise, char* store) {
    fill(chance, noise, store, std::size_t{TARVANE_STORE_RECORDS} * TARVANE_STORE_WIDTH);
}
void use(Chance& chance, Noise noise, TARVANE_SETUP_ELEMENT* setup) {
    fill(chance, noise, setup, TARVANE_SETUP_ELEMENTS);
    if (chance.one_in(4)) return;
    setup[TARVANE_SETUP_CODE - 1].whole = chance.between(1, 4);
    for (const int element : {TARVANE_SETUP_NO_CORRECTION, TARVANE_SETUP_PRINT_EXTERNAL,
                              TARVANE_SETUP_ROOT_TWO, TARVANE_SETUP_EDITION})
        setup[element - 1].real = static_cast<float>(chance.between(0, 1));
}
void use(Chance& chance, Noise noise, TARVANE_ELEMENT_ROW* rows) {
    for (int i = 0; i < 40; ++i) {
        TARVANE_ELEMENT_ROW& row = rows[i];
        std::memcpy(row.description, "Shell of a vessel", sizeof row.description);
        std::memcpy(row.material, "SA-516 70       ", sizeof row.material);
        std::memcpy(row.heat_treatment, "1       1       ", sizeof row.heat_treatment);
        row.heat_treatment[8] = chance.of({'1', '3', '4', '5', '8'});
        row.first_flag = chance.of({'0', '1', '1'});
        row.second_flag = chance.of({'0', '1'});
        row.joint_efficiency = chance.of({0.7f, 0.85f, 1.0f});
        row.first_inspection = chance.between(0.0f, 1.0f);
        row.second_inspection = chance.between(0.0f, 1.0f);
        row.value = chance.between(0.0f, 100.0f);
    }
    if (noise != Noise::none) fill(chance, noise, rows, TARVANE_ELEMENT_ROWS);
}
// Texts in the fields that are numbers and switches, then garbage here and there.
void use(Chance& chance, Noise noise, TARVANE_HOST_INPUT* input) {
    const auto put = [&](char* field, std::string_view word) {
        std::string text;
        sensible_text(chance, word, text);
        text.resize(16, ' ');
        std::memcpy(field, text.data(), 16);
    };
    std::memcpy(input->impact_switches, "1111", 4);
    for (int i = 0; i < 3; ++i) {
        put(input->required_temperature[i], "numbertext");
        put(input->impact_counts[i], "numbertext");
        for (int k = 0; k < 11; ++k) {
            put(input->impact_names[i][k], "name");
            put(input->impact_numbers[i][k], "numbertext");
        }
    }
    put(input->version_mark, "numbertext");
    put(input->single_name, "name");
    put(input->single_number, "numbertext");
    if (noise != Noise::none) fill(chance, noise, input, 1);
}
void use(Chance& chance, Noise noise, TARVANE_FAILURE_ROW* rows) {
    fill(chance, noise, rows, TARVANE_ELEMENT_ROWS);
}
void use(Chance& chance, Noise noise, TARVANE_MATERIAL_CLASS_ROW* rows) {
    fill(chance, noise, rows, TARVANE_MATERIAL_CLASS_ROWS);
}
void use(Chance& chance, Noise noise, TARVANE_FOUNDATION_RECORDS* records) {
    fill(chance, noise, records, 1);
}

// ---- the call ------------------------------------------------------------------------------------

// Of what a routine returns: a not-a-number is always the same; an address has no bytes that mean
// something.
std::uint32_t bits_of(float result) {
    constexpr float ANY = std::numeric_limits<float>::quiet_NaN();
    return std::bit_cast<std::uint32_t>(result == result ? result : ANY);
}
std::uint32_t bits_of(std::int32_t result) { return static_cast<std::uint32_t>(result); }
std::uint32_t bits_of(const void*) { return 0; }

template <typename Signature>
struct Driver;

template <typename Result, typename... Arguments>
struct Driver<Result(TARVANE_CALL*)(Arguments...)> {
    static constexpr std::size_t WORDS = sizeof...(Arguments);

    template <Result (TARVANE_CALL* Library::*ROUTINE)(Arguments...)>
    static bool exported(const Library& library) {
        return library.*ROUTINE != nullptr;
    }

    template <Result (TARVANE_CALL* Library::*ROUTINE)(Arguments...)>
    static Outcome call(const Library& library, Chance& chance, Noise noise, const Manner& manner,
                        std::string_view recipe) {
        Call call(library, chance, noise, manner, recipe);
        // Braces draw the arguments from the first to the last.
        const std::tuple<Arguments...> arguments{call.template argument<Arguments>()...};
        if (!call.complete()) return Outcome::bad_recipe;
        if (manner.witness != nullptr) manner.witness->given(call);
        if constexpr (std::is_void_v<Result>) {
            std::apply(library.*ROUTINE, arguments);
            if (manner.witness != nullptr) manner.witness->returned(call, 0);
        } else {
            const Result result = std::apply(library.*ROUTINE, arguments);
            if (manner.witness != nullptr) manner.witness->returned(call, bits_of(result));
            use(chance, noise, result);
        }
        return call.blocks_intact() ? Outcome::good : Outcome::overrun;
    }
};

#define TARVANE_ROUTINE(name, words, decorated)                                                    \
    static_assert(Driver<decltype(&::name)>::WORDS == (words), #name);
#define TARVANE_VARIABLE(name)
#include TARVANE_EXPORT_LIST
#undef TARVANE_ROUTINE
#undef TARVANE_VARIABLE

struct Recipe {
    std::string_view name, words;
};
constexpr Recipe RECIPES[] = {
#define RECIPE(name, words) {#name, words},
#include "recipes.inc"
#undef RECIPE
};

constexpr std::string_view recipe_of(std::string_view name) {
    for (const Recipe& recipe : RECIPES)
        if (recipe.name == name) return recipe.words;
    return {};
}

constexpr Routine ROUTINES[] = {
#define TARVANE_ROUTINE(name, words, decorated)                                                    \
    {#name, recipe_of(#name), Driver<decltype(&::name)>::call<&Library::name>,                     \
     Driver<decltype(&::name)>::exported<&Library::name>},
#define TARVANE_VARIABLE(name)
#include TARVANE_EXPORT_LIST
#undef TARVANE_ROUTINE
#undef TARVANE_VARIABLE
};

static_assert(std::size(RECIPES) == std::size(ROUTINES), "a recipe without its routine, or twice");

} // namespace

std::span<const Routine> routines() { return ROUTINES; }

std::size_t routine_number(std::string_view name) {
    for (std::size_t i = 0; i < std::size(ROUTINES); ++i)
        if (ROUTINES[i].name == name) return i;
    std::abort();
}

void scribble_variables(const Library& library, Chance& chance, Noise noise) {
    std::int32_t* const variables[] = {
#define TARVANE_ROUTINE(name, words, decorated)
#define TARVANE_VARIABLE(name) library.name,
#include TARVANE_EXPORT_LIST
#undef TARVANE_ROUTINE
#undef TARVANE_VARIABLE
    };
    for (std::int32_t* const variable : variables)
        if (variable != nullptr && chance.one_in(3))
            *variable = is_garbage(chance, noise) ? garbage_whole(chance) : chance.between(0, 2);
}

} // namespace calls
