// What a request says of the vessel alone, beside the keys of its components: the liquid in it, and the document
// that its calculation belongs to.
#pragma once

#include "fields/keys.h"

namespace tarvane::vessel {

enum class VesselNumber { density, level, count };

// Of [vessel].
std::span<const Key> vessel_keys();

// lb/cu.in., twice that of the densest liquid: beyond it the unit of a number is another than was meant.
inline constexpr float DENSEST_LIQUID = 1.0f;

// Texts of [document], and of the tables of its list `revisions`.
std::span<const Key> document_keys();
std::span<const Key> revision_keys();
inline constexpr std::string_view REVISIONS = "revisions";
inline constexpr std::size_t MOST_REVISIONS = 100;

} // namespace tarvane::vessel
