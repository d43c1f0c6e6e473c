// Files that a command writes.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace tarvane::app {

// A file that a command reads, or another one that it writes.
struct FileInUse {
    std::string what; // "the input file"
    std::string path;
};

// Throws std::runtime_error when `path` leads to one of the files or to a data file, by whatever name:
// symbolic and hard links, and the place of a file that does not exist yet.
void refuse_same_file(const std::string& path, std::span<const FileInUse> files);

// The same, and throws when what is at `path` can't or must not be written: a folder, a file without
// permission to write, a device other than a stream. To be called before anything is calculated.
void check_output(const std::string& path, std::span<const FileInUse> files);

// How the name begins under which a file is written before it is renamed; a process that is killed may leave one.
inline constexpr std::string_view PARTIAL_PREFIX = ".tarvane-";

// What a file outlasts from the return of the call on: a loss of power, or the end of the process alone, for which no
// disk has to be waited for.
enum class Outlasts { power, process };

// The whole file, or what was there before: written under another name in the same folder, then renamed,
// with the mode of the file that it replaces. A symbolic link keeps pointing to its file. A stream, such as
// a FIFO or a terminal, is written directly. Throws std::runtime_error, and leaves nothing behind, also when
// the process is asked to end meanwhile.
void write_whole(const std::string& path, std::string_view bytes,
                 Outlasts outlasts = Outlasts::power);

} // namespace tarvane::app
