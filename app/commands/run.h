// `tarvane run`: an input file becomes reports, tables and an exit status.
#pragma once

#include "components/element.h"
#include "document/document.h"

#include <iosfwd>
#include <string>

namespace tarvane::app {

using namespace vessel;

struct RunOptions {
    std::string input;
    std::string report; // raw report file; empty: none
    std::string data;   // folder of the data files; empty: the one that is found
    std::string
        charts; // folder for drawings of the charts, with the points of the elements; empty: none
    // The document, its results for programs, and both tables of checks and results; empty: none.
    std::string html, pdf, json, csv;
    Detail detail = Detail::full; // of the document
    bool pdf_ua = false;          // the PDF with the structure that screen readers use
    bool colour = false;
    bool strict = false; // no defaults of what decides about safety
};

Status run(const RunOptions& options, std::ostream& out, std::ostream& err);

} // namespace tarvane::app
