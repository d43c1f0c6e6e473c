// The first page of a document: what it is about, who made it, the verdict and what is open.
#pragma once

#include "document/document.h"

namespace tarvane::vessel {

FrontPage front_page(const Request& request, const Calculation& calculation);

// "PASS", "FAIL", "NOT MADE"
std::string shown_verdict(std::string_view verdict);

// The text of a key of [document]; empty where it is not given.
std::string document_text(const Request& request, std::string_view key);

} // namespace tarvane::vessel
