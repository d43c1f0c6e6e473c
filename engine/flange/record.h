// From the host's record and text block to the flange state.
#pragma once

#include "flange/state.h"

namespace tarvane {

inline constexpr Int RECORD_ELEMENTS = 200;
inline constexpr Int TEXT_SLOT = 15;

// One-based access to the host's block of 200 reals.
class FLANGE_RECORD {
  public:
    explicit FLANGE_RECORD(Real* first) : elements(first) {}
    Real& operator()(Int element) const { return elements[element - 1]; }
    Int whole(Int element) const { return truncated(elements[element - 1]); }

  private:
    Real* elements;
};

// Clears the "no value" elements in the record, loads the state's inputs and derives ct, dh, Ecover,
// D, d, L. Never reports and never fails. A loose reverse flange (type 9) keeps its type here.
void READ_FLANGE_RECORD(FLANGE_GIVEN& s, const FLANGE_RECORD& record, const char* text,
                        Int slotLength);

// Type 9 becomes type 8 with go = g1 = the attached shell thickness and h = 10.
void REWRITE_LOOSE_REVERSE(FLANGE_GIVEN& s);

} // namespace tarvane
