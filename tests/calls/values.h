// Values of arguments: sensible ones by what an argument means, and garbage of every class.
#pragma once

#include "chance.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace calls {

// How much of a call is garbage; edge: values that are just those of a decision.
enum class Noise { none, edge, little, half, all };

// True when the next value is to be garbage.
bool is_garbage(Chance& chance, Noise noise);

// True when the next number is to be an edge.
bool is_edge(Chance& chance, Noise noise);

// A number at which formulas and tables change, the next one to it, or one of those drawn so far.
float edge_real(Chance& chance, std::span<const float> drawn);
float garbage_real(Chance& chance);
std::int32_t garbage_whole(Chance& chance);

// Any bytes. Paths get no separators, so that no name leads out of the working folder.
std::string garbage_text(Chance& chance);

// By the word for the meaning of an argument (recipes.inc); false for an unknown word.
bool sensible_real(Chance& chance, std::string_view word, float& value);
bool sensible_whole(Chance& chance, std::string_view word, std::int32_t& value);
bool sensible_text(Chance& chance, std::string_view word, std::string& text);
// The reference number of a material that sensible_text draws.
std::int32_t reference_of(std::string_view name);

// A flange record and its text slots (200 reals, 435 characters).
void sensible_flange(Chance& chance, float* record);
// All lengths of a flange times a factor.
void scale_flange(float* record, float factor);
std::string sensible_slots(Chance& chance);

} // namespace calls
