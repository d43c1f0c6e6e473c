#include "element.h"

#include "text.h"

#include <algorithm>

namespace tarvane::app {

void Verdict::say(Status grave, std::string reason) {
    status = std::max(status, grave);
    reasons.push_back(std::move(reason));
}

bool Reading::sound(std::string_view key) const {
    const auto place = keys.find(key);
    return place != keys.end() && place->second.sound;
}

void Reading::fault(std::string_view key, std::string message) {
    const auto place = keys.find(key);
    const int line = place == keys.end() ? table_line : place->second.line;
    faults.push_back({line, std::string(key), std::move(message)});
}

std::string name_of(const Element& element) {
    std::string name = std::string(element.kind->table) + ' ' + std::to_string(element.number);
    const std::string description = element.description();
    if (!description.empty()) name += " (" + to_utf8(description) + ')';
    return name;
}

} // namespace tarvane::app
