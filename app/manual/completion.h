// Completion of a command line, asked by the shell of the program itself.
#pragma once

#include "manual/command_tree.h"

#include <iosfwd>
#include <string>
#include <vector>

namespace tarvane::app {

// The hidden command; after it the words after "tarvane", the one to complete last.
inline constexpr const char* COMPLETE_COMMAND = "complete-words";

// A word that may stand there a line; "FILE" or "FOLDER" after a tab where it is the shell that knows them.
void complete(const CommandText& program, const std::vector<std::string>& words, std::ostream& out);

} // namespace tarvane::app
