// Data files whose content is kept in memory, for as long as a look at the file shows that reading it
// again would give the same.
#pragma once

#include "frame/text.h"
#include "frame/types.h"
#include "host/file_identity.h"

#include <string_view>

namespace tarvane {

// Which file the content in memory was read from.
class KEPT_FILE {
  public:
    // The content is that of the file that is at the path now.
    bool is(std::string_view at, const FILE_IDENTITY& now) const {
        return known && now == identity && at == path.columns(1, path_len) && is_settled(now);
    }
    // The content that was read from an open unit is that of the file looked at before.
    // True when it will be taken for that.
    bool keep(Int unit, std::string_view at, const FILE_IDENTITY& before);
    // Nothing is known any more of the content in memory.
    void forget() { known = false; }
    bool is_known() const { return known; }

  private:
    bool known = false;
    Text<260> path;
    Int path_len = 0;
    FILE_IDENTITY identity;
};

// RESOLVE_DATA_FILE with a look at the file that it finds; nothing is known of one that is not there.
void RESOLVE_DATA_FILE(Text<256>& path, Int& path_len, FILE_IDENTITY& identity);

// READ_TEXT_TABLE into a table that holds what was read last, with its lines counted: a file that is
// still the same (`same`) is not read.
bool READ_KEPT_TABLE(std::string_view name, char* table, Int width, Int limit, Int& lines,
                     KEPT_FILE& kept, bool& same);

} // namespace tarvane
