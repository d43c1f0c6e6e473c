#include "files.h"

#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace tarvane::app {

std::string read_whole(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream bytes;
    if (!file || std::filesystem::is_directory(path))
        throw std::runtime_error("cannot read " + path);
    if (file.peek() != std::ifstream::traits_type::eof() && !(bytes << file.rdbuf()))
        throw std::runtime_error("cannot read " + path);
    return bytes.str();
}

} // namespace tarvane::app
