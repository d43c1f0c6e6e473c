// A comparison as text, as JSON, and as a document, of which html.h makes a page.
#pragma once

#include "document/comparison.h"
#include "document/document.h"

#include <string>

namespace tarvane::vessel {

// UTF-8, up to 100 columns wide: what differs in one sentence, inputs, results, verdicts, components of one side
// alone, and what is no difference of the design.
std::string text_of(const Comparison& comparison);

// What differs in one sentence.
std::string words_of(const Comparison& comparison);

std::string json_of(const Comparison& comparison);

// `created`: ISO 8601, for the properties of the document; empty: none.
CalculationDocument document_of(const Comparison& comparison, const std::string& created);

} // namespace tarvane::vessel
