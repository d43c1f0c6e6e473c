// The man page tarvane(1), from the commands and options themselves.
#pragma once

#include "manual/command_tree.h"

#include <iosfwd>
#include <string>

namespace tarvane::app {

// The hidden command; after it the date of the version, 2026-11-23.
inline constexpr const char* MAN_PAGE_COMMAND = "man-page";

void write_man_page(const CommandText& program, const std::string& version, const std::string& date,
                    std::ostream& out);

} // namespace tarvane::app
