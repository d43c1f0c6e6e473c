// What a look at a file, without opening it, says of its content.
#pragma once

#include "frame/types.h"

#include <string_view>

namespace tarvane {

// A file by its place, its size and the times of its last changes. A file with the same identity,
// last changed some time ago, has the same content.
struct FILE_IDENTITY {
    std::uint64_t device = 0, inode = 0;
    std::int64_t size = 0;
    std::int64_t modified = 0, changed = 0; // nanoseconds; a change of the rights counts as changed

    friend bool operator==(const FILE_IDENTITY&, const FILE_IDENTITY&) = default;
};

// As file_exists, with the file's identity. A system that has none gives one that is never settled.
bool look_at_file(std::string_view path, FILE_IDENTITY& identity);
// The same of the open file of a handle.
bool look_at_handle(Int handle, FILE_IDENTITY& identity);
// The file was not changed within the last two seconds (times of files are coarse: two changes may
// leave the same time), nor in what the clock says is the future.
bool is_settled(const FILE_IDENTITY& identity);

// Lookups of one calculation share a look at a file: they give what all of them would have given at the
// moment of the first. A look is valid until the calculation ends, or the engine calls its host or opens
// or writes a file meanwhile: the file may have been changed then, by the host or by the engine.
enum class Looks { own, shared };
class LOOKS_ARE {
  public:
    explicit LOOKS_ARE(Looks looks);
    ~LOOKS_ARE();
    LOOKS_ARE(const LOOKS_ARE&) = delete;
    LOOKS_ARE& operator=(const LOOKS_ARE&) = delete;

  private:
    Looks before;
};
// The latest look found the content of this table to be that of its file.
void NOTE_LOOK(const void* table);
// The same, and the look is still valid.
bool LOOK_SERVES(const void* table);
void LOOK_AGAIN();

} // namespace tarvane
