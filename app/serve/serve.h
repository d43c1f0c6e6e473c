// `tarvane serve`: a page on this computer.
#pragma once

#include "components/element.h"

#include <cstdint>
#include <iosfwd>
#include <string>

namespace tarvane::app {

struct ServeOptions {
    std::string file;       // to be open at the start, in its folder; empty: the working folder
    std::uint16_t port = 0; // 0: one that is free
    bool browser = true;    // is opened on the page
    std::string data;       // folder of the data files; empty: the one that is found
};

// Until the user or the system ends it.
vessel::Status serve(const ServeOptions& options, std::ostream& out, std::ostream& err);

} // namespace tarvane::app
