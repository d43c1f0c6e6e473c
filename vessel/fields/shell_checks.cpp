#include "fields/shell_checks.h"

#include <algorithm>
#include <iterator>

namespace tarvane::vessel {

std::span<const CheckField> shell_check_fields() {
    static const std::vector<CheckField> fields = [] {
        std::vector<CheckField> all(std::begin(SHELL_CHECKS), std::end(SHELL_CHECKS));
        std::copy_if(std::begin(EXTERNAL_CHECKS), std::end(EXTERNAL_CHECKS),
                     std::back_inserter(all), [](const CheckField& field) {
                         return std::none_of(
                             std::begin(SHELL_CHECKS), std::end(SHELL_CHECKS),
                             [&](const CheckField& own) { return own.id == field.id; });
                     });
        return all;
    }();
    return fields;
}

} // namespace tarvane::vessel
