#include "materials/material_record.h"

namespace tarvane {

Int READ_MATERIAL(std::string_view, Int, Int, MATERIAL_RECORD& record) {
    record = MATERIAL_RECORD{};
    return 1;
}

} // namespace tarvane
