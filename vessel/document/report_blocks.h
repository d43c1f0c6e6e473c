// The lines of a component's calculation as blocks of a document: each formula in one block, the columns between
// them as they are. The characters of a line stay; powers are raised, and the word for a drawing gives way to it.
#pragma once

#include "document/document.h"

#include <string>
#include <vector>

namespace tarvane::vessel {

// `figure`: the drawing of the component in the document; none: an empty id.
std::vector<Block> report_blocks(const Element& element, const Outcome& outcome,
                                 const UnitSystem& units, const DrawingReference& figure);

// "t^(2) * in.^-1" with raised whole powers: "t² * in.⁻¹".
std::string with_raised_powers(std::string_view utf8);

} // namespace tarvane::vessel
