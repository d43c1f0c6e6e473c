// The list of materials of Table UCS-23.
#pragma once

#include <string_view>

namespace tarvane {

// True when the name is in "VIII-1_Matls_By_Table.txt" of the system folder, trailing blanks
// aside. Without the file: false.
bool LIS_UCS23_MATERIAL(std::string_view name);

} // namespace tarvane
