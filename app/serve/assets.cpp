#include "serve/assets.h"

#include <utility>

namespace tarvane::app {

namespace {

std::string_view type_of(std::string_view name) {
    constexpr std::pair<std::string_view, std::string_view> TYPES[] = {
        {".html", "text/html; charset=utf-8"},
        {".css", "text/css; charset=utf-8"},
        {".js", "text/javascript; charset=utf-8"},
        {".svg", "image/svg+xml"},
        {".ttf", "font/ttf"}};
    for (const auto& [ending, type] : TYPES) {
        if (name.ends_with(ending)) return type;
    }
    return "application/octet-stream";
}

} // namespace

std::optional<Asset> asset_at(std::string_view url) {
    if (!url.starts_with('/')) return std::nullopt;
    const std::string_view name = url == "/" ? "index.html" : url.substr(1);
    if (name.empty()) return std::nullopt;
    for (const AssetBytes& file : asset_bytes()) {
        if (file.name == name)
            return Asset{{reinterpret_cast<const char*>(file.bytes), file.size}, type_of(name)};
    }
    return std::nullopt;
}

} // namespace tarvane::app
