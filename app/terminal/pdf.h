// PDF by WeasyPrint, a program that need not be there.
#pragma once

#include <string>
#include <string_view>

namespace tarvane::app {

// The time that documents bear, ISO 8601: now, or that of SOURCE_DATE_EPOCH.
std::string time_of_documents();

struct Pdf {
    std::string bytes;
    std::string said; // lines of WeasyPrint about the page; empty: it found nothing wrong
};

// Of a page that needs no other file; accessible: with the structure that screen readers use (PDF/UA), which costs
// WeasyPrint time that grows with the square of the pages. Throws std::runtime_error where there is no WeasyPrint, with what to do, and
// where it fails, with its own words.
Pdf pdf_of(std::string_view html, bool accessible);

} // namespace tarvane::app
