// The files of the page, which are in the program.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

namespace tarvane::app {

struct AssetBytes {
    std::string_view name; // "page.js"
    const unsigned char* bytes;
    std::size_t size;
};
// All of them, made of the files of the folder assets.
std::span<const AssetBytes> asset_bytes();

struct Asset {
    std::string_view bytes, type; // "text/css; charset=utf-8"
};
// The file of a URL, "/page.js"; "/" is index.html. Nothing for another one.
std::optional<Asset> asset_at(std::string_view url);

} // namespace tarvane::app
